#include <gtest/gtest.h>

#include "direct_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

struct Status : testing::Test, DirectBench {
    Status() {
        engine.add_listener(listener);
        engine.pictures.observer = [this](int button) { written.push_back(button); };
    }
    void receive(Identity object, std::uint32_t value, std::uint8_t command = 0x4B) {
        state.sendmod = 1;
        feed(answer(object, value, command));
        tick();
    }
    RecordingListener listener;
    std::vector<int> written;
};

}  // namespace

TEST_F(Status, FaultWord1ZeroShowsGreenOnce) {
    EXPECT_EQ(engine.pictures.button5(), kErrorgray);
    receive(0x260100, 0);
    receive(0x260100, 0);
    EXPECT_EQ(engine.pictures.button5(), kErrorgreen);
    EXPECT_EQ(written, std::vector{5});
}

TEST_F(Status, FaultWord1From0To5ShowsRedOnce) {
    receive(0x260100, 0);
    written.clear();
    receive(0x260100, 5);
    receive(0x260100, 5);
    receive(0x260100, 7);
    EXPECT_EQ(engine.pictures.button5(), kErrorred);
    EXPECT_EQ(written, std::vector{5});
}

TEST_F(Status, FaultWord2AloneNeverChangesThePicture) {
    receive(0x260200, 0xFFFF);
    EXPECT_EQ(engine.pictures.button5(), kErrorgray);
    EXPECT_TRUE(written.empty());
    EXPECT_EQ(values.fault_word2, 0xFFFF);
}

TEST_F(Status, FaultWordsAreShownWithFourHexDigits) {
    receive(0x260100, 0xA5);
    receive(0x260200, 0x8000);
    EXPECT_EQ(values.fault_text1, "00A5");
    EXPECT_EQ(values.fault_text2, "8000");
    receive(0x260100, 0);
    EXPECT_EQ(values.fault_text1, "0000");
    using Words = std::vector<std::pair<int, std::uint16_t>>;
    EXPECT_EQ(listener.words, (Words{{1, 0xA5}, {2, 0x8000}, {1, 0}}));
}

TEST_F(Status, UpperBytesOfAFaultWordDoNotCount) {
    receive(0x260100, 0xFFFF0000);
    EXPECT_EQ(engine.pictures.button5(), kErrorgreen);
}

TEST_F(Status, OperandsTakeTheirValuesAndFlags) {
    receive(0x651003, 0xFFF6);
    receive(0x641003, 0x80000001, 0x43);
    receive(0x304007, 70000, 0x43);
    receive(0x60F613, 0xFFFF);
    receive(0x60F611, 12);
    const FormulaOperands& operands = values.operands;
    EXPECT_EQ(operands.o65100310.value, -10) << "signed 16 bits";
    EXPECT_EQ(operands.o64100320.value, -2147483647) << "signed 32 bits";
    EXPECT_EQ(operands.o30400710.value, 70000);
    EXPECT_EQ(operands.o60F61310.value, 65535) << "read as unsigned 16 bits";
    EXPECT_EQ(operands.o60F61110.value, 12);
    for (const Operand& operand : {operands.o65100310, operands.o64100320, operands.o30400710,
                                   operands.o60F61310, operands.o60F61110})
        EXPECT_TRUE(operand.seen);
}

TEST_F(Status, FirmwareCheckIsShownInUpperCaseHexWithoutLeadingZeros) {
    receive(0x1F5601, 0x00ABCDEF, 0x43);
    EXPECT_EQ(values.firmware_check_text, "ABCDEF");
    EXPECT_TRUE(values.firmware_check_known);
    receive(0x1F5601, 0xFFFFFFFE, 0x43);
    EXPECT_EQ(values.firmware_check_text, "FFFFFFFE");
    EXPECT_EQ(listener.checks, (std::vector<std::string>{"ABCDEF", "FFFFFFFE"}));
}

TEST_F(Status, AbortAcknowledgementAndEchoAreNoAnswers) {
    for (const std::uint8_t command : {0x80, 0x60, 0x40, 0x00})
        receive(0x641003, 5, command);
    EXPECT_FALSE(values.operands.o64100320.seen);
}

TEST_F(Status, OpeningClearsTheFlagsAndKeepsTheValues) {
    receive(0x641003, 4000, 0x43);
    receive(0x1F5601, 1, 0x43);
    engine.link_opened();
    EXPECT_FALSE(values.operands.o64100320.seen);
    EXPECT_EQ(values.operands.o64100320.value, 4000);
    EXPECT_FALSE(values.firmware_check_known);
}

TEST_F(Status, WhileAPageIsReadStatusAnswersAreDropped) {
    state.Com_Change = 1;
    receive(0x260100, 5);
    EXPECT_EQ(values.fault_word1, 0);
}

TEST_F(Status, OpeningStartsTheEngineAfresh) {
    state.sendmod = 1;
    state.Comm_Over_Time_Cnts = 30;
    state.miss_count = 20;
    state.Com_Change = 1;
    state.status_lane = 2;
    state.sub_Pointer = 9;
    state.rotation = 2;
    state.page = 7;
    state.allow_add_pointer = 1;
    state.is_access_str = 1;
    state.str_temp_string = "x";
    state.str_read_step = 2;
    state.segment_pace = 3;
    state.last_write_key = 5;
    state.g_FW_CRC_OK_overtimes = 1;
    state.io_refresh = kTrue;
    engine.link_opened();
    const EngineState fresh;
    EXPECT_EQ(state.sendmod, fresh.sendmod);
    EXPECT_EQ(state.Comm_Over_Time_Cnts, 350);
    EXPECT_EQ(state.miss_count, 0);
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.rotation, 0);
    EXPECT_EQ(state.page, 0);
    EXPECT_EQ(state.allow_add_pointer, 0);
    EXPECT_EQ(state.is_access_str, 0);
    EXPECT_EQ(state.str_temp_string, "");
    EXPECT_EQ(state.str_read_step, 0);
    EXPECT_EQ(state.segment_pace, 0);
    EXPECT_EQ(state.last_write_key, -1);
    EXPECT_EQ(state.g_FW_CRC_OK_overtimes, 0);
    EXPECT_EQ(state.io_refresh, 0);
}
