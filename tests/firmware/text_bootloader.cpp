#include "text_bootloader.h"

#include <fmt/format.h>

#include <utility>

namespace servo::test {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kCall = "\x7F\x2B\xFF\x2F\x00\xAA\x55\x00\x00\x29"sv;
constexpr std::string_view kCallLine = "<call>";
constexpr std::size_t kChecksum = 8;  // characters

}  // namespace

TextBootloader::TextBootloader(VirtualTime& time, VirtualLine& line) : time_(time), line_(line) {
    line_.to_drive.deliver = [this](std::uint8_t byte) { receive(byte); };
}

std::string TextBootloader::checksum_text(std::string_view payload) {
    std::uint32_t hash = 2166136261U;
    for (const char c : payload)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return fmt::format("{:08x}", hash);
}

void TextBootloader::power_up() {
    input_.clear();
    frame_.clear();
    block_mode_ = false;
    in_bootloader = true;
}

std::string TextBootloader::sealed(std::string block, std::size_t place) {
    if (block.size() < kChecksum) return block;
    block.resize(block.size() - kChecksum);
    return block + checksum_text(std::to_string(place) + ":" + block);
}

void TextBootloader::say(std::string_view text) {
    line_.to_pc.send({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

void TextBootloader::say(std::vector<Piece> pieces) {
    std::chrono::microseconds at{0};
    for (Piece& piece : pieces) {
        at += piece.after;
        time_.after(at, [this, text = std::move(piece.text)] { say(text); });
    }
}

void TextBootloader::receive(std::uint8_t byte) {
    if (!in_bootloader) return receive_frame_byte(byte);
    if (byte != '\r') {
        input_.push_back(static_cast<char>(byte));
        return;
    }
    take_line(std::exchange(input_, {}));
}

void TextBootloader::receive_frame_byte(std::uint8_t byte) {
    frame_.push_back(static_cast<char>(byte));
    if (frame_.size() % kCall.size() == 0) ++other_frames;
    if (!frame_.ends_with(kCall) || deaf_to_call) return;
    frame_.clear();
    --other_frames;
    in_bootloader = true;
    started = false;
    lines.emplace_back(kCallLine);
    reply(banner(), turnaround);
}

void TextBootloader::take_line(std::string line) {
    lines.push_back(line);
    if (std::exchange(block_mode_, false)) return take_block(std::move(line));
    if (line == "hi") return reply(banner(), turnaround);
    if (line == type) return reply("type right\r\n", turnaround);
    if (line == "go") return go();
    if (line == "e") {
        stored.clear();
        blocks = 0;
        bad_blocks = 0;
        erased = true;
        return reply("erased success\r\n", turnaround + erase_time);
    }
    if (line == "w") {
        block_mode_ = true;
        return reply("switch to block receive mode\r\n", turnaround);
    }
    reply("?\r\n", turnaround);
}

void TextBootloader::take_block(std::string block) {
    const bool good =
        block.size() >= kChecksum && sealed(block, static_cast<std::size_t>(blocks)) == block;
    if (!good) ++bad_blocks;
    if (!good && verifies == Verifies::kBlocks) return reply("block bad\r\n", turnaround);
    stored += block;
    ++blocks;
    reply("programmed\r\n", turnaround);
}

void TextBootloader::go() {
    const bool whole =
        verifies == Verifies::kNothing || (bad_blocks == 0 && blocks == expected_blocks);
    if (!starts || !whole) return reply(banner(), turnaround + restart_time);
    in_bootloader = false;
    started = true;
    reply("start\r\n", turnaround);
}

void TextBootloader::reply(const std::string& text, std::chrono::microseconds after) {
    const int turn = static_cast<int>(lines.size()) - 1;
    std::vector<Piece> pieces{{{}, text}};
    if (instead) pieces = instead(turn, text).value_or(pieces);
    if (silent || pieces.empty()) return;
    pieces.front().after += after;
    say(std::move(pieces));
}

}  // namespace servo::test
