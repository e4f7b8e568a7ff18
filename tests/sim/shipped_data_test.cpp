// The drive with the dictionary and the values that are shipped.
#include <gtest/gtest.h>

#include "sim/drive_bench.h"

namespace servo::sim::test {
namespace {

class ShippedDrive : public ::testing::Test {
  protected:
    ShippedDrive() {
        loaded_ = store_.open_dat(SERVO_BIN_DIR);
        Options options;
        options.data = SERVO_BIN_DIR;
        drive_ = std::make_unique<Drive>(store_, options);
    }

    // The answer to one payload, without its checksum.
    std::optional<Eight> ask(const Eight& payload) {
        now_ += microseconds(20000);
        drive_->receive(frame(127, payload), now_);
        now_ += microseconds(20000);
        drive_->advance(now_);
        const auto output = drive_->take_output();
        if (output.size() != 1 || output[0].bytes.size() != 10) return std::nullopt;
        Eight out{};
        std::copy(output[0].bytes.begin() + 1, output[0].bytes.end() - 1, out.begin());
        return out;
    }

    dictionary::Store store_;
    std::unique_ptr<Drive> drive_;
    microseconds now_{0};
    bool loaded_ = false;
};

TEST_F(ShippedDrive, HasNothingToComplainAbout) {
    ASSERT_TRUE(loaded_);
    for (const std::string& complaint : drive_->complaints())
        ADD_FAILURE() << complaint;
}

TEST_F(ShippedDrive, EveryObjectAnswersByItsType) {
    ASSERT_TRUE(loaded_);
    ASSERT_GT(store_.dictionary_rows(), 1000U);
    for (std::size_t row = 0; row < store_.dictionary_rows(); ++row) {
        const dictionary::Identity id = store_.row_identity(row);
        const auto record = store_.get_record(id);
        const auto answer =
            ask({0x40, static_cast<std::uint8_t>(id >> 8), static_cast<std::uint8_t>(id >> 16),
                 static_cast<std::uint8_t>(id), 0, 0, 0, 0});
        ASSERT_TRUE(answer) << std::hex << id;
        const std::string type = record.type.substr(0, record.type.find_last_not_of(' ') + 1);
        const int size = dictionary::decoder_size(type) % 10;
        const int told = size == 1 ? 0x4F : size == 2 ? 0x4B : size == 4 ? 0x43 : 0x41;
        // What can only be written refuses with just that reason.
        const bool write_only = record.attr.find('R') == std::string::npos;
        EXPECT_EQ((*answer)[0], write_only ? 0x80 : told) << std::hex << id;
        if (write_only) {
            EXPECT_EQ((*answer)[7], 0x06) << std::hex << id;
        }
    }
}

TEST_F(ShippedDrive, ObjectsThatCannotBeWrittenRefuse) {
    ASSERT_TRUE(loaded_);
    for (std::size_t row = 0; row < store_.dictionary_rows(); ++row) {
        const dictionary::Identity id = store_.row_identity(row);
        const auto record = store_.get_record(id);
        if (record.attr.find('W') != std::string::npos) continue;
        const auto answer =
            ask({0x22, static_cast<std::uint8_t>(id >> 8), static_cast<std::uint8_t>(id >> 16),
                 static_cast<std::uint8_t>(id), 1, 0, 0, 0});
        ASSERT_TRUE(answer);
        EXPECT_EQ((*answer)[0], 0x80) << std::hex << id;
    }
}

TEST_F(ShippedDrive, TurnsAtTheSpeedThatItIsTold) {
    ASSERT_TRUE(loaded_);
    const double raw = 512.0 * static_cast<double>(*drive_->value(0x641003)) / 1875;
    drive_->set_value(0x60FF00, static_cast<std::int64_t>(1200 * raw));
    drive_->set_value(0x606000, 3);
    for (const int word : {0x06, 0x07, 0x0F})
        drive_->set_value(0x604000, word);
    drive_->advance(std::chrono::seconds(2));
    EXPECT_NEAR(static_cast<double>(*drive_->value(0x606C00)) / raw, 1200.0, 1.0);
    EXPECT_EQ(drive_->value(0x260100), 0);
}

TEST_F(ShippedDrive, TheGainScaleIsThatOfItsMotor) {
    ASSERT_TRUE(loaded_);
    EXPECT_EQ(drive_->value(0x304007), 19661);
    EXPECT_EQ(drive_->value(0x60F912), 60);
}

// The objects that an oscilloscope offers first, alone and with their widths in the dictionary.
TEST_F(ShippedDrive, RecordsTheCommonObjects) {
    ASSERT_TRUE(loaded_);
    for (const auto& [key, bits] : {std::pair{0x607800, 16},
                                    {0x60F60C, 16},
                                    {0x60F916, 32},
                                    {0x606300, 32},
                                    {0x606B00, 32},
                                    {0x60FB08, 16},
                                    {0x60FC00, 32}}) {
        drive_->set_value(0x230001, bits == 16 ? std::int64_t{key} << 8 | bits : 0);
        drive_->set_value(0x230005, bits == 32 ? std::int64_t{key} << 8 | bits : 0);
        const auto started = ask({0x2F, 0x00, 0x23, 0x07, 1, 0, 0, 0});
        ASSERT_TRUE(started) << std::hex << key;
        EXPECT_EQ((*started)[0], 0x60) << std::hex << key;
        now_ += std::chrono::milliseconds(40);
        drive_->advance(now_);
        const auto state = ask({0x40, 0x00, 0x23, 0x07, 0, 0, 0, 0});
        EXPECT_EQ(state, (Eight{0x4F, 0x00, 0x23, 0x07, 0, 0, 0, 0})) << std::hex << key;
        const auto buffer = ask({0x40, 0x00, 0x23, 0x13, 0, 0, 0, 0});
        ASSERT_TRUE(buffer);
        EXPECT_EQ((*buffer)[4] | (*buffer)[5] << 8, 500 * bits / 8) << std::hex << key;
    }
}

}  // namespace
}  // namespace servo::sim::test
