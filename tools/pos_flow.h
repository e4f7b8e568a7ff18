// The form `PosFlow` without its window: what the controls hold, what a click or a key does, and
// the custom window that the poller sees. Who shows it passes events in and observes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "base/notice.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "link/window.h"
#include "tools/position_table.h"
#include "tools/position_table_file.h"
#include "tools/position_table_findings.h"
#include "tools/position_table_job.h"
#include "tools/position_table_motion.h"

namespace servo::tools {

// Captions; each carries both languages, as the controls' tags do.
inline constexpr std::string_view kPosFlowCaption = "位置表模式/Position Table Mode";
struct PosFlowText {
    std::string_view control;
    std::string_view text;
};
std::span<const PosFlowText> pos_flow_texts();

inline constexpr std::string_view kPosFlowPage = "\\sys\\PosFlow.ini";

struct PositionFileQuestion {
    bool save = false;
    std::string_view filter = "pft (*.pft)|*.pft";
    std::string_view kind = "pft";
    std::string_view suffix = "pft";
};

// The box that lies over a cell.
enum class PosFlowBox : std::uint8_t { kNone, kCombo1, kCombo2, kText2, kText3, kText4 };
struct PosFlowEditor {
    PosFlowBox box = PosFlowBox::kNone;
    int row = 0;
    int column = 0;
    std::string
        text;  // of a text box: what it opens with, all selected; empty behind a wrong entry
    int selected = -1;  // of a drop-down
};

class PosFlowObserver {
  public:
    PosFlowObserver() = default;
    PosFlowObserver(const PosFlowObserver&) = delete;
    PosFlowObserver& operator=(const PosFlowObserver&) = delete;
    virtual ~PosFlowObserver() = default;

    // Cells, headings, the selected row. During a job up to every few milliseconds: a window may
    // gather them.
    virtual void grids_changed() = 0;
    virtual void editor_changed() = 0;
    virtual void labels_changed() = 0;  // progress, results, the live index, the start step
};

// References outlive the form.
struct PosFlowServices {
    link::Engine& engine;
    base::Notice& notice;
    const base::Language& language;
    const dictionary::Store& dictionary;
    // The path that the user chose, UTF-8; nothing when he cancelled.
    std::function<std::optional<std::string>(const PositionFileQuestion&)> ask_file;
};

class PosFlow final : public link::PollWindow, private TableJobObserver {
  public:
    // Enters its job into the engine.
    explicit PosFlow(PosFlowServices services);
    ~PosFlow() override;

    // Form load: the page's keys and the transfer list, from below the program's folder. What can't
    // be read stays empty; a list that can't be read makes both jobs refuse.
    void load(const std::filesystem::path& folder);

    void set_observer(PosFlowObserver* observer) { observer_ = observer; }  // may be null
    const PosFlowData& data() const { return data_; }
    const PosFlowEditor& editor() const { return editor_; }
    base::Language language() const { return services_.language; }
    bool job_running() const { return job_.active(); }

    void Command1_Click();  // read the table from the drive
    void Command2_Click();  // write it there
    void Command3_Click();  // import a file
    void Command4_Click();  // export to a file
    void Command5_Click();  // clear

    // A click in a cell; Enter on the current cell is the same. Rows and columns of the grid.
    void MSHFlexGrid1_Click(int row, int column);
    void MSHFlexGrid2_Click(int row, int column);
    void MSHFlexGrid3_Click(int row, int column);

    // A key in the text box that is open, before the box takes it. The key that goes into the box,
    // or 0. Enter commits what the box holds, Escape leaves.
    char32_t editor_key(char32_t key, std::string_view text);
    // The user's pick in the drop-down that is open.
    void Combo_Click(int position);
    void hide_editors();

    // Decodes a register into `MSHFlexGrid3` and into a row (1 to 32) of `MSHFlexGrid2`.
    void update_CTL_REG(int row, std::uint16_t value);
    // Headings and lists in the current language.
    void change_my_language();

    // The page of the live index.
    bool custom() const override { return true; }
    int get_ODS_Num() const override { return static_cast<int>(rows_.size()) - 1; }
    link::Identity get_ods(int row) const override;
    std::string_view get_odtype(int row) const override;
    void set_ods(int row, double value) override;

    // Import and export with the file already chosen. False when it could not be read or written.
    bool import_file(const std::filesystem::path& file);
    bool export_file(const std::filesystem::path& file) const;
    const PositionFileRows& imported() const { return imported_; }  // by the last import

    // --- Additions
    // The step that runs, or ran last, from the live index; -1 when none is known.
    int running_step() const { return running_step_; }
    // How the last job ended; nothing before the first, and while one runs.
    const std::optional<TableJobEnd>& job_end() const { return job_end_; }
    std::int32_t last_job() const { return last_job_; }  // kReadTable, kWriteTable, or 0
    // The object that the job stands at, or the last one stood at.
    int job_row() const { return job_running() ? services_.engine.state.batch_row : ended_row_; }
    // Where flow and motion begin.
    int start_step() const { return start_step_; }
    void set_start_step(int step);
    // Increments per turn for the motion: the drive's, or what stands in for it.
    double resolution() const;
    bool resolution_known() const;

    void select_row(int row);  // as a click in its first column
    std::string copy_rows(int first_row, int last_row);
    void paste_rows(int row, std::string_view text);
    // The two entries of a grid's pop-up menu: the selected row to the list of copied ones, and
    // from there into the selected row.
    void copyline();
    void pasteline();
    void fill_down(int first_row, int last_row, int column);
    void clear_rows(int first_row, int last_row);
    bool can_undo() const { return !undo_.empty(); }
    void undo();

    // What flow, findings and motion say of the table as it stands.
    struct Picture {
        PositionProgram program;
        Flow flow;
        std::vector<Finding> findings;
        Motion motion;
    };
    Picture picture() const;

  private:
    struct LiveRow {
        link::Identity object = 0;
        std::string type;
    };

    void table_job_moved() override;
    void table_job_ended(TableJobEnd end) override;
    void link_was_closed() override;

    bool may_begin();
    void begin(std::int32_t mode);
    void open_text(PosFlowBox box, int row, int column, const std::string& text);
    void show_register();
    void commit(std::string_view text);
    void commit_field(std::string_view text);
    void wrong_entry();
    void take_register();
    void say(base::Text text);
    void remember();
    void grids_changed();
    void labels_changed();

    PosFlowServices services_;
    PosFlowData data_;
    TableJob job_;
    PosFlowObserver* observer_ = nullptr;
    PosFlowEditor editor_;
    std::vector<LiveRow> rows_;
    PositionFileRows imported_;
    std::optional<TableJobEnd> job_end_;
    std::int32_t last_job_ = 0;
    int ended_row_ = 0;
    int running_step_ = -1;
    int start_step_ = 0;
    std::string copied_;
    std::vector<PositionGrids> undo_;
};

}  // namespace servo::tools
