#include "params/modbus_list.h"

#include <algorithm>

#include "base/file.h"

namespace servo::params {

namespace {

constexpr std::size_t kKeyLength = 6;
constexpr std::size_t kAddressLength = 4;

}  // namespace

std::vector<ModbusAddress> parse_modbus_list(std::string_view content) {
    std::vector<ModbusAddress> addresses;
    base::LineReader lines(content);
    while (const auto line = lines.next()) {
        if (*line == "END") break;
        const auto first = line->find(',');
        if (first == std::string_view::npos) break;
        const auto second = line->find(',', first + 1);
        if (second == std::string_view::npos) break;
        const auto third = line->find(',', second + 1);
        const auto field =
            line->substr(second + 1, third == std::string_view::npos ? third : third - second - 1);
        addresses.push_back(
            {std::string(line->substr(0, std::min(first, kKeyLength))),
             std::string(field.substr(field.size() - std::min(field.size(), kAddressLength)))});
    }
    return addresses;
}

ModbusList load_modbus_list(const std::filesystem::path& folder) {
    const auto content = base::read_file(base::find_in(folder, "modbus.txt"));
    if (!content) return {};
    return {true, parse_modbus_list(*content)};
}

}  // namespace servo::params
