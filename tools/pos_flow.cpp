#include "tools/pos_flow.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/file.h"
#include "base/number.h"
#include "params/page_editor.h"
#include "params/page_loader.h"
#include "params/row.h"
#include "tools/position_table_entry.h"
#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

constexpr base::Text kNoList{"位置流cdo文件初始化失败!", "Position Flow cdo file init failed!"};
constexpr base::Text kNoResolution{
    "编码器数据未初始化，不能确定速度的单位!",
    "Encoder data not initialized,can't fix the unit of speed,failed!"};
constexpr base::Text kOtherJob{"正在传输配置，请等待其结束。",
                               "A configuration is being transferred: wait for its end."};
constexpr base::Text kWrongSetting{"输入错误!", "Wrong Setting!"};

constexpr std::array kTexts{
    PosFlowText{"Command1", "读取配置表/Read Table"},
    PosFlowText{"Command2", "写入配置表/Write Table"},
    PosFlowText{"Command3", "导入配置表/Import Table"},
    PosFlowText{"Command4", "导出配置表/Export Table"},
    PosFlowText{"Command5", "清空配置表/Clear Table"},
    PosFlowText{"Label1", "当前索引/Current Index"},
};

// As the form is stored: its third English item has a mark that the first switch takes away.
ListItems stored_items(base::Language language) {
    ListItems items = combo2_items(language);
    if (language == base::Language::kEnglish) items.back() = kStoredInterrupt;
    return items;
}

}  // namespace

std::span<const PosFlowText> pos_flow_texts() {
    return kTexts;
}

PosFlow::PosFlow(PosFlowServices services)
    : PollWindow("PosFlow"), services_(std::move(services)), job_(data_, services_.engine, *this) {
    data_.Combo2 = stored_items(services_.language);
    data_.grids = make_grids(services_.language, data_.Combo2);
    services_.engine.add_job(link::JobPlace::kPositionFlow, job_);
}

PosFlow::~PosFlow() {
    services_.engine.remove_job(link::JobPlace::kPositionFlow, job_);
}

void PosFlow::load(const std::filesystem::path& folder) {
    rows_.clear();
    for (const dictionary::Identity key :
         params::load_page_keys(folder, kPosFlowPage).value_or(std::vector<link::Identity>{})) {
        const dictionary::ObjectRecord record = services_.dictionary.get_record(key);
        rows_.push_back({key, dictionary::strip_blanks(record.type)});
    }
    data_.list = load_transfer_list(folder);
}

// --- Buttons

bool PosFlow::may_begin() {
    if (!data_.list) {
        say(kNoList);
        return false;
    }
    if (!resolution_known()) {
        say(kNoResolution);
        return false;
    }
    // The configuration's jobs have the same selector: one that runs would end in the middle.
    const std::int32_t mode = services_.engine.state.batch_mode;
    if (mode != 0 && mode != kReadTable && mode != kWriteTable) {
        say(kOtherJob);
        return false;
    }
    return true;
}

void PosFlow::begin(std::int32_t mode) {
    job_end_.reset();
    last_job_ = mode;
    job_.start(mode);
}

void PosFlow::Command1_Click() {
    if (!may_begin()) return;
    remember();
    clear_grids(data_.grids, data_.Combo2);
    begin(kReadTable);
    hide_editors();
    grids_changed();
    labels_changed();
}

void PosFlow::Command2_Click() {
    if (!may_begin()) return;
    begin(kWriteTable);
    labels_changed();
}

void PosFlow::Command3_Click() {
    if (const auto file = services_.ask_file(PositionFileQuestion{.save = false}))
        import_file(*file);
}

void PosFlow::Command4_Click() {
    if (const auto file = services_.ask_file(PositionFileQuestion{.save = true}))
        export_file(*file);
}

void PosFlow::Command5_Click() {
    remember();
    clear_grids(data_.grids, data_.Combo2);
    hide_editors();
    grids_changed();
}

bool PosFlow::import_file(const std::filesystem::path& file) {
    const auto content = base::read_file(file);
    if (!content) return false;
    remember();
    imported_ = take_position_file(*content, data_.grids, data_.Combo2);
    hide_editors();
    show_register();
    return true;
}

bool PosFlow::export_file(const std::filesystem::path& file) const {
    return write_position_file(file, data_.grids);
}

// --- Clicks

void PosFlow::select_row(int row) {
    if (row < 1 || row > kPositionSteps) return;
    data_.selected_row = row;
    set_headings(data_.grids, row, language());
    show_register();
}

void PosFlow::MSHFlexGrid2_Click(int row, int column) {
    if (row < 1 || !StepGrid::holds(row, column)) {
        hide_editors();
        return;
    }
    select_row(row);
    const std::string& text = data_.grids.MSHFlexGrid2.at(row, column);
    switch (step_editor(column)) {
        case StepEditor::kNone:
            hide_editors();
            break;
        case StepEditor::kText:
            open_text(PosFlowBox::kText2, row, column, text);
            break;
        case StepEditor::kCombo: {
            const bool mode = column == step_column::kMode;
            const ListItems& items = mode ? kCombo1Items : data_.Combo2;
            const auto found = std::ranges::find(items, text);
            editor_ = {
                .box = mode ? PosFlowBox::kCombo1 : PosFlowBox::kCombo2,
                .row = row,
                .column = column,
                .text = text,
                .selected = found == items.end() ? -1 : static_cast<int>(found - items.begin())};
            if (observer_ != nullptr) observer_->editor_changed();
            break;
        }
    }
}

void PosFlow::MSHFlexGrid1_Click(int row, int column) {
    if (row < 1 || !RampGrid::holds(row, column) || column == ramp_column::kIndex)
        hide_editors();
    else
        open_text(PosFlowBox::kText4, row, column, data_.grids.MSHFlexGrid1.at(row, column));
}

void PosFlow::MSHFlexGrid3_Click(int row, int column) {
    if (row != register_row::kValues || !RegisterGrid::holds(row, column))
        hide_editors();
    else
        open_text(PosFlowBox::kText3, row, column, data_.grids.MSHFlexGrid3.at(row, column));
}

void PosFlow::open_text(PosFlowBox box, int row, int column, const std::string& text) {
    editor_ = {.box = box, .row = row, .column = column, .text = text, .selected = -1};
    if (observer_ != nullptr) observer_->editor_changed();
}

void PosFlow::hide_editors() {
    if (editor_.box == PosFlowBox::kNone) return;
    editor_ = {};
    if (observer_ != nullptr) observer_->editor_changed();
}

// --- Entries

char32_t PosFlow::editor_key(char32_t key, std::string_view text) {
    if (key == params::kKeyEsc) {
        hide_editors();
        return params::kKeySwallowed;
    }
    if (key == params::kKeyEnter) {
        commit(text);
        return params::kKeySwallowed;
    }
    return position_key_passes(key, text) ? key : params::kKeySwallowed;
}

void PosFlow::commit(std::string_view text) {
    switch (editor_.box) {
        case PosFlowBox::kNone:
        case PosFlowBox::kCombo1:
        case PosFlowBox::kCombo2:
            return;
        case PosFlowBox::kText2:
            if (!entry_allowed(text, step_limits(editor_.column))) return wrong_entry();
            remember();
            data_.grids.MSHFlexGrid2.at(editor_.row, editor_.column) = text;
            break;
        case PosFlowBox::kText3:
            return commit_field(text);
        case PosFlowBox::kText4:
            if (!entry_allowed(text, kWideLimits)) return wrong_entry();
            remember();
            data_.grids.MSHFlexGrid1.at(editor_.row, editor_.column) = text;
            break;
    }
    hide_editors();
    grids_changed();
}

// The cell keeps what was typed, be it 32 for the next step; the register gets the bits.
void PosFlow::commit_field(std::string_view text) {
    if (text.empty()) return wrong_entry();
    if (!entry_allowed(text, register_limits(editor_.column))) {
        wrong_entry();
        say(kWrongSetting);
        return;
    }
    remember();
    data_.grids.MSHFlexGrid3.at(editor_.row, editor_.column) = text;
    take_register();
    hide_editors();
    grids_changed();
}

void PosFlow::wrong_entry() {
    editor_.text.clear();
    if (observer_ != nullptr) observer_->editor_changed();
}

void PosFlow::Combo_Click(int position) {
    const bool mode = editor_.box == PosFlowBox::kCombo1;
    if (!mode && editor_.box != PosFlowBox::kCombo2) return;
    const ListItems& items = mode ? kCombo1Items : data_.Combo2;
    if (position < 0 || position >= static_cast<int>(items.size())) return;
    remember();
    data_.grids.MSHFlexGrid2.at(editor_.row, editor_.column) = item_text(items, position);
    const int field = mode ? register_field::kMode : register_field::kStartCond;
    data_.grids.MSHFlexGrid3.at(register_row::kValues, field) = std::to_string(position);
    take_register();
    hide_editors();
    grids_changed();
}

// From row 2 of `MSHFlexGrid3` into the selected row.
void PosFlow::take_register() {
    const std::uint16_t value = compose_from_grid(data_.grids.MSHFlexGrid3);
    StepGrid& steps = data_.grids.MSHFlexGrid2;
    steps.at(data_.selected_row, step_column::kCtlReg) = register_text(value);
    set_register_texts(steps, data_.selected_row, value, data_.Combo2);
}

void PosFlow::update_CTL_REG(int row, std::uint16_t value) {
    if (row < 1 || row > kPositionSteps) return;
    tools::update_CTL_REG(data_.grids, row, value, data_.Combo2);
    grids_changed();
}

void PosFlow::show_register() {
    const int row = data_.selected_row;
    update_CTL_REG(row, register_of_text(data_.grids.MSHFlexGrid2.at(row, step_column::kCtlReg)));
}

void PosFlow::change_my_language() {
    data_.Combo2 = combo2_items(language());
    set_headings(data_.grids, data_.selected_row, language());
    // Column 2 shows items of the list, so it follows the list.
    StepGrid& steps = data_.grids.MSHFlexGrid2;
    for (int row = 1; row < StepGrid::kRows; ++row)
        set_register_texts(steps, row, register_of_text(steps.at(row, step_column::kCtlReg)),
                           data_.Combo2);
    hide_editors();
    grids_changed();
}

// --- The page

link::Identity PosFlow::get_ods(int row) const {
    return row >= 0 && row <= get_ODS_Num() ? rows_[static_cast<std::size_t>(row)].object : 0;
}

std::string_view PosFlow::get_odtype(int row) const {
    return row >= 0 && row <= get_ODS_Num()
               ? std::string_view(rows_[static_cast<std::size_t>(row)].type)
               : std::string_view();
}

void PosFlow::set_ods(int row, double value) {
    if (row != 0) return;
    data_.Text1 = base::number_text(value);
    running_step_ = value >= 0 && value < kPositionSteps ? static_cast<int>(value) : -1;
    labels_changed();
}

// --- The job

void PosFlow::table_job_moved() {
    if (services_.engine.state.batch_mode == kReadTable) grids_changed();
    labels_changed();
}

void PosFlow::table_job_ended(TableJobEnd end) {
    job_end_ = end;
    ended_row_ = services_.engine.state.batch_row;
    grids_changed();
    labels_changed();
}

void PosFlow::link_was_closed() {
    running_step_ = -1;
    labels_changed();
}

// --- Helpers

void PosFlow::say(base::Text text) {
    services_.notice.show(base::kNoticeTitle.in(language()), text.in(language()));
}

void PosFlow::grids_changed() {
    if (observer_ != nullptr) observer_->grids_changed();
}

void PosFlow::labels_changed() {
    if (observer_ != nullptr) observer_->labels_changed();
}

}  // namespace servo::tools
