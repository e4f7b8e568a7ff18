// Page definition files of the tree.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "tree_support.h"

namespace servo::data {
namespace {

using test::page_keys;

constexpr std::array kPages{
    "BasicOperate",
    "PositionLoop",
    "VelocityLoop",
    "AnalogTorqueMode",
    "AnalogVelocityMode",
    "AutoReverse",
    "AutoTuning",
    "CurrentLoop",
    "DriverConfig",
    "DriverProperty",
    "F000",
    "F002",
    "F003",
    "F004",
    "F005",
    "HomingMode",
    "MotorConfig",
    "PulseMode",
    "MultiPositionMode",
    "MultiVelocityMode",
    "ErrorHistory",
    "PdoOther",
};

std::string file_of(const std::string& page) {
    return "sys/" + page + ".ini";
}

class Page : public testing::TestWithParam<const char*> {};

TEST_P(Page, HasTwoHeadingLinesAndEightToThirtyRows) {
    const auto lines = test::tree_lines(file_of(GetParam()));
    ASSERT_GE(lines.size(), 10U);
    EXPECT_FALSE(lines[0].empty());
    EXPECT_FALSE(lines[1].empty());
    const std::size_t rows = page_keys(file_of(GetParam())).size();
    EXPECT_GE(rows, 8U);
    EXPECT_LE(rows, 30U);
    EXPECT_EQ(rows, lines.size() - 2) << "an empty line would end the list";
}

TEST_P(Page, NamesOnlyObjectsOfTheDictionaryEachOnce) {
    std::set<std::string> seen;
    for (const std::string& key : page_keys(file_of(GetParam()))) {
        const auto identity = test::key_of(key);
        EXPECT_EQ(test::store().get_record(identity).key, identity) << key;
        EXPECT_TRUE(seen.insert(key).second) << key << " stands twice";
    }
}

TEST_P(Page, EachLineCarriesTheNameOfItsObject) {
    const auto lines = test::tree_lines(file_of(GetParam()));
    for (std::size_t i = 2; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        const Object* const object = test::find_object(test::key_of(line.substr(line.size() - 6)));
        ASSERT_NE(object, nullptr) << line;
        EXPECT_TRUE(line.starts_with(object->name_zh + " / " + object->name_en + " ")) << line;
    }
}

INSTANTIATE_TEST_SUITE_P(PageFiles, Page, testing::ValuesIn(kPages));

TEST(PageFiles, EveryPdoHasItsTab) {
    for (int pdo = 0; pdo < 8; ++pdo) {
        const std::string number = std::to_string(pdo + 1);
        const std::string index = std::to_string(pdo);
        const auto transmit = page_keys("sys/TPDO" + number + ".ini");
        const auto receive = page_keys("sys/RPDO" + number + ".ini");
        ASSERT_EQ(transmit.size(), 14U);
        ASSERT_EQ(receive.size(), 12U);
        EXPECT_EQ(transmit.front(), "180" + index + "01");
        EXPECT_EQ(transmit.back(), "1A0" + index + "08");
        EXPECT_EQ(receive.front(), "140" + index + "01");
        EXPECT_EQ(receive.back(), "160" + index + "08");
        for (const auto& keys : {transmit, receive}) {
            for (const std::string& key : keys) {
                EXPECT_NE(test::find_object(test::key_of(key)), nullptr) << key;
            }
        }
    }
}

// The window of homing binds its controls to these rows by their place.
TEST(PageFiles, HomingRowsStandInTheOrderOfTheirControls) {
    const auto keys = page_keys("sys/HomingMode.ini");
    const std::array<std::string_view, 9> types{"Integer32",  "Integer8",  "Unsigned32",
                                                "Unsigned32", "Unsigned8", "Unsigned32",
                                                "Integer32",  "Unsigned8", "Unsigned8"};
    ASSERT_EQ(keys.size(), types.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const Object* const object = test::find_object(test::key_of(keys[i]));
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->type, types[i]) << keys[i];
    }
    EXPECT_EQ(keys[0], "607C00");
    EXPECT_EQ(keys[1], "609800");
    EXPECT_EQ(keys[2], "609901");
    EXPECT_EQ(keys[3], "609902");
    EXPECT_EQ(keys[5], "609A00");
}

TEST(PageFiles, SerialSettingsAreBaudRateStopBitsProtocol) {
    const std::vector<std::string> expected{"2FE200", "65100E", "65100C"};
    EXPECT_EQ(page_keys("sys/RS485.ini"), expected);
}

TEST(PageFiles, FirstRowOfTheFirmwareWindowIsTheSoftwareVersion) {
    const auto keys = page_keys("sys/download.ini");
    ASSERT_FALSE(keys.empty());
    EXPECT_EQ(keys.front(), "100A00");
}

TEST(PageFiles, PositionTableShowsItsCurrentIndex) {
    EXPECT_EQ(page_keys("sys/PosFlow.ini"), std::vector<std::string>{"311001"});
}

}  // namespace
}  // namespace servo::data
