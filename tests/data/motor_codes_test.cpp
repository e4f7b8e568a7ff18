// The table of motor codes: every row is a motor that could be built, and that the drive's objects
// can hold.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <sstream>

#include "base/number.h"
#include "tree_support.h"

namespace servo::data {
namespace {

// A row in the units of its heading.
struct Motor {
    std::string code;
    std::string type;
    double U = 0;      // V
    double P = 0;      // W
    double n = 0;      // rpm
    double n_max = 0;  // rpm
    double T = 0;      // Nm
    double T_pk = 0;   // Nm
    double I = 0;      // A, effective
    double I_pk = 0;   // A, peak
    double pp = 0;     // pole pairs
    double R = 0;      // ohm between two lines
    double L = 0;      // mH between two lines
    double Ke = 0;     // V between two lines, effective, for each 1000 rpm
    double Kt = 0;     // Nm for each ampere of peak current
    double J = 0;      // kg cm^2
    std::string encoder;

    double torque_by_power() const { return P / (2 * std::numbers::pi * n / 60); }
};

std::vector<std::string> words(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> found;
    for (std::string word; stream >> word;)
        found.push_back(word);
    return found;
}

constexpr std::size_t kNumbers = 14;
constexpr std::string_view kHeading = "Code  Type ";

bool is_row(const std::vector<std::string>& cells) {
    return cells.size() > 2 + kNumbers && cells[0].size() == 2 &&
           cells[1].find('-') != std::string::npos;
}

Motor motor_of(const std::vector<std::string>& cells) {
    Motor motor;
    motor.code = cells[0];
    motor.type = cells[1];
    double* const numbers[kNumbers] = {&motor.U,    &motor.P,  &motor.n,    &motor.n_max, &motor.T,
                                       &motor.T_pk, &motor.I,  &motor.I_pk, &motor.pp,    &motor.R,
                                       &motor.L,    &motor.Ke, &motor.Kt,   &motor.J};
    for (std::size_t i = 0; i < kNumbers; ++i)
        *numbers[i] = base::leading_number(cells[2 + i]);
    motor.encoder = cells[2 + kNumbers];
    return motor;
}

const std::vector<Motor>& motors() {
    static const std::vector<Motor> all = [] {
        std::vector<Motor> made;
        for (const std::string& line : test::tree_lines("sys/motorcode.ini"))
            if (const auto cells = words(line); is_row(cells)) made.push_back(motor_of(cells));
        return made;
    }();
    return all;
}

void expect_near(double value, double expected, double part, const Motor& motor) {
    EXPECT_NEAR(value, expected, std::abs(expected) * part) << motor.code;
}

TEST(MotorCodes, AreFortyOrMoreAndDifferent) {
    EXPECT_GE(motors().size(), 40U);
    std::set<std::string> codes;
    std::set<std::string> types;
    for (const Motor& motor : motors()) {
        EXPECT_TRUE(codes.insert(motor.code).second) << motor.code;
        EXPECT_TRUE(types.insert(motor.type).second) << motor.type;
        EXPECT_NE(motor.code, "00") << "stands for data entered by hand";
    }
}

TEST(MotorCodes, PowerIsTorqueTimesSpeed) {
    for (const Motor& motor : motors())
        expect_near(motor.T, motor.torque_by_power(), 0.05, motor);
}

TEST(MotorCodes, TorqueIsTorqueConstantTimesCurrent) {
    for (const Motor& motor : motors()) {
        expect_near(motor.Kt * motor.I * std::numbers::sqrt2, motor.T, 0.05, motor);
        // Iron that saturates costs a little at the peak; it never gives.
        EXPECT_GE(motor.Kt * motor.I_pk, 0.98 * motor.T_pk) << motor.code;
        EXPECT_LE(motor.Kt * motor.I_pk, 1.15 * motor.T_pk) << motor.code;
    }
}

// Both constants are the same flux: Kt = 1.5 p psi for each peak ampere, and Ke = sqrt(3/2) p psi w
// at 1000 rpm.
TEST(MotorCodes, VoltageConstantAgreesWithTorqueConstant) {
    for (const Motor& motor : motors()) {
        const double flux = motor.Kt / 1.5;
        expect_near(motor.Ke, std::sqrt(1.5) * flux * 1000 * 2 * std::numbers::pi / 60, 0.06,
                    motor);
    }
}

TEST(MotorCodes, VoltageAllowsTheHighestSpeed) {
    for (const Motor& motor : motors()) {
        EXPECT_TRUE(motor.U == 220 || motor.U == 380) << motor.code;
        EXPECT_GE(motor.n_max, motor.n) << motor.code;
        EXPECT_LT(motor.Ke * motor.n_max / 1000, 0.9 * motor.U) << motor.code;
    }
}

TEST(MotorCodes, LossesTimesAndPeaksAreThoseOfServoMotors) {
    for (const Motor& motor : motors()) {
        const double copper = 1.5 * motor.R * motor.I * motor.I;
        EXPECT_GT(copper, 0.02 * motor.P) << motor.code;
        EXPECT_LT(copper, 0.30 * motor.P) << motor.code;
        const double electrical_ms = motor.L / motor.R;
        EXPECT_GT(electrical_ms, 0.5) << motor.code;
        EXPECT_LT(electrical_ms, 25) << motor.code;
        EXPECT_GE(motor.T_pk, 2.0 * motor.T) << motor.code;
        EXPECT_LE(motor.T_pk, 3.5 * motor.T) << motor.code;
        EXPECT_GE(motor.pp, 1) << motor.code;
        EXPECT_LE(motor.pp, 60) << motor.code;
        // Time from standstill to rated speed at peak torque, without a load.
        const double seconds = motor.J * 1e-4 * motor.n * 2 * std::numbers::pi / 60 / motor.T_pk;
        EXPECT_GT(seconds, 0.001) << motor.code;
        EXPECT_LT(seconds, 0.1) << motor.code;
    }
}

TEST(MotorCodes, TypesTellFlangePowerSpeedVoltageAndEncoder) {
    const std::map<char, std::string> encoders{
        {'I', "INC"}, {'M', "ABS"}, {'S', "ABS"}, {'R', "RES"}};
    for (const Motor& motor : motors()) {
        const auto parts = test::split(motor.type, '-');
        ASSERT_EQ(parts.size(), 4U) << motor.type;
        EXPECT_EQ(base::leading_number(parts[1]), motor.P) << motor.type;
        EXPECT_EQ(base::leading_number(parts[2]) * 100, motor.n) << motor.type;
        EXPECT_EQ(parts[2].back(), motor.U == 220 ? 'L' : 'H') << motor.type;
        ASSERT_EQ(parts[3].size(), 1U) << motor.type;
        ASSERT_TRUE(encoders.contains(parts[3][0])) << motor.type;
        EXPECT_EQ(motor.encoder, encoders.at(parts[3][0])) << motor.type;
    }
}

// In a font of one width every column stands under its heading.
TEST(MotorCodes, ColumnsAreAligned) {
    const auto lines = test::tree_lines("sys/motorcode.ini");
    std::string heading;
    std::size_t rows = 0;
    for (const std::string& line : lines) {
        if (line.starts_with(kHeading)) heading = line;
        EXPECT_EQ(line.find('\t'), std::string::npos) << line;
        EXPECT_FALSE(line.ends_with(' ')) << line;
        if (!is_row(words(line))) continue;
        ++rows;
        for (const std::string_view right :
             {" U ", " P ", " n ", " T ", " I ", " pp ", " R ", " L ", " Ke ", " Kt ", " J "}) {
            const std::size_t end = heading.find(right) + right.size() - 2;
            ASSERT_LT(end + 1, line.size()) << line;
            EXPECT_NE(line[end], ' ') << line << right;
            EXPECT_EQ(line[end + 1], ' ') << line << right;
        }
        EXPECT_NE(line[heading.find("Encoder")], ' ') << line;
    }
    EXPECT_EQ(rows, motors().size());
}

// The simulated drive comes with one of these motors, under its code.
TEST(MotorCodes, TheSimulatedDrivesMotorIsInTheTable) {
    std::map<std::string, std::string> values;
    const std::string text = test::bytes_of(test::tree() / "sim" / "values.tsv");
    for (const std::string& line : test::split(text, '\n')) {
        const auto cells = test::split(line, '\t');
        if (cells.size() > 1) values[cells[0]] = cells[1];
    }
    const auto value = [&](const char* key) { return base::leading_number(values[key]); };
    const auto packed = static_cast<unsigned>(value("641001"));  // characters, lowest byte first
    const std::string code{static_cast<char>(packed & 0xFF), static_cast<char>(packed >> 8)};
    const auto found = std::ranges::find(motors(), code, &Motor::code);
    ASSERT_NE(found, motors().end()) << code;
    EXPECT_EQ(values["640300"], found->type);
    EXPECT_DOUBLE_EQ(value("641004"), found->pp);
    EXPECT_DOUBLE_EQ(value("641008") / 10, found->I);
    EXPECT_DOUBLE_EQ(value("64100B") / 100, found->L);
    EXPECT_DOUBLE_EQ(value("64100C") / 100, found->R);
    EXPECT_DOUBLE_EQ(value("64100D") / 10, found->Ke);
    EXPECT_DOUBLE_EQ(value("64100E") / 1000, found->Kt);
    EXPECT_DOUBLE_EQ(value("64100F") / 1000, found->J);
    EXPECT_DOUBLE_EQ(value("641014"), found->n_max);
    EXPECT_DOUBLE_EQ(value("641015"), found->n);
    EXPECT_DOUBLE_EQ(value("641016"), found->P);
    EXPECT_DOUBLE_EQ(value("641017"), found->U);
    EXPECT_DOUBLE_EQ(value("641018") / 1000, found->T);
    EXPECT_DOUBLE_EQ(value("641019") / 1000, found->T_pk);
    // 2048 parts of the drive's peak current, which is in tenths of an ampere.
    EXPECT_NEAR(value("64100A") / 2048 * value("651003") / 10, found->I_pk, 0.05);
}

}  // namespace
}  // namespace servo::data
