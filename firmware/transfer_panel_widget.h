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
    void make_lines();
    void connect_buttons();
    void lay_out();

    PanelContext context_;
    std::function<bool()> link_open_;
    ControlTexts texts_;
    QPushButton* Command4_ = nullptr;  // download
    QProgressBar* ProgressBar1_ = nullptr;
    QLabel* step_ = nullptr;  // what is being done
    QLabel* speed_ = nullptr;
    QLabel* remaining_ = nullptr;
    QLabel* facts_ = nullptr;         // blocks and bytes that are sent
    QLabel* warning_ = nullptr;       // what is not
    NoticeFrame* advice_ = nullptr;   // the drive's state after a failure
    QPushButton* again_ = nullptr;    // loads the same file once more
    NoticeFrame* Label19_ = nullptr;  // fixed advice
};

}  // namespace servo::firmware
