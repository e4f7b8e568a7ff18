#include "firmware/download_controls_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::firmware {

namespace {

constexpr int kSmallestValue = 60;  // pixels of a label that gives way
constexpr int kRadius = 4;
constexpr int kEdge = 4;  // bar at the left of a notice
constexpr char32_t kEnter = 13;

using params::controls::kNoPair;
using params::controls::kTag;

namespace palette = params::palette;
constexpr QRgb kWarning = 0xfffbeeeb;
constexpr QRgb kWarningFrame = 0xffe3b8b0;

std::string_view form_text(const char* name) {
    for (const ControlText& entry : control_texts())
        if (entry.control == name) return entry.text;
    return {};
}

// The English half, or the only one.
QString first_shown(std::string_view pair) {
    return to_qt(pair.substr(pair.find('/') + 1));
}

}  // namespace

void show_caption(QWidget* label, bool pair, std::string_view text) {
    label->setProperty(kTag, pair ? to_qt(text) : QLatin1String(kNoPair));
}

QLabel* make_label(QWidget* parent, const char* name) {
    const std::string_view text = form_text(name);
    auto* label = named(new QLabel(first_shown(text), parent), name);
    label->setTextFormat(Qt::PlainText);
    show_caption(label, text.find('/') != std::string_view::npos, text);
    return label;
}

QPushButton* make_command(QWidget* parent, const char* name) {
    const std::string_view text = form_text(name);
    auto* button = named(new QPushButton(first_shown(text), parent), name);
    button->setAutoDefault(true);
    button->setProperty(kTag, to_qt(text));
    return button;
}

ElidedLabel* make_value(QWidget* parent, const char* name) {
    auto* label = named(new ElidedLabel(first_shown(form_text(name)), parent), name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    show_caption(label, false, {});
    return label;
}

// --- ElidedLabel

QSize ElidedLabel::minimumSizeHint() const {
    return {kSmallestValue, QLabel::minimumSizeHint().height()};
}

// Long paths must not widen the window.
QSize ElidedLabel::sizeHint() const {
    const QSize whole = QLabel::sizeHint();
    return {std::min(whole.width(), 4 * kSmallestValue), whole.height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    const QRect room = contentsRect();
    QString shown;
    for (const QString& line : text().split(QLatin1Char('\n'))) {
        if (!shown.isEmpty()) shown += QLatin1Char('\n');
        shown += fontMetrics().elidedText(line, Qt::ElideMiddle, room.width());
    }
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    setToolTip(QLabel::sizeHint().width() > width() ? text() : QString());
}

// --- KeyBox

void KeyBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto characters = event->text().toUcs4();
    if (pressed && (enter || !characters.isEmpty()) &&
        pressed(enter ? kEnter : static_cast<char32_t>(characters.front()))) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

// --- NoticeFrame

NoticeFrame::NoticeFrame(Kind kind, const char* label_name, QWidget* parent)
    : QFrame(parent), kind_(kind), label_(make_label(this, label_name)) {
    row_ = new QHBoxLayout(this);
    row_->setContentsMargins(2 * kGap, kGap, 2 * kGap, kGap);
    row_->setSpacing(2 * kGap);
    label_->setWordWrap(true);
    row_->addWidget(label_, 1);
    QPalette colours = label_->palette();
    if (kind == Kind::kWarning)
        colours.setColor(QPalette::WindowText, QColor(palette::kWarningText));
    label_->setPalette(colours);
}

void NoticeFrame::show_text(std::string_view text) {
    params::controls::show_text(label_, text);
    setVisible(!text.empty());
}

void NoticeFrame::paintEvent(QPaintEvent*) {
    const bool warning = kind_ == Kind::kWarning;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(warning ? kWarningFrame : palette::kNoticeFrame));
    painter.setBrush(QColor(warning ? kWarning : palette::kNotice));
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(frame, kRadius, kRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(warning ? palette::kWarningText : palette::kAccent));
    painter.drawRoundedRect(QRectF(0, 0, kEdge, height()), kEdge / 2.0, kEdge / 2.0);
}

}  // namespace servo::firmware
