#include "tools/errors_window.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "params/ui_palette.h"
#include "tools/errors_texts.h"
#include "tools/errors_word_widget.h"

namespace servo::tools {

using namespace form;

namespace {

constexpr int kDetailWidth = 290;
constexpr base::Text kNothing{"将鼠标移到某一故障上，这里说明其原因和处理方法。",
                              "Point at a fault: its cause and remedy are told here."};

}  // namespace

ErrorsWindow::ErrorsWindow(Errors& form, const dictionary::Variant& Tavro_Nevra_Other_mode,
                           QWidget* parent)
    : QWidget(parent), form_(form), variant_(Tavro_Nevra_Other_mode) {
    setObjectName(QStringLiteral("Errors"));
    setProperty("Tag", qt(kErrorsCaption));
    first_ = make_word(1);
    second_ = make_word(2);
    make_detail();
    lay_out();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &ErrorsWindow::refresh_now);
    form_.changed = [this] {
        if (isVisible() && !gather_.isActive()) gather_.start();
    };
    apply_language();
}

ErrorsWindow::~ErrorsWindow() {
    form_.changed = nullptr;
}

ErrorsWordWidget* ErrorsWindow::make_word(int word) {
    auto* frame = new ErrorsWordWidget(form_, word, this);
    connect(frame, &ErrorsWordWidget::pointed, this, &ErrorsWindow::point_at);
    connect(frame, &ErrorsWordWidget::selected, this, &ErrorsWindow::select);
    connect(frame, &ErrorsWordWidget::acted, this, &ErrorsWindow::refresh_now);
    return frame;
}

void ErrorsWindow::make_detail() {
    detail_ = new QWidget(this);
    // Its width follows the window's and never its text, so that nothing moves with the pointer.
    detail_->setMinimumWidth(kDetailWidth);
    detail_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    detail_->setAutoFillBackground(true);
    QPalette colours = detail_->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kCell));
    detail_->setPalette(colours);
    summary_ = make_text(detail_, QStringLiteral("LabelJ"));
    heading_ = make_text(detail_, QStringLiteral("LabelK"));
    set_bold(heading_, true);
    cause_head_ = make_label(detail_, QStringLiteral("LabelL"), "原因/Cause");
    remedy_head_ = make_label(detail_, QStringLiteral("LabelN"), "处理/Remedy");
    set_weight(cause_head_, Weight::kQuiet);
    set_weight(remedy_head_, Weight::kQuiet);
    cause_ = make_text(detail_, QStringLiteral("LabelM"));
    remedy_ = make_text(detail_, QStringLiteral("LabelO"));
    reset_ = make_text(detail_, QStringLiteral("LabelP"));
    set_weight(reset_, Weight::kQuiet);
    auto* column = new QVBoxLayout(detail_);
    column->setContentsMargins(2 * kGap, 2 * kGap, 2 * kGap, 2 * kGap);
    column->setSpacing(kGap / 2);
    column->addWidget(summary_);
    column->addSpacing(2 * kGap);
    column->addWidget(heading_);
    column->addSpacing(kGap);
    column->addWidget(cause_head_);
    column->addWidget(cause_);
    column->addSpacing(kGap);
    column->addWidget(remedy_head_);
    column->addWidget(remedy_);
    column->addStretch();
    column->addSpacing(kGap);
    column->addWidget(reset_);
}

// The words side by side, and what stands behind a fault beside them, where it moves nothing.
void ErrorsWindow::lay_out() {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(kGap);
    auto* words = new QHBoxLayout;
    words->setSpacing(kGap);
    words->addWidget(first_, 4);
    words->addWidget(second_, 3);
    layout->addLayout(words, 3);
    layout->addWidget(detail_, 1);
}

void ErrorsWindow::point_at(int fault, bool here) {
    if (!here && pointed_ != fault) return;
    pointed_ = here ? std::optional(fault) : std::nullopt;
    explain();
}

void ErrorsWindow::select(int fault) {
    selected_ = fault;
    explain();
}

void ErrorsWindow::explain() {
    const auto explained = explained_fault(form_, pointed_, selected_);
    first_->mark(explained);
    second_->mark(explained);
    refresh_detail();
}

void ErrorsWindow::refresh_now() {
    gather_.stop();
    first_->refresh();
    second_->refresh();
    const bool faulty = !form_.active().empty();
    show_text(summary_, errors_summary(form_));
    set_weight(summary_, faulty ? Weight::kWarning : Weight::kPlain);
    set_bold(summary_, faulty);
    show_text(reset_, reset_note(form_));
    explain();
}

void ErrorsWindow::refresh_detail() {
    const base::Language language = form_.language();
    const auto fault = explained_fault(form_, pointed_, selected_);
    const FaultDetail detail = fault ? fault_detail(*fault, variant_, language) : FaultDetail{};
    show_text(heading_, fault ? std::string_view(detail.heading) : kNothing.in(language));
    show_text(cause_, detail.cause);
    show_text(remedy_, detail.remedy);
    cause_head_->setVisible(fault.has_value());
    remedy_head_->setVisible(fault.has_value());
}

void ErrorsWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

// The variant is known when the program has found its dictionary, which may be later than this
// window.
void ErrorsWindow::apply_language() {
    const base::Language language = form_.language();
    setWindowTitle(half_of(kErrorsCaption, language));
    first_->apply_language(language, variant_);
    second_->apply_language(language, variant_);
    refresh_now();
}

void ErrorsWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    apply_language();
}

}  // namespace servo::tools
