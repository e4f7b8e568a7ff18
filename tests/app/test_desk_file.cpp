#include "app/desk_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/file.h"
#include "shell_bench.h"

namespace servo::app {
namespace {

Desk sample_desk() {
    Desk desk;
    desk.main = WindowPlace{{40, -30}, {1280, 800}, PlaceState::kMaximized};
    desk.windows["Basic"] = {{0, 28}, {884, 640}, PlaceState::kNormal};
    desk.windows["VLoop"] = {{56, 56}, {700, 500}, PlaceState::kMinimized};
    desk.recent = {"/home/me/axis 1.prj", "/home/me/轴.prj"};
    return desk;
}

struct DeskFile : testing::Test {
    test::TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "sys" / "desk.json";

    DeskFile() { std::filesystem::create_directory(folder.path() / "sys"); }
};

TEST_F(DeskFile, KeepsPlacesAndRecentFiles) {
    ASSERT_TRUE(save_desk(folder.path(), sample_desk()));
    EXPECT_EQ(load_desk(folder.path()), sample_desk());
}

TEST_F(DeskFile, IsAFileOfItsOwnAndLeavesSysIniAlone) {
    base::write_file(folder.path() / "sys" / "sys.ini", "[sys]\r\nlang=0\r\n");
    ASSERT_TRUE(save_desk(folder.path(), sample_desk()));
    EXPECT_EQ(base::read_file(folder.path() / "sys" / "sys.ini"), "[sys]\r\nlang=0\r\n");
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(DeskFile, AMissingOneIsAnEmptyDesk) {
    EXPECT_EQ(load_desk(folder.path()), Desk{});
    EXPECT_EQ(load_desk(folder.path() / "nowhere"), Desk{});
}

TEST_F(DeskFile, WhatIsNoFileIsAnEmptyDesk) {
    std::filesystem::create_directory(file);
    EXPECT_EQ(load_desk(folder.path()), Desk{});
    EXPECT_FALSE(save_desk(folder.path(), sample_desk()));
}

TEST_F(DeskFile, AFarTooLargeOneIsAnEmptyDesk) {
    std::string text = desk_text(sample_desk());
    text.append(300'000, ' ');
    base::write_file(file, text);
    EXPECT_EQ(load_desk(folder.path()), Desk{});
}

TEST_F(DeskFile, AFolderThatCannotBeWrittenToCostsOnlyTheMemory) {
    EXPECT_FALSE(save_desk(folder.path() / "nowhere", sample_desk()));
}

TEST_F(DeskFile, ASaveThatChangesNothingWritesNothing) {
    ASSERT_TRUE(save_desk(folder.path(), sample_desk()));
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(file, old);
    ASSERT_TRUE(save_desk(folder.path(), sample_desk()));
    EXPECT_EQ(std::filesystem::last_write_time(file), old);
}

TEST(DeskText, AnyTruncationReadsWithoutHarm) {
    const std::string text = desk_text(sample_desk());
    for (std::size_t length = 0; length + 2 < text.size(); ++length)
        EXPECT_EQ(parse_desk(text.substr(0, length)), Desk{}) << length;
}

TEST(DeskText, NoJsonAndOtherKindsAreNothing) {
    for (const char* text : {"", "\xff\xfe", "[]", "7", "null", "\"main\"", "{\"main\":7}",
                             "{\"windows\":[1,2]}", "{\"recent\":{\"a\":\"b\"}}", "{} {}"})
        EXPECT_EQ(parse_desk(text), Desk{}) << text;
}

TEST(DeskText, NumbersOutOfRangeAreLeftOut) {
    const auto place = [](const std::string& x, const std::string& width) {
        return parse_desk("{\"windows\":{\"Basic\":{\"x\":" + x + ",\"y\":0,\"width\":" + width +
                          ",\"height\":10}}}")
            .windows;
    };
    EXPECT_EQ(place("5", "10").size(), 1U);
    EXPECT_EQ(place("-100000", "100000").size(), 1U);
    for (const char* x : {"-100001", "100001", "1.5", "\"5\"", "null", "9223372036854775808",
                          "18446744073709551615", "-9223372036854775808", "1e999"})
        EXPECT_TRUE(place(x, "10").empty()) << x;
    for (const char* width : {"0", "-1", "100001"})
        EXPECT_TRUE(place("5", width).empty()) << width;
}

TEST(DeskText, AnUnknownStateIsTheNormalOne) {
    const Desk desk = parse_desk(
        R"({"windows":{"A":{"x":1,"y":2,"width":3,"height":4,"state":"hovering"},
                       "B":{"x":1,"y":2,"width":3,"height":4,"state":7}}})");
    EXPECT_EQ(desk.windows.at("A").state, PlaceState::kNormal);
    EXPECT_EQ(desk.windows.at("B").state, PlaceState::kNormal);
}

TEST(DeskText, WindowsAndRecentFilesAreLimited) {
    std::string text = "{\"windows\":{";
    for (int i = 0; i < 1000; ++i)
        text += (i == 0 ? "\"W" : ",\"W") + std::to_string(i) +
                "\":{\"x\":0,\"y\":0,\"width\":9,\"height\":9}";
    text += "},\"recent\":[";
    for (int i = 0; i < 1000; ++i)
        text += (i == 0 ? "\"/f" : ",\"/f") + std::to_string(i) + "\"";
    text += "]}";
    const Desk desk = parse_desk(text);
    EXPECT_EQ(desk.windows.size(), 100U);
    EXPECT_EQ(desk.recent.size(), kMostRecent);
    EXPECT_EQ(desk.recent.front(), "/f0");
}

TEST(DeskText, EmptyDoubleAndBrokenPathsAreLeftOut) {
    const Desk desk = parse_desk(R"({"recent":["","/a","/a",7,null,["/b"],"/c\u0000d","/e"]})");
    EXPECT_EQ(desk.recent, (std::vector<std::string>{"/a", "/e"}));
}

TEST(DeskText, ATextThatIsNoUtf8DoesNotStopTheWriting) {
    Desk desk = sample_desk();
    desk.recent = {"/caf\xe9.prj"};
    EXPECT_EQ(parse_desk(desk_text(desk)).recent,
              (std::vector<std::string>{"/caf\xef\xbf\xbd.prj"}));
}

TEST(DeskText, DeepNestingDoesNoHarm) {
    EXPECT_EQ(parse_desk(std::string(100'000, '[')), Desk{});
    EXPECT_EQ(parse_desk("{\"main\":" + std::string(50'000, '[') + std::string(50'000, ']') + "}"),
              Desk{});
}

}  // namespace
}  // namespace servo::app
