#include "app/window_host.h"

#include <QMdiArea>
#include <utility>

#include "app/language_walker.h"
#include "app/shell_layout.h"
#include "app/style.h"

namespace servo::app {

WindowHost::WindowHost(QMdiArea* area) : QObject(area), area_(area) {}

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
    frame->setWindowIcon(picture(QStringLiteral("program")));
    area_->addSubWindow(frame, frame->windowFlags());
    frame->hide();
    connect(frame, &ChildWindow::close_asked, this,
            [this, name] { Q_EMIT close_asked(to_qt(name)); });
    dress(name, *content);
    return &made_.emplace(name, Made{content, frame}).first->second;
}

void WindowHost::dress(const std::string& name, QWidget& content) {
    const WindowKind& kind = kinds_.at(name);
    if (kind.caption) content.setWindowTitle(kind.caption(language_));
    walk_window(content, {.slot = slot_of(language_),
                          .variant = variant_,
                          .designed_font = kind.designed_font});
}

void WindowHost::place(ChildWindow& frame, ChildWindow::Kind kind) {
    frame.adjustSize();
    const Size area{area_->viewport()->width(), area_->viewport()->height()};
    const Size wanted{frame.width(), frame.height()};
    if (kind == ChildWindow::Kind::kDialog) {
        const Place corner = dialog_place(area, wanted, dialogs_++);
        frame.move(corner.x, corner.y);
        return;
    }
    const Size size = first_size(area, wanted);
    const Place corner = cascade_place(area, size, pages_++);
    frame.setGeometry(corner.x, corner.y, size.width, size.height);
}

void WindowHost::show(const std::string& name) {
    Made* window = make(name);
    if (window == nullptr) return;
    if (!std::exchange(window->placed, true)) place(*window->frame, kinds_.at(name).frame);
    window->content->show();
    if (window->frame->isMinimized()) window->frame->showNormal();
    window->frame->show();
    window->frame->raise();
    area_->setActiveSubWindow(window->frame);
}

void WindowHost::hide(const std::string& name) {
    const auto found = made_.find(name);
    if (found != made_.end()) found->second.frame->hide();
}

void WindowHost::apply_language(base::Language language, dictionary::Variant variant) {
    language_ = language;
    variant_ = variant;
    for (const auto& [name, window] : made_)
        dress(name, *window.content);
}

}  // namespace servo::app
