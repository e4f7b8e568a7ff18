#include "tools/easy_control_widget.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "params/ui_palette.h"

namespace servo::tools {

using namespace form;

namespace {

constexpr int kBoxWidth = 80;
constexpr int kLineGap = 6;

enum PulseBox : int { kNumerator, kDenominator, kPerTurn, kFrequency, kSpeed };

QLineEdit* make_line(QWidget* parent, std::string_view name, std::string_view text) {
    auto* line = new QLineEdit(qt(text), parent);
    line->setObjectName(qt(name));
    line->setFixedWidth(kBoxWidth);
    return line;
}

ListBox* make_list(QWidget* parent, const char* name, std::span<const std::string_view> items) {
    auto* list = new ListBox(parent, QLatin1String(name));
    for (const std::string_view item : items)
        list->addItem(qt(item));
    return list;
}

QLabel* label_of(QWidget* parent, PulseBox box) {
    const easy::Box& entry = easy::pulse_boxes()[static_cast<std::size_t>(box)];
    return make_label(parent, qt(entry.label), entry.caption);
}

}  // namespace

EasyControlWidget::EasyControlWidget(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("Frame1"));
    setProperty("Tag", qt("控制命令相关设置/Control Command related settings"));
    place_ = new QStackedWidget(this);
    place_->addWidget(make_pulse());
    place_->addWidget(make_analog());
    place_->addWidget(make_words(
        2, "LabelO",
        "此方式下用户可通过驱动器提供的通信接口任意控制驱动器。/In this control method,user can "
        "control the driver by the communication interface which driver provide."));
    place_->addWidget(make_words(
        3, "LabelP",
        "此方式下用户需要先编辑位置表，再结合对应的IO功能对驱动器进行控制。/In this control "
        "method,user need to edit the position table first,and set the related IO functions."));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    layout->addWidget(place_);
    connect(Check1_, &QCheckBox::toggled, this, &EasyControlWidget::show_gear_help);
    show_gear_help(false);
    show_method(0);
}

void EasyControlWidget::show_method(int method) {
    place_->setCurrentIndex(method);
}

// No gear factor is computed: the boxes only take turns.
void EasyControlWidget::show_gear_help(bool gear_help) {
    for (std::size_t box = 0; box < boxes_.size(); ++box)
        boxes_[box]->setEnabled(easy::box_enabled(static_cast<int>(box), gear_help));
}

QGroupBox* EasyControlWidget::make_frame_of(int method) {
    const easy::Labelled& frame = easy::methods()[static_cast<std::size_t>(method)].frame;
    return make_frame(place_, qt(frame.control), frame.caption);
}

QLineEdit* EasyControlWidget::make_box(QWidget* parent, int box) {
    const easy::Box& entry = easy::pulse_boxes()[static_cast<std::size_t>(box)];
    return boxes_[static_cast<std::size_t>(box)] = make_line(parent, entry.control, entry.text);
}

// Pulses times a fraction make the position, and the boxes stand where the fraction's numbers do.
QWidget* EasyControlWidget::make_formula(QWidget* parent) {
    auto* formula = new QWidget(parent);
    auto* bar = new QFrame(formula);
    bar->setFixedHeight(1);
    bar->setAutoFillBackground(true);
    QPalette colours = bar->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kText));
    bar->setPalette(colours);
    auto* grid = new QGridLayout(formula);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(make_label(formula, QStringLiteral("LabelA"), "输入脉冲*/Pulse In*"), 0, 0, 3,
                    1);
    grid->addWidget(label_of(formula, kNumerator), 0, 1);
    grid->addWidget(make_box(formula, kNumerator), 0, 2);
    grid->addWidget(bar, 1, 1, 1, 2, Qt::AlignVCenter);
    grid->addWidget(label_of(formula, kDenominator), 2, 1);
    grid->addWidget(make_box(formula, kDenominator), 2, 2);
    grid->addWidget(make_label(formula, QStringLiteral("LabelD"), "=目标位置/=Target Pos"), 0, 3, 3,
                    1);
    grid->setColumnStretch(4, 1);
    return formula;
}

QGroupBox* EasyControlWidget::make_pulse() {
    QGroupBox* frame = make_frame_of(0);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kLineGap);
    grid->addWidget(make_formula(frame), 0, 0, 1, 4);
    grid->addWidget(
        make_label(frame, QStringLiteral("LabelE"), "请选择脉冲输入类型/Select the Pulse type"), 1,
        0);
    Combo2_ = make_list(frame, "Combo2", easy::pulse_types());
    grid->addWidget(Combo2_, 1, 1, 1, 2);
    Check1_ = make_check(frame, QStringLiteral("Check1"),
                         "电子齿轮计算帮助/Gear factor calculation help");
    grid->addWidget(Check1_, 2, 0, 1, 4);
    constexpr std::array<const char*, easy::kPulseBoxes> kUnitNames{"", "", "", "LabelH", "LabelJ"};
    for (const PulseBox box : {kPerTurn, kFrequency, kSpeed}) {
        const int row = 3 + box - kPerTurn;
        grid->addWidget(label_of(frame, box), row, 0);
        grid->addWidget(make_box(frame, box), row, 1);
        const std::string_view unit = easy::pulse_boxes()[static_cast<std::size_t>(box)].unit;
        if (unit.empty()) continue;
        grid->addWidget(
            make_value(frame, QLatin1String(kUnitNames[static_cast<std::size_t>(box)]), unit), row,
            2);
    }
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(6, 1);
    return frame;
}

QGroupBox* EasyControlWidget::make_analog() {
    QGroupBox* frame = make_frame_of(1);
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kGap, kGap / 2, kGap, kGap / 2);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kLineGap);
    grid->addWidget(make_label(frame, QStringLiteral("LabelK"),
                               "请选择模拟量通道/Please select Analog channel"),
                    0, 0);
    Combo3_ = make_list(frame, "Combo3", easy::analog_channels());
    grid->addWidget(Combo3_, 0, 1, 1, 2);
    grid->addWidget(make_label(frame, QStringLiteral("LabelL"),
                               "模拟量与转速对应关系为:/Analog voltage and speed(rpm) relation:"),
                    1, 0);
    Text7_ = make_line(frame, "Text7", {});
    grid->addWidget(Text7_, 1, 1);
    grid->addWidget(make_value(frame, QStringLiteral("LabelM"), "rpm/V"), 1, 2);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(2, 1);
    return frame;
}

QGroupBox* EasyControlWidget::make_words(int method, const char* name, std::string_view words) {
    QGroupBox* frame = make_frame_of(method);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(make_text(frame, QLatin1String(name), words));
    layout->addStretch();
    return frame;
}

}  // namespace servo::tools
