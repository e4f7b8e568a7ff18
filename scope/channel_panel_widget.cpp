#include "scope/channel_panel_widget.h"

#include <QGridLayout>

#include "params/ui_palette.h"
#include "scope/curve_chip_widget.h"
#include "scope/number_label_widget.h"
#include "scope/pick_list_widget.h"

namespace servo::scope {

namespace {

enum Column : std::uint8_t {
    kChip,
    kEnable,
    kObject,
    kAnother,
    kUnit,
    kScale,
    kOffset,
    kAuto,
    kHide,
    kValue
};

constexpr int kObjectCharacters = 16;
constexpr int kUnitCharacters = 6;
constexpr const char* kWidestScale = "-0.0E-00";
constexpr const char* kWidestOffset = "-00000.000000";

std::string control(const char* kind, int number) {
    return kind + std::to_string(number);
}

// The box is as wide as a usual number; it grows with the window.
QLineEdit* number_box(QWidget* parent, const std::string& name, const char* widest) {
    QLineEdit* box = make_number_box(parent, name);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QLatin1String(widest)) + 2 * kGap);
    return box;
}

// What an imported recording holds is read, though it can't be changed.
void keep_readable(QWidget* list) {
    QPalette colours = list->palette();
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
        colours.setColor(QPalette::Disabled, role, QColor(params::palette::kMutedText));
    list->setPalette(colours);
}

struct RowTexts {
    base::Text enable, object, another, unit, scale, offset, auto_scale, hide;
};

// One set for each channel, since a name is said without its row.
constexpr std::array<RowTexts, kCurves> kRowTexts{{
    {{"记录通道 1", "Record channel 1"},
     {"通道 1 的对象", "Object of channel 1"},
     {"通道 1 的其他对象", "Another object for channel 1"},
     {"通道 1 的单位", "Unit of channel 1"},
     {"通道 1 每格的值", "Units per division of channel 1"},
     {"通道 1 的偏移", "Offset of channel 1"},
     {"通道 1 自动刻度", "Automatic scale of channel 1"},
     {"隐藏通道 1", "Hide channel 1"}},
    {{"记录通道 2", "Record channel 2"},
     {"通道 2 的对象", "Object of channel 2"},
     {"通道 2 的其他对象", "Another object for channel 2"},
     {"通道 2 的单位", "Unit of channel 2"},
     {"通道 2 每格的值", "Units per division of channel 2"},
     {"通道 2 的偏移", "Offset of channel 2"},
     {"通道 2 自动刻度", "Automatic scale of channel 2"},
     {"隐藏通道 2", "Hide channel 2"}},
    {{"记录通道 3", "Record channel 3"},
     {"通道 3 的对象", "Object of channel 3"},
     {"通道 3 的其他对象", "Another object for channel 3"},
     {"通道 3 的单位", "Unit of channel 3"},
     {"通道 3 每格的值", "Units per division of channel 3"},
     {"通道 3 的偏移", "Offset of channel 3"},
     {"通道 3 自动刻度", "Automatic scale of channel 3"},
     {"隐藏通道 3", "Hide channel 3"}},
    {{"记录通道 4", "Record channel 4"},
     {"通道 4 的对象", "Object of channel 4"},
     {"通道 4 的其他对象", "Another object for channel 4"},
     {"通道 4 的单位", "Unit of channel 4"},
     {"通道 4 每格的值", "Units per division of channel 4"},
     {"通道 4 的偏移", "Offset of channel 4"},
     {"通道 4 自动刻度", "Automatic scale of channel 4"},
     {"隐藏通道 4", "Hide channel 4"}},
}};

constexpr base::Text kEnableTip{"勾选后记录该通道；32 位对象与相邻通道共用一个位置",
                                "Records the channel; a 32-bit object takes its neighbour's place"};
constexpr base::Text kAnotherTip{"从对象字典选择对象", "Chooses an object in the dictionary"};
constexpr base::Text kScaleTip{"每格的值；回车生效", "Units per division; Enter applies it"};
constexpr base::Text kOffsetTip{"曲线上移的量；回车生效",
                                "How far the curve is moved up; Enter applies it"};
constexpr base::Text kAutoTip{"刻度和偏移随记录自动选择", "Scale and offset follow the recording"};
constexpr base::Text kHideTip{"仍然记录，但不绘制", "Still recorded, but not drawn"};

}  // namespace

ChannelPanelWidget::ChannelPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    make_headings(*grid);
    for (int channel = 0; channel < kCurves; ++channel) {
        make_row(channel, *grid);
        name_row(channel);
        connect_row(channel);
        connect_texts(channel);
    }
    grid->setColumnStretch(kObject, 4);
    grid->setColumnStretch(kUnit, 1);
    grid->setColumnStretch(kScale, 1);
    grid->setColumnStretch(kOffset, 1);
    grid->setColumnStretch(kValue, 1);
}

void ChannelPanelWidget::make_headings(QGridLayout& grid) {
    const auto heading = [&](int column, const char* name, base::Text text, int columns = 1) {
        QLabel* label = make_caption(this, name, text);
        make_quiet(label);
        grid.addWidget(label, 0, column, 1, columns,
                       column == kValue ? Qt::AlignRight : Qt::AlignLeft);
    };
    grid.addWidget(make_heading(this, "LabelD", {"通道", "Channel"}), 0, kChip, 1, 2);
    heading(kObject, "LabelE", {"对象", "Object"}, 2);
    heading(kUnit, "LabelF", {"单位", "Unit"});
    heading(kScale, "LabelG", {"每格", "Per division"});
    heading(kOffset, "LabelH", {"偏移", "Offset"});
    heading(kAuto, "LabelI", {"自动", "Auto"});
    heading(kHide, "LabelJ", {"隐藏", "Hide"});
    heading(kValue, "LabelK", {"X1 处的值", "At X1"});
}

void ChannelPanelWidget::make_row(int channel, QGridLayout& grid) {
    const int line = channel + 1;
    Row& row = rows_.at(static_cast<std::size_t>(channel));
    grid.addWidget(named(new CurveChip(channel, this), control("Label", 1 + channel)), line, kChip);
    row.enable = make_check(this, control("Check", 14 - channel), {});
    row.object = new PickListWidget(control("Combo", 1 + channel), kObjectCharacters, this);
    keep_readable(row.object);
    row.another = make_row_tool(this, numbered("ObjectButton", channel), "object");
    row.unit = new PickListWidget(control("Combo", 5 + channel), kUnitCharacters, this);
    row.scale = number_box(this, control("Text", 5 + channel), kWidestScale);
    row.offset = number_box(this, control("Text", 9 + channel), kWidestOffset);
    row.auto_scale = make_check(this, control("Check", 6 + channel), {});
    row.hide = make_check(this, control("Check", 1 + channel), {});
    row.value = new NumberLabel("-00000.000", this);
    row.value->setObjectName(to_qt(control("Label", 7 + channel)));
    grid.addWidget(row.enable, line, kEnable);
    grid.addWidget(row.object, line, kObject);
    grid.addWidget(row.another, line, kAnother);
    grid.addWidget(row.unit, line, kUnit);
    grid.addWidget(row.scale, line, kScale);
    grid.addWidget(row.offset, line, kOffset);
    grid.addWidget(row.auto_scale, line, kAuto, Qt::AlignLeft);
    grid.addWidget(row.hide, line, kHide, Qt::AlignLeft);
    grid.addWidget(row.value, line, kValue);
}

void ChannelPanelWidget::name_row(int channel) {
    const Row& row = rows_.at(static_cast<std::size_t>(channel));
    const RowTexts& texts = kRowTexts.at(static_cast<std::size_t>(channel));
    texts_.add(row.enable, texts.enable, kEnableTip);
    texts_.add(row.object, texts.object);
    texts_.add(row.another, texts.another, kAnotherTip);
    texts_.add(row.unit, texts.unit);
    texts_.add(row.scale, texts.scale, kScaleTip);
    texts_.add(row.offset, texts.offset, kOffsetTip);
    texts_.add(row.auto_scale, texts.auto_scale, kAutoTip);
    texts_.add(row.hide, texts.hide, kHideTip);
}

void ChannelPanelWidget::connect_row(int channel) {
    const Row& row = rows_.at(static_cast<std::size_t>(channel));
    Oscilloscope& scope = context_.scope;
    row.object->picked = [this, channel](int position) {
        context_.scope.pick_object(channel, position);
        context_.acted();
    };
    row.unit->picked = [this, channel](int position) {
        context_.scope.pick_unit(channel, position);
        context_.acted();
    };
    connect(row.another, &QToolButton::clicked, this, [this, channel] {
        if (object_asked) object_asked(channel);
    });
    connect(row.enable, &QCheckBox::clicked, this, [this, &scope, channel] {
        scope.click_enable(channel);
        context_.acted();
    });
    connect(row.auto_scale, &QCheckBox::clicked, this, [this, &scope, channel] {
        scope.click_auto_scale(channel);
        context_.acted();
    });
    connect(row.hide, &QCheckBox::clicked, this, [this, &scope, channel] {
        scope.click_hide(channel);
        context_.acted();
    });
}

void ChannelPanelWidget::connect_texts(int channel) {
    const Row& row = rows_.at(static_cast<std::size_t>(channel));
    Oscilloscope& scope = context_.scope;
    connect(row.scale, &QLineEdit::textEdited, this, [&scope, channel](const QString& text) {
        scope.type_scale(channel, text.toStdString());
    });
    connect(row.offset, &QLineEdit::textEdited, this, [&scope, channel](const QString& text) {
        scope.type_offset(channel, text.toStdString());
    });
    connect(row.scale, &QLineEdit::returnPressed, this, [this, &scope, channel] {
        scope.enter_scale(channel);
        context_.acted();
    });
    connect(row.offset, &QLineEdit::returnPressed, this, [this, &scope, channel] {
        scope.enter_offset(channel);
        context_.acted();
    });
}

void ChannelPanelWidget::refresh() {
    for (int channel = 0; channel < kCurves; ++channel)
        refresh_row(channel);
}

void ChannelPanelWidget::refresh_row(int channel) {
    const ScopeChannel& shown =
        context_.scope.data().channels.at(static_cast<std::size_t>(channel));
    const Row& row = rows_.at(static_cast<std::size_t>(channel));
    show_check(row.enable, shown.enable);
    row.object->show_list(shown.objectList);
    row.unit->show_list(shown.unitList);
    show_number(row.scale, shown.scaleText);
    show_number(row.offset, shown.offsetText);
    show_check(row.auto_scale, shown.autoScale);
    show_check(row.hide, shown.hide);
    show_text(row.value, shown.valueLabel);
    const bool live = context_.scope.acquisition_enabled();
    row.enable->setEnabled(live);
    row.object->setEnabled(live);
    row.another->setEnabled(live);
}

void ChannelPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::scope
