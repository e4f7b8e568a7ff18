#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "base/profile_file.h"
#include "base/temp_folder.h"

namespace servo::base {
namespace {

using namespace std::literals;

constexpr std::size_t kAmple = 1024;

std::string lookup(std::string_view content, std::string_view section, std::string_view key,
                   std::string_view fallback = "default", std::size_t size = kAmple) {
    return profile_lookup(content, section, key, fallback, size);
}

constexpr std::string_view kFile =
    "[section1]\r\nname1=val1\r\nname2=\"val2\"\r\nname3\r\nname4=a\r\n[section2]\r\n";

TEST(ProfileLookup, GivesTheValueOfAKeyInASection) {
    EXPECT_EQ(lookup(kFile, "section1", "name1"), "val1");
    EXPECT_EQ(lookup(kFile, "section1", "name4"), "a");
}

TEST(ProfileLookup, SectionsAndKeysAreFoundWithoutRegardToCase) {
    EXPECT_EQ(lookup(kFile, "SECTION1", "NaMe1"), "val1");
    EXPECT_EQ(lookup("[SyS]\nLANG=1\n", "sys", "lang"), "1");
}

TEST(ProfileLookup, TheCaseOfAValueIsKept) {
    EXPECT_EQ(lookup("[com]\ncomid=COM3\n", "com", "comid"), "COM3");
}

TEST(ProfileLookup, BlanksAroundSectionKeyAndValueAreDropped) {
    EXPECT_EQ(lookup("  [ sys ]  \r\n \t lang \t = \t 1 \t \r\n", "sys", "lang"), "1");
    EXPECT_EQ(lookup("[sys]\nlang=1\n", " sys ", "\tlang "), "1");
}

TEST(ProfileLookup, BlanksInsideStay) {
    EXPECT_EQ(lookup("[my product]\nlong key=two  words\n", "my product", "long key"),
              "two  words");
}

TEST(ProfileLookup, OnePairOfMatchingQuotesIsRemoved) {
    EXPECT_EQ(lookup("[s]\nk=\"v\"\n", "s", "k"), "v");
    EXPECT_EQ(lookup("[s]\nk='v'\n", "s", "k"), "v");
    EXPECT_EQ(lookup("[s]\nk=\"\"v\"\"\n", "s", "k"), "\"v\"");
    EXPECT_EQ(lookup("[s]\nk='\"v\"'\n", "s", "k"), "\"v\"");
    EXPECT_EQ(lookup("[s]\nk=\"\"\n", "s", "k"), "");
}

TEST(ProfileLookup, QuotesKeepTheBlanksThatTheyHold) {
    EXPECT_EQ(lookup("[s]\nk=  \"  v  \"  \n", "s", "k"), "  v  ");
}

TEST(ProfileLookup, QuotesThatDoNotMatchStay) {
    EXPECT_EQ(lookup("[s]\nk=\"v\n", "s", "k"), "\"v");
    EXPECT_EQ(lookup("[s]\nk=v\"\n", "s", "k"), "v\"");
    EXPECT_EQ(lookup("[s]\nk=\"v'\n", "s", "k"), "\"v'");
    EXPECT_EQ(lookup("[s]\nk=\"\n", "s", "k"), "\"");
    EXPECT_EQ(lookup("[s]\nk=a\"v\"b\n", "s", "k"), "a\"v\"b");
}

TEST(ProfileLookup, AnEmptyValueIsAValue) {
    EXPECT_EQ(lookup("[s]\nk=\n", "s", "k"), "");
    EXPECT_EQ(lookup("[s]\nk=   \n", "s", "k"), "");
}

TEST(ProfileLookup, TheValueBeginsAtTheFirstEqualsSign) {
    EXPECT_EQ(lookup("[s]\nk=a=b\n", "s", "k"), "a=b");
}

TEST(ProfileLookup, MissingSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(lookup(kFile, "section3", "name1"), "default");
    EXPECT_EQ(lookup(kFile, "section1", "name9"), "default");
    EXPECT_EQ(lookup(kFile, "section2", "name1"), "default");
    EXPECT_EQ(lookup(kFile, "", "name1"), "default");
    EXPECT_EQ(lookup(kFile, "section1", ""), "default");
    EXPECT_EQ(lookup("", "s", "k"), "default");
}

TEST(ProfileLookup, TheDefaultLosesItsTrailingBlanksOnly) {
    EXPECT_EQ(lookup("", "s", "k", "one two  "), "one two");
    EXPECT_EQ(lookup("", "s", "k", "  one"), "  one");
    EXPECT_EQ(lookup("", "s", "k", "\"quoted\""), "\"quoted\"");
    EXPECT_EQ(lookup("", "s", "k", "   "), "");
}

TEST(ProfileLookup, TheValueIsCutToTheBufferLessOne) {
    EXPECT_EQ(lookup(kFile, "section1", "name1", "", 5), "val1");
    EXPECT_EQ(lookup(kFile, "section1", "name1", "", 4), "val");
    EXPECT_EQ(lookup(kFile, "section1", "name1", "", 1), "");
    EXPECT_EQ(lookup(kFile, "section1", "name1", "", 0), "");
    EXPECT_EQ(lookup(kFile, "section1", "none", "default", 4), "def");
}

TEST(ProfileLookup, CommentLinesAreNoKeys) {
    EXPECT_EQ(lookup("[s]\n;k=1\n  ; k=2\nk=3\n", "s", "k"), "3");
    EXPECT_EQ(lookup("[s]\n;k=1\n", "s", ";k"), "default");
}

TEST(ProfileLookup, ASemicolonInsideAValueStays) {
    EXPECT_EQ(lookup("[s]\nk=1 ; one\n", "s", "k"), "1 ; one");
}

TEST(ProfileLookup, ALineWithoutEqualsSignIsNoKey) {
    EXPECT_EQ(lookup(kFile, "section1", "name3"), "default");
}

TEST(ProfileLookup, ALineBeforeTheFirstSectionBelongsToNone) {
    EXPECT_EQ(lookup("k=1\n[s]\nk=2\n", "s", "k"), "2");
    EXPECT_EQ(lookup("k=1\n[]\nk=2\n", "", "k"), "2");
}

TEST(ProfileLookup, TheFirstSectionOfANameWins) {
    EXPECT_EQ(lookup("[s]\nk=1\n[t]\n[S]\nk=2\nj=3\n", "s", "k"), "1");
    EXPECT_EQ(lookup("[s]\nk=1\n[t]\n[S]\nk=2\nj=3\n", "s", "j"), "default");
}

TEST(ProfileLookup, TheFirstKeyOfANameWins) {
    EXPECT_EQ(lookup("[s]\nk=1\nK=2\n", "s", "k"), "1");
}

TEST(ProfileLookup, AHeadingWithoutClosingBracketIsNoSection) {
    EXPECT_EQ(lookup("[s]\n[t\nk=1\n", "s", "k"), "1");
    EXPECT_EQ(lookup("[s]\n[t=1\n", "s", "[t"), "1");
}

TEST(ProfileLookup, WhatFollowsTheClosingBracketIsDropped) {
    EXPECT_EQ(lookup("[s] ; see [t]\nk=1\n", "s", "k"), "1");
}

TEST(ProfileLookup, LinesEndWithEitherLineEnd) {
    for (const std::string_view end : {"\r\n", "\n", "\r"}) {
        std::string content;
        for (const std::string_view line : {"[s]", "a=1", "", "b=2", "[t]"}) {
            content.append(line).append(end);
        }
        content += "c=3";
        EXPECT_EQ(lookup(content, "s", "a"), "1");
        EXPECT_EQ(lookup(content, "s", "b"), "2");
        EXPECT_EQ(lookup(content, "t", "c"), "3");
    }
}

TEST(ProfileLookup, TheValueEndsAtANul) {
    EXPECT_EQ(lookup("[s]\nk=ab\0cd\n"sv, "s", "k"), "ab");
}

TEST(ProfileLookup, ChineseNamesAreComparedByteForByte) {
    // Two characters whose second bytes differ only as "A" and "a" do.
    EXPECT_EQ(lookup("[\x81\x41]\nk=1\n", "\x81\x61", "k"), "default");
    EXPECT_EQ(lookup("[\x81\x41]\nk=1\n", "\x81\x41", "K"), "1");
    // A second byte that looks like the closing bracket does not end the heading.
    EXPECT_EQ(lookup("[\x95\x5D product]\nk=1\n", "\x95\x5D PRODUCT", "k"), "1");
}

TEST(ProfileLookup, WithoutASectionTheNamesOfAllSectionsAreListed) {
    EXPECT_EQ(profile_lookup(kFile, std::nullopt, "name1", "", kAmple), "section1\0section2\0"sv);
    EXPECT_EQ(profile_lookup("[ a ]\n[b]\n", std::nullopt, std::nullopt, "", kAmple), "a\0b\0"sv);
    EXPECT_EQ(profile_lookup("", std::nullopt, std::nullopt, "default", kAmple), "");
}

TEST(ProfileLookup, WithoutAKeyTheKeysOfTheSectionAreListed) {
    EXPECT_EQ(profile_lookup(kFile, "section1", std::nullopt, "", kAmple),
              "name1\0name2\0name4\0"sv);
    EXPECT_EQ(profile_lookup(kFile, "section2", std::nullopt, "default", kAmple), "");
    EXPECT_EQ(profile_lookup(kFile, "section3", std::nullopt, "default ", kAmple), "default");
}

TEST(ProfileLookup, KeysOfASecondSectionOfTheNameAreNotListed) {
    EXPECT_EQ(profile_lookup("[s]\na=1\n[t]\nb=2\n[s]\nc=3\n", "s", std::nullopt, "", kAmple),
              "a\0"sv);
    EXPECT_EQ(profile_lookup("[s]\na=1\n[s]\nc=3\n", "s", std::nullopt, "", kAmple), "a\0"sv);
}

TEST(ProfileLookup, ListsLeaveNamesOfNoLengthOut) {
    EXPECT_EQ(profile_lookup("[]\n[s]\n=1\na=2\n", std::nullopt, std::nullopt, "", kAmple),
              "s\0"sv);
    EXPECT_EQ(profile_lookup("[]\n[s]\n=1\na=2\n", "s", std::nullopt, "", kAmple), "a\0"sv);
}

TEST(ProfileLookup, ListsAreCutToTheBufferLessTwo) {
    EXPECT_EQ(profile_lookup(kFile, std::nullopt, "", "", 16), "section1\0secti"sv);
    EXPECT_EQ(profile_lookup(kFile, "section1", std::nullopt, "", 16), "name1\0name2\0na"sv);
    EXPECT_EQ(profile_lookup(kFile, "section1", std::nullopt, "", 20), "name1\0name2\0name4\0"sv);
    EXPECT_EQ(profile_lookup(kFile, "section1", std::nullopt, "", 2), "");
    EXPECT_EQ(profile_lookup(kFile, "section1", std::nullopt, "", 0), "");
}

TEST(ProfileFile, ReadsFromAFile) {
    const TempFolder folder;
    folder.put("sys.ini", "[sys]\r\nlang=1\r\n[com]\r\ncomid=COM3\r\n");
    EXPECT_EQ(get_profile_string(folder / "sys.ini", "com", "comid", "", 50), "COM3");
    EXPECT_EQ(get_profile_string(folder / "sys.ini", "sys", "lang", "0", 2), "1");
}

TEST(ProfileFile, MissingFileGivesTheDefault) {
    const TempFolder folder;
    EXPECT_EQ(get_profile_string(folder / "sys.ini", "sys", "lang", "0 ", 50), "0");
    EXPECT_EQ(get_profile_string(folder / "sys.ini", "sys", "lang", "12345", 3), "12");
    EXPECT_EQ(get_profile_string(folder / "sys.ini", "sys", std::nullopt, "none", 50), "none");
}

RC_GTEST_PROP(ProfileLookup, NeverGivesMoreThanTheBufferHolds,
              (const std::string& content, const std::string& name, std::uint8_t size)) {
    const std::size_t most = size == 0 ? 0 : size - 1U;
    RC_ASSERT(lookup(content, name, name, "some default", size).size() <= most);
    RC_ASSERT(profile_lookup(content, std::nullopt, name, "", size).size() <= most);
    RC_ASSERT(profile_lookup("[s]\n" + content, "s", std::nullopt, "", size).size() <= most);
}

}  // namespace
}  // namespace servo::base
