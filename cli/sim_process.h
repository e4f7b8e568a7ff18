// A simulated drive as a child process, for commands that are to work without hardware.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace servo::cli {

class SimProcess {
  public:
    SimProcess() = default;
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;
    ~SimProcess() { stop(); }

    // Starts the program and waits for its line. The path of the line, or an empty text when it did
    // not come; error() then says why.
    QString start(const QString& program, const QStringList& arguments);
    void stop();

    const QString& error() const { return error_; }

  private:
    QProcess process_;
    QString error_;
};

}  // namespace servo::cli
