// Runs a drive in real time on a pseudo-terminal.
#pragma once

#include <functional>

#include "sim/drive.h"
#include "sim/input_lines.h"
#include "sim/pacer.h"
#include "sim/pty_line.h"

namespace servo::sim {

struct HostOptions {
    double speed = 1.0;         // seconds of the drive for each second of the wall
    bool print_frames = false;  // bytes of both directions to standard output
    bool watch_input = true;    // standard input's end ends the run; its lines are obeyed anyway
};

class PtyHost {
  public:
    PtyHost(Drive& drive, PtyLine& line, HostOptions options);

    // Returns when SIGTERM or SIGINT comes, or standard input ends.
    void run();

  private:
    std::chrono::nanoseconds now() const;
    std::chrono::nanoseconds next_waking() const;
    bool wait_until(std::chrono::nanoseconds time);
    bool read_input();
    void obey_input();
    void take_in();
    void step();
    void send();
    void print_heard(std::chrono::nanoseconds time);
    void print_unseen();

    Drive& drive_;
    PtyLine& line_;
    HostOptions options_;
    LineCutter input_;
    bool input_open_ = true;
    std::chrono::nanoseconds started_{0};
    PacedBytes incoming_;
    PacedBytes outgoing_;
    std::chrono::nanoseconds last_heard_{0};
    std::vector<PacedBytes::Byte> heard_;  // not printed yet
    std::uint64_t unseen_ = 0;             // frames changed unseen, printed so far
};

}  // namespace servo::sim
