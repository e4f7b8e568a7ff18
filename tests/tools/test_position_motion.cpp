// The motion that a table describes, against closed forms.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

#include "position_grids.h"
#include "tools/position_table_motion.h"

namespace servo::tools {
namespace {

constexpr double kE = 10000;
constexpr double kNear = 1e-6;

struct MotionTest : testing::Test {
    MotionTest() {
        put_ramp(grids, 0, "10", "20");  // turns/s^2
        put_ramp(grids, 1, "0", "0");
    }
    Motion motion(int start = 0) const { return simulate_motion(read_program(grids), start, kE); }
    PositionGrids grids = cleared_grids();
};

// 60 turns at 10 turns/s: 1 s up (5 turns), 0.5 s down (2.5 turns), 5.25 s between.
TEST_F(MotionTest, ALongMoveIsATrapezoid) {
    put_step(grids, 0, {.target = 600000, .speed = "600"});
    const Motion motion = this->motion();
    ASSERT_EQ(motion.parts.size(), 3U);
    EXPECT_NEAR(motion.parts[0].duration, 1.0, kNear);
    EXPECT_NEAR(motion.parts[1].duration, 5.25, kNear);
    EXPECT_NEAR(motion.parts[2].duration, 0.5, kNear);
    EXPECT_NEAR(motion.duration, 6.75, kNear);
    EXPECT_NEAR(motion.position_at(1.0), 50000, kNear);
    EXPECT_NEAR(motion.speed_at(3.0), 100000, kNear);
    EXPECT_NEAR(motion.position_at(6.25), 575000, kNear);
    EXPECT_NEAR(motion.position_at(6.75), 600000, kNear);
    EXPECT_NEAR(motion.position_at(99), 600000, kNear);
    EXPECT_EQ(motion.speed_at(99), 0);
    EXPECT_EQ(motion.end, MotionEnd::kStops);
}

// 1.5 turns: peak sqrt(2 * 1.5 * 10 * 20 / 30) = 4.4721 turns/s.
TEST_F(MotionTest, AShortMoveIsATriangle) {
    put_step(grids, 0, {.target = -15000, .speed = "600"});
    const Motion motion = this->motion();
    ASSERT_EQ(motion.parts.size(), 2U);
    const double peak = std::sqrt(20.0);
    EXPECT_NEAR(motion.parts[0].duration, peak / 10, kNear);
    EXPECT_NEAR(motion.parts[1].duration, peak / 20, kNear);
    EXPECT_NEAR(motion.speed_at(peak / 10), -peak * kE, 1e-4);
    EXPECT_NEAR(motion.position_at(motion.duration), -15000, 1e-4);
}

TEST_F(MotionTest, ModesAddUp) {
    put_step(grids, 0, {.target = 10000, .next = 1});
    put_step(grids, 1, {.target = -4000, .next = 2, .mode = StepMode::kRelativeToDemand});
    put_step(grids, 2,
             {.target = 1000, .next = 3, .mode = StepMode::kRelativeToActual, .loops = 3});
    put_step(grids, 3, {.target = 500});
    const Motion motion = this->motion();
    ASSERT_EQ(motion.visits.size(), 6U);
    EXPECT_EQ(motion.visits[0].to, 10000);
    EXPECT_EQ(motion.visits[1].to, 6000);
    EXPECT_EQ(motion.visits[2].to, 7000);
    EXPECT_EQ(motion.visits[4].to, 9000);
    EXPECT_EQ(motion.visits[5].to, 500);
    EXPECT_NEAR(motion.position_at(motion.duration), 500, 1e-4);
}

TEST_F(MotionTest, ADelayComesBehindEachRun) {
    put_step(grids, 0,
             {.target = 1000, .mode = StepMode::kRelativeToDemand, .delay = 250, .loops = 2});
    const Motion motion = this->motion();
    ASSERT_EQ(motion.visits.size(), 2U);
    for (const MotionVisit& visit : motion.visits)
        EXPECT_NEAR(visit.end - visit.motion_end, 0.25, kNear);
    EXPECT_EQ(motion.speed_at(motion.visits[0].motion_end + 0.1), 0);
    EXPECT_NEAR(motion.position_at(motion.visits[0].motion_end + 0.1), 1000, 1e-4);
    EXPECT_EQ(motion.step_at(0.01), 0);
    EXPECT_EQ(motion.step_at(-1), -1);
}

TEST_F(MotionTest, ALoopIsShownForTwoRounds) {
    put_step(grids, 0, {.next = 1});
    put_step(grids, 1, {.target = 5000, .next = 2});
    put_step(grids, 2, {.target = 0, .next = 1});
    const Motion motion = this->motion();
    EXPECT_EQ(motion.end, MotionEnd::kRepeats);
    EXPECT_EQ(motion.end_step, 1);
    EXPECT_EQ(motion.visits.size(), 5U);
}

TEST_F(MotionTest, ManyRepetitionsEndAtTheLimit) {
    put_step(grids, 0, {.target = 1, .mode = StepMode::kRelativeToDemand, .loops = 65535});
    const Motion motion = this->motion();
    EXPECT_EQ(motion.end, MotionEnd::kLimit);
    EXPECT_EQ(motion.visits.size(), static_cast<std::size_t>(kMostVisits));
}

TEST_F(MotionTest, AnEmptyStepEndsIt) {
    put_step(grids, 0, {.next = 8});
    const Motion motion = this->motion();
    EXPECT_EQ(motion.end, MotionEnd::kEmptyStep);
    EXPECT_EQ(motion.end_step, 8);
    EXPECT_EQ(motion.visits.size(), 1U);
    EXPECT_EQ(this->motion(20).end, MotionEnd::kEmptyStep);
}

TEST_F(MotionTest, WithoutSpeedOrRampAStepCannotRun) {
    put_step(grids, 0, {.speed = "0"});
    EXPECT_EQ(motion().end, MotionEnd::kCannotRun);
    put_step(grids, 0, {.ramp = 1});
    EXPECT_EQ(motion().end, MotionEnd::kCannotRun);
    put_step(grids, 0, {.ramp = 8});
    EXPECT_EQ(motion().end, MotionEnd::kCannotRun);
    put_step(grids, 0, {.speed = "0.0000000001"});
    EXPECT_EQ(motion().end, MotionEnd::kCannotRun);
    put_step(grids, 0, {.mode = StepMode::kUndefined});
    EXPECT_EQ(motion().end, MotionEnd::kUndefined);
}

TEST_F(MotionTest, AMoveToWhereTheAxisStandsTakesNoTime) {
    put_step(grids, 0, {.target = 0, .delay = 10, .loops = 1});
    const Motion motion = this->motion();
    EXPECT_NEAR(motion.duration, 0.01, kNear);
    EXPECT_EQ(motion.visits.size(), 1U);
}

TEST_F(MotionTest, EveryEndHasWordsInBothLanguages) {
    Motion motion;
    for (const MotionEnd end :
         {MotionEnd::kStops, MotionEnd::kRepeats, MotionEnd::kLimit, MotionEnd::kEmptyStep,
          MotionEnd::kCannotRun, MotionEnd::kUndefined}) {
        motion.end = end;
        motion.end_step = 17;
        for (const auto language : {base::Language::kChinese, base::Language::kEnglish})
            EXPECT_NE(motion_end_text(motion, language).find("17"), std::string::npos);
    }
}

TEST(PositionMotion, IsContinuousAndWithinItsSpeedForAnyTable) {
    EXPECT_TRUE(rc::check([] {
        PositionGrids grids = cleared_grids();
        for (int i = 0; i < 8; ++i)
            put_ramp(grids, i, std::to_string(*rc::gen::inRange(0, 500)),
                     std::to_string(*rc::gen::inRange(0, 500)));
        double top = 0;
        for (int i = 0; i < kPositionSteps; ++i) {
            const int speed = *rc::gen::inRange(0, 6000);
            top = std::max(top, speed / 60.0 * kE);
            put_step(grids, i,
                     {.target = *rc::gen::inRange(-1000000, 1000000),
                      .next = *rc::gen::inRange(-1, 32),
                      .mode = static_cast<StepMode>(*rc::gen::inRange(0, 3)),
                      .speed = std::to_string(speed),
                      .delay = *rc::gen::inRange(0, 100),
                      .loops = *rc::gen::inRange(0, 4),
                      .ramp = *rc::gen::inRange(0, 8)});
        }
        const Motion motion = simulate_motion(read_program(grids), 0, kE);
        double time = 0;
        double position = 0;
        for (const MotionPart& part : motion.parts) {
            RC_ASSERT(std::fabs(part.begin - time) < 1e-6);
            RC_ASSERT(std::fabs(part.position - position) < 0.01);
            RC_ASSERT(std::fabs(part.speed) <= top + 1e-6);
            RC_ASSERT(part.duration >= 0);
            time = part.begin + part.duration;
            position = part.position + part.speed * part.duration +
                       part.acceleration * part.duration * part.duration / 2;
        }
        RC_ASSERT(std::fabs(motion.duration - time) < 1e-6);
    }));
}

}  // namespace
}  // namespace servo::tools
