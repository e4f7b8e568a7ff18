// The transform of any length, and amplitudes that read true.
#include "scope/spectrum.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "scope/fourier.h"

namespace servo::scope {
namespace {

using std::numbers::pi;
using Values = std::vector<double>;

constexpr SpectrumWindow kWindows[] = {SpectrumWindow::kRectangle, SpectrumWindow::kHann,
                                       SpectrumWindow::kHamming, SpectrumWindow::kBlackman,
                                       SpectrumWindow::kFlatTop};

Values cosine(std::size_t count, double cycles, double amplitude, double phase = 0.3) {
    Values values(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] =
            amplitude *
            std::cos(2 * pi * cycles * static_cast<double>(i) / static_cast<double>(count) + phase);
    return values;
}

// By its definition, one line after the other.
std::vector<std::complex<double>> slow_transform(const Values& values) {
    const std::size_t count = values.size();
    std::vector<std::complex<double>> lines(count);
    for (std::size_t k = 0; k < count; ++k)
        for (std::size_t i = 0; i < count; ++i)
            lines[k] += values[i] * std::polar(1.0, -2 * pi * static_cast<double>(i * k % count) /
                                                        static_cast<double>(count));
    return lines;
}

double power(const Values& values) {
    double sum = 0;
    for (const double value : values)
        sum += value * value;
    return sum;
}

TEST(Fourier, EmptyInEmptyOut) {
    EXPECT_TRUE(fourier_transform({}).empty());
}

TEST(Fourier, AgreesWithTheDefinitionForEveryShortLength) {
    for (std::size_t count = 1; count <= 70; ++count) {
        Values values(count);
        for (std::size_t i = 0; i < count; ++i)
            values[i] = std::sin(static_cast<double>(i * i + 1)) * 10;
        const auto fast = fourier_transform(values);
        const auto slow = slow_transform(values);
        ASSERT_EQ(fast.size(), count);
        for (std::size_t k = 0; k < count; ++k)
            EXPECT_NEAR(std::abs(fast[k] - slow[k]), 0.0, 1e-11) << count << " line " << k;
    }
}

RC_GTEST_PROP(FourierProperty, AgreesWithTheDefinitionForAnyValues,
              (const std::vector<std::int16_t>& raw)) {
    const Values values(raw.begin(), raw.end());
    const auto fast = fourier_transform(values);
    const auto slow = slow_transform(values);
    RC_ASSERT(fast.size() == slow.size());
    for (std::size_t k = 0; k < fast.size(); ++k)
        RC_ASSERT(std::abs(fast[k] - slow[k]) <
                  1e-11 * (1 + std::sqrt(power(values))) * static_cast<double>(1 + values.size()));
}

TEST(Fourier, KeepsThePower) {
    // Parseval: the squares of the lines are the length times those of the values.
    for (const std::size_t count : {1u, 2u, 3u, 64u, 97u, 1000u, 4096u, 8191u, 8192u}) {
        const Values values = cosine(count, 3.7, 5.0);
        double lines = 0;
        for (const auto& line : fourier_transform(values))
            lines += std::norm(line);
        const double expected = power(values) * static_cast<double>(count);
        EXPECT_NEAR(lines / expected, 1.0, 1e-12) << count;
    }
}

TEST(Spectrum, EmptyStretchHasNoLines) {
    const Spectrum spectrum = spectrum_of({}, 62.5, SpectrumWindow::kHann);
    EXPECT_TRUE(spectrum.amplitudes.empty());
    EXPECT_EQ(spectrum.step_hz, 0.0);
}

TEST(Spectrum, LinesReachHalfTheSamplingRate) {
    // 16 kHz, 160 samples: 100 Hz from line to line, up to 8 kHz.
    const Spectrum even = spectrum_of(Values(160), 62.5, SpectrumWindow::kHann);
    EXPECT_DOUBLE_EQ(even.step_hz, 100.0);
    EXPECT_EQ(even.amplitudes.size(), 81u);
    const Spectrum odd = spectrum_of(Values(5), 1000, SpectrumWindow::kHann);
    EXPECT_DOUBLE_EQ(odd.step_hz, 200.0);
    EXPECT_EQ(odd.amplitudes.size(), 3u);
    EXPECT_EQ(spectrum_of(Values(5), 0, SpectrumWindow::kHann).step_hz, 0.0);
}

TEST(Spectrum, SineOnALineReadsItsAmplitudeInEveryWindowAndLength) {
    for (const SpectrumWindow window : kWindows) {
        for (const std::size_t count : {64u, 97u, 500u, 8191u, 8192u}) {
            const Spectrum spectrum = spectrum_of(cosine(count, 12, 2.5), 62.5, window);
            EXPECT_NEAR(spectrum.amplitudes[12], 2.5, 1e-9) << count;
            // No window is wider than four lines to a side.
            for (std::size_t k = 0; k < spectrum.amplitudes.size(); ++k) {
                if (k >= 8 && k <= 16) continue;
                ASSERT_NEAR(spectrum.amplitudes[k], 0.0, 1e-9) << count << " line " << k;
            }
        }
    }
}

TEST(Spectrum, TwoSinesReadApart) {
    Values values = cosine(1000, 50, 1.0);
    const Values second = cosine(1000, 120, 0.001, 1.1);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] += second[i] + 7.0;
    const Spectrum spectrum = spectrum_of(values, 62.5, SpectrumWindow::kHann);
    EXPECT_NEAR(spectrum.amplitudes[50], 1.0, 1e-10);
    EXPECT_NEAR(spectrum.amplitudes[120], 0.001, 1e-10);
    EXPECT_NEAR(spectrum.amplitudes[0], 0.0, 1e-10) << "the mean is taken off";
}

TEST(Spectrum, SineBetweenTwoLinesReadsTrueInTheFlatTopWindow) {
    const Values values = cosine(2048, 100.5, 4.0);
    const auto largest = [&values](SpectrumWindow window) {
        const auto amplitudes = spectrum_of(values, 62.5, window).amplitudes;
        return *std::max_element(amplitudes.begin(), amplitudes.end());
    };
    EXPECT_NEAR(largest(SpectrumWindow::kFlatTop), 4.0, 4.0 * 0.003);
    // What the others are known to lose there.
    EXPECT_NEAR(largest(SpectrumWindow::kRectangle), 4.0 * 0.637, 4.0 * 0.01);
    EXPECT_NEAR(largest(SpectrumWindow::kHann), 4.0 * 0.849, 4.0 * 0.01);
}

TEST(Spectrum, ConstantIsItsMeanAndNothingElse) {
    const Values values(300, -2.5);
    for (const SpectrumWindow window : kWindows) {
        const Spectrum without = spectrum_of(values, 62.5, window);
        for (const double amplitude : without.amplitudes)
            ASSERT_EQ(amplitude, 0.0);
        const Spectrum with = spectrum_of(values, 62.5, window, true);
        EXPECT_NEAR(with.amplitudes[0], 2.5, 1e-12);
        EXPECT_NEAR(with.amplitudes[7], 0.0, 1e-12);
    }
}

TEST(Spectrum, OneSampleIsAMeanAlone) {
    for (const SpectrumWindow window : kWindows) {
        EXPECT_EQ(spectrum_of(Values{3}, 62.5, window).amplitudes, Values{0});
        EXPECT_EQ(spectrum_of(Values{3}, 62.5, window, true).amplitudes, Values{3});
        EXPECT_DOUBLE_EQ(spectrum_of(Values{3}, 62.5, window).step_hz, 16000.0);
    }
}

TEST(Spectrum, TwoSamplesAreAMeanAndAnAlternation) {
    const Spectrum spectrum = spectrum_of(Values{5, 1}, 62.5, SpectrumWindow::kRectangle, true);
    ASSERT_EQ(spectrum.amplitudes.size(), 2u);
    EXPECT_DOUBLE_EQ(spectrum.amplitudes[0], 3.0);
    EXPECT_DOUBLE_EQ(spectrum.amplitudes[1], 2.0);
}

TEST(Spectrum, AlternationAtHalfTheRateReadsItsAmplitude) {
    Values values(512);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = i % 2 == 0 ? 1.5 : -1.5;
    for (const SpectrumWindow window : kWindows)
        EXPECT_NEAR(spectrum_of(values, 62.5, window).amplitudes.back(), 1.5, 1e-9);
}

TEST(Spectrum, IsFiniteForEveryShortLengthAndWindow) {
    for (const SpectrumWindow window : kWindows) {
        for (std::size_t count = 1; count <= 20; ++count) {
            Values values(count);
            for (std::size_t i = 0; i < count; ++i)
                values[i] = static_cast<double>(i);
            for (const double amplitude : spectrum_of(values, 62.5, window, true).amplitudes) {
                EXPECT_TRUE(std::isfinite(amplitude)) << count;
                EXPECT_LE(amplitude, 4.0 * static_cast<double>(count)) << count;
            }
        }
    }
}

}  // namespace
}  // namespace servo::scope
