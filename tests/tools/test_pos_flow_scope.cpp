// The whole way of a table on the simulated drive: written by its window's form, started by an
// input that the form of the inputs has assigned, followed on the scope.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "scope/scope_bench.h"
#include "support/sim_bench.h"
#include "tools/digital_io.h"
#include "tools/pos_flow.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;

constexpr dictionary::Identity kPosition = 0x606300;
constexpr dictionary::Identity kVelocity = 0x606C00;
constexpr int kPositions = 0;  // channels
constexpr int kSpeeds = 2;
constexpr int kTarget = 20000;
constexpr int kStartRow = 3;        // input 4
constexpr int kStartFunction = 26;  // "Start PosTable"

struct TableOnTheScope : testing::Test, scope::test::ScopeBench {
    TableOnTheScope() {
        dictionary.open_dat(SERVO_BIN_DIR);
        for (scope::ScopeChannel& each : data.channels) {
            each = {};
            offer_first_objects(each, dictionary, language);
        }
        form.load(SERVO_BIN_DIR);
        io_loaded = io.Form_Load(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        simulated = std::make_unique<test::SimDriveOnLine>(time, line, dictionary, options);
        open_link();
        run_until([&] { return data.Text3 == "500" && form.resolution_known(); }, 20s);
    }
    void write_table() {
        folder.put("table.pft",
                   "0," + std::to_string(kTarget) + ",600,0,0,0,0,1,0\r\n\r\n0,100,100\r\n");
        form.import_file(folder / "table.pft");
        form.Command2_Click();
        run_until([&] { return !form.job_running(); }, 60s);
    }
    void assign_start() {
        run_until([&] { return io.data().rows[kStartRow].fresh; }, 10s);
        io.Command6_Click(kStartRow);
        run_until([&] { return !io.data().rows[kStartRow].waiting; }, 10s);
        io.Command1_Click(kStartRow);
        io.checkboxdin_Click(kStartFunction);
        io.Command2_Click();
        run_until([&] { return !io.data().rows[kStartRow].waiting; }, 10s);
    }
    void record(int index, dictionary::Identity object) {
        record_item(index, *Add_OD_To_CH(object, channel(index), dictionary, language) + 1);
    }
    // 500 rows, a millisecond each, 50 of them ahead of where the motor begins to turn.
    void arm_scope() {
        record(kPositions, kPosition);
        record(kSpeeds, kVelocity);
        scope::ScopeChannel& trigger = channel(scope::kTrigger);
        acquisition.pick_trigger(*Add_OD_To_CH(kVelocity, trigger, dictionary, language) + 1);
        run_for(20ms);
        const auto& units = trigger.unitList.items;
        trigger.unitList.ListIndex =
            static_cast<int>(std::find(units.begin(), units.end(), "DEC") - units.begin());
        data.Text4 = "100000";
        acquisition.enter_text4();
        run_for(20ms);
        data.Text1 = "16";
        acquisition.enter_text1();
        run_for(20ms);
        data.Text2 = "50";
        acquisition.enter_text2();
        run_for(20ms);
        acquisition.Command6_Click();
        run_for(1s);
    }
    void pin(int input, bool high) {
        simulated->drive().set_pin(input - 1, high);
        run_for(20ms);
    }

    PosFlow form{{.engine = engine,
                  .notice = notice,
                  .language = language,
                  .dictionary = dictionary,
                  .ask_file = [](const PositionFileQuestion&) { return std::nullopt; }}};
    DigitalIO io{{engine, notice, language, [] {}}};
    bool io_loaded = false;
    std::unique_ptr<test::SimDriveOnLine> simulated;
};

TEST_F(TableOnTheScope, IsStartedByAnInputAndRecorded) {
    ASSERT_TRUE(io_loaded);
    write_table();
    ASSERT_EQ(form.data().Label4, "finished");
    assign_start();
    ASSERT_EQ(io.Text1(kStartRow), "Start PosTable");
    pin(1, true);  // enables, as at the factory
    arm_scope();
    ASSERT_TRUE(recordings.empty()) << "nothing has moved yet";
    pin(4, true);
    ASSERT_TRUE(run_until_recordings(1, 60s));
    const std::vector<std::int32_t> position = decoded(kPositions);
    const std::vector<std::int32_t> speed = decoded(kSpeeds);
    ASSERT_EQ(position.size(), 500U);
    EXPECT_NEAR(position.front(), 0, 10);
    EXPECT_NEAR(position.back(), kTarget, 10);
    // 600 rpm in the steps of the drive, 1875 / 512 / E of an rpm each.
    const double top = 600.0 * 512 * form.resolution() / 1875;
    EXPECT_NEAR(*std::max_element(speed.begin(), speed.end()), top, 0.03 * top);
    EXPECT_NEAR(speed.back(), 0, 0.03 * top);
    // Two ramps of 0.1 s and half a turn each, and a turn at full speed between them. Half the time
    // of a ramp is a quarter of its way.
    const auto row_at = [&](int place) {
        return std::ranges::lower_bound(position, place) - position.begin();
    };
    EXPECT_NEAR(row_at(5000) - row_at(1250), 50, 3);
    EXPECT_NEAR(row_at(15000) - row_at(5000), 100, 3);
    EXPECT_NEAR(row_at(18750) - row_at(15000), 50, 3);
}

}  // namespace
}  // namespace servo::tools
