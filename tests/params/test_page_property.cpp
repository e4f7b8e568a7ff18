// What holds for a grid whatever the user and the poller do to it.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <set>

#include "params/page_grid.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using test::Bench;

enum class Act : std::uint8_t {
    kLeft,
    kRight,
    kBelow,
    kEnterInGrid,
    kMove,
    kAdd,
    kDelete,
    kAnswer,
    kKey,
    kEnter,
    kChoose,
    kFocus,
    kLanguage,
    kEnd,
};

struct Step {
    Act act = Act::kLeft;
    int row = 0;
    int column = 0;
    std::string text;
};

dictionary::Identity some_key(int number) {
    static const auto kEntries = test::sample_entries();
    const auto& entry = kEntries.at(static_cast<std::size_t>(number) % kEntries.size());
    return static_cast<dictionary::Identity>(std::stoi(std::string(entry.index), nullptr, 16));
}

rc::Gen<Step> steps() {
    const auto texts =
        rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789-.ABCx")));
    return rc::gen::build<Step>(
        rc::gen::set(&Step::act, rc::gen::map(rc::gen::inRange(0, static_cast<int>(Act::kEnd)),
                                              [](int act) { return static_cast<Act>(act); })),
        rc::gen::set(&Step::row, rc::gen::inRange(-1, 16)),
        rc::gen::set(&Step::column, rc::gen::inRange(-1, 12)), rc::gen::set(&Step::text, texts));
}

// Writes that a step may make: none but those of Enter in the text editor and of a choice.
bool may_write(const Step& step, const EditorState& before) {
    if (step.act == Act::kEnter) return before.open == Editor::kText;
    return step.act == Act::kChoose && before.open == Editor::kList && before.column == kValue;
}

void play(Bench& bench, PageGrid& grid, const Step& step) {
    switch (step.act) {
        case Act::kLeft:
            grid.grid_mouse_down(MouseButton::kLeft, CellPosition{step.row, step.column});
            break;
        case Act::kRight:
            grid.grid_mouse_down(MouseButton::kRight, CellPosition{step.row, step.column});
            break;
        case Act::kBelow:
            grid.grid_mouse_down(MouseButton::kLeft, std::nullopt);
            break;
        case Act::kEnterInGrid:
            grid.open_editor();
            break;
        case Act::kMove:
            grid.move_current(step.row - 7);
            break;
        case Act::kAdd:
            grid.add_row(some_key(step.column + 1), step.row);
            break;
        case Act::kDelete:
            grid.delete_row(step.row);
            break;
        case Act::kAnswer:
            grid.set_value(step.row, step.column * 1000.0, 14);
            break;
        case Act::kKey:
            grid.editor_key(static_cast<char32_t>(step.column + 40), step.text);
            grid.list_key(static_cast<char32_t>(step.column + 40), step.text);
            break;
        case Act::kEnter:
            grid.editor_key(kKeyEnter, step.text);
            break;
        case Act::kChoose:
            grid.choose(step.row);
            break;
        case Act::kFocus:
            grid.editor_lost_focus(step.row % 2 == 0 ? Editor::kText : Editor::kList);
            break;
        case Act::kLanguage:
            bench.language =
                step.row % 2 == 0 ? base::Language::kChinese : base::Language::kEnglish;
            grid.apply_language();
            break;
        case Act::kEnd:
            break;
    }
}

void check_rows(const Bench& bench, const PageGrid& grid) {
    std::set<dictionary::Identity> keys;
    for (int i = 1; i < grid.rows(); ++i) {
        const Row& row = grid.row(i);
        const Row fresh = build_row(bench.dictionary, row.identity(), i - 1, bench.language);
        RC_ASSERT(row.number == fresh.number);
        RC_ASSERT(row.read_only == fresh.read_only);
        RC_ASSERT(keys.insert(row.identity()).second);
    }
}

void check_editor(const PageGrid& grid) {
    const EditorState& editor = grid.editor();
    RC_ASSERT(grid.current().row >= 0 && grid.current().row < grid.rows());
    if (editor.open == Editor::kNone) return;
    RC_ASSERT(editor.row > 0 && editor.row < grid.rows());
    RC_ASSERT(editor.column == kUnit ||
              (editor.column == kValue && !grid.read_only_cell(editor.row, kValue)));
}

RC_GTEST_PROP(PageGridProperty, RowsEditorsAndWritesStayConsistent, ()) {
    Bench bench;
    PageGrid grid = bench.grid({0x606000, 0x606300, 0x607A00, 0x60FF00});
    for (const Step& step : *rc::gen::container<std::vector<Step>>(steps())) {
        const EditorState before = grid.editor();
        const std::size_t writes = bench.writes.size();
        play(bench, grid, step);
        RC_ASSERT(bench.writes.size() <= writes + 1);
        if (bench.writes.size() > writes) {
            RC_ASSERT(may_write(step, before));
            RC_ASSERT(grid.editor().open == Editor::kNone);
        }
        check_rows(bench, grid);
        check_editor(grid);
    }
}

RC_GTEST_PROP(PageGridProperty, AWriteIsWhatTheEvaluatorMakesOfTheText, (std::int32_t value)) {
    Bench bench;
    PageGrid grid = bench.grid({0x607A00});
    grid.grid_mouse_down(MouseButton::kLeft, CellPosition{1, kValue});
    const std::string text = fmt::format("{}", value);
    grid.editor_key(kKeyEnter, text);
    if (text.size() > 10) {
        RC_ASSERT(bench.writes.empty());
    } else {
        RC_ASSERT(bench.writes == std::vector<test::Write>({{0x607A0004, value}}));
    }
}

}  // namespace
}  // namespace servo::params
