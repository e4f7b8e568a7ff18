// Gain and phase of the filters against the same filters run in time: the difference equation of
// each answers an impulse, and the answer's Fourier sum is what a measurement would show.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <vector>

#include "tuner/filter.h"

namespace servo::tuner {
namespace {

constexpr double kRate = 16000.0;
constexpr std::array<std::int16_t, 5> kFrequencies{1, 10, 100, 500, 1000};

// Numerator and denominator in powers of s, lowest first, up to the second.
struct Analog {
    std::array<double, 3> b;
    std::array<double, 3> a;
};

// s becomes k (1 - 1/z) / (1 + 1/z), with k such that `exact` Hz stays where it is; the polynomials
// are written out in powers of 1/z.
std::array<double, 3> in_z(const std::array<double, 3>& p, double exact) {
    const double k = 2.0 * std::numbers::pi * exact / std::tan(std::numbers::pi * exact / kRate);
    return {p[0] + p[1] * k + p[2] * k * k, 2.0 * (p[0] - p[2] * k * k),
            p[0] - p[1] * k + p[2] * k * k};
}

std::vector<double> impulse_response(const Analog& analog, double exact) {
    const auto b = in_z(analog.b, exact);
    const auto a = in_z(analog.a, exact);
    std::vector<double> out(8 * static_cast<std::size_t>(kRate));
    for (std::size_t n = 0; n < out.size(); ++n) {
        double sum = n < 3 ? b[n] : 0.0;
        if (n >= 1) sum -= a[1] * out[n - 1];
        if (n >= 2) sum -= a[2] * out[n - 2];
        out[n] = sum / a[0];
    }
    return out;
}

std::complex<double> measured(const std::vector<double>& response, double frequency, double rate) {
    std::complex<double> sum = 0.0;
    for (std::size_t n = 0; n < response.size(); ++n) {
        const double turns = std::fmod(frequency * static_cast<double>(n) / rate, 1.0);
        sum += response[n] * std::polar(1.0, -2.0 * std::numbers::pi * turns);
    }
    return sum;
}

void expect_same(const FilterRecord& f, const std::vector<double>& response, double rate) {
    for (const std::int16_t frequency : kFrequencies) {
        float magnitude = 0.0F;
        float phase = 0.0F;
        EXPECT_EQ(Cal_Filter_Mag_Ph_u(frequency, f.type, f.a, f.b, f.c, f.d, &magnitude, &phase),
                  0);
        const std::complex<double> wanted = measured(response, frequency, rate);
        const double wanted_phase = std::arg(wanted) * 180.0 / std::numbers::pi;
        EXPECT_NEAR(20.0 * std::log10(magnitude), 20.0 * std::log10(std::abs(wanted)), 0.01)
            << frequency << " Hz, type " << int{f.type} << ", a " << f.a;
        EXPECT_NEAR(std::remainder(phase - wanted_phase, 360.0), 0.0, 0.1)
            << frequency << " Hz, type " << int{f.type} << ", a " << f.a;
    }
}

double radians(double hertz) {
    return 2.0 * std::numbers::pi * hertz;
}

TEST(FilterCurve, OfALowPassOfFirstOrderIsThatOfItsDifferenceEquation) {
    for (const double a : {5.0, 100.0, 730.0, 3000.0})
        expect_same({1, static_cast<float>(a), 0, 0, 0},
                    impulse_response({{1, 0, 0}, {1, 1 / radians(a), 0}}, a), kRate);
}

TEST(FilterCurve, OfALowPassOfSecondOrderIsThatOfItsDifferenceEquation) {
    for (const double a : {20.0, 100.0, 500.0, 3000.0})
        for (const double damping : {0.2, 0.7071, 1.5}) {
            const double w = radians(a);
            expect_same({2, static_cast<float>(a), 0, static_cast<float>(damping), 0},
                        impulse_response({{1, 0, 0}, {1, 2 * damping / w, 1 / (w * w)}}, a), kRate);
        }
}

TEST(FilterCurve, OfANotchIsThatOfItsDifferenceEquation) {
    for (const double a : {30.0, 450.0, 780.0, 1000.0}) {
        const double w = radians(a);
        const double numerator = 0.04;
        const double denominator = 0.5;
        const auto response = impulse_response(
            {{1, 2 * numerator / w, 1 / (w * w)}, {1, 2 * denominator / w, 1 / (w * w)}}, a);
        expect_same({3, static_cast<float>(a), 0, 0.04F, 0.5F}, response, kRate);
    }
}

TEST(FilterCurve, OfALeadLagOfFirstOrderIsThatOfItsDifferenceEquation) {
    for (const double centre : {20.0, 200.0, 2000.0})
        for (const double spread : {0.3, 4.0}) {
            const double a = centre * spread;
            const double b = centre / spread;
            expect_same({4, static_cast<float>(a), static_cast<float>(b), 0, 0},
                        impulse_response({{1, 1 / radians(a), 0}, {1, 1 / radians(b), 0}}, centre),
                        kRate);
        }
}

TEST(FilterCurve, OfALeadLagOfSecondOrderIsThatOfItsDifferenceEquation) {
    for (const double centre : {30.0, 200.0, 2000.0})
        for (const double spread : {0.5, 2.0}) {
            const double a = radians(centre * spread);
            const double b = radians(centre / spread);
            const double twice = 1.2;
            expect_same({5, static_cast<float>(centre * spread),
                         static_cast<float>(centre / spread), 1.2F, 1.2F},
                        impulse_response({{1, twice / a, 1 / (a * a)}, {1, twice / b, 1 / (b * b)}},
                                         centre),
                        kRate);
        }
}

TEST(FilterCurve, OfAMovingAverageIsThatOfItsSamples) {
    const struct {
        std::size_t order;
        double rate;
    } averages[] = {{1, 16000},   {2, 16000}, {8, 16000}, {61, 16000},
                    {300, 16000}, {7, 4000},  {9, 1300}};
    for (const auto& one : averages)
        expect_same({6, static_cast<float>(one.order), 0, static_cast<float>(1 / one.rate), 0},
                    std::vector<double>(one.order, 1.0 / static_cast<double>(one.order)), one.rate);
}

std::complex<double> at(double frequency, const FilterRecord& filter) {
    return filter_response(frequency, filter);
}

TEST(FilterCurve, OfAMovingAverageIsFoldedToHalfATurn) {
    // 32 samples at 1 kHz, a phase of -15.5 samples: at 50 Hz -279 degrees, and the sinc is below
    // 0 there, which turns it by a half.
    float magnitude = 0;
    float phase = 0;
    Cal_Filter_Mag_Ph_u(50, 6, 32, 0, 0.001F, 0, &magnitude, &phase);
    EXPECT_NEAR(phase, -99.0, 0.01);
    for (int f = 1; f <= 1000; ++f) {
        Cal_Filter_Mag_Ph_u(static_cast<std::int16_t>(f), 6, 32, 0, 0.001F, 0, &magnitude, &phase);
        EXPECT_LE(std::abs(phase), 180.0F);
        EXPECT_LE(magnitude, 1.0F + 1e-6F);
    }
}

TEST(FilterCurve, OfAMovingAverageTakesTheNearestWholeOrder) {
    EXPECT_EQ(at(100, {6, 4.4F, 0, 0.001F, 0}), at(100, {6, 4.0F, 0, 0.001F, 0}));
    EXPECT_EQ(at(100, {6, 0.2F, 0, 0.001F, 0}), 1.0);
}

TEST(FilterCurve, OfANotchCutsByItsDepthWhateverItsSign) {
    for (const char* depth : {"20", "-20"}) {
        const auto record = encode(FilterSlot{true, 2, {"400", "0", "40", depth}});
        ASSERT_TRUE(record.has_value());
        EXPECT_NEAR(20 * std::log10(std::abs(at(400, *record))), -20.0, 0.001);
        EXPECT_NEAR(std::abs(at(1, *record)), 1.0, 1e-3);
    }
}

TEST(FilterCurve, OfALeadLagCutsHighFrequenciesByItsGain) {
    for (const int type : {3, 4}) {
        const auto record = encode(FilterSlot{true, type, {"0", "0.7", "12", "40"}});
        ASSERT_TRUE(record.has_value());
        EXPECT_NEAR(20 * std::log10(std::abs(at(7999, *record))), -12.0, 0.01);
        EXPECT_NEAR(20 * std::log10(std::abs(at(40, *record))), -6.0, 0.01);
        EXPECT_NEAR(std::abs(at(0.01, *record)), 1.0, 1e-4);
    }
}

TEST(FilterCurve, OfALowPassIsExactAtItsBandwidth) {
    for (const float a : {10.0F, 1000.0F, 5000.0F}) {
        EXPECT_NEAR(std::abs(at(a, {1, a, 0, 0, 0})), std::sqrt(0.5), 1e-9);
        EXPECT_NEAR(std::abs(at(a, {2, a, 0, 0.25F, 0})), 2.0, 1e-9);
    }
}

// Coefficients that make no filter: it is as if there were none, and the result says so.
TEST(FilterCurve, OfNoFilterPassesEverything) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const FilterRecord none[] = {
        {1, 0, 0, 0, 0},       {1, -10, 0, 0, 0},         {1, nan, 0, 0, 0},
        {1, inf, 0, 0, 0},     {2, 100, 0, 0, 0},         {2, 100, 0, -1, 0},
        {2, 0, 0, 1, 0},       {2, 100, 0, inf, 0},       {3, 0, 0, 0.1F, 0.1F},
        {3, 100, 0, 0, 0},     {3, 100, 0, -0.1F, -0.2F}, {3, 100, 0, nan, 0.1F},
        {4, 0, 100, 0, 0},     {4, 100, 0, 0, 0},         {4, -100, -100, 0, 0},
        {5, 100, 100, 1, 0},   {5, 100, 100, -1, 1},      {5, 0, 0, 1, 1},
        {6, 0, 0, 0.001F, 0},  {6, 4, 0, 0, 0},           {6, 4, 0, -1, 0},
        {6, inf, 0, 0.001F, 0}};
    for (const FilterRecord& f : none) {
        float magnitude = 0.0F;
        float phase = 1.0F;
        EXPECT_EQ(Cal_Filter_Mag_Ph_u(100, f.type, f.a, f.b, f.c, f.d, &magnitude, &phase), 1);
        EXPECT_EQ(magnitude, 1.0F) << int{f.type};
        EXPECT_EQ(phase, 0.0F) << int{f.type};
    }
}

TEST(FilterCurve, OfTypeOffOrAnUnknownTypePassesEverything) {
    for (const int type : {0, 7, 255}) {
        float magnitude = 0.0F;
        float phase = 1.0F;
        EXPECT_EQ(Cal_Filter_Mag_Ph_u(100, static_cast<std::uint8_t>(type), 50, 50, 1, 1,
                                      &magnitude, &phase),
                  0);
        EXPECT_EQ(magnitude, 1.0F);
        EXPECT_EQ(phase, 0.0F);
    }
}

TEST(FilterCurve, IsANumberForEveryFrequencyAndSize) {
    const float sizes[] = {1e-45F, 1e-30F, 1e-3F, 1.0F, 7999.0F, 8000.0F, 16000.0F, 1e30F, 3e38F};
    for (int type = 1; type <= 6; ++type)
        for (const float a : sizes)
            for (const float b : sizes)
                for (const int frequency : {-32768, -16000, -8000, -1, 0, 1, 8000, 16000, 32767}) {
                    float magnitude = -1.0F;
                    float phase = -1000.0F;
                    Cal_Filter_Mag_Ph_u(static_cast<std::int16_t>(frequency),
                                        static_cast<std::uint8_t>(type), a, b, b, a, &magnitude,
                                        &phase);
                    EXPECT_TRUE(std::isfinite(magnitude) && magnitude >= 0.0F)
                        << type << ' ' << a << ' ' << b << ' ' << frequency;
                    EXPECT_TRUE(std::abs(phase) <= 180.0F)
                        << type << ' ' << a << ' ' << b << ' ' << frequency;
                }
}

TEST(FilterCurve, OfABandwidthBeyondHalfTheRatePassesEverything) {
    for (const float a : {8000.0F, 12000.0F}) {
        EXPECT_EQ(at(1000, {1, a, 0, 0, 0}), 1.0);
        EXPECT_EQ(at(1000, {2, a, 0, 0.7F, 0}), 1.0);
        EXPECT_EQ(at(1000, {3, a, 0, 0.1F, 0.7F}), 1.0);
    }
}

}  // namespace
}  // namespace servo::tuner
