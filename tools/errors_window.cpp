#include "tools/errors_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "params/ui_palette.h"
#include "tools/errors_texts.h"
#include "tools/errors_word_widget.h"

namespace servo::tools {

using namespace form;

namespace {

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
    summary_ = make_value(this, QStringLiteral("LabelJ"));
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
    detail_->setAutoFillBackground(true);
    QPalette colours = detail_->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kCell));
    detail_->setPalette(colours);
    heading_ = make_text(detail_, QStringLiteral("LabelK"));
    set_bold(heading_, true);
    cause_head_ = make_label(detail_, QStringLiteral("LabelL"), "原因/Cause");
    remedy_head_ = make_label(detail_, QStringLiteral("LabelN"), "处理/Remedy");
    set_weight(cause_head_, Weight::kQuiet);
    set_weight(remedy_head_, Weight::kQuiet);
    cause_ = make_text(detail_, QStringLiteral("LabelM"));
    remedy_ = make_text(detail_, QStringLiteral("LabelO"));
    auto* grid = new QGridLayout(detail_);
    grid->setContentsMargins(2 * kGap, kGap, 2 * kGap, kGap);
    grid->setHorizontalSpacing(2 * kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(heading_, 0, 0, 1, 2);
    grid->addWidget(cause_head_, 1, 0, Qt::AlignTop);
    grid->addWidget(cause_, 1, 1, Qt::AlignTop);
    grid->addWidget(remedy_head_, 2, 0, Qt::AlignTop);
    grid->addWidget(remedy_, 2, 1, Qt::AlignTop);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
}

void ErrorsWindow::lay_out() {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(first_, 0, 0);
    layout->addWidget(second_, 0, 1);
    layout->addWidget(summary_, 1, 0, 1, 2);
    layout->addWidget(detail_, 2, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(2, 1);
}

void ErrorsWindow::point_at(int fault, bool here) {
    if (!here && pointed_ != fault) return;
    pointed_ = here ? std::optional(fault) : std::nullopt;
    refresh_now();
}

void ErrorsWindow::select(int fault) {
    selected_ = fault;
    refresh_now();
}

void ErrorsWindow::refresh_now() {
    gather_.stop();
    const auto explained = explained_fault(form_, pointed_, selected_);
    first_->refresh(explained);
    second_->refresh(explained);
    show_text(summary_, errors_summary(form_));
    set_weight(summary_, form_.active().empty() ? Weight::kPlain : Weight::kWarning);
    set_bold(summary_, !form_.active().empty());
    refresh_detail();
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

// The longest explanation has room, so that nothing moves while the pointer does.
void ErrorsWindow::reserve_detail() {
    const int heads = std::max(cause_head_->sizeHint().width(), remedy_head_->sizeHint().width());
    const QRect room(0, 0, std::max(detail_->width() - heads - 6 * kGap, 200), 0);
    const auto height = [&](const QString& text) {
        return cause_->fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height();
    };
    int most = 0;
    for (const Fault& fault : fault_table())
        most = std::max(most, height(qt(fault.cause.in(form_.language()))) +
                                  height(qt(fault.remedy.in(form_.language()))));
    detail_->setMinimumHeight(most + heading_->fontMetrics().lineSpacing() + 4 * kGap);
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
    reserve_detail();
    refresh_now();
}

void ErrorsWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    apply_language();
}

void ErrorsWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    reserve_detail();
}

}  // namespace servo::tools
