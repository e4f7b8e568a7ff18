#include "tools/configuration_job.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"

namespace servo::tools {

namespace {

constexpr int kWriteMode = 1;
constexpr int kReadMode = 2;

// The line's echo of an own request, of either direction.
bool is_request(std::uint8_t command) {
    return command == link::kRead || command == link::kWrite1 || command == link::kWrite2 ||
           command == link::kWrite4;
}

bool is_value(std::uint8_t command) {
    return command == link::kAnswer1 || command == link::kAnswer2 || command == link::kAnswer4;
}

// Why the drive refused; 0 for any other answer that is not the one wanted.
std::uint32_t refusal_of(const link::Payload& payload) {
    if (payload[0] != link::kAbort) return 0;
    return static_cast<std::uint32_t>(link::reply_value(payload, 4));
}

}  // namespace

ConfigurationTransfer::ConfigurationTransfer(ConfigurationData& data, link::Engine& engine,
                                             ConfigurationObserver& observer)
    : data_(data), engine_(engine), observer_(observer) {}

void ConfigurationTransfer::start_write() {
    for (SourceRow& row : data_.source) {
        if (row.Result == kInvalidWord || row.Result == kIllegalWord) continue;
        row.Check_Value.clear();
        row.Result.clear();
        row.red = false;
        row.refusal = 0;
    }
    data_.ProgressBar1 = 0;
    data_.write_result.clear();
    start(kWriteMode, false);
}

void ConfigurationTransfer::start_read() {
    for (DriverRow& row : data_.driver) {
        row.Driver_Value.clear();
        row.Result.clear();
        row.refusal = 0;
    }
    data_.ProgressBar2 = 0;
    data_.read_result.clear();
    start(kReadMode, false);
}

void ConfigurationTransfer::start_survey() {
    start(kReadMode, true);
}

void ConfigurationTransfer::start(int mode, bool survey) {
    survey_ = survey;
    begun_ = false;
    times_sent_ = 0;
    waiting_before_ = 0;
    data_.fail_count = 0;
    engine_.state.batch_row = 1;
    engine_.state.batch_warmup = 0;
    engine_.state.batch_mode = mode;
    count() = {.end = TransferEnd::kNone, .done = 0, .all = rows(), .failed = 0};
}

void ConfigurationTransfer::stop() {
    if (active()) end(TransferEnd::kStopped);
}

void ConfigurationTransfer::link_closed(link::Engine&) {
    if (active() && begun_) end(TransferEnd::kLinkClosed);
}

TransferCount& ConfigurationTransfer::count() {
    if (writing()) return data_.write_count;
    return survey_ ? data_.survey_count : data_.read_count;
}

// A walk through the engine's members may have put anything into `batch_row`.
std::size_t ConfigurationTransfer::row_in_work() const {
    return static_cast<std::size_t>(std::max(engine_.state.batch_row, 1)) - 1;
}

std::size_t ConfigurationTransfer::rows() const {
    if (writing()) return data_.source.size();
    return survey_ ? data_.survey.size() : data_.driver.size();
}

const std::string& ConfigurationTransfer::Index(std::size_t row) const {
    if (writing()) return data_.source[row].Index;
    return survey_ ? data_.survey[row].Index : data_.driver[row].Index;
}

bool ConfigurationTransfer::passed_over(std::size_t row) const {
    if (!writing()) return false;
    const std::string& Result = data_.source[row].Result;
    return Result == kIllegalWord || Result == kInvalidWord;
}

bool ConfigurationTransfer::warm_up(link::Engine& engine) {
    begun_ = true;
    return engine.spend_warm_up(engine.state.batch_warmup);
}

// Rows that cannot be asked are dealt with within the one tick; the first that can be sent ends it.
void ConfigurationTransfer::send_step(link::Engine& engine) {
    while (active()) {
        const std::size_t row = row_in_work();
        if (row >= rows()) {
            end(TransferEnd::kFinished);
            return;
        }
        if (!passed_over(row)) {
            if (answer_arrives(engine) || send_row(row)) return;
            fail(row, 0);
        }
        advance();
    }
}

// A request and its answer take longer on the line than the two ticks after which a request is made
// again. So a row that has been asked is not asked again while bytes come in: they may be its
// answer, and nothing is to be written twice but what got none. A whole frame is taken at the next
// receive tick, whatever it is; a part that does not grow holds nothing up.
bool ConfigurationTransfer::answer_arrives(link::Engine& engine) {
    if (times_sent_ == 0) return false;
    const std::size_t waiting = engine.port().in_buffer_count();
    if (waiting >= link::kFrameSize) {
        waiting_before_ = 0;
        return true;
    }
    const bool grew = waiting > waiting_before_;
    waiting_before_ = waiting;
    return grew;
}

bool ConfigurationTransfer::send_row(std::size_t row) {
    const auto key = row_key(Index(row));
    if (!key) return false;
    if (!writing()) {
        engine_.sendata2(*key, 0, 1);
    } else {
        const auto value = source_number(data_.source[row].Source_Value);
        if (!value) return false;
        engine_.sendata2(*key, *value, 0);
    }
    ++times_sent_;
    return true;
}

link::Received ConfigurationTransfer::receive_frame(link::Engine&, const link::Payload& payload) {
    const std::size_t row = row_in_work();
    // Before the first request a frame is a late answer to somebody else.
    if (row >= rows() || times_sent_ == 0 || is_request(payload[0]))
        return link::Received::kIgnored;
    const auto key = row_key(Index(row));
    if (!key || dictionary::identity_of(*key) != link::reply_key(payload))
        return link::Received::kIgnored;
    if (writing())
        take_written(data_.source[row], payload);
    else
        take_read(read_rows()[row], payload);
    advance();
    return link::Received::kTaken;
}

void ConfigurationTransfer::take_written(SourceRow& row, const link::Payload& payload) {
    if (payload[0] != link::kWritten) {
        fail(row_in_work(), refusal_of(payload));
        return;
    }
    row.Result = kTrueWord;
    row.Check_Value = base::format_whole(link::reply_value(payload, row_size(row.Index)));
}

void ConfigurationTransfer::take_read(DriverRow& row, const link::Payload& payload) {
    if (!is_value(payload[0])) {
        fail(row_in_work(), refusal_of(payload));
        return;
    }
    row.Result = kTrueWord;
    row.Driver_Value = base::format_whole(link::reply_value(payload, row_size(row.Index)));
}

void ConfigurationTransfer::fail(std::size_t row, std::uint32_t refusal) {
    ++data_.fail_count;
    if (writing()) {
        data_.source[row].Result = kFalseWord;
        data_.source[row].red = true;
        data_.source[row].refusal = refusal;
    } else {
        read_rows()[row].Result = kFalseWord;
        read_rows()[row].refusal = refusal;
    }
}

void ConfigurationTransfer::advance() {
    const std::size_t done = row_in_work();
    const bool asked_again = times_sent_ > 1;
    times_sent_ = 0;
    waiting_before_ = 0;
    ++engine_.state.batch_row;
    // The bar counts the heading as a row, as the grid does.
    const std::size_t all = rows() + 1;
    const int percent = static_cast<int>(std::min<std::size_t>((done + 2) * 100 / all, 100));
    if (writing()) data_.ProgressBar1 = percent;
    if (reading()) data_.ProgressBar2 = percent;
    count().done = done + 1;
    count().failed = data_.fail_count;
    observer_.row_done(done);
    if (done + 1 >= rows()) {
        end(TransferEnd::kFinished);
        return;
    }
    // The second answer to a request that was made twice is nobody's, unless the next row names the
    // same object again: then it is flushed.
    if (asked_again && Index(done).substr(0, 6) == Index(done + 1).substr(0, 6))
        engine_.state.batch_warmup = 0;
}

void ConfigurationTransfer::end(TransferEnd end) {
    count().end = end;
    count().failed = data_.fail_count;
    const std::string_view word = end == TransferEnd::kFinished ? "Finished" : "Stopped";
    if (!survey_ || writing())
        (writing() ? data_.write_result : data_.read_result) =
            fmt::format("{}! Fail:{}", word, data_.fail_count);
    engine_.state.batch_mode = 0;
    begun_ = false;
    observer_.job_ended();
}

}  // namespace servo::tools
