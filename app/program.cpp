#include "app/program.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QTime>
#include <algorithm>
#include <cstdio>
#include <utility>

#include "app/style.h"
#include "link/communication.h"

namespace servo::app {

namespace {

void complain(const QString& text) {
    std::fprintf(stderr, "servo-workstation: %s\n", text.toLocal8Bit().constData());
}

std::filesystem::path folder_of(const Options& options) {
    if (!options.data.empty()) return options.data;
    return from_qt(QCoreApplication::applicationDirPath());
}

}  // namespace

Program::Program(const Options& options) : options_(options) {
    dictionary_ = std::async(std::launch::async, &Program::read_dictionary, folder_of(options_));
    workstation_ = std::make_unique<Workstation>(surroundings());
    form_ = std::make_unique<MDIForm1>(*workstation_, dialogs_);
    boxes_.set_parent(form_.get());
    timer_.set_tick([this] { workstation_->engine.cTmr_Timer(); });
}

Program::ReadDictionary Program::read_dictionary(const std::filesystem::path& folder) {
    ReadDictionary read;
    read.found = read.store.open_dat(folder);
    // Texts of one record, so that the code page is ready as well.
    if (read.store.count() > 0) read.store.get_record(read.store.row_identity(0));
    return read;
}

Surroundings Program::surroundings() {
    Surroundings given{folder_of(options_), dialogs_, port_, ports_, clock_, timer_};
    given.open_dat = [this](dictionary::Store& store) {
        // A second load, if there should ever be one, reads the file again.
        ReadDictionary read =
            dictionary_.valid() ? dictionary_.get() : read_dictionary(folder_of(options_));
        store = std::move(read.store);
        return read.found;
    };
    given.time_of_day = [] { return from_qt(QTime::currentTime().toString(u"HH:mm:ss")); };
    return given;
}

Program::~Program() {
    timer_.set_enabled(false);
    timer_.set_tick({});
}

bool Program::start() {
    // The simulated drive gets ready while the windows do.
    if (options_.simulate) start_simulator();
    // The fonts are looked up once, at the first text; better while the dictionary is being read.
    QFontMetrics(form_->font()).height();
    if (!MDIForm_Load(*workstation_)) return false;
    MDIForm_Activate(*workstation_);
    // A walkthrough finds the windows where every other one does, and leaves no trace.
    if (options_.walk.empty()) {
        desk_ = std::make_unique<DeskKeeper>(folder_of(options_));
        form_->use_desk(*desk_);
    }
    if (options_.language) language_click(*workstation_, *options_.language);
    form_->show();
    for (const std::string& name : options_.open)
        form_->open_window(to_qt(name));
    return true;
}

bool Program::check_windows() const {
    const auto unknown = std::ranges::find_if(
        options_.open, [this](const std::string& name) { return !form_->has_window(to_qt(name)); });
    if (unknown == options_.open.end()) return true;
    complain(QStringLiteral("there is no window called %1").arg(to_qt(*unknown)));
    return false;
}

void Program::start_simulator() {
    connect(&simulator_, &Simulator::ready, this, [this](const QString& line) {
        simulated_line_ = line;
        if (wants_line_) open_device(line);
    });
    connect(&simulator_, &Simulator::failed, this, [this](const QString& why) {
        simulator_error_ = QStringLiteral("drive-sim could not be started: %1").arg(why);
        complain(simulator_error_);
        if (wants_line_) Q_EMIT settled();
    });
    QStringList arguments;
    if (!options_.data.empty())
        arguments << QStringLiteral("--data") << to_qt(options_.data.string());
    if (options_.baud) arguments << QStringLiteral("--baud") << QString::number(*options_.baud);
    if (options_.id) arguments << QStringLiteral("--id") << QString::number(*options_.id);
    simulator_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/drive-sim"),
                     arguments);
}

void Program::connect_link() {
    ports_.begin();
    workstation_->communication.Command2_Click();
    if (!options_.simulate) {
        if (options_.connect.empty())
            Q_EMIT settled();
        else
            open_device(to_qt(options_.connect));
        return;
    }
    wants_line_ = true;
    if (!simulated_line_.isEmpty())
        open_device(simulated_line_);
    else if (!simulator_error_.isEmpty())
        Q_EMIT settled();
}

void Program::open_device(const QString& device) {
    link::Communication& communication = workstation_->communication;
    const std::string text = names_.give(from_qt(device));
    communication.Command2_Click();  // which now finds it
    if (options_.baud) {
        const std::string rate = std::to_string(*options_.baud);
        const auto* found = std::ranges::find(link::kBaudRates, rate);
        communication.pick_baud(static_cast<int>(found - link::kBaudRates.begin()));
    }
    if (options_.id) communication.type_id(std::to_string(*options_.id));
    if (communication.use_port(text)) communication.communication();
    if (!communication.link_open())
        complain(QStringLiteral("%1 could not be opened (missing, in use by another program, or "
                                "no right to it)")
                     .arg(device));
    Q_EMIT settled();
}

}  // namespace servo::app
