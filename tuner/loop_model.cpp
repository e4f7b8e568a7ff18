#include "tuner/loop_model.h"

#include <cmath>
#include <complex>

#include "tuner/filter.h"
#include "tuner/single_precision.h"

namespace servo::tuner {

namespace {

using Complex = std::complex<double>;

// A loop that stands on the point -1 has no closed response; nearer than this it counts as this
// near.
constexpr double kNearest = 1e-9;

float degrees(Complex value) {
    return single(std::arg(value) * 180.0 / kPi);
}

}  // namespace

Complex pi_response(double frequency, double corner) {
    const double step = 2.0 * kPi * frequency / kLoopRate;  // radians
    const Complex difference = 1.0 - std::polar(1.0, -step);
    return 1.0 + 2.0 * kPi * corner / kLoopRate / difference;
}

Complex closed(Complex open_loop) {
    Complex difference = 1.0 + open_loop;
    if (std::abs(difference) < kNearest) difference = kNearest;
    return open_loop / difference;
}

Complex position_response(double frequency, Complex closed_velocity) {
    return closed_velocity / Complex{0.0, frequency};
}

int Cal_Loop_Mag_Ph_u(std::uint8_t modelCode, float loopGain, float loopIntegral,
                      std::int16_t frequency, float plantRe, float plantIm, FilterRecord filter1,
                      FilterRecord filter2, FilterRecord filter3, FilterRecord filter4, float* out1,
                      float* out2, float* out3, float* out4, float* out5, float* out6) {
    for (float* out : {out1, out2, out3, out4, out5, out6})
        *out = 0.0F;
    if (modelCode != kModelCode || frequency <= 0) return 1;

    Complex filters = 1.0;
    for (const FilterRecord* filter : {&filter1, &filter2, &filter3, &filter4})
        if (filter->type != 0) filters *= filter_response(frequency, *filter);
    const Complex plant{plantRe, plantIm};
    const Complex open =
        double{loopGain} * kLoopFactor * pi_response(frequency, loopIntegral) * filters * plant;
    if (!std::isfinite(open.real()) || !std::isfinite(open.imag())) return 1;

    const Complex velocity = closed(open);
    const Complex position = position_response(frequency, velocity);
    *out1 = single(std::abs(open));
    *out2 = degrees(open);
    *out3 = single(std::abs(velocity));
    *out4 = degrees(velocity);
    *out5 = single(std::abs(position));
    *out6 = single(std::abs(closed(position)));
    return 0;
}

}  // namespace servo::tuner
