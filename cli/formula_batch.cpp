#include "cli/formula_batch.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "base/decimal.h"
#include "base/gbk.h"
#include "base/number.h"
#include "link/frame.h"
#include "params/codec.h"
#include "params/formula.h"

namespace servo::cli {

namespace {

constexpr std::string_view kBadRequest = "bad request";
constexpr std::string_view kError = "error";
constexpr std::size_t kLongestEntry = 10;  // characters

// --- fields -----------------------------------------------------------------------------------

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// The value of a text of hexadecimal digits and nothing else.
std::optional<std::uint32_t> hex_number(std::string_view text, std::size_t digits) {
    if (text.size() != digits) return std::nullopt;
    std::uint32_t value = 0;
    for (const char c : text) {
        if (hex_digit(c) < 0) return std::nullopt;
        value = value << 4 | static_cast<std::uint32_t>(hex_digit(c));
    }
    return value;
}

std::optional<std::string> unescaped(std::string_view field) {
    std::string text;
    while (!field.empty()) {
        const char c = field.front();
        field.remove_prefix(1);
        if (c != '\\') {
            text += c;
        } else if (field.starts_with('n')) {
            text += '\n';
            field.remove_prefix(1);
        } else if (field.starts_with('\\')) {
            text += '\\';
            field.remove_prefix(1);
        } else if (field.starts_with('x')) {
            const auto byte = hex_number(field.substr(1, 2), 2);
            if (!byte) return std::nullopt;
            text += static_cast<char>(*byte);
            field.remove_prefix(3);
        } else {
            return std::nullopt;
        }
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string field;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            field += "\\n";
        } else if (c == '\\') {
            field += "\\\\";
        } else if (byte < 0x20 || byte > 0x7E) {
            field += fmt::format("\\x{:02X}", byte);
        } else {
            field += c;
        }
    }
    return field;
}

std::optional<std::vector<std::string>> read_fields(std::string_view line) {
    std::vector<std::string> fields;
    for (;;) {
        const std::size_t tab = line.find('\t');
        auto field = unescaped(line.substr(0, tab));
        if (!field) return std::nullopt;
        fields.push_back(std::move(*field));
        if (tab == std::string_view::npos) return fields;
        line.remove_prefix(tab + 1);
    }
}

// --- numbers ----------------------------------------------------------------------------------

std::optional<std::int64_t> whole_number(std::string_view text, std::int64_t least,
                                         std::int64_t most) {
    const auto value = base::decimal_number(text);
    if (!value || *value != std::trunc(*value)) return std::nullopt;
    if (*value < static_cast<double>(least) || *value > static_cast<double>(most)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*value);
}

// Size codes are small; any other number is one that has no text.
std::optional<int> size_code(std::string_view text) {
    const auto size = whole_number(text, -1000000, 1000000);
    if (!size) return std::nullopt;
    return static_cast<int>(*size);
}

std::string digits17(double value) {
    return fmt::format("{:.17g}", value);
}

std::string digits17_or_error(const std::optional<double>& value) {
    return value ? digits17(*value) : std::string(kError);
}

std::string bad_request() {
    return std::string(kBadRequest);
}

// --- bytes ------------------------------------------------------------------------------------

template <std::size_t kCount>
std::string bytes_text(const std::array<std::uint8_t, kCount>& bytes) {
    return fmt::format("{:02X}", fmt::join(bytes, " "));
}

// Eight bytes of two digits, with or without blanks between them.
std::optional<link::Payload> payload_of(std::string text) {
    std::erase(text, ' ');
    link::Payload payload{};
    if (text.size() != 2 * payload.size()) return std::nullopt;
    for (std::size_t i = 0; i < payload.size(); ++i) {
        const auto byte = hex_number(std::string_view(text).substr(2 * i, 2), 2);
        if (!byte) return std::nullopt;
        payload[i] = static_cast<std::uint8_t>(*byte);
    }
    return payload;
}

// --- operands ---------------------------------------------------------------------------------

struct OperandPlace {
    link::Operand* operand = nullptr;
    bool is_16_bits = false;
};

OperandPlace operand_place(link::FormulaOperands& operands, std::string_view reference) {
    if (reference == "64100320") return {&operands.o64100320, false};
    if (reference == "65100310") return {&operands.o65100310, true};
    if (reference == "30400710") return {&operands.o30400710, false};
    if (reference == "60F61310") return {&operands.o60F61310, false};
    if (reference == "60F61110") return {&operands.o60F61110, false};
    return {};
}

}  // namespace

struct FormulaBatch::Request {
    std::string_view name;
    std::size_t fields = 0;  // its name included
    std::string (FormulaBatch::*answer)(const Fields&) = nullptr;
};

const std::vector<FormulaBatch::Request>& FormulaBatch::requests() {
    static const std::vector<Request> kRequests = {
        {"operand", 4, &FormulaBatch::operand}, {"eval", 2, &FormulaBatch::eval},
        {"split", 2, &FormulaBatch::split},     {"text", 5, &FormulaBatch::text},
        {"unit", 5, &FormulaBatch::unit},       {"value", 4, &FormulaBatch::value},
        {"hex", 2, &FormulaBatch::hex},         {"payload", 4, &FormulaBatch::payload},
        {"frame", 3, &FormulaBatch::frame},     {"reply", 3, &FormulaBatch::reply},
    };
    return kRequests;
}

std::string FormulaBatch::answer(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    const auto fields = read_fields(line);
    if (!fields) return bad_request();
    const auto found =
        std::find_if(requests().begin(), requests().end(), [&fields](const Request& request) {
            return request.name == fields->front() && request.fields == fields->size();
        });
    return found == requests().end() ? bad_request() : (this->*found->answer)(*fields);
}

std::string FormulaBatch::operand(const Fields& fields) {
    const OperandPlace place = operand_place(operands_, fields[1]);
    using Limits16 = std::numeric_limits<std::int16_t>;
    using Limits32 = std::numeric_limits<std::int32_t>;
    const auto held = place.is_16_bits ? whole_number(fields[2], Limits16::min(), Limits16::max())
                                       : whole_number(fields[2], Limits32::min(), Limits32::max());
    const auto seen = whole_number(fields[3], 0, 1);
    if (place.operand == nullptr || !held || !seen) return bad_request();
    *place.operand = {static_cast<std::int32_t>(*held), *seen == 1};
    return "ok";
}

std::string FormulaBatch::eval(const Fields& fields) {
    return digits17_or_error(params::eval_expression(fields[1]));
}

std::string FormulaBatch::split(const Fields& fields) {
    const params::FormulaHead head = params::split_formula(fields[1]);
    return escaped(head.unit) + '\t' + escaped(head.formula);
}

std::string FormulaBatch::text(const Fields& fields) {
    const auto raw = base::decimal_number(fields[1]);
    const auto size = size_code(fields[3]);
    if (!raw || !size) return bad_request();
    // The bytes themselves: UTF-8 could not show a byte that is no character.
    if (fields[2] == "ASCII") return escaped(params::ascii_bytes(*raw, *size));
    const auto shown = params::value_to_text(*raw, fields[2], fields[4], *size, operands_);
    return shown ? escaped(*shown) : std::string(kError);
}

std::string FormulaBatch::unit(const Fields& fields) {
    const auto raw = base::decimal_number(fields[1]);
    const auto size = size_code(fields[3]);
    if (!raw || !size) return bad_request();
    return digits17_or_error(params::value_to_unit(*raw, fields[2], fields[4], *size, operands_));
}

std::string FormulaBatch::value(const Fields& fields) {
    const std::string& typed = fields[1];
    const bool is_code_page = fields[2] == "ASCII" && !typed.empty();
    if (is_code_page && base::utf8_length(base::gbk_to_utf8(typed)) <= kLongestEntry) {
        return digits17(params::ascii_value(typed));
    }
    return digits17_or_error(params::text_to_value(typed, fields[2], fields[3], operands_));
}

std::string FormulaBatch::hex(const Fields& fields) {
    return digits17(params::hex_value(fields[1]));
}

std::string FormulaBatch::payload(const Fields& fields) {
    const auto key = hex_number(fields[1], 8);
    // A value is its 32 bits; they may be written with or without a sign.
    const auto bits = whole_number(fields[2], std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::uint32_t>::max());
    const auto read = whole_number(fields[3], 0, 255);
    if (!key || !bits || !read) return bad_request();
    return bytes_text(link::make_payload(*key, static_cast<std::int32_t>(*bits), *read != 0, 0));
}

std::string FormulaBatch::frame(const Fields& fields) {
    const auto id = whole_number(fields[1], 0, 255);
    const auto content = payload_of(fields[2]);
    if (!id || !content) return bad_request();
    return bytes_text(link::make_frame(static_cast<std::uint8_t>(*id), *content));
}

std::string FormulaBatch::reply(const Fields& fields) {
    const auto size = size_code(fields[1]);
    const auto content = payload_of(fields[2]);
    if (!size || !content) return bad_request();
    return digits17(link::reply_value(*content, *size));
}

}  // namespace servo::cli
