// What the journal keeps, shows and saves.
#include "tools/journal.h"

#include <gtest/gtest.h>

#include "journal_bench.h"
#include "tools/configuration_rows.h"
#include "tools/drive_commands.h"

namespace servo::tools::test {
namespace {

using State = JournalEntry::State;

struct Journal : ::testing::Test, JournalBench {};

TEST_F(Journal, AWriteIsKeptWithTimeWindowAndValue) {
    time_of_day = "14:05:59";
    window = "VLoop";
    write(kGain, 120);
    ASSERT_EQ(journal.entries().size(), 1U);
    EXPECT_EQ(entry(0).time, "14:05:59");
    EXPECT_EQ(entry(0).window, "VLoop");
    EXPECT_EQ(entry(0).key, kGain);
    EXPECT_EQ(entry(0).value, 120U);
    EXPECT_EQ(entry(0).before, std::nullopt);
    EXPECT_EQ(entry(0).state, State::kSent);
}

TEST_F(Journal, ReadsAreNoWrites) {
    engine.sendata2(kGain, 0, 1);
    EXPECT_TRUE(journal.entries().empty());
}

TEST_F(Journal, TheValueBeforeIsWhatTheDriveSaidLast) {
    say(link::kAnswer2, kGain, 80);
    say(link::kAnswer2, kGain, 90);
    write(kGain, 120);
    EXPECT_EQ(entry(0).before, 90U);
}

TEST_F(Journal, WhatTheDriveTookIsKnownAndWhatItRefusedIsNot) {
    say(link::kAnswer2, kGain, 80);
    write(kGain, 120);
    taken(kGain, 120);
    EXPECT_EQ(entry(0).state, State::kTaken);
    write(kGain, 60000);
    EXPECT_EQ(entry(1).before, 120U);
    refused(kGain, 0x06090031);
    EXPECT_EQ(entry(1).state, State::kRefused);
    EXPECT_EQ(entry(1).abort_code, 0x06090031U);
    write(kGain, 100);
    EXPECT_EQ(entry(2).before, 120U) << "not what was refused";
}

TEST_F(Journal, AnAnswerGoesToTheWriteWhoseValueItNames) {
    write(kGain, 1);  // lost
    write(kGain, 2);
    taken(kGain, 2);
    EXPECT_EQ(entry(0).state, State::kSent);
    EXPECT_EQ(entry(1).state, State::kTaken);
}

TEST_F(Journal, AnAnswerWithoutAValueGoesToTheFirstThatWaits) {
    write(kGain, 1);
    write(kGain, 2);
    taken(kGain, 0);
    EXPECT_EQ(entry(0).state, State::kTaken);
    EXPECT_EQ(entry(1).state, State::kSent);
    taken(kGain, 0);
    EXPECT_EQ(entry(1).state, State::kTaken);
}

TEST_F(Journal, AWriteThatWasNotAnsweredInTimeTakesNoLaterWord) {
    write(kGain, 1);
    clock.time += std::chrono::milliseconds(1001);
    write(kGain, 2);
    refused(kGain, 0x06090030);
    EXPECT_EQ(entry(0).state, State::kSent);
    EXPECT_EQ(entry(1).state, State::kRefused);
}

TEST_F(Journal, TheRefusalOfAReadIsNoWordOnAWriteOfAnotherObject) {
    write(kGain, 1);
    refused(kMode, 0x06020000);
    EXPECT_EQ(entry(0).state, State::kSent);
}

TEST_F(Journal, TheSameWriteAgainWithoutAnAnswerIsOneEntry) {
    write(kGain, 1);
    write(kGain, 1);
    write(kGain, 1);
    ASSERT_EQ(journal.entries().size(), 1U);
    EXPECT_EQ(entry(0).times, 3);
    taken(kGain, 1);
    EXPECT_EQ(journal.cell(entry(0), 6), "taken, sent 3 times");
    write(kGain, 1);
    EXPECT_EQ(journal.entries().size(), 2U) << "the drive had taken the first";
}

TEST_F(Journal, NothingIsKeptWhileTheLineIsClosed) {
    port.opened = false;
    write(kGain, 1);
    EXPECT_TRUE(journal.entries().empty());
}

TEST_F(Journal, AnotherLinkKnowsNothingOfTheDrive) {
    say(link::kAnswer2, kGain, 80);
    engine.link_closed();
    engine.link_opened();
    write(kGain, 1);
    EXPECT_EQ(entry(0).before, std::nullopt);
}

TEST_F(Journal, BehindARestartTheStoredValuesAreNotKnown) {
    say(link::kAnswer2, kGain, 80);
    send_restart(engine);
    write(kGain, 1);
    ASSERT_EQ(journal.entries().size(), 2U);
    EXPECT_EQ(entry(0).value, 0xAA55U) << "two bytes of the four that travel";
    EXPECT_EQ(entry(1).before, std::nullopt);
}

TEST_F(Journal, TheRestartItselfIsNoValueThatStandsInTheDrive) {
    send_restart(engine);
    taken(kRestartKey, 0xAA55);
    send_restart(engine);
    ASSERT_EQ(journal.entries().size(), 2U);
    EXPECT_EQ(entry(1).before, std::nullopt);
}

TEST_F(Journal, BehindTheFactoryValuesNothingIsKnown) {
    say(link::kAnswer2, kGain, 80);
    write(kControlParametersKey, kStoreParameters);
    taken(kControlParametersKey, kStoreParameters);
    EXPECT_EQ(journal.known(0x60F901), 80U) << "storing changes no value";
    write(kControlParametersKey, kResetParameters);
    taken(kControlParametersKey, kResetParameters);
    write(kGain, 1);
    EXPECT_EQ(entry(2).before, std::nullopt);
}

TEST_F(Journal, BehindTheCallIntoTheBootloaderNothingIsKnown) {
    say(link::kAnswer2, kGain, 80);
    engine.state.download_active = 1;
    engine.state.timer1_in = -1;
    write(kRestartKey, 0x55AA);
    engine.state.timer1_in = 0;
    engine.state.download_active = 0;
    write(kGain, 1);
    ASSERT_EQ(journal.entries().size(), 1U);
    EXPECT_EQ(entry(0).before, std::nullopt);
}

TEST_F(Journal, AFirmwareTransferIsLeftOut) {
    engine.state.download_active = 1;
    engine.state.timer1_in = -1;
    write(kGain, 1);
    EXPECT_TRUE(journal.entries().empty());
}

TEST_F(Journal, AJobWritesInItsOwnName) {
    engine.state.timer1_in = -1;  // inside a tick
    engine.state.batch_mode = 1;
    write(kGain, 1);
    engine.state.batch_mode = 3;
    write(kGain, 2);
    engine.state.batch_mode = 0;
    engine.state.scanRequested = -1;
    write(kGain, 3);
    engine.state.scanRequested = 0;
    write(kGain, 4);
    engine.state.timer1_in = 0;
    write(kGain, 5);
    EXPECT_EQ(column(1),
              (std::vector<std::string>{"imexport", "PosFlow", "ADVtunner", "Scope", "Basic"}));
}

TEST_F(Journal, ValuesHaveTheSignOfTheirObject) {
    say(link::kAnswer1, kMode, 0xFD);
    write(kMode, -4);
    write(kTarget, -1);
    write(kProfile, -1);
    write(0x12345602, -1);  // not in the dictionary
    EXPECT_EQ(column(5), (std::vector<std::string>{"-4", "-1", "4294967295", "65535"}));
    EXPECT_EQ(column(4), (std::vector<std::string>{"-3", "", "", ""}));
}

TEST_F(Journal, CellsAreInTheLanguageOfTheScreen) {
    write(kMode, 3);
    refused(kMode, 0x06090030);
    write(0x12345602, 1);
    EXPECT_EQ(journal.cell(entry(0), 2), "606000");
    EXPECT_EQ(journal.cell(entry(0), 3), "Modes of operation");
    EXPECT_EQ(journal.cell(entry(0), 6).substr(0, 19), "refused: 0x06090030");
    EXPECT_EQ(journal.cell(entry(1), 3), "");
    EXPECT_EQ(journal.cell(entry(1), 6), "no answer");
    language = base::Language::kChinese;
    EXPECT_EQ(journal.cell(entry(0), 3), "N-Modes of operation");
    EXPECT_EQ(journal.cell(entry(1), 6), "无应答");
    EXPECT_EQ(WriteJournal::heading(4, language), "原值");
}

TEST_F(Journal, TheFilterLooksIntoEveryCellWithoutRegardToCase) {
    write(kMode, 3);
    time_of_day = "11:11:11";
    window = "VLoop";
    write(kGain, 77);
    refused(kGain, 0x06090030);
    using Found = std::vector<std::size_t>;
    EXPECT_EQ(journal.find(""), (Found{0, 1}));
    EXPECT_EQ(journal.find("vloop"), Found{1});
    EXPECT_EQ(journal.find("GAIN"), Found{1});
    EXPECT_EQ(journal.find("6060"), Found{0});
    EXPECT_EQ(journal.find("11:11"), Found{1});
    EXPECT_EQ(journal.find("refused"), Found{1});
    EXPECT_EQ(journal.find("nowhere"), Found{});
}

TEST_F(Journal, LinesForTheClipboardHaveTabs) {
    say(link::kAnswer1, kMode, 1);
    write(kMode, 3);
    taken(kMode, 3);
    write(kGain, 5);
    EXPECT_EQ(journal.copy({0}), "10:00:00\tBasic\t606000\tModes of operation\t1\t3\ttaken\n");
    EXPECT_EQ(journal.copy({}), "");
}

TEST_F(Journal, AFileHasTheLastValueOfEachObjectInTheOrderOfTheFirstWrites) {
    write(kMode, -3);
    taken(kMode, 0xFD);
    write(kGain, 5);
    write(kMode, 1);
    taken(kMode, 1);
    write(kProfile, -1);
    EXPECT_EQ(journal.write_cdi(journal.find("")),
              "60600008,1,True\r\n60F90110,5,True\r\n60810020,4294967295,True\r\n");
    EXPECT_EQ(journal.write_cdi({0}), "60600008,-3,True\r\n");
}

TEST_F(Journal, RefusedWritesAndCommandsAreNoPartOfAFile) {
    write(kMode, 9);
    refused(kMode, 0x06090030);
    write(kControlword, 15);
    write(kStoreAllKey, kStoreAllValue);
    write(kControlParametersKey, kResetParameters);
    send_restart(engine);
    EXPECT_EQ(journal.entries().size(), 5U);
    EXPECT_EQ(journal.write_cdi(journal.find("")), "");
}

TEST_F(Journal, AFileIsReadByTheConfigurationWindow) {
    write(kMode, -3);
    write(kProfile, -1);
    const auto rows = read_cdi(journal.write_cdi(journal.find("")), store);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(row_key(rows[0].Index), kMode);
    EXPECT_EQ(source_number(rows[0].Source_Value), -3);
    EXPECT_EQ(row_key(rows[1].Index), kProfile);
    EXPECT_EQ(source_number(rows[1].Source_Value), -1) << "the same bits";
    EXPECT_FALSE(rows[0].red);
}

TEST_F(Journal, TheOldestLeaveWhereThereIsNoRoom) {
    for (std::size_t i = 0; i < WriteJournal::kMost + 3; ++i)
        write(kProfile, static_cast<std::int32_t>(i));
    EXPECT_EQ(journal.entries().size(), WriteJournal::kMost);
    EXPECT_EQ(journal.forgotten(), 3U);
    EXPECT_EQ(entry(0).value, 3U);
    EXPECT_EQ(entry(0).number, 3U);
}

TEST_F(Journal, ClearingForgetsTheEntriesAndNotTheDrive) {
    say(link::kAnswer2, kGain, 80);
    write(kGain, 1);
    taken(kGain, 1);
    journal.clear();
    EXPECT_TRUE(journal.entries().empty());
    write(kGain, 2);
    EXPECT_EQ(entry(0).before, 1U);
    EXPECT_EQ(entry(0).number, 1U);
}

TEST_F(Journal, EveryChangeIsTold) {
    int changes = 0;
    journal.changed = [&changes] { ++changes; };
    write(kGain, 1);
    EXPECT_EQ(changes, 1);
    write(kGain, 1);
    EXPECT_EQ(changes, 2);
    taken(kGain, 1);
    EXPECT_EQ(changes, 3);
    say(link::kAnswer2, kGain, 1);
    EXPECT_EQ(changes, 3) << "a read changes no entry";
    journal.clear();
    EXPECT_EQ(changes, 4);
}

}  // namespace
}  // namespace servo::tools::test
