// Additions to what the form shows: lines that say in words what its state means. Without them the
// form has a bar and buttons only.
#pragma once

#include <string>
#include <string_view>

#include "firmware/download.h"

namespace servo::firmware {

// "60 blocks, 247117 bytes"; empty while no image is loaded.
std::string image_facts(const Download& form);

// What the user should know before he presses Download: characters that will not be sent, an image
// without a block. Else empty.
std::string image_warning(const Download& form);

struct TransferLine {
    std::string step;       // what is being done, or how it ended
    std::string speed;      // "3723 bytes/s", while blocks are sent
    std::string remaining;  // "1:05 left", likewise
};
TransferLine transfer_line(const Download& form, bool link_open);

// A transfer has ended without success, and nothing is loaded since: the same file can be loaded
// again, which is what enables the download.
bool can_load_again(const Download& form);

}  // namespace servo::firmware
