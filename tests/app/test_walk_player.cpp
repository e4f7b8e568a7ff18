// Walkthroughs on the real main window and its pages, with no drive on the line.
#include <gtest/gtest.h>

#include <QImage>
#include <nlohmann/json.hpp>

#include "shown_shell.h"
#include "walk_play.h"

namespace servo::app {
namespace {

using test::Lines;
using test::Played;

struct WalkPlayerTest : testing::Test {
    WalkPlayerTest() { EXPECT_TRUE(shell.start()); }

    Played play(std::string_view text) { return test::play(shell.form, text); }
    std::string file(const char* name) const { return (shell.folder.path() / name).string(); }

    test::ShownShell shell;
};

TEST_F(WalkPlayerTest, EmptyFileEndsWellAndPrintsNothing) {
    const Played played = play("");
    EXPECT_EQ(played.status, 0);
    EXPECT_EQ(played.lines, Lines{});
}

TEST_F(WalkPlayerTest, LinesForTheSimulatedDriveGoToItOrFail) {
    Lines told;
    const Played played =
        test::play(shell.form, "simulator din 3 1\nsimulator\n", [&told](const std::string& line) {
            told.push_back(line);
            return true;
        });
    EXPECT_EQ(told, (Lines{"din 3 1", ""}));
    EXPECT_EQ(played.status, 0);
    const Played alone = play("simulator din 3 1\n");
    EXPECT_EQ(alone.status, 1);
    EXPECT_EQ(alone.lines, Lines{"test.walk:1: no simulated drive was started"});
}

TEST_F(WalkPlayerTest, MenusToolsAndWindows) {
    const Played played = play(
        "expect Basic.visible false\n"
        "menu Basic_Operation\n"
        "expect Basic.visible true\n"
        "expect Basic.caption Basic Operation\n"
        "open VLoop\n"
        "expect VLoop.visible true\n"
        "close Basic\n"
        "expect Basic.visible false\n"
        "menu chinese\n"
        "expect VLoop.caption 速度环\n"
        "expect MDIForm1.caption QRL Servo\n"
        "expect toolbar.commx Commpic\n"
        "tool commx\n"
        "expect toolbar.commx CommOKpic\n"
        "expect Form1.visible true\n"
        "close Form1\n"
        "expect Form1.visible false\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(played.status, 0);
}

TEST_F(WalkPlayerTest, FailedLinesAreNamedAndTheOthersArePlayed) {
    const Played played = play(
        "# a comment\n"
        "expect Basic.visible true\n"
        "click Nothing.Command1\n"
        "click Form1.Nothing\n"
        "menu nothing\n"
        "tool nothing\n"
        "open nothing\n"
        "close nothing\n"
        "print engine.nothing\n"
        "print toolbar.nothing\n"
        "print Basic.MSHFlexGrid1[99,1]\n"
        "bogus\n"
        "popup adding\n"
        "expect-message Hello\n"
        "print Basic.caption\n");
    EXPECT_EQ(played.status, 1);
    EXPECT_EQ(played.lines,
              (Lines{"test.walk:2: Basic.visible is 'false', not 'true'",
                     "test.walk:3: no window has the name 'Nothing'",
                     "test.walk:4: Form1 has no control 'Nothing'",
                     "test.walk:5: no menu item has the name 'nothing'",
                     "test.walk:6: no toolbar button has the name 'nothing'",
                     "test.walk:7: no window has the name 'nothing'",
                     "test.walk:8: no window has the name 'nothing'",
                     "test.walk:9: no member of the engine has the name 'nothing'",
                     "test.walk:10: no toolbar button has the name 'nothing'",
                     "test.walk:11: MSHFlexGrid1 has no cell [99,1]",
                     "test.walk:12: no command has the name 'bogus'",
                     "test.walk:13: no pop-up menu is open",
                     "test.walk:14: came no message, not 'Hello'", "Basic Operation"}));
}

TEST_F(WalkPlayerTest, LinkIsOpenedAndClosedThroughTheDialog) {
    const Played played = play(
        "menu Communication_Settings\n"
        "choose Form1.Combo1 0\n"
        "expect Form1.Combo1 COM1\n"
        "click Form1.Command1\n"
        "expect Form1.Command1 CLOSE\n"
        "expect Form1.Combo1.enabled false\n"
        "click Form1.Command1\n"
        "expect Form1.Command1 OPEN\n");
    EXPECT_EQ(played.lines, Lines{});
}

TEST_F(WalkPlayerTest, EditTypesIntoTheTextEditorOfAPage) {
    const Played played = play(
        "open Basic\n"
        "expect Basic.MSHFlexGrid1[0,4] Value\n"
        "expect Basic.MSHFlexGrid1[3,1] 60FF00\n"
        "cell Basic.MSHFlexGrid1 3 4\n"
        "expect Basic.MSHFlexGrid1.row 3\n"
        "expect Basic.textbox1.visible true\n"
        "key Basic.textbox1 Esc\n"
        "expect Basic.textbox1.visible false\n"
        "edit Basic.MSHFlexGrid1 3 4 12.5\n"
        "expect Basic.textbox1.visible false\n"
        "expect Basic.MSHFlexGrid1[3,4] 12.5\n"
        "edit Basic.MSHFlexGrid1 3 4 7x8\n"
        "expect Basic.MSHFlexGrid1[3,4] 78\n");
    EXPECT_EQ(played.lines, Lines{});
}

TEST_F(WalkPlayerTest, EditFailsWhereNoEditorOpens) {
    const Played played = play(
        "open Basic\n"
        "edit Basic.MSHFlexGrid1 3 3 1\n"
        "edit Basic.MSHFlexGrid1 0 4 1\n"
        "edit Basic.MSHFlexGrid1 77 4 1\n"
        "edit Basic.MSHFlexGrid1 1 6 1\n"
        "edit Form1.Combo1 1 4 1\n");
    EXPECT_EQ(played.lines,
              (Lines{"test.walk:2: no editor opens in cell [3,3]",
                     "test.walk:3: no editor opens in cell [0,4]",
                     "test.walk:4: MSHFlexGrid1 has no cell [77,4] that can be clicked",
                     "test.walk:5: MSHFlexGrid1 has no cell [1,6] that can be clicked",
                     "test.walk:6: Combo1 is no grid"}));
}

TEST_F(WalkPlayerTest, EditPicksFromADropDown) {
    const Played played = play(
        "open Basic\n"
        "expect Basic.MSHFlexGrid1[3,5] rpm\n"
        "edit Basic.MSHFlexGrid1 3 5 DEC\n"
        "expect Basic.MSHFlexGrid1[3,5] DEC\n"
        "expect Basic.Combobox1.visible false\n"
        "edit Basic.MSHFlexGrid1 3 5 furlong\n"
        "expect Basic.MSHFlexGrid1[3,5] DEC\n"
        "expect Basic.Combobox1.visible false\n"
        "cell Basic.MSHFlexGrid1 3 5\n"
        "expect Basic.Combobox1.visible true\n"
        "choose Basic.Combobox1 0\n"
        "expect Basic.MSHFlexGrid1[3,5] rpm\n");
    EXPECT_EQ(played.lines, (Lines{"test.walk:6: the list of cell [3,5] has no item 'furlong'"}));
}

TEST_F(WalkPlayerTest, PopupMenuOpensByTheRightButtonAndIsPicked) {
    const Played played = play(
        "open Basic\n"
        "expect Basic.MSHFlexGrid1[3,1] 60FF00\n"
        "cell Basic.MSHFlexGrid1 1 3 right\n"
        "popup deling\n"
        "expect Basic.MSHFlexGrid1[2,1] 60FF00\n"
        "popup deling\n"
        "cell Basic.MSHFlexGrid1 0 3 right\n"
        "popup deling\n"
        "popup nothing\n");
    EXPECT_EQ(played.lines, (Lines{"test.walk:6: no pop-up menu is open",
                                   "test.walk:8: the pop-up item 'deling' can't be picked now",
                                   "test.walk:9: no pop-up item has the name 'nothing'"}));
    QApplication::activePopupWidget()->close();
}

TEST_F(WalkPlayerTest, UntilWaitsForAChangeAndGivesUpInTime) {
    QTimer::singleShot(100, [this] { shell.form.open_window(QStringLiteral("CLoop")); });
    const Played played = play(
        "until CLoop.visible true within 20000\n"
        "until CLoop.visible false within 30\n"
        "until Basic.MSHFlexGrid1[3,1] *\n"
        "until Basic.MSHFlexGrid1[3,4] * within 10\n"
        "until Basic.Nothing x within 20000\n");
    EXPECT_EQ(played.lines,
              (Lines{"test.walk:2: CLoop.visible is 'true' after 30 ms, not 'false'",
                     "test.walk:4: Basic.MSHFlexGrid1[3,4] is '' after 10 ms, not '*'",
                     "test.walk:5: Basic has no control 'Nothing'"}));
}

TEST_F(WalkPlayerTest, QuitEndsBeforeTheEndOfTheFile) {
    const Played played = play("print MDIForm1.caption\nquit\nprint MDIForm1.caption\n");
    EXPECT_EQ(played.lines, (Lines{"QRL Servo"}));
    EXPECT_EQ(played.status, 0);
}

TEST_F(WalkPlayerTest, NothingIsPlayedOnceTheProgramIsOver) {
    const Played played = play("menu quit1\nprint MDIForm1.caption\nuntil Basic.visible true\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(played.status, 0);
}

TEST_F(WalkPlayerTest, CloseBoxOfTheMainWindowEndsTheProgram) {
    const Played played =
        play("expect Basic.visible true\nclose MDIForm1\nprint MDIForm1.caption\n");
    EXPECT_EQ(played.lines, (Lines{"test.walk:1: Basic.visible is 'false', not 'true'"}));
    EXPECT_EQ(played.status, 1);
}

TEST_F(WalkPlayerTest, PrintsControlsOfTheDialogAndOfTheEngine) {
    const Played played = play(
        "menu Communication_Settings\n"
        "print Form1.Combo2\n"
        "choose Form1.Combo2 3\n"
        "print Form1.Combo2\n"
        "type Form1.Text1 12\n"
        "print Form1.Text1\n"
        "print Form1.Command1.enabled\n"
        "print engine.Comm_Over_Time_Cnts\n"
        "choose Form1.Combo2 99\n"
        "tab Form1.SSTab1 1\n");
    EXPECT_EQ(played.lines, (Lines{"38400", "19200", "12", "true", "350",
                                   "test.walk:9: Combo2 has 8 positions, none is 99",
                                   "test.walk:10: tab 1 is hidden"}));
}

TEST_F(WalkPlayerTest, WindowsArePlacedOnTheDesk) {
    const Played played = play(
        "place Basic 10 20 700 400\n"
        "place MDIForm1 0 0 1500 850\n"
        "open Basic\n"
        "place Basic 10 20 700 400\n"
        "place Nothing 10 20 700 400\n");
    EXPECT_EQ(played.lines, (Lines{"test.walk:1: Basic is not open",
                                   "test.walk:5: no window has the name 'Nothing'"}));
    EXPECT_EQ(shell.form.size(), QSize(1500, 850));
    const QWidget* page = shell.form.window_widget(QStringLiteral("Basic"));
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->parentWidget()->geometry(), QRect(10, 20, 700, 400));
}

TEST_F(WalkPlayerTest, PicturesOfTheMainWindowAndOfOneWindow) {
    const Played played =
        play("open Basic\nshot " + file("main.png") + "\nshot " + file("basic.png") +
             " Basic\nshot " + file("no/such.png") + "\nshot " + file("x.png") + " Nothing\n");
    EXPECT_EQ(played.lines,
              (Lines{"test.walk:4: the picture '" + file("no/such.png") + "' could not be written",
                     "test.walk:5: no window has the name 'Nothing'"}));
    const QImage whole(QString::fromStdString(file("main.png")));
    const QImage part(QString::fromStdString(file("basic.png")));
    EXPECT_EQ(whole.size(), shell.form.size());
    EXPECT_GT(part.width(), 100);
    EXPECT_LT(part.width(), whole.width());
}

TEST_F(WalkPlayerTest, OpenMenuIsSeenInThePicture) {
    const Played played =
        play("open Basic\nshot " + file("before.png") +
             "\ncell Basic.MSHFlexGrid1 1 3 right\nshot " + file("open.png") + "\n");
    EXPECT_EQ(played.lines, Lines{});
    QWidget* menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    const QRect place(shell.form.mapFromGlobal(menu->mapToGlobal(QPoint(0, 0))), menu->size());
    const QImage open(QString::fromStdString(file("open.png")));
    const QImage before(QString::fromStdString(file("before.png")));
    EXPECT_NE(open.copy(place), before.copy(place));
    EXPECT_EQ(open.copy(place), menu->grab().toImage().convertToFormat(open.format()));
    menu->close();
}

TEST_F(WalkPlayerTest, StateHoldsEverythingThatIsShown) {
    const Played played = play("open Basic\nmenu Communication_Settings\nstate " +
                               file("state.json") + "\nstate " + file("no/such.json") + "\n");
    EXPECT_EQ(played.lines,
              (Lines{"test.walk:4: the file '" + file("no/such.json") + "' could not be written"}));
    const auto json = nlohmann::json::parse(shell.folder.read("state.json"));
    EXPECT_EQ(json["language"], 1);
    EXPECT_EQ(json["title"], "QRL Servo");
    EXPECT_EQ(json["toolbar"]["Errorx"], "errorgray");
    EXPECT_EQ(json["tooltips"]["savex"], "Save");
    EXPECT_EQ(json["menus"]["English"]["caption"], "*English");
    EXPECT_EQ(json["engine"]["Comm_Over_Time_Cnts"], 350);
    EXPECT_EQ(json["engine"]["str_temp_string"], "");
    EXPECT_EQ(json["engine"]["fault_word1"], "0000");
    ASSERT_EQ(json["windows"].size(), 41U) << "the journal behind the others";
    const auto& basic = json["windows"][4];
    EXPECT_EQ(basic["name"], "Basic");
    EXPECT_EQ(basic["caption"], "Basic Operation");
    EXPECT_EQ(basic["visible"], true);
    EXPECT_EQ(basic["controls"]["textbox1"]["visible"], false);
    const auto& rows = basic["grids"]["MSHFlexGrid1"];
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0], nlohmann::json::parse(
                           R"(["N","Index","Type","Name","Value","Unit","","","","",""])"));
    EXPECT_EQ(rows[3][1], "60FF00");
    EXPECT_EQ(rows[3].size(), 11U);
    // 606300 can only be read: columns 1 to 10 of its row have the read-only colour.
    ASSERT_EQ(basic["colors"]["MSHFlexGrid1"].size(), 10U);
    EXPECT_EQ(basic["colors"]["MSHFlexGrid1"][0], nlohmann::json::parse(R"([2,1,"#D1D8C8"])"));
    const auto& form1 = json["windows"][16];
    EXPECT_EQ(form1["name"], "Form1");
    EXPECT_EQ(form1["controls"]["Combo2"]["current"], 4);
    EXPECT_EQ(form1["controls"]["Command1"]["text"], "OPEN");
    for (const auto& [name, control] : form1["controls"].items())
        EXPECT_FALSE(name.starts_with("Scroll")) << name;  // parts of the tab bar
}

}  // namespace
}  // namespace servo::app
