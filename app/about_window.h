// `About`: what this program is.
#pragma once

#include <QWidget>

#include "dictionary/store.h"

namespace servo::app {

class AboutWindow final : public QWidget {
    Q_OBJECT

  public:
    explicit AboutWindow(dictionary::Variant variant);

  Q_SIGNALS:
    void close_asked();
};

}  // namespace servo::app
