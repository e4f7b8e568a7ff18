#include <gtest/gtest.h>

#include "base/profile_file.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

struct Dialog : testing::Test, VirtualBench {
    std::string saved() {
        return base::get_profile_string(folder / "sys" / "sys.ini", "com", "comid", "", 50);
    }
    void save(std::string_view text) { folder.put("sys/sys.ini", text); }
    const CommunicationState& shown() { return communication.state(); }
    std::vector<std::string> listed() {
        std::vector<std::string> texts;
        for (const auto& entry : shown().Combo1)
            texts.push_back(entry.text);
        return texts;
    }
};

struct FakeCan final : CanAdapter {
    void ResetClient() override { calls.emplace_back("ResetClient"); }
    void ResetFilter() override { calls.emplace_back("ResetFilter"); }
    CanInit Init(int bit_rate, std::uint8_t type) override {
        calls.push_back("Init " + std::to_string(bit_rate) + " " + std::to_string(type));
        return result;
    }
    void Close() override { calls.emplace_back("Close"); }
    void CAN_Write(const CanMessage&) override {}
    std::uint8_t CAN_Read(CanMessage&) override { return 0x20; }

    CanInit result = CanInit::kOk;
    std::vector<std::string> calls;
};

}  // namespace

// --- load and list
// -----------------------------------------------------------------------------------

TEST_F(Dialog, LoadSelectsTheDefaultsAndRemovesTheCanTab) {
    EXPECT_EQ(listed(), (std::vector<std::string>{"COM1", "COM2"}));
    EXPECT_EQ(shown().Combo1[1].device, "/dev/ttyS1");
    EXPECT_EQ(kBaudRates[static_cast<std::size_t>(shown().Combo2_index)], "38400");
    EXPECT_EQ(shown().Combo2_index, 4);
    EXPECT_EQ(shown().Combo3_index, 0);
    EXPECT_EQ(shown().Text1, "127");
    EXPECT_EQ(shown().Text2, "1");
    EXPECT_EQ(shown().Command1, "OPEN");
    EXPECT_EQ(shown().Command3, "Active");
    EXPECT_EQ(shown().Label7, "CAN口未激活");
    EXPECT_EQ(shown().Label8, "只支持Peak-CAN");
    EXPECT_FALSE(shown().can_tab_visible);
    EXPECT_FALSE(shown().dialog_visible);
    EXPECT_EQ(engine.state.channel, 0);
}

TEST_F(Dialog, SavedPortInTheListIsSelectedAndKnown) {
    save("[com]\r\ncomid=COM2\r\n");
    communication.Command2_Click();
    EXPECT_EQ(shown().Combo1_index, 1);
    EXPECT_EQ(shown().port_known, -1);
}

TEST_F(Dialog, SavedComidThatIsNotInTheListLeavesPortKnownFalseAndTheButtonOpensTheDialog) {
    save("[com]\r\ncomid=COM7\r\n");
    communication.Command2_Click();
    EXPECT_EQ(shown().port_known, 0);
    communication.communication();
    EXPECT_TRUE(shown().dialog_visible);
    EXPECT_EQ(shown().Command1, "OPEN");
    EXPECT_TRUE(port.opened.empty());
}

TEST_F(Dialog, NoSavedPortIsNotKnown) {
    EXPECT_EQ(shown().port_known, 0);
    EXPECT_EQ(shown().Combo1_index, -1);
}

TEST_F(Dialog, ListThatCanNotBeReadIsProbedAndABusyPortStillShows) {
    directory.readable = false;
    port.ports = {{1, OpenResult::kOpened},
                  {3, OpenResult::kBusy},
                  {35, OpenResult::kOpened},
                  {36, OpenResult::kOpened}};
    communication.Command2_Click();
    EXPECT_EQ(listed(), (std::vector<std::string>{"Com1", "Com3", "Com35"}));
    EXPECT_EQ(port.opened.size(), 35U);
    EXPECT_EQ(port.opened.front(), "Com1");
    EXPECT_EQ(port.opened.back(), "Com35");
    EXPECT_FALSE(port.is_open()) << "closed again";
}

TEST_F(Dialog, ListThatIsReadIsNotProbedEvenWhenItIsEmpty) {
    directory.entries.clear();
    communication.Command2_Click();
    EXPECT_TRUE(listed().empty());
    EXPECT_TRUE(port.opened.empty());
}

TEST_F(Dialog, PortGivenByHandCountsAsKnown) {
    EXPECT_TRUE(communication.use_port("COM1"));
    EXPECT_EQ(shown().port_known, -1);
    EXPECT_EQ(shown().Combo1_index, 0);
    communication.communication();
    EXPECT_TRUE(communication.link_open());
    communication.communication();
    EXPECT_FALSE(communication.link_open());
    EXPECT_FALSE(communication.use_port("COM9"));
}

TEST_F(Dialog, PortGivenByHandGoesBeforeTheSavedOneAfterARefreshToo) {
    save("[com]\r\ncomid=COM2\r\n");
    communication.use_port("COM1");
    communication.Command2_Click();
    EXPECT_EQ(shown().Combo1_index, 0);
    EXPECT_EQ(shown().port_known, -1);
}

// --- opening
// -------------------------------------------------------------------------------------------

TEST_F(Dialog, OpeningWithoutAPortAsksToCheckTheSettings) {
    communication.Command1_Click();
    communication.apply_language(base::Language::kChinese);
    communication.Command1_Click();
    using Boxes = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(notice.boxes, (Boxes{{" Notice", "Please check the Settings of the COM Port!"},
                                   {" 提示", "请检查串口设置!"}}));
    EXPECT_FALSE(communication.link_open());
    EXPECT_TRUE(port.opened.empty());
}

TEST_F(Dialog, OpeningWithoutABaudRateAsksToCheckTheSettings) {
    communication.pick_port(0);
    communication.pick_baud(-1);
    communication.Command1_Click();
    EXPECT_EQ(notice.boxes.size(), 1U);
    EXPECT_FALSE(communication.link_open());
}

TEST_F(Dialog, OpenDoesAllItsSteps) {
    engine.state.miss_count = 17;
    engine.state.sub_Pointer = 5;
    engine.values().operands.o64100320.seen = true;
    communication.type_id("9");
    communication.pick_baud(7);
    open_link();
    EXPECT_EQ(port.opened, std::vector<std::string>{"COM1"});
    EXPECT_EQ(port.baud, 115200);
    EXPECT_EQ(engine.pictures.button4(), kCommOKpic);
    EXPECT_EQ(engine.pictures.button5(), kErrorgray) << "until the first answer";
    EXPECT_EQ(shown().Command1, "CLOSE");
    EXPECT_FALSE(shown().Combo1_enabled);
    EXPECT_FALSE(shown().Combo2_enabled);
    EXPECT_FALSE(shown().Text1_enabled);
    EXPECT_FALSE(shown().Command2_enabled);
    EXPECT_EQ(engine.state.miss_count, 0);
    EXPECT_EQ(engine.state.sub_Pointer, 0);
    EXPECT_FALSE(engine.values().operands.o64100320.seen);
    EXPECT_EQ(saved(), "COM1");
    EXPECT_TRUE(timer.enabled());
    EXPECT_EQ(timer.interval(), 3);
    EXPECT_EQ(engine.serial.COMM_ID, 9);
}

TEST_F(Dialog, ChineseCaptions) {
    communication.apply_language(base::Language::kChinese);
    EXPECT_EQ(shown().Command1, "打开");
    EXPECT_EQ(shown().Command2, "刷新");
    EXPECT_EQ(shown().port_label, "串口");
    EXPECT_EQ(shown().tab0, "串口");
    EXPECT_EQ(shown().baud_label, "波特率");
    EXPECT_EQ(shown().id_label, "通信ID");
    EXPECT_EQ(shown().can_target_label, "目标ID");
    open_link();
    EXPECT_EQ(shown().Command1, "关闭");
    communication.Command1_Click();
    EXPECT_EQ(shown().Command1, "打开");
}

TEST_F(Dialog, LanguageSwitchKeepsTheStateOfTheLink) {
    open_link();
    communication.apply_language(base::Language::kChinese);
    EXPECT_EQ(shown().Command1, "关闭");
    EXPECT_TRUE(communication.link_open());
    communication.apply_language(base::Language::kEnglish);
    EXPECT_EQ(shown().Command1, "CLOSE");
    EXPECT_EQ(shown().port_label, "COM");
    communication.Command1_Click();
    EXPECT_FALSE(communication.link_open());
}

TEST_F(Dialog, PortThatCanNotBeOpenedLeavesEverythingAsItWas) {
    communication.pick_port(1);  // COM2 is listed, but does not open
    communication.type_id("9");
    communication.Command1_Click();
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(shown().Command1, "OPEN");
    EXPECT_TRUE(shown().Combo1_enabled);
    EXPECT_EQ(engine.pictures.button4(), kCommpic);
    EXPECT_EQ(saved(), "");
    EXPECT_FALSE(timer.enabled());
    EXPECT_EQ(engine.serial.COMM_ID, 9) << "taken at the end of every click";
}

TEST_F(Dialog, CommunicationIdThatIsNoByteIsNotTaken) {
    communication.type_id("300");
    communication.Command1_Click();
    EXPECT_EQ(engine.serial.COMM_ID, 127);
    communication.type_id("abc");
    communication.Command1_Click();
    EXPECT_EQ(engine.serial.COMM_ID, 0) << "the leading number of such a text is 0";
}

TEST_F(Dialog, KnownPortIsOpenedByTheToolbarAndTheDialogShows) {
    save("[com]\r\ncomid=COM1\r\n");
    communication.Command2_Click();
    communication.communication();
    EXPECT_TRUE(communication.link_open());
    EXPECT_TRUE(shown().dialog_visible);
}

TEST_F(Dialog, CloseBoxOnlyHides) {
    open_link();
    communication.show_dialog();
    communication.close_box();
    EXPECT_FALSE(shown().dialog_visible);
    EXPECT_TRUE(communication.link_open());
}

TEST_F(Dialog, OtherContentOfTheSettingsFileIsKept) {
    save("[sys]\r\nlang=1\r\n[com]\r\ncomid=COM9\r\n");
    open_link();
    EXPECT_EQ(folder.get("sys/sys.ini"), "[sys]\r\nlang=1\r\n[com]\r\ncomid=COM1\r\n");
}

TEST_F(Dialog, ViewIsToldOfEveryChange) {
    int changes = 0;
    communication.observer = [&] { ++changes; };
    communication.show_dialog();
    communication.pick_port(0);
    communication.type_id("1");
    EXPECT_EQ(changes, 3);
    communication.Command1_Click();
    EXPECT_GT(changes, 3);
}

// --- closing
// -------------------------------------------------------------------------------------------

TEST_F(Dialog, CloseDoesAllItsSteps) {
    FakePage page("AN_SPEED");
    Window scope_window("Scope");
    FakeScope scope;
    FakeJob job("job");
    std::vector<std::string> log;
    FakeJob firmware("firmware", &log);
    engine.add_poll_window(page);
    engine.add_window(scope_window);
    engine.set_scope(&scope);
    engine.add_job(JobPlace::kFirmware, firmware);
    open_link();
    page.must_fresh = false;
    scope_window.must_fresh = false;
    scope.sampling = true;
    engine.state.scanRequested = kTrue;
    engine.pictures.set_button5(kErrorred);
    communication.Command1_Click();
    EXPECT_EQ(scope.closed, 1);
    EXPECT_EQ(log.back(), "firmware closed");
    EXPECT_EQ(engine.state.scanRequested, 0);
    EXPECT_FALSE(port.is_open());
    EXPECT_EQ(shown().Command1, "OPEN");
    EXPECT_TRUE(page.must_fresh);
    EXPECT_TRUE(scope_window.must_fresh) << "every window of the list";
    EXPECT_TRUE(shown().Combo1_enabled);
    EXPECT_TRUE(shown().Combo2_enabled);
    EXPECT_TRUE(shown().Text1_enabled);
    EXPECT_TRUE(shown().Command2_enabled);
    EXPECT_EQ(engine.pictures.button4(), kCommpic);
    EXPECT_EQ(engine.pictures.button5(), kErrorgray) << "whatever the last word was";
    EXPECT_FALSE(timer.enabled());
    EXPECT_FALSE(shown().dialog_visible);
}

TEST_F(Dialog, ClosingReadsEverythingAgainOnTheNextConnection) {
    FakeDrive drive(time, line);
    drive.add(0x60000102, 5);
    FakePage page("AN_SPEED");
    page.add("600001", "uint16", false);
    page.set_visible(true);
    engine.add_poll_window(page);
    open_link();
    run_for(3s);
    const auto asked = [&] {
        return std::count_if(drive.requests.begin(), drive.requests.end(), [](const auto& request) {
            return reply_key(request.payload) == 0x600001;
        });
    };
    EXPECT_EQ(asked(), 1);
    communication.Command1_Click();
    open_link();
    run_for(3s);
    EXPECT_EQ(asked(), 2);
}

TEST_F(Dialog, CloseThroughTheCaptionEvenWhenTheDialogIsHidden) {
    save("[com]\r\ncomid=COM1\r\n");
    communication.Command2_Click();
    communication.communication();
    communication.close_box();
    communication.communication();
    EXPECT_FALSE(communication.link_open());
}

// --- CAN, behind the hidden tab
// --------------------------------------------------------------------------

TEST_F(Dialog, CanActivationSucceeds) {
    FakeCan adapter;
    engine.can.set_adapter(&adapter);
    communication.Option_channel(1);
    communication.type_can_target("5");
    communication.pick_can_baud(2);
    communication.show_dialog();
    timer.set_interval(15);
    communication.communication();  // presses Command3 on this channel
    EXPECT_EQ(adapter.calls,
              (std::vector<std::string>{"ResetClient", "ResetFilter", "Init 256000 0"}));
    EXPECT_EQ(shown().Label7, "CAN连接正常");
    EXPECT_EQ(shown().Command3, "CLOSE");
    EXPECT_EQ(engine.can.can_message.identifier, 0x605U);
    EXPECT_EQ(engine.can.can_message.length, 8);
    EXPECT_EQ(engine.can.can_message.type, 0);
    EXPECT_EQ(engine.pictures.button4(), kCommOKpic);
    EXPECT_EQ(timer.interval(), 3);
    EXPECT_TRUE(timer.enabled());
    EXPECT_TRUE(communication.link_open());
    communication.communication();
    EXPECT_EQ(shown().Label7, "CAN Port is closed");
    EXPECT_EQ(shown().Command3, "Active");
    EXPECT_EQ(adapter.calls.back(), "Close");
    EXPECT_FALSE(communication.link_open());
}

TEST_F(Dialog, CanActivationFailures) {
    FakeCan adapter;
    engine.can.set_adapter(&adapter);
    for (const auto& [result, text] : {std::pair{CanInit::ERR_NOVXD, "设备驱动未加载"},
                                       {CanInit::ERR_ILLHW, "硬件操作无效"},
                                       {CanInit::ERR_REGTEST, "CAN控制卡没找到"},
                                       {CanInit::ERR_RESOURCE, "连接忙"}}) {
        adapter.result = result;
        communication.Command3_Click();
        EXPECT_EQ(shown().Label7, text);
        EXPECT_EQ(shown().Command3, "Active");
        EXPECT_FALSE(timer.enabled());
    }
}

TEST_F(Dialog, CanWithoutAnAdapterHasNoDriver) {
    communication.Command3_Click();
    EXPECT_EQ(shown().Label7, "设备驱动未加载");
}
