// Who is told of the status lanes' answers, and what the engine needs of the oscilloscope and of
// the communication dialog.
#pragma once

#include <cstdint>
#include <string_view>

#include "link/frame.h"
#include "link/job.h"

namespace servo::link {

// Every call but the last comes from inside a tick.
class StatusListener {
  public:
    StatusListener() = default;
    StatusListener(const StatusListener&) = delete;
    StatusListener& operator=(const StatusListener&) = delete;
    virtual ~StatusListener() = default;

    // Lane 0: fault word 1 or 2, on every answer. The texts are in DriveValues.
    virtual void fault_word(int /*word*/, std::uint16_t /*value*/) {}
    // Lane 0: the firmware check value as `Download` shows it; empty when the drive has none.
    virtual void firmware_check(std::string_view /*text*/) {}
    // Lane 1: a read answer (4F, 4B or 43) of one of its objects; the data start at payload byte 4.
    virtual void lane1_answer(Identity /*object*/, const Payload& /*payload*/) {}
    // The link has been opened, or is being closed: what was heard so far is as old as that.
    virtual void link_changed(bool /*open*/) {}
};

// The oscilloscope's acquisition runs inside the poller, in lane 2. `scopeState` is in EngineState.
class ScopeLink {
  public:
    ScopeLink() = default;
    ScopeLink(const ScopeLink&) = delete;
    ScopeLink& operator=(const ScopeLink&) = delete;
    virtual ~ScopeLink() = default;

    virtual bool window_visible() const = 0;
    // True: lane 2 reads no settings and is left at once.
    virtual bool settings_known() const = 0;
    // The start button shows "Sampling" or "正在采集".
    virtual bool acquiring() const = 0;

    // Lane 2 with scopeState other than 0, once on each send tick.
    virtual void send_step(Engine&) = 0;
    // Any frame but an echo while lane 2 runs, and read answers of the lane's objects that come
    // late, in another lane. kTaken and kIgnored alike leave it to the drain rule.
    virtual Received receive_frame(Engine&, const Payload&) = 0;

    // The link was given up after too many misses; it will be closed next. The start button goes
    // back to "Start", the sample counter to 0; the engine clears scopeState itself.
    virtual void link_timed_out(Engine&) = 0;
    // The link is being closed, by the user or after a time-out: a running acquisition ends, and
    // the start control can be used again.
    virtual void link_closed(Engine&) = 0;
};

// The dialog's one entry for opening and closing the link. The engine calls it on a time-out.
class LinkControl {
  public:
    LinkControl() = default;
    LinkControl(const LinkControl&) = delete;
    LinkControl& operator=(const LinkControl&) = delete;
    virtual ~LinkControl() = default;

    virtual void communication() = 0;
};

}  // namespace servo::link
