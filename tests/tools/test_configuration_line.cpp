// 600 objects over a line that is not clean, a drive that refuses, and silence.
#include <gtest/gtest.h>

#include <algorithm>

#include "configuration_bench.h"
#include "tools/configuration_notes.h"

namespace servo::tools::test {
namespace {

class FaultyLine : public testing::TestWithParam<unsigned> {};

TEST_P(FaultyLine, SixHundredObjectsAreWrittenWithEveryRowRight) {
    ConfigurationLine bench;
    bench.add_600(false);
    bench.load(ConfigurationLine::file_of_600());
    FrameFaults faults(bench.drive, bench.line, GetParam());
    bench.form.Command2_Click();
    ASSERT_TRUE(bench.finish(120s));
    EXPECT_EQ(bench.form.Label2(), "Finished! Fail:0");
    for (int object = 0; object < ConfigurationLine::kObjects; ++object) {
        const SourceRow& row = bench.row(static_cast<std::size_t>(object));
        ASSERT_EQ(row.Result, "True") << object;
        ASSERT_EQ(row.Check_Value, std::to_string(ConfigurationLine::value_of(object))) << object;
        ASSERT_EQ(bench.drive.value(ConfigurationLine::identity_of(object)),
                  ConfigurationLine::value_of(object))
            << object;
    }
    EXPECT_GT(faults.lost, 30);
    EXPECT_GT(faults.corrupted, 30);
    EXPECT_EQ(faults.needless, 0) << "nothing twice but what got no answer";
}

TEST_P(FaultyLine, SixHundredObjectsAreReadWithEveryRowRight) {
    ConfigurationLine bench;
    bench.add_600(true);
    bench.load_list(ConfigurationLine::file_of_600());
    FrameFaults faults(bench.drive, bench.line, GetParam());
    bench.form.Command7_Click();
    ASSERT_TRUE(bench.finish(120s));
    EXPECT_EQ(bench.form.Label8(), "Finished! Fail:0");
    for (int object = 0; object < ConfigurationLine::kObjects; ++object) {
        ASSERT_EQ(bench.driver(static_cast<std::size_t>(object)).Result, "True") << object;
        ASSERT_EQ(bench.driver(static_cast<std::size_t>(object)).Driver_Value,
                  std::to_string(ConfigurationLine::value_of(object)))
            << object;
    }
    EXPECT_TRUE(bench.writes().empty());
    EXPECT_EQ(faults.needless, 0);
}

// Only what the file says leaves, in its order.
TEST_P(FaultyLine, NothingIsSentThatTheFileDoesNotSay) {
    ConfigurationLine bench;
    bench.add_600(false);
    bench.load(ConfigurationLine::file_of_600());
    bench.port.record = true;
    FrameFaults faults(bench.drive, bench.line, GetParam());
    bench.form.Command2_Click();
    ASSERT_TRUE(bench.finish(120s));
    // As it left, before the line did anything to it.
    const auto& bytes = bench.port.written;
    ASSERT_EQ(bytes.size() % link::kFrameSize, 0U);
    int at = 0;
    for (std::size_t frame = 0; frame < bytes.size(); frame += link::kFrameSize) {
        link::Payload payload{};
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(frame) + 1, payload.size(),
                    payload.begin());
        if (payload[0] == link::kRead) continue;  // the poller, before and behind the job
        if (link::reply_key(payload) != ConfigurationLine::identity_of(at)) ++at;
        ASSERT_LT(at, ConfigurationLine::kObjects);
        ASSERT_EQ(payload,
                  link::make_payload(ConfigurationLine::key_of(at),
                                     static_cast<std::int32_t>(ConfigurationLine::value_of(at)),
                                     false, 0))
            << at;
    }
    EXPECT_EQ(at, ConfigurationLine::kObjects - 1);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FaultyLine, testing::Values(1U, 2U, 3U, 4U));

struct Drive600 : testing::Test, ConfigurationLine {
    Drive600() { add_600(false); }
};

TEST_F(Drive600, ADriveThatRefusesEverySeventhObject) {
    for (int object = 0; object < kObjects; object += 7)
        drive.refuse.insert(identity_of(object));
    load(file_of_600());
    FrameFaults faults(drive, line, 7);
    form.Command2_Click();
    ASSERT_TRUE(finish(120s));
    EXPECT_EQ(form.Label2(), "Finished! Fail:86");
    for (int object = 0; object < kObjects; ++object) {
        const SourceRow& got = row(static_cast<std::size_t>(object));
        const bool refused = object % 7 == 0;
        ASSERT_EQ(got.Result, refused ? "False" : "True") << object;
        ASSERT_EQ(got.red, refused) << object;
        ASSERT_EQ(got.refusal, refused ? 0x06020000U : 0U) << object;
    }
    EXPECT_EQ(faults.needless, 0);
    form.show_failures(ConfigurationSide::kWrite);
    const ConfigurationReport report = form.report();
    ASSERT_EQ(report.rows.size(), 86U);
    EXPECT_EQ(report.rows[1].cells[2], "7");
    EXPECT_EQ(report.rows[1].cells[4], "0x06020000, the drive has no such object");
}

TEST_F(Drive600, ARefusedReadIsCountedToo) {
    for (int object = 0; object < kObjects; object += 7)
        drive.refuse.insert(identity_of(object));
    load_list(file_of_600());
    form.Command7_Click();
    ASSERT_TRUE(finish(120s));
    EXPECT_EQ(form.Label8(), "Finished! Fail:86");
}

TEST_F(Drive600, SilenceInTheMiddleClosesTheLinkAndEndsTheJob) {
    load(file_of_600());
    form.Command2_Click();
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 301; }));
    drive.silent = true;
    const auto begin = time.now();
    ASSERT_TRUE(run_until([this] { return !form.link_open(); }, 10s));
    // 350 misses, one in two ticks, and the one pause.
    EXPECT_NEAR(std::chrono::duration<double>(time.now() - begin).count(), 2.25, 0.1);
    EXPECT_FALSE(form.running());
    EXPECT_EQ(engine.state.batch_mode, 0);
    EXPECT_EQ(form.Label2(), "Stopped! Fail:0");
    EXPECT_EQ(configuration_note(form, ConfigurationSide::kWrite).text,
              "The link was closed at row 300 of 600: nothing behind it was written");
    EXPECT_EQ(row(299).Result, "True");
    EXPECT_EQ(row(300).Result, "");
    EXPECT_FALSE(row(300).red);
    EXPECT_TRUE(form.locked());
    form.Timer1_Timer();
    EXPECT_FALSE(form.locked()) << "the buttons come back";
}

TEST_F(Drive600, BehindTheNextOpeningNothingGoesOnByItself) {
    load(file_of_600());
    form.Command2_Click();
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 301; }));
    drive.silent = true;
    ASSERT_TRUE(run_until([this] { return !form.link_open(); }, 10s));
    unlock();
    drive.silent = false;
    const std::size_t sent = writes().size();
    communication.Command1_Click();
    run_for(1s);
    EXPECT_TRUE(form.link_open());
    EXPECT_EQ(writes().size(), sent) << "it may be another drive";
    form.Command2_Click();
    ASSERT_TRUE(finish());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
}

TEST_F(Drive600, AShortSilenceCostsNothingButTime) {
    load(file_of_600());
    form.Command2_Click();
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 301; }));
    drive.silent = true;
    run_for(1500ms);
    drive.silent = false;
    ASSERT_TRUE(finish());
    EXPECT_EQ(form.Label2(), "Finished! Fail:0");
}

TEST_F(Drive600, ClosingTheLinkByHandEndsAReading) {
    load(file_of_600());
    form.dry_run();
    ASSERT_TRUE(run_until([this] { return engine.state.batch_row == 100; }));
    communication.Command1_Click();
    EXPECT_FALSE(form.running());
    EXPECT_FALSE(form.locked());
    EXPECT_FALSE(form.finding().has_value());
}

TEST_F(Drive600, OnACleanLineEachObjectIsAskedOnce) {
    load(file_of_600());
    form.Command2_Click();
    const auto begin = time.now();
    ASSERT_TRUE(finish());
    EXPECT_EQ(writes().size(), 600U);
    // Four ticks a row and the warm-up.
    EXPECT_LT(time.now() - begin, 7300ms);
}

TEST_F(Drive600, ADryRunOf600ObjectsWritesNothing) {
    load(file_of_600());
    form.dry_run();
    ASSERT_TRUE(finish());
    ASSERT_TRUE(form.finding().has_value());
    const auto& run = std::get<DryRunFinding>(*form.finding()).run;
    EXPECT_EQ(run.writes, 600U);
    EXPECT_EQ(run.changes, 599U) << "one of the values is 0, as the drive's are";
    EXPECT_TRUE(writes().empty());
    EXPECT_FALSE(form.locked());
}

}  // namespace
}  // namespace servo::tools::test
