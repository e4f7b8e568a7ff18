// On which sample a cursor stands, and what it reads.
#include "scope/cursors.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "scope/trace.h"
#include "scope/trace_support.h"

namespace servo::scope {
namespace {

using test::bytes_of;
using test::drive_operands;
using test::upload;
using test::use;

struct IndexCase {
    ZoomWindow window;
    double x;
    std::optional<int> index;
};

class CursorIndex : public testing::TestWithParam<IndexCase> {};

TEST_P(CursorIndex, OfAnAbscissa) {
    EXPECT_EQ(cursor_index(GetParam().window, GetParam().x), GetParam().index);
}

// The picture is 10000 units wide.
INSTANTIATE_TEST_SUITE_P(
    Table, CursorIndex,
    testing::Values(IndexCase{{0, 10}, 0, 0}, IndexCase{{0, 10}, 999.9, 0},
                    IndexCase{{0, 10}, 1000, 1}, IndexCase{{0, 10}, 9999, 9},
                    IndexCase{{0, 10}, 10000, 10},
                    // Cut to whole units before the division: 3 * 3333.4 is 10000.2.
                    IndexCase{{0, 3}, 3333.3, 0}, IndexCase{{0, 3}, 3333.4, 1},
                    IndexCase{{100, 200}, 5000, 150},
                    // Above the last one it is the last one.
                    IndexCase{{0, 10}, 10999, 10}, IndexCase{{100, 200}, 1e300, 200},
                    // A little to the left still rounds towards the first one; more goes below it,
                    // and below 0 there is nothing.
                    IndexCase{{0, 10}, -999, 0}, IndexCase{{0, 10}, -1000, std::nullopt},
                    IndexCase{{100, 200}, -5000, 50}, IndexCase{{0, 10}, -1e300, std::nullopt},
                    IndexCase{{7, 7}, 5000, 7},
                    // A window panned to the left of the recording.
                    IndexCase{{-5, 5}, 1000, std::nullopt}, IndexCase{{-5, 5}, 5000, 0},
                    // An empty recording.
                    IndexCase{{0, -1}, 0, std::nullopt}, IndexCase{{0, -1}, 5000, std::nullopt},
                    IndexCase{{0, 10}, std::numeric_limits<double>::quiet_NaN(), std::nullopt},
                    IndexCase{{0, 10}, std::numeric_limits<double>::infinity(), std::nullopt}));

RC_GTEST_PROP(CursorAbscissaProperty, GivesTheSampleBack, ()) {
    const int first = *rc::gen::inRange(0, 8192);
    const int last = *rc::gen::inRange(first, 8192);
    const int index = *rc::gen::inRange(first, last + 1);
    const ZoomWindow window{static_cast<std::int16_t>(first), static_cast<std::int16_t>(last)};
    const double x = cursor_abscissa(window, index);
    RC_ASSERT(cursor_index(window, x) == index);
    RC_ASSERT(x >= 0.0);
    RC_ASSERT(x <= double{kPictureWidth});
}

TEST(CursorAbscissa, StaysInThePicture) {
    EXPECT_EQ(cursor_abscissa({10, 20}, 9), 0.0);
    EXPECT_EQ(cursor_abscissa({10, 20}, 21), 10000.0);
    EXPECT_EQ(cursor_abscissa({10, 10}, 10), 0.0);
    EXPECT_EQ(cursor_abscissa({0, -1}, 0), 0.0);
}

class Cursors : public testing::Test {
  protected:
    Cursors() {
        use(data, 0, "int16");
        use(data, 1, "int16", "[DEC u]N/8", "u");
        std::vector<std::int16_t> rows;
        for (int i = 0; i <= 10; ++i) {
            rows.push_back(static_cast<std::int16_t>(100 * i));
            rows.push_back(static_cast<std::int16_t>(-i));
        }
        upload(data, bytes_of(rows));
        EXPECT_TRUE(Movingdata(data, drive_operands(), base::Language::kEnglish));
    }

    void put(Cursor cursor, double at) {
        data.cursors[static_cast<std::size_t>(cursor)] = {true, at};
    }
    void switch_off(Cursor cursor) { data.cursors[static_cast<std::size_t>(cursor)].on = false; }
    const CursorTexts& read() {
        read_cursors(data, drive_operands());
        return data.cursor_texts;
    }

    ScopeData data;
};

TEST_F(Cursors, AllOffReadNothing) {
    const CursorTexts& texts = read();
    for (const std::string* text : {&texts.Label25, &texts.Label27, &texts.Label29, &texts.Label32,
                                    &texts.Label33, &texts.Label34, &texts.Label35})
        EXPECT_EQ(*text, "");
    EXPECT_EQ(texts.Label31, "us");
    EXPECT_EQ(data.channels[0].valueLabel, "");
}

TEST_F(Cursors, TimesAreIndexTimesPeriod) {
    data.Text1 = "3";
    put(Cursor::kX1, 2000);
    put(Cursor::kX2, 7000);
    EXPECT_EQ(read().Label25, "375");     // 2 * 3 * 62.5
    EXPECT_EQ(read().Label27, "1312.5");  // 7 * 3 * 62.5
    EXPECT_EQ(read().Label29, "937.5");
}

TEST_F(Cursors, TimeDifferenceIsSecondLessFirst) {
    put(Cursor::kX1, 7000);
    put(Cursor::kX2, 2000);
    EXPECT_EQ(read().Label29, "-312.5");
}

TEST_F(Cursors, DifferenceIsEmptiedWhenOneCursorIsOff) {
    put(Cursor::kX1, 2000);
    put(Cursor::kX2, 7000);
    EXPECT_EQ(read().Label29, "312.5");
    EXPECT_EQ(read().Label33, "500.000");
    switch_off(Cursor::kX1);
    EXPECT_EQ(read().Label25, "");
    EXPECT_EQ(read().Label27, "437.5");
    EXPECT_EQ(read().Label29, "");
    EXPECT_EQ(read().Label35, "");
    EXPECT_EQ(read().Label33, "");
}

TEST_F(Cursors, TimesCountFromTheRecordingNotFromTheWindow) {
    data.zoomDepth = 1;
    data.zoomWindow[1] = {4, 8};
    put(Cursor::kX1, 5000);
    EXPECT_EQ(read().Label25, "375");
    EXPECT_EQ(read().Label35, "600");
}

TEST_F(Cursors, ValuesOfThePickedChannelInItsUnit) {
    put(Cursor::kX1, 2000);
    put(Cursor::kX2, 5000);
    data.Combo12 = 1;
    EXPECT_EQ(read().Label35, "-0.25");
    EXPECT_EQ(read().Label34, "-0.625");
    EXPECT_EQ(read().Label33, "-0.375");
    EXPECT_EQ(read().Label32, "u");
    data.Combo12 = 0;
    EXPECT_EQ(read().Label35, "200");
    EXPECT_EQ(read().Label33, "300.000");
    EXPECT_EQ(read().Label32, "DEC");
}

TEST_F(Cursors, NoChannelPickedHasNoValues) {
    data.Combo12 = -1;
    put(Cursor::kX1, 2000);
    put(Cursor::kY1, 2000);
    EXPECT_EQ(read().Label25, "125");
    EXPECT_EQ(read().Label35, "");
    EXPECT_EQ(read().Label32, "");
    EXPECT_EQ(data.channels[0].valueLabel, "200") << "the row of values needs no pick";
}

TEST_F(Cursors, NoUnitPickedHasNoSampleValue) {
    put(Cursor::kX1, 2000);
    data.channels[0].unitList.ListIndex = -1;
    EXPECT_EQ(read().Label35, "");
    EXPECT_EQ(read().Label32, "");
    EXPECT_EQ(data.channels[0].valueLabel, "");
}

TEST_F(Cursors, ValueRowShowsEveryRecordedChannelUnderX1) {
    put(Cursor::kX1, 3000);
    data.channels[1].hide = true;
    use(data, 2, "int16").samples[3] = 99;
    data.channels[2].enable = false;
    read();
    EXPECT_EQ(data.channels[0].valueLabel, "300");
    EXPECT_EQ(data.channels[1].valueLabel, "-0.375");
    EXPECT_EQ(data.channels[2].valueLabel, "") << "not recorded";
    switch_off(Cursor::kX1);
    put(Cursor::kX2, 3000);
    read();
    EXPECT_EQ(data.channels[0].valueLabel, "");
}

TEST_F(Cursors, HeightsReadByScaleAndOffset) {
    ScopeChannel& channel = data.channels[0];
    channel.scale = 2.5;
    channel.offsetText = "-100";
    put(Cursor::kY1, 5000);
    put(Cursor::kY2, 3500);
    EXPECT_EQ(read().Label35, "100.00");
    EXPECT_EQ(read().Label34, "103.75");  // a division and a half up
    EXPECT_EQ(read().Label33, "3.750");
    EXPECT_EQ(read().Label32, "DEC");
    EXPECT_EQ(read().Label25, "") << "no time";
    put(Cursor::kY1, 10000);
    EXPECT_EQ(read().Label35, "87.50");
    put(Cursor::kY1, 0);
    EXPECT_EQ(read().Label35, "112.50");
}

TEST_F(Cursors, HeightOfAHundredthIsRoundedAwayFromZeroWithoutALostSign) {
    ScopeChannel& channel = data.channels[0];
    channel.offsetText = "0";
    channel.scale = 1.0;
    put(Cursor::kY1, 5005);  // -0.005
    EXPECT_EQ(read().Label35, "-0.01");
    put(Cursor::kY1, 5004);
    EXPECT_EQ(read().Label35, "0.00");
}

TEST_F(Cursors, WithAllFourOnTimesAreOfXAndValuesOfY) {
    data.channels[0].scale = 10;
    data.channels[0].offsetText = "0";
    put(Cursor::kX1, 2000);
    put(Cursor::kX2, 7000);
    put(Cursor::kY1, 5000);
    put(Cursor::kY2, 4000);
    EXPECT_EQ(read().Label29, "312.5");
    EXPECT_EQ(read().Label35, "0.00");
    EXPECT_EQ(read().Label34, "10.00");
    EXPECT_EQ(read().Label33, "10.000");
    EXPECT_EQ(data.channels[0].valueLabel, "200");
}

TEST_F(Cursors, LeftOfTheRecordingReadNothing) {
    put(Cursor::kX1, 2000);
    EXPECT_EQ(read().Label25, "125");
    put(Cursor::kX1, -2000);
    EXPECT_EQ(read().Label25, "");
    EXPECT_EQ(read().Label35, "");
    EXPECT_EQ(data.channels[0].valueLabel, "");
}

TEST_F(Cursors, SampleBeyond8191ReadsNothing) {
    data.zoomWindow[0] = {0, 32767};
    put(Cursor::kX1, 9999);
    EXPECT_EQ(read().Label25, "");
    EXPECT_EQ(read().Label35, "");
}

TEST_F(Cursors, NothingIsReadWithoutARecording) {
    put(Cursor::kX1, 2000);
    put(Cursor::kY2, 2000);
    EXPECT_EQ(read().Label25, "125");
    data.dataValid = false;
    EXPECT_EQ(read().Label25, "");
    EXPECT_EQ(read().Label34, "");
    EXPECT_EQ(read().Label35, "");
    EXPECT_EQ(data.channels[0].valueLabel, "");
}

TEST_F(Cursors, FollowAChangeOfTheUnit) {
    put(Cursor::kX1, 8000);
    data.Combo12 = 1;
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.cursor_texts.Label35, "-1");
    use(data, 1, "int16");
    change_curve_unit(data, drive_operands());
    EXPECT_EQ(data.cursor_texts.Label35, "-8");
}

}  // namespace
}  // namespace servo::scope
