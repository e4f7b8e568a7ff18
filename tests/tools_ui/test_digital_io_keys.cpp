// The window `DigitalIO` without a mouse.
#include <gtest/gtest.h>

#include "digital_io_window_bench.h"

namespace servo::tools::test {
namespace {

struct DigitalIOKeys : testing::Test, WindowIO {
    void SetUp() override {
        connect();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        control("Command1", 0).setFocus();
    }
};

TEST_F(DigitalIOKeys, ArrowsMoveFromRowToRowAndFromPlaceToPlace) {
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), QLatin1String("Command1(1)"));
    key(Qt::Key_Left);
    EXPECT_EQ(focused(), QLatin1String("Text1(1)"));
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), QLatin1String("Command6(1)"));
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), QLatin1String("Check3(1)"));
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), QLatin1String("Check1(1)"));
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), QLatin1String("Check1(1)")) << "the last one";
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), QLatin1String("Image1(0)"));
    key(Qt::Key_Left);
    EXPECT_EQ(focused(), QLatin1String("Image3(0)"));
}

TEST_F(DigitalIOKeys, ArrowsCrossFromTheInputsToTheOutputsAndBack) {
    for (int i = 0; i < 8; ++i)
        key(Qt::Key_Down);
    EXPECT_EQ(focused(), QLatin1String("Command1(8)"));
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), QLatin1String("Command1(7)")) << "nothing stands above that button";
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), QLatin1String("Command8"));
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), QLatin1String("Command6(7)"));
}

TEST_F(DigitalIOKeys, SpaceAndEnterClickABox) {
    control("Check1", 4).setFocus();
    key(Qt::Key_Space);
    EXPECT_TRUE(checked("Check1", 4));
    key(Qt::Key_Return);
    EXPECT_FALSE(checked("Check1", 4));
    run_turn();
    EXPECT_EQ(writes(),
              (std::vector<Write>{word_write(0x201002, 0xDF), word_write(0x201002, 0xCF)}));
}

TEST_F(DigitalIOKeys, AssignmentByKeyboardAlone) {
    control("Text1", 2).setFocus();
    key(Qt::Key_Return);
    EXPECT_TRUE(shown("Picture1"));
    EXPECT_EQ(focused(), QLatin1String("checkboxdin(0)"));
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), QLatin1String("checkboxdin(18)"));
    key(Qt::Key_Space);
    EXPECT_TRUE(checked("checkboxdin", 18));
    key(Qt::Key_Return);
    EXPECT_FALSE(shown("Picture1"));
    EXPECT_EQ(focused(), QLatin1String("Command1(2)")) << "back where it came from";
    run_turn();
    EXPECT_EQ(drive.value(0x201005), 0x8008);
    EXPECT_EQ(text1(2), "Multifunction1");
}

TEST_F(DigitalIOKeys, TheFocusGoesToTheFirstTick) {
    control("Command1", 7).setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(focused(), QLatin1String("checkboxdin(15)"));
}

TEST_F(DigitalIOKeys, EscapeClosesTheChooserWithoutAWrite) {
    key(Qt::Key_Space);
    EXPECT_TRUE(shown("Picture1"));
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    key(Qt::Key_Escape);
    EXPECT_FALSE(shown("Picture1"));
    EXPECT_EQ(focused(), QLatin1String("Command1(0)"));
    control("Command1", 8).setFocus();
    key(Qt::Key_Return);
    control("Check1", 0).setFocus();
    key(Qt::Key_Escape);
    EXPECT_FALSE(shown("Picture2")) << "from wherever the focus is";
    EXPECT_TRUE(writes().empty());
}

TEST_F(DigitalIOKeys, DeleteClearsTheRow) {
    control("Text1", 4).setFocus();
    key(Qt::Key_Delete);
    EXPECT_EQ(focused(), QLatin1String("Text1(4)"));
    run_for(20ms);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201007, 0)}));
    control("Check1", 4).setFocus();
    key(Qt::Key_Delete);
    run_for(20ms);
    EXPECT_EQ(writes().size(), 1U) << "only where the functions stand";
}

TEST_F(DigitalIOKeys, TheTabulatorStopsThreeTimesInARow) {
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), QLatin1String("Check3(0)"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), QLatin1String("Check1(0)"));
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), QLatin1String("Command1(1)"));
}

TEST_F(DigitalIOKeys, EnterPressesWhatStandsAboveTheColumns) {
    control(QStringLiteral("Command7")).setFocus();
    key(Qt::Key_Return);
    control("Image3", 1).setFocus();
    key(Qt::Key_Return);
    run_turn();
    EXPECT_EQ(drive.value(0x20101D), 0);
    EXPECT_EQ(drive.value(0x20100D), 0xFF);
}

}  // namespace
}  // namespace servo::tools::test
