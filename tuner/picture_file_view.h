// The picture in a file: a sheet with scales, curves, marks, and what each curve is.
#pragma once

#include <QFont>
#include <QSize>
#include <QString>

#include "tuner/picture_scene.h"

namespace servo::tuner {

// By the name's suffix: "svg" and "pdf" are drawn as lines, all else is PNG with twice the pixels.
// `size` is that of the picture alone, in pixels. False when the file could not be written.
bool save_picture(const TunerData& data, const PictureMarks& marks, const QFont& font, QSize size,
                  base::Language language, const QString& path);

}  // namespace servo::tuner
