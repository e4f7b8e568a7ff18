// The homing definition on screen. It holds no rule: events go to the Homing2, and what that holds
// is shown.
#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>
#include <QWidget>
#include <string>

#include "tools/homing.h"

namespace servo::tools {

class HomingChoiceWidget;
class HomingPictureWidget;
class HomingValuesWidget;

inline constexpr std::string_view kHomingCaption = "原点定义/Homing Definition";

class Homing2Window final : public QWidget, private HomingObserver {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the user does is shown at once.
    static constexpr int kGatherMs = 50;

    // The form outlives the window.
    explicit Homing2Window(Homing2& form, QWidget* parent = nullptr);
    ~Homing2Window() override;

    // Shows what has been gathered.
    void refresh_now();

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void controls_changed() override;
    void focus_moved() override;
    void lay_out();
    void apply_language();
    void refresh_comparison();
    void refresh_picture();
    void refresh_texts();
    void mark_method();
    void reserve_travel();

    Homing2& form_;
    HomingChoiceWidget* choices_ = nullptr;
    HomingValuesWidget* values_ = nullptr;
    QLabel* comparison_ = nullptr;            // how drive and choice stand to each other
    HomingPictureWidget* Image1_ = nullptr;   // picture of the method
    QLabel* travel_ = nullptr;                // what the axis will do, step by step
    QPlainTextEdit* RichTextBox1_ = nullptr;  // description of the group of methods
    std::string marked_;                      // whose line of the description is marked
    QTimer gather_;
};

}  // namespace servo::tools
