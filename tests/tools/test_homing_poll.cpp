// Values of the drive on the homing form: what the poller brings, what boxes and lists write.
#include <gtest/gtest.h>

#include "homing_form.h"

namespace servo::tools {
namespace {

using enum HomingEntry;
using namespace test;

class HomingPoll : public ::testing::Test, protected test::HomingForm {
  protected:
    int list(HomingList which) const { return data().lists[static_cast<std::size_t>(which)]; }
};

TEST_F(HomingPoll, NineRowsInTheOrderOfTheFile) {
    ASSERT_EQ(form.get_ODS_Num(), 8);
    const std::vector<std::pair<link::Identity, std::string>> told{
        {0x607C00, "int32"},  {0x609800, "int8"},  {0x609901, "uint32"},
        {0x609902, "uint32"}, {0x215001, "uint8"}, {0x609A00, "uint32"},
        {0x215002, "int32"},  {0x215004, "uint8"}, {0x215003, "uint8"}};
    for (int row = 0; row <= 8; ++row) {
        EXPECT_EQ(form.get_ods(row), told[static_cast<std::size_t>(row)].first);
        EXPECT_EQ(form.get_odtype(row), told[static_cast<std::size_t>(row)].second);
    }
    EXPECT_EQ(form.get_ods(9), 0);
    EXPECT_EQ(form.get_ods(-1), 0);
    EXPECT_EQ(form.get_odtype(9), "");
}

TEST_F(HomingPoll, AFileWithMoreRowsHasNineAndOneWithFewerThose) {
    folder.put("sys/HomingMode.ini", std::string(kRowsFile) + "more 607D01\r\n");
    ASSERT_TRUE(form.load(folder.path()));
    EXPECT_EQ(form.get_ODS_Num(), 8);
    folder.put("sys/HomingMode.ini", "title\r\nheading\r\noffset 607C00\r\nmethod 609800\r\n");
    ASSERT_TRUE(form.load(folder.path()));
    EXPECT_EQ(form.get_ODS_Num(), 1);
    form.set_ods(5, 100);
    enter(Text5, "100");
    form.list_Click(HomingList::Combo1, 1);
    form.Check4_Click();
    EXPECT_TRUE(writes.empty()) << "their rows are not there";
    EXPECT_EQ(text(Text5), "100");
}

TEST_F(HomingPoll, ValuesAreShownInTheirUnits) {
    form.set_ods(kOffset, -1000);
    form.set_ods(kMethod, -18);
    form.set_ods(kSpeed, 546133);
    form.set_ods(kBackSpeed, 136533);
    form.set_ods(kAcceleration, 16384);
    form.set_ods(kCurrent, 546);
    EXPECT_EQ(text(Text3), "-1000");
    EXPECT_EQ(data().Label3, "-18");
    EXPECT_EQ(text(Text2), "200.00");
    EXPECT_EQ(text(Text4), "50.00");
    EXPECT_EQ(text(Text5), "100.00");
    EXPECT_EQ(text(Text6), "4.00");
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingPoll, UnitsStandBesideTheBoxes) {
    EXPECT_EQ(homing_unit(Text2), "rpm");
    EXPECT_EQ(homing_unit(Text3), "");
    EXPECT_EQ(homing_unit(Text4), "rpm");
    EXPECT_EQ(homing_unit(Text5), "rps/s");
    EXPECT_EQ(homing_unit(Text6), "Ap");
}

TEST_F(HomingPoll, EntriesAreConvertedAndWrittenInThirtyTwoBits) {
    enter(Text3, "-1000");
    enter(Text2, "200");
    enter(Text4, "50.5");
    enter(Text5, "100");
    enter(Text6, "4");
    EXPECT_EQ(writes, (std::vector<Write>{{0x607C0004, -1000},
                                          {0x60990104, 546133},
                                          {0x60990204, 137899},
                                          {0x609A0004, 16384},
                                          {0x21500204, 546}}));
    EXPECT_EQ(observer.focus_moves, 5) << "to the description";
}

// The told width is 32 bits, whatever the dictionary says of the object.
TEST_F(HomingPoll, TheWidthOfAWriteIsNotTheTypes) {
    folder.put("sys/HomingMode.ini", "title\r\nheading\r\nbyte 215001\r\n");
    ASSERT_TRUE(form.load(folder.path()));
    EXPECT_EQ(form.get_odtype(0), "uint8");
    enter(Text3, "5");
    EXPECT_EQ(writes, (std::vector<Write>{{0x21500104, 5}}));
}

TEST_F(HomingPoll, AValueOutOfRangeIsNotWrittenAndGivesNoMessage) {
    enter(Text3, "2147483648");
    enter(Text3, "9999999999");
    enter(Text3, "12345678901");  // more than ten characters
    enter(Text2, "99999999");
    EXPECT_TRUE(writes.empty());
    EXPECT_TRUE(notice.boxes.empty());
    enter(Text3, "2147483647");
    enter(Text3, "-214748364");
    EXPECT_EQ(writes, (std::vector<Write>{{0x607C0004, 2147483647}, {0x607C0004, -214748364}}));
}

TEST_F(HomingPoll, AnEmptyEntryWritesZero) {
    enter(Text3, "");
    EXPECT_EQ(writes, (std::vector<Write>{{0x607C0004, 0}}));
}

TEST_F(HomingPoll, DigitsBackspaceMinusAndPointPassInTheEntries) {
    for (const HomingEntry entry : kHomingEntries)
        for (char32_t key = 1; key < 0x250; ++key) {
            if (key == 13 || key == 27) continue;
            const bool passes = (key >= '0' && key <= '9') || key == 8 || key == '-' || key == '.';
            ASSERT_EQ(form.KeyPress(entry, key), !passes) << static_cast<unsigned>(key);
        }
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingPoll, LeavingABoxNeverWrites) {
    form.enter(Text2);
    form.type(Text2, "300");
    form.leave(Text2);
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingPoll, ThePollDoesNotDisturbABoxInUse) {
    form.set_ods(kSpeed, 546133);
    form.enter(Text2);
    form.type(Text2, "3");
    form.set_ods(kSpeed, 546134);
    EXPECT_EQ(text(Text2), "3");
    form.leave(Text2);
    form.set_ods(kSpeed, 546133);
    EXPECT_EQ(text(Text2), "200.00");
}

TEST_F(HomingPoll, BehindEnterTheBoxShowsTheDriveAgain) {
    form.set_ods(kSpeed, 546133);
    enter(Text2, "99999999");
    form.set_ods(kSpeed, 546133);
    EXPECT_EQ(text(Text2), "200.00");
}

TEST_F(HomingPoll, EscapeGivesTheDrivesValueBack) {
    form.set_ods(kSpeed, 546133);
    form.enter(Text2);
    form.type(Text2, "3");
    EXPECT_TRUE(form.KeyPress(Text2, 27));
    EXPECT_EQ(text(Text2), "200.00");
    EXPECT_EQ(observer.focus_moves, 1);
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingPoll, BoxAndListsWriteAtOnceInEightBits) {
    form.Check4_Click();
    form.Check4_Click();
    form.list_Click(HomingList::Combo1, 1);
    form.list_Click(HomingList::Combo2, 2);
    EXPECT_EQ(writes, (std::vector<Write>{
                          {0x21500101, 1}, {0x21500101, 0}, {0x21500401, 1}, {0x21500301, 2}}));
}

TEST_F(HomingPoll, AListHasNoOtherItems) {
    form.list_Click(HomingList::Combo1, 2);
    form.list_Click(HomingList::Combo2, 3);
    form.list_Click(HomingList::Combo2, -1);
    EXPECT_TRUE(writes.empty());
    EXPECT_EQ(list(HomingList::Combo1), -1);
}

TEST_F(HomingPoll, APolledValueSetsBoxAndListsAndWritesNothing) {
    form.set_ods(kPowerUp, 1);
    form.set_ods(kOffsetMode, 1);
    form.set_ods(kBlind, 2);
    EXPECT_TRUE(data().Check4);
    EXPECT_EQ(list(HomingList::Combo1), 1);
    EXPECT_EQ(list(HomingList::Combo2), 2);
    form.set_ods(kPowerUp, 0);
    EXPECT_FALSE(data().Check4);
    EXPECT_TRUE(writes.empty());
}

TEST_F(HomingPoll, TheIndexStoredLastIsNotTakenAgain) {
    form.set_ods(kBlind, 2);
    const int changes = observer.changes;
    form.set_ods(kBlind, 2);
    form.set_ods(kBlind, 2);
    EXPECT_EQ(observer.changes, changes);
    EXPECT_TRUE(writes.empty());
    form.list_Click(HomingList::Combo2, 1);
    form.set_ods(kBlind, 1);
    EXPECT_EQ(writes.size(), 1U) << "the drive's echo of the click is no new pick";
    form.set_ods(kBlind, 0);
    EXPECT_EQ(list(HomingList::Combo2), 0) << "the drive did not take it";
}

TEST_F(HomingPoll, AnIndexWithoutAnItemShowsNone) {
    form.set_ods(kBlind, 1);
    form.set_ods(kBlind, 3);
    EXPECT_EQ(list(HomingList::Combo2), -1);
    form.set_ods(kOffsetMode, 200);
    EXPECT_EQ(list(HomingList::Combo1), -1);
    form.set_ods(kBlind, 1);
    EXPECT_EQ(list(HomingList::Combo2), 1);
}

TEST_F(HomingPoll, AnUnknownResolutionShowsAndWritesZero) {
    operands.o64100320 = {};
    form.set_ods(kSpeed, 546133);
    EXPECT_EQ(text(Text2), "0.00");
    enter(Text2, "200");
    EXPECT_EQ(writes, (std::vector<Write>{{0x60990104, 0}}));
}

TEST_F(HomingPoll, RowsBeyondTheFormAreIgnored) {
    form.set_ods(9, 1);
    form.set_ods(-1, 1);
    EXPECT_EQ(observer.changes, 0);
}

}  // namespace
}  // namespace servo::tools
