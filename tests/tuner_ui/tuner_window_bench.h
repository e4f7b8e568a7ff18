// The window `ADVtunner` over the real tuner on an engine without a drive; scans come from files.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "../app/answered_files.h"
#include "../app/window_hands.h"
#include "../base/temp_folder.h"
#include "../link/direct_bench.h"
#include "app/language_walker.h"
#include "app/state_controls.h"
#include "measured_scan.h"
#include "tuner/bode_file.h"
#include "tuner/picture_widget.h"
#include "tuner/tuner_window.h"

namespace servo::tuner::test {

struct WindowBench : servo::test::DirectBench,
                     app::test::WindowHands<WindowBench>,
                     app::test::AnsweredFiles {
    WindowBench() {
        window.show();
        walk(base::Language::kEnglish);
    }

    void walk(base::Language to) {
        language = to;
        app::walk_window(window, {.slot = app::slot_of(to), .designed_font = true});
        QApplication::processEvents();
    }

    QWidget& any(const std::string& name) { return control<QWidget>(name); }
    std::string text(const std::string& name) {
        window.refresh_now();
        return app::control_text(any(name)).toStdString();
    }
    std::string caption(const std::string& name) {
        return control<QAbstractButton>(name).text().toStdString();
    }
    bool enabled(const std::string& name) {
        window.refresh_now();
        return any(name).isEnabled();
    }
    void click(const std::string& name) {
        QTest::mouseClick(&any(name), Qt::LeftButton, {}, QPoint(8, any(name).height() / 2));
    }
    void key(const std::string& name, Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        any(name).setFocus();
        QTest::keyClick(&any(name), key, held);
    }
    // A file with a scan, through the button.
    void load(const MeasuredScan& scan = measured_scan()) {
        folder.put("scan.bode", write_bode(scan.settings, *scan.buffers));
        path = (folder / "scan.bode").string();
        click("Command2");
        QApplication::processEvents();
    }
    void simulate() {
        click("Command4");
        QApplication::processEvents();
    }
    PictureWidget& picture() { return control<PictureWidget>("PictureA"); }
    const PictureScene& scene() { return picture().scene(); }
    bool draws(Curve curve, bool phase = false) {
        window.refresh_now();
        for (const SceneCurve& drawn : scene().curves)
            if (drawn.curve == curve && drawn.phase == phase && !drawn.lines.empty()) return true;
        return false;
    }
    std::pair<std::string, std::string> box() {
        if (notice.boxes.empty()) return {};
        const auto last = notice.boxes.back();
        notice.boxes.clear();
        return last;
    }

    TempFolder folder;
    base::Language language = base::Language::kEnglish;
    servo::test::RecordedNotice notice;
    bool open = false;
    AdvancedTuner tuner{TunerServices{
        .engine = engine, .notice = notice, .language = language, .link_open = [this] {
            return open;
        }}};
    TunerWindow window{tuner, dialogs()};
};

}  // namespace servo::tuner::test
