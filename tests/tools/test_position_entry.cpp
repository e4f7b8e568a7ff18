// What may be typed.
#include <gtest/gtest.h>

#include <string>

#include "params/page_editor.h"
#include "tools/position_table.h"
#include "tools/position_table_entry.h"

namespace servo::tools {
namespace {

TEST(PositionEntry, DigitsLettersBackspaceAndMinusPass) {
    for (char32_t key = 1; key < 128; ++key) {
        const bool digit = key >= U'0' && key <= U'9';
        const bool letter = (key >= U'a' && key <= U'z') || (key >= U'A' && key <= U'Z');
        const bool told =
            digit || letter || key == params::kKeyBackspace || key == U'-' || key == U'.';
        EXPECT_EQ(position_key_passes(key, "12"), told) << static_cast<int>(key);
    }
    EXPECT_FALSE(position_key_passes(U'值', ""));
}

TEST(PositionEntry, OneFullStopPasses) {
    EXPECT_TRUE(position_key_passes(U'.', ""));
    EXPECT_TRUE(position_key_passes(U'.', "12"));
    EXPECT_FALSE(position_key_passes(U'.', "1.2"));
    EXPECT_TRUE(position_key_passes(U'-', "1-2-")) << "minus in any number";
}

struct Limit {
    const char* name;
    int column;
    const char* lowest;
    const char* highest;
    const char* below;
    const char* above;
};

class PositionLimits : public testing::TestWithParam<Limit> {};

TEST_P(PositionLimits, AreInclusive) {
    const auto& [name, column, lowest, highest, below, above] = GetParam();
    const auto limits = step_limits(column);
    ASSERT_TRUE(limits.has_value());
    EXPECT_TRUE(entry_allowed(lowest, limits));
    EXPECT_TRUE(entry_allowed(highest, limits));
    EXPECT_FALSE(entry_allowed(below, limits));
    EXPECT_FALSE(entry_allowed(above, limits));
}

INSTANTIATE_TEST_SUITE_P(
    Columns, PositionLimits,
    testing::Values(Limit{"Pos", step_column::kPos, "-2147483648", "2147483648", "-2147483649",
                          "2147483649"},
                    Limit{"Speed", step_column::kSpeed, "-2147483648", "2147483648",
                          "-2147483648.5", "2147483648.5"},
                    Limit{"Delay", step_column::kDelay, "0", "65535", "-1", "65536"},
                    Limit{"AccIdx", step_column::kAccIdx, "0", "7", "-1", "8"},
                    Limit{"DecIdx", step_column::kDecIdx, "0", "7", "-0.5", "7.1"}),
    [](const auto& limit) { return std::string(limit.param.name); });

TEST(PositionEntry, LoopsAreNotLimited) {
    EXPECT_FALSE(step_limits(step_column::kLoops).has_value());
    EXPECT_TRUE(entry_allowed("99999999999", std::nullopt));
    EXPECT_TRUE(entry_allowed("-5", std::nullopt));
}

TEST(PositionEntry, LettersReadAs0AndAreLetIn) {
    EXPECT_TRUE(entry_allowed("abc", step_limits(step_column::kDelay)));
    EXPECT_TRUE(entry_allowed("7seven", step_limits(step_column::kAccIdx)));
    EXPECT_FALSE(entry_allowed("8seven", step_limits(step_column::kAccIdx)));
}

TEST(PositionEntry, AnEmptyBoxIsAWrongEntry) {
    EXPECT_FALSE(entry_allowed("", step_limits(step_column::kPos)));
    EXPECT_FALSE(entry_allowed("", std::nullopt));
}

TEST(PositionEntry, FieldsHaveTheirLimitsAnd32IsOneOfThem) {
    const std::array highest{32, 1, 1, 1, 1, 1, 1, 1, 2, 2};
    for (int field = 0; field < kRegisterColumns; ++field) {
        EXPECT_EQ(register_limits(field).lowest, 0) << field;
        EXPECT_EQ(register_limits(field).highest, highest[static_cast<std::size_t>(field)])
            << field;
    }
    EXPECT_TRUE(entry_allowed("32", register_limits(0)));
    EXPECT_FALSE(entry_allowed("33", register_limits(0)));
    EXPECT_FALSE(entry_allowed("-1", register_limits(0)));
}

TEST(PositionEntry, EachColumnHasItsEditor) {
    using enum StepEditor;
    const std::array told{kNone, kCombo, kCombo, kText, kText, kText,
                          kText, kText,  kNone,  kText, kNone};
    for (int column = 0; column < step_column::kCount; ++column)
        EXPECT_EQ(step_editor(column), told[static_cast<std::size_t>(column)]) << column;
}

}  // namespace
}  // namespace servo::tools
