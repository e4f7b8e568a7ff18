// A CAN adapter through Qt's bus plugins. No window leads here while the dialog's CAN tab is
// hidden.
#pragma once

#include <QString>
#include <memory>

#include "link/can_adapter.h"

class QCanBusDevice;

namespace servo::link {

class QtCanAdapter final : public CanAdapter {
  public:
    // Name of a plugin ("socketcan", "peakcan") and of one of its interfaces ("can0").
    QtCanAdapter(QString plugin, QString interface_name);
    ~QtCanAdapter() override;

    void ResetClient() override;
    void ResetFilter() override;
    CanInit Init(int bit_rate, std::uint8_t message_type) override;
    void Close() override;
    void CAN_Write(const CanMessage& message) override;
    std::uint8_t CAN_Read(CanMessage& message) override;

  private:
    QString plugin_;
    QString interface_;
    std::unique_ptr<QCanBusDevice> device_;
};

}  // namespace servo::link
