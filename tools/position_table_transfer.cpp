#include "tools/position_table_transfer.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>

#include "base/file.h"
#include "base/number.h"
#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

constexpr int kDecoderUint8 = 1;
constexpr int kDecoderUint16 = 2;
constexpr int kDecoderInt32 = 14;

constexpr int kDecimals = 2;
constexpr int kIndexBase = 16;  // the two indexes share a byte
constexpr std::int64_t kIndexMask = 15;

// First line of each block of the list.
constexpr int kDecelerations = 8;
constexpr int kTargets = 16;
constexpr int kSpeeds = 48;
constexpr int kDelays = 80;
constexpr int kRegisters = 112;
constexpr int kLoopCounts = 144;
constexpr int kIndexPairs = 176;

constexpr std::size_t kKeyDigits = 8;

std::optional<dictionary::WireKey> parse_line(std::string_view line) {
    const std::string digits = dictionary::strip_blanks(line);
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number, 16);
    if (digits.size() != kKeyDigits || read.ec != std::errc() || read.ptr != end)
        return std::nullopt;
    const auto length = static_cast<std::uint8_t>(number & 0xFF);
    const bool code = length == 1 || length == 2 || length == 4;
    const std::uint8_t size = code ? length : dictionary::wire_size_of_bits(length);
    if (size == 0) return std::nullopt;
    return (number & 0xFFFFFF00U) | size;
}

double cell_number(const StepGrid& grid, int row, int column) {
    return base::leading_number(grid.at(row, column));
}

std::int32_t fit(double value) {
    const std::int64_t whole = base::round_half_even(value);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        whole, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

std::optional<TransferList> parse_transfer_list(std::string_view content) {
    TransferList list{};
    base::LineReader lines(content);
    for (dictionary::WireKey& key : list) {
        const auto line = lines.next();
        const auto read = line ? parse_line(*line) : std::nullopt;
        if (!read) return std::nullopt;
        key = *read;
    }
    return list;
}

std::optional<TransferList> load_transfer_list(const std::filesystem::path& folder) {
    const auto content = base::read_file(base::find_in(folder, kTransferFile));
    if (!content) return std::nullopt;
    return parse_transfer_list(*content);
}

TransferCell transfer_cell(int line) {
    using namespace step_column;
    if (line < kDecelerations) return {TransferUnit::kRamp, line + 1, ramp_column::kAcc};
    if (line < kTargets) return {TransferUnit::kRamp, line - kDecelerations + 1, ramp_column::kDec};
    if (line < kSpeeds) return {TransferUnit::kPosition, line - kTargets + 1, kPos};
    if (line < kDelays) return {TransferUnit::kSpeed, line - kSpeeds + 1, kSpeed};
    if (line < kRegisters) return {TransferUnit::kCount, line - kDelays + 1, kDelay};
    if (line < kLoopCounts) return {TransferUnit::kRegister, line - kRegisters + 1, kCtlReg};
    if (line < kIndexPairs) return {TransferUnit::kCount, line - kLoopCounts + 1, kLoops};
    return {TransferUnit::kIndexes, line - kIndexPairs + 1, kAccIdx};
}

int transfer_decoder(int line) {
    switch (transfer_cell(line).unit) {
        case TransferUnit::kRamp:
        case TransferUnit::kPosition:
        case TransferUnit::kSpeed:
            return kDecoderInt32;
        case TransferUnit::kCount:
        case TransferUnit::kRegister:
            return kDecoderUint16;
        case TransferUnit::kIndexes:
            return kDecoderUint8;
    }
    return kDecoderInt32;
}

double ramp_from_drive(double value, double resolution) {
    return resolution == 0 ? 0 : value * 1000 * 4000 / 65536 / resolution;
}

double ramp_to_drive(double ramp, double resolution) {
    return ramp * 65536 * resolution / 1000 / 4000;
}

double speed_from_drive(double value, double resolution) {
    return resolution == 0 ? 0 : value * 1875 / 512 / resolution;
}

double speed_to_drive(double speed, double resolution) {
    return speed * 512 * resolution / 1875;
}

void put_value(PositionGrids& grids, int line, double value, double resolution,
               const ListItems& combo2) {
    const auto [unit, row, column] = transfer_cell(line);
    StepGrid& steps = grids.MSHFlexGrid2;
    switch (unit) {
        case TransferUnit::kRamp:
            grids.MSHFlexGrid1.at(row, column) =
                base::format_fixed(ramp_from_drive(value, resolution), kDecimals);
            break;
        case TransferUnit::kSpeed:
            steps.at(row, column) =
                base::format_fixed(speed_from_drive(value, resolution), kDecimals);
            break;
        case TransferUnit::kPosition:
        case TransferUnit::kCount:
            steps.at(row, column) = base::number_text(value);
            break;
        case TransferUnit::kRegister: {
            const auto control = static_cast<std::uint16_t>(value);
            steps.at(row, column) = register_text(control);
            set_register_texts(steps, row, control, combo2);
            break;
        }
        case TransferUnit::kIndexes: {
            // The high half is rounded like every number here, so a low half of 8 or more lifts
            // it. No index of the table is that high.
            const std::int64_t high = base::round_half_even(value / kIndexBase);
            const std::int64_t low = base::round_half_even(value);
            steps.at(row, step_column::kAccIdx) = std::to_string(high & kIndexMask);
            steps.at(row, step_column::kDecIdx) = std::to_string(low & kIndexMask);
            break;
        }
    }
}

std::int32_t value_for_drive(const PositionGrids& grids, int line, double resolution) {
    const auto [unit, row, column] = transfer_cell(line);
    const StepGrid& steps = grids.MSHFlexGrid2;
    switch (unit) {
        case TransferUnit::kRamp:
            return fit(ramp_to_drive(base::leading_number(grids.MSHFlexGrid1.at(row, column)),
                                     resolution));
        case TransferUnit::kSpeed:
            return fit(speed_to_drive(cell_number(steps, row, column), resolution));
        case TransferUnit::kPosition:
        case TransferUnit::kCount:
            return fit(cell_number(steps, row, column));
        case TransferUnit::kRegister:
            return register_of_text(steps.at(row, column));
        case TransferUnit::kIndexes:
            return fit(cell_number(steps, row, step_column::kAccIdx) * kIndexBase +
                       cell_number(steps, row, step_column::kDecIdx));
    }
    return 0;
}

}  // namespace servo::tools
