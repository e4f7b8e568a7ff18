#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QStatusTipEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/palette.h"
#include "frame_bench.h"

namespace servo::app {
namespace {

using base::Language;
using test::FrameBench;

LinkFigures figures(double objects) {
    LinkFigures figures;
    figures.condition = LinkCondition::kAnswering;
    figures.place = {true, "COM3", 38400};
    figures.objects_per_second = objects;
    figures.misses = 3;
    figures.load = 81.6;
    return figures;
}

QLabel* cell(const FrameBench& frame, const char* name) {
    return frame.strip->findChild<QLabel*>(QLatin1String(name));
}

TEST(StatusStrip, ShowsTheLinkInBothLanguages) {
    FrameBench frame;
    frame.show();
    EXPECT_EQ(cell(frame, "StatusState")->text(), "Not connected");
    EXPECT_EQ(cell(frame, "StatusPicture")->property("picture").toString(), "link_closed");
    frame.strip->show_figures(figures(155));
    EXPECT_EQ(cell(frame, "StatusState")->text(), "Connected");
    EXPECT_EQ(cell(frame, "StatusPicture")->property("picture").toString(), "link_answering");
    EXPECT_EQ(cell(frame, "StatusPicture")->accessibleName(), "Connected");
    EXPECT_EQ(cell(frame, "StatusPort")->text(), "COM3  38400");
    EXPECT_EQ(cell(frame, "StatusObjects")->text(), "155 objects/s");
    EXPECT_EQ(cell(frame, "StatusLoad")->text(), "Load 82 %");
    frame.apply(Language::kChinese);
    EXPECT_EQ(cell(frame, "StatusState")->text(), QStringLiteral("已连接"));
    EXPECT_EQ(cell(frame, "StatusLoad")->text(), QStringLiteral("负载 82 %"));
}

TEST(StatusStrip, CellsKeepTheirPlacesWhileNumbersChange) {
    FrameBench frame;
    frame.show();
    for (const Language language : {Language::kEnglish, Language::kChinese}) {
        frame.apply(language);
        frame.strip->show_figures(LinkFigures{});
        QApplication::processEvents();
        const auto boxes = [&] {
            QList<QRect> all;
            for (const char* name : {"StatusState", "StatusPort", "StatusHint", "StatusObjects",
                                     "StatusMisses", "StatusLoad"})
                all << cell(frame, name)->geometry();
            return all;
        };
        const QList<QRect> before = boxes();
        LinkFigures many = figures(1234);
        many.misses = 123456;
        many.misses_per_second = 250;
        many.place.port = "COM35";
        many.place.baud = 115200;
        for (const double objects : {1.0, 99.0, 1234.0}) {
            many.objects_per_second = objects;
            frame.strip->show_figures(many);
            QApplication::processEvents();
            EXPECT_EQ(boxes(), before);
        }
    }
}

TEST(StatusStrip, SaysWhatEachCellIs) {
    FrameBench frame;
    for (const char* name : {"StatusPicture", "StatusState", "StatusPort", "StatusObjects",
                             "StatusMisses", "StatusLoad"}) {
        EXPECT_FALSE(cell(frame, name)->toolTip().isEmpty()) << name;
        EXPECT_FALSE(cell(frame, name)->accessibleDescription().isEmpty()) << name;
    }
}

TEST(StatusStrip, TheHintOfAMenuItemLeavesTheCellsAlone) {
    FrameBench frame;
    frame.show();
    frame.strip->show_figures(figures(155));
    frame.item("Basic_Operation")->hover();
    QStatusTipEvent hint(frame.item("Basic_Operation")->statusTip());
    QApplication::sendEvent(&frame.main, &hint);
    EXPECT_EQ(cell(frame, "StatusHint")->text(), "State, control word, mode and targets");
    EXPECT_TRUE(cell(frame, "StatusState")->isVisible());
    EXPECT_TRUE(cell(frame, "StatusObjects")->isVisible());
    frame.strip->clearMessage();
    EXPECT_EQ(cell(frame, "StatusHint")->text(), "");
}

TEST(StatusStrip, AHintThatDoesNotFitEndsWithAnEllipsis) {
    FrameBench frame;
    frame.show();
    const QString hint(60, QLatin1Char('w'));
    frame.main.resize(1800, 800);
    QApplication::processEvents();
    frame.strip->showMessage(hint);
    EXPECT_EQ(cell(frame, "StatusHint")->text(), hint);
    frame.main.resize(900, 800);
    QApplication::processEvents();
    EXPECT_TRUE(cell(frame, "StatusHint")->text().endsWith(QChar(0x2026)));
    EXPECT_LE(cell(frame, "StatusHint")
                  ->fontMetrics()
                  .horizontalAdvance(cell(frame, "StatusHint")->text()),
              cell(frame, "StatusHint")->width());
}

TEST(StatusStrip, FitsIntoANarrowMainWindow) {
    FrameBench frame;
    frame.show();
    frame.strip->show_figures(figures(155));
    EXPECT_LE(frame.strip->minimumSizeHint().width(), 900);
}

TEST(StatusStrip, GivesUpThePortInANarrowWindowAndNothingElse) {
    StatusStrip strip(nullptr);
    strip.apply_language(Language::kEnglish);
    strip.show_figures(figures(155));
    strip.show();
    const auto* port = strip.findChild<QLabel*>(QStringLiteral("StatusPort"));
    const auto* state = strip.findChild<QLabel*>(QStringLiteral("StatusState"));
    const auto* load = strip.findChild<QLabel*>(QStringLiteral("StatusLoad"));
    for (const int width : {1000, 600, 1000}) {
        strip.resize(width, strip.sizeHint().height());
        QApplication::processEvents();
        EXPECT_EQ(port->isVisible(), width == 1000);
        EXPECT_TRUE(state->isVisible());
        EXPECT_LE(load->mapTo(&strip, load->rect().topRight()).x(), width);
    }
    EXPECT_LE(strip.minimumWidth(), 1);
}

TEST(Background, TheSizeClassFollowsTheFrameOnEachResize) {
    FrameBench frame;
    frame.show();
    for (const auto& [width, size_class] :
         {std::pair{699, 0}, {700, 1}, {999, 1}, {1000, 2}, {1499, 2}, {1500, 3}, {690, 0}}) {
        frame.main.resize(width, 800);
        QApplication::processEvents();
        // The frame may be wider than asked for where its bars need more.
        EXPECT_EQ(frame.area->size_class(), background_class(frame.main.width())) << width;
        if (frame.main.width() == width) {
            EXPECT_EQ(frame.area->size_class(), size_class) << width;
        }
    }
}

// Left and right edge of what is drawn on the plain ground, in a band across the middle.
std::pair<int, int> drawn_columns(const QImage& image) {
    const QColor ground = image.pixelColor(2, 2);
    int left = image.width();
    int right = -1;
    for (int y = image.height() / 4; y < image.height() * 3 / 4; ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != ground) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
    return {left, right};
}

TEST(Background, ThePictureStandsInTheMiddleAtEachSize) {
    FrameBench frame;
    frame.show();
    int last_width = 0;
    for (const int width : {980, 1200, 1600}) {
        frame.main.resize(width, 900);
        QApplication::processEvents();
        const auto [left, right] = drawn_columns(frame.area->viewport()->grab().toImage());
        ASSERT_GE(right, left);
        EXPECT_NEAR((left + right) / 2, frame.area->viewport()->width() / 2, width / 20);
        EXPECT_GT(right - left, last_width);
        last_width = right - left;
    }
}

TEST(Background, TheFirstStepsStandThereUntilAWindowIsOpen) {
    FrameBench frame;
    frame.show();
    EXPECT_TRUE(frame.area->shows_first_steps());
    const QImage english = frame.area->viewport()->grab().toImage();
    frame.apply(Language::kChinese);
    EXPECT_NE(frame.area->viewport()->grab().toImage(), english);
    frame.open({"A"});
    EXPECT_FALSE(frame.area->shows_first_steps());
    frame.frame("A")->showMinimized();
    EXPECT_TRUE(frame.area->shows_first_steps());
    frame.host->hide("A");
    EXPECT_TRUE(frame.area->shows_first_steps());
}

TEST(Background, AnOpenLinkHasOtherFirstSteps) {
    FrameBench frame;
    frame.show();
    const QImage closed = frame.area->viewport()->grab().toImage();
    frame.area->show_link(true);
    EXPECT_NE(frame.area->viewport()->grab().toImage(), closed);
}

// Relative luminance and contrast as in the guidelines for web content.
double channel(int value) {
    const double c = value / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}
double luminance(const QColor& colour) {
    return 0.2126 * channel(colour.red()) + 0.7152 * channel(colour.green()) +
           0.0722 * channel(colour.blue());
}
double contrast(QRgb a, QRgb b) {
    const double first = luminance(QColor(a));
    const double second = luminance(QColor(b));
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

TEST(Palette, TextHasEnoughContrastOnItsGround) {
    using namespace palette;
    for (const auto& [text, ground] : {std::pair{kText, kWindow},
                                       {kText, kBase},
                                       {kText, kButton},
                                       {kQuietText, kWindow},
                                       {kQuietText, kWorkspace},
                                       {kText, kWorkspace},
                                       {kHighlightedText, kHighlight},
                                       {kTitleText, kTitle},
                                       {kTitleText, kTitleHover},
                                       {kQuietTitleText, kQuietTitle},
                                       {kTitleText, kCloseHover}})
        EXPECT_GE(contrast(text, ground), 4.5) << std::hex << text << " on " << ground;
    // Not a rule for what can't be used, but it has to be read.
    EXPECT_GE(contrast(kDisabledText, kBase), 3.0);
}

TEST(FramePictures, EveryNewOneIsThere) {
    for (const char* name :
         {"pagepic",        "dialogpic",   "dictionarypic", "listpic",     "motorpic",
          "settingspic",    "tunerpic",    "faultpic",      "historypic",  "storepic",
          "firmwarepic",    "configpic",   "wizardpic",     "keyspic",     "quitpic",
          "aboutpic",       "cascadepic",  "tilepic",       "link_closed", "link_waiting",
          "link_answering", "link_silent", "link_lost"})
        for (const int size : {16, 24, 32, 48}) {
            const QImage image = picture(QLatin1String(name)).pixmap(size, size).toImage();
            bool drawn = false;
            for (int y = 0; y < image.height() && !drawn; ++y)
                for (int x = 0; x < image.width() && !drawn; ++x)
                    drawn = qAlpha(image.pixel(x, y)) > 128;
            EXPECT_TRUE(drawn) << name << " at " << size;
        }
}

}  // namespace
}  // namespace servo::app
