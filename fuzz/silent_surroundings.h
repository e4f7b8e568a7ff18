// What an engine runs on in a fuzz target: a line that takes whole frames and never answers, a
// clock that stands still, a user who confirms everything.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <span>
#include <string_view>

#include "base/clock.h"
#include "base/notice.h"
#include "link/frame.h"
#include "link/port.h"
#include "link/timer.h"

namespace servo::fuzz {

inline void require(bool holds) {
    if (!holds) std::abort();
}

class OpenPort final : public link::Port {
  public:
    link::OpenResult open(std::string_view, int) override { return link::OpenResult::kOpened; }
    void close() override {}
    bool is_open() const override { return true; }
    std::size_t in_buffer_count() override { return 0; }
    std::size_t out_buffer_count() override { return 0; }
    std::size_t read(std::span<std::uint8_t>) override { return 0; }
    void write(std::span<const std::uint8_t> bytes) override {
        require(bytes.size() == link::kFrameSize && link::checksum(bytes) == 0);
        std::copy_n(bytes.begin() + 1, asked.size(), asked.begin());
    }
    void clear_in() override {}
    void clear_out() override {}

    link::Payload asked{};  // the request that was sent last
};

class NoTime final : public base::Clock {
  public:
    std::chrono::microseconds now() const override { return {}; }
    void sleep(std::chrono::milliseconds) override {}
};

class NoTimer final : public link::Timer {
  public:
    void set_interval(int) override {}
    int interval() const override { return 3; }
    void set_enabled(bool) override {}
    bool enabled() const override { return true; }
};

class Silent final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
};

}  // namespace servo::fuzz
