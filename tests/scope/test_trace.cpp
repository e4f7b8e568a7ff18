// From the recorder's bytes to traces.
#include "scope/trace.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <numeric>

#include "scope/trace_support.h"

namespace servo::scope {
namespace {

using test::bytes_of;
using test::drive_operands;
using test::first_samples;
using test::upload;
using test::use;

using Samples = std::vector<std::int32_t>;

bool decode(ScopeData& data) {
    return Movingdata(data, drive_operands(), base::Language::kEnglish);
}

TEST(Movingdata, DecodesEachTypeByItsWidthAndSign) {
    struct Case {
        const char* type;
        std::vector<std::uint8_t> bytes;
        Samples samples;
    };
    const std::vector<Case> cases{
        {"uint8", {0x00, 0x7F, 0x80, 0xFF}, {0, 127, 128, 255}},
        {"int8", {0x00, 0x7F, 0x80, 0xFF}, {0, 127, -128, -1}},
        {"uint16", {0x34, 0x12, 0xFF, 0x7F, 0x00, 0x80, 0xFF, 0xFF}, {0x1234, 32767, 32768, 65535}},
        {"int16", {0x34, 0x12, 0xFF, 0x7F, 0x00, 0x80, 0xFF, 0xFF}, {0x1234, 32767, -32768, -1}},
        {"uint32",
         {0x78, 0x56, 0x34, 0x12, 0xFF, 0xFF, 0xFF, 0x7F, 0, 0, 0, 0x80},
         {0x12345678, INT32_MAX, INT32_MIN}},
        {"int32",
         {0x78, 0x56, 0x34, 0x12, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0x80},
         {0x12345678, -1, INT32_MIN}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.type);
        ScopeData data;
        use(data, 0, one.type);
        upload(data, one.bytes);
        ASSERT_TRUE(decode(data));
        EXPECT_EQ(first_samples(data, 0, one.samples.size()), one.samples);
        EXPECT_EQ(data.channels[0].sampleTotal, static_cast<int>(one.samples.size()));
        EXPECT_EQ(data.zoomWindow[0],
                  (ZoomWindow{0, static_cast<std::int16_t>(one.samples.size() - 1)}));
    }
}

TEST(Movingdata, Uint32AllOnesDecodesAsMinusOne) {
    ScopeData data;
    use(data, 2, "uint32");
    upload(data, {0xFF, 0xFF, 0xFF, 0xFF});
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.channels[2].samples[0], -1);
}

TEST(Movingdata, TypeFieldPaddedWithBlanksCounts) {
    ScopeData data;
    use(data, 0, "int8  ");
    upload(data, {0xFE});
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.channels[0].samples[0], -2);
}

TEST(Movingdata, RowsHoldTheTickedChannelsInOrder) {
    ScopeData data;
    use(data, 0, "uint8");
    use(data, 2, "int16");
    use(data, 3, "uint8");
    upload(data, {1, 0x02, 0x01, 3, 4, 0xFF, 0xFF, 6});
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(first_samples(data, 0, 2), (Samples{1, 4}));
    EXPECT_EQ(first_samples(data, 1, 2), (Samples{0, 0}));
    EXPECT_EQ(first_samples(data, 2, 2), (Samples{0x0102, -1}));
    EXPECT_EQ(first_samples(data, 3, 2), (Samples{3, 6}));
    EXPECT_EQ(data.channels[1].sampleTotal, 0);
}

TEST(Movingdata, NothingTickedChangesNothingButTheTotals) {
    ScopeData data;
    use(data, 0, "int16");
    upload(data, bytes_of({1, 2, 3}));
    ASSERT_TRUE(decode(data));
    data.dataValid = false;
    data.channels[0].enable = false;
    const std::string label = data.Label44;
    EXPECT_FALSE(decode(data));
    EXPECT_FALSE(data.dataValid);
    EXPECT_EQ(data.channels[0].sampleTotal, 0);
    EXPECT_EQ(data.channels[0].rawMax, 0);
    EXPECT_EQ(data.channels[0].rawMin, 0);
    EXPECT_EQ(data.channels[0].centre, 0.0);
    EXPECT_EQ(data.channels[0].span, 0.0);
    EXPECT_EQ(first_samples(data, 0, 3), (Samples{1, 2, 3}));
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 2}));
    EXPECT_EQ(data.Label44, label);

    data.dataValid = true;
    EXPECT_FALSE(decode(data));
    EXPECT_TRUE(data.dataValid) << "what is shown stays shown";
}

TEST(Movingdata, BytesOfOtherTypesArePassedOverAndTheChannelStays) {
    ScopeData data;
    use(data, 0, "int8");
    use(data, 1, "String");
    use(data, 2, "int8");
    upload(data, {1, 2, 3, 4});
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.channels[0].sampleTotal, 1);
    EXPECT_EQ(data.channels[0].samples[0], 1);
    EXPECT_EQ(data.channels[2].sampleTotal, 0) << "its turn never comes";
}

TEST(Movingdata, TickedChannelWithoutAnObjectPassesItsBytesOver) {
    ScopeData data;
    use(data, 0, "int8").objectList.ListIndex = 0;
    use(data, 1, "int8");
    upload(data, {1, 2, 3, 4});
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.channels[0].sampleTotal, 0);
    EXPECT_EQ(data.channels[1].sampleTotal, 0);
}

TEST(Movingdata, TrailingBytesStillDecodeInTurn) {
    ScopeData data;
    use(data, 0, "int16");
    use(data, 1, "int16");
    upload(data, bytes_of({10, 20, 11, 21, 12}));  // 2 rows and a half
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(first_samples(data, 0, 3), (Samples{10, 11, 12}));
    EXPECT_EQ(first_samples(data, 1, 3), (Samples{20, 21, 0}));
    EXPECT_EQ(data.channels[0].sampleTotal, 3);
    EXPECT_EQ(data.channels[1].sampleTotal, 2);
    // 10 / 4 - 1 is 1.5: the even neighbour is 2.
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 2}));
}

TEST(Movingdata, ValueThatTheEndCutsTakesTheBytesThatTheBufferHolds) {
    ScopeData data;
    use(data, 0, "uint16");
    data.rawBytes[3] = 0x12;
    upload(data, {1, 0, 0x34});
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(first_samples(data, 0, 2), (Samples{1, 0x1234}));
}

TEST(Movingdata, LastIndexIsRoundedHalvesToEven) {
    struct Case {
        int length;
        int last;
    };
    // One row is four bytes.
    for (const Case one :
         {Case{0, -1}, Case{1, -1}, Case{2, 0}, Case{3, 0}, Case{4, 0}, Case{5, 0}, Case{6, 0},
          Case{7, 1}, Case{8, 1}, Case{10, 2}, Case{14, 2}, Case{18, 4}}) {
        SCOPED_TRACE(one.length);
        ScopeData data;
        use(data, 0, "int16");
        use(data, 1, "int16");
        upload(data, std::vector<std::uint8_t>(static_cast<std::size_t>(one.length), 7));
        ASSERT_TRUE(decode(data));
        EXPECT_EQ(data.zoomWindow[0].last, one.last);
    }
}

TEST(Movingdata, EmptyUploadShowsAnEmptyWindowWithoutHarm) {
    ScopeData data;
    use(data, 0, "int16");
    upload(data, bytes_of({1, 2, 3}));
    ASSERT_TRUE(decode(data));
    data.cursors[0].on = true;
    upload(data, {});
    ASSERT_TRUE(decode(data));
    EXPECT_TRUE(data.dataValid);
    EXPECT_EQ(data.channels[0].sampleTotal, 0);
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, -1}));
    EXPECT_EQ(data.cursor_texts.Label25, "") << "no sample to stand on";
    EXPECT_EQ(data.cursor_texts.Label35, "");
    EXPECT_EQ(data.channels[0].scaleText, "2.0E-01") << "a flat trace";
}

TEST(Movingdata, RowsWithoutBytesEndTheActionAndKeepTheWindow) {
    ScopeData data;
    use(data, 0, "int16");
    upload(data, bytes_of({1, 2, 3}));
    ASSERT_TRUE(decode(data));
    data.rowBytes = 0;
    EXPECT_FALSE(decode(data));
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 2}));
}

TEST(Movingdata, BufferFilledToItsLastByteDecodes) {
    ScopeData data;
    use(data, 0, "uint8");
    std::vector<std::uint8_t> bytes(kMaxBytes);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    upload(data, bytes);
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.channels[0].sampleTotal, 8192);
    EXPECT_EQ(data.channels[0].samples[8191], 255);
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 8191}));
}

TEST(Movingdata, ByteBeyondTheBufferEndsTheActionWithoutHarm) {
    ScopeData data;
    use(data, 0, "uint8");
    use(data, 1, "uint16");
    const std::vector<std::uint8_t> bytes(kMaxBytes, 1);  // 2730 rows of 3, and 2 bytes
    upload(data, bytes);
    data.zoomWindow[0] = {0, 41};
    EXPECT_FALSE(decode(data));
    EXPECT_TRUE(data.dataValid);
    EXPECT_EQ(data.channels[0].sampleTotal, 2731);
    EXPECT_EQ(data.channels[1].sampleTotal, 2730);
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 41}));

    data.rawLength = 9000;
    EXPECT_FALSE(decode(data));
}

TEST(Movingdata, ImportModeStoresNothingButWalks) {
    ScopeData data;
    data.importMode = true;
    use(data, 1, "int16");
    use(data, 3, "uint8");
    data.channels[1].samples = Samples(kMaxSamples, 0);
    std::copy_n(Samples{5, -7, 900, 2}.begin(), 4, data.channels[1].samples.begin());
    std::copy_n(Samples{9, 9, 8, 10}.begin(), 4, data.channels[3].samples.begin());
    data.rawBytes.fill(0xEE);
    data.rowBytes = 3;
    data.rawLength = 12;
    ASSERT_TRUE(decode(data));
    EXPECT_TRUE(data.dataValid);
    EXPECT_EQ(first_samples(data, 1, 4), (Samples{5, -7, 900, 2}));
    EXPECT_EQ(data.channels[1].sampleTotal, 4);
    EXPECT_EQ(data.channels[1].rawMax, 900);
    EXPECT_EQ(data.channels[1].rawMin, -7);
    EXPECT_EQ(data.channels[3].rawMax, 10);
    EXPECT_EQ(data.channels[3].rawMin, 8);
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 3}));
}

TEST(Movingdata, ImportOf8192RowsOfEightBytesIsNotTooLong) {
    ScopeData data;
    data.importMode = true;
    for (int i = 0; i < kCurves; ++i)
        use(data, i, "int16");
    data.rowBytes = 8;
    data.rawLength = 8 * 8192;
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.zoomWindow[0], (ZoomWindow{0, 8191}));
    EXPECT_EQ(data.channels[3].sampleTotal, 8192);
}

TEST(Movingdata, ImportOfMoreThan8192RowsEndsTheActionAndKeepsTheWindow) {
    ScopeData data;
    data.importMode = true;
    use(data, 0, "uint8");
    data.rowBytes = 1;
    data.rawLength = 8193;
    EXPECT_FALSE(decode(data));
    EXPECT_EQ(data.channels[0].sampleTotal, 8192);
    EXPECT_EQ(data.zoomWindow[0], ZoomWindow{});

    // The same where the first channel has no number, so that nothing is counted.
    use(data, 1, "String");
    data.channels[0].enable = false;
    EXPECT_FALSE(decode(data));
    EXPECT_EQ(data.zoomWindow[0], ZoomWindow{});
}

TEST(Movingdata, ViewIsResetToTheWholeRecording) {
    ScopeData data;
    use(data, 0, "int16");
    upload(data, bytes_of({1, 2, 3, 4}));
    data.zoomDepth = 3;
    data.zoomWindow[3] = {1, 2};
    ASSERT_TRUE(decode(data));
    EXPECT_EQ(data.zoomDepth, 0);
    EXPECT_EQ(data.window(), (ZoomWindow{0, 3}));
    EXPECT_EQ(data.channels[0].rawMax, 4);
    EXPECT_EQ(data.channels[0].rawMin, 1);
    EXPECT_FALSE(data.y_labels[0][0].empty()) << "the grid is labelled as well";
}

RC_GTEST_PROP(MovingdataProperty, DecodesWhatARecorderOfAnySetUpSends, ()) {
    static const std::vector<std::string> kTypes{"uint8", "int8",   "uint16",
                                                 "int16", "uint32", "int32"};
    ScopeData data;
    std::vector<int> used;
    for (int i = 0; i < kCurves; ++i) {
        if (!*rc::gen::arbitrary<bool>()) continue;
        use(data, i, *rc::gen::elementOf(kTypes));
        used.push_back(i);
    }
    RC_PRE(!used.empty());
    const auto rows = *rc::gen::inRange<std::size_t>(0, 64);
    std::array<Samples, kCurves> sent;
    std::vector<std::uint8_t> bytes;
    for (std::size_t row = 0; row < rows; ++row) {
        for (const int channel : used) {
            const auto place = static_cast<std::size_t>(channel);
            const std::string type = data.channels[place].picked_type();
            const int width = width_of(type);
            const auto bits = *rc::gen::arbitrary<std::uint32_t>();
            for (int i = 0; i < width; ++i)
                bytes.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
            const std::int64_t range = std::int64_t{1} << (8 * width);
            std::int64_t value = bits % range;
            const bool is_signed = type[0] == 'i' || width == 4;
            if (is_signed && value >= range / 2) value -= range;
            sent[place].push_back(static_cast<std::int32_t>(value));
        }
    }
    upload(data, bytes);
    RC_ASSERT(decode(data));
    for (int i = 0; i < kCurves; ++i) {
        const Samples& expected = sent[static_cast<std::size_t>(i)];
        RC_ASSERT(first_samples(data, i, expected.size()) == expected);
        RC_ASSERT(data.channels[static_cast<std::size_t>(i)].sampleTotal ==
                  static_cast<int>(expected.size()));
    }
    RC_ASSERT(data.zoomWindow[0].last == static_cast<int>(rows) - 1);
}

RC_GTEST_PROP(MovingdataProperty, SurvivesAnyLengthAndRow, ()) {
    ScopeData data;
    data.importMode = *rc::gen::arbitrary<bool>();
    for (int i = 0; i < kCurves; ++i) {
        use(data, i, *rc::gen::element<std::string>("uint8", "int16", "int32", "String", ""));
        data.channels[static_cast<std::size_t>(i)].enable = *rc::gen::arbitrary<bool>();
    }
    data.rawLength = *rc::gen::inRange(-10, 40000);
    data.rowBytes = *rc::gen::inRange(-1, 17);
    decode(data);
    RC_ASSERT(data.zoomWindow[0].first == 0);
    RC_ASSERT(data.zoomWindow[0].last >= -1);
    RC_ASSERT(data.zoomWindow[0].last < static_cast<int>(kMaxSamples));
}

}  // namespace
}  // namespace servo::scope
