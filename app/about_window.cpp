#include "app/about_window.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "app/menu_table.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kPictureSize = 64;

QLabel* line(const char* name, const QString& tag, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setProperty("Tag", tag);
    return label;
}

}  // namespace

AboutWindow::AboutWindow(dictionary::Variant variant) {
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(picture(QStringLiteral("program"))
                         .pixmap(QSize(kPictureSize, kPictureSize), devicePixelRatioF()));
    auto* title = new QLabel(to_qt(main_title(variant)), this);
    title->setObjectName(QStringLiteral("LabelA"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    title->setFont(large);
    auto* version =
        line("LabelB", QStringLiteral("版本 " SERVO_VERSION "/Version " SERVO_VERSION), this);
    auto* purpose = line("LabelC",
                         QStringLiteral("伺服驱动器的调试与诊断/Commissioning and diagnostics of "
                                        "one servo drive"),
                         this);
    auto* ok = new QPushButton(this);
    ok->setObjectName(QStringLiteral("Command1"));  // closes
    ok->setProperty("Tag", QStringLiteral("确定/OK"));
    ok->setAutoDefault(true);
    connect(ok, &QPushButton::clicked, this, &AboutWindow::close_asked);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(24, 20, 24, 16);
    grid->setHorizontalSpacing(20);
    grid->addWidget(image, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(title, 0, 1);
    grid->addWidget(version, 1, 1);
    grid->addWidget(purpose, 2, 1);
    grid->setRowMinimumHeight(3, 12);
    grid->addWidget(ok, 4, 1, Qt::AlignRight);
    grid->setRowStretch(3, 1);
}

}  // namespace servo::app
