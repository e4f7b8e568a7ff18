// Stands in the chooser's place while none is open: what the pictures mean, and the keys.
#pragma once

#include <QFrame>

namespace servo::tools {

class DigitalIOLegendWidget final : public QFrame {
    Q_OBJECT

  public:
    explicit DigitalIOLegendWidget(QWidget* parent);
};

}  // namespace servo::tools
