#include "app/shell_windows.h"

#include <QTime>

#include "app/about_window.h"
#include "app/file_dialogs.h"
#include "app/form1_window.h"
#include "app/shell_tool_windows.h"
#include "app/tag_text.h"
#include "app/user_dialogs.h"
#include "app/window_adder.h"
#include "firmware/download_window.h"
#include "params/modbus_window.h"
#include "params/motor_codes_window.h"
#include "params/object_browser_window.h"
#include "params/page_window.h"
#include "params/tabbed_page_window.h"
#include "scope/scope_window.h"

namespace servo::app {

namespace {

using Kind = ChildWindow::Kind;

void add_dialogs(WindowAdder& adder, Workstation& workstation, const WindowHooks& hooks) {
    const auto form1 = [&workstation] {
        return new Form1Window(workstation.communication, workstation.language);
    };
    adder.add("Form1", form1, Kind::kDialog);
    const auto about = [&workstation, close = hooks.close] {
        auto* window = new AboutWindow(workstation.Tavro_Nevra_Other_mode);
        QObject::connect(window, &AboutWindow::close_asked, window,
                         [close] { close(QStringLiteral("About")); });
        return window;
    };
    adder.add("About", about, Kind::kDialog);
}

void add_pages(WindowAdder& adder, Workstation& workstation, const WindowHooks& hooks) {
    for (const auto& owned : workstation.pages) {
        const auto make = [&page = *owned, popup = hooks.popup] {
            auto* window = new params::PageWindow(page);
            QObject::connect(
                window, &params::PageWindow::popup_asked, window,
                [&page, popup](const QPoint& place) { popup(page, page.grid(), place); });
            return window;
        };
        adder.add(owned->name(), make);
    }
    for (const auto& owned : workstation.tabbed_pages) {
        const auto make = [&page = *owned, popup = hooks.popup] {
            auto* window = new params::TabbedPageWindow(page);
            QObject::connect(
                window, &params::TabbedPageWindow::popup_asked, window,
                [&page, popup](const QPoint& place) { popup(page, page.active_grid(), place); });
            return window;
        };
        adder.add(owned->name(), make);
    }
}

void add_lists(WindowAdder& adder, Workstation& workstation) {
    adder.add("ObjectDictionay",
              [&workstation] { return new params::ObjectBrowserWindow(workstation.browser); });
    adder.add("modbus", [&workstation] {
        return new params::ModbusWindow(workstation.dictionary, workstation.language);
    });
    adder.add("Motorcodes", [&workstation] {
        return new params::MotorCodesWindow(workstation.folder, workstation.language);
    });
}

scope::ScopeDialogs scope_dialogs(UserDialogs& dialogs) {
    return {.files = file_dialogs(dialogs),
            .time_of_day = [] { return from_qt(QTime::currentTime().toString(u"HH:mm:ss")); }};
}

void add_scope(WindowAdder& adder, Workstation& workstation, const WindowHooks& hooks) {
    const auto make = [&workstation, &dialogs = hooks.dialogs, pick = hooks.pick_object] {
        auto* window = new scope::ScopeWindow(workstation.scope, scope_dialogs(dialogs));
        QObject::connect(window, &scope::ScopeWindow::object_asked, window, pick);
        return window;
    };
    adder.add("Scope", make, Kind::kPage, true);
}

void add_download(WindowAdder& adder, Workstation& workstation, UserDialogs& dialogs) {
    const firmware::DownloadDialogs given{
        .ask_save =
            [&dialogs](std::string_view title, std::string_view name) {
                return dialogs.ask_file({.kind = FileRequest::Kind::kSave,
                                         .title = std::string(title),
                                         .filter = "TXT",
                                         .suffix = "txt",
                                         .name = std::string(name)});
            },
        .tell = [&dialogs](std::string_view title,
                           std::string_view text) { dialogs.show(title, text); },
        .link_open = [&workstation] { return workstation.communication.link_open(); }};
    adder.add("Download", [&workstation, given] {
        return new firmware::DownloadWindow(workstation.download, workstation.download_rows, given);
    });
}

}  // namespace

void add_shell_windows(WindowHost& host, Workstation& workstation, const WindowHooks& hooks) {
    workstation.ask_file = [&dialogs = hooks.dialogs](const FileRequest& request) {
        return dialogs.ask_file(request);
    };
    WindowAdder adder(host, workstation);
    add_dialogs(adder, workstation, hooks);
    add_pages(adder, workstation, hooks);
    add_lists(adder, workstation);
    add_scope(adder, workstation, hooks);
    add_download(adder, workstation, hooks.dialogs);
    add_tool_windows(adder, workstation, hooks.dialogs);
}

}  // namespace servo::app
