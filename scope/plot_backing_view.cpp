#include "scope/plot_backing_view.h"

#include <chrono>
#include <utility>

namespace servo::scope {

void PlotBacking::set_scene(PlotScene scene) {
    scene_ = std::move(scene);
    handed_over_ = false;
}

void PlotBacking::set_font(const QFont& font) {
    finish();
    picture_.set_font(font);
}

bool PlotBacking::paint_ahead(QSize size, qreal ratio) {
    if (size != size_ || ratio != ratio_) return false;
    if (painting_.valid() &&
        painting_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return true;  // whoever is told of its end asks again
    finish();
    if (handed_over_) return true;
    hand_over();
    painting_ = std::async(std::launch::async, [this, size, ratio] {
        picture_.image(size, ratio);
        ready_();
    });
    return true;
}

const QImage& PlotBacking::image(QSize size, qreal ratio) {
    finish();
    if (!handed_over_) hand_over();
    size_ = size;
    ratio_ = ratio;
    return picture_.image(size, ratio);
}

QImage PlotBacking::ready(QSize size, qreal ratio) {
    if (size != size_ || ratio != ratio_) return {};
    finish();
    return picture_.image(size, ratio);
}

void PlotBacking::finish() {
    if (painting_.valid()) painting_.get();
}

void PlotBacking::hand_over() {
    picture_.set_scene(scene_);
    handed_over_ = true;
}

}  // namespace servo::scope
