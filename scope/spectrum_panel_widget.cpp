#include "scope/spectrum_panel_widget.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <algorithm>

#include "scope/curve_chip_widget.h"
#include "scope/number_label_widget.h"
#include "scope/spectrum.h"
#include "scope/spectrum_plot_widget.h"

namespace servo::scope {

namespace {

// In the order of SpectrumWindow.
constexpr std::array<base::Text, 5> kWindows{{{"矩形窗", "Rectangle"},
                                              {"汉宁窗", "Hann"},
                                              {"汉明窗", "Hamming"},
                                              {"布莱克曼窗", "Blackman"},
                                              {"平顶窗", "Flat top"}}};
constexpr int kFirstWindow = 1;
constexpr const char* kWidestPeak = "Peak 0000.0 Hz, 000.000 rpm";
constexpr base::Text kPeak{"峰值 %1 Hz，%2 %3", "Peak %1 Hz, %2 %3"};

}  // namespace

SpectrumPanelWidget::SpectrumPanelWidget(QWidget* parent) : QWidget(parent) {
    make_controls();
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap);
    auto* head = new QHBoxLayout;
    head->setSpacing(kGap);
    head->addWidget(make_heading(this, "LabelY", {"频谱", "Spectrum"}));
    head->addWidget(peak_, 1);
    row->addWidget(curve_);
    row->addWidget(window_);
    row->addWidget(log_);
    row->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap / 2);
    layout->addLayout(head);
    layout->addLayout(row);
    layout->addWidget(plot_, 1);
}

void SpectrumPanelWidget::make_controls() {
    curve_ = named(new QComboBox(this), "ComboA");
    for (int channel = 0; channel < kCurves; ++channel)
        curve_->addItem(shape_icon(channel), QString::number(channel + 1));
    window_ = named(new QComboBox(this), "ComboB");
    for (const base::Text& window : kWindows)
        window_->addItem(to_qt(window.english));
    window_->setCurrentIndex(kFirstWindow);
    log_ = make_check(this, "CheckA", {"对数", "Log"});
    peak_ = named(new NumberLabel(kWidestPeak, this), "LabelX");
    plot_ = named(new SpectrumPlot(this), "PictureA");
    connect(curve_, &QComboBox::activated, this, [this] { compute(); });
    connect(window_, &QComboBox::activated, this, [this] { compute(); });
    connect(log_, &QCheckBox::toggled, this, [this](bool on) { plot_->set_logarithmic(on); });
    texts_.add(curve_, {"频谱的曲线", "Curve of the spectrum"});
    texts_.add(window_, {"窗函数", "Window function"});
    texts_.add(log_, {"对数幅值", "Logarithmic amplitude"});
    texts_.add(plot_, {"频谱图", "Spectrum plot"});
}

void SpectrumPanelWidget::show_recording(const Recording& visible) {
    visible_ = visible;
    compute();
}

void SpectrumPanelWidget::compute() {
    const auto curve =
        std::ranges::find(visible_.curves, curve_->currentIndex(), &RecordedCurve::channel);
    if (curve == visible_.curves.end() || curve->values.size() < 2) {
        plot_->show_spectrum({}, {});
        peak_->clear();
        return;
    }
    const QString unit = to_qt(curve->unit);
    plot_->show_spectrum(spectrum_of(curve->values, visible_.period_us,
                                     static_cast<SpectrumWindow>(window_->currentIndex())),
                         unit);
    if (plot_->peak() == 0) {
        peak_->clear();
        return;
    }
    const Spectrum& shown = plot_->spectrum();
    const QString text =
        to_qt(kPeak.in(language_))
            .arg(to_qt(short_number(shown.step_hz * static_cast<double>(plot_->peak()))),
                 to_qt(short_number(shown.amplitudes.at(plot_->peak()))), unit);
    peak_->setText(text);
}

void SpectrumPanelWidget::apply_language(base::Language language) {
    language_ = language;
    texts_.apply(language);
    for (std::size_t i = 0; i < kWindows.size(); ++i)
        window_->setItemText(static_cast<int>(i), to_qt(kWindows.at(i).in(language)));
    compute();
}

}  // namespace servo::scope
