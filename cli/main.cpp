// servoctl: one drive from a script.
#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/qt_environment.h"
#include "cli/run.h"

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

void on_signal(int) {
    g_interrupted = 1;
}

// Ctrl-C ends the wait that is under way; the command then closes its port and ends by itself.
void watch_signals() {
    struct sigaction action {};
    action.sa_handler = on_signal;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

void put(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace servo::cli;
    const Output output{[](std::string_view text) { put(stdout, text); },
                        [](std::string_view text) { put(stderr, text); }};
    ParsedLine line = parse_command_line({argv + 1, argv + argc});
    if (!line.options) {
        output.out(line.end.out);
        output.err(line.end.err);
        return static_cast<int>(line.end.status);
    }
    if (line.options->command == CommandName::kFormula) {
        std::ios::sync_with_stdio(false);  // else nobody knows whether a request waits
        return static_cast<int>(run_formula(*line.options, std::cin, output));
    }
    watch_signals();
    const QCoreApplication application(argc, argv);
    const std::filesystem::path folder = QCoreApplication::applicationDirPath().toStdString();
    if (line.options->data.empty()) line.options->data = folder;
    QtEnvironment environment(folder, [] { return g_interrupted != 0; });
    return static_cast<int>(run_command(*line.options, environment, output));
}
