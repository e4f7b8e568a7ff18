// Each of the six failures, in both languages, with what it leaves behind.
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;
using base::Language;

namespace {

using Pieces = std::vector<TextBootloader::Piece>;

struct Failure {
    const char* name;
    std::function<void(TextBootloader&)> provoke;
    base::Text message;
    int step;
    int interval;  // that stays
    int limit;     // likewise
    int blocks;    // programmed before it
    std::chrono::milliseconds waited;
};

// The drive answers everything but replies that begin so.
auto mute(std::string_view beginning) {
    return [beginning](TextBootloader& drive) {
        drive.instead = [beginning](int, const std::string& reply) {
            return reply.starts_with(beginning) ? std::optional(Pieces{}) : std::nullopt;
        };
    };
}

const std::vector<Failure>& failures() {
    static const std::vector<Failure> kAll{
        {"NoHandshake",
         [](TextBootloader& drive) { drive.deaf_to_call = true, drive.in_bootloader = false; },
         {"握手无回应!", "Shake hands with no response!"},
         4,
         6,
         350,
         0,
         300 * 6ms},
        {"WrongType",
         [](TextBootloader& drive) { drive.type = "OTHR"; },
         {"固件与bootloader不匹配!", "Firmware and bootloader not match!"},
         5,
         6,
         350,
         0,
         280 * 6ms},
        {"NoErase", mute("erased"), {"擦除失败!", "Erase failed!"}, 6, 6, 75, 0, 280 * 50ms},
        {"NoBlockMode",
         mute("switch"),
         {"切换到块接收模式失败!", "Can't switch to block receive mode!"},
         7,
         6,
         300,
         0,
         258 * 6ms},
        {"NoBlock",
         mute("programmed"),
         {"编程超时!", "Programing overtime!"},
         8,
         15,
         30,
         0,
         258 * 15ms},
        {"NoStart",
         [](TextBootloader& drive) { drive.starts = false; },
         {"错误，重启不能退出bootloader模式!", "Error,can't quit bootloader mode after reboot!"},
         9,
         6,
         300,
         2,
         0ms},
    };
    return kAll;
}

std::pair<std::int16_t, std::string> counter_of(const firmware::DownloadData& data, int step) {
    switch (step) {
        case 4:
            return {data.step3_cnt, data.step3_string};
        case 5:
            return {data.step5_cnt, data.step5_string};
        case 6:
            return {data.step6_cnt, data.step6_string};
        case 7:
            return {data.step7_cnt, data.step7_string};
        case 8:
            return {data.step8_cnt, data.step8_string};
        default:
            return {data.step9_cnt, data.step9_string};
    }
}

class Failures : public testing::TestWithParam<std::tuple<std::size_t, Language>>,
                 public TransferBench {
  protected:
    const Failure& failure = failures().at(std::get<0>(GetParam()));
};

}  // namespace

TEST_P(Failures, TellsItsMessageAndLeavesTheRestAsItStands) {
    language = std::get<1>(GetParam());
    drive.in_bootloader = true;
    failure.provoke(drive);
    load(4120 * 2);
    start();
    VirtualTime::Duration began{0};
    ASSERT_TRUE(run_until([&] {
        if (began.count() == 0 && state.download_step == failure.step && state.sendmod == 1)
            began = time.now();
        return state.download_active == 0;
    }));
    EXPECT_EQ(ended(), TransferEnd::kFailed);
    ASSERT_EQ(notice.boxes.size(), 1U);
    EXPECT_EQ(box().first, language == Language::kChinese ? "下载提示" : "Download Notice");
    EXPECT_EQ(box().second, failure.message.in(language));
    // The tick that finds the limit reached comes one interval after the last one that listened.
    if (failure.waited > 0ms) {
        const auto waited = time.now() - began;
        const auto tick = failure.waited / (failure.step == 4   ? 300
                                            : failure.step <= 6 ? 280
                                                                : 258);
        EXPECT_EQ(waited, failure.waited + tick);
    }

    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(state.sendmod, 0);
    EXPECT_EQ(timer.interval(), failure.interval);
    EXPECT_EQ(state.Comm_Over_Time_Cnts, failure.limit);
    EXPECT_FALSE(data().Command1_enabled);
    EXPECT_FALSE(data().Command4_enabled);
    EXPECT_EQ(data().ProgressBar1, failure.blocks * 50.0);
    const auto [cnt, reply] = counter_of(data(), failure.step);
    EXPECT_GT(cnt, 0);
    if (failure.step == 5) {
        EXPECT_TRUE(reply.ends_with("?\r\n")) << "what was heard stays too";
    }
    if (failure.step == 9) {
        EXPECT_NE(reply.find("ZARN bootloader"), std::string::npos);
    }
    EXPECT_EQ(state.InputLen, 60);
    run_ticks(1);
    EXPECT_EQ(state.InputLen, 10) << "the next tick finds the job idle";
    EXPECT_FALSE(download.advice_text().empty());
    EXPECT_EQ(download.result()->step, failure.step);
    EXPECT_EQ(download.result()->erased, failure.step >= 6);
}

INSTANTIATE_TEST_SUITE_P(All, Failures,
                         testing::Combine(testing::Range<std::size_t>(0, 6),
                                          testing::Values(Language::kChinese, Language::kEnglish)),
                         [](const auto& named) {
                             return std::string(failures().at(std::get<0>(named.param)).name) +
                                    (std::get<1>(named.param) == Language::kChinese ? "InChinese"
                                                                                    : "InEnglish");
                         });

namespace {
struct AfterAFailure : testing::Test, TransferBench {};
}  // namespace

TEST_F(AfterAFailure, TickStaysAtItsIntervalUntilTheNextSuccess) {
    load(4120);
    drive.in_bootloader = true;
    mute("programmed")(drive);
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(timer.interval(), 15);
    run_for(300ms);
    EXPECT_EQ(timer.interval(), 15);
    drive.instead = {};
    drive.power_up();
    ASSERT_TRUE(download.load_image(put_image(payload(4120))));
    if (!port.is_open()) open_link();
    EXPECT_EQ(timer.interval(), 15) << "opening the link does not touch it";
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(timer.interval(), 3);
}

TEST_F(AfterAFailure, PollerGivesTheLinkUpAtTheLimitThatTheStepLeft) {
    load(4120);
    drive.in_bootloader = true;
    mute("programmed")(drive);
    start();
    ASSERT_TRUE(finish());
    communication.show_dialog();
    const auto before = engine.counters.misses;
    ASSERT_TRUE(run_until([this] { return !port.is_open(); }, 10s));
    EXPECT_EQ(engine.counters.misses - before, 30U);
}

TEST_F(AfterAFailure, NewLoadEnablesStartButNotLoading) {
    load(4120);
    drive.silent = true;
    start();
    ASSERT_TRUE(finish());
    ASSERT_TRUE(download.load_image(put_image(payload(4120))));
    EXPECT_TRUE(data().Command4_enabled);
    EXPECT_FALSE(data().Command1_enabled) << "until the form is created anew";
}

TEST_F(AfterAFailure, NoBlockIsSentTwice) {
    load(4120 * 2);
    drive.in_bootloader = true;
    mute("programmed")(drive);
    start();
    ASSERT_TRUE(finish());
    EXPECT_EQ(drive.blocks, 1);
}

TEST_F(AfterAFailure, AdviceSaysInWhatStateTheDriveIs) {
    using firmware::TransferResult;
    const auto text = [](TransferEnd end, int step, bool erased) {
        return firmware::advice(TransferResult{end, static_cast<std::uint8_t>(step), erased, {}},
                                Language::kEnglish);
    };
    EXPECT_NE(text(TransferEnd::kFailed, 4, false).find("untouched"), std::string::npos);
    EXPECT_NE(text(TransferEnd::kFailed, 5, false).find("waits in its bootloader"),
              std::string::npos);
    for (const int step : {6, 7, 8})
        EXPECT_NE(text(TransferEnd::kFailed, step, true).find("no complete firmware"),
                  std::string::npos);
    EXPECT_NE(text(TransferEnd::kFailed, 9, true).find("did not start"), std::string::npos);
    EXPECT_NE(text(TransferEnd::kLinkClosed, 8, true).find("no complete firmware"),
              std::string::npos);
    EXPECT_NE(text(TransferEnd::kLinkClosed, 9, true).find("Connect again"), std::string::npos);
    EXPECT_EQ(text(TransferEnd::kDone, 9, true), "");
    EXPECT_EQ(text(TransferEnd::kReadBack, 10, true), "");
}
