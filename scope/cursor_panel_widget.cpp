#include "scope/cursor_panel_widget.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "scope/curve_chip_widget.h"
#include "scope/number_label_widget.h"
#include "scope/pick_list_widget.h"

namespace servo::scope {

namespace {

constexpr int kCurveCharacters = 3;
constexpr const char* kWidestReadOut = "-000000.00";

QLabel* line_name(QWidget* parent, const char* name, const char* text) {
    auto* label = named(new QLabel(QString::fromUtf8(text), parent), name);
    label->setProperty("Tag", QStringLiteral("-"));
    make_quiet(label);
    return label;
}

}  // namespace

CursorPanelWidget::CursorPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    make_steps();
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(make_heading(this, "LabelC", {"测量", "Measuring"}), 0, 0, 1, 3);
    lay_out_steps(*grid);
    lay_out_read_outs(*grid, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
}

QToolButton* CursorPanelWidget::step(const char* name, const char* icon, base::Text text,
                                     std::function<void()> run) {
    QToolButton* button = make_row_tool(this, name, icon);
    button->setAutoRepeat(true);
    connect(button, &QToolButton::clicked, this, [this, run = std::move(run)] {
        run();
        context_.acted();
    });
    texts_.add(button, text);
    return button;
}

void CursorPanelWidget::make_steps() {
    Combo12_ = new PickListWidget("Combo12", kCurveCharacters, this);
    const int side = Combo12_->iconSize().height();
    Combo12_->setIconSize({side, side});
    for (int channel = 0; channel < kCurves; ++channel)
        Combo12_->addItem(shape_icon(channel), QString::number(channel + 1));
    Combo12_->picked = [this](int position) {
        context_.scope.pick_curve(position);
        context_.acted();
    };
    texts_.add(Combo12_, {"测量的曲线", "Curve to measure"},
               {"游标、刻度标签和步进所用的曲线", "The curve of cursors, grid labels and steps"});
    Check10_ = make_check(this, "Check10", {"小刻度", "Small steps"});
    connect(Check10_, &QCheckBox::clicked, this, [this] {
        context_.scope.click_small_steps();
        context_.acted();
    });
    texts_.add(Check10_, {"小刻度", "Small steps"},
               {"刻度按第二位数字步进", "The scale steps by its second digit"});
    Command10_ = step("Command10", "larger", {"减小每格的值", "Fewer units per division"},
                      [this] { context_.scope.Command10_Click(); });
    Command9_ = step("Command9", "smaller", {"增大每格的值", "More units per division"},
                     [this] { context_.scope.Command9_Click(); });
    Command12_ = step("Command12", "up", {"曲线上移半格", "Curve up by half a division"},
                      [this] { context_.scope.Command12_Click(); });
    Command11_ = step("Command11", "down", {"曲线下移半格", "Curve down by half a division"},
                      [this] { context_.scope.Command11_Click(); });
}

void CursorPanelWidget::lay_out_steps(QGridLayout& grid) {
    grid.addWidget(make_caption(this, "LabelL", {"曲线", "Curve"}), 1, 0);
    grid.addWidget(Combo12_, 1, 1);
    grid.addWidget(Check10_, 1, 2);
    auto* steps = new QHBoxLayout;
    steps->setSpacing(0);
    steps->addWidget(make_caption(this, "LabelM", {"刻度", "Scale"}));
    steps->addSpacing(kGap);
    steps->addWidget(Command10_);
    steps->addWidget(Command9_);
    steps->addStretch();
    steps->addWidget(make_caption(this, "LabelN", {"偏移", "Offset"}));
    steps->addSpacing(kGap);
    steps->addWidget(Command11_);
    steps->addWidget(Command12_);
    grid.addLayout(steps, 2, 0, 1, 3);
}

NumberLabel* CursorPanelWidget::read_out(const char* name) {
    auto* label = new NumberLabel(kWidestReadOut, this);
    label->setObjectName(QLatin1String(name));
    label->setTextInteractionFlags(Qt::NoTextInteraction);
    return label;
}

void CursorPanelWidget::lay_out_read_outs(QGridLayout& grid, int line) {
    Label25_ = read_out("Label25");
    Label27_ = read_out("Label27");
    Label29_ = read_out("Label29");
    Label31_ = read_out("Label31");
    Label32_ = read_out("Label32");
    Label33_ = read_out("Label33");
    Label34_ = read_out("Label34");
    Label35_ = read_out("Label35");
    make_quiet(Label31_);
    make_quiet(Label32_);
    grid.addWidget(make_caption(this, "LabelO", {"游标", "Cursors"}), line, 0);
    grid.addWidget(Label31_, line, 1);
    grid.addWidget(Label32_, line, 2);
    grid.addWidget(line_name(this, "LabelP", "1"), line + 1, 0);
    grid.addWidget(Label25_, line + 1, 1);
    grid.addWidget(Label35_, line + 1, 2);
    grid.addWidget(line_name(this, "LabelQ", "2"), line + 2, 0);
    grid.addWidget(Label27_, line + 2, 1);
    grid.addWidget(Label34_, line + 2, 2);
    grid.addWidget(line_name(this, "LabelR", "Δ"), line + 3, 0);
    grid.addWidget(Label29_, line + 3, 1);
    grid.addWidget(Label33_, line + 3, 2);
}

void CursorPanelWidget::refresh() {
    const ScopeData& held = context_.scope.data();
    Combo12_->setCurrentIndex(held.Combo12);
    show_check(Check10_, held.Check10);
    const CursorTexts& texts = held.cursor_texts;
    show_text(Label25_, texts.Label25);
    show_text(Label27_, texts.Label27);
    show_text(Label29_, texts.Label29);
    show_text(Label31_, texts.Label31);
    show_text(Label32_, texts.Label32);
    show_text(Label33_, texts.Label33);
    show_text(Label34_, texts.Label34);
    show_text(Label35_, texts.Label35);
}

void CursorPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::scope
