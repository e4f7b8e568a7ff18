#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/file_kinds.h"
#include "link/engine_state.h"

namespace servo::app {
namespace {

using base::Language;
using Strings = std::vector<std::string>;

std::string suffix_of(std::string_view path) {
    const FileKind* kind = kind_of_file(path);
    return kind == nullptr ? "" : std::string(kind->suffix);
}

TEST(FileKinds, AreTheProgramsSevenInTheOrderOfTheirIds) {
    Strings suffixes;
    for (const FileKind& kind : file_kinds()) {
        EXPECT_EQ(static_cast<std::size_t>(kind.id), suffixes.size());
        suffixes.emplace_back(kind.suffix);
    }
    EXPECT_EQ(suffixes, (Strings{"tpjt", "cdi", "cdo", "pft", "scope", "bode", "servo"}));
}

TEST(FileKinds, EachBelongsToAWindowOfTheProgramOrToTheMainWindow) {
    const auto window_of = [](std::string_view path) { return kind_of_file(path)->window; };
    EXPECT_EQ(window_of("a.tpjt"), "");
    EXPECT_EQ(window_of("a.cdi"), "imexport");
    EXPECT_EQ(window_of("a.cdo"), "imexport");
    EXPECT_EQ(window_of("a.pft"), "PosFlow");
    EXPECT_EQ(window_of("a.scope"), "Scope");
    EXPECT_EQ(window_of("a.bode"), "ADVtunner");
    EXPECT_EQ(window_of("a.servo"), "Download");
    for (const FileKind& kind : file_kinds()) {
        if (kind.window.empty()) continue;
        EXPECT_NE(std::ranges::find(link::kAllWindowNames, kind.window),
                  link::kAllWindowNames.end());
    }
}

TEST(FileKinds, TheSuffixCountsWhateverItsCase) {
    EXPECT_EQ(suffix_of("/x/WORK.TPJT"), "tpjt");
    EXPECT_EQ(suffix_of("项目.Scope"), "scope");
    EXPECT_EQ(suffix_of("a.tpjt.cdi"), "cdi");
}

TEST(FileKinds, ForeignFilesAreNone) {
    for (const char* path :
         {"", "tpjt", ".tpjt", "/a.tpjt/b", "a.tpjt ", "a.tpjt.bak", "a.ini", "a."})
        EXPECT_EQ(kind_of_file(path), nullptr) << path;
}

TEST(FileOpeners, HandTheFileToWhoeverOpensItsKind) {
    FileOpeners openers;
    Strings opened;
    openers.handle(FileKindId::kProject, [&](const std::string& path) { opened.push_back(path); });
    EXPECT_EQ(openers.open("/a/WORK.TPJT"), FileOpening::kOpened);
    EXPECT_EQ(opened, Strings{"/a/WORK.TPJT"});
}

TEST(FileOpeners, TellKindsThatNobodyOpensYet) {
    FileOpeners openers;
    EXPECT_FALSE(openers.handled(FileKindId::kRecording));
    EXPECT_EQ(openers.open("a.scope"), FileOpening::kNotYet);
    EXPECT_EQ(openers.open("a.txt"), FileOpening::kForeign);
    openers.handle(FileKindId::kRecording, [](const std::string&) {});
    EXPECT_TRUE(openers.handled(FileKindId::kRecording));
    EXPECT_EQ(openers.open("a.scope"), FileOpening::kOpened);
}

TEST(FileOpeners, ADragIsAcceptedWhenOneOfItsFilesCanBeOpened) {
    FileOpeners openers;
    openers.handle(FileKindId::kProject, [](const std::string&) {});
    EXPECT_TRUE(openers.accepts(Strings{"a.txt", "b.tpjt"}));
    EXPECT_FALSE(openers.accepts(Strings{"a.txt", "b.scope"}));
    EXPECT_FALSE(openers.accepts(Strings{}));
}

TEST(FileOpeningText, NamesTheFileInBothLanguages) {
    EXPECT_EQ(file_opening_text(FileOpening::kNotYet, "/a/b.scope", Language::kEnglish),
              "b.scope: this version cannot open such files yet (Recording).");
    EXPECT_EQ(file_opening_text(FileOpening::kNotYet, "/a/b.scope", Language::kChinese),
              "b.scope：本版本还不能打开此类文件（示波器记录）。");
    EXPECT_EQ(file_opening_text(FileOpening::kForeign, "/a/b.txt", Language::kEnglish),
              "b.txt: not a file of this program.");
    EXPECT_EQ(file_opening_text(FileOpening::kForeign, "/a/b.txt", Language::kChinese),
              "b.txt：不是本程序的文件。");
    EXPECT_EQ(file_opening_text(FileOpening::kOpened, "/a/b.tpjt", Language::kEnglish), "");
}

}  // namespace
}  // namespace servo::app
