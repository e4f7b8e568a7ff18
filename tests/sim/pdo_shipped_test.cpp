// The PDO set-up that a drive leaves the factory with, under its own rules.
#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

constexpr std::uint32_t kOff = 0x80000000;

class ShippedPdo : public ::testing::Test {
  protected:
    ShippedPdo() {
        store_.open_dat(SERVO_BIN_DIR);
        Options options;
        options.data = SERVO_BIN_DIR;
        drive_ = std::make_unique<Drive>(store_, options);
    }
    // The refusal's code of a write, 0 when it was taken.
    std::uint32_t write(std::uint32_t key, std::uint32_t value, int size) {
        Eight payload{size == 1   ? std::uint8_t{0x2F}
                      : size == 2 ? std::uint8_t{0x2B}
                                  : std::uint8_t{0x23},
                      static_cast<std::uint8_t>(key >> 8U), static_cast<std::uint8_t>(key >> 16U),
                      static_cast<std::uint8_t>(key)};
        for (std::size_t i = 0; i < 4; ++i)
            payload[4 + i] = static_cast<std::uint8_t>(value >> (8 * i));
        now_ += microseconds(20000);
        drive_->receive(frame(127, payload), now_);
        now_ += microseconds(20000);
        drive_->advance(now_);
        const auto output = drive_->take_output();
        if (output.size() != 1 || output[0].bytes.size() != 10) return 0xFFFFFFFF;
        const Bytes& a = output[0].bytes;
        if (a[1] == 0x60) return 0;
        return a[5] | a[6] << 8 | a[7] << 16 | static_cast<std::uint32_t>(a[8]) << 24;
    }
    std::uint32_t get(std::uint32_t key) {
        return static_cast<std::uint32_t>(
            drive_->value(static_cast<dictionary::Identity>(key)).value_or(0));
    }
    template <typename Visit>
    static void for_each_pdo(Visit visit) {
        for (std::uint32_t i = 0; i < 8; ++i) {
            visit(0x140000 + i * 0x100, 0x160000 + i * 0x100);
            visit(0x180000 + i * 0x100, 0x1A0000 + i * 0x100);
        }
    }

    dictionary::Store store_;
    std::unique_ptr<Drive> drive_;
    microseconds now_{0};
};

TEST_F(ShippedPdo, EveryMappingIsOneThatCouldBeMade) {
    for_each_pdo([this](std::uint32_t pdo, std::uint32_t mapping) {
        const std::uint32_t cob_id = get(pdo + 1);
        const std::uint32_t count = get(mapping);
        EXPECT_EQ(write(pdo + 1, cob_id | kOff, 4), 0U) << pdo;
        EXPECT_EQ(write(mapping, 0, 1), 0U) << mapping;
        for (std::uint32_t sub = 1; sub <= 8; ++sub) {
            const std::uint32_t entry = get(mapping + sub);
            EXPECT_EQ(write(mapping + sub, 0, 4), 0U) << mapping << ' ' << sub;
            EXPECT_EQ(write(mapping + sub, entry, 4), 0U) << mapping << ' ' << sub;
        }
        EXPECT_EQ(write(mapping, count, 1), 0U) << mapping;
        EXPECT_EQ(write(pdo + 1, cob_id, 4), 0U) << pdo;
    });
}

TEST_F(ShippedPdo, TheWholeSetUpCanBeWrittenBackAsItIs) {
    for_each_pdo([this](std::uint32_t pdo, std::uint32_t mapping) {
        EXPECT_EQ(write(pdo + 1, get(pdo + 1), 4), 0U) << pdo;
        EXPECT_EQ(write(pdo + 2, get(pdo + 2), 1), 0U) << pdo;
        EXPECT_EQ(write(pdo + 3, get(pdo + 3), 2), 0U) << pdo;
        EXPECT_EQ(write(mapping, get(mapping), 1), 0U) << mapping;
        for (std::uint32_t sub = 1; sub <= 8; ++sub)
            EXPECT_EQ(write(mapping + sub, get(mapping + sub), 4), 0U) << mapping;
    });
}

TEST_F(ShippedPdo, RecordsAreReadOnlyInTheirHighestSubIndex) {
    EXPECT_EQ(write(0x140000, 5, 1), 0x06010002U);
    EXPECT_EQ(write(0x180000, 6, 1), 0x06010002U);
    EXPECT_EQ(write(0x140004, 0, 1), 0x06090011U) << "there is no such sub-index";
}

}  // namespace
}  // namespace servo::sim::test
