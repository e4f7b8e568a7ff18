#include "cli/sim_process.h"

#include <unistd.h>

#include <QElapsedTimer>

namespace servo::cli {
namespace {

constexpr int kStartMilliseconds = 15'000;  // a loaded machine, not a slow program
constexpr int kEndMilliseconds = 3'000;

}  // namespace

QString SimProcess::start(const QString& program, const QStringList& arguments) {
    // Ctrl-C goes to every process of the terminal's group. The drive has to stay until the command
    // has closed its port, so it gets a group of its own; it still ends when its input closes.
    process_.setChildProcessModifier([] { ::setpgid(0, 0); });
    process_.start(program, arguments);
    if (!process_.waitForStarted(kStartMilliseconds)) {
        error_ = QStringLiteral("can't start %1: %2").arg(program, process_.errorString());
        return {};
    }
    QElapsedTimer elapsed;
    elapsed.start();
    while (!process_.canReadLine()) {
        const int left = kStartMilliseconds - static_cast<int>(elapsed.elapsed());
        if (left > 0 && process_.waitForReadyRead(left)) continue;
        const QString said = QString::fromUtf8(process_.readAllStandardError()).trimmed();
        error_ = QStringLiteral("%1 did not offer a line%2%3")
                     .arg(program, QString::fromLatin1(said.isEmpty() ? "" : ": "), said);
        return {};
    }
    const QString line = QString::fromUtf8(process_.readLine()).trimmed();
    const QString prefix = QStringLiteral("line: ");
    if (line.startsWith(prefix)) return line.mid(prefix.size());
    error_ = QStringLiteral("%1 said '%2'").arg(program, line);
    return {};
}

void SimProcess::stop() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.closeWriteChannel();
    process_.terminate();
    if (process_.waitForFinished(kEndMilliseconds)) return;
    process_.kill();
    process_.waitForFinished(kEndMilliseconds);
}

}  // namespace servo::cli
