// The window `Homing2` over the form, worked through its real controls.
#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QTest>
#include <stdexcept>
#include <string>

#include "../app/window_hands.h"
#include "../tools/homing_form.h"
#include "app/language_walker.h"
#include "app/state_controls.h"
#include "tools/homing_window.h"

namespace servo::tools::test {

// A true picture of one colour.
inline std::string jpeg_of(Qt::GlobalColor colour) {
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(colour);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    image.save(&bytes, "jpeg");
    return bytes.data().toStdString();
}

struct HomingBench : HomingForm, app::test::WindowHands<HomingBench> {
    HomingBench() {
        window.resize(1000, 560);
        window.show();
        window.activateWindow();
        QApplication::setActiveWindow(&window);
        walk(base::Language::kEnglish);
    }

    void walk(base::Language to) {
        language = to;
        app::walk_window(window, {.slot = app::slot_of(to), .designed_font = true});
        QApplication::processEvents();
    }
    std::string text(const char* name) {
        window.refresh_now();
        return app::control_text(control<>(name)).toStdString();
    }
    std::string caption(const char* name) {
        return control<QAbstractButton>(name).text().toStdString();
    }
    bool enabled(const char* name) { return control<>(name).isEnabled(); }
    bool shown(const char* name) { return app::control_shown(control<>(name), window); }
    bool on(const char* name) { return text(name) == "on"; }
    // Does nothing to a control that cannot be seen or used, like the mouse.
    void click(const char* name) {
        QWidget& button = control<>(name);
        if (!button.isVisible()) throw std::runtime_error(std::string("hidden ") + name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
        QApplication::processEvents();
    }
    void enter_key(const char* name) { QTest::keyClick(&control<>(name), Qt::Key_Return); }
    // As a user picks: from the open list.
    void pick(const char* name, int index) {
        auto& list = control<QComboBox>(name);
        list.setFocus();
        list.showPopup();
        list.view()->setCurrentIndex(list.model()->index(index, 0));
        QTest::keyClick(list.view(), Qt::Key_Return);
        QApplication::processEvents();
    }
    std::string focus() const {
        const QWidget* there = window.focusWidget();
        return there == nullptr ? std::string() : there->objectName().toStdString();
    }

    Homing2Window window{form};
};

}  // namespace servo::tools::test
