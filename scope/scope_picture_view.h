// The plot as a picture in a file: a sheet with curves, values, times and what each curve is.
#pragma once

#include <QFont>
#include <QSize>
#include <QString>

#include "scope/plot_scene.h"

namespace servo::scope {

// By the name's suffix: "svg" and "pdf" are drawn as lines, all else is PNG with twice the pixels
// of `size`. False when the file could not be written.
bool save_picture(const PlotScene& scene, const QFont& font, QSize size, const QString& path);

}  // namespace servo::scope
