#include "app/form1_window.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/palette.h"
#include "app/port_delegate.h"
#include "app/style.h"

namespace servo::app {

namespace {

constexpr int kFieldWidth = 150;  // of a box at 100 percent
constexpr base::Text kNoPorts{"没有找到串口", "No serial port found"};
constexpr base::Text kNoSelection{"请选择串口", "Select a serial port"};

template <typename Control>
Control* named(const char* name, Control* control) {
    control->setObjectName(QLatin1String(name));
    return control;
}

// A caption in front of a control; its letter gives the access by keyboard.
QLabel* caption_of(const char* name, QWidget* control) {
    auto* label = named(name, new QLabel);
    label->setBuddy(control);
    return label;
}

void set_text(QLabel* label, std::string_view text) {
    label->setText(to_qt(text));
}

void set_line(QLineEdit* line, std::string_view text) {
    // Setting the same text again would move the caret of somebody who is typing.
    if (from_qt(line->text()) != text) line->setText(to_qt(text));
}

void make_quiet(QLabel* label) {
    QPalette colours = label->palette();
    colours.setColor(QPalette::WindowText, QColor(palette::kQuietText));
    label->setPalette(colours);
    label->setTextFormat(Qt::PlainText);
}

}  // namespace

Form1Window::Form1Window(link::Communication& communication, const base::Language& language)
    : communication_(communication), language_(language) {
    setObjectName(QStringLiteral("Form1"));
    SSTab1_ = named("SSTab1", new QTabWidget);
    SSTab1_->addTab(make_serial_tab(), QString());
    SSTab1_->addTab(make_can_tab(), QString());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1_);
    connect_serial_tab();
    connect_can_tab();
    set_tab_order();
    refresh();
}

void Form1Window::set_tab_order() {
    setTabOrder(Combo1_, Command2_);
    setTabOrder(Command2_, Combo2_);
    setTabOrder(Combo2_, Text1_);
    setTabOrder(Text1_, Command1_);
    setFocusProxy(Combo1_);
}

QWidget* Form1Window::make_serial_tab() {
    auto* tab = new QWidget;
    Combo1_ = named("Combo1", new QComboBox);
    Combo1_->setItemDelegate(new PortDelegate(Combo1_));
    Combo1_->setMinimumWidth(kFieldWidth);
    Combo2_ = named("Combo2", new QComboBox);
    for (const std::string_view rate : link::kBaudRates)
        Combo2_->addItem(to_qt(rate));
    Text1_ = named("Text1", new QLineEdit);
    Text1_->setMaxLength(3);
    Command1_ = named("Command1", new QPushButton);
    Command1_->setDefault(true);
    Command2_ = named("Command2", new QPushButton);
    port_label_ = caption_of("LabelA", Combo1_);
    baud_label_ = caption_of("LabelB", Combo2_);
    id_label_ = caption_of("LabelC", Text1_);
    device_ = named("LabelDevice", new QLabel);
    make_quiet(device_);
    // Paths hold slashes, which would pass for a pair of texts in two languages.
    device_->setProperty("Tag", QStringLiteral("-"));

    auto* grid = new QGridLayout(tab);
    grid->addWidget(port_label_, 0, 0);
    grid->addWidget(Combo1_, 0, 1);
    grid->addWidget(Command2_, 0, 2);
    grid->addWidget(device_, 1, 1, 1, 2);
    grid->addWidget(baud_label_, 2, 0);
    grid->addWidget(Combo2_, 2, 1);
    grid->addWidget(id_label_, 3, 0);
    grid->addWidget(Text1_, 3, 1);
    grid->setRowStretch(4, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command1_);
    grid->addLayout(buttons, 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    return tab;
}

QWidget* Form1Window::make_can_tab() {
    auto* tab = new QWidget;
    Combo3_ = named("Combo3", new QComboBox);
    for (const std::string_view rate : link::kCanRates)
        Combo3_->addItem(to_qt(rate));
    Text2_ = named("Text2", new QLineEdit);
    Text2_->setMaxLength(3);
    Command3_ = named("Command3", new QPushButton);
    Label7_ = named("Label7", new QLabel);
    auto* Label8 = named("Label8", new QLabel(to_qt(communication_.state().Label8)));
    make_quiet(Label8);
    can_baud_label_ = caption_of("LabelD", Combo3_);
    can_target_label_ = caption_of("LabelE", Text2_);
    auto* base = named("LabelF", new QLabel(QStringLiteral("+600")));

    auto* grid = new QGridLayout(tab);
    grid->addWidget(can_baud_label_, 0, 0);
    grid->addWidget(Combo3_, 0, 1);
    grid->addWidget(can_target_label_, 1, 0);
    grid->addWidget(Text2_, 1, 1);
    grid->addWidget(base, 1, 2);
    grid->addWidget(Label7_, 2, 0, 1, 3);
    grid->addWidget(Label8, 3, 0, 1, 3);
    grid->setRowStretch(4, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command3_);
    grid->addLayout(buttons, 5, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    return tab;
}

void Form1Window::connect_serial_tab() {
    connect(Combo1_, &QComboBox::currentIndexChanged, this,
            [this](int index) { communication_.pick_port(index); });
    connect(Combo2_, &QComboBox::currentIndexChanged, this,
            [this](int index) { communication_.pick_baud(index); });
    connect(Text1_, &QLineEdit::textChanged, this,
            [this](const QString& text) { communication_.type_id(from_qt(text)); });
    connect(Command1_, &QPushButton::clicked, this, [this] { communication_.Command1_Click(); });
    connect(Command2_, &QPushButton::clicked, this, [this] { communication_.Command2_Click(); });
}

void Form1Window::connect_can_tab() {
    connect(Combo3_, &QComboBox::currentIndexChanged, this,
            [this](int index) { communication_.pick_can_baud(index); });
    connect(Text2_, &QLineEdit::textChanged, this,
            [this](const QString& text) { communication_.type_can_target(from_qt(text)); });
    connect(Command3_, &QPushButton::clicked, this, [this] { communication_.Command3_Click(); });
}

void Form1Window::show_ports(const link::CommunicationState& state) {
    bool same = Combo1_->count() == static_cast<int>(state.Combo1.size());
    for (int i = 0; same && i < Combo1_->count(); ++i) {
        const auto& entry = state.Combo1[static_cast<std::size_t>(i)];
        same = from_qt(Combo1_->itemText(i)) == entry.text &&
               from_qt(Combo1_->itemData(i, PortDelegate::kDeviceRole).toString()) == entry.device;
    }
    if (!same) {
        Combo1_->clear();
        for (const auto& entry : state.Combo1) {
            Combo1_->addItem(to_qt(entry.text));
            const int row = Combo1_->count() - 1;
            Combo1_->setItemData(row, to_qt(entry.device), PortDelegate::kDeviceRole);
            Combo1_->setItemData(row, to_qt(entry.description), PortDelegate::kDescriptionRole);
        }
    }
    Combo1_->setCurrentIndex(state.Combo1_index);
}

void Form1Window::show_device(const link::CommunicationState& state) {
    const auto index = static_cast<std::size_t>(state.Combo1_index);
    if (state.Combo1_index < 0 || index >= state.Combo1.size()) {
        const base::Text& hint = state.Combo1.empty() ? kNoPorts : kNoSelection;
        set_text(device_, hint.in(language_));
        return;
    }
    const auto& entry = state.Combo1[index];
    device_->setText(
        to_qt(entry.description.empty() ? entry.device : entry.device + "  " + entry.description));
}

void Form1Window::refresh() {
    const link::CommunicationState& state = communication_.state();
    const QSignalBlocker ports(Combo1_);
    const QSignalBlocker rates(Combo2_);
    const QSignalBlocker id(Text1_);
    const QSignalBlocker can_rates(Combo3_);
    const QSignalBlocker target(Text2_);
    setWindowTitle(to_qt(state.caption));
    SSTab1_->setTabText(0, to_qt(state.tab0));
    SSTab1_->setTabText(1, to_qt(state.tab1));
    SSTab1_->setTabVisible(1, state.can_tab_visible);
    set_text(port_label_, state.port_label);
    set_text(baud_label_, state.baud_label);
    set_text(id_label_, state.id_label);
    set_text(can_baud_label_, state.can_baud_label);
    set_text(can_target_label_, state.can_target_label);
    set_text(Label7_, state.Label7);
    show_ports(state);
    show_device(state);
    Combo1_->setEnabled(state.Combo1_enabled);
    Combo2_->setCurrentIndex(state.Combo2_index);
    Combo2_->setEnabled(state.Combo2_enabled);
    set_line(Text1_, state.Text1);
    Text1_->setEnabled(state.Text1_enabled);
    Command1_->setText(to_qt(state.Command1));
    Command2_->setText(to_qt(state.Command2));
    Command2_->setEnabled(state.Command2_enabled);
    Combo3_->setCurrentIndex(state.Combo3_index);
    set_line(Text2_, state.Text2);
    Command3_->setText(to_qt(state.Command3));
}

}  // namespace servo::app
