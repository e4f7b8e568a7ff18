// What each reply byte does to the row in work, and which rows are asked at all.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "configuration_bench.h"
#include "tools/configuration_job.h"

namespace servo::tools::test {
namespace {

using link::Payload;
using link::Received;

SourceRow source_row(std::string Index, std::string Result = {}) {
    SourceRow row;
    row.Index = std::move(Index);
    row.Source_Value = "7";
    row.Result = std::move(Result);
    return row;
}

DriverRow driver_row(std::string Index) {
    DriverRow row;
    row.Index = std::move(Index);
    return row;
}

struct Nobody final : ConfigurationObserver {
    void row_done(std::size_t) override {}
    void job_ended() override {}
};

// The job alone, its frames handed to it; nobody answers on the line.
struct ReplyTest : testing::Test, servo::test::VirtualBench {
    static Payload reply(int command) {
        return {static_cast<std::uint8_t>(command), 0x10, 0x20, 0x03, 0x34, 0x12, 0x78, 0x56};
    }
    static bool is_request(int command) {
        return command == 0x40 || command == 0x2F || command == 0x2B || command == 0x23;
    }
    Received answer_write(int command) {
        data.source = {source_row("20100310")};
        job.start_write();
        job.send_step(engine);
        return job.receive_frame(engine, reply(command));
    }
    Received answer_read(int command) {
        data.driver = {driver_row("20100310")};
        job.start_read();
        job.send_step(engine);
        return job.receive_frame(engine, reply(command));
    }

    Nobody nobody;
    ConfigurationData data;
    ConfigurationTransfer job{data, engine, nobody};
};

TEST_F(ReplyTest, OfAWriteOnly60IsSuccessEchoesAreNothingAndAllOthersFail) {
    for (int command = 0; command < 256; ++command) {
        const Received received = answer_write(command);
        const SourceRow& row = data.source[0];
        if (is_request(command)) {
            EXPECT_EQ(received, Received::kIgnored) << command;
            EXPECT_EQ(row.Result, "") << command;
            EXPECT_EQ(engine.state.batch_row, 1) << command;
            job.stop();
            continue;
        }
        EXPECT_EQ(received, Received::kTaken) << command;
        const bool good = command == 0x60;
        EXPECT_EQ(row.Result, good ? "True" : "False") << command;
        EXPECT_EQ(row.Check_Value, good ? "4660" : "") << command;
        EXPECT_EQ(row.red, !good) << command;
        EXPECT_EQ(row.refusal, command == 0x80 ? 0x56781234U : 0U) << command;
        EXPECT_EQ(data.fail_count, good ? 0 : 1) << command;
        EXPECT_EQ(data.write_result, good ? "Finished! Fail:0" : "Finished! Fail:1") << command;
        EXPECT_EQ(engine.state.batch_mode, 0) << command;
    }
}

TEST_F(ReplyTest, OfARead4B43And4FAreSuccessEchoesAreNothingAndAllOthersFail) {
    for (int command = 0; command < 256; ++command) {
        const Received received = answer_read(command);
        const DriverRow& row = data.driver[0];
        if (is_request(command)) {
            EXPECT_EQ(received, Received::kIgnored) << command;
            EXPECT_EQ(row.Result, "") << command;
            job.stop();
            continue;
        }
        EXPECT_EQ(received, Received::kTaken) << command;
        const bool good = command == 0x4B || command == 0x43 || command == 0x4F;
        EXPECT_EQ(row.Result, good ? "True" : "False") << command;
        EXPECT_EQ(row.Driver_Value, good ? "4660" : "") << "in the row's size, not the reply's";
        EXPECT_EQ(data.fail_count, good ? 0 : 1) << command;
        EXPECT_EQ(data.read_result, good ? "Finished! Fail:0" : "Finished! Fail:1") << command;
    }
}

TEST_F(ReplyTest, AnotherKeyIsIgnoredWhateverItSays) {
    data.source = {source_row("20100310")};
    job.start_write();
    job.send_step(engine);
    for (const Payload& payload :
         {Payload{0x60, 0x10, 0x20, 0x04, 0, 0, 0, 0}, Payload{0x80, 0x11, 0x20, 0x03, 0, 0, 0, 0}})
        EXPECT_EQ(job.receive_frame(engine, payload), Received::kIgnored);
    EXPECT_EQ(engine.state.batch_row, 1);
}

// No file brings the word "Illegal", but a row that has it is passed over like an invalid one.
TEST_F(ReplyTest, RowsThatSayIllegalOrInvalidArePassedOverInTheSameTick) {
    data.source = {source_row("20100310", "Illegal"), source_row("20100310", "Invalid"),
                   source_row("60600008")};
    job.start_write();
    job.send_step(engine);
    EXPECT_EQ(engine.state.batch_row, 3);
    EXPECT_EQ(job.receive_frame(engine, {0x60, 0x60, 0x60, 0x00, 7, 0, 0, 0}), Received::kTaken);
    EXPECT_EQ(data.write_result, "Finished! Fail:0");
    EXPECT_EQ(data.source[0].Result, "Illegal");
    EXPECT_EQ(data.source[1].Result, "Invalid");
    EXPECT_EQ(data.ProgressBar1, 100);
}

TEST_F(ReplyTest, APassedOverLastRowEndsTheJob) {
    data.source = {source_row("20100310"), source_row("60600008", "Invalid")};
    job.start_write();
    job.send_step(engine);
    EXPECT_EQ(job.receive_frame(engine, reply(0x80)), Received::kTaken);
    EXPECT_EQ(engine.state.batch_mode, 1);
    job.send_step(engine);
    EXPECT_EQ(engine.state.batch_mode, 0);
    EXPECT_EQ(data.write_result, "Finished! Fail:1");
}

}  // namespace
}  // namespace servo::tools::test
