#include "sim/scan_results.h"

#include <algorithm>
#include <cmath>

#include "sim/scan_correlator.h"

namespace servo::sim {

namespace {

// The sine of the sums stands 512 high, a response of 1 counts 576.
constexpr double kSineHeight = 512.0;
constexpr double kResponseUnit = 576.0;

// Room that a response has in its 32 bits.
constexpr double kMostResponse = 2147483647.0;

}  // namespace

void ScanResults::begin(std::int64_t amplitude) {
    points_.clear();
    amplitude_ = amplitude;
    shift_ = 0;
    finished_ = false;
}

void ScanResults::add(std::int64_t hertz, std::complex<double> ratio) {
    const Decimation period = decimation_of(hertz);
    const auto steps = static_cast<double>(period.samples * period.steps);
    const double height = static_cast<double>(amplitude_) * kResponseUnit * kSineHeight * steps;
    points_.push_back({true, ratio * height});
}

void ScanResults::add_nothing() {
    points_.push_back({});
}

void ScanResults::finish() {
    double greatest = 0.0;
    for (const Point& point : points_) {
        greatest = std::max({greatest, std::abs(point.sum.real()), std::abs(point.sum.imag())});
    }
    shift_ = 0;
    while (greatest > kMostResponse) {
        greatest /= 2.0;
        ++shift_;
    }
    finished_ = true;
}

std::uint16_t ScanResults::command_word(std::int64_t address) const {
    const std::int64_t point = address / 2;
    if (point >= points() || !points_[static_cast<std::size_t>(point)].measured) return 0;
    const bool in_phase = address % 2 == 1;
    return in_phase ? static_cast<std::uint16_t>(amplitude_) : 0;
}

std::uint16_t ScanResults::response_word(std::int64_t address) const {
    const std::int64_t point = address / 4;
    if (point >= points()) return 0;
    const std::complex<double> sum = points_[static_cast<std::size_t>(point)].sum;
    const double part = address % 4 < 2 ? sum.real() : sum.imag();
    const double scaled = part / std::pow(2.0, static_cast<double>(shift_));
    const auto bits = static_cast<std::uint32_t>(std::llround(scaled));
    return static_cast<std::uint16_t>(address % 2 == 0 ? bits >> 16U : bits);
}

std::uint16_t ScanResults::word(std::int64_t address) const {
    if (!finished_ || address < 0) return 0;
    return address < kResponseBlock ? command_word(address)
                                    : response_word(address - kResponseBlock);
}

}  // namespace servo::sim
