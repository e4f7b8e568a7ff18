#include "sim/recorder_bench.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace servo::sim::test {

namespace {

std::vector<Entry> entries_with_recorder() {
    std::vector<Entry> entries = bench_entries();
    const std::vector<Entry> more{{"230001", "Unsigned32", "RW"},   {"230002", "Unsigned32", "RW"},
                                  {"230003", "Unsigned32", "RW"},   {"230004", "Unsigned32", "RW"},
                                  {"230005", "Unsigned32", "RW"},   {"230006", "Unsigned32", "RW"},
                                  {"230007", "Unsigned8", "RWL"},   {"230008", "Unsigned16", "RW"},
                                  {"230009", "Unsigned16", "RW"},   {"23000A", "Unsigned16", "RW"},
                                  {"23000B", "Unsigned8", "RW"},    {"23000C", "Unsigned32", "RW"},
                                  {"23000D", "Integer32", "RW"},    {"23000E", "Unsigned16", "RL"},
                                  {"23000F", "Unsigned16", "RL"},   {"230010", "Unsigned8", "RL"},
                                  {"230011", "Unsigned16", "R"},    {"230012", "Unsigned8", "RW"},
                                  {"230013", "Visible String", "R"}};
    entries.insert(entries.end(), more.begin(), more.end());
    return entries;
}

int width_of(std::uint32_t key) {
    switch (key) {
        case recorder::kCommand:
        case recorder::kEdge:
        case recorder::kStopAtFault:
            return 1;
        case recorder::kPeriod:
        case recorder::kOffset:
        case recorder::kCount:
            return 2;
        default:  // keys, not an enum
            return 4;
    }
}

}  // namespace

Column counted(std::int64_t first, std::int64_t step, std::size_t count) {
    Column out;
    for (std::size_t i = 0; i < count; ++i)
        out.push_back(first + static_cast<std::int64_t>(i) * step);
    return out;
}

std::int64_t same(std::int64_t n) {
    return n;
}

Column only_column(RecorderBench& bench, int width) {
    return columns(bench.read_text(recorder::kBuffer).value_or("none"), {width})[0];
}

RecorderBench::RecorderBench(Options options)
    : DriveBench(std::move(options), entries_with_recorder()) {}

void RecorderBench::set(std::uint32_t key, std::int64_t value) {
    EXPECT_TRUE(write(key, value, width_of(key)))
        << std::hex << key << " refused with " << refusal();
}

void RecorderBench::start() {
    set(recorder::kCommand, 1);
}

std::int64_t RecorderBench::state() {
    return drive().value(recorder::kCommand).value_or(-1);
}

void RecorderBench::wait(microseconds limit) {
    EXPECT_TRUE(run_until([this] { return state() == 0; }, limit)) << "still in " << state();
}

std::string RecorderBench::record(microseconds limit) {
    start();
    wait(limit);
    return read_text(recorder::kBuffer).value_or("nothing");
}

void RecorderBench::run_to_step(std::int64_t step) {
    const microseconds at((step * 125 + 1) / 2);
    if (at > now()) run(at - now());
}

Column RecorderBench::feed(std::uint32_t object,
                           const std::function<std::int64_t(std::int64_t)>& signal,
                           std::int64_t steps) {
    const auto id = static_cast<dictionary::Identity>(object);
    drive().set_value(recorder::kCommand, 1);
    Column states;
    for (std::int64_t n = 1; n <= steps && state() != 0; ++n) {
        drive().set_value(id, signal(n));
        run_to_step(step() + 1);
        states.push_back(state());
    }
    return states;
}

std::vector<Column> columns(const std::string& buffer, std::initializer_list<int> widths) {
    std::vector<Column> out(widths.size());
    std::size_t at = 0;
    while (at < buffer.size()) {
        std::size_t column = 0;
        for (const int width : widths) {
            const int bytes = std::abs(width);
            std::uint64_t value = 0;
            for (int i = 0; i < bytes && at < buffer.size(); ++i)
                value |= std::uint64_t{static_cast<std::uint8_t>(buffer[at++])} << (8 * i);
            const std::uint64_t sign = std::uint64_t{1} << (8 * bytes - 1);
            const auto number = static_cast<std::int64_t>(value);
            const bool negative = width < 0 && (value & sign) != 0;
            out[column++].push_back(negative ? number - (std::int64_t{1} << (8 * bytes)) : number);
        }
    }
    return out;
}

}  // namespace servo::sim::test
