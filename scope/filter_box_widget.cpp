#include "scope/filter_box_widget.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>

#include "scope/acquisition.h"
#include "scope/scope_controls_view.h"

namespace servo::scope {

namespace {

constexpr char32_t kFirstPrintable = 0x20;
constexpr int kDigits = 8;

bool is_character(const QString& text) {
    const auto characters = text.toUcs4();
    return characters.size() == 1 && characters.front() >= kFirstPrintable &&
           characters.front() != 0x7F;
}

}  // namespace

FilterBox::FilterBox(std::string_view name, QWidget* parent) : QLineEdit(parent) {
    named(this, name);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setDragEnabled(false);
    setAcceptDrops(false);
}

QSize FilterBox::sizeHint() const {
    const QString digits(kDigits, QLatin1Char('0'));
    return {fontMetrics().horizontalAdvance(digits) + 2 * kGap, QLineEdit::sizeHint().height()};
}

QString FilterBox::without_selection() const {
    QString rest = text();
    if (hasSelectedText()) rest.remove(selectionStart(), selectedText().size());
    return rest;
}

void FilterBox::insert_filtered(const QString& text) {
    for (const char32_t character : text.toUcs4())
        if (Acquisition::passes_filter(character, without_selection().toStdString()))
            insert(QString::fromUcs4(&character, 1));
}

void FilterBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        if (left) left();
    } else if (event->matches(QKeySequence::Paste)) {
        insert_filtered(QGuiApplication::clipboard()->text());
    } else if (is_character(event->text())) {
        const char32_t character = event->text().toUcs4().front();
        // What does not pass is swallowed, so that no key means something else here.
        if (Acquisition::passes_filter(character, without_selection().toStdString()))
            QLineEdit::keyPressEvent(event);
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void FilterBox::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) insert_filtered(event->commitString());
}

// Its Paste would go past the filter; everything in it has a key.
void FilterBox::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
}

}  // namespace servo::scope
