// The batch jobs of the configuration window: the source grid into the drive, the driver grid out
// of it. `batch_mode` (1 write, 2 read), `batch_row` (from 1) and `batch_warmup` are in the
// engine's state; the position table's jobs use the same members with 3 and 4.
//
// A request is sent again at each send tick until the drive's word on that object comes, so a lost
// frame costs two ticks and no row. The job has no time-out of its own: silence is the link's
// matter, and a link that closes ends the job.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "link/engine.h"
#include "link/job.h"
#include "tools/configuration_rows.h"

namespace servo::tools {

enum class TransferEnd : std::uint8_t {
    kNone,  // none yet, or one runs
    kFinished,
    kStopped,     // by the user
    kLinkClosed,  // by the user, or after too many misses
};

// How a job of one side stands or stood.
struct TransferCount {
    TransferEnd end = TransferEnd::kNone;
    std::size_t done = 0;  // rows that are over, those passed over counted
    std::size_t all = 0;
    int failed = 0;
};

struct ConfigurationData {
    std::vector<SourceRow> source;
    std::vector<DriverRow> driver;
    int fail_count = 0;
    int ProgressBar1 = 0;      // of the write job, 0 to 100
    int ProgressBar2 = 0;      // of the read job
    std::string write_result;  // label of the write tab
    std::string read_result;   // label of the read tab

    // --- Additions
    std::vector<DriverRow> survey;  // what the drive holds of what the file names
    TransferCount write_count;
    TransferCount read_count;
    TransferCount survey_count;
};

class ConfigurationObserver {
  public:
    ConfigurationObserver() = default;
    ConfigurationObserver(const ConfigurationObserver&) = delete;
    ConfigurationObserver& operator=(const ConfigurationObserver&) = delete;
    virtual ~ConfigurationObserver() = default;

    // A row, from 0, got its result. Every few milliseconds while a job runs.
    virtual void row_done(std::size_t row) = 0;
    // However it ended: the counts in the data tell.
    virtual void job_ended() = 0;
};

class ConfigurationTransfer final : public link::Job {
  public:
    // Everything is kept by reference.
    ConfigurationTransfer(ConfigurationData& data, link::Engine& engine,
                          ConfigurationObserver& observer);

    void start_write();
    void start_read();
    // Reads `survey` as start_read reads the driver grid, and leaves labels and bars alone.
    void start_survey();
    // Ends what runs. The row in work stays without a result; its request may be on the line.
    void stop();
    bool writing() const { return engine_.state.batch_mode == 1; }
    bool reading() const { return engine_.state.batch_mode == 2 && !survey_; }
    bool surveying() const { return engine_.state.batch_mode == 2 && survey_; }
    // The link has taken it up; false while it waits for the link to open.
    bool begun() const { return begun_; }

    bool active() const override { return writing() || reading() || surveying(); }
    bool warm_up(link::Engine& engine) override;
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    // What a job would go on with behind the next opening may be another drive.
    void link_closed(link::Engine& engine) override;

  private:
    void start(int mode, bool survey);
    std::size_t row_in_work() const;
    std::size_t rows() const;
    std::vector<DriverRow>& read_rows() { return survey_ ? data_.survey : data_.driver; }
    const std::string& Index(std::size_t row) const;
    TransferCount& count();
    bool passed_over(std::size_t row) const;
    bool answer_arrives(link::Engine& engine);
    bool send_row(std::size_t row);
    void take_written(SourceRow& row, const link::Payload& payload);
    void take_read(DriverRow& row, const link::Payload& payload);
    void fail(std::size_t row, std::uint32_t refusal);
    void advance();
    void end(TransferEnd end);

    ConfigurationData& data_;
    link::Engine& engine_;
    ConfigurationObserver& observer_;
    bool survey_ = false;
    bool begun_ = false;
    int times_sent_ = 0;              // the row in work
    std::size_t waiting_before_ = 0;  // bytes at the send tick before
};

}  // namespace servo::tools
