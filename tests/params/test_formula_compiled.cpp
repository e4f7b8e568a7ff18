// A compiled formula against the text evaluator, bit for bit.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "params/compiled_formula.h"
#include "params/formula.h"
#include "params/random_formula.h"

namespace servo::params {
namespace {

link::FormulaOperands operands() {
    link::FormulaOperands all;
    all.o64100320 = {10000, true};
    all.o65100310 = {480, true};
    all.o30400710 = {250, true};
    all.o60F61310 = {-3, true};
    all.o60F61110 = {0, true};
    return all;
}

template <class Number>
void expect_same_bits(const std::string& list, const std::vector<Number>& samples,
                      const link::FormulaOperands& values) {
    const CompiledFormula formula("x", list, values);
    std::vector<double> fast(samples.size(), -1);
    const bool good = formula.convert(std::span<const Number>(samples), fast);
    bool told_good = true;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto value = static_cast<double>(samples[i]);
        const auto told = value_to_unit(value, "x", list, 4, values);
        told_good = told_good && told.has_value();
        ASSERT_EQ(std::bit_cast<std::uint64_t>(fast[i]),
                  std::bit_cast<std::uint64_t>(told.value_or(0)))
            << list << " of " << samples[i] << ": " << fast[i] << " for " << told.value_or(0);
    }
    EXPECT_EQ(good, told_good) << list;
}

std::vector<std::int32_t> edge_samples() {
    return {
        0,      1,      -1,     2,      -2,         7,           -7,
        10,     -10,    255,    -255,   32767,      -32768,      65535,
        -65535, 100000, -99999, 123456, 2147483647, -2147483647, std::numeric_limits<int>::min()};
}

bool is_fast(std::string_view expression) {
    return CompiledFormula("x", "[x]" + std::string(expression), operands()).is_fast();
}

void expect_exact(std::string_view expression, bool fast = true) {
    EXPECT_EQ(is_fast(expression), fast) << expression;
    expect_same_bits("[x]" + std::string(expression), edge_samples(), operands());
}

TEST(CompiledFormula, ChainKeepsItsOrder) {
    // Folding 1000/3/7 into one factor would differ in most values.
    const std::string list = "[x]N*1000/3/7";
    expect_exact("N*1000/3/7");
    int differing = 0;
    std::vector<std::int32_t> samples(65536);
    for (int i = 0; i < 65536; ++i)
        samples[static_cast<std::size_t>(i)] = i - 32768;
    std::vector<double> out(samples.size());
    ASSERT_TRUE(CompiledFormula("x", list, operands()).convert(samples, out));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double n = samples[i];
        ASSERT_EQ(out[i], n * 1000 / 3 / 7);
        if (out[i] != n * (1000.0 / 3 / 7)) ++differing;
    }
    EXPECT_GT(differing, 30000);
}

TEST(CompiledFormula, LinesOfTheProgram) {
    for (const char* expression :
         {"N*1", "N*1875/512/[64100320]", "N*1000*4000/65536/[64100320]", "N/2048*[65100310]/10",
          "N/1875*512*[64100320]", "N/1000/4000*65536*[64100320]", "N*2048/[65100310]*10"}) {
        expect_exact(expression);
    }
}

TEST(CompiledFormula, SumsAndParentheses) {
    for (const char* expression : {"N*9/5+32", "100-N", "N-100", "-N", "+N", "(N-32)*5/9", "N*N",
                                   "N/N", "(N+1)*(N-1)/2", "N+N+N", "2*(3+(4-N))", "5", "", "N*(1)",
                                   "(N)*(N)+(N)", "((N))", "N*2 ", " N*2", "N*2*"}) {
        expect_exact(expression);
    }
}

TEST(CompiledFormula, NegativeSampleBehindAnOperatorIsCutOff) {
    for (const char* expression :
         {"5*N", "5/N", "2^N", "5+N*N", "1000/N/3", "(5*N)*2", "3*N-4*N"}) {
        expect_exact(expression);
    }
}

TEST(CompiledFormula, NegativeOperandBehindAnOperatorIsCutOff) {
    expect_exact("N*[60F61310]");
    expect_exact("[60F61310]*N");
}

TEST(CompiledFormula, FailuresAreZero) {
    for (const char* expression :
         {"N/[60F61110]", "N/0", "7+1/N", "7+1/(N-1)", "1+5/(1000/N)", "N^N", "N^0.5", "(N)^(0-1)",
          "1E300*(N)*(N)", "1E300*N*1E10/1E10", "N*1E308*10", "N/1E300/1E300", "1E999+N",
          "200!*N"}) {
        expect_exact(expression);
    }
}

TEST(CompiledFormula, Functions) {
    for (const char* expression : {"sqr(N)", "1+abs(N)", "sgn(N)+5", "sin(N/100)*cos(N/7)",
                                   "tan(N)", "int(N/10)", "fix(N/10)", "lg(N)", "ln(N)/lg(N)",
                                   "atn(N)*2", "sqr(abs(N*N))", "5+lg(10)*N", "3!*N", "-sqr(N)"}) {
        expect_exact(expression);
    }
}

TEST(CompiledFormula, FailuresOfTheTextGoToTheCaller) {
    for (const char* expression : {"(N", "lg()*N", "ln()", "N*(2"}) {
        expect_exact(expression);
        std::vector<double> out(1, 5);
        const std::vector<std::int32_t> one(1, 3);
        const std::string list = "[x]" + std::string(expression);
        EXPECT_FALSE(CompiledFormula("x", list, operands()).convert(one, out)) << expression;
        EXPECT_EQ(out[0], 0) << expression;
    }
    expect_exact("N+lg()");
}

TEST(CompiledFormula, DigitsThatMeanMoreThanTheirNumberGoByText) {
    for (const char* expression :
         {"2N", "N5", "N.5", ".N", "NN", "NE3", "1EN", "&HN", "N!", "(7)N", "N*1\x80", "\x80N",
          "sinN", "[64100N]+1", "[6410N320]", "N[1]", "N)"}) {
        expect_exact(expression, false);
    }
}

TEST(CompiledFormula, UnusedLevelThatMayFailGoesByText) {
    expect_exact("7+(1/N)5", false);
}

// With twelve parentheses `(1)2` names the twelfth.
TEST(CompiledFormula, GluedLevelThatIsThereIsTaken) {
    expect_exact("(1)2+0*(2)*(3)*(4)*(5)*(6)*(7)*(8)*(9)*(10)*(11)*(N)");
    expect_exact("(1/N)2+0*(2)*(3)*(4)*(5)*(6)*(7)*(8)*(9)*(10)*(11)*(N)", false);
}

TEST(CompiledFormula, LevelThatIsTakenTwiceStaysAsItIs) {
    expect_exact("(1)2*3+(2)*(3)*(4)*(5)*(6)*(7)*(8)*(9)*(10)*(11)*(N+1)");
    expect_exact("(1)2^2*(2)*(3)*(4)*(5)*(6)*(7)*(8)*(9)*(10)*(11)*(N+1)");
    expect_exact("(1)2/(2)/(3)/(4)/(5)/(6)/(7)/(8)/(9)/(10)/(11)/(N+1)");
}

TEST(CompiledFormula, LongLinesGoByText) {
    std::string longer = "N";
    for (int i = 0; i < 100; ++i)
        longer += "*N/3";
    expect_exact(longer, false);
    expect_exact("N*" + std::string(5000, '0') + "2", false);
}

TEST(CompiledFormula, RawUnitsAreWholeNumbers) {
    const std::vector<double> values = {2.5, -2.5, -0.2, 7, 4294967295.0};
    for (const char* unit : {"DEC", "INC", "inc", "HEX"}) {
        std::vector<double> out(values.size());
        EXPECT_TRUE(CompiledFormula(unit, "", operands()).convert(values, out));
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_EQ(out[i], value_to_unit(values[i], unit, "", 4, operands()));
        }
    }
}

TEST(CompiledFormula, UnitWithoutALineIsZero) {
    const CompiledFormula formula("rpm", "[DEC]N*1", operands());
    std::vector<double> out(2, 5);
    EXPECT_TRUE(formula.convert(std::vector<std::int32_t>{1, 2}, out));
    EXPECT_EQ(out, (std::vector<double>{0, 0}));
    EXPECT_TRUE(formula.is_fast());
}

TEST(CompiledFormula, KeepsTheOperandsOfItsCompilation) {
    link::FormulaOperands values = operands();
    const CompiledFormula formula("x", "[x]N*[64100320]", values);
    values.o64100320.value = 1;
    std::vector<double> out(1);
    EXPECT_TRUE(formula.convert(std::vector<std::int32_t>{2}, out));
    EXPECT_EQ(out[0], 20000);
}

TEST(CompiledFormula, NumbersThatAreNotWholeGoByText) {
    const std::vector<double> values = {0.5,
                                        -0.5,
                                        0.1,
                                        1E14,
                                        -1E14,
                                        1E15,
                                        -1E15,
                                        1E16,
                                        1E300,
                                        0.00001,
                                        -0.0,
                                        0.0,
                                        1.0 / 3,
                                        -1.0 / 3,
                                        4294967295.0,
                                        999999999999999.0,
                                        12345678901234.5};
    for (const char* expression : {"N*1000/3/7", "5*N", "N+1", "sqr(N)", "1/N", "N*N", "N^3"}) {
        expect_same_bits("[x]" + std::string(expression), values, operands());
    }
}

TEST(CompiledFormula, BlocksJoinWithoutASeam) {
    for (const std::size_t count : {0U, 1U, 511U, 512U, 513U, 1025U}) {
        std::vector<std::int32_t> samples(count);
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = static_cast<std::int32_t>(i) - 300;
        for (const char* list : {"[x]N*1875/512/[64100320]", "[x]5*N", "[x](N-3)*(N+5)/N"}) {
            expect_same_bits(list, samples, operands());
        }
    }
}

// --- the proof over random expressions, operands and values
// ---------------------------------------

std::int32_t random_value(Random& random) {
    const std::uint32_t bits = random.bits();
    switch (random.below(4)) {
        case 0:
            return static_cast<std::int32_t>(bits);
        case 1:
            return static_cast<std::int16_t>(bits);
        default:
            return static_cast<std::int32_t>(bits % 41) - 20;
    }
}

link::FormulaOperands random_operands(Random& random) {
    link::FormulaOperands all;
    all.o64100320 = {random_value(random), true};
    all.o65100310 = {static_cast<std::int16_t>(random_value(random)), true};
    all.o30400710 = {random_value(random), true};
    all.o60F61310 = {random_value(random), true};
    all.o60F61110 = {random_value(random), true};
    return all;
}

TEST(CompiledFormula, SameBitsForRandomExpressionsOperandsAndValues) {
    Random random(99);
    int fast = 0;
    constexpr int kExpressions = 100000;
    for (int i = 0; i < kExpressions; ++i) {
        const std::string list = "[x]" + random_expression(random);
        const link::FormulaOperands values = random_operands(random);
        if (CompiledFormula("x", list, values).is_fast()) ++fast;
        const std::vector<std::int32_t> samples = {random_value(random), random_value(random), 0,
                                                   random_value(random)};
        expect_same_bits(list, samples, values);
        if (HasFatalFailure()) return;
    }
    // Most usual expressions take the fast way, and some texts do not.
    EXPECT_GT(fast, kExpressions / 2);
    EXPECT_LT(fast, kExpressions);
}

}  // namespace
}  // namespace servo::params
