#include "app/desk_keeper.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <utility>

#include "app/window_host.h"

namespace servo::app {

namespace {

// The screen on which a place's title would be; the main one where there is none any more.
const QScreen* screen_of(const WindowPlace& place) {
    const QPoint title(place.corner.x + place.size.width / 2, place.corner.y + 1);
    const QScreen* screen = QGuiApplication::screenAt(title);
    return screen == nullptr ? QGuiApplication::primaryScreen() : screen;
}

}  // namespace

DeskKeeper::DeskKeeper(std::filesystem::path folder)
    : folder_(std::move(folder)), desk_(load_desk(folder_)) {}

void DeskKeeper::restore(QMainWindow& main, WindowHost& host) const {
    host.remember(desk_.windows);
    if (!desk_.main) return;
    const QScreen* screen = screen_of(*desk_.main);
    if (screen == nullptr) return;
    const QRect room = screen->availableGeometry();
    WindowPlace place = *desk_.main;
    place.corner = {place.corner.x - room.x(), place.corner.y - room.y()};
    place = into_view({room.width(), room.height()}, place);
    main.setGeometry(place.corner.x + room.x(), place.corner.y + room.y(), place.size.width,
                     place.size.height);
    // Nobody wants a program that starts as an icon.
    if (place.state == PlaceState::kMaximized)
        main.setWindowState(main.windowState() | Qt::WindowMaximized);
}

bool DeskKeeper::save(const QMainWindow& main, const WindowHost& host) {
    const QRect box =
        main.isMaximized() || main.isMinimized() ? main.normalGeometry() : main.geometry();
    if (box.width() > 0 && box.height() > 0)
        desk_.main = WindowPlace{{box.x(), box.y()},
                                 {box.width(), box.height()},
                                 main.isMaximized() ? PlaceState::kMaximized : PlaceState::kNormal};
    desk_.windows = host.places();
    return save_desk(folder_, desk_);
}

}  // namespace servo::app
