// A port that lets somebody listen: every whole frame that leaves and every one that comes in is
// shown, whoever sent it. It changes nothing of what passes.
#pragma once

#include <vector>

#include "link/frame.h"
#include "link/port.h"

namespace servo::tools {

class LineTap {
  public:
    LineTap() = default;
    LineTap(const LineTap&) = delete;
    LineTap& operator=(const LineTap&) = delete;
    virtual ~LineTap() = default;

    virtual void sent(const link::Payload& payload) = 0;
    virtual void heard(const link::Payload& payload) = 0;
};

class TappedPort final : public link::Port {
  public:
    // The line outlives it.
    explicit TappedPort(link::Port& line) : line_(line) {}

    void set_tap(LineTap* tap) { tap_ = tap; }  // may be null

    link::OpenResult open(std::string_view port_text, int baud) override;
    void close() override;
    bool is_open() const override { return line_.is_open(); }
    bool gone() override { return line_.gone(); }
    std::size_t in_buffer_count() override { return line_.in_buffer_count(); }
    std::size_t out_buffer_count() override { return line_.out_buffer_count(); }
    std::size_t read(std::span<std::uint8_t> into) override;
    void write(std::span<const std::uint8_t> bytes) override;
    void clear_in() override;
    void clear_out() override { line_.clear_out(); }

  private:
    link::Port& line_;
    LineTap* tap_ = nullptr;
    std::vector<std::uint8_t> gathered_;  // bytes that make no frame yet
    std::uint8_t station_ = 0;            // communication ID of the last frame that left
};

}  // namespace servo::tools
