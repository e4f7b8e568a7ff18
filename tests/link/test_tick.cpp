#include <gtest/gtest.h>

#include <stdexcept>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;
using namespace std::chrono_literals;

namespace {

struct Tick : testing::Test, DirectBench {
    // A receive tick now.
    void receive() {
        state.sendmod = 1;
        tick();
    }
};

struct CountingControl final : LinkControl {
    void communication() override { ++calls; }
    int calls = 0;
};

struct ThrowingJob final : FakeJob {
    using FakeJob::FakeJob;
    void send_step(Engine&) override { throw std::out_of_range("beyond the buffer"); }
};

}  // namespace

TEST_F(Tick, SendAndReceiveAlternate) {
    EXPECT_TRUE(tick());
    EXPECT_EQ(state.sendmod, 1);
    EXPECT_FALSE(tick());
    EXPECT_EQ(state.sendmod, 0);
}

TEST_F(Tick, AnyOtherSendmodEndsTheTick) {
    state.sendmod = 2;
    EXPECT_FALSE(tick());
    EXPECT_EQ(state.sendmod, 2);
    EXPECT_EQ(state.miss_count, 0);
}

TEST_F(Tick, TickWithinATickLeavesAtOnce) {
    int depth = 0;
    clock.while_sleeping = [&] {
        ++depth;
        EXPECT_EQ(state.timer1_in, -1);
        engine.cTmr_Timer();
        EXPECT_EQ(state.sendmod, 0) << "unchanged by the inner tick";
    };
    receive();
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(state.miss_count, 1);
}

TEST_F(Tick, GuardIsClearedOnEveryWayOut) {
    tick();
    EXPECT_EQ(state.timer1_in, 0);
    tick();
    EXPECT_EQ(state.timer1_in, 0);
    state.sendmod = 5;
    tick();
    EXPECT_EQ(state.timer1_in, 0);
}

TEST_F(Tick, FailureInsideATickEndsThatTickAndClearsNothingElse) {
    ThrowingJob job("job");
    job.running = true;
    job.step = 3;
    engine.add_job(JobPlace::kScan, job);
    state.sub_Pointer = 4;
    EXPECT_FALSE(tick());
    EXPECT_EQ(state.timer1_in, 0);
    EXPECT_EQ(state.sendmod, 1) << "the tick had come so far";
    EXPECT_EQ(state.sub_Pointer, 4);
    job.running = false;
    tick();
    EXPECT_TRUE(tick()) << "the next send tick works";
}

TEST_F(Tick, ReadLengthIsTenWithoutATransfer) {
    state.InputLen = 60;
    tick();
    EXPECT_EQ(state.InputLen, 10);
}

TEST_F(Tick, ReadLengthBecomesSixtyWhenATransferBegins) {
    state.download_active = 1;
    tick();
    EXPECT_EQ(state.InputLen, 60);
    state.download_step = 10;
    state.InputLen = 10;
    tick();
    EXPECT_EQ(state.InputLen, 10) << "later it is the job's";
}

// --- misses
// ----------------------------------------------------------------------------------------

TEST_F(Tick, EveryReceiveTickWithoutAFrameIsAMiss) {
    receive();
    EXPECT_EQ(state.miss_count, 1);
    auto bad = frame(0x260100, 0, 0x4B);
    bad[9] ^= 1;
    port.feed(bad);
    receive();
    EXPECT_EQ(state.miss_count, 2) << "wrong checksum";
    port.feed(FakeDrive::frame_of(answer(0x260100, 0, 0x4B), 1));
    receive();
    EXPECT_EQ(state.miss_count, 3) << "foreign";
    EXPECT_EQ(engine.counters.misses, 3U);
    EXPECT_EQ(engine.counters.bad_checksum, 1U);
    EXPECT_EQ(engine.counters.foreign, 1U);
}

TEST_F(Tick, AnyAcceptedFrameZeroesTheMisses) {
    for (const Payload& payload : {answer(0x123456, 0), answer(0x260100, 0, 0x80),
                                   answer(0x260100, 0, 0x60), Payload{0x05, 1, 2, 3, 4, 5, 6, 7}}) {
        state.miss_count = 349;
        feed(payload);
        receive();
        EXPECT_EQ(state.miss_count, 0) << int{payload[0]};
    }
}

TEST_F(Tick, PauseOf150MsComesAtExactly200MissesOnce) {
    for (int i = 0; i < 199; ++i)
        receive();
    EXPECT_EQ(std::count(clock.sleeps.begin(), clock.sleeps.end(), 150ms), 0);
    receive();
    EXPECT_EQ(clock.sleeps.back(), 150ms);
    for (int i = 0; i < 149; ++i)
        receive();
    EXPECT_EQ(std::count(clock.sleeps.begin(), clock.sleeps.end(), 150ms), 1);
    EXPECT_EQ(state.miss_count, 349);
}

TEST_F(Tick, TheLimitGivesTheLinkUp) {
    CountingControl control;
    FakeScope scope;
    scope.sampling = true;
    engine.set_link_control(&control);
    engine.set_scope(&scope);
    state.str_read_step = 2;
    state.scopeState = 3;
    state.sub_Pointer = 4;
    state.Com_Change = 1;
    state.miss_count = 348;
    receive();
    EXPECT_EQ(control.calls, 0);
    EXPECT_EQ(engine.pictures.button4(), kCommpic);
    port.feed({1, 2, 3});
    receive();
    EXPECT_EQ(control.calls, 1);
    EXPECT_EQ(engine.pictures.button4(), kCommerrorpic);
    EXPECT_EQ(scope.timed_out, 1);
    EXPECT_EQ(state.str_read_step, 0);
    EXPECT_EQ(state.scopeState, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_TRUE(port.in.empty());
}

TEST_F(Tick, LimitSetByAJobHolds) {
    CountingControl control;
    engine.set_link_control(&control);
    state.Comm_Over_Time_Cnts = 30;
    for (int i = 0; i < 29; ++i)
        receive();
    EXPECT_EQ(control.calls, 0);
    receive();
    EXPECT_EQ(control.calls, 1);
    receive();
    EXPECT_EQ(control.calls, 2) << "at or above the limit";
}

// --- the drain rule
// ----------------------------------------------------------------------------------

TEST_F(Tick, QueueThatHasBuiltUpIsDrainedInOneTick) {
    for (int i = 0; i < 5; ++i)
        feed(answer(0x641003, 100 + static_cast<std::uint32_t>(i)));
    receive();
    EXPECT_TRUE(port.in.empty());
    EXPECT_EQ(values.operands.o64100320.value, 104);
    EXPECT_EQ(state.miss_count, 0);
}

TEST_F(Tick, FewerThanFourWaitingBytesEndTheTick) {
    feed(answer(0x641003, 1));
    port.feed({1, 2, 3});
    receive();
    EXPECT_EQ(state.miss_count, 0);
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_EQ(port.in.size(), 3U);
}

TEST_F(Tick, FourWaitingBytesAreWaitedFor) {
    const auto second = frame(0x651003, 9, 0x4B);
    feed(answer(0x641003, 1));
    port.feed({second.begin(), second.begin() + 4});
    clock.while_sleeping = [&] { port.feed({second.begin() + 4, second.end()}); };
    receive();
    EXPECT_EQ(clock.sleeps, std::vector{2ms});
    EXPECT_EQ(values.operands.o65100310.value, 9);
}

TEST_F(Tick, FourWaitingBytesThatStayAloneAreAMiss) {
    feed(answer(0x641003, 1));
    port.feed({1, 2, 3, 4});
    receive();
    EXPECT_EQ(state.miss_count, 1);
    EXPECT_EQ(port.in.size(), 4U);
}

TEST_F(Tick, FrameThatMatchesNothingIsDroppedAndTheNextTaken) {
    feed(answer(0x123456, 77));
    feed(answer(0x641003, 5));
    receive();
    EXPECT_EQ(values.operands.o64100320.value, 5);
}

TEST_F(Tick, EchoOfAReadRequestIsNoAnswer) {
    feed(answer(0x641003, 999, 0x40));
    feed(answer(0x641003, 5));
    receive();
    EXPECT_EQ(values.operands.o64100320.value, 5);
    EXPECT_EQ(engine.counters.answers, 1U);
}

TEST_F(Tick, EchoAloneIsLookedBehindInTheSameTick) {
    feed(answer(0x641003, 999, 0x40));
    receive();
    EXPECT_FALSE(values.operands.o64100320.seen);
    EXPECT_EQ(state.miss_count, 1) << "nothing stood behind it";
    EXPECT_EQ(clock.sleeps.size(), 1U);
}

TEST_F(Tick, EchoThenAnswerThatComesWithinThePause) {
    feed(answer(0x641003, 0, 0x40));
    clock.while_sleeping = [&] { feed(answer(0x641003, 5)); };
    receive();
    EXPECT_EQ(values.operands.o64100320.value, 5);
    EXPECT_EQ(state.miss_count, 0);
}

// --- set-up and bookkeeping
// ----------------------------------------------------------------------------

TEST_F(Tick, WindowsTakeTheirPlacesByName) {
    FakePage first("AN_SPEED");
    FakePage basic("Basic");
    FakePage set("RPDOSet");
    FakePage stranger("Nowhere");
    Window scope("Scope");
    first.must_fresh = false;
    EXPECT_TRUE(engine.add_poll_window(first));
    EXPECT_TRUE(engine.add_poll_window(basic));
    EXPECT_TRUE(engine.add_poll_window(set));
    EXPECT_TRUE(engine.add_window(scope));
    EXPECT_FALSE(engine.add_poll_window(stranger));
    EXPECT_FALSE(engine.add_window(stranger));
    EXPECT_EQ(first.meindex, 0);
    EXPECT_TRUE(first.must_fresh);
    EXPECT_EQ(basic.meindex, 4);
    EXPECT_EQ(set.meindex, 33);
    EXPECT_EQ(scope.meindex, 26);
    EXPECT_EQ(engine.all_windows[33], &set);
    EXPECT_EQ(engine.poll_windows[25], &set);
}

TEST_F(Tick, TheTwoListsAgreeInTheirFirstSixPlacesOnly) {
    ASSERT_EQ(kAllWindowNames.size(), 40U);
    ASSERT_EQ(kPollWindowNames.size(), 29U);
    for (std::size_t i = 0; i < kPollWindowNames.size(); ++i)
        EXPECT_EQ(kAllWindowNames[i] == kPollWindowNames[i], i < 6) << i;
    EXPECT_EQ(kAllWindowNames.back(), "modbus");
    EXPECT_EQ(kPollWindowNames.back(), "Download");
    for (const auto name : kPollWindowNames)
        EXPECT_EQ(std::count(kAllWindowNames.begin(), kAllWindowNames.end(), name), 1) << name;
}

TEST_F(Tick, OpenedPageIsReadOnTheNextSendTick) {
    state.page = 7;
    state.sub_Pointer = 3;
    engine.page_opened();
    EXPECT_EQ(state.page, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.Com_Change, 1);
}

TEST_F(Tick, OpeningAPageDisturbsNeitherABatchNorARecording) {
    FakeScope scope;
    engine.set_scope(&scope);
    state.batch_mode = 3;
    engine.page_opened();
    EXPECT_EQ(state.Com_Change, 0);
    state.batch_mode = 0;
    scope.sampling = true;
    engine.page_opened();
    EXPECT_EQ(state.Com_Change, 0);
}

TEST_F(Tick, AfterARestartOfTheDriveEverythingIsReadAgain) {
    FakePage page("AN_SPEED");
    engine.add_poll_window(page);
    page.must_fresh = false;
    values.operands.o64100320 = {4000, true};
    values.firmware_check_known = true;
    state.miss_count = 300;
    state.Com_Change = 1;
    state.sub_Pointer = 9;
    state.rotation = 2;
    engine.forget_drive();
    EXPECT_TRUE(page.must_fresh);
    EXPECT_FALSE(values.operands.o64100320.seen);
    EXPECT_EQ(values.operands.o64100320.value, 4000) << "cached values stay in use";
    EXPECT_FALSE(values.firmware_check_known);
    EXPECT_EQ(state.miss_count, 0);
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.rotation, 0);
}

// --- members by name
// -----------------------------------------------------------------------------------

TEST_F(Tick, MembersAreFoundByName) {
    state.sub_Pointer = 12;
    state.scanRequested = kTrue;
    state.last_write_key = 0x2FFF0002;
    state.str_temp_string = "V1.2";
    values.operands.o60F61110 = {-3, true};
    values.fault_text1 = "00A5";
    EXPECT_EQ(engine.member("sub_Pointer"), "12");
    EXPECT_EQ(engine.member("scanRequested"), "-1");
    EXPECT_EQ(engine.member("last_write_key"), "805240834");
    EXPECT_EQ(engine.member("Comm_Over_Time_Cnts"), "350");
    EXPECT_EQ(engine.member("str_temp_string"), "V1.2");
    EXPECT_EQ(engine.member("60F61110"), "-3");
    EXPECT_EQ(engine.member("60F61110.seen"), "-1");
    EXPECT_EQ(engine.member("64100320.seen"), "0");
    EXPECT_EQ(engine.member("fault_word1"), "00A5");
    EXPECT_EQ(engine.member("Interval"), "3");
    EXPECT_EQ(engine.member("Enabled"), "0");
    EXPECT_EQ(engine.member("no_such_member"), std::nullopt);
}

TEST_F(Tick, EveryListedNameHasAValueAndTheToldNamesAreListed) {
    const auto names = Engine::member_names();
    for (const auto name : names)
        EXPECT_TRUE(engine.member(name)) << name;
    for (const std::string_view name :
         {"timer1_in",         "sendmod",         "Comm_Over_Time_Cnts",
          "miss_count",        "Com_Change",      "status_lane",
          "sub_Pointer",       "rotation",        "page",
          "allow_add_pointer", "is_access_str",   "str_temp_string",
          "Form_Now",          "Form_Last",       "g_FW_CRC_OK_overtimes",
          "io_refresh",        "channel",         "COMM_ID",
          "last_write_key",    "str_read_step",   "str_read_step_bk",
          "segment_pace",      "download_active", "download_step",
          "batch_mode",        "batch_warmup",    "batch_row",
          "scanRequested",     "scanStep",        "scopeState"})
        EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name;
}
