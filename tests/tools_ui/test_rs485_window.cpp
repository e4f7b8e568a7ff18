// The window `RS485` through its real controls.
#include <gtest/gtest.h>

#include <QWheelEvent>

#include "form_window_bench.h"
#include "tools/rs485_window.h"

namespace servo::tools {
namespace {

using base::Language;
using link::Payload;

class Rs485WindowTest : public ::testing::Test, protected test::FormWindowBench {
  protected:
    Rs485WindowTest() { show(view, test::kDesignedFont); }

    dictionary::Store store;
    Rs485 form{engine, store, language};
    Rs485Window view{form};
};

TEST_F(Rs485WindowTest, CaptionsFollowTheLanguage) {
    EXPECT_EQ(title(), "485 Configuration");
    EXPECT_EQ(text("LabelA"), "Baud rate");
    EXPECT_EQ(text("LabelE"), "Protocol");
    walk(Language::kChinese);
    EXPECT_EQ(title(), "RS485配置");
    EXPECT_EQ(text("LabelA"), "波特率");
    EXPECT_EQ(text("LabelB"), "数据位");
    EXPECT_EQ(text("LabelC"), "奇偶校验");
    EXPECT_EQ(text("LabelD"), "停止位");
    EXPECT_EQ(text("LabelE"), "协议");
}

TEST_F(Rs485WindowTest, ListsHaveTheirItemsAndTheFixedOnesAreChosen) {
    EXPECT_EQ(control<QComboBox>("Combo1").count(), 4);
    EXPECT_EQ(text("Combo1"), "");
    EXPECT_EQ(text("Combo2"), "8");
    EXPECT_EQ(text("Combo3"), "NONE");
    EXPECT_EQ(text("Combo4"), "");
    EXPECT_EQ(text("Combo5"), "");
}

TEST_F(Rs485WindowTest, ADriveThatReports540Shows19200) {
    form.set_ods(0, 540);
    form.set_ods(1, 9);
    form.set_ods(2, 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("Combo1") == "19200"; }));
    EXPECT_EQ(text("Combo4"), "2");
    EXPECT_EQ(text("Combo5"), "QRL RS232");
    EXPECT_TRUE(sent().empty());
}

TEST_F(Rs485WindowTest, AChoiceIsWrittenAtOnce) {
    pick("Combo1", 3);
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0xE2, 0x2F, 0x00, 90, 0, 0, 0}}));
    EXPECT_EQ(text("Combo1"), "115200");
    pick("Combo4", 1);
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0x10, 0x65, 0x0E, 9, 0, 0, 0}}));
    pick("Combo5", 1);
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2F, 0x10, 0x65, 0x0C, 1, 0, 0, 0}}));
}

TEST_F(Rs485WindowTest, TheFixedListsWriteNothing) {
    pick("Combo2", 0);
    pick("Combo3", 0);
    EXPECT_TRUE(sent().empty());
}

TEST_F(Rs485WindowTest, AValueOutsideOfTheTableLeavesTheSelection) {
    pick("Combo1", 3);
    form.set_ods(0, 77);
    view.refresh_now();
    EXPECT_EQ(text("Combo1"), "115200");
}

TEST_F(Rs485WindowTest, ATurnOfTheWheelWritesNothing) {
    form.set_ods(0, 540);
    view.refresh_now();
    auto& list = control<QComboBox>("Combo1");
    list.setFocus();
    const QPointF place(list.rect().center());
    QWheelEvent turn(place, list.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &turn);
    EXPECT_EQ(text("Combo1"), "19200");
    EXPECT_TRUE(sent().empty());
}

TEST_F(Rs485WindowTest, ArrowKeysChooseLikeTheMouse) {
    form.set_ods(1, 8);
    view.refresh_now();
    control<>("Combo4").setFocus();
    QTest::keyClick(&control<>("Combo4"), Qt::Key_Down);
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0x10, 0x65, 0x0E, 9, 0, 0, 0}}));
    EXPECT_EQ(text("Combo4"), "2");
}

TEST_F(Rs485WindowTest, WhatFollowsFromTheChoicesIsTold) {
    EXPECT_EQ(text("LabelF"),
              "A choice is written at once, but counts only after it has been stored (Init Save "
              "Reboot, Store Control Parameters) and the drive restarted.");
    EXPECT_EQ(text("LabelG"), "Not all settings have been read from the drive yet.");
    pick("Combo5", 0);
    EXPECT_EQ(text("LabelF"),
              "MODBUS is chosen: once it is stored and the drive restarted, this workstation can "
              "no longer connect over the serial line.");
    pick("Combo1", 1);
    EXPECT_NE(text("LabelG").find("19200 baud"), std::string::npos);
    keep_picture("rs485_warned_en");
}

TEST_F(Rs485WindowTest, FitsAndCutsNothing) {
    form.set_ods(0, 270);
    form.set_ods(1, 8);
    form.set_ods(2, 0);
    form.pick(0, 3);
    for (const Language each : {Language::kEnglish, Language::kChinese}) {
        walk(each);
        view.refresh_now();
        view.resize(view.sizeHint());
        QApplication::processEvents();
        expect_fits_small_screen();
        expect_texts_fit();
        keep_picture(each == Language::kEnglish ? "rs485_en" : "rs485_zh");
    }
}

}  // namespace
}  // namespace servo::tools
