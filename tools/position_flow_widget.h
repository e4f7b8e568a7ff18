// The picture of the table's flow. A click on a box, or the arrow keys, picks its step.
#pragma once

#include <QWidget>

#include "tools/pos_flow.h"
#include "tools/position_table_flow_picture.h"

namespace servo::tools {

class PositionFlowWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit PositionFlowWidget(QWidget* parent);

    void show_flow(const PosFlow::Picture& picture, base::Language language);
    void show_steps(int selected, int running);  // -1 none

    QSize sizeHint() const override;

  Q_SIGNALS:
    void step_picked(int step);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void arrange();
    void paint_box(QPainter& painter, const FlowBox& box) const;
    void paint_box_texts(QPainter& painter, const FlowBox& box, const QRectF& rect) const;
    void paint_tag(QPainter& painter, const FlowBox& box, const QRectF& rect) const;
    void paint_arrow(QPainter& painter, const FlowArrow& arrow) const;
    void pick_neighbour(int steps);

    PositionProgram program_;
    Flow flow_;
    FlowPicture picture_;
    base::Language language_ = base::Language::kEnglish;
    int selected_ = -1;
    int running_ = -1;
};

}  // namespace servo::tools
