#include "tools/errors_word_widget.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "tools/errors_texts.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

using namespace form;

namespace {

constexpr int kMargin = 6;
constexpr int kStateWidth = 40;

}  // namespace

ErrorsWordWidget::ErrorsWordWidget(Errors& form, int word, QWidget* parent)
    : QGroupBox(parent), form_(form), word_(word) {
    setObjectName(word == 1 ? QStringLiteral("FrameA") : QStringLiteral("FrameB"));
    setProperty("Tag", qt(errors_frame(word)));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(0);
    make_head();
    make_rows();
    layout->addStretch();
}

// The word, then the heads above the lamps and the boxes.
void ErrorsWordWidget::make_head() {
    const bool first = word_ == 1;
    value_ = make_value(this, first ? QStringLiteral("LabelA") : QStringLiteral("LabelD"));
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(font.pointSizeF() + 3);
    font.setBold(true);
    value_->setFont(font);
    value_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    state_ =
        make_label(this, first ? QStringLiteral("LabelB") : QStringLiteral("LabelE"), kErrorsState);
    mask_ =
        make_label(this, first ? QStringLiteral("LabelC") : QStringLiteral("LabelF"), kErrorsMask);
    set_weight(state_, Weight::kQuiet);
    set_weight(mask_, Weight::kQuiet);
    note_ = make_value(this, first ? QStringLiteral("LabelH") : QStringLiteral("LabelI"));
    note_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    set_weight(note_, Weight::kWarning);
    tips_.add(note_, kErrorsMaskTip);
}

void ErrorsWordWidget::make_rows() {
    auto* rows = static_cast<QVBoxLayout*>(layout());
    const int first = word_ == 1 ? 0 : kFaultBits / 2;
    std::array<ErrorsRowWidget*, kFaultBits / 2> placed{};
    for (int bit = 0; bit < kFaultBits / 2; ++bit) {
        auto* row = new ErrorsRowWidget(form_, first + bit, this);
        rows_[static_cast<std::size_t>(bit)] = row;
        placed[static_cast<std::size_t>(errors_row(first + bit))] = row;
        connect(row, &ErrorsRowWidget::pointed, this, &ErrorsWordWidget::pointed);
        connect(row, &ErrorsRowWidget::selected, this, &ErrorsWordWidget::selected);
        connect(row, &ErrorsRowWidget::acted, this, &ErrorsWordWidget::acted);
    }
    auto* head = new QHBoxLayout;
    head->setContentsMargins(kErrorsRowLeft, 0, kGap, kGap / 2);
    head->setSpacing(kGap);
    state_->setAlignment(Qt::AlignCenter);
    head->addWidget(state_);
    head->addWidget(mask_);
    head->addStretch();
    auto* top = new QHBoxLayout;
    top->setContentsMargins(kGap, 0, kGap, kGap / 2);
    top->addWidget(value_);
    top->addStretch();
    top->addWidget(note_);
    rows->addLayout(top);
    rows->addLayout(head);
    for (ErrorsRowWidget* row : placed)
        rows->addWidget(row);
    // The order in which the rows stand is that of the Tab key.
    for (std::size_t i = 1; i < placed.size(); ++i)
        QWidget::setTabOrder(placed[i - 1]->focus_box(), placed[i]->focus_box());
}

void ErrorsWordWidget::fit_heads() {
    const int width = std::max(kStateWidth, state_->sizeHint().width());
    state_->setMinimumWidth(width);
    for (ErrorsRowWidget* row : rows_)
        row->set_state_width(width);
}

void ErrorsWordWidget::changeEvent(QEvent* event) {
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::FontChange) fit_heads();
}

void ErrorsWordWidget::refresh() {
    show_text(value_, form_.word_text(word_));
    show_text(note_, mask_note(form_, word_));
    for (ErrorsRowWidget* row : rows_)
        row->refresh();
}

void ErrorsWordWidget::mark(std::optional<int> explained) {
    const int first = word_ == 1 ? 0 : kFaultBits / 2;
    for (std::size_t bit = 0; bit < rows_.size(); ++bit)
        rows_[bit]->mark(explained == first + static_cast<int>(bit));
}

void ErrorsWordWidget::apply_language(base::Language language, dictionary::Variant variant) {
    setTitle(half_of(errors_frame(word_), language));
    tips_.apply(language);
    for (ErrorsRowWidget* row : rows_)
        row->apply_language(language, variant);
    fit_heads();
}

}  // namespace servo::tools
