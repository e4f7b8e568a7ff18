// Many thousand faults one after the other, drawn from a seed, while values are polled and edited.
#include <gtest/gtest.h>

#include <algorithm>

#include "faults/fault_bench.h"

namespace servo::test {
namespace {

constexpr int kShards = 8;
constexpr std::uint64_t kFaultsOfAShard = 12'500;
constexpr int kTicksToRecover = 400;

struct Outcome {
    std::uint64_t faults = 0;
    std::uint64_t told = 0;
    std::uint64_t wrong = 0;
    std::uint64_t unseeable = 0;
    std::uint64_t strange_writes = 0;
    std::uint64_t forged = 0;
    std::string first_wrong;
    int slowest = 0;  // ticks until the page was right again
    int not_recovered = 0;
    bool open = false;
};

// Until so many faults have struck.
Outcome run(std::uint64_t seed, std::uint64_t faults, bool check_frames) {
    FaultBench b(seed);
    std::mt19937_64 random(seed);
    b.bench.engine.serial.check_frames = check_frames;
    b.start();
    Outcome outcome;
    for (int i = 0; b.answers.strikes + b.requests.strikes < faults; ++i) {
        const LineFault& fault = line_faults()[random() % line_faults().size()];
        FaultyWire& wire = random() % 4 == 0 ? b.requests : b.answers;
        if (random() % 8 == 0) b.edit(random);
        wire.arm(fault);
        b.bench.run_ticks(2 + static_cast<int>(random() % 6));
        // Recovery is looked at now and then; in between faults fall upon faults.
        if (i % 50 != 49) continue;
        b.bench.run_until([&] { return !b.answers.armed() && !b.requests.armed(); }, 5s);
        b.bench.run_for(300ms);
        const int ticks = b.ticks_until_right(kTicksToRecover);
        if (ticks < 0) ++outcome.not_recovered;
        outcome.slowest = std::max(outcome.slowest, ticks);
    }
    outcome.faults = b.answers.strikes + b.requests.strikes;
    outcome.told = b.told;
    outcome.wrong = b.wrong;
    outcome.unseeable = b.unseeable;
    outcome.strange_writes = b.strange_writes;
    outcome.forged = b.forged;
    outcome.first_wrong = b.first_wrong;
    outcome.open = b.bench.port.is_open();
    return outcome;
}

class Campaign : public testing::TestWithParam<std::uint64_t> {};

TEST_P(Campaign, ShowsNoWrongValueThatTheChecksumCouldSee) {
    const Outcome outcome = run(GetParam(), kFaultsOfAShard, true);
    std::printf(
        "seed %llu: %llu faults, %llu values told, %llu wrong in frames that pass the checksum, "
        "%llu values in the drive that nobody wrote, slowest recovery %d ticks\n",
        static_cast<unsigned long long>(GetParam()),
        static_cast<unsigned long long>(outcome.faults),
        static_cast<unsigned long long>(outcome.told),
        static_cast<unsigned long long>(outcome.unseeable),
        static_cast<unsigned long long>(outcome.strange_writes), outcome.slowest);
    EXPECT_GE(outcome.faults, kFaultsOfAShard);
    EXPECT_EQ(outcome.wrong, outcome.unseeable) << outcome.first_wrong;
    EXPECT_LE(outcome.strange_writes, outcome.forged);
    EXPECT_EQ(outcome.not_recovered, 0);
    EXPECT_TRUE(outcome.open);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Campaign, testing::Range<std::uint64_t>(1, 1 + kShards));

// The same run with the test of frames switched off must be found wrong, or the judge is blind.
TEST(CampaignControl, WithoutTheCheckWrongValuesAreSeen) {
    const Outcome outcome = run(1, 500, false);
    EXPECT_GT(outcome.wrong, outcome.unseeable);
}

}  // namespace
}  // namespace servo::test
