#include "tools/position_table_file.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"
#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kComma = ',';

// The columns of a step in the order of its fields.
constexpr std::array kStepFields{step_column::kIdx,    step_column::kPos,    step_column::kSpeed,
                                 step_column::kDelay,  step_column::kAccIdx, step_column::kDecIdx,
                                 step_column::kCtlReg, step_column::kLoops,  step_column::kRest};
constexpr std::size_t kRegisterField = 6;

template <std::size_t Count>
using Fields = std::array<std::string_view, Count>;

// False for any other number of fields.
template <std::size_t Count>
bool split(std::string_view line, Fields<Count>& fields) {
    for (std::size_t field = 0; field < Count; ++field) {
        const std::size_t comma = line.find(kComma);
        const bool last = field + 1 == Count;
        if (last != (comma == std::string_view::npos)) return false;
        fields[field] = line.substr(0, comma);
        if (!last) line.remove_prefix(comma + 1);
    }
    return true;
}

// The row that a first field names; 0 for none. An index below 0 names no row either.
int row_of(std::string_view field, int highest) {
    const double index = base::leading_number(field);
    if (!(index <= highest)) return 0;
    const std::int64_t whole = base::round_half_even(index);
    return whole < 0 ? 0 : static_cast<int>(whole) + 1;
}

class Reader {
  public:
    Reader(PositionGrids& grids, const ListItems& combo2) : grids_(grids), combo2_(combo2) {}

    void take(const std::string& line) {
        if (line.empty()) {
            ramps_follow_ = true;
        } else if (!(ramps_follow_ ? take_ramp(line) : take_step(line))) {
            ++rows_.skipped;
        }
    }

    PositionFileRows rows() const {
        PositionFileRows rows = rows_;
        rows.all_steps = steps_seen_.all();
        rows.all_ramps = ramps_seen_.all();
        return rows;
    }

  private:
    bool take_step(std::string_view line) {
        Fields<kStepFields.size()> fields;
        if (!split(line, fields)) return false;
        const int row = row_of(fields[0], kPositionSteps - 1);
        if (row == 0) return false;
        StepGrid& steps = grids_.MSHFlexGrid2;
        for (std::size_t field = 1; field < fields.size(); ++field)
            steps.at(row, kStepFields[field]) = fields[field];
        set_register_texts(steps, row, register_of_text(fields[kRegisterField]), combo2_);
        steps_seen_.set(static_cast<std::size_t>(row - 1));
        ++rows_.steps;
        return true;
    }

    bool take_ramp(std::string_view line) {
        Fields<ramp_column::kCount> fields;
        if (!split(line, fields)) return false;
        const int row = row_of(fields[0], kPositionRamps - 1);
        if (row == 0) return false;
        grids_.MSHFlexGrid1.at(row, ramp_column::kAcc) = fields[1];
        grids_.MSHFlexGrid1.at(row, ramp_column::kDec) = fields[2];
        ramps_seen_.set(static_cast<std::size_t>(row - 1));
        ++rows_.ramps;
        return true;
    }

    PositionGrids& grids_;
    const ListItems& combo2_;
    bool ramps_follow_ = false;
    PositionFileRows rows_;
    std::bitset<kPositionSteps> steps_seen_;
    std::bitset<kPositionRamps> ramps_seen_;
};

}  // namespace

std::string position_file_bytes(const PositionGrids& grids) {
    std::string text;
    for (int row = 1; row < StepGrid::kRows; ++row) {
        for (const int column : kStepFields) {
            if (column != kStepFields.front()) text += kComma;
            text += grids.MSHFlexGrid2.at(row, column);
        }
        text += kLineEnd;
    }
    text += kLineEnd;
    for (int row = 1; row < RampGrid::kRows; ++row) {
        for (int column = 0; column < RampGrid::kColumns; ++column) {
            if (column != 0) text += kComma;
            text += grids.MSHFlexGrid1.at(row, column);
        }
        text += kLineEnd;
    }
    return base::utf8_to_gbk(text);
}

PositionFileRows take_position_file(std::string_view bytes, PositionGrids& grids,
                                    const ListItems& combo2) {
    Reader reader(grids, combo2);
    base::LineReader lines(bytes);
    while (const auto line = lines.next())
        reader.take(base::gbk_to_utf8(*line));
    return reader.rows();
}

bool write_position_file(const std::filesystem::path& file, const PositionGrids& grids) {
    return base::write_file(file, position_file_bytes(grids));
}

}  // namespace servo::tools
