#include "app/coming_window.h"

#include <QGridLayout>
#include <QLabel>

#include "app/palette.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kPictureSize = 48;
constexpr int kSmallestTextWidth = 320;  // keeps the frame's title readable beside its buttons
constexpr base::Text kNotYet{"此版本尚不包含该窗口。",
                             "This window is not part of this version yet."};

struct WindowPicture {
    std::string_view window;
    std::string_view picture;
};

// Windows that have a button in the toolbar are known by its picture.
constexpr WindowPicture kPictures[] = {
    {"DigitalIO", "IOpic"}, {"Errors", "errorgray"}, {"imexport", "exportpic"}};

QIcon picture_of(std::string_view window) {
    for (const WindowPicture& entry : kPictures)
        if (entry.window == window) return picture(to_qt(entry.picture));
    return picture(QStringLiteral("program"));
}

}  // namespace

ComingWindow::ComingWindow(const WindowDefinition& window) {
    setObjectName(to_qt(window.name));
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(
        picture_of(window.name).pixmap(QSize(kPictureSize, kPictureSize), devicePixelRatioF()));
    auto* notice = add_line("LabelA", kNotYet);
    QFont strong = notice->font();
    strong.setBold(true);
    notice->setFont(strong);
    auto* purpose = add_line("LabelB", window.purpose);
    QPalette colours = purpose->palette();
    colours.setColor(QPalette::WindowText, QColor(palette::kQuietText));
    purpose->setPalette(colours);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(24, 24, 24, 24);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(8);
    grid->addWidget(image, 0, 0, 2, 1, Qt::AlignCenter);
    grid->addWidget(notice, 0, 1, Qt::AlignBottom);
    grid->addWidget(purpose, 1, 1, Qt::AlignTop);
    grid->setColumnMinimumWidth(1, kSmallestTextWidth);
    grid->setColumnStretch(1, 1);
}

// The pair stands in the tag, so that the line follows the language like any label.
QLabel* ComingWindow::add_line(const char* name, base::Text text) {
    auto* label = new QLabel(to_qt(text.english), this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setProperty("Tag", to_qt(text.chinese) + QLatin1Char('/') + to_qt(text.english));
    return label;
}

}  // namespace servo::app
