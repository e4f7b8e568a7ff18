// Many samples through one formula line: the compiled line against the text evaluator and against
// the same arithmetic written in C++. Before any time is taken, the bits of every formula of the
// dictionary are compared over all numbers of 16 bits.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "bench/ratio.h"
#include "dictionary/store.h"
#include "params/compiled_formula.h"
#include "params/formula.h"

using namespace servo;

namespace {

constexpr int kTurns = 15;
constexpr std::size_t kTextSamples = 512;  // the text evaluator is slow; its time is per sample

link::FormulaOperands operands(std::int32_t resolution, std::int16_t current, std::int32_t others) {
    link::FormulaOperands all;
    all.o64100320 = {resolution, true};
    all.o65100310 = {current, true};
    all.o30400710 = {others, true};
    all.o60F61310 = {others + 1, true};
    all.o60F61110 = {others + 2, true};
    return all;
}

// Every number of 16 bits, with a sign and without one.
std::vector<std::int32_t> all_samples() {
    std::vector<std::int32_t> samples;
    for (std::int32_t i = -32768; i <= 65535; ++i)
        samples.push_back(i);
    return samples;
}

// --- the proof --------------------------------------------------------------------------------

// Every expression of the dictionary, each once; also those of raw units, which no conversion asks
// for.
std::set<std::string> dictionary_expressions() {
    std::set<std::string> expressions;
    dictionary::Store store;
    if (!store.open_dat(SERVO_BIN_DIR)) return expressions;
    constexpr std::size_t kFormulaColumn = 8;
    for (std::size_t row = 0; row < store.dictionary_rows(); ++row) {
        const std::string list = store.dictionary_cell(row, kFormulaColumn);
        for (std::size_t at = 0; at <= list.size();) {
            const std::size_t end = std::min(list.find('\n', at), list.size());
            const std::string line = list.substr(at, end - at);
            expressions.insert(line.substr(std::min(line.find(']') + 1, line.size())));
            at = end + 1;
        }
    }
    return expressions;
}

struct Proof {
    std::size_t runs = 0;
    std::size_t fast = 0;
    std::size_t values = 0;
    std::size_t differing = 0;
};

void compare(Proof& proof, const std::string& list, const link::FormulaOperands& values,
             const std::vector<std::int32_t>& samples) {
    const params::CompiledFormula formula("u", list, values);
    std::vector<double> out(samples.size());
    formula.convert(samples, out);
    if (formula.is_fast()) ++proof.fast;
    ++proof.runs;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double told = params::value_to_unit(samples[i], "u", list, 4, values).value_or(0);
        ++proof.values;
        if (std::bit_cast<std::uint64_t>(told) == std::bit_cast<std::uint64_t>(out[i])) continue;
        if (proof.differing++ == 0) {
            std::printf("%s of %d: %.17g for %.17g\n", list.c_str(), samples[i], out[i], told);
        }
    }
}

bool prove_dictionary() {
    const std::vector<std::int32_t> samples = all_samples();
    const std::set<std::string> expressions = dictionary_expressions();
    Proof proof;
    for (const std::string& expression : expressions) {
        for (const auto& values :
             {operands(10000, 480, 4096), operands(0, 0, -1), operands(-131072, -31, 2147483645)}) {
            compare(proof, "[u]" + expression, values, samples);
        }
    }
    std::printf(
        "proof: %zu distinct expressions of the dictionary, %zu runs with three sets of "
        "operands, %zu of them fast, %zu values, %zu differ\n",
        expressions.size(), proof.runs, proof.fast, proof.values, proof.differing);
    return proof.runs > 0 && proof.differing == 0;
}

// --- the times --------------------------------------------------------------------------------

struct Line {
    const char* name;
    const char* list;
    std::function<void(const std::vector<std::int32_t>&, std::vector<double>&)> written;
};

template <class Arithmetic>
auto loop(Arithmetic arithmetic) {
    return [arithmetic](const std::vector<std::int32_t>& samples, std::vector<double>& out) {
        const std::int32_t* from = samples.data();
        double* to = out.data();
        for (std::size_t i = 0; i < samples.size(); ++i)
            to[i] = arithmetic(double(from[i]));
    };
}

std::vector<Line> lines(double resolution, double current) {
    return {
        {"raw", "[u]N*1", loop([](double n) { return n * 1; })},
        {"tenths", "[u]N/10", loop([](double n) { return n / 10; })},
        {"product", "[u]N*62.5", loop([](double n) { return n * 62.5; })},
        {"speed", "[u]N*1875/512/[64100320]",
         loop([=](double n) { return n * 1875 / 512 / resolution; })},
        {"acceleration", "[u]N*1000*4000/65536/[64100320]",
         loop([=](double n) { return n * 1000 * 4000 / 65536 / resolution; })},
        {"current", "[u]N/2048*[65100310]/10",
         loop([=](double n) { return n / 2048 * current / 10; })},
        {"thirds", "[u]N*1000/3/7", loop([](double n) { return n * 1000 / 3 / 7; })},
        {"sum", "[u]N*9/5+32", loop([](double n) { return n * 9 / 5 + 32; })},
        {"parentheses", "[u](N-32)*5/9", loop([](double n) { return (n - 32) * 5 / 9; })},
    };
}

void measure(bench::Report& report, const Line& line, const link::FormulaOperands& values) {
    const std::vector<std::int32_t> samples = all_samples();
    std::vector<double> out(samples.size());
    const params::CompiledFormula formula("u", line.list, values);

    const auto compiled = [&] {
        formula.convert(samples, out);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    };
    const auto written = [&] {
        line.written(samples, out);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    };
    std::size_t next = 0;
    const auto by_text = [&] {
        for (std::size_t i = 0; i < kTextSamples; ++i, next = (next + 193) % samples.size()) {
            benchmark::DoNotOptimize(
                params::value_to_unit(samples[next], "u", line.list, 4, values));
        }
    };
    const bench::Medians text = bench::take_turns(kTurns, compiled, 8, by_text, 2);
    const double by_sample = text.ours / static_cast<double>(samples.size());
    const double by_text_sample = text.reference / static_cast<double>(kTextSamples);
    std::printf("%s %s: %.3g ns, by text %.4g ns\n", line.name, line.list, by_sample * 1e9,
                by_text_sample * 1e9);
    report.at_least("formula_" + std::string(line.name) + "_against_text",
                    by_text_sample / by_sample, 200);
    const bench::Medians native = bench::take_turns(kTurns, compiled, 8, written, 8);
    report.at_most("formula_" + std::string(line.name) + "_against_written",
                   native.ours / native.reference, 2);
}

}  // namespace

int main() {
    if (!prove_dictionary()) return 1;
    bench::Report report;
    const link::FormulaOperands values = operands(10000, 480, 4096);
    for (const Line& line : lines(values.o64100320.value, values.o65100310.value)) {
        measure(report, line, values);
    }
    return report.exit_status();
}
