// The window `PosFlow` over the form on the virtual bench, worked through its real controls.
#pragma once

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <stdexcept>
#include <string>

#include "../app/window_hands.h"
#include "../tools/pos_flow_bench.h"
#include "app/language_walker.h"
#include "app/state_controls.h"
#include "app/walk_control_actions.h"
#include "params/grid_access_view.h"
#include "tools/pos_flow_window.h"

namespace servo::tools {

using namespace std::chrono_literals;

struct PosFlowWindowBench : PosFlowBench, app::test::WindowHands<PosFlowWindowBench> {
    PosFlowWindowBench() {
        window.resize(1000, 560);
        window.show();
        walk(base::Language::kEnglish);
        QApplication::clipboard()->clear();
    }
    void walk(base::Language to) {
        language = to;
        app::walk_window(window, {.slot = app::slot_of(to)});
        QApplication::processEvents();
    }
    QTableView& grid(const char* name) { return control<QTableView>(name); }
    std::string shown(const char* grid_name, int row, int column) {
        window.refresh_now();
        return params::grid_text(grid(grid_name), row, column).toStdString();
    }
    std::string text(const char* name) {
        window.refresh_now();
        return app::control_text(control<>(name)).toStdString();
    }
    bool visible(const char* name) { return app::control_shown(control<>(name), window); }
    void click(const char* name) { QTest::mouseClick(&control<>(name), Qt::LeftButton); }
    void cell(const char* grid_name, int row, int column) {
        params::grid_click(grid(grid_name), row, column, params::GridClick::kLeft);
    }
    // As a walkthrough does it: click, type into the box that opens, Enter.
    std::string edit(const char* grid_name, int row, int column, const char* text) {
        return app::edit_cell(window, grid(grid_name), row, column, QString::fromUtf8(text));
    }
    void keys(const char* name, const char* text) {
        QTest::keyClicks(&control<>(name), QLatin1String(text));
    }
    void key(const char* name, Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QTest::keyClick(&control<>(name), key, held);
    }
    void select_rows(int first, int last, int column) {
        QTableView& steps = grid("MSHFlexGrid2");
        steps.setFocus();
        steps.setCurrentIndex(steps.model()->index(first - 1, column));
        for (int row = first; row < last; ++row)
            key("MSHFlexGrid2", Qt::Key_Down, Qt::ShiftModifier);
    }

    PosFlowWindow window{form};
};

}  // namespace servo::tools
