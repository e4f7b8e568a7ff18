// What was said on the line in the last transfer, to be read while it goes on and kept in a file.
#pragma once

#include <QPlainTextEdit>
#include <QWidget>

#include "firmware/download_controls_view.h"

namespace servo::firmware {

class DialogueView final : public QWidget {
    Q_OBJECT

  public:
    DialogueView(PanelContext context, QWidget* parent);

    // Adds what has come since. Costs nothing when nothing has.
    void refresh();
    void apply_language(base::Language language);

  Q_SIGNALS:
    void save_asked();

  private:
    PanelContext context_;
    ControlTexts texts_;
    QPlainTextEdit* text_ = nullptr;
    QPushButton* save_ = nullptr;
    std::uint64_t seen_ = 0;  // changes of the log
    std::uint64_t shown_transfer_ = 0;
    std::size_t shown_ = 0;  // entries, those that were pushed out counted
};

}  // namespace servo::firmware
