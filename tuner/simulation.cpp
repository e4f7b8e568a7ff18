#include "tuner/simulation.h"

#include <cmath>
#include <complex>

#include "base/number.h"
#include "tuner/loop_model.h"
#include "tuner/single_precision.h"

namespace servo::tuner {

namespace {

// The integral gain in Text11 counts at this rate, 60F9:02 at the drive's.
constexpr double kIntegralRate = 4000.0;
constexpr double kDriveIntegralRate = 1000.0;

// Stands for a closed gain of exactly 0, which has no logarithm.
constexpr float kNoGain = 0.01F;

bool single_holds(double value) {
    return std::abs(value) <= double{std::numeric_limits<float>::max()};
}

std::complex<double> complex_of(float gain, float phase) {
    return std::polar(double{gain}, double{phase} * kPi / 180.0);
}

// The excitation reaches the speed as this many times the plant.
constexpr double kPlantScale = 576.0;

void model_point(const TunerData& data, const std::array<FilterRecord, kSlots>& r,
                 const LoopGains& gains, int point, Simulation& s) {
    const auto i = static_cast<std::size_t>(point);
    const double scale = data.settings.magCurrent * kPlantScale;
    const std::int16_t frequency = data.frequency(point);
    float closed_gain = 0.0F;
    float open_position = 0.0F;
    Cal_Loop_Mag_Ph_u(kModelCode, gains.loopGain, gains.loopIntegral, frequency,
                      single(data.analysis.respX[i] / scale),
                      single(data.analysis.respY[i] / scale), r[0], r[1], r[2], r[3],
                      &s.open_velocity.gain[i], &s.open_velocity.phase[i], &closed_gain,
                      &s.closed_velocity.phase[i], &open_position, &s.closed_position[i]);
    // The function does not know loopScale: it has the position loop with a gain of 1.
    s.open_position[i] = single(double{open_position} * gains.loopScale);
    if (gains.loopScale != 1.0F && frequency > 0) {
        const std::complex<double> velocity = complex_of(closed_gain, s.closed_velocity.phase[i]);
        const auto position = double{gains.loopScale} * position_response(frequency, velocity);
        s.closed_position[i] = single(std::abs(closed(position)));
    }
    s.closed_velocity.gain[i] = closed_gain == 0.0F ? kNoGain : closed_gain;
}

void filter_curve(const FilterRecord& filter, ResponsePair<kFilterPoints>& curve) {
    for (int i = 0; i < kFilterPoints; ++i) {
        const auto point = static_cast<std::size_t>(i);
        Cal_Filter_Mag_Ph_u(static_cast<std::int16_t>(1 + i), filter.type, filter.a, filter.b,
                            filter.c, filter.d, &curve.gain[point], &curve.phase[point]);
    }
}

}  // namespace

std::optional<LoopGains> read_gains(std::string_view Text10, std::string_view Text11,
                                    std::string_view Text9) {
    LoopGains gains;
    gains.loopGain = single(base::leading_number(Text10));
    if (gains.loopGain == 0.0F) return std::nullopt;
    const double integral =
        base::leading_number(Text11) / double{gains.loopGain} * kIntegralRate / 2.0 / kPi;
    gains.loopIntegral = single(integral);
    gains.loopScale = single(base::leading_number(Text9));
    for (const double value : {double{gains.loopGain}, integral, double{gains.loopScale}})
        if (!single_holds(value)) return std::nullopt;
    if (gains.loopGain <= 0.0F) gains.loopGain = 1.0F;
    if (gains.loopIntegral < 0.0F) gains.loopIntegral = 0.0F;
    if (gains.loopScale <= 0.0F) gains.loopScale = 1.0F;
    return gains;
}

std::optional<GainTexts> gains_at_scan(const ScanSettings& settings) {
    if (!(settings.velocityGain1 > 0.0F) || !(settings.velocityGain2 >= 0.0F)) return std::nullopt;
    return GainTexts{
        base::number_text(settings.velocityGain1),
        base::number_text(settings.velocityGain2 * kDriveIntegralRate / kIntegralRate)};
}

Simulation simulate(const TunerData& data, const std::array<FilterRecord, kSlots>& records,
                    const LoopGains& gains) {
    Simulation s;
    s.records = records;
    s.gains = gains;
    s.points = data.analysed_points();
    for (int point = 0; point < s.points; ++point)
        model_point(data, records, gains, point, s);
    for (std::size_t slot = 0; slot < records.size(); ++slot) {
        s.filter_used[slot] = records[slot].type != 0;
        if (s.filter_used[slot]) filter_curve(records[slot], s.filters[slot]);
    }
    return s;
}

}  // namespace servo::tuner
