// A window's real controls, found by their names and used as a person uses them. A bench derives
// from WindowHands<Bench> and has the window as its member `window`.
#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <stdexcept>
#include <string>

#include "app/state_controls.h"

namespace servo::app::test {

template <typename Bench>
class WindowHands {
  public:
    template <typename Control = QWidget>
    Control& control(const std::string& name) {
        QWidget& window = static_cast<Bench*>(this)->window;
        auto* found = qobject_cast<Control*>(find_control(window, QString::fromStdString(name)));
        if (found == nullptr) throw std::runtime_error("no control " + name);
        return *found;
    }
    // In place of what the box holds.
    void type(const std::string& name, const char* text) {
        auto& box = control<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Backspace);
        QTest::keyClicks(&box, QLatin1String(text));
    }
    // From the open list.
    void choose(const std::string& name, int position) {
        auto& list = control<QComboBox>(name);
        list.setFocus();
        list.showPopup();
        list.view()->setCurrentIndex(list.model()->index(position, 0));
        QTest::keyClick(list.view(), Qt::Key_Return);
    }
};

}  // namespace servo::app::test
