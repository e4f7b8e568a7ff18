// The form: loading by hand, the file's date, texts and enabled states, engineering actions.
#include "support/fake_drive.h"
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;
using base::Language;

namespace {

struct DownloadForm : testing::Test, TransferBench {
    const std::string header = "This is ZARN firmware 12AB34CD.";
};

}  // namespace

TEST_F(DownloadForm, StartsWithOnlyLoadingPossible) {
    EXPECT_TRUE(data().Command1_enabled);
    EXPECT_FALSE(data().Command4_enabled);
    EXPECT_FALSE(data().Text3_enabled);
    EXPECT_FALSE(data().Text4_enabled);
    EXPECT_EQ(data().Label13, "NULL");
    EXPECT_EQ(data().Text5, "NULL");
    EXPECT_EQ(data().Label1, "NULL");
    EXPECT_EQ(data().ProgressBar1, 0.0);
}

TEST_F(DownloadForm, LoadShowsPathHeaderAndChecksumAndEnablesStart) {
    const auto file = put_image(payload(4120), "a.servo", "This is ZARN firmware 12AB");
    answers = {file.string()};
    download.Command1_Click();
    EXPECT_EQ(filters, std::vector<std::string>{"servo Files (*.servo)|*.servo"});
    EXPECT_EQ(data().Text5, file.string());
    EXPECT_EQ(data().FW_Type, "ZARN");
    EXPECT_EQ(data().CRC_From_File, "12AB");
    EXPECT_EQ(data().Label1, "This is ZARN firmware 12AB\r\nCRC:12AB");
    EXPECT_EQ(data().fw_blocks->size(), 2U);
    EXPECT_TRUE(data().Command4_enabled);
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(DownloadForm, CancelLeavesEverythingAsItWas) {
    load(4120);
    const auto before = data();
    download.Command1_Click();
    EXPECT_EQ(data().Text5, before.Text5);
    EXPECT_EQ(data().fw_blocks, before.fw_blocks);
    EXPECT_TRUE(data().Command4_enabled);
}

TEST_F(DownloadForm, BadHeaderIsRefusedInBothLanguagesAndStartStaysDisabled) {
    const auto file = put_image(payload(4120), "a.servo", "This is ZARN Firmware 12AB34CD.");
    EXPECT_FALSE(download.load_image(file));
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"Notice", "Wrong File Format!"}));
    EXPECT_FALSE(data().Command4_enabled);
    EXPECT_EQ(data().Text5, file.string()) << "the path is shown before the file is looked at";
    language = Language::kChinese;
    EXPECT_FALSE(download.load_image(file));
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"提示", "错误的文件格式!"}));
}

TEST_F(DownloadForm, BadFileAfterAGoodOneDisablesStartAndKeepsItsBlocks) {
    load(4120 * 2);
    EXPECT_FALSE(download.load_image(put_image("", "b.servo", "nothing")));
    EXPECT_FALSE(data().Command4_enabled);
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 2U);
}

TEST_F(DownloadForm, MissingSecondLineKeepsTheOldBlocksAndEnablesStart) {
    load(4120 * 2);
    folder.put("b.servo", "This is OTHR firmware 99");
    EXPECT_TRUE(download.load_image(folder / "b.servo"));
    EXPECT_TRUE(data().Command4_enabled);
    EXPECT_EQ(data().FW_Type, "OTHR");
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 2U);
}

TEST_F(DownloadForm, FileThatCannotBeOpenedIsTold) {
    EXPECT_FALSE(download.load_image(folder / "no.servo"));
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"Notice",
                                                          "The firmware file can't be opened!"}));
    EXPECT_FALSE(data().Command4_enabled);
}

TEST_F(DownloadForm, OwnBrandShowsItsOwnName) {
    brand = dictionary::Variant::kReduced;
    EXPECT_TRUE(
        download.load_image(put_image(payload(4120), "a.servo", "This is QORL firmware 12AB")));
    EXPECT_EQ(data().Label1, "This is ZARN Firmware 12AB\r\nCRC:12AB");
    EXPECT_EQ(data().FW_Type, "QORL") << "what is sent does not change";
}

// --- the date of the hand-chosen file

TEST_F(DownloadForm, UnchangedFileIsNotReadAgainAtStart) {
    load(4120);
    const auto blocks = data().fw_blocks;
    start();
    EXPECT_EQ(data().fw_blocks, blocks);
    EXPECT_EQ(state.download_active, 1);
}

TEST_F(DownloadForm, ChangedFileIsReadAgainWithoutADialog) {
    load(4120);
    put_image(payload(4120 * 3));
    dates[folder / "a.servo"] = *data().file_date + 1s;
    start();
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 3U);
    EXPECT_TRUE(filters.empty());
    EXPECT_FALSE(data().reload);
    EXPECT_EQ(state.download_active, 1);
    EXPECT_FALSE(data().Command4_enabled) << "start disables it again";
}

TEST_F(DownloadForm, AnyOtherDateCountsAsChangedAnOlderOneToo) {
    load(4120);
    put_image(payload(4120 * 3));
    dates[folder / "a.servo"] = *data().file_date - 24h;
    start();
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 3U);
}

TEST_F(DownloadForm, FileChangedIntoNoImageDoesNotStart) {
    load(4120);
    folder.put("a.servo", "nothing\n");
    dates[folder / "a.servo"] = *data().file_date + 1s;
    start();
    EXPECT_EQ(box().second, "Wrong File Format!");
    EXPECT_EQ(state.download_active, 0);
    EXPECT_FALSE(data().Command4_enabled);
}

TEST_F(DownloadForm, FileThatIsGoneDoesNotStart) {
    load(4120);
    std::filesystem::remove(folder / "a.servo");
    start();
    EXPECT_EQ(box().second, "The firmware file can't be opened!");
    EXPECT_EQ(state.download_active, 0);
}

// --- start

TEST_F(DownloadForm, StartSetsSelectorsCountersAndButtons) {
    load(4120);
    open_link();
    auto& shared = const_cast<firmware::DownloadData&>(data());
    shared.step3_cnt = shared.step5_cnt = shared.step6_cnt = 7;
    shared.step7_cnt = shared.step8_cnt = shared.step9_cnt = shared.step10_cnt = 7;
    shared.step3_string = shared.step5_string = shared.step6_string = "x";
    shared.step7_string = shared.step8_string = shared.step9_string = shared.step10_string = "x";
    shared.fw_block_index = 5;
    state.download_step = 9;
    state.g_FW_CRC_OK_overtimes = 1;
    values.firmware_check_known = true;
    download.Command4_Click();
    EXPECT_EQ(state.download_active, 1);
    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(data().fw_block_index, 0);
    for (const auto cnt : {data().step3_cnt, data().step5_cnt, data().step6_cnt, data().step7_cnt,
                           data().step8_cnt, data().step9_cnt})
        EXPECT_EQ(cnt, 0);
    for (const auto& text : {data().step3_string, data().step5_string, data().step6_string,
                             data().step7_string, data().step8_string, data().step9_string})
        EXPECT_EQ(text, "");
    EXPECT_EQ(data().step10_cnt, 7) << "the read-back is no part of a start";
    EXPECT_EQ(data().step10_string, "x");
    EXPECT_FALSE(data().Command1_enabled);
    EXPECT_FALSE(data().Command4_enabled);
    EXPECT_FALSE(values.firmware_check_known);
    EXPECT_EQ(state.g_FW_CRC_OK_overtimes, 0);
}

TEST_F(DownloadForm, SecondPressOfStartDuringATransferDoesNothing) {
    load(4120);
    start();
    run_for(500ms);
    const auto step = state.download_step;
    const auto ticks = data().step3_cnt;
    ASSERT_EQ(step, 3);
    download.Command4_Click();
    EXPECT_EQ(state.download_step, step);
    EXPECT_EQ(data().step3_cnt, ticks);
}

TEST_F(DownloadForm, PressDuringATransferReadsAChangedFileButSendsTheOneThatWasStarted) {
    load(4120 * 2);
    drive.in_bootloader = true;
    start();
    ASSERT_TRUE(run_until([this] { return drive.blocks == 1; }));
    put_image(payload(4120 * 3));
    dates[folder / "a.servo"] = *data().file_date + 1s;
    download.Command4_Click();
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 3U);
    EXPECT_EQ(data().fw_block_index, 1) << "nothing begins anew";
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120 * 2));
}

TEST_F(DownloadForm, LoadingDuringATransferIsRefused) {
    load(4120);
    start();
    EXPECT_FALSE(download.load_image(put_image(payload(8240), "b.servo")));
    EXPECT_FALSE(data().Command4_enabled);
    EXPECT_EQ(data().Text5, (folder / "a.servo").string());
}

// --- what is shown of the drive

TEST_F(DownloadForm, VersionOfTheGridRowGoesToItsLabel) {
    version = "V3.14";
    EXPECT_EQ(data().Label18, "");
    download.Timer1_Timer();
    EXPECT_EQ(data().Label18, "V3.14");
    version.clear();
    download.Timer1_Timer();
    EXPECT_EQ(data().Label18, "");
}

namespace {
// With the objects of the status lanes on its line, in place of the bootloader.
struct CheckValue : DownloadForm {
    FakeDrive objects{time, line};
};
}  // namespace

TEST_F(CheckValue, IsShownInUpperCaseHexadecimalWithoutLeadingZeros) {
    objects.add(0x1F560104, 0xABC);
    open_link();
    run_for(1s);
    EXPECT_EQ(data().Label17, "ABC");
    objects.add(0x1F560104, 0xDEADBEEF);
    run_for(1s);
    EXPECT_EQ(data().Label17, "DEADBEEF");
}

TEST_F(CheckValue, IsEmptiedWhenTheRotationHasFailedTwice) {
    objects.add(0x1F560104, 0xABC);
    open_link();
    run_for(1s);
    ASSERT_EQ(data().Label17, "ABC");
    objects.refuse.insert(0x1F5601);
    values.firmware_check_known = false;
    run_for(1s);
    EXPECT_EQ(data().Label17, "");
}

// --- engineering actions

TEST_F(DownloadForm, ReadCrcSendsGoStraightToTheLink) {
    open_link();
    port.written.clear();
    download.Command2_Click();
    EXPECT_EQ(sent(), "go\r\n");
}

TEST_F(DownloadForm, TestActionDropsInputWaitsForOutputAndSendsAbc) {
    open_link();
    drive.say("left over");
    run_for(10ms);
    timer.set_enabled(true);
    engine.Datawrite_str(std::string(100, 'x'));
    port.written.clear();
    const auto before = clock.now();
    download.Command3_Click();
    EXPECT_EQ(sent(), "abc\r\n");
    EXPECT_GE(clock.now() - before, 26ms) << "a hundred bytes had to leave first";
    EXPECT_TRUE(timer.enabled());
}

TEST_F(DownloadForm, TestActionDoesNotStartATickThatWasNotRunning) {
    download.Command3_Click();
    EXPECT_FALSE(timer.enabled());
}

TEST_F(DownloadForm, EngineeringActionsKeepOffTheLineOfATransfer) {
    load(4120);
    start();
    run_for(50ms);
    port.written.clear();
    download.Command2_Click();
    download.Command3_Click();
    EXPECT_EQ(sent(), "");
}

TEST_F(DownloadForm, BatchMarkHasNoEffect) {
    download.Check1_Click();
    EXPECT_TRUE(data().Check1);
    load(4120);
    drive.in_bootloader = true;
    start();
    EXPECT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    download.Check1_Click();
    EXPECT_FALSE(data().Check1);
}

TEST_F(DownloadForm, EveryControlWithAFixedTextHasIt) {
    std::map<std::string_view, std::string_view> texts;
    for (const auto& [control, text] : firmware::control_texts())
        texts[control] = text;
    EXPECT_EQ(firmware::kDownloadCaption, "固件下载/Load Firmware");
    const std::map<std::string_view, std::string_view> told{
        {"Command1", "加载文件/Load File"},
        {"Command2", "读取CRC/Read CRC"},
        {"Command4", "下载/Download"},
        {"Command5", "选择Ini"},
        {"Check1", "批量下载/Download a lot"},
        {"Label4", "软件版本:/Software Version"},
        {"Label5", "产品名称/ProductName"},
        {"Label6", "固件名称/FW Name"},
        {"Label7", "产品条码/ProductSN"},
        {"Label9", "条码比较值/SN Comp."},
        {"Label11", "条码长度/SN Length"},
        {"Label14", "比较位置/ComparePos"},
        {"Label16", "当前固件校验码/Current FW CRC:"},
        {"Label13", "NULL"},
        {"Text5", "NULL"},
        {"Label1", "NULL"},
        {"Label19",
         "注意：如果在下载过程中通讯中断，请先对驱动器重新上电，然后先点击[下载]按钮，再打开通讯，"
         "否则无法正常下载。/Note:if the communication break while downloading,please first "
         "power-on again,then press [Download] button,and finally connect.Otherwise will fail."}};
    for (const auto& [control, text] : told)
        EXPECT_EQ(texts[control], text) << control;
    EXPECT_EQ(std::count(texts["Label19"].begin(), texts["Label19"].end(), '/'), 1)
        << "a second slash would cut the advice";
}
