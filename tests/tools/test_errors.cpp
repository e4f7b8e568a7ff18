// The fault words bit by bit, and their masks.
#include <gtest/gtest.h>

#include "direct_engine.h"
#include "support/virtual_bench.h"
#include "tools/errors.h"
#include "tools/errors_texts.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;
using base::Language;
using dictionary::Variant;
using link::Payload;
using Payloads = std::vector<Payload>;

constexpr link::WireKey kWord1 = 0x26010002;
constexpr link::WireKey kWord2 = 0x26020002;
constexpr link::WireKey kMask1 = 0x26050102;
constexpr link::WireKey kMask2 = 0x26050402;

class ErrorsTest : public ::testing::Test, protected test::DirectEngine {
  protected:
    Errors form{engine, language};
};

TEST_F(ErrorsTest, TheWordsBeginAs0000) {
    EXPECT_EQ(form.word_text(1), "0000");
    EXPECT_EQ(form.word_text(2), "0000");
    EXPECT_TRUE(form.active().empty());
    EXPECT_TRUE(form.masked().empty());
}

TEST_F(ErrorsTest, EachBitLightsItsLamp) {
    for (int fault = 0; fault < kFaultBits; ++fault) {
        answer(kWord1, word_of(fault) == 1 ? fault_mask(fault) : 0);
        answer(kWord2, word_of(fault) == 2 ? fault_mask(fault) : 0);
        EXPECT_EQ(form.active(), std::vector<int>{fault});
        EXPECT_EQ(form.word_text(word_of(fault)), fault_mask_text(fault));
        EXPECT_EQ(form.word_text(3 - word_of(fault)), "0000");
    }
}

TEST_F(ErrorsTest, TheWordIsFourHexadecimalDigits) {
    answer(kWord1, 0x2A);
    EXPECT_EQ(form.word_text(1), "002A");
    answer(kWord1, 0xFFFF);
    EXPECT_EQ(form.word_text(1), "FFFF");
    EXPECT_EQ(form.active().size(), 16U);
}

TEST_F(ErrorsTest, ALampKeepsItsStateWhenTheWindowIsHiddenAndShown) {
    form.set_visible(true);
    answer(kWord1, 0x0200);
    form.set_visible(false);
    EXPECT_TRUE(form.lamp(9));
    form.set_visible(true);
    EXPECT_TRUE(form.lamp(9));
    form.set_visible(false);
    answer(kWord1, 0x0001);
    form.set_visible(true);
    EXPECT_FALSE(form.lamp(9)) << "the status monitor goes on behind a hidden window";
    EXPECT_TRUE(form.lamp(0));
}

TEST_F(ErrorsTest, AClosedLinkLeavesTheLamps) {
    answer(kWord1, 0x0200);
    engine.link_closed();
    EXPECT_TRUE(form.lamp(9));
    EXPECT_EQ(form.word_text(1), "0200");
}

TEST_F(ErrorsTest, TheBoxesShowTheMasksThatTheDriveHolds) {
    answer(kMask1, 0x8003);
    answer(kMask2, 0x0101);
    EXPECT_EQ(form.masked(), (std::vector<int>{0, 1, 15, 16, 24}));
    answer(kMask1, 0);
    EXPECT_EQ(form.masked(), (std::vector<int>{16, 24}));
    EXPECT_TRUE(sent().empty()) << "a box that follows the drive writes nothing";
}

TEST_F(ErrorsTest, AnAbortedReadLeavesTheBoxes) {
    answer(kMask1, 0x0003);
    answer(kMask1, 0x06020000, 0x80);
    EXPECT_EQ(form.masked(), (std::vector<int>{0, 1}));
}

TEST_F(ErrorsTest, AllBoxesOfWord1WriteFFFFAsTwoBytes) {
    answer(kMask1, 0);
    for (int fault = 0; fault < 16; ++fault)
        form.Check1_Click(fault);
    const Payloads written = sent();
    ASSERT_EQ(written.size(), 16U);
    EXPECT_EQ(written.back(), (Payload{0x2B, 0x05, 0x26, 0x01, 0xFF, 0xFF, 0, 0}));
    for (const Payload& payload : written)
        EXPECT_EQ(payload[3], 1) << "sub-index of word 1";
}

TEST_F(ErrorsTest, AChangeInWord2LeavesTheMaskOfWord1Unwritten) {
    answer(kMask1, 0x00FF);
    answer(kMask2, 0x0010);
    form.Check1_Click(16);
    EXPECT_EQ(sent(), (Payloads{{0x2B, 0x05, 0x26, 0x04, 0x11, 0x00, 0, 0}}));
    form.Check1_Click(31);
    EXPECT_EQ(sent(), (Payloads{{0x2B, 0x05, 0x26, 0x04, 0x11, 0x80, 0, 0}}));
    form.Check1_Click(20);
    EXPECT_EQ(sent(), (Payloads{{0x2B, 0x05, 0x26, 0x04, 0x01, 0x80, 0, 0}}));
}

TEST_F(ErrorsTest, BoxIStandsForBitIAlsoForTheTwoLowest) {
    answer(kMask1, 0);
    form.Check1_Click(0);
    EXPECT_EQ(sent().at(0)[4], 0x01);
    form.Check1_Click(0);
    EXPECT_EQ(sent().at(0)[4], 0x00);
    form.Check1_Click(1);
    EXPECT_EQ(sent().at(0)[4], 0x02);
    EXPECT_EQ(fault_mask_text(0), "0001");
    EXPECT_EQ(fault_mask_text(1), "0002");
}

TEST_F(ErrorsTest, TheTwoLowestOfWord1StandTheOtherWayRoundOnTheForm) {
    EXPECT_EQ(errors_row(0), 1);
    EXPECT_EQ(errors_row(1), 0);
    for (int fault = 2; fault < kFaultBits; ++fault)
        EXPECT_EQ(errors_row(fault), fault % 16);
    EXPECT_EQ(errors_row(16), 0) << "word 2 has none exchanged";
    EXPECT_EQ(errors_row(17), 1);
}

TEST_F(ErrorsTest, TheBoxesOfAWordAreTheMaskAlsoBeforeItIsKnown) {
    EXPECT_FALSE(form.mask_known(1));
    form.Check1_Click(3);
    EXPECT_EQ(sent(), (Payloads{{0x2B, 0x05, 0x26, 0x01, 0x08, 0, 0, 0}}));
    EXPECT_TRUE(form.Check1(3));
}

// --- additions

TEST_F(ErrorsTest, AMaskIsUnknownUntilItIsReadOnThisLink) {
    EXPECT_EQ(mask_note(form, 1), "Masks not read yet");
    answer(kMask1, 0);
    EXPECT_TRUE(form.mask_known(1));
    EXPECT_FALSE(form.mask_known(2));
    EXPECT_EQ(mask_note(form, 1), "");
    answer(kMask2, 0);
    EXPECT_TRUE(form.mask_known(2));
    engine.link_closed();
    EXPECT_FALSE(form.mask_known(1));
    EXPECT_FALSE(form.mask_known(2));
}

TEST_F(ErrorsTest, OnlyWhatIsNewIsTold) {
    int told = 0;
    form.changed = [&told] { ++told; };
    answer(kWord1, 4);
    EXPECT_EQ(told, 1);
    answer(kWord1, 4);
    EXPECT_EQ(told, 1);
    answer(kMask1, 0);
    EXPECT_EQ(told, 2) << "it is known now";
    answer(kMask1, 0);
    EXPECT_EQ(told, 2);
}

TEST_F(ErrorsTest, TheSummaryCountsFaultsAndMasks) {
    EXPECT_EQ(errors_summary(form), "No error word has been read yet");
    answer(kWord1, 0);
    EXPECT_EQ(errors_summary(form), "0 faults on, 0 masked");
    answer(kWord1, 0x0200);
    answer(kMask2, 0x0060);
    EXPECT_EQ(errors_summary(form), "1 fault on, 2 masked");
    answer(kWord2, 0x0020);
    EXPECT_EQ(errors_summary(form), "2 faults on, 2 masked");
    engine.link_closed();
    EXPECT_EQ(errors_summary(form), "2 faults on, 2 masked; not connected, as last read");
    language = Language::kChinese;
    EXPECT_EQ(errors_summary(form), "故障 2 个，屏蔽 2 个；未连接，显示的是最后一次读到的状态");
}

TEST_F(ErrorsTest, HowAFaultIsResetIsToldWhileOneIsOn) {
    EXPECT_EQ(reset_note(form), "");
    answer(kWord2, 0x0010);
    EXPECT_EQ(
        reset_note(form),
        "Reset: write 1 to 2606 on the page Basic Operation, or raise bit 7 of the controlword "
        "6040. A fault whose cause still stands comes back.");
    answer(kWord2, 0);
    EXPECT_EQ(reset_note(form), "");
}

TEST_F(ErrorsTest, TheFaultUnderThePointerIsExplainedFirst) {
    EXPECT_EQ(explained_fault(form, {}, {}), std::nullopt);
    answer(kWord1, 0x0210);
    EXPECT_EQ(explained_fault(form, {}, {}), 4) << "the first that is on";
    EXPECT_EQ(explained_fault(form, {}, 20), 20);
    EXPECT_EQ(explained_fault(form, 30, 20), 30);
}

TEST_F(ErrorsTest, AnExplanationNamesWordBitMaskAndCaption) {
    const FaultDetail english = fault_detail(3, Variant::kAllItems, Language::kEnglish);
    EXPECT_EQ(english.heading, "Error word 1, bit 3 (0008): Encoder counting or Encoder CRC");
    EXPECT_FALSE(english.cause.empty());
    EXPECT_FALSE(english.remedy.empty());
    const FaultDetail chinese = fault_detail(31, Variant::kAllItems, Language::kChinese);
    EXPECT_EQ(chinese.heading, "错误状态字2，位 15 (8000): 电流传感器故障");
    EXPECT_EQ(fault_detail(4, Variant::kReduced, Language::kEnglish).heading,
              "Error word 1, bit 4 (0010): Controller Temperature");
}

// --- on the line

class ErrorsLink : public ::testing::Test, protected servo::test::VirtualBench {
  protected:
    servo::test::FakeDrive drive{time, line};
    Language language = Language::kEnglish;
    Errors form{engine, language};
};

TEST_F(ErrorsLink, WordsAndMasksComeWithTheStatusLanes) {
    drive.add(kWord1, 0x0004);
    drive.add(kWord2, 0x8000);
    drive.add(kMask1, 0x0040);
    drive.add(kMask2, 0x0001);
    open_link();
    ASSERT_TRUE(run_until([this] { return form.mask_known(1) && form.mask_known(2); }, 10s));
    EXPECT_EQ(form.active(), (std::vector<int>{2, 31}));
    EXPECT_EQ(form.masked(), (std::vector<int>{6, 16}));
}

TEST_F(ErrorsLink, AMaskReachesTheDriveAndStaysInTheBox) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.mask_known(1) && form.mask_known(2); }, 10s));
    form.Check1_Click(9);
    ASSERT_TRUE(run_until([this] { return drive.value(0x260501) == 0x0200; }, 2s));
    run_for(2s);
    EXPECT_TRUE(form.Check1(9));
    EXPECT_EQ(drive.value(0x260504), 0);
}

TEST_F(ErrorsLink, AMaskThatTheDriveRefusesGoesOutOfTheBoxAgain) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.mask_known(1) && form.mask_known(2); }, 10s));
    drive.refuse.insert(0x260501);
    form.Check1_Click(9);
    EXPECT_TRUE(form.Check1(9));
    run_for(50ms);
    drive.refuse.clear();
    ASSERT_TRUE(run_until([this] { return !form.Check1(9); }, 5s));
}

}  // namespace
}  // namespace servo::tools
