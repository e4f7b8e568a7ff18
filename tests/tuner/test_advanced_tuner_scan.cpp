// The scan as the form offers it: the lock, the label, the files' message.
#include <gtest/gtest.h>

#include "base/temp_folder.h"
#include "link/direct_bench.h"
#include "tuner/advanced_tuner.h"
#include "tuner/bode_file.h"

using namespace servo;
using namespace servo::test;

namespace {

struct TunerForm : testing::Test, DirectBench {
    std::pair<std::string, std::string> box() const {
        return notice.boxes.empty() ? std::pair<std::string, std::string>() : notice.boxes.back();
    }

    base::Language language = base::Language::kEnglish;
    RecordedNotice notice;
    TempFolder folder;
    tuner::AdvancedTuner tuner{
        {.engine = engine, .notice = notice, .language = language, .link_open = [] {
             return true;
         }}};
};

}  // namespace

TEST_F(TunerForm, StartIsLockedUntilTheWarningIsConfirmed) {
    EXPECT_FALSE(tuner.data().Command1_enabled);
    tuner.Command1_Click();
    EXPECT_FALSE(tuner.scanning());
    tuner.Check1_Click();
    EXPECT_EQ(box().first, "Notice");
    EXPECT_EQ(box().second,
              "Warning:to unlock [Start] button.\nPress the [Start] button,motor will run for a "
              "while and some distance,please make sure that machine and personal safety。\npress "
              "[OK] to unlock。");
    EXPECT_TRUE(tuner.data().Check1);
    EXPECT_TRUE(tuner.data().Command1_enabled);
    tuner.Check1_Click();
    EXPECT_FALSE(tuner.data().Command1_enabled) << "locked again, without a question";
    EXPECT_EQ(notice.boxes.size(), 1U);
}

TEST_F(TunerForm, WarningIsInTheLanguageOfTheScreenAndCancelUnticks) {
    language = base::Language::kChinese;
    notice.answer = base::Answer::kCancel;
    tuner.Check1_Click();
    EXPECT_EQ(box().first, "提示");
    EXPECT_EQ(box().second,
              "警告:即将解锁[启动]按钮。\n点击[启动]按钮,电机将不受外部信号控制自动运行一定时间与"
              "距离,请确保机械与人身安全。\n点击[确认]进行解锁。");
    EXPECT_FALSE(tuner.data().Check1);
    EXPECT_FALSE(tuner.data().Command1_enabled);
}

TEST_F(TunerForm, LabelFollowsTheScan) {
    EXPECT_EQ(tuner.Label36(), "Not start");
    tuner.Check1_Click();
    tuner.Command1_Click();
    EXPECT_EQ(tuner.Label36(), "Acquiring");
    EXPECT_FALSE(tuner.data().Check1);
    EXPECT_FALSE(tuner.data().Command1_enabled) << "unlocked anew for another one";
    language = base::Language::kChinese;
    EXPECT_EQ(tuner.Label36(), "采集中");
    tuner.cancel_scan();
    EXPECT_EQ(tuner.Label36(), "未启动");
    engine.link_closed();
    EXPECT_EQ(tuner.Label36(), "结束") << "whether a scan ran or not";
    EXPECT_TRUE(tuner.data().Command1_enabled);
    engine.link_opened();
    EXPECT_FALSE(tuner.data().Command1_enabled) << "nobody has unlocked it";
}

TEST_F(TunerForm, WrongFileIsToldUnderNoticeInBothLanguages) {
    language = base::Language::kChinese;
    folder.put("eleven.bode", "1;2;3;4;5;6;7;8;9;;\r\n");
    tuner.Command2_Click(folder / "eleven.bode");
    EXPECT_EQ(box(), (std::pair<std::string, std::string>("Notice", "the bode file is wrong!")));
    EXPECT_EQ(tuner.data().Text2, "4") << "nothing else changes";
    tuner.Command2_Click(folder / "none.bode");
    EXPECT_EQ(notice.boxes.size(), 2U);
}

TEST_F(TunerForm, WrongLengthIsToldBehindTheBoxes) {
    folder.put("a.bode", "10;20;10;200;99;10000;150;20;5;\r\nlength 3\r\n");
    tuner.Command2_Click(folder / "a.bode");
    EXPECT_EQ(box().second, "the bode file is wrong!");
    EXPECT_EQ(tuner.data().Text1, "99");
    EXPECT_EQ(tuner.data().Text2, "10");
    EXPECT_EQ(tuner.data().Text3, "20");
    EXPECT_EQ(tuner.data().Text4, "10");
    EXPECT_FALSE(tuner.data().analysed);
}

TEST_F(TunerForm, FileIsAnalysedLikeAFreshScan) {
    folder.put("a.bode",
               "10;20;10;200;60;10000;150;20;5;\r\nlength 2\r\n7\r\n8\r\n-4\r\n-5\r\n##########\r\n"
               "15\r\n12\r\n-3\r\n-3\r\n");
    tuner.Command2_Click(folder / "a.bode");
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(tuner.data().analysed_points(), 1);
    EXPECT_EQ(tuner.data().analysis.commandPhase[0], 34.0F) << "of (3, 2)";
    EXPECT_TRUE(tuner.data().redraw_gain);
    EXPECT_TRUE(tuner.data().redraw_phase);
    EXPECT_TRUE(tuner.data().redraw_filters);
    tuner.Command3_Click(folder / "b.bode");
    EXPECT_EQ(folder.get("b.bode"), folder.get("a.bode"));
}

TEST_F(TunerForm, UnlockedDuringAScanTheStartBeginsItAnew) {
    tuner.Check1_Click();
    tuner.Command1_Click();
    ASSERT_TRUE(tuner.scanning());
    tuner.type(tuner::AdvancedTuner::Box::kText1, "99");
    tuner.Command1_Click();
    EXPECT_EQ(tuner.scan().settings().magCurrent, 60) << "locked, until it is unlocked again";
    tuner.Check1_Click();
    tuner.Command1_Click();
    EXPECT_EQ(tuner.scan().settings().magCurrent, 99);
    EXPECT_EQ(tuner.Label36(), "Acquiring");
    EXPECT_FALSE(tuner.data().Command1_enabled);
    EXPECT_FALSE(tuner.data().Check1);
}

TEST_F(TunerForm, RefusedFilterIsNamedByTheHighestNumberAndNothingElseHappens) {
    for (const int slot : {1, 5}) {
        tuner.click_use(slot);
        tuner.pick_type(slot, 1);  // second order, damping 0
    }
    tuner.Command4_Click();
    EXPECT_EQ(box(),
              (std::pair<std::string, std::string>("Notice", "The filter 6 setting is wrong.")));
    EXPECT_FALSE(tuner.data().simulation.filter_used[1]);
    EXPECT_FALSE(tuner.data().redraw_gain);
    language = base::Language::kChinese;
    tuner.click_use(5);
    tuner.Command4_Click();
    EXPECT_EQ(box(), (std::pair<std::string, std::string>("提示", "滤波器 2 设置错误.")));
}

TEST_F(TunerForm, SimulationSetsTheThreeRedrawFlagsEvenWithoutPoints) {
    tuner.Command4_Click();
    EXPECT_TRUE(tuner.data().redraw_gain);
    EXPECT_TRUE(tuner.data().redraw_phase);
    EXPECT_TRUE(tuner.data().redraw_filters);
}

TEST_F(TunerForm, FileThatBreaksOffLeavesTheScanThatWasThere) {
    const std::string whole =
        "10;20;10;200;60;10000;150;20;5;\r\nlength 2\r\n7\r\n8\r\n-4\r\n-5\r\n##########\r\n"
        "15\r\n12\r\n-3\r\n-3\r\n";
    folder.put("a.bode", whole);
    tuner.Command2_Click(folder / "a.bode");
    folder.put("b.bode", "30;50;10;200;60;10000;150;20;5;\r\nlength 3\r\n7\r\n");
    tuner.Command2_Click(folder / "b.bode");
    EXPECT_EQ(box().second, "the bode file is wrong!");
    EXPECT_EQ(tuner.data().Text2, "30") << "the boxes show its plan";
    tuner.Command3_Click(folder / "c.bode");
    EXPECT_EQ(folder.get("c.bode"), whole);
}

TEST_F(TunerForm, FileThatCannotBeWrittenIsToldLikeAWrongOne) {
    language = base::Language::kChinese;
    tuner.Command3_Click(folder / "none" / "a.bode");
    EXPECT_EQ(box(), (std::pair<std::string, std::string>("Notice", "the bode file is wrong!")));
}
