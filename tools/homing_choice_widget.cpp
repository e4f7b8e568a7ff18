#include "tools/homing_choice_widget.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::tools {

using namespace homing;
using enum HomingChoice;

namespace {

constexpr std::array<std::string_view, kHomingTriggers> kTriggers{
    "使用编码器索引信号/Use the Index Signal", "使用限位开关信号/Use Limit Switch",
    "使用原点开关信号/Use Home Switch", "其它特殊方式/By Special Method", "无效模式/Disabled"};

// Names by the places of HomingChoice.
constexpr std::array<const char*, kHomingChoices> kNames{
    "Check1",   "Check2",   "Option2",  "Option3",  "Option5",  "Option4",  "Option6",
    "Option7",  "Option8",  "Option9",  "Check6",   "Option11", "Option10", "Check3",
    "Option12", "Option13", "Check5",   "Option15", "Option14", "Option16", "Option17",
    "Option19", "Option18", "Option20", "Option21", "Check7"};

constexpr std::string_view kPositive = "正方向/Positive";
constexpr std::string_view kNegative = "负方向/Negative";
constexpr std::string_view kPositiveDirection = "正方向/Positive Dir.";
constexpr std::string_view kNegativeDirection = "负方向/Negative Dir.";
constexpr std::string_view kPositiveLimit = "正限位/Positive Limit";
constexpr std::string_view kNegativeLimit = "负限位/Negative Limit";
constexpr std::string_view kUseLimit = "使用限位开关/Use Limit Switch";
constexpr std::string_view kUseHome = "使用原点开关/Use Home Switch";

// Columns of the frames' grids: what it is about, and two options.
constexpr int kAbout = 0;
constexpr int kFirst = 1;
constexpr int kSecond = 2;
constexpr int kLastRow = 3;  // empty

std::size_t place(HomingChoice choice) {
    return static_cast<std::size_t>(choice);
}

QFrame* make_divider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette colours = line->palette();
    colours.setColor(QPalette::Window, QColor::fromRgba(params::palette::kFrame));
    line->setPalette(colours);
    return line;
}

QGridLayout* make_grid(QGroupBox* frame) {
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2 * kGap);
    grid->setVerticalSpacing(kInnerGap);
    grid->setColumnStretch(kSecond, 1);
    grid->setRowStretch(kLastRow, 1);
    return grid;
}

}  // namespace

// All in one box: the trigger, a line, and what it asks for.
HomingChoiceWidget::HomingChoiceWidget(Homing2& form, std::function<void()> acted, QWidget* parent)
    : QWidget(parent), form_(form), acted_(std::move(acted)) {
    QGroupBox* frame = make_frame(this, "FrameA", "原点触发信号/Homing Trigger");
    auto* around = new QVBoxLayout(this);
    around->setContentsMargins(0, 0, 0, 0);
    around->addWidget(frame);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(kGap, kInnerGap, kGap, kGap);
    layout->setSpacing(kGap);
    make_triggers(frame);
    frames_ = new QStackedWidget(frame);
    for (QGroupBox* each : {make_index_frame(), make_limit_frame(), make_home_frame(),
                            make_special_frame(), make_disabled_frame()})
        frames_->addWidget(each);
    layout->addWidget(make_divider(frame));
    layout->addWidget(frames_);
    add_tips();
}

// In columns, read downwards.
void HomingChoiceWidget::make_triggers(QGroupBox* frame) {
    constexpr int kRows = 3;
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(3 * kGap);
    grid->setVerticalSpacing(kInnerGap);
    for (int index = 0; index < kHomingTriggers; ++index) {
        const auto at = static_cast<std::size_t>(index);
        Option1_[at] = make_option(frame, QStringLiteral("Option1(%1)").arg(index), kTriggers[at]);
        grid->addWidget(Option1_[at], index % kRows, index / kRows);
        connect(Option1_[at], &QRadioButton::clicked, this, [this, index] {
            form_.Option1_Click(index);
            acted_();
        });
    }
    grid->setColumnStretch(1, 1);
    static_cast<QVBoxLayout*>(frame->layout())->addLayout(grid);
}

QRadioButton* HomingChoiceWidget::option(QWidget* parent, HomingChoice choice,
                                         std::string_view pair) {
    QRadioButton* button = make_option(parent, QLatin1String(kNames[place(choice)]), pair);
    choices_[place(choice)] = button;
    connect(button, &QRadioButton::clicked, this, [this, choice] {
        form_.click(choice);
        acted_();
    });
    return button;
}

QCheckBox* HomingChoiceWidget::check(QWidget* parent, HomingChoice choice, std::string_view pair) {
    QCheckBox* box = make_check(parent, kNames[place(choice)], pair);
    choices_[place(choice)] = box;
    connect(box, &QCheckBox::clicked, this, [this, choice] {
        form_.click(choice);
        acted_();
    });
    return box;
}

void HomingChoiceWidget::put_pair(QGridLayout* grid, int row, HomingChoice first,
                                  std::string_view first_text, HomingChoice second,
                                  std::string_view second_text) {
    QWidget* parent = grid->parentWidget();
    auto* group = new QButtonGroup(parent);  // a pair of its own among those of the frame
    QRadioButton* left = option(parent, first, first_text);
    QRadioButton* right = option(parent, second, second_text);
    group->addButton(left);
    group->addButton(right);
    grid->addWidget(left, row, kFirst);
    grid->addWidget(right, row, kSecond);
}

QGroupBox* HomingChoiceWidget::make_index_frame() {
    auto* frame = new HomingFrame("Frame11", this);
    QGridLayout* grid = make_grid(frame);
    Frame2_ = new HomingFrame("Frame2", frame);
    auto* direction = new QGridLayout(Frame2_);
    direction->setContentsMargins(0, 0, 0, 0);
    direction->setHorizontalSpacing(2 * kGap);
    direction_ = make_label(Frame2_, "LabelA", "寻找方向/Search direction");
    direction->addWidget(direction_, 0, kAbout);
    direction->setColumnStretch(kSecond, 1);
    grid->addWidget(Frame2_, 0, 0, 1, 3);
    put_pair(direction, 0, Option2, kPositive, Option3, kNegative);
    grid->addWidget(check(frame, Check1, kUseLimit), 1, kAbout);
    put_pair(grid, 1, Option5, "正限位/Positive", Option4, "负限位/Negative");
    grid->addWidget(check(frame, Check2, kUseHome), 2, kAbout);
    put_pair(grid, 2, Option6, "正极性/Positive", Option7, "负极性/Negative");
    return frame;
}

QGroupBox* HomingChoiceWidget::make_limit_frame() {
    auto* frame = new HomingFrame("Frame12", this);
    QGridLayout* grid = make_grid(frame);
    grid->addWidget(make_label(frame, "LabelB", "触发的限位/Trigger"), 0, kAbout);
    put_pair(grid, 0, Option8, kPositiveLimit, Option9, kNegativeLimit);
    grid->addWidget(check(frame, Check6, kUseLimit), 1, kAbout);
    grid->addWidget(make_label(frame, "LabelC", "寻找方向/Search direction"), 2, kAbout);
    put_pair(grid, 2, Option11, kPositiveDirection, Option10, kNegativeDirection);
    return frame;
}

QGroupBox* HomingChoiceWidget::make_home_frame() {
    auto* frame = new HomingFrame("Frame13", this);
    QGridLayout* grid = make_grid(frame);
    grid->addWidget(check(frame, Check3, kUseHome), 0, kAbout);
    put_pair(grid, 0, Option12, "高电平/High Level", Option13, "低电平/Low Level");
    grid->addWidget(check(frame, Check5, kUseLimit), 1, kAbout);
    put_pair(grid, 1, Option15, kPositiveLimit, Option14, kNegativeLimit);
    grid->addWidget(make_label(frame, "LabelD", "寻找方向/Search direction"), 2, kAbout);
    put_pair(grid, 2, Option16, kPositiveDirection, Option17, kNegativeDirection);
    return frame;
}

QGroupBox* HomingChoiceWidget::make_special_frame() {
    auto* frame = new HomingFrame("Frame14", this);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kInnerGap);
    auto* ways = new QGridLayout;
    ways->setHorizontalSpacing(2 * kGap);
    auto* group = new QButtonGroup(frame);
    QRadioButton* here = option(frame, Option19, "使用当前位置/Use Current Position");
    QRadioButton* stop = option(frame, Option18, "使用机械限位/Use Mechanical Limit");
    group->addButton(here);
    group->addButton(stop);
    ways->addWidget(here, 0, 0);
    ways->addWidget(stop, 0, 1);
    ways->setColumnStretch(1, 1);
    layout->addLayout(ways);
    layout->addWidget(make_stop_frame(frame));
    layout->addStretch();
    return frame;
}

QGroupBox* HomingChoiceWidget::make_stop_frame(QWidget* parent) {
    Frame10_ = make_frame(parent, "Frame10", "机械限位配置/Configure Mechanical Limit");
    QSizePolicy keeps = Frame10_->sizePolicy();
    keeps.setRetainSizeWhenHidden(true);
    Frame10_->setSizePolicy(keeps);
    auto* grid = new QGridLayout(Frame10_);
    grid->setContentsMargins(kGap, kInnerGap, kGap, kInnerGap);
    grid->setHorizontalSpacing(2 * kGap);
    grid->setVerticalSpacing(kInnerGap);
    put_pair(grid, 0, Option20, kPositive, Option21, kNegative);
    QLabel* current = make_label(Frame10_, "Label1", "通过找原点电流触发/Trig By Home Current");
    make_quiet(current);
    grid->addWidget(
        check(Frame10_, Check7, "使用反向后的索引信号/Use the Index Signal after reverse"), 1,
        kFirst, 1, 3);
    grid->addWidget(current, 0, 3);
    grid->setColumnStretch(3, 1);
    return Frame10_;
}

QGroupBox* HomingChoiceWidget::make_disabled_frame() {
    auto* frame = new HomingFrame("Frame15", this);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    QLabel* hint =
        make_label(frame, "LabelE",
                   "请在下面输入原点模式的编号，按回车显示。0 为不找原点。/Type the number of a "
                   "method below; Enter shows it. 0 means no homing.");
    hint->setWordWrap(true);
    make_quiet(hint);
    layout->addWidget(hint);
    layout->addStretch();
    return frame;
}

void HomingChoiceWidget::add_tips() {
    const auto tip = [this](HomingChoice choice, base::Text text) {
        tips_.add(choices_[place(choice)], text);
    };
    tip(Option2,
        {"最后向正方向寻找索引信号", "The index signal is searched for in the positive direction"});
    tip(Option3,
        {"最后向负方向寻找索引信号", "The index signal is searched for in the negative direction"});
    tip(Option5, {"使用正限位开关", "The positive limit switch is used"});
    tip(Option4, {"使用负限位开关", "The negative limit switch is used"});
    tip(Option6,
        {"原点开关负侧的边沿，或开关一直接通到正方向的端部",
         "The edge on the switch's negative side, or a switch that is on to the positive end"});
    tip(Option7,
        {"原点开关正侧的边沿，或开关一直接通到负方向的端部",
         "The edge on the switch's positive side, or a switch that is on to the negative end"});
    tip(Check3, {"仅作说明，不影响模式", "For orientation; it does not change the method"});
    tip(Check6, {"仅作说明，不影响模式", "For orientation; it does not change the method"});
    tip(Option11,
        {"由所选限位决定，不影响模式", "Follows the limit; it does not change the method"});
    tip(Option10,
        {"由所选限位决定，不影响模式", "Follows the limit; it does not change the method"});
    tip(Option12,
        {"原点开关负侧的边沿，或开关一直接通到正方向的端部",
         "The edge on the switch's negative side, or a switch that is on to the positive end"});
    tip(Option13,
        {"原点开关正侧的边沿，或开关一直接通到负方向的端部",
         "The edge on the switch's positive side, or a switch that is on to the negative end"});
    tip(Option16, {"最后向正方向经过开关的边沿",
                   "The edge of the switch is passed in the positive direction"});
    tip(Option17, {"最后向负方向经过开关的边沿",
                   "The edge of the switch is passed in the negative direction"});
    tip(Check7, {"碰到机械限位后反向运行到第一个索引信号",
                 "Behind the stop the motor turns round and runs to the first index pulse"});
}

void HomingChoiceWidget::apply_language(base::Language language) {
    tips_.apply(language);
    direction_->setMinimumWidth(std::max(choices_[place(Check1)]->sizeHint().width(),
                                         choices_[place(Check2)]->sizeHint().width()));
}

void HomingChoiceWidget::refresh() {
    const HomingChoices& held = form_.data().choices;
    // Setting a state is no click.
    for (std::size_t i = 0; i < choices_.size(); ++i)
        if (const bool on = held.on(static_cast<HomingChoice>(i)); choices_[i]->isChecked() != on)
            choices_[i]->setChecked(on);
    Option1_[static_cast<std::size_t>(held.Option1())]->setChecked(true);
    frames_->setCurrentIndex(held.Option1());
    Frame2_->setEnabled(held.Frame2_enabled());
    Frame10_->setVisible(held.Frame10_visible());
}

}  // namespace servo::tools
