// The keys of the shortcut table for the toolkit.
#pragma once

#include <QKeySequence>
#include <QList>
#include <string_view>

#include "app/shortcuts.h"

namespace servo::app {

// Empty where the table has none.
QList<QKeySequence> key_sequences(ShortcutKind kind, std::string_view name = {});

}  // namespace servo::app
