#include "sim/memory.h"

#include <fmt/format.h>

#include "base/file.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

constexpr std::string_view kFirstLine = "drive memory 1\n";

// FNV-1a: enough to see that a file was cut or edited by hand.
std::uint32_t check_value(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char c : text)
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619U;
    return hash;
}

std::string in_quotes(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            out += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        } else {
            out += c;
        }
    }
    return out + '"';
}

std::optional<std::string> unquoted(std::string_view text) {
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') return std::nullopt;
    text = text.substr(1, text.size() - 2);
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            out += text[i];
            continue;
        }
        if (++i == text.size()) return std::nullopt;
        if (text[i] != 'x') {
            out += text[i];
            continue;
        }
        const auto byte = parse_hex(text.substr(i + 1, 2), 2);
        if (!byte) return std::nullopt;
        out += static_cast<char>(*byte);
        i += 2;
    }
    return out;
}

std::optional<Memory::Value> value_of(std::string_view text) {
    if (text.starts_with('"')) {
        auto characters = unquoted(text);
        if (!characters) return std::nullopt;
        return *std::move(characters);
    }
    const auto number = parse_integer(text);
    if (!number) return std::nullopt;
    return *number;
}

std::string last_line(std::size_t count, std::string_view lines) {
    return fmt::format("end\t{}\t{:08x}\n", count, check_value(lines));
}

}  // namespace

Memory::Memory(std::filesystem::path file) : file_(std::move(file)) {}

bool Memory::load() {
    if (file_.empty()) return true;
    const auto text = base::read_file(file_);
    if (!text) {
        std::error_code error;
        // A drive fresh from the factory has no file yet; one that can't be read is a fault.
        return !std::filesystem::exists(file_, error);
    }
    return from_text(*text);
}

bool Memory::save() const {
    return file_.empty() || base::write_file(file_, to_text());
}

const Memory::Value* Memory::find(dictionary::Identity id) const {
    const auto found = values_.find(id);
    return found == values_.end() ? nullptr : &found->second;
}

void Memory::put(dictionary::Identity id, Value value) {
    values_[id] = std::move(value);
}

void Memory::erase(dictionary::Identity id) {
    values_.erase(id);
}

std::string Memory::to_text() const {
    std::string lines;
    for (const auto& [id, value] : values_) {
        const auto* const number = std::get_if<std::int64_t>(&value);
        lines += fmt::format(
            "{:06X}\t{}\n", id,
            number != nullptr ? fmt::to_string(*number) : in_quotes(std::get<std::string>(value)));
    }
    return std::string(kFirstLine) + lines + last_line(values_.size(), lines);
}

bool Memory::from_text(std::string_view text) {
    values_.clear();
    if (!text.starts_with(kFirstLine)) return false;
    text.remove_prefix(kFirstLine.size());
    const std::size_t end = text.rfind("end\t");
    if (end == std::string_view::npos) return false;
    const std::string_view lines = text.substr(0, end);
    std::map<dictionary::Identity, Value> values;
    base::LineReader reader(lines);
    while (const auto line = reader.next()) {
        const std::size_t tab = line->find('\t');
        if (tab == std::string_view::npos) return false;
        const auto id = parse_identity(line->substr(0, tab));
        auto value = value_of(line->substr(tab + 1));
        if (!id || !value) return false;
        values[*id] = *std::move(value);
    }
    if (text.substr(end) != last_line(values.size(), lines)) return false;
    values_ = std::move(values);
    return true;
}

}  // namespace servo::sim
