// A page of tabs on screen. Whoever keeps the windows puts it into a frame and keeps its
// visibility; the close box hides it, and its rows stay. Its height is the user's: eight grids of
// different lengths have no common one to follow.
#pragma once

#include <QLabel>
#include <QTabWidget>
#include <QWidget>
#include <array>

#include "params/leave_watch_view.h"
#include "params/page_grid_view.h"
#include "params/tabbed_page.h"

namespace servo::params {

class TabbedPageWindow final : public QWidget {
    Q_OBJECT

  public:
    // The page outlives its window.
    explicit TabbedPageWindow(TabbedPage& page, QWidget* parent = nullptr);

    TabbedPage& page() { return page_; }
    PageGridView& grid_view(int tab) { return *grids_.at(static_cast<std::size_t>(tab)); }

    QSize sizeHint() const override;

  Q_SIGNALS:
    // The right button, or the menu key, in the grid of the active tab: as for a page, with
    // page().active_grid().
    void popup_asked(const QPoint& place);

  protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void add_tab(int tab);
    void make_hint();
    void show_hint();
    void tab_changed(int tab);

    TabbedPage& page_;
    QTabWidget SSTab1_;  // one tab for each PDO
    QLabel LabelA_;      // how a mapping is changed
    std::array<PageGridView*, kTabs> grids_{};
    LeaveWatch watch_;
};

}  // namespace servo::params
