#include "tools/position_table_job.h"

#include <cstddef>

#include "tools/position_table_register.h"

namespace servo::tools {

namespace {

constexpr double kPercent = 100.0;

bool is_request(std::uint8_t command) {
    return command == link::kRead || command == link::kWrite1 || command == link::kWrite2 ||
           command == link::kWrite4;
}

bool is_read_answer(std::uint8_t command) {
    return command == link::kAnswer1 || command == link::kAnswer2 || command == link::kAnswer4;
}

}  // namespace

void TableJob::start(std::int32_t mode) {
    data_.ProgressBar1 = 0;
    data_.Label3.clear();
    data_.Label4.clear();
    data_.refusals = 0;
    engine_.state.batch_row = 0;
    engine_.state.batch_warmup = 0;
    engine_.state.batch_mode = mode;
}

bool TableJob::active() const {
    const std::int32_t mode = engine_.state.batch_mode;
    return mode == kReadTable || mode == kWriteTable;
}

bool TableJob::warm_up(link::Engine& engine) {
    return engine.spend_warm_up(engine.state.batch_warmup);
}

std::optional<int> TableJob::line() const {
    const std::int32_t row = engine_.state.batch_row;
    if (!data_.list || row < 0 || row >= kTransferLines) return std::nullopt;
    return row;
}

double TableJob::resolution() const {
    return engine_.values().operands.o64100320.value;
}

void TableJob::send_step(link::Engine& engine) {
    const auto at = line();
    if (!at) return;
    const link::WireKey key = (*data_.list)[static_cast<std::size_t>(*at)];
    if (reads())
        engine.sendata2(key, 0, 1);
    else
        engine.sendata2(key, value_for_drive(data_.grids, *at, resolution()), 0);
}

link::Received TableJob::receive_frame(link::Engine&, const link::Payload& payload) {
    const auto at = line();
    if (!at || is_request(payload[0])) return link::Received::kIgnored;
    const link::WireKey key = (*data_.list)[static_cast<std::size_t>(*at)];
    if (link::reply_key(payload) != dictionary::identity_of(key)) return link::Received::kIgnored;
    if (payload[0] == link::kAbort) {
        refused();
    } else if (reads() && is_read_answer(payload[0])) {
        put_value(data_.grids, *at, link::reply_value(payload, transfer_decoder(*at)), resolution(),
                  data_.Combo2);
        good_answer();
    } else if (!reads() && payload[0] == link::kWritten) {
        good_answer();
    }
    return link::Received::kTaken;
}

void TableJob::good_answer() {
    ++engine_.state.batch_row;
    data_.ProgressBar1 = engine_.state.batch_row * kPercent / kTransferLines;
    if (engine_.state.batch_row >= kTransferLines)
        end(TableJobEnd::kFinished);
    else
        observer_.table_job_moved();
}

// The same object is asked again.
void TableJob::refused() {
    if (++data_.refusals >= kMostRefusals) end(TableJobEnd::kRefused);
}

void TableJob::end(TableJobEnd end) {
    const bool read = reads();
    const bool finished = end == TableJobEnd::kFinished;
    engine_.state.batch_mode = 0;
    (read ? data_.Label3 : data_.Label4) = finished ? kJobFinished : kJobFailed;
    data_.ProgressBar1 = 0;
    if (end == TableJobEnd::kRefused) data_.refusals = 0;
    if (read && finished) {
        const std::string& text =
            data_.grids.MSHFlexGrid2.at(data_.selected_row, step_column::kCtlReg);
        update_CTL_REG(data_.grids, data_.selected_row, register_of_text(text), data_.Combo2);
    }
    observer_.table_job_ended(end);
}

void TableJob::link_closed(link::Engine&) {
    if (active()) end(TableJobEnd::kLinkClosed);
    observer_.link_was_closed();
}

}  // namespace servo::tools
