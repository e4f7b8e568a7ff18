// The lists of objects and of units.
#include <gtest/gtest.h>

#include "scope/channel_lists.h"
#include "scope/scope_world.h"

using namespace servo;
using namespace servo::scope;
using namespace servo::scope::test;

namespace {

using Texts = std::vector<std::string>;

struct ChannelLists : testing::Test {
    ChannelLists() : dictionary(dictionary::store_of(objects())) {}

    static std::vector<RawRecord> objects() {
        std::vector<RawRecord> list = usual_objects();
        list.push_back(record("2002", "00", "no formula", "Integer16", ""));
        list.push_back(record("2002", "01", "twice", "Integer16",
                              "[DEC rpm]N/10\n[DEC rpm]N/20\n[DEC r p s]N\n[DEC  wide]N"));
        list.push_back(record("2002", "02", std::string(64, 'x'), "Integer16",
                              "[DEC a_unit_of_more_than_twenty_characters]N\n\n[HEX]"));
        list.push_back(
            record("2002", "03", "same units", "Integer16", "[DEC rpm]N*3\n[rpm DEC]N/3"));
        return list;
    }
    std::optional<std::uint8_t> add(dictionary::Identity key) {
        return Add_OD_To_CH(key, channel, dictionary, base::Language::kEnglish);
    }
    Texts units_of(dictionary::Identity key) {
        Add_Unit_To_CH(*add(key), channel);
        return channel.unitList.items;
    }

    dictionary::Store dictionary;
    ScopeChannel channel;
};

}  // namespace

TEST_F(ChannelLists, FirstItemIsTheEmptyChoice) {
    EXPECT_EQ(channel.objectList.items, Texts{""});
    EXPECT_EQ(channel.objectList.ListIndex, 0);
    EXPECT_EQ(channel.picked(), nullptr);
}

TEST_F(ChannelLists, SevenObjectsAreOfferedInTheirOrder) {
    offer_first_objects(channel, dictionary, base::Language::kEnglish);
    EXPECT_EQ(channel.objectList.items,
              (Texts{"", "current", "q current", "speed narrow", "position", "speed demand",
                     "following error", "position demand"}));
    EXPECT_EQ(channel.entryCount, 7);
    EXPECT_EQ(channel.objectList.ListIndex, 0);
    const std::vector<dictionary::Identity> keys{0x607800, 0x60F60C, 0x60F916, 0x606300,
                                                 0x606B00, 0x60FB08, 0x60FC00};
    for (std::size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(channel.entries.at(i).key, keys[i]);
}

TEST_F(ChannelLists, NamesAreThoseOfTheLanguageAndChangeWithIt) {
    offer_first_objects(channel, dictionary, base::Language::kChinese);
    EXPECT_EQ(channel.objectList.items[1], "中current");
    channel.objectList.ListIndex = 3;
    rename_objects(channel, base::Language::kEnglish);
    EXPECT_EQ(channel.objectList.items[7], "position demand");
    EXPECT_EQ(channel.objectList.items[0], "");
    EXPECT_EQ(channel.objectList.ListIndex, 3);
}

TEST_F(ChannelLists, EntryNumbersFollowTheOrderOfAdding) {
    EXPECT_EQ(add(0x606300), 0);
    EXPECT_EQ(channel.entryNext, 1);
    EXPECT_EQ(add(0x607800), 1);
    EXPECT_EQ(channel.entryCount, 2);
}

TEST_F(ChannelLists, ObjectThatIsThereIsNotAddedAgain) {
    add(0x606300);
    add(0x607800);
    EXPECT_EQ(add(0x606300), 0);
    EXPECT_EQ(channel.entryCount, 2);
    EXPECT_EQ(channel.objectList.items.size(), 3U);
}

TEST_F(ChannelLists, ObjectUnknownToTheDictionaryIsLeftOut) {
    EXPECT_EQ(add(0x123456), std::nullopt);
    EXPECT_EQ(add(0), std::nullopt);
    EXPECT_EQ(channel.entryCount, 0);
    EXPECT_EQ(channel.objectList.items, Texts{""});
}

TEST_F(ChannelLists, NextPlaceBeginsAgainWhenTheListIsFull) {
    offer_first_objects(channel, dictionary, base::Language::kEnglish);
    EXPECT_EQ(channel.entryNext, 0);
    add(0x200101);
    EXPECT_EQ(channel.entryNext, 0);
    EXPECT_EQ(channel.entryCount, 7);
}

TEST_F(ChannelLists, EighthObjectPushesTheFirstOneOut) {
    offer_first_objects(channel, dictionary, base::Language::kEnglish);
    EXPECT_EQ(add(0x200101), 6);
    EXPECT_EQ(channel.objectList.items,
              (Texts{"", "q current", "speed narrow", "position", "speed demand", "following error",
                     "position demand", "state"}));
    EXPECT_EQ(channel.entries[0].key, 0x60F60C);
    EXPECT_EQ(channel.entries[5].key, 0x60FC00);
    EXPECT_EQ(channel.entries[6].key, 0x200101);
}

// Whatever is added, what the list says is what is recorded.
TEST_F(ChannelLists, ItemIsAlwaysTheEntryBeforeIt) {
    for (const RawRecord& object : objects()) {
        add(static_cast<dictionary::Identity>(std::stol(object.index + object.sub, nullptr, 16)));
        ASSERT_EQ(channel.objectList.items.size(), channel.entryCount + 1U);
        for (std::size_t i = 0; i < channel.entryCount; ++i)
            EXPECT_EQ(channel.objectList.items[i + 1],
                      dictionary::trim_tail(channel.entries.at(i).name_en));
    }
}

TEST_F(ChannelLists, PickStaysOnItsObjectWhenTheListSlides) {
    offer_first_objects(channel, dictionary, base::Language::kEnglish);
    channel.objectList.ListIndex = 4;
    add(0x200101);
    ASSERT_NE(channel.picked(), nullptr);
    EXPECT_EQ(channel.picked()->key, 0x606300);
}

TEST_F(ChannelLists, PickOfTheObjectThatWentIsTheEmptyChoice) {
    offer_first_objects(channel, dictionary, base::Language::kEnglish);
    channel.objectList.ListIndex = 1;
    add(0x200101);
    EXPECT_EQ(channel.objectList.ListIndex, 0);
}

TEST_F(ChannelLists, ObjectThatWasPushedOutComesBackAtTheEnd) {
    offer_first_objects(channel, dictionary, base::Language::kEnglish);
    add(0x200101);
    EXPECT_EQ(add(0x607800), 6);
    EXPECT_EQ(channel.entries[0].key, 0x60F916);
}

TEST_F(ChannelLists, NameFillsItsFieldAtTheMost) {
    add(0x200202);
    EXPECT_EQ(channel.objectList.items[1], std::string(64, 'x'));
}

TEST_F(ChannelLists, UnitsAreTheTargetsOfTheLinesEachOnce) {
    EXPECT_EQ(units_of(0x60F916), (Texts{"rpm", "DEC"}));
    EXPECT_EQ(units_of(0x607800), (Texts{"A", "DEC"}));
}

TEST_F(ChannelLists, BlanksAreTakenOutOfUnitNames) {
    EXPECT_EQ(units_of(0x200201), (Texts{"rpm", "rps", "wide"}));
}

TEST_F(ChannelLists, UnitNameIsCutAtTwentyCharacters) {
    EXPECT_EQ(units_of(0x200202), (Texts{"a_unit_of_more_than_", "DEC", "HEX"}));
}

TEST_F(ChannelLists, ObjectWithoutAFormulaHasTheRawUnit) {
    EXPECT_EQ(units_of(0x200200), Texts{"DEC"});
}

TEST_F(ChannelLists, NewListOfUnitsPicksTheFirst) {
    units_of(0x60F916);
    EXPECT_EQ(channel.unitList.ListIndex, 0);
    EXPECT_EQ(channel.unitList.text(), "rpm");
}

TEST_F(ChannelLists, SameObjectKeepsTheUnitPicked) {
    units_of(0x60F916);
    channel.unitList.ListIndex = 1;
    EXPECT_EQ(units_of(0x60F916), (Texts{"rpm", "DEC"}));
    EXPECT_EQ(channel.unitList.ListIndex, 1);
}

TEST_F(ChannelLists, OtherObjectClearsTheListEvenWithTheSameUnits) {
    units_of(0x60F916);
    channel.unitList.ListIndex = 1;
    EXPECT_EQ(units_of(0x200203), (Texts{"rpm", "DEC"}));
    EXPECT_EQ(channel.unitList.ListIndex, 0);
}

TEST_F(ChannelLists, EntryThatIsNoneListsNothing) {
    Add_Unit_To_CH(-1, channel);
    Add_Unit_To_CH(8, channel);
    EXPECT_TRUE(channel.unitList.items.empty());
    EXPECT_EQ(channel.unitList.ListIndex, -1);
}
