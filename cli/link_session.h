// An open link as the commands use it: one access at a time, each waited for. What waits behind it
// is the engine with its tick; a test answers by itself.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "dictionary/keys.h"
#include "link/drive_values.h"

namespace servo::cli {

enum class Outcome : std::uint8_t {
    kDone,
    kRefused,      // the drive answered with an abort
    kNoAnswer,     // the drive is there, but says nothing to this within the time
    kLinkLost,     // nothing comes from the line
    kInterrupted,  // the user pressed Ctrl-C
};

struct Reply {
    Outcome outcome = Outcome::kNoAnswer;
    double number = 0.0;           // of a read, by the type of the object
    std::string bytes;             // of a read string, in the code page
    std::uint32_t abort_code = 0;  // with kRefused
};

class LinkSession {
  public:
    LinkSession() = default;
    LinkSession(const LinkSession&) = delete;
    LinkSession& operator=(const LinkSession&) = delete;
    virtual ~LinkSession() = default;

    // A fresh value of the object. `type` is its short type name; a string is read in segments.
    virtual Reply read(dictionary::Identity key, const std::string& type,
                       std::chrono::milliseconds limit) = 0;

    // Sends once and waits for the drive's word.
    virtual Reply write(dictionary::WireKey key, std::int32_t value,
                        std::chrono::milliseconds limit) = 0;

    // As write, and sent again while the drive is silent: for what may be written twice.
    virtual Reply write_setting(dictionary::WireKey key, std::int32_t value,
                                std::chrono::milliseconds limit) = 0;

    // As write_setting, when the user has pressed Ctrl-C too: the last word before leaving.
    virtual Reply write_last(dictionary::WireKey key, std::int32_t value,
                             std::chrono::milliseconds limit) = 0;

    // Lets the status lanes run until the condition holds. kNoAnswer when the time is over first.
    virtual Outcome wait(const std::function<bool()>& condition,
                         std::chrono::milliseconds limit) = 0;

    // What formulas need of the drive, filled by the status lanes.
    virtual const link::FormulaOperands& operands() const = 0;

    // Time since some fixed start.
    virtual std::chrono::microseconds now() const = 0;
};

}  // namespace servo::cli
