// The machine's serial ports and timer, through Qt. Everything runs on the thread that made it.
#pragma once

#include <QSerialPort>
#include <QTimer>
#include <functional>
#include <memory>

#include "link/port.h"
#include "link/port_names.h"
#include "link/timer.h"

namespace servo::link {

// A tty, opened and set up by QSerialPort. Bytes go past it: within a tick no event loop runs, so
// the count of waiting bytes asks the system each time and writes leave at once.
class QtSerialPort final : public Port {
  public:
    explicit QtSerialPort(PortNames& names) : names_(names) {}

    OpenResult open(std::string_view port_text, int baud) override;
    void close() override;
    bool is_open() const override { return port_.isOpen(); }
    bool gone() override;
    std::size_t in_buffer_count() override;
    std::size_t out_buffer_count() override;
    std::size_t read(std::span<std::uint8_t> into) override;
    void write(std::span<const std::uint8_t> bytes) override;
    void clear_in() override;
    void clear_out() override;

  private:
    std::size_t own_count() const;

    PortNames& names_;
    QSerialPort port_;
};

// Ports that Qt finds, then the given ones.
class QtPortDirectory final : public PortDirectory {
  public:
    explicit QtPortDirectory(PortNames& names) : names_(names) {}
    bool list(std::vector<Entry>& into) override;

  private:
    PortNames& names_;
};

class QtTimer final : public Timer {
  public:
    // `tick` is called on every time-out; for the engine, cTmr_Timer().
    explicit QtTimer(std::function<void()> tick = {});

    void set_tick(std::function<void()> tick) { tick_ = std::move(tick); }
    void set_interval(int milliseconds) override { timer_.setInterval(milliseconds); }
    int interval() const override { return timer_.interval(); }
    void set_enabled(bool enabled) override;
    bool enabled() const override { return timer_.isActive(); }

  private:
    std::function<void()> tick_;
    QTimer timer_;
};

}  // namespace servo::link
