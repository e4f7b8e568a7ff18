// A transfer that goes well: what is sent when, at which interval, and what its end restores.
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

struct Transfer : testing::Test, TransferBench {
    bool until_step(int step) {
        return run_until([this, step] { return state.download_step == step; });
    }
    // Until the step has sent.
    bool until_sent(int step) {
        return run_until(
            [this, step] { return state.download_step == step && state.sendmod == 1; });
    }
};

}  // namespace

TEST_F(Transfer, SpendsThreeTicksFlushingTheLineBeforeItsFirstWord) {
    load(4120);
    start();
    state.sendmod = 1;
    for (int step = 1; step <= 3; ++step) {
        drive.say("x");
        run_ticks(1);
        EXPECT_EQ(state.download_step, step);
        EXPECT_EQ(state.sendmod, 0);
        EXPECT_EQ(state.InputLen, 60);
        EXPECT_EQ(port.in_buffer_count(), 0U);
        EXPECT_EQ(sent(), "");
    }
    run_ticks(1);
    EXPECT_EQ(sent(), "hi\r");
    EXPECT_EQ(state.sendmod, 1);
}

TEST_F(Transfer, DialogueWithADriveInItsBootloader) {
    load(4120 * 2);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    const std::string image = payload(4120 * 2);
    EXPECT_EQ(sent().substr(0, sent().find("go\r") + 3),
              "hi\rZARN\re\rw\r" + image.substr(0, 4120) + "\rw\r" + image.substr(4120) + "\rgo\r");
    EXPECT_EQ(drive.stored, image);
    EXPECT_TRUE(drive.started);
    EXPECT_EQ(ended(), TransferEnd::kDone);
}

TEST_F(Transfer, RunningDriveIsSentToItsBootloaderByOneFrame) {
    load(4120);
    start();
    ASSERT_TRUE(until_step(4));
    run_ticks(1);
    EXPECT_EQ(sent(), std::string("hi\r\x7F\x2B\xFF\x2F\x00\xAA\x55\x00\x00\x29", 13));
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120));
}

TEST_F(Transfer, DriveInItsBootloaderIsNotSentTheFrame) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    for (const std::string& word : drive.lines)
        EXPECT_NE(word, "<call>");
    EXPECT_EQ(sent().substr(0, sent().find("go\r")).find('\x7F'), std::string::npos);
}

TEST_F(Transfer, IntervalsAndLimitsOfEachStep) {
    load(4120 * 2);
    start();
    const struct {
        int step;
        int interval;
        int limit;
    } table[] = {{3, 6, 350}, {4, 6, 350}, {5, 6, 350}, {6, 50, 75}, {7, 6, 300},
                 {8, 15, 30}, {7, 6, 300}, {8, 15, 30}, {9, 6, 300}};
    for (const auto& row : table) {
        ASSERT_TRUE(until_sent(row.step)) << row.step;
        EXPECT_EQ(timer.interval(), row.interval) << row.step;
        EXPECT_EQ(state.Comm_Over_Time_Cnts, row.limit) << row.step;
        ASSERT_TRUE(run_until([this, &row] { return state.download_step != row.step; }));
    }
}

TEST_F(Transfer, EraseThatSucceededPutsTheIntervalBackAtOnce) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_step(7));
    EXPECT_EQ(state.sendmod, 0);
    EXPECT_EQ(timer.interval(), 6);
}

TEST_F(Transfer, IntervalIsSetByTheSendAction) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_step(8));
    EXPECT_EQ(timer.interval(), 6);
    run_ticks(1);
    EXPECT_EQ(timer.interval(), 15);
}

TEST_F(Transfer, BlockIsPrecededByItsOwnW) {
    load(4120 * 3);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    std::vector<std::string> words;
    for (const std::string& word : drive.lines)
        words.push_back(word.size() > 10 ? "block" : word);
    EXPECT_EQ(words, (std::vector<std::string>{"hi", "ZARN", "e", "w", "block", "w", "block", "w",
                                               "block", "go"}));
}

TEST_F(Transfer, PhraseClearsCounterAndReplyOfItsStep) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_step(5));
    EXPECT_EQ(data().step3_cnt, 0);
    EXPECT_EQ(data().step3_string, "");
    EXPECT_EQ(state.sendmod, 0);
}

TEST_F(Transfer, BarShowsThePartOfTheBlocks) {
    load(4120 * 3);
    drive.in_bootloader = true;
    start();
    std::vector<double> shown;
    while (state.download_active == 1) {
        run_ticks(1);
        if (shown.empty() || shown.back() != data().ProgressBar1)
            shown.push_back(data().ProgressBar1);
    }
    EXPECT_EQ(shown, (std::vector<double>{0, 100.0 / 3, 200.0 / 3, 100, 0}));
}

TEST_F(Transfer, LastBlockLeadsToStepNineWithTheIndexBackAtZero) {
    load(4120 * 2);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_step(8));
    EXPECT_EQ(data().fw_block_index, 0);
    ASSERT_TRUE(run_until([this] { return data().fw_block_index == 1; }));
    EXPECT_EQ(state.download_step, 7);
    ASSERT_TRUE(until_step(9));
    EXPECT_EQ(data().fw_block_index, 0);
}

TEST_F(Transfer, SilenceFor228TicksAfterGoIsSuccess) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_sent(9));
    const auto go_at = clock.now();
    run_ticks(228);
    EXPECT_EQ(data().step9_cnt, 228);
    EXPECT_EQ(state.download_active, 1);
    run_ticks(1);
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(clock.now() - go_at, 229 * 6ms);
}

TEST_F(Transfer, OtherTypesBannerAfterGoIsIgnored) {
    load(4120);
    drive.in_bootloader = true;
    drive.instead = [](int, const std::string& reply) {
        return reply == "start\r\n" ? std::optional(std::vector<TextBootloader::Piece>{
                                          {{}, "OTHR bootloader\r\nbootloader ZARN\r\n"}})
                                    : std::nullopt;
    };
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
}

TEST_F(Transfer, BannerAfterGoMayComeInPieces) {
    load(4120);
    drive.in_bootloader = true;
    drive.instead = [](int, const std::string& reply) {
        return reply == "start\r\n" ? std::optional(std::vector<TextBootloader::Piece>{
                                          {{}, "noise ZARN boot"}, {100ms, "loa"}, {50ms, "der"}})
                                    : std::nullopt;
    };
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kFailed);
}

TEST_F(Transfer, SuccessRestoresWhatItTouched) {
    FakePage page("Basic");
    engine.add_poll_window(page);
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(until_sent(9));
    page.must_fresh = false;
    state.Com_Change = 1;
    state.sub_Pointer = 4;
    state.status_lane = 2;
    state.page = 5;
    state.rotation = 2;
    state.allow_add_pointer = 1;
    state.g_FW_CRC_OK_overtimes = 1;
    values.operands.o64100320.seen = values.operands.o65100310.seen = true;
    values.operands.o30400710.seen = values.operands.o60F61310.seen = true;
    values.operands.o60F61110.seen = values.firmware_check_known = true;
    drive.say("left over");
    ASSERT_TRUE(finish());
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"Notice", "Download Finished!"}));
    EXPECT_TRUE(page.must_fresh);
    EXPECT_EQ(state.Com_Change, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.status_lane, 0);
    EXPECT_EQ(state.page, 0);
    EXPECT_EQ(state.rotation, 0);
    EXPECT_EQ(state.allow_add_pointer, 0);
    EXPECT_EQ(state.g_FW_CRC_OK_overtimes, 0);
    EXPECT_FALSE(values.operands.o64100320.seen || values.operands.o65100310.seen ||
                 values.operands.o30400710.seen || values.operands.o60F61310.seen ||
                 values.operands.o60F61110.seen || values.firmware_check_known);
    EXPECT_EQ(data().ProgressBar1, 0);
    EXPECT_TRUE(data().Command1_enabled);
    EXPECT_TRUE(data().Command4_enabled);
    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(state.sendmod, 0);
    EXPECT_EQ(data().step9_cnt, 0);
    EXPECT_EQ(data().step9_string, "");
    EXPECT_EQ(timer.interval(), 3);
    EXPECT_TRUE(timer.enabled());
    EXPECT_EQ(state.InputLen, 10);
    EXPECT_EQ(port.in_buffer_count(), 0U);
    EXPECT_EQ(state.Comm_Over_Time_Cnts, 300) << "step 9's, until the link is opened anew";
}

TEST_F(Transfer, SuccessIsToldInChinese) {
    language = base::Language::kChinese;
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"提示", "下载成功!"}));
}

namespace {
// A modal box pumps events, ticks among them.
class PumpingNotice final : public base::Notice {
  public:
    base::Answer show(std::string_view, std::string_view text, base::Buttons) override {
        ++boxes;
        last = text;
        if (while_open) while_open();
        return base::Answer::kOk;
    }
    std::function<void()> while_open;
    std::string last;
    int boxes = 0;
};
}  // namespace

TEST_F(Transfer, TicksDuringTheBoxLeaveAtOnce) {
    PumpingNotice box;
    std::string version_text;
    firmware::Download form({engine, box, language, brand, [](const auto&) { return std::nullopt; },
                             [] { return std::string(); }});
    ASSERT_TRUE(form.load_image(put_image(payload(4120))));
    open_link();
    drive.silent = true;
    box.while_open = [this] {
        EXPECT_NE(state.timer1_in, 0);
        EXPECT_EQ(state.download_active, 1) << "the selectors fall when the box is closed";
        const auto ticks = engine.counters.ticks;
        for (int i = 0; i < 10; ++i)
            engine.cTmr_Timer();
        EXPECT_EQ(engine.counters.ticks, ticks);
    };
    form.Command4_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(box.boxes, 1);
    EXPECT_EQ(box.last, "Shake hands with no response!");
}

TEST_F(Transfer, SecondTransferFollowsTheFirst) {
    load(4120);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(notice.boxes.size(), 2U);
    EXPECT_EQ(box().second, "Download Finished!");
}

TEST_F(Transfer, TransferStartedByItsSelectorSendsWhatTheFormHolds) {
    load(4120);
    drive.in_bootloader = true;
    open_link();
    state.download_active = 1;
    state.download_step = 0;
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120));
}

TEST_F(Transfer, TypeWordIsSentInTheCodePage) {
    ASSERT_TRUE(
        download.load_image(put_image(payload(4120), "a.servo", "This is \xD0\xCD firmware 1")));
    drive.type = "\xD0\xCD";
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
}

TEST_F(Transfer, StatusSpeedAndRemainingTimeAreShown) {
    load(4120 * 4);
    drive.in_bootloader = true;
    EXPECT_EQ(download.status_text(), "");
    start();
    ASSERT_TRUE(until_step(6));
    EXPECT_EQ(download.status_text(), "Erase");
    ASSERT_TRUE(run_until([this] { return data().fw_block_index == 2; }));
    EXPECT_EQ(download.status_text(), "Block 3 of 4");
    EXPECT_EQ(download.remaining_text(), "0:03");
    EXPECT_FALSE(download.speed_text().empty());
    ASSERT_TRUE(finish());
    EXPECT_EQ(download.status_text(), "");
    EXPECT_EQ(download.remaining_text(), "");
}

TEST_F(Transfer, DialogueIsLoggedBothWays) {
    load(4120);
    start();
    ASSERT_TRUE(finish());
    const std::string text = download.transfer().dialogue().text();
    for (const char* part :
         {"1 blocks, 4121 bytes, type ZARN", "> hi<CR>", "> 7F 2B FF 2F 00 AA 55 00 00 29",
          "< ZARN bootloader V1.0<CR><LF>", "> ZARN<CR>", "< type right", "> e<CR>",
          "< erased success", "> w<CR>", "< switch to block r", "< programmed", "> go<CR>",
          "Download Finished!"})
        EXPECT_NE(text.find(part), std::string::npos) << part;
    ASSERT_TRUE(download.save_dialogue(folder / "log.txt"));
    EXPECT_EQ(folder.get("log.txt"), text);
}
