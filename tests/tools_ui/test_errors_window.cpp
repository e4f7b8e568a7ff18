// The window `Errors` through its real controls.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QImage>
#include <set>

#include "form_window_bench.h"
#include "tools/errors_window.h"

namespace servo::tools {
namespace {

using base::Language;
using dictionary::Variant;
using link::Payload;

constexpr link::WireKey kWord1 = 0x26010002;
constexpr link::WireKey kWord2 = 0x26020002;
constexpr link::WireKey kMask1 = 0x26050102;
constexpr link::WireKey kMask2 = 0x26050402;

std::string at(const char* control, int index) {
    return std::string(control) + "(" + std::to_string(index) + ")";
}

class ErrorsWindowTest : public ::testing::Test, protected test::FormWindowBench {
  protected:
    ErrorsWindowTest() { show(view, test::kDesignedFont); }

    void feed(link::WireKey key, std::uint16_t value) {
        answer(key, value);
        view.refresh_now();
    }
    int top(const std::string& name) { return control<>(name).mapTo(&view, QPoint(0, 0)).y(); }
    void point_at(int fault) {
        QWidget* row = control<>(at("Check1", fault)).parentWidget();
        QEnterEvent enter({}, {}, {});
        QApplication::sendEvent(row, &enter);
    }
    void point_away(int fault) {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(control<>(at("Check1", fault)).parentWidget(), &leave);
    }

    Variant variant = Variant::kAllItems;
    Errors form{engine, language};
    ErrorsWindow view{form, variant};
};

TEST_F(ErrorsWindowTest, EveryToldControlIsThereByItsName) {
    for (int fault = 0; fault < kFaultBits; ++fault) {
        EXPECT_EQ(text(at("Image1", fault)), "lamp_off");
        EXPECT_EQ(text(at("Check1", fault)), "off");
        EXPECT_EQ(caption(at("Check1", fault)), fault_mask_text(fault));
        EXPECT_FALSE(text(at("LabelG", fault)).empty());
    }
    EXPECT_EQ(text("LabelA"), "0000");
    EXPECT_EQ(text("LabelD"), "0000");
}

TEST_F(ErrorsWindowTest, TextsFollowTheLanguage) {
    EXPECT_EQ(title(), "Error Display");
    EXPECT_EQ(text("LabelB"), "State");
    EXPECT_EQ(text(at("LabelG", 2)), "Encoder UVW or Encoder\ninternal");
    walk(Language::kChinese);
    EXPECT_EQ(title(), "故障显示");
    EXPECT_EQ(text("FrameA"), "错误状态字1");
    EXPECT_EQ(text("FrameB"), "错误状态字2");
    EXPECT_EQ(text("LabelB"), "状态");
    EXPECT_EQ(text("LabelC"), "屏蔽");
    EXPECT_EQ(text("LabelE"), "状态");
    EXPECT_EQ(text("LabelF"), "屏蔽");
    EXPECT_EQ(text(at("LabelG", 2)), "编码器UVW故障或内部故障");
    EXPECT_EQ(text(at("LabelG", 24)), "STO2 Error");
    walk(Language::kEnglish);
    EXPECT_EQ(text(at("LabelG", 4)), "Driver Over Temperature");
    EXPECT_EQ(text(at("LabelG", 3)), "Encoder counting or Encoder\n CRC") << "a second time too";
}

TEST_F(ErrorsWindowTest, TheReducedProductsCaptionsAreTakenWhenItIsKnown) {
    variant = Variant::kReduced;
    walk(Language::kEnglish);
    EXPECT_EQ(text(at("LabelG", 1)), "Encoder not connected");
    EXPECT_EQ(text(at("LabelG", 11)), "Motor or Controller IIt");
    walk(Language::kChinese);
    EXPECT_EQ(text(at("LabelG", 4)), "驱动器温度过高");
}

TEST_F(ErrorsWindowTest, LampsAndWordsFollowTheDrive) {
    feed(kWord1, 0x0201);
    feed(kWord2, 0x8000);
    EXPECT_EQ(text("LabelA"), "0201");
    EXPECT_EQ(text("LabelD"), "8000");
    const std::set<int> on{0, 9, 31};
    for (int fault = 0; fault < kFaultBits; ++fault)
        EXPECT_EQ(text(at("Image1", fault)), on.contains(fault) ? "lamp_on" : "lamp_off");
}

TEST_F(ErrorsWindowTest, LampsDifferInShape) {
    const auto shape = [this] {
        return control<>(at("Image1", 9))
            .grab()
            .toImage()
            .convertToFormat(QImage::Format_Grayscale8);
    };
    feed(kWord1, 0);
    const QImage off = shape();
    feed(kWord1, 0x0200);
    EXPECT_NE(shape(), off);
    EXPECT_EQ(off.pixelColor(off.rect().center()), off.pixelColor(off.rect().topLeft()))
        << "a ring is empty";
}

TEST_F(ErrorsWindowTest, ALampKeepsItsStateWhenTheWindowIsHiddenAndShown) {
    feed(kWord1, 0x0200);
    view.hide();
    view.show();
    EXPECT_EQ(text(at("Image1", 9)), "lamp_on");
    EXPECT_EQ(text("LabelA"), "0200");
}

TEST_F(ErrorsWindowTest, AChangeInATickIsShownByItself) {
    answer(kWord1, 0x0002);
    EXPECT_TRUE(QTest::qWaitFor([this] { return text(at("Image1", 1)) == "lamp_on"; }));
}

TEST_F(ErrorsWindowTest, AClickWritesTheMaskOfItsWord) {
    feed(kMask1, 0x0100);
    feed(kMask2, 0);
    click(at("Check1", 0));
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0x05, 0x26, 0x01, 0x01, 0x01, 0, 0}}));
    EXPECT_EQ(text(at("Check1", 0)), "on");
    click(at("Check1", 21));
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0x05, 0x26, 0x04, 0x20, 0x00, 0, 0}}));
    click(at("Check1", 8));
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0x05, 0x26, 0x01, 0x01, 0x00, 0, 0}}));
    EXPECT_EQ(text(at("Check1", 8)), "off");
}

TEST_F(ErrorsWindowTest, TheBoxesShowTheDrivesMasksAndWriteNothing) {
    feed(kMask1, 0x8001);
    feed(kMask2, 0x0002);
    for (int fault = 0; fault < kFaultBits; ++fault)
        EXPECT_EQ(text(at("Check1", fault)),
                  fault == 0 || fault == 15 || fault == 17 ? "on" : "off");
    EXPECT_TRUE(sent().empty());
}

// The drive's word has come, and is not on screen yet.
TEST_F(ErrorsWindowTest, AClickOnABoxThatIsBehindWritesNothingContrary) {
    feed(kMask1, 0);
    answer(kMask1, 0x0001);
    EXPECT_EQ(text(at("Check1", 0)), "off");
    click(at("Check1", 0));
    EXPECT_TRUE(sent().empty()) << "it is masked already, as the user wants it";
    EXPECT_EQ(text(at("Check1", 0)), "on");
}

TEST_F(ErrorsWindowTest, TheTwoLowestOfWord1StandTheOtherWayRound) {
    EXPECT_LT(top(at("Check1", 1)), top(at("Check1", 0)));
    EXPECT_LT(top(at("Check1", 0)), top(at("Check1", 2)));
    EXPECT_LT(top(at("Check1", 2)), top(at("Check1", 3)));
    EXPECT_LT(top(at("Check1", 16)), top(at("Check1", 17)));
}

TEST_F(ErrorsWindowTest, TheFaultUnderThePointerIsExplained) {
    EXPECT_EQ(text("LabelK"), "Point at a fault: its cause and remedy are told here.");
    EXPECT_FALSE(shown("LabelL"));
    point_at(19);
    EXPECT_EQ(text("LabelK"), "Error word 2, bit 3 (0008): CAN bus");
    EXPECT_EQ(text("LabelM"), std::string(fault_table()[19].cause.english));
    EXPECT_EQ(text("LabelO"), std::string(fault_table()[19].remedy.english));
    EXPECT_TRUE(shown("LabelL"));
    point_away(19);
    EXPECT_FALSE(shown("LabelL"));
}

TEST_F(ErrorsWindowTest, WithoutAPointerTheSelectedOrTheFirstFaultIsExplained) {
    feed(kWord2, 0x0010);
    EXPECT_EQ(text("LabelK"), "Error word 2, bit 4 (0010): SPI");
    control<>(at("Check1", 6)).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(text("LabelK"), "Error word 1, bit 6 (0040): Bus voltage too low");
    point_at(7);
    EXPECT_EQ(text("LabelK"), "Error word 1, bit 7 (0080): Output short circuit");
    point_away(7);
    EXPECT_EQ(text("LabelK"), "Error word 1, bit 6 (0040): Bus voltage too low");
}

TEST_F(ErrorsWindowTest, AClickBesideTheBoxSelectsAndMasksNothing) {
    QWidget& label = control<>(at("LabelG", 12));
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(text("LabelK"), "Error word 1, bit 12 (1000): Input pulse frequency too high");
    EXPECT_TRUE(sent().empty());
}

TEST_F(ErrorsWindowTest, CountsAndUnreadMasksAreTold) {
    EXPECT_EQ(text("LabelJ"), "No error word has been read yet");
    EXPECT_EQ(text("LabelH"), "Masks not read yet");
    EXPECT_EQ(text("LabelI"), text("LabelH"));
    feed(kWord1, 0x0010);
    feed(kMask1, 0x0003);
    EXPECT_EQ(text("LabelJ"), "1 fault on, 2 masked");
    EXPECT_EQ(text("LabelH"), "");
    EXPECT_NE(text("LabelI"), "");
}

TEST_F(ErrorsWindowTest, HowAFaultIsResetIsToldWhileOneIsOn) {
    EXPECT_EQ(text("LabelP"), "");
    feed(kWord1, 0x0010);
    EXPECT_EQ(text("LabelP").substr(0, 6), "Reset:");
    walk(Language::kChinese);
    EXPECT_EQ(text("LabelP").substr(0, 9), "复位：");
    feed(kWord1, 0);
    EXPECT_EQ(text("LabelP"), "");
}

TEST_F(ErrorsWindowTest, TheKeyboardGoesDownTheRows) {
    control<>(at("Check1", 1)).setFocus();
    std::vector<int> order{0};
    for (int fault = 2; fault < kFaultBits; ++fault)
        order.push_back(fault);
    for (const int fault : order) {
        QTest::keyClick(view.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(focus(), at("Check1", fault));
    }
    QTest::keyClick(view.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(sent(), (std::vector<Payload>{{0x2B, 0x05, 0x26, 0x04, 0x00, 0x80, 0, 0}}));
}

TEST_F(ErrorsWindowTest, NothingMovesWhileThePointerDoes) {
    feed(kWord1, 0);
    for (const QSize size : {view.sizeHint(), QSize(1500, 800)}) {
        view.resize(size);
        QApplication::processEvents();
        const int before = top(at("Check1", 15));
        const int width = control<>("LabelJ").width();
        for (int fault = 0; fault < kFaultBits; ++fault) {
            point_at(fault);
            QApplication::processEvents();
            EXPECT_EQ(top(at("Check1", 15)), before);
            EXPECT_EQ(control<>("LabelM").width(), width);
        }
    }
}

TEST_F(ErrorsWindowTest, FitsAndCutsNothing) {
    feed(kWord1, 0x0210);
    feed(kWord2, 0x0020);
    feed(kMask1, 0x0001);
    for (const Language each : {Language::kEnglish, Language::kChinese}) {
        walk(each);
        view.refresh_now();
        view.resize(view.minimumSizeHint());
        QApplication::processEvents();
        expect_fits_small_screen();
        for (int fault = 0; fault < kFaultBits; ++fault) {
            point_at(fault);
            QApplication::processEvents();
            expect_texts_fit();
        }
        keep_picture(each == Language::kEnglish ? "errors_en" : "errors_zh");
    }
    view.resize(1300, 800);
    QApplication::processEvents();
    keep_picture("errors_large");
}

}  // namespace
}  // namespace servo::tools
