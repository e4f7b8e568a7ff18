// A calm little plot of an amplitude spectrum: frequency along, amplitude up, the highest line
// marked. The line under the pointer is told in a tip; the wheel brings low frequencies nearer.
#pragma once

#include <QWidget>

#include "scope/spectrum.h"

namespace servo::scope {

class SpectrumPlot final : public QWidget {
    Q_OBJECT

  public:
    explicit SpectrumPlot(QWidget* parent);

    void show_spectrum(Spectrum spectrum, const QString& unit);
    void set_logarithmic(bool on);

    // The highest line above 0 Hz; 0 when there is none.
    std::size_t peak() const { return peak_; }
    const Spectrum& spectrum() const { return spectrum_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    QRectF area() const;
    double height_of(double amplitude, const QRectF& area) const;
    double top() const;
    // Of the last line that is shown; at least 1.
    double last_line() const;
    void draw_grid(QPainter& painter, const QRectF& area) const;
    void draw_curve(QPainter& painter, const QRectF& area) const;
    void draw_peak(QPainter& painter, const QRectF& area) const;

    Spectrum spectrum_;
    QString unit_;
    std::size_t peak_ = 0;
    bool logarithmic_ = false;
    int halvings_ = 0;  // of the range shown
};

}  // namespace servo::scope
