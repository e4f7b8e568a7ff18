#include "tuner/gains_panel_widget.h"

#include <QGridLayout>

#include "tuner/simulation.h"

namespace servo::tuner {

namespace {
constexpr int kCharacters = 7;
}

GainsPanelWidget::GainsPanelWidget(PanelContext context, QWidget* parent)
    : QWidget(parent), context_(std::move(context)) {
    Text10_ = make_number_box(this, "Text10", kCharacters);
    Text11_ = make_number_box(this, "Text11", kCharacters);
    Text9_ = make_number_box(this, "Text9", kCharacters);
    connect_box(*Text10_, AdvancedTuner::Box::kText10);
    connect_box(*Text11_, AdvancedTuner::Box::kText11);
    connect_box(*Text9_, AdvancedTuner::Box::kText9);
    Command4_ = make_command(this, "Command4", {"仿真", "Simulate"});
    connect(Command4_, &QPushButton::clicked, this, &GainsPanelWidget::simulate);
    texts_.add(
        Text10_, {"速度环增益", "Gain of the velocity loop"},
        {"速度环比例增益；回车即仿真", "Proportional gain of the velocity loop; Enter simulates"});
    texts_.add(
        Text11_, {"速度环积分", "Integral of the velocity loop"},
        {"速度环积分增益；回车即仿真", "Integral gain of the velocity loop; Enter simulates"});
    texts_.add(Text9_, {"位置环增益", "Gain of the position loop"},
               {"位置环增益；回车即仿真", "Gain of the position loop; Enter simulates"});
    texts_.add(Command4_, {"仿真", "Simulate"},
               {"用这些滤波器和增益计算速度环和位置环，不改动驱动器",
                "Computes the loops with these filters and gains; the drive is not touched"},
               "Ctrl+Enter");
    add_key(Command4_, Qt::CTRL | Qt::Key_Return);
    scanned_ = make_command(this, "CommandD", {"扫频时", "As scanned"});
    connect(scanned_, &QPushButton::clicked, this, &GainsPanelWidget::take_scanned);
    texts_.add(scanned_, {"扫频时的增益", "Gains of the scan"},
               {"填入扫频时驱动器的速度环增益",
                "Fills in the gains that the drive's velocity loop had at the scan"});
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 4);
    grid->addWidget(make_heading(this, "HeadingGains", {"增益", "Gains"}), 0, 0);
    grid->addWidget(scanned_, 0, 1);
    grid->addWidget(Command4_, 0, 2);
    const auto add = [&](int column, QLabel* caption, QLineEdit* box) {
        make_small(caption);
        make_quiet(caption);
        grid->addWidget(caption, 1, column, Qt::AlignBottom);
        grid->addWidget(box, 2, column);
        grid->setColumnStretch(column, 1);
        caption->setBuddy(box);
    };
    add(0, make_caption(this, "LabelB", {"速度增益", "Velocity"}), Text10_);
    add(1, make_caption(this, "LabelC", {"速度积分", "Integral"}), Text11_);
    add(2, make_caption(this, "LabelD", {"位置增益", "Position"}), Text9_);
}

void GainsPanelWidget::connect_box(QLineEdit& box, AdvancedTuner::Box which) {
    connect(&box, &QLineEdit::textEdited, this,
            [this, which](const QString& text) { context_.tuner.type(which, text.toStdString()); });
    connect(&box, &QLineEdit::returnPressed, this, &GainsPanelWidget::simulate);
}

void GainsPanelWidget::simulate() {
    context_.tuner.Command4_Click();
    context_.acted();
}

void GainsPanelWidget::take_scanned() {
    const auto gains = gains_at_scan(context_.tuner.data().settings);
    if (!gains) return;
    context_.tuner.type(AdvancedTuner::Box::kText10, gains->Text10);
    context_.tuner.type(AdvancedTuner::Box::kText11, gains->Text11);
    context_.acted();
}

void GainsPanelWidget::refresh() {
    const TunerData& held = context_.tuner.data();
    show_enabled(scanned_, held.analysed && gains_at_scan(held.settings).has_value());
    show_number(Text10_, held.Text10);
    show_number(Text11_, held.Text11);
    show_number(Text9_, held.Text9);
}

void GainsPanelWidget::apply_language(base::Language language) {
    texts_.apply(language);
}

}  // namespace servo::tuner
