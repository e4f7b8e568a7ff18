// Where boxes, arrows and curves stand.
#include <gtest/gtest.h>

#include <cmath>

#include "position_grids.h"
#include "tools/position_table_motion_picture.h"

namespace servo::tools {
namespace {

constexpr auto kEnglish = base::Language::kEnglish;

FlowPicture picture_of(const PositionGrids& grids, double width, int start = 0) {
    const PositionProgram program = read_program(grids);
    return flow_picture(program, analyse_flow(program, start), width, {}, kEnglish);
}

PositionGrids chain_of(int count, int last_next) {
    PositionGrids grids = cleared_grids();
    put_ramp(grids, 0, "10", "10");
    for (int i = 0; i < count; ++i)
        put_step(grids, i, {.target = 1000 * (i + 1), .next = i + 1 < count ? i + 1 : last_next});
    return grids;
}

bool crosses(const PictureRect& box, PicturePoint a, PicturePoint b) {
    const double left = std::min(a.x, b.x);
    const double right = std::max(a.x, b.x);
    const double top = std::min(a.y, b.y);
    const double bottom = std::max(a.y, b.y);
    return right > box.x + 0.5 && left < box.right() - 0.5 && bottom > box.y + 0.5 &&
           top < box.bottom() - 0.5;
}

TEST(FlowPicture, AChainRunsFromLeftToRightAndOnInTheNextRow) {
    const FlowPicture picture = picture_of(chain_of(6, -1), 4 * 158 + 72);
    ASSERT_EQ(picture.boxes.size(), 6U);
    EXPECT_EQ(picture.boxes[3].rect.y, picture.boxes[0].rect.y);
    EXPECT_GT(picture.boxes[4].rect.y, picture.boxes[3].rect.bottom());
    EXPECT_EQ(picture.boxes[4].rect.x, picture.boxes[0].rect.x);
    EXPECT_EQ(picture.arrows.size(), 5U);
    EXPECT_EQ(picture.arrows[0].points.size(), 2U);
    EXPECT_EQ(picture.arrows[3].points.size(), 6U);
}

TEST(FlowPicture, NoArrowCrossesABox) {
    for (int back = 0; back < 20; ++back) {
        for (const double width : {300.0, 700.0, 1400.0}) {
            PositionGrids grids = chain_of(20, back);
            put_step(grids, 25, {.next = 3});
            put_step(grids, 30, {.next = 30});
            const FlowPicture picture = picture_of(grids, width);
            for (const FlowArrow& arrow : picture.arrows)
                for (std::size_t i = 0; i + 1 < arrow.points.size(); ++i) {
                    const PicturePoint a = arrow.points[i];
                    const PicturePoint b = arrow.points[i + 1];
                    EXPECT_TRUE(a.x == b.x || a.y == b.y);
                    EXPECT_GE(std::min(a.x, b.x), 0);
                    EXPECT_LE(std::max(a.y, b.y), picture.height);
                    for (const FlowBox& box : picture.boxes)
                        EXPECT_FALSE(crosses(box.rect, a, b))
                            << arrow.from << " to " << arrow.to << " over " << box.step;
                }
        }
    }
}

TEST(FlowPicture, AnArrowBackEndsAtItsTarget) {
    const FlowPicture picture = picture_of(chain_of(6, 1), 900);
    const FlowArrow& back = picture.arrows.back();
    EXPECT_EQ(back.kind, ArrowKind::kBack);
    EXPECT_EQ(back.from, 5);
    EXPECT_EQ(back.to, 1);
    EXPECT_EQ(back.points.back().y, picture.boxes[1].rect.bottom());
}

TEST(FlowPicture, BoxesSayWhatTheStepDoes) {
    PositionGrids grids = cleared_grids();
    put_step(grids, 0,
             {.target = -500,
              .next = 1,
              .mode = StepMode::kRelativeToDemand,
              .speed = "12.50",
              .delay = 20,
              .loops = 3,
              .start = 1,
              .condition0 = true,
              .condition1 = true});
    put_step(grids, 1, {.target = 700, .next = 9, .start = 2, .condition1 = true});
    const FlowPicture picture = picture_of(grids, 900);
    ASSERT_EQ(picture.boxes.size(), 3U);
    const FlowBox& first = picture.boxes[0];
    EXPECT_EQ(first.lines[0], "0  RN");
    EXPECT_EQ(first.lines[1], "-500 inc");
    EXPECT_EQ(first.lines[2], "12.5 rpm · 20 ms");
    EXPECT_EQ(first.lines[3], "×3 · wait C0 or C1");
    EXPECT_EQ(first.tag, "start");
    EXPECT_EQ(picture.boxes[1].lines[1], "→ 700 inc");
    EXPECT_EQ(picture.boxes[1].lines[3], "interrupt C1");
    EXPECT_TRUE(picture.arrows[0].interrupts);
    EXPECT_EQ(picture.boxes[2].tag, "empty");
    EXPECT_TRUE(picture.boxes[2].empty);
}

TEST(FlowPicture, UnreachedStepsStandUnderAHeading) {
    PositionGrids grids = chain_of(2, -1);
    put_step(grids, 20, {});
    const FlowPicture picture = picture_of(grids, 900);
    ASSERT_EQ(picture.headings.size(), 1U);
    EXPECT_EQ(picture.headings[0].text, "Never reached from step 0:");
    EXPECT_FALSE(picture.boxes[2].reached);
    EXPECT_LT(picture.headings[0].at.y, picture.boxes[2].rect.y);
    EXPECT_GT(picture.headings[0].at.y, picture.boxes[0].rect.bottom());
}

TEST(FlowPicture, AClickFindsItsStep) {
    const FlowPicture picture = picture_of(chain_of(3, -1), 900);
    const PictureRect& rect = picture.boxes[2].rect;
    EXPECT_EQ(picture.step_at({rect.middle_x(), rect.middle_y()}), 2);
    EXPECT_EQ(picture.step_at({1, 1}), -1);
}

TEST(FlowPicture, IsToldInWords) {
    const auto words = [](const PositionGrids& grids) {
        return flow_summary(analyse_flow(read_program(grids), 0), kEnglish);
    };
    EXPECT_EQ(words(chain_of(3, -1)), "0 → 1 → 2, stop");
    EXPECT_EQ(words(chain_of(3, 1)), "0 → 1 → 2, back to 1");
}

TEST(MotionPicture, CurvesStayInTheirPlotsAndReachTheirEnds) {
    const PositionGrids grids = chain_of(4, 0);
    const Motion motion = simulate_motion(read_program(grids), 0, 10000);
    const MotionPicture picture = motion_picture(motion, 10000, 900, 300, {});
    ASSERT_FALSE(picture.position.empty());
    EXPECT_NEAR(picture.position.front().x, picture.position_plot.x, 1e-9);
    EXPECT_NEAR(picture.position.back().x, picture.position_plot.right(), 1e-6);
    for (const PicturePoint& point : picture.position) {
        EXPECT_GE(point.y, picture.position_plot.y);
        EXPECT_LE(point.y, picture.position_plot.bottom());
    }
    for (const PicturePoint& point : picture.speed) {
        EXPECT_GE(point.y, picture.speed_plot.y);
        EXPECT_LE(point.y, picture.speed_plot.bottom());
    }
    EXPECT_EQ(picture.bands.size(), motion.visits.size());
    EXPECT_NEAR(picture.time_at(picture.x_of(0.125)), 0.125, 1e-12);
    EXPECT_GE(picture.times.size(), 3U);
    EXPECT_EQ(picture.times[0].text, "0");
}

TEST(MotionPicture, IsEmptyWithoutMotionOrRoom) {
    const Motion none = simulate_motion(read_program(cleared_grids()), 0, 10000);
    EXPECT_TRUE(motion_picture(none, 10000, 900, 300, {}).position.empty());
    const Motion some = simulate_motion(read_program(chain_of(2, -1)), 0, 10000);
    EXPECT_TRUE(motion_picture(some, 10000, 100, 300, {}).position.empty());
}

TEST(MotionPicture, NumbersThatWouldCoverEachOtherAreLeftOut) {
    const Motion motion = simulate_motion(read_program(chain_of(30, 0)), 0, 10000);
    const MotionPicture picture = motion_picture(motion, 10000, 400, 300, {});
    double last = -1000;
    for (const MotionBand& band : picture.bands) {
        if (!band.labelled) continue;
        EXPECT_GE(band.rect.x - last, MotionSizes{}.label);
        last = band.rect.x;
    }
}

TEST(MotionPicture, ReadsOutAPlace) {
    const Motion motion = simulate_motion(read_program(chain_of(1, -1)), 0, 10000);
    EXPECT_EQ(motion_reading(motion, 10, 10000, kEnglish),
              "t = 10.000 s: step 0, position 1000 inc, speed 0.0 rpm");
    EXPECT_EQ(motion_reading(motion, -1, 10000, kEnglish), "");
}

TEST(MotionPicture, TicksAreRound) {
    EXPECT_DOUBLE_EQ(tick_distance(10, 5), 2);
    EXPECT_DOUBLE_EQ(tick_distance(0.9, 10), 0.1);
    EXPECT_DOUBLE_EQ(tick_distance(0.9, 4), 0.5);
    EXPECT_DOUBLE_EQ(tick_distance(7000, 10), 1000);
    EXPECT_EQ(tick_distance(0, 5), 1);
}

}  // namespace
}  // namespace servo::tools
