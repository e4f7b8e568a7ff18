#include "tools/configuration.h"

#include <chrono>
#include <utility>

#include "base/file.h"
#include "tools/drive_commands.h"

namespace servo::tools {

namespace {

constexpr base::Text kNoSource{"cdi文件未选择!", "Did not chose any cdi file!"};
constexpr base::Text kNoTemplate{"cdo文件未选择!", "Did not chose any cdo file!"};
constexpr base::Text kNotSaved{"无法写入文件。", "The file could not be written."};
constexpr base::Text kOtherJob{"正在传输位置表，请等待其结束。",
                               "The position table is being transferred: wait for its end."};

// The drive misses a command that comes while it is busy; there is no answer to tell.
constexpr int kStoreTimes = 3;
constexpr std::chrono::milliseconds kStorePause{200};

std::string shown_path(const std::filesystem::path& file) {
    const auto text = file.u8string();
    return {text.begin(), text.end()};
}

}  // namespace

ImExport::ImExport(ConfigurationServices services)
    : link::Window("imexport"),
      services_(std::move(services)),
      job_(data_, services_.engine, *this) {
    data_.write_result = kNoPath;
    data_.read_result = kNoPath;
    services_.engine.add_job(link::JobPlace::kConfiguration, job_);
}

ImExport::~ImExport() {
    services_.engine.remove_job(link::JobPlace::kConfiguration, job_);
}

// --- Files

void ImExport::Command1_Click() {
    const auto chosen = services_.ask_file(
        {.save = false, .kind = "cdi", .suffix = "cdi", .suggestion = source_file_});
    if (chosen) load_source(*chosen);
}

void ImExport::Command8_Click() {
    const auto chosen = services_.ask_file({.save = false,
                                            .kind = "cdo",
                                            .suffix = "cdo",
                                            .suggestion = services_.folder / kTemplateName});
    if (chosen) load_template(*chosen);
}

// The grid is emptied before the file is opened, so a file that cannot be opened leaves no file
// chosen either: what would be written then is not what the label names.
bool ImExport::load_source(const std::filesystem::path& file) {
    if (locked_ || running()) return false;
    data_.ProgressBar1 = 0;
    data_.write_count = {};
    data_.source.clear();
    const auto bytes = base::read_file(file);
    source_file_ = bytes ? file : std::filesystem::path();
    data_.write_result = bytes ? shown_path(file) : std::string(kNoPath);
    if (bytes) data_.source = read_cdi(*bytes, services_.dictionary);
    files_[index_of(ConfigurationSide::kWrite)] = {
        !bytes, bytes ? tools::broken_line(*bytes, data_.source.size(), kCdiFields) : std::nullopt};
    sent_ = ConfigurationCommand::kNone;
    tell();
    return bytes.has_value();
}

bool ImExport::load_template(const std::filesystem::path& file) {
    if (locked_ || running()) return false;
    data_.ProgressBar2 = 0;
    data_.read_count = {};
    data_.driver.clear();
    const auto bytes = base::read_file(file);
    template_file_ = bytes ? file : std::filesystem::path();
    data_.read_result = bytes ? shown_path(file) : std::string(kNoPath);
    if (bytes) data_.driver = read_cdo(*bytes, services_.dictionary);
    files_[index_of(ConfigurationSide::kRead)] = {
        !bytes, bytes ? tools::broken_line(*bytes, data_.driver.size(), kCdoFields) : std::nullopt};
    tell();
    return bytes.has_value();
}

void ImExport::Command6_Click() {
    const auto chosen =
        services_.ask_file({.save = true, .kind = "cdi", .suffix = "cdi", .suggestion = {}});
    // What is believed to be kept must be kept.
    if (chosen && !base::write_file(*chosen, write_cdi(data_.driver))) say(kNotSaved);
}

// --- Jobs

void ImExport::Command2_Click() {
    if (source_file_.empty()) {
        say(kNoSource);
        return;
    }
    if (other_job_runs()) return;
    sent_ = ConfigurationCommand::kNone;
    job_.start_write();
    lock();
    tell();
}

void ImExport::Command7_Click() {
    if (template_file_.empty()) {
        say(kNoTemplate);
        return;
    }
    if (other_job_runs()) return;
    job_.start_read();
    lock();
    tell();
}

// The position table's jobs have the same selector: one that runs would end in the middle, and
// nobody would be told.
bool ImExport::other_job_runs() {
    if (services_.engine.state.batch_mode == 0) return false;
    say(kOtherJob);
    return true;
}

void ImExport::row_done(std::size_t row) {
    if (row_changed) row_changed(row);
}

void ImExport::job_ended() {
    if (survey_) end_survey();
    tell();
}

// --- Commands

void ImExport::send(ConfigurationCommand command) {
    sent_ = command;
    lock();
    tell();
}

void ImExport::Command3_Click() {
    send(ConfigurationCommand::kStore);
    for (int time = 0; time < kStoreTimes; ++time) {
        services_.engine.sendata2(kStoreAllKey, kStoreAllValue, 0);
        services_.engine.clock().sleep(kStorePause);
    }
}

void ImExport::Command4_Click() {
    send(ConfigurationCommand::kRestart);
    restart_drive(services_.engine);
}

void ImExport::Timer1_Timer() {
    if (!locked_ || services_.engine.state.batch_mode != 0) return;
    locked_ = false;
    tell();
}

void ImExport::say(base::Text text) const {
    services_.notice.show(base::kNoticeTitle.in(services_.language), text.in(services_.language));
}

}  // namespace servo::tools
