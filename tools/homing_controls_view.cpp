#include "tools/homing_controls_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include "params/ui_palette.h"

namespace servo::tools::homing {

namespace {

constexpr const char* kTag = "Tag";
constexpr char32_t kEnter = 13;
constexpr char32_t kDelete = 127;
constexpr int kSmallestColumn = 300;  // pixels

// The English half; the walk through the window's texts puts the right one.
template <typename Control>
Control* tagged(Control* control, const QString& name, std::string_view pair) {
    control->setObjectName(name);
    control->setProperty(kTag, pair.empty() ? QStringLiteral("-") : qt(pair));
    return control;
}

QString english(std::string_view pair) {
    return qt(pair.substr(pair.find('/') + 1));
}

}  // namespace

QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void HomingTips::apply(base::Language language) const {
    for (const Entry& entry : entries_) {
        const QString tip = qt(entry.tip.in(language));
        entry.control->setToolTip(tip);
        entry.control->setAccessibleName(tip);
    }
}

QLabel* make_caption(QWidget* parent, const char* name, std::string_view pair) {
    auto* label = tagged(new QLabel(english(pair), parent), QLatin1String(name), pair);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* make_heading(QWidget* parent, const char* name, std::string_view pair) {
    QLabel* label = make_caption(parent, name, pair);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QLabel* make_value(QWidget* parent, const char* name, std::string_view text) {
    auto* label = tagged(new QLabel(qt(text), parent), QLatin1String(name), {});
    label->setTextFormat(Qt::PlainText);
    return label;
}

QRadioButton* make_option(QWidget* parent, const QString& name, std::string_view pair) {
    return tagged(new QRadioButton(english(pair), parent), name, pair);
}

QCheckBox* make_check(QWidget* parent, const char* name, std::string_view pair) {
    return tagged(new QCheckBox(english(pair), parent), QLatin1String(name), pair);
}

QPushButton* make_command(QWidget* parent, const char* name, std::string_view pair) {
    auto* button = tagged(new QPushButton(english(pair), parent), QLatin1String(name), pair);
    button->setAutoDefault(true);
    return button;
}

QGroupBox* make_frame(QWidget* parent, const char* name, std::string_view pair) {
    return tagged(new QGroupBox(english(pair), parent), QLatin1String(name), pair);
}

void make_quiet(QLabel* label) {
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, QColor(params::palette::kMutedText));
    label->setPalette(colours);
}

void show_text(QLabel* label, std::string_view text) {
    if (const QString shown = qt(text); label->text() != shown) label->setText(shown);
}

void show_text(QLineEdit* box, std::string_view text) {
    if (const QString shown = qt(text); box->text() != shown) box->setText(shown);
}

// --- HomingFrame

HomingFrame::HomingFrame(const char* name, QWidget* parent) : QGroupBox(parent) {
    tagged(this, QLatin1String(name), {});
    setContentsMargins(0, 0, 0, 0);
}

// Both would make room for a line and a title.
void HomingFrame::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);  // NOLINT(bugprone-parent-virtual-call): not the frame's own
}

void HomingFrame::changeEvent(QEvent* event) {
    QGroupBox::changeEvent(event);
    setContentsMargins(0, 0, 0, 0);
}

// --- HomingBox

HomingBox::HomingBox(const char* name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(QLatin1String(name));
    // Only keys come in, one by one.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAcceptDrops(false);
    // One that takes no entry does not look as if it did, but what it says counts all the same.
    QPalette colours = palette();
    colours.setColor(QPalette::Disabled, QPalette::Base,
                     colours.color(QPalette::Active, QPalette::Window));
    colours.setColor(QPalette::Disabled, QPalette::Text,
                     colours.color(QPalette::Active, QPalette::Text));
    setPalette(colours);
}

void HomingBox::keyPressEvent(QKeyEvent* event) {
    // Neither changes the text.
    if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::SelectAll)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto characters = event->text().toUcs4();
    const char32_t key = enter                  ? kEnter
                         : characters.isEmpty() ? U'\0'
                                                : static_cast<char32_t>(characters.front());
    if (key != U'\0' && key != kDelete && pressed && pressed(key)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void HomingBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    came_by_mouse_ = event->reason() == Qt::MouseFocusReason;
    selectAll();
    if (focus_changed) focus_changed(true);
}

void HomingBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason) return;  // its own menu
    if (focus_changed) focus_changed(false);
}

// The press that brought the focus has put the cursor somewhere.
void HomingBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (came_by_mouse_ && !hasSelectedText()) selectAll();
    came_by_mouse_ = false;
}

// --- HomingListBox

HomingListBox::HomingListBox(const char* name, QWidget* parent) : QComboBox(parent) {
    setObjectName(QLatin1String(name));
}

void HomingListBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

// --- HomingColumn

HomingColumn::HomingColumn(QWidget* column, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
    setWidget(column);
    column->installEventFilter(this);
}

QSize HomingColumn::sizeHint() const {
    return {minimumSizeHint().width(), widget()->sizeHint().height()};
}

// The bar stands beside the controls, not over them.
QSize HomingColumn::minimumSizeHint() const {
    const bool bar = height() < widget()->minimumSizeHint().height();
    return {
        widget()->minimumSizeHint().width() + (bar ? verticalScrollBar()->sizeHint().width() : 0),
        kSmallestColumn};
}

// Another language makes other widths.
bool HomingColumn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

}  // namespace servo::tools::homing
