#include "tools/digital_io_controls_view.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QSvgRenderer>
#include <QVariant>
#include <algorithm>
#include <map>
#include <memory>

#include "params/drawn_icon_view.h"
#include "params/ui_palette.h"

// The pictures are in a static library, whose resources wait to be asked for. (The macro wants a
// function outside of any namespace.)
static void load_digital_io_pictures() {
    Q_INIT_RESOURCE(digital_io_icons);
}

namespace servo::tools {

namespace {

namespace palette = params::palette;

constexpr qreal kFaded = 0.45;
constexpr int kRadius = 4;
constexpr int kEdge = 4;  // bar at the left of a notice
constexpr QRgb kNoticeColour = 0xfffdf3dd;
constexpr QRgb kNoticeFrame = 0xffe0c184;
constexpr QRgb kNoticeBar = 0xffc47f13;
constexpr QRgb kHover = 0xffdce9f5;

QSvgRenderer& renderer_of(const QString& picture) {
    static const bool loaded = (load_digital_io_pictures(), true);
    static_cast<void>(loaded);
    static std::map<QString, std::unique_ptr<QSvgRenderer>> renderers;
    std::unique_ptr<QSvgRenderer>& found = renderers[picture];
    if (!found) {
        found = std::make_unique<QSvgRenderer>(
            QStringLiteral(":/tools/digital_io/%1.svg").arg(picture));
        found->setAspectRatioMode(Qt::KeepAspectRatio);
    }
    return *found;
}

class IoIcon final : public params::DrawnIcon {
  public:
    explicit IoIcon(QString picture) : picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        io_paint(*painter, picture_, place, mode == QIcon::Disabled ? kFaded : 1);
    }
    QIconEngine* clone() const override { return new IoIcon(*this); }

  private:
    QString picture_;
};

}  // namespace

QIcon io_icon(const char* name) {
    return QIcon(new IoIcon(QLatin1String(name)));
}

void io_paint(QPainter& painter, const QString& picture, const QRectF& place, qreal opacity) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(painter.opacity() * opacity);
    renderer_of(picture).render(&painter, place);
    painter.restore();
}

void io_quiet(QWidget* control, bool quiet) {
    QPalette colours = control->palette();
    const QColor wanted(quiet ? palette::kMutedText : palette::kText);
    if (colours.color(QPalette::WindowText) == wanted && colours.color(QPalette::Text) == wanted)
        return;
    colours.setColor(QPalette::WindowText, wanted);
    colours.setColor(QPalette::Text, wanted);
    control->setPalette(colours);
}

// --- LampBox

LampBox::LampBox(Look look, QWidget* parent) : QCheckBox(parent), look_(look) {
    setAttribute(Qt::WA_Hover);
    if (look == Look::kLamp) setFocusPolicy(Qt::NoFocus);
    form::set_pair(this, "-");
    show_state(false, false, false);
}

void LampBox::show_state(bool on, bool known, bool fresh) {
    const bool changed = known_ != known || fresh_ != fresh;
    known_ = known;
    fresh_ = fresh;
    if (isChecked() != on) setChecked(on);
    if (look_ != Look::kLamp) setEnabled(fresh);
    if (changed) update();
}

QString LampBox::picture() const {
    const bool lamp = look_ == Look::kLamp;
    if (!known_) return lamp ? QStringLiteral("lamp_unknown") : QStringLiteral("box_unknown");
    if (lamp) return isChecked() ? QStringLiteral("lamp_on") : QStringLiteral("lamp_off");
    if (!isChecked()) return QStringLiteral("box_clear");
    return look_ == Look::kForce ? QStringLiteral("box_forced") : QStringLiteral("box_ticked");
}

int io_row_height(const QWidget& control) {
    return std::max(kIoRowHeight, control.fontMetrics().height() + 2);
}

QSize LampBox::sizeHint() const {
    return {kIoLampSize + 2 * kIoGap, io_row_height(*this)};
}

void LampBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF room = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const bool clickable = look_ != Look::kLamp && isEnabled();
    if (clickable && (underMouse() || hasFocus())) {
        painter.setPen(hasFocus() ? QColor(palette::kAccent) : Qt::transparent);
        painter.setBrush(underMouse() ? QColor(kHover) : Qt::transparent);
        painter.drawRoundedRect(room, kRadius, kRadius);
    }
    QRectF place(0, 0, kIoLampSize, kIoLampSize);
    place.moveCenter(QRectF(rect()).center());
    io_paint(painter, picture(), place, fresh_ ? 1 : kFaded);
}

// --- IoNotice

IoNotice::IoNotice(const QString& label_name, QWidget* parent)
    : QFrame(parent), label_(form::make_value(this, label_name)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * kIoGap, kIoGap / 2, kIoGap, kIoGap / 2);
    label_->setMinimumWidth(1);  // a long line is cut and does not widen the window
    label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(label_, 1);
    hide();
}

void IoNotice::add(QPushButton* button) {
    layout()->addWidget(button);
}

void IoNotice::show_text(const QString& text, const QString& tip) {
    if (label_->text() != text) label_->setText(text);
    setToolTip(tip);
    setVisible(!text.isEmpty());
}

void IoNotice::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QColor(kNoticeFrame));
    painter.setBrush(QColor(kNoticeColour));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(kNoticeBar));
    painter.drawRoundedRect(QRectF(0, 0, kEdge, height()), kEdge / 2.0, kEdge / 2.0);
}

}  // namespace servo::tools
