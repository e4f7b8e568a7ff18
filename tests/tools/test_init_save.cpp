// The commands that store, reset and restart.
#include <gtest/gtest.h>

#include "direct_engine.h"
#include "support/fakes.h"
#include "tools/init_save.h"
#include "tools/init_save_texts.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;
using base::Language;
using link::Payload;
using Payloads = std::vector<Payload>;

class InitSaveTest : public ::testing::Test, protected test::DirectEngine {
  protected:
    // The drive says something.
    void hear() { answer(0x26010002, 0); }

    InitSave form{engine, language};
};

const Payload kRestartPayload{0x2B, 0xFF, 0x2F, 0x00, 0x55, 0xAA, 0xFF, 0xFF};

TEST_F(InitSaveTest, Command1StoresTheControlParameters) {
    form.Command1_Click();
    EXPECT_EQ(sent(), (Payloads{{0x2F, 0xF0, 0x2F, 0x01, 1, 0, 0, 0}}));
}

TEST_F(InitSaveTest, Command2StoresTheMotorParameters) {
    form.Command2_Click();
    EXPECT_EQ(sent(), (Payloads{{0x2F, 0xF0, 0x2F, 0x03, 1, 0, 0, 0}}));
}

TEST_F(InitSaveTest, Command3DiffersFromCommand1InTheValueAlone) {
    form.Command1_Click();
    Payload store = sent().at(0);
    form.Command3_Click();
    const Payload reset = sent().at(0);
    EXPECT_EQ(store[4], 1);
    EXPECT_EQ(reset[4], 10);
    store[4] = reset[4];
    EXPECT_EQ(store, reset);
}

TEST_F(InitSaveTest, BothRestartsSendTheSameEightBytes) {
    form.Command4_Click();
    EXPECT_EQ(sent(), Payloads{kRestartPayload});
    form.Timer1_Timer();
    form.Command5_Click();
    EXPECT_EQ(sent(), Payloads{kRestartPayload});
    EXPECT_EQ(engine.state.last_write_key, 0x2FFF0002);
}

TEST_F(InitSaveTest, EachOfTheFourCommandsLocksTheWindow) {
    for (const auto click : {&InitSave::Command1_Click, &InitSave::Command2_Click,
                             &InitSave::Command3_Click, &InitSave::Command4_Click}) {
        EXPECT_FALSE(form.locked());
        (form.*click)();
        EXPECT_TRUE(form.locked());
        form.Timer1_Timer();
        EXPECT_FALSE(form.locked());
    }
    EXPECT_EQ(InitSave::kLockMilliseconds, 3200);
}

TEST_F(InitSaveTest, Command5LocksNothing) {
    form.Command5_Click();
    EXPECT_FALSE(form.locked());
}

TEST_F(InitSaveTest, NoAnswerEndsTheLock) {
    form.Command1_Click();
    answer(0x2FF00101, 0, 0x60);
    EXPECT_TRUE(form.locked());
}

struct KnownDrive {
    explicit KnownDrive(link::Engine& engine, servo::test::FakePage& page) {
        engine.add_poll_window(page);
        page.must_fresh = false;
        engine.values().operands.o64100320 = {65536, true};
        engine.values().operands.o65100310 = {150, true};
        engine.values().operands.o30400710 = {7, true};
        engine.values().operands.o60F61310 = {8, true};
        engine.values().operands.o60F61110 = {9, true};
        engine.values().firmware_check_known = true;
        engine.state.Com_Change = 1;
        engine.state.status_lane = 2;
        engine.state.sub_Pointer = 6;
        engine.state.rotation = 2;
        engine.state.miss_count = 340;
    }
};

void expect_forgotten(const link::Engine& engine, const servo::test::FakePage& page) {
    EXPECT_TRUE(page.must_fresh);
    const link::FormulaOperands& operands = engine.values().operands;
    for (const link::Operand* operand :
         {&operands.o64100320, &operands.o65100310, &operands.o30400710, &operands.o60F61310,
          &operands.o60F61110})
        EXPECT_FALSE(operand->seen);
    EXPECT_EQ(operands.o64100320.value, 65536) << "stays in use until it is read";
    EXPECT_EQ(operands.o60F61110.value, 9);
    EXPECT_FALSE(engine.values().firmware_check_known);
    EXPECT_EQ(engine.state.Com_Change, 0);
    EXPECT_EQ(engine.state.status_lane, 0);
    EXPECT_EQ(engine.state.sub_Pointer, 0);
    EXPECT_EQ(engine.state.rotation, 0);
    EXPECT_EQ(engine.state.miss_count, 0) << "the silence is no failure of the link";
}

TEST_F(InitSaveTest, Command4MakesEverythingBeReadAgain) {
    servo::test::FakePage page("AN_SPEED");
    const KnownDrive known(engine, page);
    form.Command4_Click();
    expect_forgotten(engine, page);
}

TEST_F(InitSaveTest, Command5LeavesPagesAndScalingsAsTheyAre) {
    servo::test::FakePage page("AN_SPEED");
    const KnownDrive known(engine, page);
    form.Command5_Click();
    EXPECT_FALSE(page.must_fresh);
    EXPECT_TRUE(engine.values().operands.o64100320.seen);
    EXPECT_TRUE(engine.values().firmware_check_known);
    EXPECT_EQ(engine.state.Com_Change, 1);
    EXPECT_EQ(engine.state.sub_Pointer, 6);
    EXPECT_EQ(engine.state.miss_count, 340);
}

TEST_F(InitSaveTest, ARestartWithNoLinkSendsNothingAndTheRestHappensAllTheSame) {
    servo::test::FakePage page("AN_SPEED");
    const KnownDrive known(engine, page);
    port.opened = false;
    form.Command4_Click();
    EXPECT_TRUE(sent().empty());
    EXPECT_TRUE(form.locked());
    expect_forgotten(engine, page);
}

TEST_F(InitSaveTest, TheOtherCommandsForgetNothing) {
    servo::test::FakePage page("AN_SPEED");
    const KnownDrive known(engine, page);
    form.Command1_Click();
    form.Command2_Click();
    form.Command3_Click();
    EXPECT_FALSE(page.must_fresh);
    EXPECT_TRUE(engine.values().operands.o64100320.seen);
    EXPECT_EQ(engine.state.miss_count, 340);
}

// --- additions

TEST_F(InitSaveTest, TheRestOfTheLockIsTold) {
    EXPECT_EQ(form.lock_left(), 0ms);
    form.Command1_Click();
    EXPECT_EQ(form.lock_left(), 3200ms);
    clock.time += 1100ms;
    EXPECT_EQ(form.lock_left(), 2100ms);
    EXPECT_EQ(lock_text(form), "Locked for 2.1 s: keep the drive's power on.");
    clock.time += 5s;
    EXPECT_EQ(form.lock_left(), 0ms) << "a timer that comes late";
    form.Timer1_Timer();
    EXPECT_EQ(lock_text(form),
              "Behind each command the window is locked for 3.2 s, since the drive may be writing "
              "its memory.");
    language = Language::kChinese;
    EXPECT_EQ(lock_text(form), "每个命令之后，本窗口锁定 3.2 秒，因为驱动器可能正在写存储器。");
}

TEST_F(InitSaveTest, ACommandThatCannotLeaveIsTold) {
    EXPECT_EQ(init_save_note(form).text, "");
    port.opened = false;
    form.Command1_Click();
    EXPECT_EQ(init_save_note(form).text,
              "Not connected: Store Control Parameters has not left this computer.");
    EXPECT_TRUE(init_save_note(form).warning);
    port.opened = true;
    form.Command3_Click();
    EXPECT_EQ(init_save_note(form).text,
              "Sent: Reset Control Parameters. The drive's answer is not shown here.");
    EXPECT_FALSE(init_save_note(form).warning);
    language = Language::kChinese;
    EXPECT_EQ(init_save_note(form).text, "已发送：初始化控制参数。驱动器的应答不在此显示。");
}

TEST_F(InitSaveTest, AFirmwareTransferKeepsACommandBackAndThatIsTold) {
    engine.state.download_active = 1;
    form.Command4_Click();
    EXPECT_TRUE(sent().empty());
    EXPECT_EQ(init_save_note(form).text,
              "A firmware download is under way: Restart has not left this computer.");
    EXPECT_TRUE(init_save_note(form).warning);
    engine.state.download_active = 0;
    form.Command4_Click();
    EXPECT_EQ(sent(), Payloads{kRestartPayload});
}

TEST_F(InitSaveTest, TheReturnOfARestartedDriveIsTold) {
    form.Command4_Click();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kSent);
    clock.time += 200ms;
    hear();
    form.look();
    EXPECT_EQ(init_save_note(form).text, "The restart is sent; the drive still answers.");
    clock.time += 299ms;
    form.look();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kSent) << "one less than the silence";
    clock.time += 1ms;
    form.look();
    EXPECT_EQ(init_save_note(form).text, "The drive is restarting and does not answer.");
    clock.time += 900ms;
    hear();
    form.look();
    EXPECT_EQ(init_save_note(form).text, "The drive is back: it answers again after 1.4 s.");
    EXPECT_FALSE(form.restart().watching());
    clock.time += 10s;
    form.look();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kBack) << "the story is over";
}

TEST_F(InitSaveTest, ADriveThatNeverFellSilentIsNotSaidToBeBack) {
    form.Command5_Click();
    for (int i = 0; i < 29; ++i) {
        clock.time += 100ms;
        hear();
        form.look();
    }
    EXPECT_EQ(form.restart().phase(), RestartPhase::kSent);
    clock.time += 100ms;
    hear();
    form.look();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kNoPause);
    EXPECT_TRUE(init_save_note(form).warning);
}

TEST_F(InitSaveTest, ALinkThatClosesBeforeTheReturnIsTold) {
    form.Command4_Click();
    clock.time += 400ms;
    form.look();
    engine.link_closed();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kLost);
    EXPECT_TRUE(init_save_note(form).warning);
    engine.link_opened();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kNone);
}

TEST_F(InitSaveTest, AnotherCommandEndsTheLookoutForTheRestart) {
    form.Command5_Click();
    form.Command1_Click();
    EXPECT_EQ(form.restart().phase(), RestartPhase::kNone);
    EXPECT_EQ(form.last(), InitSaveCommand::kStoreControl);
}

TEST_F(InitSaveTest, ARestartThatDidNotLeaveIsNotAwaited) {
    port.opened = false;
    form.Command4_Click();
    EXPECT_FALSE(form.restart().watching());
}

TEST_F(InitSaveTest, EveryChangeIsTold) {
    int told = 0;
    form.changed = [&told] { ++told; };
    form.Command4_Click();
    EXPECT_EQ(told, 1);
    form.Timer1_Timer();
    EXPECT_EQ(told, 2);
    form.look();
    EXPECT_EQ(told, 2) << "nothing has changed";
    clock.time += 1s;
    form.look();
    EXPECT_EQ(told, 3);
}

TEST_F(InitSaveTest, TheButtonsHaveTheirCaptions) {
    const auto buttons = init_save_buttons();
    const char* const told[] = {"存储控制参数", "存储电机参数", "初始化控制参数", "重启"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(buttons[i].control, "Command" + std::to_string(i + 1));
        EXPECT_TRUE(buttons[i].caption.starts_with(std::string(told[i]) + "/"));
    }
}

}  // namespace
}  // namespace servo::tools
