#include "tuner/tool_row_widget.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <array>

#include "params/ui_palette.h"

namespace servo::tuner {

namespace {

constexpr std::array<const char*, 3> kPictureKinds{"png", "svg", "pdf"};
constexpr int kBarHeight = 18;

void add_divider(QHBoxLayout& row, QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedSize(1, kBarHeight);
    line->setAutoFillBackground(true);
    QPalette colours = line->palette();
    colours.setColor(QPalette::Window, QColor(params::palette::kFrame));
    line->setPalette(colours);
    row.addWidget(line);
}

}  // namespace

ToolRowWidget::ToolRowWidget(PanelContext context, ToolRowEvents events, QWidget* parent)
    : QWidget(parent), context_(std::move(context)), events_(std::move(events)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap);
    make_files(*row);
    add_divider(*row, this);
    make_choices(*row);
    note_ = make_value(this, "LabelNote");
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    make_quiet(note_);
    row->addWidget(note_, 1);
    make_pointer(*row);
}

void ToolRowWidget::make_files(QHBoxLayout& row) {
    QPushButton* load = make_command(this, "Command2", {"加载", "Load"});
    QPushButton* save = make_command(this, "Command3", {"保存", "Save"});
    connect(load, &QPushButton::clicked, this, [this] { events_.load(); });
    connect(save, &QPushButton::clicked, this, [this] { events_.save(); });
    texts_.add(load, {"加载", "Load"}, {"打开 .bode 文件", "Opens a .bode file"});
    texts_.add(save, {"保存", "Save"},
               {"把扫频结果保存为 .bode 文件", "Saves the scan as a .bode file"});
    picture_ = make_command(this, "CommandB", {"图片", "Picture"});
    auto* menu = new QMenu(picture_);
    for (const char* kind : kPictureKinds) {
        const QString label = QString::fromLatin1(kind).toUpper();
        menu->addAction(label, this, [this, kind] { events_.save_picture(kind); })
            ->setObjectName(label);
    }
    picture_->setMenu(menu);
    add_key(picture_, Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    texts_.add(picture_, {"保存图片", "Save the picture"},
               {"把图保存为 PNG、SVG 或 PDF", "Saves the picture as PNG, SVG or PDF"},
               "Ctrl+Shift+P");
    table_ = make_command(this, "CommandC", {"数据", "Data"});
    connect(table_, &QPushButton::clicked, this, [this] { events_.save_table(); });
    add_key(table_, Qt::CTRL | Qt::SHIFT | Qt::Key_D);
    texts_.add(table_, {"保存数据", "Save the data"},
               {"把所有曲线保存为 CSV", "Saves all curves as CSV"}, "Ctrl+Shift+D");
    for (QPushButton* button : {load, save, picture_, table_})
        row.addWidget(button);
}

void ToolRowWidget::make_choices(QHBoxLayout& row) {
    Check15_ = make_check(this, "Check15", {"增益图", "Gain"});
    Check16_ = make_check(this, "Check16", {"相位图", "Phase"});
    connect(Check15_, &QCheckBox::clicked, this, [this] {
        context_.tuner.Check15_Click();
        context_.acted();
    });
    connect(Check16_, &QCheckBox::clicked, this, [this] {
        context_.tuner.Check16_Click();
        context_.acted();
    });
    Combo2_ = new PickList("Combo2", this);
    Combo2_->show_items({"20dB", "40dB"});
    Combo2_->picked = [this](int position) {
        context_.tuner.pick_range(position);
        context_.acted();
    };
    texts_.add(Check15_, {"增益图", "Gain"}, {"显示增益图", "Shows the gain area"});
    texts_.add(Check16_, {"相位图", "Phase"}, {"显示相位图", "Shows the phase area"});
    texts_.add(Combo2_, {"增益刻度", "Gain scale"},
               {"增益图每格的分贝数", "Decibels between two lines of the gain area"});
    for (QWidget* control : std::initializer_list<QWidget*>{Check15_, Check16_, Combo2_})
        row.addWidget(control);
}

void ToolRowWidget::make_pointer(QHBoxLayout& row) {
    Label15_ = make_value(this, "Label15");
    Label14_ = make_value(this, "Label14");
    Label37_ = make_value(this, "Label37");
    fit_texts(Label15_, {"1000.0 Hz"});
    fit_texts(Label14_, {"-120.0dB"});
    fit_texts(Label37_, {"-180.0\u00b0"});
    texts_.add(Label15_, {"指针处频率", "Frequency at the pointer"});
    texts_.add(Label14_, {"指针处增益", "Gain at the pointer"});
    texts_.add(Label37_, {"指针处相位", "Phase at the pointer"});
    for (QLabel* label : {Label15_, Label14_, Label37_}) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        row.addWidget(label);
    }
}

void ToolRowWidget::refresh() {
    const TunerData& held = context_.tuner.data();
    show_check(Check15_, held.choices.Check15);
    show_check(Check16_, held.choices.Check16);
    show_position(Combo2_, held.choices.Combo2);
    const bool something =
        held.analysed || held.simulation.filter_used != decltype(held.simulation.filter_used){};
    show_enabled(picture_, something);
    show_enabled(table_, something);
}

void ToolRowWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

void ToolRowWidget::show_pointer(const PointerTexts& texts) {
    show_text(Label15_, texts.Label15);
    show_text(Label14_, texts.Label14);
    show_text(Label37_, texts.Label37);
}

void ToolRowWidget::show_note(const QString& text) {
    note_->setText(note_->fontMetrics().elidedText(text, Qt::ElideMiddle, note_->width()));
    note_->setToolTip(text);
}

}  // namespace servo::tuner
