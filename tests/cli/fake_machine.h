// A machine for the commands: a small dictionary in a folder, a link whose answers stand in a
// table, and everything printed in two texts.
#pragma once

#include <chrono>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "cli/run.h"
#include "dictionary/raw_record.h"

namespace servo::cli {

class FakeSession final : public LinkSession {
  public:
    std::map<dictionary::Identity, Reply> answers;  // anything else is refused
    Reply write_answer{Outcome::kDone, 0.0, {}, 0};
    std::vector<std::pair<dictionary::WireKey, std::int32_t>> writes;
    link::FormulaOperands known;       // what a wait brings
    int accesses_until_ctrl_c = 1000;  // reads and pauses

    Reply read(dictionary::Identity key, const std::string& type,
               std::chrono::milliseconds) override {
        types.push_back(type);
        time_ += std::chrono::milliseconds(10);
        if (accesses_until_ctrl_c-- <= 0) return {Outcome::kInterrupted, 0.0, {}, 0};
        const auto found = answers.find(key);
        return found == answers.end() ? Reply{Outcome::kRefused, 0.0, {}, 0x06020000}
                                      : found->second;
    }
    Reply write(dictionary::WireKey key, std::int32_t value, std::chrono::milliseconds) override {
        writes.emplace_back(key, value);
        return write_answer;
    }
    Reply write_setting(dictionary::WireKey key, std::int32_t value,
                        std::chrono::milliseconds limit) override {
        return write(key, value, limit);
    }
    Reply write_last(dictionary::WireKey key, std::int32_t value,
                     std::chrono::milliseconds limit) override {
        return write(key, value, limit);
    }
    Outcome wait(const std::function<bool()>& condition, std::chrono::milliseconds limit) override {
        if (condition()) return Outcome::kDone;
        if (accesses_until_ctrl_c-- <= 0) return Outcome::kInterrupted;
        operands_ = known;
        ++waits;
        if (condition()) return Outcome::kDone;
        time_ += limit;
        return wait_outcome;
    }
    const link::FormulaOperands& operands() const override { return operands_; }
    std::chrono::microseconds now() const override { return time_; }

    std::vector<std::string> types;
    int waits = 0;
    Outcome wait_outcome = Outcome::kNoAnswer;

  private:
    link::FormulaOperands operands_;
    std::chrono::microseconds time_{5'000'000};
};

class FakeMachine final : public Environment {
  public:
    FakeMachine() {
        const std::string speed =
            "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]\n[DEC]N*1\n[HEX]N*1";
        std::string records;
        const auto add = [&](RawRecord record) { records += record.bytes(); };
        add({"6063", "00", "\xCA\xB5\xBC\xCA\xCE\xBB\xD6\xC3", "Actual Position", "Integer32", "RH",
             "", "where it is", "[DEC]N*1", "0100"});
        add({"60FF", "00", "", "Target Velocity", "Integer32", "RWL", "", "", speed, "0200"});
        add({"6040", "00", "", "Controlword", "Unsigned16", "RW", "", "|0:Off|1:On", "[HEX]N*1"});
        add({"6060", "00", "", "Mode", "Integer8", "RW", "", "", "[DEC]N*1"});
        add({"1008", "00", "", "Device Name", "Visible String", "R", "", "", ""});
        add({"100A", "00", "", "Writable Name", "Visible String", "RW", "", "", ""});
        add({"2FF1", "00", "", "Odd Thing", "Domain", "RW", "", "", ""});
        add({"3001", "00", "", "Guarded", "Integer32", "RW", "", "",
             "[DEC x]N*[30400710]\n[DEC]N*1"});
        folder.put("qorlan.dat", records);
    }

    std::vector<link::PortDirectory::Entry> ports(const Options&) override {
        return {{"COM11", "/dev/ttyUSB0", "USB-Serial"}, {"COM1", "/dev/ttyS0", ""}};
    }
    OpenedLink open_link(const Options&) override {
        ++opened;
        OpenedLink link;
        if (link_error.empty())
            link.session = &session;
        else
            link.error = link_error;
        return link;
    }

    // The status of the program.
    int run(std::vector<std::string> arguments) {
        out.clear();
        err.clear();
        ParsedLine line = parse_command_line(std::move(arguments));
        if (!line.options) {
            out = line.end.out;
            err = line.end.err;
            return static_cast<int>(line.end.status);
        }
        if (line.options->data.empty()) line.options->data = folder.path();
        const Output output{[this](std::string_view text) { out += text; },
                            [this](std::string_view text) { err += text; }};
        return static_cast<int>(run_command(*line.options, *this, output));
    }

    TempFolder folder;
    FakeSession session;
    std::string link_error;
    int opened = 0;
    std::string out;
    std::string err;
};

inline Reply number(double value) {
    return {Outcome::kDone, value, {}, 0};
}

}  // namespace servo::cli
