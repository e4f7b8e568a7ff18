// The window `InitSave` through its real controls.
#include <gtest/gtest.h>

#include <QProgressBar>
#include <QTimer>

#include "form_window_bench.h"
#include "tools/init_save_window.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;
using base::Language;

class InitSaveWindowTest : public ::testing::Test, protected test::FormWindowBench {
  protected:
    InitSaveWindowTest() { show(view, !test::kDesignedFont); }

    QTimer& timer() { return *view.findChild<QTimer*>(QStringLiteral("Timer1")); }
    // The timer of the lock fires now.
    void let_timer_fire() {
        timer().start(0);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !form.locked(); }));
        timer().setInterval(InitSave::kLockMilliseconds);
    }
    bool all_enabled() {
        for (const char* name : {"Command1", "Command2", "Command3", "Command4"})
            if (!enabled(name)) return false;
        return true;
    }
    bool none_enabled() {
        for (const char* name : {"Command1", "Command2", "Command3", "Command4"})
            if (enabled(name)) return false;
        return true;
    }

    InitSave form{engine, language};
    InitSaveWindow view{form};
};

TEST_F(InitSaveWindowTest, CaptionsFollowTheLanguage) {
    EXPECT_EQ(title(), "Init Save Reboot");
    EXPECT_EQ(caption("Command1"), "Store Control Parameters");
    EXPECT_EQ(caption("Command5"), "Restart Only");
    walk(Language::kChinese);
    EXPECT_EQ(title(), "初始化 保存 重启");
    EXPECT_EQ(caption("Command1"), "存储控制参数");
    EXPECT_EQ(caption("Command2"), "存储电机参数");
    EXPECT_EQ(caption("Command3"), "初始化控制参数");
    EXPECT_EQ(caption("Command4"), "重启");
    EXPECT_EQ(text("LabelB"), "把电机参数写入驱动器的存储器。电机参数在重启后生效。");
}

TEST_F(InitSaveWindowTest, EachButtonSendsItsCommand) {
    const std::vector<std::vector<int>> told{
        {0x2F, 0x01, 1}, {0x2F, 0x03, 1}, {0x2F, 0x01, 10}, {0x2B, 0x00, 0x55}, {0x2B, 0x00, 0x55}};
    for (int i = 0; i < 5; ++i) {
        click("Command" + std::to_string(i + 1));
        const auto payloads = sent();
        ASSERT_EQ(payloads.size(), 1U) << i;
        const auto& expected = told[static_cast<std::size_t>(i)];
        EXPECT_EQ(payloads[0][0], expected[0]);
        EXPECT_EQ(payloads[0][3], expected[1]);
        EXPECT_EQ(payloads[0][4], expected[2]);
        if (form.locked()) let_timer_fire();
    }
}

TEST_F(InitSaveWindowTest, DuringTheLockTheButtonsStayGreyAndAfterItAllAreEnabled) {
    EXPECT_TRUE(all_enabled());
    click("Command1");
    EXPECT_TRUE(none_enabled());
    EXPECT_TRUE(timer().isActive());
    EXPECT_TRUE(timer().isSingleShot());
    EXPECT_EQ(timer().interval(), 3200);
    clock.time += 3199ms;
    view.refresh_now();
    EXPECT_TRUE(none_enabled()) << "the timer alone ends it";
    let_timer_fire();
    EXPECT_TRUE(all_enabled());
    EXPECT_FALSE(timer().isActive());
}

TEST_F(InitSaveWindowTest, ASecondCommandInTheLockIsImpossible) {
    click("Command2");
    sent();
    for (const char* name : {"Command1", "Command2", "Command3", "Command4", "Command5"})
        click(name);
    EXPECT_TRUE(sent().empty());
}

TEST_F(InitSaveWindowTest, TheLockOutlastsHidingTheWindow) {
    click("Command1");
    view.hide();
    view.show();
    EXPECT_TRUE(none_enabled());
    view.hide();
    let_timer_fire();
    view.show();
    EXPECT_TRUE(all_enabled());
}

TEST_F(InitSaveWindowTest, Command5LeavesTheButtonsAsTheyAre) {
    click("Command5");
    EXPECT_TRUE(all_enabled());
    EXPECT_FALSE(timer().isActive());
}

TEST_F(InitSaveWindowTest, TheRestOfTheLockIsShown) {
    EXPECT_EQ(control<QProgressBar>("ProgressBarA").value(), 0);
    click("Command1");
    clock.time += 800ms;
    view.refresh_now();
    EXPECT_EQ(control<QProgressBar>("ProgressBarA").value(), 2400);
    EXPECT_EQ(text("LabelF"), "Locked for 2.4 s: keep the drive's power on.");
    EXPECT_EQ(text("LabelG"),
              "Sent: Store Control Parameters. The drive's answer is not shown here.");
    keep_picture("init_save_locked_en");
}

TEST_F(InitSaveWindowTest, TheReturnOfTheDriveIsShown) {
    click("Command4");
    EXPECT_EQ(text("LabelG"), "The restart is sent; the drive still answers.");
    clock.time += 500ms;
    form.look();
    EXPECT_EQ(text("LabelG"), "The drive is restarting and does not answer.");
    clock.time += 1000ms;
    answer(0x26010002, 0);
    form.look();
    EXPECT_EQ(text("LabelG"), "The drive is back: it answers again after 1.5 s.");
    walk(Language::kChinese);
    EXPECT_EQ(text("LabelG"), "驱动器已恢复应答，历时 1.5 秒。");
    keep_picture("init_save_back_zh");
}

TEST_F(InitSaveWindowTest, AWindowWithoutALinkSaysThatNothingLeft) {
    port.opened = false;
    click("Command1");
    EXPECT_EQ(text("LabelG"),
              "Not connected: Store Control Parameters has not left this computer.");
    EXPECT_TRUE(none_enabled()) << "the lock is the same";
}

TEST_F(InitSaveWindowTest, TheKeyboardReachesEveryCommand) {
    control<>("Command1").setFocus();
    for (const char* name : {"Command2", "Command3", "Command4", "Command5"}) {
        QTest::keyClick(view.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(focus(), name);
    }
    QTest::keyClick(view.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(sent().size(), 1U);
}

TEST_F(InitSaveWindowTest, FitsAndCutsNothing) {
    for (const Language each : {Language::kEnglish, Language::kChinese}) {
        walk(each);
        view.resize(view.sizeHint());
        QApplication::processEvents();
        expect_fits_small_screen();
        EXPECT_LE(view.sizeHint().height(), 330);
        expect_texts_fit();
        keep_picture(each == Language::kEnglish ? "init_save_en" : "init_save_zh");
    }
}

}  // namespace
}  // namespace servo::tools
