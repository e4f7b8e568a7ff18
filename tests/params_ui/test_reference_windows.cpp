// The windows `modbus` and `Motorcodes` through their controls.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include "base/gbk.h"
#include "base/temp_folder.h"
#include "dictionary/store_of.h"
#include "params/grid_access_view.h"
#include "params/modbus_window.h"
#include "params/motor_codes_window.h"

namespace servo::params {
namespace {

RawRecord object(std::string digits, std::string_view name_ch, std::string name_en,
                 std::string modbus) {
    RawRecord record;
    record.index = digits.substr(0, 4);
    record.sub = digits.substr(4);
    record.name_ch = base::utf8_to_gbk(name_ch);
    record.name_en = std::move(name_en);
    record.type = "Unsigned16";
    record.attribute = "RW";
    record.modbus = std::move(modbus);
    return record;
}

dictionary::Store sample() {
    return dictionary::store_of({
        object("606000", "工作模式", "Operation mode", "1301"),
        object("100800", "设备名称", "Device name", "NULL"),
        object("60F611", "电机电流", "Motor current", "13A0"),
        object("64100A", "电机最大电流", "Motor <b>maximum</b> current", "110B"),
    });
}

struct ModbusWindowTest : testing::Test {
    dictionary::Store store = sample();
    base::Language language = base::Language::kEnglish;
    ModbusWindow window{store, language};
    QTableView* grid = window.findChild<QTableView*>(QStringLiteral("MSHFlexGrid1"));
    QLineEdit* box = window.findChild<QLineEdit*>(QStringLiteral("TextA"));
    QLabel* count = window.findChild<QLabel*>(QStringLiteral("LabelB"));

    void SetUp() override {
        ASSERT_TRUE(grid != nullptr && box != nullptr && count != nullptr);
        window.resize(1200, 500);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        grid->setFocus();
    }
    QString text(int row, int column) const { return grid_text(*grid, row, column); }
};

TEST_F(ModbusWindowTest, ShowsTheToldColumnsAndARowForEachAddress) {
    EXPECT_EQ(window.objectName(), "modbus");
    EXPECT_EQ(grid_rows(*grid), 4) << "row 0 is the header";
    EXPECT_EQ(grid_columns(*grid), 7);
    const QStringList header{"ModBus", "Index", "Sub", "NameCH", "NameEN", "ATTR", "Type"};
    const QStringList row{"13A0", "60F6", "11", "电机电流", "Motor current", "RW", "Unsigned16"};
    for (int column = 0; column < 7; ++column) {
        EXPECT_EQ(text(0, column), header.at(column));
        EXPECT_EQ(text(2, column), row.at(column));
        EXPECT_FALSE(grid_color(*grid, 2, column).has_value());
    }
}

TEST_F(ModbusWindowTest, TheColumnsFollowTheWindowInTheToldRatios) {
    for (const int width : {1200, 1600, 2416}) {
        window.resize(width, 500);
        const int whole = grid->viewport()->width();
        for (int column = 0; column < 7; ++column)
            EXPECT_EQ(grid->columnWidth(column), modbus_column_width(column, whole));
        EXPECT_EQ(grid->horizontalHeader()->length(), whole);
    }
}

TEST_F(ModbusWindowTest, InANarrowWindowTheRatiosStayAndNothingIsCut) {
    window.resize(500, 400);
    const int whole = grid->horizontalHeader()->length();
    EXPECT_GT(whole, grid->viewport()->width());
    for (int column = 0; column < 7; ++column)
        EXPECT_EQ(grid->columnWidth(column), modbus_column_width(column, whole));
    EXPECT_GE(grid->columnWidth(1), grid->fontMetrics().horizontalAdvance("6060") + 8);
}

TEST_F(ModbusWindowTest, CannotBeEdited) {
    EXPECT_TRUE(grid_click(*grid, 1, 3, GridClick::kDouble));
    EXPECT_EQ(grid->findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(grid->editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST_F(ModbusWindowTest, CtrlFGoesToTheBoxAndTypingFindsRows) {
    QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(box->hasFocus());
    QTest::keyClicks(box, "current");
    EXPECT_EQ(grid_rows(*grid), 3);
    EXPECT_EQ(text(1, 0), "13A0");
    EXPECT_EQ(count->text(), "2 of 3 rows");
    QTest::keyClicks(box, " max");
    EXPECT_EQ(grid_rows(*grid), 2);
    EXPECT_EQ(text(1, 0), "110B");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(grid->hasFocus());
    EXPECT_EQ(grid_current_row(*grid), 1);
}

TEST_F(ModbusWindowTest, TypingInTheGridGoesToTheBox) {
    QTest::keyClick(grid, Qt::Key_1);
    QTest::keyClicks(QApplication::focusWidget(), "3a");
    EXPECT_EQ(box->text(), "13a");
    EXPECT_TRUE(box->hasFocus());
    EXPECT_EQ(grid_rows(*grid), 2);
}

TEST_F(ModbusWindowTest, EscShowsAllRowsAgainAndKeepsTheFoundOne) {
    QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(box, "110b");
    QTest::keyClick(box, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Escape);
    EXPECT_EQ(box->text(), "");
    EXPECT_EQ(grid_rows(*grid), 4);
    EXPECT_EQ(grid_current_row(*grid), 3) << "still on the row that was found";
    QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(box, "x");
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(box->text(), "");
    EXPECT_TRUE(box->hasFocus());
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_TRUE(grid->hasFocus());
}

TEST_F(ModbusWindowTest, CtrlCCopiesTheSelectedRowsAsTextWithTabs) {
    QApplication::clipboard()->setText(QStringLiteral("before"));
    grid->clearSelection();
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "before") << "nothing selected, nothing copied";
    ASSERT_TRUE(grid_click(*grid, 2, 4, GridClick::kLeft));
    QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "13A0\t60F6\t11\t电机电流\tMotor current\tRW\tUnsigned16\n"
              "110B\t6410\t0A\t电机最大电流\tMotor <b>maximum</b> current\tRW\tUnsigned16\n");
}

TEST_F(ModbusWindowTest, TheCountAndTheBoxTellTheLanguage) {
    EXPECT_EQ(count->text(), "3 rows");
    language = base::Language::kChinese;
    QEvent changed(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &changed);
    EXPECT_EQ(count->text(), "共 3 行");
    EXPECT_EQ(grid->accessibleName(), "ModBus 地址表");
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("LabelA"))->property("Tag"), "查找/Find");
}

TEST_F(ModbusWindowTest, NamesAreNeverMarkup) {
    EXPECT_EQ(text(3, 4), "Motor <b>maximum</b> current");
    const QString tip = grid->model()->index(2, 4).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains("&lt;b&gt;")) << tip.toStdString();
}

TEST_F(ModbusWindowTest, ADictionaryLoadedLaterIsShownWhenAsked) {
    store = dictionary::Store();
    window.reload();
    EXPECT_EQ(grid_rows(*grid), 1);
    EXPECT_EQ(count->text(), "0 rows");
    grid->grab();  // says that there is nothing, and does not fall over it
    QTest::keyClick(grid, Qt::Key_Down);
    store = sample();
    window.reload();
    EXPECT_EQ(grid_rows(*grid), 4);
    EXPECT_EQ(grid_current_row(*grid), 1);
}

struct MotorCodesWindowTest : testing::Test {
    TempFolder folder;
    base::Language language = base::Language::kEnglish;

    MotorCodesWindowTest() { std::filesystem::create_directory(folder / "sys"); }
    void put(std::string_view text) const {
        folder.put("sys/motorcode.ini", base::utf8_to_gbk(text));
    }
    static QTextEdit* pane(QWidget& window) {
        return window.findChild<QTextEdit*>(QStringLiteral("RichTextBox1"));
    }
};

TEST_F(MotorCodesWindowTest, ShowsTheFileUnchangedAndReadOnly) {
    put("电机代号 <b>A1</b>\r\n\r\n  A1   50 W\r\nend &amp;");
    MotorCodesWindow window(folder.path(), language);
    ASSERT_NE(pane(window), nullptr);
    EXPECT_EQ(window.objectName(), "Motorcodes");
    EXPECT_TRUE(pane(window)->isReadOnly());
    EXPECT_EQ(pane(window)->toPlainText().toStdString(),
              "电机代号 <b>A1</b>\n\n  A1   50 W\nend &amp;");
    window.show();
    pane(window)->setFocus();
    QTest::keyClicks(pane(window), "x");
    EXPECT_TRUE(pane(window)->toPlainText().startsWith("电机"));
    EXPECT_EQ(pane(window)->lineWrapMode(), QTextEdit::NoWrap);
}

TEST_F(MotorCodesWindowTest, TheTextHasAFontOfOneWidthWhateverTheControlHas) {
    put("iiii\nMMMM\n");
    MotorCodesWindow window(folder.path(), language);
    const auto expect_one_width = [&window] {
        QTextCursor cursor(pane(window)->document());
        cursor.movePosition(QTextCursor::NextCharacter);
        const QFontMetricsF metrics(cursor.charFormat().font());
        EXPECT_DOUBLE_EQ(metrics.horizontalAdvance("iiii"), metrics.horizontalAdvance("MMMM"));
    };
    expect_one_width();
    QFont font = pane(window)->font();
    font.setFamilies({QStringLiteral("DejaVu Sans")});
    pane(window)->setFont(font);
    QEvent changed(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &changed);
    expect_one_width();
    EXPECT_EQ(pane(window)->font().families(), font.families());
    EXPECT_EQ(pane(window)->toPlainText(), "iiii\nMMMM\n");
}

TEST_F(MotorCodesWindowTest, AMissingFileLeavesThePaneEmptyAndNamesTheFile) {
    MotorCodesWindow window(folder.path(), language);
    window.show();
    EXPECT_EQ(pane(window)->toPlainText(), "");
    EXPECT_EQ(pane(window)->placeholderText(), R"(Missing file \sys\motorcode.ini)");
    EXPECT_GT(window.sizeHint().height(), 0);
}

TEST_F(MotorCodesWindowTest, AFileThatComesLaterIsReadWhenTheWindowOpens) {
    MotorCodesWindow window(folder.path(), language);
    window.show();
    window.hide();
    put("A1");
    window.show();
    EXPECT_EQ(pane(window)->toPlainText(), "A1");
    EXPECT_EQ(pane(window)->placeholderText(), "");
}

TEST_F(MotorCodesWindowTest, ALanguageChangeKeepsTheTextAndThePlaceInIt) {
    std::string lines;
    for (int i = 0; i < 400; ++i)
        lines += "line " + std::to_string(i) + "\n";
    put(lines);
    MotorCodesWindow window(folder.path(), language);
    window.resize(500, 300);
    window.show();
    pane(window)->verticalScrollBar()->setValue(120);
    language = base::Language::kChinese;
    QEvent changed(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &changed);
    EXPECT_EQ(pane(window)->toPlainText().toStdString(), lines);
    EXPECT_EQ(pane(window)->verticalScrollBar()->value(), 120);
    EXPECT_EQ(pane(window)->accessibleName(), "电机代号表");
}

}  // namespace
}  // namespace servo::params
