// The windows on screen: makes the widget of a window when it is first needed, gives it a frame in
// the main window, shows, raises and hides it. Page widgets are dear and most are never opened, so
// none is made before that.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/child_window.h"
#include "app/desk_file.h"
#include "app/window_entries.h"
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
    bool of_the_frame = false;   // none of `all_windows`: its close box asks nobody
    bool roomy = false;          // may have the whole area at first, not only what a cascade leaves
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

    // Where windows stood in an earlier run. A window that is shown for the first time goes there,
    // as far as the frame has that place now; one that is not remembered gets a place of its own.
    void remember(WindowPlaces places) { remembered_ = std::move(places); }

    // Where windows stand now, and those of an earlier run that were not shown in this one.
    WindowPlaces places() const;

    // The windows on screen in the order in which they were opened.
    std::vector<OpenWindow> open_windows() const;

    // Brings an open window to the front, and back from an icon. The poller is not told: it reads
    // all open windows anyway.
    void activate(const std::string& name);
    void activate_next(bool forward);
    void close_active();

    // Pages over each other with every title in view, or side by side. Dialogs and icons stay.
    void cascade();
    void tile();

  Q_SIGNALS:
    void close_asked(const QString& name);
    // A window was shown, hidden or activated.
    void changed();

  private:
    struct Made {
        QWidget* content = nullptr;
        ChildWindow* frame = nullptr;
        bool placed = false;  // has been shown once; later it stands where the user left it
        QSize hint;           // the size that the content wanted when the window was last on screen
    };

    Made* make(const std::string& name);
    void dress(const std::string& name, QWidget& content);
    void place_first(const std::string& name, ChildWindow& frame);
    void show_first(const std::string& name, Made& window);
    void show_again(Made& window);
    bool on_screen(const std::string& name) const;
    std::vector<ChildWindow*> open_pages() const;
    std::vector<Place> taken_corners(const ChildWindow& but) const;
    Size area_size() const;
    int icons_height() const;
    void raise_dialogs();
    void activate_last();
    void tell();

    QMdiArea* area_;
    std::map<std::string, WindowKind> kinds_;
    std::map<std::string, Made> made_;
    base::Language language_ = base::Language::kEnglish;
    dictionary::Variant variant_ = dictionary::Variant::kAllItems;
    WindowPlaces remembered_;
    std::vector<std::string> open_;  // on screen, in the order of their opening
    int dialogs_ = 0;                // that have been placed
};

}  // namespace servo::app
