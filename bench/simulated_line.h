// The simulated drive in a process of its own behind a paced pseudo-terminal, and time that passes
// while the event loop runs.
#pragma once

#include <QEventLoop>
#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <string>

namespace servo::bench {

class SimulatedLine {
  public:
    explicit SimulatedLine(const QStringList& options = {}) {
        process_.setProgram(SERVO_BIN_DIR "/drive-sim");
        process_.setArguments(options);
        process_.start();
        while (line.empty() && process_.waitForReadyRead(10'000)) {
            const QByteArray said = process_.readLine().trimmed();
            if (said.startsWith("line: ")) line = said.mid(6).toStdString();
        }
    }
    ~SimulatedLine() {
        process_.terminate();
        process_.waitForFinished();
    }
    SimulatedLine(const SimulatedLine&) = delete;
    SimulatedLine& operator=(const SimulatedLine&) = delete;

    std::string line;  // its path; empty when the drive did not start

  private:
    QProcess process_;
};

inline void let_pass(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace servo::bench
