// Step 10, the serial read-back: kept as a state, entered here by its selector.
#include "support/fake_drive.h"
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

struct ReadBack : testing::Test, TransferBench {
    void begin(const std::string& serial, const std::string& barcode) {
        objects.add_text(0x2FF800, serial);
        download.type_Text4(barcode);
        open_link();
        run_for(50ms);
        state.download_active = 1;
        state.download_step = 10;
        state.sendmod = 0;
        port.clear_out();
        objects.requests.clear();
    }
    std::vector<int> commands() const {
        std::vector<int> list;
        for (const auto& request : objects.requests)
            list.push_back(request.payload[0]);
        return list;
    }
    void expect_idle() {
        EXPECT_EQ(state.download_active, 0);
        EXPECT_EQ(state.download_step, 0);
        EXPECT_EQ(state.str_read_step, 0);
        EXPECT_EQ(state.is_access_str, 0);
    }
    FakeDrive objects{time, line};
};

using Box = std::pair<std::string, std::string>;

}  // namespace

TEST_F(ReadBack, NoTransitionOfTheTransferEntersIt) {
    TransferBench bench;
    bench.load(4120);
    bench.drive.in_bootloader = true;
    bench.start();
    while (bench.state.download_active == 1) {
        EXPECT_NE(bench.state.download_step, 10);
        bench.run_ticks(1);
    }
}

TEST_F(ReadBack, SendActionStartsASegmentedStringRead) {
    begin("SN1", "SN1");
    run_ticks(1);
    EXPECT_EQ(state.is_access_str, 1);
    EXPECT_EQ(state.Comm_Over_Time_Cnts, 350);
    run_for(5ms);
    ASSERT_FALSE(objects.requests.empty());
    EXPECT_EQ(objects.requests[0].payload,
              (link::Payload{0x40, 0xF8, 0x2F, 0x00, 0x00, 0x00, 0x00, 0x00}));
}

TEST_F(ReadBack, RightSerialNumberIsTold) {
    begin("SN-0123456789-ABCDEF", "SN-0123456789-ABCDEF");
    ASSERT_TRUE(finish(10s));
    EXPECT_EQ(box(), (Box{"", "序列号正确，下载完成"}));
    EXPECT_EQ(data().step10_string, "SN-0123456789-ABCDEF");
    EXPECT_EQ(ended(), TransferEnd::kReadBack);
    expect_idle();
}

TEST_F(ReadBack, OtherSerialNumberIsAFailure) {
    begin("SN-1", "SN-2");
    ASSERT_TRUE(finish(10s));
    EXPECT_EQ(box(), (Box{"", "下载失败"}));
    expect_idle();
}

TEST_F(ReadBack, EveryLengthComesBackWhole) {
    for (std::size_t length = 0; length <= 30; ++length) {
        const std::string serial = std::string("abcdefghijklmnopqrstuvwxyz01234").substr(0, length);
        ReadBack* self = this;
        if (length > 0) communication.Command1_Click();
        self->begin(serial, serial);
        ASSERT_TRUE(finish(10s)) << length;
        EXPECT_EQ(data().step10_string, serial);
        EXPECT_EQ(box().second, "序列号正确，下载完成");
    }
}

TEST_F(ReadBack, AlternatesTheTogglesAndPacesTheSegments) {
    begin(std::string(21, 'x'), "");
    ASSERT_TRUE(finish(10s));
    const auto list = commands();
    ASSERT_GE(list.size(), 4U);
    EXPECT_EQ(list[0], 0x40);
    std::vector<int> distinct;
    for (const int command : list)
        if (distinct.empty() || distinct.back() != command) distinct.push_back(command);
    EXPECT_EQ(distinct, (std::vector<int>{0x40, 0x60, 0x70, 0x60}));
}

TEST_F(ReadBack, ObjectThatDoesNotExistIsAFailure) {
    begin("x", "x");
    objects.refuse.insert(0x2FF800);
    ASSERT_TRUE(finish(10s));
    EXPECT_EQ(box(), (Box{"", "下载失败"}));
    expect_idle();
}

TEST_F(ReadBack, SilentDriveEndsByTheLinksTimeOut) {
    begin("x", "x");
    objects.silent = true;
    ASSERT_TRUE(finish(10s));
    EXPECT_FALSE(port.is_open());
    EXPECT_EQ(ended(), TransferEnd::kLinkClosed);
}

TEST_F(ReadBack, ForeignFramesAreNoPartOfIt) {
    begin("SN-1", "SN-1");
    objects.send_payload({0x43, 0x10, 0x64, 0x03, 1, 2, 3, 4});
    objects.send_payload({0x01, 'z', 'z', 'z', 'z', 'z', 'z', 'z'});  // a segment nobody asked for
    ASSERT_TRUE(finish(10s));
    EXPECT_EQ(box(), (Box{"", "序列号正确，下载完成"}));
}

TEST_F(ReadBack, PageStringUnderWayDoesNotMixIn) {
    begin("SN-1", "SN-1");
    state.is_access_str = 1;
    state.str_read_step = 2;
    ASSERT_TRUE(finish(10s));
    EXPECT_EQ(box(), (Box{"", "序列号正确，下载完成"}));
}
