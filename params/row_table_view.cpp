#include "params/row_table_view.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "params/grid_paint_view.h"
#include "params/ui_palette.h"

namespace servo::params {

RowTable::RowTable(QWidget* parent) : QTableView(parent) {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setShowGrid(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setFocusPolicy(Qt::StrongFocus);
    fit_rows_to_font();
    watch_scroll_bar();
}

void RowTable::watch_scroll_bar() {
    // An action comes before each change that the user makes; the view's own changes have none. At
    // the end of the list an action changes nothing.
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] {
        user_scrolls_ = verticalScrollBar()->sliderPosition() != verticalScrollBar()->value();
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (std::exchange(user_scrolls_, false)) Q_EMIT scrolled_by_user(rowAt(0) + 1);
    });
}

void RowTable::fit_rows_to_font() {
    const int height = grid_row_height(fontMetrics());
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

void RowTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) fit_rows_to_font();
}

std::optional<int> RowTable::row_step(int key, int rows) const {
    const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize());
    switch (key) {
        case Qt::Key_Up:
            return -1;
        case Qt::Key_Down:
            return 1;
        case Qt::Key_PageUp:
            return -page;
        case Qt::Key_PageDown:
            return page;
        case Qt::Key_Home:
            return -rows;
        case Qt::Key_End:
            return rows;
        default:
            return {};
    }
}

void RowTable::paint_note(const QString& text) {
    QPainter painter(viewport());
    painter.setPen(QColor(palette::kMutedText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, text);
}

}  // namespace servo::params
