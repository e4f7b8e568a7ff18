// The form `PosFlow` on the virtual bench, a drive that knows the 208 objects on its line.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/file.h"
#include "position_grids.h"
#include "support/fake_drive.h"
#include "support/fakes.h"
#include "support/virtual_bench.h"
#include "tools/pos_flow.h"

namespace servo::tools {

inline constexpr std::int32_t kResolution = 10000;

struct CountingObserver final : PosFlowObserver {
    void grids_changed() override { ++grids; }
    void editor_changed() override { ++editor; }
    void labels_changed() override { ++labels; }
    int grids = 0;
    int editor = 0;
    int labels = 0;
};

// Without a line.
struct PosFlowForm : test::VirtualBench {
    PosFlowForm() {
        for (const char* name : {"PosFlow.cdo", "PosFlow.ini"})
            std::filesystem::copy_file(std::filesystem::path(SERVO_SOURCE_DIR "/data/sys") / name,
                                       folder / (std::string("sys/") + name));
        form.load(folder.path());
        engine.add_poll_window(form);
        know_encoder();
    }
    void know_encoder(std::int32_t resolution = kResolution) {
        values.operands.o64100320 = {resolution, true};
    }
    const PositionGrids& grids() const { return form.data().grids; }
    const std::string& cell(int row, int column) const {
        return grids().MSHFlexGrid2.at(row, column);
    }
    const std::string& field(int column) const {
        return grids().MSHFlexGrid3.at(register_row::kValues, column);
    }
    void enter(std::string_view text) { form.editor_key(13, text); }
    // Clicks a cell of the steps, types, Enter.
    void edit(int row, int column, std::string_view text) {
        form.MSHFlexGrid2_Click(row, column);
        enter(text);
    }
    void edit_field(int column, std::string_view text) {
        form.MSHFlexGrid3_Click(register_row::kValues, column);
        enter(text);
    }
    std::string put_file(std::string_view bytes) {
        folder.put("table.pft", bytes);
        return (folder / "table.pft").string();
    }

    base::Language language = base::Language::kEnglish;
    dictionary::Store store;
    std::optional<std::string> answer;            // of the file dialog
    std::vector<PositionFileQuestion> questions;  // that it was asked
    PosFlow form{{.engine = engine,
                  .notice = notice,
                  .language = language,
                  .dictionary = store,
                  .ask_file = [this](const PositionFileQuestion& question) {
                      questions.push_back(question);
                      return answer;
                  }}};
};

// With a drive.
struct PosFlowBench : PosFlowForm {
    PosFlowBench() {
        list = *form.data().list;
        for (const link::WireKey key : list)
            drive.add(key, 0);
        drive.add(0x31100101, 0);
        drive.add(0x64100304, kResolution);
        open_link();
        know_encoder();
    }

    // Values that differ from line to line, each in the range of its object; indexes below 8.
    static std::int64_t value_of(int item) {
        switch (transfer_decoder(item)) {
            case 14:
                return item % 2 == 0 ? 100000 + item * 1001 : -100000 - item * 1003;
            case 2:
                return (item * 2477) & 0xFFFF;
            default:
                return (item % 8) * 16 + (item / 8) % 8;
        }
    }
    void fill_drive() {
        for (int item = 0; item < kTransferLines; ++item)
            drive.objects[object(item)].value = stored(item, value_of(item));
    }
    // As the drive keeps it.
    static std::int64_t stored(int item, std::int64_t value) {
        switch (transfer_decoder(item)) {
            case 14:
                return value & 0xFFFFFFFF;
            case 2:
                return value & 0xFFFF;
            default:
                return value & 0xFF;
        }
    }
    link::Identity object(int item) const {
        return dictionary::identity_of(list[static_cast<std::size_t>(item)]);
    }
    // A table whose cells convert to whole numbers of the drive.
    void fill_grids() {
        std::string steps;
        for (int i = 0; i < 32; ++i)
            steps += std::to_string(i) + "," + std::to_string(i * 1000 - 9000) + "," +
                     std::to_string(i * 75 - 900) + "," + std::to_string(i * 100) + "," +
                     std::to_string(i % 8) + "," + std::to_string(7 - i % 8) + "," +
                     register_text(static_cast<std::uint16_t>(i * 2113)) + "," +
                     std::to_string(i * 11) + ",0\r\n";
        std::string ramps = "\r\n";
        for (int i = 0; i < 8; ++i)
            ramps += std::to_string(i) + "," + std::to_string(i * 25 + 25) + "," +
                     std::to_string(i * 50 + 50) + "\r\n";
        form.import_file(put_file(steps + ramps));
    }
    bool finish(std::chrono::microseconds limit = std::chrono::seconds(120)) {
        return run_until([this] { return !form.job_running(); }, limit);
    }
    // Every object holds what its cell says.
    void expect_drive_equals_grid() {
        for (int item = 0; item < kTransferLines; ++item)
            EXPECT_EQ(drive.value(object(item)),
                      stored(item, value_for_drive(grids(), item, kResolution)))
                << item;
    }
    void expect_grid_equals_drive() {
        PositionGrids told = cleared_grids();
        clear_grids(told, form.data().Combo2);
        for (int item = 0; item < kTransferLines; ++item)
            put_value(told, item, static_cast<double>(value_of(item)), kResolution,
                      form.data().Combo2);
        EXPECT_TRUE(grids().MSHFlexGrid1 == told.MSHFlexGrid1);
        for (int row = 1; row <= kPositionSteps; ++row)
            for (int column = 0; column < step_column::kCount; ++column)
                EXPECT_EQ(cell(row, column), told.MSHFlexGrid2.at(row, column))
                    << row << ", " << column;
    }
    // Requests of the job that reached the drive, by the list's line.
    int asked(int item) const {
        int count = 0;
        for (const auto& request : drive.requests)
            count += link::reply_key(request.payload) == object(item) ? 1 : 0;
        return count;
    }

    TransferList list{};
    test::FakeDrive drive{time, line};
};

}  // namespace servo::tools
