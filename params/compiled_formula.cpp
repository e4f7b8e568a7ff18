#include "params/compiled_formula.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "params/compiled_formula_program.h"
#include "params/compiled_formula_symbols.h"
#include "params/formula.h"

namespace servo::params {

namespace {

enum class Way : std::uint8_t {
    kRounded,  // `DEC`, `INC`, `inc`, `HEX`
    kNothing,  // no line gives the unit: 0
    kPrograms,
    kByText,
};

// A whole number that its own text gives back.
bool is_exact_sample(double value) {
    return std::fabs(value) < kExactSamples && std::trunc(value) == value;
}

constexpr bool is_exact_sample(std::int32_t) {
    return true;
}

bool is_refused(const ProgramPair& pair) {
    return pair.from_zero.end == WalkEnd::kRefused || pair.negative.end == WalkEnd::kRefused;
}

}  // namespace

struct CompiledFormula::Data {
    Way way = Way::kNothing;
    std::string expression;
    link::FormulaOperands operands;
    ProgramPair programs;
    bool one_program = false;  // the sign of a sample makes no difference

    bool by_text(double value, double& out) const {
        const auto result = eval_with_value(expression, value, operands);
        out = result.value_or(0);
        return result.has_value();
    }

    template <class Sample>
    bool by_program(std::span<const Sample> samples, double* buffers, std::span<double> out) const;
    template <class Sample>
    bool by_either(std::span<const Sample> samples, double* buffers, std::span<double> out) const;
    template <class Sample>
    bool block(std::span<const Sample> samples, double* buffers, std::span<double> out) const;
    template <class Sample>
    bool convert(std::span<const Sample> samples, std::span<double> out) const;
};

// One block of exact samples.
template <class Sample>
bool CompiledFormula::Data::by_program(std::span<const Sample> samples, double* buffers,
                                       std::span<double> out) const {
    if (!one_program) return by_either(samples, buffers, out);
    run_program(programs.from_zero, samples, buffers, out);
    return programs.from_zero.end != WalkEnd::kToCaller;
}

// Both programs see the whole block, and each sample takes the result that its sign asks for.
template <class Sample>
bool CompiledFormula::Data::by_either(std::span<const Sample> samples, double* buffers,
                                      std::span<double> out) const {
    std::array<double, kBlock> negative{};
    run_program(programs.from_zero, samples, buffers, out);
    run_program(programs.negative, samples, buffers, negative);
    bool any_negative = false;
    bool any_other = false;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const bool is_negative = samples[i] < 0;
        out[i] = is_negative ? negative[i] : out[i];
        any_negative = any_negative || is_negative;
        any_other = any_other || !is_negative;
    }
    return !(any_other && programs.from_zero.end == WalkEnd::kToCaller) &&
           !(any_negative && programs.negative.end == WalkEnd::kToCaller);
}

template <class Sample>
bool CompiledFormula::Data::block(std::span<const Sample> samples, double* buffers,
                                  std::span<double> out) const {
    const auto exact = [](Sample sample) { return is_exact_sample(sample); };
    if (std::all_of(samples.begin(), samples.end(), exact))
        return by_program(samples, buffers, out);
    bool good = true;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const bool done = exact(samples[i])
                              ? by_program(samples.subspan(i, 1), buffers, out.subspan(i, 1))
                              : by_text(static_cast<double>(samples[i]), out[i]);
        good = good && done;
    }
    return good;
}

template <class Sample>
bool CompiledFormula::Data::convert(std::span<const Sample> samples, std::span<double> out) const {
    const std::size_t count = std::min(samples.size(), out.size());
    bool good = true;
    switch (way) {
        case Way::kRounded:
            for (std::size_t i = 0; i < count; ++i) {
                out[i] = std::round(static_cast<double>(samples[i])) + 0.0;
            }
            return true;
        case Way::kNothing:
            std::fill_n(out.begin(), count, 0.0);
            return true;
        case Way::kPrograms: {
            const std::size_t buffers =
                std::max(programs.from_zero.buffers, programs.negative.buffers);
            // A program of one buffer works in `out` alone.
            std::vector<double> scratch(buffers > 1 ? buffers * kBlock : 0);
            for (std::size_t at = 0; at < count; at += kBlock) {
                const std::size_t length = std::min(kBlock, count - at);
                const bool done =
                    block(samples.subspan(at, length), scratch.data(), out.subspan(at, length));
                good = good && done;
            }
            return good;
        }
        case Way::kByText:
            for (std::size_t i = 0; i < count; ++i) {
                const bool done = by_text(static_cast<double>(samples[i]), out[i]);
                good = good && done;
            }
            return good;
    }
    return false;
}

CompiledFormula::CompiledFormula(std::string_view unit, std::string_view list,
                                 const link::FormulaOperands& operands) {
    auto data = std::make_unique<Data>();
    const auto expression = unit_expression(unit, list);
    if (is_decimal_unit(unit) || unit == "HEX") {
        data->way = Way::kRounded;
    } else if (expression) {
        data->expression = *expression;
        data->operands = operands;
        data->programs = compile_expression(*expression, operands);
        data->one_program = data->programs.from_zero == data->programs.negative;
        data->way = is_refused(data->programs) ? Way::kByText : Way::kPrograms;
    }
    data_ = std::move(data);
}

CompiledFormula::~CompiledFormula() = default;
CompiledFormula::CompiledFormula(CompiledFormula&&) noexcept = default;
CompiledFormula& CompiledFormula::operator=(CompiledFormula&&) noexcept = default;

bool CompiledFormula::is_fast() const {
    return data_->way != Way::kByText;
}

bool CompiledFormula::convert(std::span<const std::int32_t> raw, std::span<double> out) const {
    return data_->convert(raw, out);
}

bool CompiledFormula::convert(std::span<const double> values, std::span<double> out) const {
    return data_->convert(values, out);
}

}  // namespace servo::params
