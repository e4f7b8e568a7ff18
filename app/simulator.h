// The simulated drive as a child of this program: started beside it, ended with it.
#pragma once

#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <string>

namespace servo::app {

class Simulator final : public QObject {
    Q_OBJECT

  public:
    explicit Simulator(QObject* parent = nullptr);
    ~Simulator() override;

    // `program` is drive-sim. One of the two signals follows.
    void start(const QString& program, const QStringList& arguments);

    // A line to its standard input, such as "din 3 1". False when it does not run.
    bool tell(const std::string& line);

  Q_SIGNALS:
    void ready(const QString& line);  // the path of its line
    void failed(const QString& why);

  private:
    void read_line();
    void fail(const QString& why);

    QProcess process_;  // its standard input closes when this program ends, and so does it
    QTimer patience_;
    bool answered_ = false;
};

}  // namespace servo::app
