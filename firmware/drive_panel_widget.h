// What the drive says of its firmware, and the engineering actions on it.
#pragma once

#include <QGridLayout>
#include <QWidget>

#include "firmware/download_controls_view.h"

namespace servo::firmware {

class DrivePanelWidget final : public QWidget {
    Q_OBJECT

  public:
    DrivePanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

    // Where Label4 goes while it shows the path of a batch image in place of its caption.
    std::function<void(QLabel*)> show_path;
    std::function<void(bool)> show_dialogue;

  private:
    void make_more();
    void lay_out();
    void refresh_version();

    PanelContext context_;
    ControlTexts texts_;
    ElidedLabel* Label4_ = nullptr;    // caption of the version, or path of a batch image
    QLabel* caption_ = nullptr;        // the caption while Label4 is away
    QLabel* Label18_ = nullptr;        // software version
    QLabel* Label17_ = nullptr;        // checksum that the drive reports
    QPushButton* Command2_ = nullptr;  // read CRC
    QPushButton* Command3_ = nullptr;  // test
    QPushButton* dialogue_ = nullptr;  // shows the line dialogue
    QGridLayout* grid_ = nullptr;
};

}  // namespace servo::firmware
