// What the link needs of a CAN adapter. The tab of the dialog that leads here is hidden.
#pragma once

#include <array>
#include <cstdint>

namespace servo::link {

struct CanMessage {
    std::uint32_t identifier = 0;
    std::uint8_t type = 0;  // 0: data frame with an 11-bit identifier
    std::uint8_t length = 0;
    std::array<std::uint8_t, 8> data{};
};

enum class CanInit : std::uint8_t {
    kOk,
    ERR_NOVXD,     // no driver
    ERR_ILLHW,     // not a usable device
    ERR_REGTEST,   // no adapter found
    ERR_RESOURCE,  // taken by somebody else
};

class CanAdapter {
  public:
    CanAdapter() = default;
    CanAdapter(const CanAdapter&) = delete;
    CanAdapter& operator=(const CanAdapter&) = delete;
    virtual ~CanAdapter() = default;

    virtual void ResetClient() = 0;
    virtual void ResetFilter() = 0;
    // `bit_rate` in bit/s, `message_type` 0 for 11-bit identifiers.
    virtual CanInit Init(int bit_rate, std::uint8_t message_type) = 0;
    virtual void Close() = 0;

    virtual void CAN_Write(const CanMessage& message) = 0;
    // 0 and a message, or a status that says why there is none.
    virtual std::uint8_t CAN_Read(CanMessage& message) = 0;
};

}  // namespace servo::link
