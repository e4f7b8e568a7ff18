#include "scope/number_label_widget.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "base/number.h"

namespace servo::scope {

NumberLabel::NumberLabel(const char* widest, QWidget* parent)
    : QLabel(parent), widest_(QLatin1String(widest)) {
    setTextFormat(Qt::PlainText);
    setProperty("Tag", QStringLiteral("-"));  // a unit such as "rps/s" is no pair of languages
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

QSize NumberLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(widest_) + 2, fontMetrics().height()};
}

QSize NumberLabel::minimumSizeHint() const {
    return sizeHint();
}

QString NumberLabel::fitting(const QString& text, const QFontMetrics& metrics, int width) {
    if (metrics.horizontalAdvance(text) <= width) return text;
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    const bool plain = point >= 0 && !text.contains(QLatin1Char('E'));
    if (plain) {
        const double value = base::leading_number(text.toStdString());
        for (int decimals = static_cast<int>(text.size() - point) - 2; decimals >= 0; --decimals) {
            QString shorter = QString::fromStdString(base::format_up_to(value, decimals));
            if (metrics.horizontalAdvance(shorter) <= width) return shorter;
        }
    }
    return metrics.elidedText(text, Qt::ElideRight, width);
}

// All of the number where the label shows less of it.
bool NumberLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && !text().isEmpty() &&
        fontMetrics().horizontalAdvance(text()) > contentsRect().width()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void NumberLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect room = contentsRect();
    style()->drawItemText(
        &painter, room, static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
        palette(), isEnabled(), fitting(text(), fontMetrics(), room.width()), foregroundRole());
}

}  // namespace servo::scope
