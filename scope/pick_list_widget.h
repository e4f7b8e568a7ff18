// A drop-down that shows a PickList. Only a pick by the operator is told; a long name is elided in
// the box, whole in the open list and in the tool tip.
#pragma once

#include <QComboBox>
#include <functional>

#include "scope/channel.h"

namespace servo::scope {

class PickListWidget final : public QComboBox {
    Q_OBJECT

  public:
    // `characters` of an average width are the least that it shows.
    PickListWidget(std::string_view name, int characters, QWidget* parent);

    std::function<void(int)> picked;  // by the operator, with the position

    // A list that has not changed is left alone, so an open one stands still.
    void show_list(const PickList& list);

    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    // A pick writes to the drive: it must not happen by the way, while a page is scrolled.
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;
    void showPopup() override;
};

}  // namespace servo::scope
