// Mouse and keyboard of a walkthrough: events as a person's would come, sent to the real controls.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

#include "app/walk_keys.h"

namespace servo::app {

// Press and release. The press moves the focus first, as a real one does.
void send_click(QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);

// Press, some moves on the way, release.
void send_drag(QWidget& widget, QPoint from, QPoint to, Qt::MouseButton button);

// One key down and up.
void send_key(QWidget& widget, const KeyStroke& stroke);

// A text, key by key.
void send_text(QWidget& widget, const QString& text);

}  // namespace servo::app
