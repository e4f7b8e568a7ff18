// A port without a line: what is fed is there at once, what is sent is kept. For tests that step
// the engine by hand.
#pragma once

#include <algorithm>
#include <chrono>
#include <deque>
#include <functional>
#include <vector>

#include "base/clock.h"
#include "link/port.h"
#include "link/timer.h"

namespace servo::test {

class DirectPort final : public link::Port {
  public:
    link::OpenResult open(std::string_view, int) override {
        opened = true;
        return link::OpenResult::kOpened;
    }
    void close() override { opened = false; }
    bool is_open() const override { return opened; }
    std::size_t in_buffer_count() override { return in.size(); }
    std::size_t out_buffer_count() override { return out_waiting; }
    std::size_t read(std::span<std::uint8_t> into) override {
        const std::size_t count = std::min(into.size(), in.size());
        std::copy_n(in.begin(), count, into.begin());
        in.erase(in.begin(), in.begin() + static_cast<std::ptrdiff_t>(count));
        return count;
    }
    void write(std::span<const std::uint8_t> bytes) override {
        if (opened) sent.insert(sent.end(), bytes.begin(), bytes.end());
    }
    void clear_in() override {
        in.clear();
        ++in_clears;
    }
    void clear_out() override { ++out_clears; }

    void feed(const std::vector<std::uint8_t>& bytes) {
        in.insert(in.end(), bytes.begin(), bytes.end());
    }
    // What was sent since the last call.
    std::vector<std::uint8_t> take_sent() { return std::exchange(sent, {}); }

    bool opened = true;
    std::deque<std::uint8_t> in;
    std::vector<std::uint8_t> sent;
    std::size_t out_waiting = 0;
    int in_clears = 0;
    int out_clears = 0;
};

class RecordingClock final : public base::Clock {
  public:
    std::chrono::microseconds now() const override { return time; }
    void sleep(std::chrono::milliseconds pause) override {
        sleeps.push_back(pause);
        time += pause;
        if (while_sleeping) while_sleeping();
    }

    std::chrono::microseconds time{0};
    std::vector<std::chrono::milliseconds> sleeps;
    std::function<void()> while_sleeping;
};

class RecordingTimer final : public link::Timer {
  public:
    void set_interval(int milliseconds) override { interval_ = milliseconds; }
    int interval() const override { return interval_; }
    void set_enabled(bool enabled) override { enabled_ = enabled; }
    bool enabled() const override { return enabled_; }

  private:
    int interval_ = 3;
    bool enabled_ = false;
};

}  // namespace servo::test
