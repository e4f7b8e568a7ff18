// How a homing run begins, and what ends it.
#include "sim/homing_runs.h"

namespace servo::sim::test {
namespace {

TEST(HomingStart, ANumberThatIsNoMethodFails) {
    for (const int method : {0, 15, 16, 31, 32, 36, -1, -19}) {
        HomingBench bench(usual());
        bench.begin(method);
        EXPECT_EQ(bits(bench), kReached | kError) << method;
        EXPECT_EQ(bench.value(0x215006), 3) << method;
        bench.set(0x609800, 35);
        bench.control(0x0F);
        bench.control(0x1F);
        EXPECT_EQ(bits(bench), kReached | kAttained) << method << ": the next run is a new one";
    }
}

TEST(HomingStart, OnlyInItsModeAndEnabled) {
    HomingBench bench(usual());
    bench.set(0x609800, 17);
    bench.control(0x1F);
    EXPECT_EQ(bench.value(0x215006), 0);
    bench.enable(1);
    bench.control(0x1F);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.value(0x215006), 0);
}

TEST(HomingStart, ASecondEdgeDoesNotBeginAnew) {
    HomingBench bench(usual());
    bench.set(0x201003, 0x2000);  // input 1 starts homing
    bench.begin(17);
    bench.run(seconds(4));
    const double place = bench.place();
    bench.drive().set_pin(0, true);
    bench.run(milliseconds(500));
    EXPECT_EQ(bench.value(0x215006), 1);
    EXPECT_LT(bench.place(), place - 1.0);
    EXPECT_NEAR(bench.finish().home, -20.0, 2.0 / kTurn);
}

TEST(HomingStart, ByAnInput) {
    HomingBench bench(usual());
    bench.set(0x201003, 0x2000);
    bench.set(0x609800, 24);
    bench.enable(6);
    bench.drive().set_pin(0, true);
    bench.run(milliseconds(100));
    EXPECT_EQ(bench.value(0x215006), 1);
    bench.drive().set_pin(0, false);
    EXPECT_NEAR(bench.finish().home, 3.3, 2.0 / kTurn);
}

TEST(HomingStart, ByItselfAtTheFirstEnabling) {
    HomingBench bench(usual());
    bench.set(0x215001, 1);
    bench.set(0x609800, 24);
    bench.enable(1);
    bench.run(seconds(1));
    EXPECT_EQ(bench.value(0x215006), 0) << "the drive looks at power-up";

    Options options = on_axis(usual());
    options.values += "215001\t1\t\t\ts\n";
    options.settings.push_back({0x609800, "24"});
    DriveBench powered(options, homing_entries());
    Drive& drive = powered.drive();
    drive.set_value(0x304001, 14);
    powered.run(milliseconds(500));
    EXPECT_EQ(drive.value(0x304001), 14) << "power for a scan is not meant";
    drive.set_value(0x304001, 0);
    powered.run(seconds(1));
    powered.enable(1);
    powered.run(milliseconds(100));
    EXPECT_EQ(drive.value(0x215006), 1);
    // A target has to wait for another time.
    drive.set_value(0x607A00, 1000000);
    powered.control(0x1F);
    ASSERT_TRUE(powered.run_until([&] { return *drive.value(0x215006) == 2; }, seconds(60)));
    powered.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(*drive.value(0x606300)), 0.0, 10.0);
    powered.control(0x06);
    powered.run(seconds(1));
    powered.enable(1);
    powered.run(milliseconds(100));
    EXPECT_EQ(drive.value(0x215006), 2) << "once";
}

TEST(HomingEnd, InterruptionsLeaveItNotHomed) {
    struct Row {
        const char* what;
        std::uint16_t word;
        std::int64_t state;  // of the drive
    };
    for (const Row& row :
         {Row{"bit 4", 0x0F, 0x27}, Row{"halt", 0x11F, 0x27}, Row{"shutdown", 0x06, 0x21},
          Row{"power off", 0x00, 0x40}, Row{"quick stop", 0x0B, 0x40}}) {
        HomingBench bench(usual());
        bench.begin(17);
        bench.run(seconds(1));
        bench.control(row.word);
        bench.run(seconds(2));
        EXPECT_EQ(bench.value(0x215006), 0) << row.what;
        EXPECT_EQ(bench.value(0x604100) & 0x6F, row.state) << row.what;
        EXPECT_NEAR(rpm_of(bench), 0.0, 3.0) << row.what;
        if (row.state == 0x27) {
            EXPECT_EQ(bits(bench), kReached) << row.what;
        }
    }
}

TEST(HomingEnd, AnotherModeInterruptsIt) {
    HomingBench bench(usual());
    bench.begin(17);
    bench.run(seconds(1));
    bench.set(0x606000, 1);
    bench.run(seconds(1));
    EXPECT_EQ(bench.value(0x215006), 0);
    EXPECT_NEAR(rpm_of(bench), 0.0, 3.0);
}

TEST(HomingEnd, AFaultIsAFailure) {
    HomingBench bench(usual());
    bench.begin(17);
    bench.run(seconds(1));
    bench.drive().provoke_fault(0x0800);
    EXPECT_EQ(bench.value(0x215006), 3);
    EXPECT_EQ(bench.value(0x604100) & 0x4F, 0x08);
}

TEST(HomingEnd, AHomeIsLostWithTheNextRunWithAClearingAndWithThePower) {
    HomingBench bench(usual());
    const auto home = [&] {
        bench.set(0x609800, 35);
        bench.control(0x0F);
        bench.control(0x1F);
        EXPECT_EQ(bench.value(0x215006), 2);
    };
    bench.enable(6);
    home();
    bench.set(0x609800, 17);
    bench.control(0x0F);
    bench.control(0x1F);
    EXPECT_EQ(bench.value(0x215006), 1);
    bench.control(0x0F);
    bench.run(seconds(1));
    home();
    EXPECT_TRUE(bench.write(0x21500D, 1, 1));
    EXPECT_EQ(bench.value(0x215006), 0);
    EXPECT_EQ(bench.read(0x21500D), 0U);
    home();
    bench.drive().power_cycle();
    bench.run(seconds(2));
    EXPECT_EQ(bench.value(0x215006), 0);
}

TEST(HomingEnd, AbsoluteMovesCanBeForbiddenBefore) {
    HomingBench bench(usual());
    bench.set(0x21500A, 1);
    bench.set(0x607A00, 5000);
    bench.enable(1);
    bench.control(0x1F);
    bench.run(seconds(1));
    EXPECT_FALSE(bench.status(0x1000)) << "not taken";
    EXPECT_EQ(bench.value(0x606300), 0);
    bench.control(0x0F);
    bench.control(0x5F);  // relative
    bench.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(bench.value(0x606300)), 5000.0, 5.0);
    bench.control(0x0F);
    bench.set(0x606000, 6);
    bench.control(0x1F);
    bench.set(0x606000, 1);
    bench.control(0x0F);
    bench.control(0x1F);
    bench.run(seconds(1));
    EXPECT_NEAR(static_cast<double>(bench.value(0x606300)), 5000.0, 5.0);
    EXPECT_NEAR(bench.place(), 1.0, 0.01) << "5000 from the place that became the home";
}

}  // namespace
}  // namespace servo::sim::test
