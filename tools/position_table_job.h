// Reading the table from the drive and writing it there: a job of the engine, one object at a time,
// 208 of them. `batch_mode` (3 reads, 4 writes), `batch_row` and `batch_warmup` are in the engine's
// state.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "link/engine.h"
#include "link/job.h"
#include "tools/position_table.h"
#include "tools/position_table_transfer.h"

namespace servo::tools {

inline constexpr std::int32_t kReadTable = 3;
inline constexpr std::int32_t kWriteTable = 4;
inline constexpr int kMostRefusals = 10;

inline constexpr std::string_view kJobFinished = "finished";
inline constexpr std::string_view kJobFailed = "failed";

// How the last job ended.
enum class TableJobEnd : std::uint8_t {
    kFinished,
    kRefused,     // ten refusals
    kLinkClosed,  // by the user, or after too many misses
};

// What the form holds, by the names of its controls and members.
struct PosFlowData {
    PositionGrids grids;
    ListItems Combo2 = combo2_items(base::Language::kEnglish);
    int selected_row = 1;              // of `MSHFlexGrid2`, the one that `MSHFlexGrid3` shows
    std::optional<TransferList> list;  // nothing: it could not be read, and no job begins
    std::string Text1;                 // the live index
    std::string Label3;                // result of the last read
    std::string Label4;                // result of the last write
    double ProgressBar1 = 0;           // percent
    int refusals = 0;                  // of the whole job; good answers do not clear it
};

class TableJobObserver {
  public:
    TableJobObserver() = default;
    TableJobObserver(const TableJobObserver&) = delete;
    TableJobObserver& operator=(const TableJobObserver&) = delete;
    virtual ~TableJobObserver() = default;

    virtual void table_job_moved() = 0;  // an answer was taken
    virtual void table_job_ended(TableJobEnd end) = 0;
    virtual void link_was_closed() {}
};

class TableJob final : public link::Job {
  public:
    // All outlive the job.
    TableJob(PosFlowData& data, link::Engine& engine, TableJobObserver& observer)
        : data_(data), engine_(engine), observer_(observer) {}

    // The selectors of a new job. A job of the other kind that is under way ends without a word.
    void start(std::int32_t mode);

    bool active() const override;
    bool warm_up(link::Engine& engine) override;
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    // Ends the job: what it would go on with, behind the next opening, may be another drive.
    void link_closed(link::Engine& engine) override;

  private:
    bool reads() const { return engine_.state.batch_mode == kReadTable; }
    std::optional<int> line() const;
    double resolution() const;
    void good_answer();
    void refused();
    void end(TableJobEnd end);

    PosFlowData& data_;
    link::Engine& engine_;
    TableJobObserver& observer_;
};

}  // namespace servo::tools
