// The shipped template against the simulated drive, which reads the wire on its own.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <set>
#include <sstream>

#include "configuration_bench.h"
#include "support/sim_bench.h"

namespace servo::tools::test {
namespace {

struct Simulated : ConfigurationForm {
    explicit Simulated(sim::LineFaults faults = {}) {
        store.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        options.faults = std::move(faults);
        drive = std::make_unique<servo::test::SimDriveOnLine>(time, line, store, options);
        open_link();
        run_until([this] { return values.operands.o64100320.seen; }, 10s);
        form.load_template(std::filesystem::path(SERVO_BIN_DIR) / kTemplateName);
    }
    void read() {
        form.Command7_Click();
        ASSERT_TRUE(finish(200s));
        unlock();
    }
    void export_to(const char* name) {
        answers = {folder / name};
        form.Command6_Click();
    }
    void write(const char* name) {
        ASSERT_TRUE(form.load_source(folder / name));
        form.Command2_Click();
        ASSERT_TRUE(finish(200s));
        unlock();
    }
    std::unique_ptr<servo::test::SimDriveOnLine> drive;
};

// Flags of the simulated drive's table: the drive keeps what has an `s`.
std::set<link::Identity> stored_objects() {
    std::set<link::Identity> stored;
    std::ifstream in(SERVO_SOURCE_DIR "/data/sim/values.tsv");
    for (std::string text; std::getline(in, text);) {
        const std::string flags = text.substr(text.rfind('\t') + 1);
        if (flags.find('s') != std::string::npos && text.size() > 6 && text[6] == '\t')
            stored.insert(static_cast<link::Identity>(std::stol(text.substr(0, 6), nullptr, 16)));
    }
    return stored;
}

TEST(ShippedTemplate, ListsEveryParameterThatIsKeptAndCanBeWritten) {
    Simulated bench;
    std::set<link::Identity> listed;
    for (const DriverRow& row : bench.form.data().driver) {
        const auto key = row_key(row.Index);
        ASSERT_TRUE(key) << row.Index;
        const link::Identity object = dictionary::identity_of(*key);
        EXPECT_TRUE(listed.insert(object).second) << row.Index << " is listed twice";
        const auto record = bench.store.get_record(object);
        EXPECT_EQ(record.key, object) << row.Index;
        EXPECT_EQ(dictionary::decoder_size(dictionary::strip_blanks(record.type)) % 10,
                  static_cast<int>(*key & 0xFF))
            << row.Index;
        EXPECT_NE(record.attr.find('W'), std::string::npos) << row.Index;
    }
    std::set<link::Identity> kept;
    for (const link::Identity object : stored_objects()) {
        const auto record = bench.store.get_record(object);
        if (record.attr.find('W') != std::string::npos &&
            dictionary::decoder_size(dictionary::strip_blanks(record.type)) != 0)
            kept.insert(object);
    }
    EXPECT_EQ(listed, kept);
    EXPECT_GT(listed.size(), 600U);
}

TEST(ShippedTemplate, HoldsNoCommandAndNothingThatMovesTheMotor) {
    Simulated bench;
    for (const DriverRow& row : bench.form.data().driver) {
        const link::Identity object = dictionary::identity_of(*row_key(row.Index));
        const int index = object >> 8;
        EXPECT_FALSE(index == 0x1010 || index == 0x1011 || index == 0x2FF0 || index == 0x2FFF)
            << row.Index << " stores, resets or restarts";
        for (const link::Identity moving :
             {0x604000, 0x607A00, 0x60FF00, 0x607100, 0x60F608, 0x206001, 0x304001, 0x311003,
              0x230007, 0x201001, 0x20100D, 0x60FE01})
            EXPECT_NE(object, moving);
    }
}

TEST(ShippedTemplate, IsReadWholeAndWrittenBackWhole) {
    Simulated bench;
    bench.read();
    EXPECT_EQ(bench.form.Label8(), "Finished! Fail:0");
    bench.export_to("all.cdi");
    bench.write("all.cdi");
    EXPECT_EQ(bench.form.Label2(), "Finished! Fail:0");
    bench.form.compare_with_drive();
    ASSERT_TRUE(bench.finish(200s));
    const auto& found = std::get<ComparisonFinding>(*bench.form.finding()).comparison;
    for (const ComparedRow& row : found.rows)
        ADD_FAILURE() << row.Index << " " << row.name_en << ": " << row.A.raw << " " << row.B.raw;
    EXPECT_EQ(found.equal, bench.form.data().driver.size());
}

TEST(ShippedTemplate, ChangesComeBackExactlyAndNothingElse) {
    Simulated bench;
    bench.read();
    bench.export_to("before.cdi");
    // Another drive, with other values.
    Simulated other;
    const std::map<std::string, std::string> changes{
        {"60FB0110", "1234"}, {"60F90110", "321"}, {"60830020", "500000"}, {"2FF70020", "42"}};
    std::string text;
    std::istringstream in(bench.folder.get("before.cdi"));
    for (std::string line; std::getline(in, line);) {
        const std::string key = line.substr(0, 8);
        const auto found = changes.find(key);
        text += found == changes.end() ? line + "\n" : key + "," + found->second + ",True\r\n";
    }
    other.folder.put("changed.cdi", text);
    other.write("changed.cdi");
    EXPECT_EQ(other.form.Label2(), "Finished! Fail:0");
    other.read();
    other.answers = {bench.folder / "before.cdi"};
    other.form.compare_with_file(ConfigurationSide::kRead);
    const auto& found = std::get<ComparisonFinding>(*other.form.finding()).comparison;
    std::map<std::string, std::string> seen;
    for (const ComparedRow& row : found.rows)
        seen[row.Index] = row.A.raw;
    EXPECT_EQ(seen, changes);
}

TEST(ShippedTemplate, OnALineWithFaultsToo) {
    sim::LineFaults faults;
    faults.drop = 0.05;
    faults.corrupt = 0.05;
    Simulated bench(faults);
    bench.read();
    EXPECT_EQ(bench.form.Label8(), "Finished! Fail:0");
    for (const DriverRow& row : bench.form.data().driver) {
        const auto key = *row_key(row.Index);
        const auto value = bench.drive->drive().value(dictionary::identity_of(key));
        ASSERT_TRUE(value) << row.Index;
        const std::uint32_t mask = (key & 0xFF) == 4 ? 0xFFFFFFFFU : (1U << (8 * (key & 0xFF))) - 1;
        EXPECT_EQ(row.Driver_Value, std::to_string(static_cast<std::uint32_t>(*value) & mask))
            << row.Index;
    }
}

}  // namespace
}  // namespace servo::tools::test
