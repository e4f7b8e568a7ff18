// The form on the virtual bench: what goes over the line, in which order, and what a drive that
// refuses or is silent leaves on screen.
#include <gtest/gtest.h>

#include "digital_io_bench.h"

namespace servo::tools::test {
namespace {

struct DigitalIOLine : testing::Test, LineIO {
    // Identities of the requests behind the last write, in their order.
    std::vector<link::Identity> reads_behind_last_write() const {
        std::vector<link::Identity> reads;
        for (const FakeDrive::Request& request : drive.requests) {
            if (is_write(request.payload))
                reads.clear();
            else
                reads.push_back(link::reply_key(request.payload));
        }
        return reads;
    }
    static std::vector<link::Identity> identities(int lane) {
        std::vector<link::Identity> found;
        for (const link::WireKey key : link::Engine::status_list(lane))
            found.push_back(dictionary::identity_of(key));
        return found;
    }
};

TEST_F(DigitalIOLine, TheBlockPaintsTheWholeForm) {
    drive.objects[0x201001].value = 0x01;
    drive.objects[0x201002].value = 0x02;
    drive.objects[0x20100A].value = 0x04;
    drive.objects[0x20100B].value = 0x08;
    drive.objects[0x20100D].value = 0x10;
    drive.objects[0x20100E].value = 0x20;
    drive.objects[0x201015].value = 0x40;
    drive.objects[0x201014].value = 0x41;
    drive.objects[0x201003].value = 0x0001;
    drive.objects[0x20101D].value = 0x9040;
    drive.objects[0x20101F].value = 0x8001;
    connect();
    const auto byte = [this](IoSide side, IoColumn column) {
        int value = 0;
        for (int bit = 0; bit < kBits; ++bit)
            if (form.data().box(first_row(side) + bit, column)) value |= 1 << bit;
        return value;
    };
    EXPECT_EQ(byte(IoSide::kInput, IoColumn::kSimulate), 0x01);
    EXPECT_EQ(byte(IoSide::kInput, IoColumn::kPolarity), 0x02);
    EXPECT_EQ(byte(IoSide::kInput, IoColumn::kInternal), 0x04);
    EXPECT_EQ(byte(IoSide::kInput, IoColumn::kReal), 0x08);
    EXPECT_EQ(byte(IoSide::kOutput, IoColumn::kSimulate), 0x10);
    EXPECT_EQ(byte(IoSide::kOutput, IoColumn::kPolarity), 0x20);
    EXPECT_EQ(byte(IoSide::kOutput, IoColumn::kInternal), 0x40);
    EXPECT_EQ(byte(IoSide::kOutput, IoColumn::kReal), 0x41);
    EXPECT_EQ(form.Text1(0), "Enable");
    EXPECT_EQ(form.Text1(7), "Fast Capture2");
    EXPECT_EQ(form.Text1(14), "PosTable Active");
    EXPECT_TRUE(writes().empty());
}

TEST_F(DigitalIOLine, LiveStatesFollowTheDriveWithNoPageOpen) {
    connect();
    drive.objects[0x20100B].value = 0x80;
    run_turn();
    EXPECT_TRUE(form.data().box(7, IoColumn::kReal));
    drive.objects[0x20100B].value = 0;
    run_turn();
    EXPECT_FALSE(form.data().box(7, IoColumn::kReal));
}

TEST_F(DigitalIOLine, BehindAWriteLane1RunsOnceMoreBeforeTheWheelGoesOn) {
    connect();
    drive.requests.clear();
    form.Command1_Click(0);
    form.checkboxdin_Click(0);
    form.Command2_Click();
    ASSERT_TRUE(run_until([this] { return engine.state.Com_Change == 1; }, 10s));
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201003, 1)}));
    std::vector<link::Identity> told = identities(0);
    for (int pass = 0; pass < 2; ++pass)
        for (const link::Identity object : identities(1))
            told.push_back(object);
    EXPECT_EQ(reads_behind_last_write(), told);
    EXPECT_EQ(form.Text1(0), "Enable") << "the first answer is dropped, the second is shown";
    EXPECT_FALSE(form.data().rows[0].waiting);
}

TEST_F(DigitalIOLine, AWriteThatTheDriveRefusesIsReadBackAsItIs) {
    connect();
    drive.answers = [](const link::Payload& payload) { return !is_write(payload); };
    drive.objects[0x201003].value = 0x0001;
    run_turn();
    drive.refuse.insert(0x201003);
    form.Command1_Click(0);
    form.checkboxdin_Click(0);
    form.Command2_Click();
    run_turn();
    EXPECT_TRUE(notice.boxes.empty()) << "nobody is told of a refused write";
    EXPECT_EQ(form.Text1(0), "Enable");
    EXPECT_TRUE(form.data().rows[0].waiting) << "nothing was read back";
    drive.refuse.clear();
    drive.objects[0x201003].value = 0x0004;
    run_turn();
    run_turn();
    EXPECT_EQ(form.Text1(0), "Operate Mode Sel");
    EXPECT_FALSE(form.data().rows[0].waiting);
}

TEST_F(DigitalIOLine, AWriteThatTheLineLosesShowsTheDrivesOldState) {
    drive.objects[0x201002].value = 0x0F;
    connect();
    line.set_cut(true);
    form.Check1_Click(7);
    EXPECT_TRUE(form.data().box(7, IoColumn::kPolarity)) << "the box counts as flipped";
    run_for(5ms);
    line.set_cut(false);
    run_turn();
    EXPECT_FALSE(form.data().box(7, IoColumn::kPolarity)) << "the drive says what it has";
    EXPECT_EQ(drive.value(0x201002), 0x0F);
}

TEST_F(DigitalIOLine, AnObjectThatTheDriveDoesNotHaveLeavesTheRestAlone) {
    drive.refuse.insert(0x20101D);
    drive.refuse.insert(0x20100D);
    drive.objects[0x201003].value = 1;
    open_link();
    ASSERT_TRUE(run_until([this] { return form.data().rows[14].fresh; }, 10s));
    EXPECT_EQ(form.Text1(0), "Enable");
    EXPECT_FALSE(form.data().rows[7].seen);
    EXPECT_FALSE(form.data().column(IoSide::kOutput, IoColumn::kSimulate).fresh);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(DigitalIOLine, TwoClicksInARowBothReachTheDrive) {
    connect();
    form.Check3_Click(0);
    form.Check3_Click(5);
    run_turn();
    EXPECT_EQ(drive.value(0x201001), 0x21);
    EXPECT_EQ(writes(), (std::vector<Write>{word_write(0x201001, 1), word_write(0x201001, 0x21)}));
    EXPECT_TRUE(form.data().box(0, IoColumn::kSimulate));
    EXPECT_TRUE(form.data().box(5, IoColumn::kSimulate));
}

TEST_F(DigitalIOLine, ColumnControlsReachTheDrive) {
    drive.objects[0x20100E].value = 0x55;
    connect();
    form.Image1_Click(IoSide::kOutput);
    run_turn();
    EXPECT_EQ(drive.value(0x20100E), 0xAA);
    EXPECT_TRUE(form.data().box(9, IoColumn::kPolarity));
    EXPECT_TRUE(form.data().box(15, IoColumn::kPolarity)) << "the row without a pin goes along";
}

TEST_F(DigitalIOLine, Command7EmptiesAllInputs) {
    for (const link::Identity object : {0x201003, 0x201006, 0x20101D, 0x20100F})
        drive.objects[object].value = 1;
    connect();
    EXPECT_EQ(form.Text1(7), "Enable");
    form.Command7_Click();
    run_turn();
    for (int row = 0; row < kInputPins; ++row)
        EXPECT_EQ(form.Text1(row), "") << row;
    EXPECT_EQ(form.Text1(8), "Ready");
}

TEST_F(DigitalIOLine, Command8EmptiesAllOutputsAndTheKeyTwoIsRefusedInSilence) {
    for (const link::Identity object : {0x20100F, 0x201013, 0x20101E, 0x20101F, 0x201003})
        drive.objects[object].value = 1;
    connect();
    form.Command8_Click();
    run_turn();
    const auto sent = writes();
    ASSERT_EQ(sent.size(), 8U);
    EXPECT_EQ(sent.front(), word_write(0, 0));
    for (int row = kInputPins; row < kPinlessRow; ++row)
        EXPECT_EQ(form.Text1(row), "") << row;
    EXPECT_EQ(form.Text1(0), "Enable");
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(DigitalIOLine, Command6ShowsWithTheNextTurnsOfTheWheel) {
    drive.objects[0x201005].value = 0x40;
    connect();
    form.Command6_Click(2);
    run_for(20ms);
    EXPECT_EQ(drive.value(0x201005), 0);
    run_turn();
    EXPECT_EQ(form.Text1(2), "Home Signal") << "the first answer behind a write is dropped";
    run_turn();
    EXPECT_EQ(form.Text1(2), "");
}

TEST_F(DigitalIOLine, ClosingTheLinkKeepsTheLastStates) {
    drive.objects[0x20100A].value = 0x03;
    connect();
    communication.Command1_Click();
    EXPECT_FALSE(form.data().link_open);
    EXPECT_TRUE(form.data().box(1, IoColumn::kInternal));
    EXPECT_FALSE(form.data().column(IoSide::kInput, IoColumn::kInternal).fresh);
    run_for(12s);
    EXPECT_GE(form.age()->count(), 12);
    open_link();
    EXPECT_TRUE(form.data().link_open);
    ASSERT_TRUE(run_until([this] { return known(); }, 10s));
}

TEST_F(DigitalIOLine, ALineThatGoesDeadEndsWithOldStates) {
    connect();
    drive.silent = true;
    ASSERT_TRUE(run_until([this] { return !form.data().link_open; }, 60s));
    EXPECT_FALSE(form.data().rows[0].fresh);
}

}  // namespace
}  // namespace servo::tools::test
