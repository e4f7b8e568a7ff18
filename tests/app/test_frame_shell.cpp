// The frame's pieces as the program puts them together.
#include <gtest/gtest.h>

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <utility>

#include "app/backgroud_form.h"
#include "app/keys_window.h"
#include "app/style.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

using test::ShownShell;

QMdiSubWindow* frame_of(ShownShell& shell, const char* window) {
    return qobject_cast<QMdiSubWindow*>(
        shell.form.window_widget(QLatin1String(window))->parentWidget());
}

QImage drawn(const QIcon& icon) {
    return icon.pixmap(16, 16).toImage();
}

TEST(FrameOfTheShell, TimerArrangesMinimisedWindowsEachSecond) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("SPDLoop");
    QMdiSubWindow* frame = frame_of(shell, "VLoop");
    frame->showMinimized();
    auto* area = shell.form.findChild<QMdiArea*>();
    const auto at_the_bottom = [&] {
        return frame->geometry().bottom() + 1 == area->viewport()->height();
    };
    for (int i = 0; i < 2; ++i) {
        frame->move(50, 10);
        ASSERT_FALSE(at_the_bottom());
        EXPECT_TRUE(QTest::qWaitFor(at_the_bottom, 10'000)) << i;
    }
}

TEST(FrameOfTheShell, BackgroundFollowsTheFramesWidth) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    auto* background = shell.form.findChild<BackgroudForm*>();
    EXPECT_EQ(background->objectName(), "Backgroudform");
    // The area is narrower than the frame on some desktops; the frame decides.
    for (const auto& [width, size_class] : {std::pair{1500, 3}, {1499, 2}, {1000, 2}, {999, 1}}) {
        shell.form.resize(width, 700);
        QApplication::processEvents();
        ASSERT_EQ(shell.form.width(), width);
        EXPECT_EQ(background->size_class(), size_class) << width;
    }
}

TEST(FrameOfTheShell, EveryWindowTakesTheIconOfAboutInTheWholeProduct) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    const QImage about = drawn(frame_of(shell, "About")->windowIcon());
    for (const link::Window* window : shell.workstation.engine.all_windows) {
        if (shell.form.window_widget(to_qt(window->name())) == nullptr) continue;
        EXPECT_EQ(drawn(frame_of(shell, window->name().c_str())->windowIcon()), about)
            << window->name();
    }
}

TEST(FrameOfTheShell, TheReducedProductHasAPictureForEachKindOfWindow) {
    ShownShell shell;
    shell.folder.write("Servo.dat", shell.folder.read("qorlan.dat"));
    ASSERT_TRUE(shell.start());
    EXPECT_EQ(drawn(frame_of(shell, "Basic")->windowIcon()),
              drawn(picture(QStringLiteral("pagepic"))));
    EXPECT_EQ(drawn(frame_of(shell, "Form1")->windowIcon()),
              drawn(picture(QStringLiteral("dialogpic"))));
}

TEST(FrameOfTheShell, ALinkThatIsOpenedAndClosedIsToldInTheStatusBar) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    auto* state = shell.form.statusBar()->findChild<QLabel*>(QStringLiteral("StatusState"));
    ASSERT_NE(state, nullptr);
    EXPECT_EQ(state->text(), "Not connected");
    shell.workstation.communication.use_port("COM1");
    shell.workstation.communication.communication();
    ASSERT_TRUE(shell.workstation.communication.link_open());
    EXPECT_EQ(state->text(), "Waiting for the drive");
    shell.workstation.communication.communication();
    EXPECT_EQ(state->text(), "Not connected");
}

TEST(FrameOfTheShell, TheListOfKeysIsInHelpAndNoneOfTheProgramsWindows) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_FALSE(shell.form.menu_items().contains(QStringLiteral("keysx")));
    shell.menu("keysx");
    auto* keys = shell.form.findChild<KeysWindow*>();
    ASSERT_NE(keys, nullptr);
    EXPECT_TRUE(keys->isVisible());
    EXPECT_EQ(shell.form.window_widget(QLatin1String(kKeyListWindow)), nullptr);
    EXPECT_EQ(shell.workstation.engine.all_windows.size(), 40U);
    keys->parentWidget()->close();
    EXPECT_FALSE(keys->isVisible());
}

TEST(FrameOfTheShell, AGridKeepsItsKeyForEditing) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("Basic_Operation");
    auto* grid = shell.control<QWidget>("Basic", "MSHFlexGrid1");
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_FALSE(shell.window("Form1").visible());
    EXPECT_NE(QApplication::focusWidget(), nullptr);
}

}  // namespace
}  // namespace servo::app
