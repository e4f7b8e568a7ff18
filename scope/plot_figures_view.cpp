#include "scope/plot_figures_view.h"

#include <algorithm>
#include <cmath>

#include "scope/plot_paint_view.h"

namespace servo::scope {

namespace {

constexpr double kShapeDistance = 200.0;
constexpr double kDotDistance = 9.0;  // samples nearer than this need no dots
constexpr double kNameDistance = 6.0;
constexpr double kFlagTip = 5.0;  // room for the arrow of a flag at the edge

// Places samples on the surface.
class CurvePlaces {
  public:
    CurvePlaces(const SceneCurve& curve, const PictureFrame& frame)
        : curve_(curve),
          frame_(frame),
          first_(static_cast<int>(curve.times.first_at)),
          count_(static_cast<int>(curve.values.size())) {}

    int count() const { return count_; }
    double spacing() const {
        const double length = curve_.transform.window.last - curve_.transform.window.first;
        return length > 0 ? frame_.place.width() / length : frame_.place.width();
    }
    QPointF at(int place) const {
        const double value = curve_.values[static_cast<std::size_t>(place)];
        const PlotArea units{0, 0, kPictureWidth, kPictureHeight};
        return {frame_.x(sample_abscissa(curve_.transform.window, first_ + place)),
                frame_.y(curve_.transform.y(value, units))};
    }
    // The sample nearest to an abscissa of the surface; -1 where there is none.
    int near(double x) const {
        const double units = frame_.units({x, 0}).x();
        const int place = nearest_sample(curve_.transform.window, units) - first_;
        return place >= 0 && place < count_ ? place : -1;
    }
    bool seen(QPointF at) const {
        return at.y() >= frame_.place.top() && at.y() <= frame_.place.bottom();
    }

  private:
    const SceneCurve& curve_;
    const PictureFrame& frame_;
    int first_;
    int count_;
};

void add_dots(std::vector<PlacedShape>& shapes, const CurvePlaces& places, int channel) {
    if (places.spacing() < kDotDistance) return;
    for (int i = 0; i < places.count(); ++i) {
        const QPointF at = places.at(i);
        if (places.seen(at)) shapes.push_back({at, channel, true});
    }
}

void add_shapes(std::vector<PlacedShape>& shapes, const CurvePlaces& places, int channel,
                const QRectF& plot) {
    const int shown = std::max(1, static_cast<int>(std::lround(plot.width() / kShapeDistance)));
    for (int i = 0; i < shown; ++i) {
        const double part = (i + (channel + 0.5) / kCurves) / shown;
        const int place = places.near(plot.left() + part * plot.width());
        if (place < 0) continue;
        const QPointF at = places.at(place);
        // One sample may be the nearest to several places.
        const bool twice = !shapes.empty() && !shapes.back().dot &&
                           shapes.back().channel == channel && shapes.back().at == at;
        if (places.seen(at) && !twice) shapes.push_back({at, channel, false});
    }
}

}  // namespace

std::vector<PlacedShape> placed_shapes(const PlotScene& scene, const PictureFrame& frame) {
    std::vector<PlacedShape> shapes;
    for (const SceneCurve& curve : scene.curves) {
        const CurvePlaces places(curve, frame);
        add_dots(shapes, places, curve.channel);
        add_shapes(shapes, places, curve.channel, frame.place);
    }
    return shapes;
}

std::vector<PlacedName> placed_names(const PlotScene& scene, const PictureFrame& frame) {
    std::vector<PlacedName> names;
    const PlotArea units{0, 0, kPictureWidth, kPictureHeight};
    for (const SceneReference& reference : scene.references) {
        if (reference.values.empty()) continue;
        const double step = reference.times.step;
        const double behind = (scene.window.last - reference.times.first_at) / step;
        const double last = static_cast<double>(reference.values.size()) - 1;
        const double place = std::clamp(std::floor(behind), 0.0, last);
        const double index = reference.times.first_at + place * step;
        const double y =
            reference.transform.y(reference.values[static_cast<std::size_t>(place)], units);
        if (y < 0 || y > kPictureHeight) continue;
        // "R1 11:02:33" is R1 here.
        const std::string name = reference.name.substr(0, reference.name.find(' '));
        names.push_back({{frame.x(reference.transform.x(index, units)) - kNameDistance, frame.y(y)},
                         reference.channel,
                         QString::fromStdString(name)});
    }
    return names;
}

std::vector<PlacedFlag> placed_flags(const PlotScene& scene, const PictureFrame& frame,
                                     const QFont& font) {
    std::vector<PlacedFlag> flags;
    const QSizeF size = flag_size(font);
    const double half = size.height() / 2 + 1;
    const double top = frame.place.top() + half + kFlagTip;
    const double bottom = std::max(frame.place.bottom() - half - kFlagTip, top);
    for (const SceneCurve& curve : scene.curves) {
        const double wanted = frame.y(curve.marker);
        PlacedFlag flag{{frame.place.left() + size.width(), wanted}, curve.channel, FlagEnd::kHere};
        if (wanted < frame.place.top()) flag.end = FlagEnd::kAbove;
        if (wanted > frame.place.bottom()) flag.end = FlagEnd::kBelow;
        if (flag.end != FlagEnd::kHere) flag.tip.setY(std::clamp(wanted, top, bottom));
        flags.push_back(flag);
    }
    std::sort(flags.begin(), flags.end(),
              [](const PlacedFlag& a, const PlacedFlag& b) { return a.channel < b.channel; });
    for (std::size_t i = 1; i < flags.size(); ++i) {
        const auto covers = [&](const PlacedFlag& other) {
            return std::abs(other.tip.y() - flags[i].tip.y()) < size.height() &&
                   other.tip.x() == flags[i].tip.x();
        };
        while (std::any_of(flags.begin(), flags.begin() + static_cast<std::ptrdiff_t>(i), covers))
            flags[i].tip.rx() += size.width() + 2;
    }
    return flags;
}

}  // namespace servo::scope
