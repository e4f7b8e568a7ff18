// Every formula of the shipped dictionary over all numbers of 16 bits, signed and unsigned.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "dictionary/store.h"
#include "params/compiled_formula.h"
#include "params/formula.h"

namespace servo::params {
namespace {

constexpr std::size_t kFormulaColumn = 8;

// Also those of raw units, which no conversion asks for.
std::set<std::string> dictionary_expressions() {
    std::set<std::string> expressions;
    dictionary::Store store;
    EXPECT_TRUE(store.open_dat(SERVO_BIN_DIR));
    for (std::size_t row = 0; row < store.dictionary_rows(); ++row) {
        const std::string list = store.dictionary_cell(row, kFormulaColumn);
        for (std::size_t at = 0; at <= list.size();) {
            const std::size_t end = std::min(list.find('\n', at), list.size());
            const std::string line = list.substr(at, end - at);
            expressions.insert(line.substr(std::min(line.find(']') + 1, line.size())));
            at = end + 1;
        }
    }
    return expressions;
}

std::vector<std::int32_t> samples(std::int32_t step) {
    std::vector<std::int32_t> values = {-32767, -1, 0, 1, 32767, 32768, 65535};
    for (std::int32_t i = -32768; i <= 65535; i += step)
        values.push_back(i);
    return values;
}

link::FormulaOperands operands(std::int32_t resolution, std::int16_t current, std::int32_t others) {
    link::FormulaOperands all;
    all.o64100320 = {resolution, true};
    all.o65100310 = {current, true};
    all.o30400710 = {others, true};
    all.o60F61310 = {others + 1, true};
    all.o60F61110 = {others + 2, true};
    return all;
}

void expect_same_bits(const std::string& expression, const std::vector<std::int32_t>& raw,
                      const link::FormulaOperands& values) {
    const std::string list = "[unit]" + expression;
    const CompiledFormula formula("unit", list, values);
    EXPECT_TRUE(formula.is_fast()) << expression;
    std::vector<double> out(raw.size());
    ASSERT_TRUE(formula.convert(raw, out)) << expression;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const auto told = value_to_unit(raw[i], "unit", list, 4, values);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(out[i]), std::bit_cast<std::uint64_t>(told.value()))
            << expression << " of " << raw[i];
    }
}

TEST(DictionaryFormulas, CompiledLinesGiveTheSameBits) {
    const std::set<std::string> expressions = dictionary_expressions();
    EXPECT_GT(expressions.size(), 10U);
    const std::vector<std::int32_t> all = samples(1);
    for (const std::string& expression : expressions) {
        expect_same_bits(expression, all, operands(10000, 480, 4096));
    }
}

// Objects that were never read, and such with a sign, which cuts the expression.
TEST(DictionaryFormulas, CompiledLinesGiveTheSameBitsForOddOperands) {
    const std::vector<std::int32_t> some = samples(37);
    for (const std::string& expression : dictionary_expressions()) {
        expect_same_bits(expression, some, operands(0, 0, -1));
        expect_same_bits(expression, some, operands(-131072, -31, 2147483645));
    }
}

}  // namespace
}  // namespace servo::params
