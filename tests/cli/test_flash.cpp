// servoctl flash: what it prints where, and the status of every end.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "flash_machine.h"

namespace servo::cli {
namespace {

struct FlashTest : testing::Test {
    FlashMachine machine;
    test::TextBootloader& drive = machine.drive;

    int flash(std::size_t characters, std::vector<std::string> more = {}) {
        std::vector<std::string> words{"flash",
                                       machine.put_image(FlashMachine::payload(characters))};
        words.insert(words.end(), more.begin(), more.end());
        return machine.run(std::move(words));
    }
    bool told(std::string_view text) const { return machine.err.find(text) != std::string::npos; }
    // The line closes with the command, and no job is left behind.
    void expect_clean() {
        machine.session.close();
        EXPECT_FALSE(machine.bench.port.is_open());
        EXPECT_EQ(machine.bench.engine.state.download_active, 0);
    }
};

TEST_F(FlashTest, SendsTheImageAndSaysSo) {
    EXPECT_EQ(flash(4120 * 3), 0);
    EXPECT_EQ(machine.out, "Download Finished!\n");
    EXPECT_TRUE(drive.started);
    EXPECT_EQ(drive.blocks, 3);
    EXPECT_EQ(drive.stored.size(), 4120U * 3);
    expect_clean();
}

TEST_F(FlashTest, StepsAndBlocksGoToStandardError) {
    drive.in_bootloader = true;
    ASSERT_EQ(flash(4120 * 4), 0);
    std::vector<std::string> lines;
    std::istringstream stream(machine.err);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 9U) << machine.err;
    EXPECT_EQ(lines[0], "Shake hands");
    EXPECT_EQ(lines[1], "Check the firmware type");
    EXPECT_EQ(lines[2], "Erase");
    EXPECT_EQ(lines[3], "Programme");
    EXPECT_TRUE(lines[4].starts_with(" 25 %  block 1/4  ")) << lines[4];
    EXPECT_TRUE(lines[5].starts_with(" 50 %  block 2/4  ")) << lines[5];
    EXPECT_TRUE(lines[7].starts_with("100 %  block 4/4  ")) << lines[7];
    EXPECT_NE(lines[5].find(" bytes/s  0:0"), std::string::npos) << lines[5];
    EXPECT_TRUE(lines[5].ends_with(" left")) << lines[5];
    EXPECT_EQ(lines[8], "Start the new firmware");
}

TEST_F(FlashTest, SpeaksChinese) {
    drive.in_bootloader = true;
    EXPECT_EQ(flash(4120, {"--lang", "zh"}), 0);
    EXPECT_EQ(machine.out, "下载成功!\n");
    EXPECT_TRUE(told("握手\n检查固件类型\n擦除\n编程\n"));
    EXPECT_TRUE(told("块 1/1"));
}

TEST_F(FlashTest, PrintsOneJsonValue) {
    ASSERT_EQ(flash(4120 * 2, {"--json"}), 0);
    const auto value = nlohmann::json::parse(machine.out);
    EXPECT_EQ(value["type"], "ZARN");
    EXPECT_EQ(value["blocks"], 2);
    EXPECT_EQ(value["bytes"], 4121 * 2);
    EXPECT_EQ(value["result"], "Download Finished!");
    EXPECT_GT(value["seconds"].get<double>(), 2.0);
}

TEST_F(FlashTest, WithNobodyThereTheLinkIsToBlame) {
    drive.silent = true;
    EXPECT_EQ(flash(4120), 3);
    EXPECT_EQ(machine.out, "Shake hands with no response!\n");
    EXPECT_TRUE(told("its firmware is untouched"));
    expect_clean();
}

TEST_F(FlashTest, AnotherTypeIsRefused) {
    drive.type = "OTHR";
    drive.in_bootloader = true;
    EXPECT_EQ(flash(4120), 1);
    EXPECT_EQ(machine.out, "Firmware and bootloader not match!\n");
    EXPECT_TRUE(told("its firmware is untouched"));
    EXPECT_FALSE(drive.erased);
}

struct SilentStep {
    const char* word;  // the line that is not answered; the last of several
    int turn;
    const char* message;
};

class FlashFailure : public FlashTest, public testing::WithParamInterface<SilentStep> {};

TEST_P(FlashFailure, EndsWithOneAndTellsWhatTheDriveHolds) {
    drive.in_bootloader = true;
    drive.instead =
        [](int turn,
           const std::string&) -> std::optional<std::vector<test::TextBootloader::Piece>> {
        if (turn >= GetParam().turn) return std::vector<test::TextBootloader::Piece>{};
        return std::nullopt;
    };
    EXPECT_EQ(flash(4120 * 2), 1);
    EXPECT_EQ(machine.out, std::string(GetParam().message) + "\n");
    EXPECT_TRUE(told("The drive holds no complete firmware")) << machine.err;
    expect_clean();
}

INSTANTIATE_TEST_SUITE_P(Silent, FlashFailure,
                         testing::Values(SilentStep{"erase", 2, "Erase failed!"},
                                         SilentStep{"switch", 3,
                                                    "Can't switch to block receive mode!"},
                                         SilentStep{"block", 4, "Programing overtime!"},
                                         SilentStep{"second_block", 6, "Programing overtime!"}),
                         [](const auto& step) { return std::string(step.param.word); });

TEST_F(FlashTest, AFirmwareThatDoesNotStartIsAFailure) {
    drive.starts = false;
    drive.in_bootloader = true;
    EXPECT_EQ(flash(4120), 1);
    EXPECT_EQ(machine.out, "Error,can't quit bootloader mode after reboot!\n");
    EXPECT_TRUE(told("did not start the new firmware"));
}

TEST_F(FlashTest, CtrlCTellsTheDrivesStateAndLeavesTheLineQuiet) {
    drive.in_bootloader = true;
    machine.interrupted = [this] { return drive.blocks == 1; };
    EXPECT_EQ(flash(4120 * 3), 1);
    EXPECT_EQ(machine.out, "");
    EXPECT_TRUE(told("servoctl: interrupted; the transfer is cut off (")) << machine.err;
    EXPECT_TRUE(told("The drive holds no complete firmware and waits in its bootloader"));
    expect_clean();
}

TEST_F(FlashTest, CtrlCBeforeTheEraseSaysThatNothingIsLost) {
    drive.silent = true;
    machine.interrupted = [this] { return machine.bench.engine.state.download_step == 3; };
    EXPECT_EQ(flash(4120), 1);
    EXPECT_TRUE(told("its firmware is untouched")) << machine.err;
    expect_clean();
}

TEST_F(FlashTest, AfterAFailureAnotherRunSucceeds) {
    drive.in_bootloader = true;
    machine.interrupted = [this] { return drive.blocks == 1; };
    EXPECT_EQ(flash(4120 * 3), 1);
    machine.session.close();
    machine.interrupted = [] { return false; };
    drive.power_up();
    EXPECT_EQ(flash(4120 * 3), 0);
    EXPECT_TRUE(drive.started);
}

TEST_F(FlashTest, AFileThatIsNoImageNeverOpensTheLink) {
    EXPECT_EQ(machine.run({"flash", (machine.bench.folder / "none.servo").string()}), 4);
    EXPECT_TRUE(told("none.servo can't be read"));
    EXPECT_EQ(machine.run({"flash", machine.put_image("00", "This is ZARN Firmware 12")}), 4);
    EXPECT_TRUE(told("a.servo is no firmware image"));
    machine.bench.folder.put("b.servo", "This is ZARN firmware 12");
    EXPECT_EQ(machine.run({"flash", (machine.bench.folder / "b.servo").string()}), 4)
        << "a header alone would send nothing";
    EXPECT_EQ(machine.opened, 0);
    EXPECT_EQ(machine.out, "");
}

TEST_F(FlashTest, CharactersThatAreNotSentAreTold) {
    drive.in_bootloader = true;
    EXPECT_EQ(flash(4120 + 2059), 0);
    EXPECT_TRUE(told("the last 2059 characters are less than half a block and are not sent"));
    EXPECT_EQ(drive.blocks, 1);
}

TEST_F(FlashTest, AnImageWithoutABlockEndsInATimeOut) {
    drive.in_bootloader = true;
    EXPECT_EQ(flash(2060), 1);
    EXPECT_EQ(machine.out, "Programing overtime!\n");
}

TEST_F(FlashTest, VerifyWantsAnAnswerBehindTheTransfer) {
    drive.in_bootloader = true;
    EXPECT_EQ(flash(4120, {"--verify", "--timeout", "1"}), 3) << "this firmware never answers";
    EXPECT_EQ(machine.out, "Download Finished!\n");
    EXPECT_TRUE(told("the drive does not answer behind the transfer"));
}

TEST_F(FlashTest, NeedsOneImage) {
    EXPECT_EQ(machine.run({"flash"}), 2);
    EXPECT_EQ(machine.run({"flash", "a.servo", "b.servo"}), 2);
}

}  // namespace
}  // namespace servo::cli
