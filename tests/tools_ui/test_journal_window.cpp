// The window of the journal through its real controls.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QTableView>

#include "../tools/journal_bench.h"
#include "base/file.h"
#include "base/temp_folder.h"
#include "form_window_bench.h"
#include "tools/journal_window.h"

namespace servo::tools {
namespace {

using base::Language;
using link::Payload;

class JournalWindowTest : public ::testing::Test, protected test::FormWindowBench {
  protected:
    JournalWindowTest() {
        tapped_engine.link_opened();
        tapped_engine.sendata2(0x60640004, 0, 1);
        port.take_sent();
        show(view, !test::kDesignedFont);
    }
    void say(std::uint8_t command, link::WireKey key, std::uint32_t data) {
        port.feed(servo::test::FakeDrive::frame_of(test::frame_payload(command, key, data)));
        tapped_engine.get_frame();
    }
    void change(link::WireKey key, std::uint32_t before, std::uint32_t value) {
        say((key & 0xFF) == 1 ? link::kAnswer1 : link::kAnswer2, key, before);
        tapped_engine.sendata2(key, static_cast<std::int32_t>(value), 0);
        say(link::kWritten, key, value);
        port.take_sent();
    }
    // The gain of 80 went to 120, the mode from 1 to 3.
    void two_changes() {
        change(test::kGain, 80, 120);
        window_name = "VLoop";
        change(test::kMode, 1, 3);
        view.refresh_now();
    }
    QTableView& grid() { return control<QTableView>("MSHFlexGrid1"); }
    int rows() { return grid().model()->rowCount(); }
    std::string cell(int row, int column) {
        return grid().model()->index(row, column).data().toString().toStdString();
    }
    void select(int row) {
        const QRect place = grid().visualRect(grid().model()->index(row, 3));
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, place.center());
    }
    void filter(const char* text) {
        auto& box = control<QLineEdit>("Text1");
        box.clear();
        QTest::keyClicks(&box, QString::fromUtf8(text));
    }

    TappedPort tapped{port};
    link::DriveValues tapped_values;
    link::Engine tapped_engine{tapped, clock, timer, tapped_values};
    dictionary::Store store = test::journal_dictionary();
    std::string window_name = "Basic";
    WriteJournal journal{{.line = tapped,
                          .engine = tapped_engine,
                          .dictionary = store,
                          .language = language,
                          .time_of_day = [] { return std::string("10:02:33"); },
                          .window = [this] { return window_name; }}};
    std::optional<std::filesystem::path> answer;
    int questions = 0;
    JournalWindow view{journal, tapped_engine, [this](const ConfigurationFile& question) {
                           ++questions;
                           EXPECT_TRUE(question.save);
                           EXPECT_EQ(question.suffix, "cdi");
                           return answer;
                       }};
};

TEST_F(JournalWindowTest, TextsFollowTheLanguage) {
    two_changes();
    EXPECT_EQ(title(), "Journal of Writes");
    EXPECT_EQ(caption("Command1"), "Write Back Selected");
    EXPECT_EQ(text("Label1"), "Writes: 2");
    EXPECT_EQ(cell(0, 6), "taken");
    expect_texts_fit();
    walk(Language::kChinese);
    EXPECT_EQ(title(), "写入记录");
    EXPECT_EQ(caption("Command1"), "写回所选");
    EXPECT_EQ(text("Label1"), "共 2 次写入");
    EXPECT_EQ(cell(0, 6), "已接受");
    EXPECT_EQ(grid().model()->headerData(4, Qt::Horizontal).toString(), QStringLiteral("原值"));
    expect_texts_fit();
    expect_fits_small_screen();
}

TEST_F(JournalWindowTest, AnEmptyJournalOffersNothing) {
    for (const char* button : {"Command1", "Command2", "Command3", "Command4", "Command5"})
        EXPECT_FALSE(enabled(button)) << button;
    EXPECT_EQ(rows(), 0);
}

TEST_F(JournalWindowTest, AWriteShowsUpByItself) {
    change(test::kGain, 80, 120);
    EXPECT_TRUE(QTest::qWaitFor([this] { return rows() == 1; }));
    EXPECT_EQ(cell(0, 0), "10:02:33");
    EXPECT_EQ(cell(0, 1), "Basic");
    EXPECT_EQ(cell(0, 2), "60F901");
    EXPECT_EQ(cell(0, 3), "Velocity gain");
    EXPECT_EQ(cell(0, 4), "80");
    EXPECT_EQ(cell(0, 5), "120");
}

TEST_F(JournalWindowTest, TheFilterLeavesWhatMatches) {
    two_changes();
    filter("vloop");
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(cell(0, 2), "606000");
    EXPECT_EQ(text("Label1"), "Writes: 2, shown: 1");
    filter("nowhere");
    EXPECT_EQ(rows(), 0);
    EXPECT_FALSE(enabled("Command2"));
    QTest::keyClick(&control<QLineEdit>("Text1"), Qt::Key_Escape);
    EXPECT_EQ(rows(), 2);
}

// As many ranges as rows make a batch job crawl once thousands of writes are selected.
TEST_F(JournalWindowTest, SelectedNeighboursStayOneRangeWhileWritesFollow) {
    two_changes();
    grid().selectAll();
    change(test::kGain, 120, 140);
    change(test::kMode, 3, 1);
    view.refresh_now();
    const auto* selection = grid().selectionModel();
    EXPECT_EQ(selection->selection().size(), 1);
    EXPECT_EQ(selection->selectedRows().size(), 2);
    EXPECT_TRUE(selection->isRowSelected(1));
    grid().selectAll();
    filter("vloop");
    EXPECT_EQ(selection->selectedRows().size(), 3);
    QTest::keyClick(&control<QLineEdit>("Text1"), Qt::Key_Escape);
    EXPECT_EQ(selection->selectedRows().size(), 3);
    EXPECT_FALSE(selection->isRowSelected(0));
    EXPECT_EQ(selection->selection().size(), 1);
}

TEST_F(JournalWindowTest, TheSelectedLineIsWrittenBack) {
    two_changes();
    EXPECT_FALSE(enabled("Command1"));
    select(0);
    ASSERT_TRUE(enabled("Command1"));
    click("Command1");
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0xF9, 0x60, 0x01, 80, 0, 0, 0}}));
    EXPECT_EQ(text("Label2"), "Writing back: 0 of 1");
    EXPECT_FALSE(enabled("Command2")) << "one at a time";
    say(link::kWritten, test::kGain, 80);
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("Label2") == "Values written back: 1"; }));
    EXPECT_EQ(rows(), 3);
    EXPECT_TRUE(enabled("Command2"));
}

TEST_F(JournalWindowTest, AllThatIsShownIsWrittenBack) {
    two_changes();
    click("Command2");
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2F, 0x60, 0x60, 0x00, 1, 0, 0, 0}}));
    say(link::kWritten, test::kMode, 1);
    std::vector<Payload> next;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        if (next.empty()) next = sent();
        return !next.empty();
    }));
    EXPECT_EQ(next, (std::vector<Payload>{{0x2B, 0xF9, 0x60, 0x01, 80, 0, 0, 0}}));
    say(link::kWritten, test::kGain, 80);
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("Label2") == "Values written back: 2"; }));
    port.take_sent();
    click("Command2");
    EXPECT_TRUE(sent().empty());
    EXPECT_EQ(text("Label2").substr(0, 21), "Nothing to write back");
}

TEST_F(JournalWindowTest, AClosedLinkIsTold) {
    two_changes();
    port.opened = false;
    click("Command2");
    EXPECT_EQ(text("Label2"), "The link is closed, or a job is using it");
}

TEST_F(JournalWindowTest, TheSelectionStaysWhenAWriteComes) {
    two_changes();
    select(0);
    change(test::kGain, 120, 130);
    view.refresh_now();
    EXPECT_EQ(rows(), 3);
    EXPECT_TRUE(grid().selectionModel()->isRowSelected(0));
    EXPECT_FALSE(grid().selectionModel()->isRowSelected(2));
}

TEST_F(JournalWindowTest, TheOldestMayLeaveWhileTheyAreShown) {
    change(test::kGain, 80, 1);
    view.refresh_now();
    for (std::size_t i = 0; i < WriteJournal::kMost; ++i)
        tapped_engine.sendata2(test::kProfile, static_cast<std::int32_t>(i), 0);
    EXPECT_EQ(cell(0, 2), "") << "not the one that took its place";
    view.refresh_now();
    EXPECT_EQ(cell(0, 2), "608100");
    EXPECT_EQ(text("Label1"), "Writes: 10000, older ones not kept: 1");
}

TEST_F(JournalWindowTest, LinesAreCopied) {
    two_changes();
    click("Command3");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "10:02:33\tBasic\t60F901\tVelocity gain\t80\t120\ttaken\n"
              "10:02:33\tVLoop\t606000\tModes of operation\t1\t3\ttaken\n");
    select(1);
    click("Command3");
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "10:02:33\tVLoop\t606000\tModes of operation\t1\t3\ttaken\n");
}

TEST_F(JournalWindowTest, ValuesAreSavedOnlyWhenTheirUserSaysSo) {
    two_changes();
    click("Command4");
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(text("Label2"), "") << "cancelled";
    const TempFolder folder;
    answer = folder / "changes.cdi";
    click("Command4");
    EXPECT_EQ(base::read_file(*answer), "60F90110,120,True\r\n60600008,3,True\r\n");
    EXPECT_EQ(text("Label2"), "changes.cdi");
    answer = folder / "no such folder" / "changes.cdi";
    click("Command4");
    EXPECT_EQ(text("Label2"), "The file could not be written");
}

TEST_F(JournalWindowTest, ClearingEmptiesTheTableAndWritesNothing) {
    two_changes();
    click("Command5");
    EXPECT_EQ(rows(), 0);
    EXPECT_TRUE(sent().empty());
    EXPECT_FALSE(enabled("Command5"));
}

TEST_F(JournalWindowTest, KeysReachEveryControl) {
    two_changes();
    select(0);
    control<>("Text1").setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 7; ++i) {
        order.push_back(focus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"Text1", "MSHFlexGrid1", "Command1", "Command2",
                                               "Command3", "Command4", "Command5"}));
}

TEST_F(JournalWindowTest, PicturesForTheEye) {
    two_changes();
    tapped_engine.sendata2(test::kProfile, 100, 0);
    tapped_engine.sendata2(test::kTarget, -300, 0);
    say(link::kAbort, test::kTarget, 0x06090030);
    view.refresh_now();
    view.resize(view.sizeHint());
    QApplication::processEvents();
    keep_picture("journal-english");
    walk(Language::kChinese);
    keep_picture("journal-chinese");
}

}  // namespace
}  // namespace servo::tools
