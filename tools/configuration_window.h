// The configuration transfer on screen. It holds no rule: events go to the ImExport, and what that
// holds is shown.
#pragma once

#include <QSplitter>
#include <QTabWidget>
#include <QTimer>
#include <QWidget>

#include "tools/configuration.h"

namespace servo::tools {

class ConfigurationReportWidget;
class ConfigurationTabWidget;

class ConfigurationWindow final : public QWidget {
    Q_OBJECT

  public:
    // The form outlives the window, which takes its two notifications.
    explicit ConfigurationWindow(ImExport& form, QWidget* parent = nullptr);
    ~ConfigurationWindow() override;

    QSize sizeHint() const override { return {980, 620}; }

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void refresh();
    void refresh_row(std::size_t row);
    void refresh_report();
    void apply_language();

    ImExport& form_;
    QTabWidget* SSTab1_ = nullptr;  // write, read
    ConfigurationTabWidget* write_ = nullptr;
    ConfigurationTabWidget* read_ = nullptr;
    QSplitter* halves_ = nullptr;
    ConfigurationReportWidget* report_ = nullptr;
    QTimer Timer1_{this};  // lets the buttons go again when no job runs any more
};

}  // namespace servo::tools
