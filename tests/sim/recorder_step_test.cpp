// A recorded step of the speed against the answer that control theory gives for this loop.
//
// The reference is derived here from the machine's figures and the loop's parameters, in continuous
// time, and shares nothing with the model that is stepped:
//
//            demand          e     PI       torque filter   current loop     motor and load
//     r ------------->(+)------> Kp + Ki/s --> 1/(1+s tf) ----> 1/(1+s ti) ----> Kt P(s) --+--> w
//                      (-)                                                                |
//                       +------------- low pass F(s) <------ 1/(1+s td) <-----------------+
//
//     P(s) = (Jl s^2 + d s + k) / (s (Jm Jl s^2 + (Jm+Jl)(d s + k)))
//
// td is the mean delay of a speed that is a difference over four steps. The step response of the
// feedback is the sum over the poles of the closed loop; dry friction is constant while the shaft
// turns one way, so it drops out of the difference to the steady state before the step.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using namespace recorder;
using Complex = std::complex<double>;

// Coefficients, that of the highest power first.
using Polynomial = std::vector<double>;

Polynomial times(const Polynomial& a, const Polynomial& b) {
    Polynomial out(a.size() + b.size() - 1, 0.0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t j = 0; j < b.size(); ++j)
            out[i + j] += a[i] * b[j];
    }
    return out;
}

Polynomial plus(Polynomial a, Polynomial b) {
    if (a.size() < b.size()) std::swap(a, b);
    for (std::size_t i = 0; i < b.size(); ++i)
        a[a.size() - b.size() + i] += b[i];
    return a;
}

Complex at(const Polynomial& p, Complex s) {
    Complex sum = 0.0;
    for (const double c : p)
        sum = sum * s + c;
    return sum;
}

Polynomial derived(const Polynomial& p) {
    Polynomial out;
    for (std::size_t i = 0; i + 1 < p.size(); ++i)
        out.push_back(p[i] * static_cast<double>(p.size() - 1 - i));
    return out;
}

// All roots at once, after Durand and Kerner.
std::vector<Complex> roots(Polynomial p) {
    const double lead = p.front();
    for (double& c : p)
        c /= lead;
    std::vector<Complex> found;
    // A circle of about the right size: the geometric mean of the roots' sizes.
    const auto degree = static_cast<double>(p.size() - 1);
    const double size = std::pow(std::abs(p.back()), 1.0 / degree);
    for (std::size_t i = 0; i + 1 < p.size(); ++i)
        found.push_back(std::polar(size, 0.4 + 2.0 * M_PI * static_cast<double>(i) / degree));
    for (int round = 0; round < 2000; ++round) {
        double moved = 0.0;
        for (std::size_t i = 0; i < found.size(); ++i) {
            Complex below = 1.0;
            for (std::size_t j = 0; j < found.size(); ++j) {
                if (j != i) below *= found[i] - found[j];
            }
            const Complex shift = at(p, found[i]) / below;
            found[i] -= shift;
            moved = std::max(moved, std::abs(shift) / size);
        }
        if (moved < 1e-13) break;
    }
    return found;
}

// Loop and machine in SI units. The drive's parameters are those that the test writes.
struct Loop {
    double kvp = 200.0;
    double kvi = 20.0;
    double unit = 4.5403e-4;           // A at 1 rad/s, of one unit of Kvp
    double torque_filter_hz = 1200.0;  // 60F6:05
    double current_hz = 1500.0;        // 60F6:03
    double speed_filter_hz = 500.0;    // 60F9:05
};

constexpr double kStep = 62.5e-6;  // of the loop, s

// A lag that goes the share `a` of its way with every step, and the first share at once, is in the
// mean that late: the sum of what is missing after each step.
double sampled_lag(double a) {
    return kStep * (1.0 - a) / a;
}

// Answer of the loop's feedback to a unit step of the demand.
class StepResponse {
  public:
    explicit StepResponse(const Loop& loop) {
        constexpr double kKt = 0.345;
        constexpr double kMotor = 2.77e-5;
        constexpr double kLoad = 5.54e-5;
        constexpr double kStiffness = 443.6;
        constexpr double kDamping = 9.0e-3;
        const double w = 2.0 * M_PI * loop.speed_filter_hz;
        const Polynomial controller{loop.unit * loop.kvp, loop.unit * loop.kvi * 1000.0};
        const Polynomial plant{kKt * kLoad, kKt * kDamping, kKt * kStiffness};
        const Polynomial mass{kMotor * kLoad, (kMotor + kLoad) * kDamping,
                              (kMotor + kLoad) * kStiffness, 0.0};
        const double corner = 2.0 * M_PI * loop.torque_filter_hz;
        const Polynomial torque_filter{sampled_lag(1.0 - std::exp(-corner * kStep)), 1.0};
        const Polynomial current{sampled_lag(2.0 * M_PI * loop.current_hz * kStep), 1.0};
        const Polynomial delay{2.0 * kStep, 1.0};
        const Polynomial filter{1.0, std::sqrt(2.0) * w, w * w};
        numerator_ = times(times(controller, plant), {w * w});
        Polynomial open = times(times({1.0, 0.0}, mass), times(torque_filter, current));
        open = times(times(open, delay), filter);
        denominator_ = plus(open, numerator_);
        poles_ = roots(denominator_);
    }

    double operator()(double seconds) const {
        if (seconds <= 0.0) return 0.0;
        Complex sum = numerator_.back() / denominator_.back();
        const Polynomial slope = derived(denominator_);
        for (const Complex& pole : poles_)
            sum += at(numerator_, pole) / (pole * at(slope, pole)) * std::exp(pole * seconds);
        return sum.real();
    }

    bool stable() const {
        return std::all_of(poles_.begin(), poles_.end(),
                           [](const Complex& pole) { return pole.real() < 0.0; });
    }

  private:
    Polynomial numerator_;
    Polynomial denominator_;
    std::vector<Complex> poles_;
};

constexpr double kRpm = 512.0 * 10000 / 1875;  // raw speed of one turn a minute
constexpr int kBefore = 100;
constexpr int kRows = 1000;

struct Recorded {
    std::vector<double> feedback;  // of the step, 0 before and 1 after; row 0 is the trigger
    std::vector<double> demand;
    double noise = 0.0;  // greatest deviation before the step
};

// From 300 to 400 rpm: the shaft turns one way all the time, and neither current nor voltage comes
// near its limit.
Recorded record_step(const Loop& loop) {
    constexpr double kFrom = 300.0 * kRpm;
    constexpr double kTo = 400.0 * kRpm;
    RecorderBench bench;
    bench.drive().set_value(0x60F901, std::llround(loop.kvp));
    bench.drive().set_value(0x60F902, std::llround(loop.kvi));
    bench.set(kWide12, source(0x60F916, 32));
    bench.set(kWide34, source(0x606B00, 32));
    bench.set(kTrigger, source(0x606B00, 32));
    bench.set(kLevel, std::llround((kFrom + kTo) / 2.0));
    bench.set(kOffset, kBefore);
    bench.set(kCount, kRows);
    bench.enable(-3);
    bench.drive().set_value(0x60FF00, std::llround(kFrom));
    bench.run(milliseconds(600));
    bench.start();
    bench.run(milliseconds(20));
    EXPECT_EQ(bench.state(), 2);
    bench.drive().set_value(0x60FF00, std::llround(kTo));
    bench.wait();
    const auto rows = columns(bench.read_text(kBuffer).value_or(""), {-4, -4});
    EXPECT_EQ(bench.read(kTriggerPosition), 100U);
    Recorded out;
    for (std::size_t i = 0; i < rows[0].size(); ++i) {
        const double feedback = (static_cast<double>(rows[0][i]) - kFrom) / (kTo - kFrom);
        if (i < kBefore) {
            out.noise = std::max(out.noise, std::abs(feedback));
        } else {
            out.feedback.push_back(feedback);
            out.demand.push_back((static_cast<double>(rows[1][i]) - kFrom) / (kTo - kFrom));
        }
    }
    return out;
}

double greatest_difference(const Recorded& recorded, const StepResponse& response) {
    double greatest = 0.0;
    for (std::size_t i = 0; i < recorded.feedback.size(); ++i) {
        const double seconds = static_cast<double>(i) * 62.5e-6;
        greatest = std::max(greatest, std::abs(recorded.feedback[i] - response(seconds)));
    }
    return greatest;
}

// What continuous time leaves out is a fraction of a step of 62.5 us in each block: the integral
// counts the error of the step itself, shaft and angle are stepped one after the other. That is a
// shift in time, which shows as a difference in proportion to the slope, so to the gain: measured
// 0.010, 0.020 and 0.027 of the step at a Kvp of 100, 200 and 300.
double tolerance(const Loop& loop) {
    return 0.0125 * loop.kvp / 100.0;
}

class StepOf : public ::testing::TestWithParam<Loop> {};

TEST_P(StepOf, TheLoopIsTheOneOfTheory) {
    const Recorded recorded = record_step(GetParam());
    const StepResponse response(GetParam());
    ASSERT_TRUE(response.stable());
    ASSERT_EQ(recorded.feedback.size(), static_cast<std::size_t>(kRows - kBefore));
    EXPECT_DOUBLE_EQ(recorded.demand.front(), recorded.demand.back());
    EXPECT_NEAR(recorded.demand.front(), 1.0, 1e-5);
    // The speed's steps of 62.5 counts/s, through the filter.
    EXPECT_LT(recorded.noise, 0.002);
    EXPECT_LT(greatest_difference(recorded, response), tolerance(GetParam()));
}

// The tolerance is narrow enough to tell this loop from its neighbours.
TEST_P(StepOf, ALoopWithKvpOffByATenthOrKviByAThirdIsAnother) {
    const Recorded recorded = record_step(GetParam());
    const double least = tolerance(GetParam());
    for (const double sign : {-1.0, 1.0}) {
        Loop gain = GetParam();
        gain.kvp *= 1.0 + sign / 10.0;
        EXPECT_GT(greatest_difference(recorded, StepResponse(gain)), least) << sign;
        Loop integral = GetParam();
        integral.kvi *= 1.0 + sign / 3.0;
        EXPECT_GT(greatest_difference(recorded, StepResponse(integral)), least) << sign;
    }
}

INSTANTIATE_TEST_SUITE_P(Gains, StepOf,
                         ::testing::Values(Loop{}, Loop{.kvp = 100.0, .kvi = 5.0},
                                           Loop{.kvp = 300.0, .kvi = 20.0}));

}  // namespace
}  // namespace servo::sim::test
