#include "app/link_meter.h"

#include <gtest/gtest.h>

#include "app/strip_texts.h"

namespace servo::app {
namespace {

using namespace std::chrono_literals;
using base::Language;
using std::chrono::microseconds;

// A line on which each 250 ms bring the same.
struct Line {
    LinkMeter meter;
    link::LinkCounters counters;
    LinkPlace place{true, "COM3", 38400};
    microseconds now = 7s;

    void quarter(std::uint64_t sends, std::uint64_t answers) {
        now += 250ms;
        counters.sends += sends;
        counters.frames += answers;
        counters.answers += answers;
        take();
    }
    void take() { meter.take(now, counters, place); }
    const LinkFigures& figures() const { return meter.figures(); }
};

TEST(LinkMeter, AClosedLinkHasNoRates) {
    Line line;
    line.place.open = false;
    line.quarter(40, 40);
    line.quarter(40, 23);
    EXPECT_EQ(line.figures().condition, LinkCondition::kClosed);
    EXPECT_EQ(line.figures().objects_per_second, 0);
    EXPECT_EQ(line.figures().load, 0);
    EXPECT_EQ(line.figures().misses, 15U);  // what the last link ended with
    EXPECT_EQ(line.figures().place.port, "COM3");
}

TEST(LinkMeter, ALostLinkIsNoClosedOneUntilItIsOpenAgain) {
    Line line;
    line.quarter(40, 40);
    line.place.open = false;
    line.place.lost = true;
    line.quarter(0, 0);
    EXPECT_EQ(line.figures().condition, LinkCondition::kLost);
    EXPECT_EQ(line.figures().objects_per_second, 0);
    line.place.open = true;
    line.place.lost = false;
    line.quarter(40, 40);
    EXPECT_EQ(line.figures().condition, LinkCondition::kWaiting);
}

TEST(LinkMeter, CountsObjectsMissesAndLoadOfASecond) {
    Line line;
    line.take();
    for (int i = 0; i < 8; ++i)
        line.quarter(40, 39);
    EXPECT_EQ(line.figures().condition, LinkCondition::kAnswering);
    EXPECT_DOUBLE_EQ(line.figures().objects_per_second, 156);
    // Two of the eight may still be answered.
    EXPECT_DOUBLE_EQ(line.figures().misses_per_second, 3);
    EXPECT_EQ(line.figures().misses, 6U);
    // 316 frames of ten bytes in a second, ten bits a byte.
    EXPECT_DOUBLE_EQ(line.figures().load, 100.0 * 31600 / 38400);
}

TEST(LinkMeter, ATurnWithoutARequestIsNoMiss) {
    Line line;
    line.take();
    for (int i = 0; i < 4; ++i) {
        line.counters.misses += 16;  // the engine's count, of turns in which nothing came
        line.quarter(40, 40);
    }
    EXPECT_EQ(line.figures().misses, 0U);
    EXPECT_EQ(line.figures().misses_per_second, 0);
}

TEST(LinkMeter, FramesThatCameTwiceAreNoNegativeMisses) {
    Line line;
    line.take();
    line.quarter(40, 60);
    line.quarter(40, 60);
    EXPECT_EQ(line.figures().misses, 0U);
    EXPECT_EQ(line.figures().misses_per_second, 0);
}

TEST(LinkMeter, DamagedAndForeignFramesWereOnTheLineToo) {
    Line line;
    line.take();
    line.counters.bad_checksum = 10;
    line.counters.foreign = 30;
    for (int i = 0; i < 4; ++i)
        line.quarter(0, 0);
    EXPECT_DOUBLE_EQ(line.figures().load, 100.0 * 4000 / 38400);
}

TEST(LinkMeter, ARateWithoutABaudRateHasNoLoad) {
    Line line;
    line.place.baud = 0;
    line.take();
    line.quarter(40, 40);
    EXPECT_DOUBLE_EQ(line.figures().objects_per_second, 160);
    EXPECT_EQ(line.figures().load, 0);
}

TEST(LinkMeter, TheWindowSlidesOverTwoSeconds) {
    Line line;
    line.take();
    for (int i = 0; i < 8; ++i)
        line.quarter(40, 40);
    for (int i = 0; i < 4; ++i)
        line.quarter(0, 0);
    EXPECT_DOUBLE_EQ(line.figures().objects_per_second, 80);  // half of the two seconds
    for (int i = 0; i < 4; ++i)
        line.quarter(0, 0);
    EXPECT_EQ(line.figures().objects_per_second, 0);
}

TEST(LinkMeter, SparseSamplesStillGiveARate) {
    Line line;
    line.take();
    line.now += 5s;
    line.counters.answers = 500;
    line.counters.frames = 500;
    line.take();
    EXPECT_DOUBLE_EQ(line.figures().objects_per_second, 100);
}

TEST(LinkMeter, TheFirstSampleHasNoRateYet) {
    Line line;
    line.counters.answers = 1000;
    line.take();
    EXPECT_EQ(line.figures().objects_per_second, 0);
    EXPECT_EQ(line.figures().condition, LinkCondition::kWaiting);
    line.now += 50ms;
    line.counters.answers = 1020;
    line.take();
    EXPECT_EQ(line.figures().objects_per_second, 0);
}

TEST(LinkMeter, ASilentDriveIsToldAfterASecond) {
    Line line;
    line.take();
    line.quarter(40, 40);
    EXPECT_EQ(line.figures().condition, LinkCondition::kAnswering);
    for (int i = 0; i < 4; ++i)
        line.quarter(40, 0);
    EXPECT_EQ(line.figures().condition, LinkCondition::kAnswering);  // one second less a bit
    line.quarter(40, 0);
    EXPECT_EQ(line.figures().condition, LinkCondition::kSilent);
    line.quarter(40, 1);
    EXPECT_EQ(line.figures().condition, LinkCondition::kAnswering);
}

TEST(LinkMeter, ADriveThatNeverAnswersIsWaitedForAndThenSilent) {
    Line line;
    line.take();
    for (int i = 0; i < 4; ++i) {
        line.quarter(40, 0);
        EXPECT_EQ(line.figures().condition, LinkCondition::kWaiting) << i;
    }
    line.quarter(40, 0);
    EXPECT_EQ(line.figures().condition, LinkCondition::kSilent);
}

TEST(LinkMeter, ALinkOpenedAgainBeginsANewWindow) {
    Line line;
    line.take();
    for (int i = 0; i < 8; ++i)
        line.quarter(40, 40);
    line.counters = {};  // the engine forgets them when the link is opened
    line.quarter(4, 4);
    EXPECT_EQ(line.figures().objects_per_second, 0);
    EXPECT_EQ(line.figures().condition, LinkCondition::kWaiting);
    line.quarter(40, 40);
    EXPECT_DOUBLE_EQ(line.figures().objects_per_second, 160);
}

TEST(LinkMeter, AnotherLineAndATimeThatWentBackBeginANewWindow) {
    Line line;
    line.take();
    line.quarter(40, 40);
    line.place.port = "COM4";
    line.quarter(40, 40);
    EXPECT_EQ(line.figures().objects_per_second, 0);
    line.quarter(40, 40);
    EXPECT_DOUBLE_EQ(line.figures().objects_per_second, 160);
    line.now -= 10s;
    line.quarter(40, 40);
    EXPECT_EQ(line.figures().objects_per_second, 0);
}

TEST(StripTexts, TellEachStateInBothLanguages) {
    LinkFigures figures;
    figures.place = {false, "COM3", 38400};
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).state, "Not connected");
    EXPECT_EQ(strip_texts(figures, Language::kChinese).state, "未连接");
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).objects, "– objects/s");
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).misses, "Misses –");
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).load, "Load – %");
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).port, "COM3  38400");
    figures.condition = LinkCondition::kLost;
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).state, "Link lost");
    EXPECT_EQ(strip_texts(figures, Language::kChinese).state, "通信中断");
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).misses, "Misses –");
    figures.condition = LinkCondition::kSilent;
    EXPECT_EQ(strip_texts(figures, Language::kEnglish).state, "The drive is silent");
    figures.condition = LinkCondition::kAnswering;
    figures.objects_per_second = 155.5;
    figures.misses = 8;
    figures.misses_per_second = 4.2;
    figures.load = 82.29;
    const StripTexts english = strip_texts(figures, Language::kEnglish);
    EXPECT_EQ(english.state, "Connected");
    EXPECT_EQ(english.objects, "156 objects/s");
    EXPECT_EQ(english.misses, "Misses 8  (4/s)");
    EXPECT_EQ(english.load, "Load 82 %");
    const StripTexts chinese = strip_texts(figures, Language::kChinese);
    EXPECT_EQ(chinese.objects, "156 对象/秒");
    EXPECT_EQ(chinese.misses, "丢失 8  (4/秒)");
    EXPECT_EQ(chinese.load, "负载 82 %");
}

TEST(StripTexts, EveryStateHasAPictureOfItsOwn) {
    std::vector<std::string> pictures;
    for (const StripTexts& texts : widest_strip_texts(Language::kEnglish))
        pictures.push_back(texts.picture);
    EXPECT_EQ(pictures, (std::vector<std::string>{"link_closed", "link_lost", "link_waiting",
                                                  "link_answering", "link_silent"}));
}

TEST(StripTexts, NoFigureIsLongerThanItsCell) {
    LinkFigures figures;
    figures.condition = LinkCondition::kAnswering;
    figures.place = {true, "COM35", 115200};
    figures.objects_per_second = 1e12;
    figures.misses = ~std::uint64_t{0};
    figures.load = 1e9;
    for (const Language language : {Language::kChinese, Language::kEnglish}) {
        const StripTexts texts = strip_texts(figures, language);
        const StripTexts widest = widest_strip_texts(language).back();
        EXPECT_LE(texts.port.size(), widest.port.size());
        EXPECT_LE(texts.objects.size(), widest.objects.size());
        EXPECT_LE(texts.misses.size(), widest.misses.size());
        EXPECT_LE(texts.load.size(), widest.load.size());
    }
}

TEST(StripTexts, SayThatNoPortIsChosen) {
    EXPECT_EQ(strip_texts(LinkFigures{}, Language::kEnglish).port, "No port");
    EXPECT_EQ(strip_texts(LinkFigures{}, Language::kChinese).port, "未选择串口");
}

}  // namespace
}  // namespace servo::app
