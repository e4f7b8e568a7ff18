// The place of a window that the program does not have yet: says so and what it will do, in the
// language of the screen. Nothing in it can be operated.
#pragma once

#include <QWidget>

#include "app/window_table.h"

class QLabel;

namespace servo::app {

class ComingWindow final : public QWidget {
    Q_OBJECT

  public:
    // A window of the table in WindowState::kComing.
    explicit ComingWindow(const WindowDefinition& window);

  private:
    QLabel* add_line(const char* name, base::Text text);
};

}  // namespace servo::app
