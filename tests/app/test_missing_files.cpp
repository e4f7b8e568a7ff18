// Each file beside the program taken away, one at a time: what start-up says, and that it goes on.
#include <gtest/gtest.h>

#include <array>

#include "shell_bench.h"

namespace servo::app::test {
namespace {

using Box = std::pair<std::string, std::string>;

// As a user knows it: "\\sys\\X.ini".
std::string told_name(std::string file) {
    std::ranges::replace(file, '/', '\\');
    return "\\" + file;
}

// Rows of every grid that start-up fills, in the order of ProgramFolder::page_files().
std::vector<int> rows_of(const Workstation& workstation) {
    std::vector<int> rows;
    const auto order = params::pages_in_load_order();
    for (const std::size_t page : std::span(order).first(order.size() - 1))
        rows.push_back(workstation.pages.at(page)->grid().rows());
    for (const auto& page : workstation.tabbed_pages)
        for (int tab = 0; tab < params::kTabs; ++tab)
            rows.push_back(page->grid(tab).rows());
    rows.push_back(workstation.pages.at(order.back())->grid().rows());
    rows.push_back(workstation.download_rows.grid().rows());
    return rows;
}

TEST(MissingFiles, TheFilesOfPageKeysAreReadInTheToldOrder) {
    const std::array<std::string_view, 39> told{"BasicOperate.ini",
                                                "PositionLoop.ini",
                                                "VelocityLoop.ini",
                                                "AnalogTorqueMode.ini",
                                                "AnalogVelocityMode.ini",
                                                "AutoReverse.ini",
                                                "AutoTuning.ini",
                                                "CurrentLoop.ini",
                                                "DriverConfig.ini",
                                                "DriverProperty.ini",
                                                "F000.ini",
                                                "F002.ini",
                                                "F003.ini",
                                                "F004.ini",
                                                "F005.ini",
                                                "HomingMode.ini",
                                                "MotorConfig.ini",
                                                "MultiPositionMode.ini",
                                                "MultiVelocityMode.ini",
                                                "PulseMode.ini",
                                                "ErrorHistory.ini",
                                                "TPDO1.ini",
                                                "TPDO2.ini",
                                                "TPDO3.ini",
                                                "TPDO4.ini",
                                                "TPDO5.ini",
                                                "TPDO6.ini",
                                                "TPDO7.ini",
                                                "TPDO8.ini",
                                                "RPDO1.ini",
                                                "RPDO2.ini",
                                                "RPDO3.ini",
                                                "RPDO4.ini",
                                                "RPDO5.ini",
                                                "RPDO6.ini",
                                                "RPDO7.ini",
                                                "RPDO8.ini",
                                                "PdoOther.ini",
                                                "download.ini"};
    ShellBench bench;
    for (const std::string& file : ProgramFolder::page_files())
        bench.folder.remove(file);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), told.size());
    for (std::size_t i = 0; i < told.size(); ++i)
        EXPECT_EQ(bench.notice.boxes[i],
                  Box(" Notice", "Missing file \\sys\\" + std::string(told[i])));
}

class MissingPageFile : public ::testing::TestWithParam<std::size_t> {};

TEST_P(MissingPageFile, IsToldAndOnlyItsGridStaysEmpty) {
    const std::string file = ProgramFolder::page_files().at(GetParam());
    ShellBench bench;
    bench.folder.remove(file);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0], Box(" Notice", "Missing file " + told_name(file)));
    const std::vector<int> rows = rows_of(bench.workstation);
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(rows[i], i == GetParam() ? 1 : 4) << i;
}

INSTANTIATE_TEST_SUITE_P(OneAtATime, MissingPageFile, ::testing::Range<std::size_t>(0, 39),
                         [](const auto& test) {
                             std::string name = ProgramFolder::page_files().at(test.param);
                             return name.substr(4, name.size() - 8);
                         });

TEST(MissingFiles, WithoutModbusAddressesTheBrowserShowsDots) {
    ShellBench bench;
    bench.folder.remove("modbus.txt");
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0], Box("Attention", "Missing the Modbus address file!"));
    EXPECT_FALSE(bench.workstation.modbus_list.present);
    bench.workstation.browser.open_for_help(0x606000);
    EXPECT_EQ(bench.workstation.browser.details().modbus, "....");
}

TEST(MissingFiles, WithModbusAddressesTheBrowserShowsThem) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    bench.workstation.browser.open_for_help(0x606000);
    EXPECT_EQ(bench.workstation.browser.details().modbus, "0x1234");
}

TEST(MissingFiles, SysIniIsMissedInSilenceAndWrittenAtTheFirstActivation) {
    ShellBench bench;
    bench.folder.remove("sys/sys.ini");
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_TRUE(bench.notice.boxes.empty());
    MDIForm_Activate(bench.workstation);
    EXPECT_EQ(bench.folder.read("sys/sys.ini"), "[sys]\r\nlang=1\r\n");
}

// The program can do without its pages, and not without the list of digital functions.
TEST(MissingFiles, TheWholeSysFolderIsToldFileByFileAndTheProgramEnds) {
    ShellBench bench;
    std::filesystem::remove_all(bench.folder.path() / "sys");
    EXPECT_FALSE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 40U);
    EXPECT_EQ(bench.notice.boxes.back(), Box("Notice", "Missing file \\sys\\DigitIOSettings.ini"));
    EXPECT_FALSE(bench.timer.enabled());
}

TEST(MissingFiles, AWrongListOfDigitalFunctionsEndsTheProgram) {
    ShellBench bench;
    bench.folder.write("sys/DigitIOSettings.ini", "[DigitOUT]\r\n");
    EXPECT_FALSE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0], Box("Notice", "DigitIOSettings.ini is not right"));
}

TEST(MissingFiles, AnEmptyListOfDigitalFunctionsEndsTheProgramWithoutAWord) {
    ShellBench bench;
    bench.folder.write("sys/DigitIOSettings.ini", "");
    EXPECT_FALSE(MDIForm_Load(bench.workstation));
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(MissingFiles, WithoutADictionaryTheProgramEndsAndNoWindowIsLeft) {
    ShellBench bench;
    bench.folder.remove("qorlan.dat");
    EXPECT_FALSE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.notice.boxes[0], Box("Notice", "File Missing,Program is about to quit"));
    for (const link::Window* window : bench.workstation.windows)
        EXPECT_FALSE(window->visible()) << window->name();
    EXPECT_FALSE(bench.timer.enabled());
}

TEST(MissingFiles, OneOfTheTwoDictionariesIsEnough) {
    ShellBench bench;
    bench.folder.write("Servo.dat", bench.folder.read("qorlan.dat"));
    bench.folder.remove("qorlan.dat");
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.workstation.Tavro_Nevra_Other_mode, dictionary::Variant::kReduced);
}

}  // namespace
}  // namespace servo::app::test
