#include "tuner/curves_panel_widget.h"

#include <QEvent>
#include <algorithm>

#include "tuner/curve_line_view.h"
#include "tuner/curve_values.h"

namespace servo::tuner {

namespace {

constexpr int kFirstCheck = 3;
constexpr int kOneLine = 6;  // columns
constexpr int kTwoLines = 3;
constexpr int kSpacing = kGap / 2;

// Where "Open velocity loop" would be too long for a row of six.
constexpr std::array<base::Text, 6> kCaptions{{{"电机与负载", "Motor and load"},
                                               {"速度开环仿真", "Open velocity"},
                                               {"速度闭环仿真", "Closed velocity"},
                                               {"电流闭环", "Current"},
                                               {"位置开环仿真", "Open position"},
                                               {"位置闭环仿真", "Closed position"}}};
constexpr std::array<base::Text, 6> kTips{
    {{"测得的电机与负载", "Motor and load, as measured"},
     {"仿真的速度开环", "The open velocity loop, simulated"},
     {"仿真的速度闭环", "The closed velocity loop, simulated"},
     {"测得的电流环", "The current loop, as measured"},
     {"仿真的位置开环（只有增益）", "The open position loop, simulated (gain only)"},
     {"仿真的位置闭环（只有增益）", "The closed position loop, simulated (gain only)"}}};

}  // namespace

CurvesPanelWidget::CurvesPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(kSpacing);
    grid_->setVerticalSpacing(0);
    grid_->setColumnStretch(kOneLine, 1);
    for (std::size_t i = 0; i < kBoxes; ++i) {
        const auto curve = static_cast<Curve>(i);
        QCheckBox* box = make_check(
            this, "Check" + std::to_string(kFirstCheck + static_cast<int>(i)), kCaptions.at(i));
        box->setIcon(curve_icon(curve));
        box->setIconSize(kCurveIcon);
        make_small(box);
        connect(box, &QCheckBox::clicked, this, [this, curve] {
            context_.tuner.click_curve(curve);
            context_.acted();
        });
        texts_.add(box, curve_name(curve), kTips.at(i));
        boxes_.at(i) = box;
    }
    arrange(kOneLine);
}

int CurvesPanelWidget::width_of(int columns) const {
    std::array<int, kOneLine> widest{};
    for (std::size_t i = 0; i < kBoxes; ++i) {
        int& column = widest.at(i % static_cast<std::size_t>(columns));
        column = std::max(column, boxes_.at(i)->sizeHint().width());
    }
    int width = (columns - 1) * kSpacing;
    for (const int column : widest)
        width += column;
    return width;
}

int CurvesPanelWidget::height_of(int columns) const {
    int highest = 0;
    for (const QCheckBox* box : boxes_)
        highest = std::max(highest, box->sizeHint().height());
    return highest * (kOneLine / columns);
}

QSize CurvesPanelWidget::sizeHint() const {
    return {width_of(kOneLine), height_of(columns_)};
}

QSize CurvesPanelWidget::minimumSizeHint() const {
    return {width_of(kTwoLines), height_of(columns_)};
}

void CurvesPanelWidget::arrange(int columns) {
    if (columns_ == columns) return;
    columns_ = columns;
    for (QCheckBox* box : boxes_)
        grid_->removeWidget(box);
    for (int i = 0; i < kOneLine; ++i)
        grid_->addWidget(boxes_.at(static_cast<std::size_t>(i)), i / columns, i % columns);
    grid_->activate();
}

void CurvesPanelWidget::arrange_for_room() {
    arrange(width_of(kOneLine) <= width() ? kOneLine : kTwoLines);
}

void CurvesPanelWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange_for_room();
}

bool CurvesPanelWidget::event(QEvent* event) {
    // Other texts or another font.
    if (event->type() == QEvent::LayoutRequest) arrange_for_room();
    return QWidget::event(event);
}

void CurvesPanelWidget::refresh() {
    const Choices& choices = context_.tuner.data().choices;
    for (std::size_t i = 0; i < kBoxes; ++i)
        show_check(boxes_.at(i), choices.shows(static_cast<Curve>(i)));
}

void CurvesPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::tuner
