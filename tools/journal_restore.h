// Values that stood in the drive before a write, written back: one object after the other, each
// once more if no answer comes. What is written back stands in the journal like any other write.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "tools/journal.h"

namespace servo::tools {

class JournalRestore {
  public:
    // Between two steps, for whoever has a timer.
    static constexpr int kStepMilliseconds = 20;
    static constexpr int kStepsToAnswer = 15;
    static constexpr int kAttempts = 3;

    // Both outlive it.
    JournalRestore(const WriteJournal& journal, link::Engine& engine)
        : journal_(journal), engine_(engine) {}

    // The first of the chosen writes of each object that would be taken back. Left out are objects
    // whose value before that write is not known, and those that have it again already.
    std::vector<JournalEntry> plan(const std::vector<std::size_t>& chosen) const;

    // Begins with the object that was written last, so that what was set first comes back last.
    // False, with nothing sent, when there is nothing to write or blocked() is true.
    bool start(const std::vector<std::size_t>& chosen);
    // The line is closed, or a job of its own has it.
    bool blocked() const;

    bool running() const { return !left_.empty(); }
    void step();

    std::size_t taken() const { return taken_; }
    std::size_t refused() const { return refused_; }
    std::size_t silent() const { return silent_; }
    // How the last one ended, or how far it is; empty before the first.
    std::string note() const;

  private:
    void send();
    void done(std::size_t& count);

    const WriteJournal& journal_;
    link::Engine& engine_;
    std::deque<JournalEntry> left_;     // the first is in work
    std::optional<std::size_t> entry_;  // number in the journal of the write in work
    int attempts_ = 0;
    int steps_ = 0;
    std::size_t wanted_ = 0;
    std::size_t taken_ = 0;
    std::size_t refused_ = 0;
    std::size_t silent_ = 0;
};

}  // namespace servo::tools
