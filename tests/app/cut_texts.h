// Finds texts that do not fit where they stand, controls that lie over each other, and controls
// that their window cuts off: by the metrics of the font against the actual rectangles.
#pragma once

#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QSplitterHandle>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionTitleBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QWidget>
#include <string>
#include <vector>

namespace servo::app::test {

class CutTexts {
  public:
    explicit CutTexts(std::string window) : window_(std::move(window)) {}

    // The window has to be shown and laid out. One line for each fault.
    std::vector<std::string> find(const QWidget& content) {
        look(content);
        return std::move(faults_);
    }

    // The frame's title between its icon and its buttons.
    std::vector<std::string> find_title(const QMdiSubWindow& frame) {
        QStyleOptionTitleBar bar;
        bar.initFrom(&frame);
        const int height = frame.style()->pixelMetric(QStyle::PM_TitleBarHeight, &bar, &frame);
        bar.rect = QRect(0, 0, frame.width(), height);
        bar.titleBarFlags = frame.windowFlags();
        bar.subControls = QStyle::SC_All;
        const QRect label = frame.style()->subControlRect(QStyle::CC_TitleBar, &bar,
                                                          QStyle::SC_TitleBarLabel, &frame);
        const QString title =
            frame.windowTitle().isEmpty() ? frame.widget()->windowTitle() : frame.windowTitle();
        need(frame, "title", title, QFontMetrics(frame.font()).horizontalAdvance(title),
             label.width());
        return std::move(faults_);
    }

  private:
    static std::string name_of(const QWidget& control) {
        const QString name = control.objectName();
        return (name.isEmpty() ? QLatin1String(control.metaObject()->className()) : name)
            .toStdString();
    }

    void fault(const QWidget& control, const std::string& what) {
        faults_.push_back(window_ + "." + name_of(control) + ": " + what);
    }

    void need(const QWidget& control, const char* what, const QString& text, int needed, int room) {
        if (text.isEmpty() || needed <= room) return;
        fault(control, std::string(what) + " \"" + text.toStdString() + "\" needs " +
                           std::to_string(needed) + " and has " + std::to_string(room));
    }

    static int text_width(const QWidget& control, const QString& text) {
        return control.fontMetrics().size(Qt::TextShowMnemonic, text).width();
    }

    // Parts of a control that the toolkit lays out itself.
    static bool closed(const QWidget& control) {
        return qobject_cast<const QAbstractScrollArea*>(&control) != nullptr ||
               qobject_cast<const QComboBox*>(&control) != nullptr ||
               qobject_cast<const QLineEdit*>(&control) != nullptr ||
               qobject_cast<const QTabBar*>(&control) != nullptr;
    }

    void look(const QWidget& parent) {
        std::vector<const QWidget*> shown;
        for (const QObject* child : parent.children()) {
            const auto* control = qobject_cast<const QWidget*>(child);
            if (control == nullptr || !control->isVisible() || control->isWindow()) continue;
            look_at(*control);
            if (!closed(*control)) look(*control);
            if (qobject_cast<const QSplitterHandle*>(control) == nullptr) shown.push_back(control);
        }
        // A tab control's bar and page share their edge.
        if (qobject_cast<const QTabWidget*>(&parent) != nullptr) return;
        look_for_overlaps(parent, shown);
    }

    void look_for_overlaps(const QWidget& parent, const std::vector<const QWidget*>& shown) {
        for (std::size_t i = 0; i < shown.size(); ++i) {
            if (!parent.rect().contains(shown[i]->geometry()))
                fault(*shown[i], "is cut off by " + name_of(parent));
            for (std::size_t j = i + 1; j < shown.size(); ++j)
                if (shown[i]->geometry().intersects(shown[j]->geometry()))
                    fault(*shown[i], "lies over " + name_of(*shown[j]));
        }
    }

    void look_at(const QWidget& control) {
        if (const auto* label = qobject_cast<const QLabel*>(&control))
            look_at_label(*label);
        else if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
            look_at_button(*button);
        else if (const auto* frame = qobject_cast<const QGroupBox*>(&control))
            need(*frame, "title", frame->title(), frame->minimumSizeHint().width(), frame->width());
        else if (const auto* bar = qobject_cast<const QTabBar*>(&control))
            look_at_tabs(*bar);
        else if (const auto* list = qobject_cast<const QComboBox*>(&control))
            look_at_list(*list);
        else if (const auto* line = qobject_cast<const QLineEdit*>(&control))
            need(*line, "placeholder", line->placeholderText(),
                 text_width(*line, line->placeholderText()), line->width() - kLineEditMargins);
        else if (const auto* grid = qobject_cast<const QTableView*>(&control))
            look_at_header(*grid);
        else if (const auto* tools = qobject_cast<const QToolBar*>(&control))
            look_at_tools(*tools);
    }

    void look_at_label(const QLabel& label) {
        if (!label.pixmap(Qt::ReturnByValue).isNull()) return;
        if (label.wordWrap()) {
            need(label, "text", label.text(), label.heightForWidth(label.width()), label.height());
            return;
        }
        need(label, "text", label.text(), label.sizeHint().width(), label.width());
        need(label, "height of", label.text(), label.sizeHint().height(), label.height());
    }

    void look_at_button(const QAbstractButton& button) {
        QStyleOptionButton option;
        option.initFrom(&button);
        auto part = QStyle::SE_PushButtonContents;
        if (qobject_cast<const QCheckBox*>(&button) != nullptr)
            part = QStyle::SE_CheckBoxContents;
        else if (qobject_cast<const QRadioButton*>(&button) != nullptr)
            part = QStyle::SE_RadioButtonContents;
        else if (const auto* tool = qobject_cast<const QToolButton*>(&button);
                 tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly &&
                 !tool->icon().isNull())
            return;
        const QRect room = button.style()->subElementRect(part, &option, &button);
        const int icon = button.icon().isNull() ? 0 : button.iconSize().width() + kIconGap;
        need(button, "text", button.text(), text_width(button, button.text()) + icon, room.width());
        need(button, "height of", button.text(), button.fontMetrics().height(), button.height());
    }

    void look_at_tabs(const QTabBar& bar) {
        for (int i = 0; i < bar.count(); ++i)
            if (bar.isTabVisible(i))
                need(bar, "tab", bar.tabText(i), text_width(bar, bar.tabText(i)) + kTabPadding,
                     bar.tabRect(i).width());
    }

    void look_at_list(const QComboBox& list) {
        QStyleOptionComboBox option;
        option.initFrom(&list);
        option.editable = list.isEditable();
        const QRect room = list.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                        QStyle::SC_ComboBoxEditField, &list);
        need(list, "item", list.currentText(), text_width(list, list.currentText()), room.width());
    }

    void look_at_header(const QTableView& grid) {
        const QHeaderView* header = grid.horizontalHeader();
        if (grid.model() == nullptr || !header->isVisible()) return;
        const int margins =
            2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            if (grid.isColumnHidden(column) || header->sectionSize(column) == 0) continue;
            const QString text =
                grid.model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
            need(grid, "header", text, text_width(*header, text) + margins,
                 header->sectionSize(column));
        }
    }

    void look_at_tools(const QToolBar& tools) {
        const auto* more = tools.findChild<const QWidget*>("qt_toolbar_ext_button");
        if (more != nullptr && more->isVisible()) fault(tools, "has buttons that do not fit");
    }

    static constexpr int kIconGap = 4;
    static constexpr int kTabPadding = 8;
    static constexpr int kLineEditMargins = 8;  // frame and inner margin of both sides

    std::string window_;
    std::vector<std::string> faults_;
};

}  // namespace servo::app::test
