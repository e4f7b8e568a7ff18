// Boxes and lists of the homing window.
#include <gtest/gtest.h>

#include <QWheelEvent>

#include "homing_window_bench.h"

namespace servo::tools {
namespace {

using namespace test;

class HomingValuesTest : public ::testing::Test, protected test::HomingBench {};

TEST_F(HomingValuesTest, PolledValuesAreShown) {
    form.set_ods(kOffset, -1000);
    form.set_ods(kSpeed, 546133);
    form.set_ods(kBackSpeed, 136533);
    form.set_ods(kPowerUp, 1);
    form.set_ods(kAcceleration, 16384);
    form.set_ods(kCurrent, 546);
    form.set_ods(kOffsetMode, 1);
    form.set_ods(kBlind, 2);
    EXPECT_EQ(text("Text3"), "-1000");
    EXPECT_EQ(text("Text2"), "200.00");
    EXPECT_EQ(text("Text4"), "50.00");
    EXPECT_EQ(text("Text5"), "100.00");
    EXPECT_EQ(text("Text6"), "4.00");
    EXPECT_TRUE(on("Check4"));
    EXPECT_EQ(text("Combo1"), "1:Run to Trig position");
    EXPECT_EQ(text("Combo2"), "2:0.5 Rev");
    EXPECT_TRUE(writes.empty()) << "what is shown is not written back";
}

TEST_F(HomingValuesTest, BeforeTheDriveAnswersTheListsShowNothing) {
    EXPECT_EQ(text("Combo1"), "");
    EXPECT_EQ(text("Combo2"), "");
}

TEST_F(HomingValuesTest, EnterWritesAndMovesTheFocusToTheDescription) {
    type("Text2", "200");
    EXPECT_EQ(focus(), "Text2");
    enter_key("Text2");
    EXPECT_EQ(writes, (std::vector<Write>{{0x60990104, 546133}}));
    EXPECT_EQ(focus(), "RichTextBox1");
}

TEST_F(HomingValuesTest, EveryBoxWritesItsRow) {
    type("Text3", "-5");
    enter_key("Text3");
    type("Text4", "50");
    enter_key("Text4");
    type("Text5", "100");
    enter_key("Text5");
    type("Text6", "4");
    enter_key("Text6");
    EXPECT_EQ(writes,
              (std::vector<Write>{
                  {0x607C0004, -5}, {0x60990204, 136533}, {0x609A0004, 16384}, {0x21500204, 546}}));
}

TEST_F(HomingValuesTest, OtherKeysDoNotPass) {
    type("Text3", "1a2e3+ 4");
    EXPECT_EQ(text("Text3"), "1234");
    type("Text3", "-1.5.2-");
    EXPECT_EQ(text("Text3"), "-1.5.2-") << "any number of them";
    QTest::keyClick(&control<>("Text3"), Qt::Key_Home);
    QTest::keyClick(&control<>("Text3"), Qt::Key_Delete);
    EXPECT_EQ(text("Text3"), "1.5.2-") << "keys that move and delete are no characters";
}

TEST_F(HomingValuesTest, PastingDoesNotPass) {
    auto& box = control<QLineEdit>("Text3");
    type("Text3", "12");
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text("Text3"), "12");
}

TEST_F(HomingValuesTest, OnFocusTheWholeTextIsSelected) {
    form.set_ods(kSpeed, 546133);
    window.refresh_now();
    auto& box = control<QLineEdit>("Text2");
    control<>("Command1").setFocus();
    box.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(box.selectedText(), "200.00");
    control<>("Command1").setFocus();
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(box.selectedText(), "200.00");
}

TEST_F(HomingValuesTest, ThePollLeavesTheBoxInUseAlone) {
    type("Text2", "30");
    form.set_ods(kSpeed, 546133);
    EXPECT_EQ(text("Text2"), "30");
    QTest::keyClick(&control<>("Text2"), Qt::Key_Escape);
    EXPECT_EQ(text("Text2"), "200.00");
    EXPECT_EQ(focus(), "RichTextBox1");
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingValuesTest, LosingTheFocusNeverWrites) {
    type("Text2", "30");
    control<>("Command1").setFocus();
    EXPECT_TRUE(writes.empty());
    form.set_ods(kSpeed, 546133);
    EXPECT_EQ(text("Text2"), "200.00");
}

TEST_F(HomingValuesTest, AValueOutOfRangeIsSilent) {
    type("Text3", "9999999999");
    enter_key("Text3");
    EXPECT_TRUE(writes.empty());
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(HomingValuesTest, PicksAreWrittenAtOnce) {
    pick("Combo1", 1);
    pick("Combo2", 2);
    pick("Combo2", 2);
    EXPECT_EQ(writes, (std::vector<Write>{{0x21500401, 1}, {0x21500301, 2}, {0x21500301, 2}}))
        << "the same item again is a pick, too";
}

TEST_F(HomingValuesTest, AClickWritesTheSwitchOnState) {
    click("Check4");
    click("Check4");
    EXPECT_EQ(writes, (std::vector<Write>{{0x21500101, 1}, {0x21500101, 0}}));
}

TEST_F(HomingValuesTest, TheWheelPicksNothing) {
    form.set_ods(kBlind, 1);
    auto& list = control<QComboBox>("Combo2");
    window.refresh_now();
    QWheelEvent wheel(QPointF(5, 5), list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(text("Combo2"), "1:0.25 Rev");
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingValuesTest, EveryEntryTellsWhatItIsFor) {
    for (const base::Language to : {base::Language::kChinese, base::Language::kEnglish}) {
        walk(to);
        for (const char* name :
             {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6", "Combo1", "Combo2", "Check4",
              "Command1", "CommandA", "RichTextBox1", "Image1"})
            EXPECT_FALSE(control<>(name).accessibleName().isEmpty()) << name;
    }
}

}  // namespace
}  // namespace servo::tools
