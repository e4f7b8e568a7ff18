// Answers requests for objects: one payload in, one payload out.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "sim/frame.h"
#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {

struct Answer {
    Payload payload{};
    dictionary::Identity object = 0;  // that the answer is about; a segment's is its string's
    bool refused = false;
};

class ObjectServer {
  public:
    // Asked before every access to an object; anything but kNone refuses it.
    using Gate = std::function<Abort(dictionary::Identity)>;

    explicit ObjectServer(ObjectTable& table, Gate gate = {});

    // Nothing for a payload that wants no answer (the other side's own abort).
    std::optional<Answer> handle(const Payload& request);

    // Forgets a transfer that is under way.
    void reset();

  private:
    Answer read(const Payload& request, dictionary::Identity id);
    Answer write(const Payload& request, dictionary::Identity id, std::size_t size);
    Answer segment(const Payload& request, bool toggle);
    Answer begin_transfer(const Payload& request, Object& object);
    Abort may_access(dictionary::Identity id, Object*& object);
    Abort may_write(const Object& object, std::int64_t value) const;

    ObjectTable& table_;
    Gate gate_;

    // A string on its way. It stays until the next one begins, so that a segment whose answer was
    // lost can be asked for again.
    struct Transfer {
        dictionary::Identity object = 0;
        std::string bytes;
        std::size_t next = 0;             // where the next new segment begins
        std::size_t repeat = 0;           // where the last one given began
        std::optional<bool> last_toggle;  // of the last one given
    };
    std::optional<Transfer> transfer_;
};

}  // namespace servo::sim
