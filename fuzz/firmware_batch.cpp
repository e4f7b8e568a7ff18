// A batch file and a barcode. The first two lines are the product's name and the barcode, the rest
// is the file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/file.h"
#include "base/gbk.h"
#include "firmware/batch.h"

using namespace servo;

namespace {
void require(bool holds) {
    if (!holds) std::abort();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view content(reinterpret_cast<const char*>(data), size);
    base::LineReader lines(content);
    const std::string name = base::gbk_to_utf8(lines.next().value_or(""));
    const std::string barcode = base::gbk_to_utf8(lines.next().value_or(""));
    for (int line = 0; line < 2; ++line)
        content.remove_prefix(
            std::min(content.find('\n'), content.size() - (content.empty() ? 0 : 1)) +
            (content.empty() ? 0 : 1));

    const auto product = firmware::find_product(content, name);
    if (!product) return 0;
    require(!product->SN_Compare.empty() && !product->Compare_Pos.empty() &&
            !product->SN_Length.empty());
    require(product->FW_Name.find('\n') == std::string::npos);
    if (firmware::check_barcode(barcode, *product) == firmware::Barcode::kMatches) {
        require(barcode.find(product->SN_Compare) != std::string::npos);
        // One character more is never a match too.
        require(firmware::check_barcode(barcode + "x", *product) ==
                firmware::Barcode::kWrongLength);
    }
    return 0;
}
