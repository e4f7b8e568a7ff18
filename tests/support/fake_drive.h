// A small drive that answers by a table, for tests of the link alone. It can be late, silent,
// refuse and mangle. For a drive that behaves like one, see sim_bench.h.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "link/frame.h"
#include "support/virtual_line.h"

namespace servo::test {

class FakeDrive {
  public:
    struct Object {
        int size = 4;  // bytes; 0 for a text
        std::int64_t value = 0;
        std::string text;
    };
    struct Request {
        VirtualTime::Duration at;  // when its last byte was complete
        link::Payload payload;
    };

    // Knows the objects of the three status lanes, with the value 0.
    FakeDrive(VirtualTime& time, VirtualLine& line);

    void add(link::WireKey key, std::int64_t value);
    void add_text(link::Identity object, std::string text);
    std::int64_t value(link::Identity object) const { return objects.at(object).value; }

    // Sends bytes at once, asked or not.
    void send(std::span<const std::uint8_t> bytes) { line_.to_pc.send(bytes); }
    void send_payload(const link::Payload& payload);
    static std::vector<std::uint8_t> frame_of(const link::Payload& payload, std::uint8_t id = 127);

    std::uint8_t id = 127;
    std::chrono::microseconds turnaround{300};
    bool silent = false;
    // A segment request with the toggle of the one before gets the same segment again, in place of
    // the next.
    bool repeats_segments = false;
    std::map<link::Identity, Object> objects;
    std::set<link::Identity> mute;    // executed, never answered
    std::set<link::Identity> refuse;  // every access is aborted
    // Whether a request is answered; asked for every one, after the three above.
    std::function<bool(const link::Payload&)> answers;
    // What leaves in place of an answer's ten bytes.
    std::function<std::vector<std::uint8_t>(std::vector<std::uint8_t>)> mangle;

    std::vector<Request> requests;  // all good frames, in order
    std::size_t bad_frames = 0;     // bytes dropped while looking for a good frame
    std::size_t sent = 0;           // answers

  private:
    void receive(std::uint8_t byte);
    void execute(const link::Payload& request);
    link::Payload answer_to(const link::Payload& request);
    link::Payload segment(std::uint8_t toggle);

    VirtualTime& time_;
    VirtualLine& line_;
    std::vector<std::uint8_t> bytes_;
    VirtualTime::Duration last_byte_{0};
    std::string upload_;
    std::size_t upload_position_ = 0;
    int upload_toggle_ = -1;
    link::Payload last_segment_{};
};

}  // namespace servo::test
