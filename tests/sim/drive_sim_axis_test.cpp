// The axis that the simulated drive's program is given: its switches act and homing finds them.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "sim/drive_sim_process.h"
#include "sim/homing_bench.h"

namespace servo::sim::test {
namespace {

using Clock = std::chrono::steady_clock;

// With what homing needs in its dictionary: input 5 is the positive limit, 6 the negative one, 7
// the home switch.
class DriveSimOnAnAxis : public DriveSim {
  protected:
    DriveSimOnAnAxis() {
        std::ofstream(folder_ / "Servo.dat", std::ios::binary)
            << dictionary_file(homing::homing_entries());
        std::ofstream(folder_ / "sim" / "values.tsv") << homing::on_axis({}).values;
    }

    void write(std::uint32_t key, std::uint16_t value, std::uint8_t command) {
        const Bytes answer =
            ask({command, static_cast<std::uint8_t>(key >> 8U),
                 static_cast<std::uint8_t>(key >> 16U), static_cast<std::uint8_t>(key),
                 static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8U), 0, 0});
        ASSERT_EQ(answer.size(), 10U);
        ASSERT_EQ(answer[1], 0x60) << std::hex << key;
    }

    std::int32_t read(std::uint32_t key) {
        const Bytes a =
            ask({0x40, static_cast<std::uint8_t>(key >> 8U), static_cast<std::uint8_t>(key >> 16U),
                 static_cast<std::uint8_t>(key)});
        if (a.size() != 10 || a[1] == 0x80) return -1;
        return static_cast<std::int32_t>(a[5] | a[6] << 8 | a[7] << 16 |
                                         static_cast<std::uint32_t>(a[8]) << 24);
    }

    // Runs a homing method to its end; the status word then, 0 when there was none in time.
    int home(std::uint8_t method) {
        write(0x606000, 6, 0x2F);
        write(0x609800, method, 0x2F);
        for (const std::uint16_t word : {0x06, 0x07, 0x0F, 0x1F})
            write(0x604000, word, 0x2B);
        const auto end = Clock::now() + std::chrono::seconds(30);
        while (Clock::now() < end) {
            const int status = read(0x604100);
            if ((status & 0x3400) != 0 && read(0x215006) != 1) return status;
        }
        return 0;
    }
};

TEST_F(DriveSimOnAnAxis, SwitchesThatItStandsOnAreClosedFromTheStart) {
    start({"--axis", "neg=-1.5,pos=-0.5,home=-0.25:0.25"});
    type_in("din\n");
    EXPECT_EQ(line(), "inputs 01010000, outputs 0000000");
}

TEST_F(DriveSimOnAnAxis, WithoutAnAxisNoSwitchIsClosed) {
    start({});
    type_in("din\n");
    EXPECT_EQ(line(), "inputs 00000000, outputs 0000000");
}

TEST_F(DriveSimOnAnAxis, HomingFindsTheSwitchWhereTheOptionPutsIt) {
    start({"--axis", "neg=-9,pos=3.4,stop=12", "--speed", "20"});
    open_line();
    const int status = home(18);
    EXPECT_EQ(status & 0x3000, 0x1000) << "homed, and no error";
    EXPECT_EQ(read(0x212005), 3) << "whole turns";
    EXPECT_NEAR(read(0x212004), 4000, 50) << "and counts of the next";
}

TEST_F(DriveSimOnAnAxis, TheAxisEndsAtItsStop) {
    start({"--axis", "stop=2.5", "--speed", "20"});
    open_line();
    const int status = home(18);
    EXPECT_EQ(status & 0x3000, 0x2000) << "no switch comes, and the stop holds it";
    EXPECT_LE(read(0x212005), 2);
}

TEST_F(DriveSimOnAnAxis, AnotherTextIsRefused) {
    for (const char* axis : {"''", "long", "neg=5,pos=3", "stop=inf"}) {
        EXPECT_EQ(exit_status("--data " + folder_.string() + " --axis " + axis), 2) << axis;
    }
}

}  // namespace
}  // namespace servo::sim::test
