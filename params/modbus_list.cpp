#include "params/modbus_list.h"

#include "base/file.h"
#include "base/gbk.h"

namespace servo::params {

namespace {

constexpr std::size_t kKeyLength = 6;
constexpr std::size_t kAddressLength = 4;

std::string first_characters(std::string_view field, std::size_t count) {
    return std::string(base::utf8_prefix(field, count));
}

std::string last_characters(std::string_view field, std::size_t count) {
    const std::size_t length = base::utf8_length(field);
    if (length > count) field.remove_prefix(base::utf8_prefix(field, length - count).size());
    return std::string(field);
}

}  // namespace

std::vector<ModbusAddress> parse_modbus_list(std::string_view content) {
    std::vector<ModbusAddress> addresses;
    base::LineReader lines(content);
    while (const auto line = lines.next()) {
        if (*line == "END") break;
        // Characters are counted, not bytes of the code page; a comma is never part of one.
        const std::string text = base::gbk_to_utf8(*line);
        const std::size_t first = text.find(',');
        if (first == std::string::npos) break;
        const std::size_t second = text.find(',', first + 1);
        if (second == std::string::npos) break;
        const std::string_view fields(text);
        const std::string_view third = fields.substr(second + 1);
        addresses.push_back({first_characters(fields.substr(0, first), kKeyLength),
                             last_characters(third.substr(0, third.find(',')), kAddressLength)});
    }
    return addresses;
}

ModbusList load_modbus_list(const std::filesystem::path& folder) {
    const auto content = base::read_file(base::find_in(folder, "modbus.txt"));
    if (!content) return {};
    return {true, parse_modbus_list(*content)};
}

}  // namespace servo::params
