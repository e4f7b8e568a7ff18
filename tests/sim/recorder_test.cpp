// The recorder: what stands in its rows, and when they are taken.
#include <gtest/gtest.h>

#include "sim/recorder_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;

TEST(Recorder, ARowIsWhatTheModelShowsAtThatStep) {
    RecorderBench bench;
    bench.set(recorder::kSlotA, 0x60780010);
    bench.set(recorder::kWide34, 0x60F91620);
    bench.set(recorder::kCount, 400);
    bench.enable(-3);
    bench.drive().set_value(0x60FF00, 500000);
    bench.start();
    Column current;
    Column speed;
    // The drive may be stepped by hand from here on: nothing is on the line.
    while (bench.state() != 0) {
        bench.run_to_step(bench.step() + 1);
        current.push_back(*bench.drive().value(0x607800));
        speed.push_back(*bench.drive().value(0x60F916));
    }
    const auto rows = columns(bench.read_text(recorder::kBuffer).value_or(""), {-2, -4});
    ASSERT_EQ(rows[0].size(), 400U);
    // Until the acknowledgement of the start had come a few steps were made.
    const std::size_t early = 400 - current.size();
    EXPECT_LT(early, 120U);
    EXPECT_TRUE(std::equal(current.begin(), current.end(), rows[0].begin() + early));
    EXPECT_TRUE(std::equal(speed.begin(), speed.end(), rows[1].begin() + early));
}

}  // namespace
}  // namespace servo::sim::test
