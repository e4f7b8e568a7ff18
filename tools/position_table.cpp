#include "tools/position_table.h"

#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

constexpr std::array<base::Text, step_column::kCount> kStepHeadings{{{"Idx", "Idx"},
                                                                     {"模式", "MODE"},
                                                                     {"触发", "StartCond."},
                                                                     {"位置inc", "Pos inc"},
                                                                     {"速度rpm", "Speed rpm"},
                                                                     {"延时ms", "Delay ms"},
                                                                     {"Acc索引", "Acc idx"},
                                                                     {"Dec索引", "Dec idx"},
                                                                     {"控制寄存器", "CTL Reg"},
                                                                     {"循环", "Loops"},
                                                                     {"剩余", "Rest"}}};
constexpr std::array<base::Text, ramp_column::kCount> kRampHeadings{
    {{"Idx", "Idx"}, {"加速度rps/s", "Acc rps/s"}, {"减速度rps/s", "Dec rps/s"}}};
constexpr base::Text kRegisterHeading{"控制寄存器:", "CTL Reg of index:"};

constexpr std::array<base::Text, kListItems> kCombo2Items{
    {{"忽略", "Ignore"}, {"等待", "Wait"}, {"中断", "Interrupt"}}};

}  // namespace

ListItems combo2_items(base::Language language) {
    ListItems items;
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i] = kCombo2Items[i].in(language);
    return items;
}

std::string_view item_text(const ListItems& items, int value) {
    const auto position = static_cast<std::size_t>(value);
    return value >= 0 && position < items.size() ? items[position] : std::string_view();
}

std::string register_heading(int row, base::Language language) {
    return std::string(kRegisterHeading.in(language)) + std::to_string(row - 1);
}

void set_headings(PositionGrids& grids, int row, base::Language language) {
    for (int column = 0; column < step_column::kCount; ++column)
        grids.MSHFlexGrid2.at(0, column) =
            kStepHeadings[static_cast<std::size_t>(column)].in(language);
    for (int column = 0; column < ramp_column::kCount; ++column)
        grids.MSHFlexGrid1.at(0, column) =
            kRampHeadings[static_cast<std::size_t>(column)].in(language);
    // Merged cells are cells with the same text.
    const std::string heading = register_heading(row, language);
    for (int column = 0; column < kRegisterColumns; ++column) {
        grids.MSHFlexGrid3.at(register_row::kHeading, column) = heading;
        grids.MSHFlexGrid3.at(register_row::kNames, column) =
            kRegisterFields[static_cast<std::size_t>(column)].name.in(language);
    }
}

void clear_grids(PositionGrids& grids, const ListItems& combo2) {
    StepGrid& steps = grids.MSHFlexGrid2;
    for (int row = 1; row < StepGrid::kRows; ++row) {
        for (int column = 0; column < StepGrid::kColumns; ++column)
            steps.at(row, column) = "0";
        steps.at(row, step_column::kIdx) = std::to_string(row - 1);
        steps.at(row, step_column::kMode) = item_text(kCombo1Items, 0);
        steps.at(row, step_column::kStartCond) = item_text(combo2, 0);
    }
    RampGrid& ramps = grids.MSHFlexGrid1;
    for (int row = 1; row < RampGrid::kRows; ++row) {
        ramps.at(row, ramp_column::kIndex) = std::to_string(row - 1);
        ramps.at(row, ramp_column::kAcc) = "0";
        ramps.at(row, ramp_column::kDec) = "0";
    }
    for (int column = 0; column < kRegisterColumns; ++column)
        grids.MSHFlexGrid3.at(register_row::kValues, column) = "0";
}

PositionGrids make_grids(base::Language language, const ListItems& combo2) {
    PositionGrids grids;
    clear_grids(grids, combo2);
    set_headings(grids, 1, language);
    return grids;
}

}  // namespace servo::tools
