#include "params/modbus_window.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

#include "params/grid_model_view.h"
#include "params/grid_paint_view.h"

namespace servo::params {

namespace {

constexpr int kMargin = 8;
constexpr int kFirstRows = 20;  // seen at first
constexpr QSize kSmallest{340, 160};

constexpr base::Text kGridName{"ModBus 地址表", "List of ModBus addresses"};
constexpr base::Text kBoxTip{"地址、索引、名称或类型；多个词之间用空格隔开",
                             "Address, index, name or type; several words apart by blanks"};

}  // namespace

ModbusWindow::ModbusWindow(const dictionary::Store& dictionary, const base::Language& language,
                           QWidget* parent)
    : QWidget(parent),
      language_(language),
      table_(dictionary),
      model_(table_, this),
      MSHFlexGrid1_(table_, language, this) {
    setObjectName(QStringLiteral("modbus"));
    setMinimumSize(kSmallest);
    MSHFlexGrid1_.setObjectName(QStringLiteral("MSHFlexGrid1"));
    LabelA_.setObjectName(QStringLiteral("LabelA"));
    TextA_.setObjectName(QStringLiteral("TextA"));
    LabelB_.setObjectName(QStringLiteral("LabelB"));
    MSHFlexGrid1_.setModel(&model_);
    LabelA_.setProperty("Tag", QStringLiteral("查找/Find"));
    LabelA_.setBuddy(&TextA_);
    LabelB_.setProperty("Tag", QStringLiteral("-"));  // changes with the rows
    LabelB_.setTextFormat(Qt::PlainText);
    LabelB_.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    TextA_.setClearButtonEnabled(true);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    layout->addWidget(&LabelA_, 0, 0);
    layout->addWidget(&TextA_, 0, 1);
    layout->addWidget(&LabelB_, 0, 2);
    layout->addWidget(&MSHFlexGrid1_, 1, 0, 1, 3);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
    setTabOrder(&TextA_, &MSHFlexGrid1_);
    setFocusProxy(&MSHFlexGrid1_);
    connect_controls();
    MSHFlexGrid1_.select_row(0);
    show_texts();
}

void ModbusWindow::connect_controls() {
    TextA_.installEventFilter(this);
    connect(&TextA_, &QLineEdit::textChanged, this, &ModbusWindow::find);
    connect(&MSHFlexGrid1_, &ModbusGrid::typed, this, [this](const QString& text) {
        TextA_.setFocus(Qt::OtherFocusReason);
        TextA_.setText(TextA_.text() + text);
    });
    connect(&MSHFlexGrid1_, &ModbusGrid::escaped, &TextA_, &QLineEdit::clear);
    auto* shortcut = new QShortcut(QKeySequence::Find, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this] {
        TextA_.setFocus(Qt::ShortcutFocusReason);
        TextA_.selectAll();
    });
}

void ModbusWindow::reload() {
    model_.reload();
    MSHFlexGrid1_.select_row(0);
    show_texts();
}

// The row that the user was on stays the current one while the filter leaves it.
void ModbusWindow::find(const QString& text) {
    const auto row = table_.dictionary_row(MSHFlexGrid1_.current_row());
    model_.set_filter(text);
    MSHFlexGrid1_.select_row(row ? table_.shown_row(*row).value_or(0) : 0);
    show_texts();
}

void ModbusWindow::leave_box() {
    MSHFlexGrid1_.setFocus(Qt::OtherFocusReason);
}

bool ModbusWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &TextA_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            if (TextA_.text().isEmpty()) leave_box();
            TextA_.clear();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            leave_box();
            return true;
        default:
            return false;
    }
}

void ModbusWindow::show_texts() {
    LabelB_.setText(QString::fromStdString(table_.count_text(language_)));
    // The label keeps its width, or the box would breathe while one types.
    const QString widest = QString::fromStdString(
        ModbusTable::count_text(table_.all_rows(), table_.all_rows() + 1, language_));
    LabelB_.setMinimumWidth(LabelB_.fontMetrics().horizontalAdvance(widest));
    MSHFlexGrid1_.setAccessibleName(shown_text(kGridName.in(language_)));
    TextA_.setToolTip(shown_text(kBoxTip.in(language_)));
}

QSize ModbusWindow::sizeHint() const {
    const int bar = MSHFlexGrid1_.verticalScrollBar()->sizeHint().width();
    const int row = grid_row_height(MSHFlexGrid1_.fontMetrics());
    return {MSHFlexGrid1_.least_width() + bar + 2 * kMargin + 2 * MSHFlexGrid1_.frameWidth(),
            (kFirstRows + 1) * row + TextA_.sizeHint().height() + 3 * kMargin +
                2 * MSHFlexGrid1_.frameWidth()};
}

void ModbusWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange) return;
    show_texts();
    MSHFlexGrid1_.viewport()->update();
}

}  // namespace servo::params
