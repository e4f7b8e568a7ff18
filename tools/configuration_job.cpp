#include "tools/configuration_job.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

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
    }
    data_.ProgressBar1 = 0;
    data_.write_result.clear();
    start(kWriteMode);
}

void ConfigurationTransfer::start_read() {
    for (DriverRow& row : data_.driver) {
        row.Driver_Value.clear();
        row.Result.clear();
    }
    data_.ProgressBar2 = 0;
    data_.read_result.clear();
    start(kReadMode);
}

void ConfigurationTransfer::start(int mode) {
    data_.fail_count = 0;
    engine_.state.batch_row = 1;
    engine_.state.batch_warmup = 0;
    engine_.state.batch_mode = mode;
}

std::size_t ConfigurationTransfer::rows() const {
    return writing() ? data_.source.size() : data_.driver.size();
}

const std::string& ConfigurationTransfer::Index(std::size_t row) const {
    return writing() ? data_.source[row].Index : data_.driver[row].Index;
}

bool ConfigurationTransfer::passed_over(std::size_t row) const {
    if (!writing()) return false;
    const std::string& Result = data_.source[row].Result;
    return Result == kIllegalWord || Result == kInvalidWord;
}

bool ConfigurationTransfer::warm_up(link::Engine& engine) {
    return engine.spend_warm_up(engine.state.batch_warmup);
}

// Rows that cannot be asked are dealt with within the one tick; the first that can be sent ends it.
void ConfigurationTransfer::send_step(link::Engine& engine) {
    while (active()) {
        const auto row = static_cast<std::size_t>(engine.state.batch_row) - 1;
        if (row >= rows()) {
            end();
            return;
        }
        if (!passed_over(row)) {
            if (send_row(row)) return;
            fail(row);
        }
        advance();
    }
}

bool ConfigurationTransfer::send_row(std::size_t row) {
    const auto key = row_key(Index(row));
    if (!key) return false;
    if (!writing()) {
        engine_.sendata2(*key, 0, 1);
        return true;
    }
    const auto value = source_number(data_.source[row].Source_Value);
    if (!value) return false;
    engine_.sendata2(*key, *value, 0);
    return true;
}

link::Received ConfigurationTransfer::receive_frame(link::Engine& engine,
                                                    const link::Payload& payload) {
    const auto row = static_cast<std::size_t>(engine.state.batch_row) - 1;
    if (row >= rows() || is_request(payload[0])) return link::Received::kIgnored;
    const auto key = row_key(Index(row));
    if (!key || dictionary::identity_of(*key) != link::reply_key(payload))
        return link::Received::kIgnored;
    if (writing())
        take_written(data_.source[row], payload);
    else
        take_read(data_.driver[row], payload);
    advance();
    return link::Received::kTaken;
}

void ConfigurationTransfer::take_written(SourceRow& row, const link::Payload& payload) {
    if (payload[0] != link::kWritten) {
        fail(static_cast<std::size_t>(engine_.state.batch_row) - 1);
        return;
    }
    row.Result = kTrueWord;
    row.Check_Value = base::format_whole(link::reply_value(payload, row_size(row.Index)));
}

void ConfigurationTransfer::take_read(DriverRow& row, const link::Payload& payload) {
    if (!is_value(payload[0])) {
        fail(static_cast<std::size_t>(engine_.state.batch_row) - 1);
        return;
    }
    row.Result = kTrueWord;
    row.Driver_Value = base::format_whole(link::reply_value(payload, row_size(row.Index)));
}

void ConfigurationTransfer::fail(std::size_t row) {
    ++data_.fail_count;
    if (writing()) {
        data_.source[row].Result = kFalseWord;
        data_.source[row].red = true;
    } else {
        data_.driver[row].Result = kFalseWord;
    }
}

// The bar counts the heading as a row, as the grid does.
bool ConfigurationTransfer::advance() {
    const auto done = static_cast<std::size_t>(engine_.state.batch_row) - 1;
    ++engine_.state.batch_row;
    const int all = static_cast<int>(rows()) + 1;
    const int percent = std::min(engine_.state.batch_row * 100 / all, 100);
    (writing() ? data_.ProgressBar1 : data_.ProgressBar2) = percent;
    observer_.row_done(done);
    if (done + 1 < rows()) return true;
    end();
    return false;
}

void ConfigurationTransfer::end() {
    (writing() ? data_.write_result : data_.read_result) =
        fmt::format("Finished! Fail:{}", data_.fail_count);
    engine_.state.batch_mode = 0;
    observer_.job_ended();
}

}  // namespace servo::tools
