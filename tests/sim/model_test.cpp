// The parts of the model against what can be solved by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "sim/chance.h"
#include "sim/model/axis.h"
#include "sim/model/profile.h"

namespace servo::sim {
namespace {

PlantSetup rigid_frictionless() {
    PlantSetup setup;
    setup.motor_inertia = 8.31e-5;
    setup.load_inertia = 0.0;
    setup.motor_friction = 0.0;
    setup.load_friction = 0.0;
    setup.viscous = 0.0;
    return setup;
}

TEST(Plant, ConstantTorqueGivesConstantAcceleration) {
    Plant plant;
    plant.configure(rigid_frictionless());
    for (int i = 0; i < 1600; ++i)
        plant.step(0.5, 0.1);
    EXPECT_NEAR(plant.motor_speed(), 0.4 * 0.1 / 8.31e-5, 1e-6);
    const double turns = static_cast<double>(plant.turns()) + plant.part();
    // Half a step more than the integral: the new speed counts for the whole step.
    const double rate = 0.4 / 8.31e-5;
    EXPECT_NEAR(turns * 2 * kPi, 0.5 * rate * 0.1 * (0.1 + kStepSeconds), 1e-6);
}

TEST(Plant, TheShaftSwingsAtItsResonance) {
    PlantSetup setup;
    setup.motor_friction = 0.0;
    setup.load_friction = 0.0;
    setup.viscous = 0.0;
    setup.damping = 0.0;
    Plant plant;
    plant.configure(setup);
    plant.step(5.0, 0.0);
    int crossings = 0;
    double before = plant.twist();
    const int steps = 16000;
    for (int i = 0; i < steps; ++i) {
        plant.step(0.0, 0.0);
        if (before < 0.0 && plant.twist() >= 0.0) ++crossings;
        before = plant.twist();
    }
    EXPECT_NEAR(crossings, 780, 8);  // in one second
}

TEST(Plant, UndampedSwingingNeitherGrowsNorFades) {
    PlantSetup setup;
    setup.motor_friction = 0.0;
    setup.load_friction = 0.0;
    setup.viscous = 0.0;
    setup.damping = 0.0;
    Plant plant;
    plant.configure(setup);
    plant.step(5.0, 0.0);
    const auto peak = [&] {
        double most = 0.0;
        for (int i = 0; i < 1600; ++i) {
            plant.step(0.0, 0.0);
            most = std::max(most, std::abs(plant.twist()));
        }
        return most;
    };
    const double first = peak();
    for (int i = 0; i < 100; ++i)
        peak();
    EXPECT_NEAR(peak(), first, first * 0.01);
}

TEST(Plant, TorqueBelowTheFrictionMovesNothing) {
    Plant plant;
    PlantSetup setup = rigid_frictionless();
    setup.motor_friction = 0.02;
    plant.configure(setup);
    for (int i = 0; i < 1000; ++i)
        plant.step(0.0199, 0.0);
    EXPECT_TRUE(plant.at_rest());
    EXPECT_EQ(plant.part(), 0.0);
    plant.step(0.0201, 0.0);
    EXPECT_FALSE(plant.at_rest());
}

TEST(Plant, DryFrictionStopsInTheTimeThatItTakes) {
    Plant plant;
    PlantSetup setup = rigid_frictionless();
    plant.configure(setup);
    while (plant.motor_speed() < 100.0)
        plant.step(1.0, 0.0);
    const double speed = plant.motor_speed();
    setup.motor_friction = 0.05;
    plant.configure(setup);
    int steps = 0;
    while (!plant.at_rest()) {
        plant.step(0.0, 0.0);
        ++steps;
    }
    EXPECT_NEAR(steps * kStepSeconds, speed * setup.motor_inertia / 0.05, 2 * kStepSeconds);
}

TEST(Plant, CountsGoDownThroughZero) {
    Plant plant;
    plant.configure(rigid_frictionless());
    while (plant.counts(10000) > -25000)
        plant.step(-0.1, 0.0);
    EXPECT_EQ(plant.turns(), -3);
    EXPECT_GE(plant.part(), 0.0);
    EXPECT_LT(plant.part(), 1.0);
}

// The zero of the controller lies on the pole of the winding, so the loop is of first order.
TEST(CurrentLoop, StepFollowsTheFirstOrderResponse) {
    CurrentSetup setup;
    const double corner = 2 * kPi * 200.0;
    setup.kp = setup.inductance * corner;
    setup.ki = setup.resistance * corner;
    CurrentLoop loop;
    loop.configure(setup);
    for (int i = 1; i <= 100; ++i) {
        loop.step(2.0, 0.0, 310.0);
        EXPECT_NEAR(loop.current(), 2.0 * (1.0 - std::exp(-corner * i * kStepSeconds)), 2.0 * 0.02)
            << i;
    }
    EXPECT_NEAR(loop.voltage(), 2.0 * setup.resistance, 0.05);
}

TEST(CurrentLoop, TheInverterGivesNoMoreThanItHas) {
    CurrentSetup setup;
    setup.kp = 100.0;
    setup.ki = 1e5;
    CurrentLoop loop;
    loop.configure(setup);
    loop.step(10.0, 0.0, 310.0);
    EXPECT_NEAR(loop.voltage(), 310.0 / std::sqrt(3.0), 1e-9);
    EXPECT_TRUE(loop.saturated());
    // At a speed whose own voltage is above the supply no torque is left.
    for (int i = 0; i < 1600; ++i)
        loop.step(10.0, 1000.0, 310.0);
    EXPECT_LT(loop.current(), 0.0);
}

TEST(CurrentLoop, AfterSaturationItDoesNotOvershoot) {
    CurrentSetup setup;
    const double corner = 2 * kPi * 1500.0;
    setup.kp = setup.inductance * corner;
    setup.ki = setup.resistance * corner;
    CurrentLoop loop;
    loop.configure(setup);
    double most = 0.0;
    for (int i = 0; i < 400; ++i) {
        loop.step(11.0, 0.0, 60.0);
        most = std::max(most, loop.current());
    }
    EXPECT_NEAR(loop.current(), 11.0, 0.01);
    EXPECT_LT(most, 11.0 * 1.05);
}

AxisSetup ideal_axis(double bandwidth, double integral_rate) {
    AxisSetup setup;
    setup.plant = rigid_frictionless();
    const double fast = 2 * kPi * 2000.0;
    setup.current.kp = setup.current.inductance * fast;
    setup.current.ki = setup.current.resistance * fast;
    setup.current_high = 100.0;
    setup.current_low = -100.0;
    setup.integral_limit = 100.0;
    setup.speed_filter = 0.0;
    setup.resolution = 10000;
    const double radians = 2 * kPi / 10000;  // of a count
    setup.velocity_kp =
        2 * kPi * bandwidth * setup.plant.motor_inertia / setup.torque_constant * radians;
    setup.velocity_ki = setup.velocity_kp * integral_rate;
    return setup;
}

// Proportional control of an inertia: first order.
TEST(VelocityLoop, ProportionalStepFollowsTheClosedForm) {
    Axis axis;
    axis.configure(ideal_axis(20.0, 0.0));
    axis.start();
    const double corner = 2 * kPi * 20.0;
    const SetPoint step{Loop::kVelocity, 0.0, 100000.0, 0.0};
    for (int i = 1; i <= 1600; ++i) {
        axis.step(step, 0.0);
        const double told = 100000.0 * (1.0 - std::exp(-corner * i * kStepSeconds));
        ASSERT_NEAR(axis.true_speed(), told, 100000.0 * 0.02) << i;
    }
}

// With the integral at half the corner the poles are a complex pair, s = -w/2 (1 +- j).
TEST(VelocityLoop, ProportionalAndIntegralStepFollowsTheClosedForm) {
    Axis axis;
    const double corner = 2 * kPi * 20.0;
    axis.configure(ideal_axis(20.0, corner / 2));
    axis.start();
    const SetPoint step{Loop::kVelocity, 0.0, 100000.0, 0.0};
    for (int i = 1; i <= 1600; ++i) {
        axis.step(step, 0.0);
        const double a = corner / 2 * i * kStepSeconds;
        const double told = 100000.0 * (1.0 - std::exp(-a) * (std::cos(a) - std::sin(a)));
        ASSERT_NEAR(axis.true_speed(), told, 100000.0 * 0.03) << i;
    }
}

TEST(VelocityLoop, TheIntegralTakesALoadAndLeavesNoError) {
    Axis axis;
    axis.configure(ideal_axis(60.0, 100.0));
    axis.start();
    for (int i = 0; i < 16000; ++i)
        axis.step({Loop::kVelocity, 0.0, 50000.0, 0.0}, 0.5);
    EXPECT_NEAR(axis.speed(), 50000.0, 25.0);
    EXPECT_NEAR(axis.integral(), 0.5 / 0.345, 0.02);
}

TEST(VelocityLoop, TheCurrentLimitHoldsInBothDirections) {
    AxisSetup setup = ideal_axis(60.0, 100.0);
    setup.current_high = 2.0;
    setup.current_low = -1.0;
    Axis axis;
    axis.configure(setup);
    axis.start();
    axis.step({Loop::kVelocity, 0.0, 1e6, 0.0}, 0.0);
    EXPECT_EQ(axis.current_demand(), 2.0);
    EXPECT_TRUE(axis.current_limited());
    axis.step({Loop::kVelocity, 0.0, -1e6, 0.0}, 0.0);
    EXPECT_EQ(axis.current_demand(), -1.0);
}

// Without feed-forward a position loop lags by speed over gain.
TEST(PositionLoop, LagsBySpeedOverGain) {
    AxisSetup setup = ideal_axis(60.0, 100.0);
    setup.position_kp = 50.0;
    setup.position_limit = 1e9;
    Axis axis;
    axis.configure(setup);
    axis.start();
    double place = 0.0;
    for (int i = 0; i < 16000; ++i) {
        place += 20000.0 * kStepSeconds;
        axis.step({Loop::kPosition, 0.0, 20000.0, place}, 0.0);
    }
    EXPECT_NEAR(axis.following_error(), 20000.0 / 50.0, 4.0);
}

TEST(Encoder, AnotherResolutionStartsAnew) {
    Axis axis;
    AxisSetup setup = ideal_axis(60.0, 0.0);
    axis.configure(setup);
    axis.start();
    for (int i = 0; i < 1600; ++i)
        axis.step({Loop::kVelocity, 0.0, 50000.0, 0.0}, 0.0);
    EXPECT_GT(axis.position(), 1000);
    setup.resolution = 65536;
    axis.configure(setup);
    EXPECT_EQ(axis.position(), 0);
    axis.step({}, 0.0);
    EXPECT_NEAR(static_cast<double>(axis.position()), axis.true_speed() * 0.0, 40.0);
}

TEST(Supply, BrakingChargesItUntilTheResistorTakesOver) {
    SupplySetup setup;
    Supply supply;
    supply.configure(setup);
    supply.start();
    for (int i = 0; i < 1600; ++i)
        supply.step(-200.0);  // 20 J back
    // E = C/2 (U2^2 - U1^2), less what the bleeder takes at about 350 V.
    const double energy = 20.0 - 0.1 * 350.0 * 350.0 / setup.bleeder;
    EXPECT_NEAR(supply.voltage(), std::sqrt(310.0 * 310.0 + 2 * energy / setup.capacitance), 0.5);
    EXPECT_FALSE(supply.braking());
    setup.brake_resistor = 47.0;
    supply.configure(setup);
    double most = 0.0;
    for (int i = 0; i < 16000; ++i) {
        supply.step(-200.0);
        most = std::max(most, supply.voltage());
    }
    EXPECT_LT(most, 398.0);
    EXPECT_GT(supply.voltage(), 370.0);
}

TEST(Profile, AMoveTakesTheTimeOfItsTrapezoid) {
    Profile profile;
    profile.set(0.0, 0.0);
    const ProfileLimits limits{50000.0, 500000.0, 250000.0};
    int steps = 0;
    while (!profile.step_to(100000.0, limits))
        ++steps;
    const double told = 0.1 + 0.2 + (100000.0 - 2500.0 - 5000.0) / 50000.0;
    EXPECT_NEAR(steps * kStepSeconds, told, 1e-3);
    EXPECT_EQ(profile.position(), 100000.0);
    EXPECT_EQ(profile.speed(), 0.0);
}

TEST(Profile, ATargetThatMovesAwayBehindIsReachedByTurningRound) {
    Profile profile;
    profile.set(0.0, 0.0);
    const ProfileLimits limits{50000.0, 500000.0, 500000.0};
    for (int i = 0; i < 4000; ++i)
        profile.step_to(100000.0, limits);
    double most = 0.0;
    while (!profile.step_to(0.0, limits))
        most = std::max(most, profile.position());
    EXPECT_GT(most, 10000.0);
    EXPECT_EQ(profile.position(), 0.0);
}

// Any move ends exactly at its target, within its limits.
TEST(Profile, EveryMoveLandsAndKeepsItsLimits) {
    Chance chance(1);
    for (int run = 0; run < 300; ++run) {
        Profile profile;
        profile.set(0.0, 0.0);
        const ProfileLimits limits{1000.0 + unit(chance.next()) * 1e6,
                                   1e4 + unit(chance.next()) * 1e7,
                                   1e4 + unit(chance.next()) * 1e7};
        const double target = std::floor((unit(chance.next()) - 0.5) * 1e5);
        double before = 0.0;
        int steps = 0;
        while (!profile.step_to(target, limits)) {
            const double rate = std::abs(profile.speed() - before) / kStepSeconds;
            ASSERT_LE(std::abs(profile.speed()), limits.speed * (1 + 1e-9));
            ASSERT_LE(rate, std::max(limits.acceleration, limits.deceleration) * (1 + 1e-6));
            before = profile.speed();
            ASSERT_LT(++steps, 4'000'000) << run;
        }
        ASSERT_EQ(profile.position(), target);
    }
}

TEST(LowPass, SettlesAndHalvesThePowerAtItsCorner) {
    LowPass2 filter;
    filter.configure(500.0);
    double most = 0.0;
    for (int i = 0; i < 16000; ++i) {
        const double out = filter.step(std::sin(2 * kPi * 500.0 * i * kStepSeconds));
        if (i > 8000) most = std::max(most, std::abs(out));
    }
    EXPECT_NEAR(most, std::sqrt(0.5), 0.01);
    for (int i = 0; i < 1600; ++i)
        filter.step(3.0);
    EXPECT_NEAR(filter.out(), 3.0, 1e-6);
    filter.configure(0.0);
    EXPECT_EQ(filter.step(7.0), 7.0);
}

}  // namespace
}  // namespace servo::sim
