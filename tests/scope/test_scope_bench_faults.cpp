// Recordings over a line that fails: toggles, repetitions, losses, silence.
#include <gtest/gtest.h>

#include "scope/scope_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;
using namespace std::chrono_literals;

namespace {

struct ScopeFaults : testing::Test, RecordingBench {
    // Every `nth` answer that is a segment becomes what `change` makes of it.
    void change_segments(int nth, std::function<Bytes(const Bytes&)> change) {
        drive.mangle = [this, nth, change = std::move(change)](Bytes frame) {
            const bool segment = frame.at(1) < 0x20;
            return segment && ++segments % nth == 0 ? change(frame) : frame;
        };
    }
    void expect_good_recording() {
        recordings.clear();
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_recordings(1));
        EXPECT_EQ(recordings[0], rows_of(recorder.starts, row_count).bytes);
    }
    int segments = 0;
};

Bytes frame_of(Bytes frame) {
    link::Payload payload{};
    std::copy_n(frame.begin() + 1, payload.size(), payload.begin());
    return servo::test::FakeDrive::frame_of(payload);
}

// The other toggle, under a right checksum.
Bytes wrong_toggle(Bytes frame) {
    frame.at(1) ^= 0x10;
    return frame_of(frame);
}

}  // namespace

// A segment that comes for the first time and says the other toggle looks like the one before; it
// is asked for once more. (One that is repeated and says the other toggle could not be told from
// the next one. A last one says that it is the last, whichever toggle.)
TEST_F(ScopeFaults, SegmentsWithAWrongToggleAreNotStored) {
    for (const int nth : {2, 3, 5}) {
        Bytes before;
        int changed = 0;
        change_segments(1, [&](const Bytes& frame) {
            const bool first = frame != std::exchange(before, frame);
            const bool last = (frame.at(1) & 1) != 0;
            if (!first || last || ++changed % nth != 0) return frame;
            return wrong_toggle(frame);
        });
        expect_good_recording();
        EXPECT_GE(changed / nth, 8);
        run_for(300ms);
    }
}

TEST_F(ScopeFaults, LastSegmentOfTheWrongToggleIsStoredNowhere) {
    row_count = 7;  // 42 bytes: six segments, the last one of toggle 1
    bool done = false;
    change_segments(1, [&](const Bytes& frame) {
        const bool last = (frame.at(1) & 1) != 0;
        return last && !std::exchange(done, true) ? wrong_toggle(frame) : frame;
    });
    expect_good_recording();
    EXPECT_TRUE(done);
}

TEST_F(ScopeFaults, RepeatedSegmentsAreStoredOnce) {
    for (const int nth : {1, 2, 7}) {
        change_segments(nth, [](Bytes frame) {
            const Bytes once = frame;
            frame.insert(frame.end(), once.begin(), once.end());
            return frame;
        });
        expect_good_recording();
        run_for(300ms);
    }
}

TEST_F(ScopeFaults, LostSegmentsAreAskedForAgain) {
    for (const int nth : {2, 3, 10}) {
        change_segments(nth, [](const Bytes&) { return Bytes(); });
        expect_good_recording();
        run_for(300ms);
    }
}

TEST_F(ScopeFaults, CorruptedSegmentsAreAskedForAgain) {
    change_segments(3, [](Bytes frame) {
        frame.at(5) ^= 0x40;
        return frame;
    });
    expect_good_recording();
}

TEST_F(ScopeFaults, LateAnswersDoNotDisturb) {
    for (const auto turnaround : {1ms, 4ms, 9ms, 25ms}) {
        drive.turnaround = turnaround;
        expect_good_recording();
        run_for(500ms);
    }
}

TEST_F(ScopeFaults, SilenceInEachStateIsWaitedOut) {
    for (int in = 1; in <= 6; ++in) {
        recordings.clear();
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_state(in)) << in;
        drive.silent = true;
        run_for(1500ms);
        EXPECT_TRUE(data.sampling) << in;
        drive.silent = false;
        ASSERT_TRUE(run_until_recordings(1)) << in;
        EXPECT_EQ(recordings[0], rows_of(recorder.starts, 50).bytes) << in;
        run_for(300ms);
    }
}

TEST_F(ScopeFaults, CutLineInEachStateIsWaitedOut) {
    for (int in = 2; in <= 6; ++in) {
        recordings.clear();
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_state(in)) << in;
        line.set_cut(true);
        run_for(1500ms);
        EXPECT_TRUE(data.sampling) << in;
        line.set_cut(false);
        ASSERT_TRUE(run_until_recordings(1)) << in;
        EXPECT_EQ(recordings[0], rows_of(recorder.starts, 50).bytes) << in;
        run_for(300ms);
    }
}

TEST_F(ScopeFaults, LostLinkInEachStateResetsTheRun) {
    for (int in = 1; in <= 6; ++in) {
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_state(in)) << in;
        drive.silent = true;
        ASSERT_TRUE(run_until([&] { return !communication.link_open(); }, 10s)) << in;
        EXPECT_FALSE(data.sampling) << in;
        EXPECT_EQ(state(), 0) << in;
        EXPECT_EQ(data.rawIndex, 0) << in;
        EXPECT_EQ(data.ProgressBar1, 0) << in;
        EXPECT_EQ(engine.state.sub_Pointer, 0) << in;
        EXPECT_EQ(engine.state.str_read_step, 0) << in;
        drive.silent = false;
        run_for(50ms);
        // And the next one on a new link is whole.
        open_link();
        run_for(500ms);
        expect_good_recording();
        run_for(300ms);
    }
}

TEST_F(ScopeFaults, LinkClosedByTheUserInEachStateResetsTheRun) {
    for (int in = 1; in <= 6; ++in) {
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_state(in)) << in;
        communication.Command1_Click();
        EXPECT_FALSE(data.sampling) << in;
        EXPECT_EQ(state(), 0) << in;
        run_for(100ms);
        recorder.rest();  // or its status 3 would be taken for somebody else's recording
        open_link();
        run_for(500ms);
        EXPECT_EQ(state(), 0) << in;
        expect_good_recording();
        run_for(300ms);
    }
}

// One byte of a frame in fifty is changed, both ways, for a long time.
TEST_F(ScopeFaults, ContinuousModeOverALineThatCorruptsFrames) {
    std::mt19937 random(42);
    const auto noisy = [&random](std::uint8_t byte) -> Bytes {
        if (random() % 500 == 0) byte ^= static_cast<std::uint8_t>(1U << random() % 8);
        return {byte};
    };
    line.to_pc.noise = noisy;
    line.to_drive.noise = noisy;
    data.Check5 = false;
    int wrong = 0;
    decoded_one = [&] {
        // A start that the drive did not get leaves the recording of before.
        const Rows rows = rows_of(recorder.starts, 50);
        if (recordings.back() != rows.bytes || decoded(0) != rows.narrow || decoded(2) != rows.wide)
            ++wrong;
    };
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(200, 1000s));
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(engine.counters.bad_checksum + drive.bad_frames, 100U);
    EXPECT_TRUE(communication.link_open());
}
