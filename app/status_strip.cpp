#include "app/status_strip.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

#include "app/language_walker.h"
#include "app/palette.h"
#include "app/state_controls.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kPictureSize = 16;
constexpr int kGap = 8;
constexpr int kBarMargin = 4;
// Characters that another font lends stand higher than the font of the bar says.
constexpr int kRoomPercent = 120;

void set_text(QLabel& label, const std::string& text) {
    const QString shown = to_qt(text);
    if (label.text() != shown) label.setText(shown);
}

// So wide that every text of the cell fits. Of a fixed size, so that a number that changes every
// second lays out neither the bar nor the main window anew.
void fit(QLabel& label, const std::vector<StripTexts>& widest, std::string StripTexts::*text) {
    int width = 0;
    for (const StripTexts& texts : widest)
        width = std::max(width, label.fontMetrics().horizontalAdvance(to_qt(texts.*text)));
    label.setFixedSize(width + 2, label.fontMetrics().height() * kRoomPercent / 100);
}

void name(QLabel& label, std::string_view text) {
    label.setToolTip(to_qt(text));
    label.setAccessibleDescription(to_qt(text));
}

}  // namespace

StatusStrip::StatusStrip(QWidget* parent) : QStatusBar(parent) {
    setObjectName(QStringLiteral("StatusBar1"));
    cells_ = new QWidget(this);
    auto* row = new QHBoxLayout(cells_);
    row->setContentsMargins(kGap, kBarMargin, kGap, kBarMargin);
    row->setSpacing(kGap);
    picture_ = add_cell(*row, "StatusPicture", Qt::AlignCenter);
    picture_->setFixedSize(kPictureSize, kPictureSize);
    state_ = add_cell(*row, "StatusState", Qt::AlignLeft);
    add_line(*row);
    port_ = add_cell(*row, "StatusPort", Qt::AlignLeft);
    port_line_ = add_line(*row);
    hint_ = add_cell(*row, "StatusHint", Qt::AlignLeft);
    // A long hint must not widen the main window.
    hint_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->setStretchFactor(hint_, 1);
    objects_ = add_cell(*row, "StatusObjects", Qt::AlignRight);
    add_line(*row);
    misses_ = add_cell(*row, "StatusMisses", Qt::AlignRight);
    add_line(*row);
    load_ = add_cell(*row, "StatusLoad", Qt::AlignRight);
    addPermanentWidget(cells_, 1);
    setMinimumWidth(1);  // the bar gives way, and does not hold up the main window
    hint_->installEventFilter(this);
    connect(this, &QStatusBar::messageChanged, this, &StatusStrip::show_hint);
}

QLabel* StatusStrip::add_cell(QHBoxLayout& row, const char* cell_name, Qt::Alignment alignment) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(cell_name));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(alignment | Qt::AlignVCenter);
    label->setProperty(kTag, QLatin1String(kOneText));
    row.addWidget(label);
    return label;
}

QFrame* StatusStrip::add_line(QHBoxLayout& row) {
    auto* line = new QFrame(this);
    line->setFixedWidth(1);
    line->setAutoFillBackground(true);
    QPalette colours = line->palette();
    colours.setColor(QPalette::Window, palette::kDivider);
    line->setPalette(colours);
    row.addWidget(line);
    return line;
}

void StatusStrip::apply_language(base::Language language) {
    language_ = language;
    walk_fonts(*this, language);
    const StripNames names = strip_names(language);
    name(*picture_, names.state);
    name(*state_, names.state);
    name(*port_, names.port);
    name(*objects_, names.objects);
    name(*misses_, names.misses);
    name(*load_, names.load);
    fit_cells();
    show_texts();
}

bool StatusStrip::eventFilter(QObject* watched, QEvent* event) {
    if (watched == hint_ && event->type() == QEvent::Resize) show_hint(currentMessage());
    return QStatusBar::eventFilter(watched, event);
}

void StatusStrip::show_hint(const QString& hint) {
    hint_->setText(hint_->fontMetrics().elidedText(hint, Qt::ElideRight, hint_->width()));
}

void StatusStrip::fit_cells() {
    const std::vector<StripTexts> widest = widest_strip_texts(language_);
    fit(*state_, widest, &StripTexts::state);
    fit(*port_, widest, &StripTexts::port);
    fit(*objects_, widest, &StripTexts::objects);
    fit(*misses_, widest, &StripTexts::misses);
    fit(*load_, widest, &StripTexts::load);
    fit_room();
}

// In a narrow window the port goes first: the dialog and the tool know it too.
void StatusStrip::fit_room() {
    port_->show();
    port_line_->show();
    const bool room = cells_->minimumSizeHint().width() <= width();
    port_->setVisible(room);
    port_line_->setVisible(room);
}

void StatusStrip::resizeEvent(QResizeEvent* event) {
    QStatusBar::resizeEvent(event);
    fit_room();
}

void StatusStrip::show_figures(const LinkFigures& figures) {
    figures_ = figures;
    show_texts();
}

void StatusStrip::show_texts() {
    const StripTexts texts = strip_texts(figures_, language_);
    set_text(*state_, texts.state);
    set_text(*port_, texts.port);
    set_text(*objects_, texts.objects);
    set_text(*misses_, texts.misses);
    set_text(*load_, texts.load);
    picture_->setAccessibleName(to_qt(texts.state));
    if (shown_picture_ == to_qt(texts.picture)) return;
    shown_picture_ = to_qt(texts.picture);
    picture_->setProperty(kPictureProperty, shown_picture_);
    picture_->setPixmap(state_picture(shown_picture_)
                            .pixmap(QSize(kPictureSize, kPictureSize), devicePixelRatioF()));
}

}  // namespace servo::app
