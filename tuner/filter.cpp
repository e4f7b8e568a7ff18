#include "tuner/filter.h"

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "tuner/single_precision.h"

namespace servo::tuner {

namespace {

using Complex = std::complex<double>;

constexpr std::array<FilterTypeTexts, 6> kTypeTexts{{
    {{"一阶低通滤波器", "1st order LPF"}, {"Bandwidth", "", "", ""}},
    {{"二阶低通滤波器", "2nd order LPF"}, {"Bandwidth", "Damping", "", ""}},
    {{"陷波滤波器", "Notch Filter"}, {"Notch F", "Damping", "Notch Width", "Notch Depth"}},
    {{"一阶超前滞后滤波器", "1st order leadlag filter"}, {"", "", "Cut Gain", "Phase Center"}},
    {{"二阶超前滞后滤波器", "2nd order leadlag filter"},
     {"", "Damping", "Cut Gain", "Phase Center"}},
    {{"滑动平均滤波", "MAF"}, {"Order(Int)", "", "Ts(s)", ""}},
}};

FilterRecord record(FilterType type, double a, double b, double c, double d) {
    return {static_cast<std::uint8_t>(type), single(a), single(b), single(c), single(d)};
}

// What came out of a power or a quotient and is no single any more is refused.
std::optional<FilterRecord> computed(FilterType type, double a, double b, double c, double d) {
    constexpr double kMost = std::numeric_limits<float>::max();
    for (const double value : {a, b, c, d})
        if (!(std::abs(value) <= kMost)) return std::nullopt;
    return record(type, a, b, c, d);
}

std::optional<FilterRecord> encode_leadlag(FilterType type, const std::array<double, 4>& p) {
    const int order = type == FilterType::kLeadLag1 ? 1 : 2;
    if (order == 2 && !(p[1] > 0.0)) return std::nullopt;
    const auto corners = dealwith_leadlag(p[2], p[3], order);
    if (!corners) return std::nullopt;
    const double damping = order == 2 ? 2.0 * p[1] : 0.0;
    return computed(type, corners->first, corners->second, damping, damping);
}

// The frequency axis of the bilinear transform, which is bent by the sampling, straightened at
// `exact`: a filter made at 16 kHz has there what it would have without sampling. j times this
// stands for s over 2 pi `exact`.
double bent(double frequency, double exact) {
    return std::tan(kPi * frequency / kLoopRate) / std::tan(kPi * exact / kLoopRate);
}

// 1 + 2 z s + s^2 at s = j x.
Complex quadratic(double x, double damping) {
    return {1.0 - x * x, 2.0 * damping * x};
}

// The mean of `order` samples, exact for their own sample time: sum of z^-k over `order`.
Complex moving_average(double frequency, double order, double sample_time) {
    // Whole turns between two samples do not show.
    const double product = frequency * sample_time;
    const double turns = product - std::nearbyint(product);
    const double denominator = order * std::sin(kPi * turns);
    if (denominator == 0.0) return 1.0;
    return std::polar(1.0, -kPi * (order - 1.0) * turns) * std::sin(kPi * order * turns) /
           denominator;
}

// The order is a whole number of samples; more than that many no drive keeps.
constexpr double kMostSamples = 1e6;

double whole_order(float a) {
    return std::clamp(std::nearbyint(double{a}), 1.0, kMostSamples);
}

bool positive(float value) {
    return value > 0.0F && std::isfinite(value);
}

// Whether the coefficients make a stable filter.
bool makes_filter(const FilterRecord& f) {
    switch (static_cast<FilterType>(f.type)) {
        case FilterType::kOff:
            return false;
        case FilterType::kLowPass1:
            return positive(f.a);
        case FilterType::kLowPass2:
            return positive(f.a) && positive(f.c);
        case FilterType::kNotch:
            return positive(f.a) && std::isfinite(f.c) && std::isfinite(f.d) &&
                   std::min(f.c, f.d) >= 0.0F && std::max(f.c, f.d) > 0.0F;
        case FilterType::kLeadLag1:
            return positive(f.a) && positive(f.b);
        case FilterType::kLeadLag2:
            return positive(f.a) && positive(f.b) && positive(f.d) && std::isfinite(f.c) &&
                   f.c >= 0.0F;
        case FilterType::kMovingAverage:
            return positive(f.a) && positive(f.c);
    }
    return false;
}

// Where the bilinear transform is exact: what the filter is set for.
double exact_frequency(const FilterRecord& f) {
    const auto type = static_cast<FilterType>(f.type);
    const bool lead_lag = type == FilterType::kLeadLag1 || type == FilterType::kLeadLag2;
    return lead_lag ? std::sqrt(double{f.a} * double{f.b}) : double{f.a};
}

Complex sampled(double frequency, const FilterRecord& f) {
    const double exact = exact_frequency(f);
    // The limit of all of them as `exact` comes near to half the rate.
    if (exact >= kLoopRate / 2.0) return 1.0;
    const double x = bent(frequency, exact);
    switch (static_cast<FilterType>(f.type)) {
        case FilterType::kLowPass1:
            return 1.0 / Complex{1.0, x};
        case FilterType::kLowPass2:
            return 1.0 / quadratic(x, f.c);
        case FilterType::kNotch:
            // A notch cuts, with a depth of 20 dB as with one of -20 dB.
            return quadratic(x, std::min(f.c, f.d)) / quadratic(x, std::max(f.c, f.d));
        case FilterType::kLeadLag1:
            return Complex{1.0, x * exact / f.a} / Complex{1.0, x * exact / f.b};
        case FilterType::kLeadLag2:
            return quadratic(x * exact / f.a, f.c / 2.0) / quadratic(x * exact / f.b, f.d / 2.0);
        case FilterType::kOff:
        case FilterType::kMovingAverage:
            break;
    }
    return 1.0;
}

}  // namespace

const FilterTypeTexts& filter_type_texts(int list_index) {
    return kTypeTexts[static_cast<std::size_t>(
        std::clamp(list_index, 0, static_cast<int>(kTypeTexts.size()) - 1))];
}

std::optional<TwoCoefficients> dealwith_leadlag(double gain, double centre, int order) {
    const double r = std::pow(10.0, gain / 20.0);
    const double first = centre * (order == 1 ? std::sqrt(r) : std::sqrt(std::sqrt(r)));
    if (first == 0.0) return std::nullopt;
    return TwoCoefficients{first, centre * centre / first};
}

std::optional<TwoCoefficients> dealwith_notch(double frequency, double width, double depth) {
    const double r = std::pow(10.0, depth / 40.0);
    if (frequency == 0.0 || r == 0.0) return std::nullopt;
    const double t = width / frequency;
    return TwoCoefficients{r * t, t / r};
}

std::optional<FilterRecord> encode(const FilterSlot& slot) {
    if (!slot.use || slot.type < 0 || slot.type >= static_cast<int>(kTypeTexts.size()))
        return FilterRecord{};
    std::array<double, kParameters> p{};
    std::transform(slot.parameters.begin(), slot.parameters.end(), p.begin(),
                   [](const std::string& text) { return base::leading_number(text); });
    const auto type = static_cast<FilterType>(slot.type + 1);
    switch (type) {
        case FilterType::kOff:
            break;
        case FilterType::kLowPass1:
            return record(type, p[0], 0.0, 0.0, 0.0);
        case FilterType::kLowPass2:
            if (!(p[1] > 0.0)) return std::nullopt;
            return record(type, p[0], 0.0, p[1], 0.0);
        case FilterType::kNotch: {
            const auto dampings = dealwith_notch(p[0], p[2], p[3]);
            if (!dampings) return std::nullopt;
            return computed(type, p[0], p[1], dampings->first, dampings->second);
        }
        case FilterType::kLeadLag1:
        case FilterType::kLeadLag2:
            return encode_leadlag(type, p);
        case FilterType::kMovingAverage:
            if (!(p[0] > 0.0) || !(p[2] > 0.0)) return std::nullopt;
            return record(type, p[0], 0.0, p[2], 0.0);
    }
    return FilterRecord{};
}

EncodedSlots encode(const std::array<FilterSlot, kSlots>& slots) {
    EncodedSlots encoded;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const std::optional<FilterRecord> one = encode(slots[i]);
        if (one)
            encoded.records[i] = *one;
        else
            encoded.refused = static_cast<int>(i) + 1;
    }
    return encoded;
}

std::complex<double> filter_response(double frequency, const FilterRecord& filter) {
    if (!makes_filter(filter)) return 1.0;
    if (static_cast<FilterType>(filter.type) == FilterType::kMovingAverage)
        return moving_average(frequency, whole_order(filter.a), filter.c);
    return sampled(frequency, filter);
}

int Cal_Filter_Mag_Ph_u(std::int16_t frequency, std::uint8_t type, float a, float b, float c,
                        float d, float* magnitude, float* phase) {
    const FilterRecord filter{type, a, b, c, d};
    const Complex response = filter_response(frequency, filter);
    *magnitude = single(std::abs(response));
    *phase = single(std::arg(response) * 180.0 / kPi);
    const bool off = type == 0 || type > static_cast<std::uint8_t>(FilterType::kMovingAverage);
    return off || makes_filter(filter) ? 0 : 1;
}

}  // namespace servo::tuner
