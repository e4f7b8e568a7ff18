#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "base/profile_file.h"
#include "base/temp_folder.h"

namespace servo::base {
namespace {

using namespace std::literals;

std::string build_up() {
    std::string content;
    content = profile_replace(content, "App1", "key1", "string1");
    content = profile_replace(content, "App1", "key2", "string2");
    content = profile_replace(content, "App1", "key3", "string3");
    return profile_replace(content, "App2", "key4", "string4");
}

TEST(ProfileReplace, BuildsAFileUp) {
    EXPECT_EQ(
        build_up(),
        "[App1]\r\nkey1=string1\r\nkey2=string2\r\nkey3=string3\r\n[App2]\r\nkey4=string4\r\n");
}

TEST(ProfileReplace, ReplacesTheValueInItsPlace) {
    EXPECT_EQ(profile_replace("[s]\r\na=1\r\nb=2\r\nc=3\r\n", "s", "b", "two"),
              "[s]\r\na=1\r\nb=two\r\nc=3\r\n");
}

TEST(ProfileReplace, KeepsTheSpellingOfTheFileAndFindsWithoutRegardToCase) {
    EXPECT_EQ(profile_replace("[Sys]\r\nLang = 0\r\n", "sYS", "lANG", "1"), "[Sys]\r\nLang =1\r\n");
}

TEST(ProfileReplace, KeepsTheLineEndOfTheReplacedLine) {
    EXPECT_EQ(profile_replace("[s]\na=1\nb=2\n", "s", "a", "9"), "[s]\na=9\nb=2\n");
    EXPECT_EQ(profile_replace("[s]\na=1", "s", "a", "9"), "[s]\na=9");
    EXPECT_EQ(profile_replace("[s]\ra=1\r", "s", "a", "9"), "[s]\ra=9\r");
}

TEST(ProfileReplace, EverythingElseStaysByteForByte) {
    const std::string content =
        "; head \xCB\xD9\xB6\xC8\r\n\r\nstray line\n [sys] ; note\r\n; lang=7\r\n\tlang\t=\t0 \r\n"
        "lang=second\n\n\n[ com ]\r\rcomid='COM1'\0tail\r\n\x01\x02"s;
    std::string expected = content;
    const std::string old_value = "\t0 ";
    const std::size_t at = content.find("\tlang\t=") + "\tlang\t="sv.size();
    expected.replace(at, old_value.size(), "1");
    EXPECT_EQ(profile_replace(content, "sys", "lang", "1"), expected);
}

TEST(ProfileReplace, NewKeyGoesToTheEndOfItsSection) {
    EXPECT_EQ(profile_replace("[s]\r\na=1\r\n[t]\r\nb=2\r\n", "s", "n", "5"),
              "[s]\r\na=1\r\nn=5\r\n[t]\r\nb=2\r\n");
}

TEST(ProfileReplace, NewKeyGoesBeforeTrailingBlankLines) {
    EXPECT_EQ(profile_replace("[s]\r\na=1\r\n\r\n \t\r\n[t]\r\n", "s", "n", "5"),
              "[s]\r\na=1\r\nn=5\r\n\r\n \t\r\n[t]\r\n");
    EXPECT_EQ(profile_replace("[s]\r\n\r\n[t]\r\n", "s", "n", "5"), "[s]\r\nn=5\r\n\r\n[t]\r\n");
}

TEST(ProfileReplace, NewKeyGoesBehindACommentAtTheEndOfItsSection) {
    EXPECT_EQ(profile_replace("[s]\r\na=1\r\n; end\r\n\r\n", "s", "n", "5"),
              "[s]\r\na=1\r\n; end\r\nn=5\r\n\r\n");
}

TEST(ProfileReplace, NewLinesEndWithCarriageReturnAndLineFeed) {
    EXPECT_EQ(profile_replace("[s]\na=1\n", "s", "n", "5"), "[s]\na=1\nn=5\r\n");
    EXPECT_EQ(profile_replace("[s]\na=1\n", "t", "n", "5"), "[s]\na=1\n[t]\r\nn=5\r\n");
}

TEST(ProfileReplace, NewKeyBehindALineWithoutEndEndsItFirst) {
    EXPECT_EQ(profile_replace("[s]\r\na=1", "s", "n", "5"), "[s]\r\na=1\r\nn=5\r\n");
}

TEST(ProfileReplace, NewSectionGoesToTheEnd) {
    EXPECT_EQ(profile_replace("", "s", "k", "v"), "[s]\r\nk=v\r\n");
    EXPECT_EQ(profile_replace("[a]\r\nx=1\r\n", "s", "k", "v"), "[a]\r\nx=1\r\n[s]\r\nk=v\r\n");
    EXPECT_EQ(profile_replace("[a]\r\nx=1\r\n\r\n", "s", "k", "v"),
              "[a]\r\nx=1\r\n\r\n[s]\r\nk=v\r\n");
    EXPECT_EQ(profile_replace("stray", "s", "k", "v"), "stray\r\n[s]\r\nk=v\r\n");
}

TEST(ProfileReplace, NulsBeforeTheFirstSectionAreKept) {
    const std::string data = "Data \0 before \0 first \0 section"s;
    EXPECT_EQ(profile_replace(data, "section1", "key1", "string1"),
              data + "\r\n[section1]\r\nkey1=string1\r\n");
}

TEST(ProfileReplace, AnEmptyValueIsWritten) {
    EXPECT_EQ(profile_replace("", "App", "key", ""), "[App]\r\nkey=\r\n");
}

TEST(ProfileReplace, OnlyTheFirstSectionAndTheFirstKeyOfANameAreTouched) {
    EXPECT_EQ(profile_replace("[s]\na=1\na=2\n[s]\na=3\n", "s", "a", "9"),
              "[s]\na=9\na=2\n[s]\na=3\n");
    EXPECT_EQ(profile_replace("[s]\r\na=1\r\n[s]\r\nb=3\r\n", "s", "b", "9"),
              "[s]\r\na=1\r\nb=9\r\n[s]\r\nb=3\r\n");
}

TEST(ProfileReplace, NoValueRemovesTheKey) {
    EXPECT_EQ(profile_replace(build_up(), "App1", "key2", std::nullopt),
              "[App1]\r\nkey1=string1\r\nkey3=string3\r\n[App2]\r\nkey4=string4\r\n");
    EXPECT_EQ(profile_replace("[s]\r\na=1\r\n", "s", "a", std::nullopt), "[s]\r\n");
    EXPECT_EQ(profile_replace("[s]\na=1\na=2\n", "s", "a", std::nullopt), "[s]\na=2\n");
}

TEST(ProfileReplace, NoKeyRemovesTheSection) {
    EXPECT_EQ(profile_replace(build_up(), "App1", std::nullopt, "string1"),
              "[App2]\r\nkey4=string4\r\n");
    EXPECT_EQ(profile_replace(build_up(), "App2", std::nullopt, std::nullopt),
              "[App1]\r\nkey1=string1\r\nkey2=string2\r\nkey3=string3\r\n");
    EXPECT_EQ(
        profile_replace("x\r\n[s]\r\na=1\r\n; c\r\n\r\n[t]\r\n", "s", std::nullopt, std::nullopt),
        "x\r\n[t]\r\n");
}

TEST(ProfileReplace, RemovingWhatIsNotThereChangesNothing) {
    EXPECT_EQ(profile_replace(build_up(), "App1", "key9", std::nullopt), build_up());
    EXPECT_EQ(profile_replace(build_up(), "App9", "key1", std::nullopt), build_up());
    EXPECT_EQ(profile_replace(build_up(), "App9", std::nullopt, std::nullopt), build_up());
    EXPECT_EQ(profile_replace("", "App9", std::nullopt, std::nullopt), "");
}

TEST(ProfileReplace, CommentIsNotReplaced) {
    EXPECT_EQ(profile_replace("[s]\r\n;k=1\r\n", "s", "k", "2"), "[s]\r\n;k=1\r\nk=2\r\n");
}

TEST(ProfileReplace, ATextThatWouldMakeASecondLineIsCutThere) {
    EXPECT_EQ(profile_replace("", "s", "k", "COM1\r\n[evil]\r\nx=1"), "[s]\r\nk=COM1\r\n");
    EXPECT_EQ(profile_replace("", "s\n[t]", "k\rj", "v\nw"), "[s]\r\nk=v\r\n");
    EXPECT_EQ(profile_replace("", "s", "k", "v\0w"sv), "[s]\r\nk=v\r\n");
}

TEST(ProfileReplace, BlanksAroundNamesAreDropped) {
    EXPECT_EQ(profile_replace("", " s ", " k ", " v "), "[s]\r\nk= v \r\n");
}

TEST(ProfileFile, WritesAFile) {
    const TempFolder folder;
    EXPECT_TRUE(write_profile_string(folder / "sys.ini", "sys", "lang", "0"));
    EXPECT_TRUE(write_profile_string(folder / "sys.ini", "com", "comid", "COM3"));
    EXPECT_TRUE(write_profile_string(folder / "sys.ini", "sys", "lang", "1"));
    EXPECT_EQ(folder.get("sys.ini"), "[sys]\r\nlang=1\r\n[com]\r\ncomid=COM3\r\n");
    EXPECT_TRUE(write_profile_string(folder / "sys.ini", "com", std::nullopt, std::nullopt));
    EXPECT_EQ(folder.get("sys.ini"), "[sys]\r\nlang=1\r\n");
}

TEST(ProfileFile, WriteThatChangesNothingLeavesTheFileAlone) {
    const TempFolder folder;
    folder.put("sys.ini", "[sys]\nlang=1\n");
    const auto before = std::filesystem::last_write_time(folder / "sys.ini");
    EXPECT_TRUE(write_profile_string(folder / "sys.ini", "sys", "lang", "1"));
    EXPECT_TRUE(write_profile_string(folder / "sys.ini", "com", "comid", std::nullopt));
    EXPECT_EQ(folder.get("sys.ini"), "[sys]\nlang=1\n");
    EXPECT_EQ(std::filesystem::last_write_time(folder / "sys.ini"), before);
    EXPECT_TRUE(write_profile_string(folder / "none.ini", "com", "comid", std::nullopt));
    EXPECT_FALSE(std::filesystem::exists(folder / "none.ini"));
}

TEST(ProfileFile, WriteFailsWhereNoFileCanBe) {
    const TempFolder folder;
    EXPECT_FALSE(write_profile_string(folder / "no/sys.ini", "sys", "lang", "1"));
    EXPECT_FALSE(write_profile_string(folder.path(), "sys", "lang", "1"));
}

// Names and values as the program uses them.
std::string word() {
    const std::vector<std::string> letters = *rc::gen::nonEmpty(
        rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(std::vector<std::string>{
            "a", "B", "z", "0", "9", "_", "-", ".", "\xCB\xD9", "\x81\x41", "\x95\x5D"})));
    std::string text;
    for (const std::string& letter : letters)
        text += letter;
    return text;
}

RC_GTEST_PROP(ProfileReplace, WhatWasWrittenIsRead, ()) {
    std::string content;
    const std::string section = word();
    const std::string key = word();
    for (int i = *rc::gen::inRange(0, 8); i > 0; --i) {
        content = profile_replace(content, word(), word(), word());
    }
    const std::string value = word();
    content = profile_replace(content, section, key, value);
    RC_ASSERT(profile_lookup(content, section, key, "", 1000) == value);
    // Written again it is the same file; removed, it is gone.
    RC_ASSERT(profile_replace(content, section, key, value) == content);
    const std::string without = profile_replace(content, section, key, std::nullopt);
    RC_ASSERT(profile_lookup(without, section, key, "none", 1000) == "none");
}

RC_GTEST_PROP(ProfileReplace, OtherContentIsKept, (const std::string& noise)) {
    const std::string content = noise + "\r\n[zz_section]\r\nkey=old\r\n" + noise;
    const std::string changed = profile_replace(content, "zz_section", "key", "new");
    RC_ASSERT(changed == noise + "\r\n[zz_section]\r\nkey=new\r\n" + noise);
}

}  // namespace
}  // namespace servo::base
