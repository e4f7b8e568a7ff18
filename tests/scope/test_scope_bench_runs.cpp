// Whole recordings over the virtual line, and the refresh beside them.
#include <gtest/gtest.h>

#include "params/object_browser.h"
#include "scope/scope_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;
using namespace std::chrono_literals;

namespace {

struct ScopeRuns : testing::Test, RecordingBench {};

}  // namespace

TEST_F(ScopeRuns, SingleRecordingIsTheRecordersByteForByte) {
    acquisition.Command6_Click();
    EXPECT_TRUE(data.sampling);
    ASSERT_TRUE(run_until_recordings(1));
    const Rows rows = rows_of(1, 50);
    EXPECT_EQ(recordings[0], rows.bytes);
    EXPECT_EQ(decoded(0), rows.narrow);
    EXPECT_EQ(decoded(2), rows.wide);
    EXPECT_FALSE(data.sampling);
    EXPECT_EQ(state(), 0);
    run_for(1s);
    EXPECT_EQ(recorder.starts, 1);
    EXPECT_EQ(recorder.stops, 1);
    EXPECT_EQ(recordings.size(), 1U);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(ScopeRuns, StatesFollowOneAnother) {
    std::vector<int> seen;
    acquisition.Command6_Click();
    run_until([&] {
        if (seen.empty() || seen.back() != state()) seen.push_back(state());
        return !recordings.empty();
    });
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3, 4, 5, 6, 0}));
}

TEST_F(ScopeRuns, ContinuousModeRecordsOneAfterAnotherUntilItIsStopped) {
    data.Check5 = false;
    decoded_one = [&] {
        const Rows rows = rows_of(static_cast<int>(recordings.size()), 50);
        EXPECT_EQ(recordings.back(), rows.bytes) << recordings.size();
        EXPECT_EQ(decoded(0), rows.narrow) << recordings.size();
        EXPECT_EQ(decoded(2), rows.wide) << recordings.size();
    };
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(10));
    EXPECT_TRUE(data.sampling);
    data.Check5 = true;  // the one under way is the last
    ASSERT_TRUE(run_until_recordings(11));
    run_for(2s);
    EXPECT_EQ(recordings.size(), 11U);
    EXPECT_EQ(recorder.starts, 11);
    EXPECT_FALSE(data.sampling);
}

TEST_F(ScopeRuns, StopInTheMiddleThenAnotherRun) {
    for (int from = 1; from <= 6; ++from) {
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_state(from));
        acquisition.Command6_Click();
        EXPECT_EQ(state(), 0);
        run_for(500ms);
        EXPECT_EQ(state(), 0) << from;
    }
    EXPECT_TRUE(recordings.empty());
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(recordings[0], rows_of(recorder.starts, 50).bytes);
}

TEST_F(ScopeRuns, RereadFetchesTheSameRecordingWithoutARun) {
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(1));
    run_for(200ms);
    acquisition.Command7_Click();
    ASSERT_TRUE(run_until_recordings(2));
    run_for(200ms);
    EXPECT_EQ(recordings[1], recordings[0]);
    EXPECT_EQ(recorder.starts, 1);
    EXPECT_EQ(recorder.stops, 2);
}

TEST_F(ScopeRuns, RecordingsOfEveryLengthComeWhole) {
    for (const std::size_t bytes : {0U, 1U, 6U, 7U, 8U, 13U, 14U, 15U, 700U, 8191U, 8192U}) {
        Bytes expected(bytes);
        std::mt19937 random(static_cast<unsigned>(bytes));
        for (std::uint8_t& byte : expected)
            byte = static_cast<std::uint8_t>(random());
        recorder.record = [&](int) { return expected; };
        recordings.clear();
        acquisition.Command6_Click();
        ASSERT_TRUE(run_until_recordings(1)) << bytes;
        EXPECT_EQ(recordings[0], expected) << bytes;
        run_for(100ms);
    }
}

// As much as the recorder's slots hold: rows of int32, int16, int32, int16.
TEST_F(ScopeRuns, TwoWideObjectsWithTwoNarrowOnesAreRecorded) {
    record_item(0, 4);
    record_item(1, 2);
    record_item(2, 6);
    record_item(3, 3);
    run_for(500ms);
    EXPECT_EQ(recorder.object(0x23000504), 0x60630020);
    EXPECT_EQ(recorder.object(0x23000604), 0x60FB0820);
    for (int index = 0; index < kCurves; ++index)
        EXPECT_TRUE(channel(index).enable) << index;
    const Rows left = rows_of(1, 50);
    const Rows right = rows_of(2, 50);
    recorder.record = [&](int) {
        Bytes bytes;
        for (std::size_t row = 0; row < left.narrow.size(); ++row) {
            for (const Rows* pair : {&left, &right}) {
                const auto from = pair->bytes.begin() + static_cast<std::ptrdiff_t>(6 * row);
                bytes.insert(bytes.end(), from + 2, from + 6);
                bytes.insert(bytes.end(), from, from + 2);
            }
        }
        return bytes;
    };
    acquisition.Command6_Click();
    EXPECT_EQ(data.rowBytes, 12);
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(decoded(0), left.wide);
    EXPECT_EQ(decoded(1), left.narrow);
    EXPECT_EQ(decoded(2), right.wide);
    EXPECT_EQ(decoded(3), right.narrow);
}

TEST_F(ScopeRuns, RecordingLongerThanTheBufferWaitsForTheOperator) {
    recorder.record = [](int) { return Bytes(8200, 0x55); };
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_state(6));
    run_for(40s);
    EXPECT_EQ(state(), 6);
    EXPECT_EQ(data.rawIndex, 8192);
    EXPECT_TRUE(recordings.empty());
    EXPECT_TRUE(communication.link_open());
    acquisition.Command6_Click();
    recorder.record = [](int) { return Bytes(12, 0x66); };
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(recordings[0], Bytes(12, 0x66));
}

TEST_F(ScopeRuns, RefusedStartEndsTheRunWithoutAMessage) {
    drive.refuse.insert(dictionary::identity_of(kCommandKey));
    acquisition.Command6_Click();
    EXPECT_TRUE(data.sampling);
    ASSERT_TRUE(run_until([&] { return !data.sampling; }, 1s));
    run_for(1s);
    EXPECT_EQ(state(), 0);
    EXPECT_FALSE(data.sampling);
    EXPECT_TRUE(notice.boxes.empty());
    drive.refuse.clear();
    acquisition.Command6_Click();
    EXPECT_TRUE(run_until_recordings(1));
}

TEST_F(ScopeRuns, AbortOfTheStatusDuringTheWaitEndsTheRun) {
    recorder.statuses = {1};
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_state(2));
    drive.refuse.insert(dictionary::identity_of(kCommandKey));
    ASSERT_TRUE(run_until([&] { return !data.sampling; }, 1s));
    EXPECT_EQ(state(), 0);
}

TEST_F(ScopeRuns, OtherStatusLanesGoOnDuringALongWait) {
    recorder.statuses = {1, 2};
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_state(3));
    // They go on from their second object: fault word 1 waits until the run has ended.
    drive.objects.at(0x260100).value = 0x10;
    drive.objects.at(0x260200).value = 0x20;
    EXPECT_TRUE(run_until([&] { return values.fault_word2 == 0x20; }, 2s));
    EXPECT_EQ(values.fault_word1, 0);
    EXPECT_EQ(state(), 3);
}

TEST_F(ScopeRuns, HiddenWindowPausesThePollingAndTheRunGoesOnWhenItIsShown) {
    recorder.statuses = {1, 2};  // waits for its trigger
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_state(3));
    acquisition.set_visible(false);
    run_for(500ms);
    const int polls = recorder.polls;
    run_for(5s);
    EXPECT_EQ(recorder.polls, polls);
    EXPECT_EQ(state(), 3);
    EXPECT_TRUE(data.sampling);
    recorder.statuses = {1, 2, 3, 0};
    acquisition.set_visible(true);
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(recordings[0], rows_of(1, 50).bytes);
}

TEST_F(ScopeRuns, UploadUnderWayIsFinishedBehindAHiddenWindow) {
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_state(6));
    acquisition.set_visible(false);
    EXPECT_TRUE(run_until_recordings(1));
}

TEST_F(ScopeRuns, Status3FromIdleFetchesTheRecordingOfSomebodyElse) {
    recorder.object(kCommandKey) = 3;
    recorder.statuses = {3};
    ASSERT_TRUE(run_until_state(4));
    recorder.statuses = {0};
    drive.add_text(dictionary::identity_of(kBufferKey), "somebody else's");
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(std::string(recordings[0].begin(), recordings[0].end()), "somebody else's");
}

TEST_F(ScopeRuns, PagesAreReadAgainBehindARun) {
    servo::test::FakePage page("Basic");
    page.add("607A00", "int32");
    drive.add(0x607A0004, 5);
    engine.add_poll_window(page);
    page.set_visible(true);
    acquisition.Command6_Click();  // waits for the pages' turn to end
    ASSERT_TRUE(run_until_recordings(1));
    drive.objects.at(0x607A00).value = 6;
    EXPECT_TRUE(run_until([&] { return page.value(1) == "6"; }, 5s));
}

// --- The refresh on the line

TEST_F(ScopeRuns, SettingsOfTheDriveAreShown) {
    recorder.object(kPeriodKey) = 16;
    recorder.object(kOffsetKey) = 40;
    recorder.object(kEdgeKey) = 1;
    recorder.object(kTriggerKey) = 0x60F91610;
    recorder.object(kLevelKey) = 0xFFFFFF38;
    ASSERT_TRUE(run_until([&] { return data.Text4 == "-20.00"; }, 5s));
    run_for(1s);  // what this pass had behind it comes with the next
    EXPECT_EQ(data.Text1, "16");
    EXPECT_EQ(data.Label18, "1ms");
    EXPECT_EQ(data.Text2, "40");
    EXPECT_EQ(data.edge, 1);
    EXPECT_EQ(channel(kTrigger).picked()->key, 0x60F916);
}

TEST_F(ScopeRuns, AssignmentByTheDictionaryBrowserShowsUp) {
    engine.sendata2(params::scope_selector(1, 16), 0x60F91610, 0);
    ASSERT_TRUE(run_until([&] { return channel(1).enable; }, 5s));
    EXPECT_EQ(channel(1).picked()->key, 0x60F916);
    engine.sendata2(params::scope_selector(1, 16), 0x60F60C10, 0);
    ASSERT_TRUE(run_until([&] { return channel(1).picked()->key == 0x60F60C; }, 5s));
    engine.sendata2(params::scope_selector(3, 16), 0x20010108, 0);  // not in the list yet
    ASSERT_TRUE(run_until([&] { return channel(3).enable; }, 5s));
    EXPECT_EQ(channel(3).objectList.text(), "state");
    engine.sendata2(params::scope_selector(kTrigger, 32), 0x60630020, 0);
    EXPECT_TRUE(run_until(
        [&] {
            return channel(kTrigger).picked() != nullptr &&
                   channel(kTrigger).picked()->key == 0x606300;
        },
        5s));
}

// At any moment of a refresh, to a hundredth of a pass.
TEST_F(ScopeRuns, PickStandsAtWhateverMomentItIsMade) {
    std::mt19937 random(7);
    acquisition.click_enable(2);
    for (int round = 0; round < 200; ++round) {
        const int items[] = {1, 2, 3};
        const int item = items[round % 3];
        run_for(std::chrono::microseconds(random() % 300'000));
        acquisition.pick_object(0, item);
        ASSERT_TRUE(channel(0).enable);
        run_until(
            [&] {
                EXPECT_EQ(channel(0).objectList.ListIndex, item) << round;
                EXPECT_TRUE(channel(0).enable) << round;
                return HasFailure();
            },
            400ms);
        ASSERT_FALSE(HasFailure());
    }
}

TEST_F(ScopeRuns, TicksAndEmptyPicksStandAtWhateverMomentTheyAreMade) {
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        run_for(std::chrono::microseconds(random() % 300'000));
        if (round % 3 == 2) {
            acquisition.pick_object(0, channel(0).objectList.ListIndex == 0 ? 1 : 0);
            if (channel(0).enable && channel(0).objectList.ListIndex == 0)
                acquisition.click_enable(0);
        } else {
            acquisition.click_enable(round % 3 == 0 ? 0 : 2);
        }
        const bool first = channel(0).enable;
        const bool third = channel(2).enable;
        const int item = channel(0).objectList.ListIndex;
        run_until(
            [&] {
                EXPECT_EQ(channel(0).enable, first) << round;
                EXPECT_EQ(channel(2).enable, third) << round;
                EXPECT_EQ(channel(0).objectList.ListIndex, item) << round;
                return HasFailure();
            },
            400ms);
        ASSERT_FALSE(HasFailure());
    }
}
