// Every named fault, on answers and on requests, a number of times each: no wrong value, and the
// link is itself again within a stated number of ticks.
#include <gtest/gtest.h>

#include <set>

#include "faults/fault_bench.h"

namespace servo::test {
namespace {

// A pass over the page of 18 rows with its silent ticks takes 48 ticks, the status lanes between
// the passes 76 more. What a fault adds to that is bounded by this.
constexpr int kTicksToRecover = 400;
constexpr int kTimes = 5;

class NamedFault : public testing::TestWithParam<std::size_t> {};

std::string test_name(const testing::TestParamInfo<std::size_t>& info) {
    std::string name;
    for (const char c : line_faults()[info.param].name)
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            name += c;
        } else if (!name.empty() && name.back() != '_') {
            name += '_';
        }
    return name;
}

void strike(FaultBench& b, FaultyWire& wire, const LineFault& fault, std::mt19937_64& random) {
    b.bench.run_ticks(static_cast<int>(random() % 12));
    wire.arm(fault);
    b.bench.run_until([&] { return !wire.armed(); }, 5s);
    if (fault.dead.count() > 0) b.bench.run_for(fault.dead);
    const int ticks = b.ticks_until_right(kTicksToRecover);
    EXPECT_GE(ticks, 0) << fault.name << ": not right within " << kTicksToRecover << " ticks";
    EXPECT_TRUE(b.bench.port.is_open()) << fault.name;
}

TEST_P(NamedFault, LeavesNoWrongValueAndPasses) {
    const LineFault& fault = line_faults()[GetParam()];
    FaultBench b(1000 + GetParam());
    std::mt19937_64 random(GetParam());
    b.start();
    ASSERT_TRUE(b.page_is_right());
    for (int i = 0; i < kTimes; ++i) {
        strike(b, b.answers, fault, random);
        strike(b, b.requests, fault, random);
    }
    EXPECT_EQ(b.answers.strikes + b.requests.strikes, 2U * kTimes);
    EXPECT_EQ(b.wrong, b.unseeable) << b.first_wrong;
    EXPECT_LE(b.strange_writes, b.forged);
    if (!fault.passes_checksum) {
        EXPECT_EQ(b.wrong, 0U) << b.first_wrong;
    }
}

INSTANTIATE_TEST_SUITE_P(Line, NamedFault, testing::Range<std::size_t>(0, line_faults().size()),
                         test_name);

TEST(LineFaults, HaveNamesOfTheirOwn) {
    std::set<std::string> names;
    for (const LineFault& fault : line_faults())
        EXPECT_TRUE(names.insert(fault.name).second) << fault.name;
    EXPECT_GE(names.size(), 120U);
}

// Control of the judge: a frame that passes the checksum with another content does reach the page.
TEST(LineFaults, WhatPassesTheChecksumIsCounted) {
    for (const LineFault& fault : line_faults()) {
        if (fault.name != "random data with a right checksum") continue;
        FaultBench b(7);
        std::mt19937_64 random(7);
        b.start();
        for (int i = 0; i < 10; ++i)
            strike(b, b.answers, fault, random);
        EXPECT_GT(b.unseeable, 0U);
        EXPECT_EQ(b.wrong, b.unseeable);
    }
}

}  // namespace
}  // namespace servo::test
