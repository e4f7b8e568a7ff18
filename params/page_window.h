// A page on screen. Whoever keeps the windows puts it into a frame, gives it its caption and keeps
// its visibility; the close box hides it, and its rows stay.
//
// The grid, `MSHFlexGrid1`, is a QTableView. Its model holds all eleven columns, the hidden ones
// too, and has the objects only: what the program counts as row 0, the header, is the view's
// header. params/grid_access_view.h reads and clicks by the program's own counting.
#pragma once

#include <QWidget>

#include "params/leave_watch_view.h"
#include "params/page.h"
#include "params/page_grid_view.h"

namespace servo::params {

class PageWindow final : public QWidget {
    Q_OBJECT

  public:
    // The page outlives its window.
    explicit PageWindow(Page& page, QWidget* parent = nullptr);

    Page& page() { return page_; }
    PageGridView& grid_view() { return grid_; }

  Q_SIGNALS:
    // The right button, or the menu key: the pop-up menu is to be shown at that place of the screen
    // for the grid's popup_row(). Row 0 is the header; PageGrid::popup_entries tells what can be
    // picked.
    void popup_asked(const QPoint& place);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void fit_height();

    Page& page_;
    PageGridView grid_;
    LeaveWatch watch_;  // behind what it acts on
};

}  // namespace servo::params
