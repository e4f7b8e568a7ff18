// What the form does beyond reading, writing and editing: rows by the clipboard, undo, and what the
// pictures show.
#include "tools/pos_flow.h"

#include <algorithm>

#include "tools/position_table_register.h"
#include "tools/position_table_rows.h"

namespace servo::tools {

namespace {
constexpr std::size_t kMostUndo = 50;
constexpr double kUsualResolution = 10000;  // inc per turn, until the drive has told its own
}  // namespace

bool PosFlow::resolution_known() const {
    const link::Operand& operand = services_.engine.values().operands.o64100320;
    // Nothing can be converted by an encoder of 0 increments either.
    return operand.seen && operand.value != 0;
}

double PosFlow::resolution() const {
    return resolution_known() ? services_.engine.values().operands.o64100320.value
                              : kUsualResolution;
}

void PosFlow::set_start_step(int step) {
    start_step_ = std::clamp(step, 0, kPositionSteps - 1);
    labels_changed();
}

std::string PosFlow::copy_rows(int first_row, int last_row) {
    copied_ = tools::copy_rows(data_.grids.MSHFlexGrid2, first_row, last_row);
    return copied_;
}

void PosFlow::paste_rows(int row, std::string_view text) {
    if (row < 1 || row > kPositionSteps) return;
    PositionGrids changed = data_.grids;
    const PasteResult result = tools::paste_rows(changed.MSHFlexGrid2, row, text, data_.Combo2);
    if (result.rows == 0) {
        services_.notice.show(base::kNoticeTitle.in(language()),
                              paste_text(result, changed.MSHFlexGrid2, language()));
        return;
    }
    remember();
    data_.grids = std::move(changed);
    hide_editors();
    select_row(data_.selected_row);
}

void PosFlow::copyline() {
    copy_rows(data_.selected_row, data_.selected_row);
}

void PosFlow::pasteline() {
    if (!copied_.empty()) paste_rows(data_.selected_row, copied_);
}

void PosFlow::fill_down(int first_row, int last_row, int column) {
    PositionGrids changed = data_.grids;
    if (!tools::fill_down(changed.MSHFlexGrid2, first_row, last_row, column, data_.Combo2)) return;
    remember();
    data_.grids = std::move(changed);
    hide_editors();
    select_row(data_.selected_row);
}

void PosFlow::clear_rows(int first_row, int last_row) {
    PositionGrids cleared = data_.grids;
    clear_grids(cleared, data_.Combo2);
    remember();
    for (int row = std::max(1, first_row); row <= std::min(last_row, kPositionSteps); ++row) {
        const auto at = static_cast<std::size_t>(row);
        data_.grids.MSHFlexGrid2.cells.at(at) = cleared.MSHFlexGrid2.cells.at(at);
    }
    hide_editors();
    select_row(data_.selected_row);
}

void PosFlow::remember() {
    if (undo_.size() == kMostUndo) undo_.erase(undo_.begin());
    undo_.push_back(data_.grids);
}

void PosFlow::undo() {
    if (undo_.empty() || job_running()) return;
    data_.grids = std::move(undo_.back());
    undo_.pop_back();
    hide_editors();
    // The language or the selected row may have changed since.
    change_my_language();
    select_row(data_.selected_row);
}

PosFlow::Picture PosFlow::picture() const {
    Picture picture;
    picture.program = read_program(data_.grids);
    picture.flow = analyse_flow(picture.program, start_step_);
    picture.findings = find_faults(data_.grids, picture.program, picture.flow,
                                   resolution_known() ? resolution() : 0.0);
    picture.motion = simulate_motion(picture.program, start_step_, resolution());
    return picture;
}

}  // namespace servo::tools
