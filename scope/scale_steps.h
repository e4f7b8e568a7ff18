// The steps of scales and offsets.
#pragma once

#include <string>
#include <string_view>

namespace servo::scope {

// Mantissa digit and exponent of a scale, such as 2.0E-03.
struct ScaleStep {
    int mantissa = 1;
    int exponent = 0;

    double value() const;
    std::string text() const;  // "2.0E-03"
    bool operator==(const ScaleStep&) const = default;
};

// Units per division for a span of six divisions. One significant digit; a rounding that went down
// goes to the next of 1, 2, 5, a rounding that went up keeps its digit, whichever it is.
ScaleStep scale_for_span(double span);

// One step of a scale's text up or down. Large steps move the first digit, small ones (`small`) the
// second.
std::string scale_up(std::string_view text, bool small);
std::string scale_down(std::string_view text, bool small);

// An offset as its box shows it: up to thirteen decimals, always one.
std::string offset_text(double offset);

}  // namespace servo::scope
