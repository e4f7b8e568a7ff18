#include "faults/fault_bench.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "base/number.h"
#include "dictionary/keys.h"

namespace servo::test {

namespace {

constexpr VirtualTime::Duration kLately = 500ms;  // no fault holds an answer back for longer
constexpr int kRows = 18;

struct Kind {
    const char* type;
    std::int64_t low;
    std::int64_t high;
};
constexpr std::array<Kind, 6> kKinds{{{"uint8", 0, 255},
                                      {"int8", -128, 127},
                                      {"uint16", 0, 65535},
                                      {"int16", -32768, 32767},
                                      {"uint32", 0, 4294967295},
                                      {"int32", -2147483648, 2147483647}}};

const Kind& kind_of(std::string_view type) {
    return *std::find_if(kKinds.begin(), kKinds.end(),
                         [&](const Kind& k) { return k.type == type; });
}

std::int64_t random_value(const Kind& kind, std::mt19937_64& random) {
    return std::uniform_int_distribution<std::int64_t>(kind.low, kind.high)(random);
}

// A drive's value as the decoder of that type sees it.
std::int64_t as_type(std::int64_t value, const Kind& kind) {
    const std::int64_t span = kind.high - kind.low + 1;
    while (value > kind.high)
        value -= span;
    while (value < kind.low)
        value += span;
    return value;
}

bool passes_check(const std::vector<std::uint8_t>& frame, std::uint8_t id) {
    return frame.size() == 10 && frame[0] == id &&
           std::accumulate(frame.begin(), frame.end(), 0) % 256 == 0;
}

}  // namespace

WatchedPage::WatchedPage() : PollWindow("Basic") {
    grid.push_back({"N", "Index", "Type", 0, 0, "Value"});
    for (int i = 0; i < kRows; ++i) {
        const char* type = kKinds[static_cast<std::size_t>(i) % kKinds.size()].type;
        const std::string index = base::hex_text(0x300000 + i * 0x101 + 1);
        const link::WireKey key = dictionary::read_key(index, type);
        grid.push_back({std::to_string(i), index, type, dictionary::identity_of(key), key, {}});
    }
}

link::PollRow WatchedPage::row(int row) const {
    const Row& r = grid.at(static_cast<std::size_t>(row));
    return {r.number, r.index, r.type, r.value};
}

void WatchedPage::set_value(int row, double value, int) {
    Row& r = grid.at(static_cast<std::size_t>(row));
    r.value = base::format_whole(value);
    if (judge) judge(r, value);
}

void WatchedPage::set_text(int row, std::string_view text) {
    grid.at(static_cast<std::size_t>(row)).value = text;
}

FaultBench::FaultBench(std::uint64_t seed)
    : answers(bench.time, bench.line.to_pc, seed),
      requests(bench.time, bench.line.to_drive, seed + 1) {
    std::mt19937_64 random(seed);
    for (std::size_t i = 1; i < page.grid.size(); ++i) {
        const WatchedPage::Row& row = page.grid[i];
        drive.add(row.key, random_value(kind_of(row.type), random));
        written_[row.object].push_back(as_type(drive.value(row.object), kind_of(row.type)));
    }
    page.judge = [this](const WatchedPage::Row& row, double value) { judge(row, value); };
    drive.answers = [this](const link::Payload& request) {
        if (!requests.genuine(FakeDrive::frame_of(request))) ++forged;
        remember();
        return true;
    };
    bench.engine.add_poll_window(page);
    page.set_visible(true);
}

void FaultBench::start() {
    bench.open_link();
    bench.run_until([this] { return page_is_right(); }, 5s);
    remember();
}

bool FaultBench::page_is_right() const {
    return std::all_of(page.grid.begin() + 1, page.grid.end(), [this](const WatchedPage::Row& row) {
        return row.value == std::to_string(as_type(drive.value(row.object), kind_of(row.type)));
    });
}

int FaultBench::ticks_until_right(int limit) {
    for (std::size_t i = 1; i < page.grid.size(); ++i)
        page.grid[i].value.clear();
    for (int ticks = 0; ticks <= limit; ++ticks) {
        if (page_is_right()) return ticks;
        bench.run_ticks(1);
        remember();
    }
    return -1;
}

void FaultBench::edit(std::mt19937_64& random) {
    const WatchedPage::Row& row = page.grid[1 + random() % (page.grid.size() - 1)];
    const Kind& kind = kind_of(row.type);
    const std::int64_t value = random_value(kind, random);
    written_[row.object].push_back(value);
    bench.engine.sendata2(row.key, static_cast<std::int32_t>(static_cast<std::uint32_t>(value)), 0);
}

// Called whenever the drive has executed a request, so that no value of it is missed.
void FaultBench::remember() {
    const VirtualTime::Duration now = bench.time.now();
    for (std::size_t i = 1; i < page.grid.size(); ++i) {
        const WatchedPage::Row& row = page.grid[i];
        const std::int64_t value = as_type(drive.value(row.object), kind_of(row.type));
        auto& held = held_[row.object];
        if (held.empty() || held.back().second != value) {
            held.emplace_back(now, value);
            const auto& written = written_[row.object];
            if (std::find(written.begin(), written.end(), value) == written.end()) ++strange_writes;
        }
        held.back().first = now;
        while (held.size() > 1 && held.front().first + kLately < now)
            held.pop_front();
    }
}

void FaultBench::judge(const WatchedPage::Row& row, double value) {
    ++told;
    remember();
    const auto number = static_cast<std::int64_t>(value);
    const auto& held = held_[row.object];
    const bool right = std::any_of(held.begin(), held.end(),
                                   [number](const auto& h) { return h.second == number; });
    if (right) return;
    ++wrong;
    const Bytes& frame = bench.port.last_read;
    if (passes_check(frame, bench.engine.serial.COMM_ID) && !answers.genuine(frame)) {
        ++unseeable;
    } else if (first_wrong.empty()) {
        first_wrong = row.index + " was told " + std::to_string(number);
    }
}

}  // namespace servo::test
