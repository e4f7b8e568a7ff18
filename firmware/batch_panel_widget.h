// The production side: batch file, product name, barcode. All by keyboard or scanner.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QWidget>

#include "firmware/download_controls_view.h"

namespace servo::firmware {

class BatchPanelWidget final : public QWidget {
    Q_OBJECT

  public:
    BatchPanelWidget(PanelContext context, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);

    // Shows the image's path, when there is one.
    void take_path(QLabel* path);

  private:
    void make_controls();
    void connect_controls();
    void lay_out();
    void follow_focus();

    PanelContext context_;
    ControlTexts texts_;
    QCheckBox* Check1_ = nullptr;      // batch mode, a mark for the operator
    QPushButton* Command5_ = nullptr;  // choose the batch file
    ElidedLabel* Label13_ = nullptr;   // path of the batch file
    KeyBox* Text3_ = nullptr;          // product name
    KeyBox* Text4_ = nullptr;          // barcode
    QLabel* Label8_ = nullptr;         // firmware file of the product
    QLabel* Label10_ = nullptr;        // text that must stand in the barcode
    QLabel* Label12_ = nullptr;        // characters of the barcode
    QLabel* Label15_ = nullptr;        // position of that text
    QGridLayout* grid_ = nullptr;
};

}  // namespace servo::firmware
