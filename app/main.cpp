#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "app/options.h"
#include "app/program.h"
#include "app/style.h"
#include "app/walk_player.h"

namespace {

using namespace servo::app;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

QtMessageHandler toolkits_own = nullptr;

// A platform without a display says of each thing that it leaves out that it does so. Whoever plays
// a walkthrough there reads the output, and has no use for these lines.
void pass_messages_on(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith(QLatin1String("This plugin does not support"))) return;
    if (text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) return;
    toolkits_own(type, context, text);
}

// Null when no walkthrough was asked for; false when it can't be read.
bool make_player(const Options& options, Program& program, std::unique_ptr<WalkPlayer>& player) {
    if (options.walk.empty()) return true;
    auto commands = load_walk(options.walk);
    if (!commands) {
        std::fprintf(stderr, "servo-workstation: %s can't be read\n", options.walk.c_str());
        return false;
    }
    player = std::make_unique<WalkPlayer>(program.form(), options.walk, std::move(*commands),
                                          &WalkPlayer::print_line);
    player->use_simulator([&program](const std::string& line) { return program.tell_drive(line); });
    QObject::connect(player.get(), &WalkPlayer::finished, &program.form(),
                     [&program] { program.form().quit_program(); });
    QObject::connect(&program, &Program::settled, player.get(), &WalkPlayer::start);
    return true;
}

int run(QApplication& application, const Options& options) {
    Program program(options);
    if (!program.check_windows()) return kWrongUse;
    std::unique_ptr<WalkPlayer> player;
    if (!make_player(options, program, player)) return kFailed;
    // Queued: the loop may not run yet, and whoever quits is still on the stack.
    QObject::connect(
        &program.form(), &MDIForm1::unloaded, &application,
        [&player] { QCoreApplication::exit(player ? player->exit_status() : 0); },
        Qt::QueuedConnection);
    if (!program.start()) return kFailed;
    // In the first pass of the loop, when the window has been drawn.
    QTimer::singleShot(0, &program, [&program, &options] {
        if (options.ready) WalkPlayer::print_line("ready");
        program.connect_link();
    });
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const ParsedOptions parsed = parse_options(argc, argv);
    if (parsed.exit_status) {
        std::fputs(parsed.output.c_str(), stdout);
        std::fputs(parsed.error.c_str(), stderr);
        return *parsed.exit_status;
    }
    toolkits_own = qInstallMessageHandler(pass_messages_on);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("servo-workstation"));
    QApplication::setApplicationVersion(QStringLiteral(SERVO_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    apply_style();
    return run(application, parsed.options);
}
