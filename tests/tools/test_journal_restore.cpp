// Values before a write, written back.
#include "tools/journal_restore.h"

#include <gtest/gtest.h>

#include "journal_bench.h"
#include "tools/drive_commands.h"

namespace servo::tools::test {
namespace {

struct Restore : ::testing::Test, JournalBench {
    // A drive that holds `before` and takes `value`.
    void change(link::WireKey key, std::uint32_t before, std::uint32_t value) {
        say((key & 0xFF) == 1   ? link::kAnswer1
            : (key & 0xFF) == 2 ? link::kAnswer2
                                : link::kAnswer4,
            key, before);
        write(key, static_cast<std::int32_t>(value));
        taken(key, value);
        port.take_sent();
    }
    std::vector<std::size_t> all() const { return journal.find(""); }
    // What has left since the last call.
    std::vector<link::Payload> sent() {
        std::vector<link::Payload> payloads;
        const auto bytes = port.take_sent();
        for (std::size_t at = 0; at + 10 <= bytes.size(); at += 10)
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1, 8,
                        payloads.emplace_back().begin());
        return payloads;
    }
    static link::Payload write_of(link::WireKey key, std::int32_t value) {
        return link::make_payload(key, value, false, 0);
    }
    JournalRestore restore{journal, engine};
};

using Payloads = std::vector<link::Payload>;

TEST_F(Restore, OneLineGetsItsOldValueBack) {
    change(kGain, 80, 120);
    change(kMode, 1, 3);
    ASSERT_TRUE(restore.start({0}));
    EXPECT_EQ(sent(), Payloads{write_of(kGain, 80)});
    EXPECT_TRUE(restore.running());
    taken(kGain, 80);
    restore.step();
    EXPECT_FALSE(restore.running());
    EXPECT_EQ(restore.taken(), 1U);
    EXPECT_EQ(restore.note(), "Values written back: 1");
    ASSERT_EQ(journal.entries().size(), 3U) << "a write like any other";
    EXPECT_EQ(entry(2).before, 120U);
}

TEST_F(Restore, AllGoBackOneAfterTheOtherTheNewestFirst) {
    change(kGain, 80, 120);
    change(kMode, 1, 3);
    change(kGain, 120, 140);
    ASSERT_TRUE(restore.start(all()));
    EXPECT_EQ(sent(), Payloads{write_of(kMode, 1)}) << "its first write came last";
    restore.step();
    EXPECT_TRUE(sent().empty()) << "waits for the answer";
    taken(kMode, 1);
    restore.step();
    EXPECT_EQ(sent(), Payloads{write_of(kGain, 80)}) << "the oldest value, not the one between";
    taken(kGain, 80);
    restore.step();
    EXPECT_FALSE(restore.running());
    EXPECT_EQ(restore.taken(), 2U);
}

TEST_F(Restore, WhatIsBackAlreadyIsNotWrittenAgain) {
    change(kGain, 80, 120);
    change(kGain, 120, 80);
    EXPECT_TRUE(restore.plan(all()).empty());
    EXPECT_FALSE(restore.start(all()));
    EXPECT_TRUE(sent().empty());
    EXPECT_EQ(restore.note(), "");
}

TEST_F(Restore, BackIsWhatTheDriveSaysItHas) {
    change(kGain, 80, 120);
    write(kControlParametersKey, kStoreParameters);
    taken(kControlParametersKey, kStoreParameters);
    change(kGain, 120, 80);
    send_restart(engine);  // to the stored 120
    EXPECT_EQ(restore.plan(all()).size(), 1U) << "nobody knows";
    say(link::kAnswer2, kGain, 120);
    EXPECT_EQ(restore.plan(all()).size(), 1U);
    say(link::kAnswer2, kGain, 80);
    EXPECT_TRUE(restore.plan(all()).empty());
    write(kGain, 140);
    EXPECT_EQ(restore.plan(all()).size(), 1U) << "the drive's word on 140 is to come";
}

TEST_F(Restore, WithoutAKnownValueAnObjectStaysAsItIs) {
    write(kGain, 120);
    taken(kGain, 120);
    write(kGain, 140);
    taken(kGain, 140);
    EXPECT_TRUE(restore.plan(all()).empty()) << "120 is not what stood there before this run";
    EXPECT_EQ(restore.plan({1}).size(), 1U) << "the line by itself: back by one step";
}

TEST_F(Restore, RefusedWritesAndCommandsAreLeftOut) {
    say(link::kAnswer2, kGain, 80);
    write(kGain, 60000);
    refused(kGain, 0x06090031);
    say(link::kAnswer2, kControlword, 6);
    write(kControlword, 15);
    taken(kControlword, 15);
    write(kStoreAllKey, kStoreAllValue);
    EXPECT_TRUE(restore.plan(all()).empty()) << "above all not the control word: it moves a motor";
}

TEST_F(Restore, AnUnansweredWriteGoesOutAgainAndIsGivenUpInTheEnd) {
    change(kGain, 80, 120);
    change(kMode, 1, 3);
    ASSERT_TRUE(restore.start(all()));
    int writes = 0;
    const auto steps_until = [&](auto done) {
        for (int step = 0; step < 1000 && !done(); ++step) {
            for (const link::Payload& payload : sent())
                writes += payload == write_of(kMode, 1) ? 1 : 0;
            restore.step();
        }
    };
    steps_until([&] { return restore.silent() == 1; });
    EXPECT_EQ(writes, JournalRestore::kAttempts);
    EXPECT_EQ(entry(2).times, JournalRestore::kAttempts);
    EXPECT_EQ(sent(), Payloads{write_of(kGain, 80)}) << "the next one has its turn";
    refused(kGain, 0x08000022);
    restore.step();
    EXPECT_EQ(restore.note(), "Values written back: 0, refused: 1, without an answer: 1");
    language = base::Language::kChinese;
    EXPECT_EQ(restore.note(), "已写回 0 个数值，被拒绝 1 个，无应答 1 个");
}

TEST_F(Restore, NothingIsSentOnAClosedLineNorIntoAJob) {
    change(kGain, 80, 120);
    port.opened = false;
    EXPECT_FALSE(restore.start(all()));
    port.opened = true;
    engine.state.batch_mode = 1;
    EXPECT_FALSE(restore.start(all()));
    engine.state.batch_mode = 0;
    engine.state.download_active = 1;
    EXPECT_FALSE(restore.start(all()));
    engine.state.download_active = 0;
    engine.state.scanRequested = -1;
    EXPECT_FALSE(restore.start(all())) << "a gain must not change while the motor is measured";
    EXPECT_TRUE(sent().empty());
    engine.state.scanRequested = 0;
    EXPECT_TRUE(restore.start(all()));
}

TEST_F(Restore, AClosedLineEndsIt) {
    change(kGain, 80, 120);
    change(kMode, 1, 3);
    ASSERT_TRUE(restore.start(all()));
    port.opened = false;
    restore.step();
    EXPECT_FALSE(restore.running());
    EXPECT_EQ(restore.silent(), 2U);
}

TEST_F(Restore, AJournalThatIsClearedMeanwhileLosesNoTurn) {
    change(kGain, 80, 120);
    change(kMode, 1, 3);
    ASSERT_TRUE(restore.start(all()));
    journal.clear();
    sent();
    restore.step();
    EXPECT_EQ(restore.silent(), 1U) << "whether it was taken is not known any more";
    EXPECT_EQ(sent(), Payloads{write_of(kGain, 80)});
    taken(kGain, 80);
    restore.step();
    EXPECT_EQ(restore.taken(), 1U);
}

TEST_F(Restore, ProgressIsTold) {
    change(kGain, 80, 120);
    change(kMode, 1, 3);
    ASSERT_TRUE(restore.start(all()));
    EXPECT_EQ(restore.note(), "Writing back: 0 of 2");
    EXPECT_FALSE(restore.start(all())) << "one at a time";
}

}  // namespace
}  // namespace servo::tools::test
