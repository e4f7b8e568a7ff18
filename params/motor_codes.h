// The table of motor codes beside the program, \sys\motorcode.ini: free text, shown as it stands.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace servo::params {

inline constexpr std::string_view kMotorCodesFile = R"(\sys\motorcode.ini)";

// The whole file below the program's folder, decoded from the code page and otherwise unchanged:
// line ends and controls stay. Nothing when it can't be opened.
std::optional<std::string> load_motor_codes(const std::filesystem::path& folder);

}  // namespace servo::params
