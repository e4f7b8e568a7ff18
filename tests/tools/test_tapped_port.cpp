// The port that lets the journal listen: whole frames are shown both ways, nothing is changed.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "journal_bench.h"

namespace servo::tools::test {
namespace {

using servo::test::FakeDrive;

struct Heard final : LineTap {
    void sent(const link::Payload& payload) override { out.push_back(payload); }
    void heard(const link::Payload& payload) override { in.push_back(payload); }
    std::vector<link::Payload> out;
    std::vector<link::Payload> in;
};

struct TappedLine : ::testing::Test {
    TappedLine() {
        tapped.set_tap(&tap);
        tapped.write(FakeDrive::frame_of(request));
    }
    std::vector<std::uint8_t> read(std::size_t count) {
        std::vector<std::uint8_t> bytes(count);
        bytes.resize(tapped.read(bytes));
        return bytes;
    }
    link::Payload request = frame_payload(link::kRead, kMode, 0);
    link::Payload answer = frame_payload(link::kAnswer1, kMode, 0xFD);
    servo::test::DirectPort port;
    TappedPort tapped{port};
    Heard tap;
};

TEST_F(TappedLine, ShowsWhatLeavesAndChangesNothing) {
    EXPECT_EQ(port.take_sent(), FakeDrive::frame_of(request));
    EXPECT_EQ(tap.out, std::vector{request});
}

TEST_F(TappedLine, AnAnswerInPiecesIsOneFrame) {
    const auto bytes = FakeDrive::frame_of(answer);
    port.feed({bytes.begin(), bytes.begin() + 3});
    EXPECT_EQ(read(10).size(), 3U);
    EXPECT_TRUE(tap.in.empty());
    port.feed({bytes.begin() + 3, bytes.end()});
    EXPECT_EQ(read(10).size(), 7U);
    EXPECT_EQ(tap.in, std::vector{answer});
}

TEST_F(TappedLine, ABrokenFrameCostsNoWholeOneBehindIt) {
    auto bytes = FakeDrive::frame_of(answer);
    bytes[4] ^= 1;
    port.feed(bytes);
    port.feed(FakeDrive::frame_of(answer));
    read(20);
    EXPECT_EQ(tap.in, std::vector{answer});
}

TEST_F(TappedLine, OnlyTheStationThatWasAskedIsHeard) {
    port.feed(FakeDrive::frame_of(answer, 5));
    read(10);
    EXPECT_TRUE(tap.in.empty());
    tapped.write(FakeDrive::frame_of(request, 5));
    port.feed(FakeDrive::frame_of(answer, 5));
    read(10);
    EXPECT_EQ(tap.in, std::vector{answer});
}

TEST_F(TappedLine, HalfAFrameDoesNotOutliveTheQueueThatWasCleared) {
    const auto bytes = FakeDrive::frame_of(answer);
    const std::vector<std::uint8_t> half(bytes.begin(), bytes.begin() + 5);
    port.feed(half);
    read(10);
    tapped.clear_in();
    port.feed(bytes);
    read(10);
    EXPECT_EQ(tap.in, std::vector{answer});
    EXPECT_EQ(port.in_clears, 1);
    port.feed(half);
    read(10);
    tapped.close();
    EXPECT_FALSE(port.opened);
    EXPECT_EQ(tapped.open("COM1", 38400), link::OpenResult::kOpened);
    port.feed(bytes);
    read(10);
    EXPECT_EQ(tap.in.size(), 2U);
}

TEST_F(TappedLine, AClosedPortSendsNothingAndShowsNothing) {
    port.opened = false;
    tapped.write(FakeDrive::frame_of(request));
    EXPECT_EQ(tap.out.size(), 1U) << "that of the beginning";
}

TEST_F(TappedLine, TextOfAFirmwareImageIsNoFrame) {
    const std::string text = "S11300002A";
    tapped.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    EXPECT_EQ(tap.out.size(), 1U);
    EXPECT_FALSE(port.take_sent().empty());
}

// Whatever comes in, and in whatever pieces, leaves the port as it is.
RC_GTEST_PROP(TappedLineOfAnything, PassesEveryByte, ()) {
    servo::test::DirectPort port;
    TappedPort tapped(port);
    Heard tap;
    tapped.set_tap(&tap);
    tapped.write(FakeDrive::frame_of(frame_payload(link::kRead, kMode, 0)));
    const auto bytes = *rc::gen::arbitrary<std::vector<std::uint8_t>>();
    port.feed(bytes);
    std::vector<std::uint8_t> passed;
    while (port.in_buffer_count() > 0) {
        std::vector<std::uint8_t> piece(*rc::gen::inRange<std::size_t>(1, 15));
        piece.resize(tapped.read(piece));
        passed.insert(passed.end(), piece.begin(), piece.end());
    }
    RC_ASSERT(passed == bytes);
}

}  // namespace
}  // namespace servo::tools::test
