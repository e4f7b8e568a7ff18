// Draws a line of the port list: the port's text as the list holds it, and beside it, quieter, the
// device and what it says of itself.
#pragma once

#include <QStyledItemDelegate>

namespace servo::app {

class PortDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int kDeviceRole = Qt::UserRole;
    static constexpr int kDescriptionRole = Qt::UserRole + 1;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace servo::app
