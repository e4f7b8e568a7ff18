#include "tools/pos_flow_window.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSplitter>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "params/ui_palette.h"
#include "tools/form_controls_view.h"
#include "tools/position_pictures_widget.h"
#include "tools/position_table_notes.h"
#include "tools/position_tables_widget.h"

namespace servo::tools {

namespace {

constexpr int kGap = 8;
constexpr int kIndexWidth = 52;
constexpr int kProgressWidth = 160;
constexpr int kResultCharacters = 9;
constexpr int kTablesShare = 3;
constexpr int kPicturesShare = 2;
constexpr int kTablesHeight = 280;  // at first
constexpr int kPicturesHeight = 240;

struct Hint {
    const char* name;
    base::Text text;
};
constexpr std::array kHints{
    Hint{"Command1",
         {"从驱动器读取整张位置表；表格先被清空，可撤销。",
          "Reads the whole table from the drive. The grids are cleared first; Undo "
          "brings them back."}},
    Hint{"Command2", {"把整张位置表写入驱动器。", "Writes the whole table to the drive."}},
    Hint{"Command3", {"从 .pft 文件读入表格。", "Reads a .pft file into the grids."}},
    Hint{"Command4", {"把表格保存为 .pft 文件。", "Saves the grids as a .pft file."}},
    Hint{"Command5", {"清空表格；可撤销。", "Clears the grids; Undo brings them back."}},
    Hint{"CommandA", {"撤销上一次修改（Ctrl+Z）。", "Takes the last change back (Ctrl+Z)."}},
    Hint{"Text1", {"正在执行或最后执行的段。", "The step that runs, or ran last."}},
    Hint{"ProgressBar1", {"读写进度。", "Progress of reading or writing."}},
};

std::string_view text_of(std::string_view control) {
    for (const PosFlowText& entry : pos_flow_texts())
        if (entry.control == control) return entry.text;
    return {};
}

}  // namespace

PosFlowWindow::PosFlowWindow(PosFlow& form, QWidget* parent)
    : QWidget(parent), form_(form), watch_(*this, [this] { form_.hide_editors(); }) {
    setObjectName(QStringLiteral("PosFlow"));
    // The backslash marks a window that is polled by its own list.
    setProperty("Tag", form::qt(kPosFlowCaption) + QLatin1Char('\\'));
    setWindowTitle(QStringLiteral("Position Table Mode"));
    lay_out();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &PosFlowWindow::refresh_now);
    form_.set_observer(this);
    apply_language();
}

PosFlowWindow::~PosFlowWindow() {
    form_.set_observer(nullptr);
    gather_.stop();
}

QPushButton* PosFlowWindow::make_command(const char* name, std::function<void()> click) {
    QPushButton* button = form::make_command(this, name, text_of(name));
    connect(button, &QPushButton::clicked, this, [this, click = std::move(click)] {
        form_.hide_editors();
        click();
        refresh_now();
    });
    return button;
}

QWidget* PosFlowWindow::make_commands() {
    Command1_ = make_command("Command1", [this] { form_.Command1_Click(); });
    Command2_ = make_command("Command2", [this] { form_.Command2_Click(); });
    Command3_ = make_command("Command3", [this] { form_.Command3_Click(); });
    Command4_ = make_command("Command4", [this] { form_.Command4_Click(); });
    Command5_ = make_command("Command5", [this] { form_.Command5_Click(); });
    undo_ = form::make_command(this, "CommandA", "撤销/Undo");
    connect(undo_, &QPushButton::clicked, this, [this] {
        form_.undo();
        refresh_now();
    });
    Label1_ = form::make_label(this, "Label1", text_of("Label1"));
    Text1_ = new QLineEdit(this);
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setReadOnly(true);
    Text1_->setFixedWidth(kIndexWidth);
    Text1_->setAlignment(Qt::AlignRight);
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap);
    for (QPushButton* button : {Command1_, Command2_})
        row->addWidget(button);
    row->addSpacing(kGap);
    for (QPushButton* button : {Command3_, Command4_})
        row->addWidget(button);
    row->addSpacing(kGap);
    for (QPushButton* button : {Command5_, undo_})
        row->addWidget(button);
    row->addStretch();
    row->addWidget(Label1_);
    row->addWidget(Text1_);
    return panel;
}

QWidget* PosFlowWindow::make_results() {
    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setRange(0, 100);
    ProgressBar1_->setFixedWidth(kProgressWidth);
    Label3_ = form::make_value(this, "Label3");
    Label4_ = form::make_value(this, "Label4");
    note_ = form::make_value(this, "LabelF");
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QLabel* label : {Label3_, Label4_})
        label->setMinimumWidth(label->fontMetrics().averageCharWidth() * kResultCharacters);
    auto* panel = new QWidget(this);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap);
    row->addWidget(ProgressBar1_);
    row->addWidget(form::make_label(this, "LabelA", "读取：/Read:"));
    row->addWidget(Label3_);
    row->addWidget(form::make_label(this, "LabelB", "写入：/Write:"));
    row->addWidget(Label4_);
    row->addWidget(note_, 1);
    return panel;
}

void PosFlowWindow::lay_out() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kGap, kGap, kGap, kGap);
    column->setSpacing(kGap);
    column->addWidget(make_commands());
    column->addWidget(make_results());
    auto* split = new QSplitter(Qt::Vertical, this);
    tables_ = new PositionTablesWidget(form_, split);
    pictures_ = new PositionPicturesWidget(form_, split);
    split->addWidget(tables_);
    split->addWidget(pictures_);
    split->setStretchFactor(0, kTablesShare);
    split->setStretchFactor(1, kPicturesShare);
    split->setChildrenCollapsible(false);
    split->setSizes({kTablesHeight, kPicturesHeight});
    column->addWidget(split, 1);
    connect(pictures_, &PositionPicturesWidget::step_picked, this, [this](int step) {
        form_.hide_editors();
        form_.select_row(step + 1);
        refresh_now();
    });
}

// --- Changes

void PosFlowWindow::gather() {
    if (isVisible() && !gather_.isActive()) gather_.start();
}

void PosFlowWindow::grids_changed() {
    grids_stale_ = true;
    // Entries and choices come from the boxes and the menu; only a job is worth gathering.
    if (form_.job_running())
        gather();
    else
        refresh_now();
}

void PosFlowWindow::editor_changed() {
    // The cells under a box have to stand where the form says first.
    if (form_.editor().box != PosFlowBox::kNone) refresh_now();
    tables_->editor_changed();
}

void PosFlowWindow::labels_changed() {
    grids_stale_ = grids_stale_ || form_.start_step() != shown_start_;
    gather();
}

void PosFlowWindow::refresh_now() {
    gather_.stop();
    refresh_labels();
    tables_->refresh();
    const bool known = form_.resolution_known();
    if (grids_stale_ || form_.resolution() != shown_resolution_ || known != shown_known_) {
        grids_stale_ = false;
        shown_start_ = form_.start_step();
        shown_resolution_ = form_.resolution();
        shown_known_ = known;
        pictures_->refresh();
    } else {
        pictures_->refresh_steps();
    }
}

void PosFlowWindow::refresh_labels() {
    const PosFlowData& held = form_.data();
    if (Text1_->text() != form::qt(held.Text1)) Text1_->setText(form::qt(held.Text1));
    ProgressBar1_->setValue(static_cast<int>(held.ProgressBar1));
    form::show_text(Label3_, held.Label3);
    form::show_text(Label4_, held.Label4);
    const std::string note = job_note(form_);
    form::show_text(note_, note);
    note_->setToolTip(form::qt(note));
    QPalette colours = note_->palette();
    colours.setColor(QPalette::WindowText,
                     QColor(job_note_warns(form_) ? params::palette::kWarningText
                                                  : params::palette::kMutedText));
    note_->setPalette(colours);
    undo_->setEnabled(form_.can_undo() && !form_.job_running());
}

void PosFlowWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) {
        form_.change_my_language();
        apply_language();
    }
    QWidget::changeEvent(event);
}

void PosFlowWindow::apply_language() {
    const base::Language language = form_.language();
    for (const Hint& hint : kHints) {
        auto* control = findChild<QWidget*>(QLatin1String(hint.name));
        control->setToolTip(form::qt(hint.text.in(language)));
    }
    Text1_->setAccessibleName(form::qt(base::Text{"当前索引", "Current Index"}.in(language)));
    ProgressBar1_->setAccessibleName(form::qt(base::Text{"进度", "Progress"}.in(language)));
    tables_->apply_language();
    pictures_->apply_language();
    grids_stale_ = true;
    refresh_now();
}

void PosFlowWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh_now();
}

}  // namespace servo::tools
