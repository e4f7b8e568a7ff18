// The firmware download on screen. It holds no rule: events go to the Download, and what that holds
// is shown.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "firmware/download.h"
#include "params/page.h"
#include "params/page_grid_view.h"

namespace servo::firmware {

class BatchPanelWidget;
class DialogueView;
class DrivePanelWidget;
class ImagePanelWidget;
struct PanelContext;
class TransferPanelWidget;

// How the window asks and speaks; empty functions cancel.
struct DownloadDialogs {
    // Where to save a text file: title, suggested name. The path (UTF-8), nothing when cancelled.
    std::function<std::optional<std::string>(std::string_view title, std::string_view name)>
        ask_save;
    std::function<void(std::string_view title, std::string_view text)> tell;
    std::function<bool()> link_open;
};

class DownloadWindow final : public QWidget, private DownloadObserver {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the operator does is shown at once.
    static constexpr int kGatherMs = 50;
    // How often the software version is copied from its row, and the remaining time told anew.
    static constexpr int kTimer1Ms = 500;

    // Both outlive the window. `rows` is the hidden grid with the row of the software version.
    DownloadWindow(Download& form, params::Page& rows, DownloadDialogs dialogs,
                   QWidget* parent = nullptr);
    ~DownloadWindow() override;

    // Shows what has been gathered.
    void refresh_now();

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void controls_changed() override { gather(); }
    void dialogue_changed() override { gather(); }
    void transfer_ended(const TransferResult&) override { refresh_now(); }
    void gather();

    void make_panels(const PanelContext& context);
    void lay_out();
    void apply_language();
    void show_dialogue(bool shown);
    void save_dialogue();
    void Timer1_Timer();

    Download& form_;
    DownloadDialogs dialogs_;
    params::PageGridView grid_;  // MSHFlexGrid1, never shown
    ImagePanelWidget* image_ = nullptr;
    TransferPanelWidget* transfer_ = nullptr;
    BatchPanelWidget* batch_ = nullptr;
    DrivePanelWidget* drive_ = nullptr;
    DialogueView* dialogue_ = nullptr;
    QTimer gather_;
    QTimer Timer1_;
};

}  // namespace servo::firmware
