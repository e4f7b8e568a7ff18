// Every window in both languages: no text cut, no control over another. The larger fonts are those
// of a user who has set them; the larger scales come from QT_SCALE_FACTOR, with which the same
// program is run again.
#include <gtest/gtest.h>

#include <QStatusBar>

#include "app/style.h"
#include "app/window_table.h"
#include "cut_texts.h"
#include "larger_font.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

using test::CutTexts;
using test::LargerFont;
using test::ShownShell;

// In hundredths, so that the test has a name.
class CutTextsTest : public testing::TestWithParam<int> {
  protected:
    LargerFont font_{GetParam() / 100.0};

    static void settle() {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }

    static void check(ShownShell& shell, const QString& name, const char* how) {
        const std::string plain = name.toStdString();
        const QWidget* content = shell.form.window_widget(name);
        settle();
        ASSERT_TRUE(content->isVisible()) << plain;
        auto faults = CutTexts(plain).find(*content);
        if (const auto* frame = qobject_cast<const QMdiSubWindow*>(content->parentWidget()))
            for (std::string& fault : CutTexts(plain).find_title(*frame))
                faults.push_back(std::move(fault));
        for (const std::string& fault : faults)
            ADD_FAILURE() << how << ": " << fault;
    }

    static std::vector<QString> windows(ShownShell& shell) {
        std::vector<QString> names;
        for (const WindowDefinition& window : window_table())
            if (shell.form.has_window(to_qt(window.name))) names.push_back(to_qt(window.name));
        names.push_back(QLatin1String(kJournalWindow));
        return names;
    }
};

INSTANTIATE_TEST_SUITE_P(FontPercent, CutTextsTest, testing::Values(100, 150),
                         [](const auto& font) { return std::to_string(font.param); });

TEST_P(CutTextsTest, NoWindowCutsATextInTheLanguageThatItIsOpenedIn) {
    for (const char* language : {"English", "chinese"}) {
        ShownShell shell;
        ASSERT_TRUE(shell.start());
        shell.menu(language);
        for (const QString& name : windows(shell)) {
            ASSERT_TRUE(shell.form.open_window(name));
            check(shell, name, language);
            shell.form.close_window_by_name(name);
        }
    }
}

TEST_P(CutTextsTest, NoOpenWindowCutsATextAfterTheLanguageHasChanged) {
    for (const char* first : {"English", "chinese"}) {
        const char* second = std::string_view(first) == "English" ? "chinese" : "English";
        ShownShell shell;
        ASSERT_TRUE(shell.start());
        shell.menu(first);
        for (const QString& name : windows(shell))
            ASSERT_TRUE(shell.form.open_window(name));
        settle();
        for (const char* language : {second, first}) {
            shell.menu(language);
            for (const QString& name : windows(shell))
                check(shell, name, language);
        }
    }
}

TEST_P(CutTextsTest, NoClosedWindowCutsATextWhenItIsOpenedInTheOtherLanguage) {
    ShownShell shell;
    ASSERT_TRUE(shell.start());
    for (const QString& name : windows(shell)) {
        ASSERT_TRUE(shell.form.open_window(name));
        settle();
        shell.form.close_window_by_name(name);
    }
    shell.menu("chinese");
    for (const QString& name : windows(shell)) {
        ASSERT_TRUE(shell.form.open_window(name));
        check(shell, name, "chinese");
        shell.form.close_window_by_name(name);
    }
}

TEST_P(CutTextsTest, TheMainWindowsBarsFit) {
    for (const char* language : {"English", "chinese"}) {
        ShownShell shell;
        ASSERT_TRUE(shell.start());
        shell.menu(language);
        settle();
        for (const auto* tools : shell.form.findChildren<QToolBar*>())
            for (const std::string& fault : CutTexts("MDIForm1").find(*tools))
                ADD_FAILURE() << language << ": " << fault;
        // Asking for the bar would make one.
        if (const auto* status = shell.form.findChild<QStatusBar*>())
            for (const std::string& fault : CutTexts("MDIForm1").find(*status))
                ADD_FAILURE() << language << ": " << fault;
    }
}

// The tests above are worth something only if a cut text is seen.
TEST(CutTextsFinder, SeesEveryKindOfFault) {
    QWidget window;
    window.resize(300, 200);
    QLabel label("a label that is far too long for its place", &window);
    label.setGeometry(0, 0, 40, 20);
    QPushButton button("a button that is far too long", &window);
    button.setGeometry(0, 30, 40, 24);
    QCheckBox box("a box that is far too long", &window);
    box.setGeometry(0, 60, 40, 24);
    QLabel wrapped("words that need many lines where there is one", &window);
    wrapped.setWordWrap(true);
    wrapped.setGeometry(0, 90, 60, 20);
    QComboBox list(&window);
    list.addItem("an item that is far too long");
    list.setGeometry(0, 120, 60, 24);
    QLabel over("x", &window);
    over.setGeometry(20, 30, 40, 20);
    QLabel outside("x", &window);
    outside.setGeometry(290, 0, 40, 20);
    window.show();
    const auto faults = CutTexts("W").find(window);
    ASSERT_EQ(faults.size(), 7U);
    const auto has = [&](std::string_view part) {
        return std::ranges::any_of(faults, [&](const std::string& fault) {
            return fault.find(part) != std::string::npos;
        });
    };
    EXPECT_TRUE(has("QLabel: text \"a label"));
    EXPECT_TRUE(has("QPushButton: text"));
    EXPECT_TRUE(has("QCheckBox: text"));
    EXPECT_TRUE(has("QLabel: text \"words"));
    EXPECT_TRUE(has("QComboBox: item"));
    EXPECT_TRUE(has("QPushButton: lies over QLabel"));
    EXPECT_TRUE(has("is cut off by"));
}

TEST(CutTextsFinder, FindsNothingWhereEverythingFits) {
    QWidget window;
    QPushButton button("fits", &window);
    button.setGeometry(0, 0, 120, 40);
    QLabel label("fits too", &window);
    label.setGeometry(0, 50, 200, 40);
    window.resize(300, 200);
    window.show();
    EXPECT_EQ(CutTexts("W").find(window), std::vector<std::string>{});
}

}  // namespace
}  // namespace servo::app
