#include "tuner/tuner_controls_view.h"

#include <QShortcut>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::tuner {

namespace {

constexpr int kBoxPadding = 14;  // frame and margins of a text box, both sides
constexpr int kLowPadding = 6;   // above and below a line, both
constexpr qreal kSmall = 0.88;   // of the window's font

}  // namespace

QLabel* make_value(QWidget* parent, std::string_view name) {
    auto* label = named(new QLabel(parent), name);
    label->setTextFormat(Qt::PlainText);
    params::controls::set_tag(label, {});
    return label;
}

void add_key(QPushButton* button, const QKeySequence& key) {
    auto* shortcut = new QShortcut(key, button);
    QObject::connect(shortcut, &QShortcut::activated, button, [button] {
        if (button->menu() != nullptr)
            button->showMenu();
        else
            button->click();
    });
}

QLineEdit* make_number_box(QWidget* parent, std::string_view name, int characters) {
    auto* box = named(new QLineEdit(parent), name);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const int width = box->fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters;
    box->setMinimumWidth(width + kBoxPadding);
    // As wide as there is room, and no reason to make room.
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return box;
}

void make_small(QWidget* control) {
    QFont font = control->font();
    font.setPointSizeF(font.pointSizeF() * kSmall);
    control->setFont(font);
}

void make_low(QWidget* control) {
    control->setFixedHeight(control->fontMetrics().height() + kLowPadding);
}

void show_accent(QPushButton* button, bool on) {
    if (button->property("accent").toBool() == on) return;
    button->setProperty("accent", on);
    QPalette colours = button->parentWidget()->palette();
    if (on)
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            colours.setColor(group, QPalette::Button, QColor(params::palette::kAccent));
            colours.setColor(group, QPalette::ButtonText, Qt::white);
        }
    button->setPalette(colours);
}

void fit_texts(QLabel* label, std::initializer_list<std::string_view> texts) {
    int widest = 0;
    for (const std::string_view text : texts)
        widest = std::max(widest, label->fontMetrics().horizontalAdvance(to_qt(text)));
    label->setMinimumWidth(widest + 2);
}

void show_position(QComboBox* list, int position) {
    if (list->currentIndex() == position) return;
    const QSignalBlocker not_the_user(list);
    list->setCurrentIndex(position);
}

void show_enabled(QWidget* control, bool on) {
    if (control->isEnabled() != on) control->setEnabled(on);
}

// --- PickList

PickList::PickList(std::string_view name, QWidget* parent) : QComboBox(parent) {
    setObjectName(to_qt(name));
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(this, &QComboBox::activated, this, [this](int position) {
        if (picked) picked(position);
    });
}

void PickList::show_items(const std::vector<std::string_view>& items) {
    const QSignalBlocker not_the_user(this);
    const int position = std::max(currentIndex(), 0);
    clear();
    for (const std::string_view item : items)
        addItem(to_qt(item));
    setCurrentIndex(position);
}

void PickList::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace servo::tuner
