// The six filters: from the boxes to coefficients, and from coefficients to gain and phase.
#pragma once

#include <array>
#include <complex>
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
    kNotch,          // a: centre in Hz, c and d: damping ratios; the smaller is the numerator's
    kLeadLag1,       // a, b: corners of numerator and denominator in Hz
    kLeadLag2,       // a, b: the same, c and d: twice their dampings
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
// The two dampings of a notch, from width in Hz and depth in dB: the first is the greater one for a
// depth above 0. Nothing when that divides by zero.
std::optional<TwoCoefficients> dealwith_notch(double frequency, double width, double depth);

// A slot that is not in use gives type 0. Nothing for a refused one: by the table's conditions, or
// when a power or a quotient gives a number that no single holds.
std::optional<FilterRecord> encode(const FilterSlot& slot);

// All six are tried. `refused` is the number of the last refused slot, 1 to 6, or 0.
struct EncodedSlots {
    std::array<FilterRecord, kSlots> records;
    int refused = 0;
};
EncodedSlots encode(const std::array<FilterSlot, kSlots>& slots);

inline constexpr double kLoopRate = 16000.0;  // steps a second of the drive's loops

// The filter's frequency response, as the drive's loops have it at their 16 kHz; `frequency` in Hz.
// A type of 0, none of the six, or coefficients that make no stable filter pass everything: 1.
// Formulas: docs/decisions/tuner-model.md.
std::complex<double> filter_response(double frequency, const FilterRecord& filter);

// The same as a linear ratio and a phase, in degrees folded to -180 to 180. Never NaN. Returns 0,
// or 1 when the coefficients make no filter and it passes everything.
int Cal_Filter_Mag_Ph_u(std::int16_t frequency, std::uint8_t type, float a, float b, float c,
                        float d, float* magnitude, float* phase);

}  // namespace servo::tuner
