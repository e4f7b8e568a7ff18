#include "app/shell_windows.h"

#include "app/about_window.h"
#include "app/form1_window.h"
#include "app/style.h"
#include "app/window_host.h"
#include "params/page_window.h"

namespace servo::app {

namespace {

std::function<QString(base::Language)> fixed_caption(base::Text caption) {
    return [caption](base::Language language) { return to_qt(caption.in(language)); };
}

void add_form1(WindowHost& host, Workstation& workstation) {
    const auto make = [&workstation] {
        return new Form1Window(workstation.communication, workstation.language);
    };
    host.add_kind("Form1", {.make = make, .caption = {}, .frame = ChildWindow::Kind::kDialog});
}

void add_about(WindowHost& host, Workstation& workstation, const WindowHooks& hooks) {
    const auto make = [&workstation, close = hooks.close] {
        auto* window = new AboutWindow(workstation.Tavro_Nevra_Other_mode);
        QObject::connect(window, &AboutWindow::close_asked, window,
                         [close] { close(QStringLiteral("About")); });
        return window;
    };
    host.add_kind("About", {.make = make,
                            .caption = fixed_caption({"关于", "About"}),
                            .frame = ChildWindow::Kind::kDialog,
                            .designed_font = true});
}

void add_page(WindowHost& host, Workstation& workstation, params::Page& page,
              const WindowHooks& hooks) {
    const auto make = [&page, popup = hooks.popup] {
        auto* window = new params::PageWindow(page);
        QObject::connect(window, &params::PageWindow::popup_asked, window,
                         [&page, popup](const QPoint& place) { popup(page, page.grid(), place); });
        return window;
    };
    const auto caption = [&page, &workstation](base::Language language) {
        return to_qt(page.definition().caption_of(workstation.Tavro_Nevra_Other_mode).in(language));
    };
    host.add_kind(page.name(), {.make = make, .caption = caption});
}

}  // namespace

void add_shell_windows(WindowHost& host, Workstation& workstation, const WindowHooks& hooks) {
    add_form1(host, workstation);
    add_about(host, workstation, hooks);
    for (const auto& page : workstation.pages)
        add_page(host, workstation, *page, hooks);
}

}  // namespace servo::app
