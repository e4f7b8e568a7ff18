// The transfer: start it, see how far it is, and what to do when it has failed.
#pragma once

#include <QProgressBar>
#include <QWidget>

#include "firmware/download_controls_view.h"

namespace servo::firmware {

class TransferPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    TransferPanelWidget(PanelContext context, std::function<bool()> link_open, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    void lay_out();

    PanelContext context_;
    std::function<bool()> link_open_;
    ControlTexts texts_;
    QPushButton* Command4_ = nullptr;  // download
    QProgressBar* ProgressBar1_ = nullptr;
    QLabel* step_ = nullptr;  // what is being done
    QLabel* speed_ = nullptr;
    QLabel* remaining_ = nullptr;
    NoticeFrame* advice_ = nullptr;   // the drive's state after a failure
    QPushButton* again_ = nullptr;    // loads the same file once more
    NoticeFrame* Label19_ = nullptr;  // fixed advice
};

}  // namespace servo::firmware
