// The homing form on the line: the poller reads its rows, and its writes reach the drive.
#include <gtest/gtest.h>

#include <set>

#include "homing_form.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::tools {
namespace {

using namespace std::chrono_literals;
using servo::test::FakeDrive;
using servo::test::VirtualBench;

class HomingLink : public ::testing::Test, protected VirtualBench {
  protected:
    HomingLink() {
        std::filesystem::create_directories(folder / "sys");
        folder.put("sys/HomingMode.ini", test::kRowsFile);
        drive.add(0x64100304, 10000);
        drive.add(0x65100302, 150);
        drive.add(0x607C0004, -1000);
        drive.add(0x60980001, 0xEE);
        drive.add(0x60990104, 546133);
        drive.add(0x60990204, 136533);
        drive.add(0x21500101, 1);
        drive.add(0x609A0004, 16384);
        drive.add(0x21500204, 546);
        drive.add(0x21500401, 1);
        drive.add(0x21500301, 2);
        form.load(folder.path());
        EXPECT_TRUE(engine.add_poll_window(form));
        form.set_visible(true);
    }
    const std::string& text(HomingEntry entry) const {
        return form.data().entries[static_cast<std::size_t>(entry)];
    }
    // The last write of an object, its payload's value bytes as a number of 32 bits.
    std::int32_t last_write(link::Identity object) const {
        for (auto request = drive.requests.rbegin(); request != drive.requests.rend(); ++request) {
            const auto& p = request->payload;
            if (p[0] == 0x40 || link::reply_key(p) != object) continue;
            return static_cast<std::int32_t>(link::reply_value(p, 14));
        }
        ADD_FAILURE() << "never written";
        return 0;
    }

    FakeDrive drive{time, line};
    dictionary::Store store = test::homing_store();
    base::Language language = base::Language::kEnglish;
    Homing2 form{
        {store, values.operands, language, notice,
         [this](dictionary::WireKey key, std::int32_t value) { engine.sendata2(key, value, 0); }}};
};

TEST_F(HomingLink, ThePollerFillsTheForm) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.data().lists[1] == 2; }, 10s));
    ASSERT_TRUE(run_until([this] { return text(HomingEntry::Text6) == "4.00"; }, 10s));
    EXPECT_EQ(form.data().Label3, "-18");
    EXPECT_EQ(text(HomingEntry::Text2), "200.00");
    EXPECT_EQ(text(HomingEntry::Text3), "-1000");
    EXPECT_EQ(text(HomingEntry::Text4), "50.00");
    EXPECT_EQ(text(HomingEntry::Text5), "100.00");
    EXPECT_TRUE(form.data().Check4);
    EXPECT_EQ(form.data().lists[0], 1);
    for (const auto& request : drive.requests)
        EXPECT_EQ(request.payload[0], 0x40) << "what the poll brings is never written back";
}

TEST_F(HomingLink, WhatIsWrittenComesBackWithTheNextPass) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.data().Label3 == "-18"; }, 10s));
    form.Option1_Click(kTriggerIndex);
    form.Command1_Click();
    form.list_Click(HomingList::Combo2, 1);
    form.type(HomingEntry::Text5, "200");
    form.KeyPress(HomingEntry::Text5, 13);
    ASSERT_TRUE(run_until([this] { return form.data().Label3 == "34"; }, 10s));
    ASSERT_TRUE(run_until([this] { return text(HomingEntry::Text5) == "200.00"; }, 10s));
    EXPECT_EQ(drive.value(0x215003), 1);
    EXPECT_EQ(last_write(0x609800), 34);
    EXPECT_EQ(last_write(0x609A00), 32768);
    EXPECT_EQ(form.comparison().agreement, HomingAgreement::kSame);
    EXPECT_EQ(form.data().lists[1], 1);
}

TEST_F(HomingLink, ANegativeMethodGoesOutAsOneByte) {
    open_link();
    run_for(1s);
    drive.requests.clear();
    form.Option1_Click(kTriggerSpecial);
    form.click(HomingChoice::Option18);
    form.click(HomingChoice::Option21);
    form.Command1_Click();
    ASSERT_TRUE(run_until([this] { return drive.value(0x609800) == 0xEF; }, 5s));
    for (const auto& request : drive.requests)
        if (request.payload[0] != 0x40) {
            EXPECT_EQ(request.payload,
                      (link::Payload{0x2F, 0x98, 0x60, 0x00, 0xEF, 0xFF, 0xFF, 0xFF}));
        }
    ASSERT_TRUE(run_until([this] { return form.data().Label3 == "-17"; }, 5s));
}

TEST_F(HomingLink, AListFollowsADriveThatTakesItsValueBack) {
    open_link();
    ASSERT_TRUE(run_until([this] { return form.data().lists[1] == 2; }, 10s));
    form.list_Click(HomingList::Combo2, 0);
    EXPECT_EQ(form.data().lists[1], 0);
    ASSERT_TRUE(run_until([this] { return drive.value(0x215003) == 0; }, 5s));
    drive.add(0x21500301, 2);
    ASSERT_TRUE(run_until([this] { return form.data().lists[1] == 2; }, 10s));
}

TEST_F(HomingLink, AHiddenFormAsksNothing) {
    form.set_visible(false);
    open_link();
    run_for(2s);
    for (const auto& request : drive.requests)
        EXPECT_NE(link::reply_key(request.payload), 0x609800);
}

}  // namespace
}  // namespace servo::tools
