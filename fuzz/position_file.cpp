// A .pft file, and everything that is made of what it holds: the table's text, its rows, its flow
// and its motion.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tools/position_table_file.h"
#include "tools/position_table_findings.h"
#include "tools/position_table_motion_picture.h"
#include "tools/position_table_register.h"
#include "tools/position_table_rows.h"
#include "tools/position_table_transfer.h"

using namespace servo;

namespace {
void require(bool holds) {
    if (!holds) std::abort();
}

void draw(const tools::PositionGrids& grids) {
    const tools::PositionProgram program = tools::read_program(grids);
    const tools::Flow flow = tools::analyse_flow(program, 0);
    for (const double resolution : {0.0, 10000.0}) {
        for (const tools::Finding& finding : tools::find_faults(grids, program, flow, resolution)) {
            require(!tools::finding_text(finding, base::Language::kEnglish).empty());
            require(!tools::finding_text(finding, base::Language::kChinese).empty());
        }
    }
    const tools::Motion motion = tools::simulate_motion(program, 0, 10000);
    require(motion.duration >= 0 && motion.visits.size() <= tools::kMostVisits);
    tools::motion_picture(motion, 10000, 800, 300, {});
    const tools::FlowPicture picture =
        tools::flow_picture(program, flow, 800, {}, base::Language::kEnglish);
    require(!picture.boxes.empty() && picture.boxes.size() <= tools::kPositionSteps);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const tools::ListItems items = tools::combo2_items(base::Language::kEnglish);
    tools::PositionGrids grids = tools::make_grids(base::Language::kEnglish, items);
    const tools::PositionGrids cleared = grids;
    const tools::PositionFileRows rows = tools::take_position_file(bytes, grids, items);
    require(grids.MSHFlexGrid2.cells.front() == cleared.MSHFlexGrid2.cells.front());
    require(grids.MSHFlexGrid1.cells.front() == cleared.MSHFlexGrid1.cells.front());
    for (int row = 1; row <= tools::kPositionSteps; ++row)
        require(grids.MSHFlexGrid2.at(row, 0) == std::to_string(row - 1));
    require(!rows.all_steps || rows.steps >= tools::kPositionSteps);

    // What was written is what was held, as far as the code page has its characters.
    const std::string written = tools::position_file_bytes(grids);
    tools::PositionGrids again = cleared;
    tools::take_position_file(written, again, items);
    require(tools::position_file_bytes(again) == written);

    for (int line = 0; line < tools::kTransferLines; ++line)
        tools::value_for_drive(grids, line, 10000);
    draw(grids);

    tools::StepGrid steps = cleared.MSHFlexGrid2;
    const tools::PasteResult pasted = tools::paste_rows(steps, 1, bytes, items);
    require(pasted.rows > 0 || steps == cleared.MSHFlexGrid2);
    tools::parse_transfer_list(bytes);
    return 0;
}
