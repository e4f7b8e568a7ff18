#include "tools/position_tables_widget.h"

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QKeySequence>

#include "params/grid_model_view.h"
#include "tools/form_controls_view.h"
#include "tools/position_table_entry.h"

namespace servo::tools {

namespace {

constexpr int kGap = 8;
constexpr int kLeastSteps = 5;  // rows that are always seen, the heading counted

PositionTable* make_steps(PosFlow& form, QWidget* parent) {
    const auto look = [](int, int column) {
        return step_editor(column) == StepEditor::kNone ? CellLook::kFixed : CellLook::kEditable;
    };
    GridContent content{
        .rows = StepGrid::kRows,
        .columns = StepGrid::kColumns,
        .text =
            [&form](int row, int column) {
                return params::shown_text(form.data().grids.MSHFlexGrid2.at(row, column));
            },
        .look = look,
        .number =
            [](int column) {
                return column != step_column::kMode && column != step_column::kStartCond;
            },
        .marked = [&form](int row) { return row > 0 && row - 1 == form.running_step(); }};
    // As wide as what is usual: the longest numbers are in the tool tips of the flow.
    return new PositionTable(std::move(content),
                             {"31", "RA", "Interrupt", "-10000000", "-3000.00", "65535", "7", "7",
                              "FFFF", "65535", "65535"},
                             "MSHFlexGrid2", parent);
}

PositionTable* make_ramps(PosFlow& form, QWidget* parent) {
    GridContent content{
        .rows = RampGrid::kRows,
        .columns = RampGrid::kColumns,
        .text =
            [&form](int row, int column) {
                return params::shown_text(form.data().grids.MSHFlexGrid1.at(row, column));
            },
        .look =
            [](int, int column) {
                return column == ramp_column::kIndex ? CellLook::kFixed : CellLook::kEditable;
            },
        .number = [](int) { return true; },
        .marked = {}};
    return new PositionTable(std::move(content), {"7", "10000.00", "10000.00"}, "MSHFlexGrid1",
                             parent);
}

PositionTable* make_register(PosFlow& form, QWidget* parent) {
    GridContent content{
        .rows = RegisterGrid::kRows,
        .columns = RegisterGrid::kColumns,
        .header = false,
        .text =
            [&form](int row, int column) {
                return params::shown_text(form.data().grids.MSHFlexGrid3.at(row, column));
            },
        .look =
            [](int row, int) {
                return row == register_row::kValues ? CellLook::kEditable : CellLook::kHeading;
            },
        .number = {},
        .marked = {}};
    auto* table = new PositionTable(std::move(content), {}, "MSHFlexGrid3", parent);
    table->setSpan(register_row::kHeading, 0, 1, kRegisterColumns);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->set_least_rows(RegisterGrid::kRows);
    table->setFixedHeight(table->height_of_rows(RegisterGrid::kRows));
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return table;
}

}  // namespace

PositionTablesWidget::PositionTablesWidget(PosFlow& form, QWidget* parent)
    : QWidget(parent),
      form_(form),
      MSHFlexGrid2_(make_steps(form, this)),
      MSHFlexGrid1_(make_ramps(form, this)),
      MSHFlexGrid3_(make_register(form, this)),
      editors_(form, {*MSHFlexGrid1_, *MSHFlexGrid2_, *MSHFlexGrid3_}, this) {
    MSHFlexGrid2_->set_least_rows(kLeastSteps);
    MSHFlexGrid1_->set_least_rows(kLeastSteps);
    MSHFlexGrid1_->setSelectionMode(QAbstractItemView::SingleSelection);
    MSHFlexGrid1_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    lay_out();
    connect_tables();
    make_menu();
}

void PositionTablesWidget::lay_out() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(kGap);
    grid->addWidget(MSHFlexGrid2_, 0, 0);
    grid->addWidget(MSHFlexGrid1_, 0, 1);
    grid->addWidget(MSHFlexGrid3_, 1, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
}

void PositionTablesWidget::connect_tables() {
    connect(MSHFlexGrid2_, &PositionTable::cell_clicked, this,
            [this](int row, int column) { form_.MSHFlexGrid2_Click(row, column); });
    connect(MSHFlexGrid1_, &PositionTable::cell_clicked, this,
            [this](int row, int column) { form_.MSHFlexGrid1_Click(row, column); });
    connect(MSHFlexGrid3_, &PositionTable::cell_clicked, this,
            [this](int row, int column) { form_.MSHFlexGrid3_Click(row, column); });
    for (PositionTable* table : {MSHFlexGrid1_, MSHFlexGrid2_, MSHFlexGrid3_}) {
        connect(table, &PositionTable::cell_typed, this, &PositionTablesWidget::type);
        connect(table, &PositionTable::selection_dragged, this, [this] { form_.hide_editors(); });
        connect(table, &PositionTable::scrolled_by_user, this, [this] { form_.hide_editors(); });
    }
    connect(MSHFlexGrid2_, &PositionTable::row_reached, this,
            [this](int row) { form_.select_row(row); });
    connect(MSHFlexGrid2_, &PositionTable::popup_asked, this, &PositionTablesWidget::show_menu);
}

void PositionTablesWidget::type(int row, int column, const QString& text) {
    if (sender() == MSHFlexGrid1_)
        form_.MSHFlexGrid1_Click(row, column);
    else if (sender() == MSHFlexGrid3_)
        form_.MSHFlexGrid3_Click(row, column);
    else if (step_editor(column) == StepEditor::kText)
        form_.MSHFlexGrid2_Click(row, column);
    editors_.type(text);
}

// --- Rows

QAction* PositionTablesWidget::add_command(const char* name, base::Text text,
                                           const QKeySequence& keys,
                                           void (PositionTablesWidget::*act)()) {
    QAction* action = menu_.addAction(form::qt(text.english));
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, act);
    MSHFlexGrid2_->addAction(action);
    commands_.push_back({action, text});
    return action;
}

void PositionTablesWidget::make_menu() {
    menu_.setObjectName(QStringLiteral("xpop"));
    add_command("copyline", {"复制行", "Copy Row"}, QKeySequence::Copy,
                &PositionTablesWidget::copy);
    add_command("pasteline", {"粘贴行", "Paste Row"}, QKeySequence::Paste,
                &PositionTablesWidget::paste);
    menu_.addSeparator();
    fill_ = add_command("fillline", {"向下填充", "Fill Down"}, QKeySequence(Qt::CTRL | Qt::Key_D),
                        &PositionTablesWidget::fill_down);
    add_command("clearline", {"清空行", "Clear Row"}, QKeySequence(Qt::CTRL | Qt::Key_Delete),
                &PositionTablesWidget::clear_rows);
    menu_.addSeparator();
    undo_ =
        add_command("undoline", {"撤销", "Undo"}, QKeySequence::Undo, &PositionTablesWidget::undo);
}

void PositionTablesWidget::show_menu(const QPoint& place) {
    form_.hide_editors();
    fill_->setEnabled(MSHFlexGrid2_->selected_last() > MSHFlexGrid2_->selected_first());
    menu_.popup(place);
}

void PositionTablesWidget::copy() {
    const std::string text =
        form_.copy_rows(MSHFlexGrid2_->selected_first(), MSHFlexGrid2_->selected_last());
    QApplication::clipboard()->setText(form::qt(text));
}

// What another program has put there is as good as an own copy.
void PositionTablesWidget::paste() {
    const QString text = QApplication::clipboard()->text();
    if (text.isEmpty())
        form_.pasteline();
    else
        form_.paste_rows(MSHFlexGrid2_->selected_first(), text.toStdString());
}

void PositionTablesWidget::fill_down() {
    form_.fill_down(MSHFlexGrid2_->selected_first(), MSHFlexGrid2_->selected_last(),
                    MSHFlexGrid2_->current_column());
}

void PositionTablesWidget::clear_rows() {
    form_.clear_rows(MSHFlexGrid2_->selected_first(), MSHFlexGrid2_->selected_last());
}

// --- Shown

void PositionTablesWidget::refresh() {
    for (PositionTable* table : {MSHFlexGrid1_, MSHFlexGrid2_, MSHFlexGrid3_})
        table->refresh();
    undo_->setEnabled(form_.can_undo() && !form_.job_running());
    // Only a selection that has moved: a range of rows must not fall together at each refresh.
    if (shown_row_ == form_.data().selected_row) return;
    shown_row_ = form_.data().selected_row;
    const bool inside = shown_row_ >= MSHFlexGrid2_->selected_first() &&
                        shown_row_ <= MSHFlexGrid2_->selected_last();
    if (!inside) MSHFlexGrid2_->show_row(shown_row_);
}

void PositionTablesWidget::apply_language() {
    const base::Language language = form_.language();
    for (const auto& [action, text] : commands_)
        action->setText(form::qt(text.in(language)));
    MSHFlexGrid1_->setAccessibleName(
        form::qt(base::Text{"加速度和减速度", "Accelerations and decelerations"}.in(language)));
    MSHFlexGrid2_->setAccessibleName(form::qt(base::Text{"位置表各段", "Steps"}.in(language)));
    MSHFlexGrid3_->setAccessibleName(
        form::qt(base::Text{"所选段的控制寄存器", "Register of the selected step"}.in(language)));
    MSHFlexGrid3_->setFixedHeight(MSHFlexGrid3_->height_of_rows(RegisterGrid::kRows));
    editors_.apply_language();
    for (PositionTable* table : {MSHFlexGrid1_, MSHFlexGrid2_, MSHFlexGrid3_}) {
        QEvent changed(QEvent::LanguageChange);
        QApplication::sendEvent(table, &changed);
    }
}

}  // namespace servo::tools
