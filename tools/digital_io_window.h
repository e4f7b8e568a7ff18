// The digital inputs and outputs on screen. It holds no rule: events go to the DigitalIO, and what
// that holds is shown.
#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "dictionary/store.h"
#include "tools/digital_io.h"

namespace servo::tools {

class DigitalIOChooserWidget;
class DigitalIOTableWidget;
class IoNotice;

class DigitalIOWindow final : public QWidget, private DigitalIOObserver {
    Q_OBJECT

  public:
    // Changes that ticks bring are gathered for so long. What the user does is shown at once.
    static constexpr int kGatherMs = 50;
    static constexpr int kTimer1Ms = 150;  // a tick of the choosers' blinking
    static constexpr int kAgeMs = 1000;    // how often the age of the states is told anew

    // Both outlive the window. The form has read its list.
    DigitalIOWindow(DigitalIO& form, const dictionary::Variant& Tavro_Nevra_Other_mode,
                    QWidget* parent = nullptr);
    ~DigitalIOWindow() override;

    // Shows what has been gathered.
    void refresh_now();
    QSize sizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void controls_changed() override;
    void make_notices();
    void make_tables();
    void lay_out();
    void place_parts();
    void apply_language();
    void show_chooser();
    void refresh_notices();

    DigitalIO& form_;
    const dictionary::Variant& variant_;
    std::optional<dictionary::Variant> placed_;  // the layout that the parts stand in
    std::optional<int> shown_row_;               // whose chooser is on screen

    IoNotice* simulated_ = nullptr;            // LabelS: pins that are forced
    IoNotice* warning_ = nullptr;              // LabelW
    DigitalIOTableWidget* inputs_ = nullptr;   // Frame1
    DigitalIOTableWidget* outputs_ = nullptr;  // Frame2
    QStackedWidget* side_ = nullptr;           // a legend, Picture1 or Picture2
    DigitalIOChooserWidget* Picture1_ = nullptr;
    DigitalIOChooserWidget* Picture2_ = nullptr;
    QLabel* age_ = nullptr;  // LabelT
    QGridLayout* parts_ = nullptr;
    QTimer gather_;
    QTimer Timer1_;
    QTimer seconds_;
};

}  // namespace servo::tools
