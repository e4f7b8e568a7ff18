// The two batch jobs of the configuration window: the source grid into the drive, the driver grid
// out of it. `batch_mode` (1 write, 2 read), `batch_row` (from 1) and `batch_warmup` are in the
// engine's state; the position table's jobs use the same members with 3 and 4.
//
// A request is sent again at each tick until the drive's word on that object comes, so a lost frame
// costs two ticks and no row. The job has no time-out of its own.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "link/engine.h"
#include "link/job.h"
#include "tools/configuration_rows.h"

namespace servo::tools {

struct ConfigurationData {
    std::vector<SourceRow> source;
    std::vector<DriverRow> driver;
    int fail_count = 0;
    int ProgressBar1 = 0;      // of the write job, 0 to 100
    int ProgressBar2 = 0;      // of the read job
    std::string write_result;  // label of the write tab
    std::string read_result;   // label of the read tab
};

class ConfigurationObserver {
  public:
    ConfigurationObserver() = default;
    ConfigurationObserver(const ConfigurationObserver&) = delete;
    ConfigurationObserver& operator=(const ConfigurationObserver&) = delete;
    virtual ~ConfigurationObserver() = default;

    // A row, from 0, got its result. Every few milliseconds while a job runs.
    virtual void row_done(std::size_t row) = 0;
    virtual void job_ended() = 0;
};

class ConfigurationTransfer final : public link::Job {
  public:
    // Everything is kept by reference.
    ConfigurationTransfer(ConfigurationData& data, link::Engine& engine,
                          ConfigurationObserver& observer);

    void start_write();
    void start_read();
    bool writing() const { return engine_.state.batch_mode == 1; }
    bool reading() const { return engine_.state.batch_mode == 2; }

    bool active() const override { return writing() || reading(); }
    bool warm_up(link::Engine& engine) override;
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;

  private:
    void start(int mode);
    std::size_t rows() const;
    const std::string& Index(std::size_t row) const;
    bool passed_over(std::size_t row) const;
    bool send_row(std::size_t row);
    void take_written(SourceRow& row, const link::Payload& payload);
    void take_read(DriverRow& row, const link::Payload& payload);
    void fail(std::size_t row);
    bool advance();
    void end();

    ConfigurationData& data_;
    link::Engine& engine_;
    ConfigurationObserver& observer_;
};

}  // namespace servo::tools
