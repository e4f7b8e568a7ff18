// Nothing is cut and nothing lies over another, in both languages and with larger letters.
#include "../app/cut_texts.h"
#include "../app/larger_font.h"
#include "tuner/curves_panel_widget.h"
#include "tuner_window_bench.h"

namespace servo::tuner::test {
namespace {

class TunerWindowFit : public testing::TestWithParam<int> {
  protected:
    app::test::LargerFont font_{GetParam() / 100.0};

    static void expect_nothing_cut(WindowBench& bench, const std::string& when) {
        QApplication::processEvents();
        for (const std::string& fault : app::test::CutTexts(when).find(bench.window))
            ADD_FAILURE() << fault;
    }
};

INSTANTIATE_TEST_SUITE_P(FontPercent, TunerWindowFit, testing::Values(100, 150),
                         [](const auto& font) { return std::to_string(font.param); });

TEST_P(TunerWindowFit, NothingIsCutInEitherLanguageAndOnAnyTab) {
    WindowBench bench;
    bench.load();
    bench.simulate();
    for (const auto language : {base::Language::kChinese, base::Language::kEnglish}) {
        bench.walk(language);
        for (int type = 0; type < 6; ++type) {
            for (const char* kind : {"Combo1", "Combo3", "Combo4", "Combo5", "Combo6", "Combo7"})
                bench.choose(kind, type);
            bench.control<QTabWidget>("TabAnalysis").setCurrentIndex(type % 3);
            bench.window.resize(bench.window.minimumSizeHint());
            expect_nothing_cut(bench, "type " + std::to_string(type));
        }
    }
}

TEST(TunerWindowSize, FitsASmallDeskAndGivesThePictureTheRest) {
    WindowBench bench;
    bench.load();
    for (const auto language : {base::Language::kChinese, base::Language::kEnglish}) {
        bench.walk(language);
        for (int tab = 0; tab < 3; ++tab) {
            bench.control<QTabWidget>("TabAnalysis").setCurrentIndex(tab);
            // A text that has changed tells one layout after the other.
            for (int i = 0; i < 4; ++i)
                QApplication::processEvents();
            EXPECT_LE(bench.window.minimumSizeHint().width(), 1000);
            EXPECT_LE(bench.window.minimumSizeHint().height(), 572);
        }
    }
    bench.window.resize(1200, 760);
    QApplication::processEvents();
    const QSize before = bench.picture().size();
    bench.window.resize(1400, 860);
    QApplication::processEvents();
    EXPECT_EQ(bench.picture().size(), before + QSize(200, 100));
}

TEST(TunerCurvesPanel, BreaksItsLineWhereItDoesNotFit) {
    WindowBench bench;
    QWidget room;
    CurvesPanelWidget panel({bench.tuner, [] {}}, &room);
    const auto line_of = [&panel](const char* name) {
        return panel.findChild<QCheckBox*>(QLatin1String(name))->y();
    };
    const auto expect_lines = [&](const QSize& size, bool two) {
        panel.resize(size);
        QApplication::processEvents();
        for (const char* name : {"Check3", "Check4", "Check5"})
            EXPECT_EQ(line_of(name), line_of("Check3")) << name;
        for (const char* name : {"Check6", "Check7", "Check8"})
            EXPECT_EQ(line_of(name) > line_of("Check3"), two) << name;
        for (const std::string& fault : app::test::CutTexts("curves").find(panel))
            ADD_FAILURE() << fault;
    };
    panel.resize(panel.sizeHint());
    room.show();
    const int one_line = panel.sizeHint().width();
    const int height = panel.sizeHint().height();
    expect_lines({one_line, height}, false);
    expect_lines({one_line - 1, 2 * height}, true);
    expect_lines({panel.minimumSizeHint().width(), 2 * height}, true);
    EXPECT_EQ(panel.minimumSizeHint().height(), 2 * height);
    expect_lines({one_line, height}, false);
    EXPECT_EQ(panel.minimumSizeHint().height(), height);
}

}  // namespace
}  // namespace servo::tuner::test
