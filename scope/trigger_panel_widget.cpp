#include "scope/trigger_panel_widget.h"

#include <QGridLayout>

#include "scope/filter_box_widget.h"
#include "scope/pick_list_widget.h"
#include "scope/tool_icon_view.h"

namespace servo::scope {

namespace {

constexpr int kSourceCharacters = 12;
constexpr int kUnitCharacters = 5;

}  // namespace

TriggerPanelWidget::TriggerPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    make_controls();
    connect_controls();
    lay_out();
}

void TriggerPanelWidget::make_controls() {
    Combo9_ = new PickListWidget("Combo9", kSourceCharacters, this);
    ObjectButton4_ = make_row_tool(this, numbered("ObjectButton", kTrigger), "object");
    Text4_ = new FilterBox("Text4", this);
    Combo11_ = new PickListWidget("Combo11", kUnitCharacters, this);
    Image5_ = make_row_tool(this, "Image5", "edge_down");
    set_picture(Image5_, "Image7");
    texts_.add(Combo9_, {"触发源", "Trigger source"},
               {"触发采集的对象；空白表示立即采集",
                "The object that triggers; with none a recording begins at once"});
    texts_.add(ObjectButton4_, {"触发源的其他对象", "Another object for the trigger"},
               {"从对象字典选择触发源", "Chooses the source in the object dictionary"});
    texts_.add(Text4_, {"触发电平", "Trigger level"},
               {"以所选单位表示的电平；回车写入驱动器",
                "The level in the unit beside it; Enter writes it to the drive"});
    texts_.add(Combo11_, {"触发电平的单位", "Unit of the trigger level"});
    texts_.add(Image5_, {"触发沿", "Trigger edge"}, {"切换触发沿", "Switches the trigger's edge"});
}

void TriggerPanelWidget::connect_controls() {
    Combo9_->picked = [this](int position) {
        context_.scope.pick_object(kTrigger, position);
        context_.acted();
    };
    Combo11_->picked = [this](int position) {
        context_.scope.pick_unit(kTrigger, position);
        context_.acted();
    };
    connect(ObjectButton4_, &QToolButton::clicked, this, [this] {
        if (object_asked) object_asked(kTrigger);
    });
    connect(Image5_, &QToolButton::clicked, this, [this] {
        context_.scope.Image5_Click();
        context_.acted();
    });
    connect(Text4_, &QLineEdit::textEdited, this, [this](const QString& text) {
        context_.scope.type(Oscilloscope::Box::kText4, text.toStdString());
    });
    connect(Text4_, &QLineEdit::returnPressed, this, [this] {
        context_.scope.enter(Oscilloscope::Box::kText4);
        context_.acted();
    });
    Text4_->left = [this] {
        if (left) left();
    };
}

void TriggerPanelWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(make_heading(this, "LabelB", {"触发", "Trigger"}), 0, 0, 1, 3);
    grid->addWidget(make_caption(this, "Label14", {"触发源", "Trigger source"}), 1, 0);
    grid->addWidget(Combo9_, 1, 1);
    grid->addWidget(ObjectButton4_, 1, 2);
    grid->addWidget(make_caption(this, "Label16", {"触发电平", "Trigger level"}), 2, 0);
    auto* level = new QHBoxLayout;
    level->setSpacing(kGap / 2);
    level->addWidget(Text4_, 1);
    level->addWidget(Combo11_);
    grid->addLayout(level, 2, 1);
    grid->addWidget(Image5_, 2, 2);
    grid->setColumnStretch(1, 1);
}

void TriggerPanelWidget::refresh() {
    const ScopeData& held = context_.scope.data();
    const ScopeChannel& trigger = held.channels[kTrigger];
    Combo9_->show_list(trigger.objectList);
    Combo11_->show_list(trigger.unitList);
    show_number(Text4_, held.Text4);
    const bool first = held.edge == 1;
    const char* picture = first ? "Image6" : "Image7";
    if (Image5_->property(kPictureProperty).toString() != QLatin1String(picture)) {
        set_picture(Image5_, picture);
        Image5_->setIcon(tool_icon(first ? "edge_up" : "edge_down"));
    }
}

void TriggerPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::scope
