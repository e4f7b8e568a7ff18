#include <gtest/gtest.h>

#include <QApplication>

#include "app/style.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    servo::app::apply_style();
    return RUN_ALL_TESTS();
}
