// Frame5 of the page `EASY1`: application, load, and two switches.
#pragma once

#include <QGroupBox>

#include "tools/form_controls_view.h"

namespace servo::tools {

class EasyApplicationWidget final : public QGroupBox {
    Q_OBJECT

  public:
    explicit EasyApplicationWidget(QWidget* parent);

    void apply_language(base::Language language) { tips_.apply(language); }

  private:
    QGroupBox* make_application();
    QGroupBox* make_others();
    QGroupBox* make_load();

    form::Tips tips_;
};

}  // namespace servo::tools
