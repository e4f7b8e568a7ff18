#include "app/style.h"

#include <QApplication>
#include <QPalette>

#include "app/frame_style.h"
#include "app/palette.h"
#include "app/svg_icon.h"

// The pictures are in a static library, whose resources wait to be asked for. (The macro wants a
// function outside of any namespace.)
static void load_pictures() {
    Q_INIT_RESOURCE(icons);
}

namespace servo::app {

void apply_style() {
    load_pictures();
    QApplication::setStyle(new FrameStyle);
    QPalette colours;
    colours.setColor(QPalette::Window, palette::kWindow);
    colours.setColor(QPalette::WindowText, palette::kText);
    colours.setColor(QPalette::Base, palette::kBase);
    colours.setColor(QPalette::AlternateBase, palette::kAlternateBase);
    colours.setColor(QPalette::Text, palette::kText);
    colours.setColor(QPalette::Button, palette::kButton);
    colours.setColor(QPalette::ButtonText, palette::kText);
    colours.setColor(QPalette::ToolTipBase, palette::kBase);
    colours.setColor(QPalette::ToolTipText, palette::kText);
    colours.setColor(QPalette::PlaceholderText, palette::kQuietText);
    colours.setColor(QPalette::Highlight, palette::kHighlight);
    colours.setColor(QPalette::HighlightedText, palette::kHighlightedText);
    colours.setColor(QPalette::Link, palette::kHighlight);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, palette::kDisabledText);
    QApplication::setPalette(colours);
}

namespace {

QString file_of(const QString& name) {
    return QStringLiteral(":/app/icons/%1.svg").arg(name);
}

}  // namespace

QIcon picture(const QString& name) {
    return QIcon(new SvgIcon(file_of(name), DisabledLook::kGrey));
}

QIcon state_picture(const QString& name) {
    return QIcon(new SvgIcon(file_of(name), DisabledLook::kSame));
}

QStringList font_families(base::Language language) {
    QStringList families{to_qt(base::font_name(language))};
    if (language == base::Language::kChinese)
        families << QStringLiteral("WenQuanYi Micro Hei") << QStringLiteral("Noto Sans CJK SC");
    else
        families << QStringLiteral("DejaVu Sans") << QStringLiteral("Noto Sans");
    return families;
}

std::string from_qt(const QString& text) {
    return text.toStdString();
}

}  // namespace servo::app
