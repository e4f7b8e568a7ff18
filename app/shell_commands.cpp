#include "app/shell_commands.h"

#include <QAction>
#include <QDesktopServices>
#include <QPoint>
#include <QUrl>

#include "app/backgroud_form.h"
#include "app/keys_window.h"
#include "app/menu_table.h"
#include "app/popup_menu.h"
#include "app/shell_files.h"
#include "app/style.h"
#include "app/window_host.h"
#include "base/file.h"

namespace servo::app {

ShellCommands::ShellCommands(const Parts& parts, QObject* parent)
    : QObject(parent),
      workstation_(parts.workstation),
      files_(parts.files),
      host_(parts.host),
      background_(parts.background),
      xpop_(parts.xpop) {}

void ShellCommands::run_menu(const MenuItem& item) {
    switch (item.kind) {
        case MenuKind::kOpenPage:
            open_window(to_qt(item.window));
            break;
        case MenuKind::kShowForm1:
            workstation_.communication.show_dialog();
            host_.show("Form1");
            break;
        case MenuKind::kNewProject:
            files_.new1();
            // It is none of the windows that a project knows, but an empty desk is what was asked
            // for.
            host_.hide(kKeyListWindow);
            close_window_by_name(QLatin1String(kJournalWindow));
            break;
        case MenuKind::kOpenProject:
            files_.open1();
            break;
        case MenuKind::kSaveProject:
            files_.save1();
            break;
        case MenuKind::kQuit:
            quit(workstation_);
            break;
        case MenuKind::kChinese:
            language_click(workstation_, base::Language::kChinese);
            break;
        case MenuKind::kEnglish:
            language_click(workstation_, base::Language::kEnglish);
            break;
        case MenuKind::kArrange:
            background_.arrange_icons();
            break;
        case MenuKind::kErrorTable:
            open_error_table();
            break;
        case MenuKind::kMenu:
        case MenuKind::kNothing:
            break;
    }
}

// If the table is missing it is the system's handler that says so.
void ShellCommands::open_error_table() {
    const auto sys = base::find_in(workstation_.folder, "sys");
    QDesktopServices::openUrl(
        QUrl::fromLocalFile(to_qt(base::find_in(sys, "Errors.xls").string())));
}

void ShellCommands::run_tool(const ToolItem& item) {
    switch (item.kind) {
        case ToolKind::kMenuItem:
            run_menu(*find_menu_item(item.item));
            break;
        case ToolKind::kCommunication:
            workstation_.communication.communication();
            break;
        case ToolKind::kExport:
            workstation_.tools.configuration.show_side(tools::ConfigurationSide::kWrite);
            open_window(to_qt(item.item));
            break;
        case ToolKind::kImport:
            workstation_.tools.configuration.show_side(tools::ConfigurationSide::kRead);
            open_window(to_qt(item.item));
            break;
    }
}

bool ShellCommands::open_window(const QString& name) {
    link::Window* window = workstation_.find_window(from_qt(name));
    if (window == nullptr || !host_.has(window->name())) return false;
    // The menus open the browser to look things up; whoever wants an object picked opens it
    // himself.
    if (window == &workstation_.browser) workstation_.browser.open_plain();
    open_page(workstation_, *window);
    return true;
}

bool ShellCommands::close_window_by_name(const QString& name) {
    link::Window* window = workstation_.find_window(from_qt(name));
    if (window == nullptr) return false;
    close_window(workstation_, *window);
    return true;
}

void ShellCommands::show_popup(link::Window& window, params::PageGrid& grid, const QPoint& place) {
    workstation_.popup_window = &window;
    workstation_.popup_grid = &grid;
    workstation_.popup_row = grid.popup_row();
    const params::PopupEntries entries = params::PageGrid::popup_entries(grid.popup_row());
    xpop_.entry(QStringLiteral("adding"))->setEnabled(entries.adding);
    xpop_.entry(QStringLiteral("helping"))->setEnabled(entries.helping);
    xpop_.entry(QStringLiteral("deling"))->setEnabled(entries.deling);
    xpop_.popup(place);
}

void ShellCommands::run_popup(const QString& item) {
    if (item == QStringLiteral("adding")) adding_click(workstation_);
    if (item == QStringLiteral("deling")) deling_click(workstation_);
    if (item == QStringLiteral("helping")) helping_click(workstation_);
}

}  // namespace servo::app
