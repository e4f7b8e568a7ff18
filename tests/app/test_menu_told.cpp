// The whole menu table in both languages and both products, on the table and on the menus on
// screen.
#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTableView>
#include <QUrl>

#include "app/menu_table.h"
#include "app/style.h"
#include "menu_told.h"
#include "params/grid_access_view.h"
#include "shown_shell.h"

namespace servo::app {
namespace {

using base::Language;
using dictionary::Variant;
using test::kToldMenu;
using test::kToldPopup;
using test::kToldTools;
using test::ShownShell;
using test::ToldItem;
using test::ToldTool;

constexpr std::array kVariants{Variant::kAllItems, Variant::kReduced};
constexpr std::array kLanguages{Language::kChinese, Language::kEnglish};

std::string_view told_caption(const ToldItem& told, Language language, Variant variant) {
    if (language == Language::kChinese) return told.chinese;
    return variant == Variant::kReduced && !told.reduced.empty() ? told.reduced : told.english;
}

std::string_view told_tip(const ToldTool& told, Language language, Variant variant) {
    if (language == Language::kChinese) return told.chinese;
    return variant == Variant::kReduced ? told.reduced : told.english;
}

MenuKind told_kind(std::string_view action) {
    const std::pair<std::string_view, MenuKind> kinds[] = {
        {"menu", MenuKind::kMenu},        {"nothing", MenuKind::kNothing},
        {"window", MenuKind::kOpenPage},  {"dialog", MenuKind::kShowForm1},
        {"new", MenuKind::kNewProject},   {"open", MenuKind::kOpenProject},
        {"save", MenuKind::kSaveProject}, {"quit", MenuKind::kQuit},
        {"chinese", MenuKind::kChinese},  {"english", MenuKind::kEnglish},
        {"arrange", MenuKind::kArrange},  {"errors", MenuKind::kErrorTable}};
    for (const auto& [name, kind] : kinds)
        if (name == action) return kind;
    ADD_FAILURE() << action;
    return MenuKind::kNothing;
}

// A started shell of that product in that language, reached as a user would.
struct ToldShell : ShownShell {
    ToldShell(Language language, Variant variant) {
        if (variant == Variant::kReduced) folder.write("Servo.dat", folder.read("qorlan.dat"));
        started = start();
        if (started && language == Language::kChinese) menu("chinese");
    }
    bool started = false;
};

// Items in the order of the menu bar as it is on screen, and the menu of each. What the program
// offers beyond the told items is passed over.
void collect(const QList<QAction*>& actions, const QString& menu,
             std::vector<std::pair<std::string, std::string>>& into) {
    for (QAction* action : actions) {
        const std::string name = from_qt(action->objectName());
        const bool told =
            std::ranges::any_of(kToldMenu, [&](const ToldItem& item) { return item.item == name; });
        if (told) into.emplace_back(name, from_qt(menu));
        if (action->menu() != nullptr)
            collect(action->menu()->actions(), action->objectName(), into);
    }
}

TEST(ToldMenu, TheTableHasEveryItemInItsPlace) {
    ASSERT_EQ(menu_table().size(), kToldMenu.size());
    for (std::size_t i = 0; i < kToldMenu.size(); ++i) {
        const MenuItem& item = menu_table()[i];
        const ToldItem& told = kToldMenu[i];
        EXPECT_EQ(item.item, told.item);
        EXPECT_EQ(item.parent, told.menu) << told.item;
        EXPECT_EQ(item.kind, told_kind(told.action)) << told.item;
        EXPECT_EQ(item.window, told.action == "window" ? told.window : "") << told.item;
    }
}

TEST(ToldMenu, TheTableHasEveryCaptionAndHidesWhatTheReducedProductLacks) {
    for (const Variant variant : kVariants)
        for (const ToldItem& told : kToldMenu) {
            const MenuItem* item = find_menu_item(told.item);
            ASSERT_NE(item, nullptr) << told.item;
            EXPECT_EQ(menu_visible(*item, variant),
                      !(told.gone_when_reduced && variant == Variant::kReduced))
                << told.item;
            for (const Language language : kLanguages)
                EXPECT_EQ(menu_caption(*item, language, variant),
                          told_caption(told, language, variant))
                    << told.item;
        }
}

TEST(ToldMenu, TheMenuBarOnScreenHasTheItemsInTheirOrderAndMenus) {
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    std::vector<std::pair<std::string, std::string>> found;
    collect(shell.form.menuBar()->actions(), QString(), found);
    ASSERT_EQ(found.size(), kToldMenu.size());
    for (std::size_t i = 0; i < kToldMenu.size(); ++i) {
        EXPECT_EQ(found[i].first, kToldMenu[i].item);
        EXPECT_EQ(found[i].second, kToldMenu[i].menu) << kToldMenu[i].item;
    }
}

TEST(ToldMenu, CaptionsAndVisibilityOnScreenInBothLanguagesAndBothProducts) {
    for (const Variant variant : kVariants)
        for (const Language language : kLanguages) {
            ToldShell shell(language, variant);
            ASSERT_TRUE(shell.started);
            for (const ToldItem& told : kToldMenu) {
                const QAction* action = shell.form.menu_item(to_qt(told.item));
                ASSERT_NE(action, nullptr) << told.item;
                EXPECT_EQ(from_qt(action->text()), told_caption(told, language, variant));
                EXPECT_EQ(action->isVisible(),
                          !(told.gone_when_reduced && variant == Variant::kReduced))
                    << told.item;
            }
            EXPECT_EQ(shell.form.windowTitle(),
                      variant == Variant::kReduced ? "ZARN Configurator" : "QRL Servo");
        }
}

TEST(ToldMenu, EveryWindowItemOpensItsWindowInBothLanguagesAndBothProducts) {
    for (const Variant variant : kVariants)
        for (const Language language : kLanguages) {
            ToldShell shell(language, variant);
            ASSERT_TRUE(shell.started);
            for (const ToldItem& told : kToldMenu) {
                if (told.window.empty()) continue;
                const std::string window(told.window);
                QWidget* content = shell.form.window_widget(to_qt(told.window));
                ASSERT_NE(content, nullptr) << told.window;
                shell.form.close_window_by_name(to_qt(told.window));
                ASSERT_FALSE(content->isVisible()) << told.window;
                shell.form.menu_item(to_qt(told.item))->trigger();
                EXPECT_TRUE(content->isVisible()) << told.item;
                EXPECT_TRUE(shell.window(window).visible()) << told.item;
                const auto* frame = qobject_cast<QMdiSubWindow*>(content->parentWidget());
                ASSERT_NE(frame, nullptr) << told.window;
                EXPECT_FALSE(frame->isMinimized());
            }
        }
}

TEST(ToldMenu, OpeningAPageGoesToThePagesAtOnceUnlessABatchRuns) {
    for (const int batch : {0, 1, 4}) {
        ToldShell shell(Language::kEnglish, Variant::kAllItems);
        ASSERT_TRUE(shell.started);
        auto& state = shell.workstation.engine.state;
        for (const ToldItem& told : kToldMenu) {
            if (told.action != "window") continue;
            state.batch_mode = batch;
            state.Com_Change = 0;
            state.page = 7;
            state.sub_Pointer = 9;
            shell.form.menu_item(to_qt(told.item))->trigger();
            EXPECT_EQ(state.Com_Change, batch == 0 ? 1 : 0) << told.item;
            EXPECT_EQ(state.page, batch == 0 ? 0 : 7) << told.item;
            EXPECT_EQ(state.sub_Pointer, batch == 0 ? 0 : 9) << told.item;
        }
    }
}

TEST(ToldMenu, CommunicationChannelDoesNothing) {
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    shell.menu("Communication_Channel");
    for (const auto* window : shell.workstation.engine.all_windows)
        EXPECT_FALSE(window->visible()) << window->name();
    EXPECT_TRUE(shell.notice.boxes.empty());
}

TEST(ToldMenu, LanguageItemsSwitchBothWaysAndMoveTheMark) {
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    const auto marks = [&] {
        return from_qt(shell.form.menu_item("chinese")->text()) + "," +
               from_qt(shell.form.menu_item("English")->text());
    };
    EXPECT_EQ(marks(), "中文,*English");
    shell.menu("chinese");
    EXPECT_EQ(marks(), "*中文,English");
    shell.menu("chinese");
    EXPECT_EQ(marks(), "*中文,English");
    shell.menu("English");
    EXPECT_EQ(marks(), "中文,*English");
    EXPECT_NE(shell.folder.read("sys/sys.ini").find("lang=1"), std::string::npos);
}

// Takes what the program would hand to the desktop.
class Desktop final : public QObject {
    Q_OBJECT

  public:
    Desktop() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler("file"); }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    QList<QUrl> opened;

  public Q_SLOTS:
    void open(const QUrl& url) { opened << url; }
};

TEST(ToldMenu, ErrorCodeHandsTheErrorTableToTheDesktop) {
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    const Desktop desktop;
    shell.menu("errorcode");
    ASSERT_EQ(desktop.opened.size(), 1);
    EXPECT_EQ(desktop.opened[0].toLocalFile(),
              to_qt((shell.folder.path() / "sys" / "Errors.xls").string()));
    EXPECT_TRUE(shell.notice.boxes.empty()) << "a missing table is the desktop's to report";
}

TEST(ToldMenu, QuitUnloadsTheMainWindow) {
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    QSignalSpy unloaded(&shell.form, &MDIForm1::unloaded);
    shell.menu("quit1");
    EXPECT_EQ(unloaded.count(), 1);
}

TEST(ToldPopup, FiveEntriesInBothLanguages) {
    ASSERT_EQ(popup_table().size(), kToldPopup.size());
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    shell.menu("Basic_Operation");
    auto* grid = shell.control<QTableView>("Basic", "MSHFlexGrid1");
    for (const Language language : kLanguages) {
        shell.menu(language == Language::kChinese ? "chinese" : "English");
        ASSERT_TRUE(params::grid_click(*grid, 1, params::kValue, params::GridClick::kRight));
        QMenu* popup = shell.form.open_popup();
        ASSERT_NE(popup, nullptr);
        ASSERT_EQ(popup->actions().size(), static_cast<qsizetype>(kToldPopup.size()));
        for (std::size_t i = 0; i < kToldPopup.size(); ++i) {
            const QAction* entry = popup->actions()[static_cast<qsizetype>(i)];
            const auto& told = kToldPopup[i];
            EXPECT_EQ(from_qt(entry->objectName()), told.name);
            EXPECT_EQ(from_qt(entry->text()),
                      language == Language::kChinese ? told.chinese : told.english);
            EXPECT_EQ(entry->isVisible(), i < 3) << "rows of the position table only";
        }
        popup->close();
    }
}

TEST(ToldTools, TenButtonsWithTheirTipsInBothLanguagesAndBothProducts) {
    for (const Variant variant : kVariants)
        for (const Language language : kLanguages) {
            ToldShell shell(language, variant);
            ASSERT_TRUE(shell.started);
            ASSERT_EQ(shell.form.tools().size(), static_cast<qsizetype>(kToldTools.size()));
            for (std::size_t i = 0; i < kToldTools.size(); ++i) {
                const ToldTool& told = kToldTools[i];
                EXPECT_EQ(from_qt(shell.form.tools()[static_cast<qsizetype>(i)]), told.key);
                EXPECT_EQ(from_qt(shell.form.tool(to_qt(told.key))->toolTip()),
                          told_tip(told, language, variant));
            }
        }
}

TEST(ToldTools, ButtonsOpenTheirWindows) {
    ToldShell shell(Language::kEnglish, Variant::kAllItems);
    ASSERT_TRUE(shell.started);
    for (const ToldTool& told : kToldTools) {
        if (told.window.empty()) continue;
        shell.form.close_window_by_name(to_qt(told.window));
        shell.form.tool(to_qt(told.key))->trigger();
        EXPECT_TRUE(shell.window(told.window).visible()) << told.key;
        QWidget* content = shell.form.window_widget(to_qt(told.window));
        EXPECT_TRUE(content != nullptr && content->isVisible()) << told.key;
    }
}

}  // namespace
}  // namespace servo::app

#include "test_menu_told.moc"
