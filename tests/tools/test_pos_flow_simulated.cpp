// The table of the simulated drive, which reads the wire on its own.
#include <gtest/gtest.h>

#include <memory>

#include "pos_flow_bench.h"
#include "support/sim_bench.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;

struct SimulatedForm : PosFlowForm {
    explicit SimulatedForm(sim::LineFaults faults = {}) {
        store.open_dat(SERVO_BIN_DIR);
        form.load(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        options.faults = std::move(faults);
        drive = std::make_unique<test::SimDriveOnLine>(time, line, store, options);
        open_link();
        run_until([this] { return form.resolution_known(); }, 10s);
    }
    bool finish() {
        return run_until([this] { return !form.job_running(); }, 120s);
    }
    void fill() {
        std::string text;
        for (int i = 0; i < 32; ++i)
            text += std::to_string(i) + "," + std::to_string(1000 * i - 7) + ",600.00," +
                    std::to_string(i) + ",1,2," +
                    register_text(static_cast<std::uint16_t>(0x0100 | ((i + 1) & 31))) + "," +
                    std::to_string(i % 3) + ",0\r\n";
        text += "\r\n";
        for (int i = 0; i < 8; ++i)
            text += std::to_string(i) + ",100.00,200.00\r\n";
        form.import_file(put_file(text));
    }
    std::unique_ptr<test::SimDriveOnLine> drive;
};

void write_and_read(SimulatedForm& bench) {
    ASSERT_TRUE(bench.form.resolution_known());
    bench.fill();
    const PositionGrids written = bench.grids();
    bench.form.Command2_Click();
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.form.data().Label4, "finished");
    for (int line = 0; line < kTransferLines; ++line) {
        const auto object =
            dictionary::identity_of((*bench.form.data().list)[static_cast<std::size_t>(line)]);
        EXPECT_EQ(bench.drive->drive().value(object),
                  value_for_drive(written, line, bench.form.resolution()))
            << line;
    }
    bench.form.Command1_Click();
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.form.data().Label3, "finished");
    EXPECT_EQ(bench.grids(), written);
}

TEST(PosFlowSimulated, AWriteAndAReadGiveTheSameTable) {
    SimulatedForm bench;
    write_and_read(bench);
}

TEST(PosFlowSimulated, OnALineWithFaultsToo) {
    sim::LineFaults faults;
    faults.drop = 0.05;
    faults.corrupt = 0.05;
    SimulatedForm bench(faults);
    write_and_read(bench);
}

TEST(PosFlowSimulated, TheIndexIsLiveWhileTheWindowIsVisible) {
    SimulatedForm bench;
    EXPECT_EQ(bench.form.get_odtype(0), "uint8");
    bench.form.set_visible(true);
    EXPECT_TRUE(bench.run_until([&] { return !bench.form.data().Text1.empty(); }, 20s));
    EXPECT_GE(bench.form.running_step(), 0);
}

}  // namespace
}  // namespace servo::tools
