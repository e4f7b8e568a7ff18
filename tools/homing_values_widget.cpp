#include "tools/homing_values_widget.h"

#include <QGridLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace servo::tools {

using namespace homing;

namespace {

// By the places of HomingEntry.
constexpr std::array<const char*, kHomingEntries.size()> kEntryNames{"Text2", "Text3", "Text4",
                                                                     "Text5", "Text6"};
constexpr int kBoxCharacters = 8;
constexpr int kLongBox = 11;  // the offset: a whole number of 32 bits
constexpr int kNumberCharacters = 6;

// Texts of the lists, in English; where they differ the walk through the fixed lists puts them.
constexpr std::array kOffsetModes{"0:Run to Home -Offset", "1:Run to Trig position"};
constexpr std::array kBlinds{"0:0 Rev", "1:0.25 Rev", "2:0.5 Rev"};

std::size_t place(HomingEntry entry) {
    return static_cast<std::size_t>(entry);
}
std::size_t place(HomingList list) {
    return static_cast<std::size_t>(list);
}

int width_of(const QWidget& box, int characters) {
    return box.fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters + 2 * kGap;
}

}  // namespace

HomingValuesWidget::HomingValuesWidget(Homing2& form, std::function<void()> acted, QWidget* parent)
    : QWidget(parent), form_(form), acted_(std::move(acted)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap);
    layout->addWidget(make_method());
    layout->addWidget(make_values());
    connect_method();
    add_tips();
}

QWidget* HomingValuesWidget::make_method() {
    QGroupBox* frame = make_frame(this, "FrameB", "原点模式/Homing method");
    Text1_ = new HomingBox("Text1", frame);
    Text1_->setFixedWidth(width_of(*Text1_, kNumberCharacters));
    Command1_ = make_command(frame, "Command1", "写入/Write Down");
    Label3_ = make_value(frame, "Label3");
    Label3_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    take_ = make_command(frame, "CommandA", "采用/Take over");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kGap, kInnerGap, kGap, kGap);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kInnerGap);
    grid->addWidget(make_label(frame, "LabelF", "预设原点模式/Pre-Set Home Method"), 0, 0);
    grid->addWidget(Text1_, 0, 1);
    grid->addWidget(Command1_, 0, 2);
    grid->addWidget(make_label(frame, "LabelG", "实际原点模式/Actual Home Method"), 1, 0);
    grid->addWidget(Label3_, 1, 1);
    grid->addWidget(take_, 1, 2);
    grid->setColumnStretch(3, 1);
    return frame;
}

void HomingValuesWidget::make_boxes() {
    for (const HomingEntry entry : kHomingEntries) {
        auto* box = new HomingBox(kEntryNames[place(entry)], this);
        entries_[place(entry)] = box;
        box->setFixedWidth(width_of(*box, entry == HomingEntry::Text3 ? kLongBox : kBoxCharacters));
        box->setAlignment(Qt::AlignRight);
        connect(box, &QLineEdit::textEdited, this,
                [this, entry](const QString& text) { form_.type(entry, text.toStdString()); });
        box->pressed = [this, entry](char32_t key) {
            const bool swallowed = form_.KeyPress(entry, key);
            if (swallowed) acted_();
            return swallowed;
        };
        box->focus_changed = [this, entry](bool here) {
            if (here)
                form_.enter(entry);
            else
                form_.leave(entry);
        };
    }
}

void HomingValuesWidget::make_lists() {
    auto* offset_mode = new form::ListBox(this, "Combo1");
    for (const char* item : kOffsetModes)
        offset_mode->addItem(QLatin1String(item));
    auto* blind = new form::ListBox(this, "Combo2");
    for (const char* item : kBlinds)
        blind->addItem(QLatin1String(item));
    lists_ = {offset_mode, blind};
    for (const HomingList list : {HomingList::Combo1, HomingList::Combo2}) {
        QComboBox* box = lists_[place(list)];
        box->setCurrentIndex(-1);
        // A pick, even of the item that stood there.
        connect(box, &QComboBox::activated, this, [this, list](int index) {
            form_.list_Click(list, index);
            acted_();
        });
    }
}

void HomingValuesWidget::put_box(QGridLayout* grid, int row, int column, const char* label,
                                 std::string_view pair, QWidget* box, const char* unit_name,
                                 std::string_view unit) {
    QLabel* caption = make_label(this, label, pair);
    caption->setBuddy(box);
    grid->addWidget(caption, row, column);
    if (unit_name == nullptr) {
        grid->addWidget(box, row, column + 1, 1, 2);
        return;
    }
    grid->addWidget(box, row, column + 1);
    QLabel* beside = make_value(this, unit_name, unit);
    make_quiet(beside);
    grid->addWidget(beside, row, column + 2);
}

void HomingValuesWidget::put_wide(QGridLayout* grid, int row, const char* label,
                                  std::string_view pair, QWidget* box) {
    QLabel* caption = make_label(this, label, pair);
    caption->setBuddy(box);
    auto* line = new QHBoxLayout;
    line->setSpacing(kInnerGap);
    line->addWidget(caption);
    line->addWidget(box);
    line->addStretch();
    grid->addLayout(line, row, 0, 1, -1);
}

QWidget* HomingValuesWidget::make_values() {
    make_boxes();
    make_lists();
    Check4_ = make_check(this, "Check4", "上电自动找原点/Start Homing When Power on");
    connect(Check4_, &QCheckBox::clicked, this, [this] {
        form_.Check4_Click();
        acted_();
    });
    QGroupBox* frame = make_frame(this, "FrameC", "参数/Settings");
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kGap, kInnerGap, kGap, kGap);
    grid->setHorizontalSpacing(kInnerGap);
    grid->setVerticalSpacing(kInnerGap);
    const auto box = [this](HomingEntry entry) { return entries_[place(entry)]; };
    using enum HomingEntry;
    constexpr int kRight = 4;  // columns 0 to 2, a gap, 4 to 6
    put_box(grid, 0, 0, "LabelI", "找原点速度/Home speed", box(Text2), "LabelQ",
            homing_unit(Text2));
    put_box(grid, 0, kRight, "LabelJ", "原点折返速度/Home back speed", box(Text4), "LabelR",
            homing_unit(Text4));
    put_box(grid, 1, 0, "LabelK", "找原点减速度/Home ACC", box(Text5), "LabelS",
            homing_unit(Text5));
    put_box(grid, 1, kRight, "LabelL", "找原点电流/Home Current", box(Text6), "LabelT",
            homing_unit(Text6));
    put_box(grid, 2, 0, "LabelM", "原点偏移/Home Offset", box(Text3), nullptr, {});
    put_box(grid, 2, kRight, "LabelN", "原点屏蔽区域/Home Blind", lists_[place(HomingList::Combo2)],
            nullptr, {});
    put_wide(grid, 3, "LabelO", "原点偏移模式/Home offset Method",
             lists_[place(HomingList::Combo1)]);
    grid->addWidget(Check4_, 4, 0, 1, kRight + 3);
    grid->setColumnMinimumWidth(3, kInnerGap);
    grid->setColumnStretch(3, 1);
    return frame;
}

void HomingValuesWidget::connect_method() {
    connect(Text1_, &QLineEdit::textEdited, this, [this](const QString& text) {
        form_.type_Text1(text.toStdString());
        acted_();
    });
    Text1_->pressed = [this](char32_t key) {
        const bool swallowed = form_.Text1_KeyPress(key);
        if (swallowed) acted_();
        return swallowed;
    };
    connect(Command1_, &QPushButton::clicked, this, [this] {
        form_.Command1_Click();
        acted_();
    });
    connect(take_, &QPushButton::clicked, this, [this] {
        form_.take_drive_method();
        acted_();
    });
}

void HomingValuesWidget::add_tips() {
    using enum HomingEntry;
    const auto tip = [this](HomingEntry entry, base::Text text) {
        tips_.add(entries_[place(entry)], text);
    };
    tips_.add(Text1_, {"原点模式的编号；“无效模式”时可输入，按回车显示",
                       "Number of the method; open for typing under Disabled, Enter shows it"});
    tips_.add(Command1_, {"把模式编号写入驱动器 (6098)", "Writes the number to the drive (6098)"});
    tips_.add(Label3_, {"驱动器中的原点模式", "The method that the drive holds"});
    tips_.add(take_,
              {"按驱动器中的模式设置上面的选项", "Sets the choices above to the drive's method"});
    tip(Text2, {"寻找开关或机械限位的速度，回车写入",
                "Speed of the search for the switch or the stop; Enter writes it"});
    tip(Text4, {"返回准确原点的速度，回车写入",
                "Speed of the way back to the exact place; Enter writes it"});
    tip(Text5, {"找原点的加速度和减速度，回车写入",
                "Acceleration and deceleration while homing; Enter writes it"});
    tip(Text6, {"判断碰到机械限位的电流，回车写入",
                "Current at which a mechanical stop counts as reached; Enter writes it"});
    tip(Text3, {"原点处的位置值，回车写入", "Position that the home point gets; Enter writes it"});
    tips_.add(
        lists_[place(HomingList::Combo1)],
        {"找到原点后停在哪里，选择即写入", "Where the motor stops at last; a pick is written"});
    tips_.add(lists_[place(HomingList::Combo2)],
              {"离开开关后忽略索引信号的范围，选择即写入",
               "Range behind the switch where index pulses are ignored; a pick is written"});
    tips_.add(Check4_, {"上电后第一次使能即自动找原点，点击即写入",
                        "Homes by itself when first enabled after power-up; a click is written"});
}

void HomingValuesWidget::refresh() {
    const HomingData& held = form_.data();
    show_line(Text1_, held.Text1);
    Text1_->setEnabled(held.choices.Text1_enabled());
    show_text(Label3_, held.Label3);
    take_->setEnabled(form_.can_take_drive_method());
    for (const HomingEntry entry : kHomingEntries)
        show_line(entries_[place(entry)], held.entries[place(entry)]);
    Check4_->setChecked(held.Check4);
    for (std::size_t i = 0; i < lists_.size(); ++i)
        if (lists_[i]->currentIndex() != held.lists[i]) lists_[i]->setCurrentIndex(held.lists[i]);
}

void HomingValuesWidget::apply_language(base::Language language) {
    tips_.apply(language);
}

}  // namespace servo::tools
