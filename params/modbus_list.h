// The Modbus addresses beside the program, modbus.txt: one object a line, fields separated by
// commas, up to a line "END".
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace servo::params {

struct ModbusAddress {
    std::string key;      // first six characters of the first field: index and sub-index
    std::string address;  // last four characters of the third field
};

struct ModbusList {
    bool present = false;
    std::vector<ModbusAddress> addresses;
};

inline constexpr std::string_view kModbusMissingTitle = "Attention";
inline constexpr std::string_view kModbusMissingText = "Missing the Modbus address file!";

// A line with fewer than three fields ends the list; what was read before it counts.
std::vector<ModbusAddress> parse_modbus_list(std::string_view content);

// Not present when there is no modbus.txt in the folder.
ModbusList load_modbus_list(const std::filesystem::path& folder);

}  // namespace servo::params
