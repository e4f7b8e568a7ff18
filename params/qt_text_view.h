// Texts of the program, which are UTF-8, as the toolkit takes them.
#pragma once

#include <QString>
#include <string_view>

namespace servo::params {

inline QString to_qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace servo::params
