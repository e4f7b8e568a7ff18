// The description that the homing form shows under a picture: a text of our own for a group of
// methods, in which a line {methods} stands for what the table of travels says of each.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace servo::data {

// Which methods show a file ("7-14_EN.txt"), in order, and in which language.
struct DescribedMethods {
    std::vector<int> methods;
    base::Language language = base::Language::kChinese;
};
// Nothing for a name that no method shows.
std::optional<DescribedMethods> described_methods(std::string_view file_name);

// The text with its line {methods} filled in. UTF-8, lines ended by LF.
std::string fill_description(std::string_view text, const DescribedMethods& described);

}  // namespace servo::data
