// An image file, through its header and blocks: what is kept adds up to what was read.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/ascii.h"
#include "firmware/image.h"

using namespace servo;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// The second line, less one CR at its end.
std::string_view second_line(std::string_view content) {
    content.remove_prefix(std::min(content.find('\n'), content.size() - 1) + 1);
    content = content.substr(0, content.find('\n'));
    if (content.ends_with('\r')) content.remove_suffix(1);
    return content;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const firmware::Image image = firmware::read_image(content);
    if (image.fault != firmware::ImageFault::kNone) {
        require(!image.blocks);
        return 0;
    }
    require(image.header.line.find("firmware") != std::string::npos);
    require(image.header.FW_Type.find(' ') == std::string::npos);
    require(image.header.CRC_From_File.find("firmware") == std::string::npos);
    for (const bool own_brand : {false, true})
        require(firmware::shown_header(image.header, own_brand)
                    .ends_with("\r\nCRC:" + image.header.CRC_From_File));
    if (!image.blocks) return 0;

    const firmware::Blocks& blocks = *image.blocks;
    const std::string payload = base::ascii_lower(second_line(content));
    require(image.payload_characters == payload.size());
    require(blocks.size() == firmware::block_count(payload.size()) + 1 && blocks.back().empty());
    std::string joined;
    for (std::size_t i = 0; i + 1 < blocks.size(); ++i) {
        require(blocks[i].ends_with('\r') && blocks[i].size() > 1);
        require(blocks[i].size() == firmware::kBlockCharacters + 1 || i + 2 == blocks.size());
        joined.append(blocks[i], 0, blocks[i].size() - 1);
    }
    require(payload.starts_with(joined));
    require(joined.size() + image.lost_characters == payload.size());
    require(image.lost_characters * 2 <= firmware::kBlockCharacters);
    return 0;
}
