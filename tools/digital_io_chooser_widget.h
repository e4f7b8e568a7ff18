// The function chooser of one side of the form `DigitalIO`: a box for each function of the list.
#pragma once

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QScrollArea>
#include <vector>

#include "tools/digital_io.h"
#include "tools/digital_io_controls_view.h"

namespace servo::tools {

class DigitalIOChooserWidget final : public QFrame {
    Q_OBJECT

  public:
    DigitalIOChooserWidget(DigitalIO& form, IoSide side, QWidget* parent);

    void refresh();
    void apply_language(base::Language language);
    // The first box that is ticked, or the first one.
    void focus_first();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void make_commands();
    QWidget* make_boxes();
    void lay_out();
    void close();
    void accept();
    bool step(int index, int by);
    const IoFunctions& functions() const { return form_.data().functions(side_); }

    DigitalIO& form_;
    IoSide side_;
    QLabel* title_ = nullptr;
    QPushButton* close_ = nullptr;   // Command3 of the inputs, Command4 of the outputs
    QPushButton* ok_ = nullptr;      // Command2, Command5
    QLabel* value_ = nullptr;        // what OK would write
    QScrollArea* room_ = nullptr;    // its bar is VScroll1, VScroll2
    std::vector<QCheckBox*> boxes_;  // checkboxdin(i), checkboxdout(i)
    std::vector<QLabel*> groups_;    // the number of each box's group
};

}  // namespace servo::tools
