// The commands on a workstation: what `new1`, `save1` and `open1` do to windows, grids and files.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <deque>
#include <map>

#include "app/project.h"
#include "shell_bench.h"

namespace servo::app {
namespace {

using base::Language;
using test::ShellBench;
using Names = std::vector<std::string>;

class FakeDialogs final : public UserDialogs {
  public:
    base::Answer show(std::string_view, std::string_view text, base::Buttons) override {
        boxes.emplace_back(text);
        return base::Answer::kOk;
    }
    std::optional<std::string> ask_file(const FileRequest& request) override {
        requests.push_back(request);
        return answer;
    }
    std::vector<FileRequest> requests;
    std::optional<std::string> answer;
    Names boxes;
};

class ShowingScreen final : public Screen {
  public:
    void show_background() override {}
    void apply_variant() override {}
    void show_window(link::Window& window) override {
        EXPECT_TRUE(window.visible());
        shown.push_back(window.name());
    }
    void hide_window(link::Window& window) override {
        EXPECT_FALSE(window.visible());
        hidden.push_back(window.name());
    }
    void apply_language() override {}
    void unload_all() override {}
    Names shown;
    Names hidden;
};

// A grid that is no page's: some columns of text.
class TextGrid final : public ProjectGrid {
  public:
    struct Cells {
        std::vector<Names> rows;  // row 0 the header
        int restored = 0;
    };
    explicit TextGrid(Cells& cells) : cells_(cells) {}
    int rows() const override { return static_cast<int>(cells_.rows.size()); }
    std::string cell(int row, int column) const override {
        const Names& cells = cells_.rows.at(static_cast<std::size_t>(row));
        const auto position = static_cast<std::size_t>(column);
        return position < cells.size() ? cells[position] : std::string();
    }
    void set_rows(std::vector<params::Row> rows) override {
        ++cells_.restored;
        cells_.rows.resize(1);
        for (const params::Row& row : rows)
            cells_.rows.push_back({row.number, row.index});
    }

  private:
    Cells& cells_;
};

struct ProjectBench : ShellBench {
    FakeDialogs dialogs;
    ShowingScreen screen;
    Project project{workstation, dialogs};
    std::map<std::string, TextGrid::Cells> text_grids;

    ProjectBench() {
        EXPECT_TRUE(MDIForm_Load(workstation));
        workstation.screen = &screen;
        project.add_grids([this](link::Window& window) -> std::unique_ptr<ProjectGrid> {
            const auto found = text_grids.find(window.name());
            if (found == text_grids.end()) return nullptr;
            return std::make_unique<TextGrid>(found->second);
        });
    }
    ~ProjectBench() { workstation.screen = nullptr; }

    params::PageGrid& grid(std::string_view page) { return workstation.find_page(page)->grid(); }
    void show(std::string_view name) { window(name).set_visible(true); }
    std::string path(const std::string& name = "work.tpjt") const {
        return (folder.path() / name).string();
    }
    std::string saved() {
        EXPECT_EQ(project.save1(path()).outcome, ProjectResult::Outcome::kDone);
        return folder.read("work.tpjt");
    }
    ProjectResult open(std::string_view bytes) {
        folder.write("work.tpjt", bytes);
        return project.open1(path());
    }
    Names visible() const {
        Names names;
        for (const link::Window* each : workstation.engine.all_windows)
            if (each->visible()) names.push_back(each->name());
        return names;
    }
};

TEST(New1, HidesEveryWindowAndClearsNothing) {
    ProjectBench bench;
    for (const char* name : {"Basic", "Form1", "About", "modbus", "ObjectDictionay"})
        bench.show(name);
    bench.grid("Basic").set_text(1, "7");
    bench.project.new1();
    EXPECT_EQ(bench.visible(), Names{});
    EXPECT_EQ(bench.screen.hidden, (Names{"Basic", "Form1", "ObjectDictionay", "About", "modbus"}));
    EXPECT_EQ(bench.grid("Basic").rows(), 4);
    EXPECT_EQ(bench.grid("Basic").row(1).value, "7");
    EXPECT_TRUE(bench.dialogs.requests.empty());
}

TEST(New1, AsksNobodyAndWritesNoFile) {
    ProjectBench bench;
    bench.show("Basic");
    bench.project.new1();
    EXPECT_FALSE(std::filesystem::exists(bench.path()));
    EXPECT_TRUE(bench.dialogs.boxes.empty());
}

TEST(Save1, WritesVisibleWindowsInTheOrderOfTheList) {
    ProjectBench bench;
    // Opened in another order than they stand in the list.
    for (const char* name : {"VLoop", "Errors", "Basic"})
        bench.show(name);
    bench.grid("Basic").set_text(1, "3");
    EXPECT_EQ(bench.saved(),
              "[Basic]\r\n606000,3,DEC\r\n606300,,inc\r\n60FF00,,rpm\r\n[Errors]\r\n"
              "[VLoop]\r\n606000,,DEC\r\n606300,,inc\r\n60FF00,,rpm\r\n");
}

TEST(Save1, WithNoVisibleWindowGivesAnEmptyFileAndOpeningItChangesNothing) {
    ProjectBench bench;
    EXPECT_EQ(bench.saved(), "");
    EXPECT_TRUE(std::filesystem::exists(bench.path()));
    bench.show("About");
    bench.grid("Basic").set_text(1, "7");
    EXPECT_EQ(bench.project.open1(bench.path()).outcome, ProjectResult::Outcome::kDone);
    EXPECT_EQ(bench.visible(), Names{"About"});
    EXPECT_EQ(bench.grid("Basic").row(1).value, "7");
    EXPECT_TRUE(bench.screen.shown.empty());
}

TEST(Save1, TheBrowserHasASectionAndNoRowsWhateverItHolds) {
    ProjectBench bench;
    bench.text_grids["ObjectDictionay"].rows = {{"N"}, {"0", "606000", "", "", "1", "DEC"}};
    bench.show("ObjectDictionay");
    EXPECT_EQ(bench.saved(), "[ObjectDictionay]\r\n");
}

TEST(Save1, AGridWithoutColumnsFourAndFiveSavesEmptyFields) {
    ProjectBench bench;
    bench.text_grids["PosFlow"].rows = {{"", "Acc", "Dec"}, {"0", "12.50", "12.50"}};
    bench.text_grids["EASY1"].rows = {{"Pin", "Function"}, {"Din1", ""}};
    bench.show("PosFlow");
    bench.show("EASY1");
    EXPECT_EQ(bench.saved(), "[PosFlow]\r\n12.50,,\r\n[EASY1]\r\n,,\r\n");
}

TEST(Save1, TheModbusListIsSavedAndNeverReadBack) {
    ProjectBench bench;
    TextGrid::Cells& modbus = bench.text_grids["modbus"];
    modbus.rows = {{"ModBus"}, {"1234", "6060", "00", "模式", "Mode", "RW", "Integer8"}};
    bench.show("modbus");
    const std::string bytes = bench.saved();
    EXPECT_EQ(bytes, "[modbus]\r\n6060,Mode,RW\r\n");
    bench.project.new1();
    bench.open(bytes);
    EXPECT_EQ(bench.visible(), Names{});
    EXPECT_EQ(modbus.restored, 0);
    EXPECT_EQ(modbus.rows.size(), 2U);
}

TEST(Save1, AnAddedRowIsSavedAndADeletedOneIsNot) {
    ProjectBench bench;
    bench.show("Basic");
    bench.grid("Basic").delete_row(1);
    ASSERT_TRUE(bench.grid("Basic").add_row(0x607A00, 0));
    EXPECT_EQ(bench.saved(), "[Basic]\r\n607A00,,inc\r\n606300,,inc\r\n60FF00,,rpm\r\n");
}

TEST(Save1, TheDialogHasTheFilterAndAnEmptyName) {
    ProjectBench bench;
    bench.project.save1();
    ASSERT_EQ(bench.dialogs.requests.size(), 1U);
    const FileRequest& request = bench.dialogs.requests[0];
    EXPECT_EQ(request.kind, FileRequest::Kind::kSave);
    EXPECT_EQ(request.filter, "tpjt");
    EXPECT_EQ(request.suffix, "tpjt");
    EXPECT_EQ(request.name, "");
    EXPECT_EQ(request.title, "Save");
}

TEST(Save1, CancelLeavesTheOldFile) {
    ProjectBench bench;
    bench.folder.write("work.tpjt", "old");
    bench.show("Basic");
    EXPECT_EQ(bench.project.save1().outcome, ProjectResult::Outcome::kCancelled);
    EXPECT_EQ(bench.folder.read("work.tpjt"), "old");
}

TEST(Save1, WritesWhereTheDialogSays) {
    ProjectBench bench;
    bench.show("About");
    bench.dialogs.answer = bench.path("项目 1.tpjt");
    const ProjectResult result = bench.project.save1();
    EXPECT_TRUE(result.used());
    EXPECT_EQ(result.path, bench.path("项目 1.tpjt"));
    EXPECT_EQ(bench.folder.read("项目 1.tpjt"), "[About]\r\n");
}

TEST(Save1, AFileThatCannotBeWrittenIsSilent) {
    ProjectBench bench;
    bench.show("Basic");
    EXPECT_EQ(bench.project.save1(bench.path("no/such/folder.tpjt")).outcome,
              ProjectResult::Outcome::kFailed);
    EXPECT_TRUE(bench.dialogs.boxes.empty());
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(Open1, TheDialogHasTheFilterAndCancelChangesNothing) {
    ProjectBench bench;
    bench.workstation.language = Language::kChinese;
    bench.show("About");
    EXPECT_EQ(bench.project.open1().outcome, ProjectResult::Outcome::kCancelled);
    ASSERT_EQ(bench.dialogs.requests.size(), 1U);
    EXPECT_EQ(bench.dialogs.requests[0].kind, FileRequest::Kind::kOpen);
    EXPECT_EQ(bench.dialogs.requests[0].suffix, "tpjt");
    EXPECT_EQ(bench.dialogs.requests[0].name, "");
    EXPECT_EQ(bench.dialogs.requests[0].title, "打开");
    EXPECT_EQ(bench.visible(), Names{"About"});
    EXPECT_TRUE(bench.screen.shown.empty());
}

TEST(Open1, AMissingFileIsSilentAndChangesNothing) {
    ProjectBench bench;
    bench.show("About");
    bench.dialogs.answer = bench.path("none.tpjt");
    EXPECT_EQ(bench.project.open1().outcome, ProjectResult::Outcome::kFailed);
    EXPECT_EQ(bench.visible(), Names{"About"});
    EXPECT_TRUE(bench.dialogs.boxes.empty());
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.project.open1(bench.folder.path().string()).outcome,
              ProjectResult::Outcome::kFailed);
}

TEST(Open1, ASavedPageWithOneRowRestoresOneRowAndShowsTheWindow) {
    ProjectBench bench;
    bench.open("[Basic]\r\n606000,3,DEC\r\n");
    const params::PageGrid& grid = bench.grid("Basic");
    ASSERT_EQ(grid.rows(), 2);
    EXPECT_EQ(grid.row(1).value, "3");
    EXPECT_EQ(bench.visible(), Names{"Basic"});
    EXPECT_EQ(bench.screen.shown, Names{"Basic"});
}

TEST(Open1, ARowIsBuiltLikeThatOfAPage) {
    ProjectBench bench;
    bench.open("[Basic]\r\n60FF00,12,DEC\r\n606000,3,HEX\r\n607100,9,DEC\r\n");
    const params::PageGrid& grid = bench.grid("Basic");
    ASSERT_EQ(grid.rows(), 4);
    const params::Row& speed = grid.row(1);
    EXPECT_EQ(speed.number, "0*");  // neither H nor L: read once
    EXPECT_EQ(speed.index, "60FF00");
    EXPECT_EQ(speed.type, "int32");
    EXPECT_EQ(speed.name, "Target velocity");
    EXPECT_EQ(speed.value, "12");
    EXPECT_EQ(speed.unit, "DEC");  // the stored one, not the first of the formula list
    EXPECT_EQ(speed.formula, params::test::kRpm);
    EXPECT_EQ(speed.name_ch, "目标速度");
    EXPECT_EQ(speed.name_en, "Target velocity");
    EXPECT_EQ(speed.list_en, "");
    EXPECT_FALSE(grid.read_only_cell(1, params::kIndex));
    const params::Row& mode = grid.row(2);
    EXPECT_EQ(mode.number, "1");  // live
    EXPECT_EQ(mode.unit, "HEX");
    EXPECT_EQ(mode.list_en, "|1:Position|3:Velocity|-4:Pulse");
    EXPECT_EQ(mode.list_ch, "|1:位置|3:速度|-4:脉冲");
    // No W in the attribute: the colour of what cannot be written.
    EXPECT_EQ(grid.row(3).number, "2*");
    EXPECT_TRUE(grid.read_only_cell(3, params::kIndex));
    EXPECT_TRUE(grid.read_only_cell(3, params::kListCh));
    EXPECT_FALSE(grid.read_only_cell(3, params::kNumber));
}

TEST(Open1, NamesComeInTheLanguageOfTheScreen) {
    ProjectBench bench;
    bench.workstation.language = Language::kChinese;
    bench.open("[Basic]\r\n60FF00,12,rpm\r\n");
    EXPECT_EQ(bench.grid("Basic").row(1).name, "目标速度");
}

TEST(Open1, AnUnknownKeyGivesARowWithABlankTypeAndName) {
    ProjectBench bench;
    bench.open("[Basic]\r\nABCDEF,5,rpm\r\n606000,3,DEC\r\n");
    const params::PageGrid& grid = bench.grid("Basic");
    ASSERT_EQ(grid.rows(), 3);
    EXPECT_EQ(grid.row(1).index, "ABCDEF");
    EXPECT_EQ(grid.row(1).type, "");
    EXPECT_EQ(grid.row(1).name, "");
    EXPECT_EQ(grid.row(1).value, "5");
    EXPECT_EQ(grid.row(1).unit, "rpm");
    EXPECT_EQ(grid.row(1).number, "0*");
    EXPECT_TRUE(grid.read_only_cell(1, params::kValue));
    EXPECT_EQ(grid.row(2).number, "1");
}

TEST(Open1, RowsOfAnUnknownSectionGoOnCountingInTheWindowBefore) {
    ProjectBench bench;
    bench.open("[Basic]\r\n606000,1,DEC\r\n[Nobody]\r\n606300,2,inc\r\n");
    ASSERT_EQ(bench.grid("Basic").rows(), 3);
    EXPECT_EQ(bench.grid("Basic").row(2).number, "1");
    EXPECT_EQ(bench.visible(), Names{"Basic"});
}

TEST(Open1, PosFlowAndTheBrowserHoldWhatTheyHeld) {
    ProjectBench bench;
    bench.text_grids["ObjectDictionay"].rows = {{"N"}, {"0", "606000", "", "", "1", "DEC"}};
    bench.text_grids["PosFlow"].rows = {{"", "Acc", "Dec"}, {"0", "12.50", "12.50"}};
    bench.open("[Basic]\r\n606000,1,DEC\r\n[ObjectDictionay]\r\n[PosFlow]\r\n0.00,,\r\n");
    EXPECT_EQ(bench.text_grids["ObjectDictionay"].restored, 0);
    EXPECT_EQ(bench.text_grids["PosFlow"].restored, 0);
    EXPECT_EQ(bench.grid("Basic").rows(), 2);
    EXPECT_EQ(bench.visible(), (Names{"Basic", "ObjectDictionay", "PosFlow"}));
}

TEST(Open1, AGridThatIsNoPageGetsItsRowsToo) {
    ProjectBench bench;
    bench.text_grids["EASY1"].rows = {{"Pin", "Function"}, {"Din1", ""}, {"Din2", ""}};
    bench.open("[EASY1]\r\n606000,,\r\n");
    EXPECT_EQ(bench.text_grids["EASY1"].rows,
              (std::vector<Names>{{"Pin", "Function"}, {"0", "606000"}}));
}

TEST(Open1, AWindowOfTabsUsesTheTabThatItsFinderGives) {
    ProjectBench bench;
    params::PageGrid first =
        params::PageGrid({bench.workstation.dictionary, bench.workstation.values.operands,
                          bench.workstation.language, [](auto, auto) {}});
    params::PageGrid second = first;
    params::PageGrid* active = &second;
    bench.project.add_grids([&](link::Window& window) -> std::unique_ptr<ProjectGrid> {
        return window.name() == "TPDOSet" ? page_project_grid(*active) : nullptr;
    });
    bench.open("[TPDOSet]\r\n606000,1,DEC\r\n");
    EXPECT_EQ(first.rows(), 1);
    EXPECT_EQ(second.rows(), 2);
    EXPECT_EQ(bench.saved(), "[TPDOSet]\r\n606000,1,DEC\r\n");
    active = &first;
    EXPECT_EQ(bench.saved(), "[TPDOSet]\r\n");
}

TEST(Open1, ARowWithAMissingFieldStopsAndKeepsWhatWasRestored) {
    ProjectBench bench;
    const ProjectResult result =
        bench.open("[VLoop]\r\n606000,1,DEC\r\n[Basic]\r\n606000,1,DEC\r\n606300\r\n[About]\r\n");
    EXPECT_EQ(result.outcome, ProjectResult::Outcome::kStopped);
    EXPECT_EQ(bench.grid("Basic").rows(), 2);
    EXPECT_EQ(bench.visible(), Names{"VLoop"});
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(Open1, LeavesOtherWindowsAlone) {
    ProjectBench bench;
    bench.show("VLoop");
    bench.grid("VLoop").set_text(1, "7");
    bench.open("[Basic]\r\n606000,1,DEC\r\n");
    EXPECT_EQ(bench.visible(), (Names{"Basic", "VLoop"}));
    EXPECT_EQ(bench.grid("VLoop").row(1).value, "7");
}

TEST(Open1, LeavesMustFreshAsItIs) {
    ProjectBench bench;
    bench.window("Basic").must_fresh = false;
    bench.open("[Basic]\r\n606000,1,DEC\r\n[VLoop]\r\n606000,1,DEC\r\n");
    EXPECT_FALSE(bench.window("Basic").must_fresh);
    EXPECT_TRUE(bench.window("VLoop").must_fresh);
}

TEST(Open1, DoesNotSendThePollerToThePages) {
    ProjectBench bench;
    const auto before = bench.workstation.engine.state.Com_Change;
    bench.workstation.engine.state.sub_Pointer = 2;
    bench.open("[Basic]\r\n606000,1,DEC\r\n");
    EXPECT_EQ(bench.workstation.engine.state.Com_Change, before);
    EXPECT_EQ(bench.workstation.engine.state.sub_Pointer, 2);
}

TEST(Open1, WritesNothingToTheDrive) {
    ProjectBench bench;
    bench.port.opened = true;  // or nothing could be seen
    bench.open("[Basic]\r\n607A00,10000,inc\r\n");
    EXPECT_TRUE(bench.port.sent.empty());
}

TEST(Open1, ClosesAnEditorThatIsOpenOnThePage) {
    ProjectBench bench;
    bench.port.opened = true;
    params::PageGrid& grid = bench.grid("Basic");
    grid.set_current({3, params::kValue});
    ASSERT_EQ(grid.open_editor(), params::Editor::kText);
    bench.open("[Basic]\r\n606000,1,DEC\r\n");
    EXPECT_EQ(grid.editor().open, params::Editor::kNone);
    EXPECT_LT(grid.current().row, grid.rows());
    EXPECT_EQ(grid.editor_key(params::kKeyEnter, "5"), params::kKeySwallowed);
    EXPECT_TRUE(bench.port.sent.empty());
}

TEST(Open1, WithoutAScreenTheWindowIsVisibleAllTheSame) {
    ProjectBench bench;
    bench.workstation.screen = nullptr;
    bench.open("[Basic]\r\n606000,1,DEC\r\n");
    EXPECT_EQ(bench.visible(), Names{"Basic"});
}

TEST(Open1, EveryWindowButTheLastCanBeNamed) {
    ProjectBench bench;
    std::string bytes;
    for (const std::string_view name : link::kAllWindowNames)
        bytes += "[" + std::string(name) + "]\r\n";
    bench.open(bytes);
    EXPECT_EQ(bench.visible().size(), 39U);
    EXPECT_FALSE(bench.window("modbus").visible());
}

TEST(Project, SavedAndOpenedInAnotherRunGivesTheSameWindowsAndRowsProperty) {
    ProjectBench first;
    ProjectBench second;
    EXPECT_TRUE(rc::check("the working set comes back", [&] {
        first.project.new1();
        second.project.new1();
        for (link::Window* window : first.workstation.engine.all_windows) {
            if (window->name() == "modbus") continue;
            window->set_visible(*rc::gen::weightedElement<bool>({{3, false}, {1, true}}));
        }
        const std::vector<dictionary::Identity> keys{0x606000, 0x606300, 0x607A00,
                                                     0x60FF00, 0x607100, 0xABCDEF};
        for (const auto& page : first.workstation.pages) {
            std::vector<params::Row> rows(*rc::gen::inRange<std::size_t>(0, 4));
            for (std::size_t i = 0; i < rows.size(); ++i)
                rows[i] = params::restore_row(
                    first.workstation.dictionary, *rc::gen::elementOf(keys), static_cast<int>(i),
                    Language::kEnglish, *rc::gen::elementOf(Names{"", "1", "-7.50", "?????", "文"}),
                    *rc::gen::elementOf(Names{"DEC", "HEX", "rpm", "转"}));
            page->grid().set_rows(rows);
        }
        RC_ASSERT(first.project.save1(second.path()).outcome == ProjectResult::Outcome::kDone);
        RC_ASSERT(second.project.open1(second.path()).outcome == ProjectResult::Outcome::kDone);
        RC_ASSERT(second.visible() == first.visible());
        for (const auto& page : first.workstation.pages) {
            if (!page->visible()) continue;
            const params::PageGrid& wanted = page->grid();
            const params::PageGrid& got = second.grid(page->name());
            RC_ASSERT(got.rows() == wanted.rows());
            for (int row = 1; row < wanted.rows(); ++row) {
                RC_ASSERT(got.read_only_cell(row, 1) == wanted.read_only_cell(row, 1));
                for (int column = 0; column < params::kColumns; ++column)
                    RC_ASSERT(got.cell(row, column) == wanted.cell(row, column));
            }
        }
    }));
}

}  // namespace
}  // namespace servo::app
