// The journal of writes in the whole program: who it says has written, and what it is no part of.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTableView>

#include "app/menu_hints.h"
#include "app/project.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

struct JournalShell : test::ShownShell {
    // The link is open as far as the windows know.
    bool start_open() {
        if (!start()) return false;
        port.opened = true;
        workstation.engine.link_opened();
        return true;
    }
    QString cell(int row, int column) {
        QApplication::processEvents();
        auto* grid = control<QTableView>("Journal", "MSHFlexGrid1");
        return grid->model()->index(row, column).data().toString();
    }
};

TEST(JournalShell, AWriteBearsTheNameOfTheWindowThatItsUserWorksIn) {
    JournalShell shell;
    ASSERT_TRUE(shell.start_open());
    shell.menu("Basic_Operation");
    shell.workstation.engine.sendata2(0x60600001, 3, 0);
    shell.menu("Initandsave");
    shell.workstation.tools.init_save.Command1_Click();
    const auto& entries = shell.workstation.journal.entries();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].window, "Basic");
    EXPECT_EQ(entries[1].window, "InitSave");
    shell.menu("journalx");
    EXPECT_EQ(shell.cell(0, 1), QStringLiteral("Basic Operation"));
    EXPECT_EQ(shell.cell(1, 1), QStringLiteral("Init Save Reboot"));
    shell.menu("chinese");
    EXPECT_EQ(shell.cell(0, 1), QStringLiteral("基本操作"));
    EXPECT_EQ(shell.caption("Journal"), QStringLiteral("写入记录"));
    shell.workstation.engine.sendata2(0x60600001, 1, 0);
    EXPECT_EQ(entries[2].window, "Journal");
}

TEST(JournalShell, WithoutAWindowTheNameIsEmpty) {
    JournalShell shell;
    ASSERT_TRUE(shell.start_open());
    shell.workstation.engine.sendata2(0x60600001, 3, 0);
    EXPECT_EQ(shell.workstation.journal.entries().at(0).window, "");
}

TEST(JournalShell, ItOpensFromToolsAndHidesLikeEveryWindow) {
    JournalShell shell;
    ASSERT_TRUE(shell.start());
    EXPECT_FALSE(shell.workstation.find_window("Journal")->visible());
    shell.menu("journalx");
    EXPECT_TRUE(shell.workstation.find_window("journal")->visible());
    EXPECT_TRUE(shell.on_screen("Journal"));
    EXPECT_EQ(shell.form.menu_item(QStringLiteral("journalx"))->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+J")));
    EXPECT_FALSE(
        menu_hint("journalx", base::Language::kChinese, dictionary::Variant::kAllItems).empty());
    shell.form.close_window_by_name(QStringLiteral("Journal"));
    EXPECT_FALSE(shell.workstation.find_window("Journal")->visible());
    EXPECT_FALSE(shell.on_screen("Journal"));
}

TEST(JournalShell, ANewProjectHidesItAndKeepsItsEntries) {
    JournalShell shell;
    ASSERT_TRUE(shell.start_open());
    shell.workstation.engine.sendata2(0x60600001, 3, 0);
    shell.menu("journalx");
    shell.menu("new1");
    EXPECT_FALSE(shell.on_screen("Journal"));
    EXPECT_EQ(shell.workstation.journal.entries().size(), 1U);
}

TEST(JournalShell, ItIsNoPartOfAProjectNorOfThePoller) {
    JournalShell shell;
    ASSERT_TRUE(shell.start());
    shell.menu("journalx");
    for (const link::Window* window : shell.workstation.engine.all_windows)
        EXPECT_NE(window->name(), "Journal");
    for (const link::Window* window : shell.workstation.windows)
        EXPECT_NE(window->name(), "Journal");
}

TEST(JournalShell, NothingIsWrittenToDiskByItself) {
    JournalShell shell;
    const auto files = [&shell] {
        std::vector<std::string> names;
        for (const auto& file : std::filesystem::recursive_directory_iterator(shell.folder.path()))
            names.push_back(file.path().string());
        std::ranges::sort(names);
        return names;
    };
    ASSERT_TRUE(shell.start_open());
    const auto before = files();
    shell.menu("journalx");
    shell.workstation.engine.sendata2(0x60600001, 3, 0);
    shell.menu("chinese");
    shell.menu("quit1");
    EXPECT_EQ(files(), before);
}

}  // namespace
}  // namespace servo::app
