// How the list of the dictionary browser looks.
#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace servo::params {

class BrowserListDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

class BrowserListHeader final : public QHeaderView {
    Q_OBJECT

  public:
    explicit BrowserListHeader(QWidget* parent);

    QSize sizeHint() const override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
};

}  // namespace servo::params
