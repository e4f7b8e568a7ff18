#include "app/shell_files.h"

#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include "app/project_grids.h"
#include "app/style.h"
#include "app/workstation.h"

namespace servo::app {

namespace {

std::vector<std::string> local_files(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.push_back(from_qt(url.toLocalFile()));
    return paths;
}

bool exists(const std::string& path) {
    return QFileInfo::exists(to_qt(path));
}

}  // namespace

ShellFiles::ShellFiles(Workstation& workstation, DialogSwitch& dialogs, QMenu& recent_menu,
                       QObject* parent)
    : QObject(parent),
      workstation_(workstation),
      dialogs_(dialogs),
      menu_(recent_menu),
      project_(workstation, dialogs) {
    project_.add_grids(find_tab_grid);
    project_.add_grids(find_ramp_grid);
    project_.add_grids(find_pin_grid);
    project_.add_grids([&dictionary = workstation.dictionary](link::Window& window) {
        return find_modbus_grid(window, dictionary);
    });
    openers_.handle(FileKindId::kProject, [this](const std::string& path) { open_project(path); });
    openers_.handle(FileKindId::kRecording,
                    [this](const std::string& path) { open_recording(path); });
    openers_.handle(FileKindId::kFirmware, [this](const std::string& path) { open_image(path); });
    openers_.handle(FileKindId::kFrequencyResponse,
                    [this](const std::string& path) { open_response(path); });
    openers_.handle(FileKindId::kPositionTable,
                    [this](const std::string& path) { open_table(path); });
    openers_.handle(FileKindId::kConfiguration,
                    [this](const std::string& path) { open_configuration(path); });
    openers_.handle(FileKindId::kConfigurationTemplate,
                    [this](const std::string& path) { open_template(path); });
    connect(&menu_, &QMenu::aboutToShow, this, &ShellFiles::fill_menu);
}

void ShellFiles::new1() {
    project_.new1();
}

void ShellFiles::open1() {
    used(project_.open1());
}

void ShellFiles::save1() {
    used(project_.save1());
}

void ShellFiles::open_project(const std::string& path) {
    used(project_.open1(path));
}

// As the oscilloscope's own import, which is silent about a file that it can't read.
void ShellFiles::open_recording(const std::string& path) {
    open_page(workstation_, workstation_.scope);
    workstation_.scope.Command13_Click(path);
}

// Into the form, where it waits for the button. While a transfer runs the form keeps what it has.
void ShellFiles::open_image(const std::string& path) {
    open_page(workstation_, workstation_.download_rows);
    workstation_.download.load_image(path);
}

void ShellFiles::open_response(const std::string& path) {
    open_page(workstation_, workstation_.tools.tuner);
    workstation_.tools.tuner.Command2_Click(path);
}

void ShellFiles::open_table(const std::string& path) {
    open_page(workstation_, workstation_.tools.pos_flow);
    workstation_.tools.pos_flow.import_file(path);
}

void ShellFiles::open_configuration(const std::string& path) {
    open_page(workstation_, workstation_.tools.configuration);
    workstation_.tools.configuration.show_side(tools::ConfigurationSide::kWrite);
    workstation_.tools.configuration.load_source(path);
}

void ShellFiles::open_template(const std::string& path) {
    open_page(workstation_, workstation_.tools.configuration);
    workstation_.tools.configuration.show_side(tools::ConfigurationSide::kRead);
    workstation_.tools.configuration.load_template(path);
}

void ShellFiles::used(const ProjectResult& result) {
    if (!result.used()) return;
    recent_.add(result.path);
    fill_menu();
}

void ShellFiles::set_recent(const std::vector<std::string>& paths) {
    recent_ = RecentFiles(paths);
    fill_menu();
}

void ShellFiles::apply_language() {
    fill_menu();
}

// Filled anew each time it opens, since files come and go; and when the list changes, since an
// empty menu is not shown at all.
void ShellFiles::fill_menu() {
    const base::Language language = workstation_.language;
    menu_.clear();
    menu_.setTitle(to_qt(kRecentTitle.in(language)));
    menu_.menuAction()->setVisible(!recent_.empty());
    int number = 0;
    for (const RecentEntry& entry : recent_entries(recent_, exists)) {
        QAction* action = menu_.addAction(to_qt(entry.text));
        action->setObjectName(QStringLiteral("recentx(%1)").arg(number++));
        action->setStatusTip(to_qt(entry.path));
        action->setEnabled(entry.enabled);
        connect(
            action, &QAction::triggered, this, [this, path = entry.path] { open_project(path); },
            Qt::QueuedConnection);
    }
    menu_.addSeparator();
    QAction* clear = menu_.addAction(to_qt(kRecentClear.in(language)));
    clear->setObjectName(QStringLiteral("clearrecentx"));
    connect(
        clear, &QAction::triggered, this, [this] { set_recent({}); }, Qt::QueuedConnection);
}

bool ShellFiles::accepts(const QMimeData& dragged) const {
    return openers_.accepts(local_files(dragged));
}

void ShellFiles::open_dropped(const QMimeData& dropped) {
    for (const std::string& path : local_files(dropped)) {
        const FileOpening opening = openers_.open(path);
        if (opening == FileOpening::kOpened) continue;
        dialogs_.show(base::kNoticeTitle.in(workstation_.language),
                      file_opening_text(opening, path, workstation_.language), base::Buttons::kOk);
    }
}

}  // namespace servo::app
