// The page `EASY1` through its real controls: what stands on it, and that it has no effect.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <map>
#include <set>

#include "app/tag_text.h"
#include "form_window_bench.h"
#include "params/grid_access_view.h"
#include "tools/easy_window.h"

namespace servo::tools {
namespace {

using base::Language;

class EasyWindowTest : public ::testing::Test, protected test::FormWindowBench {
  protected:
    EasyWindowTest() { show(view, !test::kDesignedFont); }

    // Every control with its text and whether it can be used.
    std::map<std::string, std::pair<std::string, bool>> everything() {
        std::map<std::string, std::pair<std::string, bool>> found;
        for (const QWidget* each : app::controls_of(view))
            found[each->objectName().toStdString()] = {app::control_text(*each).toStdString(),
                                                       each->isEnabled()};
        return found;
    }

    EasyWindow view{language};
};

TEST_F(EasyWindowTest, TheTitleFollowsTheLanguage) {
    EXPECT_EQ(title(), "EASY Setup Wizard");
    walk(Language::kChinese);
    EXPECT_EQ(title(), "快速设置");
}

TEST_F(EasyWindowTest, FieldsHaveTheirDefaults) {
    const std::vector<std::pair<std::string, std::string>> told{
        {"Text1", ""},      {"Label19", "65536"}, {"Text2", "1000"}, {"Text3", "1000"},
        {"Text4", "10000"}, {"Text5", "200"},     {"Text6", "3000"}, {"Text7", ""}};
    for (const auto& [name, value] : told)
        EXPECT_EQ(text(name), value) << name;
}

TEST_F(EasyWindowTest, CaptionsFollowTheLanguageAgainAndAgain) {
    const std::vector<std::pair<std::string, std::string>> told{
        {"Label1", "电机型号/Motor type"},
        {"Label18", "电机位置分辨率/Motor position resolution"},
        {"Label11", "请选择控制方式/Select Control Method"},
        {"Label12",
         "此控制方式下IO功能默认定义如下/The default IO function according to the control method "
         "as "
         "follow:"},
        {"Frame1", "控制命令相关设置/Control Command related settings"},
        {"Frame2", "脉冲控制,工作模式配置为:-4/Pulse control,Operation mode:-4"},
        {"Frame4", "模拟速度控制,工作模式配置为:-3/Analog speed control,Operation mode:-3"},
        {"Frame3", "通信控制,工作模式配置为:0/Communication control,Operation mode:0"},
        {"Frame9", "位置表控制,工作模式配置为:1/Position table control,Operation mode:1"},
        {"LabelA", "输入脉冲*/Pulse In*"},
        {"LabelB", "电子齿轮分子/Gear Numerator "},
        {"LabelC", "电子齿轮分母/Gear Denominator"},
        {"LabelD", "=目标位置/=Target Pos"},
        {"LabelE", "请选择脉冲输入类型/Select the Pulse type"},
        {"LabelF", "脉冲个数对应电机旋转一圈/Pulse numbers correspond to 1 revolution of motor"},
        {"LabelG", "脉冲频率/Pulse Frequency"},
        {"LabelI", "对应电机转速/Correspond to Motor speed"},
        {"LabelK", "请选择模拟量通道/Please select Analog channel"},
        {"LabelL", "模拟量与转速对应关系为:/Analog voltage and speed(rpm) relation:"},
        {"LabelO",
         "此方式下用户可通过驱动器提供的通信接口任意控制驱动器。/In this control method,user can "
         "control the driver by the communication interface which driver provide."},
        {"Frame5", "应用相关设置/Application Settings"},
        {"Frame7", "应用类型/Application type"},
        {"Frame8", "其它/Others"},
        {"Frame6", "负载类型/Load type"}};
    for (const Language each :
         {Language::kEnglish, Language::kChinese, Language::kEnglish, Language::kChinese}) {
        walk(each);
        for (const auto& [name, pair] : told)
            EXPECT_EQ(text(name), app::tag_part(pair, each)) << name;
        EXPECT_TRUE(text("LabelP").ends_with(
            each == Language::kEnglish
                ? "user need to edit the position table first,and set the related IO functions."
                : "再结合对应的IO功能对驱动器进行控制。"));
    }
}

TEST_F(EasyWindowTest, ButtonsBoxesAndOptionsHaveTheirCaptions) {
    const std::vector<std::pair<std::string, std::string>> told{
        {"Command1", "激活以上设置/Active all the settings"},
        {"Check1", "电子齿轮计算帮助/Gear factor calculation help"},
        {"Check3", "故障输出极性取反/Fault output pin polarity"},
        {"Check2", "去除限位开关功能/Remove limit function"},
        {"Option8", "点到点/P2P"},
        {"Option7", "CNC"},
        {"Option3", "空载/Noload"},
        {"Option6", "丝杠/Ballscrew"},
        {"Option5", "皮带/Belt"}};
    for (const Language each : {Language::kEnglish, Language::kChinese}) {
        walk(each);
        for (const auto& [name, pair] : told)
            EXPECT_EQ(caption(name), app::tag_part(pair, each)) << name;
    }
}

// Three parts count as three languages.
TEST_F(EasyWindowTest, TheCaptionWithThreePartsShowsTheOneOfItsLanguage) {
    EXPECT_EQ(caption("Option4"), "Master");
    EXPECT_EQ(control<>("Option4").toolTip().toStdString(), "Master/Slave");
    walk(Language::kChinese);
    EXPECT_EQ(caption("Option4"), "主从跟随");
}

TEST_F(EasyWindowTest, UnitsAreNoPairsOfLanguages) {
    for (const Language each : {Language::kEnglish, Language::kChinese}) {
        walk(each);
        EXPECT_EQ(text("LabelH"), "KHz");
        EXPECT_EQ(text("LabelJ"), "rpm");
        EXPECT_EQ(text("LabelM"), "rpm/V");
        EXPECT_EQ(control<QComboBox>("Combo2").itemText(0).toStdString(), "CW/CCW");
    }
}

TEST_F(EasyWindowTest, ListsHaveTheirItems) {
    const auto items = [this](const char* name) {
        std::vector<std::string> found;
        const auto& list = control<QComboBox>(name);
        for (int i = 0; i < list.count(); ++i)
            found.push_back(list.itemText(i).toStdString());
        return found;
    };
    EXPECT_EQ(items("Combo1"), (std::vector<std::string>{"Pulse", "Analog Speed", "Communication",
                                                         "Position Table"}));
    EXPECT_EQ(items("Combo2"), (std::vector<std::string>{"CW/CCW", "PD", "A/B"}));
}

TEST_F(EasyWindowTest, Combo1ShowsOneFrameAndHidesTheOtherThree) {
    const char* const frames[] = {"Frame2", "Frame4", "Frame3", "Frame9"};
    std::set<std::pair<int, int>> places;
    for (const int method : {3, 1, 2, 0}) {
        pick("Combo1", method);
        for (int frame = 0; frame < 4; ++frame)
            EXPECT_EQ(shown(frames[frame]), frame == method) << method << frame;
        const QPoint place = control<>(frames[method]).mapTo(&view, QPoint());
        places.insert({place.x(), place.y()});
    }
    EXPECT_EQ(places.size(), 1U) << "one place for all";
}

TEST_F(EasyWindowTest, Check1TurnsTheBoxesRoundAndComputesNothing) {
    const auto expect_help = [this](bool help) {
        EXPECT_EQ(enabled("Text2"), !help);
        EXPECT_EQ(enabled("Text3"), !help);
        EXPECT_EQ(enabled("Text4"), help);
        EXPECT_EQ(enabled("Text5"), help);
        EXPECT_EQ(enabled("Text6"), help);
    };
    expect_help(false);
    click("Check1");
    expect_help(true);
    auto& pulses = control<QLineEdit>("Text4");
    pulses.selectAll();
    QTest::keyClicks(&pulses, QStringLiteral("5000"));
    click("Check1");
    expect_help(false);
    EXPECT_EQ(text("Text2"), "1000");
    EXPECT_EQ(text("Text3"), "1000");
    EXPECT_EQ(text("Text4"), "5000");
}

TEST_F(EasyWindowTest, TheGridNamesTwelvePinsAndNoFunction) {
    const auto& grid = control<QTableView>("MSHFlexGrid1");
    ASSERT_EQ(params::grid_rows(grid), 13);
    ASSERT_EQ(params::grid_columns(grid), 2);
    const char* const pins[] = {"Pin",  "Din1",  "Din2",  "Din3",  "Din4",  "Din5", "Din6",
                                "Din7", "Dout1", "Dout2", "Dout3", "Dout4", "Dout5"};
    for (int row = 0; row < 13; ++row) {
        EXPECT_EQ(params::grid_text(grid, row, 0).toStdString(), pins[row]);
        EXPECT_EQ(params::grid_text(grid, row, 1).toStdString(), row == 0 ? "Function" : "");
    }
}

TEST_F(EasyWindowTest, PressingTheButtonChangesNothing) {
    click("Option4");
    click("Check3");
    const auto before = everything();
    click("Command1");
    EXPECT_EQ(everything(), before) << "on the form";
    EXPECT_TRUE(sent().empty()) << "on the drive";
}

TEST_F(EasyWindowTest, WorksWithNoDriveConnected) {
    port.close();
    ASSERT_FALSE(port.is_open());
    pick("Combo1", 1);
    EXPECT_TRUE(shown("Frame4"));
    pick("Combo1", 0);
    click("Check1");
    EXPECT_TRUE(enabled("Text4"));
    click("Option7");
    EXPECT_EQ(text("Option7"), "on");
    click("Command1");
    EXPECT_FALSE(port.is_open());
}

TEST_F(EasyWindowTest, NothingThatIsDoneReachesTheDrive) {
    for (int method = 0; method < 4; ++method)
        pick("Combo1", method);
    pick("Combo1", 0);
    pick("Combo2", 2);
    for (const char* name : {"Check1", "Check2", "Check3", "Option8", "Option7", "Option4",
                             "Option3", "Option6", "Option5", "Command1"})
        click(name);
    EXPECT_TRUE(sent().empty());
}

TEST_F(EasyWindowTest, TheOptionsOfAFrameExcludeOneAnother) {
    click("Option8");
    click("Option3");
    EXPECT_EQ(text("Option8"), "on") << "another frame";
    click("Option7");
    EXPECT_EQ(text("Option8"), "off");
    EXPECT_EQ(text("Option3"), "on");
}

TEST_F(EasyWindowTest, ItSaysWhatItIs) {
    EXPECT_EQ(text("LabelQ"),
              "This page is a guide only: it reads nothing from the drive and writes nothing to "
              "it. The real settings are under Motor Settings, Control Modes and Digital IO "
              "Functions.");
    EXPECT_EQ(control<>("Command1").toolTip().toStdString(),
              "This button has no action: the page is a guide only");
}

TEST_F(EasyWindowTest, FitsAndCutsNothing) {
    const char* const names[] = {"pulse", "analog", "communication", "table"};
    for (const Language each : {Language::kEnglish, Language::kChinese}) {
        walk(each);
        // Twice: the bar of the language before has its width in the first answer.
        for (int round = 0; round < 2; ++round) {
            view.resize(view.sizeHint());
            QApplication::processEvents();
        }
        expect_fits_small_screen();
        EXPECT_LE(view.sizeHint().height(), 560);
        const auto* scrolled = view.findChild<QScrollArea*>();
        EXPECT_FALSE(scrolled->verticalScrollBar()->isVisible()) << "there is room for all";
        for (int method = 0; method < 4; ++method) {
            pick("Combo1", method);
            QApplication::processEvents();
            expect_texts_fit();
            keep_picture((std::string("easy_") + names[method] +
                          (each == Language::kEnglish ? "_en" : "_zh"))
                             .c_str());
        }
    }
}

TEST_F(EasyWindowTest, TheTabKeyGoesThroughThePageInItsOrder) {
    control<>("Text1").setFocus();
    std::vector<std::string> passed{focus()};
    for (int step = 0; step < 40 && passed.back() != "Command1"; ++step) {
        QTest::keyClick(view.focusWidget(), Qt::Key_Tab);
        passed.push_back(focus());
    }
    EXPECT_EQ(passed, (std::vector<std::string>{"Text1", "Combo1", "Text2", "Text3", "Combo2",
                                                "Check1", "Option8", "Option3", "Check3", "Check2",
                                                "MSHFlexGrid1", "Command1"}));
}

TEST_F(EasyWindowTest, OnALargeDeskThePageStaysTogether) {
    view.resize(1560, 800);
    QApplication::processEvents();
    keep_picture("easy_large");
    const auto right_of = [this](const char* name) {
        const QWidget& each = control<>(name);
        return each.mapTo(&view, QPoint(each.width(), 0)).x();
    };
    EXPECT_LT(right_of("Command1"), 1000);
    const QWidget& grid = control<>("MSHFlexGrid1");
    EXPECT_EQ(grid.height(), grid.sizeHint().height()) << "no empty strip below the last pin";
    const QWidget& button = control<>("Command1");
    EXPECT_LT(button.mapTo(&view, QPoint()).y(), 560) << "nor a button far below the page";
}

TEST_F(EasyWindowTest, WhatDoesNotFitInHeightCanBeScrolled) {
    view.resize(view.sizeHint().width(), 420);
    QApplication::processEvents();
    const auto* scrolled = view.findChild<QScrollArea*>();
    EXPECT_TRUE(scrolled->verticalScrollBar()->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([scrolled] {
        return scrolled->viewport()->width() >= scrolled->widget()->minimumSizeHint().width();
    })) << "nothing is cut off";
}

}  // namespace
}  // namespace servo::tools
