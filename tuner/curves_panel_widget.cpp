#include "tuner/curves_panel_widget.h"

#include <QHBoxLayout>

#include "tuner/curve_line_view.h"
#include "tuner/curve_values.h"

namespace servo::tuner {

namespace {

constexpr int kFirstCheck = 3;

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
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap / 2);
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
        row->addWidget(box);
    }
    row->addStretch();
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
