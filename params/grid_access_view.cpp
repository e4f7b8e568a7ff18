#include "params/grid_access_view.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPointer>

namespace servo::params {

namespace {

int header_rows(const QTableView& grid) {
    return grid.horizontalHeader()->isHidden() ? 0 : 1;
}

QModelIndex cell_of(const QTableView& grid, int row, int column) {
    if (grid.model() == nullptr) return {};
    return grid.model()->index(row - header_rows(grid), column);
}

void send(QWidget& to, QEvent::Type type, QPoint at, Qt::MouseButton button) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    QMouseEvent event(type, at, to.mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&to, &event);
}

// A press moves the focus before the widget sees it, as the real mouse does.
void click_at(QWidget& target, QWidget& focus, QPoint at, GridClick click) {
    const QPointer<QWidget> guard(&target);
    const auto button = click == GridClick::kRight ? Qt::RightButton : Qt::LeftButton;
    focus.setFocus(Qt::MouseFocusReason);
    send(target, QEvent::MouseButtonPress, at, button);
    if (guard) send(target, QEvent::MouseButtonRelease, at, button);
    if (click != GridClick::kDouble || !guard) return;
    send(target, QEvent::MouseButtonDblClick, at, button);
    if (guard) send(target, QEvent::MouseButtonRelease, at, button);
}

}  // namespace

int grid_rows(const QTableView& grid) {
    return grid.model() == nullptr ? 0 : grid.model()->rowCount() + header_rows(grid);
}

int grid_columns(const QTableView& grid) {
    return grid.model() == nullptr ? 0 : grid.model()->columnCount();
}

QString grid_text(const QTableView& grid, int row, int column) {
    if (grid.model() == nullptr || column < 0 || column >= grid_columns(grid)) return {};
    if (row == 0 && header_rows(grid) == 1) {
        return grid.model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    return cell_of(grid, row, column).data(Qt::DisplayRole).toString();
}

std::optional<QColor> grid_color(const QTableView& grid, int row, int column) {
    const QVariant colour = cell_of(grid, row, column).data(Qt::BackgroundRole);
    if (!colour.isValid()) return {};
    return colour.value<QColor>();
}

int grid_current_row(const QTableView& grid) {
    const QModelIndex current = grid.currentIndex();
    return current.isValid() ? current.row() + header_rows(grid) : 0;
}

bool grid_click(QTableView& grid, int row, int column, GridClick click) {
    if (column < 0 || column >= grid_columns(grid) || grid.isColumnHidden(column)) return false;
    if (row == 0 && header_rows(grid) == 1) {
        QHeaderView& header = *grid.horizontalHeader();
        const QPoint at(header.sectionViewportPosition(column) + header.sectionSize(column) / 2,
                        header.height() / 2);
        click_at(*header.viewport(), grid, at, click);
        return true;
    }
    const QModelIndex cell = cell_of(grid, row, column);
    if (!cell.isValid()) return false;
    grid.scrollTo(cell);
    click_at(*grid.viewport(), grid, grid.visualRect(cell).center(), click);
    return true;
}

}  // namespace servo::params
