// A list of keys, loaded, read from whatever drive, exported, and loaded again as values.
//
// The first byte of an input stirs the drive's answers, the rest is the file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "silent_surroundings.h"
#include "tools/configuration_compare.h"
#include "tools/configuration_job.h"

using namespace servo;
using namespace servo::fuzz;

namespace {

constexpr std::size_t kMostBytes = 4096;

// What a drive says to a read of an object; never the same for two inputs.
link::Payload answer_to(dictionary::WireKey key, std::uint8_t stir) {
    link::Payload payload =
        link::make_payload(key, static_cast<std::int32_t>(key * 2654435761U), true, 0);
    constexpr std::uint8_t kCommands[] = {0x4F, 0x4B, 0x43, 0x80, 0x41, 0x60, 0x4F, 0x43};
    payload[0] = kCommands[(payload[3] ^ stir) % 8];
    return payload;
}

class ClosedPort final : public link::Port {
  public:
    link::OpenResult open(std::string_view, int) override { return link::OpenResult::kFailed; }
    void close() override {}
    bool is_open() const override { return false; }
    std::size_t in_buffer_count() override { return 0; }
    std::size_t out_buffer_count() override { return 0; }
    std::size_t read(std::span<std::uint8_t>) override { return 0; }
    void write(std::span<const std::uint8_t>) override {}
    void clear_in() override {}
    void clear_out() override {}
};

struct Watcher final : tools::ConfigurationObserver {
    void row_done(std::size_t) override {}
    void job_ended() override {}
};

void read_all(tools::ConfigurationData& data, std::uint8_t stir) {
    ClosedPort port;
    NoTime clock;
    NoTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    Watcher watcher;
    tools::ConfigurationTransfer job(data, engine, watcher);
    job.start_read();
    for (std::size_t step = 0; job.active(); ++step) {
        require(step <= data.driver.size());
        job.send_step(engine);
        if (!job.active()) break;
        const auto row = static_cast<std::size_t>(engine.state.batch_row) - 1;
        const auto key = tools::row_key(data.driver.at(row).Index);
        require(key.has_value());
        require(job.receive_frame(engine, link::make_payload(*key, 0, true, 0)) ==
                link::Received::kIgnored);
        require(job.receive_frame(engine, answer_to(*key, stir)) == link::Received::kTaken);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view content(reinterpret_cast<const char*>(data) + 1,
                                   std::min(size - 1, kMostBytes));
    static const dictionary::Store dictionary;
    tools::ConfigurationData held;
    held.driver = tools::read_cdo(content, dictionary);
    read_all(held, data[0]);
    int failed = 0;
    for (const tools::DriverRow& row : held.driver) {
        require(row.Result == "True" || (row.Result == "False" && row.Driver_Value.empty()));
        failed += row.Result == "False" ? 1 : 0;
    }
    require(held.read_result == "Finished! Fail:" + std::to_string(failed));

    // The export is read as it was written.
    const auto again = tools::read_cdi(tools::write_cdi(held.driver), dictionary);
    require(again.size() == held.driver.size());
    for (std::size_t row = 0; row < again.size(); ++row) {
        require(again[row].Source_Value == held.driver[row].Driver_Value);
        require((again[row].Result == "Invalid") == (held.driver[row].Result == "False"));
    }
    require(tools::compare_configurations(tools::configuration_values(held.driver),
                                          tools::configuration_values(again), dictionary)
                .rows.empty());
    return 0;
}
