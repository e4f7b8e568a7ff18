// The acquisition on the virtual bench: the whole link, byte by byte in virtual time, with a drive
// whose recorder plays a script.
#pragma once

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "scope/acquisition.h"
#include "scope/channel_lists.h"
#include "scope/scope_world.h"
#include "scope/trace.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::scope::test {

using Bytes = std::vector<std::uint8_t>;

// A recorder for FakeDrive: each start makes a recording, each status is told so often before the
// next. Whatever else the drive does, it answers a repeated segment request with the same segment.
class FakeRecorder {
  public:
    explicit FakeRecorder(servo::test::FakeDrive& drive) : drive_(drive) {
        for (const link::WireKey key : {kCommandKey, kPeriodKey, kOffsetKey, kCountKey, kEdgeKey})
            drive_.add(key, 0);
        object(kPeriodKey) = 1;
        object(kOffsetKey) = 10;
        object(kCountKey) = 50;
        drive_.add_text(dictionary::identity_of(kBufferKey), {});
        drive_.repeats_segments = true;
        drive_.answers = [this](const link::Payload& request) { return execute(request); };
    }

    // What a recording holds, by the number of its start.
    std::function<Bytes(int start)> record = [](int) { return Bytes(); };
    // Whether the line carries the answer to a request; asked after it was executed.
    std::function<bool(const link::Payload& request)> carries = [](const link::Payload&) {
        return true;
    };
    std::vector<std::uint8_t> statuses{1, 2, 3, 0};
    int reads_each = 2;

    int starts = 0;
    int stops = 0;
    int polls = 0;
    // The recording is over, whatever was told of it.
    void rest() {
        read_ = last_read();
        object(kCommandKey) = statuses.back();
    }
    std::int64_t& object(link::WireKey key) {
        return drive_.objects.at(dictionary::identity_of(key)).value;
    }

  private:
    int last_read() const { return reads_each * static_cast<int>(statuses.size()) - 1; }

    // The value that a read finds is set by the request before it.
    bool execute(const link::Payload& request) {
        if (link::reply_key(request) == dictionary::identity_of(kCommandKey)) {
            if (request[0] == link::kRead) {
                ++polls;
                read_ = std::min(read_ + 1, last_read());
            } else if (request[4] == 1) {
                ++starts;
                read_ = 0;
                const Bytes bytes = record(starts);
                drive_.add_text(dictionary::identity_of(kBufferKey), {bytes.begin(), bytes.end()});
            } else {
                ++stops;
                read_ = last_read();
            }
            object(kCommandKey) = statuses.at(static_cast<std::size_t>(read_ / reads_each));
        }
        return carries(request);
    }

    servo::test::FakeDrive& drive_;
    int read_ = 0;
};

// Rows of an int16 and an int32 channel that tell one recording from the next.
struct Rows {
    std::vector<std::int32_t> narrow;
    std::vector<std::int32_t> wide;
    Bytes bytes;
};

inline Rows rows_of(int recording, int count) {
    std::mt19937 random(static_cast<unsigned>(recording));
    Rows rows;
    for (int i = 0; i < count; ++i) {
        const auto narrow = static_cast<std::int16_t>(random());
        const auto wide = static_cast<std::int32_t>(random());
        rows.narrow.push_back(narrow);
        rows.wide.push_back(wide);
        for (int bit = 0; bit < 16; bit += 8)
            rows.bytes.push_back(static_cast<std::uint8_t>(narrow >> bit));
        for (int bit = 0; bit < 32; bit += 8)
            rows.bytes.push_back(static_cast<std::uint8_t>(wide >> bit));
    }
    return rows;
}

struct ScopeBench : servo::test::VirtualBench {
    ScopeBench() {
        engine.set_scope(&acquisition);
        acquisition.set_visible(true);
        data.Check5 = true;
        for (ScopeChannel& channel : data.channels)
            offer_first_objects(channel, dictionary, language);
    }

    ScopeChannel& channel(int index) { return data.channels.at(static_cast<std::size_t>(index)); }
    std::int32_t& state() { return engine.state.scopeState; }

    void record_item(int index, int item) {
        acquisition.pick_object(index, item);
        if (!channel(index).enable) acquisition.click_enable(index);
    }
    bool run_until_state(int wanted) {
        return run_until([&] { return state() == wanted; });
    }
    bool run_until_recordings(std::size_t count,
                              std::chrono::microseconds limit = std::chrono::minutes(10)) {
        return run_until([&] { return recordings.size() >= count; }, limit);
    }
    std::vector<std::int32_t> decoded(int index) {
        const ScopeChannel& curve = channel(index);
        return {curve.samples.begin(), curve.samples.begin() + curve.sampleTotal};
    }

    dictionary::Store dictionary = dictionary::store_of(usual_objects());
    base::Language language = base::Language::kEnglish;
    ScopeData data;
    std::vector<Bytes> recordings;
    std::function<void()> decoded_one = [] {};  // behind each recording
    Acquisition acquisition{
        {.engine = engine,
         .dictionary = dictionary,
         .notice = notice,
         .language = language,
         .link_open = [this] { return communication.link_open(); }},
        data,
        {.changed = [] {}, .Movingdata = [this] { decode(); }, .DrawPicture = [] {}}};

  private:
    void decode() {
        recordings.emplace_back(data.rawBytes.begin(), data.rawBytes.begin() + data.rawLength);
        Movingdata(data, values.operands, language);
        decoded_one();
    }
};

// With the scripted recorder, an open link, and channels 1 (int16) and 3 (int32) ticked.
struct RecordingBench : ScopeBench {
    explicit RecordingBench(int rows = 50) : row_count(rows) {
        recorder.record = [this](int start) { return rows_of(start, row_count).bytes; };
        recorder.object(kCountKey) = rows;
        open_link();
        record_item(0, 1);
        record_item(2, 4);
        run_until([&] { return data.Text3 == std::to_string(row_count); });
    }

    int row_count;
    servo::test::FakeDrive drive{time, line};
    FakeRecorder recorder{drive};
};

}  // namespace servo::scope::test
