// The choices of the homing window through its real controls.
#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBlock>

#include "homing_window_bench.h"
#include "tools/homing_picture_widget.h"

namespace servo::tools {
namespace {

using base::Language;

class HomingWindowTest : public ::testing::Test, protected test::HomingBench {};

TEST_F(HomingWindowTest, EveryToldControlIsThereByItsName) {
    std::vector<std::string> names{"Frame2",  "Frame10", "Frame11",  "Frame12", "Frame13",
                                   "Frame14", "Frame15", "Text1",    "Text2",   "Text3",
                                   "Text4",   "Text5",   "Text6",    "Label1",  "Label3",
                                   "Combo1",  "Combo2",  "Command1", "Image1",  "RichTextBox1"};
    for (int i = 0; i < 5; ++i)
        names.push_back("Option1(" + std::to_string(i) + ")");
    for (int i = 2; i <= 21; ++i)
        names.push_back("Option" + std::to_string(i));
    for (int i = 1; i <= 7; ++i)
        names.push_back("Check" + std::to_string(i));
    for (const std::string& name : names)
        EXPECT_NO_THROW(control<>(name.c_str())) << name;
}

TEST_F(HomingWindowTest, CaptionsFollowTheLanguage) {
    EXPECT_EQ(window.windowTitle().toStdString(), "Homing Definition");
    EXPECT_EQ(caption("Option1(0)"), "Use the Index Signal");
    EXPECT_EQ(caption("Check7"), "Use the Index Signal after reverse");
    EXPECT_EQ(caption("Command1"), "Write Down");
    EXPECT_EQ(text("FrameA"), "Homing Trigger");
    EXPECT_EQ(text("Frame10"), "Configure Mechanical Limit");
    EXPECT_EQ(text("Label1"), "Trig By Home Current");
    walk(Language::kChinese);
    EXPECT_EQ(window.windowTitle().toStdString(), "原点定义");
    EXPECT_EQ(caption("Option1(4)"), "无效模式");
    EXPECT_EQ(caption("Option13"), "低电平");
    EXPECT_EQ(caption("Check4"), "上电自动找原点");
    EXPECT_EQ(text("FrameA"), "原点触发信号");
    EXPECT_EQ(text("Label1"), "通过找原点电流触发");
    EXPECT_EQ(control<QComboBox>("Combo1").itemText(1).toStdString(), "1:运行到触发位置");
    walk(Language::kEnglish);
    EXPECT_EQ(control<QComboBox>("Combo1").itemText(0).toStdString(), "0:Run to Home -Offset");
    EXPECT_EQ(control<QComboBox>("Combo2").itemText(1).toStdString(), "1:0.25 Rev");
    EXPECT_EQ(caption("Option19"), "Use Current Position");
}

// A walk may only turn pairs of languages: units and numbers are none.
TEST_F(HomingWindowTest, UnitsStayWhatTheyAre) {
    for (const Language each : {Language::kChinese, Language::kEnglish}) {
        walk(each);
        EXPECT_EQ(text("LabelQ"), "rpm");
        EXPECT_EQ(text("LabelR"), "rpm");
        EXPECT_EQ(text("LabelS"), "rps/s");
        EXPECT_EQ(text("LabelT"), "Ap");
    }
}

TEST_F(HomingWindowTest, EachTriggerBringsItsFrameAndHidesTheOthers) {
    const char* const frames[] = {"Frame11", "Frame12", "Frame13", "Frame14", "Frame15"};
    for (int trigger = 0; trigger < 5; ++trigger) {
        click(("Option1(" + std::to_string(trigger) + ")").c_str());
        for (int frame = 0; frame < 5; ++frame)
            EXPECT_EQ(shown(frames[frame]), frame == trigger) << trigger << " " << frame;
        EXPECT_EQ(enabled("Text1"), trigger == 4);
    }
}

TEST_F(HomingWindowTest, ClicksDeriveTheMethod) {
    click("Check1");
    EXPECT_EQ(text("Text1"), "2");
    EXPECT_FALSE(enabled("Frame2"));
    EXPECT_FALSE(enabled("Option2")) << "all of the frame";
    click("Option4");
    EXPECT_EQ(text("Text1"), "1");
    EXPECT_TRUE(on("Option3"));
    click("Check2");
    EXPECT_TRUE(enabled("Frame2"));
    EXPECT_EQ(text("Text1"), "14");
    click("Option7");
    EXPECT_EQ(text("Text1"), "12");
    click("Option1(1)");
    EXPECT_EQ(text("Text1"), "18");
    click("Option9");
    EXPECT_EQ(text("Text1"), "17");
    EXPECT_TRUE(on("Option10"));
    EXPECT_FALSE(on("Option8"));
    click("Option1(2)");
    click("Check5");
    click("Option14");
    click("Option17");
    click("Option13");
    EXPECT_EQ(text("Text1"), "28");
}

TEST_F(HomingWindowTest, TheMechanicalStopHasItsFrame) {
    click("Option1(3)");
    EXPECT_EQ(text("Text1"), "35");
    EXPECT_FALSE(shown("Frame10"));
    click("Option18");
    EXPECT_TRUE(shown("Frame10"));
    EXPECT_EQ(text("Text1"), "-18");
    click("Option21");
    click("Check7");
    EXPECT_EQ(text("Text1"), "-20");
    click("Option19");
    EXPECT_FALSE(shown("Frame10"));
    EXPECT_EQ(text("Text1"), "35");
}

TEST_F(HomingWindowTest, ArrowKeysChooseLikeClicks) {
    control<>("Option1(0)").setFocus();
    QTest::keyClick(&control<>("Option1(0)"), Qt::Key_Down);
    EXPECT_EQ(text("Text1"), "18");
    EXPECT_TRUE(shown("Frame12"));
}

TEST_F(HomingWindowTest, PictureAndDescriptionFollowTheMethod) {
    folder.put("HomingPics/34_EN.jpg", test::jpeg_of(Qt::red));
    put_text("33-34_EN.txt", "Index only.\r\nNo switch.");
    click("Option1(0)");
    EXPECT_EQ(text("Image1"), "34_EN.jpg");
    EXPECT_EQ(text("RichTextBox1"), "Description:\nIndex only.\nNo switch.");
    const auto& picture = control<HomingPictureWidget>("Image1");
    EXPECT_EQ(picture.image().size(), QSize(64, 36));
    const QColor middle =
        control<>("Image1").grab().toImage().pixelColor(control<>("Image1").rect().center());
    EXPECT_GT(middle.red(), 200);
    EXPECT_LT(middle.green(), 80);
    click("Option1(4)");
    EXPECT_EQ(text("Image1"), "");
    EXPECT_TRUE(picture.image().isNull());
    EXPECT_EQ(text("RichTextBox1"), "Description:\n") << "0 has no file";
}

TEST_F(HomingWindowTest, APictureThatCannotBeReadLeavesTheOldOne) {
    folder.put("HomingPics/34_EN.jpg", test::jpeg_of(Qt::red));
    put_picture("18_EN.jpg");  // begins like one
    click("Option1(0)");
    click("Option1(1)");
    EXPECT_EQ(control<HomingPictureWidget>("Image1").image().size(), QSize(64, 36));
    EXPECT_EQ(text("Image1"), "34_EN.jpg");
}

TEST_F(HomingWindowTest, TheLanguageTakesPictureAndDescriptionAlong) {
    folder.put("HomingPics/34_EN.jpg", test::jpeg_of(Qt::red));
    folder.put("HomingPics/34.jpg", test::jpeg_of(Qt::blue));
    put_text("33-34.txt", "索引");
    click("Option1(0)");
    walk(Language::kChinese);
    EXPECT_EQ(text("Image1"), "34.jpg");
    EXPECT_EQ(text("RichTextBox1"), "描述:\n索引");
}

// A file's text is text, whatever it looks like.
TEST_F(HomingWindowTest, TheDescriptionIsNoMarkup) {
    put_text("33-34_EN.txt", "<b>1 < 2</b>");
    click("Option1(0)");
    EXPECT_EQ(text("RichTextBox1"), "Description:\n<b>1 < 2</b>");
}

TEST_F(HomingWindowTest, TypingAMethodShowsItAndMovesNoChoice) {
    folder.put("HomingPics/24_EN.jpg", test::jpeg_of(Qt::green));
    put_text("17-30_EN.txt", "Edge.");
    click("Option1(4)");
    EXPECT_EQ(text("Text1"), "0");
    type("Text1", "2x.4 ");
    EXPECT_EQ(text("Text1"), "24") << "only digits and minus pass";
    enter_key("Text1");
    EXPECT_EQ(text("Image1"), "24_EN.jpg");
    EXPECT_EQ(text("RichTextBox1"), "Description:\nEdge.");
    EXPECT_TRUE(on("Option1(4)"));
}

TEST_F(HomingWindowTest, AWrongNumberIsToldAndEmptied) {
    click("Option1(4)");
    type("Text1", "-19");
    enter_key("Text1");
    ASSERT_EQ(notice.boxes.size(), 1U);
    EXPECT_EQ(notice.boxes[0], (std::pair<std::string, std::string>(" Notice", "Wrong Input")));
    EXPECT_EQ(text("Text1"), "");
    click("Command1");
    EXPECT_EQ(writes, (std::vector<Write>{{0x60980001, 0}}));
}

TEST_F(HomingWindowTest, WriteDownWritesTheChosenMethod) {
    click("Option1(3)");
    click("Option18");
    click("Command1");
    EXPECT_EQ(writes, (std::vector<Write>{{0x60980001, -18}}));
}

TEST_F(HomingWindowTest, DriveAndChoiceAreCompared) {
    form.set_ods(test::kMethod, 35);
    EXPECT_EQ(text("Label3"), "35");
    EXPECT_EQ(text("LabelH"), "The drive holds method 35");
    click("Option1(0)");
    EXPECT_EQ(text("LabelH"), "The drive holds method 35; method 34 is chosen but not written");
    EXPECT_TRUE(control<>("LabelH").autoFillBackground());
    form.set_ods(test::kMethod, 34);
    EXPECT_EQ(text("LabelH"), "The drive holds method 34, as chosen");
    EXPECT_FALSE(control<>("LabelH").autoFillBackground());
}

TEST_F(HomingWindowTest, TheDrivesMethodIsTakenOver) {
    window.refresh_now();
    EXPECT_FALSE(enabled("CommandA"));
    form.set_ods(test::kMethod, 12);
    window.refresh_now();
    ASSERT_TRUE(enabled("CommandA"));
    click("CommandA");
    EXPECT_EQ(text("Text1"), "12");
    EXPECT_TRUE(on("Option1(0)") && on("Check1") && on("Check2"));
    EXPECT_TRUE(on("Option3") && on("Option4") && on("Option7"));
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingWindowTest, TheTravelIsToldStepByStep) {
    EXPECT_EQ(text("LabelP"), "");
    click("Option1(1)");
    EXPECT_EQ(
        text("LabelP"),
        "• Off the limit switch: positive until the positive limit switch turns on; back "
        "negative until the positive limit switch turns off.\n"
        "• On the positive limit switch: negative until the positive limit switch turns off.");
}

// Methods 1 and 17 begin alike, so the whole number counts.
TEST_F(HomingWindowTest, TheLineOfTheMethodIsMarked) {
    put_text("17-30_EN.txt", "Edges.\r\nMethod 17: a\r\nMethod 18: b\r\n");
    put_text("1_EN.txt", "Method 17: not this one\r\nMethod 1: c\r\n");
    const auto marked = [this] {
        const auto marks = control<QPlainTextEdit>("RichTextBox1").extraSelections();
        return marks.isEmpty() ? std::string() : marks[0].cursor.block().text().toStdString();
    };
    click("Option1(1)");
    EXPECT_EQ(marked(), "Method 18: b");
    click("Option9");
    EXPECT_EQ(marked(), "Method 17: a");
    click("Option1(4)");
    EXPECT_EQ(marked(), "");
    type("Text1", "1");
    enter_key("Text1");
    EXPECT_EQ(marked(), "Method 1: c");
}

TEST_F(HomingWindowTest, ThePictureKeepsItsSizeFromMethodToMethod) {
    click("Option1(3)");
    const QSize before = control<>("Image1").size();
    form.type_Text1("12");
    window.refresh_now();
    QApplication::processEvents();
    EXPECT_EQ(control<>("Image1").size(), before);
}

TEST_F(HomingWindowTest, FitsIntoASmallMainWindow) {
    for (const Language each : {Language::kChinese, Language::kEnglish}) {
        walk(each);
        const QSize smallest = window.minimumSizeHint();
        EXPECT_LE(smallest.width(), 1000);
        EXPECT_LE(smallest.height(), 520);
        // With a little more height nothing has to be scrolled.
        EXPECT_LE(window.findChild<QScrollArea*>()->widget()->sizeHint().height(), 555);
    }
}

TEST_F(HomingWindowTest, WhatDoesNotFitInHeightCanBeScrolled) {
    window.resize(1000, 420);
    QApplication::processEvents();
    EXPECT_EQ(window.height(), 420);
    control<>("Check4").setFocus(Qt::TabFocusReason);
    auto* column = window.findChild<QScrollArea*>();
    ASSERT_NE(column, nullptr);
    EXPECT_TRUE(column->verticalScrollBar()->isVisible());
    EXPECT_FALSE(column->horizontalScrollBar()->isVisible());
    EXPECT_GE(column->viewport()->width(), column->widget()->minimumSizeHint().width())
        << "nothing is cut off";
}

}  // namespace
}  // namespace servo::tools
