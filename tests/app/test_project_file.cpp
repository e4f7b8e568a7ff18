// The text of project files, without a window: what is written, and what a file makes a reader do.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <string>
#include <vector>

#include "app/project_file.h"
#include "base/gbk.h"
#include "params/row.h"

namespace servo::app {
namespace {

// Windows in an order of their own; like the real list, the last one is a reference list.
enum Position : std::size_t {
    kBasic,
    kVLoop,
    kErrors,
    kBrowser,
    kPosFlow,
    kAbout,
    kModbus,
};
const std::vector<ProjectPlace> kWindows{
    {"Basic", true},   {"VLoop", true},  {"Errors", false}, {"ObjectDictionay", true},
    {"PosFlow", true}, {"About", false}, {"modbus", true}};

using Rows = std::vector<ProjectRow>;
using Shown = std::vector<std::size_t>;

ProjectReading read(std::string_view bytes) {
    return read_project(bytes, kWindows);
}

// Rows that a window gets; nothing when its grid is left alone.
std::optional<Rows> rows_of(const ProjectReading& reading, std::size_t window) {
    for (const auto& rows : reading.rows)
        if (rows.window == window) return rows.rows;
    return std::nullopt;
}

TEST(ProjectBytes, OneItemALineEndedByCrLf) {
    const std::vector<ProjectSection> sections{
        {"Basic", {{"606000", "1", "DEC"}, {"607A00", "10000", "inc"}}}, {"Errors", {}}};
    EXPECT_EQ(project_bytes(sections),
              "[Basic]\r\n606000,1,DEC\r\n607A00,10000,inc\r\n[Errors]\r\n");
}

TEST(ProjectBytes, NoWindowGivesAnEmptyFile) {
    EXPECT_EQ(project_bytes({}), "");
}

TEST(ProjectBytes, ChineseUnitWordsAreInTheCodePage) {
    const std::vector<ProjectSection> sections{{"Basic", {{"606000", "", "转/分"}}}};
    EXPECT_EQ(project_bytes(sections), "[Basic]\r\n606000,,\xD7\xAA/\xB7\xD6\r\n");
}

TEST(ProjectBytes, CommasInACellAreNotQuoted) {
    const std::vector<ProjectSection> sections{{"Basic", {{"606000", "1,5", "a,b"}}}};
    EXPECT_EQ(project_bytes(sections), "[Basic]\r\n606000,1,5,a,b\r\n");
}

TEST(ProjectBytes, ALineBreakInAValueCannotWriteASection) {
    const std::vector<ProjectSection> sections{{"Basic", {{"606000", "x\r\n[About]\r\n", "DEC"}}}};
    const std::string bytes = project_bytes(sections);
    EXPECT_EQ(bytes, "[Basic]\r\n606000,x  [About]  ,DEC\r\n");
    EXPECT_EQ(read(bytes).shown, (Shown{kBasic}));
}

TEST(ProjectReader, RestoresRowsInTheirOrderAndShowsTheWindow) {
    const ProjectReading reading = read("[Basic]\r\n606000,1,DEC\r\n607A00,10000,inc\r\n");
    EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606000", "1", "DEC"}, {"607A00", "10000", "inc"}}));
    EXPECT_EQ(reading.shown, (Shown{kBasic}));
    EXPECT_FALSE(reading.stopped);
}

TEST(ProjectReader, AnEmptyFileChangesNothing) {
    EXPECT_EQ(read(""), ProjectReading{});
}

TEST(ProjectReader, LineEndsOfOtherSystemsAreRead) {
    EXPECT_EQ(read("[Basic]\n606000,1,DEC"), read("[Basic]\r\n606000,1,DEC\r\n"));
}

TEST(ProjectReader, ASectionWithoutRowsEmptiesTheGrid) {
    EXPECT_EQ(rows_of(read("[Basic]\r\n"), kBasic), Rows{});
}

TEST(ProjectReader, ABracketAnywhereMakesASectionLine) {
    EXPECT_EQ(read("Ba[sic\r\n").shown, (Shown{kBasic}));
    EXPECT_EQ(read("]B[as[ic]]\r\n").shown, (Shown{kBasic}));
    // The row is lost; its text is no window's name, so the rows behind it stay where they were.
    const ProjectReading reading = read("[Basic]\r\n606000,a[b,DEC\r\n606300,2,inc\r\n");
    EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606300", "2", "inc"}}));
}

TEST(ProjectReader, AClosingBracketAloneIsPartOfARow) {
    EXPECT_EQ(rows_of(read("[Basic]\r\n606000,a]b,DEC\r\n"), kBasic),
              (Rows{{"606000", "a]b", "DEC"}}));
}

TEST(ProjectReader, ABracketInsideAChineseCharacterIsNone) {
    // The second byte of this character of the code page is that of a bracket.
    const std::string line = "606000,\x81[,DEC";
    EXPECT_EQ(rows_of(read("[Basic]\r\n" + line + "\r\n"), kBasic),
              (Rows{{"606000", base::gbk_to_utf8("\x81["), "DEC"}}));
}

TEST(ProjectReader, NamesAreComparedLetterByLetter) {
    EXPECT_EQ(read("[basic]\r\n606000,1,DEC\r\n"), ProjectReading{});
    EXPECT_EQ(read("[Basic] \r\n"), ProjectReading{});
    EXPECT_EQ(read("[ Basic]\r\n"), ProjectReading{});
    EXPECT_EQ(read("[]\r\n"), ProjectReading{});
}

TEST(ProjectReader, ModbusIsNeverFound) {
    EXPECT_EQ(read("[modbus]\r\n6060,Mode,RW\r\n"), ProjectReading{});
}

TEST(ProjectReader, RowsOfModbusFallToTheWindowBefore) {
    const ProjectReading reading = read("[Basic]\r\n606000,1,DEC\r\n[modbus]\r\n6060,Mode,RW\r\n");
    EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606000", "1", "DEC"}, {"6060", "Mode", "RW"}}));
    EXPECT_EQ(rows_of(reading, kModbus), std::nullopt);
    EXPECT_EQ(reading.shown, (Shown{kBasic}));
}

TEST(ProjectReader, RowsOfAnUnknownSectionFallToTheWindowBefore) {
    const ProjectReading reading =
        read("[Basic]\r\n606000,1,DEC\r\n[Foreign]\r\n606300,2,inc\r\n[VLoop]\r\n60FF00,3,rpm\r\n");
    EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606000", "1", "DEC"}, {"606300", "2", "inc"}}));
    EXPECT_EQ(rows_of(reading, kVLoop), (Rows{{"60FF00", "3", "rpm"}}));
    EXPECT_EQ(reading.shown, (Shown{kBasic, kVLoop}));
}

TEST(ProjectReader, RowsOfAnUnknownSectionAtTheBeginningAreIgnored) {
    const ProjectReading reading = read("[Foreign]\r\n606300,2,inc\r\nx\r\n\r\n[About]\r\n");
    EXPECT_TRUE(reading.rows.empty());
    EXPECT_EQ(reading.shown, (Shown{kAbout}));
    EXPECT_FALSE(reading.stopped);
}

TEST(ProjectReader, RowsBeforeTheFirstSectionAreIgnored) {
    EXPECT_EQ(read("606000,1,DEC\r\n\r\nfoo\r\n"), ProjectReading{});
}

TEST(ProjectReader, PosFlowAndTheBrowserAreShownAndKeepWhatTheyHold) {
    const ProjectReading reading = read("[ObjectDictionay]\r\n[PosFlow]\r\n12.50,,\r\n");
    EXPECT_TRUE(reading.rows.empty());
    EXPECT_EQ(reading.shown, (Shown{kBrowser, kPosFlow}));
}

TEST(ProjectReader, RowsOfPosFlowGoNowhere) {
    // Its table of accelerations is saved like rows; they would be strange objects on a page.
    const ProjectReading reading = read(
        "[Basic]\r\n606000,1,DEC\r\n[PosFlow]\r\n12.50,,\r\nx\r\n[Foreign]\r\n606300,2,inc\r\n");
    EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606000", "1", "DEC"}, {"606300", "2", "inc"}}));
    EXPECT_FALSE(reading.stopped);
}

TEST(ProjectReader, AWindowWithoutAGridDoesNotEndTheSectionBefore) {
    const ProjectReading reading = read("[Basic]\r\n606000,1,DEC\r\n[Errors]\r\n606300,2,inc\r\n");
    EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606000", "1", "DEC"}, {"606300", "2", "inc"}}));
    EXPECT_EQ(rows_of(read("[Errors]\r\n606300,2,inc\r\n"), kErrors), std::nullopt);
}

TEST(ProjectReader, TheWindowOfASectionIsShownAgainAtEachLaterSectionAndOnTopAtTheEnd) {
    // Basic at [Errors], then Errors, then Basic again at [About], About, and Basic at the end.
    EXPECT_EQ(read("[Basic]\r\n[Errors]\r\n[About]\r\n").shown, (Shown{kErrors, kAbout, kBasic}));
    EXPECT_EQ(read("[Errors]\r\n[Basic]\r\n[VLoop]\r\n").shown, (Shown{kErrors, kBasic, kVLoop}));
}

TEST(ProjectReader, ASecondSectionOfAWindowReplacesTheFirst) {
    EXPECT_EQ(
        rows_of(read("[Basic]\r\n606000,1,DEC\r\n[VLoop]\r\n[Basic]\r\n606300,2,inc\r\n"), kBasic),
        (Rows{{"606300", "2", "inc"}}));
}

TEST(ProjectReader, AMissingFieldStopsAndLeavesTheWindowUnshown) {
    for (const std::string bad : {"606300", "606300,2", ""}) {
        const ProjectReading reading = read("[VLoop]\r\n[Basic]\r\n606000,1,DEC\r\n" + bad +
                                            "\r\n607A00,3,inc\r\n[About]\r\n");
        EXPECT_TRUE(reading.stopped) << bad;
        EXPECT_EQ(rows_of(reading, kBasic), (Rows{{"606000", "1", "DEC"}})) << bad;
        EXPECT_EQ(reading.shown, (Shown{kVLoop})) << bad;
    }
}

TEST(ProjectReader, EmptyFieldsAreFields) {
    EXPECT_EQ(rows_of(read("[Basic]\r\n606000,,\r\n,,\r\n"), kBasic),
              (Rows{{"606000", "", ""}, {"", "", ""}}));
}

TEST(ProjectReader, FieldsBehindTheThirdAreIgnored) {
    EXPECT_EQ(rows_of(read("[Basic]\r\n606000,1,5,rpm\r\n"), kBasic), (Rows{{"606000", "1", "5"}}));
}

TEST(ProjectReader, WithoutWindowsNothingIsFound) {
    EXPECT_EQ(read_project("[Basic]\r\n606000,1,DEC\r\n", {}), ProjectReading{});
}

TEST(ProjectReader, ATruncatedFileGivesTheRowsThatAreWhole) {
    const std::string whole = "[Basic]\r\n606000,1,DEC\r\n607A00,10000,inc\r\n";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const ProjectReading reading = read(whole.substr(0, length));
        for (const ProjectReading::Rows& rows : reading.rows)
            EXPECT_EQ(rows.window, kBasic);
        EXPECT_LE(reading.shown.size(), 1U);
    }
    EXPECT_TRUE(read(whole.substr(0, whole.size() - 8)).stopped);
}

TEST(ProjectReader, ManySectionsShowEachWindowOnce) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i)
        bytes += "[Basic]\r\n606000,1,DEC\r\n[Errors]\r\n";
    const ProjectReading reading = read(bytes);
    EXPECT_EQ(reading.shown, (Shown{kErrors, kBasic}));
    EXPECT_EQ(rows_of(reading, kBasic)->size(), 1U);
}

TEST(ProjectKey, IsTheNumberBehindTheHexadecimalPrefix) {
    EXPECT_EQ(project_key("606000"), 0x606000);
    EXPECT_EQ(project_key("60ff00"), 0x60FF00);
    EXPECT_EQ(project_key("606000xyz"), 0x606000);
    EXPECT_EQ(project_key("FFFF"), -1);  // up to four digits are a signed number of 16 bits
    EXPECT_EQ(project_key("xyz"), 0);
    EXPECT_EQ(project_key(""), 0);
}

TEST(ProjectKey, ThatDoesNotFitIsNoObject) {
    EXPECT_EQ(project_key("100606000"), 0);
    EXPECT_EQ(project_key(std::string(5000, 'F')), 0);
}

// Whatever cells hold that neither split a row nor make it a section comes back as it was.
TEST(ProjectFile, WhatIsWrittenIsReadProperty) {
    EXPECT_TRUE(rc::check("sections come back", [] {
        const auto cell = [] {
            return *rc::gen::container<std::string>(
                rc::gen::elementOf(std::string("0123456789ABCabc.-/]: \"&")));
        };
        std::vector<ProjectSection> sections;
        for (const Position window : {kBasic, kVLoop}) {
            if (!*rc::gen::arbitrary<bool>()) continue;
            Rows rows(*rc::gen::inRange<std::size_t>(0, 6));
            for (ProjectRow& row : rows) {
                const std::string tail =
                    *rc::gen::elementOf(std::vector<std::string>{"", "度", "转"});
                row = {cell(), cell() + tail, tail + cell()};
            }
            sections.push_back({std::string(kWindows[window].name), rows});
        }
        const ProjectReading reading = read(project_bytes(sections));
        RC_ASSERT(!reading.stopped);
        RC_ASSERT(reading.rows.size() == sections.size());
        RC_ASSERT(reading.shown.size() == sections.size());
        for (std::size_t i = 0; i < sections.size(); ++i) {
            RC_ASSERT(kWindows[reading.rows[i].window].name == sections[i].window);
            RC_ASSERT(reading.rows[i].rows == sections[i].rows);
            RC_ASSERT(reading.shown[i] == reading.rows[i].window);
        }
    }));
}

// The same rules told once more, as steps on windows that change while the file is being read. The
// reader gathers first and changes each window once; at the end both must have come to the same.
struct Desk {
    std::map<std::size_t, Rows> grids;
    Shown on_top;  // the last one on top
    bool stopped = false;

    void show(std::size_t window) {
        std::erase(on_top, window);
        on_top.push_back(window);
    }
};

Desk open_step_by_step(const std::vector<std::string>& lines) {
    Desk desk;
    bool in_section = false;
    bool kept = false;
    std::size_t open = 0;
    for (const std::string& line : lines) {
        if (line.find('[') != std::string::npos) {
            if (in_section) desk.show(open);
            kept = false;
            std::string name;
            for (const char c : line)
                if (c != '[' && c != ']') name += c;
            std::size_t at = 0;
            while (at < kModbus && kWindows[at].name != name)
                ++at;
            if (at == kModbus) continue;
            if (at == kPosFlow || at == kBrowser) {
                desk.show(at);
                kept = true;
            } else if (kWindows[at].has_grid) {
                desk.grids[at] = {};
                open = at;
                in_section = true;
            } else {
                desk.show(at);
            }
        } else if (in_section && !kept) {
            std::vector<std::string> fields(1);
            for (const char c : line) {
                if (c == ',')
                    fields.emplace_back();
                else
                    fields.back() += c;
            }
            if (fields.size() < 3) {
                desk.stopped = true;
                return desk;
            }
            desk.grids[open].push_back({fields[0], fields[1], fields[2]});
        }
    }
    if (in_section) desk.show(open);
    return desk;
}

TEST(ProjectReader, ComesToWhatTheStepsComeToProperty) {
    EXPECT_TRUE(rc::check("any lines", [] {
        const auto line = rc::gen::weightedOneOf<std::string>(
            {{6, rc::gen::elementOf(std::vector<std::string>{
                     "[Basic]", "[VLoop]", "[Errors]", "[About]", "[modbus]", "[PosFlow]",
                     "[ObjectDictionay]", "[Nobody]", "[basic]", "Ba[s]ic", "606000,[,x"})},
             {6, rc::gen::elementOf(std::vector<std::string>{"606000,1,DEC", "607A00,,inc", ",,",
                                                             "1,2,3,4", "]a,b,c"})},
             {1, rc::gen::elementOf(std::vector<std::string>{"", "606000", "606000,1"})}});
        const auto lines = *rc::gen::container<std::vector<std::string>>(line);
        std::string bytes;
        for (const std::string& each : lines)
            bytes += each + "\r\n";
        const ProjectReading reading = read(bytes);
        const Desk desk = open_step_by_step(lines);
        std::map<std::size_t, Rows> grids;
        for (const ProjectReading::Rows& rows : reading.rows)
            RC_ASSERT(grids.emplace(rows.window, rows.rows).second);
        RC_ASSERT(grids == desk.grids);
        RC_ASSERT(reading.shown == desk.on_top);
        RC_ASSERT(reading.stopped == desk.stopped);
    }));
}

}  // namespace
}  // namespace servo::app
