#include "sim/homing_bench.h"

#include <utility>

namespace servo::sim::test::homing {

const std::vector<Entry>& homing_entries() {
    static const std::vector<Entry> kEntries = [] {
        std::vector<Entry> all = bench_entries();
        for (const Entry& entry :
             std::vector<Entry>{{"609901", "Unsigned32", "RW"}, {"609902", "Unsigned32", "RW"},
                                {"609A00", "Unsigned32", "RW"}, {"215001", "Unsigned8", "RW"},
                                {"215002", "Integer32", "RW"},  {"215003", "Unsigned8", "RW"},
                                {"215004", "Unsigned8", "RW"},  {"215005", "Unsigned16", "RW"},
                                {"215006", "Unsigned8", "RL"},  {"215007", "Unsigned8", "RL"},
                                {"215008", "Unsigned32", "RL"}, {"215009", "Unsigned16", "RW"},
                                {"21500A", "Unsigned8", "RW"},  {"21500C", "Unsigned32", "RW"},
                                {"21500D", "Unsigned8", "RW"},  {"21500E", "Unsigned16", "RL"},
                                {"212004", "Unsigned32", "R"},  {"212005", "Integer32", "R"},
                                {"201001", "Unsigned16", "RW"}, {"201002", "Unsigned16", "RW"},
                                {"201003", "Unsigned16", "RW"}, {"201007", "Unsigned16", "RW"},
                                {"201008", "Unsigned16", "RW"}, {"201009", "Unsigned16", "RW"},
                                {"20100A", "Unsigned16", "R"},  {"304001", "Unsigned8", "RW"},
                                {"30400E", "Unsigned8", "RL"}})
            all.push_back(entry);
        return all;
    }();
    return kEntries;
}

Options on_axis(const std::optional<RailSetup>& rail) {
    Options options;
    options.rail = rail;
    options.values = std::string(kBenchValues) +
                     "201002\t255\t\t\ts\n"
                     "201007\t16\t\t\ts\n"
                     "201008\t32\t\t\ts\n"
                     "201009\t64\t\t\ts\n"
                     "609800\t35\t-21\t35\ts\n"
                     "21500E\t0\t\t\trc\n";
    return options;
}

RailSetup axis_with_home(std::optional<double> from, std::optional<double> to, double start) {
    RailSetup rail;
    rail.negative_limit = -20.0 - start;
    rail.positive_limit = 20.0 - start;
    rail.lowest = -22.0 - start;
    rail.highest = 22.0 - start;
    if (from) rail.home_from = *from - start;
    if (to) rail.home_to = *to - start;
    return rail;
}

HomingBench::HomingBench(const std::optional<RailSetup>& rail)
    : DriveBench(on_axis(rail), homing_entries()) {}

HomingBench::HomingBench(Options options) : DriveBench(std::move(options), homing_entries()) {}

double HomingBench::place() {
    return static_cast<double>(value(0x212005)) + static_cast<double>(value(0x212004)) / kTurn;
}

void HomingBench::begin(int method) {
    set(0x609800, method);
    enable(6);
    control(0x1F);
}

Outcome HomingBench::finish(microseconds limit) {
    Outcome out;
    out.ended = run_until([&] { return value(0x215006) != 1 && status(0x400); }, limit);
    out.homed = status(0x1000);
    out.failed = status(0x2000);
    out.reached = status(0x400);
    out.state = value(0x215006);
    out.place = place();
    // The position is that of the home point plus the way from there.
    const double from_home = static_cast<double>(value(0x606300) - value(0x607C00)) / kTurn;
    out.home = out.place - from_home;
    return out;
}

}  // namespace servo::sim::test::homing
