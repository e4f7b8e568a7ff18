// The main window on a test's workstation, loaded and shown.
#pragma once

#include <QAction>
#include <QApplication>
#include <QTest>

#include "app/mdi_form1.h"
#include "app/user_dialogs.h"
#include "shell_bench.h"

namespace servo::app::test {

// Nobody sits in front of a test.
class NoDialogs final : public UserDialogs {
  public:
    base::Answer show(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::kOk;
    }
    std::optional<std::string> ask_file(const FileRequest&) override { return {}; }
};

struct ShownShell : ShellBench {
    NoDialogs answers;
    DialogSwitch dialogs{answers};
    MDIForm1 form{workstation, dialogs};

    // False when start-up ended the program.
    bool start() {
        if (!MDIForm_Load(workstation)) return false;
        MDIForm_Activate(workstation);
        form.show();
        QApplication::processEvents();
        return true;
    }

    template <typename Control>
    Control* control(const char* window, const char* name) {
        QWidget* content = form.window_widget(QLatin1String(window));
        return content == nullptr ? nullptr : content->findChild<Control*>(QLatin1String(name));
    }
    void menu(const char* item) { form.menu_item(QLatin1String(item))->trigger(); }
    QString caption(const char* window) {
        return form.window_widget(QLatin1String(window))->windowTitle();
    }
    bool on_screen(const char* window) {
        return form.window_widget(QLatin1String(window))->isVisible();
    }
};

}  // namespace servo::app::test
