#include "link/qt_can_adapter.h"

#include <QCanBus>
#include <QCanBusDevice>
#include <QCanBusFrame>
#include <QVariant>
#include <algorithm>
#include <utility>

namespace servo::link {

namespace {
constexpr std::uint8_t kReceiveQueueEmpty = 0x20;
}

QtCanAdapter::QtCanAdapter(QString plugin, QString interface_name)
    : plugin_(std::move(plugin)), interface_(std::move(interface_name)) {}

QtCanAdapter::~QtCanAdapter() {
    Close();
}

void QtCanAdapter::ResetClient() {
    if (device_) device_->clear();
}

void QtCanAdapter::ResetFilter() {
    if (device_) device_->setConfigurationParameter(QCanBusDevice::RawFilterKey, QVariant());
}

CanInit QtCanAdapter::Init(int bit_rate, std::uint8_t /*message_type*/) {
    Close();
    if (!QCanBus::instance()->plugins().contains(plugin_)) return CanInit::ERR_NOVXD;
    device_.reset(QCanBus::instance()->createDevice(plugin_, interface_));
    if (!device_) return CanInit::ERR_REGTEST;
    device_->setConfigurationParameter(QCanBusDevice::BitRateKey, bit_rate);
    if (device_->connectDevice()) return CanInit::kOk;
    const bool missing = device_->error() == QCanBusDevice::ConnectionError;
    device_.reset();
    return missing ? CanInit::ERR_RESOURCE : CanInit::ERR_ILLHW;
}

void QtCanAdapter::Close() {
    if (device_) device_->disconnectDevice();
    device_.reset();
}

void QtCanAdapter::CAN_Write(const CanMessage& message) {
    if (!device_) return;
    const auto* data = reinterpret_cast<const char*>(message.data.data());
    device_->writeFrame(QCanBusFrame(message.identifier, QByteArray(data, message.length)));
}

std::uint8_t QtCanAdapter::CAN_Read(CanMessage& message) {
    if (!device_) return kReceiveQueueEmpty;
    if (device_->framesAvailable() == 0) device_->waitForFramesReceived(0);
    if (device_->framesAvailable() == 0) return kReceiveQueueEmpty;
    const QCanBusFrame frame = device_->readFrame();
    const QByteArray payload = frame.payload();
    message = {};
    message.identifier = frame.frameId();
    message.length = static_cast<std::uint8_t>(std::min<qsizetype>(payload.size(), 8));
    std::copy_n(payload.begin(), message.length, message.data.begin());
    return 0;
}

}  // namespace servo::link
