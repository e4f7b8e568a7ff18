// The reference recordings that are kept: shown or not, and removed.
#pragma once

#include <QWidget>
#include <array>

#include "scope/recording.h"
#include "scope/scope_controls_view.h"

namespace servo::scope {

class ReferencePanelWidget final : public QWidget {
    Q_OBJECT

  public:
    ReferencePanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    struct Line {
        QCheckBox* shown = nullptr;     // CheckR(0) to (3)
        QToolButton* remove = nullptr;  // CommandR(0) to (3)
    };

    PanelContext context_;
    ControlTexts texts_;
    QLabel* none_ = nullptr;  // LabelW
    std::array<Line, References::kPlaces> lines_;
};

}  // namespace servo::scope
