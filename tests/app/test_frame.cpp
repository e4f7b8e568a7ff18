#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QTreeWidget>

#include "app/desk_keeper.h"
#include "app/keys_window.h"
#include "frame_bench.h"
#include "shell_bench.h"

namespace servo::app {
namespace {

using base::Language;
using test::FrameBench;

constexpr Qt::KeyboardModifiers kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;

QStringList window_entries(const FrameBench& frame) {
    QStringList entries;
    for (const QAction* action : frame.menus->menu(QStringLiteral("View"))->actions())
        if (action->objectName().startsWith(QLatin1String("windowx(")) && action->isVisible())
            entries << (action->isChecked() ? "*" : "") + action->text();
    return entries;
}

TEST(WindowList, HasTheOpenWindowsByNumberWithTheActiveOneMarked) {
    FrameBench frame;
    frame.show();
    EXPECT_EQ(window_entries(frame), QStringList{});
    EXPECT_FALSE(frame.item("nextx")->isEnabled());
    frame.open({"B", "A"});
    EXPECT_EQ(window_entries(frame), (QStringList{"&1 Window B", "*&2 Window A"}));
    EXPECT_TRUE(frame.item("nextx")->isEnabled());
    frame.host->hide("B");
    EXPECT_EQ(window_entries(frame), QStringList{"*&1 Window A"});
}

TEST(WindowList, FollowsTheLanguage) {
    FrameBench frame;
    frame.show();
    frame.open({"A"});
    frame.apply(Language::kChinese);
    EXPECT_EQ(window_entries(frame), QStringList{QStringLiteral("*&1 窗口A")});
    EXPECT_EQ(frame.item("nextx")->text(), QStringLiteral("下一个窗口"));
    EXPECT_EQ(frame.item("keysx")->text(), QStringLiteral("键盘快捷键"));
}

TEST(WindowList, AnEntryBringsItsWindowBackAndToTheFront) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B"});
    frame.frame("A")->showMinimized();
    frame.item("windowx(0)")->trigger();
    EXPECT_EQ(frame.active(), "A");
    EXPECT_FALSE(frame.frame("A")->isMinimized());
    frame.item("windowx(0)")->trigger();
    EXPECT_TRUE(frame.item("windowx(0)")->isChecked());
}

TEST(WindowKeys, GoToAndFroBetweenWindows) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B", "C"});
    frame.key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(frame.active(), "A");
    frame.key(Qt::Key_F6, Qt::ControlModifier);
    EXPECT_EQ(frame.active(), "B");
    frame.key(Qt::Key_Backtab, kCtrlShift);
    EXPECT_EQ(frame.active(), "A");
    frame.key(Qt::Key_F6, kCtrlShift);
    EXPECT_EQ(frame.active(), "C");
}

TEST(WindowKeys, PickAWindowByNumberAndCloseTheActiveOne) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B", "C"});
    frame.key(Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(frame.active(), "B");
    frame.key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(frame.frame("B")->isHidden());
    frame.open({"B"});
    frame.key(Qt::Key_F4, Qt::ControlModifier);
    EXPECT_TRUE(frame.frame("B")->isHidden());
    EXPECT_EQ(window_entries(frame).size(), 2);
}

TEST(WindowMenu, IsInTheLanguageAndHasNoKeysOfItsOwn) {
    FrameBench frame;
    frame.show();
    frame.open({"A"});
    frame.apply(Language::kChinese);
    QStringList texts;
    for (const QAction* action : frame.frame("A")->systemMenu()->actions()) {
        EXPECT_TRUE(action->shortcuts().isEmpty()) << action->text().toStdString();
        if (!action->isSeparator()) texts << action->text();
    }
    EXPECT_EQ(texts.size(), 7);
    for (const QString& text : texts)
        EXPECT_GT(text.at(0).unicode(), 0x4e00) << text.toStdString();
}

TEST(WindowKeys, TheFocusGoesAlong) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B"});
    frame.key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), frame.host->widget("A"));
}

TEST(MenuKeys, TriggerTheirItems) {
    FrameBench frame;
    frame.show();
    QStringList chosen;
    QObject::connect(frame.menus, &ShellMenus::chosen, &frame.main,
                     [&](const MenuItem& item) { chosen << to_qt(item.item); });
    frame.open({"A"});
    frame.key(Qt::Key_B, Qt::ControlModifier);
    frame.key(Qt::Key_F8, Qt::NoModifier);
    frame.key(Qt::Key_F8, Qt::ShiftModifier);
    frame.key(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(chosen,
              (QStringList{"Basic_Operation", "Real_time_error", "ErrHistory1", "SPDLoop"}));
}

TEST(MenuKeys, OneKeyGoesToTheOtherLanguage) {
    FrameBench frame;
    frame.show();
    QString chosen;
    QObject::connect(frame.menus, &ShellMenus::chosen, &frame.main,
                     [&](const MenuItem& item) { chosen = to_qt(item.item); });
    frame.key(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(chosen, "chinese");
    frame.apply(Language::kChinese);
    frame.key(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(chosen, "English");
}

TEST(MenuKeys, ToolsHaveTheirsAndTheTipsStayAsTheyAre) {
    FrameBench frame;
    frame.show();
    QString chosen;
    QObject::connect(frame.tools, &ShellTools::chosen, &frame.main,
                     [&](const ToolItem& item) { chosen = to_qt(item.key); });
    frame.key(Qt::Key_F5, Qt::NoModifier);
    EXPECT_EQ(chosen, "commx");
    for (const ToolItem& item : tool_table()) {
        EXPECT_EQ(frame.tools->tool(to_qt(item.key))->toolTip(),
                  to_qt(tool_tip(item, Language::kEnglish, dictionary::Variant::kAllItems)));
    }
}

TEST(MenuKeys, F1AsksForTheListOfKeys) {
    FrameBench frame;
    frame.show();
    QSignalSpy asked(frame.menus, &ShellMenus::keys_asked);
    frame.key(Qt::Key_F1, Qt::NoModifier);
    EXPECT_EQ(asked.count(), 1);
}

TEST(MenuTexts, CaptionsCarryNoKeys) {
    FrameBench frame;
    EXPECT_EQ(frame.item("save1")->text(), "Save");
    EXPECT_EQ(frame.item("save1")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
    EXPECT_EQ(frame.item("Basic_Operation")->statusTip(), "State, control word, mode and targets");
}

TEST(KeyList, OpensAsAWindowOfTheFrameAndClosesByItself) {
    test::ShellBench shell;
    FrameBench frame;
    add_key_list(*frame.host, shell.workstation);
    frame.show();
    frame.open({kKeyListWindow});
    auto* keys = frame.host->widget(kKeyListWindow);
    EXPECT_TRUE(keys->isVisible());
    EXPECT_EQ(keys->windowTitle(), "Keyboard Shortcuts");
    auto* tree = keys->findChild<QTreeWidget*>(QStringLiteral("Keys"));
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->topLevelItem(0)->text(0), "File");
    EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(1), "Ctrl+N");
    EXPECT_EQ(tree->accessibleName(), "Keyboard Shortcuts");
    shell.workstation.language = Language::kChinese;
    frame.apply(Language::kChinese);
    EXPECT_EQ(keys->windowTitle(), QStringLiteral("键盘快捷键"));
    EXPECT_EQ(tree->topLevelItem(0)->text(0), QStringLiteral("文件"));
    QSignalSpy asked(frame.host, &WindowHost::close_asked);
    frame.frame(kKeyListWindow)->close();
    EXPECT_FALSE(keys->isVisible());
    EXPECT_EQ(asked.count(), 0);
}

TEST(Places, AWindowReturnsToWhereItWas) {
    FrameBench frame;
    frame.host->remember({{"A", {{140, 90}, {500, 300}, PlaceState::kNormal}}});
    frame.show();
    frame.open({"A", "B"});
    EXPECT_EQ(frame.frame("A")->geometry(), QRect(140, 90, 500, 300));
    EXPECT_EQ(frame.frame("B")->pos(), QPoint(0, 0));
}

TEST(Places, OffTheFrameTheyComeBackIntoView) {
    FrameBench frame;
    frame.host->remember({{"A", {{4000, -900}, {500, 300}, PlaceState::kNormal}}});
    frame.show();
    frame.open({"A"});
    EXPECT_TRUE(frame.area->viewport()->rect().contains(frame.frame("A")->geometry()));
}

TEST(Places, AMaximisedWindowComesBackSoAndKeepsItsNormalPlace) {
    FrameBench frame;
    frame.host->remember({{"A", {{140, 90}, {500, 300}, PlaceState::kMaximized}}});
    frame.show();
    frame.open({"A"});
    EXPECT_TRUE(frame.frame("A")->isMaximized());
    EXPECT_EQ(frame.host->places().at("A"),
              (WindowPlace{{140, 90}, {500, 300}, PlaceState::kMaximized}));
    frame.frame("A")->showNormal();
    EXPECT_EQ(frame.frame("A")->geometry(), QRect(140, 90, 500, 300));
}

TEST(Places, AMinimisedWindowIsRememberedSoAndOpensAsAWindow) {
    FrameBench frame;
    frame.show();
    frame.open({"A"});
    frame.frame("A")->setGeometry(30, 40, 420, 200);
    frame.frame("A")->showMinimized();
    frame.area->arrange_icons();
    const WindowPlaces places = frame.host->places();
    EXPECT_EQ(places.at("A"), (WindowPlace{{30, 40}, {420, 200}, PlaceState::kMinimized}));
    FrameBench next;
    next.host->remember(places);
    next.show();
    next.open({"A"});
    EXPECT_FALSE(next.frame("A")->isMinimized());
    EXPECT_EQ(next.frame("A")->geometry(), QRect(30, 40, 420, 200));
}

TEST(Places, OfWindowsThatWereNotOpenedAreKept) {
    FrameBench frame;
    const WindowPlace old{{140, 90}, {500, 300}, PlaceState::kNormal};
    frame.host->remember({{"B", old}, {"Gone", old}});
    frame.show();
    frame.open({"A"});
    EXPECT_EQ(frame.host->places().at("B"), old);
    EXPECT_EQ(frame.host->places().at("Gone"), old);
    EXPECT_TRUE(frame.host->places().contains("A"));
    EXPECT_FALSE(frame.host->places().contains("C"));
}

TEST(Places, ADialogTakesItsPlaceButNotAnOldSize) {
    FrameBench frame;
    frame.host->remember({{"D", {{140, 90}, {1000, 700}, PlaceState::kNormal}}});
    frame.show();
    frame.open({"D"});
    EXPECT_EQ(frame.frame("D")->pos(), QPoint(140, 90));
    EXPECT_LT(frame.frame("D")->width(), 600);
}

TEST(Places, AWindowThatIsOpenedAgainStandsWhereTheUserLeftIt) {
    FrameBench frame;
    frame.show();
    frame.open({"A"});
    frame.frame("A")->setGeometry(77, 66, 555, 222);
    frame.host->hide("A");
    frame.open({"A"});
    EXPECT_EQ(frame.frame("A")->geometry(), QRect(77, 66, 555, 222));
}

TEST(Places, TheCascadeUsesAClosedWindowsPlaceAgain) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B"});
    const QPoint first = frame.frame("A")->pos();
    EXPECT_NE(frame.frame("B")->pos(), first);
    frame.host->hide("A");
    frame.open({"C"});
    EXPECT_EQ(frame.frame("C")->pos(), first);
}

TEST(Places, ADialogOpensInTheMiddle) {
    FrameBench frame;
    frame.show();
    frame.open({"D"});
    const QRect box = frame.frame("D")->geometry();
    EXPECT_NEAR(box.center().x(), frame.area->viewport()->width() / 2, 2);
}

TEST(Arranging, CascadeAndTileLeaveDialogsAndIconsAlone) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B", "C", "D"});
    frame.frame("C")->showMinimized();
    const QRect dialog = frame.frame("D")->geometry();
    frame.item("tilex")->trigger();
    const QRect area = frame.area->viewport()->rect();
    const int icons = frame.frame("C")->height();
    EXPECT_EQ(frame.frame("A")->geometry(), QRect(0, 0, area.width() / 2, area.height() - icons));
    EXPECT_EQ(frame.frame("B")->geometry().topRight(), area.topRight());
    EXPECT_FALSE(frame.frame("A")->geometry().intersects(frame.frame("B")->geometry()));
    EXPECT_TRUE(frame.frame("C")->isMinimized());
    EXPECT_EQ(frame.frame("D")->geometry(), dialog);
    const QSize tiled = frame.frame("A")->size();
    frame.item("cascadex")->trigger();
    EXPECT_LT(frame.frame("A")->width(), tiled.width());  // what it wants, not what tiling gave it
    EXPECT_EQ(frame.area->subWindowList(QMdiArea::StackingOrder).constLast(), frame.frame("D"));
    EXPECT_EQ(frame.frame("A")->pos(), QPoint(0, 0));
    EXPECT_EQ(frame.frame("B")->pos(), QPoint(28, 28));
    EXPECT_EQ(frame.frame("D")->geometry(), dialog);
}

TEST(Arranging, TilingMakesNoWindowSmallerThanItsContent) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B", "C"});
    frame.main.resize(500, 500);
    QApplication::processEvents();
    frame.item("tilex")->trigger();
    for (const char* name : {"A", "B", "C"}) {
        EXPECT_GE(frame.frame(name)->width(), frame.frame(name)->minimumSizeHint().width());
        EXPECT_TRUE(frame.area->viewport()->rect().contains(frame.frame(name)->geometry()));
    }
}

TEST(Arranging, AContentThatGrowsStaysInView) {
    FrameBench frame;
    frame.show();
    frame.open({"A"});
    ChildWindow* window = frame.frame("A");
    const QRect area = frame.area->viewport()->rect();
    window->move(area.width() - window->width(), 10);
    window->widget()->setMinimumWidth(600);
    QApplication::processEvents();
    EXPECT_GE(window->width(), 600);
    EXPECT_TRUE(area.contains(window->geometry()));
}

TEST(Windows, AClosedOneHandsTheKeyboardToTheOneBeforeIt) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B", "C", "D"});
    frame.host->activate("B");
    frame.host->activate("C");
    frame.frame("B")->showMinimized();
    frame.host->activate("C");
    frame.host->hide("C");
    EXPECT_EQ(frame.active(), "D") << "not the icon";
    frame.host->hide("A");
    EXPECT_EQ(frame.active(), "D") << "it was not the active one that went";
    EXPECT_TRUE(frame.host->widget("D")->hasFocus());
}

TEST(Windows, TheListMarksOneWindowAndHasNoBoxes) {
    FrameBench frame;
    frame.show();
    frame.open({"A", "B"});
    for (const char* item : {"windowx(0)", "windowx(1)"}) {
        QActionGroup* group = frame.item(item)->actionGroup();
        ASSERT_NE(group, nullptr);
        EXPECT_TRUE(group->isExclusive());
    }
    EXPECT_FALSE(frame.item("windowx(0)")->isChecked());
    EXPECT_TRUE(frame.item("windowx(1)")->isChecked());
    frame.item("windowx(1)")->trigger();
    EXPECT_TRUE(frame.item("windowx(1)")->isChecked());
}

TEST(DeskKeeper, KeepsTheMainWindowAndItsWindowsForTheNextRun) {
    test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "sys");
    {
        DeskKeeper keeper(folder.path());
        FrameBench frame;
        keeper.restore(frame.main, *frame.host);
        frame.show();
        frame.main.setGeometry(20, 30, 700, 500);
        frame.open({"A"});
        frame.frame("A")->setGeometry(33, 44, 400, 250);
        keeper.recent() = {"/home/me/a.prj"};
        EXPECT_TRUE(keeper.save(frame.main, *frame.host));
    }
    DeskKeeper keeper(folder.path());
    FrameBench frame;
    keeper.restore(frame.main, *frame.host);
    frame.show();
    frame.open({"A"});
    EXPECT_EQ(frame.main.geometry(), QRect(20, 30, 700, 500));
    EXPECT_EQ(frame.frame("A")->geometry(), QRect(33, 44, 400, 250));
    EXPECT_EQ(keeper.recent(), std::vector<std::string>{"/home/me/a.prj"});
}

TEST(DeskKeeper, AMainWindowOnAScreenThatIsGoneComesBack) {
    test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "sys");
    Desk desk;
    desk.main = WindowPlace{{9000, 9000}, {640, 480}, PlaceState::kNormal};
    ASSERT_TRUE(save_desk(folder.path(), desk));
    FrameBench frame;
    DeskKeeper(folder.path()).restore(frame.main, *frame.host);
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(
        frame.main.geometry().topLeft()));
}

TEST(DeskKeeper, AFolderThatCannotBeWrittenToCostsOnlyTheMemory) {
    test::TemporaryFolder folder;  // without a sys folder
    DeskKeeper keeper(folder.path());
    FrameBench frame;
    keeper.restore(frame.main, *frame.host);
    frame.show();
    EXPECT_FALSE(keeper.save(frame.main, *frame.host));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

}  // namespace
}  // namespace servo::app
