// What a frequency scan has measured, in the words that the tuner reads.
//
//   word address     content
//   0 + 2i, +1       command of point i: the part that is a quarter of a period off, and the part
//                    in phase
//   1024 + 4i, +1    response of point i in phase with the command: high half, low half
//   1024 + 4i + 2    the part that leads by a quarter of a period, in the same way
//
// The command has the set amplitude and phase 0 at every point, and the response belongs to that:
// whoever takes the response alone has the plant too.
#pragma once

#include <complex>
#include <cstdint>
#include <vector>

namespace servo::sim {

inline constexpr std::int64_t kScanPoints = 501;
inline constexpr std::int64_t kResponseBlock = 1024;

class ScanResults {
  public:
    // `amplitude`: of the command, raw current.
    void begin(std::int64_t amplitude);

    // The next point: response for each unit of command.
    void add(std::int64_t hertz, std::complex<double> ratio);
    // The next point could not be measured: its words are 0.
    void add_nothing();

    // Chooses the shift with which everything fits.
    void finish();

    std::int64_t points() const { return static_cast<std::int64_t>(points_.size()); }
    std::int64_t shift() const { return shift_; }

    // 0 where nothing is, and before finish().
    std::uint16_t word(std::int64_t address) const;

  private:
    struct Point {
        bool measured = false;
        std::complex<double> sum;
    };

    std::uint16_t command_word(std::int64_t address) const;
    std::uint16_t response_word(std::int64_t address) const;

    std::vector<Point> points_;
    std::int64_t amplitude_ = 0;
    std::int64_t shift_ = 0;
    bool finished_ = false;
};

}  // namespace servo::sim
