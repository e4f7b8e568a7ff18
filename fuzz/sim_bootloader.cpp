// Everything that can come to the simulated drive's bootloader.
//
// The input is a list of pieces. The first byte of a piece says what it is: 0 to 63 that many raw
// bytes; 64 to 79 a command and its CR (or the fuzzer would hardly get past them); 80 to 95 the
// characters up to the next zero as a block, with their right check value behind them; 96 to 111 a
// good block of a good image; 112 power off and on; from 113 on time.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sim/checksum.h"
#include "sim/drive.h"

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

// More virtual time than that for one input teaches nothing new.
constexpr microseconds kLongest = seconds(20);
constexpr std::array<std::string_view, 8> kCommands{"hi", "QRL400", "e", "w",
                                                    "go", "QRL401", "",  "\n"};

void require(bool held, const char* what) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// One object: the restart, by which a running program is called back into the bootloader.
const servo::dictionary::Store& store() {
    static const servo::dictionary::Store kStore = [] {
        std::string record(servo::dictionary::kRecordSize, ' ');
        record.replace(0, 6, "2FFF00");
        record.replace(134, 10, "Unsigned16");
        record.replace(150, 1, "W");
        record[8550] = 'N';
        servo::dictionary::Store made;
        made.load(record);
        return made;
    }();
    return kStore;
}

std::string hex(std::uint32_t number, int digits) {
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%0*x", digits, number);
    return text.data();
}

std::string with_sum(const std::string& characters) {
    return characters + hex(servo::sim::crc32(characters), 8);
}

// Two blocks; the second is short.
const std::vector<std::string>& good_blocks() {
    static const std::vector<std::string> kBlocks = [] {
        std::string summed = "QRL400";
        summed.resize(16);
        summed += "new";
        summed.resize(48);
        summed.resize(48 + 2000, 'p');
        std::string image = "QFW1";
        for (const std::uint32_t number : {2000U, servo::sim::crc32(summed), 0U}) {
            for (unsigned i = 0; i < 4; ++i)
                image += static_cast<char>(number >> (8 * i));
        }
        image += summed;
        std::vector<std::string> blocks;
        for (std::size_t i = 0; i < 2; ++i) {
            const std::string page = image.substr(i * 2048, 2048);
            std::string block = hex(static_cast<std::uint32_t>(i), 4) + "0002" +
                                hex(static_cast<std::uint32_t>(page.size()), 4) + "abcd";
            for (const char c : page)
                block += hex(static_cast<std::uint8_t>(c), 2);
            blocks.push_back(with_sum(block));
        }
        return blocks;
    }();
    return kBlocks;
}

class Session {
  public:
    Session() : drive_(store(), options()) {}

    microseconds now() const { return now_; }

    void send(std::string_view text) {
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        now_ += microseconds(bytes.size() * 261);
        drive_.receive(bytes, now_);
        check();
    }

    void wait(microseconds time) {
        now_ += time;
        drive_.advance(now_);
        check();
    }

    void power_cycle() {
        drive_.power_cycle();
        check();
    }

    // Whatever came, the drive runs a program or its bootloader listens.
    void finish() {
        wait(seconds(8));
        if (drive_.running()) return;
        require(drive_.in_bootloader(), "the drive is somewhere");
        said_.clear();
        send("hi\r");
        wait(seconds(1));
        require(said_.find("QRL400 bootloader") != std::string::npos, "the bootloader answers");
    }

  private:
    static servo::sim::Options options() {
        servo::sim::Options made;
        made.bootloader = true;
        made.boot.erase_time = milliseconds(100);
        return made;
    }

    void check() {
        for (const servo::sim::Transmission& sent : drive_.take_output()) {
            const std::string text(sent.bytes.begin(), sent.bytes.end());
            if (is_frame(text)) continue;
            require(text.ends_with("\r\n"), "an answer ends its line");
            require(std::all_of(text.begin(), text.end() - 2,
                                [](char c) { return c >= ' ' && c <= '~'; }),
                    "an answer is text");
            said_ += text;
        }
        const auto& memory = drive_.program_memory();
        const auto& statistics = drive_.statistics();
        require(memory.pages() <= statistics.blocks, "no page without a block");
        // It began without a program, so one that runs came in whole.
        const bool runs = drive_.running();
        if (runs && !ran_) started_ = started_ || memory.verify("QRL400").has_value();
        require(!runs || started_, "no start without a whole image");
        ran_ = runs;
    }

    static bool is_frame(const std::string& text) {
        if (text.size() != 10) return false;
        const unsigned sum = std::accumulate(
            text.begin(), text.end(), 0U,
            [](unsigned all, char c) { return all + static_cast<std::uint8_t>(c); });
        return (sum & 0xFFU) == 0;
    }

    servo::sim::Drive drive_;
    microseconds now_{0};
    std::string said_;
    bool started_ = false;
    bool ran_ = false;
};

// The characters up to the next zero, which is taken too.
std::string text_piece(std::span<const std::uint8_t>& rest) {
    const auto end = std::find(rest.begin(), rest.end(), 0);
    std::string text(rest.begin(), end);
    rest = rest.subspan(std::min(rest.size(), text.size() + 1));
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Session session;
    std::span<const std::uint8_t> rest(data, size);
    while (!rest.empty() && session.now() < kLongest) {
        const std::uint8_t kind = rest[0];
        rest = rest.subspan(1);
        if (kind < 64) {
            const auto raw = rest.first(std::min<std::size_t>(kind, rest.size()));
            session.send(std::string(raw.begin(), raw.end()));
            rest = rest.subspan(raw.size());
        } else if (kind < 80) {
            session.send(std::string(kCommands.at(kind % 8)) + "\r");
            session.wait(kind % 16 < 8 ? milliseconds(150) : milliseconds(0));
        } else if (kind < 96) {
            session.send(with_sum(text_piece(rest)) + "\r");
            session.wait(milliseconds(20));
        } else if (kind < 112) {
            session.send(good_blocks().at(kind % 2) + "\r");
            session.wait(milliseconds(20));
        } else if (kind == 112) {
            session.power_cycle();
        } else {
            session.wait(milliseconds((kind - 112) * 5));
        }
    }
    session.finish();
    return 0;
}
