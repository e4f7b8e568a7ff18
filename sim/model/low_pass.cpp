#include "sim/model/low_pass.h"

#include <algorithm>
#include <cmath>

#include "sim/model/plant.h"

namespace servo::sim {

namespace {

// A corner too near to half the sampling rate can't be made; it is kept below.
constexpr double kHighestCorner = 0.45 * kStepsPerSecond;

}  // namespace

void LowPass::configure(double corner_hz) {
    share_ = corner_hz <= 0.0 ? 1.0 : 1.0 - std::exp(-2.0 * kPi * corner_hz * kStepSeconds);
}

// The bilinear transform of the Butterworth low pass, its corner kept exact.
void LowPass2::configure(double corner_hz) {
    open_ = corner_hz <= 0.0;
    if (open_) return;
    const double k = std::tan(kPi * std::min(corner_hz, kHighestCorner) * kStepSeconds);
    const double root = std::sqrt(2.0);
    const double norm = 1.0 / (1.0 + root * k + k * k);
    b0_ = k * k * norm;
    b1_ = 2.0 * b0_;
    b2_ = b0_;
    a1_ = 2.0 * (k * k - 1.0) * norm;
    a2_ = (1.0 - root * k + k * k) * norm;
}

double LowPass2::step(double in) {
    const double out = open_ ? in : b0_ * in + b1_ * in1_ + b2_ * in2_ - a1_ * out1_ - a2_ * out2_;
    in2_ = in1_;
    in1_ = in;
    out2_ = out1_;
    out1_ = out;
    return out;
}

void LowPass2::set(double value) {
    in1_ = value;
    in2_ = value;
    out1_ = value;
    out2_ = value;
}

}  // namespace servo::sim
