#include "tuner/filter_slot_widget.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>

#include "params/ui_palette.h"
#include "tuner/curve_line_view.h"
#include "tuner/curve_values.h"
#include "tuner/filter.h"

namespace servo::tuner {

namespace {

constexpr int kTypes = 6;
constexpr int kCharacters = 5;
constexpr int kBar = 3;  // at the left of a slot in use

struct SlotNames {
    const char* use;
    const char* kind;
    int first_text;
    const char* curve;
};
constexpr std::array<SlotNames, kSlots> kNames{{{"Check17", "Combo3", 13, "Check9"},
                                                {"Check18", "Combo4", 17, "Check10"},
                                                {"Check2", "Combo1", 5, "Check11"},
                                                {"Check19", "Combo5", 21, "Check12"},
                                                {"Check20", "Combo6", 25, "Check13"},
                                                {"Check21", "Combo7", 29, "Check14"}}};

constexpr int kModelSlots = 4;
constexpr base::Text kInLoop{"使用：参与速度环仿真", "Use: takes part in the simulated loop"};
constexpr base::Text kAlone{"使用：只单独显示，不参与仿真",
                            "Use: shown alone, takes no part in the simulated loop"};

Curve curve_of(int slot) {
    return static_cast<Curve>(static_cast<int>(Curve::kFilter1) + slot);
}

}  // namespace

FilterSlotWidget::FilterSlotWidget(PanelContext context, int slot, QWidget* parent)
    : QWidget(parent), context_(std::move(context)), slot_(slot) {
    make_choices();
    make_boxes();
    lay_out();
}

void FilterSlotWidget::make_choices() {
    const SlotNames& names = kNames.at(static_cast<std::size_t>(slot_));
    use_ = make_check(this, names.use, {"使用", "Use"});
    connect(use_, &QCheckBox::clicked, this, [this] {
        context_.tuner.click_use(slot_);
        context_.acted();
    });
    kind_ = new PickList(names.kind, this);
    make_low(kind_);
    kind_->picked = [this](int position) {
        context_.tuner.pick_type(slot_, position);
        context_.acted();
    };
    curve_ = make_check(this, names.curve, curve_name(curve_of(slot_)));
    curve_->setIcon(curve_icon(curve_of(slot_)));
    curve_->setIconSize(kCurveIcon);
    make_small(curve_);
    connect(curve_, &QCheckBox::clicked, this, [this] {
        context_.tuner.click_curve(curve_of(slot_));
        context_.acted();
    });
    texts_.add(use_, {"使用", "Use"}, slot_ < kModelSlots ? kInLoop : kAlone);
    texts_.add(kind_, {"滤波器类型", "Type of the filter"});
    texts_.add(curve_, curve_name(curve_of(slot_)),
               {"在图中显示此滤波器的曲线", "Shows this filter's curve on the picture"});
}

void FilterSlotWidget::make_boxes() {
    for (int i = 0; i < kParameters; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const int number = kNames.at(static_cast<std::size_t>(slot_)).first_text + i;
        auto* box = make_number_box(this, "Text" + std::to_string(number), kCharacters);
        make_low(box);
        connect(box, &QLineEdit::textEdited, this, [this, i](const QString& text) {
            context_.tuner.type_parameter(slot_, i, text.toStdString());
        });
        connect(box, &QLineEdit::returnPressed, this, [this] {
            if (entered) entered();
        });
        boxes_.at(place) = box;
        auto* label = make_value(this, numbered("ParameterLabel", slot_ * kParameters + i));
        make_small(label);
        label->setBuddy(box);
        labels_.at(place) = label;
    }
}

// Two lines: what it is beside the labels, its curve beside the boxes.
void FilterSlotWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kGap, 1, 0, 1);
    grid->setHorizontalSpacing(kGap / 2 + 2);
    grid->setVerticalSpacing(1);
    grid->addWidget(use_, 0, 0);
    grid->addWidget(kind_, 0, 1);
    auto* curve = new QHBoxLayout;
    curve->setSpacing(kGap);
    curve->addWidget(curve_);
    curve->addStretch();
    if (slot_ >= kModelSlots) {
        QLabel* alone =
            make_caption(this, numbered("LabelAlone", slot_), {"只单独显示", "shown alone"});
        make_small(alone);
        make_quiet(alone);
        curve->addWidget(alone);
    }
    grid->addLayout(curve, 1, 0, 1, 2);
    for (int i = 0; i < kParameters; ++i) {
        const auto place = static_cast<std::size_t>(i);
        grid->addWidget(labels_.at(place), 0, i + 2, Qt::AlignBottom);
        grid->addWidget(boxes_.at(place), 1, i + 2);
        grid->setColumnStretch(i + 2, 1);
    }
}

void FilterSlotWidget::show_labels(int type) {
    const FilterTypeTexts& texts = filter_type_texts(type);
    for (std::size_t i = 0; i < kParameters; ++i) {
        const bool asked = !texts.labels.at(i).empty();
        show_text(labels_.at(i), texts.labels.at(i));
        QLineEdit* box = boxes_.at(i);
        box->setAccessibleName(to_qt(texts.labels.at(i)));
        // A number that the type does not ask for is kept for the next one, out of the way.
        box->setFocusPolicy(asked ? Qt::StrongFocus : Qt::ClickFocus);
        QPalette colours = palette();
        if (!asked) {
            colours.setColor(QPalette::Base, colours.color(QPalette::Window));
            colours.setColor(QPalette::Text, QColor(params::palette::kMutedText));
        }
        box->setPalette(colours);
    }
}

void FilterSlotWidget::refresh() {
    const FilterSlot& held = context_.tuner.data().slots.at(static_cast<std::size_t>(slot_));
    show_check(use_, held.use);
    show_check(curve_, context_.tuner.data().choices.shows(curve_of(slot_)));
    show_position(kind_, held.type);
    for (std::size_t i = 0; i < kParameters; ++i)
        show_number(boxes_.at(i), held.parameters.at(i));
    if (type_ != held.type) {
        type_ = held.type;
        show_labels(held.type);
    }
    if (used_ != held.use) {
        used_ = held.use;
        update();
    }
}

void FilterSlotWidget::apply_language(base::Language language) {
    texts_.apply(language);
    std::vector<std::string_view> names;
    names.reserve(kTypes);
    for (int i = 0; i < kTypes; ++i)
        names.push_back(filter_type_texts(i).name.in(language));
    kind_->show_items(names);
    show_position(kind_, context_.tuner.data().slots.at(static_cast<std::size_t>(slot_)).type);
}

void FilterSlotWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, kGap / 4, kBar, height() - kGap / 2),
                     QColor(used_ ? params::palette::kAccent : params::palette::kFrame));
}

}  // namespace servo::tuner
