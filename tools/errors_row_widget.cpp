#include "tools/errors_row_widget.h"

#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QPainter>

#include "params/ui_palette.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

using namespace form;

namespace {

namespace palette = params::palette;

constexpr int kLamp = 16;
constexpr int kRowGap = 0;
constexpr qreal kFaded = 0.4;
constexpr qreal kRingWidth = 1.5;

}  // namespace

// --- FaultLamp

FaultLamp::FaultLamp(QWidget* parent, int fault) : QWidget(parent) {
    setObjectName(array_name("Image1", fault));
    setFixedHeight(kLamp + 2);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setProperty("picture", QStringLiteral("lamp_off"));
}

void FaultLamp::show_state(bool on, bool fresh) {
    if (on_ == on && fresh_ == fresh) return;
    on_ = on;
    fresh_ = fresh;
    setProperty("picture", on ? QStringLiteral("lamp_on") : QStringLiteral("lamp_off"));
    update();
}

void FaultLamp::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(fresh_ ? 1 : kFaded);
    QRectF disc(0, 0, kLamp, kLamp);
    disc.moveCenter(QRectF(rect()).center());
    if (!on_) {
        painter.setPen(QPen(QColor(palette::kQuietAccent), kRingWidth));
        painter.drawEllipse(disc.adjusted(2, 2, -2, -2));
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(palette::kWarningText));
    painter.drawEllipse(disc);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(disc.center().x() - 1, disc.top() + 3, 2, 6));
    painter.drawRect(QRectF(disc.center().x() - 1, disc.bottom() - 5, 2, 2));
}

// --- ErrorsRowWidget

ErrorsRowWidget::ErrorsRowWidget(Errors& form, int fault, QWidget* parent)
    : QWidget(parent), form_(form), fault_(fault) {
    Image1_ = new FaultLamp(this, fault);
    Check1_ = make_check(this, array_name("Check1", fault), {});
    Check1_->setText(qt(fault_mask_text(fault)));
    Check1_->installEventFilter(this);
    connect(Check1_, &QCheckBox::clicked, this, &ErrorsRowWidget::take_click);
    caption_ = make_value(this, array_name("LabelG", fault));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kErrorsRowLeft, kRowGap, kGap, kRowGap);
    row->setSpacing(kGap);
    row->addWidget(Image1_);
    row->addWidget(Check1_);
    row->addWidget(caption_, 1);
}

// The box may be behind by a moment: then it has gone to where the drive's word is already.
void ErrorsRowWidget::take_click() {
    if (Check1_->isChecked() != form_.Check1(fault_)) form_.Check1_Click(fault_);
    Q_EMIT acted();
}

void ErrorsRowWidget::refresh() {
    const bool on = form_.lamp(fault_);
    Image1_->show_state(on, form_.news() == FaultNews::kLive);
    Check1_->setChecked(form_.Check1(fault_));
    set_bold(caption_, on);
    set_weight(caption_, on || !form_.Check1(fault_) ? Weight::kPlain : Weight::kQuiet);
}

void ErrorsRowWidget::mark(bool explained) {
    if (explained_ == explained) return;
    explained_ = explained;
    update();
}

void ErrorsRowWidget::apply_language(base::Language language, dictionary::Variant variant) {
    const base::Text text = fault_caption(fault_, variant);
    const QString shown = qt(text.in(language));
    // A name that is the same in both languages is no pair.
    caption_->setProperty("Tag", text.chinese == text.english
                                     ? qt(text.chinese)
                                     : qt(text.chinese) + QLatin1Char('/') + qt(text.english));
    if (caption_->text() != shown) caption_->setText(shown);
    const QString one_line = QString(shown).replace(QLatin1Char('\n'), QLatin1Char(' '));
    Check1_->setAccessibleName(Check1_->text() + QLatin1Char(' ') + one_line);
    Image1_->setAccessibleName(one_line);
}

void ErrorsRowWidget::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    Q_EMIT pointed(fault_, true);
}

void ErrorsRowWidget::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    Q_EMIT pointed(fault_, false);
}

void ErrorsRowWidget::mousePressEvent(QMouseEvent* event) {
    QWidget::mousePressEvent(event);
    Check1_->setFocus(Qt::MouseFocusReason);
}

bool ErrorsRowWidget::eventFilter(QObject* watched, QEvent* event) {
    // A window that is shown or comes to the top gives the focus to a box that nobody chose.
    if (watched == Check1_ && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
            reason == Qt::BacktabFocusReason)
            Q_EMIT selected(fault_);
    }
    return QWidget::eventFilter(watched, event);
}

void ErrorsRowWidget::paintEvent(QPaintEvent*) {
    if (!explained_) return;
    QPainter painter(this);
    painter.fillRect(rect(), QColor(palette::kSelectedCell));
}

}  // namespace servo::tools
