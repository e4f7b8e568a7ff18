// The shell as a user waits for it, offscreen, on the shipped pages: from a menu item to the first
// paint of its page, its widgets made on the way, against 50 ms and against an empty window with a
// table; a switch of the language with every window open, against 300 ms and against another font
// on as many plain windows.
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStandardItemModel>
#include <QTableView>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/menu_table.h"
#include "app/program.h"
#include "app/style.h"
#include "bench/ratio.h"
#include "bench/temporary_folder.h"
#include "params/page_table.h"

namespace {

using namespace servo;

constexpr int kPrograms = 7;   // each opens every page once, for the first time
constexpr int kSwitches = 11;  // of the language, in turn with one of the font
constexpr double kSwitchLimit = 4.0;
constexpr int kRows = 30;  // of the table that an empty window shows

// A program's folder of its own, since a switch of the language writes into it.
class Folder {
  public:
    bool fill(const std::filesystem::path& shipped) const {
        std::error_code error;
        for (const char* name : {"sys", "modbus.txt", "qorlan.dat"})
            if (!error)
                std::filesystem::copy(shipped / name, path() / name,
                                      std::filesystem::copy_options::recursive, error);
        return !error;
    }
    const std::filesystem::path& path() const { return folder_.path(); }

  private:
    bench::TemporaryFolder folder_;
};

// Nobody sits in front of a benchmark.
class NoDialogs final : public app::UserDialogs {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
    std::optional<std::string> ask_file(const app::FileRequest&) override { return {}; }
};

// Sees the first paint of a table inside of a frame.
class PaintWatch final : public QObject {
  public:
    PaintWatch() { qApp->installEventFilter(this); }
    ~PaintWatch() override { qApp->removeEventFilter(this); }
    PaintWatch(const PaintWatch&) = delete;
    PaintWatch& operator=(const PaintWatch&) = delete;

    // Processes events until a table has been painted since the watch began; the events in hand are
    // finished, so the painting is done and not only begun.
    bool wait() const {
        for (int i = 0; i < 1000 && !painted_; ++i)
            QApplication::processEvents();
        return painted_;
    }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint &&
            qobject_cast<QTableView*>(object->parent()) != nullptr)
            painted_ = true;
        return false;
    }

  private:
    bool painted_ = false;
};

template <typename Function>
double seconds(Function function) {
    return bench::seconds_per_call(function, 1);
}

// The program with its main window shown.
struct Shell {
    explicit Shell(const Folder& folder) : program(options(folder)) {
        program.dialogs().use(answers);
        started = program.start();
        settle();
    }
    static app::Options options(const Folder& folder) {
        app::Options options;
        options.data = folder.path();
        return options;
    }
    static void settle() {
        for (int i = 0; i < 10; ++i)
            QApplication::processEvents();
    }
    void menu(std::string_view item) { program.form().menu_item(app::to_qt(item))->trigger(); }

    NoDialogs answers;
    app::Program program;
    bool started = false;
};

// A frame with a table and nothing else, in a main window that is there already.
class EmptyWindows {
  public:
    EmptyWindows() {
        window_.setCentralWidget(&area_);
        window_.resize(1280, 800);
        window_.show();
        for (int row = 0; row < kRows; ++row)
            for (int column = 0; column < 6; ++column)
                model_.setItem(row, column, new QStandardItem(QStringLiteral("cell")));
        Shell::settle();
    }
    void open() {
        auto* table = new QTableView;
        table->setModel(&model_);
        QMdiSubWindow* frame = area_.addSubWindow(table);
        frame->resize(720, 420);
        frame->show();
    }
    // The font of a language on every window: the toolkit's part of a switch.
    void set_language(base::Language language) {
        QFont font = area_.font();
        font.setFamilies(app::font_families(language));
        area_.setFont(font);
    }

  private:
    QStandardItemModel model_;
    QMainWindow window_;
    QMdiArea area_;
};

std::vector<std::string_view> page_items() {
    std::vector<std::string_view> items;
    for (const app::MenuItem& item : app::menu_table())
        if (item.kind == app::MenuKind::kOpenPage &&
            params::find_page_definition(item.window) != nullptr)
            items.push_back(item.item);
    return items;
}

// Median of each page's first opening over some programs, in turn with that of an empty window.
bool measure_pages(const Folder& folder, bench::Report& report) {
    const auto items = page_items();
    std::vector<std::vector<double>> of_page(items.size());
    std::vector<double> of_empty;
    for (int round = 0; round < kPrograms; ++round) {
        Shell shell(folder);
        EmptyWindows empty;
        if (!shell.started) return false;
        for (std::size_t i = 0; i < items.size(); ++i) {
            bool painted = true;
            of_page[i].push_back(seconds([&] {
                const PaintWatch watch;
                shell.menu(items[i]);
                painted = watch.wait();
            }));
            Shell::settle();
            of_empty.push_back(seconds([&] {
                const PaintWatch watch;
                empty.open();
                painted = watch.wait() && painted;
            }));
            Shell::settle();
            if (!painted) return false;
        }
    }
    std::vector<double> pages;
    std::size_t worst = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        pages.push_back(bench::median(of_page[i]));
        if (pages[i] > pages[worst]) worst = i;
    }
    const double reference = bench::median(of_empty);
    std::printf("pages: %zu, worst %.1f ms (%.*s), median %.1f ms, empty window: %.1f ms\n",
                items.size(), pages[worst] * 1e3, static_cast<int>(items[worst].size()),
                items[worst].data(), bench::median(pages) * 1e3, reference * 1e3);
    report.at_most("page-open-worst-seconds", pages[worst], 0.050);
    report.at_most("page-open-against-empty-window", bench::median(pages) / reference, 3.0);
    return items.size() == params::kPages;
}

// Every window open and in the other language, against as many plain windows in another font.
bool measure_language(const Folder& folder, bench::Report& report) {
    Shell shell(folder);
    if (!shell.started) return false;
    EmptyWindows plain;
    int windows = 0;
    for (const link::Window* window : shell.program.workstation().engine.all_windows) {
        if (!shell.program.form().open_window(app::to_qt(window->name()))) continue;
        plain.open();
        ++windows;
    }
    Shell::settle();
    bool chinese = false;
    const auto switched = bench::take_turns(
        kSwitches,
        [&] {
            chinese = !chinese;
            shell.menu(chinese ? "chinese" : "English");
            Shell::settle();
        },
        1,
        [&] {
            plain.set_language(chinese ? base::Language::kChinese : base::Language::kEnglish);
            Shell::settle();
        },
        1, [] { Shell::settle(); });
    std::printf("language switch over %d open windows: %.1f ms, plain windows: %.1f ms\n", windows,
                switched.ours * 1e3, switched.reference * 1e3);
    report.at_most("language-switch-seconds", switched.ours, 0.300);
    report.at_most("language-switch-against-plain-windows", switched.ours / switched.reference,
                   kSwitchLimit);
    return windows == static_cast<int>(link::kAllWindowNames.size());
}

}  // namespace

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    app::apply_style();
    const Folder folder;
    if (!folder.fill(SERVO_BIN_DIR)) {
        std::fprintf(stderr, "no run-time tree in %s\n", SERVO_BIN_DIR);
        return 1;
    }
    bench::Report report;
    if (!measure_pages(folder, report) || !measure_language(folder, report)) {
        std::fprintf(stderr, "the program did not come up\n");
        return 1;
    }
    return report.exit_status();
}
