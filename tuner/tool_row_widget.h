// The row above the picture: files, what the picture shows, what is under the pointer.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "tuner/picture_geometry.h"
#include "tuner/tuner_controls_view.h"

class QHBoxLayout;

namespace servo::tuner {

// What the row asks of the window.
struct ToolRowEvents {
    std::function<void()> load;                            // Command2
    std::function<void()> save;                            // Command3
    std::function<void(const char* suffix)> save_picture;  // "png", "svg", "pdf"
    std::function<void()> save_table;
};

class ToolRowWidget final : public QWidget {
    Q_OBJECT

  public:
    ToolRowWidget(PanelContext context, ToolRowEvents events, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    void show_pointer(const PointerTexts& texts);
    // What a file command came to; empty takes it away.
    void show_note(const QString& text);

  private:
    void make_files(QHBoxLayout& row);
    void make_choices(QHBoxLayout& row);
    void make_pointer(QHBoxLayout& row);

    PanelContext context_;
    ToolRowEvents events_;
    ControlTexts texts_;
    QPushButton* picture_ = nullptr;  // CommandB
    QPushButton* table_ = nullptr;    // CommandC
    QCheckBox* Check15_ = nullptr;    // gain area
    QCheckBox* Check16_ = nullptr;    // phase area
    PickList* Combo2_ = nullptr;      // dB between two lines
    QLabel* Label15_ = nullptr;       // frequency under the pointer
    QLabel* Label14_ = nullptr;       // gain
    QLabel* Label37_ = nullptr;       // phase
    QLabel* note_ = nullptr;          // LabelNote
};

}  // namespace servo::tuner
