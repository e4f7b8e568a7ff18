// The list of functions: its file, its groups, values to names and back.
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "digital_io_bench.h"
#include "tools/digital_io_list.h"

namespace servo::tools::test {
namespace {

using base::Language;

FunctionList shipped() {
    return parse_function_list(shipped_list());
}

std::string names(const IoFunctions& functions, int value) {
    return functions.names(static_cast<std::uint16_t>(value), Language::kEnglish);
}

TEST(DigitalIOList, TheShippedListHasThirtyFourInputsAndEighteenOutputs) {
    const FunctionList list = shipped();
    EXPECT_EQ(list.state, ListState::kRead);
    EXPECT_EQ(list.inputs.count(), 34);
    EXPECT_EQ(list.outputs.count(), 18);
    EXPECT_TRUE(list.bad_lines.empty());
    EXPECT_EQ(list.inputs.at(0).chinese, "使能");
    EXPECT_EQ(list.inputs.at(0).english, "Enable");
    EXPECT_EQ(list.inputs.at(33).english, "Fast Capture2");
    EXPECT_EQ(list.inputs.at(33).code, 0x9040);
    EXPECT_EQ(list.outputs.at(15).chinese, "位置表运行");
    EXPECT_EQ(list.outputs.at(15).code, 0x8001);
}

constexpr const char* kInputNames[] = {
    "使能/Enable",
    "复位故障/Reset Errors",
    "工作模式控制/Operate Mode Sel",
    "Kvi关闭/Kvi Off",
    "正限位/P Limit +",
    "负限位/P Limit -",
    "原点信号/Home Signal",
    "指令反向/Invert Direction",
    "Din速度索引0/Din Vel Index0",
    "Din速度索引1/Din Vel Index1",
    "Din位置索引0/Din Pos Index0",
    "Din位置索引1/Din Pos Index1",
    "紧急停止/Quick Stop",
    "开始找原点/Start Homing",
    "指令激活/Activate Command",
    "Din速度索引2/Din Vel Index2",
    "Din位置索引2/Din Pos Index2",
    "多功能输入0/Multifunction0",
    "多功能输入1/Multifunction1",
    "多功能输入2/Multifunction2",
    "增益切换0/Gain Switch0",
    "增益切换1/Gain Switch1",
    "最大电流切换/MaxCur Switch",
    "电机故障/Motor Error",
    "预使能/Pre Enable",
    "位置表条件0/PosTable Cond0",
    "激活位置表/Start PosTable",
    "位置表索引0/PosTable Idx0",
    "位置表索引1/PosTable Idx1",
    "位置表索引2/PosTable Idx2",
    "终止位置表/Abort PosTable",
    "位置表条件1/PosTable Cond1",
    "快速捕捉1/Fast Capture1",
    "快速捕捉2/Fast Capture2",
};
constexpr const char* kOutputNames[] = {
    "驱动器就绪/Ready",           "驱动器故障/Error",         "位置到/Pos Reached",
    "零速度/Zero Speed",          "电机制动/Motor Brake",     "速度到/Speed Reached",
    "索引信号出现/Enc Index",     "速度达到限制/Speed Limit", "电机锁轴/Driver Enabled",
    "限位中/Position Limit",      "原点找到/Home Found",      "电流警告/Current Limit",
    "多功能信号0/Multi Dout 0",   "多功能信号1/Multi Dout 1", "多功能信号2/Multi Dout 2",
    "位置表运行/PosTable Active", "STO有效/STO Active",       "编码器警告/Enc Warning",
};

// Letter by letter, in the order of the boxes.
TEST(DigitalIOList, NamesOfTheShippedList) {
    const FunctionList list = shipped();
    const auto expect_names = [](const IoFunctions& side, std::span<const char* const> told) {
        ASSERT_EQ(static_cast<std::size_t>(side.count()), told.size());
        for (int i = 0; i < side.count(); ++i)
            EXPECT_EQ(side.at(i).chinese + "/" + side.at(i).english,
                      told[static_cast<std::size_t>(i)]);
    };
    expect_names(list.inputs, kInputNames);
    expect_names(list.outputs, kOutputNames);
}

TEST(DigitalIOList, GroupsOfTheShippedList) {
    const FunctionList list = shipped();
    ASSERT_EQ(list.inputs.groups(), 3);
    EXPECT_EQ(list.inputs.entries_of(0), 15);
    EXPECT_EQ(list.inputs.entries_of(1), 12);
    EXPECT_EQ(list.inputs.entries_of(2), 7);
    EXPECT_EQ(list.inputs.last_of(0), 14);
    EXPECT_EQ(list.inputs.last_of(1), 26);
    EXPECT_EQ(list.inputs.last_of(2), 33);
    ASSERT_EQ(list.outputs.groups(), 2);
    EXPECT_EQ(list.outputs.entries_of(0), 15);
    EXPECT_EQ(list.outputs.entries_of(1), 3);
    EXPECT_EQ(list.outputs.last_of(1), 17);
    EXPECT_EQ(list.inputs.group_of(14), 0);
    EXPECT_EQ(list.inputs.group_of(15), 1);
    EXPECT_EQ(list.inputs.group_of(33), 2);
    EXPECT_EQ(list.inputs.entries_of(3), 0);
    EXPECT_EQ(list.inputs.last_of(3), -1);
    EXPECT_EQ(list.inputs.last_of(-1), -1);
}

TEST(DigitalIOList, BitsTwelveToFourteenBeginNoGroup) {
    const auto list = parse_function_list("[DigitIN]\na,a,0800\nb,b,1000\nc,c,4000\nd,d,0001\n");
    EXPECT_EQ(list.inputs.groups(), 1) << "also when a code of the lowest bits comes behind them";
    EXPECT_EQ(list.inputs.entries_of(0), 4);
}

TEST(DigitalIOList, EachCodeFromEightThousandUpBeginsAGroup) {
    const auto list = parse_function_list("[DigitIN]\na,a,8001\nb,b,9001\nc,c,9002\nd,d,F001\n");
    EXPECT_EQ(list.inputs.groups(), 3);
    EXPECT_EQ(list.inputs.entries_of(1), 2);
}

TEST(DigitalIOList, AGroupThatComesAgainIsANewGroup) {
    const auto list = parse_function_list("[DigitIN]\na,a,0001\nb,b,8001\nc,c,0002\nd,d,8002\n");
    EXPECT_EQ(list.inputs.groups(), 4);
}

TEST(DigitalIOList, ACodeOfBitTwelveBehindAHighGroupJoinsIt) {
    const auto list = parse_function_list("[DigitIN]\na,a,8001\nb,b,1000\n");
    EXPECT_EQ(list.inputs.groups(), 1);
    EXPECT_EQ(list.inputs.entries_of(0), 2);
}

TEST(DigitalIOList, OutputsBeginTheirGroupsAnew) {
    const auto list = parse_function_list("[DigitIN]\na,a,8001\n[DigitOUT]\nb,b,8001\n");
    EXPECT_EQ(list.outputs.groups(), 1);
    EXPECT_EQ(list.outputs.last_of(0), 0);
}

TEST(DigitalIOList, AFirstLineThatIsNotTheSectionIsNotRight) {
    for (const char* text :
         {"\n[DigitIN]\n", "[DigitIN] \n", " [DigitIN]\n", "[digitin]\n", "[DigitOUT]\n",
          "\xEF\xBB\xBF[DigitIN]\n", "a,a,0001\n", "[DigitIN\n", "\n"})
        EXPECT_EQ(parse_function_list(text).state, ListState::kNotRight) << text;
    EXPECT_EQ(parse_function_list("[DigitIN]").state, ListState::kRead);
    EXPECT_EQ(parse_function_list("[DigitIN]\r\n").state, ListState::kRead);
}

TEST(DigitalIOList, AnEmptyFileIsEmptyAndNotWrong) {
    EXPECT_EQ(parse_function_list("").state, ListState::kEmpty);
}

TEST(DigitalIOList, AFileThatIsNotThereIsMissing) {
    const TempFolder folder;
    EXPECT_EQ(load_function_list(folder.path()).state, ListState::kMissing);
    put_list(folder, "[DigitIN]\n");
    EXPECT_EQ(load_function_list(folder.path()).state, ListState::kRead);
}

TEST(DigitalIOList, LinesThatHoldNoFunctionArePassedOverAndCounted) {
    const auto list = parse_function_list(
        "[DigitIN]\r\n"       // 1
        "a,a,0001\r\n"        // 2
        "two fields,02\r\n"   // 3
        "c,c,\r\n"            // 4
        "\r\n"                // 5: empty, none of the bad ones
        "d,d,00G1\r\n"        // 6
        "e,e,10001\r\n"       // 7: more than 16 bits
        "f,f,-1\r\n"          // 8
        "g,g,00008002,x\r\n"  // 9: zeros in front, a field too many
        "[DigitIN]\r\n"       // 10
        "h,h, 8004 ");        // 11: blanks, no line end
    ASSERT_EQ(list.inputs.count(), 3);
    EXPECT_EQ(list.inputs.at(1).code, 0x8002);
    EXPECT_EQ(list.inputs.at(2).code, 0x8004);
    EXPECT_EQ(list.bad_lines, (std::vector<int>{3, 4, 6, 7, 8, 10}));
}

TEST(DigitalIOList, CodesAreReadWithoutASign) {
    const auto list = parse_function_list("[DigitIN]\na,a,ffff\nb,b,8001\nc,c,7FFF\n");
    EXPECT_EQ(list.inputs.at(0).code, 0xFFFF);
    EXPECT_EQ(list.inputs.at(1).code, 0x8001);
    EXPECT_EQ(list.inputs.at(2).code, 0x7FFF);
}

TEST(DigitalIOList, ASideIsFullWhenAllCodesAreTaken) {
    std::string text = "[DigitIN]\n";
    for (int i = 0; i < 1000; ++i)
        text += "a,a,0001\n";
    const auto list = parse_function_list(text);
    EXPECT_EQ(list.inputs.count(), kMostFunctions);
    EXPECT_EQ(list.bad_lines.size(), 1000U - kMostFunctions);
    EXPECT_EQ(list.bad_lines.front(), kMostFunctions + 2);
}

TEST(DigitalIOList, AnOverlongNameIsCut) {
    const auto list = parse_function_list("[DigitIN]\n" + std::string(5000, 'x') + ",b,0001\n");
    EXPECT_EQ(list.inputs.at(0).chinese, std::string(64, 'x'));
}

TEST(DigitalIOList, BytesThatAreNoCodePageBecomeCharactersToo) {
    const auto list = parse_function_list("[DigitIN]\n\xFF\xFF,b,0001\n");
    ASSERT_EQ(list.inputs.count(), 1);
    EXPECT_EQ(list.inputs.at(0).chinese, "\uFFFD\uFFFD");
}

TEST(DigitalIOList, ANameInOneLanguageServesBothAndNoneIsReserved) {
    const auto list = parse_function_list("[DigitIN]\n,Enable,0001\nX,,0002\n,,0004\n");
    EXPECT_EQ(list.inputs.names(1, Language::kChinese), "Enable");
    EXPECT_EQ(list.inputs.names(2, Language::kEnglish), "X");
    EXPECT_EQ(list.inputs.names(4, Language::kEnglish), "Reserved");
    EXPECT_EQ(list.inputs.names(4, Language::kChinese), "保留");
}

TEST(DigitalIOList, ValueZeroActivatesNothing) {
    EXPECT_EQ(names(shipped().inputs, 0), "");
    EXPECT_EQ(names(shipped().outputs, 0), "");
}

TEST(DigitalIOList, Value8000DecodesToNothingAnd8001ToTheFirstOfItsGroup) {
    const FunctionList list = shipped();
    EXPECT_EQ(list.inputs.group_of_value(0x8000), 0);
    EXPECT_EQ(names(list.inputs, 0x8000), "");
    EXPECT_EQ(list.inputs.group_of_value(0x8001), 1);
    EXPECT_EQ(names(list.inputs, 0x8001), "Din Vel Index2");
    EXPECT_EQ(names(list.inputs, 0x8FFF).substr(0, 29), "Din Vel Index2+Din Pos Index2");
}

TEST(DigitalIOList, AllFifteenBitsOfTheFirstGroupShow) {
    const FunctionList list = shipped();
    EXPECT_EQ(names(list.inputs, 0x1000), "Quick Stop");
    EXPECT_EQ(names(list.inputs, 0x4001), "Enable+Activate Command");
    EXPECT_EQ(names(list.outputs, 0x7000), "Multi Dout 0+Multi Dout 1+Multi Dout 2");
}

TEST(DigitalIOList, ValuesAboveAllGroupsDecodeToNothing) {
    const FunctionList list = shipped();
    EXPECT_EQ(list.inputs.group_of_value(0xA001), std::nullopt);
    EXPECT_EQ(names(list.inputs, 0xA001), "");
    EXPECT_EQ(list.outputs.group_of_value(0x9001), std::nullopt);
    EXPECT_EQ(names(list.outputs, 0xFFFF), "");
}

// A second formulation, from the meaning of the bits: which entries a value stands for.
std::vector<bool> expected(int value, int low, int high1, int high2) {
    std::vector<bool> active(static_cast<std::size_t>(low + high1 + high2), false);
    const auto mark = [&active, value](int first, int count) {
        for (int bit = 0; bit < count; ++bit)
            if ((value >> bit) % 2 == 1) active[static_cast<std::size_t>(first + bit)] = true;
    };
    switch (value / 0x1000) {
        case 8:
            if (value != 0x8000) mark(low, high1);
            break;
        case 9:
            mark(low + high1, high2);
            break;
        default:
            if (value < 0x8000) mark(0, low);
            break;
    }
    return active;
}

TEST(DigitalIOList, DecodingOfEveryValueAgainstASecondFormulation) {
    const FunctionList list = shipped();
    for (int value = 0; value <= 0xFFFF; ++value) {
        const auto word = static_cast<std::uint16_t>(value);
        ASSERT_EQ(list.inputs.decode(word), expected(value, 15, 12, 7)) << value;
        ASSERT_EQ(list.outputs.decode(word), expected(value, 15, 3, 0)) << value;
    }
}

TEST(DigitalIOList, UnnamedBitsOfEveryValueAreThoseThatNoEntryShows) {
    const IoFunctions outputs = shipped().outputs;
    for (int value = 0; value <= 0xFFFF; ++value) {
        int named = 0;
        if (value < 0x8000) named = 0x7FFF;
        if (value > 0x8000 && value < 0x9000) named = 0xF007;
        ASSERT_EQ(outputs.unnamed_bits(static_cast<std::uint16_t>(value)), value & ~named) << value;
    }
}

// Every choice of boxes within one group is one value, and that value shows the same boxes.
void expect_inverse(const IoFunctions& functions, int group, unsigned base) {
    const int first = functions.last_of(group - 1) + 1;
    const int count = functions.entries_of(group);
    for (unsigned set = 1; set < 1U << count; ++set) {
        std::vector<bool> ticks(static_cast<std::size_t>(functions.count()), false);
        for (int bit = 0; bit < count; ++bit)
            ticks[static_cast<std::size_t>(first + bit)] = (set >> bit & 1U) != 0;
        const Encoded said = functions.encode(ticks);
        ASSERT_EQ(said.groups, 1);
        ASSERT_EQ(said.value, base + set);
        ASSERT_EQ(functions.decode(said.value), ticks) << said.value;
    }
}

TEST(DigitalIOList, EncodeAndDecodeAreInverseInEveryGroup) {
    const FunctionList list = shipped();
    expect_inverse(list.inputs, 0, 0);
    expect_inverse(list.inputs, 1, 0x8000);
    expect_inverse(list.inputs, 2, 0x9000);
    expect_inverse(list.outputs, 0, 0);
    expect_inverse(list.outputs, 1, 0x8000);
}

TEST(DigitalIOList, NothingTickedIsZero) {
    const Encoded said = shipped().inputs.encode(std::vector<bool>(34, false));
    EXPECT_EQ(said.groups, 0);
    EXPECT_EQ(said.value, 0);
}

TEST(DigitalIOList, TicksInTwoAndThreeGroupsAreCounted) {
    std::vector<bool> ticks(34, false);
    ticks[14] = ticks[15] = true;
    EXPECT_EQ(shipped().inputs.encode(ticks).groups, 2);
    ticks[33] = true;
    EXPECT_EQ(shipped().inputs.encode(ticks).groups, 3);
}

TEST(DigitalIOList, TwoNamesOfOneFunctionAreThatFunctionStill) {
    const auto list = parse_function_list("[DigitIN]\na,a,0001\nb,b,0001\n");
    EXPECT_EQ(list.inputs.encode({true, true}).value, 1);
}

TEST(DigitalIOList, AListThatBeginsWithBitTwelveWritesItOnce) {
    const auto list = parse_function_list("[DigitIN]\na,a,1000\nb,b,2000\n");
    EXPECT_EQ(list.inputs.encode({true, false}).value, 0x1000);
    EXPECT_EQ(list.inputs.encode({false, true}).value, 0x2000);
}

}  // namespace
}  // namespace servo::tools::test
