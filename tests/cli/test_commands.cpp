#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/fake_machine.h"

namespace servo::cli {
namespace {

using Json = nlohmann::json;

struct CommandTest : testing::Test {
    FakeMachine machine;
    FakeSession& session = machine.session;
};

using Read = CommandTest;
using Write = CommandTest;
using WatchCommand = CommandTest;
using Faults = CommandTest;
using Dict = CommandTest;
using Ports = CommandTest;

TEST_F(Read, PrintsKeyRawTextAndUnitSeparatedByTabs) {
    session.answers[0x606300] = number(-12345);
    session.answers[0x604000] = number(15);
    EXPECT_EQ(machine.run({"read", "606300", "604000"}), 0);
    EXPECT_EQ(machine.out, "606300\t-12345\t-12345\tDEC\n604000\t15\t000F\tHEX\n");
    EXPECT_EQ(machine.err, "");
    EXPECT_EQ(session.types, (std::vector<std::string>{"int32", "uint16"}));
}

TEST_F(Read, FirstUnitOfTheObjectOnceItsScaleIsKnown) {
    session.answers[0x60FF00] = number(1000000);
    session.known.o64100320 = {10000, true};
    EXPECT_EQ(machine.run({"read", "60FF00"}), 0);
    EXPECT_EQ(machine.out, "60FF00\t1000000\t366.21\trpm\n");
    EXPECT_EQ(session.waits, 1);
}

TEST_F(Read, UnitAskedForWinsAndMayNeedNoScale) {
    session.answers[0x60FF00] = number(-1);
    EXPECT_EQ(machine.run({"read", "60FF00", "--unit", "HEX"}), 0);
    EXPECT_EQ(machine.out, "60FF00\t-1\tFFFFFFFF\tHEX\n");
    EXPECT_EQ(session.waits, 0);
}

TEST_F(Read, UnitThatTheObjectDoesNotHaveIsWrongUse) {
    EXPECT_EQ(machine.run({"read", "60FF00", "--unit", "Ap"}), 2);
    EXPECT_EQ(machine.err, "servoctl: 60FF00 has no unit 'Ap'; its units are rpm, DEC, HEX\n");
    EXPECT_EQ(machine.opened, 0);
}

TEST_F(Read, ScaleThatDoesNotComeIsNoAnswer) {
    EXPECT_EQ(machine.run({"read", "60FF00"}), 1);
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.err,
              "servoctl: the drive does not give 641003, which the unit is computed with\n");
}

TEST_F(Read, GuardedOperandIsNotInsistedOn) {
    session.answers[0x300100] = number(5);
    EXPECT_EQ(machine.run({"read", "300100"}), 0);
    EXPECT_EQ(machine.out, "300100\t5\t?????\tx\n");
}

TEST_F(Read, RefusedObjectIsOneWithAMessageAndTheOthersAreRead) {
    session.answers[0x604000] = number(1);
    EXPECT_EQ(machine.run({"read", "606300", "604000"}), 1);
    EXPECT_EQ(machine.out, "606300\t\t?????\tDEC\n604000\t1\t0001\tHEX\n");
    EXPECT_EQ(machine.err,
              "servoctl: the drive refuses 606300: 0x06020000, the drive has no such object\n");
}

TEST_F(Read, SilentObjectIsOneWithAMessage) {
    session.answers[0x606300] = {Outcome::kNoAnswer, 0.0, {}, 0};
    EXPECT_EQ(machine.run({"--timeout", "0.5", "read", "606300"}), 1);
    EXPECT_EQ(machine.err, "servoctl: no answer to 606300 within 0.5 s\n");
}

TEST_F(Read, LostLinkIsThreeAndEndsTheCommand) {
    session.answers[0x606300] = number(7);
    session.answers[0x604000] = {Outcome::kLinkLost, 0.0, {}, 0};
    EXPECT_EQ(machine.run({"read", "606300", "604000", "606300"}), 3);
    EXPECT_EQ(machine.out, "606300\t7\t7\tDEC\n");
    EXPECT_EQ(machine.err, "servoctl: the link is lost, the drive does not answer\n");
}

TEST_F(Read, PortThatCannotBeOpenedIsThree) {
    machine.link_error = "the port /dev/nope can't be opened";
    EXPECT_EQ(machine.run({"--port", "/dev/nope", "read", "606300"}), 3);
    EXPECT_EQ(machine.err, "servoctl: the port /dev/nope can't be opened\n");
}

TEST_F(Read, KeyOutsideOfTheDictionaryIsWrongUseAndOpensNothing) {
    EXPECT_EQ(machine.run({"read", "606300", "123456"}), 2);
    EXPECT_EQ(machine.err, "servoctl: 123456 is not in the dictionary\n");
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.opened, 0);
}

TEST_F(Read, ObjectOfNoKnownTypeIsWrongUse) {
    EXPECT_EQ(machine.run({"read", "2FF100"}), 2);
    EXPECT_EQ(machine.err, "servoctl: 2FF100 has no type that can be read\n");
}

TEST_F(Read, MissingDictionaryIsFour) {
    EXPECT_EQ(machine.run({"--data", (machine.folder / "none").string(), "read", "606300"}), 4);
    EXPECT_NE(machine.err.find("no dictionary (Servo.dat or qorlan.dat) in"), std::string::npos);
}

TEST_F(Read, StringHasATextAndNoNumber) {
    session.answers[0x100800] = {Outcome::kDone, 0.0, "V1\t\xCB\xC5", 0};
    EXPECT_EQ(machine.run({"read", "100800"}), 0);
    EXPECT_EQ(machine.out, "100800\t\tV1\\t伺\tDEC\n");
}

TEST_F(Read, JsonIsOneValueWithNumbersAndNull) {
    session.answers[0x606300] = number(-5);
    EXPECT_EQ(machine.run({"--json", "read", "606300", "604000"}), 1);
    const Json json = Json::parse(machine.out);
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[0], Json::parse(R"({"key":"606300","raw":-5,"text":"-5","unit":"DEC"})"));
    EXPECT_EQ(json[1], Json::parse(R"({"key":"604000","raw":null,"text":"?????","unit":"HEX"})"));
}

TEST_F(Read, JsonIsWholeWhenTheLinkIsLost) {
    session.answers[0x606300] = {Outcome::kLinkLost, 0.0, {}, 0};
    EXPECT_EQ(machine.run({"--json", "read", "606300"}), 3);
    EXPECT_EQ(Json::parse(machine.out), Json::array());
}

TEST_F(Write, PrintsOkAndSendsTheRawValue) {
    EXPECT_EQ(machine.run({"write", "606000", "-3"}), 0);
    EXPECT_EQ(machine.out, "ok\n");
    ASSERT_EQ(session.writes.size(), 1U);
    EXPECT_EQ(session.writes[0].first, 0x60600001U);
    EXPECT_EQ(session.writes[0].second, -3);
}

TEST_F(Write, GoesThroughTheFormulaOfTheUnit) {
    session.known.o64100320 = {10000, true};
    EXPECT_EQ(machine.run({"write", "60FF00", "366.21"}), 0);
    ASSERT_EQ(session.writes.size(), 1U);
    EXPECT_EQ(session.writes[0].second, 999997);  // 366.21 / 1875 * 512 * 10000
}

TEST_F(Write, HexadecimalFollowsTheSignRuleOfAPage) {
    EXPECT_EQ(machine.run({"write", "604000", "FFFF"}), 0);
    EXPECT_EQ(session.writes[0].second, -1);
}

TEST_F(Write, EmptyTextWritesZeroAsAPageDoes) {
    EXPECT_EQ(machine.run({"write", "606000", ""}), 0);
    EXPECT_EQ(session.writes[0].second, 0);
}

TEST_F(Write, RefusalOfTheDriveIsPrintedAndOne) {
    session.write_answer = {Outcome::kRefused, 0.0, {}, 0x06090030};
    EXPECT_EQ(machine.run({"write", "606000", "99"}), 1);
    EXPECT_EQ(machine.out, "refused: 0x06090030, the value is out of range\n");
}

TEST_F(Write, ReadOnlyObjectIsRefusedWithoutALink) {
    EXPECT_EQ(machine.run({"write", "606300", "1"}), 1);
    EXPECT_EQ(machine.out, "refused: the object is read-only\n");
    EXPECT_EQ(machine.opened, 0);
}

TEST_F(Write, StringIsRefused) {
    EXPECT_EQ(machine.run({"write", "100A00", "abc"}), 1);
    EXPECT_EQ(machine.out, "refused: a string can't be written\n");
}

TEST_F(Write, ValueOutsideOfTheRangeIsRefusedWithoutAWrite) {
    for (const char* text : {"12345678901", "9999999999", "2147483648"}) {
        EXPECT_EQ(machine.run({"write", "606000", text}), 1) << text;
        EXPECT_EQ(machine.out, "refused: the value is out of range\n");
    }
    EXPECT_TRUE(session.writes.empty());
}

TEST_F(Write, CharacterThatAPageSwallowsIsWrongUse) {
    EXPECT_EQ(machine.run({"write", "606000", "1x"}), 2);
    EXPECT_EQ(machine.err, "servoctl: 'x' is no part of a number in DEC\n");
    EXPECT_EQ(machine.run({"write", "606000", "1.2.3"}), 2);
    EXPECT_EQ(machine.run({"write", "604000", "0xF"}), 2);
    EXPECT_EQ(machine.run({"write", "606000", "伺"}), 2);
    EXPECT_EQ(machine.err, "servoctl: '伺' is no part of a number in DEC\n");
    EXPECT_TRUE(session.writes.empty());
}

TEST_F(Write, UnitWithoutAWayBackIsWrongUse) {
    EXPECT_EQ(machine.run({"write", "300100", "5"}), 2);
    EXPECT_EQ(machine.err, "servoctl: 300100 can't be written in 'x'\n");
    EXPECT_EQ(machine.run({"write", "300100", "5", "--unit", "DEC"}), 0);
}

TEST_F(Write, SilenceIsOneAndALostLinkThree) {
    session.write_answer = {Outcome::kNoAnswer, 0.0, {}, 0};
    EXPECT_EQ(machine.run({"write", "606000", "1"}), 1);
    EXPECT_EQ(machine.err, "servoctl: no answer to the write of 606000 within 5 s\n");
    session.write_answer.outcome = Outcome::kLinkLost;
    EXPECT_EQ(machine.run({"write", "606000", "1"}), 3);
}

TEST_F(Write, JsonTellsTheResult) {
    EXPECT_EQ(machine.run({"--json", "write", "606000", "1"}), 0);
    EXPECT_EQ(Json::parse(machine.out), Json::parse(R"({"key":"606000","result":"ok"})"));
}

TEST_F(WatchCommand, ReadsEachObjectInEachRoundWithTheTime) {
    session.answers[0x606300] = number(1);
    session.answers[0x604000] = number(2);
    EXPECT_EQ(machine.run({"watch", "606300", "604000", "--count", "2", "--every", "100"}), 0);
    EXPECT_EQ(machine.out,
              "0.010\t606300\t1\t1\tDEC\n0.020\t604000\t2\t0002\tHEX\n"
              "0.110\t606300\t1\t1\tDEC\n0.120\t604000\t2\t0002\tHEX\n");
}

TEST_F(WatchCommand, RoundThatTakesLongerThanThePeriodIsFollowedAtOnce) {
    session.answers[0x606300] = number(1);
    EXPECT_EQ(machine.run({"watch", "606300", "--count", "3", "--every", "0"}), 0);
    EXPECT_EQ(machine.out,
              "0.010\t606300\t1\t1\tDEC\n0.020\t606300\t1\t1\tDEC\n0.030\t606300\t1\t1\tDEC\n");
}

TEST_F(WatchCommand, CtrlCEndsItWell) {
    session.answers[0x606300] = number(1);
    session.accesses_until_ctrl_c = 3;
    EXPECT_EQ(machine.run({"--json", "watch", "606300"}), 0);
    EXPECT_EQ(Json::parse(machine.out).size(), 2U);
    EXPECT_EQ(machine.err, "");
}

TEST_F(WatchCommand, RefusedObjectIsSaidOnce) {
    EXPECT_EQ(machine.run({"watch", "606300", "--count", "3"}), 1);
    EXPECT_EQ(machine.err,
              "servoctl: the drive refuses 606300: 0x06020000, the drive has no such object\n");
    EXPECT_EQ(machine.out.substr(0, 26), "0.010\t606300\t\t?????\tDEC\n1.");
}

TEST_F(WatchCommand, LostLinkEndsItWithThree) {
    session.answers[0x606300] = number(1);
    session.wait_outcome = Outcome::kLinkLost;
    EXPECT_EQ(machine.run({"watch", "606300"}), 3);
}

TEST_F(Faults, OneRowForEachFaultOfBothWords) {
    session.answers[0x260100] = number(0x8001);
    session.answers[0x260200] = number(0x0040);
    EXPECT_EQ(machine.run({"faults"}), 0);
    EXPECT_EQ(machine.out,
              "1\t0001\tExtended error\n1\t8000\tEEPROM internal\n2\t0040\tPositive limit "
              "switch\n");
    EXPECT_EQ(machine.run({"--lang", "zh", "faults"}), 0);
    EXPECT_NE(machine.out.find("2\t0040\t正限位报错\n"), std::string::npos);
}

TEST_F(Faults, NoneIsSaidOnStandardError) {
    session.answers[0x260100] = number(0);
    session.answers[0x260200] = number(0);
    EXPECT_EQ(machine.run({"faults"}), 0);
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.err, "servoctl: no faults\n");
    EXPECT_EQ(machine.run({"--lang", "zh", "faults"}), 0);
    EXPECT_EQ(machine.err, "servoctl: 没有故障\n");
    EXPECT_EQ(machine.run({"--json", "faults"}), 0);
    EXPECT_EQ(Json::parse(machine.out), Json::array());
}

// In one line, where the window has two.
TEST_F(Faults, TheyAreNamedAsInTheWindow) {
    session.answers[0x260100] = number(0x4008);
    session.answers[0x260200] = number(0x0100);
    EXPECT_EQ(machine.run({"faults"}), 0);
    EXPECT_EQ(machine.out,
              "1\t0008\tEncoder counting or Encoder CRC\n"
              "1\t4000\tMotor Commutation or Encoder information\n2\t0100\tSTO2 Error\n");
}

TEST_F(Dict, FindLooksIntoKeysAndNamesOfBothLanguages) {
    EXPECT_EQ(machine.run({"dict", "find", "ACTUAL"}), 0);
    EXPECT_EQ(machine.out, "606300\tint32\tRH\tActual Position\n");
    EXPECT_EQ(machine.run({"dict", "find", "实际"}), 0);
    EXPECT_EQ(machine.out, "606300\tint32\tRH\tActual Position\n");
    EXPECT_EQ(machine.run({"dict", "find", "60ff00"}), 0);
    EXPECT_EQ(machine.out, "60FF00\tint32\tRWL\tTarget Velocity\n");
    EXPECT_EQ(machine.run({"--lang", "zh", "dict", "find", "actual"}), 0);
    EXPECT_EQ(machine.out, "606300\tint32\tRH\t实际位置\n");
}

TEST_F(Dict, FindWithoutAMatchIsOne) {
    EXPECT_EQ(machine.run({"dict", "find", "nothing like it"}), 1);
    EXPECT_EQ(machine.out, "");
    EXPECT_EQ(machine.err, "servoctl: nothing in the dictionary matches 'nothing like it'\n");
}

TEST_F(Dict, ShowPrintsEveryField) {
    EXPECT_EQ(machine.run({"dict", "show", "60FF00"}), 0);
    EXPECT_EQ(machine.out,
              "key: 60FF00\nindex: 60FF\nsub: 00\nname_ch: \nname_en: Target Velocity\n"
              "type: Integer32\nattribute: RWL\n"
              "formula: [DEC rpm]N*1875/512/[64100320]\\n[rpm DEC]N/1875*512*[64100320]\\n"
              "[DEC]N*1\\n[HEX]N*1\nmodbus: 0200\ncomment_ch: \ncomment_en: \n");
    EXPECT_EQ(machine.run({"--json", "dict", "show", "606300"}), 0);
    EXPECT_EQ(Json::parse(machine.out)["comment_en"], "where it is");
}

TEST_F(Dict, ShowOfAnUnknownKeyIsWrongUse) {
    EXPECT_EQ(machine.run({"dict", "show", "123456"}), 2);
    EXPECT_EQ(machine.err, "servoctl: 123456 is not in the dictionary\n");
}

TEST_F(Ports, TextDeviceAndDescription) {
    EXPECT_EQ(machine.run({"ports"}), 0);
    EXPECT_EQ(machine.out, "COM11\t/dev/ttyUSB0\tUSB-Serial\nCOM1\t/dev/ttyS0\t\n");
    EXPECT_EQ(machine.run({"--json", "ports"}), 0);
    EXPECT_EQ(Json::parse(machine.out)[0]["device"], "/dev/ttyUSB0");
}

TEST(OutputFields, ControlCharactersDoNotBreakARow) {
    EXPECT_EQ(field_text("a\tb\nc\x01\x7F"), "a\\tb\\nc\\x01\\x7F");
    EXPECT_EQ(field_text("C:\\dir 伺服"), "C:\\dir 伺服");
}

}  // namespace
}  // namespace servo::cli
