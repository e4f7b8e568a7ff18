// Files of the window: scans in and out, pictures, tables.
#include <QAction>
#include <QMenu>

#include "tuner_window_bench.h"

namespace servo::tuner::test {
namespace {

struct TunerFiles : testing::Test, WindowBench {
    void save_picture(const char* kind) {
        auto& button = control<QPushButton>("CommandB");
        button.menu()->findChild<QAction*>(QLatin1String(kind))->trigger();
    }
};

TEST_F(TunerFiles, AScanIsLoadedAndShown) {
    load();
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].filter, "bode");
    EXPECT_EQ(asked[0].suffix, "bode");
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(text("Text2"), "4");
    EXPECT_EQ(text("Text3"), "1000");
    EXPECT_TRUE(draws(Curve::kPlant));
}

TEST_F(TunerFiles, WhatIsSavedIsWhatWasLoaded) {
    load();
    const std::string bytes = folder.get("scan.bode");
    path = (folder / "again.bode").string();
    click("Command3");
    EXPECT_EQ(folder.get("again.bode"), bytes);
}

TEST_F(TunerFiles, ACancelledQuestionDoesNothing) {
    path.reset();
    click("Command2");
    click("Command3");
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[1].filter, "bode");
    EXPECT_TRUE(asked[0].name.empty() && asked[1].name.empty());
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(folder.entries(), 0U);
}

TEST_F(TunerFiles, AWrongFileIsSaid) {
    folder.put("wrong.bode", "1;2;3\r\n");
    path = (folder / "wrong.bode").string();
    click("Command2");
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"Notice", "the bode file is wrong!"}));
}

TEST_F(TunerFiles, PicturesAreSavedInThreeKinds) {
    EXPECT_FALSE(enabled("CommandB")) << "there is nothing to see yet";
    load();
    simulate();
    struct Kind {
        const char* label;
        const char* file;
        const char* begin;
    };
    for (const Kind kind : {Kind{"PNG", "bode.png", "\x89PNG"}, Kind{"SVG", "bode.svg", "<?xml"},
                            Kind{"PDF", "bode.pdf", "%PDF"}}) {
        path = (folder / kind.file).string();
        save_picture(kind.label);
        const std::string bytes = folder.get(kind.file);
        EXPECT_EQ(bytes.substr(0, std::string(kind.begin).size()), kind.begin) << kind.label;
        EXPECT_EQ(asked.back().name, kind.file);
        EXPECT_EQ(text("LabelNote"), std::string("Saved ") + kind.file);
    }
    const std::string svg = folder.get("bode.svg");
    for (const char* text_of_sheet : {"Motor and load", "Closed velocity loop", "1000", "0 dB"})
        EXPECT_NE(svg.find(text_of_sheet), std::string::npos) << text_of_sheet;
    EXPECT_EQ(svg.find("Filter 1"), std::string::npos) << "not drawn, not in the legend";
}

TEST_F(TunerFiles, TheTableHasEveryCurveThatExists) {
    load();
    click("Check20");
    type("Text25", "150");
    simulate();
    path = (folder / "bode.csv").string();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    key("Text9", Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    const std::string table = folder.get("bode.csv");
    const std::string head = table.substr(0, table.find("\r\n"));
    EXPECT_EQ(head,
              "\xef\xbb\xbf"
              "Frequency [Hz],Motor and load gain [dB],Motor and load phase [°],"
              "Open velocity loop gain [dB],Open velocity loop phase [°],"
              "Closed velocity loop gain [dB],Closed velocity loop phase [°],"
              "Current loop gain [dB],Current loop phase [°],"
              "Open position loop gain [dB],Closed position loop gain [dB],"
              "Filter 5 gain [dB],Filter 5 phase [°]");
    EXPECT_EQ(std::ranges::count(table, '\n'), 1001) << "a row for each of 1 to 1000 Hz";
    EXPECT_NE(table.find("\r\n1,,,,,,,,,,,"), std::string::npos) << "only the filter reaches 1 Hz";
}

TEST_F(TunerFiles, AFileThatCannotBeWrittenIsSaid) {
    load();
    path = (folder / "no" / "bode.csv").string();
    click("CommandC");
    EXPECT_EQ(told, std::vector<std::string>{"The file could not be written."});
    path = (folder / "no" / "bode.png").string();
    save_picture("PNG");
    EXPECT_EQ(told.size(), 2U);
}

}  // namespace
}  // namespace servo::tuner::test
