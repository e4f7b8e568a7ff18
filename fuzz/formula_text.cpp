// Formula lists and expressions: every text ends in a number, a text or a refusal, and a compiled
// line gives the bits of the text evaluator.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/gbk.h"
#include "params/codec.h"
#include "params/compiled_formula.h"
#include "params/formula.h"

using namespace servo;

namespace {

// Longer texts only make the fuzzer slow; the counters' limits are tested elsewhere.
constexpr std::size_t kLongest = 2048;

void require(bool holds) {
    if (!holds) std::abort();
}

// Numbers off the front of the input; 0 when it has run out.
class Numbers {
  public:
    explicit Numbers(std::string_view& input) : input_(input) {}

    std::int32_t next() {
        std::int32_t number = 0;
        const std::size_t bytes = std::min(sizeof number, input_.size());
        std::memcpy(&number, input_.data(), bytes);
        input_.remove_prefix(bytes);
        return number;
    }

  private:
    std::string_view& input_;
};

template <class Number>
void compare(std::string_view unit, const std::string& list, const std::vector<Number>& samples,
             const link::FormulaOperands& operands) {
    std::vector<double> out(samples.size());
    const bool good = params::CompiledFormula(unit, list, operands)
                          .convert(std::span<const Number>(samples), out);
    bool told_good = true;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto told =
            params::value_to_unit(static_cast<double>(samples[i]), unit, list, 4, operands);
        told_good = told_good && told.has_value();
        require(std::bit_cast<std::uint64_t>(out[i]) ==
                std::bit_cast<std::uint64_t>(told.value_or(0)));
    }
    require(good == told_good);
}

void check_units(std::string_view unit, const std::string& list, std::int32_t value,
                 const link::FormulaOperands& operands) {
    const std::vector<std::int32_t> samples = {
        value, 0, 1, -1, static_cast<std::int16_t>(value), static_cast<std::uint8_t>(value),
        ~value};
    compare(unit, list, samples, operands);
    const std::vector<double> numbers = {value / 8.0, value * 1e6, value * 1e9, -0.0, value / 1e7};
    compare(unit, list, numbers, operands);
    for (const int size : {1, 2, 4, 11, 12, 14, 6, 0}) {
        const auto text = params::value_to_text(value, unit, list, size, operands);
        require(!text || text->size() < 400);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.size() > kLongest) return 0;
    Numbers numbers(input);
    link::FormulaOperands operands;
    const std::int32_t value = numbers.next();
    operands.o64100320 = {numbers.next(), (value & 1) != 0};
    operands.o65100310 = {static_cast<std::int16_t>(operands.o64100320.value), true};
    operands.o30400710 = {numbers.next(), (value & 2) != 0};
    operands.o60F61310 = {-operands.o65100310.value, true};
    operands.o60F61110 = {operands.o30400710.value % 10, false};

    const auto number = params::eval_expression(input);
    require(!number || std::isfinite(*number));

    const params::FormulaHead head = params::split_formula(params::first_line(input));
    require(base::utf8_length(head.unit) <= 20 && base::utf8_length(head.formula) <= 64);

    const std::string list(input);
    check_units(head.unit, list, value, operands);
    check_units("x", "[x]" + list, value, operands);

    const std::string_view typed = input.substr(0, 10);
    for (const std::string_view unit : {std::string_view(head.unit), std::string_view("DEC"),
                                        std::string_view("HEX"), std::string_view("ASCII")}) {
        const auto raw = params::text_to_value(typed, unit, list, operands);
        if (raw) params::commit_value(*raw);
    }
    params::text_to_value(typed, "x", "[x DEC]" + list, operands);
    return 0;
}
