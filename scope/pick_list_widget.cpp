#include "scope/pick_list_widget.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>
#include <QWheelEvent>

#include "scope/scope_controls_view.h"

namespace servo::scope {

namespace {

constexpr int kTextInset = 2;  // of the style, on both sides of the text
constexpr int kListPadding = 32;

int text_room(const QComboBox& box, const QStyleOptionComboBox& option) {
    return box.style()
               ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
               .width() -
           2 * kTextInset;
}

}  // namespace

PickListWidget::PickListWidget(std::string_view name, int characters, QWidget* parent)
    : QComboBox(parent) {
    named(this, name);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(characters);
    // Room for a picture is kept even where no item has one.
    setIconSize({0, iconSize().height()});
    connect(this, &QComboBox::activated, this, [this](int position) {
        if (picked) picked(position);
    });
}

void PickListWidget::show_list(const PickList& list) {
    const QSignalBlocker not_the_user(this);
    const auto wanted = static_cast<int>(list.items.size());
    bool same = count() == wanted;
    for (int i = 0; same && i < wanted; ++i)
        same = itemText(i) == to_qt(list.items.at(static_cast<std::size_t>(i)));
    if (!same) {
        clear();
        for (const std::string& item : list.items)
            addItem(to_qt(item));
    }
    if (currentIndex() != list.ListIndex) setCurrentIndex(list.ListIndex);
}

void PickListWidget::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText =
        fontMetrics().elidedText(option.currentText, Qt::ElideRight, text_room(*this, option));
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void PickListWidget::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

bool PickListWidget::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        QStyleOptionComboBox option;
        initStyleOption(&option);
        if (fontMetrics().horizontalAdvance(currentText()) > text_room(*this, option)) {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
            return true;
        }
    }
    return QComboBox::event(event);
}

void PickListWidget::showPopup() {
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + kListPadding);
    QComboBox::showPopup();
}

}  // namespace servo::scope
