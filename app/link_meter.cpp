#include "app/link_meter.h"

#include <cstddef>

#include "base/number.h"

namespace servo::app {

namespace {

using std::chrono::microseconds;

constexpr microseconds kWindow = std::chrono::seconds(2);
constexpr microseconds kSilence = std::chrono::seconds(1);
// A shorter time says more about the moment of sampling than about the line.
constexpr microseconds kShortest = std::chrono::milliseconds(100);

// A frame has ten bytes, a byte on the line ten bits: start, eight, stop.
constexpr double kBitsPerFrame = 100;

// Everything that was on the line, whether it was of use or not.
std::uint64_t frames_on_line(const link::LinkCounters& counters) {
    return counters.sends + counters.frames + counters.bad_checksum + counters.foreign;
}

// Requests that are under way at any moment: the next one leaves before the answer to the last has
// come in.
constexpr std::uint64_t kUnderWay = 2;

// Requests that got no answer. The engine's own count of misses is another: a turn in which it had
// nothing to ask adds one too, and on a good line that is every third.
std::uint64_t unanswered(const link::LinkCounters& counters) {
    const std::uint64_t settled = counters.frames + kUnderWay;
    return counters.sends > settled ? counters.sends - settled : 0;
}

bool went_back(const link::LinkCounters& before, const link::LinkCounters& now) {
    return now.sends < before.sends || now.frames < before.frames || now.answers < before.answers;
}

}  // namespace

LinkPlace link_place(const link::Communication& communication, std::string_view link_picture) {
    const link::CommunicationState& state = communication.state();
    LinkPlace place;
    place.open = communication.link_open();
    place.lost = !place.open && link_picture == link::kCommerrorpic;
    const auto port = static_cast<std::size_t>(state.Combo1_index);
    if (state.Combo1_index >= 0 && port < state.Combo1.size()) place.port = state.Combo1[port].text;
    const auto baud = static_cast<std::size_t>(state.Combo2_index);
    if (state.Combo2_index >= 0 && baud < link::kBaudRates.size())
        place.baud = static_cast<int>(base::leading_number(link::kBaudRates.at(baud)));
    return place;
}

void LinkMeter::begin(const Sample& first) {
    samples_.assign(1, first);
    opened_ = first.at;
    heard_ = first.at;
    ever_heard_ = false;
}

bool LinkMeter::begins_anew(const Sample& sample, const LinkPlace& place) const {
    if (samples_.empty() || !(figures_.place == place)) return true;
    const Sample& last = samples_.back();
    return sample.at < last.at || went_back(last.counters, sample.counters);
}

void LinkMeter::take(microseconds now, const link::LinkCounters& counters, const LinkPlace& place) {
    const Sample sample{now, counters};
    if (!place.open) {
        samples_.clear();
        figures_ = {};
        figures_.condition = place.lost ? LinkCondition::kLost : LinkCondition::kClosed;
        figures_.place = place;
        figures_.misses = unanswered(counters);
        return;
    }
    const bool anew = begins_anew(sample, place);
    figures_.place = place;
    if (anew) {
        begin(sample);
    } else {
        if (counters.frames > samples_.back().counters.frames) {
            heard_ = now;
            ever_heard_ = true;
        }
        samples_.push_back(sample);
        // The oldest that is kept is two seconds old or a little more.
        while (samples_.size() > 2 && now - samples_[1].at >= kWindow)
            samples_.pop_front();
    }
    compute();
}

LinkCondition LinkMeter::condition() const {
    const microseconds quiet = samples_.back().at - heard_;
    if (quiet > kSilence) return LinkCondition::kSilent;
    return ever_heard_ ? LinkCondition::kAnswering : LinkCondition::kWaiting;
}

void LinkMeter::compute() {
    const Sample& first = samples_.front();
    const Sample& last = samples_.back();
    figures_.condition = condition();
    figures_.misses = unanswered(last.counters);
    figures_.objects_per_second = 0;
    figures_.misses_per_second = 0;
    figures_.load = 0;
    const microseconds time = last.at - first.at;
    if (time < kShortest) return;
    const double seconds = std::chrono::duration<double>(time).count();
    const auto rate = [seconds](std::uint64_t from, std::uint64_t to) {
        return to > from ? static_cast<double>(to - from) / seconds : 0.0;
    };
    figures_.objects_per_second = rate(first.counters.answers, last.counters.answers);
    figures_.misses_per_second = rate(unanswered(first.counters), unanswered(last.counters));
    if (figures_.place.baud <= 0) return;
    const double bits =
        rate(frames_on_line(first.counters), frames_on_line(last.counters)) * kBitsPerFrame;
    figures_.load = 100 * bits / figures_.place.baud;
}

}  // namespace servo::app
