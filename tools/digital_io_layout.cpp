#include "tools/digital_io_layout.h"

namespace servo::tools {

IoLayout layout_of(dictionary::Variant variant) {
    switch (variant) {
        case dictionary::Variant::kAllItems:
            return {.inputs = {0, 0, 1, 1}, .outputs = {1, 0, 1, 1}, .chooser = {0, 1, 2, 1}};
        case dictionary::Variant::kReduced:
            return {.inputs = {0, 0, 1, 1}, .outputs = {0, 1, 1, 1}, .chooser = {1, 0, 1, 2}};
    }
    return {};
}

}  // namespace servo::tools
