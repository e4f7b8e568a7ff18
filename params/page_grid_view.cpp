#include "params/page_grid_view.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "params/ui_palette.h"

namespace servo::params {

namespace {

constexpr int kFrame = 1;
constexpr int kDefaultWidth = 860;
constexpr int kLeastRows = 4;  // the header counted
// On a smaller page nothing is fitted: the columns could not be read anyway.
constexpr QSize kSmallest{333, 46};

}  // namespace

PageGridView::PageGridView(PageGrid& grid, QWidget* parent, const QString& suffix)
    : QWidget(parent),
      grid_(grid),
      table_(grid, this),
      model_(grid, this),
      textbox1_(table_.viewport()),
      Combobox1_(table_.viewport()) {
    table_.setObjectName(QStringLiteral("MSHFlexGrid1") + suffix);
    textbox1_.setObjectName(QStringLiteral("textbox1") + suffix);
    Combobox1_.setObjectName(QStringLiteral("Combobox1") + suffix);
    textbox1_.hide();
    Combobox1_.hide();
    table_.setModel(&model_);
    setFocusProxy(&table_);
    connect_editors();
    connect(&table_, &GridTable::popup_asked, this, &PageGridView::popup_asked);
    connect(&table_, &GridTable::scrolled_by_user, this, [this](int top_row) {
        grid_.hide_editors();
        grid_.set_current({top_row, grid_.current().column});
    });
    // The table has a font of its own, which changes with the language.
    connect(&table_, &GridTable::rows_resized, this, [this] {
        place_table();
        updateGeometry();
    });
    grid_.set_observer(this);
    table_.show_current();
    name_controls();
}

PageGridView::~PageGridView() {
    grid_.set_observer(nullptr);
}

void PageGridView::connect_editors() {
    textbox1_.filter = [this](char32_t key) {
        return grid_.editor_key(key, textbox1_.text().toStdString());
    };
    Combobox1_.filter = [this](char32_t key) {
        return grid_.list_key(key, Combobox1_.currentText().toStdString());
    };
    connect(&textbox1_, &TextBox::focus_lost, this,
            [this] { grid_.editor_lost_focus(Editor::kText); });
    connect(&Combobox1_, &ListBox::focus_lost, this,
            [this] { grid_.editor_lost_focus(Editor::kList); });
    connect(&Combobox1_, &ListBox::activated, this,
            [this](int position) { grid_.choose(position); });
    const auto show_list = [this] {
        if (grid_.editor().open == Editor::kList && Combobox1_.isVisible()) Combobox1_.showPopup();
    };
    // The list opens when the button is up again, or the same click would choose from it.
    connect(&table_, &GridTable::left_released, this, show_list);
    connect(&table_, &GridTable::list_asked, this, show_list);
}

int PageGridView::height_for_rows(int rows) const {
    return table_.height_of_rows(rows) + 2 * kFrame;
}

int PageGridView::wanted_height() const {
    return height_for_rows(shown_rows(grid_.rows()));
}

QSize PageGridView::sizeHint() const {
    return {kDefaultWidth, wanted_height()};
}

QSize PageGridView::minimumSizeHint() const {
    const int rows = std::clamp(grid_.rows(), 2, kLeastRows);
    return {table_.readable_width() + 2 * kFrame, height_for_rows(rows)};
}

// No row is cut through at the lower edge; what is left of the height stays free below the frame.
void PageGridView::place_table() {
    QRect inside = rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
    inside.setHeight(table_.whole_height(inside.height()));
    table_.setGeometry(inside);
    update();
}

void PageGridView::resizeEvent(QResizeEvent*) {
    place_table();
    if (width() < kSmallest.width() || height() < kSmallest.height()) return;
    table_.setup_grid();
    grid_.hide_editors();
}

void PageGridView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(QColor(palette::kFrame));
    painter.drawRect(table_.geometry().adjusted(-kFrame, -kFrame, 0, 0));
}

// What a screen reader says. An editor that is open is called after its object.
void PageGridView::name_controls() {
    const base::Language language = grid_.language();
    table_.setAccessibleName(shown_text(base::Text{"参数表", "Parameters"}.in(language)));
    textbox1_.setAccessibleName(shown_text(base::Text{"数值", "Value"}.in(language)));
    Combobox1_.setAccessibleName(shown_text(base::Text{"选择", "Choice"}.in(language)));
}

void PageGridView::name_editor(QWidget& editor, const EditorState& state) {
    const std::string name(grid_.cell(state.row, kName));
    editor.setAccessibleName(shown_text(name + ", " + std::string(grid_.cell(0, state.column))));
}

void PageGridView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) name_controls();
}

void PageGridView::rows_reset() {
    model_.rows_reset();
    place_table();
    table_.show_current();
    updateGeometry();
    Q_EMIT rows_changed();
}

void PageGridView::cell_changed(int row, int column) {
    model_.cell_changed(row, column);
}

void PageGridView::current_changed() {
    table_.show_current();
}

void PageGridView::editor_changed() {
    const EditorState& state = grid_.editor();
    const QRect cell = table_.visualRect(model_.index(state.row - 1, state.column));
    switch (state.open) {
        case Editor::kNone:
            put_away(textbox1_);
            put_away(Combobox1_);
            break;
        case Editor::kText:
            show_text_box(state, cell);
            put_away(Combobox1_);
            break;
        case Editor::kList:
            show_list_box(state, cell);
            put_away(textbox1_);
            break;
    }
}

void PageGridView::show_text_box(const EditorState& state, const QRect& cell) {
    name_editor(textbox1_, state);
    textbox1_.setText(shown_text(state.text));
    textbox1_.setGeometry(cell);
    textbox1_.show();
    textbox1_.selectAll();
    textbox1_.setFocus(Qt::OtherFocusReason);
}

void PageGridView::show_list_box(const EditorState& state, const QRect& cell) {
    {
        const QSignalBlocker quiet(Combobox1_);
        Combobox1_.hidePopup();
        Combobox1_.clear();
        for (const std::string& item : state.items)
            Combobox1_.addItem(shown_text(item));
        Combobox1_.setCurrentIndex(state.selected);
    }
    name_editor(Combobox1_, state);
    Combobox1_.setGeometry(cell);
    Combobox1_.show();
    Combobox1_.setFocus(Qt::OtherFocusReason);
}

void PageGridView::put_away(QWidget& editor) {
    if (editor.isHidden()) return;
    const QWidget* focus = QApplication::focusWidget();
    const bool had_focus = focus == nullptr || focus == &editor || focus == Combobox1_.view();
    editor.hide();
    if (had_focus) table_.setFocus(Qt::OtherFocusReason);
}

}  // namespace servo::params
