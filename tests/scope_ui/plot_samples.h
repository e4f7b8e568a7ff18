// Recordings of three kinds, and the plain drawing that pictures and times are compared with.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "scope/plot_paint_view.h"
#include "scope/plot_palette.h"
#include "scope/trace.h"

namespace servo::scope {

enum class Kind : std::uint8_t { kSmooth, kNoisy, kRandom };

inline const char* name_of(Kind kind) {
    switch (kind) {
        case Kind::kSmooth:
            return "smooth";
        case Kind::kNoisy:
            return "noisy";
        case Kind::kRandom:
            return "random";
    }
    return "";
}

inline std::int32_t sample_of(Kind kind, int channel, int index, int count, std::mt19937& random) {
    const double turn = 2 * M_PI * (channel + 1) * index / count;
    const double wave = 6000.0 * std::sin(turn * 2 + channel) + 2500.0 * std::sin(turn * 5);
    switch (kind) {
        case Kind::kSmooth:
            return static_cast<std::int32_t>(wave);
        case Kind::kNoisy:
            return static_cast<std::int32_t>(wave) + static_cast<std::int32_t>(random() % 3000) -
                   1500;
        case Kind::kRandom:
            return static_cast<std::int32_t>(random() % 65536) - 32768;
    }
    return 0;
}

// Four channels in rpm, as a drive with 10000 counts records them; scaled to the whole picture.
inline link::FormulaOperands sample_operands() {
    link::FormulaOperands operands;
    operands.o64100320 = {10000, true};
    return operands;
}

inline ScopeData recorded(Kind kind, int count, int channels = kCurves) {
    ScopeData data;
    std::mt19937 random(7);
    for (int channel = 0; channel < channels; ++channel) {
        ScopeChannel& curve = data.channels.at(static_cast<std::size_t>(channel));
        curve.entries[0].type = "int32 ";
        curve.entries[0].name_en = "Velocity";
        curve.entries[0].formula = "[DEC rpm]N*1875/512/[64100320]";
        curve.entryCount = 1;
        curve.objectList = {{"", "Velocity " + std::to_string(channel + 1)}, 1};
        curve.unitList = {{"rpm"}, 0};
        curve.enable = true;
        curve.autoScale = false;
        // Random data reach over the edges a little, as a hand-set scale lets them.
        curve.scale = kind == Kind::kRandom ? 2.2 : 1.0;
        curve.offsetText = std::to_string((channel - 1) * (kind == Kind::kRandom ? 0.0 : 0.7));
        for (int i = 0; i < count; ++i)
            curve.samples[static_cast<std::size_t>(i)] = sample_of(kind, channel, i, count, random);
        curve.sampleTotal = static_cast<std::int16_t>(count);
    }
    data.dataValid = true;
    data.zoomWindow[0] = {0, static_cast<std::int16_t>(count - 1)};
    write_time_texts(data, base::Language::kEnglish);
    Print_Pic_Line(data);
    return data;
}

// The curves as they are told: one line from each point to the next, with the toolkit's pen.
// `image` has its background and keeps it.
inline void draw_each_segment(QImage& image, const PlotScene& scene, double pen_width) {
    const PlotArea area{0, 0, image.width() - 1.0, image.height() - 1.0};
    const qreal ratio = image.devicePixelRatio();
    image.setDevicePixelRatio(1);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0.5, 0.5);
    for (const SceneCurve& curve : scene.curves) {
        painter.setPen(
            QPen(QColor::fromRgba(palette::kCurves.at(static_cast<std::size_t>(curve.channel))),
                 pen_width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPointF before;
        for (std::size_t i = 0; i < curve.values.size(); ++i) {
            const double index = curve.times.first_at + static_cast<double>(i);
            const QPointF point(curve.transform.x(index, area),
                                curve.transform.y(curve.values[i], area));
            if (i > 0) painter.drawLine(before, point);
            before = point;
        }
    }
    painter.end();
    image.setDevicePixelRatio(ratio);
}

}  // namespace servo::scope
