// Channels and trigger as the operator chooses them: what is written to the recorder.
#include <gtest/gtest.h>

#include "scope/acquisition_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;

namespace {

using Frames = std::vector<Sent>;

struct AcquisitionChannels : testing::Test, AcquisitionBench {};
struct AcquisitionTrigger : testing::Test, AcquisitionBench {};
struct AcquisitionBoxes : testing::Test, AcquisitionBench {};

}  // namespace

TEST_F(AcquisitionChannels, PickStoresItsPositionAndBeginsTheCollectionAfresh) {
    data.driveConfigNext = 4;
    acquisition.pick_object(2, 3);
    EXPECT_EQ(channel(2).objectList.ListIndex, 3);
    EXPECT_EQ(data.lastObjectPick[2], 3);
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(changes, 1);
}

TEST_F(AcquisitionChannels, PickListsTheUnits) {
    acquisition.pick_object(0, 3);
    EXPECT_EQ(channel(0).unitList.items, (std::vector<std::string>{"rpm", "DEC"}));
}

TEST_F(AcquisitionChannels, PickInAnUntickedChannelWritesNothing) {
    acquisition.pick_object(0, 1);
    acquisition.pick_object(0, 4);
    acquisition.pick_object(0, 0);
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionChannels, PickOutsideOfTheListIsNone) {
    acquisition.pick_object(0, 8);
    acquisition.pick_object(0, -1);
    EXPECT_EQ(channel(0).objectList.ListIndex, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(AcquisitionChannels, NarrowObjectGoesToTheSlotOfItsChannel) {
    for (int index = 0; index < kCurves; ++index) {
        acquisition.pick_object(index, 2);
        acquisition.click_enable(index);
        EXPECT_EQ(sent(), (Frames{write4(index + 1, kQCurrent)}));
        acquisition.pick_object(index, 1);
        EXPECT_EQ(sent(), (Frames{write4(index + 1, kCurrent)}));
    }
}

TEST_F(AcquisitionChannels, WideObjectGoesToTheWideSlotOfItsChannel) {
    const std::vector<int> slots{5, 5, 6, 6};
    for (int index = 0; index < kCurves; ++index) {
        AcquisitionBench fresh;
        fresh.acquisition.pick_object(index, 4);
        fresh.acquisition.click_enable(index);
        const int sub = slots.at(static_cast<std::size_t>(index));
        EXPECT_EQ(fresh.sent(), (Frames{write4(sub, kPosition)}));
        fresh.acquisition.pick_object(index, 6);
        EXPECT_EQ(fresh.sent(), (Frames{write4(sub, kFollowingError)}));
    }
}

TEST_F(AcquisitionChannels, EightBitObjectSaysEightBits) {
    const auto entry = Add_OD_To_CH(0x200101, channel(1), dictionary, language);
    acquisition.pick_object(1, *entry + 1);
    acquisition.click_enable(1);
    EXPECT_EQ(sent(), (Frames{write4(2, kState)}));
}

TEST_F(AcquisitionChannels, SlotIsTheSignedFormOfAHighIndexToo) {
    AcquisitionBench high({record("B000", "01", "high", "Integer16", "[DEC]N*1")});
    Add_OD_To_CH(0xB00001, high.channel(0), high.dictionary, high.language);
    high.acquisition.pick_object(0, 1);
    high.acquisition.click_enable(0);
    EXPECT_EQ(high.sent(), (Frames{write4(1, 0xB0000110)}));
}

TEST_F(AcquisitionChannels, EmptyChoiceInATickedChannelClearsBothSlots) {
    tick_channel(1, 1);
    acquisition.pick_object(1, 0);
    EXPECT_EQ(sent(), (Frames{write4(2, 0), write4(5, 0)}));
    tick_channel(3, 4);
    acquisition.pick_object(3, 0);
    EXPECT_EQ(sent(), (Frames{write4(4, 0), write4(6, 0)}));
    EXPECT_TRUE(channel(3).enable);
}

TEST_F(AcquisitionChannels, TickWithTheEmptyChoiceIsRefused) {
    acquisition.click_enable(0);
    EXPECT_FALSE(channel(0).enable);
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionChannels, UntickOfANarrowObjectClearsItsOwnSlot) {
    tick_channel(2, 1);
    acquisition.click_enable(2);
    EXPECT_FALSE(channel(2).enable);
    EXPECT_EQ(sent(), (Frames{write4(3, 0)}));
}

TEST_F(AcquisitionChannels, UntickOfAWideObjectClearsTheWideSlot) {
    tick_channel(2, 4);
    acquisition.click_enable(2);
    EXPECT_EQ(sent(), (Frames{write4(6, 0)}));
}

TEST_F(AcquisitionChannels, UntickWithTheEmptyChoiceClearsItsOwnSlot) {
    tick_channel(0, 1);
    acquisition.pick_object(0, 0);
    sent();
    acquisition.click_enable(0);
    EXPECT_FALSE(channel(0).enable);
    EXPECT_EQ(sent(), (Frames{write4(1, 0)}));
}

TEST_F(AcquisitionChannels, Channel1And2BothInt32TickingChannel2UnticksChannel1) {
    tick_channel(0, 4);
    acquisition.pick_object(1, 6);
    acquisition.click_enable(1);
    EXPECT_FALSE(channel(0).enable);
    EXPECT_TRUE(channel(1).enable);
    // First the partner leaves the slot that both use, then the object goes there.
    EXPECT_EQ(sent(), (Frames{write4(5, 0), write4(5, kFollowingError)}));
}

TEST_F(AcquisitionChannels, EveryWideTickUnticksItsPartner) {
    for (int index = 0; index < kCurves; ++index) {
        AcquisitionBench fresh;
        const int partner = index ^ 1;
        fresh.tick_channel(partner, 4);
        fresh.acquisition.pick_object(index, 4);
        fresh.acquisition.click_enable(index);
        EXPECT_FALSE(fresh.channel(partner).enable) << index;
        EXPECT_TRUE(fresh.channel(index).enable) << index;
    }
}

TEST_F(AcquisitionChannels, NarrowPartnerIsUntickedFromItsOwnSlot) {
    tick_channel(3, 1);
    acquisition.pick_object(2, 4);
    acquisition.click_enable(2);
    EXPECT_FALSE(channel(3).enable);
    EXPECT_EQ(sent(), (Frames{write4(4, 0), write4(6, kPosition)}));
}

TEST_F(AcquisitionChannels, PartnerThatIsNotTickedIsNotWritten) {
    acquisition.pick_object(1, 4);
    acquisition.pick_object(0, 4);
    acquisition.click_enable(0);
    EXPECT_EQ(sent(), (Frames{write4(5, kPosition)}));
}

TEST_F(AcquisitionChannels, NarrowTickLeavesAWidePartnerTicked) {
    tick_channel(0, 4);
    acquisition.pick_object(1, 1);
    acquisition.click_enable(1);
    EXPECT_TRUE(channel(0).enable);
    EXPECT_EQ(sent(), (Frames{write4(2, kCurrent)}));
}

TEST_F(AcquisitionChannels, ChannelsOfTheOtherWideSlotStay) {
    tick_channel(2, 4);
    tick_channel(0, 4);
    EXPECT_TRUE(channel(2).enable);
    EXPECT_TRUE(channel(0).enable);
}

TEST_F(AcquisitionChannels, PickOfAWideObjectLeavesThePartnerTicked) {
    tick_channel(0, 4);
    tick_channel(1, 1);
    acquisition.pick_object(1, 6);
    EXPECT_TRUE(channel(0).enable);
    EXPECT_EQ(sent(), (Frames{write4(5, kFollowingError)}));
}

TEST_F(AcquisitionChannels, EveryChangeOfATickHasTheCurvesComputedAnew) {
    acquisition.pick_object(0, 1);
    data.curvesChanged = false;
    acquisition.click_enable(0);
    EXPECT_TRUE(data.curvesChanged);
    data.curvesChanged = false;
    acquisition.click_enable(0);
    EXPECT_TRUE(data.curvesChanged);
    data.curvesChanged = false;
    acquisition.pick_object(0, 0);
    acquisition.click_enable(0);  // refused
    EXPECT_FALSE(data.curvesChanged);
}

TEST_F(AcquisitionChannels, RowBytesAreTheWidthsOfTheTickedChannels) {
    EXPECT_EQ(acquisition.row_bytes(), 0);
    tick_channel(0, 4);
    EXPECT_EQ(acquisition.row_bytes(), 4);
    tick_channel(1, 1);
    EXPECT_EQ(acquisition.row_bytes(), 6);
    tick_channel(3, *Add_OD_To_CH(0x200101, channel(3), dictionary, language) + 1);
    EXPECT_EQ(acquisition.row_bytes(), 7);
    acquisition.pick_object(0, 0);  // ticked, but without an object
    EXPECT_EQ(acquisition.row_bytes(), 3);
}

TEST_F(AcquisitionChannels, OtherTypesAddNothingToARow) {
    AcquisitionBench text({record("1008", "00", "name", "Visible String", "[ASCII]N*1")});
    Add_OD_To_CH(0x100800, text.channel(0), text.dictionary, text.language);
    text.acquisition.pick_object(0, 1);
    text.acquisition.click_enable(0);
    EXPECT_TRUE(text.channel(0).enable);
    EXPECT_EQ(text.acquisition.row_bytes(), 0);
    EXPECT_EQ(text.sent(), (Frames{write4(1, 0x10080000)}));
}

TEST_F(AcquisitionTrigger, PickListsUnitsAndWritesTheSource) {
    acquisition.pick_trigger(3);
    EXPECT_EQ(sent(), (Frames{write4(12, kNarrowSpeed)}));
    EXPECT_EQ(channel(kTrigger).unitList.items, (std::vector<std::string>{"rpm", "DEC"}));
    EXPECT_EQ(data.lastObjectPick[8], 3);
    acquisition.pick_trigger(4);
    EXPECT_EQ(sent(), (Frames{write4(12, kPosition)}));
}

TEST_F(AcquisitionTrigger, EmptyChoiceWritesNone) {
    acquisition.pick_trigger(3);
    sent();
    acquisition.pick_trigger(0);
    EXPECT_EQ(sent(), (Frames{write4(12, 0)}));
    EXPECT_EQ(data.lastObjectPick[8], 0);
}

TEST_F(AcquisitionTrigger, PickOutsideOfTheListIsNone) {
    acquisition.pick_trigger(9);
    EXPECT_EQ(sent(), Frames{});
    EXPECT_EQ(channel(kTrigger).objectList.ListIndex, 0);
}

TEST_F(AcquisitionTrigger, EdgePictureChangesOnlyWhenReadBack) {
    acquisition.Image5_Click();
    EXPECT_EQ(sent(), (Frames{write1(11, 1)}));
    EXPECT_EQ(data.edge, 0);
    setting(11, 1, 0x4F);
    EXPECT_EQ(data.edge, 1);
    acquisition.Image5_Click();
    EXPECT_EQ(sent(), (Frames{write1(11, 0)}));
    EXPECT_EQ(data.edge, 1);
}

TEST_F(AcquisitionTrigger, LevelIsConvertedByTheUnitPicked) {
    acquisition.pick_trigger(3);
    sent();
    data.Text4 = "12.34";
    acquisition.enter_text4();
    EXPECT_EQ(sent(), (Frames{write4(13, 123)}));  // 123.4 raw
    data.Text4 = "12.35";
    acquisition.enter_text4();
    EXPECT_EQ(sent(), (Frames{write4(13, 124)}));  // 123.5: to the even neighbour
    channel(kTrigger).unitList.ListIndex = 1;
    data.Text4 = "-7";
    acquisition.enter_text4();
    EXPECT_EQ(sent(), (Frames{write4(13, 0xFFFFFFF9)}));
}

TEST_F(AcquisitionTrigger, LevelWithoutASourceIsIgnored) {
    data.Text4 = "5";
    acquisition.enter_text4();
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionTrigger, LevelWithoutAUnitIsIgnored) {
    acquisition.pick_trigger(3);
    sent();
    channel(kTrigger).unitList.ListIndex = -1;
    acquisition.enter_text4();
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionTrigger, LevelBeyondTheRangeOfAWriteIsRefused) {
    acquisition.pick_trigger(4);
    sent();
    data.Text4 = "12345678901";  // too long to be a value at all
    acquisition.enter_text4();
    data.Text4 = "2147483648";
    acquisition.enter_text4();
    EXPECT_EQ(sent(), Frames{});
    data.Text4 = "2147483647";
    acquisition.enter_text4();
    EXPECT_EQ(sent(), (Frames{write4(13, 0x7FFFFFFF)}));
}

TEST_F(AcquisitionTrigger, LevelWhoseFormulaFailsWritesNothing) {
    AcquisitionBench bad({record("2003", "00", "bad", "Integer16", "[DEC bad]N\n[bad DEC]lg()")});
    Add_OD_To_CH(0x200300, bad.channel(kTrigger), bad.dictionary, bad.language);
    bad.acquisition.pick_trigger(1);
    bad.sent();
    bad.acquisition.enter_text4();
    EXPECT_EQ(bad.sent(), Frames{});
}

TEST_F(AcquisitionBoxes, PeriodOffsetAndCountGoToTheirObjects) {
    data.Text1 = "16";
    EXPECT_TRUE(acquisition.enter_text1());
    EXPECT_EQ(sent(), (Frames{write2(8, 16)}));
    data.Text2 = "250.5";  // halves to the even neighbour
    EXPECT_TRUE(acquisition.enter_text2());
    EXPECT_EQ(sent(), (Frames{write2(9, 250)}));
    data.Text3 = "1000abc";
    EXPECT_TRUE(acquisition.enter_text3());
    EXPECT_EQ(sent(), (Frames{write2(10, 1000)}));
}

TEST_F(AcquisitionBoxes, TextThatIsNoNumberIsZeroAndNegativeOnesTravelWhole) {
    data.Text2 = "abc";
    EXPECT_TRUE(acquisition.enter_text2());
    data.Text2 = "-5";
    EXPECT_TRUE(acquisition.enter_text2());
    EXPECT_EQ(sent(), (Frames{write2(9, 0), write2(9, 0xFFFFFFFB)}));
}

TEST_F(AcquisitionBoxes, NumberBeyondTheRangeOfAWriteKeepsTheFocus) {
    data.Text3 = "1E99";
    EXPECT_FALSE(acquisition.enter_text3());
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionBoxes, KeyFilter) {
    struct Case {
        char32_t key;
        const char* text;
        bool passes;
    };
    const std::vector<Case> cases{
        {8, "12", true},    {8, "", true},        {U'.', "12", true},   {U'.', "1.2", false},
        {U'-', "12", true}, {U'-', "-12", false}, {U'-', "1-2", false}, {U'0', "", true},
        {U'9', "1", true},  {U'a', "", true},     {U'Z', "", true},     {13, "12", false},
        {U' ', "1", false}, {U'+', "1", false},   {U',', "1", false},   {9, "1", false},
        {27, "1", false},   {0x4E2D, "1", false}, {U'/', "1", false},   {U':', "1", false},
        {U'@', "1", false}, {U'[', "1", false},   {U'`', "1", false},   {U'{', "1", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Acquisition::passes_filter(c.key, c.text), c.passes)
            << static_cast<unsigned>(c.key) << " in " << c.text;
}

TEST_F(AcquisitionBoxes, PeriodAsTime) {
    EXPECT_EQ(Acquisition::period_text(1), "62.5us");
    EXPECT_EQ(Acquisition::period_text(2), "125us");
    EXPECT_EQ(Acquisition::period_text(15), "937.5us");
    EXPECT_EQ(Acquisition::period_text(16), "1ms");
    EXPECT_EQ(Acquisition::period_text(17), "1062.5us");
    EXPECT_EQ(Acquisition::period_text(160), "10ms");
    EXPECT_EQ(Acquisition::period_text(65535), "4095937.5us");
    EXPECT_EQ(Acquisition::period_text(0), "0ms");
}
