// Bytes from the line, through the frame reader into the engine with pages, a custom window, a job
// and the scope on it.
//
// The first byte of an input chooses: bit 0, the communication ID and the checksum of every ten
// bytes are put right, so that the bytes get past the two tests of a frame; bits 1 and 2, where the
// wheel stands; bit 3, whether a recording runs; bit 4, whether a job runs; bit 5, the windows
// shown.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <string>
#include <vector>

#include "link/engine.h"

using namespace servo;
using namespace servo::link;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

class FedPort final : public Port {
  public:
    OpenResult open(std::string_view, int) override { return OpenResult::kOpened; }
    void close() override {}
    bool is_open() const override { return true; }
    std::size_t in_buffer_count() override { return in.size(); }
    std::size_t out_buffer_count() override { return 0; }
    std::size_t read(std::span<std::uint8_t> into) override {
        const std::size_t count = std::min(into.size(), in.size());
        std::copy_n(in.begin(), count, into.begin());
        in.erase(in.begin(), in.begin() + static_cast<std::ptrdiff_t>(count));
        return count;
    }
    void write(std::span<const std::uint8_t> bytes) override {
        require(bytes.size() != kFrameSize || checksum(bytes) == 0);
    }
    void clear_in() override { in.clear(); }
    void clear_out() override {}

    std::deque<std::uint8_t> in;
};

class NoTime final : public base::Clock {
  public:
    std::chrono::microseconds now() const override { return {}; }
    void sleep(std::chrono::milliseconds) override {}
};

class NoTimer final : public Timer {
  public:
    void set_interval(int) override {}
    int interval() const override { return 3; }
    void set_enabled(bool) override {}
    bool enabled() const override { return true; }
};

class Page final : public PollWindow {
  public:
    Page() : PollWindow("AN_SPEED") {}
    bool custom() const override { return false; }
    int rows() const override { return static_cast<int>(std::size(kRows)); }
    PollRow row(int row) const override {
        require(row >= 0 && row < rows());
        PollRow result = kRows[row];
        result.value = values[static_cast<std::size_t>(row)];
        return result;
    }
    void set_value(int row, double value, int size_code) override {
        require(row >= 1 && row < rows() && value == value && size_code != 0);
        values[static_cast<std::size_t>(row)] = "0";
    }
    void set_text(int row, std::string_view text) override {
        require(row >= 1 && row < rows());
        values[static_cast<std::size_t>(row)] = text;
    }

  private:
    static constexpr PollRow kRows[] = {
        {"N", "Index", "Type", ""},     {"0", "606300", "int32", ""},
        {"1*", "100800", "String", ""}, {"2", "60F611", "uint16", ""},
        {"3", "100800", "String", ""},  {"4*", "", "", ""}};
    std::string values[std::size(kRows)];
};

class Custom final : public PollWindow {
  public:
    Custom() : PollWindow("RS485") {}
    bool custom() const override { return true; }
    int get_ODS_Num() const override { return 2; }
    Identity get_ods(int row) const override {
        require(row >= 0 && row <= 2);
        return kObjects[row];
    }
    std::string_view get_odtype(int row) const override {
        require(row >= 0 && row <= 2);
        return kTypes[row];
    }
    void set_ods(int row, double) override { require(row == 0 || row == 2); }

  private:
    static constexpr Identity kObjects[] = {0x2FE200, 0, 0x65100C};
    static constexpr std::string_view kTypes[] = {"uint16", "", "String"};
};

class Recorder final : public ScopeLink {
  public:
    bool window_visible() const override { return true; }
    bool settings_known() const override { return false; }
    bool acquiring() const override { return false; }
    void send_step(Engine& engine) override { engine.sendata(0x23001306, 0, 1); }
    Received receive_frame(Engine& engine, const Payload& payload) override {
        require(payload[0] != kRead);
        if (payload[0] == kAnswerSegmented) engine.state.str_read_step = 1;
        return payload[0] % 2 == 0 ? Received::kTaken : Received::kIgnored;
    }
    void link_timed_out(Engine&) override {}
    void link_closed(Engine&) override {}
};

class Batch final : public Job {
  public:
    bool active() const override { return running; }
    void send_step(Engine& engine) override { engine.sendata2(0x60630004, 0, 1); }
    Received receive_frame(Engine&, const Payload& payload) override {
        return payload[0] == kRead ? Received::kIgnored : Received::kTaken;
    }
    bool running = false;
};

std::vector<std::uint8_t> line_bytes(const std::uint8_t* data, std::size_t size, bool put_right) {
    std::vector<std::uint8_t> bytes(data, data + size);
    if (!put_right) return bytes;
    for (std::size_t start = 0; start + kFrameSize <= bytes.size(); start += kFrameSize) {
        bytes[start] = 127;
        bytes[start + 9] = checksum(std::span(bytes).subspan(start, 9));
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::uint8_t choice = data[0];
    FedPort port;
    NoTime clock;
    NoTimer timer;
    DriveValues values;
    Engine engine(port, clock, timer, values);
    Page page;
    Custom custom;
    Recorder recorder;
    Batch batch;
    engine.add_poll_window(page);
    engine.add_poll_window(custom);
    engine.set_scope(&recorder);
    engine.add_job(JobPlace::kConfiguration, batch);
    page.set_visible((choice & 0x20U) == 0);
    custom.set_visible((choice & 0x20U) != 0);
    batch.running = (choice & 0x10U) != 0;
    engine.state.scopeState = (choice & 0x08U) != 0 ? 6 : 0;
    engine.state.status_lane = (choice >> 1U) & 3U;
    engine.state.Com_Change = engine.state.status_lane == 3 ? 1 : 0;
    engine.state.sub_Pointer = 1;

    // One frame's worth of bytes behind each send tick; now and then a write of the user.
    const auto bytes = line_bytes(data + 1, size - 1, (choice & 1U) != 0);
    std::size_t fed = 0;
    for (int turn = 0; fed < bytes.size(); ++turn) {
        if (turn % 7 == 3) engine.sendata2(0x60630004, turn, 0);
        engine.cTmr_Timer();
        const std::size_t count = std::min<std::size_t>(10, bytes.size() - fed);
        port.in.insert(port.in.end(), bytes.begin() + static_cast<std::ptrdiff_t>(fed),
                       bytes.begin() + static_cast<std::ptrdiff_t>(fed + count));
        fed += count;
        const std::size_t waiting = port.in.size();
        engine.cTmr_Timer();
        require(engine.state.timer1_in == 0);
        require(port.in.size() <= waiting);
        require(engine.state.str_temp_string.size() <= bytes.size());
        require(engine.state.page < engine.poll_windows.size());
    }
    return 0;
}
