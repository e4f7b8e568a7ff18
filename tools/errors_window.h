// The fault words on screen, with what stands behind the fault that one looks at. It holds no rule:
// clicks go to the Errors, and what that holds is shown.
#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "dictionary/store.h"
#include "tools/errors.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

class ErrorsWordWidget;

class ErrorsWindow final : public QWidget {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the user does is shown at once.
    static constexpr int kGatherMs = 50;

    // All outlive the window.
    ErrorsWindow(Errors& form, const dictionary::Variant& Tavro_Nevra_Other_mode,
                 QWidget* parent = nullptr);
    ~ErrorsWindow() override;

    // Shows what has been gathered.
    void refresh_now();

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    ErrorsWordWidget* make_word(int word);
    void make_detail();
    void lay_out();
    void point_at(int fault, bool here);
    void select(int fault);
    void refresh_detail();
    void explain();
    void apply_language();

    Errors& form_;
    const dictionary::Variant& variant_;
    std::optional<int> pointed_;
    std::optional<int> selected_;
    ErrorsWordWidget* first_ = nullptr;
    ErrorsWordWidget* second_ = nullptr;
    QLabel* summary_ = nullptr;      // LabelJ
    QWidget* detail_ = nullptr;      // around these
    QLabel* heading_ = nullptr;      // LabelK: which fault
    QLabel* cause_head_ = nullptr;   // LabelL
    QLabel* cause_ = nullptr;        // LabelM
    QLabel* remedy_head_ = nullptr;  // LabelN
    QLabel* remedy_ = nullptr;       // LabelO
    QLabel* reset_ = nullptr;        // LabelP: how a fault is cleared
    QTimer gather_;
};

}  // namespace servo::tools
