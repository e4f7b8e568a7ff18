#include "sim/io_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <deque>

namespace servo::sim::test {

namespace {

struct Range {
    std::uint32_t first;
    int count;
    std::string_view type;
    std::string_view attribute;
};

constexpr Range kRanges[] = {
    {0x201001, 9, "Unsigned16", "RW"},  {0x20100A, 2, "Unsigned16", "R"},
    {0x20100C, 8, "Unsigned16", "RW"},  {0x201014, 2, "Unsigned16", "R"},
    {0x20101D, 3, "Unsigned16", "RW"},  {0x201101, 4, "Unsigned16", "RW"},
    {0x201105, 6, "Unsigned8", "RW"},   {0x20110B, 2, "Unsigned16", "RW"},
    {0x20110E, 1, "Unsigned16", "RW"},  {0x20110F, 1, "Unsigned8", "R"},
    {0x201201, 4, "Unsigned32", "RW"},  {0x201205, 2, "Unsigned8", "R"},
    {0x201301, 1, "Unsigned32", "RW"},  {0x201302, 2, "Integer32", "RW"},
    {0x201304, 1, "Unsigned8", "RW"},   {0x201309, 1, "Unsigned32", "RW"},
    {0x20130A, 2, "Integer32", "RW"},   {0x20130C, 1, "Unsigned8", "RW"},
    {0x201401, 3, "Unsigned8", "RW"},   {0x201404, 3, "Integer32", "R"},
    {0x201407, 2, "Unsigned8", "RW"},   {0x202001, 8, "Integer32", "RW"},
    {0x202009, 2, "Unsigned32", "RW"},  {0x20200B, 1, "Unsigned8", "R"},
    {0x20200C, 1, "Unsigned8", "RW"},   {0x20200D, 2, "Integer8", "RW"},
    {0x20200F, 1, "Unsigned16", "RW"},  {0x202010, 2, "Unsigned8", "RW"},
    {0x202012, 1, "Integer32", "R"},    {0x202101, 16, "Integer32", "RW"},
    {0x202111, 2, "Unsigned32", "RW"},  {0x202113, 1, "Unsigned8", "RW"},
    {0x202114, 1, "Unsigned8", "R"},    {0x202115, 1, "Unsigned8", "RW"},
    {0x202116, 1, "Unsigned16", "RW"},  {0x202117, 1, "Unsigned8", "RW"},
    {0x202119, 1, "Unsigned8", "RW"},   {0x20211A, 1, "Integer32", "R"},
    {0x212008, 1, "Unsigned32", "RW"},  {0x212009, 1, "Unsigned16", "RW"},
    {0x213001, 1, "Unsigned8", "RW"},   {0x214005, 1, "Unsigned16", "RW"},
    {0x21400E, 1, "Unsigned16", "RW"},  {0x215006, 1, "Unsigned8", "R"},
    {0x2FFC00, 1, "Unsigned8", "RW"},   {0x606F00, 1, "Unsigned16", "RW"},
    {0x607000, 1, "Unsigned16", "RW"},  {0x60FD00, 1, "Unsigned32", "R"},
    {0x60FE01, 2, "Unsigned32", "RW"},  {0x310001, 8, "Integer32", "RW"},
    {0x310101, 8, "Integer32", "RW"},   {0x310201, 32, "Integer32", "RW"},
    {0x310301, 32, "Integer32", "RW"},  {0x310401, 32, "Unsigned16", "RW"},
    {0x310501, 32, "Unsigned16", "RW"}, {0x310601, 32, "Unsigned16", "RW"},
    {0x310701, 32, "Unsigned8", "RW"},  {0x311001, 1, "Unsigned8", "R"},
    {0x311002, 2, "Unsigned8", "RW"},   {0x311004, 1, "Unsigned8", "R"},
    {0x311005, 1, "Unsigned16", "R"},   {0x311006, 2, "Unsigned8", "R"},
    {0x311008, 1, "Unsigned32", "RW"},  {0x311009, 2, "Unsigned8", "RW"},
    {0x31100B, 1, "Unsigned32", "RW"},  {0x31100C, 1, "Unsigned8", "R"},
};

const std::vector<Entry>& io_entries() {
    static const std::vector<Entry> kEntries = [] {
        static std::deque<std::string> keys;
        std::vector<Entry> entries = bench_entries();
        for (const Range& range : kRanges) {
            for (int i = 0; i < range.count; ++i) {
                keys.push_back(fmt::format("{:06X}", range.first + static_cast<unsigned>(i)));
                entries.push_back({keys.back(), range.type, range.attribute});
            }
        }
        return entries;
    }();
    return kEntries;
}

}  // namespace

IoBench::IoBench(Options options) : DriveBench(std::move(options), io_entries()) {
    for (std::uint32_t i = 0; i < 8; ++i) {
        set(0x310001 + i, raw_turns(1000));
        set(0x310101 + i, raw_turns(1000));
    }
}

void IoBench::set(std::uint32_t key, std::int64_t value) {
    EXPECT_TRUE(drive().set_value(static_cast<dictionary::Identity>(key), value)) << key;
}

void IoBench::assign_value(int input, std::uint16_t value) {
    set(input == 8 ? 0x20101D : 0x201002 + static_cast<std::uint32_t>(input), value);
    run(std::chrono::milliseconds(1));
}

void IoBench::assign_output(int output, std::uint16_t value) {
    const auto number = static_cast<std::uint32_t>(output);
    set(output <= 5 ? 0x20100E + number : 0x201018 + number, value);
    run(std::chrono::milliseconds(2));
}

void IoBench::pin(int input, bool high) {
    drive().set_pin(input - 1, high);
    run(std::chrono::milliseconds(1));
}

void IoBench::pulse(int input) {
    pin(input, true);
    pin(input, false);
}

bool IoBench::output(int number) {
    run(std::chrono::milliseconds(1));
    return (drive().output_pins() >> (number - 1) & 1) != 0;
}

void IoBench::step(int index, std::int64_t target, double rpm, Control control, int delay,
                   int loops, int ramps) {
    const auto at = static_cast<std::uint32_t>(index + 1);
    set(0x310200 + at, target);
    set(0x310300 + at, raw_rpm(rpm));
    set(0x310400 + at, delay);
    set(0x310500 + at, control.bits());
    set(0x310600 + at, loops);
    set(0x310700 + at, ramps);
}

bool IoBench::run_until_state(PositionTable::State state, microseconds limit) {
    return run_until([&] { return table_state() == state; }, limit);
}

}  // namespace servo::sim::test
