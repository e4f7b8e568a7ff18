// The dictionary browser over 3,000 records: a step of its search, against looking at every row's
// texts as they come from the dictionary, and scrolling its list, against a table of items with the
// toolkit's own painting.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "base/gbk.h"
#include "bench/ratio.h"
#include "params/object_browser_window.h"

namespace {

using namespace servo::params;
using servo::bench::Report;
using servo::dictionary::Store;

constexpr int kRecords = 3000;
constexpr int kFirstIndex = 0x2000;
constexpr double kSearchLimit = 10;  // milliseconds
constexpr double kScrollLimit = 8;
constexpr int kTurns = 25;
constexpr int kSteps = 100;  // of the scroll bar
constexpr int kRounds = 7;

void add(std::string& out, std::string_view text, std::size_t width) {
    std::string bytes = servo::base::utf8_to_gbk(text);
    bytes.resize(width, ' ');
    out += bytes;
}

// Records as the real file holds them.
std::string make_dictionary() {
    std::string out;
    for (int i = 0; i < kRecords; ++i) {
        std::string help = "驱动器对象的说明，第一行给出用途，第二行给出单位和范围。";
        std::string help_en = "What the object is for, its unit and its range. ";
        for (int n = 0; n < 8; ++n) {
            help += fmt::format("|{}:第{}项", n, n);
            help_en += fmt::format("|{}:item {}", n, n);
        }
        add(out, fmt::format("{:04X}", kFirstIndex + i), 4);
        add(out, "00", 2);
        add(out, fmt::format("驱动器的第{}个对象的名称", i), 64);
        add(out, fmt::format("Name of the drive's object number {}", i), 64);
        add(out, i % 3 == 0 ? "Integer32" : "Unsigned16", 16);
        add(out, i % 2 == 0 ? "HW" : "R", 8);
        add(out, help, 4096);
        add(out, help_en, 4096);
        add(out, "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]", 200);
        add(out, fmt::format("{:04X}", i), 4);
    }
    return out;
}

ModbusList make_modbus_list() {
    ModbusList list{.present = true, .addresses = {}};
    for (int i = 0; i < kRecords; ++i) {
        list.addresses.push_back(
            {fmt::format("{:04X}00", kFirstIndex + i), fmt::format("{:04X}", i)});
    }
    return list;
}

struct Bench {
    Bench() { dictionary.load(make_dictionary()); }

    Store dictionary;
    servo::link::FormulaOperands operands;
    servo::base::Language language = servo::base::Language::kEnglish;
    ModbusList modbus = make_modbus_list();
    ObjectBrowser browser{{modbus, {dictionary, operands, language, [](auto, auto) {}}}};
};

// The plain way: every row's text is made and looked at until one matches.
int plain_search(const Store& dictionary, const std::string& text) {
    const std::string wanted = lower_case(text);
    for (int row = 1; row <= kRecords; ++row)
        if (search_text(dictionary, row).find(wanted) != std::string::npos) return row;
    return 0;
}

// One press of the search button behind a text that was not searched for before, so that every row
// is looked at. The pair of texts takes turns.
void measure_search(Bench& bench, std::string_view name, const std::array<std::string, 2>& texts,
                    int expected_row, Report& report) {
    ObjectBrowser& browser = bench.browser;
    int turn = 0;
    const auto ours = [&] {
        browser.search_row = 1;
        browser.Text2_Change(texts.at(static_cast<std::size_t>(turn++ % 2)));
        browser.Command1_Click();
    };
    const auto reference = [&] {
        benchmark::DoNotOptimize(plain_search(bench.dictionary, texts[0]));
    };
    const auto taken = servo::bench::take_turns(kTurns, ours, 10, reference, 1);
    if (expected_row != 0 && browser.search_row != expected_row) std::exit(1);
    if (expected_row == 0 && !browser.search_failed()) std::exit(1);
    std::printf("%.*s: %.3f ms, row by row: %.3f ms\n", static_cast<int>(name.size()), name.data(),
                taken.ours * 1e3, taken.reference * 1e3);
    report.at_most(fmt::format("{}-ms", name), taken.ours * 1e3, kSearchLimit);
    report.at_most(fmt::format("{}-against-row-by-row", name), taken.ours / taken.reference, 0.5);
}

// The first search makes the texts of all rows.
void measure_first_search(Bench& bench, Report& report) {
    ObjectBrowser& browser = bench.browser;
    const std::string text = "no such object";
    const auto ours = [&] {
        browser.Init_OD_Grid();
        browser.Text2_Change(text);
        browser.Command1_Click();
        browser.Text2_Change({});
    };
    const auto reference = [&] { benchmark::DoNotOptimize(plain_search(bench.dictionary, text)); };
    const auto taken = servo::bench::take_turns(kTurns, ours, 1, reference, 1);
    std::printf("first search: %.3f ms, row by row: %.3f ms\n", taken.ours * 1e3,
                taken.reference * 1e3);
    report.at_most("browser-first-search-ms", taken.ours * 1e3, kSearchLimit);
}

void paint(QWidget& window) {
    QCoreApplication::sendPostedEvents();
    window.repaint();
    QCoreApplication::processEvents();
}

// The whole way: a key in the box, a match in another part of the list, everything painted.
void measure_search_on_screen(ObjectBrowserWindow& window, Report& report) {
    auto* box = window.findChild<QLineEdit*>(QStringLiteral("Text2"));
    auto* button = window.findChild<QPushButton*>(QStringLiteral("Command1"));
    std::vector<double> taken;
    for (int i = 0; i < 60; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        box->setText(i % 2 == 0 ? QStringLiteral("number 2999") : QStringLiteral("number 1500"));
        button->click();
        paint(window);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        taken.push_back(time.count() * 1e3);
    }
    box->clear();
    report.at_most("browser-search-on-screen-ms", servo::bench::median(taken), kSearchLimit);
}

// The best of some rounds of steps.
struct Steps {
    double p95 = std::numeric_limits<double>::infinity();
    double median = std::numeric_limits<double>::infinity();

    void take(std::vector<double> times) {
        std::sort(times.begin(), times.end());
        p95 = std::min(p95, times.at(times.size() * 95 / 100));
        median = std::min(median, times.at(times.size() / 2));
    }
};

// Milliseconds of each step of the scroll bar with what it repaints.
std::vector<double> scroll(QWidget& window, QTableView& list, QAbstractSlider::SliderAction action,
                           int steps) {
    std::vector<double> taken;
    list.verticalScrollBar()->setValue(0);
    paint(window);
    for (int i = 0; i < steps; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        list.verticalScrollBar()->triggerAction(action);
        QCoreApplication::processEvents();  // layout and painting of all that has changed
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        taken.push_back(time.count() * 1e3);
    }
    return taken;
}

// The same rows as items in a plain table of the same size.
void fill_plain(QTableView& plain, const Store& dictionary, const QTableView& like) {
    auto* model = new QStandardItemModel(kRecords, kListColumns, &plain);
    for (int row = 0; row < kRecords; ++row) {
        for (int column = 0; column < kListColumns; ++column) {
            const auto text = dictionary.dictionary_cell(static_cast<std::size_t>(row),
                                                         static_cast<std::size_t>(column));
            model->setItem(row, column, new QStandardItem(QString::fromStdString(text)));
        }
    }
    plain.setModel(model);
    plain.verticalHeader()->hide();
    plain.verticalHeader()->setDefaultSectionSize(like.rowHeight(0));
    plain.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    for (int column = 0; column < kListColumns; ++column) {
        plain.setColumnHidden(column, like.isColumnHidden(column));
        if (!like.isColumnHidden(column)) plain.setColumnWidth(column, like.columnWidth(column));
    }
    plain.resize(like.size());
    plain.show();
}

void measure_scrolling(ObjectBrowserWindow& window, const Store& dictionary, Report& report) {
    auto* list = window.findChild<QTableView*>(QStringLiteral("MSHFlexGrid2"));
    QTableView plain;
    fill_plain(plain, dictionary, *list);
    const std::pair<const char*, QAbstractSlider::SliderAction> ways[] = {
        {"row", QAbstractSlider::SliderSingleStepAdd},
        {"page", QAbstractSlider::SliderPageStepAdd}};
    for (const auto& [name, action] : ways) {
        // Another program that takes the processor for a while spoils one round and not all.
        Steps ours;
        Steps reference;
        for (int round = 0; round < kRounds; ++round) {
            ours.take(scroll(window, *list, action, kSteps));
            reference.take(scroll(plain, plain, action, kSteps));
        }
        std::printf("scroll by a %s, p95: %.3f ms, median %.3f ms; plain table, median %.3f ms\n",
                    name, ours.p95, ours.median, reference.median);
        report.at_most(fmt::format("browser-scroll-{}-p95-ms", name), ours.p95, kScrollLimit);
        // A step of one row moves the picture, and most of ours is showing the object of the top
        // row; a page is all painted anew.
        if (action == QAbstractSlider::SliderPageStepAdd)
            report.at_most("browser-scroll-page-against-plain-table",
                           ours.median / reference.median, 2.0);
    }
}

}  // namespace

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const QApplication application(argc, argv);
    Report report;
    Bench bench;
    bench.browser.Init_OD_Grid();
    measure_search(bench, "browser-search-last-row", {"number 2999", "object number 2999"},
                   kRecords, report);
    measure_search(bench, "browser-search-no-match", {"no such object", "none of them"}, 0, report);
    measure_first_search(bench, report);
    ObjectBrowserWindow window(bench.browser);
    window.resize(1040, 640);
    window.show();
    paint(window);
    measure_search_on_screen(window, report);
    measure_scrolling(window, bench.dictionary, report);
    return report.exit_status();
}
