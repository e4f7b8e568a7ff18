#include "scope/plot_scene.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "base/number.h"
#include "scope/trace.h"

namespace servo::scope {

namespace {

constexpr base::Text kUnderWay{"正在采集", "Recording"};
constexpr base::Text kTillWhen{"触发并读完数据后显示曲线",
                               "The curves appear when it is triggered and read"};
constexpr base::Text kNoRecording{"还没有采集数据", "No recording yet"};
constexpr base::Text kWhatNext{"勾选通道并选择对象，然后按“开始”",
                               "Tick a channel, choose its object, then press Start"};

constexpr PlotArea kPicture{0, 0, kPictureWidth, kPictureHeight};
constexpr int kDigits = 6;  // of a read-out under the pointer

std::string trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string rounded_text(double value) {
    if (value == 0 || !std::isfinite(value)) return base::number_text(value);
    const double places = kDigits - 1 - std::floor(std::log10(std::fabs(value)));
    // Beyond these the power leaves the range of numbers.
    if (std::fabs(places) > 300) return base::number_text(value);
    const double power = std::pow(10.0, std::fabs(places));
    const double rounded =
        places >= 0 ? std::round(value * power) / power : std::round(value / power) * power;
    return base::number_text(std::isfinite(rounded) ? rounded : value);
}

CurveTransform transform_of(const ScopeData& data, int channel) {
    const ScopeChannel& curve = data.channels.at(static_cast<std::size_t>(channel));
    return {.offset = offset_of(curve), .scale = curve.scale, .window = data.window()};
}

SceneCurve scene_curve(const ScopeData& data, int channel, const link::FormulaOperands& operands) {
    const ScopeChannel& from = data.channels.at(static_cast<std::size_t>(channel));
    SceneCurve curve;
    curve.channel = channel;
    curve.picked = channel == data.Combo12;
    curve.transform = transform_of(data, channel);
    curve.object = trimmed(from.objectList.text());
    curve.unit = trimmed(from.unitList.text());
    curve.marker = marker_height(curve.transform, kPicture);
    // The hand can pull the window over the beginning of the recording: nothing is drawn there.
    const int first = std::max<int>(data.window().first, 0);
    const int last = std::min<int>(data.window().last, static_cast<int>(from.samples.size()) - 1);
    curve.times.first_at = first;
    if (last < first) return curve;
    const std::span<const std::int32_t> raw(from.samples.data() + first,
                                            static_cast<std::size_t>(last - first) + 1);
    // Without a unit the raw numbers are drawn; no automatic scale fits them, the operator's does.
    curve.values = curve.unit.empty() ? std::vector<double>(raw.begin(), raw.end())
                                      : display_values(from, raw, operands);
    return curve;
}

// The stretch of a kept recording that the window shows, with a sample more on each side, so that
// lines run to the edges. Its samples may be further apart or nearer than the live ones.
std::optional<SceneReference> scene_reference(const ScopeData& data, double period_us,
                                              const References::Kept& kept,
                                              const RecordedCurve& recorded) {
    const ScopeChannel& channel = data.channels.at(static_cast<std::size_t>(recorded.channel));
    const double step = kept.recording.period_us / period_us;
    if (!(step > 0) || !std::isfinite(step) || recorded.values.empty()) return std::nullopt;
    // In another unit it would be drawn where it never was.
    if (channel.hide || trimmed(channel.unitList.text()) != trimmed(recorded.unit))
        return std::nullopt;
    const double start = kept.recording.start_us / period_us;
    const ZoomWindow& window = data.window();
    const auto count = static_cast<double>(recorded.values.size());
    const double from = std::clamp(std::floor((window.first - start) / step), 0.0, count);
    const double behind = std::clamp(std::ceil((window.last - start) / step) + 1, 0.0, count);
    if (behind <= from) return std::nullopt;
    const auto begin = recorded.values.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = recorded.values.begin() + static_cast<std::ptrdiff_t>(behind);
    return SceneReference{.name = kept.name,
                          .channel = recorded.channel,
                          .values = {begin, end},
                          .times = {start + from * step, step},
                          .transform = transform_of(data, recorded.channel)};
}

void add_references(PlotScene& scene, const ScopeData& data, const References& references) {
    for (const References::Kept& kept : references.kept) {
        if (!kept.shown) continue;
        for (const RecordedCurve& recorded : kept.recording.curves) {
            if (recorded.channel < 0 || recorded.channel >= kCurves) continue;
            if (auto reference = scene_reference(data, scene.period_us, kept, recorded))
                scene.references.push_back(*std::move(reference));
        }
    }
}

}  // namespace

PlotScene plot_scene(const ScopeData& data, const link::FormulaOperands& operands,
                     const References& references, base::Language language) {
    PlotScene scene;
    scene.language = language;
    scene.valid = data.dataValid;
    scene.waits = data.sampling && !data.dataValid;
    scene.cursors = data.cursors;
    if (!scene.valid) return scene;
    scene.window = data.window();
    scene.period_us = base::leading_number(data.Text1) * kPeriodMicroseconds;
    scene.times = data.Label15;
    scene.zoom = data.Label44;
    add_references(scene, data, references);
    // The picked curve comes last, over the others.
    for (int channel = 0; channel < kCurves; ++channel)
        if (data.drawn(channel) && channel != data.Combo12)
            scene.curves.push_back(scene_curve(data, channel, operands));
    if (data.Combo12 >= 0 && data.Combo12 < kCurves && data.drawn(data.Combo12)) {
        scene.curves.push_back(scene_curve(data, data.Combo12, operands));
        scene.labelled = data.Combo12;
        scene.y_labels = data.y_labels.at(static_cast<std::size_t>(data.Combo12));
    }
    return scene;
}

std::array<std::string, 2> empty_texts(bool waits, base::Language language) {
    if (waits) return {std::string(kUnderWay.in(language)), std::string(kTillWhen.in(language))};
    return {std::string(kNoRecording.in(language)), std::string(kWhatNext.in(language))};
}

std::optional<HoverReadout> hover_readout(const PlotScene& scene, double x) {
    if (!scene.valid) return std::nullopt;
    const int sample = nearest_sample(scene.window, x);
    if (sample < 0) return std::nullopt;
    HoverReadout readout;
    readout.sample = sample;
    readout.x = sample_abscissa(scene.window, sample);
    readout.time = duration_text(sample * scene.period_us);
    for (const SceneCurve& curve : scene.curves) {
        const auto place = sample - static_cast<int>(curve.times.first_at);
        if (place < 0 || place >= static_cast<int>(curve.values.size())) continue;
        const double value = curve.values[static_cast<std::size_t>(place)];
        std::string text = rounded_text(value);
        if (!curve.unit.empty()) text += ' ' + curve.unit;
        readout.values.push_back(
            {curve.channel, std::move(text), curve.transform.y(value, kPicture)});
    }
    std::sort(readout.values.begin(), readout.values.end(),
              [](const HoverValue& a, const HoverValue& b) { return a.channel < b.channel; });
    return readout;
}

std::string duration_text(double microseconds) {
    const double size = std::fabs(microseconds);
    if (size >= 1e6) return rounded_text(microseconds / 1e6) + " s";
    if (size >= 1e3) return rounded_text(microseconds / 1e3) + " ms";
    return rounded_text(microseconds) + " us";
}

}  // namespace servo::scope
