// `scan` on the simulated drive in virtual time, with the shipped data.
#include <gtest/gtest.h>

#include <memory>

#include "base/file.h"
#include "base/temp_folder.h"
#include "cli/engine_session.h"
#include "cli/run.h"
#include "support/sim_bench.h"
#include "support/virtual_bench.h"
#include "tuner/analysis.h"
#include "tuner/bode_file.h"

namespace servo::cli {
namespace {

class SimMachine final : public Environment {
  public:
    explicit SimMachine(std::uint16_t fault = 0) {
        store.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        options.fault1 = fault;
        drive = std::make_unique<test::SimDriveOnLine>(bench.time, bench.line, store, options);
    }
    std::vector<link::PortDirectory::Entry> ports(const Options&) override { return {}; }
    OpenedLink open_link(const Options& options) override {
        OpenedLink link;
        if (session.open("COM1", options.baud, options.id) != link::OpenResult::kOpened)
            return link;
        link.session = &session;
        link.engine = &bench.engine;
        return link;
    }
    int scan() {
        const ParsedLine line =
            parse_command_line({"scan", file.string(), "--start", "100", "--stop", "200", "--step",
                                "20", "--current", "100"});
        if (!line.options) return -1;
        const Output output{[this](std::string_view text) { out += text; },
                            [this](std::string_view text) { err += text; }};
        return static_cast<int>(run_command(*line.options, *this, output));
    }

    TempFolder folder;
    std::filesystem::path file = folder / "out.bode";
    dictionary::Store store;
    test::VirtualBench bench;
    std::unique_ptr<test::SimDriveOnLine> drive;
    bool interrupted = false;
    std::function<bool()> ctrl_c = [] { return false; };
    EngineSession session{bench.engine, [this] {
                              bench.run_for(std::chrono::milliseconds(3));
                              interrupted = interrupted || ctrl_c();
                              return !interrupted;
                          }};
    std::string out;
    std::string err;
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
    machine.ctrl_c = [&] { return machine.err.find("The drive measures") != std::string::npos; };
    EXPECT_EQ(machine.scan(), 1);
    EXPECT_EQ(machine.err.find("may still move"), std::string::npos) << machine.err;
    machine.bench.run_for(std::chrono::seconds(2));
    EXPECT_EQ(machine.drive->drive().value(0x304001), 0);
    EXPECT_EQ(machine.drive->drive().value(0x30400E), 5) << "stopped";
    EXPECT_FALSE(std::filesystem::exists(machine.file));
}

}  // namespace
}  // namespace servo::cli
