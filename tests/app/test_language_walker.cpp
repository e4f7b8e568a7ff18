#include "app/language_walker.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QVBoxLayout>

#include "app/child_window.h"

namespace servo::app {
namespace {

using dictionary::Variant;

constexpr LanguagePass kChinese{.slot = 0};
constexpr LanguagePass kEnglish{.slot = 1};
constexpr LanguagePass kThird{.slot = 2};

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

template <typename Control>
Control* add(QWidget& window, const char* caption, const char* tag = nullptr) {
    auto* control = new Control(text(caption), &window);
    if (tag != nullptr) control->setProperty(kTag, text(tag));
    return control;
}

TEST(Walker, ATagGivesTheHalfOfTheLanguageToEveryKindOfCaption) {
    QWidget window;
    const char* tag = "波特率/Baud rate";
    auto* option = add<QRadioButton>(window, "", tag);
    auto* box = add<QCheckBox>(window, "", tag);
    auto* frame = add<QGroupBox>(window, "", tag);
    auto* label = add<QLabel>(window, "", tag);
    auto* command = add<QPushButton>(window, "", tag);
    walk_window(window, kChinese);
    for (const QString& now :
         {option->text(), box->text(), frame->title(), label->text(), command->text()})
        EXPECT_EQ(now, text("波特率"));
    walk_window(window, kEnglish);
    for (const QString& now :
         {option->text(), box->text(), frame->title(), label->text(), command->text()})
        EXPECT_EQ(now, "Baud rate");
}

TEST(Walker, ATwoPartCaptionWithoutATagLosesItsOtherHalfOnTheFirstSwitch) {
    QWidget window;
    auto* label = add<QLabel>(window, "正方向/Positive");
    auto* command = add<QPushButton>(window, "写入/Write Down");
    walk_window(window, kEnglish);
    EXPECT_EQ(label->text(), "Positive");
    EXPECT_EQ(command->text(), "Write Down");
    walk_window(window, kChinese);
    EXPECT_EQ(label->text(), "Positive");
    EXPECT_EQ(command->text(), "Write Down");
}

TEST(Walker, ATextWithOnePartIsShownInBothLanguages) {
    QWidget window;
    auto* label = add<QLabel>(window, "RS485");
    auto* tagged = add<QLabel>(window, "kept", "CNC");
    for (const auto& pass : {kChinese, kEnglish, kThird}) {
        walk_window(window, pass);
        EXPECT_EQ(label->text(), "RS485");
        EXPECT_EQ(tagged->text(), "kept");
    }
}

TEST(Walker, ATextThatIsNoPairKeepsItsSlashes) {
    QWidget window;
    auto* path = add<QLabel>(window, "/dev/ttyUSB0", kOneText);
    auto* unit = add<QLabel>(window, "rps/s", kOneText);
    walk_window(window, kChinese);
    walk_window(window, kEnglish);
    EXPECT_EQ(path->text(), "/dev/ttyUSB0");
    EXPECT_EQ(unit->text(), "rps/s");
}

TEST(Walker, TheThirdSlotIsTakenWhereItExists) {
    QWidget window;
    window.setProperty(kTag, text("标题/Title/Titel\\x"));
    auto* three = add<QLabel>(window, "", "一/one/eins");
    auto* two = add<QLabel>(window, "", "一/one");
    walk_window(window, kThird);
    EXPECT_EQ(window.windowTitle(), "Titel");
    EXPECT_EQ(three->text(), "eins");
    EXPECT_EQ(two->text(), text("一"));
}

TEST(Walker, AWindowsTagIsItsCaptionUpToTheBackslash) {
    QWidget window;
    window.setProperty(kTag, text("原点定义/Homing Definition\\"));
    walk_window(window, kEnglish);
    EXPECT_EQ(window.windowTitle(), "Homing Definition");
    walk_window(window, kChinese);
    EXPECT_EQ(window.windowTitle(), text("原点定义"));
}

TEST(Walker, AWindowWithoutATagKeepsItsDesignedCaption) {
    QWidget window;
    window.setWindowTitle("DI/DO");
    walk_window(window, kEnglish);
    EXPECT_EQ(window.windowTitle(), "DI/DO");
}

TEST(Walker, TabsTakeTheirPartsBetweenBars) {
    QWidget window;
    auto* tabs = new QTabWidget(&window);
    tabs->addTab(new QWidget, "a");
    tabs->addTab(new QWidget, "b/c");
    walk_window(window, kEnglish);
    EXPECT_EQ(tabs->tabText(1), "b/c") << "a caption alone is no tag";
    tabs->setProperty(kTag, text("写入/Write|CDO|一个/too many"));
    walk_window(window, kEnglish);
    EXPECT_EQ(tabs->tabText(0), "Write");
    EXPECT_EQ(tabs->tabText(1), "CDO");
    walk_window(window, kChinese);
    EXPECT_EQ(tabs->tabText(0), text("写入"));
    EXPECT_EQ(tabs->tabText(1), "CDO");
}

TEST(Walker, BlocksOfTextAreCutAtTheLineEndOfTheirTag) {
    QWidget window;
    auto* block = new QTextEdit(&window);
    block->setProperty(kTag, text("加速度 rps/s\r\nAcceleration rps/s"));
    auto* shown = new QTextEdit(&window);
    shown->setPlainText("a file's\r\ntwo lines");
    auto* label = add<QLabel>(window, "", "第一\r\nfirst");
    auto* joined = add<QLabel>(window, "", "内部故障/Encoder\r\ninternal");
    walk_window(window, kEnglish);
    EXPECT_EQ(block->toPlainText(), "Acceleration rps/s");
    EXPECT_EQ(shown->toPlainText(), "a file's\ntwo lines");
    EXPECT_EQ(label->text(), "first");
    EXPECT_EQ(joined->text(), "Encoder\r\ninternal") << "a slash goes before a line end";
    walk_window(window, kChinese);
    EXPECT_EQ(block->toPlainText(), text("加速度 rps/s"));
    EXPECT_EQ(label->text(), text("第一"));
    EXPECT_EQ(joined->text(), text("内部故障"));
}

TEST(Walker, TheConfigurationWindowsTwoButtonsTakeFixedTextsByVariant) {
    QWidget window;
    window.setObjectName("imexport");
    auto* write = add<QPushButton>(window, "写入数据/Write to Controller");
    write->setObjectName("Command2");
    auto* read = add<QPushButton>(window, "读数据/Read from Controller");
    read->setObjectName("Command7");
    auto* store = add<QPushButton>(window, "", "存储数据到EEPROM/Store to EEPROM");
    store->setObjectName("Command3");
    walk_window(window, {.slot = 1, .variant = Variant::kReduced});
    EXPECT_EQ(write->text(), "Write Settings to Controller");
    EXPECT_EQ(read->text(), "Read Settings from Controller");
    EXPECT_EQ(store->text(), "Store to EEPROM");
    walk_window(window, kEnglish);
    EXPECT_EQ(write->text(), "Write Settings to Driver");
    walk_window(window, kChinese);
    EXPECT_EQ(write->text(), text("写驱动器配置"));
    EXPECT_EQ(read->text(), text("读驱动器配置"));
}

TEST(Walker, FixedListsChangeTheirTextsAndKeepTheSelection) {
    QWidget window;
    window.setObjectName("PosFlow");
    auto* list = new QComboBox(&window);
    list->setObjectName("Combo2");
    // What the list is made with stays until the first switch.
    list->addItems({"Ignore", "Wait", "Interrupt!"});
    list->setCurrentIndex(2);
    QSignalSpy picks(list, &QComboBox::currentIndexChanged);
    QSignalSpy texts(list, &QComboBox::currentTextChanged);
    walk_window(window, kChinese);
    EXPECT_EQ(list->itemText(0), text("忽略"));
    EXPECT_EQ(list->currentText(), text("中断"));
    walk_window(window, kEnglish);
    EXPECT_EQ(list->currentText(), "Interrupt");
    EXPECT_EQ(list->currentIndex(), 2);
    EXPECT_EQ(picks.count() + texts.count(), 0) << "a switch is no pick";
}

TEST(Walker, WalkingTwiceChangesNothing) {
    QWidget window;
    window.setProperty(kTag, text("标题/Title\\"));
    auto* label = add<QLabel>(window, "", "一/one");
    auto* split = add<QLabel>(window, "二/two");
    auto* edit = new QLineEdit(text("a/b"), &window);
    for (const auto& pass : {kEnglish, kChinese}) {
        walk_window(window, pass);
        const QStringList once{window.windowTitle(), label->text(), split->text(), edit->text()};
        const QFont font = label->font();
        walk_window(window, pass);
        EXPECT_EQ(once,
                  (QStringList{window.windowTitle(), label->text(), split->text(), edit->text()}));
        EXPECT_EQ(label->font(), font);
        EXPECT_EQ(edit->text(), "a/b") << "what was typed is no caption";
    }
}

TEST(Walker, EveryControlThatShowsTextTakesTheFontOfTheLanguage) {
    QWidget window;
    const QList<QWidget*> controls{new QTableView(&window),   new QLabel(&window),
                                   new QLineEdit(&window),    new QComboBox(&window),
                                   new QPushButton(&window),  new QCheckBox(&window),
                                   new QRadioButton(&window), new QTextEdit(&window),
                                   new QTabWidget(&window),   new QGroupBox(&window)};
    controls[1]->setFont([&] {
        QFont bold = controls[1]->font();
        bold.setBold(true);
        return bold;
    }());
    const qreal size = controls[1]->font().pointSizeF();
    walk_window(window, kChinese);
    for (const QWidget* control : controls)
        EXPECT_EQ(control->font().families().constFirst(), text("宋体"))
            << control->metaObject()->className();
    EXPECT_TRUE(controls[1]->font().bold()) << "only the family changes";
    EXPECT_EQ(controls[1]->font().pointSizeF(), size);
    walk_window(window, kThird);
    for (const QWidget* control : controls)
        EXPECT_EQ(control->font().families().constFirst(), "Tahoma");
}

TEST(Walker, AWindowWithADesignedFontKeepsIt) {
    QWidget window;
    auto* label = add<QLabel>(window, "", "一/one");
    QFont designed = label->font();
    designed.setFamilies({"Serif"});
    label->setFont(designed);
    walk_window(window, {.slot = 0, .designed_font = true});
    EXPECT_EQ(label->text(), text("一"));
    EXPECT_EQ(label->font().families(), QStringList{"Serif"});
}

class Listening final : public QWidget {
  public:
    QLabel* label = nullptr;
    QString seen;
    int changes = 0;

  protected:
    void changeEvent(QEvent* event) override {
        QWidget::changeEvent(event);
        if (event->type() != QEvent::LanguageChange) return;
        ++changes;
        seen = label->text();
    }
};

TEST(Walker, AWindowsOwnRoutineRunsBehindTheTexts) {
    Listening window;
    window.label = add<QLabel>(window, "", "一/one");
    walk_window(window, kEnglish);
    EXPECT_EQ(window.changes, 1);
    EXPECT_EQ(window.seen, "one");
}

// A request for a new layout climbs one widget at a time.
void lay_out() {
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
}

TEST(ChildWindow, GrowsToTheLongerTextsOfALanguageAndNeverShrinks) {
    QMdiArea area;
    area.resize(900, 600);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    auto* label = new QLabel;
    label->setProperty(kTag, text("短/A line that is a good deal longer than its other half is"));
    layout->addWidget(label);
    walk_window(*content, kChinese);
    auto* frame = new ChildWindow(content, ChildWindow::Kind::kPage);
    area.addSubWindow(frame);
    area.show();
    frame->show();
    lay_out();
    frame->resize(frame->minimumSizeHint());
    const int narrow = frame->width();
    walk_window(*content, kEnglish);
    lay_out();
    EXPECT_GT(frame->width(), narrow);
    EXPECT_GE(label->width(), label->sizeHint().width());
    const int wide = frame->width();
    walk_window(*content, kChinese);
    lay_out();
    EXPECT_EQ(frame->width(), wide);
}

}  // namespace
}  // namespace servo::app
