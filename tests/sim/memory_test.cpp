// Stored parameters, the restart, and the file that they live in.
#include "sim/memory.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/file.h"
#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::uint32_t kSave = 0x65766173;
constexpr std::uint32_t kLoad = 0x64616F6C;

class TempFile {
  public:
    TempFile()
        : folder_(std::filesystem::temp_directory_path() /
                  ("servo_memory_" + std::to_string(getpid()) + "_" + std::to_string(++count_))) {
        std::filesystem::create_directories(folder_);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() { std::filesystem::remove_all(folder_); }
    std::filesystem::path path() const { return folder_ / "state"; }
    std::filesystem::path folder() const { return folder_; }

  private:
    static inline int count_ = 0;
    std::filesystem::path folder_;
};

void restart(DriveBench& bench) {
    ASSERT_TRUE(bench.write(0x2FFF00, 0xFFFFAA55, 2));
    bench.run(seconds(2));
    ASSERT_TRUE(bench.drive().running());
}

TEST(Memory, TextGoesThereAndBack) {
    Memory memory;
    memory.put(0x60F901, std::int64_t{120});
    memory.put(0x200006, std::int64_t{-2000000000});
    memory.put(0x100800, std::string("a \"b\" \\ \n c"));
    memory.put(0x100900, std::string());
    Memory other;
    ASSERT_TRUE(other.from_text(memory.to_text()));
    EXPECT_EQ(other.to_text(), memory.to_text());
    EXPECT_EQ(std::get<std::string>(*other.find(0x100800)), "a \"b\" \\ \n c");
}

TEST(Memory, EveryTruncationAndEveryChangedByteIsRefused) {
    Memory memory;
    memory.put(0x60F901, std::int64_t{120});
    memory.put(0x100800, std::string("ab\"c"));
    const std::string text = memory.to_text();
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(Memory().from_text(text.substr(0, length))) << length;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        for (const int change : {1, 0x20, 0x80}) {
            std::string wrong = text;
            wrong[i] = static_cast<char>(wrong[i] ^ change);
            Memory other;
            EXPECT_FALSE(other.from_text(wrong)) << i;
            EXPECT_EQ(other.find(0x60F901), nullptr);
        }
    }
}

TEST(Store, ChangesAreLostAtARestartUnlessTheyWereStored) {
    DriveBench bench;
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    ASSERT_TRUE(bench.write(0x200002, 22, 1));
    restart(bench);
    EXPECT_EQ(bench.read(0x200001), 11U);
    EXPECT_EQ(bench.drive().value(0x200002), -5);
}

TEST(Store, WhatIsNotMarkedIsNotStored) {
    DriveBench bench;
    ASSERT_TRUE(bench.write(0x200010, 99, 2));
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    restart(bench);
    EXPECT_EQ(bench.read(0x200010), 1U);
}

TEST(Store, TextsAreStoredToo) {
    DriveBench bench;
    bench.drive().set_text(0x200007, "axis\tfour");
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    restart(bench);
    EXPECT_EQ(bench.read_text(0x200007), "axis\tfour");
}

TEST(Store, AnotherSignatureIsRefused) {
    DriveBench bench;
    EXPECT_FALSE(bench.write(0x101001, 1, 4));
    EXPECT_EQ(bench.refusal(), 0x08000020U);
    EXPECT_EQ(bench.read(0x101001), 1U);
}

TEST(Store, TheAnswerComesWhenTheMemoryIsWritten) {
    DriveBench bench;
    const auto answers = bench.exchange(frame(127, {0x23, 0x10, 0x10, 1, 0x73, 0x61, 0x76, 0x65}));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].at, microseconds(2605 + 300 + 30000));
    EXPECT_EQ(bench.drive().value(0x2FF004), 2);
}

TEST(Store, UnsavedChangesAreTold) {
    DriveBench bench;
    EXPECT_EQ(bench.read(0x2FF100), 0U);
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    EXPECT_EQ(bench.read(0x2FF100), 1U);
    EXPECT_EQ(*bench.drive().value(0x260400) & 0x20, 0x20);
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    EXPECT_EQ(bench.read(0x2FF100), 0U);
}

TEST(Store, RestoreIsInForceAfterTheRestart) {
    DriveBench bench;
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    ASSERT_TRUE(bench.write(0x101101, kLoad, 4));
    EXPECT_EQ(bench.read(0x200001), 11U);
    restart(bench);
    EXPECT_EQ(bench.read(0x200001), 200U);
}

TEST(Store, ControlParametersAreStoredAndInitialisedApartFromMotorParameters) {
    DriveBench bench;
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    bench.drive().set_value(0x641003, 20000);
    ASSERT_TRUE(bench.write(0x2FF001, 1, 1));
    restart(bench);
    EXPECT_EQ(bench.read(0x200001), 11U);
    EXPECT_EQ(bench.read(0x641003), 10000U);

    ASSERT_TRUE(bench.write(0x2FF001, 10, 1));
    EXPECT_EQ(bench.read(0x200001), 200U);  // at once
    restart(bench);
    EXPECT_EQ(bench.read(0x200001), 11U);  // nothing was stored
    EXPECT_EQ(bench.read(0x2FF001), 0U);
    EXPECT_FALSE(bench.write(0x2FF001, 2, 1));
    EXPECT_EQ(bench.refusal(), 0x06090030U);
}

// Objects with no line in the value table are not stored, so this needs a table of its own.
TEST(Store, MotorParametersHaveTheirOwnCommand) {
    Options options;
    options.values = "641003\t10000\t256\t1000000\ts\n200001\t200\t\t\ts\n";
    DriveBench bench(options);
    ASSERT_TRUE(bench.write(0x641003, 20000, 4));
    ASSERT_TRUE(bench.write(0x200001, 11, 1));
    ASSERT_TRUE(bench.write(0x2FF003, 1, 1));
    restart(bench);
    EXPECT_EQ(bench.read(0x641003), 20000U);
    EXPECT_EQ(bench.read(0x200001), 200U);
    ASSERT_TRUE(bench.write(0x2FF001, 10, 1));
    EXPECT_EQ(bench.read(0x641003), 20000U);
}

TEST(Restart, IsAcknowledgedAndThenSilentForItsTime) {
    DriveBench bench;
    const auto answers =
        bench.exchange(frame(127, {0x2B, 0xFF, 0x2F, 0, 0x55, 0xAA, 0xFF, 0xFF}), milliseconds(5));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].bytes[1], 0x60);
    EXPECT_FALSE(bench.drive().running());
    const auto start = answers[0].at + microseconds(2605);
    while (bench.now() < start + milliseconds(1140)) {
        EXPECT_FALSE(bench.read(0x200001));
    }
    bench.run(start + milliseconds(1200) - bench.now());
    EXPECT_TRUE(bench.read(0x200001));
}

TEST(Restart, AnotherValueIsRefused) {
    DriveBench bench;
    EXPECT_FALSE(bench.write(0x2FFF00, 0x1234, 2));
    EXPECT_EQ(bench.refusal(), 0x06090030U);
}

TEST(Restart, RequestsOnTheWayAreLost) {
    DriveBench bench;
    Bytes burst = frame(127, {0x2B, 0xFF, 0x2F, 0, 0x55, 0xAA, 0, 0});
    const Bytes read = frame(127, {0x40, 0x00, 0x20, 1, 0, 0, 0, 0});
    for (int i = 0; i < 3; ++i)
        burst.insert(burst.end(), read.begin(), read.end());
    EXPECT_LE(bench.exchange(burst).size(), 2U);  // what came before the restart's answer had left
    bench.run(seconds(2));
    EXPECT_TRUE(bench.drive().take_output().empty());
    EXPECT_TRUE(bench.read(0x200001));
}

TEST(Restart, ReleasesTheMotorAndForgetsThePosition) {
    DriveBench bench;
    bench.drive().set_value(0x60FF00, 2730667);
    bench.enable(3);
    bench.run(milliseconds(500));
    EXPECT_GT(*bench.drive().value(0x606300), 1000);
    restart(bench);
    bench.run(seconds(3));
    EXPECT_EQ(bench.drive().value(0x604100), 0x0250);
    EXPECT_EQ(bench.drive().value(0x60FF00), 0);
    EXPECT_EQ(bench.drive().value(0x606C00), 0);
}

TEST(PowerCycle, LosesEverythingThatIsUnderWay) {
    DriveBench bench;
    bench.drive().receive(frame(127, {0x40, 0x00, 0x20, 1, 0, 0, 0, 0}), milliseconds(5));
    bench.drive().power_cycle();
    bench.drive().advance(seconds(2));
    EXPECT_TRUE(bench.drive().take_output().empty());
    EXPECT_TRUE(bench.drive().running());
}

TEST(Line, AnotherIdIsInForceAfterStoringAndARestart) {
    Options options;
    options.values = "2FE300\t127\t1\t127\ts\n200001\t200\t\t\ts\n";
    DriveBench bench(options);
    ASSERT_TRUE(bench.write(0x2FE300, 9, 1));
    ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    EXPECT_TRUE(bench.read(0x200001));
    restart(bench);
    EXPECT_FALSE(bench.read(0x200001));
    EXPECT_EQ(bench.exchange(frame(9, {0x40, 0x00, 0x20, 1, 0, 0, 0, 0})).size(), 1U);
}

TEST(Line, TheReplyDelayObjectAddsToTheTurnaround) {
    DriveBench bench;
    ASSERT_TRUE(bench.write(0x2FE400, 15, 2));
    const auto sent = bench.now();
    const auto answers = bench.exchange(frame(127, {0x40, 0x00, 0x20, 1, 0, 0, 0, 0}));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].at - sent, microseconds(2605 + 300 + 1500));
}

TEST(Line, WithAnotherProtocolTheDriveIsDeaf) {
    Options options;
    ASSERT_FALSE(add_setting(options, "65100C=0"));
    DriveBench bench(options);
    EXPECT_FALSE(bench.read(0x200001));
    EXPECT_FALSE(bench.drive().running());
}

TEST(Line, InTheBootloaderNoFrameIsAnswered) {
    Options options;
    options.bootloader = true;
    DriveBench bench(options);
    EXPECT_FALSE(bench.read(0x200001));
    EXPECT_FALSE(bench.drive().running());
}

TEST(StateFile, CarriesParametersFromRunToRun) {
    const TempFile file;
    Options options;
    options.state_file = file.path();
    {
        DriveBench bench(options);
        ASSERT_TRUE(bench.write(0x200001, 11, 1));
        ASSERT_TRUE(bench.write(0x200002, 12, 1));
        ASSERT_TRUE(bench.write(0x101001, kSave, 4));
        ASSERT_TRUE(bench.write(0x200001, 13, 1));
    }
    DriveBench bench(options);
    EXPECT_EQ(bench.read(0x200001), 11U);
    EXPECT_EQ(bench.read(0x200002), 12U);
}

TEST(StateFile, ASettingGoesBeforeIt) {
    const TempFile file;
    Options options;
    options.state_file = file.path();
    {
        DriveBench bench(options);
        ASSERT_TRUE(bench.write(0x200001, 11, 1));
        ASSERT_TRUE(bench.write(0x101001, kSave, 4));
    }
    ASSERT_FALSE(add_setting(options, "200001=44"));
    DriveBench bench(options);
    EXPECT_EQ(bench.read(0x200001), 44U);
    restart(bench);
    EXPECT_EQ(bench.read(0x200001), 11U);
}

TEST(StateFile, ADamagedOneIsAMemoryFaultAndFactoryValues) {
    const TempFile file;
    std::ofstream(file.path()) << "drive memory 1\n200001\t11\n";
    Options options;
    options.state_file = file.path();
    DriveBench bench(options);
    EXPECT_EQ(bench.read(0x200001), 200U);
    EXPECT_EQ(bench.read(0x260100), 0x8000U);
}

TEST(StateFile, OneThatCannotBeWrittenIsARefusalAndAMemoryFault) {
    const TempFile file;
    Options options;
    options.state_file = file.folder() / "no such folder" / "state";
    DriveBench bench(options);
    EXPECT_EQ(bench.read(0x260100), 0U);
    EXPECT_FALSE(bench.write(0x101001, kSave, 4));
    EXPECT_EQ(bench.refusal(), 0x06060000U);
    EXPECT_EQ(bench.read(0x260100), 0x8000U);
    EXPECT_EQ(bench.read(0x2FF004), 3U);
}

TEST(StateFile, ValuesBeyondTodaysLimitsAreNotTaken) {
    const TempFile file;
    Memory memory(file.path());
    memory.put(0x200002, std::int64_t{120});  // limit 100
    memory.put(0x200001, std::string("a text by mistake"));
    memory.put(0x999999, std::int64_t{1});
    ASSERT_TRUE(memory.save());
    Options options;
    options.state_file = file.path();
    DriveBench bench(options);
    EXPECT_EQ(bench.drive().value(0x200002), -5);
    EXPECT_EQ(bench.drive().value(0x200001), 200);
}

}  // namespace
}  // namespace servo::sim::test
