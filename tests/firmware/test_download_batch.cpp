// The form's production side, with real files beside each other.
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;
using base::Language;

namespace {

constexpr char32_t kEnter = 13;

struct BatchForm : testing::Test, TransferBench {
    BatchForm() {
        drive.in_bootloader = true;
        put_image(payload(4120), "product.servo", "This is ZARN firmware 77");
        put_ini("product.servo");
    }
    void put_ini(const std::string& file_name) {
        folder.put("line.ini", "[P1]\r\nSN_Compare=QX\r\nCompare_Pos=2\r\nSN_Length=5\r\nFW_Name=" +
                                   file_name + "\r\n[P2]\r\nSN_Compare=QX\r\n");
    }
    void choose_ini() {
        answers = {(folder / "line.ini").string()};
        download.Command5_Click();
    }
    bool enter_product(const std::string& name) {
        download.type_Text3(name);
        return download.Text3_KeyPress(kEnter);
    }
    bool scan(const std::string& barcode) {
        download.type_Text4(barcode);
        return download.Text4_KeyPress(kEnter);
    }
    // Ini, product, and an image chosen by hand.
    void ready() {
        load(8240);
        choose_ini();
        enter_product("P1");
        if (!port.is_open()) open_link();
    }
};

using Box = std::pair<std::string, std::string>;

}  // namespace

TEST_F(BatchForm, ChoosingTheIniEnablesBothBoxes) {
    choose_ini();
    EXPECT_EQ(filters, std::vector<std::string>{"INI Files (*.ini)|*.ini"});
    EXPECT_EQ(data().Ini_File_Path1, (folder / "line.ini").string());
    EXPECT_EQ(data().Label13, (folder / "line.ini").string());
    EXPECT_TRUE(data().Text3_enabled);
    EXPECT_TRUE(data().Text4_enabled);
}

TEST_F(BatchForm, CancelledChoiceLeavesEverythingAsItWas) {
    download.Command5_Click();
    EXPECT_EQ(data().Label13, "NULL");
    EXPECT_FALSE(data().Text3_enabled);
}

TEST_F(BatchForm, IniThatCannotBeReadIsTold) {
    answers = {(folder / "no.ini").string()};
    download.Command5_Click();
    EXPECT_EQ(box(), (Box{"Notice", "Wrong,please check your ini file!"}));
    EXPECT_FALSE(data().Text3_enabled);
    EXPECT_EQ(data().Ini_File_Path1, "");
}

TEST_F(BatchForm, ProductShowsItsFourValuesAndPassesTheFocusOn) {
    choose_ini();
    EXPECT_TRUE(enter_product("P1")) << "Enter is swallowed";
    EXPECT_EQ(data().Label8, "product.servo");
    EXPECT_EQ(data().Label10, "QX");
    EXPECT_EQ(data().Label12, "5");
    EXPECT_EQ(data().Label15, "2");
    EXPECT_EQ(data().focus, "Text4");
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(BatchForm, OnlyEnterReadsTheProduct) {
    choose_ini();
    download.type_Text3("P1");
    EXPECT_FALSE(download.Text3_KeyPress('P'));
    EXPECT_EQ(data().Label8, "");
}

TEST_F(BatchForm, EmptyProductDoesNothing) {
    choose_ini();
    EXPECT_TRUE(enter_product("")) << "the key is swallowed all the same";
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_EQ(data().Label8, "");
}

TEST_F(BatchForm, ProductWithAMissingValueIsRefusedInBothLanguages) {
    choose_ini();
    enter_product("P1");
    enter_product("P2");
    EXPECT_EQ(box(), (Box{"Notice", "Wrong,please check your ini file!"}));
    EXPECT_EQ(data().Label8, "nothing");
    EXPECT_EQ(data().Label10, "nothing");
    EXPECT_EQ(data().Label12, "nothing");
    EXPECT_EQ(data().Label15, "nothing");
    EXPECT_EQ(data().Text3, "");
    EXPECT_EQ(data().focus, "Text3");
    language = Language::kChinese;
    enter_product("P3");
    EXPECT_EQ(box(), (Box{"提示", "错误,请检查ini文件!"}));
}

TEST_F(BatchForm, AnyKeyEmptiesTheBarcodeWithoutAProduct) {
    choose_ini();
    download.type_Text4("1QX45");
    EXPECT_TRUE(download.Text4_KeyPress('7'));
    EXPECT_EQ(data().Text4, "");
    EXPECT_TRUE(scan("1QX45"));
    EXPECT_EQ(data().Text4, "");
    EXPECT_TRUE(notice.boxes.empty());
}

TEST_F(BatchForm, AnyKeyEmptiesTheBarcodeWithoutAnIni) {
    download.type_Text3("P1");
    EXPECT_TRUE(scan("1QX45"));
    EXPECT_EQ(data().Text4, "");
}

TEST_F(BatchForm, OnlyEnterStarts) {
    ready();
    download.type_Text4("1QX45");
    EXPECT_FALSE(download.Text4_KeyPress('5'));
    EXPECT_EQ(data().Text4, "1QX45");
    EXPECT_EQ(state.download_active, 0);
}

TEST_F(BatchForm, BarcodeStartsTheProductsImage) {
    ready();
    EXPECT_TRUE(scan("1QX45"));
    EXPECT_TRUE(data().click_just_happend);
    EXPECT_EQ(state.download_active, 1);
    EXPECT_EQ(data().Label4, (folder / "product.servo").string());
    EXPECT_EQ(data().CRC_From_File, "77");
    EXPECT_EQ(data().Label1.find("77"), std::string::npos) << "the header shown is the hand's";
    EXPECT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120));
}

TEST_F(BatchForm, EachMessageOfTheBarcode) {
    ready();
    scan("1QX456");
    EXPECT_EQ(box(), (Box{"", "条码长度不匹配"}));
    EXPECT_FALSE(data().click_just_happend);
    scan("1qx45");
    EXPECT_EQ(box(), (Box{"", "条码与配置文件不匹配"}));
    EXPECT_FALSE(data().click_just_happend);

    folder.put("product.servo", "This is ZARN Firmware 77\nabc\n");
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"", "错误的文件格式"}));
    folder.put("product.servo", "This is OTHR firmware 88");
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"", "错误的文件格式"})) << "no second line";
    EXPECT_EQ(data().FW_Type, "OTHR") << "the header was taken by then";
    folder.put("product.servo", "firmware This is x\nabc\n");
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"", "Tavro文件不能正确打开"})) << "a header without a type word";
    std::filesystem::remove(folder / "product.servo");
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"", "Tavro文件不能正确打开"}));
    EXPECT_FALSE(data().click_just_happend);
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(notice.boxes.size(), 6U);
}

TEST_F(BatchForm, BarcodeMessagesExistInChineseOnly) {
    for (const Language now : {Language::kChinese, Language::kEnglish}) {
        language = now;
        ready();
        scan("1");
        EXPECT_EQ(box().second, "条码长度不匹配");
    }
}

TEST_F(BatchForm, PositionBelowOneIsARunTimeFailure) {
    load(8240);
    folder.put("line.ini",
               "[P1]\nSN_Compare=QX\nCompare_Pos=0\nSN_Length=5\nFW_Name=product.servo\n");
    choose_ini();
    enter_product("P1");
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"", "Tavro文件不能正确打开"}));
    EXPECT_EQ(state.download_active, 0);
}

TEST_F(BatchForm, WithNoFileEverChosenByHandNothingStarts) {
    open_link();
    choose_ini();
    enter_product("P1");
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"", "Tavro文件不能正确打开"}));
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 1U) << "the blocks are there by then";
}

TEST_F(BatchForm, ChangedHandFileReplacesTheProductsBlocks) {
    ready();
    put_image(payload(4120 * 3), "a.servo", "This is HAND firmware 55");
    dates[folder / "a.servo"] = *data().file_date + 1s;
    drive.type = "HAND";
    scan("1QX45");
    EXPECT_EQ(state.download_active, 1);
    EXPECT_EQ(data().FW_Type, "HAND");
    EXPECT_TRUE(finish());
    EXPECT_EQ(drive.stored, payload(4120 * 3)) << "the hand's image went out";
}

TEST_F(BatchForm, HandFileChangedIntoNoImageStartsNothing) {
    ready();
    folder.put("a.servo", "nothing");
    dates[folder / "a.servo"] = *data().file_date + 1s;
    scan("1QX45");
    EXPECT_EQ(box(), (Box{"Notice", "Wrong File Format!"}));
    EXPECT_EQ(state.download_active, 0);
    EXPECT_FALSE(data().click_just_happend);
}

TEST_F(BatchForm, BatchWorksWithItsMarkOff) {
    ready();
    EXPECT_FALSE(data().Check1);
    scan("1QX45");
    EXPECT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
}

TEST_F(BatchForm, AfterAFailureTheNextBarcodeStartsAnew) {
    ready();
    drive.silent = true;
    scan("1QX45");
    EXPECT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kFailed);
    EXPECT_FALSE(data().Command4_enabled);
    drive.silent = false;
    drive.power_up();
    if (!port.is_open()) open_link();
    scan("2QX45");
    EXPECT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_TRUE(data().Command1_enabled);
}

TEST_F(BatchForm, BarcodeScannedDuringATransferDoesNotMixTwoImages) {
    ready();
    put_image(payload(4120 * 4), "big.servo", "This is ZARN firmware 66");
    put_ini("big.servo");
    enter_product("P1");
    scan("1QX45");
    EXPECT_TRUE(run_until([this] { return drive.blocks == 2; }));
    put_ini("product.servo");
    enter_product("P1");
    scan("2QX45");
    EXPECT_EQ(firmware::highest_index(*data().fw_blocks), 1U) << "the form holds the new one";
    EXPECT_TRUE(finish());
    EXPECT_EQ(ended(), TransferEnd::kDone);
    EXPECT_EQ(drive.stored, payload(4120 * 4)) << "the drive got the one that was started";
}

TEST_F(BatchForm, TableOfProductsAndBarcodes) {
    load(4120);
    folder.put("line.ini",
               "[Short]\nSN_Compare=A\nCompare_Pos=1\nSN_Length=1\nFW_Name=product.servo\n"
               "[Alias]\nSN_Compare=A\nCompare_Pos=1\nSN_Length=1\nFW_Name=std\n"
               "[Lost]\nSN_Compare=A\nCompare_Pos=1\nSN_Length=1\nFW_Name=lost.servo\n"
               "[Half]\nSN_Compare=A\nCompare_Pos=1.5\nSN_Length=2\nFW_Name=product.servo\n"
               "[Names]\nstd=product.servo\n");
    open_link();
    choose_ini();
    struct Case {
        const char* product;
        const char* barcode;
        const char* message;  // empty: the transfer starts
    };
    const Case table[] = {
        {"Short", "A", ""},
        {"Short", "a", "条码与配置文件不匹配"},
        {"Short", "AA", "条码长度不匹配"},
        {"Alias", "A", ""},
        {"Lost", "A", "Tavro文件不能正确打开"},
        {"Half", "xA", ""},
        {"Half", "Ax", "条码与配置文件不匹配"},
        {"Names", "", "Wrong,please check your ini file!"},
        {"None", "", "Wrong,please check your ini file!"},
    };
    for (const Case& scanned : table) {
        notice.boxes.clear();
        drive.in_bootloader = true;
        enter_product(scanned.product);
        if (*scanned.barcode != 0) scan(scanned.barcode);
        EXPECT_EQ(state.download_active, *scanned.message == 0 ? 1 : 0) << scanned.product;
        EXPECT_TRUE(finish());
        ASSERT_FALSE(notice.boxes.empty()) << scanned.product;
        EXPECT_EQ(box().second, *scanned.message == 0 ? "Download Finished!" : scanned.message)
            << scanned.product << " " << scanned.barcode;
    }
}
