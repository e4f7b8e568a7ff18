// The four channels, a row each: what is recorded, in which unit and scale it is drawn, and its
// value under cursor X1.
#pragma once

#include <QWidget>
#include <array>

#include "scope/scope_controls_view.h"

class QGridLayout;

namespace servo::scope {

class NumberLabel;
class PickListWidget;

class ChannelPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    ChannelPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    std::function<void(int)> object_asked;

  private:
    struct Row {
        QCheckBox* enable = nullptr;       // Check14 to Check11
        PickListWidget* object = nullptr;  // Combo1 to Combo4
        QToolButton* another = nullptr;    // ObjectButton(0) to (3)
        PickListWidget* unit = nullptr;    // Combo5 to Combo8
        QLineEdit* scale = nullptr;        // Text5 to Text8
        QLineEdit* offset = nullptr;       // Text9 to Text12
        QCheckBox* auto_scale = nullptr;   // Check6 to Check9
        QCheckBox* hide = nullptr;         // Check1 to Check4
        NumberLabel* value = nullptr;      // Label7 to Label10
    };
    void make_headings(QGridLayout& grid);
    void make_row(int channel, QGridLayout& grid);
    void name_row(int channel);
    void connect_row(int channel);
    void connect_texts(int channel);
    void refresh_row(int channel);

    PanelContext context_;
    ControlTexts texts_;
    std::array<Row, kCurves> rows_;
};

}  // namespace servo::scope
