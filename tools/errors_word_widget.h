// The frame of one fault word: the word in hexadecimal, and its 16 faults.
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <array>
#include <optional>

#include "tools/errors_row_widget.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

class ErrorsWordWidget final : public QGroupBox {
    Q_OBJECT

  public:
    // Word 1 is FrameA with LabelA (the word), LabelB, LabelC (heads) and LabelH (on the mask);
    // word 2 is FrameB with LabelD, LabelE, LabelF and LabelI.
    ErrorsWordWidget(Errors& form, int word, QWidget* parent);

    void refresh();
    void mark(std::optional<int> explained);
    void apply_language(base::Language language, dictionary::Variant variant);

  Q_SIGNALS:
    void pointed(int fault, bool here);
    void selected(int fault);
    void acted();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void make_head();
    void fit_heads();
    void make_rows();

    Errors& form_;
    int word_;
    form::Tips tips_;
    QLabel* value_ = nullptr;
    QLabel* state_ = nullptr;
    QLabel* mask_ = nullptr;
    QLabel* note_ = nullptr;
    std::array<ErrorsRowWidget*, kFaultBits / 2> rows_{};  // by bit
};

}  // namespace servo::tools
