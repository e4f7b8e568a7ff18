// Messages and file dialogs on screen.
#pragma once

#include <QPointer>
#include <QWidget>

#include "app/user_dialogs.h"

namespace servo::app {

class MessageBoxes final : public UserDialogs {
  public:
    // The window that boxes stand above; may be null while there is none.
    void set_parent(QWidget* parent) { parent_ = parent; }

    base::Answer show(std::string_view title, std::string_view text,
                      base::Buttons buttons) override;
    std::optional<std::string> ask_file(const FileRequest& request) override;

  private:
    QPointer<QWidget> parent_;
};

}  // namespace servo::app
