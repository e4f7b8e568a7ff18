// `scan` on the simulated drive in virtual time, with the shipped data.
#include <gtest/gtest.h>

#include <memory>

#include "base/file.h"
#include "base/temp_folder.h"
#include "cli/line_machine.h"
#include "support/sim_bench.h"
#include "tuner/analysis.h"
#include "tuner/bode_file.h"

namespace servo::cli {
namespace {

class SimMachine final : public LineMachine {
  public:
    explicit SimMachine(std::uint16_t fault = 0) {
        store.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        options.fault1 = fault;
        drive = std::make_unique<test::SimDriveOnLine>(bench.time, bench.line, store, options);
    }
    int scan() {
        return run({"scan", file.string(), "--start", "100", "--stop", "200", "--step", "20",
                    "--current", "100"});
    }

    TempFolder folder;
    std::filesystem::path file = folder / "out.bode";
    dictionary::Store store;
    std::unique_ptr<test::SimDriveOnLine> drive;
};

TEST(ScanSimulatedDrive, FileHoldsAScanThatCanBeAnalysed) {
    SimMachine machine;
    ASSERT_EQ(machine.scan(), 0) << machine.err;
    EXPECT_EQ(machine.out, "Finished\n");
    tuner::ScanSettings settings;
    const auto buffers = std::make_unique<tuner::ScanBuffers>();
    const auto analysis = std::make_unique<tuner::Analysis>();
    ASSERT_TRUE(
        tuner::read_bode(base::read_file(machine.file).value_or(""), settings, *buffers).buffers);
    ASSERT_TRUE(tuner::FirstAnalyse(settings, *buffers, *analysis));
    EXPECT_EQ(buffers->pointCount, 6);
    for (std::size_t i = 0; i + 1 < 6; ++i) {
        EXPECT_FLOAT_EQ(analysis->commandMag[i], 1.0F) << "the command is the excitation itself";
        EXPECT_GT(analysis->magnitude[i], 0.1);
        if (i > 0) {
            EXPECT_LT(analysis->magnitude[i], analysis->magnitude[i - 1]) << "an inertia";
        }
    }
}

TEST(ScanSimulatedDrive, FaultIsNoScanAndNoFile) {
    SimMachine machine(0x0200);
    EXPECT_EQ(machine.scan(), 1);
    EXPECT_NE(machine.err.find("has not completed the scan: the motor can't be enabled"),
              std::string::npos)
        << machine.err;
    EXPECT_FALSE(std::filesystem::exists(machine.file));
}

TEST(ScanSimulatedDrive, CtrlCBringsTheMotorToRest) {
    SimMachine machine;
    bool pressed = false;
    machine.interrupted = [&] { return pressed = pressed || machine.told("The drive measures"); };
    EXPECT_EQ(machine.scan(), 1);
    EXPECT_EQ(machine.err.find("may still move"), std::string::npos) << machine.err;
    machine.bench.run_for(std::chrono::seconds(2));
    EXPECT_EQ(machine.drive->drive().value(0x304001), 0);
    EXPECT_EQ(machine.drive->drive().value(0x30400E), 5) << "stopped";
    EXPECT_FALSE(std::filesystem::exists(machine.file));
}

}  // namespace
}  // namespace servo::cli
