// The scan on an engine that is stepped by hand.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "link/direct_bench.h"
#include "tuner/scan.h"

namespace servo::test {

struct ScanWatcher final : tuner::ScanObserver {
    void scan_moved() override { ++moved; }
    void scan_ended(bool finished) override { ends.push_back(finished); }

    int moved = 0;
    std::vector<bool> ends;  // whether each was finished
};

struct ScanBench : DirectBench {
    ScanBench() { engine.add_job(link::JobPlace::kScan, scan); }

    // The boxes; each of them keeps its text when none is given.
    void type(std::string start, std::string step, std::string stop, std::string current = "60") {
        data.Text2 = std::move(start);
        data.Text4 = std::move(step);
        data.Text3 = std::move(stop);
        data.Text1 = std::move(current);
    }
    bool refused_with(const std::string& title, const std::string& text) {
        notice.boxes.clear();
        if (scan.start()) return false;
        return notice.boxes == std::vector<std::pair<std::string, std::string>>{{title, text}} &&
               state.scanRequested == 0;
    }
    // The three ticks that clear the line.
    void warm_up() {
        for (int i = 0; i < 3; ++i)
            tick();
    }
    // The request of a send tick.
    std::optional<link::Payload> request() {
        state.sendmod = 0;
        return tick();
    }
    // A receive tick that finds this.
    void receive(const link::Payload& payload) {
        state.sendmod = 1;
        feed(payload);
        tick();
    }
    void receive_nothing() {
        state.sendmod = 1;
        tick();
    }

    // What the drive answers to the request of a step when all is well.
    static link::Payload accepted(int step, std::uint32_t value = 0) {
        switch (step) {
            case 3:
                return answer(0x304002, value, 0x60);
            case 4:
                return answer(0x304003, value, 0x60);
            case 5:
                return answer(0x304004, value, 0x60);
            case 6:
                return answer(0x60F910, value, 0x60);
            case 7:
                return answer(0x304001, value, 0x60);
            case 8:
                return answer(0x304001, value, 0x4F);
            case 9:
                return answer(0x30400A, value, 0x4F);
            case 10:
                return answer(0x641003, value, 0x43);
            case 11:
                return answer(0x651003, value, 0x4B);
            case 12:
                return answer(0x60F901, value, 0x4B);
            case 13:
                return answer(0x60F902, value, 0x4B);
            case 14:
                return answer(0x304005, value, 0x60);
            case 15:
                return answer(0x304005, value, 0x43);
            default:
                return {};
        }
    }
    // From the start to the step before its first request.
    void go_to(int step) {
        ASSERT_TRUE(scan.start());
        warm_up();
        for (int at = 3; at < step; ++at) {
            request();
            receive(accepted(at));
        }
        ASSERT_EQ(state.scanStep, step);
    }
    // One entry: the address that was asked for, after the words were given.
    std::int32_t give(std::uint32_t words) {
        const auto address = request();
        receive(accepted(14));
        request();
        receive(accepted(15, words));
        return address ? (*address)[4] | (*address)[5] << 8 : -1;
    }

    tuner::TunerData data;
    base::Language language = base::Language::kEnglish;
    RecordedNotice notice;
    bool open = true;
    tuner::TunerServices services{
        .engine = engine, .notice = notice, .language = language, .link_open = [this] {
            return open;
        }};
    ScanWatcher watcher;
    tuner::FrequencyScan scan{data, services, watcher};
};

}  // namespace servo::test
