// Addition: how a side of the configuration window stands, in one line of words.
#pragma once

#include <string>

#include "tools/configuration.h"

namespace servo::tools {

struct ConfigurationNote {
    std::string text;
    bool warns = false;
    bool operator==(const ConfigurationNote&) const = default;
};

ConfigurationNote configuration_note(const ImExport& form, ConfigurationSide side);

}  // namespace servo::tools
