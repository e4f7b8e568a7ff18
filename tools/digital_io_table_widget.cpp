#include "tools/digital_io_table_widget.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <algorithm>
#include <string>

#include "params/ui_palette.h"
#include "tools/digital_io_notes.h"

namespace servo::tools {

namespace {

namespace palette = params::palette;

constexpr int kNumberColumn = 0;
constexpr int kTextColumn = 1;
constexpr int kChooseColumn = 2;
constexpr int kClearColumn = 3;
constexpr int kFirstLampColumn = 4;
constexpr int kHeaderLines = 2;
constexpr int kNumberWidth = 36;
constexpr int kLampColumnWidth = 54;
constexpr int kTextWidth = 96;  // at the least
constexpr int kSmallButton = 28;
constexpr int kTextMargins = 12;  // both sides of a small button's text
constexpr int kIconSize = 16;

// "为输入 3 选择功能/Choose the functions of Input 3"
std::string pin_pair(int row, std::string_view chinese_head, std::string_view chinese_tail,
                     std::string_view english) {
    std::string pair(chinese_head);
    pair += pin_name(row, base::Language::kChinese);
    pair += chinese_tail;
    pair += '/';
    pair += english;
    return pair + pin_name(row, base::Language::kEnglish);
}

QPushButton* small_button(QWidget* parent, const QString& name) {
    auto* button = form::named(new QPushButton(parent), name);
    button->setAutoDefault(true);  // Enter presses it
    button->setFixedSize(kSmallButton, io_row_height(*button) - 1);
    button->setIconSize({kIconSize, kIconSize});
    form::set_pair(button, "-");
    return button;
}

LampBox::Look look_of(IoColumn column) {
    switch (column) {
        case IoColumn::kPolarity:
            return LampBox::Look::kTick;
        case IoColumn::kSimulate:
            return LampBox::Look::kForce;
        case IoColumn::kInternal:
        case IoColumn::kReal:
            return LampBox::Look::kLamp;
    }
    return LampBox::Look::kLamp;
}

}  // namespace

DigitalIOTableWidget::DigitalIOTableWidget(DigitalIO& form, IoSide side, QWidget* parent)
    : QGroupBox(parent), form_(form), side_(side) {
    setObjectName(side == IoSide::kInput ? QStringLiteral("Frame1") : QStringLiteral("Frame2"));
    form::set_pair(this, frame_caption(side));
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(kIoGap, 2, kIoGap, kIoGap / 2);
    grid_->setHorizontalSpacing(kIoGap / 2);
    grid_->setVerticalSpacing(0);
    make_header();
    for (int pin = 0; pin < pins_of(side); ++pin)
        make_row(pin);
    grid_->setColumnMinimumWidth(kTextColumn, kTextWidth);
    grid_->setColumnStretch(kTextColumn, 1);
    grid_->setRowStretch(kHeaderLines + pins_of(side), 1);
    grid_->setColumnMinimumWidth(kNumberColumn, kNumberWidth);
}

// The captions, and below them what sets a whole column.
void DigitalIOTableWidget::make_header() {
    const bool input = side_ == IoSide::kInput;
    const char* caption = input ? "Label1" : "Label2";
    grid_->addWidget(form::make_label(this, form::array_name(caption, 0), kNumberCaption), 0,
                     kNumberColumn, Qt::AlignCenter);
    grid_->addWidget(form::make_label(this, form::array_name(caption, 1), kFunctionCaption), 0,
                     kTextColumn);
    int column = kFirstLampColumn;
    for (const IoColumn which : kShownColumns) {
        QLabel* label =
            form::make_label(this, form::array_name(caption, column - kFirstLampColumn + 2),
                             column_caption(side_, which));
        label->setAlignment(Qt::AlignCenter);
        grid_->addWidget(label, 0, column);
        grid_->setColumnMinimumWidth(column++, kLampColumnWidth);
    }
    clear_all_ = form::named(new QPushButton(this),
                             input ? QStringLiteral("Command7") : QStringLiteral("Command8"));
    clear_all_->setAutoDefault(true);
    clear_all_->setFixedHeight(io_row_height(*clear_all_) - 1);
    form::set_pair(clear_all_, "全部清除/Clear All");
    form::set_tip_pair(clear_all_, input ? "清除所有输入的功能/Clear the functions of all inputs"
                                         : "清除所有输出的功能/Clear the functions of all outputs");
    grid_->addWidget(clear_all_, 1, kTextColumn, 1, 3, Qt::AlignRight);
    const int index = static_cast<int>(side_);
    Image3_ = small_button(this, form::array_name("Image3", index));
    form::set_tip_pair(Image3_, "整列仿真取反/Flip the whole column Simulate");
    Image1_ = small_button(this, form::array_name("Image1", index));
    form::set_tip_pair(Image1_, "整列电平取反/Flip the whole column Polarity");
    for (QPushButton* image : {Image3_, Image1_})
        image->setIcon(io_icon("flip"));
    grid_->addWidget(Image3_, 1, kFirstLampColumn, Qt::AlignCenter);
    grid_->addWidget(Image1_, 1, kFirstLampColumn + 2, Qt::AlignCenter);
    connect(clear_all_, &QPushButton::clicked, this, [this, input] {
        if (input)
            form_.Command7_Click();
        else
            form_.Command8_Click();
    });
    connect(Image1_, &QPushButton::clicked, this, [this] { form_.Image1_Click(side_); });
    connect(Image3_, &QPushButton::clicked, this, [this] { form_.Image3_Click(side_); });
    watch({nullptr, nullptr, clear_all_, Image3_, Image1_});
}

void DigitalIOTableWidget::make_row(int pin) {
    const int row = first_row(side_) + pin;
    const int line = kHeaderLines + pin;
    Row made;
    made.number = form::make_value(this, form::array_name("LabelN", row));
    made.number->setText(QString::number(pin + 1));
    made.number->setAlignment(Qt::AlignCenter);
    made.Text1 = form::named(new QLineEdit(this), form::array_name("Text1", row));
    made.Text1->setReadOnly(true);
    // The arrows reach it; with the tabulator it would be one stop more in every row.
    made.Text1->setFocusPolicy(Qt::ClickFocus);
    made.Text1->setFixedHeight(io_row_height(*made.Text1) - 1);
    made.Text1->setProperty("Tag", form::qt(tag_of(row)));
    made.Command1 = small_button(this, form::array_name("Command1", row));
    made.Command1->setText(QStringLiteral(">>"));
    const int text = made.Command1->fontMetrics().horizontalAdvance(made.Command1->text());
    made.Command1->setFixedWidth(std::max(kSmallButton, text + kTextMargins));
    form::set_tip_pair(made.Command1, pin_pair(row, "选择", "的功能", "Choose the functions of "));
    made.Command6 = small_button(this, form::array_name("Command6", row));
    made.Command6->setIcon(io_icon("clear"));
    made.Command6->setFocusPolicy(Qt::ClickFocus);
    form::set_tip_pair(made.Command6, pin_pair(row, "清除", "的功能", "Clear the functions of "));
    grid_->addWidget(made.number, line, kNumberColumn);
    grid_->addWidget(made.Text1, line, kTextColumn);
    grid_->addWidget(made.Command1, line, kChooseColumn);
    grid_->addWidget(made.Command6, line, kClearColumn);
    make_boxes(made, pin);
    connect_row(made, row);
    rows_.push_back(made);
    watch({made.Text1, made.Command1, made.Command6, made.Check[2], made.Check[0]});
}

void DigitalIOTableWidget::make_boxes(Row& row, int pin) {
    const int index = first_row(side_) + pin;
    int column = kFirstLampColumn;
    for (const IoColumn which : kShownColumns) {
        const auto number = static_cast<std::size_t>(which);
        auto* box =
            form::named(new LampBox(look_of(which), this),
                        form::array_name(("Check" + std::to_string(number)).c_str(), index));
        const std::string caption(column_caption(side_, which));
        const auto slash = caption.find('/');
        form::set_tip_pair(box, pin_pair(index, "", "：" + caption.substr(0, slash),
                                         caption.substr(slash + 1) + ", "));
        grid_->addWidget(box, kHeaderLines + pin, column++, Qt::AlignCenter);
        row.Check[number - 1] = box;
    }
}

void DigitalIOTableWidget::connect_row(const Row& row, int index) {
    connect(row.Command1, &QPushButton::clicked, this,
            [this, index] { form_.Command1_Click(index); });
    connect(row.Command6, &QPushButton::clicked, this,
            [this, index] { form_.Command6_Click(index); });
    connect(row.Check[0], &QCheckBox::clicked, this, [this, index] { form_.Check1_Click(index); });
    connect(row.Check[2], &QCheckBox::clicked, this, [this, index] { form_.Check3_Click(index); });
}

void DigitalIOTableWidget::watch(const Line& line) {
    for (QWidget* control : line)
        if (control != nullptr) control->installEventFilter(this);
    lines_.push_back(line);
}

// --- What is shown

void DigitalIOTableWidget::refresh() {
    const base::Language language = form_.language();
    for (int pin = 0; pin < pins_of(side_); ++pin)
        refresh_row(pin, language);
    const DigitalIOData& held = form_.data();
    Image1_->setEnabled(held.column(side_, IoColumn::kPolarity).fresh);
    Image3_->setEnabled(held.column(side_, IoColumn::kSimulate).fresh);
}

void DigitalIOTableWidget::refresh_row(int pin, base::Language language) {
    const DigitalIOData& held = form_.data();
    const int index = first_row(side_) + pin;
    const Row& row = rows_[static_cast<std::size_t>(pin)];
    const IoRowState& known = held.rows[static_cast<std::size_t>(index)];
    if (const QString names = form::qt(form_.Text1(index)); row.Text1->text() != names) {
        row.Text1->setText(names);
        row.Text1->setCursorPosition(0);
    }
    if (const QString tip = form::plain_tip(row_tip(held, index, language));
        row.Text1->toolTip() != tip)
        row.Text1->setToolTip(tip);
    row.Text1->setAccessibleName(form::qt(pin_name(index, language)));
    row.Text1->setPlaceholderText(known.seen ? QString() : QStringLiteral("…"));
    io_quiet(row.Text1, known.waiting || !known.fresh);
    for (const IoColumn which : kIoColumns) {
        const IoColumnState& column = held.column(side_, which);
        row.Check[static_cast<std::size_t>(which) - 1]->show_state(
            column.boxes[static_cast<std::size_t>(pin)], column.seen, column.fresh);
    }
    const bool open = held.open_row == index;
    QPalette colours = QApplication::palette();
    if (open) {
        colours.setColor(QPalette::Button, QColor(palette::kAccent));
        colours.setColor(QPalette::ButtonText, QColor(palette::kCell));
    }
    if (row.Command1->palette().color(QPalette::Button) != colours.color(QPalette::Button))
        row.Command1->setPalette(colours);
    QFont font = row.number->font();
    if (font.bold() != open) {
        font.setBold(open);
        row.number->setFont(font);
    }
}

void DigitalIOTableWidget::apply_language(base::Language language) {
    form::apply_pairs(*this, language);
    setTitle(form::half_of(property("Tag").toString(), language));
}

// --- The keyboard

void DigitalIOTableWidget::focus_row(int row) {
    const auto pin = static_cast<std::size_t>(row - first_row(side_));
    if (pin < rows_.size()) rows_[pin].Command1->setFocus(Qt::OtherFocusReason);
}

void DigitalIOTableWidget::enter(bool from_above, int place) {
    const auto where = static_cast<std::size_t>(place);
    if (from_above)
        focus(1, where);
    else
        focus(lines_.size() - 1, where);
}

bool DigitalIOTableWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QGroupBox::eventFilter(watched, event);
    const auto* press = static_cast<QKeyEvent*>(event);
    const bool plain = (press->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return plain && key(qobject_cast<QWidget*>(watched), press->key());
}

bool DigitalIOTableWidget::key(QWidget* control, int key) {
    std::size_t line = 0;
    std::size_t place = kPlaces;
    for (; line < lines_.size(); ++line) {
        const auto found = std::ranges::find(lines_[line], control);
        place = static_cast<std::size_t>(found - lines_[line].begin());
        if (place < kPlaces) break;
    }
    if (place == kPlaces) return false;
    const int row = first_row(side_) + static_cast<int>(line) - 1;
    switch (key) {
        case Qt::Key_Up:
            return step(line, place, -1, 0);
        case Qt::Key_Down:
            return step(line, place, 1, 0);
        case Qt::Key_Left:
            return step(line, place, 0, -1);
        case Qt::Key_Right:
            return step(line, place, 0, 1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (auto* button = qobject_cast<QAbstractButton*>(control))
                button->click();
            else
                form_.Command1_Click(row);
            return true;
        case Qt::Key_Delete:
            if (line == 0 || place > kClear) return false;
            form_.Command6_Click(row);
            return true;
        default:
            return false;
    }
}

// To the next control in that direction that can take the focus.
bool DigitalIOTableWidget::step(std::size_t line, std::size_t place, int rows, int places) {
    const auto first = place;
    for (;;) {
        line += static_cast<std::size_t>(rows);
        place += static_cast<std::size_t>(places);
        if (place >= kPlaces) return true;
        if (line >= lines_.size()) {
            if (left) left(rows > 0, static_cast<int>(first));
            return true;
        }
        if (focus(line, place)) return true;
    }
}

bool DigitalIOTableWidget::focus(std::size_t line, std::size_t place) {
    QWidget* control = lines_[line][place];
    if (control == nullptr || !control->isEnabled()) return false;
    control->setFocus(Qt::TabFocusReason);
    return true;
}

}  // namespace servo::tools
