// The production side through its boxes, key by key as a scanner types.
#include <gtest/gtest.h>

#include "download_window_bench.h"

namespace servo::firmware::test {
namespace {

struct BatchWindow : testing::Test, WindowBench {
    BatchWindow() {
        put_image(payload(4120 * 2), "zarn.servo");
        folder.put("lot.ini",
                   "[P400]\r\nSN_Compare=ZA\r\nCompare_Pos=3\r\nSN_Length=8\r\nFW_Name=main\r\n"
                   "[P750]\r\nSN_Compare=ZB\r\nCompare_Pos=1\r\nSN_Length=6\r\n"
                   "[names]\r\nmain=zarn.servo\r\n");
    }
    void choose_batch() {
        answers = {(folder / "lot.ini").string()};
        click("Command5");
    }
    void scan(const char* product, const char* barcode) {
        type("Text3", product);
        enter("Text3");
        type("Text4", barcode);
        enter("Text4");
    }
};

TEST_F(BatchWindow, ABatchFileEnablesTheBoxesAndIsShown) {
    choose_batch();
    EXPECT_EQ(filters, std::vector<std::string>{"INI Files (*.ini)|*.ini"});
    EXPECT_EQ(text("Label13"), (folder / "lot.ini").string());
    EXPECT_TRUE(enabled("Text3"));
    EXPECT_TRUE(enabled("Text4"));
}

TEST_F(BatchWindow, ACancelLeavesTheBoxesDisabled) {
    click("Command5");
    EXPECT_EQ(text("Label13"), "NULL");
    EXPECT_FALSE(enabled("Text3"));
}

TEST_F(BatchWindow, AProductIsShownAndTheFocusGoesToTheBarcode) {
    window.activateWindow();
    choose_batch();
    type("Text3", "P400");
    enter("Text3");
    EXPECT_EQ(text("Label8"), "zarn.servo");
    EXPECT_EQ(text("Label10"), "ZA");
    EXPECT_EQ(text("Label12"), "8");
    EXPECT_EQ(text("Label15"), "3");
    EXPECT_EQ(window.focusWidget(), &control<>("Text4"));
    EXPECT_EQ(text("Text3"), "P400") << "the key itself is swallowed";
}

TEST_F(BatchWindow, AnIncompleteProductIsRefusedAndItsNameEmptied) {
    choose_batch();
    type("Text3", "P750");
    enter("Text3");
    EXPECT_EQ(box().second, "Wrong,please check your ini file!");
    for (const char* label : {"Label8", "Label10", "Label12", "Label15"})
        EXPECT_EQ(text(label), "nothing");
    EXPECT_EQ(text("Text3"), "");
    EXPECT_EQ(window.focusWidget(), &control<>("Text3"));
}

TEST_F(BatchWindow, AnEmptyProductDoesNothing) {
    choose_batch();
    type("Text3", "");
    enter("Text3");
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(text("Label8"), "");
}

TEST_F(BatchWindow, WithoutAProductAnyKeyEmptiesTheBarcode) {
    choose_batch();
    type("Text4", "1234");
    EXPECT_EQ(text("Text4"), "");
    enter("Text4");
    EXPECT_EQ(text("Text4"), "");
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(BatchWindow, BarcodesOfAnotherLengthOrTextAreRefused) {
    choose_batch();
    load_by_hand(4120);
    scan("P400", "12ZA56");
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"", "条码长度不匹配"}));
    type("Text4", "12za5678");
    enter("Text4");
    EXPECT_EQ(box().second, "条码与配置文件不匹配");
    EXPECT_EQ(text("Text4"), "12za5678");
    EXPECT_EQ(state.download_active, 0);
}

TEST_F(BatchWindow, AFittingBarcodeSendsTheProductsImage) {
    load_by_hand(4120);
    choose_batch();
    drive.in_bootloader = true;
    open_link();
    scan("P400", "12ZA5678");
    EXPECT_EQ(state.download_active, 1);
    EXPECT_EQ(text("Label4"), (folder / "zarn.servo").string());
    EXPECT_TRUE(shown("Label4"));
    EXPECT_TRUE(shown("LabelK")) << "the version keeps a caption";
    ASSERT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.blocks, 2);
    walk(base::Language::kChinese);
    EXPECT_EQ(text("Label4"), (folder / "zarn.servo").string()) << "a path is no pair";
    EXPECT_EQ(text("LabelK"), "软件版本:");
}

TEST_F(BatchWindow, WithoutAHandChosenFileThereIsNoStart) {
    choose_batch();
    scan("P400", "12ZA5678");
    EXPECT_EQ(box(), (std::pair<std::string, std::string>{"", "Tavro文件不能正确打开"}));
    EXPECT_EQ(state.download_active, 0);
}

TEST_F(BatchWindow, TheNextScanTakesThePlaceOfTheLast) {
    choose_batch();
    load_by_hand(4120);
    scan("P400", "12ZA56");
    QTest::keyClicks(&control<>("Text4"), "12ZA5678");
    EXPECT_EQ(text("Text4"), "12ZA5678");
}

TEST_F(BatchWindow, Check1IsAMarkThatChangesNothing) {
    click("Check1");
    EXPECT_EQ(text("Check1"), "on");
    EXPECT_FALSE(enabled("Text3"));
    click("Check1");
    EXPECT_EQ(text("Check1"), "off");
}

}  // namespace
}  // namespace servo::firmware::test
