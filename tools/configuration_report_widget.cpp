#include "tools/configuration_report_widget.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "tools/configuration_controls_view.h"
#include "tools/configuration_grid_view.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

namespace {
constexpr int kGap = 8;
}

ConfigurationReportWidget::ConfigurationReportWidget(ImExport& form, QWidget* parent)
    : QWidget(parent), form_(form) {
    title_ = new PathLabel("LabelC", this);
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    summary_ = configuration_label(this, "LabelD");
    save_ = configuration_command(this, "CommandI", "保存.../Save...",
                                  "把此表存为文本文件/Keeps this table as a text file");
    close_ = configuration_command(this, "CommandJ", "关闭/Close", "关闭此表/Closes this table");
    connect(save_, &QPushButton::clicked, this, [this] { form_.save_report(); });
    connect(close_, &QPushButton::clicked, this, [this] { form_.close_report(); });
    const auto at = [](auto index) { return static_cast<std::size_t>(index); };
    grid_ = new ConfigurationTable(
        {.rows = [this] { return static_cast<int>(report_.rows.size()); },
         .text = [this, at](
                     int row,
                     int column) { return form::qt(report_.rows[at(row)].cells[at(column)]); },
         .heading = [this, at](int column) { return form::qt(report_.headers[at(column)]); },
         .red = {},
         .warns = [this, at](int row) { return report_.rows[at(row)].warns; },
         .columns = static_cast<int>(kReportColumns)},
        {{.sample = QStringLiteral("DDDDDDDD"), .share = 0},
         {.sample = {}, .share = 4},
         {.sample = {}, .share = 2},
         {.sample = {}, .share = 2},
         {.sample = {}, .share = 6}},
        "MSHFlexGridC", this);
    lay_out();
}

void ConfigurationReportWidget::lay_out() {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(title_);
    texts->addWidget(summary_);
    auto* head = new QHBoxLayout;
    head->setSpacing(kGap);
    head->addLayout(texts, 1);
    head->addWidget(save_, 0, Qt::AlignBottom);
    head->addWidget(close_, 0, Qt::AlignBottom);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(kGap);
    layout->addLayout(head);
    layout->addWidget(grid_, 1);
}

void ConfigurationReportWidget::refresh() {
    report_ = form_.report();
    title_->show_text(report_.title);
    show_note(summary_, {report_.summary, report_.warns});
    grid_->set_note(form_.language() == base::Language::kChinese
                        ? QStringLiteral("没有可列出的行")
                        : QStringLiteral("There is nothing to list"));
    // A comparison has nothing to remark.
    constexpr int kRemark = static_cast<int>(kReportColumns) - 1;
    const bool remarks = std::ranges::any_of(
        report_.rows, [](const auto& row) { return !row.cells.back().empty(); });
    grid_->refresh();
    grid_->show_column(kRemark, remarks);
}

}  // namespace servo::tools
