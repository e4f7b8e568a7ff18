// The dictionary browser on screen. Whoever keeps the windows puts it into a frame and keeps its
// visibility; its language comes with ObjectBrowser::Init_OD_Grid() and the tags of its controls.
#pragma once

#include <QWidget>

#include "params/browser_details_view.h"
#include "params/browser_list_view.h"
#include "params/leave_watch_view.h"
#include "params/object_browser.h"
#include "params/page_grid_view.h"

class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;

namespace servo::params {

class ObjectBrowserWindow final : public QWidget, private BrowserObserver {
    Q_OBJECT

  public:
    // The browser outlives its window.
    explicit ObjectBrowserWindow(ObjectBrowser& browser, QWidget* parent = nullptr);
    ~ObjectBrowserWindow() override;

    QSize sizeHint() const override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void list_changed() override;
    void object_shown(bool to_top) override;
    void search_changed() override;
    void aim_changed() override;

    void make_aim_bar();
    QWidget* make_list_side();
    void lay_out();
    void connect_controls();
    bool function_key(int key, Qt::KeyboardModifiers held);

    ObjectBrowser& browser_;
    // Made in the order in which Tab goes from one to the next.
    QLineEdit* Text2_;         // search text
    QPushButton* Command1_;    // search
    BrowserTable list_;        // MSHFlexGrid2
    QPushButton* aim_button_;  // CommandA, does what a double click does
    PageGridView live_;        // MSHFlexGrid1, textbox1 and Combobox1
    LeaveWatch watch_;
    BrowserDetails details_;
    QLabel* note_ = nullptr;      // LabelM, how many rows match
    QFrame* aim_bar_ = nullptr;   // tells what a double click does
    QLabel* aim_text_ = nullptr;  // LabelN
};

}  // namespace servo::params
