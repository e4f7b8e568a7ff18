// The file of remembered windows: any bytes give a desk within its limits, and what is written from
// it reads back the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/desk_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace servo::app;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Desk desk = parse_desk(text);
    if (desk.recent.size() > kMostRecent) std::abort();
    for (const auto& [name, place] : desk.windows) {
        if (name.empty() || place.size.width < 1 || place.size.height < 1) std::abort();
        const WindowPlace seen = into_view({800, 600}, place);
        if (seen.corner.x < 0 || seen.corner.y < 0) std::abort();
    }
    if (!(parse_desk(desk_text(desk)) == desk)) std::abort();
    return 0;
}
