// The form by hand: its list, live states, polarity and simulation, clearing.
#include <gtest/gtest.h>

#include "digital_io_bench.h"

namespace servo::tools::test {
namespace {

using base::Language;
using Boxes = std::vector<std::pair<std::string, std::string>>;

struct DigitalIOForm : testing::Test, DirectIO {};

TEST_F(DigitalIOForm, LoadsTheListAndAnswersForIt) {
    EXPECT_TRUE(loaded);
    EXPECT_EQ(unloads, 0);
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(form.name(), "DigitalIO");
    EXPECT_EQ(form.getubouddin(0), 15);
    EXPECT_EQ(form.getubouddin(1), 12);
    EXPECT_EQ(form.getubouddin(2), 7);
    EXPECT_EQ(form.getubouddout(0), 15);
    EXPECT_EQ(form.getubouddout(1), 3);
    EXPECT_EQ(form.getcboxgroupsdin(1), 26);
    EXPECT_EQ(form.getcboxgroupsdout(1), 17);
    EXPECT_EQ(form.getcheckboxdinvalue(15), 0x8001);
    EXPECT_EQ(form.getcheckboxdinvalue1(2, 6), 0x9040);
    EXPECT_EQ(form.getcheckboxdoutvalue(17), 0x8004);
    EXPECT_EQ(form.getcheckboxdoutvalue1(0, 14), 0x4000);
}

TEST_F(DigitalIOForm, WhatIsNotInTheListIsAnsweredWithZero) {
    EXPECT_EQ(form.getubouddin(3), 0);
    EXPECT_EQ(form.getcboxgroupsdout(2), -1);
    EXPECT_EQ(form.getcheckboxdinvalue(-1), 0);
    EXPECT_EQ(form.getcheckboxdinvalue(34), 0);
    EXPECT_EQ(form.getcheckboxdinvalue1(1, 12), 0);
    EXPECT_EQ(form.getcheckboxdinvalue1(7, 0), 0);
    EXPECT_EQ(form.getcheckboxdoutvalue1(1, 3), 0);
}

TEST(DigitalIOLoad, AWrongFirstLineIsToldAndEndsTheProgram) {
    DirectIO bench("[DIGITIN]\na,a,0001\n");
    EXPECT_FALSE(bench.loaded);
    EXPECT_EQ(bench.notice.boxes, (Boxes{{"Notice", "DigitIOSettings.ini is not right"}}));
    EXPECT_EQ(bench.unloads, 1);
}

TEST(DigitalIOLoad, AnEmptyFileEndsTheProgramWithoutAWord) {
    DirectIO bench("");
    EXPECT_FALSE(bench.loaded);
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.unloads, 1);
}

TEST(DigitalIOLoad, AFileThatCannotBeOpenedIsToldAndEndsTheProgram) {
    DirectIO bench;
    std::filesystem::remove(bench.folder / "sys/DigitIOSettings.ini");
    EXPECT_FALSE(bench.form.Form_Load(bench.folder.path()));
    EXPECT_EQ(bench.notice.boxes, (Boxes{{"Notice", R"(Missing file \sys\DigitIOSettings.ini)"}}));
    EXPECT_EQ(bench.unloads, 1);
}

TEST(DigitalIOLoad, AListOfHeadingsAloneIsAList) {
    DirectIO bench("[DigitIN]\n[DigitOUT]\n");
    EXPECT_TRUE(bench.loaded);
    bench.set_row(0, 1);
    EXPECT_EQ(bench.form.Text1(0), "");
    bench.form.Command1_Click(0);
    bench.form.Command2_Click();
    EXPECT_EQ(bench.writes(), (std::vector<Write>{word_write(0x201003, 0)}));
}

// --- Live states

TEST_F(DigitalIOForm, AFunctionAnswerShowsItsNames) {
    set_row(0, 0x0003);
    EXPECT_EQ(form.Text1(0), "Enable+Reset Errors");
    set_row(7, 0x8001);
    EXPECT_EQ(form.Text1(7), "Din Vel Index2");
    set_row(14, 0x8006);
    EXPECT_EQ(form.Text1(14), "STO Active+Enc Warning");
    EXPECT_EQ(form.Text1(1), "");
    EXPECT_EQ(form.Text1(15), "");
}

TEST_F(DigitalIOForm, FunctionValuesStandAtTheirPlaces) {
    for (int row = 0; row < 15; ++row)
        set_row(row, static_cast<std::uint16_t>(row + 1));
    for (std::size_t place = 0; place < 8; ++place)
        EXPECT_EQ(form.data().din[place], place + 1);
    for (std::size_t place = 0; place < 7; ++place)
        EXPECT_EQ(form.data().dout[place], place + 9);
    EXPECT_EQ(form.data().din.size(), 11U);
    EXPECT_EQ(form.data().dout.size(), 11U);
}

TEST_F(DigitalIOForm, NamesFollowTheLanguageWithoutANewAnswer) {
    set_row(0, 0x0003);
    language = Language::kChinese;
    EXPECT_EQ(form.Text1(0), "使能+复位故障");
    language = Language::kEnglish;
    EXPECT_EQ(form.Text1(0), "Enable+Reset Errors");
}

TEST_F(DigitalIOForm, APinsValueZeroIsAnEmptyText) {
    set_row(3, 0x0001);
    set_row(3, 0x0000);
    EXPECT_EQ(form.Text1(3), "");
}

TEST_F(DigitalIOForm, EachAnswerPaintsItsColumnAndNoOther) {
    for (const IoSide side : kIoSides)
        for (const IoColumn column : kIoColumns) {
            answer(column_key(side, column), 0xA5);
            for (const IoSide each : kIoSides)
                for (const IoColumn other : kIoColumns)
                    for (int bit = 0; bit < 8; ++bit) {
                        const bool painted = each == side && other == column;
                        EXPECT_EQ(form.data().box(first_row(each) + bit, other),
                                  painted && (0xA5 >> bit & 1) != 0);
                    }
            answer(column_key(side, column), 0);
        }
}

TEST_F(DigitalIOForm, TheLastTwoSubsOfTheOutputsPaintTheOtherWayRound) {
    answer(0x20100A02, 0x01);
    EXPECT_TRUE(form.data().box(0, IoColumn::kInternal));
    answer(0x20100B02, 0x02);
    EXPECT_TRUE(form.data().box(1, IoColumn::kReal));
    answer(0x20101402, 0x04);
    EXPECT_TRUE(form.data().box(10, IoColumn::kReal));
    answer(0x20101502, 0x08);
    EXPECT_TRUE(form.data().box(11, IoColumn::kInternal));
}

TEST_F(DigitalIOForm, BitsAboveTheEighthPaintNothing) {
    answer(0x20100B02, 0xFF01);
    for (int row = 0; row < 16; ++row)
        EXPECT_EQ(form.data().box(row, IoColumn::kReal), row == 0);
}

TEST_F(DigitalIOForm, OtherObjectsOfTheBlockChangeNothing) {
    const int before = seen.changes;
    answer(0x26050102, 0xFFFF);
    answer(0x26050402, 0xFFFF);
    answer(0x20100C02, 0xFFFF);
    EXPECT_EQ(seen.changes, before);
    EXPECT_FALSE(form.data().last_answer);
}

TEST_F(DigitalIOForm, AbortsAndAcknowledgementsPaintNothing) {
    answer(0x20100102, 0x00FF, 0x80);
    answer(0x20100102, 0x00FF, 0x60);
    EXPECT_FALSE(form.data().box(0, IoColumn::kSimulate));
    EXPECT_FALSE(form.data().column(IoSide::kInput, IoColumn::kSimulate).seen);
}

// --- Polarity and simulation

TEST_F(DigitalIOForm, AClickWritesTheWholeColumnWithTheClickedBoxFlipped) {
    answer(0x20100202, 0x81);
    form.Check1_Click(2);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201002, 0x85)}));
    form.Check1_Click(0);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201002, 0x84)}))
        << "the click before counts although the drive has not yet said so";
    answer(0x20100102, 0x10);
    form.Check3_Click(4);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201001, 0)}));
}

TEST_F(DigitalIOForm, OutputsHaveObjectsOfTheirOwn) {
    form.Check1_Click(8);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100E, 0x01)}));
    form.Check3_Click(14);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100D, 0x40)}));
}

TEST_F(DigitalIOForm, TheEighthBoxOfTheOutputsIsWrittenBackAsItWasRead) {
    answer(0x20100D02, 0x80);
    form.Check3_Click(8);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100D, 0x81)}));
}

TEST_F(DigitalIOForm, AClickAsksForTheBlockAndClearsTheInput) {
    engine.state.Com_Change = 1;
    engine.state.sub_Pointer = 7;
    const int clears = port.in_clears;
    form.Check1_Click(0);
    EXPECT_EQ(engine.state.sub_Pointer, 0);
    EXPECT_EQ(engine.state.status_lane, 0);
    EXPECT_EQ(engine.state.Com_Change, 0);
    EXPECT_EQ(engine.state.io_refresh, -1);
    EXPECT_EQ(port.in_clears, clears + 1);
}

TEST_F(DigitalIOForm, WhileTheScopesLaneRunsAClickOnlyWrites) {
    engine.state.status_lane = 2;
    engine.state.sub_Pointer = 7;
    const int clears = port.in_clears;
    form.Check3_Click(1);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201001, 2)}));
    EXPECT_EQ(engine.state.status_lane, 2);
    EXPECT_EQ(engine.state.sub_Pointer, 7);
    EXPECT_EQ(engine.state.io_refresh, 0);
    EXPECT_EQ(port.in_clears, clears);
}

TEST_F(DigitalIOForm, ColumnControlsFlipAllEightBoxes) {
    answer(0x20100202, 0x0F);
    form.Image1_Click(IoSide::kInput);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201002, 0xF0)}));
    form.Image3_Click(IoSide::kInput);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201001, 0xFF)}));
    form.Image1_Click(IoSide::kOutput);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100E, 0xFF)}));
    form.Image3_Click(IoSide::kOutput);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100D, 0xFF)}));
    EXPECT_EQ(engine.state.io_refresh, -1);
    form.Image3_Click(IoSide::kOutput);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100D, 0)}));
}

TEST_F(DigitalIOForm, ClicksOnRowsThatDoNotExistDoNothing) {
    for (const int row : {-1, 16, 99}) {
        form.Check1_Click(row);
        form.Check3_Click(row);
        form.Command1_Click(row);
        form.Command6_Click(row);
    }
    form.Command1_Click(15);
    form.Command6_Click(15);
    EXPECT_TRUE(writes().empty());
    EXPECT_FALSE(form.data().open_row);
}

TEST_F(DigitalIOForm, WithoutALinkNothingIsSentAndNoBoxFlips) {
    answer(0x20100202, 0x01);
    engine.link_closed();
    port.opened = false;
    form.Check1_Click(3);
    form.Image1_Click(IoSide::kInput);
    EXPECT_TRUE(port.sent.empty());
    EXPECT_TRUE(form.data().box(0, IoColumn::kPolarity));
    EXPECT_FALSE(form.data().box(3, IoColumn::kPolarity));
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(DigitalIOForm, WhileAFirmwareTransferRunsNoBoxFlips) {
    engine.state.download_active = 1;
    form.Check1_Click(3);
    EXPECT_TRUE(port.sent.empty());
    EXPECT_FALSE(form.data().box(3, IoColumn::kPolarity));
}

TEST_F(DigitalIOForm, EndingTheSimulationWritesZeroWhereSomethingIsForced) {
    form.end_simulation();
    EXPECT_TRUE(writes().empty());
    answer(0x20100D02, 0x04);
    form.end_simulation();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20100D, 0)}));
    answer(0x20100D02, 0x04);  // the first answer behind a write is dropped
    answer(0x20100D02, 0x04);
    answer(0x20100102, 0x01);
    form.end_simulation();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201001, 0), word_write(0x20100D, 0)}));
    EXPECT_EQ(engine.state.io_refresh, -1);
}

// --- Clearing

TEST_F(DigitalIOForm, Command6ClearsItsRowAtOnceAndAsksForNoReading) {
    set_row(4, 0x0010);
    engine.state.Com_Change = 1;
    engine.state.sub_Pointer = 5;
    form.Command6_Click(4);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201007, 0)}));
    EXPECT_EQ(engine.state.io_refresh, 0);
    EXPECT_EQ(engine.state.sub_Pointer, 5);
    EXPECT_EQ(engine.state.Com_Change, 1);
    EXPECT_EQ(form.Text1(4), "P Limit +") << "until the drive says so";
    EXPECT_TRUE(form.data().rows[4].waiting);
    form.Command6_Click(14);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x20101F, 0)}));
}

TEST_F(DigitalIOForm, Command7ClearsAllInputsAndAsksForTheBlock) {
    form.Command7_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201003, 0), word_write(0x201004, 0),
                                            word_write(0x201005, 0), word_write(0x201006, 0),
                                            word_write(0x201007, 0), word_write(0x201008, 0),
                                            word_write(0x201009, 0), word_write(0x20101D, 0)}));
    EXPECT_EQ(engine.state.io_refresh, -1);
    EXPECT_EQ(engine.state.Com_Change, 0);
}

TEST_F(DigitalIOForm, Command8RunsDownwardsAndBeginsWithTheEmptyTagAndTheKeyTwo) {
    form.Command8_Click();
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x000000, 0), word_write(0x20101F, 0),
                                            word_write(0x20101E, 0), word_write(0x201013, 0),
                                            word_write(0x201012, 0), word_write(0x201011, 0),
                                            word_write(0x201010, 0), word_write(0x20100F, 0)}));
    EXPECT_EQ(engine.state.io_refresh, -1);
}

TEST_F(DigitalIOForm, TheFirstBytesOfCommand8) {
    form.Command8_Click();
    const auto bytes = port.take_sent();
    ASSERT_EQ(bytes.size(), 80U);
    const std::vector<std::uint8_t> payload(bytes.begin() + 1, bytes.begin() + 9);
    EXPECT_EQ(payload, (std::vector<std::uint8_t>{0x2B, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(engine.state.last_write_key, 0x20100F02);
}

// --- What is known

TEST_F(DigitalIOForm, StatesCountAsOldWhenTheLinkWasOpenedAgain) {
    set_row(0, 1);
    answer(0x20100102, 1);
    EXPECT_TRUE(form.data().rows[0].fresh);
    engine.link_closed();
    EXPECT_FALSE(form.data().rows[0].fresh);
    EXPECT_TRUE(form.data().rows[0].seen);
    EXPECT_EQ(form.Text1(0), "Enable") << "the last known state stays on screen";
    engine.link_opened();
    EXPECT_TRUE(form.data().link_open);
    EXPECT_FALSE(form.data().column(IoSide::kInput, IoColumn::kSimulate).fresh);
    EXPECT_TRUE(form.data().box(0, IoColumn::kSimulate));
}

TEST_F(DigitalIOForm, TheAgeIsThatOfTheLastAnswer) {
    EXPECT_FALSE(form.age());
    set_row(0, 1);
    EXPECT_EQ(form.age(), std::chrono::seconds(0));
    clock.time += std::chrono::seconds(12);
    EXPECT_EQ(form.age(), std::chrono::seconds(12));
}

TEST_F(DigitalIOForm, TheObserverMayBeTakenAway) {
    const int before = seen.changes;
    set_row(0, 1);
    EXPECT_EQ(seen.changes, before + 1);
    form.set_observer(nullptr);
    set_row(0, 2);
    EXPECT_EQ(seen.changes, before + 1);
}

}  // namespace
}  // namespace servo::tools::test
