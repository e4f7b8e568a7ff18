// Digital inputs from the pin to the function, and the lines that move pins.
#include <gtest/gtest.h>

#include <array>

#include "sim/input_lines.h"
#include "sim/io_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using F = InputFunction;

constexpr std::array<std::uint16_t, 34> kCodes{
    0x0001, 0x0002, 0x0004, 0x0008, 0x0010, 0x0020, 0x0040, 0x0080, 0x0100, 0x0200, 0x0400, 0x0800,
    0x1000, 0x2000, 0x4000, 0x8001, 0x8002, 0x8004, 0x8008, 0x8010, 0x8020, 0x8040, 0x8080, 0x8100,
    0x8200, 0x8400, 0x8800, 0x9001, 0x9002, 0x9004, 0x9008, 0x9010, 0x9020, 0x9040};

// The table of the rule, written down a second time: groups by their first code.
bool expected(unsigned value, unsigned code) {
    const unsigned group = code < 0x8000 ? 0x0001 : code & 0xF000;
    const unsigned highest = group == 1 ? 0x8000 : group | 0xFFF;
    const unsigned lowest = group == 1 ? 0 : group == 0x8000 ? 0x8001 : 0x9000;
    if (value < lowest || value > highest) return false;
    return (value & (value >= 0x8001 ? 0xFFFU : 0x7FFFU) & code) != 0;
}

TEST(InputFunctions, EveryValueNamesTheFunctionsOfItsGroup) {
    for (unsigned value = 0; value <= 0xFFFF; ++value) {
        for (const std::uint16_t code : kCodes) {
            ASSERT_EQ(names_function(static_cast<std::uint16_t>(value), code),
                      expected(value, code))
                << value << " " << code;
        }
    }
}

TEST(InputFunctions, TheValue8000NamesNothingAnd8001TheFirstOfTheSecondGroup) {
    for (const std::uint16_t code : kCodes) {
        EXPECT_FALSE(names_function(0x8000, code));
        EXPECT_EQ(names_function(0x8001, code), code == 0x8001);
    }
}

TEST(Inputs, LevelPolarityAndSimulationMakeTheState) {
    for (const bool level : {false, true}) {
        for (const bool active_high : {false, true}) {
            for (const bool simulated : {false, true}) {
                for (int input = 1; input <= 8; ++input) {
                    IoBench bench;
                    const std::int64_t mask = 1 << (input - 1);
                    bench.set(0x201002, active_high ? 0xFF : 0xFF & ~mask);
                    bench.set(0x201001, simulated ? mask : 0);
                    bench.pin(input, level);
                    const bool on = simulated || level == active_high;
                    EXPECT_EQ(bench.get(0x20100A), on ? mask : 0) << input;
                    EXPECT_EQ(bench.get(0x20100B), level ? mask : 0) << input;
                }
            }
        }
    }
}

TEST(Inputs, OverTheLineTheyReadAsTwoWords) {
    IoBench bench;
    bench.pin(1, true);
    bench.pin(8, true);
    EXPECT_TRUE(bench.write(0x201001, 0x02, 2));
    EXPECT_EQ(bench.read(0x20100A), 0x83U);
    EXPECT_EQ(bench.read(0x20100B), 0x81U);
    EXPECT_FALSE(bench.write(0x20100A, 0, 2));
}

TEST(Inputs, AnActiveLowPinIsActiveFromTheStart) {
    Options options;
    options.values = "key\tdefault\tmin\tmax\tflags\n201002\t0xFE\t\t\ts\n201003\t0x0008\t\t\ts\n";
    IoBench bench(options);
    EXPECT_EQ(bench.get(0x20100A), 0x01);
}

TEST(Inputs, StandardOrderShowsSwitchesAndStates) {
    IoBench bench;
    bench.assign(2, F::kNegativeLimit);
    bench.assign(3, F::kPositiveLimit);
    bench.assign(4, F::kHomeSignal);
    EXPECT_EQ(bench.get(0x60FD00), 0);
    bench.pin(2, true);
    EXPECT_EQ(bench.get(0x60FD00), 0x00020001);
    bench.pin(2, false);
    bench.pin(3, true);
    EXPECT_EQ(bench.get(0x60FD00), 0x00040002);
    bench.pin(4, true);
    EXPECT_EQ(bench.get(0x60FD00), 0x000C0006);
}

TEST(Inputs, AFunctionIsActiveWhileAnyOfItsPinsIs) {
    IoBench bench;
    bench.assign(2, F::kHomeSignal);
    bench.assign_value(5, 0x0041);
    bench.pin(2, true);
    bench.pin(5, true);
    bench.pin(2, false);
    EXPECT_EQ(bench.get(0x60FD00) & 4, 4);
    bench.pin(5, false);
    EXPECT_EQ(bench.get(0x60FD00) & 4, 0);
}

TEST(InputFilter, ALevelCountsWhenItHasLasted) {
    IoBench bench;
    bench.set(0x20100C, 20);  // 2 ms: 32 steps
    bench.drive().set_pin(2, true);
    // The step that sees it, and 32 more.
    bench.run(microseconds(2000));
    EXPECT_EQ(bench.get(0x20100A), 0);
    EXPECT_EQ(bench.get(0x20100B), 4);
    bench.run(microseconds(63));
    EXPECT_EQ(bench.get(0x20100A), 4);
}

TEST(InputFilter, ABounceBeginsTheTimeAnew) {
    IoBench bench;
    bench.set(0x20100C, 50);
    for (int i = 0; i < 20; ++i) {
        bench.drive().set_pin(0, i % 2 == 0);
        bench.run(milliseconds(4));
        EXPECT_EQ(bench.get(0x20100A), 0);
    }
    bench.drive().set_pin(0, true);
    bench.run(milliseconds(6));
    EXPECT_EQ(bench.get(0x20100A), 1);
}

TEST(InputFilter, ANewLevelAtPowerUpCountsAtOnce) {
    Options options;
    options.pins = 0x05;
    options.values = "key\tdefault\tmin\tmax\tflags\n20100C\t1000\t\t\ts\n";
    IoBench bench(options);
    EXPECT_EQ(bench.get(0x20100A), 0x05);
}

TEST(InputPulse, HasTheOtherLevelForItsTime) {
    IoBench bench;
    bench.pin(6, true);
    bench.drive().pulse_pin(5, milliseconds(50));
    bench.run(milliseconds(49));
    EXPECT_EQ(bench.get(0x20100B), 0);
    bench.run(milliseconds(2));
    EXPECT_EQ(bench.get(0x20100B), 0x20);
}

TEST(InputPulse, ASecondOneMakesItLongerAndALevelEndsIt) {
    IoBench bench;
    bench.drive().pulse_pin(0, milliseconds(50));
    bench.run(milliseconds(40));
    bench.drive().pulse_pin(0, milliseconds(50));
    bench.run(milliseconds(40));
    EXPECT_EQ(bench.get(0x20100B), 1);
    bench.drive().set_pin(0, true);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.get(0x20100B), 1);
}

TEST(InputPulse, OfADriveAtRestDoesNotDependOnHowTimeIsCut) {
    const auto count = [](milliseconds piece) {
        IoBench bench;
        bench.set(0x20100C, 100);
        for (int i = 0; i < 5; ++i) {
            bench.drive().pulse_pin(0, milliseconds(20 - 3 * i));
            for (milliseconds t{0}; t < milliseconds(60); t += piece)
                bench.run(piece);
        }
        return bench.get(0x201201);
    };
    EXPECT_EQ(count(milliseconds(1)), 4);  // 20, 17, 14 and 11 ms get through the filter of 10
    EXPECT_EQ(count(milliseconds(60)), 4);
}

TEST(InputCounters, CountActiveEdgesOfTheFirstFour) {
    IoBench bench;
    for (int i = 0; i < 3; ++i)
        bench.pulse(2);
    bench.pulse(7);
    EXPECT_EQ(bench.get(0x201202), 3);
    EXPECT_EQ(bench.get(0x201201), 0);
    EXPECT_EQ(bench.get(0x201205), 7);
    bench.set(0x201202, 0);
    bench.pulse(2);
    EXPECT_EQ(bench.get(0x201202), 1);
}

TEST(Inputs, PinsThatAreNoneDoNothing) {
    IoBench bench;
    bench.drive().set_pin(-1, true);
    bench.drive().set_pin(8, true);
    bench.drive().pulse_pin(99, milliseconds(1));
    bench.run(milliseconds(5));
    EXPECT_EQ(bench.get(0x20100B), 0);
}

// The machine's switches reach the pins through the functions that these carry.
TEST(Inputs, AFunctionCanBeDrivenWhateverItsPolarity) {
    dictionary::Store store;
    store.load(dictionary_file({}));
    ObjectTable table(store, {});
    DigitalInputs inputs(table);
    table.bind(0x201003, Type::kUint16).value = 0x0040;
    table.bind(0x201004, Type::kUint16).value = 0x0040;
    table.bind(0x201005, Type::kUint16).value = 0x0010;
    table.bind(0x201002, Type::kUint16).value = 0xFD;
    inputs.power_up(0);
    EXPECT_EQ(inputs.pins_with(F::kHomeSignal), 0x03);
    EXPECT_TRUE(inputs.assigned(F::kPositiveLimit));
    EXPECT_FALSE(inputs.assigned(F::kNegativeLimit));
    inputs.drive_function(F::kHomeSignal, true);
    EXPECT_EQ(inputs.pins(), 0x01);
    EXPECT_TRUE(inputs.look(1));
    EXPECT_TRUE(inputs.active(F::kHomeSignal));
    inputs.drive_function(F::kHomeSignal, false);
    EXPECT_EQ(inputs.pins(), 0x02);
    EXPECT_TRUE(inputs.look(2));
    EXPECT_FALSE(inputs.active(F::kHomeSignal));
    EXPECT_TRUE(inputs.falls(F::kHomeSignal));
    EXPECT_FALSE(inputs.look(3));
}

TEST(InputLines, MovePinsOfTheDrive) {
    IoBench bench;
    EXPECT_TRUE(obey_line(bench.drive(), "din 3 1").good);
    EXPECT_EQ(bench.drive().input_pins(), 0x04);
    EXPECT_TRUE(obey_line(bench.drive(), "  din\t3   0 \r").good);
    EXPECT_EQ(bench.drive().input_pins(), 0x00);
    EXPECT_TRUE(obey_line(bench.drive(), "din 10000101").good);
    EXPECT_EQ(bench.drive().input_pins(), 0x85);
    EXPECT_TRUE(obey_line(bench.drive(), "din 5 pulse 50").good);
    bench.run(milliseconds(10));
    EXPECT_EQ(bench.get(0x20100B), 0x95);
    bench.run(milliseconds(50));
    EXPECT_EQ(bench.get(0x20100B), 0x85);
    EXPECT_EQ(obey_line(bench.drive(), "din").text, "inputs 10000101, outputs 0000000");
    EXPECT_NE(obey_line(bench.drive(), "help").text.find("pulse"), std::string::npos);
    EXPECT_TRUE(obey_line(bench.drive(), "").text.empty());
    EXPECT_TRUE(obey_line(bench.drive(), "# din 1 1").good);
    EXPECT_EQ(bench.drive().input_pins(), 0x85);
}

TEST(InputLines, WhatIsWrongIsSaidAndDoesNothing) {
    IoBench bench;
    for (const char* line : {"din 0 1", "din 9 1", "din x 1", "din 1 2", "din 1 pulse", "din 1 on",
                             "din 1 pulse 0", "din 1 pulse 3600001", "din 1 pulse 5 5", "din 0101",
                             "din 0000000x", "dout 1 1", "DIN 1 1", "help me", "din 1 1 1"}) {
        const LineAnswer answer = obey_line(bench.drive(), line);
        EXPECT_FALSE(answer.good) << line;
        EXPECT_FALSE(answer.text.empty()) << line;
    }
    bench.run(milliseconds(10));
    EXPECT_EQ(bench.get(0x20100B), 0);
}

TEST(InputLines, AreCutFromWhateverPiecesComeIn) {
    LineCutter cutter;
    cutter.put("din 1");
    EXPECT_FALSE(cutter.next());
    cutter.put(" 1\ndin 2 1\n\ndi");
    EXPECT_EQ(cutter.next(), "din 1 1");
    EXPECT_EQ(cutter.next(), "din 2 1");
    EXPECT_EQ(cutter.next(), "");
    EXPECT_FALSE(cutter.next());
    cutter.put(std::string(5000, 'x'));
    EXPECT_FALSE(cutter.next());
    cutter.put("din 3 1\nhelp\n");
    EXPECT_EQ(cutter.next(), "a line that is too long");
    EXPECT_EQ(cutter.next(), "help");
}

TEST(InputLines, LevelsHaveInputEightFirst) {
    EXPECT_EQ(parse_pins("10000000"), 0x80);
    EXPECT_EQ(parse_pins("00000001"), 0x01);
    EXPECT_FALSE(parse_pins("0000001"));
    EXPECT_FALSE(parse_pins("000000011"));
    EXPECT_FALSE(parse_pins("0000000a"));
    EXPECT_FALSE(parse_pins(""));
}

}  // namespace
}  // namespace servo::sim::test
