#include "tools/digital_io_layout.h"

namespace servo::tools {

IoLayout layout_of(dictionary::Variant variant) {
    switch (variant) {
        case dictionary::Variant::kAllItems:
            return {.inputs = {0, 0, 1, 1},
                    .outputs = {1, 0, 1, 1},
                    .chooser = {0, 1, 3, 1},
                    .growing_row = 2};
        case dictionary::Variant::kReduced:
            return {.inputs = {0, 0, 1, 1},
                    .outputs = {0, 1, 1, 1},
                    .chooser = {1, 0, 1, 2},
                    .growing_row = 1};
    }
    return {};
}

}  // namespace servo::tools
