#include "base/file.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>

#include <vector>

#include "base/temp_folder.h"

namespace servo::base {
namespace {

using namespace std::literals;
namespace fs = std::filesystem;

mode_t mode_of(const fs::path& file) {
    struct stat about {};
    return ::stat(file.c_str(), &about) == 0 ? about.st_mode & 07777 : 0;
}

using Lines = std::vector<std::string>;

Lines lines_of(std::string_view text) {
    Lines lines;
    LineReader reader(text);
    while (const auto line = reader.next())
        lines.emplace_back(*line);
    return lines;
}

TEST(ReadFile, GivesBytesAsTheyStand) {
    const TempFolder folder;
    const std::string bytes = "a\r\nb\0c\xFF\n"s;
    folder.put("f", bytes);
    EXPECT_EQ(read_file(folder / "f"), bytes);
}

TEST(ReadFile, EmptyFileIsEmptyText) {
    const TempFolder folder;
    folder.put("f", "");
    EXPECT_EQ(read_file(folder / "f"), "");
}

TEST(ReadFile, FileWithoutAKnownSizeIsReadToItsEnd) {
    // Files of the kernel tell a size of 0.
    const auto text = read_file("/proc/self/maps");
    ASSERT_TRUE(text);
    EXPECT_FALSE(text->empty());
    EXPECT_EQ(text->back(), '\n');
}

TEST(ReadFile, NothingWhenMissingOrAFolder) {
    const TempFolder folder;
    EXPECT_FALSE(read_file(folder / "none"));
    EXPECT_FALSE(read_file(folder.path()));
}

TEST(ReadPieces, GivesFullPiecesAndAShorterLastOne) {
    const TempFolder folder;
    folder.put("f", "abcdefgh");
    Lines pieces;
    const auto take = [&](std::string_view piece) { pieces.emplace_back(piece); };
    EXPECT_TRUE(read_pieces(folder / "f", 3, take));
    EXPECT_EQ(pieces, (Lines{"abc", "def", "gh"}));
    pieces.clear();
    EXPECT_TRUE(read_pieces(folder / "f", 4, take));
    EXPECT_EQ(pieces, (Lines{"abcd", "efgh"}));
    pieces.clear();
    EXPECT_TRUE(read_pieces(folder / "f", 100, take));
    EXPECT_EQ(pieces, (Lines{"abcdefgh"}));
}

TEST(ReadPieces, GivesNoneOfAnEmptyOrMissingFile) {
    const TempFolder folder;
    folder.put("f", "");
    const auto take = [](std::string_view) { FAIL(); };
    EXPECT_TRUE(read_pieces(folder / "f", 3, take));
    EXPECT_FALSE(read_pieces(folder / "none", 3, take));
    EXPECT_FALSE(read_pieces(folder.path(), 3, take));
}

TEST(WriteFile, MakesANewFile) {
    const TempFolder folder;
    EXPECT_TRUE(write_file(folder / "f", "text"));
    EXPECT_EQ(folder.get("f"), "text");
    EXPECT_EQ(folder.entries(), 1U);
}

TEST(WriteFile, NewFileHasTheUsualPermissions) {
    const TempFolder folder;
    const mode_t old = ::umask(027);
    EXPECT_TRUE(write_file(folder / "f", ""));
    ::umask(old);
    EXPECT_EQ(mode_of(folder / "f"), 0640U);
}

TEST(WriteFile, ReplacesAnOldFileAndKeepsItsPermissions) {
    const TempFolder folder;
    folder.put("f", "a much longer old text");
    fs::permissions(folder / "f", fs::perms(0604));
    EXPECT_TRUE(write_file(folder / "f", "new"));
    EXPECT_EQ(folder.get("f"), "new");
    EXPECT_EQ(mode_of(folder / "f"), 0604U);
}

TEST(WriteFile, SymbolicLinkKeepsPointingAtItsFile) {
    const TempFolder folder;
    folder.put("real", "old");
    fs::create_symlink("real", folder / "link");
    EXPECT_TRUE(write_file(folder / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(folder.get("real"), "new");
}

TEST(WriteFile, DeviceIsWrittenStraightAndStays) {
    EXPECT_TRUE(write_file("/dev/null", "gone"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_FALSE(write_file("/dev/full", "no room"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(WriteFile, FailsForAFolderAndInAMissingFolder) {
    const TempFolder folder;
    EXPECT_FALSE(write_file(folder.path(), "x"));
    EXPECT_FALSE(write_file(folder / "none/f", "x"));
    EXPECT_EQ(folder.entries(), 0U);
}

TEST(WriteFile, TemporaryFileLeftByACrashIsNoHindrance) {
    const TempFolder folder;
    folder.put(".f.0.tmp", "half");
    EXPECT_TRUE(write_file(folder / "f", "whole"));
    EXPECT_EQ(folder.get("f"), "whole");
    EXPECT_EQ(folder.get(".f.0.tmp"), "half");
}

TEST(WriteFile, RelativeNameStandsForTheWorkingFolder) {
    const TempFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const bool written = write_file("f", "text");
    fs::current_path(before);
    EXPECT_TRUE(written);
    EXPECT_EQ(folder.get("f"), "text");
}

// Enough for several write calls.
std::string long_text(char c) {
    return std::string(100'000, c);
}

TEST(WriteFile, ALongTextTakesSeveralWriteCalls) {
    const TempFolder folder;
    std::size_t calls = 0;
    EXPECT_TRUE(write_file(folder / "f", long_text('n'), [&](std::size_t call) {
        EXPECT_EQ(call, calls);
        ++calls;
        return true;
    }));
    EXPECT_GE(calls, 4U + 3U);  // open, fsync, close, rename, and the writes
    EXPECT_EQ(folder.get("f"), long_text('n'));
}

TEST(WriteFile, FailingEachCallInTurnLeavesTheOldFileOrTheNewOneWhole) {
    const TempFolder folder;
    const std::string old_text = long_text('o');
    const std::string new_text = long_text('n');
    std::size_t failed = 0;
    bool saved = false;
    for (; !saved; ++failed) {
        ASSERT_LT(failed, 100U);
        folder.put("f", old_text);
        fs::permissions(folder / "f", fs::perms(0640));
        saved =
            write_file(folder / "f", new_text, [&](std::size_t call) { return call != failed; });
        EXPECT_EQ(folder.get("f"), saved ? new_text : old_text) << failed;
        EXPECT_EQ(mode_of(folder / "f"), 0640U) << failed;
        EXPECT_EQ(folder.entries(), 1U) << failed;  // nothing is left beside it
    }
    EXPECT_GE(failed, 8U);
}

TEST(WriteFile, FailingEachCallInTurnOfANewFileLeavesNothing) {
    const TempFolder folder;
    bool saved = false;
    for (std::size_t failed = 0; !saved; ++failed) {
        ASSERT_LT(failed, 100U);
        saved = write_file(folder / "f", "x", [&](std::size_t call) { return call != failed; });
        EXPECT_EQ(folder.entries(), saved ? 1U : 0U) << failed;
    }
}

TEST(WriteFile, FailingEachCallInTurnOnADeviceTellsSo) {
    std::size_t failed = 0;
    while (!write_file("/dev/null", "x", [&](std::size_t call) { return call != failed; }))
        ++failed;
    EXPECT_EQ(failed, 3U);  // open, write, close
}

TEST(LineReader, SplitsAtLineFeeds) {
    EXPECT_EQ(lines_of("a\nb\nc"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(lines_of("a\r\nb\r\n"), (Lines{"a", "b"}));
    EXPECT_EQ(lines_of("a\n\n\nb"), (Lines{"a", "", "", "b"}));
    EXPECT_EQ(lines_of("\n"), (Lines{""}));
    EXPECT_EQ(lines_of(""), Lines{});
}

TEST(LineReader, DropsOneCarriageReturnBeforeTheEndOfALine) {
    EXPECT_EQ(lines_of("a\r\r\nb"), (Lines{"a\r", "b"}));
    EXPECT_EQ(lines_of("a\rb\n"), (Lines{"a\rb"}));
    EXPECT_EQ(lines_of("a\r"), (Lines{"a"}));
}

RC_GTEST_PROP(LineReader, LinesJoinedAreTheText, (const std::vector<std::string>& words)) {
    Lines lines;
    std::string text;
    for (std::string word : words) {
        std::erase_if(word, [](char c) { return c == '\r' || c == '\n'; });
        text += word + "\r\n";
        lines.push_back(word);
    }
    RC_ASSERT(lines_of(text) == lines);
}

TEST(FindIn, ExactNameComesFirst) {
    const TempFolder folder;
    folder.put("ERRORS.INI", "");
    folder.put("Errors.ini", "");
    EXPECT_EQ(find_in(folder.path(), "Errors.ini"), folder / "Errors.ini");
}

TEST(FindIn, OtherwiseTheLowestNameThatDiffersInCaseOnly) {
    const TempFolder folder;
    folder.put("f000.ini", "");
    folder.put("F000.Ini", "");
    EXPECT_EQ(find_in(folder.path(), "F000.ini"), folder / "F000.Ini");
}

TEST(FindIn, OtherwiseTheExactNameAgain) {
    const TempFolder folder;
    EXPECT_EQ(find_in(folder.path(), "none.ini"), folder / "none.ini");
    EXPECT_EQ(find_in(folder / "no/folder", "a.ini"), folder / "no/folder/a.ini");
}

TEST(FindIn, LeadsThroughFoldersWithEitherSlash) {
    const TempFolder folder;
    fs::create_directory(folder / "Sys");
    folder.put("Sys/SYS.INI", "");
    EXPECT_EQ(find_in(folder.path(), "\\sys\\sys.ini"), folder / "Sys/SYS.INI");
    EXPECT_EQ(find_in(folder.path(), "sys/sys.ini"), folder / "Sys/SYS.INI");
    EXPECT_EQ(find_in(folder.path(), "\\sys\\new.ini"), folder / "Sys/new.ini");
}

TEST(FindIn, BytesBeyondAsciiAreComparedAsTheyStand) {
    const TempFolder folder;
    folder.put("中文.ini", "");
    EXPECT_EQ(find_in(folder.path(), "中文.INI"), folder / "中文.ini");
}

}  // namespace
}  // namespace servo::base
