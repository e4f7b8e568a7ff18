// Commands, masks and settings of the port beside the simulated drive, which reads the wire on its
// own, with the dictionary and the lists that are shipped.
#include <gtest/gtest.h>

#include <memory>

#include "support/sim_bench.h"
#include "support/virtual_bench.h"
#include "tools/errors.h"
#include "tools/init_save.h"
#include "tools/rs485.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;

class CommandsSimulated : public ::testing::Test, protected servo::test::VirtualBench {
  protected:
    CommandsSimulated() {
        dictionary.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        simulated = std::make_unique<servo::test::SimDriveOnLine>(time, line, dictionary, options);
        EXPECT_TRUE(rs485.load(SERVO_BIN_DIR));
        EXPECT_TRUE(engine.add_poll_window(rs485));
        open_link();
        run_for(2s);
    }
    std::int64_t value(link::Identity object) {
        return simulated->drive().value(object).value_or(-1);
    }
    // As the window does it: looks ten times a second, ends the lock.
    void let_go_by(std::chrono::milliseconds time_passed) {
        for (auto passed = 0ms; passed < time_passed; passed += 100ms) {
            run_for(100ms);
            init_save.look();
            if (init_save.locked() && init_save.lock_left() == 0ms) init_save.Timer1_Timer();
        }
    }

    dictionary::Store dictionary;
    std::unique_ptr<servo::test::SimDriveOnLine> simulated;
    base::Language language = base::Language::kEnglish;
    InitSave init_save{engine, language};
    Errors errors{engine, language};
    Rs485 rs485{engine, dictionary, language};
};

constexpr link::WireKey kGain = 0x60F90102;  // of the velocity loop
constexpr link::Identity kGainObject = 0x60F901;

TEST_F(CommandsSimulated, WhatIsStoredSurvivesARestartAndWhatIsNotDoesNot) {
    const std::int64_t before = value(kGainObject);
    engine.sendata2(kGain, static_cast<std::int32_t>(before + 5), 0);
    run_for(100ms);
    ASSERT_EQ(value(kGainObject), before + 5);
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kGainObject), before) << "not stored";
    engine.sendata2(kGain, static_cast<std::int32_t>(before + 5), 0);
    run_for(100ms);
    init_save.Command1_Click();
    let_go_by(3300ms);
    EXPECT_FALSE(init_save.locked());
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kGainObject), before + 5);
}

TEST_F(CommandsSimulated, AResetLastsWhenItIsStoredAsWell) {
    const std::int64_t factory = value(kGainObject);
    engine.sendata2(kGain, static_cast<std::int32_t>(factory + 5), 0);
    run_for(100ms);
    init_save.Command1_Click();
    let_go_by(3300ms);
    init_save.Command3_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kGainObject), factory);
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kGainObject), factory + 5) << "the memory still has the stored value";
    init_save.Command3_Click();
    let_go_by(3300ms);
    init_save.Command1_Click();
    let_go_by(3300ms);
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kGainObject), factory);
}

TEST_F(CommandsSimulated, MotorParametersAreStoredByTheirOwnCommand) {
    constexpr link::Identity kRated = 0x641008;
    const std::int64_t before = value(kRated);
    const auto write = [this, before] {
        engine.sendata2(0x64100802, static_cast<std::int32_t>(before + 1), 0);
        run_for(100ms);
    };
    write();
    ASSERT_EQ(value(kRated), before + 1);
    init_save.Command1_Click();
    let_go_by(3300ms);
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kRated), before) << "no control parameter";
    write();
    init_save.Command2_Click();
    let_go_by(3300ms);
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(value(kRated), before + 1);
}

TEST_F(CommandsSimulated, ARestartIsSeenToEndWhileTheLinkStaysOpen) {
    init_save.Command4_Click();
    let_go_by(1s);
    EXPECT_EQ(init_save.restart().phase(), RestartPhase::kSilent);
    let_go_by(2s);
    EXPECT_EQ(init_save.restart().phase(), RestartPhase::kBack);
    EXPECT_GE(init_save.restart().duration(), 1200ms) << "as long as this drive starts";
    EXPECT_LE(init_save.restart().duration(), 1500ms);
    EXPECT_TRUE(communication.link_open());
    EXPECT_TRUE(values.operands.o64100320.seen) << "read anew";
}

TEST_F(CommandsSimulated, AMaskedFaultIsIgnoredByTheDrive) {
    ASSERT_TRUE(run_until([this] { return errors.mask_known(1) && errors.mask_known(2); }, 10s));
    for (const int fault : {9, 27})
        if (!errors.Check1(fault)) errors.Check1_Click(fault);
    run_for(200ms);
    simulated->drive().provoke_fault(0x0200, 0x0800);
    run_for(2s);
    EXPECT_FALSE(errors.lamp(9));
    EXPECT_FALSE(errors.lamp(27));
    errors.Check1_Click(9);
    run_for(200ms);
    simulated->drive().provoke_fault(0x0200, 0x0800);
    run_for(2s);
    EXPECT_TRUE(errors.lamp(9));
    EXPECT_FALSE(errors.lamp(27));
    EXPECT_EQ(value(0x260504), 0x0800);
}

TEST_F(CommandsSimulated, EveryFaultBitOfTheDriveLightsItsLamp) {
    ASSERT_TRUE(run_until([this] { return errors.mask_known(1) && errors.mask_known(2); }, 10s));
    ASSERT_TRUE(errors.masked().empty());
    for (int fault = 0; fault < kFaultBits; ++fault) {
        simulated->drive().provoke_fault(word_of(fault) == 1 ? fault_mask(fault) : 0,
                                         word_of(fault) == 2 ? fault_mask(fault) : 0);
        EXPECT_TRUE(run_until([this, fault] { return errors.lamp(fault); }, 5s)) << fault;
    }
    EXPECT_EQ(errors.word_text(1), "FFFF");
    EXPECT_EQ(errors.word_text(2), "FFFF");
}

TEST_F(CommandsSimulated, TheShippedListFillsTheSerialPortsLists) {
    rs485.set_visible(true);
    ASSERT_TRUE(run_until([this] { return rs485.selection(2) == 1; }, 10s));
    EXPECT_EQ(rs485.selection(0), 2) << "38400";
    EXPECT_EQ(rs485.selection(1), 0);
    rs485.pick(1, 1);
    run_for(1s);
    EXPECT_EQ(value(0x65100E), 9);
    EXPECT_EQ(rs485.selection(1), 1);
}

TEST_F(CommandsSimulated, AStoredRateCountsFromTheRestartOn) {
    rs485.pick(0, 3);
    run_for(200ms);
    EXPECT_EQ(simulated->drive().baud(), 38400U);
    init_save.Command1_Click();
    let_go_by(3300ms);
    EXPECT_EQ(simulated->drive().baud(), 38400U) << "stored alone";
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(simulated->drive().baud(), 115200U);
}

TEST_F(CommandsSimulated, ARateThatIsNotStoredIsForgotten) {
    rs485.pick(0, 3);
    run_for(200ms);
    init_save.Command4_Click();
    let_go_by(3300ms);
    EXPECT_EQ(simulated->drive().baud(), 38400U);
    EXPECT_EQ(init_save.restart().phase(), RestartPhase::kBack);
}

}  // namespace
}  // namespace servo::tools
