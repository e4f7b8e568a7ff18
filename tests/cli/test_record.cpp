// `record` against a recorder that the test directs; the simulated drive's own recorder is in
// test_record_simulated.cpp.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/record_machine.h"

namespace servo::cli {
namespace {

using Json = nlohmann::json;
using Writes = std::vector<std::pair<int, std::uint32_t>>;

// What the dictionary alone refuses; no line is opened.
struct RecordRefusal : testing::Test {
    void expect(std::vector<std::string> arguments, int status, const std::string& message) {
        EXPECT_EQ(machine.run(std::move(arguments)), status);
        EXPECT_EQ(machine.err, "servoctl: " + message + "\n");
        EXPECT_EQ(machine.out, "");
        EXPECT_EQ(machine.opened, 0);
    }
    FakeMachine machine;
    TempFolder folder;
    std::string file = (folder / "out.scope").string();
};

TEST_F(RecordRefusal, ObjectOutsideOfTheDictionaryIsWrongUse) {
    expect({"record", file, "--objects", "606300,123456"}, 2, "123456 is not in the dictionary");
    expect({"record", file, "--objects", "606300", "--trigger", "123456", "--level", "1"}, 2,
           "123456 is not in the dictionary");
}

TEST_F(RecordRefusal, StringIsNothingToRecordOrToTriggerOn) {
    expect({"record", file, "--objects", "100800"}, 2, "100800 can't be recorded, it is no number");
    expect({"record", file, "--objects", "606300", "--trigger", "100800", "--level", "1"}, 2,
           "100800 can't be recorded, it is no number");
}

TEST_F(RecordRefusal, TwoWideObjectsOfOnePairAreWrongUse) {
    expect({"record", file, "--objects", "606300,60FF00"}, 2,
           "606300 and 60FF00 have 32 bits each: channels 1 and 2 share one place for such an "
           "object; put an 8-bit or 16-bit object between them");
    expect({"record", file, "--objects", "606300,604000,60FF00,300100"}, 2,
           "60FF00 and 300100 have 32 bits each: channels 3 and 4 share one place for such an "
           "object; put an 8-bit or 16-bit object between them");
}

TEST_F(RecordRefusal, MoreThanTheBufferHoldsIsWrongUse) {
    expect({"record", file, "--objects", "606300,604000", "--samples", "1366"}, 2,
           "1366 samples of 6 bytes are 8196 bytes; the recorder holds 8192, which is 1365 "
           "samples");
}

TEST_F(RecordRefusal, OffsetNotBelowTheSamplesIsWrongUse) {
    expect({"record", file, "--objects", "606300", "--samples", "100", "--offset", "100"}, 2,
           "an offset of 100 leaves nothing of 100 samples behind the trigger");
}

TEST_F(RecordRefusal, LevelThatTheUnitDoesNotKnowIsWrongUse) {
    expect({"record", file, "--objects", "606300", "--trigger", "606300", "--level", "1x"}, 2,
           "'x' is no part of a number in DEC");
    expect({"record", file, "--objects", "606300", "--trigger", "300100", "--level", "1"}, 2,
           "300100 can't be written in 'x'");
}

TEST_F(RecordRefusal, NameThatNothingIsWrittenUnderIsWrongUse) {
    expect({"record", (folder / "out.xls").string(), "--objects", "606300"}, 2,
           "a recording is never written under a name that ends in xls");
}

TEST_F(RecordRefusal, FolderThatIsNotThereIsAFileThatCannotBeWritten) {
    const std::string nowhere = (folder / "none" / "out.scope").string();
    expect({"record", nowhere, "--objects", "606300"}, 4, nowhere + " can't be written");
    expect({"record", folder.path().string(), "--objects", "606300"}, 4,
           folder.path().string() + " can't be written");
}

TEST_F(RecordRefusal, PortThatCannotBeOpenedIsThree) {
    machine.link_error = "the port /dev/nope can't be opened";
    EXPECT_EQ(machine.run({"--port", "/dev/nope", "record", file, "--objects", "606300"}), 3);
    EXPECT_EQ(machine.err, "servoctl: the port /dev/nope can't be opened\n");
}

struct Record : testing::Test {
    RecordMachine machine;
    FakeRecorder& recorder = machine.recorder;
};

// Rows of an int32 and a uint16.
const char kThreeRows[] =
    "\x01\x00\x00\x00\xFF\xFF"
    "\xFE\xFF\xFF\xFF\x00\x80"
    "\x78\x56\x34\x12\x07\x00";

TEST_F(Record, FileHoldsWhatTheDriveRecordedAndTheConstantsOfItsUnits) {
    recorder.bytes.assign(kThreeRows, sizeof kThreeRows - 1);
    EXPECT_EQ(machine.record({"--objects", "606300,604000", "--period", "4", "--samples", "3"}), 0)
        << machine.err;
    EXPECT_EQ(machine.out, "3\n");
    EXPECT_EQ(machine.written(),
              "4,3\r\n10000,150,19661,8,9\r\n"
              "Actual Position,6316800\r\nControlword,6307840\r\nNULL,0\r\nNULL,0\r\n"
              "1,65535,0,0\r\n-2,32768,0,0\r\n305419896,7,0,0\r\n");
}

TEST_F(Record, NamesAreInTheLanguageAskedFor) {
    recorder.bytes.assign(12, '\0');
    EXPECT_EQ(machine.record({"--lang", "zh", "--objects", "606300", "--samples", "3"}), 0);
    EXPECT_EQ(machine.lines().at(2), "\xCA\xB5\xBC\xCA\xCE\xBB\xD6\xC3,6316800");
}

TEST_F(Record, JsonIsOneValue) {
    recorder.bytes.assign(12, '\0');
    EXPECT_EQ(machine.record({"--json", "--objects", "606300", "--samples", "3"}), 0);
    EXPECT_EQ(Json::parse(machine.out), Json({{"file", machine.file()}, {"samples", 3}}));
}

TEST_F(Record, SetUpIsWrittenStoppedWithThePlacesEmptiedFirst) {
    recorder.bytes.assign(12, '\0');
    machine.record({"--objects", "606300", "--samples", "3", "--period", "2"});
    const Writes expected{{7, 0}, {1, 0},  {2, 0}, {3, 0},  {4, 0}, {6, 0}, {5, 0x60630020},
                          {8, 2}, {10, 3}, {9, 1}, {12, 0}, {7, 1}, {7, 0}, {7, 0}};
    EXPECT_EQ(recorder.writes(), expected);
}

TEST_F(Record, ObjectsGoToChannelsInOrderAndWideOnesToTheirPairsPlace) {
    recorder.bytes.assign(9 * 2, '\0');
    recorder.bytes[0] = 1;   // first byte of the wide object
    recorder.bytes[4] = 2;   // of channel 2
    recorder.bytes[6] = -5;  // channel 3
    EXPECT_EQ(machine.record({"--objects", "606300,604000,606000,604000", "--samples", "2"}), 0)
        << machine.err;
    const Writes all = recorder.writes();
    const Writes sources(all.begin() + 1, all.begin() + 7);
    EXPECT_EQ(
        sources,
        (Writes{
            {1, 0}, {6, 0}, {2, 0x60400010}, {3, 0x60600008}, {4, 0x60400010}, {5, 0x60630020}}));
    EXPECT_EQ(machine.lines().at(6), "1,2,-5,0");
}

// The drive puts a wide object into the first place of its pair.
TEST_F(Record, WideObjectBehindANarrowOneIsRecordedBeforeItAndWrittenBehindIt) {
    recorder.bytes.assign("\x01\x00\x00\x00\x02\x00\x00\x00\x00\x00\x05", 11);
    EXPECT_EQ(machine.record({"--objects", "604000,606300,606000,606300", "--samples", "1"}), 0)
        << machine.err;
    const Writes all = recorder.writes();
    const Writes sources(all.begin() + 1, all.begin() + 7);
    EXPECT_EQ(
        sources,
        (Writes{
            {1, 0}, {3, 0}, {2, 0x60400010}, {4, 0x60600008}, {5, 0x60630020}, {6, 0x60630020}}));
    EXPECT_EQ(machine.lines().at(2), "Controlword,6307840");
    EXPECT_EQ(machine.lines().at(3), "Actual Position,6316800");
    EXPECT_EQ(machine.lines().at(6), "2,1,5,0");
}

TEST_F(Record, OffsetIsHalfOfFewSamplesAndTwoHundredFiftyOfMany) {
    recorder.bytes.assign(1000, '\0');
    const auto offset = [&](std::vector<std::string> more) {
        machine.drive.requests.clear();
        more.insert(more.begin(), {"--objects", "604000"});
        EXPECT_EQ(machine.record(std::move(more)), 0) << machine.err;
        for (const auto& [sub, value] : recorder.writes())
            if (sub == 9) return static_cast<int>(value);
        return -1;
    };
    EXPECT_EQ(offset({}), 250);
    recorder.bytes.assign(20, '\0');
    EXPECT_EQ(offset({"--samples", "10"}), 5);
    EXPECT_EQ(offset({"--samples", "10", "--offset", "9"}), 9);
    recorder.bytes.assign(2, '\0');
    EXPECT_EQ(offset({"--samples", "1"}), 0);
}

TEST_F(Record, LevelOfTheTriggerGoesThroughItsFirstUnit) {
    recorder.bytes.assign(6, '\0');
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3", "--trigger", "60FF00",
                              "--level", "-366.21", "--edge", "0", "--offset", "1"}),
              0)
        << machine.err;
    const Writes all = recorder.writes();
    const Writes trigger(all.begin() + 9, all.begin() + 13);
    EXPECT_EQ(
        trigger,
        (Writes{{9, 1}, {12, 0x60FF0020}, {13, static_cast<std::uint32_t>(-999997)}, {11, 0}}));
}

TEST_F(Record, LevelOutOfRangeIsOneAndStartsNothing) {
    EXPECT_EQ(
        machine.record({"--objects", "604000", "--trigger", "606300", "--level", "9999999999"}), 1);
    EXPECT_EQ(machine.err, "servoctl: the trigger level is out of range\n");
    EXPECT_EQ(recorder.starts, 0);
}

TEST_F(Record, TriggerIsWaitedForWithoutEndAndThatIsSaid) {
    recorder.bytes.assign(6, '\0');
    recorder.course = {{5ms, 2}, {60s, 3}, {300ms, 0}};
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3", "--trigger", "606300",
                              "--level", "5", "--timeout", "0.5"}),
              0);
    EXPECT_TRUE(
        machine.err.starts_with("servoctl: waiting for the trigger; Ctrl-C ends it\n"
                                "servoctl: recording\n"
                                "servoctl: reading the buffer, "))
        << machine.err;
}

TEST_F(Record, ProgressOfALongBufferIsSaidInTenths) {
    recorder.bytes.assign(1000, '\0');
    EXPECT_EQ(machine.record({"--objects", "604000"}), 0);
    for (const char* text : {"recording\n", "buffer, 10 %", "buffer, 50 %", "buffer, 90 %"})
        EXPECT_NE(machine.err.find(text), std::string::npos) << text << machine.err;
}

TEST_F(Record, CtrlCWhileItWaitsStopsTheRecorderAndWritesNothing) {
    recorder.course = {{5ms, 2}};
    machine.ctrl_c = [&] { return machine.bench.time.now() > 3s; };
    EXPECT_EQ(machine.record({"--objects", "604000", "--trigger", "606300", "--level", "5"}), 1);
    EXPECT_EQ(machine.err,
              "servoctl: waiting for the trigger; Ctrl-C ends it\nservoctl: interrupted\n");
    EXPECT_EQ(machine.drive.value(0x230007), 0);
    EXPECT_EQ(machine.bench.engine.scope(), nullptr);
    EXPECT_EQ(machine.written(), "no file");
    machine.session.close();
    EXPECT_FALSE(machine.bench.port.is_open());
}

TEST_F(Record, CtrlCWithinTheSetUpOrTheUploadStopsTheRecorderToo) {
    recorder.bytes.assign(1000, '\0');
    machine.ctrl_c = [&] { return recorder.writes().size() == 4; };
    EXPECT_EQ(machine.record({"--objects", "604000"}), 1);
    EXPECT_EQ(recorder.starts, 0);
    EXPECT_EQ(recorder.writes().back(), (std::pair<int, std::uint32_t>{7, 0}));
    machine.interrupted = false;
    machine.ctrl_c = [&] { return machine.bench.engine.state.scopeState == 6; };
    EXPECT_EQ(machine.record({"--objects", "604000"}), 1);
    EXPECT_EQ(recorder.starts, 1);
    EXPECT_EQ(recorder.writes().back(), (std::pair<int, std::uint32_t>{7, 0}));
    EXPECT_EQ(machine.written(), "no file");
}

TEST_F(Record, StopBehindCtrlCIsRepeatedUntilTheDriveConfirmsIt) {
    recorder.course = {{5ms, 2}};
    machine.ctrl_c = [&] {
        if (!machine.interrupted && machine.bench.time.now() > 2s) {
            machine.bench.line.to_drive.set_cut(true);
            machine.bench.time.after(300ms, [&] { machine.bench.line.to_drive.set_cut(false); });
            return true;
        }
        return false;
    };
    EXPECT_EQ(machine.record({"--objects", "604000"}), 1);
    EXPECT_EQ(machine.drive.value(0x230007), 0);
}

TEST_F(Record, RefusedSourceIsOneAndNothingIsStarted) {
    machine.drive.refuse.insert(0x230001);
    EXPECT_EQ(machine.record({"--objects", "604000"}), 1);
    EXPECT_EQ(machine.err,
              "servoctl: the drive refuses 604000 as a source: 0x06020000, the drive has no such "
              "object\n");
    EXPECT_EQ(recorder.starts, 0);
    EXPECT_EQ(machine.written(), "no file");
}

TEST_F(Record, RefusedStartIsOneWithTheReason) {
    recorder.refuses_start = true;
    EXPECT_EQ(machine.record({"--objects", "604000"}), 1);
    EXPECT_NE(machine.err.find("servoctl: the drive refuses the start of the recorder: 0x08000022"),
              std::string::npos)
        << machine.err;
    EXPECT_EQ(recorder.starts, 1);
    EXPECT_EQ(machine.written(), "no file");
}

TEST_F(Record, RefusedBufferIsOneAndDoesNotHang) {
    recorder.bytes = "";
    machine.drive.refuse.insert(0x230013);
    EXPECT_EQ(machine.record({"--objects", "604000"}), 1);
    EXPECT_NE(machine.err.find("servoctl: the drive refuses the buffer of the recorder: 0x0602000"),
              std::string::npos)
        << machine.err;
    EXPECT_EQ(machine.drive.value(0x230007), 0);
}

TEST_F(Record, RecorderThatFallsSilentIsNoAnswerWithinTheTime) {
    recorder.mute_from_start = {0x230007};
    EXPECT_EQ(machine.record({"--objects", "604000", "--timeout", "0.7"}), 1);
    EXPECT_NE(machine.err.find("servoctl: no answer to the requests to the recorder within 0.7 s"),
              std::string::npos)
        << machine.err;
    EXPECT_EQ(machine.written(), "no file");
}

TEST_F(Record, LineThatIsCutWhileItWaitsIsThree) {
    recorder.course = {{5ms, 2}};
    machine.bench.time.at(3s, [&] { machine.bench.line.set_cut(true); });
    EXPECT_EQ(machine.record({"--objects", "604000", "--trigger", "606300", "--level", "5"}), 3);
    EXPECT_TRUE(machine.err.ends_with("servoctl: the link is lost, the drive does not answer\n"))
        << machine.err;
    EXPECT_FALSE(machine.bench.port.is_open());
}

TEST_F(Record, LineThatIsCutWithAShortPatienceIsThreeToo) {
    recorder.course = {{5ms, 2}};
    machine.bench.time.at(3s, [&] { machine.bench.line.set_cut(true); });
    EXPECT_EQ(machine.record({"--objects", "604000", "--timeout", "0.5"}), 3);
}

TEST_F(Record, LostStartIsSeenAndMadeAgainSoThatNoOldRecordingIsWritten) {
    machine.drive.add_text(0x230013, std::string(6, '\x11'));
    recorder.bytes.assign("\x01\x00\x02\x00\x03\x00", 6);
    recorder.lost_starts = 1;
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3"}), 0) << machine.err;
    EXPECT_EQ(recorder.starts, 2);
    EXPECT_NE(machine.err.find("the drive did not confirm the start; once more"),
              std::string::npos);
    const std::vector<std::string> lines = machine.lines();
    EXPECT_EQ((std::vector<std::string>{lines.begin() + 6, lines.end()}),
              (std::vector<std::string>{"1,0,0,0", "2,0,0,0", "3,0,0,0"}));
}

// With three, a recording on a line that loses a quarter of its frames failed once in fifteen.
TEST_F(Record, ABadLineHasSixTriesForItsStart) {
    machine.drive.add_text(0x230013, std::string(6, '\x11'));
    recorder.bytes.assign("\x01\x00\x02\x00\x03\x00", 6);
    recorder.lost_starts = 5;
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3"}), 0) << machine.err;
    EXPECT_EQ(recorder.starts, 6);
}

TEST_F(Record, StartThatIsNeverConfirmedIsOne) {
    machine.drive.add_text(0x230013, std::string(6, '\x11'));
    recorder.lost_starts = 100;
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3"}), 1);
    EXPECT_TRUE(machine.err.ends_with("servoctl: the drive does not confirm the start\n"));
    EXPECT_EQ(machine.written(), "no file");
}

TEST_F(Record, BufferOfAnotherLengthIsOneAndNoFile) {
    recorder.bytes.assign(4, '\0');
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3"}), 1);
    EXPECT_TRUE(machine.err.ends_with("servoctl: the drive gave 4 bytes in place of 6\n"))
        << machine.err;
    EXPECT_EQ(machine.written(), "no file");
}

TEST_F(Record, SetUpIsRepeatedWhereTheAnswerIsLost) {
    recorder.bytes.assign(6, '\0');
    int frame = 0;
    machine.drive.mangle = [&](std::vector<std::uint8_t> bytes) {
        if (++frame % 3 == 0) bytes[4] ^= 0x10U;  // the checksum shows it
        return bytes;
    };
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3"}), 0) << machine.err;
}

TEST_F(Record, ConstantThatTheDriveLacksIsSaidAndStandsAsZero) {
    recorder.bytes.assign(6, '\0');
    machine.drive.refuse.insert(0x60F613);
    machine.drive.refuse.insert(0x304007);  // not every drive has it: no message
    EXPECT_EQ(machine.record({"--objects", "604000", "--samples", "3", "--timeout", "0.5"}), 0);
    EXPECT_TRUE(machine.err.starts_with(
        "servoctl: the drive does not give 60F613; the file holds 0 for it\nservoctl: recording"))
        << machine.err;
    EXPECT_EQ(machine.lines().at(1), "10000,150,0,0,9");
}

}  // namespace
}  // namespace servo::cli
