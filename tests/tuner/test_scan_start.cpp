// The checks before a scan, and what a start leaves.
#include "scan_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

constexpr const char* kCurrent = "the mag current must be in the range of 32 to 800";
constexpr const char* kStart = "the start frequency must be in the range of 4 to 900";
constexpr const char* kStep = "the step frequency must be in the range of 3 to 200";
constexpr const char* kStop = "the stop frequency must be in the range of 4 to 1000";
constexpr const char* kSpan =
    "the stop frequency must be bigger than start frequency+step frequency";
constexpr const char* kNoLink = "Please Set the Communication first!";
constexpr const char* kBusy =
    "The frequency scanning can't be initialized when other data exchange function working."
    "e.g.,Scope,batch read or write,download";

struct ScanStart : testing::Test, ScanBench {
    // Whether a scan starts with these; it is given up at once.
    bool starts(const std::string& start, const std::string& step, const std::string& stop,
                const std::string& current = "60") {
        type(start, step, stop, current);
        const bool started = scan.start();
        if (started) engine.link_closed();
        return started;
    }
};

}  // namespace

TEST_F(ScanStart, ClosedLinkIsToldInTheLanguageOfTheScreen) {
    open = false;
    EXPECT_TRUE(refused_with("Notice", kNoLink));
    language = base::Language::kChinese;
    EXPECT_TRUE(refused_with("提示", "请先打开通信连接!"));
}

TEST_F(ScanStart, BatchAndTransferAreToldInTheLanguageOfTheScreen) {
    for (const int mode : {1, 2, 3, 4, -1}) {
        state.batch_mode = mode;
        EXPECT_TRUE(refused_with("Notice", kBusy)) << mode;
    }
    state.batch_mode = 0;
    state.download_active = 1;
    EXPECT_TRUE(refused_with("Notice", kBusy));
    language = base::Language::kChinese;
    EXPECT_TRUE(refused_with(
        "提示", "数据批量操作正在执行时不能启动扫频功能。如示波器、批量读写功能或下载功能"));
}

TEST_F(ScanStart, ScopeThatAcquiresIsNotAskedWhateverTheMessageSays) {
    state.scopeState = 3;
    EXPECT_TRUE(scan.start());
}

TEST_F(ScanStart, MessagesOfTheBoxesAreEnglishUnderNoticeInBothLanguages) {
    for (const base::Language spoken : {base::Language::kEnglish, base::Language::kChinese}) {
        language = spoken;
        type("4", "3", "60", "31");
        EXPECT_TRUE(refused_with("Notice", kCurrent));
        type("3", "3", "60");
        EXPECT_TRUE(refused_with("Notice", kStart));
        type("4", "2", "60");
        EXPECT_TRUE(refused_with("Notice", kStep));
        type("4", "3", "1001");
        EXPECT_TRUE(refused_with("Notice", kStop));
        type("4", "3", "6");
        EXPECT_TRUE(refused_with("Notice", kSpan));
    }
}

TEST_F(ScanStart, ChecksStopAtTheFirstFailureInTheirOrder) {
    open = false;
    state.batch_mode = 1;
    type("0", "0", "0", "0");
    EXPECT_TRUE(refused_with("Notice", kNoLink));
    open = true;
    EXPECT_TRUE(refused_with("Notice", kBusy));
    state.batch_mode = 0;
    EXPECT_TRUE(refused_with("Notice", kCurrent));
    data.Text1 = "60";
    EXPECT_TRUE(refused_with("Notice", kStart));
    data.Text2 = "900";
    EXPECT_TRUE(refused_with("Notice", kStep));
    data.Text4 = "200";
    EXPECT_TRUE(refused_with("Notice", kStop));
    data.Text3 = "1000";
    EXPECT_TRUE(refused_with("Notice", kSpan));
    data.Text2 = "800";
    EXPECT_TRUE(scan.start());
    EXPECT_EQ(notice.boxes.size(), 1U) << "no further box";
}

TEST_F(ScanStart, LimitsAreInclusive) {
    struct Case {
        const char *start, *step, *stop, *current;
        bool passes;
    };
    for (const Case& c : {Case{"4", "3", "60", "32", true}, Case{"4", "3", "60", "31", false},
                          Case{"4", "3", "60", "800", true}, Case{"4", "3", "60", "801", false},
                          Case{"3", "3", "60", "60", false}, Case{"900", "3", "1000", "60", true},
                          Case{"901", "3", "1000", "60", false}, Case{"4", "2", "60", "60", false},
                          Case{"4", "200", "1000", "60", true},
                          Case{"4", "201", "1000", "60", false}, Case{"4", "3", "1000", "60", true},
                          Case{"4", "3", "1001", "60", false}, Case{"4", "3", "7", "60", true},
                          Case{"4", "3", "6", "60", false}, Case{"4", "3", "3", "60", false}})
        EXPECT_EQ(starts(c.start, c.step, c.stop, c.current), c.passes)
            << c.start << ' ' << c.step << ' ' << c.stop << ' ' << c.current;
}

TEST_F(ScanStart, StopEqualToStartAndStepIsAcceptedWithTwoPoints) {
    type("100", "50", "150");
    ASSERT_TRUE(scan.start());
    EXPECT_EQ(scan.points(), 2);
}

TEST_F(ScanStart, WidestPlanHas333Points) {
    type("4", "3", "1000");
    ASSERT_TRUE(scan.start());
    EXPECT_EQ(scan.points(), 333);
}

// 56 / 3 + 1 is 19.67: the boxes' own plan runs one point beyond its stop frequency.
TEST_F(ScanStart, PointsAreRoundedToTheNearest) {
    ASSERT_TRUE(scan.start());
    EXPECT_EQ(scan.points(), 20);
}

TEST_F(ScanStart, BoxCountsWithTheNumberThatItBeginsWith) {
    EXPECT_FALSE(starts("4", "3", "60", "abc")) << "0";
    EXPECT_FALSE(starts("4", "3", "60", "")) << "0";
    EXPECT_FALSE(starts("4", "3", "60", "-60"));
    EXPECT_FALSE(starts("4", "3", "60", "31.9")) << "below 32, though it rounds to it";
    EXPECT_FALSE(starts("4", "3", "60", "800.4"));
    EXPECT_FALSE(starts("4", "3", "60", "1E999")) << "infinite";
    EXPECT_TRUE(starts("4", "3", "60", " 60mA"));
    EXPECT_TRUE(starts("4", "3", "60", "1E2"));
    EXPECT_EQ(scan.settings().magCurrent, 100);
    EXPECT_TRUE(starts("4.6", "3.5", "&H40", "60.5"));
    EXPECT_EQ(scan.settings().startFreq, 5);
    EXPECT_EQ(scan.settings().stepFreq, 4) << "a half goes to the even neighbour";
    EXPECT_EQ(scan.settings().stopFreq, 64);
    EXPECT_EQ(scan.settings().magCurrent, 60);
}

TEST_F(ScanStart, SpanIsJudgedBeforeRounding) {
    EXPECT_TRUE(starts("4.6", "3.5", "8.1")) << "8.1 is 4.6 + 3.5";
    EXPECT_EQ(scan.points(), 2) << "(8 - 5) / 4 + 1, rounded";
    EXPECT_FALSE(starts("4.6", "3.5", "8.0"));
}

TEST_F(ScanStart, StartSetsEveryMember) {
    data.Command1_enabled = true;
    data.Check1 = true;
    data.scanIndex = 7;
    data.scanMode = 2;
    data.readBase = 1024;
    data.readOffset = 6;
    state.scanStep = 9;
    type("10", "20", "300", "99");
    ASSERT_TRUE(scan.start());
    EXPECT_EQ(scan.settings().startFreq, 10);
    EXPECT_EQ(scan.settings().stepFreq, 20);
    EXPECT_EQ(scan.settings().stopFreq, 300);
    EXPECT_EQ(scan.settings().magCurrent, 99);
    EXPECT_EQ(scan.points(), 16) << "15.5 goes to the even 16";
    EXPECT_EQ(data.Label36, tuner::ScanLabel::kAcquiring);
    EXPECT_EQ(state.scanRequested, -1);
    EXPECT_EQ(state.scanStep, 0);
    EXPECT_FALSE(data.Command1_enabled);
    EXPECT_FALSE(data.Check1);
    EXPECT_EQ(data.scanIndex, 0);
    EXPECT_EQ(data.scanMode, 0);
    EXPECT_EQ(data.readBase, 0);
    EXPECT_EQ(data.readOffset, 0);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(ScanStart, StartDuringAScanBeginsAnewInAnyStep) {
    for (int step = 3; step <= 15; ++step) {
        ScanBench bench;
        bench.go_to(step);
        bench.type("10", "20", "300", "99");
        ASSERT_TRUE(bench.scan.start()) << step;
        EXPECT_EQ(bench.state.scanRequested, -1);
        EXPECT_EQ(bench.state.scanStep, 0) << step;
        EXPECT_EQ(bench.scan.points(), 16) << "the plan of the boxes";
        EXPECT_TRUE(bench.watcher.ends.empty());
        EXPECT_TRUE(bench.notice.boxes.empty());
        bench.warm_up();
        const auto asked = bench.request();
        ASSERT_TRUE(asked.has_value());
        EXPECT_EQ((*asked)[4], 10) << "the first request again";
        bench.engine.link_opened();
        EXPECT_EQ(bench.data.Label36, tuner::ScanLabel::kNotStarted) << "as before the first";
    }
}

TEST_F(ScanStart, StartDuringTheReadingReadsBothBlocksFromTheirBeginning) {
    type("10", "10", "20");
    go_to(14);
    give(0x00020001);
    give(0x00040003);
    ASSERT_EQ(data.scanMode, 1);
    give(0x00060005);
    go_to(14);
    EXPECT_EQ(data.scanMode, 0);
    EXPECT_EQ(give(0x00080007), 0);
    EXPECT_EQ(give(0x000A0009), 2);
    EXPECT_EQ(give(0), 1024);
}

// A drive that may be moving is stopped by its cancelling alone; a plan that is refused leaves it
// at that.
TEST_F(ScanStart, StartWhileAScanIsStoppedBeginsAnewUnlessItIsRefused) {
    go_to(8);
    scan.cancel();
    ASSERT_TRUE(scan.cancelling());
    data.Text1 = "31";
    EXPECT_FALSE(scan.start());
    EXPECT_TRUE(scan.cancelling());
    data.Text1 = "60";
    EXPECT_TRUE(scan.start());
    EXPECT_FALSE(scan.cancelling());
    EXPECT_EQ(state.scanStep, 0);
}
