// Where the figures of the plot stand: the shapes along the curves, the flags at its left edge.
#pragma once

#include <QFont>
#include <QPointF>
#include <QString>
#include <vector>

#include "scope/plot_scene.h"
#include "scope/plot_sprites_view.h"

namespace servo::scope {

struct PictureFrame;

struct PlacedShape {
    QPointF at;
    int channel = 0;
    bool dot = false;  // for a single sample, where they are far apart
};
// Shapes at even distances, those of the four channels in turn.
std::vector<PlacedShape> placed_shapes(const PlotScene& scene, const PictureFrame& frame);

// Names of references at the right end of their curves, where these are seen.
struct PlacedName {
    QPointF at;
    int channel = 0;
    QString text;
};
std::vector<PlacedName> placed_names(const PlotScene& scene, const PictureFrame& frame);

struct PlacedFlag {
    QPointF tip;
    int channel = 0;
    FlagEnd end = FlagEnd::kHere;
};
// Label1 to Label4. Kept inside; those that would cover each other stand side by side.
std::vector<PlacedFlag> placed_flags(const PlotScene& scene, const PictureFrame& frame,
                                     const QFont& font);

}  // namespace servo::scope
