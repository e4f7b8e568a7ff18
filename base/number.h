// Numbers the way the data files and the drive's texts need them. Nothing here asks the locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace servo::base {

// The number at the start of a text: optional blanks, optional sign, digits with at most one '.',
// optional exponent; stops at the first other character; 0 when there are no digits. A "&H" (or
// "&h") where the digits may begin hands over to scan_hex. An exponent that overflows gives
// infinity.
double leading_number(std::string_view text);

// The "&H" rule for the digits behind the prefix: up to four significant digits are a signed 16-bit
// number, five to eight a signed 32-bit one, more the positive number. Reads as far as the text is
// hexadecimal, 0 when it is not.
double scan_hex(std::string_view digits);

// To the nearest whole number, halves to the even neighbour. NaN gives 0; values beyond the range
// of the result are clamped.
std::int64_t round_half_even(double value);

// Pattern "0": whole number, halves away from zero, judged on the 15-digit decimal text of the
// value. A negative value that rounds to zero prints without a sign.
std::string format_whole(double value);

// Pattern "0.00" with `decimals` places (0 to 15); same rounding and sign rule.
std::string format_fixed(double value, int decimals);

// Pattern "0.####" with up to `decimals` places: trailing zeros, and then the point, are left out.
std::string format_up_to(double value, int decimals);

// Plain text of a number with up to 15 significant digits; "1E+15", "1E-05" from 1E+15 up and below
// 1E-04.
std::string number_text(double value);

// Upper-case hexadecimal digits without leading zeros; a negative value shows the two's complement
// of 32 bits.
std::string hex_text(std::int64_t value);

}  // namespace servo::base
