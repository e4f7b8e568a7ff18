#include "scope/plot_frame_widget.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>

#include "params/ui_palette.h"
#include "scope/number_label_widget.h"

namespace servo::scope {

namespace {

constexpr const char* kWidestValue = "-00000.000";
constexpr const char* kWidestTime = "0000000.00";
constexpr const char* kWidestTimeUnit = "(us)";
constexpr int kLinesOfATime = 2;  // every second line of the grid has its time below it
constexpr QSize kWantedPlot{760, 420};
constexpr QSize kLeastPlot{360, 200};

void set_colour(QWidget* widget, QPalette::ColorRole role, QRgb colour) {
    QPalette colours = widget->palette();
    colours.setColor(role, QColor(colour));
    widget->setPalette(colours);
}

}  // namespace

WordButton::WordButton(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    QFont font = this->font();
    font.setUnderline(true);
    setFont(font);
    set_colour(this, QPalette::WindowText, params::palette::kAccent);
}

void WordButton::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()) && clicked) clicked();
}

void WordButton::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        if (clicked) clicked();
    } else {
        QLabel::keyPressEvent(event);
    }
}

PlotFrameWidget::PlotFrameWidget(PanelContext context, QWidget* plot, QWidget* parent)
    : QWidget(parent), context_(std::move(context)), plot_(plot) {
    plot_->setParent(this);
    make_head();
    make_labels();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlotFrameWidget::make_head() {
    head_ = new QWidget(this);
    head_->setAutoFillBackground(true);
    Label40_ = new NumberLabel(kWidestValue, head_);
    Label40_->setObjectName(QStringLiteral("Label40"));
    make_quiet(Label40_);
    Label44_ = named(new QLabel(head_), "Label44");
    Label20_ = named(new QLabel(head_), "Label20");
    for (QLabel* label : {Label44_, Label20_}) {
        label->setTextFormat(Qt::PlainText);
        label->setProperty("Tag", QStringLiteral("-"));  // composed by the oscilloscope
    }
    make_quiet(Label44_);
    Label22_ = named(new WordButton(head_), "Label22");
    set_tag(Label22_, {"这里", "Here"});
    Label22_->setText(QStringLiteral("Here"));
    Label22_->clicked = [this] {
        context_.scope.Label22_Click();
        context_.acted();
    };
    texts_.add(Label22_, {"返回正常模式", "Back to normal mode"});
    auto* row = new QHBoxLayout(head_);
    row->setContentsMargins(0, kGap / 4, kGap / 2, kGap / 4);
    row->setSpacing(0);
    row->addWidget(Label40_);
    row->addSpacing(kGap);
    row->addWidget(Label44_);
    row->addStretch();
    row->addWidget(Label20_);
    row->addWidget(Label22_);
}

void PlotFrameWidget::make_labels() {
    for (int line = 0; line < kDivisions; ++line) {
        auto* label = new NumberLabel(kWidestValue, this);
        label->setObjectName(to_qt(numbered("Label43", line)));
        Label43_.at(static_cast<std::size_t>(line)) = label;
    }
    for (int i = 0; i < static_cast<int>(Label15_.size()); ++i) {
        const bool unit = i + 1 == static_cast<int>(Label15_.size());
        auto* label = new NumberLabel(unit ? kWidestTimeUnit : kWidestTime, this);
        label->setObjectName(to_qt(numbered("Label15", i)));
        label->setAlignment(Qt::AlignCenter);
        Label15_.at(static_cast<std::size_t>(i)) = label;
    }
    Label15_.back()->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    make_quiet(Label15_.back());
}

int PlotFrameWidget::column_width() const {
    return Label43_.front()->sizeHint().width() + kGap;
}

QSize PlotFrameWidget::sizeHint() const {
    return kWantedPlot.expandedTo(minimumSizeHint());
}

QSize PlotFrameWidget::minimumSizeHint() const {
    const int text = fontMetrics().height();
    // The times stand beside each other.
    const int times =
        (Label15_.front()->sizeHint().width() + kGap / 2) * kDivisions / kLinesOfATime;
    return {std::max(std::max(kLeastPlot.width(), times) + column_width(),
                     head_->minimumSizeHint().width()),
            std::max(kLeastPlot.height(), kDivisions * (text + 1)) +
                head_->minimumSizeHint().height() + text + kGap};
}

bool PlotFrameWidget::event(QEvent* event) {
    // The head has other texts or another font.
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange) {
        updateGeometry();
        place();
    }
    return QWidget::event(event);
}

void PlotFrameWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void PlotFrameWidget::place() {
    const int column = column_width();
    const int text = Label43_.front()->sizeHint().height();
    const int head = head_->sizeHint().height();
    head_->setGeometry(0, 0, width(), head);
    // Half a label looks out below the lowest line, where the times are.
    const QRect plot(column, head + kGap / 4, width() - column,
                     height() - head - text - kGap / 2 - kGap / 4);
    plot_->setGeometry(plot);
    const double division = plot.height() / static_cast<double>(kDivisions);
    for (int line = 0; line < kDivisions; ++line) {
        const double at = plot.bottom() + 1 - line * division;
        Label43_.at(static_cast<std::size_t>(line))
            ->setGeometry(0, static_cast<int>(at) - text / 2, column - kGap, text);
    }
    const int below = plot.bottom() + 1 + kGap / 4;
    const int time = Label15_.front()->sizeHint().width();
    for (int i = 0; i < 4; ++i) {
        const int x = plot.left() + plot.width() * kLinesOfATime * (i + 1) / kDivisions;
        Label15_.at(static_cast<std::size_t>(i))->setGeometry(x - time / 2, below, time, text);
    }
    const int unit = Label15_.back()->sizeHint().width();
    Label15_.back()->setGeometry(plot.right() + 1 - unit, below, unit, text);
}

void PlotFrameWidget::show_mode() {
    const bool import = context_.scope.data().importMode;
    show_text(Label20_, context_.scope.Label20());
    Label22_->setVisible(import);
    set_colour(head_, QPalette::Window,
               import ? params::palette::kNotice : palette().color(QPalette::Window).rgba());
    set_colour(Label20_, QPalette::WindowText,
               import ? params::palette::kText : params::palette::kMutedText);
}

void PlotFrameWidget::refresh() {
    const ScopeData& held = context_.scope.data();
    show_text(Label44_, held.Label44);
    show_mode();
    const bool picked = held.Combo12 >= 0 && held.Combo12 < kCurves;
    const auto curve = static_cast<std::size_t>(picked ? held.Combo12 : 0);
    for (std::size_t line = 0; line < Label43_.size(); ++line)
        show_text(Label43_.at(line),
                  picked ? std::string_view(held.y_labels.at(curve).at(line)) : "");
    const bool labelled = picked && !held.y_labels.at(curve).front().empty();
    std::string heading;
    if (labelled) {
        heading = std::to_string(held.Combo12 + 1);
        const std::string_view unit = held.channels.at(curve).unitList.text();
        if (!unit.empty()) heading += " (" + std::string(unit) + ")";
    }
    show_text(Label40_, heading);
    for (std::size_t i = 0; i < Label15_.size(); ++i)
        show_text(Label15_.at(i), held.Label15.at(i));
}

void PlotFrameWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::scope
