// The image: choose it, see what it is.
#pragma once

#include <QWidget>

#include "firmware/download_controls_view.h"

namespace servo::firmware {

class ImagePanelWidget final : public QWidget {
    Q_OBJECT

  public:
    ImagePanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

  private:
    void lay_out();

    PanelContext context_;
    ControlTexts texts_;
    QPushButton* Command1_ = nullptr;  // load file
    QLineEdit* Text5_ = nullptr;       // path of the image
    ElidedLabel* Label1_ = nullptr;    // header and checksum
};

}  // namespace servo::firmware
