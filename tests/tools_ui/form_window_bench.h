// A small window over its form, worked through its real controls, with the engine on a port that is
// fed by hand.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTest>
#include <stdexcept>
#include <string>

#include "../tools/direct_engine.h"
#include "app/language_walker.h"
#include "app/state_controls.h"

namespace servo::tools::test {

inline constexpr bool kDesignedFont = true;

struct FormWindowBench : DirectEngine {
    void show(QWidget& shown, bool designed_font) {
        window = &shown;
        designed_font_ = designed_font;
        window->show();
        window->activateWindow();
        QApplication::setActiveWindow(window);
        walk(base::Language::kEnglish);
    }
    void walk(base::Language to) {
        language = to;
        app::walk_window(*window, {.slot = app::slot_of(to), .designed_font = designed_font_});
        QApplication::processEvents();
    }
    template <typename Control = QWidget>
    Control& control(const std::string& name) {
        auto* found =
            qobject_cast<Control*>(app::find_control(*window, QString::fromStdString(name)));
        if (found == nullptr) throw std::runtime_error("no control " + name);
        return *found;
    }
    std::string text(const std::string& name) {
        return app::control_text(control<>(name)).toStdString();
    }
    std::string caption(const std::string& name) {
        return control<QAbstractButton>(name).text().toStdString();
    }
    std::string title() const { return window->windowTitle().toStdString(); }
    bool enabled(const std::string& name) { return control<>(name).isEnabled(); }
    bool shown(const std::string& name) { return app::control_shown(control<>(name), *window); }
    // Does nothing to a control that cannot be used, like the mouse.
    void click(const std::string& name) {
        QWidget& button = control<>(name);
        if (!button.isVisible()) throw std::runtime_error("hidden " + name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
        QApplication::processEvents();
    }
    // As a user picks: from the open list.
    void pick(const std::string& name, int index) {
        auto& list = control<QComboBox>(name);
        list.setFocus();
        list.showPopup();
        list.view()->setCurrentIndex(list.model()->index(index, 0));
        QTest::keyClick(list.view(), Qt::Key_Return);
        QApplication::processEvents();
    }
    std::string focus() const {
        const QWidget* there = window->focusWidget();
        return there == nullptr ? std::string() : there->objectName().toStdString();
    }
    // What the window keeps of its text in this language: each is as short as its room.
    void expect_texts_fit() {
        for (QLabel* label : window->findChildren<QLabel*>()) {
            if (!label->isVisible() || label->text().isEmpty()) continue;
            const int needed = label->wordWrap() ? label->heightForWidth(label->width())
                                                 : label->sizeHint().height();
            EXPECT_GE(label->height(), needed) << label->objectName().toStdString();
            if (!label->wordWrap()) {
                EXPECT_GE(label->width(), label->sizeHint().width())
                    << label->objectName().toStdString();
            }
        }
    }
    // In a main window of 1024 by 700 pixels.
    void expect_fits_small_screen() {
        EXPECT_LE(window->minimumSizeHint().width(), 1000);
        EXPECT_LE(window->minimumSizeHint().height(), 580);
    }
    void keep_picture(const char* name) {
        const QByteArray folder = qgetenv("SERVO_KEEP_PICTURES");
        if (folder.isEmpty()) return;
        window->grab().save(QString::fromLocal8Bit(folder) + QLatin1Char('/') +
                            QLatin1String(name) + QStringLiteral(".png"));
    }

    QWidget* window = nullptr;

  private:
    bool designed_font_ = false;
};

}  // namespace servo::tools::test
