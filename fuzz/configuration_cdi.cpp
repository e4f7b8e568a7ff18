// A file of values, loaded, looked through and written over a line whose drive answers at once:
// nothing leaves that the file does not say.
//
// What is allowed is told a second time here: a key is eight hexadecimal digits, a row is written
// when its third field is the word True.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <span>
#include <string>
#include <string_view>

#include "silent_surroundings.h"
#include "tools/configuration_check.h"
#include "tools/configuration_job.h"
#include "tools/configuration_report.h"

using namespace servo;
using namespace servo::fuzz;

namespace {

constexpr std::size_t kMostBytes = 4096;

bool may_be_written(const tools::SourceRow& row) {
    const auto digit = [](char c) {
        return std::string_view("0123456789abcdefABCDEF").find(c) != std::string_view::npos;
    };
    return row.Result != "Invalid" && row.Index.size() == 8 &&
           std::ranges::all_of(row.Index, digit);
}

// Answers every write, refuses some of them.
class AnsweringPort final : public link::Port {
  public:
    link::OpenResult open(std::string_view, int) override { return link::OpenResult::kOpened; }
    void close() override {}
    bool is_open() const override { return true; }
    std::size_t in_buffer_count() override { return in_.size(); }
    std::size_t out_buffer_count() override { return 0; }
    std::size_t read(std::span<std::uint8_t> into) override {
        std::size_t count = 0;
        for (; count < into.size() && !in_.empty(); ++count, in_.pop_front())
            into[count] = in_.front();
        return count;
    }
    void write(std::span<const std::uint8_t> bytes) override {
        require(bytes.size() == link::kFrameSize && link::checksum(bytes) == 0);
        link::Payload payload{};
        std::copy_n(bytes.begin() + 1, payload.size(), payload.begin());
        sent.push_back(payload);
        payload[0] = payload[3] % 7 == 0 ? link::kAbort : link::kWritten;
        for (const std::uint8_t byte : link::make_frame(bytes[0], payload))
            in_.push_back(byte);
    }
    void clear_in() override { in_.clear(); }
    void clear_out() override {}

    std::vector<link::Payload> sent;

  private:
    std::deque<std::uint8_t> in_;
};

struct Watcher final : tools::ConfigurationObserver {
    void row_done(std::size_t row) override { require(row == rows++); }
    void job_ended() override { ++ended; }
    std::size_t rows = 0;
    int ended = 0;
};

// Every write that left belongs to a row, in the rows' order, and every row that may be written and
// has a number was written once.
void check_sent(const std::vector<tools::SourceRow>& rows, const std::vector<link::Payload>& sent) {
    std::size_t at = 0;
    for (const tools::SourceRow& row : rows) {
        const auto key = tools::row_key(row.Index);
        const auto value = tools::source_number(row.Source_Value);
        if (!may_be_written(row) || !key || !value) {
            require(row.Result == "Invalid" || row.Result == "False");
            continue;
        }
        require(at < sent.size());
        require(sent[at] == link::make_payload(*key, *value, false, 0));
        const bool refused = sent[at][3] % 7 == 0;
        require(row.Result == (refused ? "False" : "True") && row.red == refused);
        ++at;
    }
    require(at == sent.size());
}

void write_all(std::vector<tools::SourceRow> rows) {
    AnsweringPort port;
    NoTime clock;
    NoTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    Watcher watcher;
    tools::ConfigurationData data;
    data.source = std::move(rows);
    tools::ConfigurationTransfer job(data, engine, watcher);
    engine.add_job(link::JobPlace::kConfiguration, job);
    job.start_write();
    for (std::size_t tick = 0; job.active(); ++tick) {
        require(tick < 8 * data.source.size() + 16);
        engine.cTmr_Timer();
    }
    require(watcher.ended == 1 && watcher.rows == data.source.size());
    require(data.write_result == "Finished! Fail:" + std::to_string(data.fail_count));
    require(data.fail_count == std::ranges::count(data.source, "False", &tools::SourceRow::Result));
    check_sent(data.source, port.sent);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), std::min(size, kMostBytes));
    static const dictionary::Store dictionary;
    const auto rows = tools::read_cdi(content, dictionary);
    require(rows.size() <= static_cast<std::size_t>(std::ranges::count(content, '\n')) + 1);
    for (const tools::SourceRow& row : rows)
        require(row.red == (row.Result == "Invalid") && (row.Result.empty() || row.red));

    const auto wanted = tools::template_of(rows);
    const tools::DryRun run = tools::dry_run(rows, wanted, dictionary, {});
    require(run.changes <= run.writes && run.writes <= rows.size());
    for (const base::Language language : {base::Language::kChinese, base::Language::kEnglish})
        tools::report_text(tools::report_of(tools::DryRunFinding{run, "f"}, language));
    const auto values = tools::configuration_values(rows);
    require(tools::compare_configurations(values, values, dictionary).rows.empty());

    write_all(rows);
    return 0;
}
