#include "tools/configuration_controls_view.h"

#include <QPainter>
#include <QStyleOption>

#include "params/ui_palette.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

PathLabel::PathLabel(const char* name, QWidget* parent) : QLabel(parent) {
    setObjectName(QLatin1String(name));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    form::set_pair(this, "-");
}

void PathLabel::show_text(std::string_view text) {
    const QString shown = form::qt(text);
    if (this->text() == shown) return;
    setText(shown);
    setToolTip(form::plain_tip(text));
}

QSize PathLabel::sizeHint() const {
    return {200, minimumSizeHint().height()};
}

QSize PathLabel::minimumSizeHint() const {
    return {60, fontMetrics().height() + 2};  // with a text or without
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), cut_, width()));
}

QPushButton* configuration_command(QWidget* parent, const char* name, std::string_view pair,
                                   std::string_view tip) {
    auto* button = new QPushButton(parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true);
    form::set_pair(button, pair);
    if (!tip.empty()) form::set_tip_pair(button, tip);
    return button;
}

QLabel* configuration_label(QWidget* parent, const char* name) {
    auto* label = new PathLabel(name, parent);
    label->cut_at(Qt::ElideRight);
    label->setMinimumWidth(1);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

QProgressBar* configuration_bar(QWidget* parent, const char* name) {
    auto* bar = new QProgressBar(parent);
    bar->setObjectName(QLatin1String(name));
    bar->setRange(0, 100);
    bar->setFixedWidth(220);
    return bar;
}

void show_designed_caption(QPushButton* button, std::string_view pair, base::Language language) {
    const QString designed = form::qt(pair);
    const QString now = button->text();
    if (now.isEmpty() || now == form::half_of(designed, base::Language::kChinese) ||
        now == form::half_of(designed, base::Language::kEnglish))
        button->setText(form::half_of(designed, language));
}

void show_note(QLabel* label, const ConfigurationNote& note) {
    const QString text = form::qt(note.text);
    if (label->text() != text) {
        label->setText(text);
        label->setToolTip(form::plain_tip(note.text));
    }
    const QColor wanted(note.warns ? params::palette::kWarningText : params::palette::kMutedText);
    QPalette colours = label->palette();
    if (colours.color(QPalette::WindowText) == wanted) return;
    colours.setColor(QPalette::WindowText, wanted);
    label->setPalette(colours);
}

void add_divider(QVBoxLayout* layout, QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette colours = line->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kFrame));
    line->setPalette(colours);
    layout->addSpacing(4);
    layout->addWidget(line);
    layout->addSpacing(4);
}

}  // namespace servo::tools
