// A list of functions of digital inputs and outputs, and what its groups make of values.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "base/gbk.h"
#include "tools/digital_io_list.h"

using namespace servo;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// Groups cover the list from end to end, and no code of bits 12 to 14 begins one but the first.
void check_groups(const tools::IoFunctions& functions) {
    int next = 0;
    for (int group = 0; group < functions.groups(); ++group) {
        require(functions.entries_of(group) > 0);
        const int code = functions.at(next).code;
        require(group == 0 || code < 0x1000 || code >= 0x8000);
        for (int index = next; index <= functions.last_of(group); ++index)
            require(functions.group_of(index) == group);
        next = functions.last_of(group) + 1;
    }
    require(next == functions.count());
}

// What is ticked alone is one group, and what a value shows lies in one group.
void check_values(const tools::IoFunctions& functions) {
    const auto count = static_cast<std::size_t>(functions.count());
    for (std::size_t index = 0; index < count; ++index) {
        std::vector<bool> ticks(count, false);
        ticks[index] = true;
        const tools::Encoded said = functions.encode(ticks);
        require(said.groups == 1);
        const std::vector<bool> shown = functions.decode(said.value);
        require(shown.size() == count);
        require(functions.encode(shown).groups <= 1);
        require((functions.unnamed_bits(said.value) & ~said.value) == 0);
    }
    require(functions.names(0, base::Language::kEnglish).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const tools::FunctionList list = tools::parse_function_list(content);
    require((list.state == tools::ListState::kEmpty) == content.empty());
    const bool read = content == "[DigitIN]" || content.starts_with("[DigitIN]\n") ||
                      content.starts_with("[DigitIN]\r\n") || content == "[DigitIN]\r";
    require((list.state == tools::ListState::kRead) == read);
    for (const tools::IoFunctions* side : {&list.inputs, &list.outputs}) {
        require(side->count() <= tools::kMostFunctions);
        for (int index = 0; index < side->count(); ++index) {
            require(base::utf8_length(side->at(index).chinese) <= 64);
            require(!tools::name_of(side->at(index), base::Language::kChinese).empty());
        }
        check_groups(*side);
        check_values(*side);
    }
    if (!read) require(list.inputs.count() == 0 && list.outputs.count() == 0);
    return 0;
}
