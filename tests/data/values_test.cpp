// The simulated drive's values: factory settings, limits, flags.
#include <gtest/gtest.h>

#include <charconv>
#include <map>
#include <optional>

#include "data/tools/table.h"
#include "tree_support.h"

namespace servo::data {
namespace {

struct Value {
    int line = 0;
    std::string factory;
    std::optional<std::int64_t> min;
    std::optional<std::int64_t> max;
    std::string flags;
};

std::optional<std::int64_t> number(const std::string& text) {
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
    return value;
}

const std::map<dictionary::Identity, Value>& values() {
    static const auto all = [] {
        std::map<dictionary::Identity, Value> made;
        Problems problems;
        const std::string text = test::bytes_of(test::tree() / "sim" / "values.tsv");
        for (const Row& row :
             read_rows("values.tsv", text, "key\tdefault\tmin\tmax\tflags", problems)) {
            EXPECT_EQ(row.cells[0].size(), 6U) << row.line;
            Value value{row.line, row.cells[1], number(row.cells[2]), number(row.cells[3]),
                        row.cells[4]};
            EXPECT_EQ(value.min.has_value(), !row.cells[2].empty()) << row.line;
            EXPECT_EQ(value.max.has_value(), !row.cells[3].empty()) << row.line;
            EXPECT_TRUE(made.emplace(test::key_of(row.cells[0]), value).second) << row.line;
        }
        EXPECT_TRUE(problems.empty());
        return made;
    }();
    return all;
}

std::int64_t factory(dictionary::Identity key) {
    const auto found = values().find(key);
    return found == values().end() ? 0 : number(found->second.factory).value_or(-1);
}

struct Limits {
    std::int64_t low = 0;
    std::int64_t high = 0;
};

std::optional<Limits> limits_of(std::string_view type) {
    if (type == "Unsigned8") return Limits{0, 0xFF};
    if (type == "Integer8") return Limits{-0x80, 0x7F};
    if (type == "Unsigned16") return Limits{0, 0xFFFF};
    if (type == "Integer16") return Limits{-0x8000, 0x7FFF};
    if (type == "Unsigned32") return Limits{0, 0xFFFFFFFFLL};
    if (type == "Integer32") return Limits{-0x80000000LL, 0x7FFFFFFF};
    return std::nullopt;
}

TEST(Values, BelongToObjectsOfTheDictionary) {
    for (const auto& [key, value] : values()) {
        EXPECT_NE(test::find_object(key), nullptr) << "line " << value.line;
    }
}

TEST(Values, FitTheTypeAndTheirLimits) {
    for (const auto& [key, value] : values()) {
        SCOPED_TRACE("line " + std::to_string(value.line));
        const Object* const object = test::find_object(key);
        ASSERT_NE(object, nullptr);
        const auto type = limits_of(object->type);
        if (!type) {  // a string
            EXPECT_FALSE(value.min || value.max);
            continue;
        }
        const auto given = number(value.factory);
        ASSERT_TRUE(given.has_value()) << value.factory;
        const std::int64_t low = value.min.value_or(type->low);
        const std::int64_t high = value.max.value_or(type->high);
        EXPECT_LE(type->low, low);
        EXPECT_LE(high, type->high);
        EXPECT_LE(low, *given);
        EXPECT_LE(*given, high);
    }
}

TEST(Values, FlagsAgreeWithTheAttribute) {
    for (const auto& [key, value] : values()) {
        SCOPED_TRACE("line " + std::to_string(value.line));
        const Object* const object = test::find_object(key);
        ASSERT_NE(object, nullptr);
        const std::string& flags = value.flags;
        const auto flag = [&flags](char letter) { return flags.find(letter) != std::string::npos; };
        EXPECT_EQ(value.flags.find_first_not_of("rwsc"), std::string::npos);
        EXPECT_EQ(flag('r'), object->attr.find('W') == std::string::npos);
        EXPECT_EQ(flag('w'), object->attr.find('R') == std::string::npos);
        EXPECT_FALSE(flag('s') && (flag('r') || flag('c'))) << "stored, though the drive sets it";
    }
}

// An item that a page offers is one that the drive takes.
TEST(Values, EveryItemOfAListIsWithinTheLimits) {
    for (const Object& object : test::objects()) {
        const auto found = values().find(object.key);
        const std::size_t bar = object.comment_en.find('|');
        if (bar == std::string::npos || found == values().end()) continue;
        const bool hex = object.formula.starts_with("[HEX]");
        for (const std::string& item : test::split(object.comment_en.substr(bar + 1), '|')) {
            const std::string text = item.substr(0, item.find(':'));
            const auto value = hex ? std::optional<std::int64_t>(test::key_of(text)) : number(text);
            ASSERT_TRUE(value.has_value()) << item;
            if (object.attr.find('W') == std::string::npos) continue;
            // Commands read back as a state beyond what may be written.
            if (object.key == 0x230007) continue;
            EXPECT_LE(found->second.min.value_or(*value), *value) << object.name_en << item;
            EXPECT_LE(*value, found->second.max.value_or(*value)) << object.name_en << item;
        }
    }
}

TEST(Values, EveryParameterHasALine) {
    for (const Object& object : test::objects()) {
        const bool live = object.attr.find_first_of("HL") != std::string::npos;
        const bool writable = object.attr.find('W') != std::string::npos;
        if (!writable || live) continue;
        EXPECT_TRUE(values().contains(object.key)) << object.name_en;
    }
}

TEST(Values, DescribeOneMotorAndDrive) {
    EXPECT_EQ(factory(0x641003), 10000);  // increments a turn
    EXPECT_EQ(factory(0x608F01), 10000);
    EXPECT_EQ(factory(0x651003), 150);   // 15.0 A peak
    EXPECT_EQ(factory(0x641015), 3000);  // rpm
    EXPECT_EQ(factory(0x641016), 400);   // W
    EXPECT_EQ(factory(0x1F5601), 0x1F5601);
    // The rated speed in internal units lies below the limits, the limits below over-speed.
    const std::int64_t rated = 3000LL * 512 * 10000 / 1875;
    EXPECT_LT(rated, factory(0x607F00));
    EXPECT_LT(factory(0x607F00), factory(0x213009));
    // Currents within the full scale of 2048.
    for (const dictionary::Identity key : {0x607300, 0x64100A, 0x641006, 0x215002}) {
        EXPECT_GT(factory(key), 0);
        EXPECT_LT(factory(key), 2048);
    }
}

TEST(Values, PdoMappingNamesObjectsOfTheRightLength) {
    for (const int base : {0x1600, 0x1A00}) {
        int mapped = 0;
        for (int pdo = 0; pdo < 8; ++pdo) {
            const dictionary::Identity record = (base + pdo) << 8;
            const std::int64_t count = factory(record);
            std::int64_t bits = 0;
            for (int entry = 1; entry <= 8; ++entry) {
                const std::int64_t value = factory(record + entry);
                EXPECT_EQ(value != 0, entry <= count) << std::hex << record << entry;
                if (value == 0) continue;
                const auto* object =
                    test::find_object(static_cast<dictionary::Identity>(value >> 8));
                ASSERT_NE(object, nullptr) << std::hex << value;
                const auto size = dictionary::wire_size(dictionary::short_type(object->type));
                EXPECT_EQ(value & 0xFF, size * 8);
                bits += value & 0xFF;
                ++mapped;
            }
            EXPECT_LE(bits, 64);
        }
        EXPECT_EQ(mapped, 7);
    }
}

}  // namespace
}  // namespace servo::data
