// The oscilloscope's window through its controls, by their names.
#include <QAccessible>
#include <QClipboard>
#include <QProgressBar>

#include "scope_window_bench.h"

namespace servo::scope::test {
namespace {

TEST(ScopeWindow, HasEveryControlUnderItsName) {
    WindowBench bench;
    std::vector<std::string> names{"Picture1", "ProgressBar1", "Label14", "Label25",
                                   "Label27",  "Label29",      "Label40", "Label44",
                                   "LabelX1",  "LabelX2",      "LabelY1", "LabelY2"};
    const auto add = [&](const char* kind, int first, int last) {
        for (int number = first; number <= last; ++number)
            names.push_back(kind + std::to_string(number));
    };
    const auto add_array = [&](const char* kind, int count) {
        for (int index = 0; index < count; ++index)
            names.push_back(numbered(kind, index));
    };
    add("Text", 1, 12);
    add("Combo", 1, 9);
    add("Combo", 11, 12);
    add("Image", 1, 10);
    add("Check", 1, 14);
    add("Command", 6, 13);
    add("Label", 1, 4);
    add("Label", 7, 10);
    add("Label", 16, 22);
    add("Label", 31, 35);
    add_array("Label15", 5);
    add_array("Label43", 10);
    add_array("ObjectButton", 5);
    for (const std::string& name : names)
        EXPECT_NE(app::find_control(bench.window, to_qt(name)), nullptr) << name;
}

TEST(ScopeWindow, ShowsTheToldDefaults) {
    WindowBench bench;
    EXPECT_EQ(bench.text("Text1"), "1");
    EXPECT_EQ(bench.text("Label18"), "62.5us");
    EXPECT_EQ(bench.text("Text2"), "250");
    EXPECT_EQ(bench.text("Text3"), "500");
    EXPECT_EQ(bench.text("Text4"), "500");
    EXPECT_EQ(bench.text("Text5"), "1.0E00");
    EXPECT_EQ(bench.text("Text9"), "0");
    EXPECT_EQ(bench.text("Check5"), "off");
    EXPECT_EQ(bench.text("Command6"), "Start");
    EXPECT_EQ(bench.text("ProgressBar1"), "0");
    EXPECT_EQ(bench.text("Image5"), "Image7");
    EXPECT_EQ(bench.text("Image8"), "Image8");
    EXPECT_EQ(bench.text("Label20"), "Scope Mode:Normal");
    EXPECT_EQ(bench.text("Label44"), "Zoom Depth:0");
    EXPECT_FALSE(bench.any("Label22").isVisible());
}

TEST(ScopeWindow, SwitchesItsLanguage) {
    WindowBench bench;
    bench.walk(base::Language::kChinese);
    EXPECT_EQ(bench.window.windowTitle(), QStringLiteral("示波器"));
    EXPECT_EQ(bench.text("Label17"), "采样周期");
    EXPECT_EQ(bench.text("Label19"), "触发偏移");
    EXPECT_EQ(bench.text("Label21"), "采集个数");
    EXPECT_EQ(bench.text("Label16"), "触发电平");
    EXPECT_EQ(bench.text("Label14"), "触发源");
    EXPECT_EQ(bench.control<QAbstractButton>("Check10").text(), QStringLiteral("小刻度"));
    EXPECT_EQ(bench.text("Command6"), "开始");
    EXPECT_EQ(bench.text("Command7"), "重读数据");
    EXPECT_EQ(bench.text("Command8"), "导出");
    EXPECT_EQ(bench.text("Command13"), "导入");
    EXPECT_EQ(bench.text("Label20"), "示波器模式:正常");
    EXPECT_EQ(bench.text("Label44"), "缩放等级:0");
    bench.walk(base::Language::kEnglish);
    EXPECT_EQ(bench.window.windowTitle(), QStringLiteral("Scope"));
    EXPECT_EQ(bench.text("Label17"), "Sampling period");
    EXPECT_EQ(bench.control<QAbstractButton>("Check5").text(), QStringLiteral("Single"));
    EXPECT_EQ(bench.text("Command7"), "Re-read");
}

TEST(ScopeWindow, AUnitWithASlashIsNoPairOfLanguages) {
    auto objects = usual_objects();
    objects[2] = record("60F9", "16", "speed", "Integer16", "[DEC rps/s]N\n[rps/s DEC]N");
    ScopeWorld world(objects);
    ScopeWindow window(world.scope, {});
    world.scope.pick_object(0, 3);
    world.scope.click_enable(0);
    window.refresh_now();
    app::walk_window(window, {.slot = 0, .designed_font = true});
    EXPECT_EQ(app::control_text(*app::find_control(window, "Combo5")), QStringLiteral("rps/s"));
}

TEST(ScopeWindow, PicksAnObjectAndRecordsIt) {
    WindowBench bench;
    bench.choose("Combo2", 2);
    EXPECT_EQ(bench.text("Combo2"), "q current");
    EXPECT_EQ(bench.text("Combo6"), "A");
    bench.check("Check13");
    EXPECT_EQ(bench.text("Check13"), "on");
    EXPECT_TRUE(bench.scope.data().channels[1].enable);
}

TEST(ScopeWindow, ATickWithoutAnObjectIsTakenBack) {
    WindowBench bench;
    bench.check("Check14");
    EXPECT_EQ(bench.text("Check14"), "off");
}

TEST(ScopeWindow, AWideObjectUnticksItsPartnerOnScreen) {
    WindowBench bench;
    bench.choose("Combo1", 4);
    bench.check("Check14");
    bench.choose("Combo2", 5);
    bench.check("Check13");
    EXPECT_EQ(bench.text("Check13"), "on");
    EXPECT_EQ(bench.text("Check14"), "off");
}

TEST(ScopeWindow, ALetterThatDoesNotPassTheFilterIsSwallowed) {
    WindowBench bench;
    bench.type("Text2", "1-.5.-");
    EXPECT_EQ(bench.text("Text2"), "1-.5");
    bench.type("Text2", "12 3,4");
    EXPECT_EQ(bench.text("Text2"), "1234");
    EXPECT_EQ(bench.scope.data().Text2, "1234");
}

TEST(ScopeWindow, APastePassesTheFilterToo) {
    WindowBench bench;
    QApplication::clipboard()->setText(QStringLiteral("1.2.3 4"));
    bench.type("Text3", "");
    bench.key("Text3", Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(bench.text("Text3"), "1.234");
}

TEST(ScopeWindow, EnterCommitsAndGoesToStart) {
    for (const char* box : {"Text1", "Text2", "Text3"}) {
        WindowBench bench;
        bench.type(box, "7");
        bench.port.take_sent();
        bench.key(box, Qt::Key_Return);
        EXPECT_FALSE(bench.port.take_sent().empty()) << box;
        EXPECT_EQ(bench.window.focusWidget(), &bench.any("Command6")) << box;
    }
}

TEST(ScopeWindow, EscLeavesABoxForThePlot) {
    WindowBench bench;
    bench.key("Text1", Qt::Key_Escape);
    EXPECT_EQ(bench.window.focusWidget(), &bench.any("Picture1"));
}

TEST(ScopeWindow, TellsWhichControlHasTheFocus) {
    WindowBench bench;
    bench.window.activateWindow();
    bench.any("Text3").setFocus();
    QApplication::processEvents();
    EXPECT_EQ(bench.scope.data().focus, "Text3");
    bench.any("Text4").setFocus();
    QApplication::processEvents();
    EXPECT_EQ(bench.scope.data().focus, "Text4");
}

TEST(ScopeWindow, ShowsARun) {
    WindowBench bench;
    bench.choose("Combo1", 1);
    bench.check("Check14");
    bench.click("Command6");
    EXPECT_EQ(bench.text("Command6"), "Sampling");
    bench.click("Command6");
    EXPECT_EQ(bench.text("Command6"), "Start");
}

TEST(ScopeWindow, ShowsARecording) {
    WindowBench bench;
    bench.record_sine();
    EXPECT_EQ(bench.text("Label44"), "Zoom Depth:0;Time Grid:2493.75uS");
    EXPECT_EQ(bench.text("Label40"), "1 (A)");
    EXPECT_NE(bench.text("Label43(5)"), "");
    EXPECT_NE(bench.text("Label15(0)"), "");
    EXPECT_EQ(bench.text("Label15(4)"), bench.scope.data().Label15[4]);
}

TEST(ScopeWindow, ChangesOfTicksAreGathered) {
    WindowBench bench;
    bench.choose("Combo1", 1);
    bench.scope.pick_object(0, 2);  // as from a tick
    EXPECT_EQ(bench.text("Combo1"), "current");
    EXPECT_TRUE(QTest::qWaitFor([&] { return bench.text("Combo1") == "q current"; },
                                20 * ScopeWindow::kGatherMs));
}

TEST(ScopeWindow, AnOpenListStandsStillWhileThingsChange) {
    WindowBench bench;
    auto& list = bench.control<QComboBox>("Combo1");
    list.showPopup();
    list.view()->setCurrentIndex(list.model()->index(3, 0));
    bench.scope.type(Oscilloscope::Box::kText3, "77");
    bench.window.refresh_now();
    EXPECT_TRUE(list.view()->isVisible());
    EXPECT_EQ(list.view()->currentIndex().row(), 3);
    list.hidePopup();
}

TEST(ScopeWindow, TheWheelOnAListPicksNothing) {
    WindowBench bench;
    auto& list = bench.control<QComboBox>("Combo1");
    list.setFocus();
    QWheelEvent wheel(QPointF(5, 5), list.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(list.currentIndex(), 0);
}

TEST(ScopeWindow, TheObjectButtonsAskForTheirChannel) {
    WindowBench bench;
    std::vector<int> asked;
    QObject::connect(&bench.window, &ScopeWindow::object_asked,
                     [&asked](int channel) { asked.push_back(channel); });
    for (int channel = 0; channel < kChannels; ++channel)
        bench.click(numbered("ObjectButton", channel).c_str());
    EXPECT_EQ(asked, (std::vector{0, 1, 2, 3, 4}));
}

TEST(ScopeWindow, TheEdgeShowsWhatTheDriveReported) {
    WindowBench bench;
    bench.click("Image5");
    EXPECT_EQ(bench.text("Image5"), "Image7");  // not before it is read back
}

TEST(ScopeWindow, ImportModeDisablesWhatRecords) {
    WindowBench bench;
    bench.record_sine();
    bench.path = (std::filesystem::temp_directory_path() / "servo_scope_window.scope").string();
    bench.click("Command8");
    ASSERT_EQ(bench.asked.size(), 1U);
    EXPECT_EQ(bench.asked[0].suffix, "scope");
    EXPECT_EQ(bench.asked[0].filter, "scope");
    EXPECT_EQ(bench.asked[0].name, "");
    bench.click("Command13");
    for (const char* name : {"Text2", "Text3", "Combo1", "Combo2", "Combo3", "Combo4", "Check14",
                             "Check13", "Check12", "Check11", "Command6", "Command7"})
        EXPECT_FALSE(bench.any(name).isEnabled()) << name;
    EXPECT_EQ(bench.text("Label20"), "Scope Mode:Import.Switch to Normal mode press ");
    EXPECT_TRUE(bench.any("Label22").isVisible());
    EXPECT_EQ(bench.text("Label22"), "Here");
    bench.key("Picture1", Qt::Key_Plus);
    EXPECT_EQ(bench.scope.data().zoomDepth, 1);
    bench.click("Label22");
    EXPECT_TRUE(bench.any("Command6").isEnabled());
    EXPECT_EQ(bench.text("Label20"), "Scope Mode:Normal");
    EXPECT_EQ(bench.text("Label44"), "Zoom Depth:0");
    std::filesystem::remove(*bench.path);
}

TEST(ScopeWindow, ACancelledFileDialogDoesNothing) {
    WindowBench bench;
    bench.record_sine();
    bench.path.reset();
    for (const char* button : {"Command8", "Command13", "CommandJ"})
        bench.click(button);
    EXPECT_EQ(bench.asked.size(), 3U);
    EXPECT_FALSE(bench.scope.data().importMode);
    EXPECT_TRUE(bench.told.empty());
}

QString spoken(QWidget& control) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&control);
    return accessible == nullptr ? QString() : accessible->text(QAccessible::Name);
}

TEST(ScopeWindow, EveryControlHasASpokenNameAndATip) {
    WindowBench bench;
    for (const auto language : {base::Language::kEnglish, base::Language::kChinese}) {
        bench.walk(language);
        for (QWidget* control : app::controls_of(bench.window)) {
            if (control->focusPolicy() == Qt::NoFocus || !control->isVisibleTo(&bench.window))
                continue;
            const std::string name = control->objectName().toStdString();
            EXPECT_FALSE(spoken(*control).isEmpty()) << name;
            if (name != "Picture1") {
                EXPECT_FALSE(control->toolTip().isEmpty()) << name;
            }
        }
    }
}

TEST(ScopeWindow, TabGoesFromSetUpToLooking) {
    WindowBench bench;
    const std::vector<std::string> order{"Check14", "Combo1", "ObjectButton(0)", "Combo5", "Text5",
                                         "Text9",   "Check6", "Check1",          "Check13"};
    QWidget* at = &bench.any("Check14");
    for (const std::string& name : order) {
        EXPECT_EQ(at->objectName().toStdString(), name);
        do {
            at = at->nextInFocusChain();
        } while (at->focusPolicy() == Qt::NoFocus || !at->isVisible() || !at->isEnabled());
    }
}

}  // namespace
}  // namespace servo::scope::test
