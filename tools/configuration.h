// The window `imexport` without its window: a set of parameter values from a file into the drive,
// or from the drive into a file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/language.h"
#include "base/notice.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "link/window.h"
#include "tools/configuration_job.h"
#include "tools/configuration_report.h"

namespace servo::tools {

// A question for a file.
struct ConfigurationFile {
    bool save = false;
    std::string_view kind;             // "cdi"
    std::string_view suffix;           // "cdi", "cdo" or "txt"
    std::filesystem::path suggestion;  // where the dialog opens; may be empty
};
inline constexpr std::string_view kTemplateName = "Servo_Settings.cdo";
inline constexpr std::string_view kNoPath = "No path";

// References outlive the window.
struct ConfigurationServices {
    link::Engine& engine;
    const dictionary::Store& dictionary;
    base::Notice& notice;
    const base::Language& language;
    const std::filesystem::path& folder;  // the program's own
    // The path that the user chose; nothing when he cancelled.
    std::function<std::optional<std::filesystem::path>(const ConfigurationFile&)> ask_file;
};

enum class ConfigurationSide : std::uint8_t { kWrite, kRead };

// What went to the drive last of what gets no answer.
enum class ConfigurationCommand : std::uint8_t { kNone, kStore, kRestart };

class ImExport final : public link::Window, private ConfigurationObserver {
  public:
    static constexpr int kLockMilliseconds = 4500;  // interval of Timer1

    // Enters its job into the engine as the configuration job.
    explicit ImExport(ConfigurationServices services);
    ~ImExport() override;

    base::Language language() const { return services_.language; }
    const ConfigurationData& data() const { return data_; }

    // Path or result of the write tab and of the read tab.
    const std::string& Label2() const { return data_.write_result; }
    const std::string& Label8() const { return data_.read_result; }

    void Command1_Click();  // choose a .cdi
    void Command2_Click();  // write to the drive
    void Command3_Click();  // store, three times with 200 ms behind each
    void Command4_Click();  // restart
    void Command6_Click();  // export as .cdi; a file that cannot be written is told
    void Command7_Click();  // read from the drive
    void Command8_Click();  // choose a .cdo
    void Timer1_Timer();

    // The buttons are disabled, and Timer1 runs.
    bool locked() const { return locked_; }
    bool running() const { return job_.active(); }
    const ConfigurationTransfer& job() const { return job_; }

    // The load actions with the file already chosen: dropped on the window, named on the command
    // line. False when it cannot be opened: the grid is then empty and nothing is chosen. While a
    // job runs nothing happens.
    bool load_source(const std::filesystem::path& file);
    bool load_template(const std::filesystem::path& file);
    const std::filesystem::path& source_file() const { return source_file_; }
    const std::filesystem::path& template_file() const { return template_file_; }

    // --- Additions. None of them writes to the drive.
    bool link_open() const;
    // The side that is in front. Whoever opens the window for one of them, from the toolbar or with
    // a file, brings it there.
    ConfigurationSide side() const { return side_; }
    void show_side(ConfigurationSide side);
    // The last file of a side could not be opened.
    bool unreadable(ConfigurationSide side) const { return files_[index_of(side)].unreadable; }
    // The line, from 1, at which the file of a side breaks off.
    std::optional<std::size_t> broken_line(ConfigurationSide side) const {
        return files_[index_of(side)].broken_line;
    }
    // Until something else is begun.
    ConfigurationCommand sent() const { return sent_; }
    // Ends the job or the reading that runs.
    void stop();
    // Reads the drive, then tells what a write of the file would change.
    void dry_run();
    // Reads the drive, then compares it with the file of the write tab.
    void compare_with_drive();
    // Compares the file of the write tab, or what the read tab has read, with a file to be chosen.
    void compare_with_file(ConfigurationSide side);
    // The rows of the last job without success.
    void show_failures(ConfigurationSide side);
    // What the last of these four gave; nothing before, and after close_report.
    const std::optional<ConfigurationFinding>& finding() const { return finding_; }
    ConfigurationReport report() const;
    void close_report();
    // Asks for a file and keeps the report there. A file that cannot be written is told.
    void save_report();

    // Called after any change of texts, lock or grids; a changed row, from 0, of the grid in work.
    std::function<void()> changed;
    std::function<void(std::size_t row)> row_changed;

  private:
    enum class Survey : std::uint8_t { kDryRun, kComparison };

    static std::size_t index_of(ConfigurationSide side) {
        return side == ConfigurationSide::kWrite ? 0 : 1;
    }
    void row_done(std::size_t row) override;
    void job_ended() override;
    void begin_survey(Survey survey);
    void end_survey();
    void lock() { locked_ = true; }
    bool other_job_runs();
    void send(ConfigurationCommand command);
    void say(base::Text text) const;
    void tell() const {
        if (changed) changed();
    }

    ConfigurationServices services_;
    ConfigurationData data_;
    ConfigurationTransfer job_;
    // What is to be told of the file chosen last.
    struct FileState {
        bool unreadable = false;
        std::optional<std::size_t> broken_line;
    };
    std::filesystem::path source_file_;
    std::filesystem::path template_file_;
    FileState files_[2];
    ConfigurationSide side_ = ConfigurationSide::kWrite;
    ConfigurationCommand sent_ = ConfigurationCommand::kNone;
    bool locked_ = false;
    std::optional<Survey> survey_;
    std::optional<ConfigurationFinding> finding_;
};

}  // namespace servo::tools
