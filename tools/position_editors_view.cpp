#include "tools/position_editors_view.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QSignalBlocker>

#include "params/grid_model_view.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

namespace {

using params::ListBox;
using params::TextBox;

template <typename Box>
Box* make_box(PositionTable& table, const char* name) {
    auto* box = new Box(table.viewport());
    box->setObjectName(QLatin1String(name));
    box->hide();
    return box;
}

}  // namespace

PositionEditors::PositionEditors(PosFlow& form, Tables tables, QObject* parent)
    : QObject(parent),
      form_(form),
      tables_(tables),
      Combo1_(make_box<ListBox>(tables.steps, "Combo1")),
      Combo2_(make_box<ListBox>(tables.steps, "Combo2")),
      Text2_(make_box<TextBox>(tables.steps, "Text2")),
      Text3_(make_box<TextBox>(tables.registers, "Text3")),
      Text4_(make_box<TextBox>(tables.ramps, "Text4")) {
    for (TextBox* box : {Text2_, Text3_, Text4_})
        connect_text(*box);
    for (ListBox* box : {Combo1_, Combo2_})
        connect_list(*box);
    // The list opens when the button is up again, or the same click would choose from it.
    connect(&tables_.steps, &QTableView::clicked, this, [this] {
        ListBox* box = list_box(form_.editor().box);
        if (box != nullptr && box->isVisible() && !box->view()->isVisible()) box->showPopup();
    });
    fill_lists();
}

void PositionEditors::connect_text(TextBox& box) {
    box.filter = [this, &box](char32_t key) {
        return form_.editor_key(key, box.text().toStdString());
    };
    connect(&box, &TextBox::focus_lost, this, [this, &box] {
        if (!closing_ && text_box(form_.editor().box) == &box) form_.hide_editors();
    });
}

void PositionEditors::connect_list(ListBox& box) {
    box.filter = [this](char32_t key) -> char32_t {
        if (key != U'\x1b') return key;
        form_.hide_editors();
        return 0;
    };
    connect(&box, &ListBox::activated, this, [this](int position) { form_.Combo_Click(position); });
    connect(&box, &ListBox::focus_lost, this, [this, &box] {
        if (!closing_ && list_box(form_.editor().box) == &box) form_.hide_editors();
    });
}

PositionTable& PositionEditors::table_of(PosFlowBox box) {
    if (box == PosFlowBox::kText3) return tables_.registers;
    return box == PosFlowBox::kText4 ? tables_.ramps : tables_.steps;
}

TextBox* PositionEditors::text_box(PosFlowBox box) const {
    switch (box) {
        case PosFlowBox::kText2:
            return Text2_;
        case PosFlowBox::kText3:
            return Text3_;
        case PosFlowBox::kText4:
            return Text4_;
        case PosFlowBox::kNone:
        case PosFlowBox::kCombo1:
        case PosFlowBox::kCombo2:
            return nullptr;
    }
    return nullptr;
}

ListBox* PositionEditors::list_box(PosFlowBox box) const {
    if (box == PosFlowBox::kCombo1) return Combo1_;
    return box == PosFlowBox::kCombo2 ? Combo2_ : nullptr;
}

void PositionEditors::fill_lists() {
    const auto fill = [](ListBox& box, const ListItems& items) {
        const QSignalBlocker quiet(box);
        box.clear();
        for (const std::string_view item : items)
            box.addItem(form::qt(item));
    };
    fill(*Combo1_, kCombo1Items);
    fill(*Combo2_, form_.data().Combo2);
}

void PositionEditors::apply_language() {
    fill_lists();
    const base::Language language = form_.language();
    for (QWidget* box : std::initializer_list<QWidget*>{Combo1_, Combo2_, Text2_, Text3_, Text4_})
        box->setAccessibleName(
            form::qt(base::Text{"单元格内容", "Content of the cell"}.in(language)));
}

void PositionEditors::editor_changed() {
    const PosFlowEditor& state = form_.editor();
    TextBox* text = text_box(state.box);
    ListBox* list = list_box(state.box);
    put_away_others(text != nullptr ? static_cast<QWidget*>(text) : list);
    if (text != nullptr) show_text(*text);
    if (list != nullptr) show_list(*list);
}

void PositionEditors::show_text(TextBox& box) {
    const PosFlowEditor state = form_.editor();
    PositionTable& table = table_of(state.box);
    box.setText(params::shown_text(state.text));
    box.setGeometry(table.cell_rect(state.row, state.column));
    box.show();
    box.selectAll();
    if (!box.hasFocus()) box.setFocus(Qt::OtherFocusReason);
}

void PositionEditors::show_list(ListBox& box) {
    const PosFlowEditor state = form_.editor();
    {
        const QSignalBlocker quiet(box);
        box.hidePopup();
        box.setCurrentIndex(state.selected);
    }
    box.setGeometry(tables_.steps.cell_rect(state.row, state.column));
    box.show();
    box.setFocus(Qt::OtherFocusReason);
}

void PositionEditors::put_away_others(const QWidget* shown) {
    for (QWidget* box : std::initializer_list<QWidget*>{Combo1_, Combo2_, Text2_})
        if (box != shown) put_away(*box, tables_.steps);
    if (Text3_ != shown) put_away(*Text3_, tables_.registers);
    if (Text4_ != shown) put_away(*Text4_, tables_.ramps);
}

// The keyboard goes back to the cell.
void PositionEditors::put_away(QWidget& box, PositionTable& table) {
    if (box.isHidden()) return;
    const QWidget* focus = QApplication::focusWidget();
    const auto* list = qobject_cast<QComboBox*>(&box);
    const bool had_focus =
        focus == nullptr || focus == &box || (list != nullptr && focus == list->view());
    closing_ = true;
    box.hide();
    if (had_focus) table.setFocus(Qt::OtherFocusReason);
    closing_ = false;
}

void PositionEditors::type(const QString& text) {
    TextBox* box = text_box(form_.editor().box);
    if (box == nullptr || text.isEmpty()) return;
    box->clear();
    if (form_.editor_key(static_cast<char32_t>(text.toUcs4().front()), {}) != 0) box->setText(text);
}

}  // namespace servo::tools
