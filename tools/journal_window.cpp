#include "tools/journal_window.h"

#include <fmt/format.h>

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "base/file.h"
#include "tools/configuration_grid_view.h"

namespace servo::tools {

using namespace form;

namespace {

constexpr base::Text kCount{"共 {} 次写入", "Writes: {}"};
constexpr base::Text kShown{"，显示 {} 次", ", shown: {}"};
constexpr base::Text kForgotten{"，更早的 {} 次已不保留", ", older ones not kept: {}"};
constexpr base::Text kEmpty{"本次运行还没有向驱动器写入任何数值",
                            "This run has written nothing to the drive yet"};
constexpr base::Text kNoneFound{"没有写入符合过滤条件", "No write matches the filter"};
constexpr base::Text kFilter{"过滤", "Filter"};
constexpr base::Text kFilterTip{"时间、窗口、对象、名称、数值或结果中含有此文字的行",
                                "Rows with this text in a time, window, object, name, value or "
                                "result"};
constexpr base::Text kNothingToRestore{"没有可以写回的数值：原值未知，或者已经恢复",
                                       "Nothing to write back: the value before is not known, or "
                                       "the drive has it again"};
constexpr base::Text kBlocked{"通信未打开，或正在执行其它任务",
                              "The link is closed, or a job is using it"};
constexpr base::Text kNotSaved{"文件无法写入", "The file could not be written"};

constexpr int kFilterWidth = 240;

}  // namespace

JournalWindow::JournalWindow(WriteJournal& journal, link::Engine& engine, AskJournalFile ask_file,
                             QWidget* parent)
    : QWidget(parent),
      journal_(journal),
      restore_(journal, engine),
      ask_file_(std::move(ask_file)) {
    setObjectName(QStringLiteral("Journal"));
    params::controls::set_tag(this, kJournalCaption);
    make_controls();
    lay_out();
    connect_controls();
    gather_.setSingleShot(true);
    gather_.setInterval(kGatherMs);
    connect(&gather_, &QTimer::timeout, this, &JournalWindow::refresh_now);
    steps_.setInterval(JournalRestore::kStepMilliseconds);
    connect(&steps_, &QTimer::timeout, this, &JournalWindow::step);
    journal_.changed = [this] {
        if (isVisible() && !gather_.isActive()) gather_.start();
    };
    setFocusProxy(filter_);
    apply_language();
}

JournalWindow::~JournalWindow() {
    journal_.changed = nullptr;
    delete grid_;  // it asks this window for its cells to the last
}

void JournalWindow::make_controls() {
    filter_ = new QLineEdit(this);
    filter_->setObjectName(QStringLiteral("Text1"));
    filter_->setClearButtonEnabled(true);
    filter_->setMinimumWidth(kFilterWidth);
    summary_ = make_text(this, QStringLiteral("Label1"));
    grid_ = new ConfigurationTable(
        {.rows = [this] { return static_cast<int>(shown_.size()); },
         .text =
             [this](int row, int column) {
                 const JournalEntry* entry = entry_of(row);
                 return entry == nullptr ? QString() : qt(journal_.cell(*entry, column));
             },
         .heading =
             [this](int column) { return qt(WriteJournal::heading(column, journal_.language())); },
         .red = {},
         .warns =
             [this](int row) {
                 const JournalEntry* entry = entry_of(row);
                 return entry != nullptr && entry->state != JournalEntry::State::kTaken;
             },
         .columns = WriteJournal::kColumns},
        {{.sample = QStringLiteral("00:00:00"), .share = 0},
         {.sample = {}, .share = 5},
         {.sample = QStringLiteral("DDDDDD"), .share = 0},
         {.sample = {}, .share = 6},
         {.sample = QStringLiteral("-2147483648"), .share = 0},
         {.sample = QStringLiteral("-2147483648"), .share = 0},
         {.sample = {}, .share = 6}},
        "MSHFlexGrid1", this);
    note_ = make_text(this, QStringLiteral("Label2"));
    back_selected_ = make_command(this, QStringLiteral("Command1"), "写回所选/Write Back Selected");
    back_all_ = make_command(this, QStringLiteral("Command2"), "写回全部/Write Back All");
    copy_ = make_command(this, QStringLiteral("Command3"), "复制/Copy");
    save_ = make_command(this, QStringLiteral("Command4"), "存为cdi文件.../Save as cdi...");
    clear_ = make_command(this, QStringLiteral("Command5"), "清空/Clear");
    tips_.add(filter_, kFilter, kFilterTip);
    tips_.add(back_selected_, {"把所选各行的原值写回驱动器",
                               "Writes the values before the selected writes to the drive"});
    tips_.add(back_all_, {"把显示的所有对象恢复到本次运行之前的值",
                          "Takes back every write that is shown, each object to its first value"});
    tips_.add(copy_, {"把所选各行（或显示的全部）复制到剪贴板",
                      "Copies the selected rows, or all that are shown"});
    tips_.add(save_, {"把所选各行（或显示的全部）的最后数值存为配置文件",
                      "Keeps the last values of the selected rows, or of all that are shown, as a "
                      "configuration file"});
    tips_.add(clear_, {"清空记录，驱动器不变", "Empties the journal; the drive stays as it is"});
}

void JournalWindow::lay_out() {
    auto* head = new QHBoxLayout;
    head->setSpacing(2 * kGap);
    head->addWidget(filter_, 2);
    head->addWidget(summary_, 3);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kGap);
    buttons->addWidget(back_selected_);
    buttons->addWidget(back_all_);
    buttons->addWidget(note_, 1);
    buttons->addWidget(copy_);
    buttons->addWidget(save_);
    buttons->addWidget(clear_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGap, kGap, kGap, kGap);
    layout->setSpacing(kGap);
    layout->addLayout(head);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
}

void JournalWindow::connect_controls() {
    connect(filter_, &QLineEdit::textChanged, this, &JournalWindow::refresh_now);
    connect(back_selected_, &QPushButton::clicked, this, [this] { write_back(selected()); });
    connect(back_all_, &QPushButton::clicked, this, [this] { write_back(shown_); });
    connect(copy_, &QPushButton::clicked, this, &JournalWindow::copy);
    connect(save_, &QPushButton::clicked, this, &JournalWindow::save);
    connect(clear_, &QPushButton::clicked, this, [this] {
        journal_.clear();
        show_text(note_, {});
        refresh_now();
    });
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &JournalWindow::refresh_controls);
}

// Numbers follow each other without a gap.
const JournalEntry* JournalWindow::entry_of(int row) const {
    const std::size_t number = shown_[static_cast<std::size_t>(row)];
    const auto& entries = journal_.entries();
    if (entries.empty() || number < entries.front().number) return nullptr;
    return &entries[number - entries.front().number];
}

std::vector<std::size_t> JournalWindow::positions(const std::vector<std::size_t>& numbers) const {
    std::vector<std::size_t> found;
    for (const std::size_t number : numbers)
        if (const std::size_t first = journal_.entries().front().number; number >= first)
            found.push_back(number - first);
    return found;
}

std::vector<std::size_t> JournalWindow::selected() const {
    std::vector<std::size_t> chosen;
    for (const QItemSelectionRange& range : grid_->selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            chosen.push_back(shown_.at(static_cast<std::size_t>(row)));
    std::ranges::sort(chosen);
    return chosen;
}

std::vector<std::size_t> JournalWindow::selected_or_all() const {
    std::vector<std::size_t> chosen = selected();
    return chosen.empty() ? shown_ : chosen;
}

// The rows are new, what was looked at stays. Neighbours are one range: with a range for each of
// thousands of rows, drawing them would hold up the drive's line.
void JournalWindow::select_again(const std::vector<std::size_t>& numbers) {
    QItemSelection selection;
    const QAbstractItemModel* model = grid_->model();
    const auto chosen = [&](int row) {
        return std::ranges::binary_search(numbers, shown_[static_cast<std::size_t>(row)]);
    };
    const int rows = numbers.empty() ? 0 : static_cast<int>(shown_.size());
    for (int row = 0; row < rows; ++row) {
        if (!chosen(row)) continue;
        const int first = row;
        while (row + 1 < rows && chosen(row + 1))
            ++row;
        selection.append(QItemSelectionRange(model->index(first, 0),
                                             model->index(row, WriteJournal::kColumns - 1)));
    }
    grid_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

// The newest write is in view until its user looks for another.
void JournalWindow::refresh_now() {
    gather_.stop();
    const std::vector<std::size_t> chosen = selected();
    shown_.clear();
    for (const std::size_t at : journal_.find(filter_->text().toStdString()))
        shown_.push_back(journal_.entries()[at].number);
    grid_->set_note(qt((journal_.entries().empty() ? kEmpty : kNoneFound).in(journal_.language())));
    grid_->refresh();
    select_again(chosen);
    if (!shown_.empty()) grid_->refresh_row(static_cast<int>(shown_.size()) - 1);
    refresh_controls();
}

std::string JournalWindow::summary() const {
    const base::Language language = journal_.language();
    std::string text = fmt::format(fmt::runtime(kCount.in(language)), journal_.entries().size());
    if (!filter_->text().isEmpty())
        text += fmt::format(fmt::runtime(kShown.in(language)), shown_.size());
    if (journal_.forgotten() > 0)
        text += fmt::format(fmt::runtime(kForgotten.in(language)), journal_.forgotten());
    return text;
}

void JournalWindow::refresh_controls() {
    const bool any = !shown_.empty();
    const bool idle = !restore_.running();
    show_text(summary_, summary());
    back_selected_->setEnabled(idle && !selected().empty());
    back_all_->setEnabled(idle && any);
    copy_->setEnabled(any);
    save_->setEnabled(any);
    clear_->setEnabled(idle && !journal_.entries().empty());
}

void JournalWindow::write_back(const std::vector<std::size_t>& numbers) {
    const base::Language language = journal_.language();
    if (restore_.start(positions(numbers))) {
        show_text(note_, restore_.note());
        steps_.start();
    } else {
        show_text(note_, (restore_.blocked() ? kBlocked : kNothingToRestore).in(language));
    }
    refresh_controls();
}

void JournalWindow::step() {
    restore_.step();
    show_text(note_, restore_.note());
    if (restore_.running()) return;
    steps_.stop();
    refresh_now();
}

void JournalWindow::copy() const {
    QGuiApplication::clipboard()->setText(qt(journal_.copy(positions(selected_or_all()))));
}

void JournalWindow::save() {
    const auto file = ask_file_({.save = true, .kind = "cdi", .suffix = "cdi", .suggestion = {}});
    if (!file) return;
    const bool saved = base::write_file(*file, journal_.write_cdi(positions(selected_or_all())));
    show_text(note_,
              saved ? file->filename().string() : std::string(kNotSaved.in(journal_.language())));
}

void JournalWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) apply_language();
    QWidget::changeEvent(event);
}

void JournalWindow::apply_language() {
    const base::Language language = journal_.language();
    setWindowTitle(qt(kJournalCaption.in(language)));
    tips_.apply(language);
    filter_->setPlaceholderText(qt(kFilter.in(language)));
    if (restore_.running() || !restore_.note().empty()) show_text(note_, restore_.note());
    refresh_now();
}

// Esc shows every row again.
void JournalWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !filter_->text().isEmpty())
        filter_->clear();
    else
        QWidget::keyPressEvent(event);
}

void JournalWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh_now();
}

}  // namespace servo::tools
