#include "link/qt_serial_port.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <QFileInfo>
#include <QSerialPortInfo>
#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace servo::link {

namespace {

// Bytes that the system holds for a tty, one way; 0 when the device is gone.
std::size_t held(const QSerialPort& port, unsigned long request) {
    int count = 0;
    if (!port.isOpen() || ::ioctl(port.handle(), request, &count) != 0 || count < 0) return 0;
    return static_cast<std::size_t>(count);
}

// The port object would have the event loop wake for every few bytes that come in, and twice more
// for every frame that leaves. The engine looks for itself, tick by tick: on a line that is always
// busy, those wake-ups cost more than all else that polling does.
void end_wake_ups(const QSerialPort& port) {
    for (QSocketNotifier* notifier : port.findChildren<QSocketNotifier*>())
        notifier->setEnabled(false);
}

// A named link such as /dev/serial/by-id/... counts as the device that it stands for.
std::string canonical(const std::string& device) {
    const QString path = QFileInfo(QString::fromStdString(device)).canonicalFilePath();
    return path.isEmpty() ? device : path.toStdString();
}

}  // namespace

OpenResult QtSerialPort::open(std::string_view port_text, int baud) {
    close();
    const auto device = names_.device_of(port_text);
    if (!device) return OpenResult::kFailed;
    const QString path = QString::fromStdString(canonical(*device));
    port_.setPortName(path);
    port_.setBaudRate(baud);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    if (port_.open(QIODevice::ReadWrite)) {
        end_wake_ups(port_);
        return OpenResult::kOpened;
    }
    // A lock file of somebody else counts as a missing right here; whoever may open the file itself
    // was kept out by the lock.
    const bool exists = QFileInfo(path).isReadable();
    const bool refused = port_.error() == QSerialPort::PermissionError;
    port_.clearError();
    return refused && exists ? OpenResult::kBusy : OpenResult::kFailed;
}

void QtSerialPort::close() {
    if (port_.isOpen()) port_.close();
}

// An unplugged adapter, or a pseudo-terminal whose other end is closed, answers no request.
bool QtSerialPort::gone() {
    int count = 0;
    return !port_.isOpen() || ::ioctl(port_.handle(), FIONREAD, &count) != 0;
}

std::size_t QtSerialPort::in_buffer_count() {
    if (!port_.isOpen()) return 0;
    return own_count() + held(port_, FIONREAD);
}

std::size_t QtSerialPort::out_buffer_count() {
    if (!port_.isOpen()) return 0;
    return static_cast<std::size_t>(port_.bytesToWrite()) + held(port_, TIOCOUTQ);
}

// Bytes that the port object has taken on its own: none, unless it woke in spite of all.
std::size_t QtSerialPort::own_count() const {
    return static_cast<std::size_t>(std::max<qint64>(port_.bytesAvailable(), 0));
}

std::size_t QtSerialPort::read(std::span<std::uint8_t> into) {
    if (!port_.isOpen()) return 0;
    std::size_t taken = 0;
    if (const std::size_t own = std::min(own_count(), into.size()); own > 0) {
        const qint64 count =
            port_.read(reinterpret_cast<char*>(into.data()), static_cast<qint64>(own));
        taken = static_cast<std::size_t>(std::max<qint64>(count, 0));
    }
    const auto rest = into.subspan(taken);
    const ssize_t count = rest.empty() ? 0 : ::read(port_.handle(), rest.data(), rest.size());
    return taken + static_cast<std::size_t>(std::max<ssize_t>(count, 0));
}

void QtSerialPort::write(std::span<const std::uint8_t> bytes) {
    if (!port_.isOpen()) return;
    if (port_.bytesToWrite() == 0) {
        const ssize_t count = ::write(port_.handle(), bytes.data(), bytes.size());
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    if (bytes.empty()) return;
    // The system takes no more for now. What is left goes out by the event loop.
    port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    port_.flush();
}

void QtSerialPort::clear_in() {
    if (port_.isOpen()) port_.clear(QSerialPort::Input);
}

void QtSerialPort::clear_out() {
    if (port_.isOpen()) port_.clear(QSerialPort::Output);
}

bool QtPortDirectory::list(std::vector<Entry>& into) {
    into.clear();
    const auto add = [&](const std::string& device, const QString& description) {
        const bool listed = std::any_of(into.begin(), into.end(), [&](const Entry& entry) {
            return canonical(entry.device) == canonical(device);
        });
        if (listed) return;
        names_.found(device);
        into.push_back({names_.text_of(device), device, description.toStdString()});
    };
    for (const std::string& device : names_.given())
        add(device, {});
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts())
        add(port.systemLocation().toStdString(), port.description());
    std::stable_sort(into.begin(), into.end(), [](const Entry& a, const Entry& b) {
        return port_number(a.text) < port_number(b.text);
    });
    return true;
}

QtTimer::QtTimer(std::function<void()> tick) : tick_(std::move(tick)) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(3);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
        if (tick_) tick_();
    });
}

void QtTimer::set_enabled(bool enabled) {
    if (enabled) {
        timer_.start();
    } else {
        timer_.stop();
    }
}

}  // namespace servo::link
