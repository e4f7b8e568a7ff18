#include "app/simulator.h"

namespace servo::app {

namespace {

constexpr int kStartMilliseconds = 10'000;
constexpr int kEndMilliseconds = 1'000;

}  // namespace

Simulator::Simulator(QObject* parent) : QObject(parent) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    patience_.setSingleShot(true);
    patience_.setInterval(kStartMilliseconds);
    connect(&process_, &QProcess::readyReadStandardOutput, this, &Simulator::read_line);
    connect(&process_, &QProcess::errorOccurred, this, [this] { fail(process_.errorString()); });
    connect(&process_, &QProcess::finished, this,
            [this] { fail(QStringLiteral("it ended at once")); });
    connect(&patience_, &QTimer::timeout, this,
            [this] { fail(QStringLiteral("it named no line")); });
}

Simulator::~Simulator() {
    process_.disconnect(this);
    if (process_.state() == QProcess::NotRunning) return;
    process_.terminate();
    if (!process_.waitForFinished(kEndMilliseconds)) {
        process_.kill();
        process_.waitForFinished(kEndMilliseconds);
    }
}

void Simulator::start(const QString& program, const QStringList& arguments) {
    patience_.start();
    process_.start(program, arguments);
}

bool Simulator::tell(const std::string& line) {
    if (process_.state() != QProcess::Running) return false;
    process_.write((line + '\n').c_str());
    return true;
}

void Simulator::read_line() {
    const QByteArray marker("line: ");
    while (process_.canReadLine()) {
        const QByteArray line = process_.readLine().trimmed();
        if (answered_ || !line.startsWith(marker)) continue;
        answered_ = true;
        patience_.stop();
        Q_EMIT ready(QString::fromLocal8Bit(line.mid(marker.size())));
    }
}

void Simulator::fail(const QString& why) {
    patience_.stop();
    if (answered_) return;
    answered_ = true;
    Q_EMIT failed(why);
}

}  // namespace servo::app
