// One line of a formula list made ready for many samples, as the scope needs it.
//
// The text evaluator stays the authority: a compiled formula gives the same bits for every sample.
// The line is worked through once by the very same passes, with a placeholder where the number
// would be pasted, once as for a number from 0 up and once as for a negative one, whose "-" cuts
// the text. What comes out is a list of operations in their written order; none is reordered or
// joined with a neighbour. Where the pasted digits could mean anything else than their number
// (`2N`, `NE3`, `N!`, a reference that only the digits complete), and for samples whose text is not
// exact, each sample goes through the text evaluator.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "link/drive_values.h"

namespace servo::params {

class CompiledFormula {
  public:
    // What `value_to_unit` does with this unit, list and operands; nothing of them is referred to
    // later. A change of the operands needs a new compilation.
    CompiledFormula(std::string_view unit, std::string_view list,
                    const link::FormulaOperands& operands);
    ~CompiledFormula();
    CompiledFormula(CompiledFormula&&) noexcept;
    CompiledFormula& operator=(CompiledFormula&&) noexcept;

    // True when samples do not go through the text evaluator.
    bool is_fast() const;

    // out[i] is `value_to_unit` of raw[i]; `out` holds as many numbers as `raw`. False when any
    // sample is a failure that goes to the caller; such samples are 0 in `out`.
    bool convert(std::span<const std::int32_t> raw, std::span<double> out) const;

    // The same for numbers of any kind. Whole numbers of up to 15 digits are fast.
    bool convert(std::span<const double> values, std::span<double> out) const;

  private:
    struct Data;
    std::unique_ptr<const Data> data_;
};

}  // namespace servo::params
