// The texts along the axes.
#include <gtest/gtest.h>

#include "scope/trace.h"
#include "scope/trace_support.h"

namespace servo::scope {
namespace {

using test::bytes_of;
using test::drive_operands;
using test::upload;
using test::use;

struct TimeCase {
    const char* Text1;
    int first;
    int last;
    const char* grid;  // of Label44
    std::array<const char*, 5> labels;
};

class TimeTexts : public testing::TestWithParam<TimeCase> {};

TEST_P(TimeTexts, OfTheWindowShown) {
    const TimeCase& one = GetParam();
    ScopeData data;
    data.Text1 = one.Text1;
    data.zoomDepth = 2;
    data.zoomWindow[2] = {static_cast<std::int16_t>(one.first),
                          static_cast<std::int16_t>(one.last)};
    write_time_texts(data, base::Language::kEnglish);
    EXPECT_EQ(data.Label44, std::string("Zoom Depth:2;Time Grid:") + one.grid + "uS");
    for (std::size_t i = 0; i < one.labels.size(); ++i)
        EXPECT_EQ(data.Label15[i], one.labels[i]) << i;
    write_time_texts(data, base::Language::kChinese);
    EXPECT_EQ(data.Label44, std::string("缩放等级:2;时间栅格:") + one.grid + "uS");
}

INSTANTIATE_TEST_SUITE_P(
    Table, TimeTexts,
    testing::Values(
        // A fraction of a millisecond: microseconds.
        TimeCase{"1", 0, 1, "6.25", {"12.5", "25", "37.5", "50", "(us)"}},
        TimeCase{"3", 0, 9, "168.75", {"337.5", "675", "1012.5", "1350", "(us)"}},
        TimeCase{"1", 0, 499, "3118.75", {"6237.5", "12475", "18712.5", "24950", "(us)"}},
        // Whole milliseconds.
        TimeCase{"16", 0, 10, "1000", {"2", "4", "6", "8", "(ms)"}},
        TimeCase{"1", 100, 260, "1000", {"2", "4", "6", "8", "(ms)"}},
        // Whole seconds.
        TimeCase{"16000", 0, 10, "1000000", {"2", "4", "6", "8", "(s)"}},
        // Each label has a unit of its own; the one shown is that of the last.
        TimeCase{"4", 0, 10, "250", {"500", "1", "1500", "2", "(ms)"}},
        TimeCase{"2000", 0, 10, "125000", {"250", "500", "750", "1", "(s)"}},
        TimeCase{"4000", 0, 10, "250000", {"500", "1", "1500", "2", "(s)"}},
        // Nothing across is 0 seconds.
        TimeCase{"1", 5, 5, "0", {"0", "0", "0", "0", "(s)"}},
        TimeCase{"", 0, 100, "0", {"0", "0", "0", "0", "(s)"}},
        // A period that was typed and not entered may be any number.
        TimeCase{"0.5", 0, 8, "25", {"50", "100", "150", "200", "(us)"}},
        TimeCase{"3ms", 0, 9, "168.75", {"337.5", "675", "1012.5", "1350", "(us)"}},
        // An upload without a byte leaves a window that ends before it begins.
        TimeCase{"1", 0, -1, "-6.25", {"-12.5", "-25", "-37.5", "-50", "(us)"}},
        // Large and small numbers in the form with an exponent.
        TimeCase{"1E14",
                 0,
                 8,
                 "5E+15",
                 {"10000000000", "20000000000", "30000000000", "40000000000", "(s)"}},
        TimeCase{"1E999", 0, 8, "?????", {"?????", "?????", "?????", "?????", "(s)"}}));

TEST(TimeTextsOfARecording, PeriodOfThreeAndTenSamplesReads168_75) {
    ScopeData data;
    data.Text1 = "3";
    use(data, 0, "int16");
    upload(data, bytes_of(std::vector<std::int16_t>(10)));
    ASSERT_TRUE(Movingdata(data, drive_operands(), base::Language::kEnglish));
    EXPECT_EQ(data.Label44, "Zoom Depth:0;Time Grid:168.75uS");
    ASSERT_TRUE(Movingdata(data, drive_operands(), base::Language::kChinese));
    EXPECT_EQ(data.Label44, "缩放等级:0;时间栅格:168.75uS");
    EXPECT_EQ(data.Label15[0], "337.5");
    EXPECT_EQ(data.Label15[4], "(us)");
}

TEST(PrintPicLine, ValuesAtTheGridLinesFromTheBottomUp) {
    ScopeData data;
    ScopeChannel& channel = use(data, 1, "int16");
    channel.scale = 0.5;
    channel.offsetText = "-3";
    Print_Pic_Line(data);
    EXPECT_EQ(data.y_labels[1], (std::array<std::string, kDivisions>{"0.5", "1", "1.5", "2", "2.5",
                                                                     "3", "3.5", "4", "4.5", "5"}));
    for (const std::size_t other : {0u, 2u, 3u})
        EXPECT_EQ(data.y_labels[other], (std::array<std::string, kDivisions>{}));
}

TEST(PrintPicLine, NoNoiseOfTheLastBinaryPlace) {
    ScopeData data;
    ScopeChannel& channel = use(data, 0, "int16");
    channel.scale = 0.1;
    channel.offsetText = "-0.3";
    Print_Pic_Line(data);
    EXPECT_EQ(data.y_labels[0],
              (std::array<std::string, kDivisions>{"-0.2", "-0.1", "0", "0.1", "0.2", "0.3", "0.4",
                                                   "0.5", "0.6", "0.7"}));
}

TEST(PrintPicLine, HiddenAndDisabledCurvesHaveNoLabels) {
    ScopeData data;
    use(data, 0, "int16");
    use(data, 1, "int16");
    Print_Pic_Line(data);
    EXPECT_EQ(data.y_labels[0][5], "0");
    data.channels[0].hide = true;
    data.channels[1].enable = false;
    Print_Pic_Line(data);
    EXPECT_EQ(data.y_labels, decltype(data.y_labels){});
}

}  // namespace
}  // namespace servo::scope
