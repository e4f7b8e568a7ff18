#include "cli/output.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "base/number.h"

namespace servo::cli {
namespace {

using Json = nlohmann::ordered_json;

std::string dump(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

double seconds(std::chrono::milliseconds time) {
    return static_cast<double>(time.count()) / 1000.0;
}

std::string plain(const Field& field) {
    if (const auto* text = std::get_if<std::string>(&field)) return field_text(*text);
    if (const auto* number = std::get_if<std::int64_t>(&field)) return std::to_string(*number);
    if (const auto* time = std::get_if<std::chrono::milliseconds>(&field))
        return base::format_fixed(seconds(*time), 3);
    return {};
}

Json as_json(const Field& field) {
    if (const auto* text = std::get_if<std::string>(&field)) return *text;
    if (const auto* number = std::get_if<std::int64_t>(&field)) return *number;
    if (const auto* time = std::get_if<std::chrono::milliseconds>(&field)) return seconds(*time);
    return nullptr;
}

}  // namespace

std::string field_text(std::string_view text) {
    std::string field;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n')
            field += "\\n";
        else if (c == '\t')
            field += "\\t";
        else if (byte < 0x20 || byte == 0x7F)
            field += fmt::format("\\x{:02X}", byte);
        else
            field += c;
    }
    return field;
}

void RowPrinter::row(const std::vector<Field>& fields) {
    if (json_) {
        json_row(fields);
        return;
    }
    std::string line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) line += '\t';
        line += plain(fields[i]);
    }
    output_.out(line + "\n");
}

void RowPrinter::json_row(const std::vector<Field>& fields) {
    Json object = Json::object();
    for (std::size_t i = 0; i < fields.size() && i < names_.size(); ++i)
        object[names_[i]] = as_json(fields[i]);
    output_.out((any_ ? ",\n " : "[\n ") + dump(object));
    any_ = true;
}

void RowPrinter::finish() {
    if (json_) output_.out(any_ ? "\n]\n" : "[]\n");
}

void print_record(const Output& output, bool json,
                  const std::vector<std::pair<std::string, Field>>& fields) {
    if (json) {
        Json object = Json::object();
        for (const auto& [name, field] : fields)
            object[name] = as_json(field);
        output.out(dump(object) + "\n");
        return;
    }
    for (const auto& [name, field] : fields)
        output.out(name + ": " + plain(field) + "\n");
}

}  // namespace servo::cli
