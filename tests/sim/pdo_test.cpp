// PDO set-up: what may be changed when, and what can be mapped.
#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

using std::chrono::seconds;

constexpr std::uint32_t kOff = 0x80000000;

constexpr std::uint32_t kNoObject = 0x06020000;
constexpr std::uint32_t kNotMappable = 0x06040041;
constexpr std::uint32_t kTooLong = 0x06040042;
constexpr std::uint32_t kRange = 0x06090030;
constexpr std::uint32_t kTooHigh = 0x06090031;
constexpr std::uint32_t kState = 0x08000022;

// The first receive and the first transmit PDO of the bench; both are on, as in a drive from the
// factory.
constexpr std::uint32_t kReceive = 0x140000;
constexpr std::uint32_t kReceiveMap = 0x160000;
constexpr std::uint32_t kTransmit = 0x180000;
constexpr std::uint32_t kTransmitMap = 0x1A0000;

class Pdo : public ::testing::Test {
  protected:
    static std::vector<Entry> entries() {
        std::vector<Entry> all = bench_entries();
        for (const Entry& entry : std::initializer_list<Entry>{
                 {"140001", "Unsigned32", "RW"}, {"140002", "Unsigned8", "RW"},
                 {"140003", "Unsigned16", "RW"}, {"140005", "Unsigned16", "RW"},
                 {"160000", "Unsigned8", "RW"},  {"160001", "Unsigned32", "RW"},
                 {"160002", "Unsigned32", "RW"}, {"160003", "Unsigned32", "RW"},
                 {"160008", "Unsigned32", "RW"}, {"180001", "Unsigned32", "RW"},
                 {"180002", "Unsigned8", "RW"},  {"180003", "Unsigned16", "RW"},
                 {"180005", "Unsigned16", "RW"}, {"180006", "Unsigned8", "RW"},
                 {"1A0000", "Unsigned8", "RW"},  {"1A0001", "Unsigned32", "RW"},
                 {"1A0002", "Unsigned32", "RW"}, {"1A0003", "Unsigned32", "RW"},
                 {"100500", "Unsigned32", "RW"}, {"2FE200", "Unsigned16", "RW"},
                 {"101002", "Unsigned32", "RW"},
             })
            all.push_back(entry);
        return all;
    }
    static Options options() {
        Options options;
        options.values = std::string(kBenchValues) +
                         "140001\t513\t\t\ts\n"
                         "140002\t255\t\t\ts\n"
                         "160000\t1\t0\t8\ts\n"
                         "160001\t0x60400010\t\t\ts\n"
                         "160002\t\t\t\ts\n"
                         "180001\t0x40000181\t\t\ts\n"
                         "1A0000\t1\t0\t8\ts\n"
                         "1A0001\t0x60410010\t\t\ts\n";
        return options;
    }

    // The refusal's code; 0 when it was taken.
    std::uint32_t set(std::uint32_t key, std::int64_t value, int size) {
        return bench.write(key, value, size) ? 0 : bench.refusal();
    }
    std::uint32_t set_cob_id(std::uint32_t pdo, std::uint32_t value) {
        return set(pdo + 1, value, 4);
    }
    // As the standard has it: off, then no entries.
    void open_mapping(std::uint32_t pdo, std::uint32_t mapping) {
        ASSERT_EQ(set_cob_id(pdo, kOff), 0U);
        ASSERT_EQ(set(mapping, 0, 1), 0U);
    }
    std::uint32_t map(std::uint32_t mapping, int entry, std::uint32_t what) {
        return set(mapping + static_cast<std::uint32_t>(entry), what, 4);
    }

    DriveBench bench{options(), entries()};
};

TEST_F(Pdo, MappingIsChangedInTheStandardsOrder) {
    ASSERT_EQ(set_cob_id(kReceive, kOff | 0x201), 0U);
    ASSERT_EQ(set(kReceiveMap, 0, 1), 0U);
    EXPECT_EQ(map(kReceiveMap, 1, 0x607A0020), 0U);
    EXPECT_EQ(map(kReceiveMap, 2, 0x60400010), 0U);
    EXPECT_EQ(map(kReceiveMap, 3, 0x60600008), 0U);
    EXPECT_EQ(set(kReceiveMap, 3, 1), 0U);
    EXPECT_EQ(set_cob_id(kReceive, 0x201), 0U);
    EXPECT_EQ(bench.read(kReceiveMap), 3U);
    EXPECT_EQ(bench.read(kReceiveMap + 1), 0x607A0020U);
    EXPECT_EQ(bench.read(kReceive + 1), 0x201U);
}

TEST_F(Pdo, OneThatIsOnKeepsItsMapping) {
    EXPECT_EQ(set(kReceiveMap, 0, 1), kState);
    EXPECT_EQ(set(kReceiveMap, 2, 1), kState);
    EXPECT_EQ(map(kReceiveMap, 1, 0x607A0020), kState);
    EXPECT_EQ(map(kReceiveMap, 2, 0), 0U) << "it is 0 already";
    EXPECT_EQ(bench.read(kReceiveMap), 1U);
    EXPECT_EQ(bench.read(kReceiveMap + 1), 0x60400010U);
}

TEST_F(Pdo, EntriesAreOpenOnlyWhileTheirCountIsZero) {
    ASSERT_EQ(set_cob_id(kReceive, kOff), 0U);
    EXPECT_EQ(map(kReceiveMap, 1, 0x607A0020), kState);
    EXPECT_EQ(map(kReceiveMap, 8, 0x607A0020), kState) << "behind the count too";
    ASSERT_EQ(set(kReceiveMap, 0, 1), 0U);
    EXPECT_EQ(map(kReceiveMap, 1, 0x607A0020), 0U);
}

TEST_F(Pdo, WhatIsThereAlreadyIsTakenInEveryState) {
    EXPECT_EQ(set(kReceiveMap, 1, 1), 0U);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400010), 0U);
    EXPECT_EQ(set_cob_id(kReceive, 0x201), 0U);
    EXPECT_EQ(set(kTransmit + 3, 0, 2), 0U);
}

TEST_F(Pdo, OffAndZeroOfOnePdoDoNotOpenAnother) {
    open_mapping(kReceive, kReceiveMap);
    EXPECT_EQ(map(kTransmitMap, 1, 0x60640020), kState);
    EXPECT_EQ(set(kTransmitMap, 0, 1), kState);
}

TEST_F(Pdo, AnObjectThatIsNotThereCannotBeMapped) {
    open_mapping(kReceive, kReceiveMap);
    EXPECT_EQ(map(kReceiveMap, 1, 0x5FFF0010), kNoObject);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400110), kNoObject) << "the sub-index";
    EXPECT_EQ(map(kReceiveMap, 1, 0xFFFFFFFF), kNoObject);
    EXPECT_EQ(bench.read(kReceiveMap + 1), 0x60400010U);
}

TEST_F(Pdo, TheLengthMustBeTheObjects) {
    open_mapping(kReceive, kReceiveMap);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400020), kNotMappable);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400008), kNotMappable);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400000), kNotMappable);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400011), kNotMappable);
}

TEST_F(Pdo, WhatIsReceivedCanBeWrittenAndWhatIsSentCanBeRead) {
    open_mapping(kReceive, kReceiveMap);
    open_mapping(kTransmit, kTransmitMap);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60410010), kNotMappable) << "the status word is read-only";
    EXPECT_EQ(map(kTransmitMap, 1, 0x60410010), 0U);
    EXPECT_EQ(map(kTransmitMap, 2, 0x20000B10), kNotMappable) << "write-only";
    EXPECT_EQ(map(kReceiveMap, 1, 0x20000B10), 0U);
    EXPECT_EQ(map(kTransmitMap, 3, 0x60400010), 0U) << "the control word may be sent back";
}

TEST_F(Pdo, TextsAreNotMappable) {
    open_mapping(kTransmit, kTransmitMap);
    EXPECT_EQ(map(kTransmitMap, 1, 0x20000720), kNotMappable);
    EXPECT_EQ(map(kTransmitMap, 1, 0x20000F20), kNotMappable) << "nor a domain";
}

TEST_F(Pdo, CommunicationIsNotMappableButTheErrorRegister) {
    open_mapping(kReceive, kReceiveMap);
    open_mapping(kTransmit, kTransmitMap);
    EXPECT_EQ(map(kTransmitMap, 1, 0x10050020), kNotMappable);
    EXPECT_EQ(map(kTransmitMap, 1, 0x1A000008), kNotMappable) << "not even a mapping";
    EXPECT_EQ(map(kTransmitMap, 1, 0x10010008), 0U);
    EXPECT_EQ(map(kReceiveMap, 1, 0x2FE20010), kNotMappable) << "the line's own rate";
    EXPECT_EQ(map(kReceiveMap, 1, 0x2FFF0010), kNotMappable) << "a restart";
}

TEST_F(Pdo, SixtyFourBitsAreTheMost) {
    open_mapping(kReceive, kReceiveMap);
    ASSERT_EQ(map(kReceiveMap, 1, 0x607A0020), 0U);
    ASSERT_EQ(map(kReceiveMap, 2, 0x60FF0020), 0U);
    ASSERT_EQ(map(kReceiveMap, 3, 0x60600008), 0U);
    EXPECT_EQ(set(kReceiveMap, 3, 1), kTooLong);
    EXPECT_EQ(bench.read(kReceiveMap), 0U);
    EXPECT_EQ(set(kReceiveMap, 2, 1), 0U);
}

TEST_F(Pdo, AnEmptyEntryDoesNotCount) {
    open_mapping(kReceive, kReceiveMap);
    EXPECT_EQ(set(kReceiveMap, 2, 1), kNotMappable) << "entry 2 holds nothing";
    EXPECT_EQ(set(kReceiveMap, 1, 1), 0U);
}

TEST_F(Pdo, AnEntryCanBeEmptied) {
    open_mapping(kReceive, kReceiveMap);
    EXPECT_EQ(map(kReceiveMap, 1, 0), 0U);
    EXPECT_EQ(bench.read(kReceiveMap + 1), 0U);
}

TEST_F(Pdo, NineEntriesAreTooMany) {
    open_mapping(kReceive, kReceiveMap);
    EXPECT_EQ(set(kReceiveMap, 9, 1), kTooHigh);
}

TEST_F(Pdo, TheIdentifierIsNotExchangedWhileItIsOn) {
    EXPECT_EQ(set_cob_id(kReceive, 0x202), kState);
    EXPECT_EQ(set_cob_id(kTransmit, 0x181), 0U) << "remote requests may be let in";
    EXPECT_EQ(set_cob_id(kReceive, kOff | 0x202), 0U);
    EXPECT_EQ(set_cob_id(kReceive, 0x203), 0U) << "on again under another";
    EXPECT_EQ(bench.read(kReceive + 1), 0x203U);
}

TEST_F(Pdo, IdentifiersOfTheNetworkAreNotTaken) {
    ASSERT_EQ(set_cob_id(kReceive, kOff), 0U);
    for (const std::uint32_t id :
         {0x000U, 0x07FU, 0x101U, 0x180U, 0x581U, 0x5FFU, 0x601U, 0x67FU, 0x6E0U, 0x701U, 0x7FFU})
        EXPECT_EQ(set_cob_id(kReceive, id), kRange) << id;
    for (const std::uint32_t id : {0x181U, 0x580U, 0x680U, 0x6DFU}) {
        EXPECT_EQ(set_cob_id(kReceive, id), 0U) << id;
        ASSERT_EQ(set_cob_id(kReceive, kOff), 0U);
    }
}

TEST_F(Pdo, LongIdentifiersAreNotKnown) {
    ASSERT_EQ(set_cob_id(kReceive, kOff), 0U);
    EXPECT_EQ(set_cob_id(kReceive, 0x20000201), kRange);
    EXPECT_EQ(set_cob_id(kReceive, 0x00000A01), kRange);
    EXPECT_EQ(set_cob_id(kReceive, kOff | 0x20000000), kRange);
}

TEST_F(Pdo, ReservedTransmissionTypesAreRefused) {
    EXPECT_EQ(set(kReceive + 2, 240, 1), 0U);
    EXPECT_EQ(set(kReceive + 2, 241, 1), kRange);
    EXPECT_EQ(set(kReceive + 2, 253, 1), kRange) << "nothing is requested of a receiver";
    EXPECT_EQ(set(kReceive + 2, 254, 1), 0U);
    EXPECT_EQ(set(kTransmit + 2, 251, 1), kRange);
    EXPECT_EQ(set(kTransmit + 2, 252, 1), 0U);
    EXPECT_EQ(set(kTransmit + 2, 0, 1), 0U);
}

TEST_F(Pdo, InhibitTimeAndSyncStartNeedItOff) {
    EXPECT_EQ(set(kTransmit + 3, 50, 2), kState);
    EXPECT_EQ(set(kTransmit + 6, 3, 1), kState);
    EXPECT_EQ(set(kTransmit + 5, 100, 2), 0U) << "the event timer does not";
    EXPECT_EQ(set(kReceive + 3, 50, 2), 0U) << "a receiver has no inhibit time";
    ASSERT_EQ(set_cob_id(kTransmit, kOff), 0U);
    EXPECT_EQ(set(kTransmit + 3, 50, 2), 0U);
    EXPECT_EQ(set(kTransmit + 6, 3, 1), 0U);
}

TEST_F(Pdo, AStoredSetUpSurvivesARestart) {
    open_mapping(kReceive, kReceiveMap);
    ASSERT_EQ(map(kReceiveMap, 1, 0x607A0020), 0U);
    ASSERT_EQ(set(kReceiveMap, 1, 1), 0U);
    ASSERT_EQ(set_cob_id(kReceive, 0x210), 0U);
    ASSERT_TRUE(bench.write(0x101002, 0x65766173, 4));
    ASSERT_TRUE(bench.write(0x2FFF00, 0xAA55, 2));
    bench.run(seconds(2));
    EXPECT_EQ(bench.read(kReceiveMap + 1), 0x607A0020U);
    EXPECT_EQ(bench.read(kReceive + 1), 0x210U);
    EXPECT_EQ(map(kReceiveMap, 1, 0x60400010), kState) << "and is on";
}

}  // namespace
}  // namespace servo::sim::test
