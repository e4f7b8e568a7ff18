// Every unit of the dictionary, through the program's own conversion.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "dictionary/keys.h"
#include "params/formula.h"
#include "tree_support.h"

namespace servo::data {
namespace {

// The drive that the shipped values describe.
link::FormulaOperands drive() {
    link::FormulaOperands operands;
    operands.o64100320 = {10000, true};
    operands.o65100310 = {150, true};
    operands.o30400710 = {19661, true};
    operands.o60F61310 = {5000, true};
    operands.o60F61110 = {20000, true};
    return operands;
}

std::vector<std::string> units_of(const Object& object) {
    std::vector<std::string> units;
    std::set<std::string> seen;
    for (const std::string& line : test::split(object.formula, '\n')) {
        const std::string unit = params::split_formula(line).unit;
        if (seen.insert(unit).second) units.push_back(unit);
    }
    return units;
}

int size_of(const Object& object) {
    return dictionary::decoder_size(dictionary::short_type(object.type));
}

// Values that a page is likely to show: small, middling, negative where the type has them.
std::vector<double> samples(int size) {
    if (size == 1) return {0, 1, 100, 255};
    if (size == 11) return {0, 1, 127, -17};
    if (size == 2) return {0, 1, 1502, 65535};
    if (size == 12) return {0, 1, 1502, -1502};
    if (size == 4) return {0, 1, 16384, 2730667};
    return {0, 1, 2730667, -2730667};
}

TEST(Units, EveryUnitShowsANumber) {
    for (const Object& object : test::objects()) {
        if (size_of(object) == 0) continue;  // a string is shown as it comes
        for (const std::string& unit : units_of(object)) {
            const auto text =
                params::value_to_text(100, unit, object.formula, size_of(object), drive());
            ASSERT_TRUE(text.has_value()) << object.name_en << " in " << unit;
            EXPECT_FALSE(text->empty()) << object.name_en << " in " << unit;
            EXPECT_NE(*text, params::kUnknownText) << object.name_en << " in " << unit;
        }
    }
}

// What a cell shows can be typed into it again and means the same, to the last place shown and the
// step of the raw number.
TEST(Units, WhatIsShownCanBeEntered) {
    int entered = 0;
    for (const Object& object : test::objects()) {
        const int size = size_of(object);
        if (size == 0 || object.attr.find('W') == std::string::npos) continue;
        for (const std::string& unit : units_of(object)) {
            if (unit == "ASCII" || unit == "HEX") continue;  // bits, told by their own tests
            for (const double raw : samples(size)) {
                SCOPED_TRACE(object.name_en + " in " + unit + ", raw " + std::to_string(raw));
                const auto text = params::value_to_text(raw, unit, object.formula, size, drive());
                ASSERT_TRUE(text.has_value());
                const auto back = params::text_to_value(*text, unit, object.formula, drive());
                ASSERT_TRUE(back.has_value());
                const double shown = std::strtod(text->c_str(), nullptr);
                const auto again = params::value_to_unit(std::nearbyint(*back), unit,
                                                         object.formula, size, drive());
                const auto step = params::value_to_unit(1, unit, object.formula, size, drive());
                ASSERT_TRUE(again && step);
                EXPECT_NEAR(*again, shown, std::fabs(*step) / 2 + 1e-6 * std::fabs(shown) + 1e-9);
                ++entered;
            }
        }
    }
    EXPECT_GT(entered, 4000);
}

TEST(Units, RatedSpeedReadsAsRevolutionsPerMinute) {
    const Object* const speed = test::find_object(0x606C00);
    ASSERT_NE(speed, nullptr);
    EXPECT_EQ(params::value_to_text(8192000, "rpm", speed->formula, 14, drive()), "3000.00");
    EXPECT_EQ(params::value_to_text(8192000, "inc/s", speed->formula, 14, drive()), "500000.00");
}

TEST(Units, PeakCurrentReadsInAmperes) {
    const Object* const current = test::find_object(0x607800);
    ASSERT_NE(current, nullptr);
    EXPECT_EQ(params::value_to_text(2048, "Ap", current->formula, 12, drive()), "15.00");
    EXPECT_EQ(params::value_to_text(-2048, "Arms", current->formula, 12, drive()), "-10.61");
}

TEST(Units, BusVoltageAndLoadUseTheDrivesOwnScale) {
    EXPECT_EQ(params::value_to_text(2540, "V", test::find_object(0x60F614)->formula, 2, drive()),
              "310.06");
    EXPECT_EQ(params::value_to_text(10000, "%", test::find_object(0x60F612)->formula, 2, drive()),
              "50.00");
}

TEST(Units, MotorCodeReadsAsItsCharacters) {
    const Object* const code = test::find_object(0x641001);
    ASSERT_NE(code, nullptr);
    EXPECT_EQ(units_of(*code).front(), "ASCII");
    EXPECT_EQ(params::value_to_text(0x304B, "ASCII", code->formula, 2, drive()), "K0");
}

}  // namespace
}  // namespace servo::data
