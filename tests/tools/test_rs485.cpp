// The lists of the drive's serial port.
#include <gtest/gtest.h>

#include <filesystem>

#include "base/temp_folder.h"
#include "dictionary/store_of.h"
#include "direct_engine.h"
#include "support/virtual_bench.h"
#include "tools/rs485.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;
using base::Language;
using link::Payload;
using Payloads = std::vector<Payload>;

RawRecord record(std::string index, std::string sub, std::string type) {
    RawRecord made;
    made.index = std::move(index);
    made.sub = std::move(sub);
    made.type = std::move(type);
    made.attribute = "RW";
    return made;
}

dictionary::Store serial_store() {
    return dictionary::store_of(
        {record("2FE2", "00", "Unsigned16"), record("6510", "0E", "Unsigned16"),
         record("6510", "0C", "Unsigned8"), record("2FE1", "00", "Unsigned8")});
}

constexpr std::string_view kFile =
    "title\r\nheading\r\nrate 2FE200\r\nstop bits 65100E\r\nprotocol 65100C\r\n";

void put(const TempFolder& folder, std::string_view text) {
    std::filesystem::create_directories(folder / "sys");
    folder.put("sys/RS485.ini", text);
}

class Rs485Test : public ::testing::Test, protected test::DirectEngine {
  protected:
    Rs485Test() {
        put(folder, kFile);
        loaded = form.load(folder.path());
    }
    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const SerialNote& note : form.notes())
            if (note.warning) texts.push_back(note.text);
        return texts;
    }

    TempFolder folder;
    dictionary::Store store = serial_store();
    Rs485 form{engine, store, language};
    bool loaded = false;
};

TEST_F(Rs485Test, TheFourOperationsAnswerForTheList) {
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(form.custom());
    EXPECT_EQ(form.get_ODS_Num(), 3);
    EXPECT_EQ(form.get_ods(0), 0x2FE200);
    EXPECT_EQ(form.get_ods(1), 0x65100E);
    EXPECT_EQ(form.get_ods(2), 0x65100C);
    EXPECT_EQ(form.get_odtype(0), "uint16");
    EXPECT_EQ(form.get_odtype(1), "uint16");
    EXPECT_EQ(form.get_odtype(2), "uint8");
    for (const int none : {-1, 3, 100}) {
        EXPECT_EQ(form.get_ods(none), 0);
        EXPECT_EQ(form.get_odtype(none), "");
    }
}

TEST_F(Rs485Test, ListsAndItemsAreTheTold) {
    const auto lists = serial_lists();
    const std::vector<std::pair<std::string, std::vector<std::string>>> told{
        {"波特率", {"9600", "19200", "38400", "115200"}},
        {"数据位", {"8"}},
        {"奇偶校验", {"NONE"}},
        {"停止位", {"1", "2"}},
        {"协议", {"MODBUS", "QRL RS232"}}};
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(lists[i].control, "Combo" + std::to_string(i + 1));
        EXPECT_TRUE(lists[i].label.starts_with(told[i].first + "/"));
        EXPECT_EQ(std::vector<std::string>(lists[i].items.begin(), lists[i].items.end()),
                  told[i].second);
    }
}

TEST_F(Rs485Test, ADriveThatReports540Shows19200) {
    form.set_ods(0, 540);
    EXPECT_EQ(serial_lists()[0].items[static_cast<std::size_t>(form.selection(0))], "19200");
}

TEST_F(Rs485Test, EveryValueOfTheTablesSelectsItsItem) {
    const std::vector<std::vector<int>> tables{{1080, 540, 270, 90}, {8, 9}, {0, 1}};
    for (int entry = 0; entry < 3; ++entry)
        for (std::size_t i = 0; i < tables[static_cast<std::size_t>(entry)].size(); ++i) {
            form.set_ods(entry, tables[static_cast<std::size_t>(entry)][i]);
            EXPECT_EQ(form.selection(entry), static_cast<int>(i));
        }
    EXPECT_TRUE(sent().empty()) << "what the drive says is not written back";
}

TEST_F(Rs485Test, AValueOutsideOfTheTableChangesNothing) {
    form.set_ods(0, 270);
    int told = 0;
    form.changed = [&told] { ++told; };
    for (const double value : {0.0, 271.0, 269.6, -270.0, 1e12})
        form.set_ods(0, value);
    form.set_ods(1, 1);
    form.set_ods(2, 2);
    EXPECT_EQ(form.selection(0), 2);
    EXPECT_EQ(form.selection(1), -1);
    EXPECT_EQ(form.selection(2), -1);
    EXPECT_EQ(told, 0);
}

TEST_F(Rs485Test, TheItemThatIsSelectedAlreadyIsLeftAlone) {
    form.set_ods(1, 9);
    int told = 0;
    form.changed = [&told] { ++told; };
    form.set_ods(1, 9);
    EXPECT_EQ(told, 0);
    form.set_ods(1, 8);
    EXPECT_EQ(told, 1);
}

TEST_F(Rs485Test, AChoiceWritesTheTablesValue) {
    form.pick(0, 3);
    form.pick(1, 1);
    form.pick(2, 0);
    EXPECT_EQ(sent(), (Payloads{{0x2B, 0xE2, 0x2F, 0x00, 90, 0, 0, 0},
                                {0x2B, 0x10, 0x65, 0x0E, 9, 0, 0, 0},
                                {0x2F, 0x10, 0x65, 0x0C, 0, 0, 0, 0}}));
    form.pick(0, 0);
    EXPECT_EQ(sent(), (Payloads{{0x2B, 0xE2, 0x2F, 0x00, 0x38, 0x04, 0, 0}})) << "1080";
    EXPECT_EQ(form.selection(0), 0);
}

TEST_F(Rs485Test, AChoiceOfTheSameItemIsWrittenAgain) {
    form.set_ods(2, 1);
    form.pick(2, 1);
    EXPECT_EQ(sent().size(), 1U);
}

TEST_F(Rs485Test, NoItemIsNoChoice) {
    form.pick(0, -1);
    form.pick(0, 4);
    EXPECT_TRUE(sent().empty());
    EXPECT_EQ(form.selection(0), -1);
}

TEST_F(Rs485Test, AFourthEntryOfTheFileHasNoControl) {
    put(folder, std::string(kFile) + "more 2FE100\r\n");
    ASSERT_TRUE(form.load(folder.path()));
    EXPECT_EQ(form.get_ODS_Num(), 4);
    EXPECT_EQ(form.get_ods(3), 0x2FE100);
    form.set_ods(3, 540);
    for (int entry = 0; entry < 3; ++entry)
        EXPECT_EQ(form.selection(entry), -1);
}

TEST_F(Rs485Test, WithoutTheFileThereIsNothingToPoll) {
    Rs485 other(engine, store, language);
    const TempFolder empty;
    EXPECT_FALSE(other.load(empty.path()));
    EXPECT_EQ(other.get_ODS_Num(), 0);
    EXPECT_EQ(other.get_ods(0), 0);
    other.pick(2, 1);
    EXPECT_EQ(sent().size(), 1U) << "the lists write all the same";
}

// --- additions

TEST_F(Rs485Test, ModbusIsWarnedOf) {
    EXPECT_TRUE(warnings().empty());
    form.set_ods(2, 1);
    EXPECT_TRUE(warnings().empty());
    form.pick(2, 0);
    EXPECT_EQ(warnings(),
              (std::vector<std::string>{"MODBUS is chosen: once it is stored and the drive "
                                        "restarted, this workstation can no longer connect over "
                                        "the serial line."}));
    form.pick(2, 1);
    EXPECT_TRUE(warnings().empty());
}

TEST_F(Rs485Test, AnotherRateIsToldUntilTheLinkIsOpenedAnew) {
    form.set_ods(0, 270);
    EXPECT_TRUE(warnings().empty()) << "the drive's own";
    form.pick(0, 1);
    ASSERT_EQ(warnings().size(), 1U);
    EXPECT_NE(warnings()[0].find("19200 baud"), std::string::npos);
    form.pick(0, 2);
    EXPECT_TRUE(warnings().empty()) << "back at the rate of the link";
    form.pick(0, 1);
    form.set_ods(0, 540);
    EXPECT_EQ(warnings().size(), 1U) << "what the drive says behind a pick is the pick";
    engine.link_closed();
    EXPECT_EQ(warnings().size(), 1U) << "now it counts most";
    engine.link_opened();
    EXPECT_TRUE(warnings().empty());
}

TEST_F(Rs485Test, ItIsAlwaysToldThatAChoiceHasToBeStored) {
    ASSERT_EQ(form.notes().size(), 2U);
    EXPECT_EQ(form.notes()[0].text,
              "A choice is written at once, but counts only after it has been stored (Init Save "
              "Reboot, Store Control Parameters) and the drive restarted.");
    EXPECT_EQ(form.notes()[1].text, "Not all settings have been read from the drive yet.");
    form.set_ods(0, 270);
    form.set_ods(1, 8);
    form.set_ods(2, 1);
    EXPECT_EQ(form.notes().size(), 1U);
    language = Language::kChinese;
    EXPECT_EQ(form.notes()[0].text,
              "选择后立即写入驱动器，但须存储（“初始化/保存/重启”中的“存储控制参数”）并重启驱动器"
              "后才生效。");
}

// --- on the line

class Rs485Link : public ::testing::Test, protected servo::test::VirtualBench {
  protected:
    Rs485Link() {
        put(folder, kFile);
        drive.add(0x2FE20002, 540);
        drive.add(0x65100E02, 8);
        drive.add(0x65100C01, 1);
        form.load(folder.path());
        EXPECT_TRUE(engine.add_poll_window(form));
        form.set_visible(true);
    }
    int asked(link::Identity object) const {
        int count = 0;
        for (const auto& request : drive.requests)
            if (request.payload[0] == 0x40 && link::reply_key(request.payload) == object) ++count;
        return count;
    }

    servo::test::FakeDrive drive{time, line};
    dictionary::Store store = serial_store();
    Language language = Language::kEnglish;
    Rs485 form{engine, store, language};
};

TEST_F(Rs485Link, ThePollerFillsTheLists) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.selection(2) == 1; }, 10s));
    EXPECT_EQ(form.selection(0), 1);
    EXPECT_EQ(form.selection(1), 0);
    for (const auto& request : drive.requests)
        EXPECT_EQ(request.payload[0], 0x40);
}

TEST_F(Rs485Link, EveryPassAsksAgainAndNothingBesidesTheList) {
    open_link();
    run_for(5s);
    EXPECT_GT(asked(0x2FE200), 10);
    EXPECT_NEAR(asked(0x65100C), asked(0x2FE200), 1);
    EXPECT_EQ(asked(0), 0) << "the row behind the last has no object";
}

TEST_F(Rs485Link, AChoiceReachesTheDriveAndStays) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.selection(2) == 1; }, 10s));
    form.pick(0, 3);
    ASSERT_TRUE(run_until([this] { return drive.value(0x2FE200) == 90; }, 2s));
    run_for(2s);
    EXPECT_EQ(form.selection(0), 3);
}

TEST_F(Rs485Link, ARefusedChoiceIsShownUntilTheNextRead) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.selection(2) == 1; }, 10s));
    drive.refuse.insert(0x2FE200);
    form.pick(0, 3);
    EXPECT_EQ(form.selection(0), 3);
    run_for(50ms);
    drive.refuse.clear();
    ASSERT_TRUE(run_until([this] { return form.selection(0) == 1; }, 5s)) << "the drive's word";
    EXPECT_EQ(drive.value(0x2FE200), 540);
}

TEST_F(Rs485Link, AHiddenWindowAsksNothing) {
    form.set_visible(false);
    open_link();
    run_for(2s);
    EXPECT_EQ(asked(0x2FE200), 0);
}

}  // namespace
}  // namespace servo::tools
