// The serial facility that the link needs: a raw 8N1 port with a readable count of waiting bytes
// and a way to discard both queues. Nothing here blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace servo::link {

enum class OpenResult : std::uint8_t {
    kOpened,
    kBusy,    // exists, but somebody else has it open
    kFailed,  // no such port, or no right to it
};

class Port {
  public:
    Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    virtual ~Port() = default;

    // `port_text` is the text of the port list ("COM3"); a port object knows which device that is.
    // After kBusy and kFailed the port is closed.
    virtual OpenResult open(std::string_view port_text, int baud) = 0;
    virtual void close() = 0;
    virtual bool is_open() const = 0;
    // Whether the device is not there any more: unplugged while the port was open.
    virtual bool gone() { return !is_open(); }

    virtual std::size_t in_buffer_count() = 0;   // bytes received and not yet read
    virtual std::size_t out_buffer_count() = 0;  // bytes written and not yet on the line

    // Takes up to `into.size()` waiting bytes, returns how many. 0 when closed.
    virtual std::size_t read(std::span<std::uint8_t> into) = 0;
    // Hands bytes to the line. Dropped when closed.
    virtual void write(std::span<const std::uint8_t> bytes) = 0;

    virtual void clear_in() = 0;
    virtual void clear_out() = 0;
};

// What a machine has of ports, for the list of the communication dialog.
class PortDirectory {
  public:
    PortDirectory() = default;
    PortDirectory(const PortDirectory&) = delete;
    PortDirectory& operator=(const PortDirectory&) = delete;
    virtual ~PortDirectory() = default;

    struct Entry {
        std::string text;         // "COM1"
        std::string device;       // "/dev/ttyUSB0"
        std::string description;  // may be empty
    };

    // False when the list can't be read; then the caller probes COM1 to COM35.
    virtual bool list(std::vector<Entry>& into) = 0;
};

}  // namespace servo::link
