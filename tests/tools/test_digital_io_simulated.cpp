// The form beside the simulated drive, which reads the wire on its own, with the dictionary and the
// list that are shipped.
#include <gtest/gtest.h>

#include <memory>

#include "digital_io_bench.h"
#include "support/sim_bench.h"

namespace servo::tools::test {
namespace {

struct SimulatedIO : testing::Test, servo::test::VirtualBench {
    SimulatedIO() {
        dictionary.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        simulated = std::make_unique<servo::test::SimDriveOnLine>(time, line, dictionary, options);
        loaded = form.Form_Load(SERVO_BIN_DIR);
        open_link();
    }
    bool known() const {
        for (int row = 0; row < kPinlessRow; ++row)
            if (!form.data().rows[static_cast<std::size_t>(row)].fresh) return false;
        return form.data().column(IoSide::kOutput, IoColumn::kReal).fresh;
    }
    bool settled(int row) {
        return run_until(
            [this, row] { return !form.data().rows[static_cast<std::size_t>(row)].waiting; }, 10s);
    }
    std::int64_t value(link::Identity object) {
        return simulated->drive().value(object).value_or(-1);
    }

    dictionary::Store dictionary;
    std::unique_ptr<servo::test::SimDriveOnLine> simulated;
    base::Language language = base::Language::kEnglish;
    DigitalIO form{{engine, notice, language, [] {}}};
    bool loaded = false;
};

TEST_F(SimulatedIO, EveryRowAndColumnIsKnownSoon) {
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(run_until([this] { return known(); }, 10s));
}

TEST_F(SimulatedIO, AnAssignmentReachesTheDriveAndComesBack) {
    ASSERT_TRUE(run_until([this] { return known(); }, 10s));
    form.Command6_Click(5);
    ASSERT_TRUE(settled(5));
    form.Command1_Click(5);
    form.checkboxdin_Click(10);
    form.checkboxdin_Click(11);
    form.Command2_Click();
    ASSERT_TRUE(settled(5));
    EXPECT_EQ(value(0x201008), 0x0C00);
    EXPECT_EQ(form.Text1(5), "Din Pos Index0+Din Pos Index1");
}

TEST_F(SimulatedIO, PolarityAndClearingReachTheDrive) {
    ASSERT_TRUE(run_until([this] { return known(); }, 10s));
    const std::int64_t before = value(0x201002);
    form.Check1_Click(6);
    run_for(1s);
    EXPECT_EQ(value(0x201002), before ^ 0x40);
    EXPECT_EQ(form.data().box(6, IoColumn::kPolarity), ((before ^ 0x40) & 0x40) != 0);
    form.Command7_Click();
    form.Command8_Click();
    run_for(2s);
    for (int row = 0; row < kPinlessRow; ++row) {
        EXPECT_EQ(value(dictionary::identity_of(key_of_tag(tag_of(row)))), 0) << row;
        EXPECT_EQ(form.Text1(row), "") << row;
    }
}

}  // namespace
}  // namespace servo::tools::test
