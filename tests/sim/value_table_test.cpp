// The table of the drive's own values, and what it makes of the dictionary's objects.
#include "sim/value_table.h"

#include <gtest/gtest.h>

#include "sim/drive_bench.h"
#include "sim/object_table.h"
#include "sim/subsystem.h"

namespace servo::sim {
namespace {

TEST(ValueTable, ReadsAllColumns) {
    const auto table = parse_value_table(
        "key\tdefault\tmin\tmax\tflags\n"
        "# comment\n"
        "\n"
        "60F901\t200\t0\t32767\ts\n"
        "100800\tQRL Servo 400 W\t\t\tr\r\n"
        "606C00\t0\t\t\trc\n");
    ASSERT_EQ(table.lines.size(), 3U);
    EXPECT_TRUE(table.complaints.empty());
    EXPECT_EQ(table.lines[0].object, 0x60F901);
    EXPECT_EQ(table.lines[0].factory, "200");
    EXPECT_EQ(table.lines[0].min, 0);
    EXPECT_EQ(table.lines[0].max, 32767);
    EXPECT_TRUE(table.lines[0].flags.stored);
    EXPECT_EQ(table.lines[1].factory, "QRL Servo 400 W");
    EXPECT_FALSE(table.lines[1].min);
    EXPECT_TRUE(table.lines[2].flags.read_only && table.lines[2].flags.computed);
}

TEST(ValueTable, WorksWithoutAHeaderAndWithoutColumnsAtTheEnd) {
    const auto table = parse_value_table("60F901\t200\n60F902");
    ASSERT_EQ(table.lines.size(), 2U);
    EXPECT_EQ(table.lines[1].factory, "");
}

TEST(ValueTable, EachWrongLineIsNamedAndLeftOut) {
    const auto table = parse_value_table(
        "key\tdefault\tmin\tmax\tflags\n"
        "60F9\t1\n"
        "60F901\t1\tx\n"
        "60F901\t1\t\ty\n"
        "60F901\t1\t5\t4\n"
        "60F901\t1\t\t\tz\n"
        "60F901\t1\t\t\trw\n"
        "60F901\t1\t\t\ts\tmore\n"
        "60F902\t1\n");
    EXPECT_EQ(table.lines.size(), 1U);
    ASSERT_EQ(table.complaints.size(), 7U);
    EXPECT_TRUE(table.complaints[0].starts_with("line 2:"));
    EXPECT_TRUE(table.complaints[6].starts_with("line 8:"));
}

struct TypeCase {
    Type type;
    std::size_t width;
    std::int64_t low;
    std::int64_t high;
};

TEST(Type, WidthsAndEnds) {
    for (const TypeCase& c :
         {TypeCase{Type::kUint8, 1, 0, 255}, TypeCase{Type::kInt8, 1, -128, 127},
          TypeCase{Type::kUint16, 2, 0, 65535}, TypeCase{Type::kInt16, 2, -32768, 32767},
          TypeCase{Type::kUint32, 4, 0, 4294967295},
          TypeCase{Type::kInt32, 4, -2147483648, 2147483647}}) {
        EXPECT_EQ(width(c.type), c.width);
        EXPECT_EQ(lowest(c.type), c.low);
        EXPECT_EQ(highest(c.type), c.high);
        EXPECT_EQ(cut(c.type, c.high + 1), c.low);
        EXPECT_EQ(cut(c.type, c.low - 1), c.high);
    }
    EXPECT_EQ(width(Type::kString), 0U);
}

dictionary::Store store_of(const std::vector<test::Entry>& entries) {
    dictionary::Store store;
    store.load(test::dictionary_file(entries));
    return store;
}

TEST(ObjectTable, ADefaultThatDoesNotFitIsSaid) {
    const auto store = store_of({{"200001", "Unsigned8", "RW"}, {"200002", "Unsigned8", "RW"}});
    const ObjectTable table(store, parse_value_table("200001\t256\n200002\t5\t6\t7\n200003\t1\n"));
    EXPECT_EQ(table.complaints().size(), 3U);
}

TEST(ObjectTable, WithoutATableEverythingIsZeroWithinItsType) {
    const auto store = store_of({{"200004", "Integer16", "RW"}});
    ObjectTable table(store, {});
    Object* const object = table.find(0x200004);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(table.read(*object), 0);
    EXPECT_EQ(object->min, -32768);
    EXPECT_EQ(object->max, 32767);
    EXPECT_FALSE(object->flags.read_only);
}

TEST(ObjectTable, TheFirstOfTwoRecordsCounts) {
    const auto store = store_of({{"200004", "Integer16", "RW"}, {"200004", "Unsigned32", "R"}});
    ObjectTable table(store, {});
    EXPECT_EQ(table.find(0x200004)->type, Type::kInt16);
}

TEST(ObjectTable, ABoundObjectThatTheDictionaryLacksIsHidden) {
    const auto store = store_of({{"200004", "Integer16", "RW"}});
    ObjectTable table(store, {});
    Object& hidden = table.bind(0x60F901, Type::kUint16, 200);
    EXPECT_EQ(hidden.value, 200);
    EXPECT_EQ(table.find(0x60F901), nullptr);
    EXPECT_FALSE(table.has_index(0x60F9));
    // A second one who binds it gets the same and doesn't take its value away.
    EXPECT_EQ(&table.bind(0x60F901, Type::kUint16), &hidden);
    EXPECT_EQ(hidden.factory, 200);
}

TEST(ObjectTable, TheTablesDefaultGoesBeforeTheFirmwares) {
    const auto store = store_of({{"60F901", "Unsigned16", "RW"}, {"60F902", "Unsigned16", "RW"}});
    ObjectTable table(store, parse_value_table("60F901\t0\n"));
    EXPECT_EQ(table.bind(0x60F901, Type::kUint16, 200).factory, 0);
    EXPECT_EQ(table.bind(0x60F902, Type::kUint16, 20).factory, 20);
}

TEST(Setting, ReplacesTheFactoryValueAlsoOfWhatCannotBeWritten) {
    Options options;
    ASSERT_FALSE(add_setting(options, "20000A=0x55"));
    ASSERT_FALSE(add_setting(options, "200007=axis 4"));
    ASSERT_FALSE(add_setting(options, "200001=700"));
    test::DriveBench bench(options);
    EXPECT_EQ(bench.read(0x20000A), 0x55U);
    EXPECT_EQ(bench.read_text(0x200007), "axis 4");
    EXPECT_EQ(bench.read(0x200001), 200U);
    EXPECT_EQ(bench.drive().complaints().size(), 1U);
}

}  // namespace
}  // namespace servo::sim
