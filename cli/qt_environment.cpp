#include "cli/qt_environment.h"

#include <QCoreApplication>
#include <utility>

#include "base/profile_file.h"

namespace servo::cli {
namespace {

constexpr int kLastProbedPort = 35;
constexpr std::size_t kProfileBuffer = 255;

// The port that was opened last by the workstation of that folder.
std::string saved_port(const std::filesystem::path& data) {
    return base::get_profile_string(data / "sys" / "sys.ini", "com", "comid", "", kProfileBuffer);
}

}  // namespace

QtEnvironment::QtEnvironment(std::filesystem::path program_folder,
                             std::function<bool()> interrupted)
    : program_folder_(std::move(program_folder)),
      timer_([this] { engine_.cTmr_Timer(); }),
      session_(engine_, [interrupted = std::move(interrupted)] {
          // The tick comes every 3 ms, so this never waits for long.
          QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
          return !interrupted();
      }) {}

std::vector<link::PortDirectory::Entry> QtEnvironment::ports(const Options& options) {
    if (!options.port.empty()) names_.give(options.port);
    std::vector<link::PortDirectory::Entry> entries;
    return directory_.list(entries) ? entries : probe();
}

std::vector<link::PortDirectory::Entry> QtEnvironment::probe() {
    std::vector<link::PortDirectory::Entry> entries;
    for (int number = 1; number <= kLastProbedPort; ++number) {
        const std::string text = "COM" + std::to_string(number);
        const link::OpenResult result = port_.open(text, 38400);
        port_.close();
        if (result == link::OpenResult::kFailed) continue;  // a busy one is there all the same
        entries.push_back({text, names_.device_of(text).value_or(""), ""});
    }
    return entries;
}

std::string QtEnvironment::start_sim(const Options& options, std::string& error) {
    const QString program = QString::fromStdString((program_folder_ / "drive-sim").string());
    const QString line = sim_.start(
        program, {QStringLiteral("--data"), QString::fromStdString(options.data.string()),
                  QStringLiteral("--baud"), QString::number(options.baud), QStringLiteral("--id"),
                  QString::number(options.id)});
    if (line.isEmpty()) error = sim_.error().toStdString();
    return line.toStdString();
}

std::string QtEnvironment::port_text(const Options& options, std::string& error) {
    if (options.sim) {
        const std::string line = start_sim(options, error);
        return line.empty() ? line : names_.give(line);
    }
    if (options.port.empty()) {
        std::string saved = saved_port(options.data);
        if (saved.empty()) error = "no port is known; name one with --port, or use --sim";
        return saved;
    }
    const bool list_text = names_.device_of(options.port).has_value();
    return list_text ? options.port : names_.give(options.port);
}

OpenedLink QtEnvironment::open_link(const Options& options) {
    OpenedLink opened;
    const std::string text = port_text(options, opened.error);
    if (text.empty()) {
        if (!options.sim) opened.status = ExitStatus::kWrongUse;  // nothing was named
        return opened;
    }
    const std::string shown = options.port.empty() ? text : options.port;
    switch (session_.open(text, options.baud, options.id)) {
        case link::OpenResult::kOpened:
            opened.session = &session_;
            opened.engine = &engine_;
            return opened;
        case link::OpenResult::kBusy:
            opened.error = "the port " + shown + " is in use by another program";
            return opened;
        case link::OpenResult::kFailed:
            opened.error = "the port " + shown + " can't be opened";
            return opened;
    }
    return opened;
}

}  // namespace servo::cli
