// The oscilloscope's arithmetic on a full buffer: the decode with all that follows from it, and the
// spectrum. The reference of the decode is the plainest loop that takes the same bytes apart.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bench/ratio.h"
#include "scope/spectrum.h"
#include "scope/trace.h"

using namespace servo;

namespace {

constexpr int kTurns = 25;
constexpr double kMillisecond = 1e-3;
// The decode with its extremes is some ten such loops; the rest are the texts and formulas of four
// channels, whose number does not grow with the recording, while the loop over wide values is
// short.
constexpr double kDecodeRatio = 100;

struct SetUp {
    const char* name;
    const char* type;
    int channels;
};

link::FormulaOperands drive_operands() {
    link::FormulaOperands operands;
    operands.o64100320 = {10000, true};
    return operands;
}

scope::ScopeData recording(const SetUp& set_up) {
    scope::ScopeData data;
    for (int i = 0; i < set_up.channels; ++i) {
        scope::ScopeChannel& channel = data.channels[static_cast<std::size_t>(i)];
        channel.entries[0].key = 0x606c00;
        channel.entries[0].type = set_up.type;
        channel.entries[0].formula = "[DEC]N*1\n[DEC rpm]N*1875/512/[64100320]";
        channel.objectList = {{"", "object"}, 1};
        channel.unitList = {{"DEC", "rpm"}, 1};
        channel.enable = true;
        data.rowBytes += scope::width_of(set_up.type);
    }
    std::uint32_t state = 1;
    for (std::uint8_t& byte : data.rawBytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    data.rawLength = scope::kMaxBytes;
    data.cursors[0].on = true;
    data.cursors[1].on = true;
    return data;
}

// The same bytes into as many arrays, and nothing else.
struct Plain {
    std::array<std::array<std::int32_t, scope::kMaxSamples>, scope::kCurves> samples{};

    template <class Value>
    void decode(const scope::ScopeData& data, int channels) {
        const std::uint8_t* byte = data.rawBytes.data();
        const std::size_t rows =
            data.rawBytes.size() / sizeof(Value) / static_cast<std::size_t>(channels);
        for (std::size_t row = 0; row < rows; ++row) {
            for (int channel = 0; channel < channels; ++channel, byte += sizeof(Value)) {
                std::uint32_t bits = 0;
                for (std::size_t i = 0; i < sizeof(Value); ++i)
                    bits |= std::uint32_t{byte[i]} << (8 * i);
                samples[static_cast<std::size_t>(channel)][row] = static_cast<Value>(bits);
            }
        }
        benchmark::DoNotOptimize(samples.data());
        benchmark::ClobberMemory();
    }
};

void measure_decode(bench::Report& report, const SetUp& set_up) {
    scope::ScopeData data = recording(set_up);
    const link::FormulaOperands operands = drive_operands();
    bool good = true;
    const auto ours = [&] {
        good = scope::Movingdata(data, operands, base::Language::kEnglish) && good;
        benchmark::DoNotOptimize(&data);
        benchmark::ClobberMemory();
    };
    auto plain = std::make_unique<Plain>();
    const int width = scope::width_of(set_up.type);
    const auto reference = [&] {
        if (width == 1)
            plain->decode<std::int8_t>(data, set_up.channels);
        else if (width == 2)
            plain->decode<std::int16_t>(data, set_up.channels);
        else
            plain->decode<std::int32_t>(data, set_up.channels);
    };
    const bench::Medians medians = bench::take_turns(kTurns, ours, 10, reference, 100);
    for (int i = 0; i < set_up.channels; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const auto total = static_cast<std::size_t>(data.channels[place].sampleTotal);
        good = good && total > 0 &&
               std::equal(plain->samples[place].begin(),
                          plain->samples[place].begin() + static_cast<std::ptrdiff_t>(total),
                          data.channels[place].samples.begin());
    }
    const std::string name = std::string("movingdata_") + set_up.name;
    std::printf("%s: %.1f us, plain decode %.2f us, %s\n", name.c_str(), medians.ours * 1e6,
                medians.reference * 1e6, good ? "samples agree" : "SAMPLES DIFFER");
    report.at_most(name + "_of_a_millisecond", good ? medians.ours / kMillisecond : NAN, 1.0);
    report.at_most(name + "_against_plain_decode", medians.ours / medians.reference, kDecodeRatio);
}

// A window of any length has to be as good as one of a power of two: its prime neighbour works in
// twice the length, rounded up, three times. By the definition it would take a hundred times as
// long and more.
void measure_spectrum(bench::Report& report) {
    std::vector<double> values(8192);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = std::sin(0.01 * static_cast<double>(i)) * 100;
    const std::span<const double> all(values);
    const auto power = [&] {
        benchmark::DoNotOptimize(
            scope::spectrum_of(all, 62.5, scope::SpectrumWindow::kHann).amplitudes.data());
    };
    const auto prime = [&] {
        benchmark::DoNotOptimize(
            scope::spectrum_of(all.first(8191), 62.5, scope::SpectrumWindow::kHann)
                .amplitudes.data());
    };
    const bench::Medians medians = bench::take_turns(kTurns, prime, 2, power, 4);
    std::printf("spectrum: 8192 samples %.2f ms, 8191 samples %.2f ms\n", medians.reference * 1e3,
                medians.ours * 1e3);
    report.at_most("spectrum_8191_against_8192", medians.ours / medians.reference, 20);
}

}  // namespace

int main() {
    bench::Report report;
    for (const SetUp& set_up :
         {SetUp{"int8_1", "int8", 1}, SetUp{"int8_4", "int8", 4}, SetUp{"int16_1", "int16", 1},
          SetUp{"int16_4", "int16", 4}, SetUp{"int32_2", "int32", 2}})
        measure_decode(report, set_up);
    measure_spectrum(report);
    return report.exit_status();
}
