// The position table on screen. It holds no rule: events go to the PosFlow, and what that holds is
// shown.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "params/leave_watch_view.h"
#include "tools/pos_flow.h"

namespace servo::tools {

class PositionPicturesWidget;
class PositionTablesWidget;

class PosFlowWindow final : public QWidget, private PosFlowObserver {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the user does is shown at once.
    static constexpr int kGatherMs = 50;

    // The form outlives the window.
    explicit PosFlowWindow(PosFlow& form, QWidget* parent = nullptr);
    ~PosFlowWindow() override;

    // Shows what has been gathered.
    void refresh_now();

    QSize sizeHint() const override { return {1000, 640}; }

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void grids_changed() override;
    void editor_changed() override;
    void labels_changed() override;
    void gather();

    QPushButton* make_command(const char* name, std::function<void()> click);
    QWidget* make_commands();
    QWidget* make_results();
    void lay_out();
    void refresh_labels();
    void apply_language();

    PosFlow& form_;
    QPushButton* Command1_ = nullptr;  // read from the drive
    QPushButton* Command2_ = nullptr;  // write to the drive
    QPushButton* Command3_ = nullptr;  // import
    QPushButton* Command4_ = nullptr;  // export
    QPushButton* Command5_ = nullptr;  // clear
    QPushButton* undo_ = nullptr;      // CommandA
    QLabel* Label1_ = nullptr;         // caption of the live index
    QLineEdit* Text1_ = nullptr;       // the live index
    QProgressBar* ProgressBar1_ = nullptr;
    QLabel* Label3_ = nullptr;  // result of the last read
    QLabel* Label4_ = nullptr;  // result of the last write
    QLabel* note_ = nullptr;    // LabelF, the job in words
    PositionTablesWidget* tables_ = nullptr;
    PositionPicturesWidget* pictures_ = nullptr;
    QTimer gather_;
    bool grids_stale_ = true;
    // What the pictures were made from.
    int shown_start_ = 0;
    double shown_resolution_ = 0;
    bool shown_known_ = false;
    params::LeaveWatch watch_;  // leaving the window puts an open box away
};

}  // namespace servo::tools
