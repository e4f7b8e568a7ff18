// The commands of the windows that store, reset and restart, and the objects of the serial port
// that they make permanent, as those windows write them.
#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::seconds;

constexpr std::uint32_t kRate = 0x2FE200;
constexpr std::uint32_t kStopBits = 0x65100E;
constexpr std::uint32_t kProtocol = 0x65100C;

class Service : public ::testing::Test {
  protected:
    static std::vector<Entry> entries() {
        std::vector<Entry> all = bench_entries();
        all.push_back({"2FE200", "Unsigned16", "RW"});
        all.push_back({"65100E", "Unsigned16", "RW"});
        all.push_back({"140001", "Unsigned32", "RW"});
        return all;
    }
    static Options options() {
        Options options;
        options.values = std::string(kBenchValues) +
                         "2FE200\t270\t45\t2160\ts\n"
                         "65100E\t8\t8\t9\ts\n"
                         "65100C\t1\t0\t1\ts\n"
                         "140001\t0x80000000\t\t\ts\n"
                         "641003\t10000\t256\t1000000\ts\n";
        return options;
    }
    void store() { ASSERT_TRUE(bench.write(0x2FF001, 1, 1)); }
    void restart() {
        ASSERT_TRUE(bench.write(0x2FFF00, static_cast<std::int32_t>(0xFFFFAA55), 2));
        bench.run(seconds(2));
    }

    DriveBench bench{options(), entries()};
};

TEST_F(Service, TheSerialPortIsToldInTheWindowsNumbers) {
    EXPECT_EQ(bench.read(kRate), 270U) << "38400";
    EXPECT_EQ(bench.read(kStopBits), 8U);
    EXPECT_EQ(bench.read(kProtocol), 1U);
    for (const int divider : {1080, 540, 270, 90})
        EXPECT_TRUE(bench.write(kRate, divider, 2)) << divider;
    for (const int bits : {8, 9})
        EXPECT_TRUE(bench.write(kStopBits, bits, 2)) << bits;
    for (const int protocol : {0, 1})
        EXPECT_TRUE(bench.write(kProtocol, protocol, 1)) << protocol;
}

TEST_F(Service, OtherNumbersOfTheSerialPortAreRefused) {
    EXPECT_FALSE(bench.write(kStopBits, 7, 2));
    EXPECT_FALSE(bench.write(kStopBits, 10, 2));
    EXPECT_FALSE(bench.write(kProtocol, 2, 1));
    EXPECT_FALSE(bench.write(kRate, 44, 2));
    EXPECT_FALSE(bench.write(kRate, 270, 4)) << "its length";
    EXPECT_EQ(bench.read(kStopBits), 8U);
}

TEST_F(Service, AnotherRateIsInForceAfterStoringAndRestart) {
    ASSERT_TRUE(bench.write(kRate, 90, 2));
    EXPECT_EQ(bench.drive().baud(), 38400U) << "not before";
    store();
    restart();
    EXPECT_EQ(bench.drive().baud(), 115200U);
}

TEST_F(Service, AnotherRateIsForgottenWithoutStoring) {
    ASSERT_TRUE(bench.write(kRate, 90, 2));
    restart();
    EXPECT_EQ(bench.drive().baud(), 38400U);
    EXPECT_EQ(bench.read(kRate), 270U);
}

TEST_F(Service, StopBitsAreKeptAndDoNotCutTheLine) {
    ASSERT_TRUE(bench.write(kStopBits, 9, 2));
    store();
    restart();
    EXPECT_EQ(bench.read(kStopBits), 9U);
}

TEST_F(Service, TheOtherProtocolCutsTheLineOnceStoredAndRestarted) {
    ASSERT_TRUE(bench.write(kProtocol, 0, 1));
    EXPECT_TRUE(bench.read(kRate));
    store();
    restart();
    EXPECT_FALSE(bench.read(kRate));
    EXPECT_FALSE(bench.drive().running());
}

TEST_F(Service, StoringControlParametersTakesCommunicationAlong) {
    ASSERT_TRUE(bench.write(0x140001, 0x201, 4));
    store();
    restart();
    EXPECT_EQ(bench.read(0x140001), 0x201U);
}

TEST_F(Service, StoringControlParametersLeavesTheMotors) {
    ASSERT_TRUE(bench.write(0x641003, 20000, 4));
    store();
    restart();
    EXPECT_EQ(bench.read(0x641003), 10000U);
}

TEST_F(Service, ResetLeavesTheLine) {
    ASSERT_TRUE(bench.write(kRate, 90, 2));
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    ASSERT_TRUE(bench.write(0x2FF001, 10, 1));
    EXPECT_EQ(bench.read(kRate), 90U);
    EXPECT_EQ(bench.read(0x200001), 200U);
}

}  // namespace
}  // namespace servo::sim::test
