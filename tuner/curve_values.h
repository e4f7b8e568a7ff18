// The values behind the curves of the picture, whatever they come from: one way to draw them, to
// read them under the pointer and to write them into a table.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

// What a curve's box says ("电机与负载").
base::Text curve_name(Curve curve);

// Values at even distances. Valid until the data changes.
struct CurveValues {
    std::span<const float> gains;   // linear ratios; empty when there is no such curve yet
    std::span<const float> phases;  // degrees; empty for a curve that has none
    int first = 0;                  // Hz
    int step = 1;                   // Hz

    bool empty() const { return gains.empty(); }
    int size() const { return static_cast<int>(gains.size()); }
    int frequency(int point) const { return first + point * step; }
};

CurveValues curve_values(const TunerData& data, Curve curve);

// In dB; nothing for a gain that has no logarithm.
std::optional<double> gain_decibels(double gain);

// A curve at its point nearest to a frequency.
struct CurveReading {
    Curve curve = Curve::kPlant;
    int frequency = 0;            // Hz, of the point
    std::optional<double> gain;   // dB
    std::optional<double> phase;  // degrees, folded
};

// Of the curves that are ticked and reach to that frequency, in the order of their boxes.
std::vector<CurveReading> readings_at(const TunerData& data, double frequency);

}  // namespace servo::tuner
