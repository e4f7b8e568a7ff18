// Every kind of fault in each turn of the dialogue, at its first, middle and last byte and over the
// whole of it, in either direction, once and lastingly; and the line cut, or the link closed, at
// every boundary of a word, a block or a reply. Whatever happens, the transfer ends, and when it
// says "finished" the drive holds what was sent, or the count below says how often it does not.
#include <fmt/format.h>

#include <array>
#include <cstdio>

#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

// Two blocks and a short one.
constexpr std::size_t kCharacters = 4120 * 2 + 2061;
constexpr int kBlocks = 3;

enum class Kind : std::uint8_t {
    kLost,
    kCorrupted,
    kDoubled,
    kDelayed,
    kLate,
    kSilence,
    kRepeated
};
enum class Place : std::uint8_t { kFirst, kMiddle, kLast, kWhole };

constexpr std::array kKinds{Kind::kLost, Kind::kCorrupted, Kind::kDoubled, Kind::kDelayed,
                            Kind::kLate, Kind::kSilence,   Kind::kRepeated};
constexpr std::array kPlaces{Place::kFirst, Place::kMiddle, Place::kLast, Place::kWhole};

constexpr auto kShortDelay = 300ms;  // within every limit
constexpr auto kLongDelay = 5s;      // beyond all of them but the erase's

struct Fault {
    Kind kind = Kind::kLost;
    Place place = Place::kWhole;
    int turn = 0;  // counted in what the program sends
    bool to_drive = true;
    bool lasting = false;
};

// Puts a fault on one direction of the line.
class FaultyWire {
  public:
    FaultyWire(VirtualTime& time, Wire& wire, const Fault& fault, const int& turn,
               const std::size_t& length)
        : time_(time), wire_(wire), fault_(fault), turn_(turn), length_(length) {
        wire_.noise = [this](std::uint8_t byte) { return pass(byte); };
    }

  private:
    std::vector<std::uint8_t> pass(std::uint8_t byte) {
        if (turn_ != seen_turn_) {
            seen_turn_ = turn_;
            position_ = 0;
            message_.clear();
        }
        const std::size_t at = position_++;
        message_.push_back(byte);
        const bool now = turn_ == fault_.turn || (fault_.lasting && turn_ > fault_.turn);
        if (!now || length_ == 0) return {byte};
        switch (fault_.kind) {
            case Kind::kLost:
                return hit(at) ? std::vector<std::uint8_t>{} : std::vector{byte};
            case Kind::kCorrupted:
                return {hit(at) ? static_cast<std::uint8_t>(byte ^ 1U) : byte};
            case Kind::kDoubled:
                return hit(at) ? std::vector{byte, byte} : std::vector{byte};
            case Kind::kDelayed:
                return from_hit(at) ? later(byte, kShortDelay) : std::vector{byte};
            case Kind::kLate:
                return from_hit(at) ? later(byte, kLongDelay) : std::vector{byte};
            case Kind::kSilence:
                silent_ = silent_ || (fault_.lasting && from_hit(at));
                return silent_ || from_hit(at) ? std::vector<std::uint8_t>{} : std::vector{byte};
            case Kind::kRepeated:
                if (at + 1 != length_) return {byte};
                return again(byte);
        }
        return {byte};
    }
    std::size_t first_hit() const {
        switch (fault_.place) {
            case Place::kFirst:
            case Place::kWhole:
                return 0;
            case Place::kMiddle:
                return length_ / 2;
            case Place::kLast:
                return length_ - 1;
        }
        return 0;
    }
    bool hit(std::size_t at) const { return fault_.place == Place::kWhole || at == first_hit(); }
    // A byte that is held up holds up those behind it.
    bool from_hit(std::size_t at) const { return at >= first_hit(); }
    std::vector<std::uint8_t> later(std::uint8_t byte, std::chrono::milliseconds delay) {
        time_.after(delay, [this, byte] { wire_.deliver(byte); });
        return {};
    }
    std::vector<std::uint8_t> again(std::uint8_t byte) const {
        std::vector<std::uint8_t> bytes{byte};
        bytes.insert(bytes.end(), message_.begin(), message_.end());
        return bytes;
    }

    VirtualTime& time_;
    Wire& wire_;
    const Fault& fault_;
    const int& turn_;
    const std::size_t& length_;
    int seen_turn_ = -1;
    std::size_t position_ = 0;
    std::vector<std::uint8_t> message_;
    bool silent_ = false;
};

enum class Outcome : std::uint8_t {
    kFinished,    // the image is in the drive, and runs
    kNotStarted,  // "finished", and the image is in the drive; but it does not run
    kFalse,       // "finished", and the drive holds something else
    kFailed,      // the user was told
    kClosed,      // the link was closed under it, and the user told what is left
    kHang,
};
constexpr std::size_t kOutcomes = 6;

struct Tally {
    std::array<int, kOutcomes> count{};
    int runs = 0;
    int false_once = 0;  // of the false ones, those from a fault that struck once
    int of(Outcome outcome) const { return count.at(static_cast<std::size_t>(outcome)); }
    void add(Outcome outcome) {
        ++runs;
        ++count.at(static_cast<std::size_t>(outcome));
    }
    std::string text() const {
        return fmt::format(
            "{} runs: {} finished, {} not started, {} false, {} failed, {} closed, {} hung", runs,
            count[0], count[1], count[2], count[3], count[4], count[5]);
    }
};

// Sees what the program says, turn by turn.
class Turns final : public firmware::DownloadObserver {
  public:
    explicit Turns(TransferBench& bench) : bench_(bench) {
        bench.download.set_observer(this);
        bench.drive.instead = [this](int, const std::string& reply) {
            reply_length = reply.size();
            return std::nullopt;
        };
    }
    void controls_changed() override {}
    void dialogue_changed() override {
        using EntryKind = firmware::DialogueEntry::Kind;
        const auto& entries = bench_.download.transfer().dialogue().entries();
        const auto& last = entries.back();
        if (last.kind != EntryKind::kCommand && last.kind != EntryKind::kFrame) return;
        ++turn;
        sent_length = last.bytes.size();
        if (on_turn) on_turn();
    }
    int turn = -1;
    std::size_t sent_length = 0;
    std::size_t reply_length = 0;
    std::function<void()> on_turn;

  private:
    TransferBench& bench_;
};

struct Setting {
    bool running_drive = false;  // it has to be called into its bootloader
    TextBootloader::Verifies verifies = TextBootloader::Verifies::kNothing;
    int turns() const { return (running_drive ? 5 : 4) + 2 * kBlocks; }
};

void set_up(TransferBench& bench, const Setting& setting) {
    bench.port.record = false;
    bench.load(kCharacters);
    bench.drive.in_bootloader = !setting.running_drive;
    bench.drive.verifies = setting.verifies;
    bench.drive.expected_blocks = kBlocks;
}

Outcome outcome_of(TransferBench& bench, bool over) {
    static const std::string kImage = TransferBench::payload(kCharacters);
    if (!over || !bench.ended()) return Outcome::kHang;
    switch (*bench.ended()) {
        case TransferEnd::kFailed:
            EXPECT_EQ(bench.box().first, "Download Notice");
            EXPECT_FALSE(bench.download.advice_text().empty());
            return Outcome::kFailed;
        case TransferEnd::kLinkClosed:
            EXPECT_FALSE(bench.download.advice_text().empty());
            return Outcome::kClosed;
        case TransferEnd::kDone:
        case TransferEnd::kReadBack:
            break;
    }
    EXPECT_EQ(bench.box().second, "Download Finished!");
    // What is still on its way arrives.
    bench.run_for(6s);
    if (bench.drive.stored != kImage) return Outcome::kFalse;
    return bench.drive.started ? Outcome::kFinished : Outcome::kNotStarted;
}

Outcome run(const Setting& setting, const Fault& fault) {
    TransferBench bench;
    set_up(bench, setting);
    Turns turns(bench);
    const FaultyWire faulty(bench.time, fault.to_drive ? bench.line.to_drive : bench.line.to_pc,
                            fault, turns.turn,
                            fault.to_drive ? turns.sent_length : turns.reply_length);
    bench.start();
    const Outcome outcome = outcome_of(bench, bench.finish(300s));
    bench.download.set_observer(nullptr);
    return outcome;
}

Tally run_all(const Setting& setting) {
    Tally tally;
    for (int turn = 0; turn < setting.turns(); ++turn)
        for (const bool to_drive : {true, false})
            for (const Kind kind : kKinds)
                for (const Place place : kPlaces)
                    for (const bool lasting : {false, true}) {
                        if (kind == Kind::kRepeated && place != Place::kWhole) continue;
                        const Outcome outcome =
                            run(setting, {kind, place, turn, to_drive, lasting});
                        tally.add(outcome);
                        if (outcome == Outcome::kFalse && !lasting) ++tally.false_once;
                    }
    std::printf("%s\n", tally.text().c_str());
    return tally;
}

constexpr Setting kBelieving{false, TextBootloader::Verifies::kNothing};
constexpr Setting kAtGo{false, TextBootloader::Verifies::kImage};
constexpr Setting kEachBlock{false, TextBootloader::Verifies::kBlocks};
constexpr Setting kEachBlockOfARunningDrive{true, TextBootloader::Verifies::kBlocks};

}  // namespace

TEST(Campaign, UndisturbedTransfersFinish) {
    for (const Setting& setting : {kBelieving, kAtGo, kEachBlock, kEachBlockOfARunningDrive}) {
        Fault none;
        none.turn = 1000;
        EXPECT_EQ(run(setting, none), Outcome::kFinished);
    }
}

TEST(Campaign, BootloaderThatVerifiesEachBlockIsNeverFooled) {
    const Tally tally = run_all(kEachBlock);
    EXPECT_EQ(tally.runs, 1000);
    EXPECT_EQ(tally.of(Outcome::kFalse), 0);
    EXPECT_EQ(tally.of(Outcome::kHang), 0);
    // "go" lost or spoilt: the bootloader stays silent, and silence is what the program waits for.
    // The image is in the drive by then; whether it runs shows when the drive answers.
    EXPECT_EQ(tally.of(Outcome::kNotStarted), 30);
}

TEST(Campaign, NorIsThatOfADriveThatHadToBeCalled) {
    const Tally tally = run_all(kEachBlockOfARunningDrive);
    EXPECT_EQ(tally.runs, 1100);
    EXPECT_EQ(tally.of(Outcome::kFalse), 0);
    EXPECT_EQ(tally.of(Outcome::kHang), 0);
    EXPECT_EQ(tally.of(Outcome::kNotStarted), 30);
}

// It takes a line that spoils the last block and "go" alike: then nobody looks at the image.
TEST(Campaign, BootloaderThatVerifiesTheImageAtItsStartIsFooledByLastingFaultsOnly) {
    const Tally tally = run_all(kAtGo);
    EXPECT_EQ(tally.runs, 1000);
    EXPECT_EQ(tally.false_once, 0);
    EXPECT_EQ(tally.of(Outcome::kFalse), 9);
    EXPECT_EQ(tally.of(Outcome::kHang), 0);
}

// The dialogue carries no checksum of its own: "programme" is believed, whatever was programmed.
TEST(Campaign, BootloaderThatBelievesEverythingMakesTheProgramBelieveItToo) {
    const Tally tally = run_all(kBelieving);
    EXPECT_EQ(tally.runs, 1000);
    EXPECT_EQ(tally.of(Outcome::kFalse), 59);
    EXPECT_EQ(tally.of(Outcome::kHang), 0);
}

namespace {

enum class Boundary : std::uint8_t { kBeforeSending, kSent, kReplied };

Outcome cut_at(const Setting& setting, Boundary boundary, int turn, bool lasting, bool close) {
    TransferBench bench;
    set_up(bench, setting);
    Turns turns(bench);
    const auto cut = [&] {
        if (close) {
            // Not from inside a byte or a tick: as a user does it, between two ticks.
            bench.time.after(0ns, [&] { bench.communication.Command1_Click(); });
            return;
        }
        bench.time.after(0ns, [&] { bench.line.set_cut(true); });
        if (!lasting) bench.time.after(500ms, [&] { bench.line.set_cut(false); });
    };
    std::size_t position = 0;
    turns.on_turn = [&] {
        position = 0;
        if (turns.turn == turn && boundary == Boundary::kBeforeSending) cut();
    };
    const auto count = [&](std::size_t length, std::uint8_t byte) {
        if (turns.turn == turn && ++position == length) cut();
        return std::vector{byte};
    };
    if (boundary == Boundary::kSent)
        bench.line.to_drive.noise = [&](std::uint8_t byte) {
            return count(turns.sent_length, byte);
        };
    if (boundary == Boundary::kReplied)
        bench.line.to_pc.noise = [&](std::uint8_t byte) { return count(turns.reply_length, byte); };
    bench.start();
    const Outcome outcome = outcome_of(bench, bench.finish(300s));
    bench.download.set_observer(nullptr);
    return outcome;
}

Tally cut_everywhere(bool close) {
    Tally tally;
    for (const Setting& setting : {kEachBlock, kEachBlockOfARunningDrive})
        for (int turn = 0; turn < setting.turns(); ++turn)
            for (const Boundary boundary :
                 {Boundary::kBeforeSending, Boundary::kSent, Boundary::kReplied})
                for (const bool lasting : {false, true})
                    tally.add(cut_at(setting, boundary, turn, lasting, close));
    std::printf("%s\n", tally.text().c_str());
    return tally;
}

}  // namespace

TEST(Campaign, LineCutAtEveryBoundary) {
    const Tally tally = cut_everywhere(false);
    EXPECT_EQ(tally.runs, 126);
    EXPECT_EQ(tally.of(Outcome::kFalse), 0);
    EXPECT_EQ(tally.of(Outcome::kHang), 0);
}

TEST(Campaign, LinkClosedAtEveryBoundary) {
    const Tally tally = cut_everywhere(true);
    EXPECT_EQ(tally.runs, 126);
    EXPECT_EQ(tally.of(Outcome::kFalse), 0);
    EXPECT_EQ(tally.of(Outcome::kHang), 0);
}
