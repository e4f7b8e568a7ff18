// Every window that the program has, in both languages, through its real widgets.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QMdiArea>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <array>

#include "app/language_walker.h"
#include "app/style.h"
#include "app/window_table.h"
#include "params/grid_access_view.h"
#include "screen_texts.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

using base::Language;
using dictionary::Variant;
using test::ScreenText;
using test::ScreenTexts;
using test::ShownShell;

// What stands in one language in both, and why. A place or a text that fits needs no other half.
struct OneLanguage {
    const char* place;  // regular expression for window.control.what
    const char* text;   // regular expression for the whole text
    const char* reason;
};

constexpr OneLanguage kAllowed[] = {
    {".*", "[^A-Za-z\\x{4e00}-\\x{9fff}]*", "numbers and signs are the same everywhere"},
    {".*\\.MSHFlexGrid1(\\(\\d\\))?\\.header", "N|Index|Type|Name|Value|Unit",
     "the headers of a page are the same in both languages"},
    {"F00[0-5]\\.\\.caption|F00[0-5]\\..*", ".*\\(F00[0-5]\\)",
     "the panel's pages are called after the letters on the drive's own panel"},
    {"ECANset\\..*", "ECAN Settings", "the page has one caption"},
    {"[TR]PDOSet\\..*", "[TR]PDO[1-8]?", "the protocol's own word"},
    {"MDIForm1\\.([TR]PDOx)\\..*", "[TR]PDO", "the protocol's own word"},
    {"MDIForm1\\.F00[0-5]x\\..*", "[EACHS]", "letters on the drive's own panel"},
    {"MDIForm1\\.(chinese|English)\\..*", "\\*?(中文|English)",
     "each language is called in itself, so that its speakers find it"},
    {"MDIForm1\\.\\.caption|About\\.LabelA\\.text", "QRL Servo|ZARN Configurator",
     "the product's name"},
    {"Form1\\.Combo1\\.item", "COM\\d+.*", "the port's name"},
    {"Form1\\.(LabelDevice)\\.text", "/dev/.*", "the device's path"},
    {"Form1\\.(Combo3|Command3|Label7|Label8|LabelF|LabelD|LabelE)\\..*", ".*",
     "the tab of the adapter is hidden and has texts in one language only"},
    {"Form1\\.SSTab1\\.tab", "RS232|CAN", "the names of the lines"},
    {"MDIForm1\\.StatusPort\\.text", "COM\\d+  \\d+", "the port's name and its rate"},
    {"ObjectDictionay\\.Label[BDHJL]\\.text", ".*", "what the object holds, as it is written"},
    {"ObjectDictionay\\.LabelK\\.text", "Modbus", "the protocol's own word"},
    {"ObjectDictionay\\.MSHFlexGrid2\\.header", "属性|数据类型|注释|公式",
     "these columns have one header, which is shown in both languages"},
    {"Scope\\.Label[XY][12]\\.text", "[XY][12]", "the names of the cursors"},
    {"Scope\\.Label(18|31)\\.text", "[0-9.]*[um]s", "a time with its unit"},
    {"Download\\.Command5\\.text", "选择Ini", "the button has one caption"},
    {"Download\\.(Label1|Label13)\\.text", "NULL", "nothing is chosen yet"},
    {"DigitalIO\\.Command[34]\\.text", "X", "the button that closes"},
    {"DigitalIO\\.QLabel\\.text", "Enter|Del", "names of keys"},
    {"PosFlow\\.MSHFlexGrid[12]\\.header", "Idx", "the column is called so in both languages"},
    {"Homing2\\.Combo2\\.item", "[012]:[0-9.]+ Rev", "the list is the same in both languages"},
    {"ADVtunner\\.Combo2\\.item", "[24]0dB", "a number with its unit"},
    {"ADVtunner\\.(ParameterLabel\\(.*|Text[0-9]+\\.name).*",
     "Bandwidth|Damping|Notch (F|Width|Depth)|Cut Gain|Phase Center|Order\\(Int\\)|Ts\\(s\\)",
     "the filters' parameters have English names in both languages"},
    {"Homing2\\.Label[QRST]\\.text", "rpm|rps/s|Ap", "units"},
    {"imexport\\.MSHFlexGrid[AB]\\.header", "N|Index|(Source|Check|Driver) Value|Result|Name",
     "the headers are the same in both languages"},
    {"imexport\\.Label[28]\\.(text|tip)", "No path", "nothing is chosen yet"},
    {"RS485\\.Combo[1-5]\\.item", "[0-9]+|NONE|MODBUS|QRL RS232", "names of protocols"},
    {"Errors\\.(LabelG|Image1|Check1)\\(.*",
     "(0[12]00 )?STO[12] Error|(0010 )?Driver Over Temperature", "these faults have one name"},
    {"EASY1\\..*",
     "CNC|Pin|Function|rpm|rpm/V|KHz|CW/CCW|PD|A/B|AIN[12]|Pulse|Analog Speed|Communication|"
     "Position Table",
     "units, kinds of pulses and headers without another half"},
    {"modbus\\..*\\.header", "ModBus|Index|Sub|NameCH|NameEN|ATTR|Type",
     "the headers of the address table are the same in both languages"},
};

bool allowed(const ScreenText& shown) {
    for (const OneLanguage& entry : kAllowed) {
        const auto whole = [](const char* expression, const QString& text) {
            return QRegularExpression(
                       QRegularExpression::anchoredPattern(QString::fromUtf8(expression)))
                .match(text)
                .hasMatch();
        };
        if (whole(entry.place, to_qt(shown.place)) && whole(entry.text, shown.text)) return true;
    }
    return false;
}

bool has_chinese(const QString& text) {
    return std::ranges::any_of(text, [](QChar c) { return c >= u'\x4e00' && c <= u'\x9fff'; });
}

std::vector<QString> window_names(ShownShell& shell) {
    std::vector<QString> names;
    for (const auto* window : shell.workstation.engine.all_windows)
        if (shell.form.window_widget(to_qt(window->name())) != nullptr)
            names.push_back(to_qt(window->name()));
    names.push_back(QLatin1String(kJournalWindow));
    return names;
}

std::vector<ScreenText> main_window_texts(MDIForm1& form) {
    ScreenTexts menus("MDIForm1");
    menus.read_menu(form.menuBar()->actions());
    std::vector<ScreenText> all = menus.take();
    ScreenTexts rest("MDIForm1");
    for (ScreenText& shown : rest.of(form))
        all.push_back(std::move(shown));
    for (const QString& key : form.tools())
        all.push_back({"MDIForm1.tool " + key.toStdString() + ".tip", form.tool(key)->toolTip()});
    return all;
}

// Every text of the program: the main window and all windows it has.
std::vector<ScreenText> all_texts(ShownShell& shell) {
    std::vector<ScreenText> all = main_window_texts(shell.form);
    for (const QString& name : window_names(shell)) {
        ScreenTexts window(name.toStdString());
        for (ScreenText& shown : window.of(*shell.form.window_widget(name)))
            all.push_back(std::move(shown));
    }
    return all;
}

struct VariantShell : ShownShell {
    explicit VariantShell(Variant variant) {
        if (variant == Variant::kReduced) folder.write("Servo.dat", folder.read("qorlan.dat"));
        started = start();
        if (!started) return;
        // Made in the language that the program starts in.
        for (const auto* window : workstation.engine.all_windows)
            form.window_widget(to_qt(window->name()));
    }
    bool started = false;
};

class Languages : public testing::TestWithParam<Variant> {};

INSTANTIATE_TEST_SUITE_P(BothProducts, Languages,
                         testing::Values(Variant::kAllItems, Variant::kReduced),
                         [](const auto& product) {
                             return product.param == Variant::kReduced ? "reduced" : "all_items";
                         });

TEST_P(Languages, EveryTextThatShouldHaveAnotherHalfHasOne) {
    VariantShell shell(GetParam());
    ASSERT_TRUE(shell.started);
    const auto english = all_texts(shell);
    shell.menu("chinese");
    const auto chinese = all_texts(shell);
    ASSERT_EQ(english.size(), chinese.size());
    for (std::size_t i = 0; i < english.size(); ++i) {
        ASSERT_EQ(english[i].place, chinese[i].place);
        if (!allowed(english[i])) {
            EXPECT_FALSE(has_chinese(english[i].text))
                << "Chinese in English: " << english[i].place << " \""
                << english[i].text.toStdString() << '"';
        }
        if (!allowed(chinese[i])) {
            EXPECT_TRUE(has_chinese(chinese[i].text))
                << "no Chinese half: " << chinese[i].place << " \"" << chinese[i].text.toStdString()
                << '"';
        }
    }
}

TEST_P(Languages, SwitchingBackAndForthLosesNothing) {
    VariantShell shell(GetParam());
    ASSERT_TRUE(shell.started);
    const auto english = all_texts(shell);
    shell.menu("chinese");
    const auto chinese = all_texts(shell);
    for (int round = 0; round < 2; ++round) {
        shell.menu("English");
        EXPECT_EQ(all_texts(shell), english);
        shell.menu("English");
        EXPECT_EQ(all_texts(shell), english) << "a second click changes nothing";
        shell.menu("chinese");
        EXPECT_EQ(all_texts(shell), chinese);
    }
}

TEST_P(Languages, AWindowMadeAfterTheSwitchSaysTheSameAsOneMadeBefore) {
    VariantShell before(GetParam());
    ASSERT_TRUE(before.started);
    before.menu("chinese");
    ShownShell after;
    if (GetParam() == Variant::kReduced)
        after.folder.write("Servo.dat", after.folder.read("qorlan.dat"));
    ASSERT_TRUE(after.start());
    after.menu("chinese");
    for (const QString& name : window_names(after)) {
        const std::string plain = name.toStdString();
        EXPECT_EQ(ScreenTexts(plain).of(*before.form.window_widget(name)),
                  ScreenTexts(plain).of(*after.form.window_widget(name)))
            << plain;
    }
}

TEST_P(Languages, EveryWindowHasTheCaptionOfTheTable) {
    VariantShell shell(GetParam());
    ASSERT_TRUE(shell.started);
    for (const Language language : {Language::kEnglish, Language::kChinese, Language::kEnglish}) {
        shell.menu(language == Language::kChinese ? "chinese" : "English");
        for (const WindowDefinition& window : window_table()) {
            const QWidget* content = shell.form.window_widget(to_qt(window.name));
            ASSERT_NE(content, nullptr) << window.name;
            EXPECT_EQ(from_qt(content->windowTitle()), caption_of(window, language, GetParam()))
                << window.name;
        }
    }
}

// What the user has typed or picked is no text of the program's.
std::vector<QString> entered(ShownShell& shell) {
    std::vector<QString> all;
    for (const QString& name : window_names(shell)) {
        const QWidget* content = shell.form.window_widget(name);
        for (const auto* line : content->findChildren<QLineEdit*>())
            all.push_back(line->text());
        for (const auto* list : content->findChildren<QComboBox*>())
            all.push_back(QString::number(list->currentIndex()));
        for (const auto* button : content->findChildren<QAbstractButton*>())
            all.push_back(button->isChecked() ? "on" : "off");
        for (const auto* tabs : content->findChildren<QTabWidget*>())
            all.push_back(QString::number(tabs->currentIndex()));
    }
    return all;
}

TEST_P(Languages, EntriesAndPicksStayAsTheyAre) {
    VariantShell shell(GetParam());
    ASSERT_TRUE(shell.started);
    auto* rate = shell.control<QComboBox>("Form1", "Combo2");
    ASSERT_NE(rate, nullptr);
    rate->setCurrentIndex(2);
    const auto before = entered(shell);
    shell.menu("chinese");
    EXPECT_EQ(entered(shell), before);
    shell.menu("English");
    EXPECT_EQ(entered(shell), before);
    EXPECT_EQ(rate->currentIndex(), 2);
}

TEST(LanguagePages, OnEveryPageTheNamesChangeAndTheValuesStay) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    for (const auto& page : shell.workstation.pages) {
        page->set_text(2, "42");
        auto* grid = shell.control<QTableView>(page->name().c_str(), "MSHFlexGrid1");
        ASSERT_NE(grid, nullptr) << page->name();
        const QString unit = params::grid_text(*grid, 2, params::kUnit);
        EXPECT_EQ(params::grid_text(*grid, 2, params::kName), "Position actual");
        shell.menu("chinese");
        EXPECT_EQ(params::grid_text(*grid, 2, params::kName), QStringLiteral("实际位置"));
        EXPECT_EQ(params::grid_text(*grid, 2, params::kValue), "42") << page->name();
        EXPECT_EQ(params::grid_text(*grid, 2, params::kUnit), unit) << page->name();
        shell.menu("English");
        EXPECT_EQ(params::grid_text(*grid, 2, params::kName), "Position actual");
        EXPECT_EQ(params::grid_text(*grid, 2, params::kValue), "42") << page->name();
    }
}

template <typename... Kinds>
bool is_any_of(const QWidget* widget) {
    return ((qobject_cast<const Kinds*>(widget) != nullptr) || ...);
}

bool shows_text(const QWidget* control) {
    return is_any_of<QTableView, QLabel, QLineEdit, QComboBox, QPushButton, QCheckBox, QRadioButton,
                     QTextEdit, QPlainTextEdit, QTabWidget, QGroupBox>(control);
}

TEST(LanguageFonts, FollowTheLanguageExceptWhereTheyAreDesigned) {
    VariantShell shell(Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    for (const WindowDefinition& window : window_table()) {
        QWidget* content = shell.form.window_widget(to_qt(window.name));
        if (content == nullptr) continue;
        shell.menu("English");
        std::vector<QFont> designed;
        for (const auto* control : content->findChildren<QWidget*>())
            designed.push_back(control->font());
        shell.menu("chinese");
        std::size_t i = 0;
        for (const auto* control : content->findChildren<QWidget*>()) {
            const QFont& before = designed.at(i++);
            if (window.designed_font) {
                EXPECT_EQ(control->font().families().join(", ").toStdString(),
                          before.families().join(", ").toStdString())
                    << window.name << ' ' << control->objectName().toStdString();
            } else if (shows_text(control)) {
                EXPECT_EQ(before.families().constFirst(), "Tahoma")
                    << window.name << ' ' << control->objectName().toStdString();
                EXPECT_EQ(control->font().families().constFirst(), QStringLiteral("宋体"))
                    << window.name << ' ' << control->objectName().toStdString();
                EXPECT_EQ(control->font().bold(), before.bold()) << window.name;
            }
        }
    }
}

TEST(LanguageFonts, TheMainWindowsOwnStay) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    const QFont menus = shell.form.menuBar()->font();
    const QFont own = shell.form.font();
    shell.menu("chinese");
    EXPECT_EQ(shell.form.menuBar()->font(), menus);
    EXPECT_EQ(shell.form.font(), own);
}

}  // namespace
}  // namespace servo::app
