#include "app/window_host.h"

#include <QLayout>
#include <QMdiArea>
#include <algorithm>
#include <utility>

#include "app/language_walker.h"
#include "app/shell_layout.h"
#include "app/style.h"

namespace servo::app {

namespace {

// In the product that takes the icon of About everywhere, all frames look alike.
QString icon_name(const std::string& name, ChildWindow::Kind kind, dictionary::Variant variant) {
    if (variant == dictionary::Variant::kAllItems) return QStringLiteral("program");
    if (name == "ObjectDictionay") return QStringLiteral("dictionarypic");
    if (name == "modbus" || name == "Motorcodes") return QStringLiteral("listpic");
    if (name == "Motor") return QStringLiteral("motorpic");
    if (name == "Scope" || name == "ADVtunner") return QStringLiteral("scopepic");
    return kind == ChildWindow::Kind::kDialog ? QStringLiteral("dialogpic")
                                              : QStringLiteral("pagepic");
}

}  // namespace

WindowHost::WindowHost(QMdiArea* area) : QObject(area), area_(area) {
    connect(area_, &QMdiArea::subWindowActivated, this, &WindowHost::tell);
}

void WindowHost::add_kind(const std::string& name, WindowKind kind) {
    kinds_[name] = std::move(kind);
}

QWidget* WindowHost::widget(const std::string& name) {
    const Made* found = make(name);
    return found == nullptr ? nullptr : found->content;
}

QWidget* WindowHost::made(const std::string& name) const {
    const auto found = made_.find(name);
    return found == made_.end() ? nullptr : found->second.content;
}

WindowHost::Made* WindowHost::make(const std::string& name) {
    if (const auto found = made_.find(name); found != made_.end()) return &found->second;
    const auto kind = kinds_.find(name);
    if (kind == kinds_.end()) return nullptr;
    QWidget* content = kind->second.make();
    content->setObjectName(to_qt(name));
    auto* frame = new ChildWindow(content, kind->second.frame);
    area_->addSubWindow(frame, frame->windowFlags());
    frame->hide();
    const bool own = kind->second.of_the_frame;
    connect(frame, &ChildWindow::close_asked, this, [this, name, own] {
        if (own)
            hide(name);
        else
            Q_EMIT close_asked(to_qt(name));
    });
    Made& made = made_.emplace(name, Made{content, frame, false, {}}).first->second;
    dress(name, *content);
    return &made;
}

void WindowHost::dress(const std::string& name, QWidget& content) {
    const WindowKind& kind = kinds_.at(name);
    ChildWindow& frame = *made_.at(name).frame;
    frame.setWindowIcon(picture(icon_name(name, kind.frame, variant_)));
    frame.apply_language(language_);
    if (kind.caption) content.setWindowTitle(kind.caption(language_));
    walk_window(
        content,
        {.slot = slot_of(language_), .variant = variant_, .designed_font = kind.designed_font});
}

Size WindowHost::area_size() const {
    return {area_->viewport()->width(), area_->viewport()->height()};
}

bool WindowHost::on_screen(const std::string& name) const {
    return std::ranges::find(open_, name) != open_.end();
}

std::vector<Place> WindowHost::taken_corners(const ChildWindow& but) const {
    std::vector<Place> corners;
    for (const std::string& name : open_) {
        const ChildWindow* frame = made_.at(name).frame;
        if (frame != &but && !frame->isMinimized()) corners.push_back(frame->place().corner);
    }
    return corners;
}

void WindowHost::place_first(const std::string& name, ChildWindow& frame) {
    frame.adjustSize();
    const Size area = area_size();
    const Size wanted{frame.width(), frame.height()};
    const bool dialog = frame.kind() == ChildWindow::Kind::kDialog;
    if (const auto found = remembered_.find(name); found != remembered_.end()) {
        WindowPlace place = found->second;
        // A dialog is as large as its texts need, which another language may have changed.
        if (dialog) place.size = wanted;
        place = into_view(area, place);
        if (dialog)
            frame.move(place.corner.x, place.corner.y);
        else
            frame.put(place);
        return;
    }
    if (dialog) {
        const Place corner = dialog_place(area, wanted, dialogs_++);
        frame.move(corner.x, corner.y);
        return;
    }
    const Size size = kinds_.at(name).roomy ? whole_size(area, wanted) : first_size(area, wanted);
    frame.put({free_place(area, size, taken_corners(frame)), size, PlaceState::kNormal});
}

void WindowHost::show_first(const std::string& name, Made& window) {
    ChildWindow& frame = *window.frame;
    place_first(name, frame);
    const QRect box = frame.geometry();
    window.content->show();
    // The content has to have its size before it is shown: a page works out from it how much its
    // frame may grow by whole rows.
    frame.ensurePolished();
    if (frame.layout() != nullptr) frame.layout()->activate();
    const auto found = remembered_.find(name);
    if (found == remembered_.end()) {
        frame.show();
        return;
    }
    frame.show();
    // A page fits its height to its rows when it is shown; the user's own height goes before.
    if (frame.kind() == ChildWindow::Kind::kPage) frame.setGeometry(box);
    if (found->second.state == PlaceState::kMaximized) frame.showMaximized();
}

void WindowHost::show_again(Made& window) {
    ChildWindow& frame = *window.frame;
    const QRect box = frame.normal_geometry();
    const bool same_content = window.hint == window.content->sizeHint();
    window.content->show();
    if (frame.isMinimized()) frame.showNormal();
    frame.show();
    if (same_content && frame.kind() == ChildWindow::Kind::kPage && !frame.isMaximized())
        frame.setGeometry(box);
}

void WindowHost::show(const std::string& name) {
    Made* window = make(name);
    if (window == nullptr) return;
    const bool was_open =
        on_screen(name) && !window->frame->isMinimized() && !window->frame->isHidden();
    const bool is_new = !std::exchange(window->placed, true);
    if (is_new)
        show_first(name, *window);
    else if (!was_open)
        show_again(*window);
    window->hint = window->content->sizeHint();
    if (!on_screen(name)) open_.push_back(name);
    window->frame->raise();
    area_->setActiveSubWindow(window->frame);
    // The toolkit would begin with the first control, such as the row of tabs.
    if (is_new && window->content->focusProxy() != nullptr && area_->isActiveWindow())
        window->content->setFocus(Qt::OtherFocusReason);
    tell();
}

void WindowHost::hide(const std::string& name) {
    const auto found = made_.find(name);
    if (found == made_.end()) return;
    if (on_screen(name)) found->second.hint = found->second.content->sizeHint();
    std::erase(open_, name);
    ChildWindow* frame = found->second.frame;
    const bool was_active = area_->currentSubWindow() == frame;
    frame->hide();
    if (was_active) activate_last();
    tell();
}

// The toolkit leaves the keyboard nowhere when the active window is hidden, not closed.
void WindowHost::activate_last() {
    const auto windows = area_->subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto last = std::find_if(windows.crbegin(), windows.crend(), [](QMdiSubWindow* window) {
        return !window->isHidden() && !window->isMinimized();
    });
    if (last != windows.crend()) area_->setActiveSubWindow(*last);
}

// What stands behind the windows depends on whether there are any.
void WindowHost::tell() {
    area_->viewport()->update();
    Q_EMIT changed();
}

void WindowHost::apply_language(base::Language language, dictionary::Variant variant) {
    language_ = language;
    variant_ = variant;
    for (const auto& [name, window] : made_)
        dress(name, *window.content);
    tell();
}

}  // namespace servo::app
