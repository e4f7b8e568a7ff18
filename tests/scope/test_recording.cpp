// Recordings taken off the screen, their tables, and the places for references.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <bit>
#include <charconv>
#include <cmath>

#include "scope/recording.h"
#include "scope/scope_file_support.h"

namespace servo::scope {
namespace {

using base::Language;

constexpr std::string_view kMark = "\xEF\xBB\xBF";

// A screen that holds five samples of two channels, in A and in raw numbers.
Program recorded() {
    Program program;
    program.data.Text1 = "2";
    program.data.dataValid = true;
    program.operands.o65100310 = {200, true};
    program.record(0, kCurrent);
    program.record(2, kPosition);
    program.pick(3, kSpeed);
    for (const std::size_t channel : {0U, 2U}) {
        auto& list = program.data.channels[channel].unitList;
        Add_Unit_To_CH(0, program.data.channels[channel]);
        list.ListIndex = 0;
    }
    for (int i = 0; i < 5; ++i)
        program.put_samples(static_cast<std::size_t>(i), {1024 * i, 7, -i, 8});
    return program;
}

Recording take(const Program& program, ZoomWindow window) {
    return recording_of(program.data, window, program.operands);
}

TEST(Recording, HoldsTheEnabledChannelsInTheirUnits) {
    const Recording recording = take(recorded(), {0, 4});
    EXPECT_EQ(recording.period_us, 125.0);
    EXPECT_EQ(recording.start_us, 0.0);
    ASSERT_EQ(recording.curves.size(), 2U);
    EXPECT_EQ(recording.curves[0].channel, 0);
    EXPECT_EQ(recording.curves[0].object, "Actual current");
    EXPECT_EQ(recording.curves[0].unit, "Ap");
    EXPECT_EQ(recording.curves[0].values, (std::vector<double>{0, 10, 20, 30, 40}));
    EXPECT_EQ(recording.curves[1].channel, 2);
    EXPECT_EQ(recording.curves[1].unit, "DEC");
    EXPECT_EQ(recording.curves[1].values, (std::vector<double>{0, -1, -2, -3, -4}));
}

TEST(Recording, AWindowIsTakenWithTheTimeAtWhichItBegins) {
    const Recording recording = take(recorded(), {2, 3});
    EXPECT_EQ(recording.start_us, 250.0);
    EXPECT_EQ(recording.curves.at(0).values, (std::vector<double>{20, 30}));
}

TEST(Recording, HiddenChannelsAreRecordedToo) {
    Program program = recorded();
    program.data.channels[0].hide = true;
    EXPECT_EQ(take(program, {0, 4}).curves.size(), 2U);
}

TEST(Recording, WithoutAUnitTheNumbersAreRaw) {
    Program program = recorded();
    program.data.channels[0].unitList.ListIndex = -1;
    const Recording recording = take(program, {0, 2});
    EXPECT_EQ(recording.curves.at(0).unit, "");
    EXPECT_EQ(recording.curves.at(0).values, (std::vector<double>{0, 1024, 2048}));
}

TEST(Recording, AChannelThatIsTickedWithoutAnObjectIsLeftOut) {
    Program program = recorded();
    program.data.channels[0].objectList.ListIndex = 0;
    const Recording recording = take(program, {0, 2});
    ASSERT_EQ(recording.curves.size(), 1U);
    EXPECT_EQ(recording.curves[0].channel, 2);
}

TEST(Recording, TheWindowIsCutToTheArrays) {
    const Program program = recorded();
    EXPECT_EQ(take(program, {-3, 1}).curves.at(1).values, (std::vector<double>{0, -1}));
    EXPECT_EQ(take(program, {-3, 1}).start_us, 0.0);
    EXPECT_EQ(take(program, {8190, 32767}).curves.at(0).values.size(), 2U);
    EXPECT_TRUE(take(program, {-3, -1}).curves.empty());
    EXPECT_TRUE(take(program, {3, 2}).curves.empty());
    EXPECT_TRUE(take(program, {9000, 9100}).curves.empty());
}

TEST(Recording, ThereIsNoneBeforeTheFirst) {
    Program program = recorded();
    program.data.dataValid = false;
    EXPECT_TRUE(take(program, {0, 4}).curves.empty());
}

// --- Tables

TEST(RecordingTable, AHeaderThenALineForEachSample) {
    EXPECT_EQ(csv_text(take(recorded(), {0, 2}), Language::kEnglish),
              std::string(kMark) +
                  "Time (us),Actual current (Ap),Actual position (DEC)\r\n"
                  "0,0,0\r\n"
                  "125,10,-1\r\n"
                  "250,20,-2\r\n");
}

TEST(RecordingTable, IsHeadedInTheLanguage) {
    const Recording recording{62.5, {{0, "实际电流", "Ap", {1.5}}}};
    EXPECT_EQ(csv_text(recording, Language::kChinese),
              std::string(kMark) + "时间 (us),实际电流 (Ap)\r\n0,1.5\r\n");
}

TEST(RecordingTable, NamesAreQuotedWhereTheyNeedIt) {
    const Recording recording{
        1, {{0, "current, q", "", {1}}, {1, "the \"best\"", "A,B", {2}}, {2, "a\nb", "", {3}}}};
    EXPECT_EQ(csv_text(recording, Language::kEnglish),
              std::string(kMark) +
                  "Time (us),\"current, q\",\"the \"\"best\"\" (A,B)\",\"a\nb\"\r\n0,1,2,3\r\n");
}

TEST(RecordingTable, ARecordingWithoutCurvesIsAHeader) {
    EXPECT_EQ(csv_text({}, Language::kEnglish), std::string(kMark) + "Time (us)\r\n");
}

TEST(RecordingTable, AShorterCurveLeavesItsCellsEmpty) {
    const Recording recording{10, {{0, "a", "", {1, 2}}, {1, "b", "", {3}}}};
    EXPECT_EQ(csv_text(recording, Language::kEnglish),
              std::string(kMark) + "Time (us),a,b\r\n0,1,3\r\n10,2,\r\n");
}

// A reader of its own, as strict as the format: quotes, CR LF, no stray characters.
std::vector<std::vector<std::string>> read_table(std::string_view text) {
    std::vector<std::vector<std::string>> rows(1);
    rows.back().emplace_back();
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string& field = rows.back().back();
        const char c = text[i];
        if (quoted) {
            if (c != '"') {
                field += c;
            } else if (text.substr(i, 2) == "\"\"") {
                field += c;
                ++i;
            } else {
                quoted = false;
            }
        } else if (c == '"' && field.empty()) {
            quoted = true;
        } else if (c == ',') {
            rows.back().emplace_back();
        } else if (text.substr(i, 2) == "\r\n") {
            rows.emplace_back().emplace_back();
            ++i;
        } else {
            field += c;
        }
    }
    rows.pop_back();  // behind the last line end
    return rows;
}

double strict_number(const std::string& field) {
    double value = 0;
    const auto read = std::from_chars(field.data(), field.data() + field.size(), value);
    RC_ASSERT(read.ec == std::errc());
    RC_ASSERT(read.ptr == field.data() + field.size());
    return value;
}

// To the 15 digits that are written.
void require_same(double read, double written) {
    RC_ASSERT(std::abs(read - written) <= 1e-14 * std::abs(written));
}

double any_number() {
    const auto raw = *rc::gen::arbitrary<std::int32_t>();
    const auto divisor = *rc::gen::element(1.0, 10.0, 3.0, 2048.0, -7e9, 1e-12);
    return raw / divisor;
}

TEST(RecordingTable, ReadsBackAsTheSameNumbersAndNames) {
    EXPECT_TRUE(rc::check("table -> numbers", [] {
        Recording recording;
        recording.period_us = *rc::gen::inRange(1, 70000) * 62.5;
        recording.start_us = *rc::gen::inRange(0, 8192) * recording.period_us;
        const auto rows = *rc::gen::inRange<std::size_t>(0, 20);
        const auto name =
            rc::gen::container<std::string>(rc::gen::elementOf(std::string("a ,\"\r\n;=")));
        for (int channel = *rc::gen::inRange(0, 5); channel-- > 0;) {
            RecordedCurve& curve = recording.curves.emplace_back();
            curve.object = *name;
            for (std::size_t i = 0; i < rows; ++i)
                curve.values.push_back(any_number());
        }

        const std::string text = csv_text(recording, Language::kEnglish);
        RC_ASSERT(text.substr(0, 3) == kMark);
        const auto table = read_table(std::string_view(text).substr(3));
        const std::size_t curves = recording.curves.size();
        RC_ASSERT(table.size() == 1 + (curves == 0 ? 0 : rows));
        RC_ASSERT(table[0].size() == 1 + curves);
        for (std::size_t i = 0; i < curves; ++i)
            RC_ASSERT(table[0][1 + i] == recording.curves[i].object);
        for (std::size_t row = 1; row < table.size(); ++row) {
            RC_ASSERT(table[row].size() == 1 + curves);
            const auto sample = static_cast<double>(row - 1);
            require_same(strict_number(table[row][0]),
                         recording.start_us + sample * recording.period_us);
            for (std::size_t i = 0; i < curves; ++i)
                require_same(strict_number(table[row][1 + i]), recording.curves[i].values[row - 1]);
        }
    }));
}

TEST(RecordingTable, NumbersOfUpTo15DigitsComeBackBitForBit) {
    EXPECT_TRUE(rc::check("table -> bits", [] {
        const double value = *rc::gen::arbitrary<std::int32_t>() / 32.0;
        const auto table = read_table(csv_text({1, {{0, "a", "", {value}}}}, Language::kEnglish));
        RC_ASSERT(std::bit_cast<std::uint64_t>(strict_number(table[1][1])) ==
                  std::bit_cast<std::uint64_t>(value));
    }));
}

// --- References

std::vector<std::string> names(const References& references) {
    std::vector<std::string> list;
    for (const auto& kept : references.kept)
        list.push_back(kept.name);
    return list;
}

TEST(References, TheOldestOfFourMakesRoom) {
    References references;
    for (const char* name : {"R1", "R2", "R3", "R4", "R5", "R6"})
        references.keep(name, {});
    EXPECT_EQ(names(references), (std::vector<std::string>{"R3", "R4", "R5", "R6"}));
}

TEST(References, KeepTheirRecordingAndAreShown) {
    References references;
    references.keep("R1", take(recorded(), {0, 4}));
    ASSERT_EQ(references.kept.size(), 1U);
    EXPECT_TRUE(references.kept[0].shown);
    EXPECT_EQ(references.kept[0].recording.curves.at(0).values.back(), 40.0);
}

TEST(References, OneIsRemovedByItsPlace) {
    References references;
    for (const char* name : {"R1", "R2", "R3"})
        references.keep(name, {});
    references.remove(1);
    references.remove(2);  // none there any more
    EXPECT_EQ(names(references), (std::vector<std::string>{"R1", "R3"}));
}

}  // namespace
}  // namespace servo::scope
