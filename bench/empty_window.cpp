// The least that a Qt program with a main window does until the window is shown. Says so, and ends.
#include <QApplication>
#include <QMainWindow>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1280, 800);
    window.show();
    QTimer::singleShot(0, &application, [] {
        std::puts("shown");
        std::fflush(stdout);
        QCoreApplication::quit();
    });
    return QApplication::exec();
}
