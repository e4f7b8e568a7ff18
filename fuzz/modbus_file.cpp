// A list of Modbus addresses.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/gbk.h"
#include "params/modbus_list.h"

using namespace servo;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// Lines in front of the one that ends the list, read a second way: no line feed, no "END", and two
// commas or more.
std::size_t good_lines(std::string_view content) {
    std::size_t count = 0;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        std::string_view line = content.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line == "END" || std::count(line.begin(), line.end(), ',') < 2) break;
        ++count;
        content.remove_prefix(std::min(end + 1, content.size()));
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const auto list = params::parse_modbus_list(content);
    require(list.size() == good_lines(content));
    for (const params::ModbusAddress& entry : list) {
        require(base::utf8_length(entry.key) <= 6);
        require(base::utf8_length(entry.address) <= 4);
        require(entry.key.find(',') == std::string::npos);
        require(entry.address.find(',') == std::string::npos);
    }
    // What stands behind an END changes nothing.
    const std::string longer = std::string(content) + "\nEND\n606000,x,1234\n";
    require(params::parse_modbus_list(longer).size() == list.size());
    return 0;
}
