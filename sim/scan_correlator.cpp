#include "sim/scan_correlator.h"

#include <algorithm>
#include <cmath>

#include "sim/model/plant.h"

namespace servo::sim {

namespace {

// A period has fewer samples than that.
constexpr std::int64_t kMostSamples = 301;

}  // namespace

Decimation decimation_of(std::int64_t hertz) {
    Decimation d;
    d.samples = static_cast<std::int64_t>(kStepsPerSecond) / std::max<std::int64_t>(hertz, 1);
    while (d.samples >= kMostSamples) {
        d.samples /= 2;
        d.steps *= 2;
    }
    d.samples = std::max<std::int64_t>(d.samples, 1);
    return d;
}

void ScanCorrelator::begin(std::int64_t hertz, std::int64_t periods) {
    const double steps_per_period = kStepsPerSecond / static_cast<double>(hertz);
    steps_ = decimation_of(hertz).steps;
    const double angle = 2.0 * kPi / steps_per_period * static_cast<double>(steps_);
    // The sums of the two signals are only compared with each other, so where the sine begins does
    // not matter.
    phasor_ = 1.0;
    turn_ = std::polar(1.0, -angle);
    const double samples =
        static_cast<double>(periods) * steps_per_period / static_cast<double>(steps_);
    needed_ = std::max<std::int64_t>(std::llround(samples), 1);
    sums_ = {};
    reference_ = 0.0;
    pending_ = 0;
    taken_ = 0;
}

void ScanCorrelator::add(double command, double response) {
    sums_[0].pending += command;
    sums_[1].pending += response;
    if (++pending_ < steps_) return;
    for (Sum& sum : sums_) {
        const double sample = sum.pending / static_cast<double>(steps_);
        sum.total += sample;
        sum.correlated += sample * phasor_;
        sum.pending = 0.0;
    }
    reference_ += phasor_;
    phasor_ *= turn_;
    pending_ = 0;
    ++taken_;
}

std::complex<double> ScanCorrelator::Sum::amplitude(std::complex<double> reference,
                                                    std::int64_t taken) const {
    if (taken == 0) return 0.0;
    const auto count = static_cast<double>(taken);
    return 2.0 / count * (correlated - total / count * reference);
}

}  // namespace servo::sim
