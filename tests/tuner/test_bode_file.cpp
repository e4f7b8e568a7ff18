// Scans as files: what is written, what comes back, and what is wrong.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "tuner/analysis.h"
#include "tuner/bode_file.h"

using namespace servo::tuner;

namespace {

struct Scan {
    ScanSettings settings;
    ScanBuffers buffers;
    bool operator==(const Scan&) const = default;
};

std::unique_ptr<Scan> scan_of(int start, int step, int stop) {
    auto scan = std::make_unique<Scan>();
    scan->settings = {.startFreq = static_cast<std::int16_t>(start),
                      .stopFreq = static_cast<std::int16_t>(stop),
                      .stepFreq = static_cast<std::int16_t>(step),
                      .velocityGain1 = 200,
                      .magCurrent = 60,
                      .encoderCounts = 10000,
                      .feedbackConstant = 150,
                      .velocityGain2 = 20,
                      .scaleShift = 5};
    scan->buffers.pointCount = point_count(scan->settings);
    return scan;
}

std::string text_of(const Scan& scan) {
    return write_bode(scan.settings, scan.buffers);
}

bool read(std::string_view bytes, Scan& scan) {
    return read_bode(bytes, scan.settings, scan.buffers).buffers;
}

// Two points, 10 and 20 Hz.
constexpr std::string_view kHead = "10;20;10;200;60;10000;150;20;5;\r\nlength 2\r\n";
constexpr std::string_view kCommands = "7\r\n8\r\n-4\r\n-5\r\n";     // (2, 3), (-1, -2)
constexpr std::string_view kResponses = "15\r\n12\r\n-3\r\n-3\r\n";  // (3, 6), (-1, -1)

std::string file_with(std::string_view head, std::string_view commands = kCommands,
                      std::string_view separator = "##########\r\n",
                      std::string_view responses = kResponses) {
    return std::string(head) + std::string(commands) + std::string(separator) +
           std::string(responses);
}

std::string with_first_line(std::string_view line) {
    return file_with(std::string(line) + "\r\nlength 2\r\n");
}

BodeReading read_into_nothing(std::string_view bytes) {
    auto scan = std::make_unique<Scan>();
    return read_bode(bytes, scan->settings, scan->buffers);
}

bool is_right(std::string_view bytes) {
    return read_into_nothing(bytes).buffers;
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
    text.replace(text.find(what), what.size(), by);
    return text;
}

}  // namespace

TEST(BodeFileWritten, IsLineForLineAsTold) {
    auto scan = scan_of(10, 10, 20);
    scan->buffers.commandA = {2, -1};
    scan->buffers.commandB = {3, -2};
    scan->buffers.response = {3, 6, -1, -1};
    EXPECT_EQ(text_of(*scan),
              "10;20;10;200;60;10000;150;20;5;\r\n"
              "length 2\r\n"
              "7\r\n8\r\n-4\r\n-5\r\n"
              "##########\r\n"
              "15\r\n12\r\n-3\r\n-3\r\n");
    EXPECT_EQ(text_of(*scan), file_with(kHead));
}

// As a program prints a floating point value that is whole: digits and no point.
TEST(BodeFileWritten, LargeNumbersArePlainDigits) {
    auto scan = scan_of(10, 10, 20);
    scan->buffers.commandA = {32767, -32768};
    scan->buffers.commandB = {32767, -32768};
    scan->buffers.response = {2147483647, 2147483647, -2147483648, -2147483648};
    const std::string text = text_of(*scan);
    EXPECT_NE(text.find("98301\r\n98301\r\n-98304\r\n-98304\r\n"), std::string::npos);
    EXPECT_NE(text.find("6442450941\r\n6442450941\r\n-6442450944\r\n-6442450944\r\n"),
              std::string::npos);
}

TEST(BodeFileWritten, GainsHaveAsManyDigitsAsASingleNeeds) {
    auto scan = scan_of(10, 10, 20);
    scan->settings.velocityGain1 = 0.1F;
    scan->settings.velocityGain2 = 1E-10F;
    EXPECT_EQ(text_of(*scan).substr(0, 37), "10;20;10;0.1;60;10000;150;1E-10;5;\r\nl");
}

TEST(BodeFileWritten, ScanWithoutPointsHasItsTwoLinesAndTheSeparator) {
    EXPECT_EQ(text_of({}), "0;0;0;0;0;0;0;0;0;\r\nlength 0\r\n##########\r\n");
}

TEST(BodeFileWritten, NeverReadsBeyondTheBlocks) {
    auto scan = scan_of(10, 10, 20);
    scan->buffers.pointCount = 32767;
    EXPECT_NE(text_of(*scan).find("##########"), std::string::npos);
}

TEST(BodeFileRead, EveryFieldComesToItsPlace) {
    auto scan = std::make_unique<Scan>();
    ASSERT_TRUE(read(file_with("-1;-2;-1;1.5;60;-100000;-150;0.25;-5;\r\nlength 2\r\n"), *scan));
    EXPECT_EQ(scan->settings, (ScanSettings{.startFreq = -1,
                                            .stopFreq = -2,
                                            .stepFreq = -1,
                                            .velocityGain1 = 1.5F,
                                            .magCurrent = 60,
                                            .encoderCounts = -100000,
                                            .feedbackConstant = -150,
                                            .velocityGain2 = 0.25F,
                                            .scaleShift = -5}));
    EXPECT_EQ(scan->buffers.pointCount, 2);
    EXPECT_EQ(scan->buffers.commandA[0], 2);
    EXPECT_EQ(scan->buffers.commandB[0], 3);
    EXPECT_EQ(scan->buffers.commandA[1], -1);
    EXPECT_EQ(scan->buffers.commandB[1], -2);
    EXPECT_EQ(scan->buffers.response[0], 3);
    EXPECT_EQ(scan->buffers.response[1], 6);
    EXPECT_EQ(scan->buffers.response[2], -1);
    EXPECT_EQ(scan->buffers.response[3], -1);
}

TEST(BodeFileRead, WrittenReadWrittenGivesEqualBytes) {
    auto scan = scan_of(4, 3, 1000);
    ASSERT_EQ(scan->buffers.pointCount, 333);
    for (std::size_t i = 0; i < 333; ++i) {
        const int n = static_cast<int>(i);
        scan->buffers.commandA[i] = static_cast<std::int16_t>(n * 197 - 32768);
        scan->buffers.commandB[i] = static_cast<std::int16_t>(32767 - n * 195);
        scan->buffers.response[2 * i] = -2147483647 - 1 + n * 12900001;
        scan->buffers.response[2 * i + 1] = 2147483647 - n * 12899999;
    }
    scan->settings.velocityGain1 = 0.1F;
    scan->settings.velocityGain2 = 16777216.0F;
    const std::string text = text_of(*scan);
    auto back = std::make_unique<Scan>();
    ASSERT_TRUE(read(text, *back));
    EXPECT_EQ(*back, *scan) << "negative and odd values too";
    EXPECT_EQ(text_of(*back), text);
}

RC_GTEST_PROP(BodeFileRead, AnyScanComesBackAndGivesTheSameBytes, ()) {
    auto scan = scan_of(*rc::gen::inRange(4, 900), *rc::gen::inRange(3, 200), 0);
    scan->buffers.pointCount = *rc::gen::inRange<std::int16_t>(2, 12);
    scan->settings.stopFreq = static_cast<std::int16_t>(
        scan->settings.startFreq + (scan->buffers.pointCount - 1) * scan->settings.stepFreq);
    scan->settings.encoderCounts = *rc::gen::arbitrary<std::int32_t>();
    scan->settings.feedbackConstant = *rc::gen::arbitrary<std::int16_t>();
    scan->settings.velocityGain1 = *rc::gen::arbitrary<float>();
    scan->settings.velocityGain2 = static_cast<float>(*rc::gen::arbitrary<std::uint16_t>()) / 3.0F;
    for (std::size_t i = 0; i < static_cast<std::size_t>(scan->buffers.pointCount); ++i) {
        scan->buffers.commandA[i] = *rc::gen::arbitrary<std::int16_t>();
        scan->buffers.commandB[i] = *rc::gen::arbitrary<std::int16_t>();
        scan->buffers.response[2 * i] = *rc::gen::arbitrary<std::int32_t>();
        scan->buffers.response[2 * i + 1] = *rc::gen::arbitrary<std::int32_t>();
    }
    const std::string text = text_of(*scan);
    auto back = std::make_unique<Scan>();
    RC_ASSERT(read(text, *back));
    RC_ASSERT(*back == *scan);
    RC_ASSERT(text_of(*back) == text);
}

TEST(BodeFileRead, AnyGainComesBackAsItWas) {
    for (const float gain :
         {0.1F, 1.0F / 3, 1E-30F, 3.4E38F, -2.5F, 16777217.0F, 65534.0F, 1E15F, 123456.789F}) {
        auto scan = scan_of(10, 10, 20);
        scan->settings.velocityGain1 = gain;
        auto back = std::make_unique<Scan>();
        ASSERT_TRUE(read(text_of(*scan), *back)) << gain;
        EXPECT_EQ(back->settings.velocityGain1, gain);
    }
}

TEST(BodeFileRead, LineFeedsAloneEndLinesToo) {
    std::string text = file_with(kHead);
    std::erase(text, '\r');
    EXPECT_TRUE(is_right(text));
    text.pop_back();
    EXPECT_TRUE(is_right(text)) << "the last one may be lost";
}

// Some programs print a number with a blank for its sign and one behind it.
TEST(BodeFileRead, BlanksAroundNumbersDoNoHarm) {
    EXPECT_TRUE(is_right(file_with(" 10 ; 20 ;10;200;60;10000;150;20; 5 ;\r\nlength 2\r\n",
                                   " 7 \r\n 8 \r\n-4 \r\n-5 \r\n")));
}

TEST(BodeFileRead, FloatingPointFormsAreNumbers) {
    auto scan = std::make_unique<Scan>();
    ASSERT_TRUE(read(file_with(kHead, "7.0\r\n8.\r\n-4E0\r\n-.5E+1\r\n"), *scan));
    EXPECT_EQ(scan->buffers.commandB[1], -2);
}

TEST(BodeFileRead, PairThatNoWriterGivesIsRounded) {
    auto scan = std::make_unique<Scan>();
    ASSERT_TRUE(read(file_with(kHead, "7\r\n9\r\n1\r\n0.5\r\n"), *scan));
    EXPECT_EQ(scan->buffers.commandA[0], 2) << "(14 - 9) / 3";
    EXPECT_EQ(scan->buffers.commandB[0], 4) << "(18 - 7) / 3";
    EXPECT_EQ(scan->buffers.commandA[1], 0) << "a half goes to the even neighbour";
    EXPECT_EQ(scan->buffers.commandB[1], 0);
}

TEST(BodeFileRead, SeparatorIsPassedOverWhateverItIs) {
    EXPECT_TRUE(is_right(file_with(kHead, kCommands, "\r\n")));
    EXPECT_TRUE(is_right(file_with(kHead, kCommands, "17\r\n")));
}

TEST(BodeFileRead, WhatFollowsTheNumbersIsNotLookedAt) {
    EXPECT_TRUE(is_right(file_with(kHead) + "anything\r\n"));
}

TEST(BodeFileRead, PlanWithoutPointsIsReadAsOne) {
    EXPECT_TRUE(is_right("10;0;10;0;60;0;0;0;0;\r\nlength 0\r\n##########\r\n"));
    EXPECT_TRUE(is_right("10;-10;10;0;60;0;0;0;0;\r\nlength -1\r\n##########\r\n"));
    EXPECT_FALSE(is_right("10;0;10;0;60;0;0;0;0;\r\nlength 0\r\n")) << "no separator";
}

TEST(BodeFileWrong, OtherCountOfItemsChangesNothing) {
    for (const std::string_view line :
         {"", "10;20;10;200;60;10000;150;20;5", "10;20;10;200;60;10000;150;20;5;;",
          "10;20;10;200;60;10000;150;20;5;6;", "10,20,10,200,60,10000,150,20,5,", ";;;;;;;;;;"}) {
        auto scan = scan_of(4, 3, 1000);
        scan->buffers.commandA.fill(9);
        const Scan before = *scan;
        const BodeReading reading = read_bode(with_first_line(line), scan->settings, scan->buffers);
        EXPECT_FALSE(reading.fields) << line;
        EXPECT_FALSE(reading.length);
        EXPECT_FALSE(reading.buffers);
        EXPECT_EQ(*scan, before) << line;
    }
}

TEST(BodeFileWrong, LastItemMayHoldAnything) {
    EXPECT_TRUE(is_right(with_first_line("10;20;10;200;60;10000;150;20;5;x")));
}

TEST(BodeFileWrong, FieldThatIsNoNumberOrDoesNotFitChangesNothing) {
    for (const std::string_view line :
         {"x;20;10;200;60;10000;150;20;5;", ";20;10;200;60;10000;150;20;5;",
          "10;20Hz;10;200;60;10000;150;20;5;", "10;20;10;1E39;60;10000;150;20;5;",
          "10;20;10;200;32768;10000;150;20;5;", "10;20;10;200;60;2147483648;150;20;5;",
          "10;20;10;200;60;10000;-32769;20;5;", "10;20;10;200;60;10000;150;nan;5;",
          "10;20;10;200;60;10000;150;20;1E999;", "10;20;10;200;60;10000;150;20;&H5;",
          "10;20;10;200;60;10000;150;20;5E;", "10;20;10;200;60;10000;150;20;-;",
          "10;20;10;200;60;10000;150;20;.;"}) {
        auto scan = scan_of(4, 3, 1000);
        const Scan before = *scan;
        EXPECT_FALSE(read_bode(with_first_line(line), scan->settings, scan->buffers).fields)
            << line;
        EXPECT_EQ(*scan, before) << line;
    }
}

TEST(BodeFileWrong, LengthThatDoesNotFitComesBehindTheFields) {
    for (const std::string_view length :
         {"length 3", "length 1", "length", "length  2", "length 2 ", "length x", "2", "",
          "length 2.5", "length2"}) {
        auto scan = scan_of(4, 3, 1000);
        scan->buffers.commandA.fill(9);
        const BodeReading reading = read_bode(replaced(file_with(kHead), "length 2", length),
                                              scan->settings, scan->buffers);
        EXPECT_TRUE(reading.fields) << length;
        EXPECT_FALSE(reading.length) << length;
        EXPECT_FALSE(reading.buffers);
        EXPECT_EQ(scan->settings.startFreq, 10) << "taken over before";
        EXPECT_EQ(scan->buffers.pointCount, 2);
        EXPECT_EQ(scan->buffers.commandA[0], 9) << "not touched yet";
    }
    EXPECT_TRUE(is_right(replaced(file_with(kHead), "length 2", "points 2")))
        << "the word itself is not compared";
}

TEST(BodeFileWrong, FileThatBreaksOffAnywhere) {
    const std::string text = file_with(kHead);
    std::size_t lines = 0;
    for (std::size_t end = 0; end < text.size() - 2; end = text.find('\n', end) + 1, ++lines)
        EXPECT_FALSE(is_right(std::string_view(text).substr(0, end))) << end;
    EXPECT_EQ(lines, 11U);
    EXPECT_TRUE(is_right(text));
}

TEST(BodeFileWrong, LineThatIsNoNumber) {
    for (const std::string_view line : {"", "x", "7x", "7 8", "1E999", "-", "##########"}) {
        EXPECT_FALSE(
            is_right(replaced(file_with(kHead), "\r\n7\r\n", "\r\n" + std::string(line) + "\r\n")))
            << line;
        EXPECT_FALSE(
            is_right(replaced(file_with(kHead), "\r\n15\r\n", "\r\n" + std::string(line) + "\r\n")))
            << line;
    }
}

TEST(BodeFileWrong, NumbersThatFitNoEntry) {
    EXPECT_TRUE(is_right(file_with(kHead, "98301\r\n98301\r\n0\r\n0\r\n")));
    EXPECT_FALSE(is_right(file_with(kHead, "98304\r\n98304\r\n0\r\n0\r\n"))) << "32768";
    EXPECT_FALSE(is_right(file_with(kHead, "1E300\r\n1E300\r\n0\r\n0\r\n")));
    EXPECT_FALSE(is_right(file_with(kHead, "1E999\r\n1E999\r\n0\r\n0\r\n")))
        << "their difference is no number";
    EXPECT_TRUE(
        is_right(file_with(kHead, kCommands, "#\r\n", "6442450941\r\n6442450941\r\n0\r\n0")));
    EXPECT_FALSE(
        is_right(file_with(kHead, kCommands, "#\r\n", "6442450944\r\n6442450944\r\n0\r\n0")));
}

TEST(BodeFileWrong, FiveHundredPointsFitAndOneMoreDoesNot) {
    const auto file_of = [](int count) {
        std::string text = "1;" + std::to_string(count) + ";1;0;60;0;0;0;0;\r\nlength " +
                           std::to_string(count) + "\r\n";
        for (int i = 0; i < 2 * count; ++i)
            text += "3\r\n";
        text += "##########\r\n";
        for (int i = 0; i < 2 * count; ++i)
            text += "3\r\n";
        return text;
    };
    EXPECT_TRUE(is_right(file_of(500)));
    for (const int count : {501, 502, 32767}) {
        auto scan = std::make_unique<Scan>();
        const BodeReading reading = read_bode(file_of(count), scan->settings, scan->buffers);
        EXPECT_TRUE(reading.fields);
        EXPECT_FALSE(reading.buffers) << count;
        EXPECT_EQ(scan->buffers.pointCount, 0) << "no more than there are entries";
    }
}

TEST(BodeFileWrong, PlanWithoutAStepOrBeyondAllNumbers) {
    EXPECT_FALSE(is_right("10;20;0;200;60;1;1;20;5;\r\nlength 0\r\n##########\r\n"));
    EXPECT_FALSE(is_right("-32768;32767;1;200;60;1;1;20;5;\r\nlength 0\r\n##########\r\n"));
}

TEST(BodeFileWrong, ScanThatCantBeAnalysed) {
    EXPECT_FALSE(is_right(with_first_line("10;20;10;200;0;10000;150;20;5;"))) << "no excitation";
    EXPECT_FALSE(is_right(with_first_line("0;10;10;200;60;10000;150;20;5;"))) << "0 Hz";
    EXPECT_FALSE(is_right(with_first_line("16001;16002;1;200;60;10000;150;20;5;")));
    EXPECT_FALSE(is_right(with_first_line("10;20;10;200;60;10000;150;20;32767;")));
    EXPECT_TRUE(is_right(with_first_line("-10;0;10;200;60;10000;150;20;5;")))
        << "its last point is not analysed";
}
