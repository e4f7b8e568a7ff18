// What the form says beside its controls.
#include <gtest/gtest.h>

#include "digital_io_bench.h"
#include "tools/digital_io_notes.h"

namespace servo::tools::test {
namespace {

using base::Language;
using std::chrono::seconds;

struct DigitalIONotes : testing::Test, DirectIO {
    std::string line() { return warning_line(warnings_of(form.data(), language)); }
};

TEST_F(DigitalIONotes, NothingToSayAboutASoundSetUp) {
    set_row(0, 0x0001);
    set_row(1, 0x0010);
    set_row(8, 0x0001);
    EXPECT_EQ(line(), "");
    EXPECT_EQ(simulated_text(form.data(), language), "");
}

TEST_F(DigitalIONotes, TwoPinsWithOneFunctionAreNamed) {
    set_row(0, 0x0003);
    set_row(2, 0x0001);
    EXPECT_EQ(line(), "Input 1 and Input 3 carry the same function: Enable");
    set_row(7, 0x0002);
    EXPECT_EQ(line(), "Input 1 and Input 3 carry the same function: Enable (+1)");
    language = Language::kChinese;
    EXPECT_EQ(line(), "输入 1和输入 3都分配了“使能” (+1)");
}

TEST_F(DigitalIONotes, AnInputAndAnOutputShareNothing) {
    set_row(0, 0x0001);
    set_row(8, 0x0001);
    EXPECT_EQ(line(), "");
    set_row(14, 0x0001);
    EXPECT_EQ(line(), "Output 1 and Output 7 carry the same function: Ready");
}

TEST_F(DigitalIONotes, ASimulatedLimitSwitchComesFirst) {
    set_row(0, 0x0001);
    set_row(1, 0x0001);
    set_row(4, 0x0020);
    answer(0x20100102, 0x10);
    EXPECT_EQ(line(), "Input 5: the limit switch P Limit - is simulated and protects nothing (+1)");
    EXPECT_EQ(warnings_of(form.data(), language).front().kind, IoWarning::kLimitSimulated);
    answer(0x20100102, 0x20);
    EXPECT_EQ(line(), "Input 1 and Input 2 carry the same function: Enable")
        << "another pin is simulated";
}

TEST_F(DigitalIONotes, AHighGroupsBitsAreNoLimitSwitch) {
    set_row(4, 0x8030);
    answer(0x20100102, 0x10);
    EXPECT_EQ(line(), "");
}

TEST_F(DigitalIONotes, AValueThatTheListDoesNotExplainIsTold) {
    set_row(0, 0xA001);
    EXPECT_EQ(line(), "Input 1: the value 0xA001 holds a function that the list does not name");
    set_row(0, 0x8000);
    EXPECT_EQ(line(), "Input 1: the value 0x8000 holds a function that the list does not name");
}

TEST(DigitalIONotesList, ALineThatHoldsNoFunctionIsTold) {
    DirectIO bench("[DigitIN]\nnonsense\na,a,0001\n");
    EXPECT_EQ(warning_line(warnings_of(bench.form.data(), Language::kEnglish)),
              "Line 2 of the list DigitIOSettings.ini holds no function");
}

TEST_F(DigitalIONotes, TheBannerNamesEveryForcedPin) {
    set_row(2, 0x0010);
    answer(0x20100102, 0x84);
    answer(0x20100D02, 0x02);
    EXPECT_EQ(simulated_text(form.data(), language),
              "Simulated: Input 3 (P Limit +), Input 8, Output 2");
    language = Language::kChinese;
    EXPECT_EQ(simulated_text(form.data(), language), "仿真中：输入 3 (正限位)、输入 8、输出 2");
}

TEST_F(DigitalIONotes, TheEighthBoxOfTheOutputsIsNoPin) {
    answer(0x20100D02, 0x80);
    EXPECT_EQ(simulated_text(form.data(), language), "");
}

TEST_F(DigitalIONotes, TheAgeOfTheStates) {
    const auto text = [this] { return age_text(form.data(), form.age(), language); };
    EXPECT_EQ(text(), "Waiting for the drive");
    EXPECT_TRUE(states_old(form.data(), form.age()));
    set_row(0, 1);
    EXPECT_EQ(text(), "Live");
    EXPECT_FALSE(states_old(form.data(), form.age()));
    clock.time += seconds(4);
    EXPECT_EQ(text(), "Live");
    clock.time += seconds(1);
    EXPECT_EQ(text(), "States of 5 s ago");
    EXPECT_TRUE(states_old(form.data(), form.age()));
    engine.link_closed();
    EXPECT_EQ(text(), "The link is closed: states of 5 s ago, and nothing is written");
    clock.time += seconds(595);
    EXPECT_EQ(text(), "The link is closed: states of 10 min ago, and nothing is written");
    clock.time += seconds(7200);
    EXPECT_EQ(text(), "The link is closed: states of 2 h ago, and nothing is written");
    language = Language::kChinese;
    EXPECT_EQ(text(), "通信未打开，显示的是 2 小时前的状态，修改不会写入");
}

TEST_F(DigitalIONotes, NothingIsKnownBeforeTheFirstLink) {
    engine.link_closed();
    EXPECT_EQ(age_text(form.data(), form.age(), language),
              "The link is closed; the states are not known");
}

TEST_F(DigitalIONotes, ARowsTipTellsObjectAndValue) {
    EXPECT_EQ(row_tip(form.data(), 0, language), "Input 1: not read yet");
    set_row(0, 0x0003);
    EXPECT_EQ(row_tip(form.data(), 0, language), "Input 1: Enable+Reset Errors\n2010:03 = 0x0003");
    set_row(14, 0);
    EXPECT_EQ(row_tip(form.data(), 14, language), "Output 7: no function\n2010:1F = 0x0000");
    form.Command6_Click(14);
    EXPECT_EQ(row_tip(form.data(), 14, language),
              "Output 7: no function\n2010:1F = 0x0000\nwritten, not read back yet");
}

TEST_F(DigitalIONotes, AFunctionsTipTellsCodeAndGroup) {
    EXPECT_EQ(function_tip(form.data().list.inputs, 15, language),
              "Din Vel Index2\nCode 0x8001, group 2");
    language = Language::kChinese;
    EXPECT_EQ(function_tip(form.data().list.inputs, 0, language), "使能\n代码 0x0001，第 1 组");
}

TEST_F(DigitalIONotes, TheChoosersLastLine) {
    EXPECT_EQ(chosen_text({.groups = 0, .value = 0}, language), "No function: writes 0x0000");
    EXPECT_EQ(chosen_text({.groups = 1, .value = 0x8003}, language), "Writes 0x8003");
    EXPECT_EQ(chosen_text({.groups = 2, .value = 1}, language),
              "Functions of two groups can't share a pin");
}

}  // namespace
}  // namespace servo::tools::test
