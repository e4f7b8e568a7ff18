#include "tools/digital_io_chooser_widget.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "params/ui_palette.h"
#include "tools/digital_io_layout.h"
#include "tools/digital_io_notes.h"

namespace servo::tools {

namespace {

constexpr int kChipWidth = 16;
constexpr int kColumnGap = 12;
constexpr int kPlacesOfBox = 3;  // in the grid: chip, box, gap

QString doubled_marks(std::string_view name) {
    return form::qt(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

DigitalIOChooserWidget::DigitalIOChooserWidget(DigitalIO& form, IoSide side, QWidget* parent)
    : QFrame(parent), form_(form), side_(side) {
    const bool input = side == IoSide::kInput;
    setObjectName(input ? QStringLiteral("Picture1") : QStringLiteral("Picture2"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    make_commands();
    room_ = new QScrollArea(this);
    room_->setFrameShape(QFrame::NoFrame);
    room_->setWidgetResizable(true);
    room_->setFocusPolicy(Qt::NoFocus);
    room_->verticalScrollBar()->setObjectName(input ? QStringLiteral("VScroll1")
                                                    : QStringLiteral("VScroll2"));
    room_->setWidget(make_boxes());
    // The blinking background shines through.
    for (QWidget* part : {room_->viewport(), room_->widget()})
        part->setAutoFillBackground(false);
    lay_out();
}

void DigitalIOChooserWidget::make_commands() {
    const bool input = side_ == IoSide::kInput;
    title_ = form::make_value(this, input ? QStringLiteral("LabelA") : QStringLiteral("LabelB"));
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    close_ = form::named(new QPushButton(QStringLiteral("X"), this),
                         input ? QStringLiteral("Command3") : QStringLiteral("Command4"));
    close_->setFixedWidth(kIoRowHeight + kIoGap);
    form::set_tip_pair(close_, "关闭，不写入/Close without writing");
    ok_ = form::named(new QPushButton(this),
                      input ? QStringLiteral("Command2") : QStringLiteral("Command5"));
    form::set_pair(ok_, "确定/OK");
    form::set_tip_pair(ok_, "写入驱动器/Write to the drive");
    for (QPushButton* button : {close_, ok_})
        button->setAutoDefault(true);
    value_ = form::make_value(this, input ? QStringLiteral("LabelC") : QStringLiteral("LabelD"));
    connect(close_, &QPushButton::clicked, this, &DigitalIOChooserWidget::close);
    connect(ok_, &QPushButton::clicked, this, &DigitalIOChooserWidget::accept);
}

QWidget* DigitalIOChooserWidget::make_boxes() {
    auto* list = new QWidget(room_);
    auto* grid = new QGridLayout(list);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kIoGap / 2);
    grid->setVerticalSpacing(0);
    const bool input = side_ == IoSide::kInput;
    const int pitch = pixels(box_pitch(side_), logicalDpiY());
    int end = 0;
    for (int index = 0; index < functions().count(); ++index) {
        const IoBoxPlace place = box_place(side_, index);
        auto* group = new QLabel(QString::number(functions().group_of(index) + 1), list);
        group->setFixedWidth(kChipWidth);
        group->setAlignment(Qt::AlignCenter);
        io_quiet(group, true);
        auto* box = form::named(new QCheckBox(list),
                                form::array_name(input ? "checkboxdin" : "checkboxdout", index));
        form::set_pair(box, "-");
        box->installEventFilter(this);
        connect(box, &QCheckBox::clicked, this, [this, input, index] {
            if (input)
                form_.checkboxdin_Click(index);
            else
                form_.checkboxdout_Click(index);
        });
        const int column = place.column * kPlacesOfBox;
        grid->addWidget(group, place.row, column);
        grid->addWidget(box, place.row, column + 1);
        grid->setRowMinimumHeight(place.row, pitch);
        grid->setColumnMinimumWidth(column + 2, kColumnGap);
        end = std::max(end, place.row + 1);
        boxes_.push_back(box);
        groups_.push_back(group);
    }
    grid->setRowStretch(end, 1);
    grid->setColumnStretch(grid->columnCount(), 1);
    return list;
}

void DigitalIOChooserWidget::lay_out() {
    auto* head = new QHBoxLayout;
    head->addWidget(title_);
    QLabel* hint = form::make_label(
        this, side_ == IoSide::kInput ? QStringLiteral("LabelE") : QStringLiteral("LabelF"),
        "只能选择同一组（号码相同）的功能/one group only (the same number)");
    io_quiet(hint, true);
    head->addWidget(hint, 1);
    head->addWidget(close_);
    head->setSpacing(2 * kIoGap);
    auto* foot = new QHBoxLayout;
    foot->addWidget(value_, 1);
    foot->addWidget(ok_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * kIoGap, kIoGap, kIoGap, kIoGap);
    layout->setSpacing(kIoGap);
    layout->addLayout(head);
    layout->addWidget(room_, 1);
    layout->addLayout(foot);
    // As wide as the boxes; the height may be less, since the bar is there for it.
    const int frame = 3 * kIoGap + 2 * frameWidth();
    const int bar = room_->verticalScrollBar()->sizeHint().width();
    setMinimumWidth(std::min(room_->widget()->sizeHint().width() + frame + bar, 480));
}

void DigitalIOChooserWidget::apply_language(base::Language language) {
    form::apply_pairs(*this, language);
    for (int index = 0; index < functions().count(); ++index) {
        QCheckBox* box = boxes_[static_cast<std::size_t>(index)];
        box->setText(doubled_marks(name_of(functions().at(index), language)));
        box->setToolTip(form::plain_tip(function_tip(functions(), index, language)));
    }
}

void DigitalIOChooserWidget::refresh() {
    const DigitalIOData& held = form_.data();
    const base::Language language = form_.language();
    QPalette colours = palette();
    const QColor back(held.picture.red, held.picture.green, held.picture.blue);
    if (colours.color(QPalette::Window) != back) {
        colours.setColor(QPalette::Window, back);
        setPalette(colours);
    }
    if (!held.open_row || side_of(*held.open_row) != side_) return;
    const std::string pin = pin_name(*held.open_row, language);
    title_->setText(form::qt(pin));
    const Encoded chosen = form_.chosen();
    value_->setText(form::qt(chosen_text(chosen, language)));
    const std::vector<bool>& ticks = held.ticks(side_);
    int group = -1;  // of the ticks, while they have one
    for (std::size_t i = 0; i < ticks.size() && chosen.groups == 1; ++i)
        if (ticks[i]) group = functions().group_of(static_cast<int>(i));
    for (std::size_t i = 0; i < boxes_.size() && i < ticks.size(); ++i) {
        const QSignalBlocker not_the_user(boxes_[i]);
        boxes_[i]->setChecked(ticks[i]);
        // What can't go together with the ticks steps back; it can be chosen all the same.
        const bool other = group >= 0 && functions().group_of(static_cast<int>(i)) != group;
        io_quiet(boxes_[i], other);
    }
}

void DigitalIOChooserWidget::focus_first() {
    if (boxes_.empty()) {
        ok_->setFocus(Qt::OtherFocusReason);
        return;
    }
    const auto ticked =
        std::ranges::find_if(boxes_, [](const QCheckBox* box) { return box->isChecked(); });
    QCheckBox* box = ticked == boxes_.end() ? boxes_.front() : *ticked;
    box->setFocus(Qt::TabFocusReason);
    room_->ensureWidgetVisible(box);
}

void DigitalIOChooserWidget::close() {
    if (side_ == IoSide::kInput)
        form_.Command3_Click();
    else
        form_.Command4_Click();
}

void DigitalIOChooserWidget::accept() {
    if (side_ == IoSide::kInput)
        form_.Command2_Click();
    else
        form_.Command5_Click();
}

// The arrows go from box to box as they stand; Enter is OK wherever the focus is.
bool DigitalIOChooserWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
    const auto found = std::ranges::find(boxes_, watched);
    const int index = static_cast<int>(found - boxes_.begin());
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
            return step(index, -1);
        case Qt::Key_Down:
            return step(index, 1);
        case Qt::Key_Left:
            return step(index, -boxes_in_column(side_));
        case Qt::Key_Right:
            return step(index, boxes_in_column(side_));
        case Qt::Key_Return:
        case Qt::Key_Enter:
            accept();
            return true;
        default:
            return QFrame::eventFilter(watched, event);
    }
}

bool DigitalIOChooserWidget::step(int index, int by) {
    const int next = index + by;
    if (next < 0 || next >= static_cast<int>(boxes_.size())) return true;
    QCheckBox* box = boxes_[static_cast<std::size_t>(next)];
    box->setFocus(Qt::TabFocusReason);
    room_->ensureWidgetVisible(box);
    return true;
}

void DigitalIOChooserWidget::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

}  // namespace servo::tools
