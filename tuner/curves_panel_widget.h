// Which curves the picture shows; each box carries a sample of its line, so the row is the legend.
// The boxes of the filters' curves are with their filters. One line where there is room for it, two
// where the letters are wider than the window.
#pragma once

#include <QGridLayout>
#include <QWidget>
#include <array>

#include "tuner/tuner_controls_view.h"

namespace servo::tuner {

class CurvesPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    CurvesPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    QSize sizeHint() const override;  // in one line
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    static constexpr std::size_t kBoxes = 6;

    int width_of(int columns) const;
    int height_of(int columns) const;
    void arrange(int columns);
    void arrange_for_room();

    PanelContext context_;
    ControlTexts texts_;
    std::array<QCheckBox*, kBoxes> boxes_{};  // Check3 to Check8
    QGridLayout* grid_ = nullptr;
    int columns_ = 0;
};

}  // namespace servo::tuner
