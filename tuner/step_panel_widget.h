// The answer of a simulated loop to a step of its command.
#pragma once

#include <QWidget>

#include "tuner/step_response.h"
#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

// Time along, answer up; the command as a line at 1.
class StepPlot final : public QWidget {
    Q_OBJECT

  public:
    explicit StepPlot(QWidget* parent);

    void show_response(StepResponse response);
    const StepResponse& response() const { return response_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void draw_grid(QPainter& painter, const QRectF& area, double top, double bottom) const;
    void draw_curve(QPainter& painter, const QRectF& area, double top, double bottom) const;
    double length() const;  // s

    StepResponse response_;
};

class StepPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    StepPanelWidget(PanelContext context, QWidget* parent);

    // The simulation has changed; it is worked out when it is seen.
    void invalidate();
    void apply_language(base::Language language);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void work_out();
    void show_figures();
    void show_figures(std::string_view overshoot, std::string_view times, std::string_view doubt);

    PanelContext context_;
    ControlTexts texts_;
    bool stale_ = true;
    PickList* loop_ = nullptr;     // ComboStep
    QLabel* overshoot_ = nullptr;  // LabelOvershoot
    QLabel* figures_ = nullptr;    // LabelStep: times
    QLabel* doubt_ = nullptr;      // LabelDoubt: why it may be wrong
    StepPlot* plot_ = nullptr;     // PictureStep
};

}  // namespace servo::tuner
