// The two jobs, frame by frame.
#include <gtest/gtest.h>

#include "pos_flow_bench.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;
using link::Payload;

// The job alone: frames are handed to it, and what it sends is looked at.
struct JobAlone : PosFlowForm {
    JobAlone() {
        port.open("COM1", 38400);
        port.record = true;
    }
    // One send tick.
    Payload sent() {
        port.written.clear();
        engine.state.sendmod = 0;
        engine.cTmr_Timer();
        Payload payload{};
        if (port.written.size() == link::kFrameSize)
            std::copy_n(port.written.begin() + 1, payload.size(), payload.begin());
        else
            payload[0] = 0xEE;
        return payload;
    }
    void warm_up() {
        for (int tick = 0; tick < 3; ++tick)
            engine.cTmr_Timer();
    }
    // One receive tick with that on the line.
    void answer(const Payload& payload) {
        const auto frame = test::FakeDrive::frame_of(payload);
        line.to_pc.send(frame);
        time.advance_to(time.now() + 20ms);
        engine.state.sendmod = 1;
        engine.cTmr_Timer();
    }
    void read() {
        form.Command1_Click();
        warm_up();
    }
    void write() {
        form.Command2_Click();
        warm_up();
    }
    int row() const { return engine.state.batch_row; }
};

TEST(PosFlowJob, TheFirstThreeTicksOnlyClearTheLine) {
    JobAlone bench;
    bench.form.Command1_Click();
    for (int tick = 1; tick <= 3; ++tick) {
        bench.engine.cTmr_Timer();
        EXPECT_EQ(bench.engine.state.batch_warmup, tick);
        EXPECT_TRUE(bench.port.written.empty());
    }
    EXPECT_EQ(bench.sent(), (Payload{0x40, 0x00, 0x31, 0x01, 0, 0, 0, 0}));
}

TEST(PosFlowJob, AReadAsksForTheLineAgainUntilItIsAnswered) {
    JobAlone bench;
    bench.read();
    EXPECT_EQ(bench.sent(), bench.sent());
    bench.answer({0x43, 0x00, 0x31, 0x01, 0x00, 0x40, 0, 0});
    EXPECT_EQ(bench.row(), 1);
    EXPECT_EQ(bench.grids().MSHFlexGrid1.at(1, 1), "100.00");
    EXPECT_EQ(bench.sent(), (Payload{0x40, 0x00, 0x31, 0x02, 0, 0, 0, 0}));
}

TEST(PosFlowJob, ProgressIsTheShareOf208) {
    JobAlone bench;
    bench.read();
    bench.engine.state.batch_row = 103;
    bench.answer({0x4B, 0x04, 0x31, 0x18, 1, 0, 0, 0});
    EXPECT_EQ(bench.row(), 104);
    EXPECT_EQ(bench.form.data().ProgressBar1, 50);
}

TEST(PosFlowJob, EchoesAndForeignAnswersAreNotItsOwn) {
    JobAlone bench;
    bench.read();
    bench.answer({0x40, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    bench.answer({0x2B, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    bench.answer({0x2F, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    bench.answer({0x23, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    bench.answer({0x43, 0x00, 0x31, 0x02, 0, 0, 0, 0});
    bench.answer({0x43, 0x01, 0x31, 0x01, 0, 0, 0, 0});
    bench.answer({0x80, 0x00, 0x31, 0x02, 0, 0, 0, 0});
    EXPECT_EQ(bench.row(), 0);
    EXPECT_EQ(bench.form.data().refusals, 0);
}

TEST(PosFlowJob, AnAnswerOfTheOtherKindIsNoGoodOne) {
    JobAlone bench;
    bench.read();
    bench.answer({0x60, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    EXPECT_EQ(bench.row(), 0);
    bench.write();
    bench.answer({0x43, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    EXPECT_EQ(bench.row(), 0);
    bench.answer({0x60, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    EXPECT_EQ(bench.row(), 1);
}

TEST(PosFlowJob, AWriteSendsTheValueOfTheCell) {
    JobAlone bench;
    bench.edit(1, step_column::kPos, "-2");
    bench.form.update_CTL_REG(1, 0x8105);
    bench.edit(1, step_column::kAccIdx, "3");
    bench.edit(1, step_column::kDecIdx, "4");
    bench.write();
    bench.engine.state.batch_row = 16;
    EXPECT_EQ(bench.sent(), (Payload{0x23, 0x02, 0x31, 0x01, 0xFE, 0xFF, 0xFF, 0xFF}));
    bench.engine.state.batch_row = 112;
    EXPECT_EQ(bench.sent(), (Payload{0x2B, 0x05, 0x31, 0x01, 0x05, 0x81, 0, 0}));
    bench.engine.state.batch_row = 176;
    EXPECT_EQ(bench.sent(), (Payload{0x2F, 0x07, 0x31, 0x01, 0x34, 0, 0, 0}));
}

TEST(PosFlowJob, TheLastAnswerFinishesARead) {
    JobAlone bench;
    bench.form.MSHFlexGrid2_Click(32, 0);
    bench.read();
    bench.engine.state.batch_row = 143;
    bench.answer({0x4B, 0x05, 0x31, 0x20, 0x05, 0x91, 0, 0});
    EXPECT_EQ(bench.field(0), "0") << "not decoded before the end";
    EXPECT_EQ(bench.cell(32, step_column::kMode), "RN");
    bench.engine.state.batch_row = 207;
    bench.answer({0x4F, 0x07, 0x31, 0x20, 0x25, 0, 0, 0});
    EXPECT_EQ(bench.row(), 208);
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
    EXPECT_EQ(bench.form.data().Label3, "finished");
    EXPECT_EQ(bench.form.data().Label4, "");
    EXPECT_EQ(bench.form.data().ProgressBar1, 0);
    EXPECT_EQ(bench.field(0), "5") << "the selected row is decoded";
    EXPECT_EQ(bench.cell(32, step_column::kAccIdx), "2");
    EXPECT_EQ(bench.cell(32, step_column::kDecIdx), "5");
}

TEST(PosFlowJob, TheLastAnswerFinishesAWrite) {
    JobAlone bench;
    bench.write();
    bench.engine.state.batch_row = 207;
    bench.answer({0x60, 0x07, 0x31, 0x20, 0, 0, 0, 0});
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
    EXPECT_EQ(bench.form.data().Label4, "finished");
    EXPECT_EQ(bench.form.data().Label3, "");
    EXPECT_EQ(bench.form.job_end(), TableJobEnd::kFinished);
}

TEST(PosFlowJob, ARefusalAsksForTheSameObjectAgain) {
    JobAlone bench;
    bench.read();
    bench.answer({0x80, 0x00, 0x31, 0x01, 0, 0, 2, 6});
    EXPECT_EQ(bench.row(), 0);
    EXPECT_EQ(bench.form.data().refusals, 1);
    EXPECT_EQ(bench.sent(), (Payload{0x40, 0x00, 0x31, 0x01, 0, 0, 0, 0}));
}

TEST(PosFlowJob, TheTenthRefusalEndsAReadAsFailed) {
    JobAlone bench;
    bench.read();
    for (int refusal = 1; refusal < 10; ++refusal)
        bench.answer({0x80, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    EXPECT_EQ(bench.engine.state.batch_mode, 3);
    bench.answer({0x80, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
    EXPECT_EQ(bench.form.data().refusals, 0);
    EXPECT_EQ(bench.form.data().Label3, "failed");
    EXPECT_EQ(bench.form.data().Label4, "");
    EXPECT_EQ(bench.form.data().ProgressBar1, 0);
    EXPECT_EQ(bench.form.job_end(), TableJobEnd::kRefused);
}

TEST(PosFlowJob, TheTenthRefusalEndsAWriteAsFailed) {
    JobAlone bench;
    bench.write();
    for (int refusal = 0; refusal < 10; ++refusal)
        bench.answer({0x80, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    EXPECT_EQ(bench.form.data().Label4, "failed");
    EXPECT_EQ(bench.form.data().Label3, "");
}

TEST(PosFlowJob, GoodAnswersDoNotClearTheCounter) {
    JobAlone bench;
    bench.read();
    for (int sub = 1; sub <= 8; ++sub) {
        const auto number = static_cast<std::uint8_t>(sub);
        bench.answer({0x80, 0x00, 0x31, number, 0, 0, 0, 0});
        bench.answer({0x43, 0x00, 0x31, number, 0, 0, 0, 0});
    }
    EXPECT_EQ(bench.form.data().refusals, 8);
    bench.answer({0x80, 0x01, 0x31, 1, 0, 0, 0, 0});
    bench.answer({0x43, 0x01, 0x31, 1, 0, 0, 0, 0});
    EXPECT_EQ(bench.engine.state.batch_mode, 3);
    bench.answer({0x80, 0x01, 0x31, 2, 0, 0, 0, 0});
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
    EXPECT_EQ(bench.form.data().Label3, "failed");
}

TEST(PosFlowJob, EachJobCountsItsOwnRefusals) {
    JobAlone bench;
    bench.read();
    for (int refusal = 0; refusal < 9; ++refusal)
        bench.answer({0x80, 0x00, 0x31, 0x01, 0, 0, 0, 0});
    bench.write();
    EXPECT_EQ(bench.form.data().refusals, 0);
}

TEST(PosFlowJob, AStartEmptiesBothLabels) {
    JobAlone bench;
    bench.write();
    bench.engine.state.batch_row = 207;
    bench.answer({0x60, 0x07, 0x31, 0x20, 0, 0, 0, 0});
    EXPECT_EQ(bench.form.data().Label4, "finished");
    bench.form.Command1_Click();
    EXPECT_EQ(bench.form.data().Label3, "");
    EXPECT_EQ(bench.form.data().Label4, "");
    EXPECT_FALSE(bench.form.job_end().has_value());
}

TEST(PosFlowJob, TheButtonPressedAgainBeginsAnew) {
    JobAlone bench;
    bench.read();
    bench.answer({0x43, 0x00, 0x31, 0x01, 1, 0, 0, 0});
    EXPECT_EQ(bench.row(), 1);
    bench.form.Command1_Click();
    EXPECT_EQ(bench.row(), 0);
    EXPECT_EQ(bench.grids().MSHFlexGrid1.at(1, 1), "0");
    bench.form.Command2_Click();
    EXPECT_EQ(bench.engine.state.batch_mode, 4);
}

TEST(PosFlowJob, TheConfigurationModesAreNotItsOwn) {
    JobAlone bench;
    for (const int mode : {0, 1, 2, 5}) {
        bench.engine.state.batch_mode = mode;
        EXPECT_FALSE(bench.form.job_running()) << mode;
    }
}

// One job at a time: the configuration's have the same selector.
TEST(PosFlowJobs, NoneBeginsInTheMiddleOfAConfiguration) {
    PosFlowForm bench;
    for (const int mode : {1, 2}) {
        bench.engine.state.batch_mode = mode;
        bench.notice.boxes.clear();
        bench.form.Command1_Click();
        bench.form.Command2_Click();
        EXPECT_EQ(bench.engine.state.batch_mode, mode);
        ASSERT_EQ(bench.notice.boxes.size(), 2U);
        EXPECT_EQ(bench.notice.boxes[0].second,
                  "A configuration is being transferred: wait for its end.");
    }
}

}  // namespace
}  // namespace servo::tools
