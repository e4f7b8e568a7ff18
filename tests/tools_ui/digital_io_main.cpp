#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

// The toolkit's style that the program's own is made from.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette colours;
    colours.setColor(QPalette::Window, QColor(0xf2, 0xf4, 0xf6));
    QApplication::setPalette(colours);
    return RUN_ALL_TESTS();
}
