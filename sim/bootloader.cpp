#include "sim/bootloader.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "sim/frame.h"

namespace servo::sim {

namespace {

using std::chrono::microseconds;

constexpr std::string_view kVersion = "1.3";

constexpr std::size_t kCommandCharacters = 64;
constexpr std::size_t kReceiverBytes = 64;

// How long a line may stay unfinished. A person may type a command; what holds bytes that no
// command has is a frame of the running drive's protocol or noise, and ends with a short silence;
// a block comes without pauses.
constexpr microseconds kCommandPatience = std::chrono::seconds(1);
constexpr microseconds kSpoiltPatience = std::chrono::milliseconds(5);
constexpr microseconds kBlockPatience = std::chrono::seconds(2);

bool printable(std::uint8_t byte) {
    return byte >= 0x20 && byte < 0x7F;
}

// Whole frames of the running drive's protocol. Whoever still asks for objects gets no text.
bool is_frames(std::string_view bytes) {
    if (bytes.empty() || bytes.size() % kFrameSize != 0) return false;
    for (std::size_t at = 0; at < bytes.size(); at += kFrameSize) {
        const std::string_view frame = bytes.substr(at, kFrameSize);
        const unsigned sum = std::accumulate(
            frame.begin(), frame.end(), 0U,
            [](unsigned all, char c) { return all + static_cast<std::uint8_t>(c); });
        if ((sum & 0xFFU) != 0) return false;
    }
    return true;
}

std::string_view why_refused(BlockStore::Result result) {
    switch (result) {
        case BlockStore::Result::kStored:
            return "";
        case BlockStore::Result::kLength:
            return "block error, length";
        case BlockStore::Result::kChecksum:
            return "block error, checksum";
        case BlockStore::Result::kNumbers:
            return "block error, numbers";
        case BlockStore::Result::kCharacters:
            return "block error, characters";
        case BlockStore::Result::kForeign:
            return "block error, another image";
        case BlockStore::Result::kInUse:
            return "block error, page in use";
    }
    return "";
}

}  // namespace

Bootloader::Bootloader(const BootOptions& options, InstalledFirmware& firmware,
                       Statistics& statistics)
    : options_(options), firmware_(firmware), statistics_(statistics) {}

void Bootloader::start(std::uint8_t id, std::uint32_t baud) {
    id_ = id;
    byte_time_ = line_time(1, baud);
    type_is_right_ = false;
    erased_ = false;
    block_mode_ = false;
    block_count_ = 0;
    clear_line();
    work_ = Work::kNone;
    receiver_.clear();
    replies_.clear();
    outcome_ = Outcome::kStay;
}

void Bootloader::announce(microseconds now) {
    say(fmt::format("{} bootloader {}", options_.type, kVersion), now);
}

std::optional<microseconds> Bootloader::next_event() const {
    if (work_ != Work::kNone) return work_ends_;
    if (line_.empty() && !too_long_ && !block_mode_) return std::nullopt;
    return last_byte_ + patience();
}

void Bootloader::handle_event(microseconds now) {
    if (work_ == Work::kNone) {
        give_up(now);
        return;
    }
    finish_work(now);
    // What waited may begin the next piece of work.
    while (work_ == Work::kNone && outcome_ == Outcome::kStay && !receiver_.empty()) {
        const Byte byte = receiver_.front();
        receiver_.pop_front();
        process(byte.value, std::max(now, byte.at));
    }
}

void Bootloader::take(std::uint8_t byte, microseconds at) {
    if (work_ == Work::kNone) {
        process(byte, at);
    } else if (receiver_.size() < kReceiverBytes) {
        receiver_.push_back({byte, at});
    } else {
        ++statistics_.lost_input;
    }
}

void Bootloader::process(std::uint8_t byte, microseconds at) {
    last_byte_ = at;
    const bool frame = inside_frame();
    if (byte == '\r' && !frame) {
        take_line(at);
    } else if (byte != '\n' || frame) {
        collect(byte);
    }
}

void Bootloader::collect(std::uint8_t byte) {
    const std::size_t room = block_mode_ ? kBlockCharacters : kCommandCharacters;
    if (!printable(byte)) spoilt_ = true;
    if (line_.size() < room) {
        line_ += static_cast<char>(byte);
    } else {
        too_long_ = true;
    }
}

// A frame's bytes have no line ends.
bool Bootloader::inside_frame() const {
    const std::size_t of_frame = line_.size() % kFrameSize;
    if (block_mode_ || !spoilt_ || too_long_ || of_frame == 0) return false;
    return static_cast<std::uint8_t>(line_[line_.size() - of_frame]) == id_;
}

void Bootloader::clear_line() {
    line_.clear();
    spoilt_ = false;
    too_long_ = false;
}

microseconds Bootloader::patience() const {
    if (block_mode_) return kBlockPatience;
    // One byte more is on its way for as long as it takes.
    return 2 * byte_time_ + (spoilt_ ? kSpoiltPatience : kCommandPatience);
}

// The rest of a line did not come.
void Bootloader::give_up(microseconds now) {
    const std::string line = std::exchange(line_, {});
    const bool frames = !too_long_ && is_frames(line);
    clear_line();
    if (block_mode_) {
        block_mode_ = false;
        refuse(BootStep::kBlock, "block error, incomplete", now);
    } else if (!frames) {
        complain(now);
    }
}

void Bootloader::take_line(microseconds at) {
    const std::string line = std::exchange(line_, {});
    const bool spoilt = spoilt_;
    const bool too_long = too_long_;
    clear_line();
    if (line.empty()) return;
    if (block_mode_) {
        block_mode_ = false;
        if (too_long) {
            refuse(BootStep::kBlock, why_refused(BlockStore::Result::kLength), at);
        } else {
            take_block(line, at);
        }
    } else if (spoilt || too_long) {
        complain(at);
    } else {
        ++statistics_.commands;
        take_command(line, at);
    }
}

void Bootloader::take_command(const std::string& line, microseconds at) {
    if (line == "hi") {
        if (!options_.silent.contains(BootStep::kHi)) announce(at);
    } else if (line == "e") {
        if (!type_is_right_) return refuse(BootStep::kErase, "type first", at);
        // From here on the old program can't start any more, whatever becomes of the new one.
        firmware_.invalidate();
        store_.erase();
        erased_ = false;
        work_ = Work::kErase;
        work_ends_ = at + options_.erase_time;
    } else if (line == "w") {
        if (!erased_) return refuse(BootStep::kSwitch, "erase first", at);
        if (options_.no_switch) return refuse(BootStep::kSwitch, "no block receive mode", at);
        block_mode_ = true;
        answer(BootStep::kSwitch, "switch to block receive mode", at);
    } else if (line == "go") {
        go(at);
    } else {
        take_type(line, at);
    }
}

void Bootloader::take_type(const std::string& word, microseconds at) {
    type_is_right_ = word == options_.type && !options_.wrong_type;
    if (!type_is_right_) return refuse(BootStep::kType, "wrong type", at);
    answer(BootStep::kType, "right", at);
}

void Bootloader::take_block(const std::string& block, microseconds at) {
    ++block_count_;
    BlockStore::Result result = BlockStore::Result::kChecksum;
    if (options_.refused_block != block_count_) result = store_.put(block);
    if (result != BlockStore::Result::kStored) {
        return refuse(BootStep::kBlock, why_refused(result), at);
    }
    ++statistics_.blocks;
    if (options_.flash_block == block_count_) store_.damage();
    work_ = Work::kProgramme;
    work_ends_ = at + options_.programme_time;
}

void Bootloader::go(microseconds at) {
    if (options_.silent.contains(BootStep::kGo)) {
        outcome_ = Outcome::kHang;
        return;
    }
    if (!firmware_.valid()) {
        const auto image = erased_ ? store_.verify(options_.type) : std::nullopt;
        if (!image) return refuse(BootStep::kGo, "image not valid", at);
        if (!options_.start_fails) firmware_.install(*image);
    }
    outcome_ = options_.start_fails ? Outcome::kReturn : Outcome::kStart;
}

void Bootloader::finish_work(microseconds now) {
    switch (std::exchange(work_, Work::kNone)) {
        case Work::kNone:
            return;
        case Work::kErase:
            if (options_.erase_fails) return refuse(BootStep::kErase, "erase failed", now);
            erased_ = true;
            block_count_ = 0;
            answer(BootStep::kErase, "erased success", now);
            return;
        case Work::kProgramme:
            answer(BootStep::kBlock, "programme ok", now);
            return;
    }
}

void Bootloader::answer(BootStep step, std::string_view text, microseconds at) {
    if (!options_.silent.contains(step)) say(text, at);
}

void Bootloader::refuse(BootStep step, std::string_view why, microseconds at) {
    ++statistics_.refusals;
    answer(step, fmt::format("{} bootloader: {}", options_.type, why), at);
}

// Not part of any turn, so no turn's silence covers it.
void Bootloader::complain(microseconds at) {
    ++statistics_.refusals;
    say(fmt::format("{} bootloader: line not understood", options_.type), at);
}

void Bootloader::say(std::string_view text, microseconds at) {
    replies_.push_back({at, fmt::format("{}\r\n", text)});
}

std::vector<Bootloader::Reply> Bootloader::take_replies() {
    return std::exchange(replies_, {});
}

Bootloader::Outcome Bootloader::take_outcome() {
    return std::exchange(outcome_, Outcome::kStay);
}

}  // namespace servo::sim
