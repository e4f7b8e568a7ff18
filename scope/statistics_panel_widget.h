// Figures of the visible window, a line for each curve drawn.
#pragma once

#include <QWidget>
#include <array>

#include "scope/recording.h"
#include "scope/scope_controls_view.h"

class QGridLayout;

namespace servo::scope {

class CurveChip;
class NumberLabel;

class StatisticsPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit StatisticsPanelWidget(QWidget* parent);

    // The curves of the visible window; hidden ones are left out.
    void show_recording(const Recording& visible, const ScopeData& held);

  private:
    static constexpr std::size_t kFigures = 5;
    struct Line {
        CurveChip* chip = nullptr;
        std::array<NumberLabel*, kFigures> figures{};  // LabelS(5 * channel) and on
        NumberLabel* unit = nullptr;
    };
    void make_line(int channel, QGridLayout& grid);
    void clear(Line& line);

    std::array<Line, kCurves> lines_;
};

}  // namespace servo::scope
