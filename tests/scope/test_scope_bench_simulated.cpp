// Recordings of the simulated drive, which reads the wire on its own: its recorder, its motor, and
// the dictionary that is shipped.
#include <gtest/gtest.h>

#include <memory>

#include "scope/scope_bench.h"
#include "support/sim_bench.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;
using namespace std::chrono_literals;

namespace {

constexpr dictionary::Identity kBuffer = 0x230013;
constexpr dictionary::Identity kVelocity = 0x606C00;

Bytes bytes_of(const std::string& text) {
    return {text.begin(), text.end()};
}

struct SimulatedBench : ScopeBench {
    explicit SimulatedBench(sim::LineFaults of_the_line = {}) : faults(std::move(of_the_line)) {
        dictionary.open_dat(SERVO_BIN_DIR);
        for (ScopeChannel& channel : data.channels) {
            channel = {};
            offer_first_objects(channel, dictionary, language);
        }
        simulated =
            std::make_unique<servo::test::SimDriveOnLine>(time, line, dictionary, options());
        open_link();
        run_until([&] { return data.Text3 == "500"; }, 10s);  // the drive's own set-up is known
    }
    sim::Options options() const {
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        options.faults = faults;
        return options;
    }
    void set_count(int rows) {
        data.Text3 = std::to_string(rows);
        acquisition.enter_text3();
        run_for(20ms);
    }
    // Written until it has arrived: the line may have faults.
    void command(link::WireKey key, std::int32_t value) {
        const auto object = dictionary::identity_of(key);
        for (int attempt = 0; attempt < 20; ++attempt) {
            engine.sendata2(key, value, 0);
            run_for(20ms);
            if (simulated->drive().value(object) == value) return;
        }
    }
    void turn_motor(std::int32_t speed) {
        command(0x60600001, 3);
        command(0x60400002, 0x06);
        command(0x60400002, 0x0F);
        command(0x60FF0004, speed);
    }
    void record_object(int index, dictionary::Identity object) {
        record_item(index, *Add_OD_To_CH(object, channel(index), dictionary, language) + 1);
    }

    sim::LineFaults faults;
    std::unique_ptr<servo::test::SimDriveOnLine> simulated;
};

struct ScopeSimulated : testing::Test, SimulatedBench {};

}  // namespace

TEST_F(ScopeSimulated, RecordingIsTheRecordersByteForByte) {
    turn_motor(2'000'000);
    record_object(0, 0x607800);   // int16
    record_object(2, kVelocity);  // int32
    set_count(200);
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(recordings[0], bytes_of(*simulated->drive().text(kBuffer)));
    ASSERT_EQ(recordings[0].size(), 200U * 6);
    ASSERT_EQ(decoded(2).size(), 200U);
    for (std::size_t row = 0; row < 200; ++row) {
        const auto* at = &recordings[0].at(row * 6);
        EXPECT_EQ(decoded(0)[row], static_cast<std::int16_t>(at[0] | at[1] << 8));
        EXPECT_EQ(decoded(2)[row],
                  static_cast<std::int32_t>(at[2] | at[3] << 8 | at[4] << 16 |
                                            static_cast<std::uint32_t>(at[5]) << 24));
    }
    run_for(200ms);
    EXPECT_EQ(state(), 0);
    EXPECT_FALSE(data.sampling);
}

TEST_F(ScopeSimulated, StepOfTheVelocityIsCaughtByItsTrigger) {
    turn_motor(0);
    record_object(0, kVelocity);
    acquisition.pick_trigger(*Add_OD_To_CH(kVelocity, channel(kTrigger), dictionary, language) + 1);
    run_for(20ms);
    const auto& units = channel(kTrigger).unitList.items;
    channel(kTrigger).unitList.ListIndex =
        static_cast<int>(std::find(units.begin(), units.end(), "DEC") - units.begin());
    ASSERT_EQ(channel(kTrigger).unitList.text(), "DEC");
    data.Text4 = "1000000";
    acquisition.enter_text4();
    run_for(20ms);
    data.Text2 = "50";
    acquisition.enter_text2();
    run_for(20ms);
    set_count(300);
    acquisition.Command6_Click();
    run_for(2s);
    // It waits. The rows before the trigger fill too fast for status 1 to be seen, and without it
    // status 2 counts for nothing.
    EXPECT_EQ(*simulated->drive().value(0x230007), 2);
    EXPECT_EQ(state(), 1);
    EXPECT_TRUE(recordings.empty());
    command(0x60FF0004, 2'000'000);
    ASSERT_TRUE(run_until_recordings(1));
    const std::vector<std::int32_t> speed = decoded(0);
    ASSERT_EQ(speed.size(), 300U);
    for (std::size_t row = 0; row < 50; ++row)
        EXPECT_LT(speed[row], 1'000'000) << row;
    EXPECT_GE(speed[50], 1'000'000);
}

TEST_F(ScopeSimulated, SetUpThatDoesNotFitIsRefusedAndEndsTheRun) {
    record_object(0, kVelocity);
    set_count(4000);
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until([&] { return !data.sampling; }, 2s));
    run_for(500ms);
    EXPECT_EQ(state(), 0);
    EXPECT_TRUE(recordings.empty());
    EXPECT_TRUE(notice.boxes.empty());
    set_count(100);
    acquisition.Command6_Click();
    EXPECT_TRUE(run_until_recordings(1));
}

TEST_F(ScopeSimulated, ChannelChangedFromNarrowToWideRecordsTheWideObject) {
    record_object(0, 0x607800);
    record_object(0, kVelocity);
    set_count(20);
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(1));
    EXPECT_EQ(recordings[0].size(), 20U * 4);
}

TEST_F(ScopeSimulated, RereadFetchesTheSameRecording) {
    record_object(1, kVelocity);
    set_count(30);
    acquisition.Command6_Click();
    ASSERT_TRUE(run_until_recordings(1));
    run_for(100ms);
    acquisition.Command7_Click();
    ASSERT_TRUE(run_until_recordings(2));
    EXPECT_EQ(recordings[1], recordings[0]);
}

TEST(ScopeSimulatedFaults, ContinuousModeOverALineThatLosesDoublesAndCorrupts) {
    sim::LineFaults faults;
    faults.drop = 0.01;
    faults.corrupt = 0.02;
    faults.doubled = 0.01;
    SimulatedBench bench(faults);
    bench.turn_motor(2'000'000);
    bench.record_object(0, 0x607800);
    bench.record_object(2, kVelocity);
    bench.set_count(40);
    bench.data.Check5 = false;
    int wrong = 0;
    bench.decoded_one = [&] {
        if (bench.recordings.back() != bytes_of(*bench.simulated->drive().text(kBuffer))) ++wrong;
    };
    bench.acquisition.Command6_Click();
    ASSERT_TRUE(bench.run_until_recordings(100, 600s));
    EXPECT_EQ(wrong, 0);
    EXPECT_TRUE(bench.communication.link_open());
    EXPECT_GT(bench.engine.counters.bad_checksum, 20U);
}
