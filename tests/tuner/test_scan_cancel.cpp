// A scan that is given up: what may be moving is told to stop until it says that it has.
#include "scan_bench.h"

#include <algorithm>

using namespace servo;
using namespace servo::test;
using link::Payload;

namespace {

constexpr Payload kStop{0x2F, 0x40, 0x30, 0x01, 0, 0, 0, 0};
constexpr Payload kState{0x40, 0x40, 0x30, 0x01, 0, 0, 0, 0};

struct ScanCancel : testing::Test, ScanBench {};

}  // namespace

TEST_F(ScanCancel, BeforeAndBehindTheMeasurementItEndsAtOnce) {
    for (const int step : {3, 6, 9, 14, 15}) {
        ScanBench bench;
        bench.go_to(step);
        bench.scan.cancel();
        EXPECT_FALSE(bench.scan.active()) << step;
        EXPECT_EQ(bench.state.scanStep, 0);
        EXPECT_EQ(bench.watcher.ends, std::vector{false});
        EXPECT_EQ(bench.data.Label36, tuner::ScanLabel::kNotStarted);
        EXPECT_NE(bench.request(), kStop);
    }
}

TEST_F(ScanCancel, WhileTheDriveMayMoveItIsToldToStopAndAskedWhetherItHas) {
    for (const int step : {7, 8}) {
        ScanBench bench;
        bench.go_to(step);
        bench.request();
        bench.scan.cancel();
        EXPECT_TRUE(bench.scan.cancelling());
        EXPECT_TRUE(bench.scan.active());
        EXPECT_EQ(bench.request(), kStop) << step;
        bench.receive_nothing();
        EXPECT_EQ(bench.request(), kStop) << "the word of the drive was lost";
        bench.receive(accepted(7));
        EXPECT_EQ(bench.request(), kState);
        bench.receive(accepted(8, 0));
        EXPECT_FALSE(bench.scan.active());
        EXPECT_FALSE(bench.scan.cancelling());
        EXPECT_EQ(bench.watcher.ends, std::vector{false});
    }
}

TEST_F(ScanCancel, ScanBegunAnewUnderTheMeasurementIsStoppedInItsFirstStepsToo) {
    for (const int step : {7, 8}) {
        for (int at = 0; at <= 6; ++at) {
            ScanBench bench;
            bench.go_to(step);
            ASSERT_TRUE(bench.scan.start());
            for (int i = 0; i < std::min(at, 3); ++i)
                bench.tick();
            for (int i = 3; i < at; ++i) {
                bench.request();
                bench.receive(accepted(i));
            }
            ASSERT_EQ(bench.state.scanStep, at);
            bench.scan.cancel();
            ASSERT_TRUE(bench.scan.cancelling()) << step << ' ' << at;
            for (int i = at; i < 3; ++i)
                bench.tick();
            EXPECT_EQ(bench.request(), kStop) << step << ' ' << at;
        }
    }
}

TEST_F(ScanCancel, ScanBegunAnewWhoseMeasurementIsOverEndsAtOnce) {
    go_to(8);
    ASSERT_TRUE(scan.start());
    warm_up();
    for (int step = 3; step <= 8; ++step) {
        request();
        receive(accepted(step));
    }
    ASSERT_EQ(state.scanStep, 9);
    scan.cancel();
    EXPECT_FALSE(scan.active());
}

// The drive's word on the start looks like its word on the stop.
TEST_F(ScanCancel, DriveThatStillMeasuresIsToldAgain) {
    go_to(7);
    request();
    scan.cancel();
    receive(accepted(7));
    EXPECT_EQ(request(), kState);
    receive(accepted(8, 14));
    EXPECT_EQ(request(), kStop);
    receive(accepted(7));
    EXPECT_EQ(request(), kState);
    receive(accepted(8, 0));
    EXPECT_FALSE(scan.active());
}

TEST_F(ScanCancel, StateReadBeforeTheStopIsNoWordOnIt) {
    go_to(8);
    request();
    scan.cancel();
    receive(accepted(8, 0));
    EXPECT_TRUE(scan.active());
    EXPECT_EQ(request(), kStop);
}

TEST_F(ScanCancel, ForeignFramesAreNoWordOnIt) {
    go_to(8);
    scan.cancel();
    request();
    for (const Payload& other :
         {answer(0x304002, 0, 0x60), answer(0x30400A, 0, 0x4F), kStop, kState})
        receive(other);
    EXPECT_EQ(request(), kStop);
}

TEST_F(ScanCancel, DriveThatRefusesIsLeftAlone) {
    go_to(8);
    scan.cancel();
    request();
    receive(answer(0x304001, 0, 0x80));
    EXPECT_FALSE(scan.active());
}

TEST_F(ScanCancel, DriveThatNeverConfirmsIsLeftAloneAfterAWhile) {
    go_to(8);
    scan.cancel();
    int requests = 0;
    while (scan.active() && requests < 1000) {
        if (request() == kStop) ++requests;
        receive(answer(0x260100, 0, 0x4B));  // so that the link holds
    }
    EXPECT_EQ(requests, 350);
    EXPECT_EQ(watcher.ends, std::vector{false});
}

TEST_F(ScanCancel, SecondCancelAndOneWithoutAScanDoNothing) {
    scan.cancel();
    EXPECT_TRUE(watcher.ends.empty());
    go_to(8);
    scan.cancel();
    request();
    receive(accepted(7));
    scan.cancel();
    EXPECT_EQ(request(), kState) << "not begun anew";
}

TEST_F(ScanCancel, LinkClosedWhileItStopsEndsIt) {
    go_to(8);
    scan.cancel();
    engine.link_closed();
    EXPECT_FALSE(scan.active());
    EXPECT_EQ(watcher.ends, std::vector{false});
    ASSERT_TRUE(scan.start());
    EXPECT_FALSE(scan.cancelling());
}
