// What the engine needs of a job that takes the line from the poller. Jobs are registered at
// start-up in their order of priority and keep their own selectors and steps.
#pragma once

#include <cstdint>

#include "link/frame.h"

namespace servo::link {

class Engine;

enum class Received : std::uint8_t {
    kTaken,    // handled: the drain rule decides whether the tick goes on
    kIgnored,  // an echo or a foreign answer: the next frame is looked at within the same tick
    kEndTick,  // handled, and the tick is over
};

class Job {
  public:
    Job() = default;
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
    virtual ~Job() = default;

    virtual bool active() const = 0;

    // Called on every tick while active, before anything else. True: this tick was spent warming
    // up.
    virtual bool warm_up(Engine&) { return false; }

    virtual void send_step(Engine&) = 0;

    // A job that reads the line as text (the firmware transfer) takes the whole receive tick here,
    // before any frame is looked for. False: frames are read as usual.
    virtual bool receive_text(Engine&) { return false; }

    // One accepted frame.
    virtual Received receive_frame(Engine&, const Payload&) = 0;

    // The link was closed, by the user or by a time-out; the job leaves its running state.
    virtual void link_closed(Engine&) {}
    // The link was opened.
    virtual void link_opened(Engine&) {}
};

}  // namespace servo::link
