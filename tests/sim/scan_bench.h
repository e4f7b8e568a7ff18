// A frequency scan as the tuner makes it: the plan written, the blocks fetched word by word over
// the line, and the tuner's arithmetic, written here a second time. Beside it the machine that is
// measured, from its figures alone.
#pragma once

#include <complex>
#include <cstdint>
#include <string>
#include <vector>

#include "sim/drive_bench.h"

namespace servo::sim::test::scan {

struct Plan {
    int first = 4;
    int last = 60;
    int step = 3;
    int current = 60;
};

// Points that the tuner counts: rounded to the nearest.
int points_of(const Plan& plan);

// What came over the line.
struct Blocks {
    std::vector<std::int16_t> command_a;
    std::vector<std::int16_t> command_b;
    std::vector<std::int32_t> response;
    int shift = 0;
};

struct Curve {
    std::vector<double> magnitude;
    std::vector<int> phase;                   // degrees, whole, not folded
    std::vector<std::complex<double>> plant;  // what the loop model is given
    std::int32_t plant_estimate = 0;
};

// A drive with the objects of the scan.
const std::vector<Entry>& scan_entries();

class ScanBench : public DriveBench {
  public:
    explicit ScanBench(Options options = {});

    bool write_plan(const Plan& plan);
    bool start() { return write(0x304001, 14, 1); }
    // Until the drive says that it is done; false when that takes more than two minutes.
    bool wait();
    int result() { return static_cast<int>(*drive().value(0x30400E)); }

    Blocks fetch(int points);
    // All of that.
    bool scan(const Plan& plan, Blocks& blocks);
};

Curve analysed(const Plan& plan, const Blocks& blocks);

// The drive's loop and the machine behind it.
struct Loop {
    double kvp_unit = 4.5403e-4;       // A at 1 rad/s
    double torque_filter_hz = 1200.0;  // 60F6:05
    double current_hz = 1500.0;        // 60F6:03
    double speed_filter_hz = 500.0;    // 60F9:05; 0: none
    double torque_constant = 0.345;
    double motor_inertia = 2.77e-5;
    double load_inertia = 5.54e-5;
    double stiffness = 443.6;
    double damping = 9.0e-3;
    double viscous = 2.0e-5;
};

// What a unit of Kvp makes of the feedback, for each unit of current asked for.
std::complex<double> plant_at(double hertz, const Loop& loop = {});

double decibels(double ratio);
// Difference of two angles in degrees, -180 to below 180.
double turned(double degrees);

}  // namespace servo::sim::test::scan
