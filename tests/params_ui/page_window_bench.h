// A page in a frame of a main window, on the offscreen platform, with its controls by their names.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>
#include <QTest>

#include "params/grid_access_view.h"
#include "params/page_window.h"
#include "params/test_page_support.h"

namespace servo::params::test {

class PageWindowBench : public testing::Test {
  protected:
    Bench bench;
    Page page{kPageTable.front(), bench.services()};
    QMainWindow main;
    QMdiArea* area = nullptr;
    PageWindow* window = nullptr;
    QMdiSubWindow* frame = nullptr;
    QTableView* grid = nullptr;
    QLineEdit* textbox = nullptr;
    QComboBox* list = nullptr;

    // Rows of the sample dictionary on screen, counted from 1.
    enum : int { kMode = 1, kActual, kTarget, kVelocity, kControl, kStatus, kCurrent };

    void SetUp() override {
        show({0x606000, 0x606300, 0x607A00, 0x60FF00, 0x604000, 0x607100, 0x608600});
    }

    void show(const std::vector<dictionary::Identity>& keys) {
        fill(keys);
        area = new QMdiArea(&main);
        main.setCentralWidget(area);
        main.resize(1100, 900);
        window = new PageWindow(page);
        window->setWindowTitle(QStringLiteral("Basic Operation"));
        frame = area->addSubWindow(window);
        frame->setAttribute(Qt::WA_DeleteOnClose, false);
        main.show();
        frame->show();
        area->setActiveSubWindow(frame);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
        grid = window->findChild<QTableView*>(QStringLiteral("MSHFlexGrid1"));
        textbox = window->findChild<QLineEdit*>(QStringLiteral("textbox1"));
        list = window->findChild<QComboBox*>(QStringLiteral("Combobox1"));
        ASSERT_TRUE(grid != nullptr && textbox != nullptr && list != nullptr);
    }

    void fill(const std::vector<dictionary::Identity>& keys) {
        std::vector<Row> rows;
        for (const dictionary::Identity key : keys) {
            rows.push_back(bench.row(key, static_cast<int>(rows.size())));
        }
        page.grid().set_rows(std::move(rows));
    }

    void click(int row, int column, GridClick how = GridClick::kLeft) {
        ASSERT_TRUE(grid_click(*grid, row, column, how));
    }
    QString text(int row, int column) const { return grid_text(*grid, row, column); }
    int current() const { return grid_current_row(*grid); }
};

}  // namespace servo::params::test
