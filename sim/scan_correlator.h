// Compares two signals of the loop with a sine over a window of whole periods.
#pragma once

#include <array>
#include <complex>
#include <cstdint>

namespace servo::sim {

// How one period at a frequency is cut up: `samples` of `steps` loop steps each. The tuner derives
// the same two figures to undo the sums' growth with them.
struct Decimation {
    std::int64_t samples = 1;
    std::int64_t steps = 1;
};
Decimation decimation_of(std::int64_t hertz);

class ScanCorrelator {
  public:
    // A window of `periods` at `hertz` begins with the next step.
    void begin(std::int64_t hertz, std::int64_t periods);

    // One step of both signals.
    void add(double command, double response);

    // Goes on until the window is that many times as long.
    void extend(std::int64_t times) { needed_ *= times; }

    // The window is through.
    bool full() const { return taken_ >= needed_; }

    // Amplitude and phase of each within the window. The mean takes no part, also where the periods
    // do not end with a sample.
    std::complex<double> command() const { return sums_[0].amplitude(reference_, taken_); }
    std::complex<double> response() const { return sums_[1].amplitude(reference_, taken_); }

  private:
    struct Sum {
        double pending = 0.0;  // steps of the sample that is not complete
        double total = 0.0;
        std::complex<double> correlated;
        std::complex<double> amplitude(std::complex<double> reference, std::int64_t taken) const;
    };

    std::array<Sum, 2> sums_{};
    std::complex<double> reference_;  // sum of the sine itself
    std::complex<double> phasor_;     // the sine at the middle of the next sample
    std::complex<double> turn_;       // from one sample to the next
    std::int64_t steps_ = 1;
    std::int64_t pending_ = 0;
    std::int64_t taken_ = 0;
    std::int64_t needed_ = 0;
};

}  // namespace servo::sim
