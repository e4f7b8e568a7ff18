#include "tools/position_pictures_widget.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "params/grid_model_view.h"
#include "params/ui_palette.h"
#include "tools/form_controls_view.h"
#include "tools/position_table_notes.h"

namespace servo::tools {

namespace {

constexpr int kGap = 6;
constexpr int kPicturesShare = 7;
constexpr int kFindingsShare = 3;
constexpr int kFindingsWidth = 230;

}  // namespace

PositionPicturesWidget::PositionPicturesWidget(PosFlow& form, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent), form_(form), tabs_(new QTabWidget(this)) {
    tabs_->setObjectName(QStringLiteral("SSTabA"));
    tabs_->setProperty("Tag", QStringLiteral("流程/Flow|运动/Motion"));
    tabs_->addTab(make_flow(), QStringLiteral("Flow"));
    tabs_->addTab(make_motion(), QStringLiteral("Motion"));
    tabs_->setCornerWidget(make_corner());
    tabs_->setDocumentMode(true);
    addWidget(tabs_);
    addWidget(make_findings());
    setStretchFactor(0, kPicturesShare);
    setStretchFactor(1, kFindingsShare);
    setChildrenCollapsible(false);
    for (auto* widget : {static_cast<QWidget*>(flow_), static_cast<QWidget*>(motion_)})
        widget->setMinimumWidth(200);
    connect(flow_, &PositionFlowWidget::step_picked, this, &PositionPicturesWidget::step_picked);
    connect(motion_, &PositionMotionWidget::step_picked, this,
            &PositionPicturesWidget::step_picked);
}

QWidget* PositionPicturesWidget::make_corner() {
    auto* corner = new QWidget(this);
    auto* row = new QHBoxLayout(corner);
    row->setContentsMargins(0, 0, 0, 2);
    row->setSpacing(kGap);
    start_label_ = form::make_label(corner, "LabelC", "起始段/Start at step");
    start_ = new QComboBox(corner);
    start_->setObjectName(QStringLiteral("ComboA"));
    for (int step = 0; step < kPositionSteps; ++step)
        start_->addItem(QString::number(step));
    connect(start_, &QComboBox::activated, this, [this](int step) { form_.set_start_step(step); });
    start_label_->setBuddy(start_);
    row->addWidget(start_label_);
    row->addWidget(start_);
    return corner;
}

QWidget* PositionPicturesWidget::make_flow() {
    flow_room_ = new QScrollArea(tabs_);
    flow_room_->setWidgetResizable(true);
    flow_room_->setFrameShape(QFrame::StyledPanel);
    flow_ = new PositionFlowWidget(flow_room_);
    flow_room_->setWidget(flow_);
    flow_room_->setFocusPolicy(Qt::NoFocus);
    return flow_room_;
}

QWidget* PositionPicturesWidget::make_motion() {
    auto* page = new QWidget(tabs_);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    motion_ = new PositionMotionWidget(page);
    motion_label_ = form::make_value(page, "LabelD");
    motion_label_->setWordWrap(true);
    column->addWidget(motion_, 1);
    column->addWidget(motion_label_);
    // The line below tells the moment under the mouse, and the whole otherwise.
    connect(motion_, &PositionMotionWidget::reading_changed, this,
            &PositionPicturesWidget::show_motion_note);
    return page;
}

QWidget* PositionPicturesWidget::make_findings() {
    auto* side = new QWidget(this);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(kGap, 2, 0, 0);
    column->setSpacing(kGap);
    findings_label_ = form::make_value(side, "LabelE");
    QFont bold = findings_label_->font();
    bold.setBold(true);
    findings_label_->setFont(bold);
    findings_ = new QListWidget(side);
    findings_->setObjectName(QStringLiteral("ListA"));
    findings_->setWordWrap(true);
    findings_->setTextElideMode(Qt::ElideNone);
    findings_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    findings_->setMinimumWidth(kFindingsWidth);
    findings_->setUniformItemSizes(false);
    column->addWidget(findings_label_);
    column->addWidget(findings_, 1);
    const auto pick = [this](const QListWidgetItem* item) {
        if (item == nullptr) return;
        if (const int step = item->data(Qt::UserRole).toInt(); step >= 0) Q_EMIT step_picked(step);
    };
    connect(findings_, &QListWidget::itemClicked, this, pick);
    connect(findings_, &QListWidget::itemActivated, this, pick);
    return side;
}

void PositionPicturesWidget::show_motion_note() {
    const std::string reading = motion_->reading();
    form::show_text(motion_label_, reading.empty() ? motion_note(form_, picture_.motion) : reading);
}

void PositionPicturesWidget::refresh() {
    picture_ = form_.picture();
    flow_->show_flow(picture_, form_.language());
    motion_->show_motion(picture_.motion, form_.resolution(), form_.language());
    show_motion_note();
    show_findings();
    {
        const QSignalBlocker quiet(start_);
        start_->setCurrentIndex(form_.start_step());
    }
    refresh_steps();
}

void PositionPicturesWidget::refresh_steps() {
    const int selected = form_.data().selected_row - 1;
    flow_->show_steps(selected, form_.running_step());
    motion_->show_step(selected);
}

void PositionPicturesWidget::show_findings() {
    const base::Language language = form_.language();
    form::show_text(findings_label_, findings_note(picture_.findings, language));
    const QSignalBlocker quiet(findings_);
    const int row = findings_->currentRow();
    findings_->clear();
    for (const Finding& finding : picture_.findings) {
        const QString text = form::qt(severity_word(finding.severity, language)) +
                             QLatin1String("  ") + form::qt(finding_text(finding, language));
        auto* item = new QListWidgetItem(text, findings_);
        item->setData(Qt::UserRole, finding.step);
        if (finding.severity == Severity::kFault)
            item->setForeground(QColor(params::palette::kWarningText));
    }
    if (row < findings_->count()) findings_->setCurrentRow(row);
}

void PositionPicturesWidget::apply_language() {
    const base::Language language = form_.language();
    QString assumptions;
    for (const base::Text& text : motion_assumptions())
        assumptions += form::qt(text.in(language)) + QLatin1Char('\n');
    motion_->setToolTip(params::plain_tool_tip(assumptions.trimmed())
                            .replace(QLatin1Char('\n'), QLatin1String("<br>")));
    start_->setAccessibleName(form::qt(base::Text{"起始段", "Start at step"}.in(language)));
    start_->setToolTip(form::qt(base::Text{"流程图和运动图从哪一段开始；不写入驱动器。",
                                           "Where flow and motion begin; nothing is written."}
                                    .in(language)));
    findings_->setAccessibleName(form::qt(base::Text{"检查结果", "Findings"}.in(language)));
    refresh();
}

}  // namespace servo::tools
