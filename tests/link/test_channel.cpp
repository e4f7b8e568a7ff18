#include <gtest/gtest.h>

#include "link/channel.h"
#include "support/direct_port.h"
#include "support/fake_drive.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;
using namespace std::chrono_literals;

namespace {

struct FrameReader : testing::Test {
    DirectPort port;
    RecordingClock clock;
    SerialChannel channel{port, clock};
    Payload reply{};
    const Payload payload{0x43, 0x10, 0x64, 0x03, 1, 2, 3, 4};
    std::vector<std::uint8_t> good = FakeDrive::frame_of(payload);
};

struct FakeCan final : CanAdapter {
    void ResetClient() override {}
    void ResetFilter() override {}
    CanInit Init(int, std::uint8_t) override { return CanInit::kOk; }
    void Close() override {}
    void CAN_Write(const CanMessage& message) override { written.push_back(message); }
    std::uint8_t CAN_Read(CanMessage& message) override {
        if (status == 0) message = next;
        return status;
    }
    std::vector<CanMessage> written;
    CanMessage next;
    std::uint8_t status = 0;
};

}  // namespace

TEST_F(FrameReader, GoodFrameIsAccepted) {
    port.feed(good);
    EXPECT_EQ(channel.get_frame(reply), kFrameAccepted);
    EXPECT_EQ(reply, payload);
    EXPECT_TRUE(clock.sleeps.empty()) << "nothing to wait for";
}

TEST_F(FrameReader, RightChecksumButForeignFirstByteGives37AndAnEmptyQueue) {
    port.feed(FakeDrive::frame_of(payload, 5));
    port.feed({1, 2, 3});
    EXPECT_EQ(channel.get_frame(reply), 0x37);
    EXPECT_EQ(port.in.size(), 0U);
    EXPECT_EQ(reply, payload) << "the payload is copied whatever follows";
}

TEST_F(FrameReader, WrongChecksumAndWrongFirstByteGives37) {
    auto bytes = FakeDrive::frame_of(payload, 5);
    bytes[9] ^= 1;
    port.feed(bytes);
    EXPECT_EQ(channel.get_frame(reply), 0x37);
    EXPECT_EQ(port.in.size(), 0U);
}

TEST_F(FrameReader, WrongChecksumGives16AndKeepsTheQueue) {
    good[9] ^= 1;
    port.feed(good);
    port.feed({9, 9, 9});
    EXPECT_EQ(channel.get_frame(reply), 0x16);
    EXPECT_EQ(port.in.size(), 3U);
    EXPECT_EQ(port.in_clears, 0);
}

TEST_F(FrameReader, NineWaitingBytesGive21AfterExactlyOnePauseOf2Ms) {
    good.pop_back();
    port.feed(good);
    EXPECT_EQ(channel.get_frame(reply), 0x21);
    EXPECT_EQ(clock.sleeps, std::vector{2ms});
    EXPECT_EQ(port.in.size(), 9U);
}

TEST_F(FrameReader, FrameThatIsCompleteBehindThePauseIsTaken) {
    port.feed({good.begin(), good.begin() + 9});
    clock.while_sleeping = [&] { port.feed({good[9]}); };
    EXPECT_EQ(channel.get_frame(reply), kFrameAccepted);
    EXPECT_EQ(clock.sleeps.size(), 1U);
}

TEST_F(FrameReader, TwentyWaitingBytesGiveOneFramePerCall) {
    port.feed(good);
    port.feed(good);
    EXPECT_EQ(channel.get_frame(reply), kFrameAccepted);
    EXPECT_EQ(port.in.size(), 10U);
    EXPECT_EQ(channel.get_frame(reply), kFrameAccepted);
    EXPECT_EQ(port.in.size(), 0U);
}

TEST_F(FrameReader, CommIdIsTheFirstByteBothWays) {
    channel.COMM_ID = 9;
    channel.Datawrite(payload);
    EXPECT_EQ(port.take_sent(), FakeDrive::frame_of(payload, 9));
    port.feed(good);
    EXPECT_EQ(channel.get_frame(reply), 0x37);
    port.feed(FakeDrive::frame_of(payload, 9));
    EXPECT_EQ(channel.get_frame(reply), 0);
}

TEST_F(FrameReader, NothingIsSentWhileThePortIsClosed) {
    port.opened = false;
    channel.Datawrite(payload);
    EXPECT_TRUE(port.take_sent().empty());
}

// Every single-bit flip of a frame is seen: by the checksum, or by the communication ID.
TEST_F(FrameReader, AllEightySingleBitFlipsAreRefused) {
    for (std::size_t bit = 0; bit < 80; ++bit) {
        auto bytes = good;
        bytes[bit / 8] ^= static_cast<std::uint8_t>(1U << (bit % 8));
        port.in.clear();
        port.feed(bytes);
        EXPECT_EQ(channel.get_frame(reply), bit < 8 ? 0x37 : 0x16) << "bit " << bit;
    }
}

TEST_F(FrameReader, WithTheChecksSwitchedOffTheFlipsWouldPass) {
    channel.check_frames = false;
    good[5] ^= 1;
    port.feed(good);
    EXPECT_EQ(channel.get_frame(reply), kFrameAccepted);
}

TEST(CanChannel, WithoutAnAdapterNothingComesAndNothingGoes) {
    CanChannel channel;
    Payload reply{};
    channel.Datawrite(reply);
    EXPECT_FALSE(channel.is_open());
    EXPECT_NE(channel.get_frame(reply), 0);
}

TEST(CanChannel, SendsThePayloadInTheOneMessage) {
    CanChannel channel;
    FakeCan adapter;
    channel.set_adapter(&adapter);
    channel.can_message.identifier = 0x601;
    channel.can_message.length = 8;
    channel.Datawrite({1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_EQ(adapter.written.size(), 1U);
    EXPECT_EQ(adapter.written[0].identifier, 0x601U);
    EXPECT_EQ(adapter.written[0].length, 8);
    EXPECT_EQ(adapter.written[0].data, (Payload{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(CanChannel, TakesTheDataOfAnyIdentifier) {
    CanChannel channel;
    FakeCan adapter;
    channel.set_adapter(&adapter);
    adapter.next.identifier = 0x123;
    adapter.next.data = {8, 7, 6, 5, 4, 3, 2, 1};
    Payload reply{};
    EXPECT_EQ(channel.get_frame(reply), 0);
    EXPECT_EQ(reply, adapter.next.data);
}

TEST(CanChannel, ResultIsTheStatusOfTheAdapter) {
    CanChannel channel;
    FakeCan adapter;
    channel.set_adapter(&adapter);
    adapter.status = 0x20;
    Payload reply{1};
    EXPECT_EQ(channel.get_frame(reply), 0x20);
    EXPECT_EQ(reply, Payload{1}) << "untouched";
}
