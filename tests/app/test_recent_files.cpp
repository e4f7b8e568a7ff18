#include <gtest/gtest.h>

#include "app/recent_files.h"
#include "base/gbk.h"

namespace servo::app {
namespace {

using Paths = std::vector<std::string>;

TEST(RecentFiles, MostRecentFirst) {
    RecentFiles files;
    files.add("/a/one.tpjt");
    files.add("/a/two.tpjt");
    EXPECT_EQ(files.paths(), (Paths{"/a/two.tpjt", "/a/one.tpjt"}));
}

TEST(RecentFiles, AFileStandsOnce) {
    RecentFiles files({"/a/one.tpjt", "/a/two.tpjt"});
    files.add("/a/b/../two.tpjt");
    EXPECT_EQ(files.paths(), (Paths{"/a/two.tpjt", "/a/one.tpjt"}));
    files.add("/a//./one.tpjt");
    EXPECT_EQ(files.paths(), (Paths{"/a/one.tpjt", "/a/two.tpjt"}));
}

TEST(RecentFiles, NamesThatDifferInCaseAreTwoFiles) {
    RecentFiles files({"/a/one.tpjt"});
    files.add("/a/One.tpjt");
    EXPECT_EQ(files.paths().size(), 2U);
}

TEST(RecentFiles, KeepsAtMostEight) {
    RecentFiles files;
    for (int i = 0; i < 12; ++i)
        files.add("/a/" + std::to_string(i) + ".tpjt");
    ASSERT_EQ(files.paths().size(), kMaxRecentFiles);
    EXPECT_EQ(files.paths().front(), "/a/11.tpjt");
    EXPECT_EQ(files.paths().back(), "/a/4.tpjt");
}

TEST(RecentFiles, AStoredListKeepsItsOrderAndLosesWhatIsNoPath) {
    EXPECT_EQ(RecentFiles({"/a", "", "relative", "/b", "/a", "/c"}).paths(),
              (Paths{"/a", "/b", "/c"}));
    Paths many;
    for (int i = 0; i < 12; ++i)
        many.push_back("/a/" + std::to_string(i));
    EXPECT_EQ(RecentFiles(many).paths(), Paths(many.begin(), many.begin() + 8));
}

TEST(RecentFiles, RemoveAndClear) {
    RecentFiles files({"/a", "/b"});
    files.remove("/x/../a");
    files.remove("/none");
    EXPECT_EQ(files.paths(), Paths{"/b"});
    files.clear();
    EXPECT_TRUE(files.empty());
}

TEST(RecentText, HasDigitNameAndFolder) {
    EXPECT_EQ(recent_text(1, "/home/li/work.tpjt"), "&1  work.tpjt — /home/li");
}

TEST(RecentText, AmpersandsAreNoMnemonics) {
    EXPECT_EQ(recent_text(2, "/r&d/a&b.tpjt"), "&2  a&&b.tpjt — /r&&d");
}

TEST(RecentText, WhatWouldBreakAMenuLineIsABlank) {
    EXPECT_EQ(recent_text(3, "/a\tb/c\nd.tpjt"), "&3  c d.tpjt — /a b");
}

TEST(RecentText, LongPathsLoseTheirMiddle) {
    const std::string folder = "/home/somebody/projects/" + std::string(80, 'x') + "/line 4";
    const std::string text = recent_text(1, folder + "/work.tpjt");
    EXPECT_TRUE(text.starts_with("&1  work.tpjt — /home/somebody/pro")) << text;
    EXPECT_TRUE(text.ends_with("xxx/line 4")) << text;
    EXPECT_NE(text.find("…"), std::string::npos);
    EXPECT_LE(base::utf8_length(text), 60U);
}

TEST(RecentText, AnAmpersandAtTheCutStaysWhole) {
    const std::string text = recent_text(1, "/" + std::string(200, '&') + "/a");
    const std::size_t shown = text.find("…");
    const std::size_t begin = text.find("/") + 1;
    EXPECT_EQ((shown - begin) % 2, 0U) << text;
    EXPECT_EQ((text.size() - shown - std::string("…").size()) % 2, 0U) << text;
}

TEST(ShortenMiddle, CountsCharacters) {
    EXPECT_EQ(shorten_middle("abcdef", 6), "abcdef");
    EXPECT_EQ(shorten_middle("abcdefg", 6), "ab…efg");
    EXPECT_EQ(shorten_middle("一二三四五六七", 5), "一二…六七");
    EXPECT_EQ(shorten_middle("", 5), "");
}

TEST(RecentEntries, AFileThatIsNotThereIsGreyedAndKept) {
    const RecentFiles files({"/a/one.tpjt", "/gone/two.tpjt"});
    const auto entries =
        recent_entries(files, [](const std::string& path) { return path.starts_with("/a/"); });
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_TRUE(entries[0].enabled);
    EXPECT_FALSE(entries[1].enabled);
    EXPECT_EQ(entries[1].path, "/gone/two.tpjt");
    EXPECT_EQ(entries[1].text, "&2  two.tpjt — /gone");
    EXPECT_EQ(files.paths().size(), 2U);
}

}  // namespace
}  // namespace servo::app
