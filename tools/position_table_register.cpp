#include "tools/position_table_register.h"

#include <cmath>
#include <cstddef>

#include "base/number.h"
#include "params/codec.h"

namespace servo::tools {

namespace {
constexpr int kRegisterRange = 0x10000;
}

int register_field_of(std::uint16_t value, int field) {
    const RegisterField& told = kRegisterFields.at(static_cast<std::size_t>(field));
    return (value >> told.shift) & told.mask;
}

RegisterValues decode_register(std::uint16_t value) {
    RegisterValues fields{};
    for (int field = 0; field < kRegisterColumns; ++field)
        fields[static_cast<std::size_t>(field)] = register_field_of(value, field);
    return fields;
}

std::uint16_t compose_register(const RegisterValues& fields) {
    int value = 0;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        const RegisterField& told = kRegisterFields[field];
        value |= (fields[field] & told.mask) << told.shift;
    }
    return static_cast<std::uint16_t>(value);
}

std::uint16_t register_of_text(std::string_view text) {
    double value = params::hex_value(text);
    if (!std::isfinite(value)) return 0;
    if (value < 0) value += kRegisterRange;
    // Eight digits may still be below zero here; their low 16 bits are the same in both ranges.
    value = std::fmod(value, kRegisterRange);
    if (value < 0) value += kRegisterRange;
    return static_cast<std::uint16_t>(value);
}

std::string register_text(std::uint16_t value) {
    return base::hex_text(value);
}

void set_register_texts(StepGrid& steps, int row, std::uint16_t value, const ListItems& combo2) {
    steps.at(row, step_column::kMode) =
        item_text(kCombo1Items, register_field_of(value, register_field::kMode));
    steps.at(row, step_column::kStartCond) =
        item_text(combo2, register_field_of(value, register_field::kStartCond));
}

void update_CTL_REG(PositionGrids& grids, int row, std::uint16_t value, const ListItems& combo2) {
    const RegisterValues fields = decode_register(value);
    for (int field = 0; field < kRegisterColumns; ++field)
        grids.MSHFlexGrid3.at(register_row::kValues, field) =
            std::to_string(fields[static_cast<std::size_t>(field)]);
    set_register_texts(grids.MSHFlexGrid2, row, value, combo2);
    grids.MSHFlexGrid2.at(row, step_column::kCtlReg) = register_text(value);
}

std::uint16_t compose_from_grid(const RegisterGrid& fields) {
    RegisterValues values{};
    for (int field = 0; field < kRegisterColumns; ++field) {
        const double entered = base::leading_number(fields.at(register_row::kValues, field));
        values[static_cast<std::size_t>(field)] =
            static_cast<int>(base::round_half_even(entered) & 0xFFFF);
    }
    return compose_register(values);
}

}  // namespace servo::tools
