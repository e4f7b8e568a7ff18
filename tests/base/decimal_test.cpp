#include "base/decimal.h"

#include <gtest/gtest.h>

namespace servo::base {
namespace {

TEST(DecimalNumber, IsAllOfTheText) {
    EXPECT_EQ(decimal_number("0"), 0.0);
    EXPECT_EQ(decimal_number("-12.5"), -12.5);
    EXPECT_EQ(decimal_number("+.5"), 0.5);
    EXPECT_EQ(decimal_number("5."), 5.0);
    EXPECT_EQ(decimal_number("1.5E3"), 1500.0);
    EXPECT_EQ(decimal_number("25e-1"), 2.5);
}

TEST(DecimalNumber, NothingElseIsOne) {
    for (const char* text : {"", "-", ".", "-.", "1.2.3", "1e", "1e+", "e5", " 1", "1 ", "12a",
                             "0x10", "&H10", "1,5", "nan", "inf"})
        EXPECT_EQ(decimal_number(text), std::nullopt) << text;
}

TEST(DecimalNumber, OneThatNoDoubleHoldsIsNone) {
    EXPECT_EQ(decimal_number("1e999"), std::nullopt);
}

}  // namespace
}  // namespace servo::base
