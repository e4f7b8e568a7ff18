// A page definition file, through the rows that its keys become.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"
#include "params/page_grid.h"
#include "params/page_loader.h"

using namespace servo;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// Lines that may name an object: those behind the second, up to the first empty one.
std::size_t key_lines(std::string_view content) {
    std::size_t count = 0;
    for (std::size_t line = 0; !content.empty(); ++line) {
        const std::size_t end = content.find('\n');
        std::string_view text = content.substr(0, end);
        if (text.ends_with('\r')) text.remove_suffix(1);
        if (line >= 2 && text.empty()) break;
        if (line >= 2) ++count;
        if (end == std::string_view::npos) break;
        content.remove_prefix(end + 1);
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const auto keys = params::parse_page_keys(content);
    require(keys.size() == std::min(key_lines(content), params::kMaxPageKeys));

    static const dictionary::Store kEmpty;
    const link::FormulaOperands operands;
    const base::Language language = base::Language::kEnglish;
    params::PageGrid grid({kEmpty, operands, language, [](auto, auto) {}});
    // A few rows are enough: one is like the other, and each costs a record.
    for (std::size_t i = 0; i < std::min<std::size_t>(keys.size(), 4); ++i) {
        grid.append_row(params::build_row(kEmpty, keys[i], grid.rows() - 1, language));
        // What was read from the file comes back from the row, as the poller will match it.
        require(grid.row(grid.rows() - 1).identity() == keys[i]);
    }
    while (grid.rows() > 1)
        grid.delete_row(grid.rows() / 2);
    return 0;
}
