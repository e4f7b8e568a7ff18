// A named periodic timer on the thread of the user interface, whose interval can change while it
// runs. "Label1Timer" drives the engine.
#pragma once

namespace servo::link {

class Timer {
  public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    virtual void set_interval(int milliseconds) = 0;
    virtual int interval() const = 0;
    virtual void set_enabled(bool enabled) = 0;
    virtual bool enabled() const = 0;
};

}  // namespace servo::link
