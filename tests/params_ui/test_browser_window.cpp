// The dictionary browser on screen, through its controls by their names.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QWheelEvent>

#include "params/browser_list_view.h"
#include "params/grid_access_view.h"
#include "params/object_browser_window.h"
#include "params/test_object_browser_support.h"

namespace servo::params {
namespace {

using base::Language;
using test::BrowserBench;
using test::Entry;
using test::Write;

std::vector<Entry> many_entries(std::vector<std::string>& texts, int count) {
    std::vector<Entry> entries;
    texts.reserve(static_cast<std::size_t>(2 * count));
    for (int i = 0; i < count; ++i) {
        const QString index = QString::number(0x200000 + i, 16).toUpper();
        const std::string& key = texts.emplace_back(index.toStdString());
        const std::string& name = texts.emplace_back("Object " + std::to_string(i + 1));
        entries.push_back({key, "对象", name, "Unsigned16", i % 2 == 0 ? "RW" : "R"});
    }
    return entries;
}

class BrowserWindow : public testing::Test {
  protected:
    std::vector<std::string> texts;
    std::unique_ptr<BrowserBench> bench;
    QMainWindow main;
    QMdiSubWindow* frame = nullptr;
    ObjectBrowserWindow* window = nullptr;
    QTableView* list = nullptr;
    QTableView* live = nullptr;
    QLineEdit* Text2 = nullptr;

    void SetUp() override { open(std::make_unique<BrowserBench>()); }

    void open(std::unique_ptr<BrowserBench> shown) {
        delete frame;
        bench = std::move(shown);
        auto* area = new QMdiArea(&main);
        main.setCentralWidget(area);
        main.resize(1200, 800);
        window = new ObjectBrowserWindow(bench->browser);
        frame = area->addSubWindow(window);
        frame->setAttribute(Qt::WA_DeleteOnClose, false);
        bench->browser.hide = [this] {
            ++bench->hidden;
            frame->hide();
        };
        frame->resize(1060, 680);
        main.show();
        frame->show();
        area->setActiveSubWindow(frame);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
        QCoreApplication::sendPostedEvents();
        list = window->findChild<QTableView*>(QStringLiteral("MSHFlexGrid2"));
        live = window->findChild<QTableView*>(QStringLiteral("MSHFlexGrid1"));
        Text2 = window->findChild<QLineEdit*>(QStringLiteral("Text2"));
        ASSERT_TRUE(list != nullptr && live != nullptr && Text2 != nullptr);
    }
    void open_many(int count) { open(std::make_unique<BrowserBench>(many_entries(texts, count))); }
    void TearDown() override { delete frame; }  // before the browser that it shows

    ObjectBrowser& browser() { return bench->browser; }
    QString label(const char* name) const {
        const auto* found = window->findChild<QLabel*>(QLatin1String(name));
        return found == nullptr ? QStringLiteral("(none)") : found->text();
    }
    template <typename Control>
    Control* control(const char* name) const {
        return window->findChild<Control*>(QLatin1String(name));
    }
    QString help() const { return control<QTextEdit>("RichTextBox1")->toPlainText(); }
    int row() const { return grid_current_row(*list); }
    void click(int at, GridClick how = GridClick::kLeft) {
        ASSERT_TRUE(grid_click(*list, at, list_name(), how));
    }
    int list_name() const {
        return bench->bench.language == Language::kChinese ? kListNameCh : kListNameEn;
    }
    int top_row() const { return list->rowAt(0) + 1; }
    void wheel(int delta, Qt::KeyboardModifiers held = Qt::NoModifier) {
        const QPointF at = list->viewport()->rect().center();
        QWheelEvent event(at, list->viewport()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, held,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(list->viewport(), &event);
    }
};

TEST_F(BrowserWindow, OpensOnTheFirstObjectWithTheKeyboardInTheSearchBox) {
    EXPECT_EQ(window->objectName(), "ObjectDictionay");
    EXPECT_TRUE(Text2->hasFocus());
    EXPECT_EQ(row(), 1);
    EXPECT_EQ(grid_rows(*list), 9);
    EXPECT_EQ(grid_columns(*list), 9);
    EXPECT_EQ(grid_rows(*live), 2);
    EXPECT_EQ(grid_text(*live, 1, kIndex), "606000");
}

TEST_F(BrowserWindow, ReadsRowsAndHeaderByTheProgramsCounting) {
    EXPECT_EQ(grid_text(*list, 0, kListIndex), "Index");
    EXPECT_EQ(grid_text(*list, 0, kListAttribute), QStringLiteral("属性"));
    EXPECT_EQ(grid_text(*list, 3, kListNameEn), "Target Position");
    EXPECT_EQ(grid_text(*list, 1, kListCommentEn), "Chooses the mode.|1:Position|3:Velocity");
    EXPECT_EQ(list->model()
                  ->headerData(kListAttribute, Qt::Horizontal, BrowserListModel::kTitleRole)
                  .toString(),
              "Attr.");
}

TEST_F(BrowserWindow, TheNameOfTheLanguageIsWideAndTheOtherHidden) {
    EXPECT_EQ(list->columnWidth(kListNameEn), list->width() * 55 / 100);
    EXPECT_TRUE(list->isColumnHidden(kListNameCh));
    bench->language(Language::kChinese);
    EXPECT_EQ(list->columnWidth(kListNameCh), list->width() * 55 / 100);
    EXPECT_TRUE(list->isColumnHidden(kListNameEn));
    EXPECT_EQ(grid_text(*list, 0, kListIndex), QStringLiteral("索引1"));
    EXPECT_LE(list->horizontalHeader()->length(), list->viewport()->width());
}

TEST_F(BrowserWindow, AClickShowsDetailsHelpAndLiveRow) {
    click(BrowserBench::kActual);
    EXPECT_EQ(row(), BrowserBench::kActual);
    EXPECT_EQ(label("LabelB"), "6063");
    EXPECT_EQ(label("LabelD"), "00");
    EXPECT_EQ(label("LabelF"), "Position Actual");
    EXPECT_EQ(label("LabelH"), "Integer32");
    EXPECT_EQ(label("LabelJ"), "RH");
    EXPECT_EQ(label("LabelL"), "....");
    EXPECT_EQ(help(), "Help Information of:Position Actual\nPlace of the <b>encoder</b>");
    EXPECT_EQ(grid_text(*live, 1, kNumber), "0");
    EXPECT_EQ(grid_text(*live, 1, kIndex), "606300");
    click(BrowserBench::kGain);
    EXPECT_EQ(label("LabelL"), "0x2B00");
}

TEST_F(BrowserWindow, TheCaptionsCarryBothLanguages) {
    const std::vector<const char*> expected{"索引/Index",         "子索引/Sub-index", "名称/Name",
                                            "数据类型/Data type", "属性/Attribute",   "Modbus"};
    const char* names[] = {"LabelA", "LabelC", "LabelE", "LabelG", "LabelI", "LabelK"};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(control<QLabel>(names[i])->property("Tag").toString(),
                  QString::fromUtf8(expected[i]));
    EXPECT_EQ(control<QPushButton>("Command1")->property("Tag").toString(),
              QStringLiteral("搜索/Search"));
    for (const char* value : {"LabelB", "LabelF", "LabelM", "LabelN"})
        EXPECT_EQ(control<QLabel>(value)->property("Tag").toString(), "-")
            << "a value with a slash in it is no pair of texts";
}

TEST_F(BrowserWindow, AReadOnlyObjectGraysTheLiveRowFromItsFirstColumnAndAWritableOneClearsIt) {
    click(BrowserBench::kActual);
    for (int column = 0; column < kColumns; ++column)
        EXPECT_EQ(grid_color(*live, 1, column), QColor(209, 216, 200)) << column;
    click(BrowserBench::kTarget);
    for (int column = 0; column < kColumns; ++column)
        EXPECT_FALSE(grid_color(*live, 1, column)) << column;
}

TEST_F(BrowserWindow, TheLiveRowIsEditedAndWrittenLikeARowOfAPage) {
    click(BrowserBench::kTarget);
    browser().set_value(1, 5, 14);
    EXPECT_EQ(grid_text(*live, 1, kValue), "5");
    ASSERT_TRUE(grid_click(*live, 1, kValue, GridClick::kLeft));
    auto* box = control<QLineEdit>("textbox1");
    ASSERT_TRUE(box->isVisible());
    QTest::keyClicks(box, "-34");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(bench->bench.writes, (std::vector<Write>{{0x607A0004, -34}}));
    EXPECT_EQ(grid_text(*live, 1, kValue), "-34");
}

TEST_F(BrowserWindow, EscInTheEditorOfTheLiveRowLeavesTheEditorAndNotTheWindow) {
    click(BrowserBench::kTarget);
    ASSERT_TRUE(grid_click(*live, 1, kValue, GridClick::kLeft));
    QTest::keyClick(control<QLineEdit>("textbox1"), Qt::Key_Escape);
    EXPECT_FALSE(control<QLineEdit>("textbox1")->isVisible());
    EXPECT_TRUE(frame->isVisible());
}

TEST_F(BrowserWindow, TheLiveGridIsAsHighAsItsOneRow) {
    EXPECT_EQ(live->viewport()->height(), live->rowHeight(0));
    click(BrowserBench::kActual);
    EXPECT_EQ(live->viewport()->height(), live->rowHeight(0));
}

TEST_F(BrowserWindow, HidingTheWindowClosesTheEditorOfTheLiveRow) {
    click(BrowserBench::kTarget);
    ASSERT_TRUE(grid_click(*live, 1, kValue, GridClick::kLeft));
    frame->hide();
    EXPECT_EQ(browser().grid().editor().open, Editor::kNone);
}

TEST_F(BrowserWindow, AnotherWindowThatBecomesActiveClosesTheEditorOfTheLiveRow) {
    click(BrowserBench::kTarget);
    ASSERT_TRUE(grid_click(*live, 1, kValue, GridClick::kLeft));
    auto* other = frame->mdiArea()->addSubWindow(new QWidget);
    other->show();
    frame->mdiArea()->setActiveSubWindow(other);
    EXPECT_EQ(browser().grid().editor().open, Editor::kNone);
}

TEST_F(BrowserWindow, TheButtonAndEnterSearch) {
    QTest::keyClicks(Text2, "position");
    QTest::mouseClick(control<QPushButton>("Command1"), Qt::LeftButton);
    EXPECT_EQ(row(), BrowserBench::kActual);
    QTest::keyClick(Text2, Qt::Key_Return);
    EXPECT_EQ(row(), BrowserBench::kTarget);
    EXPECT_TRUE(frame->isVisible());
}

TEST_F(BrowserWindow, AMatchIsSelectedEntireAndScrolledToTheTop) {
    open_many(200);
    QTest::keyClicks(Text2, "object 120");
    QTest::keyClick(Text2, Qt::Key_Return);
    EXPECT_EQ(row(), 120);
    EXPECT_EQ(top_row(), 120);
    const QModelIndexList selected = list->selectionModel()->selectedIndexes();
    EXPECT_EQ(selected.size(), kListColumns) << "the hidden columns too";
    for (const QModelIndex& cell : selected)
        EXPECT_EQ(cell.row(), 119);
}

TEST_F(BrowserWindow, TypingShowsTheFirstMatchAndSaysHowManyThereAre) {
    QTest::keyClicks(Text2, "posi");
    EXPECT_EQ(row(), BrowserBench::kActual);
    EXPECT_EQ(label("LabelM"), "1 of 2");
    EXPECT_TRUE(Text2->hasFocus());
    QTest::keyClicks(Text2, "x");
    EXPECT_EQ(row(), 1) << "where it was before the typing";
    EXPECT_EQ(label("LabelM"), "No match");
    EXPECT_EQ(Text2->accessibleDescription(), "No match");
    Text2->clear();
    EXPECT_EQ(label("LabelM"), "");
}

TEST_F(BrowserWindow, TheBoxHasAButtonThatClearsIt) {
    EXPECT_TRUE(Text2->isClearButtonEnabled());
}

TEST_F(BrowserWindow, F3GoesOnAndShiftF3Back) {
    QTest::keyClicks(Text2, "current");
    QTest::keyClick(Text2, Qt::Key_F3);
    EXPECT_EQ(row(), BrowserBench::kCurrent);
    QTest::keyClick(Text2, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(row(), BrowserBench::kGain);
    QTest::keyClick(list, Qt::Key_F3);
    EXPECT_EQ(row(), BrowserBench::kCurrent);
}

TEST_F(BrowserWindow, CtrlFGoesToTheSearchBoxAndEscHidesTheWindow) {
    Text2->setText(QStringLiteral("word"));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Text2->hasFocus());
    EXPECT_EQ(Text2->selectedText(), "word");
    QTest::keyClick(Text2, Qt::Key_Escape);
    EXPECT_EQ(bench->hidden, 1);
    EXPECT_FALSE(frame->isVisible());
    frame->show();
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_EQ(bench->hidden, 2);
}

TEST_F(BrowserWindow, KeysInTheListShowTheObject) {
    open_many(200);
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(label("LabelF"), "Object 2");
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_EQ(label("LabelF"), "Object 1");
    QTest::keyClick(list, Qt::Key_End);
    EXPECT_EQ(row(), 200);
    EXPECT_EQ(label("LabelF"), "Object 200");
    QTest::keyClick(list, Qt::Key_PageUp);
    EXPECT_LT(row(), 195);
    QTest::keyClick(list, Qt::Key_Home);
    EXPECT_EQ(row(), 1);
    QTest::keyClick(list, Qt::Key_PageDown);
    EXPECT_GT(row(), 5);
}

TEST_F(BrowserWindow, UpAndDownInTheSearchBoxWalkThroughTheList) {
    QTest::keyClick(Text2, Qt::Key_Down);
    EXPECT_EQ(row(), 2);
    EXPECT_TRUE(Text2->hasFocus());
    QTest::keyClick(Text2, Qt::Key_Up);
    EXPECT_EQ(row(), 1);
}

TEST_F(BrowserWindow, CtrlCCopiesKeyAndName) {
    click(BrowserBench::kGain);
    QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "60F611\tCurrent Gain");
}

TEST_F(BrowserWindow, TheWheelIsUpAndDownWhileTheListHasTheFocus) {
    wheel(-120);
    EXPECT_EQ(row(), 1) << "the search box has the focus";
    list->setFocus();
    wheel(-120);
    EXPECT_EQ(row(), 2);
    EXPECT_EQ(label("LabelF"), "Position Actual");
    wheel(-240);
    wheel(-60);
    wheel(-120, Qt::ControlModifier);
    EXPECT_EQ(row(), 2) << "other steps and held keys are ignored";
    wheel(120);
    EXPECT_EQ(row(), 1);
}

TEST_F(BrowserWindow, ScrollingMakesTheTopRowTheCurrentOne) {
    open_many(200);
    list->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_GT(top_row(), 5);
    EXPECT_EQ(row(), top_row());
    EXPECT_EQ(label("LabelF"), QStringLiteral("Object %1").arg(row()));
}

TEST_F(BrowserWindow, AScrollBarAtItsEndLeavesTheSelectionToOthers) {
    open_many(200);
    list->verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
    list->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    browser().open_for_help(0x200000 + 99);
    EXPECT_EQ(row(), 100);
    list->verticalScrollBar()->setValue(20);
    EXPECT_EQ(row(), 100) << "the user did not scroll";
}

TEST_F(BrowserWindow, ADoubleClickFromTheMenuHidesTheWindow) {
    browser().open_plain();
    click(BrowserBench::kTarget, GridClick::kDouble);
    EXPECT_EQ(bench->hidden, 1);
    EXPECT_EQ(label("LabelF"), "Target Position");
    EXPECT_FALSE(control<QLabel>("LabelN")->isVisibleTo(window));
}

TEST_F(BrowserWindow, EnterInTheListFromTheMenuDoesNothing) {
    browser().open_plain();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(bench->hidden, 0);
}

TEST_F(BrowserWindow, AdditionIsAnnouncedAndDoneByDoubleClickEnterOrButton) {
    for (const int way : {0, 1, 2}) {
        PageGrid page = bench->bench.grid({0x606000});
        browser().open_for_adding(page, 1, {"基本操作", "Basic Operation"});
        frame->show();
        EXPECT_TRUE(control<QLabel>("LabelN")->isVisible());
        EXPECT_EQ(label("LabelN"), "Double click adds the object to: Basic Operation");
        click(BrowserBench::kControl);
        if (way == 0) click(BrowserBench::kControl, GridClick::kDouble);
        if (way == 1) QTest::keyClick(list, Qt::Key_Return);
        if (way == 2) QTest::mouseClick(control<QPushButton>("CommandA"), Qt::LeftButton);
        EXPECT_EQ(page.rows(), 3) << way;
        EXPECT_EQ(page.cell(2, kIndex), "604000");
        EXPECT_FALSE(frame->isVisible()) << way;
        browser().open_plain();
    }
}

TEST_F(BrowserWindow, ADoubleClickOnWhatThePageHoldsHidesOnly) {
    PageGrid page = bench->bench.grid({0x606000, 0x607A00});
    browser().open_for_adding(page, 1);
    click(BrowserBench::kTarget, GridClick::kDouble);
    EXPECT_EQ(page.rows(), 3);
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(BrowserWindow, AScopeChannelIsAnnouncedAndSet) {
    browser().open_for_scope(2);
    EXPECT_EQ(label("LabelN"), "Double click assigns the object to scope channel 3");
    click(BrowserBench::kText);
    EXPECT_FALSE(control<QPushButton>("CommandA")->isEnabled());
    click(BrowserBench::kVelocity, GridClick::kDouble);
    EXPECT_EQ(bench->bench.writes, (std::vector<Write>{{0x23000604, 0x60FF0020}}));
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(BrowserWindow, HelpOpensOnTheObjectEvenWhereTheListWasNeverSeen) {
    texts.clear();
    auto unseen = std::make_unique<BrowserBench>(many_entries(texts, 200));
    unseen->browser.open_for_help((0x200000 + 149));
    open(std::move(unseen));
    EXPECT_EQ(row(), 150);
    EXPECT_EQ(top_row(), 150);
    EXPECT_EQ(label("LabelF"), "Object 150");
    frame->hide();
    browser().open_for_help(0x200000 + 99);
    frame->show();
    EXPECT_EQ(row(), 100);
    EXPECT_EQ(top_row(), 100);
}

TEST_F(BrowserWindow, HelpOnAnUnknownObjectSelectsNothing) {
    browser().open_for_help(0x123456);
    EXPECT_EQ(row(), 0);
    EXPECT_TRUE(list->selectionModel()->selectedIndexes().isEmpty());
    EXPECT_EQ(label("LabelB"), "1234");
    EXPECT_TRUE(help().contains(QStringLiteral("does not have")));
}

TEST_F(BrowserWindow, AChangeOfTheLanguageChangesEverythingShown) {
    click(BrowserBench::kMode);
    browser().open_for_scope(0);
    bench->language(Language::kChinese);
    EXPECT_EQ(label("LabelF"), QStringLiteral("工作模式"));
    EXPECT_EQ(help(), QStringLiteral("帮助:工作模式\n选择模式。|1:位置|3:速度"));
    EXPECT_EQ(grid_text(*live, 1, kName), QStringLiteral("工作模式"));
    EXPECT_EQ(Text2->placeholderText(), QStringLiteral("索引、子索引或名称"));
    EXPECT_EQ(control<QPushButton>("CommandA")->text(), QStringLiteral("选用"));
    EXPECT_EQ(label("LabelN"), QStringLiteral("双击将对象分配给示波器通道 1"));
}

TEST_F(BrowserWindow, EveryControlThatTakesTheKeyboardHasAnAccessibleName) {
    for (const QWidget* widget :
         std::initializer_list<QWidget*>{Text2, list, live, control<QTextEdit>("RichTextBox1")})
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
}

TEST_F(BrowserWindow, TabGoesFromTheBoxOverTheListToTheLiveRow) {
    QTest::keyClick(Text2, Qt::Key_Tab);
    EXPECT_TRUE(control<QPushButton>("Command1")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(list->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(live->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(control<QTextEdit>("RichTextBox1")->hasFocus());
}

}  // namespace
}  // namespace servo::params
