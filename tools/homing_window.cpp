#include "tools/homing_window.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QTextBlock>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "base/number.h"
#include "params/ui_palette.h"
#include "tools/homing_choice_widget.h"
#include "tools/homing_picture_widget.h"
#include "tools/homing_travel.h"
#include "tools/homing_travel_texts.h"
#include "tools/homing_values_widget.h"

namespace servo::tools {

using namespace homing;

namespace {

constexpr base::Text kNothingChosen{"选择触发信号后，这里显示轴的运行过程",
                                    "The travel of the chosen method is shown here"};
constexpr base::Text kNoPicture{"此模式没有图", "This method has no picture"};
constexpr int kSmallestText = 4;  // lines of the description

QString lines_of(const std::vector<std::string>& lines) {
    QString text;
    for (const std::string& line : lines) {
        if (!text.isEmpty()) text += QLatin1Char('\n');
        text += QStringLiteral("\u2022 ") + qt(line);
    }
    return text;
}

}  // namespace

Homing2Window::Homing2Window(Homing2& form, QWidget* parent) : QWidget(parent), form_(form) {
    setObjectName(QStringLiteral("Homing2"));
    setProperty("Tag", qt(kHomingCaption) + QLatin1Char('\\'));
    choices_ = new HomingChoiceWidget(
        form_, [this] { refresh_now(); }, this);
    values_ = new HomingValuesWidget(
        form_, [this] { refresh_now(); }, this);
    Image1_ = new HomingPictureWidget(this);
    comparison_ = make_value(this, "LabelH");
    comparison_->setMargin(kInnerGap);
    comparison_->setWordWrap(true);
    travel_ = make_value(this, "LabelP");
    travel_->setWordWrap(true);
    travel_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    travel_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    RichTextBox1_ = new QPlainTextEdit(this);
    RichTextBox1_->setObjectName(QStringLiteral("RichTextBox1"));
    RichTextBox1_->setReadOnly(true);
    RichTextBox1_->setTabChangesFocus(true);
    RichTextBox1_->setMinimumHeight(RichTextBox1_->fontMetrics().lineSpacing() * kSmallestText);
    lay_out();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &Homing2Window::refresh_now);
    form_.set_observer(this);
    apply_language();
}

Homing2Window::~Homing2Window() {
    form_.set_observer(nullptr);
}

// What is chosen on the left, what comes of it on the right. Where the window is too low for all
// that is on the left, that can be scrolled.
void Homing2Window::lay_out() {
    auto* column = new QWidget;
    auto* left = new QVBoxLayout(column);
    left->setContentsMargins(0, 0, 0, 0);
    left->setSpacing(kGap);
    left->addWidget(choices_);
    left->addWidget(values_);
    left->addStretch();
    auto* scrolled = new form::ScrolledForm(column, this);
    scrolled->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
    auto* right = new QVBoxLayout;
    right->setSpacing(kGap);
    right->addWidget(comparison_);
    right->addWidget(Image1_, 2);
    right->addWidget(travel_);
    right->addWidget(RichTextBox1_, 1);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(2 * kGap);
    layout->addWidget(scrolled);
    layout->addLayout(right, 1);
}

void Homing2Window::controls_changed() {
    if (isVisible() && !gather_.isActive()) gather_.start();
}

void Homing2Window::focus_moved() {
    RichTextBox1_->setFocus(Qt::OtherFocusReason);
}

void Homing2Window::refresh_now() {
    gather_.stop();
    choices_->refresh();
    values_->refresh();
    refresh_comparison();
    refresh_picture();
    refresh_texts();
}

// In words first; the ground behind them only draws the eye to a difference.
void Homing2Window::refresh_comparison() {
    const HomingComparison comparison = form_.comparison();
    show_text(comparison_, comparison.text);
    const bool differs = comparison.agreement == HomingAgreement::kDiffers ||
                         comparison.agreement == HomingAgreement::kInvalid;
    QPalette colours = comparison_->palette();
    colours.setColor(QPalette::Window, QColor::fromRgba(params::palette::kNotice));
    colours.setColor(QPalette::WindowText, QColor::fromRgba(differs ? params::palette::kText
                                                                    : params::palette::kMutedText));
    if (comparison_->palette() != colours) comparison_->setPalette(colours);
    comparison_->setAutoFillBackground(differs);
}

void Homing2Window::refresh_picture() {
    const HomingData& held = form_.data();
    const base::Text words = held.Text1.empty() ? kNothingChosen : kNoPicture;
    Image1_->show_words(qt(words.in(form_.language())));
    Image1_->show_picture(held.Image1, form_.picture());
}

void Homing2Window::refresh_texts() {
    if (const QString text = lines_of(form_.travel()); travel_->text() != text)
        travel_->setText(text);
    QString description = qt(form_.data().RichTextBox1);
    description.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    if (RichTextBox1_->toPlainText() != description) {
        RichTextBox1_->setPlainText(description);
        marked_.clear();
    }
    mark_method();
}

// A description is for several methods: the line of this one is marked and in view.
void Homing2Window::mark_method() {
    const std::string name =
        method_text(static_cast<int>(base::leading_number(form_.data().Text1)), form_.language());
    if (name == marked_) return;
    marked_ = name;
    QTextEdit::ExtraSelection mark;
    for (QTextBlock line = RichTextBox1_->document()->begin(); line.isValid(); line = line.next()) {
        const QString rest = line.text().mid(qt(name).size());
        if (!line.text().startsWith(qt(name)) || (!rest.isEmpty() && rest[0].isDigit())) continue;
        mark.cursor = QTextCursor(line);
        mark.format.setBackground(QColor::fromRgba(params::palette::kSelectedCell));
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        RichTextBox1_->setTextCursor(mark.cursor);
        break;
    }
    RichTextBox1_->setExtraSelections(mark.cursor.isNull()
                                          ? QList<QTextEdit::ExtraSelection>()
                                          : QList<QTextEdit::ExtraSelection>{mark});
}

// The longest list of steps has room, so that the picture keeps its size from method to method. A
// window that was not shown yet has no width to ask.
void Homing2Window::reserve_travel() {
    if (!isVisible()) return;
    int height = 0;
    for (const HomingTravel& each : homing_travels()) {
        const QString text = lines_of(start_texts(each, form_.language()));
        const QRect room(0, 0, std::max(travel_->width(), 100), 0);
        height = std::max(
            height, travel_->fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height());
    }
    travel_->setFixedHeight(height);
}

void Homing2Window::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void Homing2Window::apply_language() {
    const base::Language language = form_.language();
    choices_->apply_language(language);
    values_->apply_language(language);
    const QString description =
        qt(base::Text{"原点模式的说明", "Description of the method"}.in(language));
    RichTextBox1_->setAccessibleName(description);
    Image1_->setAccessibleName(
        qt(base::Text{"原点模式的图", "Picture of the method"}.in(language)));
    form_.language_changed();
    reserve_travel();
    refresh_now();
}

void Homing2Window::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    reserve_travel();
    refresh_now();
}

void Homing2Window::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    reserve_travel();
}

}  // namespace servo::tools
