// The window by hand: captions, loading, the transfer, what a failure leaves, the line dialogue.
#include <gtest/gtest.h>

#include <QLabel>
#include <QTableView>

#include "base/file.h"
#include "download_window_bench.h"

namespace servo::firmware::test {
namespace {

using base::Language;

struct DownloadWindowTest : testing::Test, WindowBench {};

TEST_F(DownloadWindowTest, EveryControlIsThereByItsName) {
    for (const char* name :
         {"Command1", "Command2", "Command3", "Command4", "Command5", "Check1",      "Text3",
          "Text4",    "Text5",    "Label1",   "Label4",   "Label5",   "Label6",      "Label7",
          "Label8",   "Label9",   "Label10",  "Label11",  "Label12",  "Label13",     "Label14",
          "Label15",  "Label16",  "Label17",  "Label18",  "Label19",  "ProgressBar1"})
        EXPECT_TRUE(shown(name)) << name;
    EXPECT_FALSE(shown("MSHFlexGrid1")) << "a working grid";
    EXPECT_NE(qobject_cast<QTableView*>(&control<>("MSHFlexGrid1")), nullptr);
}

TEST_F(DownloadWindowTest, CaptionsFollowTheLanguage) {
    struct Told {
        const char* control;
        const char* chinese;
        const char* english;
    };
    constexpr Told kTold[] = {
        {"Command1", "加载文件", "Load File"},
        {"Command4", "下载", "Download"},
        {"Command2", "读取CRC", "Read CRC"},
        {"Command5", "选择Ini", "选择Ini"},
        {"Label5", "产品名称", "ProductName"},
        {"Label7", "产品条码", "ProductSN"},
        {"Label6", "固件名称", "FW Name"},
        {"Label9", "条码比较值", "SN Comp."},
        {"Label11", "条码长度", "SN Length"},
        {"Label14", "比较位置", "ComparePos"},
        {"Label4", "软件版本:", "Software Version"},
        {"Label16", "当前固件校验码", "Current FW CRC:"},
        {"Label13", "NULL", "NULL"},
        {"Text5", "NULL", "NULL"},
        {"Label1", "NULL", "NULL"},
    };
    for (int round = 0; round < 2; ++round) {
        walk(Language::kChinese);
        EXPECT_EQ(window.windowTitle().toStdString(), "固件下载");
        for (const Told& entry : kTold)
            EXPECT_EQ(text(entry.control), entry.chinese) << entry.control;
        EXPECT_TRUE(text("Label19").starts_with("注意："));
        EXPECT_TRUE(text("Label19").ends_with("否则无法正常下载。"));
        walk(Language::kEnglish);
        EXPECT_EQ(window.windowTitle().toStdString(), "Load Firmware");
        for (const Told& entry : kTold)
            EXPECT_EQ(text(entry.control), entry.english) << entry.control;
        EXPECT_TRUE(text("Label19").starts_with("Note:if"));
        EXPECT_TRUE(text("Label19").ends_with("Otherwise will fail."));
    }
    auto& box = control<QAbstractButton>("Check1");
    EXPECT_EQ(box.text().toStdString(), "Download a lot");
}

TEST_F(DownloadWindowTest, OnlyLoadingIsPossibleAtFirst) {
    EXPECT_TRUE(enabled("Command1"));
    EXPECT_FALSE(enabled("Command4"));
    EXPECT_FALSE(enabled("Text3"));
    EXPECT_FALSE(enabled("Text4"));
    EXPECT_EQ(text("LabelC"), "No image is loaded");
    EXPECT_FALSE(shown("LabelH"));
}

TEST_F(DownloadWindowTest, LoadShowsTheImageAndItsSize) {
    load_by_hand(4120 * 2);
    EXPECT_EQ(text("Text5"), (folder / "a.servo").string());
    EXPECT_EQ(text("Label1"), "This is ZARN firmware 12AB34CD.\r\nCRC:12AB34CD.");
    EXPECT_EQ(text("LabelF"), "2 blocks, 8242 bytes");
    EXPECT_FALSE(shown("LabelG"));
    EXPECT_TRUE(enabled("Command4"));
    EXPECT_EQ(text("LabelC"), "Ready");
}

TEST_F(DownloadWindowTest, APathIsNoPairOfLanguages) {
    load_by_hand(4120);
    const std::string path = text("Text5");
    walk(Language::kChinese);
    EXPECT_EQ(text("Text5"), path);
    EXPECT_EQ(text("Label1"), "This is ZARN firmware 12AB34CD.\r\nCRC:12AB34CD.");
}

TEST_F(DownloadWindowTest, CharactersThatAreNotSentAreToldBefore) {
    load_by_hand(4120 + 2059);
    EXPECT_TRUE(shown("LabelG"));
    EXPECT_EQ(text("LabelG"),
              "The last 2059 characters are less than half a block and are not sent.");
    load_by_hand(4120 + 2061);
    EXPECT_FALSE(shown("LabelG"));
    load_by_hand(2060);
    EXPECT_EQ(text("LabelG"),
              "This image has no block to send: a download would erase the drive and end in a "
              "time-out.");
}

TEST_F(DownloadWindowTest, ATransferShowsStepBarSpeedAndTimeLeft) {
    load_by_hand(4120 * 4);
    start();
    EXPECT_FALSE(enabled("Command1"));
    ASSERT_TRUE(run_to_step(6));
    EXPECT_EQ(text("LabelC"), "Erase");
    EXPECT_FALSE(enabled("Command2")) << "the line is the transfer's";
    EXPECT_FALSE(enabled("Command3"));
    ASSERT_TRUE(run_until([this] { return data().fw_block_index == 2; }, 60s));
    EXPECT_EQ(text("ProgressBar1"), "50");
    EXPECT_EQ(text("LabelC"), "Block 3 of 4");
    EXPECT_TRUE(text("LabelD").ends_with(" bytes/s")) << text("LabelD");
    EXPECT_TRUE(text("LabelE").ends_with(" left")) << text("LabelE");
    walk(Language::kChinese);
    EXPECT_EQ(text("LabelC"), "块 3 / 4");
    EXPECT_TRUE(text("LabelD").ends_with(" 字节/秒"));
    EXPECT_TRUE(text("LabelE").starts_with("剩余 "));
    walk(Language::kEnglish);
    ASSERT_TRUE(finish());
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"Notice", "Download Finished!"}));
    EXPECT_EQ(text("ProgressBar1"), "0");
    EXPECT_EQ(text("LabelC"), "Finished; waiting for the drive");
    EXPECT_EQ(text("LabelD"), "");
    EXPECT_TRUE(enabled("Command1"));
    EXPECT_TRUE(enabled("Command4"));
    EXPECT_TRUE(drive.started);
}

TEST_F(DownloadWindowTest, TheButtonStartsAndASecondPressDoesNothing) {
    load_by_hand(4120);
    drive.in_bootloader = true;
    open_link();
    click("Command4");
    EXPECT_EQ(state.download_active, 1);
    EXPECT_FALSE(enabled("Command4"));
    ASSERT_TRUE(run_to_step(6));
    click("Command4");
    EXPECT_EQ(state.download_step, 6);
    download.Command4_Click();
    EXPECT_EQ(state.download_step, 6);
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
}

TEST_F(DownloadWindowTest, AFailureLeavesTheButtonsAndTellsTheDrivesState) {
    load_by_hand(4120 * 2);
    start();
    ASSERT_TRUE(run_to_step(8));
    drive.silent = true;
    ASSERT_TRUE(finish());
    EXPECT_EQ(box(),
              (std::pair<std::string, std::string>{"Download Notice", "Programing overtime!"}));
    EXPECT_FALSE(enabled("Command1"));
    EXPECT_FALSE(enabled("Command4"));
    EXPECT_EQ(text("LabelC"), "Failed: Programme");
    EXPECT_TRUE(shown("LabelH"));
    EXPECT_NE(text("LabelH").find("no complete firmware"), std::string::npos) << text("LabelH");
    walk(Language::kChinese);
    EXPECT_NE(text("LabelH").find("没有完整的固件"), std::string::npos) << text("LabelH");
}

TEST_F(DownloadWindowTest, LoadAgainLeadsOnAndPressDownloadThenConnectPicksTheDriveUp) {
    load_by_hand(4120 * 2);
    start();
    ASSERT_TRUE(run_to_step(8));
    drive.silent = true;
    ASSERT_TRUE(finish());
    ASSERT_TRUE(shown("CommandA"));
    // As the form's note says: power on again, press Download, and connect last.
    close_link();
    drive.silent = false;
    drive.power_up();
    click("CommandA");
    EXPECT_TRUE(enabled("Command4"));
    EXPECT_FALSE(enabled("Command1")) << "a failed transfer leaves it as it stands";
    EXPECT_FALSE(shown("CommandA"));
    click("Command4");
    run_for(1s);
    EXPECT_EQ(text("LabelC"), "Waiting: open the link now");
    EXPECT_FALSE(shown("LabelH"));
    open_link();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_TRUE(drive.started);
    EXPECT_EQ(drive.blocks, 2);
    EXPECT_TRUE(enabled("Command1"));
}

TEST_F(DownloadWindowTest, ALinkThatIsClosedUnderATransferIsToldInTheWindowAlone) {
    load_by_hand(4120 * 2);
    start();
    ASSERT_TRUE(run_to_step(8));
    const std::size_t boxes = notice.boxes.size();
    close_link();
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(text("LabelC"), "Cut off when the link was closed: Programme");
    EXPECT_TRUE(shown("LabelH"));
    EXPECT_NE(text("LabelH").find("no complete firmware"), std::string::npos);
    EXPECT_EQ(notice.boxes.size(), boxes);
}

TEST_F(DownloadWindowTest, ClosingTheWindowLetsTheTransferGoOn) {
    load_by_hand(4120 * 2);
    start();
    ASSERT_TRUE(run_to_step(8));
    window.hide();
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    window.show();
    EXPECT_TRUE(enabled("Command4"));
}

TEST_F(DownloadWindowTest, TheVersionIsCopiedFromItsRowByTheTimer) {
    version = "1.07.0518";
    EXPECT_EQ(text("Label18"), "");
    QTRY_COMPARE(QString::fromStdString(text("Label18")), QStringLiteral("1.07.0518"));
}

TEST_F(DownloadWindowTest, TicksAreShownWithoutAnyClick) {
    load_by_hand(4120 * 2);
    start();
    ASSERT_TRUE(run_to_step(8));
    auto& step = control<QLabel>("LabelC");
    QTRY_COMPARE(step.text(), QStringLiteral("Block 1 of 2"));
}

TEST_F(DownloadWindowTest, EngineeringActionsSendTheirWords) {
    open_link();
    port.record = true;
    port.written.clear();
    click("Command2");
    EXPECT_EQ(sent(), "go\r\n");
    port.written.clear();
    click("Command3");
    EXPECT_EQ(sent(), "abc\r\n");
}

TEST_F(DownloadWindowTest, TheDialogueIsShownOnRequestAndGrows) {
    EXPECT_FALSE(shown("TextA"));
    click("CommandB");
    EXPECT_TRUE(shown("TextA"));
    EXPECT_FALSE(enabled("CommandC")) << "nothing to save yet";
    load_by_hand(4120);
    start();
    ASSERT_TRUE(run_to_step(5));
    EXPECT_NE(text("TextA").find("> hi<CR>"), std::string::npos) << text("TextA");
    ASSERT_TRUE(finish());
    const std::string whole = text("TextA");
    std::string wanted;
    for (const DialogueEntry& entry : download.transfer().dialogue().entries())
        wanted += (wanted.empty() ? "" : "\n") + shown_entry(entry);
    EXPECT_EQ(whole, wanted) << "pieces of replies that grew are shown once";
    click("CommandB");
    EXPECT_FALSE(shown("TextA"));
}

TEST_F(DownloadWindowTest, AnotherTransferBeginsTheDialogueAnew) {
    click("CommandB");
    load_by_hand(4120);
    start();
    ASSERT_TRUE(finish());
    const std::size_t length = text("TextA").size();
    drive.power_up();
    start();
    EXPECT_LT(text("TextA").size(), length);
    ASSERT_TRUE(finish());
    EXPECT_EQ(text("TextA").find("> hi<CR>"), text("TextA").rfind("> hi<CR>"));
}

TEST_F(DownloadWindowTest, TheDialogueIsSavedInFull) {
    load_by_hand(4120);
    start();
    ASSERT_TRUE(finish());
    click("CommandB");
    click("CommandC");
    EXPECT_FALSE(std::filesystem::exists(folder / "log.txt")) << "cancelled";
    save_path = (folder / "log.txt").string();
    click("CommandC");
    const auto saved = base::read_file(folder / "log.txt");
    ASSERT_TRUE(saved);
    EXPECT_EQ(*saved, download.transfer().dialogue().text());
    EXPECT_TRUE(told.empty());
    save_path = (folder / "no" / "such" / "folder.txt").string();
    click("CommandC");
    EXPECT_EQ(told, std::vector<std::string>{"The file could not be written."});
}

}  // namespace
}  // namespace servo::firmware::test
