// A click on the simulation: 500 points of the loop with four filters, and six filter curves; then
// what is read off it. The reference is the same in plain complex arithmetic, straight from the
// formulas: no guards, no single precision, one loop.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <complex>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "bench/ratio.h"
#include "tuner/margins.h"
#include "tuner/resonances.h"
#include "tuner/simulation.h"
#include "tuner/step_response.h"

using namespace servo;

namespace {

using Complex = std::complex<double>;

constexpr int kTurns = 25;
constexpr int kCalls = 20;
constexpr double kAllowedSeconds = 5e-3;
constexpr double kRate = 16000.0;
constexpr double kPi = 3.14159265358979;
constexpr int kPoints = 500;

// Each of the six types once.
constexpr std::array<tuner::FilterRecord, tuner::kSlots> kRecords{{{1, 900, 0, 0, 0},
                                                                   {3, 780, 0.5F, 0.05F, 0.6F},
                                                                   {4, 300, 150, 0, 0},
                                                                   {6, 4, 0, 62.5e-6F, 0},
                                                                   {2, 800, 0, 0.7F, 0},
                                                                   {5, 300, 150, 1.2F, 1.2F}}};

// From 4 Hz on in steps of 2: a rigid load.
std::unique_ptr<tuner::TunerData> scanned() {
    auto data = std::make_unique<tuner::TunerData>();
    data->settings.startFreq = 4;
    data->settings.stepFreq = 2;
    data->settings.stopFreq = 1004;
    data->settings.magCurrent = 60;
    data->buffers.pointCount = kPoints + 1;
    data->analysed = true;
    for (std::size_t i = 0; i < kPoints; ++i) {
        const double f = data->frequency(static_cast<int>(i));
        const Complex plant = 0.3 / Complex{0.0, f} / Complex{1.0, f / 500.0};
        data->analysis.respX[i] = static_cast<float>(plant.real() * 60 * 576);
        data->analysis.respY[i] = static_cast<float>(plant.imag() * 60 * 576);
        data->analysis.magnitude[i] = static_cast<float>(std::abs(plant) * 100);
        data->analysis.phase[i] = static_cast<float>(std::arg(plant) * 180 / kPi);
    }
    return data;
}

struct Plain {
    std::vector<double> results = std::vector<double>(6 * kPoints + 12 * 1000);

    static Complex bilinear(double f, double exact) {
        return {0.0, std::tan(kPi * f / kRate) / std::tan(kPi * exact / kRate)};
    }

    static Complex filter(double f, const tuner::FilterRecord& r) {
        const double a = r.a, b = r.b, c = r.c, d = r.d;
        const double centre = std::sqrt(a * b);
        switch (r.type) {
            case 1:
                return 1.0 / (1.0 + bilinear(f, a));
            case 2: {
                const Complex s = bilinear(f, a);
                return 1.0 / (1.0 + 2.0 * c * s + s * s);
            }
            case 3: {
                const Complex s = bilinear(f, a);
                return (1.0 + 2.0 * c * s + s * s) / (1.0 + 2.0 * d * s + s * s);
            }
            case 4: {
                const Complex s = bilinear(f, centre) * centre;
                return (1.0 + s / a) / (1.0 + s / b);
            }
            case 5: {
                const Complex s = bilinear(f, centre) * centre;
                return (1.0 + c * s / a + s * s / a / a) / (1.0 + d * s / b + s * s / b / b);
            }
            default: {
                const Complex z = std::exp(Complex{0.0, -2.0 * kPi * f * c});
                return (1.0 - std::pow(z, a)) / (1.0 - z) / a;
            }
        }
    }

    void run(const tuner::TunerData& data, const tuner::LoopGains& gains) {
        double* out = results.data();
        const auto put = [&out](Complex value) {
            *out++ = std::abs(value);
            *out++ = std::arg(value) * 180.0 / kPi;
        };
        for (std::size_t i = 0; i < kPoints; ++i) {
            const double f = 4.0 + 2.0 * static_cast<double>(i);
            Complex open = Complex{data.analysis.respX[i], data.analysis.respY[i]} / 60.0 / 576.0;
            for (std::size_t k = 0; k < 4; ++k)
                open *= filter(f, kRecords[k]);
            const Complex z = std::exp(Complex{0.0, -2.0 * kPi * f / kRate});
            open *=
                double{gains.loopGain} * (1.0 + 2.0 * kPi * gains.loopIntegral / kRate / (1.0 - z));
            const Complex closed = open / (1.0 + open);
            const Complex position = closed * double{gains.loopScale} / Complex{0.0, f};
            put(open);
            put(closed);
            *out++ = std::abs(position);
            *out++ = std::abs(position / (1.0 + position));
        }
        for (const tuner::FilterRecord& record : kRecords)
            for (int f = 1; f <= 1000; ++f)
                put(filter(f, record));
        benchmark::DoNotOptimize(results.data());
        benchmark::ClobberMemory();
    }
};

// The reference would be worth nothing if it computed something else.
bool agree(const tuner::Simulation& s, const Plain& plain) {
    double worst = 0.0;
    const auto compare = [&worst](double a, double b) {
        worst = std::max(worst, std::abs(a - b) / (std::abs(b) + 1e-3));
    };
    for (std::size_t i = 0; i < kPoints; ++i) {
        const double* p = &plain.results[6 * i];
        compare(s.open_velocity.gain[i], p[0]);
        compare(s.open_velocity.phase[i], p[1]);
        compare(s.closed_velocity.gain[i], p[2]);
        compare(s.closed_velocity.phase[i], p[3]);
        compare(s.open_position[i], p[4]);
        compare(s.closed_position[i], p[5]);
    }
    for (std::size_t slot = 0; slot < tuner::kSlots; ++slot)
        for (std::size_t i = 0; i < 1000; ++i) {
            const double* p = &plain.results[6 * kPoints + 2000 * slot + 2 * i];
            compare(s.filters[slot].gain[i], p[0]);
            compare(s.filters[slot].phase[i], p[1]);
        }
    std::printf("greatest relative difference from the plain loop %.2g\n", worst);
    return worst < 1e-3;
}

void measure_simulation(bench::Report& report, tuner::TunerData& data) {
    const tuner::LoopGains gains{200, 15.9F, 10};
    Plain plain;
    const auto ours = [&] {
        data.simulation = tuner::simulate(data, kRecords, gains);
        benchmark::DoNotOptimize(data.simulation);
    };
    const auto reference = [&] { plain.run(data, gains); };
    ours();
    reference();
    report.at_least("tuner.simulation.agrees", agree(data.simulation, plain) ? 1 : 0, 1);
    const bench::Medians m = bench::take_turns(kTurns, ours, kCalls, reference, kCalls);
    std::printf("simulation %.3f ms, plain loop %.3f ms\n", m.ours * 1e3, m.reference * 1e3);
    report.at_most("tuner.simulation.of_plain_loop", m.ours / m.reference, 1.5);
    report.at_most("tuner.simulation.of_5ms", m.ours / kAllowedSeconds, 1.0);
}

// What follows a click: figures of both loops, two step responses, the resonances.
void measure_readings(bench::Report& report, tuner::TunerData& data) {
    Plain plain;
    const tuner::LoopGains gains{200, 15.9F, 10};
    const auto ours = [&] {
        auto figures = tuner::figures_of(data);
        auto velocity = tuner::step_response(data, tuner::LoopKind::kVelocity);
        auto position = tuner::step_response(data, tuner::LoopKind::kPosition);
        auto resonances = tuner::find_resonances(data);
        benchmark::DoNotOptimize(figures);
        benchmark::DoNotOptimize(velocity);
        benchmark::DoNotOptimize(position);
        benchmark::DoNotOptimize(resonances);
    };
    const auto reference = [&] { plain.run(data, gains); };
    const bench::Medians m = bench::take_turns(kTurns, ours, 2, reference, kCalls);
    std::printf("margins, step responses, resonances %.3f ms\n", m.ours * 1e3);
    report.at_most("tuner.readings.of_plain_loop", m.ours / m.reference, 12);
}

}  // namespace

int main() {
    bench::Report report;
    const auto data = scanned();
    measure_simulation(report, *data);
    measure_readings(report, *data);
    return report.exit_status();
}
