// Everything that a window says, read from its real widgets: captions, tabs, headers, entries of
// lists, hints, and what a screen reader is told.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QWidget>
#include <string>
#include <vector>

namespace servo::app::test {

struct ScreenText {
    std::string place;  // window, control, what of it
    QString text;
    bool operator==(const ScreenText&) const = default;
};

// Reads a window into a list; the same window gives the same places in the same order.
class ScreenTexts {
  public:
    explicit ScreenTexts(std::string window) : window_(std::move(window)) {}

    std::vector<ScreenText> of(const QWidget& content) {
        add("", "caption", content.windowTitle());
        add_hints(content);
        read(content);
        return std::move(texts_);
    }

    // A menu with everything below it.
    void read_menu(const QList<QAction*>& actions) {
        for (const QAction* action : actions) {
            if (action->isSeparator()) continue;
            const std::string name = action->objectName().toStdString();
            add(name, "text", action->text());
            add(name, "status", action->statusTip());
            // The toolkit derives a tip from the text where none is set.
            if (action->menu() != nullptr) read_menu(action->menu()->actions());
        }
    }
    std::vector<ScreenText> take() { return std::move(texts_); }

  private:
    void add(const std::string& control, const char* what, const QString& text) {
        if (!text.isEmpty()) texts_.push_back({window_ + "." + control + "." + what, text});
    }

    // Widgets below the windows of the frame are read with their windows; pop-ups of lists and
    // other parts of a control with the control.
    static bool whole(const QWidget& control) {
        return qobject_cast<const QComboBox*>(&control) != nullptr ||
               qobject_cast<const QTableView*>(&control) != nullptr ||
               qobject_cast<const QTabBar*>(&control) != nullptr ||
               qobject_cast<const QMdiArea*>(&control) != nullptr ||
               qobject_cast<const QMenu*>(&control) != nullptr;
    }

    void read(const QWidget& parent) {
        for (const QObject* child : parent.children()) {
            const auto* control = qobject_cast<const QWidget*>(child);
            if (control == nullptr) continue;
            read_control(*control);
            if (!whole(*control)) read(*control);
        }
    }

    static std::string name_of(const QWidget& control) {
        const QString name = control.objectName();
        return (name.isEmpty() ? QLatin1String(control.metaObject()->className()) : name)
            .toStdString();
    }

    void add_hints(const QWidget& control) {
        const std::string name = name_of(control);
        add(name, "tip", control.toolTip());
        add(name, "status", control.statusTip());
        add(name, "help", control.whatsThis());
        add(name, "name", control.accessibleName());
        add(name, "description", control.accessibleDescription());
    }

    void read_control(const QWidget& control) {
        const std::string name = name_of(control);
        add_hints(control);
        if (const auto* label = qobject_cast<const QLabel*>(&control)) {
            add(name, "text", label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
            add(name, "text", button->text());
        } else if (const auto* frame = qobject_cast<const QGroupBox*>(&control)) {
            add(name, "title", frame->title());
        } else if (const auto* line = qobject_cast<const QLineEdit*>(&control)) {
            add(name, "placeholder", line->placeholderText());
        } else if (const auto* tabs = qobject_cast<const QTabWidget*>(&control)) {
            for (int i = 0; i < tabs->count(); ++i)
                add(name, "tab", tabs->tabText(i));
        } else if (const auto* list = qobject_cast<const QComboBox*>(&control)) {
            add(name, "placeholder", list->placeholderText());
            for (int i = 0; i < list->count(); ++i)
                add(name, "item", list->itemText(i));
        } else if (const auto* grid = qobject_cast<const QTableView*>(&control)) {
            read_header(name, *grid);
        }
    }

    void read_header(const std::string& name, const QTableView& grid) {
        if (grid.model() == nullptr) return;
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            if (grid.isColumnHidden(column)) continue;
            add(name, "header",
                grid.model()
                    ->headerData(column, Qt::Horizontal, Qt::DisplayRole)
                    .toString()
                    .trimmed());
        }
    }

    std::string window_;
    std::vector<ScreenText> texts_;
};

}  // namespace servo::app::test
