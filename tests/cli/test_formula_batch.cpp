#include <gtest/gtest.h>

#include <string>

#include "cli/formula_batch.h"

namespace servo::cli {
namespace {

constexpr const char* kBad = "bad request";

std::string answer(std::string_view line) {
    FormulaBatch batch;
    return batch.answer(line);
}

TEST(FormulaBatch, Eval) {
    EXPECT_EQ(answer("eval\t2+3*4"), "14");
    EXPECT_EQ(answer("eval\t1/3"), "0.33333333333333331");
    EXPECT_EQ(answer("eval\t1E300*1E5"), "1.0000000000000001e+305");
    EXPECT_EQ(answer("eval\t"), "0");
    EXPECT_EQ(answer("eval\t7/0"), "0");
}
TEST(FormulaBatch, FailureThatGoesToTheCallerIsAnError) {
    EXPECT_EQ(answer("eval\t(1"), "error");
    EXPECT_EQ(answer("eval\tlg()"), "error");
    EXPECT_EQ(answer("text\t5\tx\t4\t[x](N"), "error");
    EXPECT_EQ(answer("unit\t5\tx\t4\t[x](N"), "error");
    EXPECT_EQ(answer("value\t5\tx\t[x DEC](N"), "error");
}
TEST(FormulaBatch, SplitGivesBothFieldsWithoutPadding) {
    EXPECT_EQ(answer("split\t[DEC rpm]N*1875/512/[64100320]"), "rpm\tN*1875/512/[64100320]");
    EXPECT_EQ(answer("split\t"), "DEC\tN*1");
    EXPECT_EQ(answer("split\t[DEC rpm]"), "rpm\tN*1");
}
TEST(FormulaBatch, OperandsHoldForTheLinesThatFollow) {
    FormulaBatch batch;
    const std::string speed = "text\t1000000\trpm\t4\t[DEC rpm]N*1875/512/[64100320]";
    EXPECT_EQ(batch.answer(speed), "0.00");
    EXPECT_EQ(batch.answer("operand\t64100320\t10000\t1"), "ok");
    EXPECT_EQ(batch.answer(speed), "366.21");
    EXPECT_EQ(batch.answer("operand\t64100320\t-10000\t0"), "ok");
    EXPECT_EQ(batch.answer("unit\t10\tx\t4\t[x]N+[64100320]"), "-9990");
}
TEST(FormulaBatch, UnseenOperandShowsQuestionMarks) {
    FormulaBatch batch;
    const std::string request = "text\t2\tx\t4\t[x]N*[30400710]";
    EXPECT_EQ(batch.answer("operand\t30400710\t5\t0"), "ok");
    EXPECT_EQ(batch.answer(request), "?????");
    EXPECT_EQ(batch.answer("unit\t2\tx\t4\t[x]N*[30400710]"), "10");
    EXPECT_EQ(batch.answer("operand\t30400710\t5\t1"), "ok");
    EXPECT_EQ(batch.answer(request), "10.00");
}
TEST(FormulaBatch, OperandRefusesWhatItCannotHold) {
    EXPECT_EQ(answer("operand\t65100310\t32767\t1"), "ok");
    EXPECT_EQ(answer("operand\t65100310\t32768\t1"), kBad);
    EXPECT_EQ(answer("operand\t60F61310\t2147483647\t1"), "ok");
    EXPECT_EQ(answer("operand\t60F61110\t2147483648\t1"), kBad);
    EXPECT_EQ(answer("operand\t60F61110\t1.5\t1"), kBad);
    EXPECT_EQ(answer("operand\t60F61110\t1\t2"), kBad);
    EXPECT_EQ(answer("operand\t60FF0010\t1\t1"), kBad);
}
TEST(FormulaBatch, TextOfFixedUnits) {
    EXPECT_EQ(answer("text\t-1\tHEX\t2\t"), "FFFF");
    EXPECT_EQ(answer("text\t2.5\tDEC\t4\t"), "3");
    EXPECT_EQ(answer("text\t16706\tASCII\t2\t"), "BA");
    EXPECT_EQ(answer("text\t5\tHEX\t3\t"), "");
    EXPECT_EQ(answer("text\t5\trpm\t4\t[DEC]N*1"), "");
}
TEST(FormulaBatch, LinesOfAListAreSeparatedByAnEscapedLineFeed) {
    EXPECT_EQ(answer("text\t5\tb\t4\t[a]N*2\\n[b]N*3"), "15.00");
    EXPECT_EQ(answer("value\t6\tb\t[a DEC]N*2\\n[b DEC]N*3"), "18");
}
TEST(FormulaBatch, AnswersAreEscaped) {
    EXPECT_EQ(answer("text\t233\tASCII\t1\t"), "\\xE9");
    EXPECT_EQ(answer("text\t2570\tASCII\t4\t"), "\\n\\n\\x00\\x00");
    EXPECT_EQ(answer("text\t92\tASCII\t1\t"), "\\\\");
    EXPECT_EQ(answer("text\t32382\tASCII\t2\t"), "~~");
    EXPECT_EQ(answer("text\t127\tASCII\t1\t"), "\\x7F");
    EXPECT_EQ(answer("split\t[a\\x07b\\x0A]N\\\\"), "a\\x07b\\n\tN\\\\");
}
TEST(FormulaBatch, EscapesAreRead) {
    EXPECT_EQ(answer("value\t\\xE9\tASCII\t"), "233");
    EXPECT_EQ(answer("value\t\\\\\tASCII\t"), "92");
    EXPECT_EQ(answer("value\t\\x4a\tASCII\t"), "74");
    EXPECT_EQ(answer("eval\t(4)*\\x801"), "16");
}
TEST(FormulaBatch, MalformedEscapeIsABadRequest) {
    EXPECT_EQ(answer("eval\t1\\"), kBad);
    EXPECT_EQ(answer("eval\t1\\t"), kBad);
    EXPECT_EQ(answer("eval\t1\\x4"), kBad);
    EXPECT_EQ(answer("eval\t1\\xG0"), kBad);
}
TEST(FormulaBatch, Value) {
    EXPECT_EQ(answer("value\t\tDEC\t"), "0");
    EXPECT_EQ(answer("value\t\tASCII\t"), "48");
    EXPECT_EQ(answer("value\t12345678901\tASCII\t"), "4294967296");
    EXPECT_EQ(answer("value\t12345678901\tDEC\t"), "4294967296");
    EXPECT_EQ(answer("value\tFFFF\tHEX\t"), "-1");
    EXPECT_EQ(answer("value\t5\trpm\t[DEC rpm]N*2"), "0");
    EXPECT_EQ(answer("value\tBA\tASCII\t"), "16706");
}
TEST(FormulaBatch, Hex) {
    EXPECT_EQ(answer("hex\tFFFF"), "-1");
    EXPECT_EQ(answer("hex\t0000FFFF"), "-1");
    EXPECT_EQ(answer("hex\t00010000"), "65536");
    EXPECT_EQ(answer("hex\t123456789"), "4886718345");
    EXPECT_EQ(answer("hex\t"), "0");
    EXPECT_EQ(answer("hex\t-1"), "0");
}
TEST(FormulaBatch, Payload) {
    EXPECT_EQ(answer("payload\t2FFF0002\t21930\t0"), "2B FF 2F 00 AA 55 00 00");
    EXPECT_EQ(answer("payload\t64100304\t0\t1"), "40 10 64 03 00 00 00 00");
    EXPECT_EQ(answer("payload\t60600002\t-1\t0"), "2B 60 60 00 FF FF FF FF");
    EXPECT_EQ(answer("payload\t60600004\t4294967295\t0"), "23 60 60 00 FF FF FF FF");
    EXPECT_EQ(answer("payload\t60600003\t1\t0"), "00 60 60 00 01 00 00 00");
    EXPECT_EQ(answer("payload\t606000\t1\t0"), kBad);
    EXPECT_EQ(answer("payload\t6060000G\t1\t0"), kBad);
    EXPECT_EQ(answer("payload\t60600002\t4294967296\t0"), kBad);
    EXPECT_EQ(answer("payload\t60600002\t1\t256"), kBad);
}
TEST(FormulaBatch, Frame) {
    EXPECT_EQ(answer("frame\t127\t40 10 64 03 00 00 00 00"), "7F 40 10 64 03 00 00 00 00 CA");
    EXPECT_EQ(answer("frame\t1\t4010640300000000"), "01 40 10 64 03 00 00 00 00 48");
    EXPECT_EQ(answer("frame\t256\t40 10 64 03 00 00 00 00"), kBad);
    EXPECT_EQ(answer("frame\t1\t40 10 64 03 00 00 00"), kBad);
    EXPECT_EQ(answer("frame\t1\t40 10 64 03 00 00 00 0X"), kBad);
}
TEST(FormulaBatch, Reply) {
    EXPECT_EQ(answer("reply\t12\t4B 60 60 00 FF 7F 00 00"), "32767");
    EXPECT_EQ(answer("reply\t12\t4B 60 60 00 00 80 00 00"), "-32768");
    EXPECT_EQ(answer("reply\t14\t43 60 60 00 FF FF FF FF"), "-1");
    EXPECT_EQ(answer("reply\t4\t43 60 60 00 FF FF FF FF"), "4294967295");
    EXPECT_EQ(answer("reply\t3\t43 60 60 00 FF FF FF FF"), "0");
    EXPECT_EQ(answer("reply\tx\t43 60 60 00 FF FF FF FF"), kBad);
}
TEST(FormulaBatch, RequestThatCannotBeRead) {
    EXPECT_EQ(answer(""), kBad);
    EXPECT_EQ(answer("eval"), kBad);
    EXPECT_EQ(answer("eval\t1\t2"), kBad);
    EXPECT_EQ(answer("Eval\t1"), kBad);
    EXPECT_EQ(answer("text\tabc\tDEC\t4\t"), kBad);
    EXPECT_EQ(answer("text\t1E\tDEC\t4\t"), kBad);
    EXPECT_EQ(answer("text\t.\tDEC\t4\t"), kBad);
    EXPECT_EQ(answer("text\t1E999\tDEC\t4\t"), kBad);
    EXPECT_EQ(answer("text\t1\tDEC\tfour\t"), kBad);
    EXPECT_EQ(answer("unit\t\tDEC\t4\t"), kBad);
}
TEST(FormulaBatch, NumbersMayHaveAnExponent) {
    EXPECT_EQ(answer("text\t-1.5e3\tDEC\t4\t"), "-1500");
    EXPECT_EQ(answer("unit\t.5E+1\tDEC\t4\t"), "5");
}
TEST(FormulaBatch, CarriageReturnAtTheEndDoesNotCount) {
    EXPECT_EQ(answer("hex\tFF\r"), "255");
}

}  // namespace
}  // namespace servo::cli
