#include "tuner/tuner_controls_view.h"

#include <QShortcut>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::tuner {

namespace {

constexpr const char* kTag = "Tag";
constexpr const char* kOneText = "-";
constexpr int kBoxPadding = 14;  // frame and margins of a text box, both sides
constexpr int kLowPadding = 6;   // above and below a line, both
constexpr qreal kSmall = 0.88;   // of the window's font

}  // namespace

QString to_qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string numbered(const char* name, int index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

void ControlTexts::add(QWidget* control, base::Text name, base::Text tip, const char* key) {
    entries_.push_back({control, name, tip, key});
}

void ControlTexts::apply(base::Language language) const {
    const bool chinese = language == base::Language::kChinese;
    for (const Entry& entry : entries_) {
        const QString name = to_qt(entry.name.in(language));
        const std::string_view told = entry.tip.in(language);
        QString tip = told.empty() ? name : to_qt(told);
        if (entry.key != nullptr)
            tip += (chinese ? QStringLiteral("（%1）") : QStringLiteral(" (%1)"))
                       .arg(QLatin1String(entry.key));
        entry.control->setAccessibleName(name);
        entry.control->setToolTip(tip);
    }
}

namespace {

void set_tag(QWidget* control, base::Text text) {
    control->setProperty(kTag, to_qt(text.chinese) + QLatin1Char('/') + to_qt(text.english));
}

}  // namespace

QLabel* make_caption(QWidget* parent, std::string_view name, base::Text text) {
    auto* label = named(new QLabel(to_qt(text.english), parent), name);
    label->setTextFormat(Qt::PlainText);
    set_tag(label, text);
    return label;
}

QLabel* make_heading(QWidget* parent, std::string_view name, base::Text text) {
    QLabel* label = make_caption(parent, name, text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QLabel* make_value(QWidget* parent, std::string_view name) {
    auto* label = named(new QLabel(parent), name);
    label->setTextFormat(Qt::PlainText);
    label->setProperty(kTag, QLatin1String(kOneText));
    return label;
}

QCheckBox* make_check(QWidget* parent, std::string_view name, base::Text text) {
    auto* box = named(new QCheckBox(to_qt(text.english), parent), name);
    set_tag(box, text);
    return box;
}

QPushButton* make_command(QWidget* parent, std::string_view name, base::Text text) {
    auto* button = named(new QPushButton(to_qt(text.english), parent), name);
    button->setAutoDefault(true);
    set_tag(button, text);
    return button;
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

void make_quiet(QWidget* control) {
    QPalette colours = control->palette();
    colours.setColor(QPalette::WindowText, QColor(params::palette::kMutedText));
    control->setPalette(colours);
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

void show_text(QLabel* label, std::string_view text) {
    if (const QString shown = to_qt(text); label->text() != shown) label->setText(shown);
}

void show_text(QLineEdit* box, std::string_view text) {
    const QString shown = to_qt(text);
    if (box->text() == shown) return;
    box->setText(shown);
    if (!box->hasFocus()) box->setCursorPosition(0);
}

void show_check(QAbstractButton* box, bool on) {
    const QSignalBlocker not_the_user(box);
    box->setChecked(on);
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
