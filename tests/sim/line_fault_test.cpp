// Faults of the line: each does what it says, as often as it says, the same way for a seed.
#include "sim/line_faults.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numeric>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

constexpr int kFrames = 20000;
constexpr Eight kRead{0x40, 0x00, 0x20, 0x03, 0, 0, 0, 0};

Frame sample() {
    return make_frame(127, {0x4B, 0x10, 0x64, 3, 1, 2, 3, 4});
}

Statistics run(const LineFaults& faults, std::uint64_t seed, std::vector<Bytes>* frames = nullptr) {
    LineFaultMaker maker(seed);
    Statistics statistics;
    for (int i = 0; i < kFrames; ++i) {
        Bytes bytes = maker.pass(sample(), faults, statistics);
        if (frames != nullptr) frames->push_back(std::move(bytes));
    }
    return statistics;
}

// Within five standard deviations of a fair draw.
void expect_share(std::uint64_t count, double probability) {
    const double mean = kFrames * probability;
    EXPECT_NEAR(static_cast<double>(count), mean,
                5.0 * std::sqrt(mean * (1.0 - probability)) + 1e-9);
}

TEST(LineFault, NoneLeavesEveryFrameAlone) {
    std::vector<Bytes> frames;
    run({}, 1, &frames);
    const Frame told = sample();
    for (const Bytes& bytes : frames)
        EXPECT_EQ(bytes, Bytes(told.begin(), told.end()));
}

TEST(LineFault, EachHappensWithItsProbability) {
    LineFaults faults;
    faults.drop = 0.1;
    expect_share(run(faults, 1).dropped, 0.1);
    faults = {};
    faults.foreign = 0.2;
    expect_share(run(faults, 2).foreign_sent, 0.2);
    faults = {};
    faults.corrupt = 0.3;
    expect_share(run(faults, 3).corrupted, 0.3);
    faults = {};
    faults.doubled = 0.01;
    expect_share(run(faults, 4).doubled, 0.01);
    faults = {};
    faults.lose = 0.5;
    expect_share(run(faults, 5).lost_bytes, 0.5);
    faults = {};
    faults.stutter = 0.05;
    expect_share(run(faults, 6).doubled_bytes, 0.05);
}

TEST(LineFault, CertainAndImpossibleAreExact) {
    LineFaults faults;
    faults.drop = 1.0;
    EXPECT_EQ(run(faults, 1).dropped, static_cast<std::uint64_t>(kFrames));
    faults.drop = 0.0;
    EXPECT_EQ(run(faults, 1).dropped, 0U);
}

TEST(LineFault, ASeedMeansTheSameRun) {
    LineFaults faults;
    faults.corrupt = 0.2;
    faults.drop = 0.1;
    std::vector<Bytes> first;
    std::vector<Bytes> second;
    std::vector<Bytes> other;
    run(faults, 7, &first);
    run(faults, 7, &second);
    run(faults, 8, &other);
    EXPECT_EQ(first, second);
    EXPECT_NE(first, other);
}

TEST(LineFault, OneMoreKindDoesNotMoveTheOthers) {
    LineFaults faults;
    faults.drop = 0.1;
    std::vector<Bytes> alone;
    run(faults, 9, &alone);
    faults.doubled = 0.3;
    std::vector<Bytes> both;
    run(faults, 9, &both);
    for (std::size_t i = 0; i < alone.size(); ++i)
        EXPECT_EQ(alone[i].empty(), both[i].empty());
}

TEST(LineFault, AForeignFrameHasAnotherIdAndARightSum) {
    LineFaults faults;
    faults.foreign = 1.0;
    std::vector<Bytes> frames;
    run(faults, 1, &frames);
    for (const Bytes& bytes : frames) {
        EXPECT_NE(bytes[0], 127);
        EXPECT_EQ(std::accumulate(bytes.begin(), bytes.end(), 0) & 0xFF, 0);
    }
}

TEST(LineFault, CorruptionChangesOneToThreeBytesAndIsCountedWhenTheSumCannotSeeIt) {
    LineFaults faults;
    faults.corrupt = 1.0;
    std::vector<Bytes> frames;
    const Statistics statistics = run(faults, 1, &frames);
    std::array<int, 4> by_count{};
    std::uint64_t unseen = 0;
    for (const Bytes& bytes : frames) {
        int changed = 0;
        for (std::size_t i = 0; i < 10; ++i)
            changed += bytes[i] != sample()[i] ? 1 : 0;
        ASSERT_GE(changed, 1);
        ASSERT_LE(changed, 3);
        ++by_count[static_cast<std::size_t>(changed)];
        if ((std::accumulate(bytes.begin(), bytes.end(), 0) & 0xFF) == 0) ++unseen;
    }
    for (const int changed : {1, 2, 3})
        expect_share(by_count.at(static_cast<std::size_t>(changed)), 1.0 / 3.0);
    EXPECT_EQ(statistics.unseen, unseen);
    EXPECT_GT(unseen, 0U);
    EXPECT_LT(unseen, kFrames / 200U);  // two thirds of a 255th would be 52
}

TEST(LineFault, ALostByteAndADoubledByte) {
    LineFaults faults;
    faults.lose = 1.0;
    std::vector<Bytes> frames;
    run(faults, 1, &frames);
    for (const Bytes& bytes : frames)
        EXPECT_EQ(bytes.size(), 9U);
    faults = {};
    faults.stutter = 1.0;
    frames.clear();
    run(faults, 1, &frames);
    for (const Bytes& bytes : frames)
        EXPECT_EQ(bytes.size(), 11U);
}

TEST(DriveFault, SilentExecutesAndSaysNothing) {
    Options options;
    options.faults.silent = true;
    DriveBench bench(options);
    EXPECT_FALSE(bench.write(0x200003, 1234, 2));
    EXPECT_EQ(bench.drive().value(0x200003), 1234);
    bench.drive().faults().silent = false;
    EXPECT_EQ(bench.read(0x200003), 1234U);
}

TEST(DriveFault, MuteHidesTheAnswersOfOneObjectWithItsSegments) {
    Options options;
    options.faults.mute = {0x200003, 0x200007};
    DriveBench bench(options);
    EXPECT_FALSE(bench.read(0x200003));
    EXPECT_TRUE(bench.read(0x200001));
    EXPECT_FALSE(bench.ask({0x40, 0x00, 0x20, 7, 0, 0, 0, 0}));
    EXPECT_FALSE(bench.ask({0x60, 0x00, 0x20, 7, 0, 0, 0, 0}));
}

TEST(DriveFault, AbortRefusesReadsAndWritesOfOneObject) {
    Options options;
    options.faults.abort = {0x200003};
    DriveBench bench(options);
    EXPECT_FALSE(bench.read(0x200003));
    EXPECT_EQ(bench.refusal(), 0x08000000U);
    EXPECT_FALSE(bench.write(0x200003, 1234, 2));
    EXPECT_EQ(bench.drive().value(0x200003), 40000);
    EXPECT_TRUE(bench.read(0x200001));
}

TEST(DriveFault, DelayMakesEveryAnswerLaterAndKeepsTheOrder) {
    Options options;
    options.faults.delay = std::chrono::milliseconds(20);
    DriveBench bench(options);
    Bytes burst = frame(127, kRead);
    const Bytes write = frame(127, {0x2B, 0x00, 0x20, 0x03, 0x39, 0x30, 0, 0});
    burst.insert(burst.end(), write.begin(), write.end());
    const auto answers = bench.exchange(burst);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].at, microseconds(2604 + 300 + 20000));
    EXPECT_EQ(answers[0].bytes[1], 0x4B);
    EXPECT_EQ(answers[1].bytes[1], 0x60);
    EXPECT_EQ(bench.drive().value(0x200003), 0x3039);
}

TEST(DriveFault, ADoubledAnswerTakesTwiceItsTimeOnTheLine) {
    Options options;
    options.faults.doubled = 1.0;
    DriveBench bench(options);
    const auto answers = bench.exchange(frame(127, kRead));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].bytes.size(), 20U);
    EXPECT_TRUE(std::equal(answers[0].bytes.begin(), answers[0].bytes.begin() + 10,
                           answers[0].bytes.begin() + 10));
}

}  // namespace
}  // namespace servo::sim::test
