// The two ways a payload travels: the serial line, and a CAN adapter. One call sends one payload,
// one call takes at most one frame. Nothing here blocks for longer than one pause of 2 ms.
#pragma once

#include <cstdint>

#include "base/clock.h"
#include "link/can_adapter.h"
#include "link/frame.h"
#include "link/port.h"

namespace servo::link {

// Results of get_frame. A CAN channel passes its adapter's status on, 0 likewise meaning a frame.
inline constexpr std::uint8_t kFrameAccepted = 0;
inline constexpr std::uint8_t kFrameNotYet = 0x21;       // fewer than ten bytes are waiting
inline constexpr std::uint8_t kFrameBadChecksum = 0x16;  // the next bytes stay in the queue
inline constexpr std::uint8_t kFrameForeign = 0x37;  // other communication ID; the queue is purged

class Channel {
  public:
    Channel() = default;
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;
    virtual ~Channel() = default;

    // Whether a payload handed over now would leave. When not, it is dropped without a word.
    virtual bool is_open() const = 0;
    virtual void Datawrite(const Payload& payload) = 0;

    // Takes at most one frame. The payload of whatever was taken is in `reply`, also when the
    // result is not 0; only a result of 0 makes it an answer.
    virtual std::uint8_t get_frame(Payload& reply) = 0;
};

class SerialChannel final : public Channel {
  public:
    SerialChannel(Port& port, base::Clock& clock) : port_(port), clock_(clock) {}

    // First byte of every frame, both ways. Set from the communication dialog.
    std::uint8_t COMM_ID = 127;

    // Switches the two tests of a received frame off. Only a test that proves the tests' worth does
    // so.
    bool check_frames = true;

    bool is_open() const override { return port_.is_open(); }
    void Datawrite(const Payload& payload) override;
    std::uint8_t get_frame(Payload& reply) override;

  private:
    Port& port_;
    base::Clock& clock_;
};

class CanChannel final : public Channel {
  public:
    CanMessage
        can_message;  // the one transmit message; identifier set when the adapter is activated
    CanMessage can_receive;  // the one receive message; its identifier is not looked at

    // None is fine: then nothing is sent, and nothing ever comes.
    void set_adapter(CanAdapter* adapter) { adapter_ = adapter; }
    CanAdapter* adapter() const { return adapter_; }

    bool is_open() const override { return adapter_ != nullptr; }
    void Datawrite(const Payload& payload) override;
    std::uint8_t get_frame(Payload& reply) override;

  private:
    CanAdapter* adapter_ = nullptr;
};

}  // namespace servo::link
