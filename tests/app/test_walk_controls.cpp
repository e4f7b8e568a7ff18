// Walkthrough commands on every kind of control, in a window made for the test.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/state_controls.h"
#include "shell_bench.h"
#include "walk_play.h"

namespace servo::app {
namespace {

using test::Lines;
using test::Played;

// A surface that is drawn on; keeps what the mouse did.
class Surface final : public QWidget {
  public:
    std::vector<std::string> events;

  protected:
    void mousePressEvent(QMouseEvent* event) override { note("press", *event); }
    void mouseMoveEvent(QMouseEvent* event) override { note("move", *event); }
    void mouseReleaseEvent(QMouseEvent* event) override { note("release", *event); }

  private:
    void note(const char* what, const QMouseEvent& event) {
        const QPoint at = event.position().toPoint();
        events.push_back(std::string(what) + " " + std::to_string(at.x()) + "," +
                         std::to_string(at.y()) +
                         (event.button() == Qt::RightButton ? " right" : ""));
    }
};

// Keeps the keys that come.
class KeyLog final : public QLineEdit {
  public:
    std::string keys;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        keys += event->text().toStdString() + "|";
        QLineEdit::keyPressEvent(event);
    }
};

class PlainDialogs final : public UserDialogs {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
    std::optional<std::string> ask_file(const FileRequest&) override { return {}; }
};

// A shell with one window, `Homing2`, and one menu item that runs what a test wants.
class OneWindowShell final : public ShellAccess {
  public:
    OneWindowShell() {
        main.setObjectName(QStringLiteral("MDIForm1"));
        auto* holder = new QWidget;
        layout = new QVBoxLayout(holder);
        holder->resize(600, 800);
        window = holder;
        main.setCentralWidget(holder);
        main.resize(700, 900);
        item.setObjectName(QStringLiteral("aboutx"));
        popup.setObjectName(QStringLiteral("xpop"));
    }
    template <typename Control>
    Control* add(const char* name, Control* control) {
        control->setObjectName(QLatin1String(name));
        layout->addWidget(control);
        return control;
    }
    Played play(std::string_view text) {
        main.show();
        QApplication::processEvents();
        return test::play(*this, text);
    }

    Workstation& workstation() override { return bench.workstation; }
    DialogSwitch& dialogs() override { return switch_; }
    QMainWindow* main_window() override { return &main; }
    QWidget* window_widget(const QString& name) override {
        return name == QLatin1String("Homing2") ? window : nullptr;
    }
    QAction* menu_item(const QString& name) override {
        return name == item.objectName() ? &item : nullptr;
    }
    QStringList menu_items() const override { return {item.objectName()}; }
    QAction* tool(const QString&) override { return nullptr; }
    QStringList tools() const override { return {}; }
    QString tool_picture(const QString&) const override { return {}; }
    QMenu* open_popup() override { return popup.isVisible() ? &popup : nullptr; }
    bool open_window(const QString&) override { return false; }
    bool close_window_by_name(const QString&) override { return false; }
    void quit_program() override {}

    test::ShellBench bench;
    PlainDialogs real;
    DialogSwitch switch_{real};
    QMainWindow main;
    QWidget* window = nullptr;
    QVBoxLayout* layout = nullptr;
    QAction item;
    QMenu popup{&main};
};

struct WalkControls : testing::Test {
    OneWindowShell shell;
};

TEST_F(WalkControls, CheckClicksOnlyWhenItStandsOtherwise) {
    auto* box = shell.add("Check1(3)", new QCheckBox("0008"));
    box->setMinimumWidth(400);  // far more than its text
    int clicks = 0;
    QObject::connect(box, &QCheckBox::clicked, [&] { ++clicks; });
    const Played played = shell.play(
        "expect Homing2.Check1(3) off\n"
        "check Homing2.Check1(3) on\n"
        "expect Homing2.Check1(3) on\n"
        "check Homing2.Check1(3) on\n"
        "click Homing2.Check1(3)\n"
        "expect Homing2.Check1(3) off\n"
        "check Homing2.Check1(3) off\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(clicks, 2);
}

TEST_F(WalkControls, OptionButtonsExcludeEachOther) {
    shell.add("Option1", new QRadioButton("one"));
    shell.add("Option2", new QRadioButton("two"));
    const Played played = shell.play(
        "check Homing2.Option1 on\nexpect Homing2.Option1 on\n"
        "click Homing2.Option2\nexpect Homing2.Option1 off\nexpect Homing2.Option2 on\n"
        "check Homing2.Option1 off\nexpect Homing2.Option2 on\n");
    EXPECT_EQ(played.lines, Lines{});
}

TEST_F(WalkControls, DisabledAndHiddenControlsAreLeftAlone) {
    auto* disabled = shell.add("Command1", new QPushButton("Start"));
    auto* hidden = shell.add("Command2", new QPushButton("Stop"));
    auto* box = shell.add("Check1", new QCheckBox("mask"));
    auto* combo = shell.add("Combo1", new QComboBox);
    auto* text = shell.add("Text1", new QLineEdit("old"));
    combo->addItems({"a", "b"});
    int clicks = 0;
    for (QPushButton* button : {disabled, hidden})
        QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
    for (QWidget* widget : std::initializer_list<QWidget*>{disabled, box, combo, text})
        widget->setEnabled(false);
    hidden->hide();
    const Played played = shell.play(
        "click Homing2.Command1\nclick Homing2.Command2\ncheck Homing2.Check1 on\n"
        "choose Homing2.Combo1 1\ntype Homing2.Text1 new\nkey Homing2.Text1 x\n"
        "expect Homing2.Command1.enabled false\nexpect Homing2.Command1.visible true\n"
        "expect Homing2.Command2.enabled true\nexpect Homing2.Command2.visible false\n"
        "expect Homing2.Check1 off\nexpect Homing2.Combo1 a\nexpect Homing2.Text1 old\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(clicks, 0);
}

TEST_F(WalkControls, ChooseIsAPickThatThePersonMakes) {
    auto* combo = shell.add("Combo1", new QComboBox);
    combo->addItems({"a", "b", "c"});
    std::vector<int> picks;
    QObject::connect(combo, &QComboBox::activated, [&](int index) { picks.push_back(index); });
    auto* list = shell.add("List1", new QListWidget);
    list->addItems({"x", "y"});
    const Played played = shell.play(
        "choose Homing2.Combo1 2\nexpect Homing2.Combo1 c\n"
        "choose Homing2.Combo1 2\n"
        "choose Homing2.List1 1\nexpect Homing2.List1 y\nchoose Homing2.List1 2\n");
    EXPECT_EQ(played.lines, (Lines{"test.walk:6: List1 has 2 positions, none is 2"}));
    EXPECT_EQ(picks, (std::vector<int>{2, 2}));  // the item that is current already counts too
}

TEST_F(WalkControls, TypeEmptiesTheBoxAndSendsEachKey) {
    auto* box = shell.add("Text1", new KeyLog);
    box->setText("old");
    const Played played =
        shell.play("type Homing2.Text1 -1.5 Ab伺\nexpect Homing2.Text1 -1.5 Ab伺\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(box->keys, "\b|-|1|.|5| |A|b|伺|");
    shell.play("type Homing2.Text1\n");
    EXPECT_EQ(box->text(), "");
}

TEST_F(WalkControls, TypeIntoAPaneOfSeveralLines) {
    auto* pane = shell.add("RichTextBox1", new QPlainTextEdit("old\nlines"));
    const Played played = shell.play(
        "expect Homing2.RichTextBox1 old\\nlines\nprint Homing2.RichTextBox1\n"
        "type Homing2.RichTextBox1 new\n");
    EXPECT_EQ(played.lines, (Lines{"old\\nlines"}));
    EXPECT_EQ(pane->toPlainText(), "new");
}

TEST_F(WalkControls, KeysAreSentInTheirOrder) {
    auto* box = shell.add("Text1", new QLineEdit("abc"));
    int entered = 0;
    QObject::connect(box, &QLineEdit::returnPressed, [&] { ++entered; });
    QApplication::clipboard()->setText("XY");
    const Played played = shell.play(
        "key Homing2.Text1 Home Delete Ctrl+V End z Enter\nexpect Homing2.Text1 XYbcz\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(entered, 1);
}

TEST_F(WalkControls, DragMovesFromPartToPartOfTheControl) {
    auto* surface = shell.add("Picture1", new Surface);
    surface->setFixedSize(200, 100);
    shell.play("drag Homing2.Picture1 0 500 1000 1000\n");
    ASSERT_EQ(surface->events.size(), 10U);
    EXPECT_EQ(surface->events.front(), "press 0,50");
    EXPECT_EQ(surface->events[1], "move 25,56");
    EXPECT_EQ(surface->events.back(), "release 200,100");
    surface->events.clear();
    shell.play("drag Homing2.Picture1 100 100 100 100 right\n");
    EXPECT_EQ(surface->events.front(), "press 20,10 right");
    EXPECT_EQ(surface->events.back(), "release 20,10 right");
}

TEST_F(WalkControls, TextOfImagesProgressTabsAndLabels) {
    auto* image = shell.add("Image1", new QLabel);
    image->setProperty(kPictureProperty, "lampred");
    auto* bar = shell.add("ProgressBar1", new QProgressBar);
    bar->setValue(42);
    auto* tabs = shell.add("SSTab1", new QTabWidget);
    tabs->addTab(new QWidget, "&One");
    tabs->addTab(new QWidget, "Two");
    shell.add("LabelA", new QLabel("R & D"));
    const Played played = shell.play(
        "print Homing2.Image1\nprint Homing2.ProgressBar1\nprint Homing2.SSTab1\n"
        "tab Homing2.SSTab1 1\nprint Homing2.SSTab1\nprint Homing2.LabelA\n"
        "tab Homing2.SSTab1 2\ntab Homing2.LabelA 0\ncheck Homing2.LabelA on\n"
        "choose Homing2.LabelA 0\n");
    EXPECT_EQ(
        played.lines,
        (Lines{"lampred", "42", "One", "Two", "R & D",
               "test.walk:7: SSTab1 has 2 positions, none is 2", "test.walk:8: LabelA has no tabs",
               "test.walk:9: LabelA can't be checked", "test.walk:10: LabelA is no list"}));
}

TEST_F(WalkControls, ImageControlsCanBeClicked) {
    auto* surface = shell.add("Image2", new Surface);
    surface->setProperty(kPictureProperty, "open");
    shell.play("click Homing2.Image2\n");
    EXPECT_EQ(surface->events.size(), 2U);
}

TEST_F(WalkControls, AnswersAreTakenInTheirOrderAndThenBoxesAreConfirmed) {
    std::vector<base::Answer> answers;
    QObject::connect(&shell.item, &QAction::triggered, [&] {
        answers.push_back(
            shell.switch_.show(" Notice", "Go on?\r\nReally?", base::Buttons::kOkCancel));
    });
    const Played played = shell.play(
        "answer cancel\nanswer ok\nmenu aboutx\nmenu aboutx\nmenu aboutx\n"
        "expect-message Go on?\\nReally?\n");
    EXPECT_EQ(played.lines, (Lines(3, "message:  Notice | Go on?\\nReally?")));
    EXPECT_EQ(answers, (std::vector{base::Answer::kCancel, base::Answer::kOk, base::Answer::kOk}));
}

TEST_F(WalkControls, FileDialogsTakeTheNextPathOrAreCancelled) {
    std::vector<std::optional<std::string>> paths;
    FileRequest request;
    request.suffix = "tpjt";
    QObject::connect(&shell.item, &QAction::triggered,
                     [&] { paths.push_back(shell.switch_.ask_file(request)); });
    shell.play("file my work/a.tpjt\nfile -\nmenu aboutx\nmenu aboutx\nmenu aboutx\n");
    ASSERT_EQ(paths.size(), 3U);
    EXPECT_EQ(paths[0], "my work/a.tpjt");
    EXPECT_EQ(paths[1], std::nullopt);
    EXPECT_EQ(paths[2], std::nullopt);
    request.kind = FileRequest::Kind::kSave;
    shell.play("file b\nfile c.txt\nmenu aboutx\nmenu aboutx\n");
    EXPECT_EQ(paths[3], "b.tpjt");  // as the dialog does
    EXPECT_EQ(paths[4], "c.txt");
}

TEST_F(WalkControls, FileMayStandInTheFolderOfTheProgram) {
    std::vector<std::optional<std::string>> paths;
    QObject::connect(&shell.item, &QAction::triggered,
                     [&] { paths.push_back(shell.switch_.ask_file({})); });
    shell.play("file {data}/my work/a.cdo\nfile x/{data}/a.cdo\nmenu aboutx\nmenu aboutx\n");
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_EQ(paths[0], (shell.bench.workstation.folder / "my work/a.cdo").string());
    EXPECT_EQ(paths[1], "x/{data}/a.cdo");
}

TEST_F(WalkControls, MenuThatRunsItsOwnLoopIsPickedFromInside) {
    QString picked;
    QAction* action = shell.popup.addAction(QStringLiteral("Delete"));
    action->setObjectName(QStringLiteral("deling"));
    QObject::connect(action, &QAction::triggered, [&] { picked = QStringLiteral("deling"); });
    QObject::connect(&shell.item, &QAction::triggered,
                     [&] { shell.popup.exec(shell.main.mapToGlobal(QPoint(5, 5))); });
    const Played played = shell.play("menu aboutx\npopup deling\nexpect MDIForm1.visible true\n");
    EXPECT_EQ(played.lines, Lines{});
    EXPECT_EQ(played.status, 0);
    EXPECT_EQ(picked, QStringLiteral("deling"));
}

TEST_F(WalkControls, CommandThatPumpsEventsIsFinishedBeforeTheNext) {
    std::vector<std::string> order;
    shell.add("Command1", new QPushButton("x"));
    QObject::connect(&shell.item, &QAction::triggered, [&] {
        QEventLoop loop;
        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        loop.exec();
        order.emplace_back("menu over");
    });
    QObject::connect(shell.window->findChild<QPushButton*>(), &QPushButton::clicked,
                     [&] { order.emplace_back("click"); });
    shell.play("menu aboutx\nclick Homing2.Command1\n");
    EXPECT_EQ(order, (std::vector<std::string>{"menu over", "click"}));
}

TEST_F(WalkControls, DialogsGoBackToTheirOwnWhenTheWalkthroughIsOver) {
    shell.play("");
    EXPECT_EQ(&shell.switch_.current(), &shell.real);
}

TEST_F(WalkControls, StateNamesKindsAndSkipsWhatIsPartOfAControl) {
    auto* combo = shell.add("Combo1", new QComboBox);
    combo->setEditable(true);
    combo->addItems({"a", "b"});
    shell.add("Check1(0)", new QCheckBox("0001"))->setChecked(true);
    shell.add("", new QPushButton("unnamed"));
    const std::vector<QWidget*> controls = controls_of(*shell.window);
    ASSERT_EQ(controls.size(), 2U);
    const ControlState first = control_state(*controls[0], *shell.window);
    EXPECT_EQ(first.type, "ComboBox");
    EXPECT_EQ(first.items, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(first.current, 0);
    EXPECT_EQ(first.checked, std::nullopt);
    const ControlState second = control_state(*controls[1], *shell.window);
    EXPECT_EQ(second.type, "CheckBox");
    EXPECT_EQ(second.text, "0001");  // its caption; the target's text would be "on"
    EXPECT_EQ(second.checked, true);
}

}  // namespace
}  // namespace servo::app
