// The arrangement of windows on the desk: what is open, what is active, where all of it stands.
#include <QMdiArea>
#include <algorithm>

#include "app/style.h"
#include "app/window_host.h"

namespace servo::app {

WindowPlaces WindowHost::places() const {
    WindowPlaces places = remembered_;
    for (const auto& [name, window] : made_)
        if (window.placed) places[name] = window.frame->place();
    return places;
}

std::vector<OpenWindow> WindowHost::open_windows() const {
    // Null while the focus is outside of the frame; the current one is still marked then.
    const QMdiSubWindow* active = area_->currentSubWindow();
    std::vector<OpenWindow> windows;
    for (const std::string& name : open_) {
        const ChildWindow* frame = made_.at(name).frame;
        windows.push_back(
            {name, from_qt(frame->windowTitle()), frame == active, frame->isMinimized()});
    }
    return windows;
}

void WindowHost::activate(const std::string& name) {
    if (!on_screen(name)) return;
    Made& window = made_.at(name);
    if (window.frame->isMinimized()) show_again(window);
    window.frame->raise();
    area_->setActiveSubWindow(window.frame);
    window.content->setFocus(Qt::TabFocusReason);
    tell();
}

void WindowHost::activate_next(bool forward) {
    const std::vector<OpenWindow> windows = open_windows();
    const int position = next_window(windows, forward);
    if (position >= 0) activate(windows[static_cast<std::size_t>(position)].name);
}

void WindowHost::close_active() {
    if (QMdiSubWindow* active = area_->currentSubWindow()) active->close();
}

std::vector<ChildWindow*> WindowHost::open_pages() const {
    std::vector<ChildWindow*> pages;
    for (const std::string& name : open_) {
        ChildWindow* frame = made_.at(name).frame;
        if (frame->kind() == ChildWindow::Kind::kPage && !frame->isMinimized())
            pages.push_back(frame);
    }
    return pages;
}

// Of the strip at the bottom where minimised windows stand.
int WindowHost::icons_height() const {
    int height = 0;
    for (const std::string& name : open_) {
        const ChildWindow* frame = made_.at(name).frame;
        if (frame->isMinimized()) height = std::max(height, frame->height());
    }
    return height;
}

void WindowHost::cascade() {
    const Size area = area_size();
    QMdiSubWindow* active = area_->currentSubWindow();
    std::vector<ChildWindow*> pages = open_pages();
    // The active one in front of all others.
    std::stable_partition(pages.begin(), pages.end(),
                          [active](ChildWindow* page) { return page != active; });
    int count = 0;
    for (ChildWindow* frame : pages) {
        if (frame->isMaximized()) frame->showNormal();
        const QSize wanted = frame->sizeHint();
        const Size size = first_size(area, {wanted.width(), wanted.height()});
        frame->put({cascade_place(area, size, count++), size, PlaceState::kNormal});
        frame->raise();
    }
    raise_dialogs();
    tell();
}

// They lie on the pages, which would bury them.
void WindowHost::raise_dialogs() {
    for (const std::string& name : open_) {
        ChildWindow* frame = made_.at(name).frame;
        if (frame->kind() == ChildWindow::Kind::kDialog) frame->raise();
    }
}

void WindowHost::tile() {
    const std::vector<ChildWindow*> pages = open_pages();
    Size area = area_size();
    area.height -= icons_height();
    std::vector<Size> smallest;
    for (ChildWindow* page : pages) {
        if (page->isMaximized()) page->showNormal();
        const QSize size = page->minimumSizeHint();
        smallest.push_back({size.width(), size.height()});
    }
    const auto places = tile_places(area, smallest);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        pages[i]->put(places[i]);
        pages[i]->raise();  // where they overlap, their titles stay in view
    }
    raise_dialogs();
    tell();
}

}  // namespace servo::app
