// `record` on the simulated drive in virtual time, with the shipped dictionary: what the file holds
// is what the motor did.
#include <gtest/gtest.h>

#include "base/file.h"
#include "base/number.h"
#include "base/temp_folder.h"
#include "cli/engine_session.h"
#include "cli/run.h"
#include "support/sim_bench.h"
#include "support/virtual_bench.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

constexpr std::int32_t kHundredRpm = 273067;  // at 10000 counts a turn

class SimMachine final : public Environment {
  public:
    std::vector<link::PortDirectory::Entry> ports(const Options&) override { return {}; }
    OpenedLink open_link(const Options& options) override {
        OpenedLink link;
        if (session.open("COM1", options.baud, options.id) != link::OpenResult::kOpened)
            return link;
        link.session = &session;
        link.engine = &bench.engine;
        if (on_open) on_open();
        return link;
    }

    int record(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--data", SERVO_BIN_DIR, "record", file.string()});
        const ParsedLine line = parse_command_line(std::move(arguments));
        if (!line.options) return -1;
        const Output output{[this](std::string_view text) { out += text; },
                            [this](std::string_view text) { err += text; }};
        return static_cast<int>(run_command(*line.options, *this, output));
    }

    // Sample lines of the file, by channel.
    std::vector<std::array<std::int32_t, 4>> rows() const {
        const std::string text = base::read_file(file).value_or("");
        base::LineReader reader(text);
        std::vector<std::array<std::int32_t, 4>> all;
        for (int line = 0; const auto view = reader.next(); ++line) {
            if (line < 6) continue;
            std::string_view rest = *view;
            std::array<std::int32_t, 4> row{};
            for (std::int32_t& value : row) {
                value = static_cast<std::int32_t>(base::leading_number(rest));
                rest.remove_prefix(std::min(rest.find(',') + 1, rest.size()));
            }
            all.push_back(row);
        }
        return all;
    }

    // Speed mode, at rest and powered.
    void enable() {
        session.write(0x60600001, 3, 1s);
        session.write(0x60FF0004, 0, 1s);
        for (const int word : {6, 7, 15})
            session.write(0x60400002, word, 1s);
    }

    static dictionary::Store shipped() {
        dictionary::Store store;
        EXPECT_TRUE(store.open_dat(SERVO_BIN_DIR));
        return store;
    }
    static sim::Options options() {
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        return options;
    }

    TempFolder folder;
    std::filesystem::path file = folder / "out.scope";
    dictionary::Store store = shipped();
    test::VirtualBench bench;
    test::SimDriveOnLine drive{bench.time, bench.line, store, options()};
    std::function<void()> on_open;
    EngineSession session{bench.engine, [this] {
                              bench.run_for(3ms);
                              return true;
                          }};
    std::string out;
    std::string err;
};

TEST(RecordSimulated, ConstantsStandInEverySampleInTheOrderAskedFor) {
    SimMachine machine;
    machine.drive.drive().set_value(0x607A00, -123456789);
    machine.drive.drive().set_value(0x604000, 0x1234);
    machine.drive.drive().set_value(0x608100, 0x7FEDCBA9);
    machine.drive.drive().set_value(0x606000, -3);
    ASSERT_EQ(machine.record({"--objects", "604000,607A00,608100,606000", "--samples", "700"}), 0)
        << machine.err;
    EXPECT_EQ(machine.out, "700\n");
    const auto rows = machine.rows();
    ASSERT_EQ(rows.size(), 700U);
    for (const auto& row : rows)
        ASSERT_EQ(row, (std::array<std::int32_t, 4>{0x1234, -123456789, 0x7FEDCBA9, -3}));
}

TEST(RecordSimulated, SpeedPassesTheLevelAtTheOffset) {
    SimMachine machine;
    machine.on_open = [&] {
        machine.enable();
        machine.bench.time.after(
            2s, [&] { machine.drive.drive().set_value(0x60FF00, 2 * kHundredRpm); });
    };
    ASSERT_EQ(machine.record({"--objects", "60F916,60F60C", "--samples", "400", "--trigger",
                              "60F916", "--level", "100", "--edge", "1", "--offset", "60"}),
              0)
        << machine.err;
    const auto rows = machine.rows();
    ASSERT_EQ(rows.size(), 400U);
    EXPECT_LT(rows[59][0], kHundredRpm);
    EXPECT_GE(rows[60][0], kHundredRpm);
    EXPECT_NE(machine.err.find("waiting for the trigger"), std::string::npos);
    EXPECT_EQ(machine.drive.drive().value(0x230007), 0);
}

TEST(RecordSimulated, FallingEdgeWaitsForTheWayDown) {
    SimMachine machine;
    machine.on_open = [&] {
        machine.enable();
        machine.drive.drive().set_value(0x60FF00, 2 * kHundredRpm);
        machine.bench.time.after(3s, [&] { machine.drive.drive().set_value(0x60FF00, 0); });
    };
    ASSERT_EQ(machine.record({"--objects", "60F916", "--samples", "200", "--trigger", "60F916",
                              "--level", "100", "--edge", "0", "--offset", "20"}),
              0)
        << machine.err;
    const auto rows = machine.rows();
    EXPECT_GT(rows.at(19)[0], kHundredRpm);
    EXPECT_LE(rows.at(20)[0], kHundredRpm);
}

TEST(RecordSimulated, EightThousandOneHundredNinetyTwoSamplesFillTheBuffer) {
    SimMachine machine;
    machine.drive.drive().set_value(0x606000, -3);
    ASSERT_EQ(machine.record({"--objects", "606000", "--samples", "8192"}), 0) << machine.err;
    const auto rows = machine.rows();
    ASSERT_EQ(rows.size(), 8192U);
    for (const auto& row : rows)
        ASSERT_EQ(row[0], -3);
}

// The drive itself says no; nothing here knows its reasons.
TEST(RecordSimulated, ObjectThatCannotBeReadIsRefusedAtTheStart) {
    SimMachine machine;
    ASSERT_EQ(machine.record({"--objects", "2FFF00", "--samples", "10"}), 1) << machine.out;
    EXPECT_NE(machine.err.find("the drive refuses the start of the recorder"), std::string::npos)
        << machine.err;
    EXPECT_FALSE(std::filesystem::exists(machine.file));
}

}  // namespace
}  // namespace servo::cli
