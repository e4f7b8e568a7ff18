// The plot with what stands around it: the mode and the zoom above, values at the left of the
// horizontal lines, times below. Everything here follows the plot's lines, so it is placed by them.
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "scope/scope_controls_view.h"

namespace servo::scope {

class NumberLabel;

// A word that is clicked; reached with Tab, worked with Enter and Space too.
class WordButton final : public QLabel {
    Q_OBJECT

  public:
    explicit WordButton(QWidget* parent);
    std::function<void()> clicked;

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

class PlotFrameWidget final : public QWidget {
    Q_OBJECT

  public:
    // The plot becomes a child.
    PlotFrameWidget(PanelContext context, QWidget* plot, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void make_head();
    void make_labels();
    void place();
    void show_mode();
    int column_width() const;

    PanelContext context_;
    ControlTexts texts_;
    QWidget* plot_;
    QWidget* head_ = nullptr;
    NumberLabel* Label40_ = nullptr;  // curve and unit of the values at the left
    QLabel* Label44_ = nullptr;       // zoom depth, time grid
    QLabel* Label20_ = nullptr;       // the mode
    WordButton* Label22_ = nullptr;   // back to normal mode
    std::array<NumberLabel*, kDivisions> Label43_{};
    std::array<NumberLabel*, 5> Label15_{};
};

}  // namespace servo::scope
