// Files that travel between programs.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>

#include "scope/scope_file_support.h"

namespace servo::scope {
namespace {

TEST(ScopeRoundTrip, WrittenReadWithAnotherDictionaryAndWrittenAgain) {
    Program first(usual_dictionary(), base::Language::kChinese);
    first.data.Text1 = "2";
    first.data.Text3 = "2";
    first.operands = {{10000, true}, {-150, true}, {7, true}, {8, true}, {9, true}};
    first.record(0, kCommand);
    first.record(1, kStatus);  // which the other program does not know
    first.record(2, kSpeed);
    first.pick(3, kCurrent);
    first.put_samples(0, {1, 2, 3, 4});
    first.put_samples(1, {-1, -2, -3, -4});
    const std::string written = first.text();
    EXPECT_EQ(written,
              "2,2\r\n"
              "10000,-150,7,8,9\r\n"
              "\xC4\xBF\xB1\xEA\xB5\xE7\xC1\xF7,6354444\r\n"
              "\xD7\xB4\xCC\xAC,6355968\r\n"
              "\xC4\xBF\xB1\xEA\xCB\xD9\xB6\xC8,6318848\r\n"
              "NULL,6322176\r\n"
              "1,2,3,4\r\n"
              "-1,-2,-3,-4\r\n");

    // Names are those of the program that writes. A disabled channel's key is not read back.
    Program other(other_dictionary(), base::Language::kEnglish);
    EXPECT_EQ(other.read(written), Imported::kDone);
    EXPECT_EQ(other.text(),
              "2,2\r\n"
              "10000,-150,7,8,9\r\n"
              "NULL current,6354444\r\n"
              "NULL,0\r\n"
              "Demand,6318848\r\n"
              "NULL,0\r\n"
              "1,2,3,4\r\n"
              "-1,-2,-3,-4\r\n");

    // And back: but for the channel that was unknown on the way, it is the recording of before.
    Program back(usual_dictionary(), base::Language::kChinese);
    EXPECT_EQ(back.read(other.text()), Imported::kDone);
    EXPECT_EQ(back.text(),
              "2,2\r\n"
              "10000,-150,7,8,9\r\n"
              "\xC4\xBF\xB1\xEA\xB5\xE7\xC1\xF7,6354444\r\n"
              "NULL,0\r\n"
              "\xC4\xBF\xB1\xEA\xCB\xD9\xB6\xC8,6318848\r\n"
              "NULL,0\r\n"
              "1,2,3,4\r\n"
              "-1,-2,-3,-4\r\n");
}

TEST(ScopeRoundTrip, AnImportFindsItsObjectInAListThatIsFull) {
    std::vector<RawRecord> records;
    records.reserve(9);
    for (int sub = 0; sub < 9; ++sub)
        records.push_back(object("3000", "0" + std::to_string(sub), "", "object", "Integer16"));
    Program program(dictionary::store_of(records));
    for (int sub = 0; sub < 8; ++sub)
        program.pick(0, 0x300000 + sub);
    const std::string file = lines_of({"1,0", "1,2,3,4,5", "x,3145736", "NULL", "NULL", "NULL"});
    EXPECT_EQ(program.read(file), Imported::kDone);
    ASSERT_NE(program.data.channels[0].picked(), nullptr);
    EXPECT_EQ(program.data.channels[0].picked()->key, 0x300008);
    EXPECT_EQ(program.data.channels[0].objectList.ListIndex, 7);
    EXPECT_EQ(program.read(file), Imported::kDone);
    EXPECT_EQ(program.data.channels[0].picked()->key, 0x300008);
}

// --- Any recording

struct Drawn {
    std::string text1;
    std::string text3;
    std::vector<std::int32_t> operands;
    std::vector<int> objects;  // 0: disabled, else place in kObjects plus 1
    std::vector<std::vector<std::int32_t>> rows;
};

struct Known {
    dictionary::Identity key;
    std::string_view name;
};
constexpr std::array<Known, 4> kObjects{{{kCurrent, "Actual current"},
                                         {kCommand, "Target current, q axis"},
                                         {kPosition, "Actual position"},
                                         {kSpeed, "Target velocity"}}};

Drawn draw() {
    using Numbers = std::vector<std::int32_t>;
    const auto number = rc::gen::oneOf(rc::gen::arbitrary<std::int32_t>(),
                                       rc::gen::element(0, -1, 2147483647, -2147483647 - 1));
    Drawn drawn;
    drawn.rows =
        *rc::gen::container<std::vector<Numbers>>(rc::gen::container<Numbers>(kCurves, number));
    drawn.text1 =
        *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789.x-")));
    drawn.text3 = std::to_string(drawn.rows.size()) + *rc::gen::element<std::string>("", ".5", "y");
    drawn.operands = *rc::gen::container<Numbers>(5, number);
    drawn.operands[1] = static_cast<std::int16_t>(drawn.operands[1]);
    drawn.objects = *rc::gen::container<std::vector<int>>(kCurves, rc::gen::inRange(0, 5));
    return drawn;
}

// The told file, put together without the code under test.
std::string told_file(const Drawn& drawn) {
    std::string text = drawn.text1 + "," + drawn.text3 + "\r\n";
    const auto add = [&text](const std::vector<std::int32_t>& numbers) {
        for (std::size_t i = 0; i < numbers.size(); ++i)
            text += (i == 0 ? "" : ",") + std::to_string(numbers[i]);
        text += "\r\n";
    };
    add(drawn.operands);
    for (const int object : drawn.objects) {
        if (object == 0) {
            text += "NULL,0\r\n";
            continue;
        }
        const Known& known = kObjects[static_cast<std::size_t>(object) - 1];
        text.append(known.name).append("," + std::to_string(known.key) + "\r\n");
    }
    for (const auto& row : drawn.rows)
        add(row);
    return text;
}

TEST(ScopeRoundTrip, AnyRecordingIsWrittenAsToldAndComesBack) {
    EXPECT_TRUE(rc::check("file -> program -> file", [] {
        const Drawn drawn = draw();
        const std::string file = told_file(drawn);
        Program program;
        RC_ASSERT(program.read(file) == Imported::kDone);
        RC_ASSERT(program.text() == file);
        RC_ASSERT(program.operands.o64100320.value == drawn.operands[0]);
        for (std::size_t i = 0; i < drawn.rows.size(); ++i)
            RC_ASSERT(program.row(i) == drawn.rows[i]);
        for (std::size_t channel = 0; channel < kCurves; ++channel)
            RC_ASSERT(program.data.channels[channel].enable == (drawn.objects[channel] != 0));
    }));
}

// However a file is damaged, the next one is read as if it had never been there.
TEST(ScopeRoundTrip, ADamagedFileDoesNotSpoilTheNext) {
    EXPECT_TRUE(rc::check("damaged, then whole", [] {
        const Drawn drawn = draw();
        const std::string file = told_file(drawn);
        std::string damaged = file;
        for (int i = *rc::gen::inRange(1, 6); i > 0 && !damaged.empty(); --i) {
            const auto at = *rc::gen::inRange<std::size_t>(0, damaged.size());
            if (*rc::gen::arbitrary<bool>())
                damaged[at] = *rc::gen::elementOf(std::string(",\r\n-9N\xD6\0", 8));
            else
                damaged.resize(at);
        }
        Program program;
        program.read(damaged);
        RC_ASSERT(program.read(file) == Imported::kDone);
        Program fresh;
        fresh.read(file);
        for (std::size_t i = 0; i < drawn.rows.size(); ++i)
            RC_ASSERT(program.row(i) == fresh.row(i));
        for (std::size_t channel = 0; channel < kCurves; ++channel) {
            const ScopeChannel& read = program.data.channels[channel];
            RC_ASSERT(read.enable == fresh.data.channels[channel].enable);
            if (read.enable)
                RC_ASSERT(read.picked()->key == fresh.data.channels[channel].picked()->key);
        }
    }));
}

}  // namespace
}  // namespace servo::scope
