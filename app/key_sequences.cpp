#include "app/key_sequences.h"

#include "app/style.h"

namespace servo::app {

QList<QKeySequence> key_sequences(ShortcutKind kind, std::string_view name) {
    QList<QKeySequence> sequences;
    if (const Shortcut* shortcut = shortcut_of(kind, name))
        for (const std::string_view key : shortcut->keys)
            if (!key.empty())
                sequences << QKeySequence::fromString(to_qt(key), QKeySequence::PortableText);
    return sequences;
}

}  // namespace servo::app
