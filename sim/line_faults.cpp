#include "sim/line_faults.h"

#include <algorithm>

namespace servo::sim {

namespace {

Frame foreign_frame(const Frame& frame, Chance chance) {
    Payload payload{};
    std::copy(frame.begin() + 1, frame.end() - 1, payload.begin());
    const auto other = static_cast<std::uint8_t>(frame[0] + 1 + chance.below(255));
    return make_frame(other, payload);
}

}  // namespace

// One to three different places get another value each. One changed byte always shows in the sum;
// several may cancel out, as on a real line.
void LineFaultMaker::corrupt(std::vector<std::uint8_t>& bytes, std::uint64_t draw) {
    Chance chance(draw);
    const std::uint32_t count = 1 + chance.below(3);
    std::vector<std::size_t> places;
    while (places.size() < std::min<std::size_t>(count, bytes.size())) {
        const std::size_t place = chance.below(static_cast<std::uint32_t>(bytes.size()));
        if (std::find(places.begin(), places.end(), place) != places.end()) continue;
        places.push_back(place);
        bytes[place] = static_cast<std::uint8_t>(bytes[place] + 1 + chance.below(255));
    }
}

std::vector<std::uint8_t> LineFaultMaker::pass(const Frame& frame, const LineFaults& faults,
                                               Statistics& statistics) {
    const bool drop = chance_.happens(faults.drop);
    const bool foreign = chance_.happens(faults.foreign);
    const bool corrupted = chance_.happens(faults.corrupt);
    const bool doubled = chance_.happens(faults.doubled);
    const bool lose = chance_.happens(faults.lose);
    const bool stutter = chance_.happens(faults.stutter);
    const std::uint64_t draw = chance_.next();
    if (drop) {
        ++statistics.dropped;
        return {};
    }
    Frame sent = frame;
    if (foreign) {
        sent = foreign_frame(frame, Chance(draw));
        ++statistics.foreign_sent;
    }
    std::vector<std::uint8_t> bytes(sent.begin(), sent.end());
    if (corrupted) {
        corrupt(bytes, mix(draw));
        Frame seen{};
        std::copy(bytes.begin(), bytes.end(), seen.begin());
        ++statistics.corrupted;
        if (sum_is_right(seen)) ++statistics.unseen;
    }
    Chance place(mix(draw + 1));
    if (lose) {
        bytes.erase(bytes.begin() + place.below(static_cast<std::uint32_t>(bytes.size())));
        ++statistics.lost_bytes;
    }
    if (stutter) {
        const auto at = bytes.begin() + place.below(static_cast<std::uint32_t>(bytes.size()));
        bytes.insert(at, *at);
        ++statistics.doubled_bytes;
    }
    if (doubled) {
        const std::vector<std::uint8_t> once = bytes;
        bytes.insert(bytes.end(), once.begin(), once.end());
        ++statistics.doubled;
    }
    return bytes;
}

}  // namespace servo::sim
