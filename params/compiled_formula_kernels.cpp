#include "params/compiled_formula_kernels.h"

#include <cmath>
#include <utility>

#include "params/expression_arithmetic.h"

namespace servo::params {

namespace {

constexpr std::size_t kKinds = 4;

template <StepKind kKind>
inline double step(double x, double constant) {
    if constexpr (kKind == StepKind::kMultiply) return x * constant;
    if constexpr (kKind == StepKind::kDivide) return x / constant;
    if constexpr (kKind == StepKind::kAdd) return x + constant;
    return x;
}

// One loop for each combination of kinds, so that the compiler can use the machine's vectors.
template <StepKind kA, StepKind kB, StepKind kC>
struct Kernel {
    static double all(double x, double a, double b, double c) {
        return step<kC>(step<kB>(step<kA>(x, a), b), c);
    }

    static void load(const std::int32_t* raw, double* block, std::size_t count,
                     const Steps& steps) {
        const auto [a, b, c] = steps.constants;
        for (std::size_t i = 0; i < count; ++i)
            block[i] = all(raw[i], a, b, c);
    }

    static void run(double* block, std::size_t count, const Steps& steps) {
        const auto [a, b, c] = steps.constants;
        for (std::size_t i = 0; i < count; ++i)
            block[i] = all(block[i], a, b, c);
    }
};

struct Entry {
    void (*load)(const std::int32_t*, double*, std::size_t, const Steps&) = nullptr;
    void (*run)(double*, std::size_t, const Steps&) = nullptr;
};

// Kinds without a gap: kNone only behind the last.
constexpr bool is_used(std::size_t a, std::size_t b, std::size_t c) {
    return (a != 0 || b == 0) && (b != 0 || c == 0);
}

template <std::size_t kCode>
constexpr Entry entry() {
    constexpr std::size_t kA = kCode % kKinds;
    constexpr std::size_t kB = kCode / kKinds % kKinds;
    constexpr std::size_t kC = kCode / kKinds / kKinds;
    if constexpr (is_used(kA, kB, kC)) {
        using Wanted = Kernel<StepKind{kA}, StepKind{kB}, StepKind{kC}>;
        return {Wanted::load, Wanted::run};
    } else {
        return {};
    }
}

template <std::size_t... kCodes>
constexpr auto make_entries(std::index_sequence<kCodes...>) {
    return std::array<Entry, sizeof...(kCodes)>{entry<kCodes>()...};
}

constexpr auto kEntries = make_entries(std::make_index_sequence<kKinds * kKinds * kKinds>());

const Entry& entry_of(const Steps& steps) {
    const auto [a, b, c] = steps.kinds;
    return kEntries[static_cast<std::size_t>(a) +
                    kKinds * (static_cast<std::size_t>(b) + kKinds * static_cast<std::size_t>(c))];
}

template <class Combination>
void each(double* block, std::size_t count, Combination combination) {
    for (std::size_t i = 0; i < count; ++i)
        block[i] = combination(block[i]);
}

template <class Combination>
void each_with(double* __restrict block, const double* __restrict other, std::size_t count,
               Combination combination) {
    for (std::size_t i = 0; i < count; ++i)
        block[i] = combination(block[i], other[i]);
}

}  // namespace

void load_samples(std::span<const std::int32_t> raw, double* block, const Steps& steps) {
    entry_of(steps).load(raw.data(), block, raw.size(), steps);
}

void load_samples(std::span<const double> values, double* block, const Steps& steps) {
    // The text of a zero has no sign.
    for (std::size_t i = 0; i < values.size(); ++i)
        block[i] = values[i] + 0.0;
    run_steps(block, values.size(), steps);
}

void run_steps(double* block, std::size_t count, const Steps& steps) {
    if (steps.kinds[0] == StepKind::kNone) return;
    entry_of(steps).run(block, count, steps);
}

void combine_blocks(double* block, char op, const double* other, std::size_t count) {
    switch (op) {
        case '*':
            return each_with(block, other, count, [](double a, double b) { return a * b; });
        case '/':
            return each_with(block, other, count, [](double a, double b) { return a / b; });
        case '+':
            return each_with(block, other, count, [](double a, double b) { return a + b; });
        default:
            return each_with(block, other, count,
                             [](double a, double b) { return std::pow(a, b); });
    }
}

void combine_from_left(double constant, char op, double* block, std::size_t count) {
    if (op == '/') return each(block, count, [constant](double x) { return constant / x; });
    each(block, count, [constant](double x) { return std::pow(constant, x); });
}

void raise_to(double* block, double exponent, std::size_t count) {
    each(block, count, [exponent](double x) { return std::pow(x, exponent); });
}

void call_function(Function function, double* block, std::size_t count, Failures& failures) {
    for (std::size_t i = 0; i < count; ++i) {
        failures[i] = failures[i] || block[i] < 0;
        block[i] = function_value(function, block[i]);
    }
}

void call_logarithm(Logarithm logarithm, double* block, std::size_t count, Failures& failures) {
    for (std::size_t i = 0; i < count; ++i) {
        failures[i] = failures[i] || block[i] <= 0;
        block[i] = logarithm_value(logarithm, block[i]);
    }
}

void check_block(const double* block, std::size_t count, Failures& failures) {
    unsigned bad = 0;
    for (std::size_t i = 0; i < count; ++i)
        bad |= static_cast<unsigned>(!is_number(block[i]));
    if (bad == 0) return;
    for (std::size_t i = 0; i < count; ++i)
        failures[i] = failures[i] || !is_number(block[i]);
}

}  // namespace servo::params
