// A browser over a dictionary made in the test, and a watcher of what it tells.
#pragma once

#include "params/object_browser.h"
#include "params/test_page_support.h"

namespace servo::params::test {

// Rows 1 to 8 of the list, with every trait that a rule looks at.
inline std::vector<Entry> browser_entries() {
    return {
        {"606000", "工作模式", "Operation Mode", "Integer8", "RWL", "[DEC]N*1",
         "选择模式。|1:位置|3:速度", "Chooses the mode.|1:Position|3:Velocity"},
        {"606300", "实际位置", "Position Actual", "Integer32", "RH", "[inc]N*1", "编码器位置",
         "Place of the <b>encoder</b>"},
        {"607A00", "目标位置", "Target Position", "Integer32", "RW", "[inc]N*1"},
        {"60FF00", "目标速度", "Target Velocity", "Integer32", "RW", kRpm},
        {"604000", "控制字", "Control Word", "Unsigned16", "RW", "[HEX]N*1\n[DEC]N*1"},
        {"100900", "硬件版本", "Hardware Version", "Visible String", "R", "[ASCII]N*1"},
        {"60F611", "电流ΩⅣ", "Current Gain", "Unsigned16", "RW", "[DEC]N*1"},
        {"608600", "电机电流", "Motor Current", "Unsigned8", "R", "[DEC]N*1"},
    };
}

struct BrowserWatcher final : BrowserObserver {
    int lists = 0;
    int shown = 0;
    int to_top = 0;
    int searches = 0;
    int aims = 0;
    void list_changed() override { ++lists; }
    void object_shown(bool top) override {
        ++shown;
        to_top += top ? 1 : 0;
    }
    void search_changed() override { ++searches; }
    void aim_changed() override { ++aims; }
};

struct BrowserBench {
    explicit BrowserBench(const std::vector<Entry>& entries = browser_entries()) : bench(entries) {
        browser.hide = [this] { ++hidden; };
        browser.Init_OD_Grid();
    }

    enum : int { kMode = 1, kActual, kTarget, kVelocity, kControl, kText, kGain, kCurrent };

    Bench bench;
    ModbusList modbus{true, {{"606000", "1A00"}, {"60f611", "2B00"}}};
    ObjectBrowser browser{{modbus, bench.services()}};
    int hidden = 0;

    void search(std::string_view text) {
        browser.Text2_Change(text);
        browser.Command1_Click();
    }
    void language(base::Language language) {
        bench.language = language;
        browser.Init_OD_Grid();
    }
};

}  // namespace servo::params::test
