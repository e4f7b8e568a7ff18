#include <QApplication>
#include <QTimer>
#include <cstdio>

#include "app/options.h"
#include "app/program.h"
#include "app/style.h"

int main(int argc, char** argv) {
    using namespace servo::app;
    const ParsedOptions parsed = parse_options(argc, argv);
    if (parsed.exit_status) {
        std::fputs(parsed.output.c_str(), stdout);
        std::fputs(parsed.error.c_str(), stderr);
        return *parsed.exit_status;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("servo-workstation"));
    QApplication::setApplicationVersion(QStringLiteral(SERVO_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    apply_style(application);

    Program program(parsed.options);
    int status = 0;
    QObject::connect(
        &program.form(), &MDIForm1::unloaded, &application,
        [&status] { QCoreApplication::exit(status); }, Qt::QueuedConnection);
    if (!program.start()) return 1;
    QTimer::singleShot(0, &program, &Program::connect_link);
    return QApplication::exec();
}
