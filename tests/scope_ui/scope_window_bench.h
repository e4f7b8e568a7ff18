// The oscilloscope's window on a test's engine, with a recording of two channels.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "../app/answered_files.h"
#include "../app/window_hands.h"
#include "../scope/scope_world.h"
#include "app/language_walker.h"
#include "app/state_controls.h"
#include "scope/cursors.h"
#include "scope/scope_controls_view.h"
#include "scope/scope_window.h"

namespace servo::scope::test {

struct WindowBench : ScopeWorld, app::test::WindowHands<WindowBench>, app::test::AnsweredFiles {
    WindowBench() {
        window.show();
        walk(base::Language::kEnglish);
        QApplication::processEvents();
    }

    void walk(base::Language to) {
        language = to;
        scope.change_scope_language();
        app::walk_window(window, {.slot = app::slot_of(to), .designed_font = true});
        QApplication::processEvents();
    }

    // Two periods of a sine and a step.
    void record_sine(int samples = 400) {
        std::vector<std::pair<int, int>> rows;
        for (int i = 0; i < samples; ++i)
            rows.emplace_back(static_cast<int>(std::lround(1000 * std::sin(i * 0.0314159))),
                              i < samples / 2 ? -50 : 700);
        scope.click_single();
        record_two_channels(rows);
        window.refresh_now();
        QApplication::processEvents();
    }

    QWidget& any(const char* name) { return control<QWidget>(name); }
    std::string text(const char* name) { return app::control_text(any(name)).toStdString(); }
    void click(const char* name) { QTest::mouseClick(&any(name), Qt::LeftButton); }
    void check(const char* name) {
        auto& box = control<QAbstractButton>(name);
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
    }
    void key(const char* name, int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        any(name).setFocus();
        QTest::keyClick(&any(name), static_cast<Qt::Key>(key), held);
    }

    ScopeWindow window{scope,
                       {.files = dialogs(), .time_of_day = [] { return std::string("11:02:33"); }}};
};

}  // namespace servo::scope::test
