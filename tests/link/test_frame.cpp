#include <gtest/gtest.h>

#include "link/frame.h"
#include "support/fake_drive.h"

using namespace servo;
using namespace servo::link;

TEST(Frame, ReadOf641003WithCommId127) {
    const Frame frame = make_frame(127, make_payload(0x64100304, 0, true, 0));
    EXPECT_EQ(frame, (Frame{0x7F, 0x40, 0x10, 0x64, 0x03, 0x00, 0x00, 0x00, 0x00, 0xCA}));
}

TEST(Frame, SumOfAllTenBytesIsZeroModulo256) {
    for (int id = 0; id < 256; id += 5) {
        const Frame frame = make_frame(static_cast<std::uint8_t>(id),
                                       make_payload(0x60FF0004, id * 7919, false, 0));
        EXPECT_EQ(checksum(frame), 0) << id;
    }
}

TEST(Payload, Key2FFF0002WithValue55AA) {
    EXPECT_EQ(make_payload(0x2FFF0002, 0x55AA, false, 0),
              (Payload{0x2B, 0xFF, 0x2F, 0x00, 0xAA, 0x55, 0x00, 0x00}));
}

TEST(Payload, Key64100304WithRead) {
    EXPECT_EQ(make_payload(0x64100304, 0, true, 0),
              (Payload{0x40, 0x10, 0x64, 0x03, 0x00, 0x00, 0x00, 0x00}));
}

TEST(Payload, MinusOneToA16BitObjectSendsFourBytesOfOnes) {
    EXPECT_EQ(make_payload(0x60710002, -1, false, 0),
              (Payload{0x2B, 0x71, 0x60, 0x00, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(Payload, WriteCommandFollowsTheSizeOfTheKey) {
    EXPECT_EQ(make_payload(0x60600001, 1, false, 0)[0], 0x2F);
    EXPECT_EQ(make_payload(0x60600002, 1, false, 0)[0], 0x2B);
    EXPECT_EQ(make_payload(0x60600004, 1, false, 0)[0], 0x23);
}

TEST(Payload, WriteOfAnyOtherSizeHasTheCommandByteZero) {
    for (const WireKey size : {0, 3, 5, 6, 8, 255})
        EXPECT_EQ(make_payload(0x60600000 | size, 1, false, 0)[0], 0) << size;
}

TEST(Payload, StringReadTakesItsCommandFromTheStep) {
    EXPECT_EQ(make_payload(0x10080006, 0, true, 0)[0], 0x40);
    EXPECT_EQ(make_payload(0x10080006, 0, true, 1)[0], 0x60);
    EXPECT_EQ(make_payload(0x10080006, 0, true, 2)[0], 0x70);
    EXPECT_EQ(make_payload(0x10080002, 0, true, 2)[0], 0x40) << "other sizes have no steps";
}

TEST(Reply, IdentityIsIndexAndSub) {
    EXPECT_EQ(reply_key({0x4B, 0xF6, 0x60, 0x11, 0, 0, 0, 0}), 0x60F611);
    EXPECT_EQ(reply_key({0x4B, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0}), 0xFFFFFF);
}

TEST(Reply, ValuesBySizeCode) {
    struct Case {
        std::array<std::uint8_t, 4> data;
        int code;
        double value;
    };
    for (const Case& c : {
             Case{{0xFF, 0x7F, 0, 0}, 12, 32767},
             Case{{0x00, 0x80, 0, 0}, 12, -32768},
             Case{{0xFF, 0xFF, 0xFF, 0xFF}, 14, -1},
             Case{{0xFF, 0xFF, 0xFF, 0xFF}, 4, 4294967295.0},
             Case{{0x00, 0x00, 0x00, 0x80}, 14, -2147483648.0},
             Case{{0xFF, 0xFF, 0xFF, 0x7F}, 14, 2147483647},
             Case{{0x7F, 0xAA, 0xAA, 0xAA}, 11, 127},
             Case{{0x80, 0xAA, 0xAA, 0xAA}, 11, -128},
             Case{{0xFF, 0xAA, 0xAA, 0xAA}, 1, 255},
             Case{{0xFF, 0xFF, 0xAA, 0xAA}, 2, 65535},
             Case{{0x34, 0x12, 0xAA, 0xAA}, 2, 0x1234},
             Case{{0x78, 0x56, 0x34, 0x12}, 4, 0x12345678},
             Case{{0xFF, 0xFF, 0xFF, 0xFF}, 0, 0},
             Case{{0xFF, 0xFF, 0xFF, 0xFF}, 6, 0},
             Case{{0xFF, 0xFF, 0xFF, 0xFF}, 3, 0},
         }) {
        const Payload payload{0x43, 0, 0, 0, c.data[0], c.data[1], c.data[2], c.data[3]};
        EXPECT_EQ(reply_value(payload, c.code), c.value) << "code " << c.code;
    }
}
