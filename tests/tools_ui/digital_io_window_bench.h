// The window `DigitalIO` over the form on the virtual bench, worked through its real controls.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <stdexcept>
#include <string>

#include "../tools/digital_io_bench.h"
#include "tools/digital_io_window.h"

namespace servo::tools::test {

struct WindowIO : LineIO {
    WindowIO() {
        // What the drive has: some functions, states that differ from column to column.
        drive.objects[0x201003].value = 0x0001;
        drive.objects[0x201004].value = 0x0002;
        drive.objects[0x201007].value = 0x0010;
        drive.objects[0x201008].value = 0x0020;
        drive.objects[0x201009].value = 0x0040;
        drive.objects[0x20101D].value = 0x8003;
        drive.objects[0x20100F].value = 0x0001;
        drive.objects[0x201010].value = 0x0006;
        drive.objects[0x20101E].value = 0x8001;
        drive.objects[0x201002].value = 0xCF;
        drive.objects[0x20100A].value = 0x21;
        drive.objects[0x20100B].value = 0x01;
        drive.objects[0x20100E].value = 0x7F;
        drive.objects[0x201014].value = 0x05;
        drive.objects[0x201015].value = 0x05;
        window.resize(990, 575);
        window.show();
    }
    void speak(base::Language to) {
        language = to;
        QEvent changed(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&window, &changed);
        QApplication::processEvents();
    }

    // Linked, with the whole block on screen.
    void connect() {
        LineIO::connect();
        window.refresh_now();
    }

    template <typename Control = QWidget>
    Control& control(const QString& name) {
        auto* found = window.findChild<Control*>(name);
        if (found == nullptr) throw std::runtime_error("no control " + name.toStdString());
        return *found;
    }
    template <typename Control = QWidget>
    Control& control(const char* name, int index) {
        return control<Control>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
    }
    std::string text1(int row) {
        window.refresh_now();
        return control<QLineEdit>("Text1", row).text().toStdString();
    }
    std::string label(const char* name) {
        window.refresh_now();
        return control<QLabel>(QLatin1String(name)).text().toStdString();
    }
    bool shown(const char* name) {
        window.refresh_now();
        return control(QLatin1String(name)).isVisible();
    }
    bool checked(const char* name, int index) {
        window.refresh_now();
        return control<QCheckBox>(name, index).isChecked();
    }
    void press(QWidget& button) {
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
    }
    void click(const char* name) { press(control(QLatin1String(name))); }
    void click(const char* name, int index) { press(control(name, index)); }
    QString focused() const {
        const QWidget* widget = QApplication::focusWidget();
        return widget == nullptr ? QString() : widget->objectName();
    }
    void key(Qt::Key which) { QTest::keyClick(QApplication::focusWidget(), which); }
    void close_link() { communication.Command1_Click(); }

    dictionary::Variant variant = dictionary::Variant::kAllItems;
    DigitalIOWindow window{form, variant};
};

}  // namespace servo::tools::test
