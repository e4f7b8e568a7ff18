#include <gtest/gtest.h>

#include "base/gbk.h"
#include "base/temp_folder.h"
#include "params/motor_codes.h"

namespace servo::params {
namespace {

TempFolder& with_file(TempFolder& folder, std::string_view bytes) {
    std::filesystem::create_directory(folder / "sys");
    folder.put("sys/MotorCode.INI", bytes);
    return folder;
}

TEST(MotorCodes, TheWholeFileIsShownUnchanged) {
    TempFolder folder;
    const std::string text = "; 电机\r\n\r\n[A]\r\nA1=1,  <b>2</b>\n\tEND\nbehind it";
    with_file(folder, base::utf8_to_gbk(text));
    EXPECT_EQ(load_motor_codes(folder.path()), text);
}

TEST(MotorCodes, BytesThatAreNoTextStayVisible) {
    TempFolder folder;
    with_file(folder, std::string("A\0B\xFF\n\x81", 6));
    EXPECT_EQ(load_motor_codes(folder.path()), std::string("A\0B\uFFFD\n\uFFFD", 10));
}

TEST(MotorCodes, AnEmptyFileIsNoMissingOne) {
    TempFolder folder;
    with_file(folder, "");
    EXPECT_EQ(load_motor_codes(folder.path()), "");
}

TEST(MotorCodes, AMissingFileIsToldToTheCaller) {
    const TempFolder folder;
    EXPECT_FALSE(load_motor_codes(folder.path()).has_value());
}

}  // namespace
}  // namespace servo::params
