#include "tools/easy_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "tools/easy.h"
#include "tools/easy_application_widget.h"
#include "tools/easy_control_widget.h"
#include "tools/easy_grid_view.h"

namespace servo::tools {

using namespace form;

namespace {

constexpr int kFieldWidth = 180;
constexpr int kWidest = 960;  // beyond it the two columns would only drift apart

}  // namespace

EasyWindow::EasyWindow(const base::Language& language, QWidget* parent)
    : QWidget(parent), language_(language) {
    setObjectName(QStringLiteral("EASY1"));
    setProperty("Tag", qt(easy::kCaption));
    lay_out();
    connect(Combo1_, &QComboBox::currentIndexChanged, Frame1_, &EasyControlWidget::show_method);
    tips_.add(Command1_, easy::button_tip());
    apply_language();
}

QWidget* EasyWindow::make_motor(QWidget* parent) {
    auto* motor = new QWidget(parent);
    auto* grid = new QGridLayout(motor);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap / 2);
    grid->addWidget(make_label(motor, QStringLiteral("Label1"), "电机型号/Motor type"), 0, 0);
    Text1_ = new QLineEdit(motor);
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setFixedWidth(kFieldWidth);
    grid->addWidget(Text1_, 0, 1);
    grid->addWidget(
        make_label(motor, QStringLiteral("Label18"), "电机位置分辨率/Motor position resolution"), 1,
        0);
    grid->addWidget(make_value(motor, QStringLiteral("Label19"), "65536"), 1, 1);
    grid->addWidget(
        make_label(motor, QStringLiteral("Label11"), "请选择控制方式/Select Control Method"), 2, 0);
    Combo1_ = new ListBox(motor, QStringLiteral("Combo1"));
    for (const easy::Method& method : easy::methods())
        Combo1_->addItem(qt(method.item));
    Combo1_->setFixedWidth(kFieldWidth);
    grid->addWidget(Combo1_, 2, 1);
    grid->setColumnStretch(2, 1);
    return motor;
}

QWidget* EasyWindow::make_pins(QWidget* parent) {
    auto* pins = new QWidget(parent);
    auto* column = new QVBoxLayout(pins);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    QLabel* heading =
        make_text(pins, QStringLiteral("Label12"),
                  "此控制方式下IO功能默认定义如下/The default IO function according to the control "
                  "method as follow:");
    MSHFlexGrid1_ = new EasyGrid(pins);
    Command1_ =
        make_command(pins, QStringLiteral("Command1"), "激活以上设置/Active all the settings");
    column->addWidget(heading);
    column->addWidget(MSHFlexGrid1_);
    column->addStretch();
    column->addWidget(Command1_);
    return pins;
}

void EasyWindow::lay_out() {
    QLabel* note = make_text(this, QStringLiteral("LabelQ"), easy::note());
    set_weight(note, Weight::kQuiet);
    auto* content = new QWidget;
    auto* form = new QWidget(content);
    form->setMaximumWidth(kWidest);
    QWidget* motor = make_motor(form);
    Frame1_ = new EasyControlWidget(form);
    Frame5_ = new EasyApplicationWidget(form);
    QWidget* pins = make_pins(form);
    auto* left = new QVBoxLayout;
    left->setSpacing(kGap);
    left->addWidget(motor);
    left->addWidget(Frame1_, 1);
    left->addWidget(Frame5_);
    auto* columns = new QHBoxLayout(form);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(2 * kGap);
    columns->addLayout(left, 1);
    columns->addWidget(pins);
    auto* row = new QHBoxLayout;
    row->addWidget(form, 1);
    row->addStretch(0);
    auto* page = new QVBoxLayout(content);
    page->setContentsMargins(0, 0, 0, 0);
    page->setSpacing(0);
    page->addLayout(row);
    page->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * kGap, kGap, 2 * kGap, kGap);
    layout->setSpacing(kGap);
    layout->addWidget(note);
    layout->addWidget(new ScrolledForm(content, this), 1);
}

// High enough for the wrapped lines, so that nothing scrolls where there is room.
QSize EasyWindow::sizeHint() const {
    const int width = layout()->sizeHint().width();
    return {width, layout()->totalHeightForWidth(width)};
}

void EasyWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void EasyWindow::apply_language() {
    setWindowTitle(half_of(easy::kCaption, language_));
    tips_.apply(language_);
    Frame5_->apply_language(language_);
}

}  // namespace servo::tools
