// Stand-ins for what the engine meets: pages, custom windows, jobs, listeners, the user's eyes.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/notice.h"
#include "link/engine.h"

namespace servo::test {

// A grid page whose cells hold whole numbers as decimal text.
class FakePage final : public link::PollWindow {
  public:
    struct Row {
        std::string number;
        std::string index;
        std::string type;
        std::string value;
    };
    explicit FakePage(std::string name) : PollWindow(std::move(name)) {
        grid.push_back({"N", "Index", "Type", "Value"});
    }

    // `live` false marks a read-once row.
    FakePage& add(std::string index, std::string type, bool live = true) {
        grid.push_back({std::to_string(grid.size() - 1) + (live ? "" : "*"),
                        std::move(index),
                        std::move(type),
                        {}});
        return *this;
    }
    // `count` live uint16 rows of index 3000 to 30xx, sub 0.
    FakePage& add_rows(int count);

    bool custom() const override { return false; }
    int rows() const override { return static_cast<int>(grid.size()); }
    link::PollRow row(int row) const override {
        const Row& r = grid.at(static_cast<std::size_t>(row));
        return {r.number, r.index, r.type, r.value};
    }
    void set_value(int row, double value, int size_code) override {
        set_text(row, std::to_string(static_cast<long long>(value)));
        codes.push_back(size_code);
    }
    void set_text(int row, std::string_view text) override {
        grid.at(static_cast<std::size_t>(row)).value = text;
        writes.emplace_back(row, text);
    }
    const std::string& value(int row) const { return grid.at(static_cast<std::size_t>(row)).value; }

    std::vector<Row> grid;
    std::vector<std::pair<int, std::string>> writes;
    std::vector<int> codes;
};

class FakeCustomWindow final : public link::PollWindow {
  public:
    using PollWindow::PollWindow;

    bool custom() const override { return true; }
    int get_ODS_Num() const override { return static_cast<int>(objects.size()) - 1; }
    link::Identity get_ods(int row) const override {
        return objects.at(static_cast<std::size_t>(row)).first;
    }
    std::string_view get_odtype(int row) const override {
        return objects.at(static_cast<std::size_t>(row)).second;
    }
    void set_ods(int row, double value) override { writes.emplace_back(row, value); }

    std::vector<std::pair<link::Identity, std::string>> objects;
    std::vector<std::pair<int, double>> writes;
};

class FakeJob : public link::Job {
  public:
    explicit FakeJob(std::string name, std::vector<std::string>* log = nullptr)
        : name_(std::move(name)), log_(log) {}

    bool active() const override { return running; }
    bool warm_up(link::Engine& engine) override {
        const bool spent = engine.spend_warm_up(step);
        if (spent) note("warm");
        return spent;
    }
    void send_step(link::Engine& engine) override {
        note("send");
        if (key != 0) engine.sendata2(key, 0, 1);
    }
    bool receive_text(link::Engine& engine) override {
        if (!text) return false;
        note("text");
        received += engine.read_text();
        return true;
    }
    link::Received receive_frame(link::Engine&, const link::Payload& payload) override {
        note("frame");
        frames.push_back(payload);
        return result;
    }
    void link_closed(link::Engine&) override { note("closed"); }
    void link_opened(link::Engine&) override { note("opened"); }

    bool running = false;
    int step = 0;
    bool text = false;
    link::WireKey key = 0;
    link::Received result = link::Received::kTaken;
    std::string received;
    std::vector<link::Payload> frames;

  private:
    void note(const char* what) {
        if (log_ != nullptr) log_->push_back(name_ + " " + what);
    }

    std::string name_;
    std::vector<std::string>* log_;
};

class FakeScope final : public link::ScopeLink {
  public:
    bool window_visible() const override { return visible; }
    bool settings_known() const override { return known; }
    bool acquiring() const override { return sampling; }
    void send_step(link::Engine& engine) override {
        ++steps;
        if (key != 0) engine.sendata2(key, 0, 1);
    }
    link::Received receive_frame(link::Engine&, const link::Payload& payload) override {
        frames.push_back(payload);
        return result;
    }
    void link_timed_out(link::Engine&) override {
        ++timed_out;
        sampling = false;
    }
    void link_closed(link::Engine&) override {
        ++closed;
        sampling = false;
    }

    bool visible = false;
    bool known = false;
    bool sampling = false;
    link::WireKey key = 0;
    link::Received result = link::Received::kTaken;
    int steps = 0;
    int timed_out = 0;
    int closed = 0;
    std::vector<link::Payload> frames;
};

class RecordingListener final : public link::StatusListener {
  public:
    void fault_word(int word, std::uint16_t value) override { words.emplace_back(word, value); }
    void firmware_check(std::string_view text) override { checks.emplace_back(text); }
    void lane1_answer(link::Identity object, const link::Payload& payload) override {
        lane1.emplace_back(object, payload);
    }

    std::vector<std::pair<int, std::uint16_t>> words;
    std::vector<std::string> checks;
    std::vector<std::pair<link::Identity, link::Payload>> lane1;
};

class RecordedNotice final : public base::Notice {
  public:
    base::Answer show(std::string_view title, std::string_view text, base::Buttons) override {
        boxes.emplace_back(title, text);
        return answer;
    }

    std::vector<std::pair<std::string, std::string>> boxes;  // title, text
    base::Answer answer = base::Answer::kOk;
};

}  // namespace servo::test
