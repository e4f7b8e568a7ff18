// The commands that store, reset and restart, on screen. It holds no rule: clicks go to the
// InitSave, and what that holds is shown.
#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <array>

#include "tools/form_controls_view.h"
#include "tools/init_save.h"

namespace servo::tools {

class InitSaveWindow final : public QWidget {
    Q_OBJECT

  public:
    // How often the rest of the lock is told anew and a restarted drive is looked for.
    static constexpr int kLookMs = 100;

    // The form outlives the window.
    explicit InitSaveWindow(InitSave& form, QWidget* parent = nullptr);
    ~InitSaveWindow() override;

    void refresh_now();
    QSize sizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void make_commands();
    void lay_out();
    int least_width() const;
    int meaning_width() const;
    void reserve_meanings();
    void click(int command);
    void look();
    void apply_language();

    InitSave& form_;
    form::Tips tips_;
    std::array<QPushButton*, kInitSaveCommands> commands_{};  // Command1 to Command5
    std::array<QLabel*, kInitSaveCommands> meanings_{};       // LabelA to LabelE
    QProgressBar* lock_ = nullptr;                            // ProgressBarA: rest of the lock
    QLabel* lock_text_ = nullptr;                             // LabelF
    QLabel* note_ = nullptr;                                  // LabelG: the last command
    QTimer Timer1_{this};                                     // ends the lock
    QTimer looks_;
};

}  // namespace servo::tools
