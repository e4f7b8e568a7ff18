#include "tuner/loop_model.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "tuner/filter.h"

namespace servo::tuner {
namespace {

using Complex = std::complex<double>;

struct Outputs {
    std::array<float, 6> out{-1, -1, -1, -1, -1, -1};
    int result = -1;
};

Outputs loop(float gain, float integral, int frequency, Complex plant,
             const std::array<FilterRecord, 4>& f = {}, std::uint8_t code = kModelCode) {
    Outputs o;
    plant /= kLoopFactor;
    o.result = Cal_Loop_Mag_Ph_u(code, gain, integral, static_cast<std::int16_t>(frequency),
                                 static_cast<float>(plant.real()), static_cast<float>(plant.imag()),
                                 f[0], f[1], f[2], f[3], &o.out[0], &o.out[1], &o.out[2], &o.out[3],
                                 &o.out[4], &o.out[5]);
    return o;
}

TEST(LoopModel, OpensAndClosesTheVelocityLoopAndThePositionLoop) {
    // -2j closed is -2j / (1 - 2j) = 0.8 - 0.4j; over j 5 Hz: -0.08 - 0.16j; closed:
    // (-0.08 - 0.16j) / (0.92 - 0.16j).
    const Outputs o = loop(4.0F, 0.0F, 5, {0.0, -0.5});
    EXPECT_EQ(o.result, 0);
    EXPECT_NEAR(o.out[0], 2.0, 1e-6);
    EXPECT_NEAR(o.out[1], -90.0, 1e-4);
    EXPECT_NEAR(o.out[2], std::sqrt(0.8), 1e-6);
    EXPECT_NEAR(o.out[3], -26.565051, 1e-4);
    EXPECT_NEAR(o.out[4], std::sqrt(0.8) / 5.0, 1e-6);
    EXPECT_NEAR(o.out[5], std::sqrt(0.0064 + 0.0256) / std::sqrt(0.8464 + 0.0256), 1e-6);
}

TEST(LoopModel, HasFourFiltersInSeries) {
    const std::array<FilterRecord, 4> filters{
        {{1, 100, 0, 0, 0}, {3, 50, 0, 0.1F, 0.6F}, {4, 300, 30, 0, 0}, {6, 5, 0, 0.001F, 0}}};
    Complex product = 1.0;
    for (const FilterRecord& f : filters)
        product *= filter_response(40, f);
    const Outputs o = loop(1.0F, 0.0F, 40, 0.5, filters);
    EXPECT_NEAR(o.out[0], std::abs(product) * 0.5, 1e-6);
    EXPECT_NEAR(o.out[1], std::arg(product) * 180 / std::numbers::pi, 1e-4);
}

// The integral part as the drive computes it: a sum at 16 kHz to which the newest error belongs.
TEST(LoopModel, HasTheIntegralPartOfADriveThatAddsAt16kHz) {
    constexpr int kPeriod = 160;  // 100 Hz
    const double corner = 30.0;
    double integral = 0.0;
    Complex answer = 0.0;
    Complex excitation = 0.0;
    for (int n = 0; n < 10 * kPeriod; ++n) {
        const Complex turn = std::polar(1.0, 2.0 * std::numbers::pi * n / kPeriod);
        const double error = turn.real();
        integral += 2.0 * std::numbers::pi * corner / 16000.0 * error;
        answer += (error + integral) * std::conj(turn);
        excitation += error * std::conj(turn);
    }
    const Complex wanted = answer / excitation;
    const Outputs o = loop(3.0F, static_cast<float>(corner), 100, 1.0);
    EXPECT_NEAR(o.out[0], 3.0 * std::abs(wanted), 1e-5);
    EXPECT_NEAR(o.out[1], std::arg(wanted) * 180 / std::numbers::pi, 1e-3);
}

TEST(LoopModel, HasAsMuchIntegralAsProportionalPartAtTheCorner) {
    const Outputs o = loop(1.0F, 20.0F, 20, 1.0);
    EXPECT_NEAR(o.out[0], std::sqrt(2.0), 0.01);
    EXPECT_NEAR(o.out[1], -45.0, 0.3);
}

TEST(LoopModel, FoldsItsPhases) {
    const Outputs o = loop(1.0F, 0.0F, 10, std::polar(0.5, -200.0 * std::numbers::pi / 180.0));
    EXPECT_NEAR(o.out[1], 160.0, 1e-4);
}

TEST(LoopModel, KnowsNoOtherModel) {
    for (const int code : {0, 1, 0x7F, 0x81, 0xFF}) {
        const Outputs o = loop(1, 0, 10, 1.0, {}, static_cast<std::uint8_t>(code));
        EXPECT_EQ(o.result, 1);
        EXPECT_EQ(o.out, (std::array<float, 6>{}));
    }
}

TEST(LoopModel, HasNoResponseAtFrequencyZeroOrBelow) {
    for (const int frequency : {0, -1, -32768}) {
        const Outputs o = loop(1, 1, frequency, 1.0);
        EXPECT_EQ(o.result, 1);
        EXPECT_EQ(o.out, (std::array<float, 6>{}));
    }
}

TEST(LoopModel, HasNoResponseOfAPlantThatIsNoNumber) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Complex plant : {Complex{inf, 0}, Complex{0, -inf}, Complex{nan, 0}}) {
        const Outputs o = loop(1, 1, 10, plant);
        EXPECT_EQ(o.result, 1);
        EXPECT_EQ(o.out, (std::array<float, 6>{}));
    }
}

TEST(LoopModel, OfALoopThroughMinusOneStaysFinite) {
    const Outputs o = loop(1, 0, 10, -1.0);
    EXPECT_EQ(o.result, 0);
    for (const float value : o.out)
        EXPECT_TRUE(std::isfinite(value));
    EXPECT_GT(o.out[2], 1e6F);
}

TEST(LoopModel, OfNoPlantIsNothing) {
    const Outputs o = loop(1, 1, 10, 0.0);
    EXPECT_EQ(o.result, 0);
    for (const float value : o.out)
        EXPECT_EQ(value, 0.0F);
}

}  // namespace
}  // namespace servo::tuner
