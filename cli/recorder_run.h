// One recording of the drive's recorder: set-up, run, buffer, by the oscilloscope's own
// acquisition.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "base/notice.h"
#include "cli/link_session.h"
#include "cli/recorder_watch.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "scope/scope_data.h"

namespace servo::cli {

struct RecorderSource {
    dictionary::Identity key = 0;
    int width = 4;  // bytes of a value: 1, 2, 4
};

struct RecorderTrigger {
    RecorderSource source;
    std::int32_t level = 0;  // raw
    int edge = 1;
};

// What is recorded, and when. Everything fits the recorder: see check_setup.
struct RecorderSetup {
    std::vector<RecorderSource> channels;  // 1 to 4
    int period = 1;                        // counts of 62.5 us
    int samples = 500;
    int offset = 250;
    std::optional<RecorderTrigger> trigger;  // none: at once
};

// Bytes of one row of samples.
int row_bytes(const RecorderSetup& setup);

// What no recorder can do, in words; nothing when all is well.
std::optional<std::string> check_setup(const RecorderSetup& setup);

// How a run has ended. `subject` names what the outcome is about; a `complaint` stands for a run
// whose outcome alone would not say what is wrong.
struct RecorderEnd {
    Reply reply;
    std::string subject;
    std::string complaint;

    bool good() const { return reply.outcome == Outcome::kDone && complaint.empty(); }
};

class RecorderRun {
  public:
    using Progress = std::function<void(std::string_view)>;

    // Everything outlives the run. Takes the oscilloscope's place at the engine meanwhile.
    RecorderRun(link::Engine& engine, LinkSession& session, const dictionary::Store& dictionary,
                const base::Language& language, Progress progress);
    ~RecorderRun();
    RecorderRun(const RecorderRun&) = delete;
    RecorderRun& operator=(const RecorderRun&) = delete;

    // Whatever the end is, the recorder has been stopped if the drive could be reached. `limit` is
    // for each answer; for a trigger it waits without end.
    RecorderEnd run(const RecorderSetup& setup, std::chrono::milliseconds limit);

    // The recording of a good run, as the oscilloscope holds it.
    scope::ScopeData& data() { return *data_; }

  private:
    RecorderEnd set_up(const RecorderSetup& setup);
    RecorderEnd put(link::WireKey key, std::int32_t value, const std::string& subject);
    RecorderEnd put_sources(const RecorderSetup& setup);
    void fill_screen(const RecorderSetup& setup);
    RecorderEnd record(const RecorderSetup& setup);
    Outcome follow(const RecorderSetup& setup);
    RecorderEnd judge(Outcome outcome);
    bool ended() const;
    void stop();
    std::string progress(const RecorderSetup& setup) const;

    link::Engine& engine_;
    LinkSession& session_;
    const dictionary::Store& dictionary_;
    const base::Language& language_;
    Progress progress_;
    std::chrono::milliseconds limit_{0};

    std::unique_ptr<base::Notice> notice_;
    std::unique_ptr<scope::ScopeData> data_;
    std::unique_ptr<scope::Acquisition> acquisition_;
    std::unique_ptr<RecorderWatch> watch_;
    bool decoded_ = false;
    std::string told_;
};

}  // namespace servo::cli
