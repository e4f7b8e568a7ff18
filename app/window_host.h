// The windows on screen: makes the widget of a window when it is first needed, gives it a frame in
// the main window, shows, raises and hides it. Page widgets are dear and most are never opened, so
// none is made before that.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <map>
#include <string>

#include "app/child_window.h"
#include "base/language.h"
#include "dictionary/store.h"
#include "link/window.h"

class QMdiArea;

namespace servo::app {

// How one window is made and named.
struct WindowKind {
    std::function<QWidget*()> make;
    std::function<QString(base::Language)> caption;  // none: the widget keeps its own title
    ChildWindow::Kind frame = ChildWindow::Kind::kPage;
    bool designed_font = false;  // keeps its font when the language changes
};

class WindowHost final : public QObject {
    Q_OBJECT

  public:
    explicit WindowHost(QMdiArea* area);

    void add_kind(const std::string& name, WindowKind kind);

    // Whether the program has that window at all.
    bool has(const std::string& name) const { return kinds_.contains(name); }

    // The content widget, made if need be; null for a window that the program does not have.
    QWidget* widget(const std::string& name);

    // The same if it has been made already, else null.
    QWidget* made(const std::string& name) const;

    void show(const std::string& name);
    void hide(const std::string& name);

    // Texts and font of every window that has been made, and of each that will be.
    void apply_language(base::Language language,
                        dictionary::Variant variant = dictionary::Variant::kAllItems);

  Q_SIGNALS:
    void close_asked(const QString& name);

  private:
    struct Made {
        QWidget* content = nullptr;
        ChildWindow* frame = nullptr;
        bool placed = false;  // has been shown once; later it stands where the user left it
    };

    Made* make(const std::string& name);
    void dress(const std::string& name, QWidget& content);
    void place(ChildWindow& frame, ChildWindow::Kind kind);

    QMdiArea* area_;
    std::map<std::string, WindowKind> kinds_;
    std::map<std::string, Made> made_;
    base::Language language_ = base::Language::kEnglish;
    dictionary::Variant variant_ = dictionary::Variant::kAllItems;
    int pages_ = 0;  // that have been placed
    int dialogs_ = 0;
};

}  // namespace servo::app
