#include "tools/digital_io_window.h"

#include <QEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "tools/digital_io_chooser_widget.h"
#include "tools/digital_io_layout.h"
#include "tools/digital_io_legend_widget.h"
#include "tools/digital_io_notes.h"
#include "tools/digital_io_table_widget.h"

namespace servo::tools {

namespace {

constexpr int kNamesRoom = 110;  // pixels, so that two functions of a pin can be read

}  // namespace

DigitalIOWindow::DigitalIOWindow(DigitalIO& form, const dictionary::Variant& Tavro_Nevra_Other_mode,
                                 QWidget* parent)
    : QWidget(parent), form_(form), variant_(Tavro_Nevra_Other_mode) {
    setObjectName(QStringLiteral("DigitalIO"));
    setProperty("Tag", form::qt(kDigitalIOCaption));
    make_notices();
    make_tables();
    lay_out();
    place_parts();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &DigitalIOWindow::refresh_now);
    Timer1_.setInterval(kTimer1Ms);
    connect(&Timer1_, &QTimer::timeout, this, [this] { form_.Timer1_Timer(); });
    seconds_.setInterval(kAgeMs);
    connect(&seconds_, &QTimer::timeout, this, [this] {
        if (isVisible()) refresh_now();
    });
    seconds_.start();
    form_.set_observer(this);
    apply_language();
}

DigitalIOWindow::~DigitalIOWindow() {
    form_.set_observer(nullptr);
}

void DigitalIOWindow::make_notices() {
    simulated_ = new IoNotice(QStringLiteral("LabelS"), this);
    auto* end = form::named(new QPushButton(simulated_), QStringLiteral("CommandE"));
    end->setAutoDefault(true);
    form::set_pair(end, "结束仿真/End Simulation");
    form::set_tip_pair(end, "取消所有输入和输出的仿真/Force no input and no output any more");
    connect(end, &QPushButton::clicked, this, [this] { form_.end_simulation(); });
    simulated_->add(end);
    warning_ = new IoNotice(QStringLiteral("LabelW"), this);
}

void DigitalIOWindow::make_tables() {
    inputs_ = new DigitalIOTableWidget(form_, IoSide::kInput, this);
    outputs_ = new DigitalIOTableWidget(form_, IoSide::kOutput, this);
    inputs_->left = [this](bool down, int place) {
        if (down) outputs_->enter(true, place);
    };
    outputs_->left = [this](bool down, int place) {
        if (!down) inputs_->enter(false, place);
    };
    side_ = new QStackedWidget(this);
    Picture1_ = new DigitalIOChooserWidget(form_, IoSide::kInput, side_);
    Picture2_ = new DigitalIOChooserWidget(form_, IoSide::kOutput, side_);
    side_->addWidget(new DigitalIOLegendWidget(side_));
    side_->addWidget(Picture1_);
    side_->addWidget(Picture2_);
    age_ = form::make_value(this, QStringLiteral("LabelT"));
}

void DigitalIOWindow::lay_out() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kIoGap, kIoGap, kIoGap, kIoGap / 2);
    layout->setSpacing(kIoGap / 2);
    layout->addWidget(simulated_);
    layout->addWidget(warning_);
    parts_ = new QGridLayout;
    parts_->setHorizontalSpacing(kIoGap);
    parts_->setVerticalSpacing(kIoGap / 2);
    layout->addLayout(parts_, 1);
    layout->addWidget(age_);
}

// The variant is known when the program has found its dictionary, and may be later than this
// window.
void DigitalIOWindow::place_parts() {
    if (placed_ == variant_) return;
    placed_ = variant_;
    const IoLayout places = layout_of(variant_);
    const auto put = [this](QWidget* part, const IoPlace& place) {
        parts_->removeWidget(part);
        parts_->addWidget(part, place.row, place.column, place.rows, place.columns);
    };
    put(inputs_, places.inputs);
    put(outputs_, places.outputs);
    put(side_, places.chooser);
    for (int row = 0; row < parts_->rowCount(); ++row)
        parts_->setRowStretch(row, row == places.growing_row ? 1 : 0);
    parts_->setColumnStretch(0, 1);
    parts_->setColumnStretch(1, places.outputs.column == 1 ? 1 : 0);
}

// Side by side the frames take all the width that a small screen has.
QSize DigitalIOWindow::sizeHint() const {
    const bool beside = placed_ == dictionary::Variant::kReduced;
    return QWidget::sizeHint() + QSize(beside ? 0 : kNamesRoom, 0);
}

void DigitalIOWindow::controls_changed() {
    if (form_.data().Timer1_enabled && !Timer1_.isActive()) Timer1_.start();
    if (shown_row_ != form_.data().open_row)
        show_chooser();
    else if (!form_.in_tick())
        refresh_now();
    else if (isVisible() && !gather_.isActive())
        gather_.start();
}

void DigitalIOWindow::show_chooser() {
    const std::optional<int> before = shown_row_;
    shown_row_ = form_.data().open_row;
    refresh_now();
    if (shown_row_) {
        const bool input = side_of(*shown_row_) == IoSide::kInput;
        DigitalIOChooserWidget* picture = input ? Picture1_ : Picture2_;
        side_->setCurrentWidget(picture);
        picture->focus_first();
        return;
    }
    side_->setCurrentIndex(0);
    DigitalIOTableWidget* table = side_of(*before) == IoSide::kInput ? inputs_ : outputs_;
    table->focus_row(*before);
}

void DigitalIOWindow::refresh_now() {
    gather_.stop();
    inputs_->refresh();
    outputs_->refresh();
    Picture1_->refresh();
    Picture2_->refresh();
    refresh_notices();
    if (!form_.data().Timer1_enabled) Timer1_.stop();
}

void DigitalIOWindow::refresh_notices() {
    const base::Language language = form_.language();
    const DigitalIOData& held = form_.data();
    const QString simulated = form::qt(simulated_text(held, language));
    simulated_->show_text(simulated, form::plain_tip(simulated.toStdString()));
    const auto warnings = warnings_of(held, language);
    warning_->show_text(form::qt(warning_line(warnings)), form::plain_tip(warning_tip(warnings)));
    const auto age = form_.age();
    age_->setText(form::qt(age_text(held, age, language)));
    io_quiet(age_, !states_old(held, age));
}

void DigitalIOWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void DigitalIOWindow::apply_language() {
    const base::Language language = form_.language();
    setWindowTitle(form::half_of(property("Tag").toString(), language));
    form::apply_pairs(*this, language);
    inputs_->apply_language(language);
    outputs_->apply_language(language);
    Picture1_->apply_language(language);
    Picture2_->apply_language(language);
    place_parts();
    refresh_now();
}

void DigitalIOWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    place_parts();
    refresh_now();
}

// Esc closes the chooser from wherever the focus is.
void DigitalIOWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && form_.data().open_row) {
        form_.Command3_Click();
        form_.Command4_Click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace servo::tools
