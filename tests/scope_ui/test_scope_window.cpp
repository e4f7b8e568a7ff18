// The oscilloscope's window through its controls, by their names.
#include "scope_window_bench.h"

namespace servo::scope::test {
namespace {

TEST(ScopeWindow, HasEveryControlUnderItsName) {
    WindowBench bench;
    std::vector<std::string> names{"Picture1", "Label18", "Label25", "Label27", "Label44",
                                   "ProgressBar1", "Label40", "LabelX1", "LabelX2", "LabelY1",
                                   "LabelY2"};
    const auto add = [&](const char* kind, int first, int last) {
        for (int number = first; number <= last; ++number)
            names.push_back(kind + std::to_string(number));
    };
    const auto add_array = [&](const char* kind, int count) {
        for (int index = 0; index < count; ++index)
            names.push_back(numbered(kind, index));
    };
    add("Text", 1, 12);
    add("Combo", 1, 9);
    add("Combo", 11, 12);
    add("Image", 1, 10);
    add("Check", 1, 14);
    add("Command", 6, 13);
    add("Label", 1, 4);
    add("Label", 7, 10);
    add("Label", 16, 22);
    add("Label", 31, 35);
    add_array("Label15", 5);
    add_array("Label43", 10);
    add_array("ObjectButton", 5);
    names.insert(names.end(), {"Label14", "Label29"});
    for (const std::string& name : names)
        EXPECT_NE(app::find_control(bench.window, to_qt(name)), nullptr) << name;
}

}  // namespace
}  // namespace servo::scope::test
