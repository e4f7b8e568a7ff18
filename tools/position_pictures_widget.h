// What the table does, in pictures and words: its flow, its motion, and what is wrong with it.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>

#include "tools/pos_flow.h"
#include "tools/position_flow_widget.h"
#include "tools/position_motion_widget.h"

namespace servo::tools {

class PositionPicturesWidget final : public QSplitter {
    Q_OBJECT

  public:
    // The form outlives the widget.
    PositionPicturesWidget(PosFlow& form, QWidget* parent);

    void refresh();        // the table has changed
    void refresh_steps();  // the selected or the running step has changed
    void apply_language();

  Q_SIGNALS:
    void step_picked(int step);

  private:
    QWidget* make_corner();
    QWidget* make_flow();
    QWidget* make_motion();
    QWidget* make_findings();
    void show_findings();
    void show_motion_note();

    PosFlow& form_;
    PosFlow::Picture picture_;
    QTabWidget* tabs_;                    // SSTabA
    QComboBox* start_ = nullptr;          // ComboA
    QLabel* start_label_ = nullptr;       // LabelC
    PositionFlowWidget* flow_ = nullptr;  // PictureA
    QScrollArea* flow_room_ = nullptr;
    PositionMotionWidget* motion_ = nullptr;  // PictureB
    QLabel* motion_label_ = nullptr;          // LabelD
    QLabel* findings_label_ = nullptr;        // LabelE
    QListWidget* findings_ = nullptr;         // ListA
};

}  // namespace servo::tools
