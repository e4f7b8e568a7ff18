// The window `imexport` over the form on the virtual bench, worked through its real controls.
#pragma once

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <stdexcept>
#include <string>

#include "../tools/configuration_bench.h"
#include "params/grid_access_view.h"
#include "tools/configuration_grid_view.h"
#include "tools/configuration_window.h"

namespace servo::tools::test {

struct WindowBench : ConfigurationLine {
    WindowBench() {
        window.resize(window.sizeHint());
        window.show();
    }
    void speak(base::Language to) {
        language = to;
        QEvent changed(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&window, &changed);
        QApplication::processEvents();
    }
    template <typename Control = QWidget>
    Control& control(const char* name) {
        auto* found = window.findChild<Control*>(QLatin1String(name));
        if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
        return *found;
    }
    std::string text(const char* name) { return control<QLabel>(name).text().toStdString(); }
    std::string caption(const char* name) {
        return control<QPushButton>(name).text().toStdString();
    }
    bool enabled(const char* name) { return control(name).isEnabled(); }
    int percent(const char* name) { return control<QProgressBar>(name).value(); }
    ConfigurationTable& grid(const char* name) { return control<ConfigurationTable>(name); }
    std::string cell(const char* name, int row, int column) {
        return params::grid_text(grid(name), row, column).toStdString();
    }
    std::optional<QColor> color(const char* name, int row, int column) {
        return params::grid_color(grid(name), row, column);
    }
    void click(const char* name) {
        QTest::mouseClick(&control(name), Qt::LeftButton);
        QApplication::processEvents();
    }
    void tab(int which) { control<QTabWidget>("SSTab1").setCurrentIndex(which); }
    // Timer1 ticks now and not in 4.5 s.
    void tick_timer() { form.Timer1_Timer(); }
    void choose(const std::filesystem::path& file) { answers.push_back(file); }

    // Where SERVO_PICTURES names a folder, the window is kept there as a picture.
    void keep_picture(const char* name) {
        const QString kept_in = qEnvironmentVariable("SERVO_PICTURES");
        if (kept_in.isEmpty()) return;
        QApplication::processEvents();
        window.grab().save(kept_in + QLatin1Char('/') + QLatin1String(name) +
                           QLatin1String(".png"));
    }

    ConfigurationWindow window{form};
};

}  // namespace servo::tools::test
