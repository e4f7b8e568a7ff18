#include "tools/configuration_tab_widget.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "tools/configuration_controls_view.h"
#include "tools/configuration_grid_view.h"
#include "tools/configuration_notes.h"
#include "tools/digital_io_controls_view.h"
#include "tools/form_controls_view.h"

namespace servo::tools {

namespace {

constexpr int kGap = 8;
constexpr int kCommandWidth = 188;
constexpr std::string_view kWriteCaption = "写入数据/Write to Controller";
constexpr std::string_view kReadCaption = "读出数据/Read from Controller";

// A column of a grid: its heading, and the row's text. The first counts the rows and has none.
template <typename Row>
struct CellColumn {
    const char* heading = "";
    std::string Row::*text = nullptr;
};

constexpr std::array kSourceColumns{CellColumn<SourceRow>{"N", nullptr},
                                    CellColumn<SourceRow>{"Index", &SourceRow::Index},
                                    CellColumn<SourceRow>{"Source Value", &SourceRow::Source_Value},
                                    CellColumn<SourceRow>{"Check Value", &SourceRow::Check_Value},
                                    CellColumn<SourceRow>{"Result", &SourceRow::Result},
                                    CellColumn<SourceRow>{"Name", &SourceRow::name_ch},
                                    CellColumn<SourceRow>{"Name", &SourceRow::name_en}};
constexpr std::array kDriverColumns{CellColumn<DriverRow>{"N", nullptr},
                                    CellColumn<DriverRow>{"Index", &DriverRow::Index},
                                    CellColumn<DriverRow>{"Driver Value", &DriverRow::Driver_Value},
                                    CellColumn<DriverRow>{"Result", &DriverRow::Result},
                                    CellColumn<DriverRow>{"Name", &DriverRow::name_ch},
                                    CellColumn<DriverRow>{"Name", &DriverRow::name_en}};

// Both outlive the grid.
template <typename Row, std::size_t Columns>
ConfigurationCells cells_of(const std::vector<Row>& rows,
                            const std::array<CellColumn<Row>, Columns>& columns) {
    return {.rows = [&rows] { return static_cast<int>(rows.size()); },
            .text =
                [&rows, &columns](int row, int column) {
                    const auto text = columns.at(static_cast<std::size_t>(column)).text;
                    return text == nullptr ? QString::number(row)
                                           : form::qt(rows[static_cast<std::size_t>(row)].*text);
                },
            .heading =
                [&columns](int column) {
                    return QLatin1String(columns.at(static_cast<std::size_t>(column)).heading);
                },
            .red = {},
            .warns = {},
            .columns = static_cast<int>(Columns)};
}

ConfigurationCells source_cells(const ImExport& form) {
    const std::vector<SourceRow>& rows = form.data().source;
    ConfigurationCells cells = cells_of(rows, kSourceColumns);
    cells.red = [&rows](int row) { return rows[static_cast<std::size_t>(row)].red; };
    return cells;
}

// A value of 32 bits with its sign, and the widest word of a result.
const QString kValue = QStringLiteral("-2147483648");

}  // namespace

ConfigurationTabWidget::ConfigurationTabWidget(ImExport& form, ConfigurationSide side,
                                               QWidget* parent)
    : QWidget(parent), form_(form), side_(side) {
    const bool write = side == ConfigurationSide::kWrite;
    path_ = new PathLabel(write ? "Label2" : "Label8", this);
    file_ = configuration_label(this, write ? "LabelE" : "LabelF");
    file_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    io_quiet(file_, true);
    if (write)
        make_write_commands();
    else
        make_read_commands();
    make_grid();
    note_ = configuration_label(this, write ? "LabelA" : "LabelB");
    bar_ = configuration_bar(this, write ? "ProgressBar1" : "ProgressBar2");
    lay_out();
}

QPushButton* ConfigurationTabWidget::command(const char* name, std::string_view pair,
                                             std::string_view tip, std::function<void()> click) {
    QPushButton* button = configuration_command(this, name, pair, tip);
    connect(button, &QPushButton::clicked, this, std::move(click));
    return button;
}

void ConfigurationTabWidget::make_write_commands() {
    choose_ =
        command("Command1", "选择cdi文件/Choose cdi File", {}, [this] { form_.Command1_Click(); });
    QPushButton* dry = command(
        "CommandB", "试运行/Dry Run",
        "读驱动器，列出写入将改变的内容和有疑问的行；不写入/Reads the drive and tells what a write "
        "would change, and which rows are doubtful. Nothing is written",
        [this] { form_.dry_run(); });
    QPushButton* drive = command(
        "CommandC", "与驱动器比较/Compare with Drive",
        "读驱动器，列出与文件不同的对象/Reads the drive and lists what differs from the file",
        [this] { form_.compare_with_drive(); });
    QPushButton* file = command("CommandD", "与文件比较.../Compare with File...",
                                "列出两个文件不同的对象/Lists what differs between two files",
                                [this] { form_.compare_with_file(side_); });
    start_ = command("Command2", "-", {}, [this] { form_.Command2_Click(); });
    stop_ = command("CommandA", "停止/Stop",
                    "结束正在进行的读写；已写入的行保留/Ends what runs; rows that are written stay "
                    "written",
                    [this] { form_.stop(); });
    failed_ = command("CommandE", "失败的行/Failed Rows",
                      "列出未成功的行和驱动器的原因/Lists the rows without success, with the "
                      "drive's reason",
                      [this] { form_.show_failures(side_); });
    QPushButton* store = command("Command3", "存储数据到EEPROM/Store Data to EEPROM",
                                 "使已写入的数值断电后保留/Keeps what is written over a power-off",
                                 [this] { form_.Command3_Click(); });
    QPushButton* restart = command("Command4", "重启/Reboot",
                                   "重新启动驱动器；请先停止电机/Restarts the drive; stop the "
                                   "motor first",
                                   [this] { form_.Command4_Click(); });
    told_ = {choose_, start_, store, restart};
    additions_ = {dry, drive, file};
    groups_ = {choose_, dry, start_, store};
}

void ConfigurationTabWidget::make_read_commands() {
    choose_ = command("Command8", "选择cdo模板/Choose cdo Template", {},
                      [this] { form_.Command8_Click(); });
    start_ = command("Command7", "-", {}, [this] { form_.Command7_Click(); });
    stop_ = command("CommandF", "停止/Stop", "结束正在进行的读取/Ends the reading that runs",
                    [this] { form_.stop(); });
    failed_ = command("CommandH", "失败的行/Failed Rows",
                      "列出未读出的行和驱动器的原因/Lists the rows without success, with the "
                      "drive's reason",
                      [this] { form_.show_failures(side_); });
    QPushButton* save = command("Command6", "导出为cdi文件/Export as cdi File", {},
                                [this] { form_.Command6_Click(); });
    QPushButton* file =
        command("CommandG", "与文件比较.../Compare with File...",
                "列出读出的数值与文件的不同/Lists what differs between what was read and a "
                "file",
                [this] { form_.compare_with_file(side_); });
    told_ = {choose_, start_, save};
    additions_ = {file};
    groups_ = {choose_, start_, save};
}

void ConfigurationTabWidget::make_grid() {
    const ConfigurationColumn number{.sample = QStringLiteral("88888"), .share = 0};
    const ConfigurationColumn index{.sample = QStringLiteral("DDDDDDDD"), .share = 0};
    const ConfigurationColumn value{.sample = kValue, .share = 0};
    const ConfigurationColumn result{.sample = QStringLiteral("Invalid"), .share = 0};
    const ConfigurationColumn name{.sample = {}, .share = 1};
    grid_ = side_ == ConfigurationSide::kWrite
                ? new ConfigurationTable(source_cells(form_),
                                         {number, index, value, value, result, name, name},
                                         "MSHFlexGridA", this)
                : new ConfigurationTable(cells_of(form_.data().driver, kDriverColumns),
                                         {number, index, value, result, name, name}, "MSHFlexGridB",
                                         this);
}

// The commands stand beside the grid in the order in which they are used.
void ConfigurationTabWidget::lay_out() {
    auto* status = new QHBoxLayout;
    status->setSpacing(kGap);
    status->addWidget(bar_);
    status->addWidget(note_, 1);
    auto* left = new QVBoxLayout;
    left->setSpacing(kGap);
    auto* files = new QHBoxLayout;
    files->setSpacing(kGap);
    files->addWidget(path_, 3);
    files->addWidget(file_, 2);
    left->addLayout(files);
    left->addWidget(grid_, 1);
    left->addLayout(status);
    auto* right = new QVBoxLayout;
    right->setSpacing(kGap - 2);
    for (QPushButton* button : findChildren<QPushButton*>(Qt::FindDirectChildrenOnly)) {
        const bool begins = std::ranges::find(groups_, button) != groups_.end();
        if (begins && button != groups_.front()) add_divider(right, this);
        button->setMinimumWidth(kCommandWidth);
        right->addWidget(button);
    }
    right->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(kGap);
    layout->addLayout(left, 1);
    layout->addLayout(right);
}

bool ConfigurationTabWidget::busy() const {
    const ConfigurationTransfer& job = form_.job();
    return side_ == ConfigurationSide::kWrite ? job.writing() || job.surveying() : job.reading();
}

bool ConfigurationTabWidget::has_failures() const {
    const auto bad = [](const auto& row) {
        return row.Result == kFalseWord || row.Result == kInvalidWord;
    };
    return side_ == ConfigurationSide::kWrite ? std::ranges::any_of(form_.data().source, bad)
                                              : std::ranges::any_of(form_.data().driver, bad);
}

void ConfigurationTabWidget::refresh() {
    if (busy() && !was_busy_) grid_->follow();
    was_busy_ = busy();
    grid_->refresh();
    const bool free = !form_.locked() && !form_.running();
    for (QPushButton* button : told_)
        button->setEnabled(!form_.locked());
    for (QPushButton* button : additions_)
        button->setEnabled(free);
    failed_->setEnabled(free && has_failures());
    stop_->setEnabled(busy());
    refresh_controls();
}

void ConfigurationTabWidget::refresh_row(int row) {
    grid_->refresh_row(row);
    refresh_controls();
}

void ConfigurationTabWidget::refresh_controls() {
    const bool write = side_ == ConfigurationSide::kWrite;
    const ConfigurationData& held = form_.data();
    path_->show_text(write ? form_.Label2() : form_.Label8());
    const int percent = write ? held.ProgressBar1 : held.ProgressBar2;
    // The result takes the place of the path.
    const auto& file = write ? form_.source_file() : form_.template_file();
    const auto name = file.filename().u8string();
    const bool shown = (write ? held.write_count : held.read_count).all > 0;
    file_->setText(shown ? form::qt({reinterpret_cast<const char*>(name.data()), name.size()})
                         : QString());
    if (bar_->value() != percent) bar_->setValue(percent);
    show_note(note_, configuration_note(form_, side_));
}

void ConfigurationTabWidget::apply_language(base::Language language) {
    const bool write = side_ == ConfigurationSide::kWrite;
    show_designed_caption(start_, write ? kWriteCaption : kReadCaption, language);
    const int chinese = write ? 5 : 4;
    const bool is_chinese = language == base::Language::kChinese;
    grid_->show_column(chinese, is_chinese);
    grid_->show_column(chinese + 1, !is_chinese);
    constexpr base::Text kNoFile{"未选择 cdi 文件", "No cdi file is chosen"};
    constexpr base::Text kNoTemplate{"未选择 cdo 模板", "No cdo template is chosen"};
    grid_->set_note(form::qt((write ? kNoFile : kNoTemplate).in(language)));
}

}  // namespace servo::tools
