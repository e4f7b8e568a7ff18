// The main window's frame put together without the program: menus, windows and status bar on a
// QMainWindow, with a few plain windows in place of the program's.
#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

#include "app/backgroud_form.h"
#include "app/shell_menus.h"
#include "app/shell_tools.h"
#include "app/status_strip.h"
#include "app/style.h"
#include "app/window_host.h"
#include "app/window_list.h"

namespace servo::app::test {

struct FrameBench {
    QMainWindow main;
    BackgroudForm* area = new BackgroudForm(&main);
    ShellMenus* menus = new ShellMenus(main.menuBar());
    ShellTools* tools = new ShellTools(&main);
    WindowHost* host = new WindowHost(area);
    WindowList* list = new WindowList(*menus, *host, &main);
    StatusStrip* strip = new StatusStrip(&main);

    FrameBench() {
        main.setCentralWidget(area);
        main.addToolBar(tools);
        main.setStatusBar(strip);
        main.resize(1200, 800);
        for (const char* name : {"A", "B", "C"})
            add(name, ChildWindow::Kind::kPage);
        add("D", ChildWindow::Kind::kDialog);
        QObject::connect(host, &WindowHost::close_asked, host,
                         [this](const QString& name) { host->hide(from_qt(name)); });
        apply(base::Language::kEnglish);
    }

    void add(const char* name, ChildWindow::Kind kind) {
        const auto make = [] {
            auto* content = new QLineEdit;
            content->setMinimumSize(320, 120);
            return content;
        };
        const auto caption = [name](base::Language language) {
            return language == base::Language::kChinese
                       ? QStringLiteral("窗口") + QLatin1String(name)
                       : QStringLiteral("Window ") + QLatin1String(name);
        };
        host->add_kind(name, {.make = make, .caption = caption, .frame = kind});
    }

    void apply(base::Language language) {
        const auto variant = dictionary::Variant::kAllItems;
        menus->apply(language, variant);
        list->apply(language, variant);
        tools->apply(language, variant);
        host->apply_language(language, variant);
        area->apply_language(language);
        strip->apply_language(language);
    }

    void show() {
        area->show_picture(dictionary::Variant::kAllItems);
        main.show();
        QApplication::setActiveWindow(&main);
        QApplication::processEvents();
    }

    void open(std::initializer_list<const char*> names) const {
        for (const char* name : names)
            host->show(name);
        QApplication::processEvents();
    }
    ChildWindow* frame(const char* name) const {
        return qobject_cast<ChildWindow*>(host->widget(name)->parentWidget());
    }
    QString active() const {
        QMdiSubWindow* window = area->activeSubWindow();
        return window == nullptr ? QString() : window->widget()->objectName();
    }
    QAction* item(const char* name) const { return menus->action(QLatin1String(name)); }
    void key(Qt::Key key, Qt::KeyboardModifiers held) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus == nullptr ? &main : focus, key, held);
        QApplication::processEvents();
    }
};

}  // namespace servo::app::test
