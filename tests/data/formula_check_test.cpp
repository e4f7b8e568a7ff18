#include "data/tools/formula_check.h"

#include <gtest/gtest.h>

#include <string>

namespace servo::data {
namespace {

struct Case {
    const char* formula;
    bool writable;
    const char* problem;  // part of the message, empty for none
};

class FormulaCheck : public testing::TestWithParam<Case> {};

TEST_P(FormulaCheck, SaysWhatIsWrong) {
    const Case& given = GetParam();
    const std::string problem = formula_problem(given.formula, given.writable).value_or("");
    if (*given.problem == '\0') {
        EXPECT_EQ(problem, "");
    } else {
        EXPECT_NE(problem.find(given.problem), std::string::npos) << problem;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Good, FormulaCheck,
    testing::Values(Case{"[DEC]N*1", true, ""}, Case{"[HEX]N*1\n[DEC]N*1", true, ""},
                    Case{"[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]", true,
                         ""},
                    Case{"[DEC %]N*100/[60F61110]\n[DEC]N*1", false, ""},
                    Case{"[ASCII]N*1\n[DEC]N*1", true, ""}));

INSTANTIATE_TEST_SUITE_P(
    Bad, FormulaCheck,
    testing::Values(
        Case{"", true, "has no head"}, Case{"N*1", true, "has no head"},
        Case{"[]N*1", true, "has no head"}, Case{"[DEC rpm", true, "has no head"},
        Case{"[a b c]N*1", true, "has no head"}, Case{"[DEC]N*1\n", true, "has no head"},
        Case{"[rpm]N*1", true, "names no format"}, Case{"[HEX]N*2\n[DEC]N*1", true, "must be N*1"},
        Case{"[DEC HEX]N*1\n[HEX DEC]N*1", true, "does not join"},
        Case{"[rpm inc]N*1", true, "does not join"},
        // The evaluator would cut at the sign.
        Case{"[DEC]N-1", true, "is not N with"}, Case{"[DEC]N+1", true, "is not N with"},
        Case{"[DEC]N*-1", true, "is not N with"}, Case{"[DEC]N*1E-05", true, "is not N with"},
        Case{"[DEC]2*N", true, "is not N with"}, Case{"[DEC]N/0", true, "is not N with"},
        Case{"[DEC]N*", true, "is not N with"}, Case{"[DEC]", true, "is not N with"},
        Case{"[DEC]N/1.5.2", true, "is not N with"},
        Case{"[DEC]N*[60400010]", true, "is not N with"},  // none of the five operands
        Case{"[DEC abcdefghijklmnopqrstu]N*1\n[abcdefghijklmnopqrstu DEC]N*1", true,
             "more than 20 characters"},
        Case{"[DEC]N*1111111111*1111111111*1111111111*1111111111*1111111111*1111111111", true,
             "more than 64 characters"},
        Case{"[DEC rpm]N*1", true, "no line [rpm DEC]"},
        Case{"[rpm DEC]N*1", false, "no line [DEC rpm]"}, Case{"[HEX]N*1", true, "offers DEC"},
        // Entering in rps would take the line of rps/s, since it only looks at the beginning.
        Case{"[DEC rps/s]N*2\n[rps/s DEC]N/2\n[DEC rps]N*1\n[rps DEC]N*1", true,
             "found for entering rps"},
        // Showing in s would take the line of ms.
        Case{"[DEC ms]N*1\n[ms DEC]N*1\n[DEC s]N/1000\n[s DEC]N*1000", true, "found for showing s"},
        Case{"[ASCII]N*1\n[DEC A]N*1\n[A DEC]N*1", true, "found for entering A"}));

TEST(FormulaCheck, MoreThan200BytesAreRefused) {
    std::string formula = "[DEC]N*1";
    while (formula.size() <= 200)
        formula += "\n[DEC]N*1";
    EXPECT_EQ(formula_problem(formula, true), "more than 200 bytes");
}

TEST(FormulaCheck, FirstUnitIsTheTargetOfTheFirstLine) {
    EXPECT_EQ(first_unit("[HEX]N*1\n[DEC]N*1"), "HEX");
    EXPECT_EQ(first_unit("[DEC rpm]N*1"), "rpm");
    EXPECT_EQ(first_unit("N*1"), "DEC");
}

}  // namespace
}  // namespace servo::data
