// Rows, tags, columns, and where the parts of the form stand.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "digital_io_bench.h"
#include "tools/digital_io_layout.h"
#include "tools/digital_io_rows.h"

namespace servo::tools::test {
namespace {

TEST(DigitalIORows, TagsAndKeysOfEveryRow) {
    constexpr std::array<std::pair<const char*, link::WireKey>, 15> kTold{
        {{"OD:201003:OD", 0x20100302},
         {"OD:201004:OD", 0x20100402},
         {"OD:201005:OD", 0x20100502},
         {"OD:201006:OD", 0x20100602},
         {"OD:201007:OD", 0x20100702},
         {"OD:201008:OD", 0x20100802},
         {"OD:201009:OD", 0x20100902},
         {"OD:20101D:OD", 0x20101D02},
         {"OD:20100F:OD", 0x20100F02},
         {"OD:201010:OD", 0x20101002},
         {"OD:201011:OD", 0x20101102},
         {"OD:201012:OD", 0x20101202},
         {"OD:201013:OD", 0x20101302},
         {"OD:20101E:OD", 0x20101E02},
         {"OD:20101F:OD", 0x20101F02}}};
    for (std::size_t row = 0; row < kTold.size(); ++row) {
        EXPECT_EQ(tag_of(static_cast<int>(row)), kTold[row].first);
        EXPECT_EQ(key_of_tag(tag_of(static_cast<int>(row))), kTold[row].second);
        EXPECT_EQ(row_of(dictionary::identity_of(kTold[row].second)), static_cast<int>(row));
    }
}

TEST(DigitalIORows, TheRowWithoutAPinHasNoTagAndTheKeyTwo) {
    EXPECT_EQ(tag_of(kPinlessRow), "");
    EXPECT_EQ(key_of_tag(""), 2U);
    EXPECT_FALSE(is_pin(kPinlessRow));
    EXPECT_FALSE(is_pin(-1));
    EXPECT_EQ(tag_of(16), "");
    EXPECT_EQ(row_of(0), std::nullopt);
}

TEST(DigitalIORows, TheLastTwoColumnsOfTheOutputsAreInTheOtherOrder) {
    struct Told {
        link::Identity object;
        IoSide side;
        IoColumn column;
    };
    constexpr Told kTold[] = {
        {0x201001, IoSide::kInput, IoColumn::kSimulate},
        {0x201002, IoSide::kInput, IoColumn::kPolarity},
        {0x20100A, IoSide::kInput, IoColumn::kInternal},  // Check2
        {0x20100B, IoSide::kInput, IoColumn::kReal},      // Check4
        {0x20100D, IoSide::kOutput, IoColumn::kSimulate},
        {0x20100E, IoSide::kOutput, IoColumn::kPolarity},
        {0x201015, IoSide::kOutput, IoColumn::kInternal},  // Check2
        {0x201014, IoSide::kOutput, IoColumn::kReal},      // Check4
    };
    for (const Told& told : kTold) {
        const auto states = states_of(told.object);
        ASSERT_TRUE(states) << told.object;
        EXPECT_EQ(states->side, told.side) << told.object;
        EXPECT_EQ(states->column, told.column) << told.object;
        EXPECT_EQ(dictionary::identity_of(column_key(told.side, told.column)), told.object);
        EXPECT_EQ(column_key(told.side, told.column) & 0xFFU, 2U);
    }
    EXPECT_FALSE(states_of(0x20100C)) << "the input filter";
    EXPECT_FALSE(states_of(0x260501));
}

TEST(DigitalIORows, EveryObjectIsReadWithLane1AndIsOneThingOnly) {
    std::set<link::Identity> found;
    for (const link::WireKey key : link::Engine::status_list(1)) {
        const link::Identity object = dictionary::identity_of(key);
        EXPECT_FALSE(states_of(object) && row_of(object)) << object;
        if (states_of(object) || row_of(object)) found.insert(object);
    }
    EXPECT_EQ(found.size(), 8U + 15U);
}

TEST(DigitalIORows, CaptionsOfTheColumns) {
    EXPECT_EQ(column_caption(IoSide::kInput, IoColumn::kInternal), "有效输入/Internal");
    EXPECT_EQ(column_caption(IoSide::kInput, IoColumn::kReal), "实际输入/Real");
    EXPECT_EQ(column_caption(IoSide::kOutput, IoColumn::kInternal), "系统输出/Internal");
    EXPECT_EQ(column_caption(IoSide::kOutput, IoColumn::kReal), "有效输出/Real");
    EXPECT_EQ(column_caption(IoSide::kOutput, IoColumn::kSimulate), "仿真/Simulate");
    EXPECT_EQ(column_caption(IoSide::kInput, IoColumn::kPolarity), "电平/Polarity");
    EXPECT_EQ(frame_caption(IoSide::kInput), "数字输入/Digital Input");
    EXPECT_EQ(frame_caption(IoSide::kOutput), "数字输出/Digital Output");
    EXPECT_EQ(kShownColumns[0], IoColumn::kSimulate);
    EXPECT_EQ(kShownColumns[1], IoColumn::kInternal);
    EXPECT_EQ(kShownColumns[2], IoColumn::kPolarity);
    EXPECT_EQ(kShownColumns[3], IoColumn::kReal);
}

TEST(DigitalIOLayout, TheVariantsDifferAndNothingOverlaps) {
    using dictionary::Variant;
    const IoLayout full = layout_of(Variant::kAllItems);
    const IoLayout reduced = layout_of(Variant::kReduced);
    EXPECT_LT(full.inputs.row, full.outputs.row) << "one above the other";
    EXPECT_EQ(full.inputs.column, full.outputs.column);
    EXPECT_LT(reduced.inputs.column, reduced.outputs.column) << "side by side";
    EXPECT_EQ(reduced.inputs.row, reduced.outputs.row);
    for (const IoLayout& layout : {full, reduced}) {
        std::set<std::pair<int, int>> cells;
        for (const IoPlace& place : {layout.inputs, layout.outputs, layout.chooser})
            for (int row = place.row; row < place.row + place.rows; ++row)
                for (int column = place.column; column < place.column + place.columns; ++column)
                    EXPECT_TRUE(cells.emplace(row, column).second);
        EXPECT_TRUE(cells.contains({layout.growing_row, layout.chooser.column}))
            << "the chooser gets the room that is left over";
    }
}

TEST(DigitalIOLayout, BoxesStandInColumnsOfSeventeenAndNine) {
    EXPECT_EQ(box_place(IoSide::kInput, 0), (IoBoxPlace{0, 0}));
    EXPECT_EQ(box_place(IoSide::kInput, 16), (IoBoxPlace{16, 0}));
    EXPECT_EQ(box_place(IoSide::kInput, 17), (IoBoxPlace{0, 1}));
    EXPECT_EQ(box_place(IoSide::kInput, 33), (IoBoxPlace{16, 1}));
    EXPECT_EQ(box_place(IoSide::kOutput, 8), (IoBoxPlace{8, 0}));
    EXPECT_EQ(box_place(IoSide::kOutput, 9), (IoBoxPlace{0, 1}));
    EXPECT_EQ(box_place(IoSide::kOutput, 17), (IoBoxPlace{8, 1}));
}

TEST(DigitalIOLayout, PitchInPixels) {
    EXPECT_EQ(pixels(box_pitch(IoSide::kInput), 96), 18);
    EXPECT_EQ(pixels(box_pitch(IoSide::kOutput), 96), 20);
    EXPECT_EQ(pixels(box_pitch(IoSide::kOutput), 192), 40);
}

}  // namespace
}  // namespace servo::tools::test
