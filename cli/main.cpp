// servoctl: one drive from a script.
#include <fcntl.h>
#include <unistd.h>

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

bool put(std::FILE* stream, std::string_view text) {
    const bool whole = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    return std::fflush(stream) == 0 && whole;
}

// What the caller has closed must not become the number of the drive's line: results and messages
// would go to the drive. Reading and writing there fail as they would have.
void occupy_closed_streams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) != -1) continue;
        if (open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream) return;
    }
}

using servo::cli::ExitStatus;
using servo::cli::Output;

// Results that did not arrive, on a full disk for one, are no success.
int end(ExitStatus status, bool results_lost, const Output& output) {
    if (!results_lost) return static_cast<int>(status);
    output.message("servoctl: standard output can't be written");
    return static_cast<int>(ExitStatus::kFile);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace servo::cli;
    occupy_closed_streams();
    bool results_lost = false;
    const Output output{
        [&results_lost](std::string_view text) { results_lost |= !put(stdout, text); },
        [](std::string_view text) { put(stderr, text); }};
    ParsedLine line = parse_command_line({argv + 1, argv + argc});
    if (!line.options) {
        output.out(line.end.out);
        output.err(line.end.err);
        return end(line.end.status, results_lost, output);
    }
    if (line.options->command == CommandName::kFormula) {
        std::ios::sync_with_stdio(false);  // else nobody knows whether a request waits
        const ExitStatus status = run_formula(*line.options, std::cin, output);
        return end(status, results_lost, output);
    }
    watch_signals();
    const QCoreApplication application(argc, argv);
    const std::filesystem::path folder = QCoreApplication::applicationDirPath().toStdString();
    if (line.options->data.empty()) line.options->data = folder;
    // A watch that nobody sees has no other end.
    const bool watches = line.options->command == CommandName::kWatch;
    QtEnvironment environment(folder,
                              [&] { return g_interrupted != 0 || (watches && results_lost); });
    const ExitStatus status = run_command(*line.options, environment, output);
    return end(status, results_lost, output);
}
