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

LineFaultMaker::Fate LineFaultMaker::next_fate(const LineFaults& faults) {
    Fate fate;
    fate.drop = chance_.happens(faults.drop);
    fate.foreign = chance_.happens(faults.foreign);
    fate.corrupted = chance_.happens(faults.corrupt);
    fate.doubled = chance_.happens(faults.doubled);
    fate.lose = chance_.happens(faults.lose);
    fate.stutter = chance_.happens(faults.stutter);
    fate.draw = chance_.next();
    return fate;
}

void LineFaultMaker::change_length(std::vector<std::uint8_t>& bytes, const Fate& fate,
                                   Statistics& statistics) {
    Chance place(mix(fate.draw + 1));
    if (fate.lose) {
        bytes.erase(bytes.begin() + place.below(static_cast<std::uint32_t>(bytes.size())));
        ++statistics.lost_bytes;
    }
    if (fate.stutter) {
        const auto at = bytes.begin() + place.below(static_cast<std::uint32_t>(bytes.size()));
        bytes.insert(at, *at);
        ++statistics.doubled_bytes;
    }
    if (fate.doubled) {
        const std::vector<std::uint8_t> once = bytes;
        bytes.insert(bytes.end(), once.begin(), once.end());
        ++statistics.doubled;
    }
}

std::vector<std::uint8_t> LineFaultMaker::pass(const Frame& frame, const LineFaults& faults,
                                               Statistics& statistics) {
    const Fate fate = next_fate(faults);
    if (fate.drop) {
        ++statistics.dropped;
        return {};
    }
    Frame sent = frame;
    if (fate.foreign) {
        sent = foreign_frame(frame, Chance(fate.draw));
        ++statistics.foreign_sent;
    }
    std::vector<std::uint8_t> bytes(sent.begin(), sent.end());
    if (fate.corrupted) {
        corrupt(bytes, mix(fate.draw));
        Frame seen{};
        std::copy(bytes.begin(), bytes.end(), seen.begin());
        ++statistics.corrupted;
        if (sum_is_right(seen)) ++statistics.unseen;
    }
    change_length(bytes, fate, statistics);
    return bytes;
}

std::vector<std::uint8_t> LineFaultMaker::pass_text(std::string_view text, const LineFaults& faults,
                                                    Statistics& statistics) {
    const Fate fate = next_fate(faults);
    if (fate.drop) {
        ++statistics.dropped;
        return {};
    }
    std::vector<std::uint8_t> bytes(text.begin(), text.end());
    if (fate.corrupted) {
        corrupt(bytes, mix(fate.draw));
        ++statistics.corrupted;
    }
    change_length(bytes, fate, statistics);
    return bytes;
}

}  // namespace servo::sim
