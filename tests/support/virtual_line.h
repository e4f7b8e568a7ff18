// A serial line in virtual time, exact to the byte: ten bits for each byte at the baud rate, both
// directions independent of each other.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "link/port.h"
#include "support/virtual_time.h"

namespace servo::test {

// One direction.
class Wire {
  public:
    explicit Wire(VirtualTime& time) : time_(time) {}

    void set_baud(int baud) { baud_ = baud; }
    int baud() const { return baud_; }
    VirtualTime::Duration time_of(std::size_t bytes) const;

    void send(std::span<const std::uint8_t> bytes);
    // Bytes that are not yet complete on the line.
    std::size_t pending() const { return queue_.size(); }
    // Drops what has not begun to leave; a byte on the line is completed.
    void clear();
    // Everything that is under way or sent while cut is lost.
    void set_cut(bool cut);

    std::function<void(std::uint8_t)> deliver;
    // What becomes of each byte on its way; nothing: it arrives as it is. For faults.
    std::function<std::vector<std::uint8_t>(std::uint8_t)> noise;

  private:
    void start_next();
    void complete(std::uint64_t generation);

    VirtualTime& time_;
    int baud_ = 38400;
    bool cut_ = false;
    bool busy_ = false;
    std::uint64_t generation_ = 0;
    std::deque<std::uint8_t> queue_;
    VirtualTime::Duration burst_start_{0};
    std::size_t burst_bytes_ = 0;
};

struct VirtualLine {
    explicit VirtualLine(VirtualTime& time) : to_drive(time), to_pc(time) {}

    void set_cut(bool cut) {
        to_drive.set_cut(cut);
        to_pc.set_cut(cut);
    }

    Wire to_drive;
    Wire to_pc;
};

// A machine's port facility with one line behind the port "COM1". Other ports can exist, and any
// can be busy.
class VirtualPort final : public link::Port {
  public:
    explicit VirtualPort(VirtualLine& line);

    link::OpenResult open(std::string_view port_text, int baud) override;
    void close() override;
    bool is_open() const override { return open_; }
    std::size_t in_buffer_count() override { return in_.size(); }
    std::size_t out_buffer_count() override { return open_ ? line_.to_drive.pending() : 0; }
    std::size_t read(std::span<std::uint8_t> into) override;
    void write(std::span<const std::uint8_t> bytes) override;
    void clear_in() override { in_.clear(); }
    void clear_out() override { line_.to_drive.clear(); }

    // By number, as behind "COM". kFailed for all that are not named.
    std::map<int, link::OpenResult> ports{{1, link::OpenResult::kOpened}};

    std::vector<std::string> opened;  // texts handed to open(), in order
    int baud = 0;                     // of the last successful open
    std::vector<std::uint8_t> written;
    bool record = false;                  // whether `written` is kept
    std::vector<std::uint8_t> last_read;  // what the last read() took

  private:
    VirtualLine& line_;
    bool open_ = false;
    std::deque<std::uint8_t> in_;
};

class VirtualDirectory final : public link::PortDirectory {
  public:
    bool list(std::vector<Entry>& into) override {
        into = entries;
        return readable;
    }
    std::vector<Entry> entries{{"COM1", "/dev/ttyS0", "first"}, {"COM2", "/dev/ttyS1", "second"}};
    bool readable = true;
};

}  // namespace servo::test
