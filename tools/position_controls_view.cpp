#include "tools/position_controls_view.h"

namespace servo::tools {

namespace {

constexpr const char* kTag = "Tag";

QString english_half(std::string_view pair) {
    return qt_of(pair.substr(pair.find('/') + 1));
}

}  // namespace

QString qt_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string utf8_of(const QString& text) {
    return text.toStdString();
}

QLabel* make_position_label(QWidget* parent, const char* name, std::string_view pair) {
    auto* label = new QLabel(english_half(pair), parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setProperty(kTag, qt_of(pair));
    return label;
}

QLabel* make_position_value(QWidget* parent, const char* name) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setProperty(kTag, QStringLiteral("-"));
    return label;
}

QPushButton* make_position_command(QWidget* parent, const char* name, std::string_view pair) {
    auto* button = new QPushButton(english_half(pair), parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true);
    button->setProperty(kTag, qt_of(pair));
    return button;
}

void show_position_text(QLabel* label, std::string_view text) {
    if (const QString shown = qt_of(text); label->text() != shown) label->setText(shown);
}

}  // namespace servo::tools
