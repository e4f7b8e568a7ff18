// The settings that the drive holds, as they come back.
#include <gtest/gtest.h>

#include "params/object_browser.h"
#include "scope/acquisition_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;
using link::Received;

namespace {

using Frames = std::vector<Sent>;

struct AcquisitionRefresh : testing::Test, AcquisitionBench {};

}  // namespace

TEST_F(AcquisitionRefresh, SixSlotsInOrderSetTheChannels) {
    settings({kCurrent, kQCurrent, 0, kNarrowSpeed, 0, 0});
    EXPECT_EQ(recorded(0), 0x607800);
    EXPECT_EQ(recorded(1), 0x60F60C);
    EXPECT_FALSE(channel(2).enable);
    EXPECT_EQ(recorded(3), 0x60F916);
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(channel(3).unitList.text(), "rpm");
    EXPECT_EQ(sent(), Frames{});  // what the drive said is not written back
}

TEST_F(AcquisitionRefresh, NothingIsSetBeforeTheSixth) {
    settings({kCurrent, kQCurrent, 0, kNarrowSpeed, 0});
    EXPECT_FALSE(channel(0).enable);
    EXPECT_EQ(data.driveConfigNext, 5);
    EXPECT_EQ(data.driveConfigValues[0], 0x607800);
    setting(6, 0);
    EXPECT_EQ(recorded(0), 0x607800);
}

TEST_F(AcquisitionRefresh, SubOutOfOrderIsNotTaken) {
    setting(2, kQCurrent);
    EXPECT_EQ(data.driveConfigNext, 0);
    setting(1, kCurrent);
    setting(3, kCurrent);
    EXPECT_EQ(data.driveConfigNext, 1);
    setting(1, kNarrowSpeed);
    EXPECT_EQ(data.driveConfigNext, 1);
    EXPECT_EQ(data.driveConfigValues[0], 0x607800);
    setting(2, kQCurrent);
    EXPECT_EQ(data.driveConfigNext, 2);
}

TEST_F(AcquisitionRefresh, EmptySlotUnticksAndKeepsTheObject) {
    tick_channel(1, 2);
    data.curvesChanged = false;
    settings({0, 0, 0, 0, 0, 0});
    EXPECT_FALSE(channel(1).enable);
    EXPECT_EQ(channel(1).objectList.ListIndex, 2);
    EXPECT_TRUE(data.curvesChanged);
}

TEST_F(AcquisitionRefresh, UnchangedTicksLeaveTheCurvesAsTheyAre) {
    settings({kCurrent, 0, 0, 0, 0, 0});
    data.curvesChanged = false;
    settings({kCurrent, 0, 0, 0, 0, 0});
    EXPECT_FALSE(data.curvesChanged);
}

TEST_F(AcquisitionRefresh, WideSlotWithChannels1And2UntickedLandsInChannel1Not2) {
    settings({0, 0, 0, 0, kPosition, 0});
    EXPECT_EQ(recorded(0), 0x606300);
    EXPECT_FALSE(channel(1).enable);
}

TEST_F(AcquisitionRefresh, WideSlotsByTheTicks) {
    struct Case {
        bool first;
        bool second;
        int lands;  // 0: in the first channel, 1: in the second
    };
    for (const Case& c :
         {Case{false, false, 0}, Case{true, false, 0}, Case{true, true, 0}, Case{false, true, 1}}) {
        for (const int pair : {0, 2}) {
            AcquisitionBench fresh;
            fresh.channel(pair).enable = c.first;
            fresh.channel(pair + 1).enable = c.second;
            std::vector<std::uint32_t> slots{0, 0, 0, 0, 0, 0};
            slots.at(static_cast<std::size_t>(4 + pair / 2)) = kPosition;
            fresh.settings(slots);
            EXPECT_EQ(fresh.channel(pair).enable, c.lands == 0) << c.first << c.second << pair;
            EXPECT_EQ(fresh.channel(pair + 1).enable, c.lands == 1) << c.first << c.second << pair;
            EXPECT_EQ(fresh.channel(pair + c.lands).picked()->key, 0x606300);
        }
    }
}

TEST_F(AcquisitionRefresh, WideSlotReplacesTheNarrowOne) {
    settings({kCurrent, kQCurrent, 0, 0, kPosition, 0});
    EXPECT_EQ(recorded(0), 0x606300);
    EXPECT_EQ(recorded(1), 0x60F60C);
}

TEST_F(AcquisitionRefresh, NarrowPickOnATickedWideChannelComesBackUntilTheChannelIsClearedFirst) {
    tick_channel(0, 4);
    acquisition.pick_object(0, 1);
    EXPECT_EQ(sent(), (std::vector<Sent>{write4(1, kCurrent)}));  // the wide slot stays
    settings({kCurrent, 0, 0, 0, kPosition, 0});
    EXPECT_EQ(recorded(0), 0x606300);
    // The way that works: the empty choice clears both slots.
    acquisition.pick_object(0, 0);
    EXPECT_EQ(sent(), (std::vector<Sent>{write4(1, 0), write4(5, 0)}));
    settings({0, 0, 0, 0, 0, 0});
    tick_channel(0, 1);
    settings({kCurrent, 0, 0, 0, 0, 0});
    EXPECT_EQ(recorded(0), 0x607800);
}

TEST_F(AcquisitionRefresh, ObjectThatTheListDoesNotHaveIsAdded) {
    settings({kState, 0, 0, 0, 0, 0});
    EXPECT_EQ(recorded(0), 0x200101);
    EXPECT_EQ(channel(0).objectList.ListIndex, 7);
    EXPECT_EQ(channel(0).objectList.text(), "state");
    EXPECT_EQ(acquisition.row_bytes(), 1);
}

TEST_F(AcquisitionRefresh, ObjectUnknownToTheDictionaryIsRecordedButNotNamed) {
    tick_channel(0, 1);
    settings({0x12345610, 0, 0, 0, 0, 0});
    EXPECT_TRUE(channel(0).enable);
    EXPECT_EQ(channel(0).objectList.ListIndex, 0);
    EXPECT_EQ(acquisition.row_bytes(), 0);
    settings({kCurrent, 0, 0, 0, 0, 0});
    EXPECT_EQ(recorded(0), 0x607800);
}

TEST_F(AcquisitionRefresh, ChannelPickedInTheMeantimeIsLeftAlone) {
    channel(0).objectList.ListIndex = 2;  // no longer what lastObjectPick says
    settings({kCurrent, kCurrent, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).objectList.ListIndex, 2);
    EXPECT_FALSE(channel(0).enable);
    EXPECT_EQ(recorded(1), 0x607800);
}

TEST_F(AcquisitionRefresh, UnitPickSurvivesWhileTheObjectStays) {
    settings({kNarrowSpeed, 0, 0, 0, 0, 0});
    channel(0).unitList.ListIndex = 1;
    settings({kNarrowSpeed, 0, 0, 0, 0, 0});
    EXPECT_EQ(channel(0).unitList.text(), "DEC");
}

TEST_F(AcquisitionRefresh, AssignmentsFromTheDictionaryBrowserShowUpOneAfterAnother) {
    std::vector<std::uint32_t> slots{0, 0, 0, 0, 0, 0};
    for (const std::uint32_t value : {kCurrent, kQCurrent, kState}) {
        ASSERT_EQ(params::scope_selector(0, 16), 0x23000104U);
        slots[0] = value;
        settings(slots);
        EXPECT_EQ(recorded(0), static_cast<dictionary::Identity>(value >> 8));
    }
    ASSERT_EQ(params::scope_selector(0, 32), 0x23000504U);
    slots[4] = kPosition;
    settings(slots);
    EXPECT_EQ(recorded(0), 0x606300);
}

TEST_F(AcquisitionRefresh, AbortEchoAndForeignAnswersAreDropped) {
    EXPECT_EQ(say(payload(0x80, 0x230001, kCurrent)), Received::kTaken);
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(say(payload(0x40, 0x230001, kCurrent)), Received::kTaken);
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(say(payload(0x60, 0x230001, kCurrent)), Received::kTaken);  // a write's answer
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(say(payload(0x43, 0x230101, kCurrent)), Received::kIgnored);
    EXPECT_EQ(data.driveConfigNext, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(AcquisitionRefresh, TriggerSourceIsShown) {
    setting(12, kNarrowSpeed);
    EXPECT_EQ(channel(kTrigger).picked()->key, 0x60F916);
    EXPECT_EQ(channel(kTrigger).unitList.text(), "rpm");
    EXPECT_EQ(data.lastObjectPick[8], 3);
    setting(12, kState);
    EXPECT_EQ(channel(kTrigger).picked()->key, 0x200101);
    setting(12, 0);
    EXPECT_EQ(channel(kTrigger).objectList.ListIndex, 0);
    EXPECT_EQ(sent(), Frames{});
}

TEST_F(AcquisitionRefresh, TriggerPickedInTheMeantimeIsLeftAlone) {
    channel(kTrigger).objectList.ListIndex = 2;
    setting(12, kNarrowSpeed);
    EXPECT_EQ(channel(kTrigger).objectList.ListIndex, 2);
    setting(12, 0);
    EXPECT_EQ(channel(kTrigger).objectList.ListIndex, 2);
}

TEST_F(AcquisitionRefresh, UnknownTriggerSourceIsTheEmptyChoice) {
    setting(12, kNarrowSpeed);
    setting(12, 0x12345610);
    EXPECT_EQ(channel(kTrigger).objectList.ListIndex, 0);
}

TEST_F(AcquisitionRefresh, LevelIsDecodedByTheTypeOfTheSource) {
    setting(12, kNarrowSpeed);  // int16, tenths of rpm
    setting(13, 0x0000FF38);
    EXPECT_EQ(data.Text4, "-20.00");
    setting(12, kPosition);  // int32
    channel(kTrigger).unitList.ListIndex = 1;
    setting(13, 0xFFFFFFFE);
    EXPECT_EQ(data.Text4, "-2");
    setting(12, kState);  // uint8
    channel(kTrigger).unitList.ListIndex = 1;
    setting(13, 0x12FF);
    EXPECT_EQ(data.Text4, "255");
}

TEST_F(AcquisitionRefresh, LevelIsSparedWhileItIsTyped) {
    setting(12, kNarrowSpeed);
    data.focus = "Text4";
    setting(13, 100);
    EXPECT_EQ(data.Text4, "500");
    data.focus = "Text3";
    setting(13, 100);
    EXPECT_EQ(data.Text4, "10.00");
}

TEST_F(AcquisitionRefresh, LevelWithoutASourceOrAUnitIsNotShown) {
    setting(13, 100);
    EXPECT_EQ(data.Text4, "500");
    setting(12, kNarrowSpeed);
    channel(kTrigger).unitList.ListIndex = -1;
    setting(13, 100);
    EXPECT_EQ(data.Text4, "500");
}

TEST_F(AcquisitionRefresh, LevelWhoseFormulaFailsEndsTheTickAndKeepsTheText) {
    AcquisitionBench bad({record("2003", "00", "bad", "Integer16", "[DEC bad]lg()")});
    bad.setting(12, 0x20030010);
    EXPECT_EQ(bad.setting(13, 100), Received::kEndTick);
    EXPECT_EQ(bad.data.Text4, "500");
}

TEST_F(AcquisitionRefresh, EdgeIsOneOrTheOtherPicture) {
    setting(11, 1, 0x4F);
    EXPECT_EQ(data.edge, 1);
    setting(11, 2, 0x4F);
    EXPECT_EQ(data.edge, 0);
    data.focus = "Combo10";
    setting(11, 1, 0x4F);
    EXPECT_EQ(data.edge, 0);
    data.focus = "Image5";
    setting(11, 1, 0x4F);
    EXPECT_EQ(data.edge, 1);
    setting(11, 0x100, 0x4F);  // the first byte alone counts
    EXPECT_EQ(data.edge, 0);
}

TEST_F(AcquisitionRefresh, BoxesShowUnsigned16BitValuesUnlessTheyHaveTheFocus) {
    setting(10, 0x1FFFF, 0x4B);
    EXPECT_EQ(data.Text3, "65535");
    setting(9, 40000, 0x4B);
    EXPECT_EQ(data.Text2, "40000");
    setting(8, 16, 0x4B);
    EXPECT_EQ(data.Text1, "16");
    EXPECT_EQ(data.Label18, "1ms");
    data.focus = "Text3";
    setting(10, 7, 0x4B);
    EXPECT_EQ(data.Text3, "65535");
    data.focus = "Text2";
    setting(9, 7, 0x4B);
    EXPECT_EQ(data.Text2, "40000");
    data.focus = "Text1";
    setting(8, 3, 0x4B);
    EXPECT_EQ(data.Text1, "16");
    EXPECT_EQ(data.Label18, "1ms");
    data.focus.clear();
    setting(8, 3, 0x4B);
    EXPECT_EQ(data.Label18, "187.5us");
}

TEST_F(AcquisitionRefresh, ImportModeTakesNoSettings) {
    settings({kCurrent, 0, 0, 0, 0});
    data.importMode = true;
    EXPECT_TRUE(acquisition.settings_known());
    setting(6, 0);
    setting(10, 7);
    EXPECT_FALSE(channel(0).enable);
    EXPECT_EQ(data.Text3, "500");
}
