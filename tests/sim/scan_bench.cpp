#include "sim/scan_bench.h"

#include <cmath>

namespace servo::sim::test::scan {

using Complex = std::complex<double>;

int points_of(const Plan& plan) {
    return static_cast<int>(
        std::nearbyint(static_cast<double>(plan.last - plan.first) / plan.step + 1.0));
}

const std::vector<Entry>& scan_entries() {
    static const std::vector<Entry> kEntries = [] {
        std::vector<Entry> all = bench_entries();
        for (const Entry& entry : std::vector<Entry>{{"304001", "Unsigned8", "RW"},
                                                     {"304002", "Unsigned16", "RW"},
                                                     {"304003", "Unsigned16", "RW"},
                                                     {"304004", "Unsigned16", "RW"},
                                                     {"304005", "Unsigned32", "RW"},
                                                     {"304006", "Unsigned16", "RL"},
                                                     {"304008", "Unsigned16", "RL"},
                                                     {"304009", "Unsigned8", "RW"},
                                                     {"30400A", "Unsigned8", "R"},
                                                     {"30400B", "Unsigned8", "RW"},
                                                     {"30400C", "Integer32", "RW"},
                                                     {"30400D", "Unsigned32", "RW"},
                                                     {"30400E", "Unsigned8", "RL"},
                                                     {"30400F", "Unsigned8", "RW"},
                                                     {"304010", "Unsigned16", "R"},
                                                     {"201003", "Unsigned16", "RW"},
                                                     {"60F910", "Unsigned16", "RW"}})
            all.push_back(entry);
        return all;
    }();
    return kEntries;
}

ScanBench::ScanBench(Options options) : DriveBench(std::move(options), scan_entries()) {}

bool ScanBench::write_plan(const Plan& plan) {
    return write(0x304002, plan.first, 2) && write(0x304003, plan.last, 2) &&
           write(0x304004, plan.step, 2) && write(0x60F910, plan.current, 2);
}

bool ScanBench::wait() {
    return run_until([&] { return drive().value(0x304001) == 0; }, std::chrono::minutes(2));
}

Blocks ScanBench::fetch(int points) {
    Blocks blocks;
    const auto words = [&](int address) {
        write(0x304005, address, 4);
        return read(0x304005).value_or(0);
    };
    blocks.shift = static_cast<int>(read(0x30400A).value_or(0));
    for (int i = 0; i < points; ++i) {
        const std::uint32_t two = words(2 * i);
        blocks.command_a.push_back(static_cast<std::int16_t>(two));
        blocks.command_b.push_back(static_cast<std::int16_t>(two >> 16));
    }
    for (int i = 0; i < 2 * points; ++i) {
        const std::uint32_t two = words(1024 + 2 * i);
        blocks.response.push_back(static_cast<std::int32_t>(two << 16 | two >> 16));
    }
    return blocks;
}

bool ScanBench::scan(const Plan& plan, Blocks& blocks) {
    if (!write_plan(plan) || !start() || !wait()) return false;
    blocks = fetch(points_of(plan));
    return true;
}

namespace {

int angle(double x, double y) {
    constexpr double kPi = 3.14159265358979;
    double a = y > 0.0 ? kPi / 2.0 : -kPi / 2.0;
    if (x != 0.0) a = std::atan(y / x);
    if (x < 0.0) a -= kPi;
    return static_cast<int>(std::nearbyint(a * 180.0 / kPi));
}

double or_one(double value) {
    return value == 0.0 ? 1.0 : value;
}

}  // namespace

Curve analysed(const Plan& plan, const Blocks& blocks) {
    Curve curve;
    std::int32_t acc = 0;
    for (int i = 0; i <= points_of(plan) - 2; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int f = plan.first + i * plan.step;
        int n = 16000 / f;
        int d = 1;
        for (; n >= 301; n /= 2)
            d *= 2;
        const double factor = std::pow(2.0, blocks.shift) / 512.0 / n / d;
        const double x = factor * blocks.response[2 * at];
        const double y = factor * blocks.response[2 * at + 1];
        const double a = blocks.command_a[at];
        const double b = blocks.command_b[at];
        const double command = or_one(std::hypot(a, b) / plan.current);
        const double q = or_one(std::hypot(x, y));
        curve.phase.push_back(angle(x, y) - angle(b, a));
        curve.magnitude.push_back(q * 100.0 / (plan.current * command) / 576.0);
        curve.plant.push_back(Complex(x, y) / (plan.current * 576.0));
        if (i < 4) {
            acc = static_cast<std::int32_t>(
                std::trunc(acc + command * 4.0 * plan.current * 64.0 / (q / 576.0 * 4.0) / f));
        }
    }
    curve.plant_estimate = static_cast<std::int32_t>(std::nearbyint(acc * 64.0 / 4.0));
    return curve;
}

// What the drive computes is taken as the steps of 62.5 us that it is, what the machine does as
// what a machine does.
Complex plant_at(double hertz, const Loop& loop) {
    constexpr double kStep = 62.5e-6;
    constexpr double kOhm = 1.7;
    constexpr double kHenry = 4.3e-3;
    const Complex s(0.0, 2.0 * M_PI * hertz);
    const Complex z = std::exp(s * kStep);

    const double share = 1.0 - std::exp(-2.0 * M_PI * loop.torque_filter_hz * kStep);
    const Complex torque_filter = share / (1.0 - (1.0 - share) / z);

    // The winding under a voltage that stands for a step, and the controller that sees the current
    // as it was before it.
    const double left = std::exp(-kOhm * kStep / kHenry);
    const double gain = (1.0 - left) / kOhm;
    const double corner = 2.0 * M_PI * loop.current_hz;
    const Complex control = corner * kHenry + corner * kOhm * kStep / (1.0 - 1.0 / z);
    const Complex current = z * gain * control / (z - left + gain * control);

    const Complex shaft = loop.stiffness / s + loop.damping;
    const Complex load = shaft * loop.load_inertia * s / (loop.load_inertia * s + shaft);
    const Complex machine = loop.torque_constant / (loop.motor_inertia * s + load + loop.viscous);

    // A difference over four steps; a low pass made with the bilinear transform.
    const Complex span = (1.0 - std::exp(-4.0 * s * kStep)) / (4.0 * s * kStep);
    Complex filter = 1.0;
    if (loop.speed_filter_hz > 0.0) {
        const double w =
            std::tan(M_PI * hertz * kStep) / std::tan(M_PI * loop.speed_filter_hz * kStep);
        filter = 1.0 / Complex(1.0 - w * w, std::sqrt(2.0) * w);
    }
    return loop.kvp_unit * torque_filter * current * machine * span * filter;
}

double decibels(double ratio) {
    return 20.0 * std::log10(ratio);
}

double turned(double degrees) {
    return degrees - 360.0 * std::floor((degrees + 180.0) / 360.0);
}

}  // namespace servo::sim::test::scan
