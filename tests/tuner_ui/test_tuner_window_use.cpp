// What the window makes of a scan (margins, resonances, step response), and work by keys.
#include <QListWidget>

#include "tuner_window_bench.h"

namespace servo::tuner::test {
namespace {

struct TunerWindowUse : testing::Test, WindowBench {};

// --- Analysis

TEST_F(TunerWindowUse, MarginsAreListedAndMarked) {
    load();
    EXPECT_EQ(text("LabelMargin(0)"), "-");
    EXPECT_EQ(text("LabelMargin(10)"), "-");
    simulate();
    const std::string crossover = text("LabelMargin(0)");
    ASSERT_NE(crossover, "-");
    EXPECT_NEAR(std::stod(crossover), kCrossover, 8.0);
    EXPECT_NE(text("LabelMargin(4)"), "-") << "phase margin";
    EXPECT_NE(text("LabelMargin(1)"), "-") << "crossover of the position loop";
    EXPECT_NE(text("LabelMargin(10)"), "-");
    const auto& marks = scene().marks;
    const auto has = [&](MarkKind kind) {
        return std::ranges::any_of(marks, [kind](const auto& mark) { return mark.kind == kind; });
    };
    EXPECT_TRUE(has(MarkKind::kCrossover));
    EXPECT_TRUE(has(MarkKind::kPhaseMargin));
    EXPECT_TRUE(has(MarkKind::kResonance));
}

TEST_F(TunerWindowUse, ResonancesAreNamedAndTheHighestIsPicked) {
    load();
    auto& list = control<QListWidget>("ListResonances");
    ASSERT_GE(list.count(), 1);
    const double frequency = list.currentItem()->text().section(' ', 0, 0).toDouble();
    EXPECT_NEAR(frequency, kResonance, 4.0);
    EXPECT_TRUE(list.currentItem()->text().contains(QStringLiteral("resonance")));
    walk(base::Language::kChinese);
    EXPECT_TRUE(list.currentItem()->text().contains(QStringLiteral("谐振")));
    EXPECT_EQ(list.currentItem()->text().section(' ', 0, 0).toDouble(), frequency);
}

TEST_F(TunerWindowUse, TheNotchGoesIntoTheFirstFreeFilterWhenAskedTo) {
    load();
    control<QTabWidget>("TabAnalysis").setCurrentIndex(1);
    click("Check17");
    EXPECT_EQ(text("CommandNotch"), "Put into filter 2");
    for (const FilterSlot& slot : tuner.data().slots)
        EXPECT_NE(slot.type, 2) << "nothing is filled in by itself";
    click("CommandNotch");
    EXPECT_EQ(text("Check18"), "on");
    EXPECT_EQ(text("Combo4"), "Notch Filter");
    EXPECT_NEAR(std::stod(text("Text17")), kResonance, 4.0);
    EXPECT_GT(std::stod(text("Text19")), 0.0);
    EXPECT_GT(std::stod(text("Text20")), 0.0);
    EXPECT_EQ(text("ParameterLabel(4)"), "Notch F");
    simulate();
    EXPECT_TRUE(notice.boxes.empty()) << "what is proposed is not refused";
}

TEST_F(TunerWindowUse, WithoutAFreeFilterTheNotchHasNoPlace) {
    load();
    control<QTabWidget>("TabAnalysis").setCurrentIndex(1);
    for (const char* use : {"Check17", "Check18", "Check2", "Check19"})
        click(use);
    EXPECT_FALSE(enabled("CommandNotch"));
    EXPECT_EQ(text("CommandNotch"), "Filters 1 to 4 are all in use");
    click("Check2");
    EXPECT_TRUE(enabled("CommandNotch"));
    EXPECT_EQ(text("CommandNotch"), "Put into filter 3");
}

TEST_F(TunerWindowUse, TheStepResponseIsWorkedOutWhenItIsSeen) {
    load();
    control<QTabWidget>("TabAnalysis").setCurrentIndex(2);
    EXPECT_EQ(text("LabelOvershoot"), "Simulate first.");
    simulate();
    EXPECT_EQ(text("LabelOvershoot").substr(0, 9), "Overshoot");
    EXPECT_EQ(text("LabelStep").substr(0, 8), "Rises in");
    const std::string velocity = text("LabelStep");
    choose("ComboStep", 1);
    EXPECT_NE(text("LabelStep"), velocity);
    walk(base::Language::kChinese);
    EXPECT_EQ(text("ComboStep"), "位置环");
    EXPECT_EQ(text("LabelOvershoot").substr(0, 6), "超调");
}

// --- Keyboard

TEST_F(TunerWindowUse, TabGoesFromTheScanOverThePictureToTheFiles) {
    std::vector<std::string> order;
    QWidget* first = &any("Text1");
    for (QWidget* at = first;;) {
        if ((at->focusPolicy() & Qt::TabFocus) != 0 && at->isEnabled() && at->isVisible())
            order.push_back(at->objectName().toStdString());
        at = at->nextInFocusChain();
        if (at == first) break;
    }
    const auto place = [&](const char* name) {
        return std::ranges::find(order, std::string(name)) - order.begin();
    };
    const std::vector<const char*> kOrder{
        "Text1",   "Text2",  "Text4",    "Text3",    "Check1",   "PictureA", "Check3",  "Check8",
        "Check17", "Combo3", "Text13",   "Check18",  "Check21",  "Combo7",   "Text29",  "Text10",
        "Text11",  "Text9",  "Command4", "Command2", "Command3", "Check15",  "Check16", "Combo2"};
    for (std::size_t i = 1; i < kOrder.size(); ++i) {
        EXPECT_LT(place(kOrder[i - 1]), place(kOrder[i])) << kOrder[i - 1] << " " << kOrder[i];
        EXPECT_LT(place(kOrder[i]), static_cast<std::ptrdiff_t>(order.size())) << kOrder[i];
    }
}

TEST_F(TunerWindowUse, EscLeadsToThePicture) {
    window.activateWindow();
    key("Text9", Qt::Key_Escape);
    EXPECT_EQ(window.focusWidget(), &any("PictureA"));
}

TEST_F(TunerWindowUse, EveryControlThatIsPressedHasANameAndATip) {
    for (const auto to : {base::Language::kChinese, base::Language::kEnglish}) {
        walk(to);
        for (QWidget* each : app::controls_of(window)) {
            if (each->focusPolicy() == Qt::NoFocus || qobject_cast<QTabWidget*>(each) != nullptr)
                continue;
            const bool blank =
                each->accessibleName().isEmpty() && (each->focusPolicy() & Qt::TabFocus) != 0;
            EXPECT_FALSE(blank) << each->objectName().toStdString();
        }
    }
}

}  // namespace
}  // namespace servo::tuner::test
