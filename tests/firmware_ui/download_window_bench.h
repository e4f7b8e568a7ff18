// The window `Download` over the form on the virtual bench, worked through its real controls.
#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <stdexcept>
#include <string>

#include "../app/window_hands.h"
#include "../firmware/transfer_bench.h"
#include "app/language_walker.h"
#include "app/state_controls.h"
#include "firmware/download_window.h"

namespace servo::firmware::test {

using namespace std::chrono_literals;

struct WindowBench : servo::test::TransferBench, app::test::WindowHands<WindowBench> {
    WindowBench() {
        window.show();
        walk(base::Language::kEnglish);
    }

    void walk(base::Language to) {
        language = to;
        app::walk_window(window, {.slot = app::slot_of(to)});
        QApplication::processEvents();
    }

    std::string text(const char* name) {
        window.refresh_now();
        return app::control_text(control<>(name)).toStdString();
    }
    bool enabled(const char* name) {
        window.refresh_now();
        return control<>(name).isEnabled();
    }
    bool shown(const char* name) {
        window.refresh_now();
        return app::control_shown(control<>(name), window);
    }
    void click(const char* name) {
        QWidget& button = control<>(name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
    }
    void enter(const char* name) { QTest::keyClick(&control<>(name), Qt::Key_Return); }
    void load_by_hand(std::size_t characters) {
        answers = {put_image(payload(characters)).string()};
        click("Command1");
    }
    void close_link() { communication.Command1_Click(); }
    // Until the transfer is in that step; false when it never comes there.
    bool run_to_step(std::uint8_t step) {
        return run_until([this, step] { return state.download_step == step; }, 60s);
    }

    params::PageDefinition definition{
        "Download", {"固件下载", "Load Firmware"}, {"固件下载", "Load Firmware"}, "", 0};
    dictionary::Store store;
    link::FormulaOperands operands;
    params::Page rows{definition,
                      {store, operands, language, [](dictionary::WireKey, std::int32_t) {}}};
    std::optional<std::string> save_path;
    std::vector<std::string> told;
    DownloadWindow window{
        download,
        rows,
        {.ask_save = [this](std::string_view, std::string_view) { return save_path; },
         .tell = [this](std::string_view, std::string_view text) { told.emplace_back(text); },
         .link_open = [this] { return port.is_open(); }}};
};

}  // namespace servo::firmware::test
