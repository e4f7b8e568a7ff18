#include "app/port_delegate.h"

namespace servo::app {

void PortDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    for (const int role : {kDeviceRole, kDescriptionRole}) {
        const QString part = index.data(role).toString();
        if (!part.isEmpty()) option->text += QStringLiteral("   ") + part;
    }
}

}  // namespace servo::app
