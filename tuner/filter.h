// The six filters: from the boxes to coefficients, and from coefficients to gain and phase.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/language.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

enum class FilterType : std::uint8_t {
    kOff,
    kLowPass1,       // a: bandwidth in Hz
    kLowPass2,       // a: bandwidth in Hz, c: damping
    kNotch,          // a: centre in Hz, c and d: damping ratios of numerator and denominator
    kLeadLag1,       // a, b: corners in Hz
    kLeadLag2,       // a, b: corners in Hz, c and d: twice the dampings
    kMovingAverage,  // a: order, c: sample time in seconds
};

// Texts of the type lists and of the parameter rows; rows without a label are blanked.
struct FilterTypeTexts {
    base::Text name;
    std::array<std::string_view, kParameters> labels;  // the same in both languages
};
const FilterTypeTexts& filter_type_texts(int list_index);  // 0 to 5

struct TwoCoefficients {
    double first = 0.0;
    double second = 0.0;
};
// Corners of a lead-lag filter with `gain` in dB and its phase centred at `centre` Hz. Nothing when
// that divides by zero.
std::optional<TwoCoefficients> dealwith_leadlag(double gain, double centre, int order);
// Numerator's and denominator's damping of a notch, from width in Hz and depth in dB.
std::optional<TwoCoefficients> dealwith_notch(double frequency, double width, double depth);

// A slot that is not in use gives type 0. Nothing for a refused one.
std::optional<FilterRecord> encode(const FilterSlot& slot);

// All six are tried. `refused` is the number of the last refused slot, 1 to 6, or 0.
struct EncodedSlots {
    std::array<FilterRecord, kSlots> records;
    int refused = 0;
};
EncodedSlots encode(const std::array<FilterSlot, kSlots>& slots);

// Pure functions of their arguments. Magnitude is a linear ratio, phase in degrees. A type of 0, or
// none of the six, passes everything: 1 and 0 degrees.
int Cal_Filter_Mag_Ph_u(std::int16_t frequency, std::uint8_t type, float a, float b, float c,
                        float d, float* magnitude, float* phase);

}  // namespace servo::tuner
