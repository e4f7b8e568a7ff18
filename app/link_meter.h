// What a status bar tells of the link: rates over the last two seconds, from the engine's counters.
// It is sampled from outside, every few hundred milliseconds; it has no clock of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "link/communication.h"
#include "link/engine.h"

namespace servo::app {

enum class LinkCondition : std::uint8_t {
    kClosed,
    kWaiting,    // just opened, nothing has come yet
    kAnswering,  // the drive has been heard within the last second
    kSilent,     // open, and not heard for longer
    kLost,       // closed because the drive was silent for too long
};

// Where the line goes, as the communication dialog has it.
struct LinkPlace {
    bool open = false;
    std::string port;  // text of the port list, empty when none is chosen
    int baud = 0;  // bits per second; 0 when the line has no such rate, and then there is no load
    bool lost = false;  // closed by the time-out of the link; until it is opened again
    bool operator==(const LinkPlace&) const = default;
};

// `link_picture` is the name of the picture on the toolbar's button, which tells a lost link from a
// closed one.
LinkPlace link_place(const link::Communication& communication, std::string_view link_picture = {});

// Rates are 0 while the link is closed and until there are two samples.
struct LinkFigures {
    LinkCondition condition = LinkCondition::kClosed;
    LinkPlace place;
    double objects_per_second = 0;  // read answers
    double misses_per_second = 0;
    std::uint64_t misses = 0;  // requests without an answer since the link was opened
    double load = 0;           // percent of the baud rate, both directions together
};

class LinkMeter {
  public:
    // `now` is any steady time. Counters that went back, another line, and a link that was opened
    // again begin a new window; so does a time that went back.
    void take(std::chrono::microseconds now, const link::LinkCounters& counters,
              const LinkPlace& place);

    const LinkFigures& figures() const { return figures_; }

  private:
    struct Sample {
        std::chrono::microseconds at{};
        link::LinkCounters counters;
    };

    void begin(const Sample& first);
    bool begins_anew(const Sample& sample, const LinkPlace& place) const;
    void compute();
    LinkCondition condition() const;

    std::deque<Sample> samples_;  // oldest first
    std::chrono::microseconds opened_{};
    std::chrono::microseconds heard_{};  // the sample that last had a new frame
    bool ever_heard_ = false;
    LinkFigures figures_;
};

}  // namespace servo::app
