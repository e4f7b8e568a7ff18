#include "params/page_window.h"

#include <QHeaderView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QVBoxLayout>
#include <algorithm>

namespace servo::params {

namespace {

constexpr int kMargin = 8;

}  // namespace

PageWindow::PageWindow(Page& page, QWidget* parent)
    : QWidget(parent),
      page_(page),
      grid_(page.grid(), this),
      watch_(*this, [this] { grid_.hide_editors(); }) {
    const auto name = QString::fromStdString(page.name());
    setObjectName(name);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(&grid_);
    setFocusProxy(&grid_);
    connect(&grid_, &PageGridView::popup_asked, this, &PageWindow::popup_asked);
    connect(&grid_, &PageGridView::rows_changed, this, &PageWindow::fit_height);
}

// The page's height follows the grid's, as far as the frame can grow.
void PageWindow::fit_height() {
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (frame == nullptr || !isVisible() || frame->isMaximized() || frame->isMinimized()) return;
    const int wanted = frame->height() + sizeHint().height() - height();
    int fitting = wanted;
    if (const QMdiArea* area = frame->mdiArea()) {
        const int room = area->viewport()->height() - std::max(frame->y(), 0);
        // Whole rows are left out, so that none is cut through at the lower edge.
        const int row = grid_.table().verticalHeader()->defaultSectionSize();
        if (room < wanted) fitting = wanted - (wanted - room + row - 1) / row * row;
    }
    frame->resize(frame->width(), std::max(fitting, frame->minimumSizeHint().height()));
}

void PageWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    fit_height();
}

}  // namespace servo::params
