// The picture of the curves, painted beside the thread of the windows. A recording of noise takes
// several milliseconds to paint; on the thread of the windows, where the engine ticks every 3 ms,
// twenty such pictures a second would cost the line a good part of its turns.
//
// What is shown is never out of date when somebody looks: image() waits for a picture that is under
// way, or paints it.
#pragma once

#include <functional>
#include <future>

#include "scope/plot_paint_view.h"

namespace servo::scope {

class PlotBacking {
  public:
    // `ready` is called on another thread, each time that a picture begun by paint_ahead is done.
    explicit PlotBacking(std::function<void()> ready) : ready_(std::move(ready)) {}
    ~PlotBacking() { finish(); }
    PlotBacking(const PlotBacking&) = delete;
    PlotBacking& operator=(const PlotBacking&) = delete;

    void set_scene(PlotScene scene);
    const PlotScene& scene() const { return scene_; }
    void set_font(const QFont& font);

    // Begins to paint the scene in that size; while another is under way, nothing. False when there
    // is nothing to be ahead of: no picture of that size has been shown yet.
    bool paint_ahead(QSize size, qreal ratio);

    // The picture of the scene, waited for.
    const QImage& image(QSize size, qreal ratio);

    // What was begun by paint_ahead and is done; null when that is no more of this size. A newer
    // scene may be there already: whoever shows this one begins the next.
    QImage ready(QSize size, qreal ratio);

  private:
    void finish();
    void hand_over();

    std::function<void()> ready_;
    PlotScene scene_;
    bool handed_over_ = true;  // the picture has the scene
    QSize size_;               // of the picture shown last
    qreal ratio_ = 0;
    PlotPicture picture_;  // the other thread's while `painting_` is under way
    std::future<void> painting_;
};

}  // namespace servo::scope
