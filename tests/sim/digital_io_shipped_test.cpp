// Inputs, outputs and the position table with the dictionary and the values that are shipped: as a
// user finds them.
#include <gtest/gtest.h>

#include <memory>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kReady = 0x01;  // outputs as they are assigned at the factory
constexpr int kError = 0x02;
constexpr int kReached = 0x04;
constexpr int kZeroSpeed = 0x08;
constexpr int kBrake = 0x10;

class ShippedInputs : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(store_.open_dat(SERVO_BIN_DIR));
        Options options;
        options.data = SERVO_BIN_DIR;
        drive_ = std::make_unique<Drive>(store_, options);
        run(milliseconds(50));
    }
    void run(microseconds time) {
        now_ += time;
        drive_->advance(now_);
    }
    void pin(int input, bool high) {
        drive_->set_pin(input - 1, high);
        run(milliseconds(5));  // the filter has 2
    }
    std::int64_t get(std::uint32_t key) {
        return drive_->value(static_cast<dictionary::Identity>(key)).value_or(-1);
    }
    void set(std::uint32_t key, std::int64_t value) {
        ASSERT_TRUE(drive_->set_value(static_cast<dictionary::Identity>(key), value)) << key;
    }
    void control(int word) { set(0x604000, word); }

    dictionary::Store store_;
    std::unique_ptr<Drive> drive_;
    microseconds now_{0};
};

TEST_F(ShippedInputs, NothingIsActiveUntilAPinIsMoved) {
    EXPECT_EQ(get(0x20100A), 0);
    EXPECT_EQ(get(0x60FD00), 0);
    EXPECT_EQ(get(0x606000), 1);
    EXPECT_EQ(get(0x2FFE00), 1);
    EXPECT_EQ(drive_->output_pins(), kReady | kZeroSpeed);
}

TEST_F(ShippedInputs, APinEnablesWithoutAnyBus) {
    pin(1, true);
    EXPECT_EQ(get(0x2FFE00), 4);
    run(milliseconds(50));
    EXPECT_EQ(drive_->output_pins() & (kReady | kBrake), kReady | kBrake);
    drive_->provoke_fault(0x0002);
    run(milliseconds(5));
    EXPECT_EQ(drive_->output_pins() & (kReady | kError), kError);
    pin(2, true);
    EXPECT_EQ(get(0x260100), 0);
    EXPECT_EQ(drive_->output_pins() & (kReady | kError), kReady);
}

TEST_F(ShippedInputs, AFilteredPulseOfTheLimitIsNotSeenALongerOneStopsTheAxis) {
    pin(1, true);
    set(0x607A00, 1'000'000);
    control(0x3F);
    run(milliseconds(500));
    drive_->pulse_pin(4, microseconds(1500));
    run(milliseconds(20));
    EXPECT_GT(get(0x606C00), 2'000'000);
    drive_->pulse_pin(4, milliseconds(10));
    run(milliseconds(300));
    EXPECT_NEAR(static_cast<double>(get(0x606C00)), 0.0, 3000.0);  // about 1 rpm
    EXPECT_EQ(drive_->output_pins() & kZeroSpeed, kZeroSpeed);
}

// A table written as its window writes it, started, steered and ended by pins.
TEST_F(ShippedInputs, ATableIsStartedByAnInput) {
    set(0x201006, 0x8C00);  // input 4: start and condition 0 together
    set(0x201009, 0x9008);  // input 7: abort
    set(0x20101E, 0x8001);  // output 6: the table runs
    set(0x310201, 20000);
    set(0x310301, 2'730'667);
    set(0x310401, 100);
    set(0x310501, 0x0101);
    set(0x310202, -5000);
    set(0x310302, 2'730'667);
    set(0x310502, 0x5200);  // relative, waits for condition 0
    pin(1, true);
    pin(4, true);
    EXPECT_EQ(get(0x311004), 1);
    pin(4, false);
    EXPECT_EQ(drive_->output_pins() & 0x20, 0x20);
    run(seconds(1));
    EXPECT_EQ(get(0x311001), 1);
    EXPECT_EQ(get(0x311004), 2);
    EXPECT_EQ(get(0x60FC00), 20000);
    pin(4, true);
    run(seconds(1));
    EXPECT_EQ(get(0x311004), 4);
    EXPECT_EQ(get(0x60FC00), 15000);
    EXPECT_NEAR(static_cast<double>(get(0x606300)), 15000.0, 10.0);
    EXPECT_EQ(drive_->output_pins() & (0x20 | kReached), kReached);
    pin(4, false);
    pin(4, true);
    pin(7, true);
    EXPECT_EQ(get(0x311004), 5);
}

TEST_F(ShippedInputs, AssignmentsAndTheTableAreStoredThePinsAreTheMachines) {
    set(0x201006, 0x8800);
    set(0x310201, 777);
    set(0x201001, 0x80);
    pin(7, true);
    now_ += milliseconds(10);
    drive_->receive(frame(127, {0x23, 0x10, 0x10, 0x01, 0x73, 0x61, 0x76, 0x65}), now_);
    run(milliseconds(100));
    drive_->power_cycle();
    run(seconds(2));
    EXPECT_EQ(get(0x201006), 0x8800);
    EXPECT_EQ(get(0x310201), 777);
    EXPECT_EQ(get(0x201001), 0);  // simulation ends with the power
    EXPECT_EQ(get(0x20100B), 0x40);
    EXPECT_EQ(get(0x60FD00), 0x00400004);
}

}  // namespace
}  // namespace servo::sim::test
