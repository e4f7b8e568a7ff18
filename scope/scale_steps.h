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
// goes to the next of 1, 2, 5, a rounding that went up keeps its digit, whichever it is. So six
// divisions always hold the span. A span of 0, or one that is no number, counts as 1.
ScaleStep scale_for_span(double span);

// One step of a scale's text up or down. Large steps move the first digit, small ones (`small`) the
// second. What was typed in another form is first brought to the form "2.0E-03"; a sign is kept; a
// text without a number above 0 counts as "1.0E+00". A step that would leave the numbers' range
// gives the text as it is.
std::string scale_up(std::string_view text, bool small);
std::string scale_down(std::string_view text, bool small);

// Text of an offset that a step has moved: at least one decimal, at most thirteen.
std::string offset_text(double offset);

// Text of the offset that automatic scaling chooses: it has one decimal more, since the centre of
// a curve is seldom a round number.
std::string auto_offset_text(double offset);

}  // namespace servo::scope
