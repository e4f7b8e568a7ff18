#include "params/codec.h"

#include <string>

#include "base/number.h"

namespace servo::params {

std::string_view size_suffix(std::string_view type_name) {
    switch (decoder_size(type_name) % 10) {
        case 1:
            return "01";
        case 2:
            return "02";
        case 4:
            return "04";
        default:
            return {};
    }
}

std::optional<std::int32_t> commit_value(double value) {
    // Judged before rounding, so 2147483647.3 is refused although it would round to a fit. A NaN
    // lies nowhere.
    if (!(value >= -2147483648.0 && value <= 2147483647.0)) return std::nullopt;
    return static_cast<std::int32_t>(base::round_half_even(value));
}

double hex_value(std::string_view text) {
    return base::leading_number("&H" + std::string(text));
}

double item_value(std::string_view item, std::string_view unit) {
    const std::string_view number = item.substr(0, item.find(':'));
    return unit == "HEX" ? hex_value(number) : base::leading_number(number);
}

}  // namespace servo::params
