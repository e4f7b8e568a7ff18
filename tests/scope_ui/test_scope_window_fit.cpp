// Nothing is cut and nothing lies over another, in both languages; numbers are shown as they fit.
#include "../app/cut_texts.h"
#include "../app/larger_font.h"
#include "scope/number_label_widget.h"
#include "scope/plot_frame_widget.h"
#include "scope/plot_widget.h"
#include "scope/scope_controls_view.h"
#include "scope_window_bench.h"

namespace servo::scope::test {
namespace {

class ScopeWindowFit : public testing::TestWithParam<int> {
  protected:
    app::test::LargerFont font_{GetParam() / 100.0};

    static void expect_nothing_cut(WindowBench& bench, const char* when) {
        QApplication::processEvents();
        for (const std::string& fault : app::test::CutTexts(when).find(bench.window))
            ADD_FAILURE() << fault;
    }
};

INSTANTIATE_TEST_SUITE_P(FontPercent, ScopeWindowFit, testing::Values(100, 150),
                         [](const auto& font) { return std::to_string(font.param); });

TEST_P(ScopeWindowFit, NothingIsCutInEitherLanguage) {
    WindowBench bench;
    bench.window.resize(bench.window.minimumSizeHint());
    expect_nothing_cut(bench, "empty");
    bench.record_sine();
    bench.click("Image1");
    bench.click("Image2");
    for (const auto language : {base::Language::kChinese, base::Language::kEnglish}) {
        bench.walk(language);
        bench.window.resize(bench.window.minimumSizeHint());
        expect_nothing_cut(bench, "recording");
    }
}

TEST_P(ScopeWindowFit, NothingIsCutWithEveryPanelOpen) {
    WindowBench bench;
    bench.record_sine();
    for (const char* tool : {"CommandE", "CommandF", "CommandG", "CommandH"})
        bench.click(tool);
    for (const auto language : {base::Language::kChinese, base::Language::kEnglish}) {
        bench.walk(language);
        bench.window.resize(bench.window.minimumSizeHint());
        expect_nothing_cut(bench, "panels");
    }
}

TEST(ScopeWindowSize, ShrinksForASmallDeskAndGivesThePlotTheRest) {
    WindowBench bench;
    EXPECT_LE(bench.window.minimumSizeHint().width(), 1000);
    EXPECT_LE(bench.window.minimumSizeHint().height(), 640);
    bench.window.resize(1280, 760);
    QApplication::processEvents();
    const QSize before = bench.any("Picture1").size();
    const int side = bench.any("Text2").width();
    bench.window.resize(1480, 960);
    QApplication::processEvents();
    EXPECT_EQ(bench.any("Picture1").size(), before + QSize(200, 200));
    EXPECT_EQ(bench.any("Text2").width(), side);
}

TEST_P(ScopeWindowFit, TheTimesStandBesideEachOtherUnderTheNarrowestPlot) {
    WindowBench bench;
    bench.record_sine();
    QWidget room;
    PlotFrameWidget frame({bench.scope, [] {}}, new PlotWidget(&room), &room);
    frame.refresh();
    frame.resize(frame.minimumSizeHint());
    room.resize(frame.size());
    room.show();
    QApplication::processEvents();
    for (const std::string& fault : app::test::CutTexts("plot").find(room))
        ADD_FAILURE() << fault;
}

TEST(NumberLabel, RoundsANumberUntilItFits) {
    const QFontMetrics metrics(QApplication::font());
    const auto width = [&](const char* text) { return metrics.horizontalAdvance(text); };
    EXPECT_EQ(NumberLabel::fitting("3.0517578125", metrics, width("3.0517578125")),
              QStringLiteral("3.0517578125"));
    EXPECT_EQ(NumberLabel::fitting("3.0517578125", metrics, width("3.0518")),
              QStringLiteral("3.0518"));
    EXPECT_EQ(NumberLabel::fitting("-2.75", metrics, width("-3")), QStringLiteral("-3"));
    EXPECT_TRUE(NumberLabel::fitting("123456789", metrics, width("1234")).endsWith(QChar(0x2026)));
}

TEST(ShortNumber, HasSixSignificantDigits) {
    EXPECT_EQ(short_number(0), "0");
    EXPECT_EQ(short_number(3.14159265), "3.14159");
    EXPECT_EQ(short_number(-1234.5678), "-1234.57");
    EXPECT_EQ(short_number(123456789), "123456789");
    EXPECT_EQ(short_number(2.5e12), "2.5E12");
    EXPECT_EQ(short_number(-4.2e-9), "-4.2E-9");
    EXPECT_EQ(short_number(std::nan("")), "-");
}

}  // namespace
}  // namespace servo::scope::test
