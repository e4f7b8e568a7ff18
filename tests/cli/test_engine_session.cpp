#include <gtest/gtest.h>

#include "cli/engine_session.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// The engine in virtual time, a drive that answers by a table, and a session between them.
struct SessionTest : testing::Test {
    SessionTest() {
        drive.add(0x60630004, -123456);
        drive.add(0x60600001, -3);
        drive.add_text(0x100800, "A drive with a long name");
        drive.add_text(0x100A00, "");
    }

    void open() { ASSERT_EQ(session.open("COM1", 38400, 127), link::OpenResult::kOpened); }

    // How often the drive was asked for the object with that command.
    std::size_t asked(link::Identity object, std::uint8_t command) const {
        std::size_t count = 0;
        for (const auto& request : drive.requests) {
            if (link::reply_key(request.payload) == object && request.payload[0] == command)
                ++count;
        }
        return count;
    }

    test::VirtualBench bench;
    test::FakeDrive drive{bench.time, bench.line};
    bool interrupted = false;
    EngineSession session{bench.engine, [this] {
                              bench.run_for(3ms);
                              return !interrupted;
                          }};
};

TEST_F(SessionTest, ReadGivesTheNumberByTheType) {
    open();
    const Reply reply = session.read(0x606300, "int32", 1s);
    EXPECT_EQ(reply.outcome, Outcome::kDone);
    EXPECT_EQ(reply.number, -123456);
    EXPECT_EQ(session.read(0x606000, "int8", 1s).number, -3);
    EXPECT_EQ(session.read(0x606000, "uint8", 1s).number, 253);
    EXPECT_EQ(asked(0x606300, link::kRead), 1U);
}

TEST_F(SessionTest, StringComesInSegments) {
    open();
    EXPECT_EQ(session.read(0x100800, "String", 1s).bytes, "A drive with a long name");
    EXPECT_EQ(session.read(0x100A00, "String", 1s).bytes, "");
    EXPECT_EQ(session.read(0x100800, "String", 1s).bytes, "A drive with a long name");
}

TEST_F(SessionTest, StringOnALineThatDoublesEveryFrameHoldsNoPartTwice) {
    drive.mangle = [](std::vector<std::uint8_t> frame) {
        const std::vector<std::uint8_t> copy = frame;
        frame.insert(frame.end(), copy.begin(), copy.end());
        return frame;
    };
    open();
    EXPECT_EQ(session.read(0x100800, "String", 2s).bytes, "A drive with a long name");
}

TEST_F(SessionTest, StringWhoseSegmentIsLostIsReadAnew) {
    int segments = 0;
    drive.answers = [&](const link::Payload& request) {
        return request[0] != link::kSegment1 || ++segments != 1;
    };
    open();
    EXPECT_EQ(session.read(0x100800, "String", 2s).bytes, "A drive with a long name");
    EXPECT_EQ(asked(0x100800, link::kRead), 2U);
}

TEST_F(SessionTest, LostAnswerIsAskedForAgain) {
    int reads = 0;
    drive.answers = [&](const link::Payload& request) {
        return link::reply_key(request) != 0x606300 || ++reads > 2;
    };
    open();
    EXPECT_EQ(session.read(0x606300, "int32", 5s).number, -123456);
    EXPECT_EQ(asked(0x606300, link::kRead), 3U);
}

TEST_F(SessionTest, RefusedObjectCarriesTheReason) {
    open();
    const Reply reply = session.read(0x123400, "int32", 1s);
    EXPECT_EQ(reply.outcome, Outcome::kRefused);
    EXPECT_NE(reply.abort_code, 0U);
}

TEST_F(SessionTest, SilentObjectOnALivingDriveIsNoAnswerAndKeepsTheLink) {
    drive.mute.insert(0x606300);
    open();
    EXPECT_EQ(session.read(0x606300, "int32", 10s).outcome, Outcome::kNoAnswer);
    EXPECT_EQ(session.read(0x606000, "int8", 1s).number, -3);
}

TEST_F(SessionTest, DeadLineIsALostLinkAfterTheEnginesPatience) {
    open();
    session.read(0x606300, "int32", 1s);
    bench.line.set_cut(true);
    const auto before = session.now();
    EXPECT_EQ(session.read(0x606300, "int32", 60s).outcome, Outcome::kLinkLost);
    EXPECT_LT(session.now() - before, 3s);
    EXPECT_FALSE(bench.port.is_open());
    EXPECT_EQ(session.read(0x606300, "int32", 60s).outcome, Outcome::kLinkLost);
}

TEST_F(SessionTest, DeadLineWithALimitShorterThanThePatienceIsALostLinkToo) {
    drive.silent = true;
    open();
    EXPECT_EQ(session.read(0x606300, "int32", 500ms).outcome, Outcome::kLinkLost);
    EXPECT_EQ(session.wait([] { return false; }, 100ms), Outcome::kLinkLost);
}

TEST_F(SessionTest, WriteIsSentOnceAndAcknowledged) {
    open();
    EXPECT_EQ(session.write(0x60600001, 6, 1s).outcome, Outcome::kDone);
    EXPECT_EQ(drive.value(0x606000), 6);
    EXPECT_EQ(asked(0x606000, link::kWrite1), 1U);
    // The first read behind a write is not dropped here.
    EXPECT_EQ(session.read(0x606000, "int8", 100ms).number, 6);
    EXPECT_EQ(asked(0x606000, link::kRead), 1U);
}

TEST_F(SessionTest, WriteIsNotRepeatedWhenTheDriveSaysNothing) {
    drive.mute.insert(0x606000);
    open();
    EXPECT_EQ(session.write(0x60600001, 6, 5s).outcome, Outcome::kNoAnswer);
    EXPECT_EQ(asked(0x606000, link::kWrite1), 1U);
}

TEST_F(SessionTest, RefusedWriteCarriesTheReason) {
    drive.refuse.insert(0x606000);
    open();
    const Reply reply = session.write(0x60600001, 6, 1s);
    EXPECT_EQ(reply.outcome, Outcome::kRefused);
    EXPECT_NE(reply.abort_code, 0U);
}

TEST_F(SessionTest, WaitLetsTheStatusLanesBringTheScale) {
    drive.add(0x64100304, 10000);
    open();
    EXPECT_EQ(session.wait([&] { return session.operands().o64100320.seen; }, 1s), Outcome::kDone);
    EXPECT_EQ(session.operands().o64100320.value, 10000);
    EXPECT_EQ(session.wait([] { return false; }, 200ms), Outcome::kNoAnswer);
}

TEST_F(SessionTest, ReadBehindAWaitIsNotAnsweredByWhatTheLanesLeft) {
    drive.add(0x26010002, 1);
    open();
    for (int value = 2; value < 40; ++value) {
        session.wait([] { return false; }, std::chrono::milliseconds(value));
        drive.objects[0x260100].value = value;
        EXPECT_EQ(session.read(0x260100, "uint16", 1s).number, value);
    }
}

TEST_F(SessionTest, CtrlCEndsTheWait) {
    drive.silent = true;
    open();
    interrupted = true;
    EXPECT_EQ(session.read(0x606300, "int32", 60s).outcome, Outcome::kInterrupted);
    EXPECT_EQ(session.wait([] { return false; }, 60s), Outcome::kInterrupted);
}

TEST_F(SessionTest, PortThatIsBusyOrMissingStaysClosed) {
    bench.port.ports[2] = link::OpenResult::kBusy;
    EXPECT_EQ(session.open("COM2", 38400, 127), link::OpenResult::kBusy);
    EXPECT_EQ(session.open("COM9", 38400, 127), link::OpenResult::kFailed);
    EXPECT_FALSE(bench.timer.enabled());
    EXPECT_EQ(session.read(0x606300, "int32", 1s).outcome, Outcome::kLinkLost);
}

TEST_F(SessionTest, CloseLeavesTheLineToOthers) {
    open();
    session.close();
    EXPECT_FALSE(bench.port.is_open());
    EXPECT_FALSE(bench.timer.enabled());
}

TEST_F(SessionTest, AnotherCommunicationIdIsUsedBothWays) {
    drive.id = 5;
    ASSERT_EQ(session.open("COM1", 38400, 5), link::OpenResult::kOpened);
    EXPECT_EQ(session.read(0x606000, "int8", 1s).number, -3);
}

}  // namespace
}  // namespace servo::cli
