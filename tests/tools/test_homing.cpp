// Choosing, typing and writing a method; its picture and its description.
#include <gtest/gtest.h>

#include <set>

#include "homing_form.h"

namespace servo::tools {
namespace {

using base::Language;
using enum HomingChoice;

class HomingFormTest : public ::testing::Test, protected test::HomingForm {};

TEST_F(HomingFormTest, BeginsEmptyAndHasWrittenNothing) {
    EXPECT_EQ(data().Text1, "");
    EXPECT_EQ(data().Image1, "");
    EXPECT_EQ(data().RichTextBox1, "");
    EXPECT_EQ(data().Label3, "");
    EXPECT_TRUE(writes.empty());
    EXPECT_EQ(form.name(), "Homing2");
    EXPECT_TRUE(form.custom());
}

TEST_F(HomingFormTest, AClickPutsTheNumberThePictureAndTheDescription) {
    put_picture("8_EN.jpg");
    put_text("7-14_EN.txt", "Switch in the middle.\r\n");
    form.click(Check1);
    form.click(Check2);
    EXPECT_EQ(data().Text1, "8");
    EXPECT_EQ(data().Image1, "8_EN.jpg");
    EXPECT_EQ(form.picture(),
              "\xFF\xD8\xFF"
              "8_EN.jpg");
    EXPECT_EQ(data().RichTextBox1, "Description:\r\nSwitch in the middle.\r\n");
    EXPECT_TRUE(writes.empty()) << "only Command1 writes";
}

TEST_F(HomingFormTest, ChineseFilesHaveNoEndingAndHoldTheCodePage) {
    language = Language::kChinese;
    put_picture("-18.jpg");
    put_text("-17-18.txt", "机械限位\r\n");
    form.click(Option18);
    form.Option1_Click(kTriggerSpecial);
    EXPECT_EQ(data().Text1, "-18");
    EXPECT_EQ(data().Image1, "-18.jpg") << "with its minus sign";
    EXPECT_EQ(data().RichTextBox1, "描述:\r\n机械限位\r\n");
}

TEST_F(HomingFormTest, EveryClickOfATriggerDerivesTheMethodAnew) {
    const std::vector<std::pair<int, std::string>> told{
        {0, "34"}, {1, "18"}, {2, "20"}, {3, "35"}, {4, "0"}};
    for (const auto& [trigger, number] : told) {
        form.Option1_Click(trigger);
        EXPECT_EQ(data().Text1, number);
    }
}

TEST_F(HomingFormTest, MethodsZeroAndThirtyFiveEmptyThePicture) {
    put_picture("34_EN.jpg");
    put_text("35_EN.txt", "Here.");
    for (const int trigger : {kTriggerSpecial, kTriggerDisabled}) {
        form.Option1_Click(kTriggerIndex);
        ASSERT_EQ(data().Image1, "34_EN.jpg");
        form.Option1_Click(trigger);
        EXPECT_EQ(data().Image1, "");
        EXPECT_EQ(form.picture(), "");
    }
    EXPECT_EQ(data().RichTextBox1, "Description:\r\n") << "0 has no file";
    form.Option1_Click(kTriggerSpecial);
    EXPECT_EQ(data().RichTextBox1, "Description:\r\nHere.");
}

TEST_F(HomingFormTest, AMissingPictureLeavesTheOldOneAndAMissingTextTheFirstLine) {
    put_picture("34_EN.jpg");
    put_text("33-34_EN.txt", "Index.");
    form.Option1_Click(kTriggerIndex);
    form.Option1_Click(kTriggerLimit);
    EXPECT_EQ(data().Text1, "18");
    EXPECT_EQ(data().Image1, "34_EN.jpg");
    EXPECT_EQ(data().RichTextBox1, "Description:\r\n");
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(HomingFormTest, AFileThatIsNoPictureLeavesTheOldOne) {
    put_picture("34_EN.jpg");
    folder.put("HomingPics/18_EN.jpg", "not a picture");
    form.Option1_Click(kTriggerIndex);
    form.Option1_Click(kTriggerLimit);
    EXPECT_EQ(data().Image1, "34_EN.jpg");
}

TEST_F(HomingFormTest, WithoutTheFolderNothingStops) {
    std::filesystem::remove_all(folder / "HomingPics");
    form.click(Check1);
    EXPECT_EQ(data().Text1, "2");
    EXPECT_EQ(data().Image1, "");
    EXPECT_EQ(data().RichTextBox1, "Description:\r\n");
}

TEST_F(HomingFormTest, OnlyDigitsBackspaceAndMinusPassInTheNumber) {
    for (char32_t key = 1; key < 0x250; ++key) {
        if (key == 13) continue;
        const bool passes = (key >= '0' && key <= '9') || key == 8 || key == '-';
        EXPECT_EQ(form.Text1_KeyPress(key), !passes) << static_cast<unsigned>(key);
    }
    EXPECT_TRUE(form.Text1_KeyPress(U'.')) << "swallowed";
    EXPECT_TRUE(form.Text1_KeyPress(22)) << "no pasting";
}

TEST_F(HomingFormTest, EveryTypedNumberIsTakenOrRefused) {
    std::set<int> valid{-21, -20, -18, -17, 0, 33, 34, 35};
    for (int method = 1; method <= 14; ++method)
        valid.insert({method, method + 16});
    for (int number = -128; number <= 127; ++number)
        put_picture(std::to_string(number) + "_EN.jpg");
    form.Option1_Click(kTriggerDisabled);
    for (int number = -128; number <= 127; ++number) {
        notice.boxes.clear();
        enter(std::to_string(number));
        if (valid.contains(number)) {
            EXPECT_TRUE(notice.boxes.empty()) << number;
            EXPECT_EQ(data().Text1, std::to_string(number));
            const bool none = number == 0 || number == 35;
            EXPECT_EQ(data().Image1, none ? "" : std::to_string(number) + "_EN.jpg");
        } else {
            ASSERT_EQ(notice.boxes.size(), 1U) << number;
            EXPECT_EQ(notice.boxes[0],
                      (std::pair<std::string, std::string>(" Notice", "Wrong Input")));
            EXPECT_EQ(data().Text1, "") << number;
        }
    }
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingFormTest, FifteenSixteenThirtyOneThirtyTwoThirtySixAreRefused) {
    for (const char* number : {"15", "16", "31", "32", "36"}) {
        notice.boxes.clear();
        enter(number);
        EXPECT_EQ(notice.boxes.size(), 1U) << number;
        EXPECT_EQ(data().Text1, "");
    }
}

TEST_F(HomingFormTest, MinusNineteenIsRefusedInChineseToo) {
    language = Language::kChinese;
    enter("-19");
    ASSERT_EQ(notice.boxes.size(), 1U);
    EXPECT_EQ(notice.boxes[0], (std::pair<std::string, std::string>(" 提示", "错误的输入!")));
    EXPECT_EQ(data().Text1, "");
}

TEST_F(HomingFormTest, ARefusedNumberLeavesPictureAndDescription) {
    put_picture("34_EN.jpg");
    put_text("33-34_EN.txt", "Index.");
    form.Option1_Click(kTriggerIndex);
    enter("15");
    EXPECT_EQ(data().Image1, "34_EN.jpg");
    EXPECT_EQ(data().RichTextBox1, "Description:\r\nIndex.");
}

TEST_F(HomingFormTest, TypedMinusTwentyAndTwentyOneShowThePictureAndNoDescription) {
    for (const char* number : {"-20", "-21"}) {
        put_picture(std::string(number) + "_EN.jpg");
        put_text("-20-21_EN.txt", "Stop, then index.");
        enter(number);
        EXPECT_EQ(data().Image1, std::string(number) + "_EN.jpg");
        EXPECT_EQ(data().RichTextBox1, "Description:\r\n");
    }
    form.Option1_Click(kTriggerSpecial);
    form.click(Option18);
    form.click(Check7);
    EXPECT_EQ(data().Text1, "-21");
    EXPECT_EQ(data().RichTextBox1, "Description:\r\nStop, then index.") << "a click knows the file";
}

TEST_F(HomingFormTest, TypingDoesNotMoveTheChoices) {
    form.Option1_Click(kTriggerDisabled);
    const HomingChoices before = data().choices;
    enter("24");
    EXPECT_EQ(data().choices, before);
    EXPECT_EQ(data().Text1, "24");
}

TEST_F(HomingFormTest, TheNumberIsReadAsFarAsItIsOne) {
    put_picture("1_EN.jpg");
    enter("1-2");
    EXPECT_EQ(data().Image1, "1_EN.jpg");
    EXPECT_EQ(data().Text1, "1-2") << "stays as typed";
    enter("");
    EXPECT_TRUE(notice.boxes.empty()) << "an empty text is 0";
    EXPECT_EQ(data().Image1, "");
}

TEST_F(HomingFormTest, WriteDownWritesTheNumberInEightBits) {
    form.Option1_Click(kTriggerSpecial);
    form.click(Option18);
    form.Command1_Click();
    enter("24");
    form.Command1_Click();
    EXPECT_EQ(writes, (std::vector<Write>{{0x60980001, -18}, {0x60980001, 24}}));
}

TEST_F(HomingFormTest, WriteDownWithAnEmptyNumberWritesZero) {
    form.Command1_Click();
    EXPECT_EQ(writes, (std::vector<Write>{{0x60980001, 0}}));
}

// Enter alone asks whether a number is a method.
TEST_F(HomingFormTest, WriteDownWritesWhatWasTypedWithoutEnter) {
    form.type_Text1("15");
    form.Command1_Click();
    EXPECT_EQ(writes, (std::vector<Write>{{0x60980001, 15}}));
    form.type_Text1("99999999999");
    form.Command1_Click();
    EXPECT_EQ(writes.size(), 1U) << "no number of a write";
}

TEST_F(HomingFormTest, TheMethodIsWrittenWithoutRowsToo) {
    std::filesystem::remove(folder / "sys/HomingMode.ini");
    EXPECT_FALSE(form.load(folder.path()));
    form.Option1_Click(kTriggerIndex);
    form.Command1_Click();
    EXPECT_EQ(writes, (std::vector<Write>{{0x60980001, 34}}));
}

TEST_F(HomingFormTest, AnotherLanguageShowsTheSameMethodInIt) {
    put_picture("34_EN.jpg");
    put_picture("34.jpg");
    put_text("33-34_EN.txt", "Index.");
    put_text("33-34.txt", "索引信号");
    form.language_changed();
    EXPECT_EQ(data().RichTextBox1, "") << "nothing was chosen yet";
    form.Option1_Click(kTriggerIndex);
    language = Language::kChinese;
    form.language_changed();
    EXPECT_EQ(data().Image1, "34.jpg");
    EXPECT_EQ(data().RichTextBox1, "描述:\r\n索引信号");
}

TEST_F(HomingFormTest, AnotherLanguageKeepsTheGapOfATypedMethod) {
    put_text("-20-21.txt", "索引");
    enter("-20");
    language = Language::kChinese;
    form.language_changed();
    EXPECT_EQ(data().RichTextBox1, "描述:\r\n");
}

TEST_F(HomingFormTest, ChosenAndDriveMethodAreCompared) {
    using enum HomingAgreement;
    EXPECT_EQ(form.comparison().agreement, kNothing);
    form.Option1_Click(kTriggerIndex);
    EXPECT_EQ(form.comparison().agreement, kUnread);
    form.set_ods(test::kMethod, 35);
    EXPECT_EQ(form.comparison().agreement, kDiffers);
    EXPECT_EQ(form.comparison().text,
              "The drive holds method 35; method 34 is chosen but not written");
    form.set_ods(test::kMethod, 34);
    EXPECT_EQ(form.comparison().agreement, kSame);
    EXPECT_EQ(form.comparison().text, "The drive holds method 34, as chosen");
    form.type_Text1("15");
    EXPECT_EQ(form.comparison().agreement, kInvalid);
    EXPECT_EQ(form.comparison().text, "There is no homing method 15");
    form.type_Text1("");
    EXPECT_EQ(form.comparison().agreement, kUnchosen);
    EXPECT_EQ(form.comparison().text, "The drive holds method 34");
}

TEST_F(HomingFormTest, TheDrivesMethodCanBeTakenOver) {
    EXPECT_FALSE(form.can_take_drive_method());
    form.take_drive_method();
    EXPECT_EQ(data().Text1, "");
    form.set_ods(test::kMethod, -21);
    ASSERT_TRUE(form.can_take_drive_method());
    form.take_drive_method();
    EXPECT_EQ(data().Text1, "-21");
    EXPECT_EQ(data().choices.Option1(), kTriggerSpecial);
    EXPECT_TRUE(data().choices.Frame10_visible());
    EXPECT_TRUE(writes.empty());
    form.set_ods(test::kMethod, 0);
    EXPECT_FALSE(form.can_take_drive_method());
}

TEST_F(HomingFormTest, TheTravelOfTheNumberIsTold) {
    EXPECT_TRUE(form.travel().empty());
    form.Option1_Click(kTriggerIndex);
    EXPECT_EQ(form.travel(),
              (std::vector<std::string>{"From anywhere: positive to the next index pulse."}));
    form.type_Text1("15");
    EXPECT_TRUE(form.travel().empty());
}

}  // namespace
}  // namespace servo::tools
