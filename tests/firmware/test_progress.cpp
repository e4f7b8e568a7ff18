// Speed, remaining time, and the log of the dialogue.
#include <gtest/gtest.h>

#include "base/temp_folder.h"
#include "firmware/dialogue_log.h"
#include "firmware/progress.h"

using namespace servo::firmware;
using namespace std::chrono_literals;

TEST(Progress, KnowsNothingBeforeTheFirstBlock) {
    Progress progress;
    EXPECT_FALSE(progress.begun());
    progress.begin(10'000, 10, 5s);
    EXPECT_TRUE(progress.begun());
    EXPECT_FALSE(progress.speed());
    EXPECT_FALSE(progress.remaining(6s));
}

TEST(Progress, SpeedAndRemainingTimeFollowTheBlocks) {
    Progress progress;
    progress.begin(10'000, 10, 5s);
    progress.block_done(1000, 6s);
    EXPECT_DOUBLE_EQ(*progress.speed(), 1000);
    EXPECT_EQ(*progress.remaining(6s), 9s);
    EXPECT_EQ(*progress.remaining(6500ms), 9s) << "rounded up";
    EXPECT_EQ(*progress.remaining(7s), 8s) << "time runs while a block does";
    EXPECT_EQ(*progress.remaining(60s), 0s);
    EXPECT_EQ(progress.blocks(), 1U);
    EXPECT_EQ(progress.bytes(), 1000U);
}

TEST(Progress, LooksAtTheLastEightBlocksOnly) {
    Progress progress;
    progress.begin(100'000, 100, 0s);
    progress.block_done(1000, 100s);
    for (int i = 1; i <= 8; ++i)
        progress.block_done(1000, 100s + i * 1s);
    EXPECT_DOUBLE_EQ(*progress.speed(), 1000);
}

TEST(Progress, BlocksInNoTimeHaveNoSpeed) {
    Progress progress;
    progress.begin(1000, 1, 5s);
    progress.block_done(1000, 5s);
    EXPECT_FALSE(progress.speed());
}

TEST(Progress, DurationsReadAsClocks) {
    EXPECT_EQ(duration_text(0s), "0:00");
    EXPECT_EQ(duration_text(65s), "1:05");
    EXPECT_EQ(duration_text(3725s), "1:02:05");
}

TEST(DialogueLog, PiecesOfOneReplyAreOneEntry) {
    DialogueLog log;
    log.begin(10s);
    log.add(DialogueEntry::Kind::kCommand, 3, "hi\r", 11s);
    log.add(DialogueEntry::Kind::kReply, 3, " boot", 11s + 6ms);
    log.add(DialogueEntry::Kind::kReply, 3, "loader\r\n", 11s + 12ms);
    log.add(DialogueEntry::Kind::kReply, 3, "more", 11s + 18ms);
    ASSERT_EQ(log.entries().size(), 3U);
    EXPECT_EQ(log.entries()[1].bytes, " bootloader\r\n");
    EXPECT_EQ(log.entries()[1].at, 1006ms);
}

TEST(DialogueLog, EntriesReadAsLines) {
    using Kind = DialogueEntry::Kind;
    EXPECT_EQ(shown_entry({1234567us, Kind::kCommand, 3, "hi\r"}),
              "     1.235 s  step 3   > hi<CR>");
    EXPECT_EQ(shown_entry({0us, Kind::kReply, 10, std::string("\x01\xFF\n\0", 4)}),
              "     0.000 s  step 10  < <01><FF><LF><00>");
    EXPECT_EQ(shown_entry({0us, Kind::kFrame, 4, "\x7F\x2B"}), "     0.000 s  step 4   > 7F 2B");
    EXPECT_EQ(shown_entry({0us, Kind::kEvent, 0, "done"}), "     0.000 s  step 0   done");
    const std::string block = std::string(4120, 'a') + "\r";
    EXPECT_EQ(shown_entry({0us, Kind::kCommand, 8, block}),
              "     0.000 s  step 8   > " + std::string(60, 'a') + "... (4121 bytes)");
    EXPECT_EQ(shown_entry({0us, Kind::kCommand, 8, block}, false),
              "     0.000 s  step 8   > " + std::string(4120, 'a') + "<CR>");
}

TEST(DialogueLog, SavedFileHasEveryLineInFull) {
    TempFolder folder;
    DialogueLog log;
    log.begin(0s);
    log.add(DialogueEntry::Kind::kCommand, 8, std::string(100, 'a'), 1s);
    log.add(DialogueEntry::Kind::kReply, 8, "ok", 2s);
    ASSERT_TRUE(log.save(folder / "log.txt"));
    EXPECT_EQ(folder.get("log.txt"), "     1.000 s  step 8   > " + std::string(100, 'a') +
                                         "\r\n     2.000 s  step 8   < ok\r\n");
    EXPECT_FALSE(log.save(folder.path() / "no" / "log.txt"));
}

TEST(DialogueLog, OldEntriesMakeRoom) {
    DialogueLog log;
    log.begin(0s);
    const std::string piece(1024 * 1024, 'a');
    for (int i = 0; i < 6; ++i)
        log.add(DialogueEntry::Kind::kCommand, 8, piece, 1s * i);
    EXPECT_EQ(log.entries().size(), 4U);
    EXPECT_EQ(log.dropped(), 2U);
    EXPECT_EQ(log.text().substr(0, 29), "(2 earlier entries left out)\r");
    log.begin(0s);
    EXPECT_TRUE(log.entries().empty());
    EXPECT_EQ(log.dropped(), 0U);
}
