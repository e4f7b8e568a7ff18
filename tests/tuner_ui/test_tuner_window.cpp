// The window `ADVtunner` through its controls.
#include "tuner/filter.h"
#include "tuner_window_bench.h"

namespace servo::tuner::test {
namespace {

using Box = std::pair<std::string, std::string>;

struct TunerWindowTest : testing::Test, WindowBench {};

struct SlotControls {
    const char* use;
    const char* kind;
    int first_text;
    const char* curve;
};
constexpr std::array<SlotControls, kSlots> kSlotControls{{{"Check17", "Combo3", 13, "Check9"},
                                                          {"Check18", "Combo4", 17, "Check10"},
                                                          {"Check2", "Combo1", 5, "Check11"},
                                                          {"Check19", "Combo5", 21, "Check12"},
                                                          {"Check20", "Combo6", 25, "Check13"},
                                                          {"Check21", "Combo7", 29, "Check14"}}};

std::string box_name(int slot, int parameter) {
    return "Text" +
           std::to_string(kSlotControls.at(static_cast<std::size_t>(slot)).first_text + parameter);
}
std::string label_name(int slot, int parameter) {
    return "ParameterLabel(" + std::to_string(slot * kParameters + parameter) + ")";
}

// --- Captions

TEST_F(TunerWindowTest, BeginsWithTheDefaultsOfItsBoxes) {
    EXPECT_EQ(text("Text1"), "60");
    EXPECT_EQ(text("Text2"), "4");
    EXPECT_EQ(text("Text4"), "3");
    EXPECT_EQ(text("Text3"), "60");
    EXPECT_EQ(text("Text10"), "100");
    EXPECT_EQ(text("Text11"), "0.1");
    EXPECT_EQ(text("Text9"), "1");
    EXPECT_EQ(text("Label36"), "Not start");
    EXPECT_FALSE(enabled("Command1"));
    EXPECT_FALSE(enabled("CommandA"));
    EXPECT_EQ(text("Check1"), "off");
    EXPECT_EQ(text("Check15"), "on");
    EXPECT_EQ(text("Check16"), "on");
    EXPECT_EQ(text("Combo2"), "20dB");
}

TEST_F(TunerWindowTest, CaptionsAreThoseOfTheLanguage) {
    struct Told {
        const char* control;
        const char* chinese;
        const char* english;
    };
    constexpr std::array kTold{Told{"Check1", "解锁", "Unlock"},
                               Told{"Command1", "启动", "Start"},
                               Told{"Command4", "仿真", "Simulate"},
                               Told{"Command2", "加载", "Load"},
                               Told{"Command3", "保存", "Save"},
                               Told{"Check3", "电机与负载", "Motor and load"},
                               Told{"Check4", "速度开环仿真", "Open velocity"},
                               Told{"Check5", "速度闭环仿真", "Closed velocity"},
                               Told{"Check6", "电流闭环", "Current"},
                               Told{"Check7", "位置开环仿真", "Open position"},
                               Told{"Check8", "位置闭环仿真", "Closed position"},
                               Told{"Check9", "滤波器1", "Filter 1"},
                               Told{"Check14", "滤波器6", "Filter 6"},
                               Told{"Check15", "增益图", "Gain"},
                               Told{"Check16", "相位图", "Phase"},
                               Told{"Check17", "使用", "Use"},
                               Told{"Check2", "使用", "Use"}};
    for (const auto& [language_of_turn, member] :
         {std::pair{base::Language::kChinese, &Told::chinese},
          std::pair{base::Language::kEnglish, &Told::english}}) {
        walk(language_of_turn);
        for (const Told& told_text : kTold)
            EXPECT_EQ(caption(told_text.control), told_text.*member) << told_text.control;
    }
    EXPECT_EQ(text("Label1"), "Start");
    EXPECT_EQ(text("Label2"), "Stop");
    EXPECT_EQ(text("Label3"), "Step");
    walk(base::Language::kChinese);
    EXPECT_EQ(text("Label1"), "开始");
    EXPECT_EQ(text("Label2"), "结束");
    EXPECT_EQ(text("Label3"), "步长");
    EXPECT_EQ(text("Label36"), "未启动");
}

TEST_F(TunerWindowTest, TypesFollowTheLanguageAndKeepTheirChoice) {
    choose("Combo1", 2);
    EXPECT_EQ(text("Combo1"), "Notch Filter");
    walk(base::Language::kChinese);
    EXPECT_EQ(text("Combo1"), "陷波滤波器");
    auto& list = control<QComboBox>("Combo7");
    std::vector<std::string> items;
    items.reserve(6);
    for (int i = 0; i < list.count(); ++i)
        items.push_back(list.itemText(i).toStdString());
    EXPECT_EQ(items, (std::vector<std::string>{"一阶低通滤波器", "二阶低通滤波器", "陷波滤波器",
                                               "一阶超前滞后滤波器", "二阶超前滞后滤波器",
                                               "滑动平均滤波"}));
    EXPECT_EQ(tuner.data().slots[2].type, 2);
}

// --- Unlock and start

TEST_F(TunerWindowTest, UnlockAsksAndOkEnablesTheStart) {
    click("Check1");
    const Box asked_box = box();
    EXPECT_EQ(asked_box.first, "Notice");
    EXPECT_EQ(asked_box.second.substr(0, 34), "Warning:to unlock [Start] button.\n");
    EXPECT_EQ(text("Check1"), "on");
    EXPECT_TRUE(enabled("Command1"));
    click("Check1");
    EXPECT_TRUE(notice.boxes.empty()) << "unticking asks nothing";
    EXPECT_FALSE(enabled("Command1"));
}

TEST_F(TunerWindowTest, UnlockAsksAndCancelUnticks) {
    notice.answer = base::Answer::kCancel;
    walk(base::Language::kChinese);
    click("Check1");
    const Box asked_box = box();
    EXPECT_EQ(asked_box.first, "提示");
    EXPECT_EQ(asked_box.second.substr(0, asked_box.second.find('\n')), "警告:即将解锁[启动]按钮。");
    EXPECT_EQ(text("Check1"), "off");
    EXPECT_FALSE(enabled("Command1"));
}

TEST_F(TunerWindowTest, StartSaysThatTheLinkIsClosed) {
    click("Check1");
    notice.boxes.clear();
    click("Command1");
    EXPECT_EQ(box(), (Box{"Notice", "Please Set the Communication first!"}));
    EXPECT_TRUE(enabled("Command1"));
}

TEST_F(TunerWindowTest, StartTakesTheBoxesAndLocksItself) {
    open = true;
    type("Text1", "100");
    type("Text2", "10");
    type("Text4", "5");
    type("Text3", "400");
    click("Check1");
    click("Command1");
    EXPECT_EQ(text("Label36"), "Acquiring");
    EXPECT_EQ(text("Check1"), "off");
    EXPECT_FALSE(enabled("Command1"));
    EXPECT_TRUE(enabled("CommandA"));
    EXPECT_EQ(state.scanRequested, -1);
    EXPECT_EQ(tuner.scan().settings().magCurrent, 100);
    EXPECT_EQ(tuner.scan().points(), 79);
    walk(base::Language::kChinese);
    EXPECT_EQ(text("Label36"), "采集中");
}

TEST_F(TunerWindowTest, CancelGivesUpARunningScan) {
    open = true;
    click("Check1");
    click("Command1");
    click("CommandA");
    for (int i = 0; i < 20 && state.scanRequested != 0; ++i) {
        state.sendmod = 0;
        const auto sent = tick();
        if (sent) feed(answer(link::reply_key(*sent), 0, 0x60));
        tick();
    }
    EXPECT_EQ(state.scanRequested, 0);
    EXPECT_FALSE(enabled("CommandA"));
}

TEST_F(TunerWindowTest, ARefusedBoxIsNamedInEnglishInBothLanguages) {
    open = true;
    walk(base::Language::kChinese);
    click("Check1");
    notice.boxes.clear();
    type("Text1", "31");
    click("Command1");
    EXPECT_EQ(box(), (Box{"Notice", "the mag current must be in the range of 32 to 800"}));
}

TEST_F(TunerWindowTest, EnterInTheBoxesOfTheScanStartsNothing) {
    open = true;
    click("Check1");
    for (const char* name : {"Text1", "Text2", "Text3", "Text4"}) {
        key(name, Qt::Key_Return);
        EXPECT_EQ(state.scanRequested, 0) << name;
    }
}

// --- Filters

TEST_F(TunerWindowTest, ATypeRelabelsItsRowsAndBlanksTheOthers) {
    constexpr std::array<std::array<const char*, kParameters>, 6> kLabels{{
        {"Bandwidth", "", "", ""},
        {"Bandwidth", "Damping", "", ""},
        {"Notch F", "Damping", "Notch Width", "Notch Depth"},
        {"", "", "Cut Gain", "Phase Center"},
        {"", "Damping", "Cut Gain", "Phase Center"},
        {"Order(Int)", "", "Ts(s)", ""},
    }};
    for (int slot = 0; slot < kSlots; ++slot)
        for (int type_index = 5; type_index >= 0; --type_index) {
            choose(kSlotControls.at(static_cast<std::size_t>(slot)).kind, type_index);
            for (int i = 0; i < kParameters; ++i)
                EXPECT_EQ(text(label_name(slot, i)),
                          kLabels.at(static_cast<std::size_t>(type_index))
                              .at(static_cast<std::size_t>(i)))
                    << "slot " << slot + 1 << " type " << type_index + 1;
        }
}

TEST_F(TunerWindowTest, UseBoxesAndParametersReachTheirSlot) {
    for (int slot = 0; slot < kSlots; ++slot) {
        const SlotControls& names = kSlotControls.at(static_cast<std::size_t>(slot));
        click(names.use);
        for (int i = 0; i < kParameters; ++i)
            type(box_name(slot, i), std::to_string(10 * slot + i + 1).c_str());
        const FilterSlot& held = tuner.data().slots.at(static_cast<std::size_t>(slot));
        EXPECT_TRUE(held.use) << names.use;
        for (int i = 0; i < kParameters; ++i)
            EXPECT_EQ(held.parameters.at(static_cast<std::size_t>(i)),
                      std::to_string(10 * slot + i + 1));
        click(names.use);
        EXPECT_FALSE(tuner.data().slots.at(static_cast<std::size_t>(slot)).use);
    }
}

TEST_F(TunerWindowTest, ABoxWithoutALabelTakesEntriesButIsLeftOutByTab) {
    EXPECT_EQ(any("Text14").focusPolicy(), Qt::ClickFocus);
    type("Text14", "0.7");
    EXPECT_EQ(tuner.data().slots[0].parameters[1], "0.7");
    choose("Combo3", 1);
    EXPECT_EQ(any("Text14").focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(text("Text14"), "0.7");
}

TEST_F(TunerWindowTest, ARefusedFilterIsNamed) {
    click("Check17");
    choose("Combo3", 1);
    type("Text13", "200");
    type("Text14", "0");
    click("Command4");
    EXPECT_EQ(box(), (Box{"Notice", "The filter 1 setting is wrong."}));
    walk(base::Language::kChinese);
    click("Command4");
    EXPECT_EQ(box(), (Box{"提示", "滤波器 1 设置错误."}));
}

TEST_F(TunerWindowTest, EnterInAFilterBoxSimulates) {
    load();
    click("Check2");
    choose("Combo1", 0);
    type("Text5", "200");
    key("Text5", Qt::Key_Return);
    EXPECT_GT(tuner.data().simulation.points, 0);
    EXPECT_TRUE(tuner.data().simulation.filter_used[2]);
}

// --- Curves

TEST_F(TunerWindowTest, TicksSwitchTheirCurves) {
    load();
    for (const SlotControls& names : kSlotControls) {
        click(names.use);
        type("Text" + std::to_string(names.first_text), "300");
    }
    simulate();
    constexpr std::array<const char*, kCurves> kBoxes{"Check3",  "Check4",  "Check5",  "Check6",
                                                      "Check7",  "Check8",  "Check9",  "Check10",
                                                      "Check11", "Check12", "Check13", "Check14"};
    for (int i = 0; i < kCurves; ++i) {
        const auto curve = static_cast<Curve>(i);
        const char* name = kBoxes.at(static_cast<std::size_t>(i));
        const bool phases = curve != Curve::kOpenPosition && curve != Curve::kClosedPosition;
        for (int turn = 0; turn < 2; ++turn) {
            const bool on = text(name) == "on";
            EXPECT_EQ(draws(curve), on) << name;
            EXPECT_EQ(draws(curve, true), on && phases) << name;
            click(name);
            EXPECT_EQ(text(name), on ? "off" : "on");
        }
    }
}

TEST_F(TunerWindowTest, AreasAreSwitchedByTheirTicks) {
    load();
    EXPECT_TRUE(draws(Curve::kPlant));
    EXPECT_TRUE(draws(Curve::kPlant, true));
    click("Check15");
    EXPECT_FALSE(draws(Curve::kPlant));
    EXPECT_TRUE(draws(Curve::kPlant, true));
    click("Check15");
    click("Check16");
    EXPECT_TRUE(draws(Curve::kPlant));
    EXPECT_FALSE(draws(Curve::kPlant, true));
}

TEST_F(TunerWindowTest, TheGainScaleRedraws) {
    load();
    const int before = scene().surface.gain_range;
    choose("Combo2", 1);
    EXPECT_EQ(before, 40);
    window.refresh_now();
    EXPECT_EQ(scene().surface.gain_range, 80);
}

TEST_F(TunerWindowTest, FilterCurvesAppearWithoutAScan) {
    click("Check17");
    type("Text13", "100");
    click("Check9");
    if (text("Check9") == "off") click("Check9");
    simulate();
    EXPECT_TRUE(draws(Curve::kFilter1));
    EXPECT_FALSE(draws(Curve::kOpenVelocity));
}

TEST_F(TunerWindowTest, AGainOfZeroSimulatesNothingAndSaysNothing) {
    load();
    type("Text10", "0");
    simulate();
    EXPECT_EQ(tuner.data().simulation.points, 0);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(TunerWindowTest, ControlEnterSimulatesFromAnywhere) {
    load();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    key("PictureA", Qt::Key_Return, Qt::ControlModifier);
    EXPECT_GT(tuner.data().simulation.points, 0);
}

TEST_F(TunerWindowTest, TheGainsOfTheScanAreFilledInWhenAskedFor) {
    EXPECT_FALSE(enabled("CommandD"));
    type("Text10", "7");
    load();
    EXPECT_EQ(text("Text10"), "7");
    click("CommandD");
    EXPECT_EQ(text("Text10"), "100");
    EXPECT_EQ(text("Text11"), "0.5") << "a quarter of the drive's integral gain of 2";
    EXPECT_EQ(tuner.data().Text10, "100");
}

}  // namespace
}  // namespace servo::tuner::test
