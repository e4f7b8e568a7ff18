// The window `DigitalIO` through its real controls.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QPushButton>

#include "digital_io_window_bench.h"
#include "tools/digital_io_controls_view.h"

namespace servo::tools::test {
namespace {

using base::Language;

struct DigitalIOWindowTest : testing::Test, WindowIO {
    // Where SERVO_PICTURES names a folder, the window is kept there as a picture.
    void keep_picture(const char* name) {
        const QString kept_in = qEnvironmentVariable("SERVO_PICTURES");
        if (kept_in.isEmpty()) return;
        QApplication::processEvents();
        window.grab().save(kept_in + QLatin1Char('/') + QLatin1String(name) +
                           QLatin1String(".png"));
    }
};

TEST_F(DigitalIOWindowTest, EveryControlIsThereByItsName) {
    for (int row = 0; row < 15; ++row)
        for (const char* name :
             {"Text1", "Command1", "Command6", "Check1", "Check2", "Check3", "Check4"})
            EXPECT_TRUE(control(name, row).isVisible()) << name << row;
    for (const char* name : {"Command7", "Command8", "Frame1", "Frame2"})
        EXPECT_TRUE(shown(name)) << name;
    for (const char* name : {"Image1", "Image3"})
        for (int side = 0; side < 2; ++side)
            EXPECT_TRUE(control(name, side).isVisible()) << name;
    for (const char* name : {"Picture1", "Picture2", "Command2", "Command3", "Command4", "Command5",
                             "VScroll1", "VScroll2"})
        EXPECT_FALSE(shown(name)) << name;
    for (int index = 0; index < 34; ++index)
        control<QCheckBox>("checkboxdin", index);
    for (int index = 0; index < 18; ++index)
        control<QCheckBox>("checkboxdout", index);
    EXPECT_EQ(window.findChild<QWidget*>(QStringLiteral("Text1(15)")), nullptr) << "has no pin";
}

TEST_F(DigitalIOWindowTest, CaptionsFollowTheLanguageTimeAndAgain) {
    for (int round = 0; round < 2; ++round) {
        speak(Language::kChinese);
        EXPECT_EQ(window.windowTitle().toStdString(), "数字IO设置");
        EXPECT_EQ(control<QGroupBox>(QStringLiteral("Frame1")).title().toStdString(), "数字输入");
        EXPECT_EQ(control<QGroupBox>(QStringLiteral("Frame2")).title().toStdString(), "数字输出");
        const char* inputs[] = {"编号", "功能", "仿真", "有效输入", "电平", "实际输入"};
        const char* outputs[] = {"编号", "功能", "仿真", "系统输出", "电平", "有效输出"};
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(control<QLabel>("Label1", i).text().toStdString(), inputs[i]);
            EXPECT_EQ(control<QLabel>("Label2", i).text().toStdString(), outputs[i]);
        }
        EXPECT_EQ(control<QCheckBox>("checkboxdin", 0).text().toStdString(), "使能");
        speak(Language::kEnglish);
        EXPECT_EQ(window.windowTitle().toStdString(), "Digital IO Functions");
        EXPECT_EQ(control<QGroupBox>(QStringLiteral("Frame1")).title().toStdString(),
                  "Digital Input");
        const char* english[] = {"Num", "Function", "Simulate", "Internal", "Polarity", "Real"};
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(control<QLabel>("Label1", i).text().toStdString(), english[i]);
            EXPECT_EQ(control<QLabel>("Label2", i).text().toStdString(), english[i]);
        }
        EXPECT_EQ(control<QCheckBox>("checkboxdin", 0).text().toStdString(), "Enable");
        EXPECT_EQ(control<QPushButton>("Command1", 0).text().toStdString(), ">>");
        EXPECT_EQ(control<QPushButton>(QStringLiteral("Command3")).text().toStdString(), "X");
        EXPECT_EQ(control<QPushButton>(QStringLiteral("Command4")).text().toStdString(), "X");
    }
}

TEST_F(DigitalIOWindowTest, ShowsWhatTheDriveHas) {
    connect();
    EXPECT_EQ(text1(0), "Enable");
    EXPECT_EQ(text1(2), "");
    EXPECT_EQ(text1(7), "Din Vel Index2+Din Pos Index2");
    EXPECT_EQ(text1(9), "Error+Pos Reached");
    EXPECT_EQ(text1(13), "PosTable Active");
    EXPECT_TRUE(checked("Check1", 0));
    EXPECT_FALSE(checked("Check1", 4));
    EXPECT_TRUE(checked("Check2", 5));
    EXPECT_TRUE(checked("Check4", 0));
    EXPECT_FALSE(checked("Check4", 5));
    EXPECT_TRUE(checked("Check2", 10));
    EXPECT_EQ(label("LabelT"), "Live");
    keep_picture("live-en");
    speak(Language::kChinese);
    EXPECT_EQ(text1(7), "Din速度索引2+Din位置索引2");
    keep_picture("live-zh");
}

TEST_F(DigitalIOWindowTest, PicturesOfTheBoxes) {
    const auto picture = [this](const char* name, int index) {
        window.refresh_now();
        return control<LampBox>(name, index).picture().toStdString();
    };
    EXPECT_EQ(picture("Check1", 0), "box_unknown");
    EXPECT_EQ(picture("Check2", 0), "lamp_unknown");
    drive.objects[0x201001].value = 0x02;
    connect();
    EXPECT_EQ(picture("Check1", 0), "box_ticked");
    EXPECT_EQ(picture("Check1", 4), "box_clear");
    EXPECT_EQ(picture("Check2", 0), "lamp_on");
    EXPECT_EQ(picture("Check4", 1), "lamp_off");
    EXPECT_EQ(picture("Check3", 1), "box_forced");
    EXPECT_EQ(picture("Check3", 0), "box_clear");
}

TEST_F(DigitalIOWindowTest, AClickOnPolarityOrSimulationReachesTheDrive) {
    connect();
    click("Check1", 4);
    EXPECT_TRUE(checked("Check1", 4)) << "at once";
    click("Check3", 12);
    run_turn();
    EXPECT_EQ(drive.value(0x201002), 0xDF);
    EXPECT_EQ(drive.value(0x20100D), 0x10);
    EXPECT_TRUE(checked("Check1", 4));
    EXPECT_TRUE(checked("Check3", 12));
}

TEST_F(DigitalIOWindowTest, TheOtherTwoColumnsAreForLookingOnly) {
    connect();
    click("Check2", 0);
    click("Check4", 9);
    run_turn();
    EXPECT_TRUE(writes().empty());
    EXPECT_TRUE(checked("Check2", 0));
    EXPECT_FALSE(checked("Check4", 9));
}

TEST_F(DigitalIOWindowTest, ColumnControlsFlipTheirColumn) {
    connect();
    click("Image1", 0);
    click("Image3", 1);
    run_turn();
    EXPECT_EQ(drive.value(0x201002), 0x30);
    EXPECT_EQ(drive.value(0x20100D), 0xFF);
    EXPECT_TRUE(checked("Check3", 8));
}

TEST_F(DigitalIOWindowTest, BeforeTheColumnIsKnownItCannotBeClicked) {
    EXPECT_FALSE(control("Check1", 0).isEnabled());
    EXPECT_FALSE(control("Image1", 0).isEnabled());
    connect();
    window.refresh_now();
    EXPECT_TRUE(control("Check1", 0).isEnabled());
    EXPECT_TRUE(control("Image3", 1).isEnabled());
    close_link();
    window.refresh_now();
    EXPECT_FALSE(control("Check1", 0).isEnabled());
    EXPECT_FALSE(control("Image3", 1).isEnabled());
    EXPECT_TRUE(checked("Check1", 0)) << "what was known last stays to be seen";
    run_for(std::chrono::seconds(12));
    EXPECT_TRUE(label("LabelT").starts_with("The link is closed: states of 12 s ago"))
        << label("LabelT");
    keep_picture("closed-en");
}

TEST_F(DigitalIOWindowTest, TheChooserOpensOnItsRowAndClosesAgain) {
    connect();
    click("Command1", 7);
    EXPECT_TRUE(shown("Picture1"));
    EXPECT_FALSE(shown("Picture2"));
    EXPECT_EQ(label("LabelA"), "Input 8");
    EXPECT_TRUE(checked("checkboxdin", 15));
    EXPECT_TRUE(checked("checkboxdin", 16));
    EXPECT_FALSE(checked("checkboxdin", 0));
    EXPECT_EQ(label("LabelC"), "Writes 0x8003");
    const auto button = [this](int row) {
        return control("Command1", row).palette().color(QPalette::Button);
    };
    EXPECT_NE(button(7), button(6)) << "the colour marks the open row";
    for (int tick = 0; tick < 6; ++tick)
        form.Timer1_Timer();
    window.refresh_now();
    keep_picture("chooser-en");
    speak(Language::kChinese);
    keep_picture("chooser-zh");
    click("Command1", 7);
    EXPECT_FALSE(shown("Picture1"));
    EXPECT_EQ(button(7), button(6));
    EXPECT_TRUE(writes().empty());
}

TEST_F(DigitalIOWindowTest, AnOutputHasTheOtherChooser) {
    connect();
    click("Command1", 0);
    click("Command1", 9);
    EXPECT_FALSE(shown("Picture1"));
    EXPECT_TRUE(shown("Picture2"));
    EXPECT_EQ(label("LabelB"), "Output 2");
    EXPECT_TRUE(checked("checkboxdout", 1));
    EXPECT_TRUE(checked("checkboxdout", 2));
    keep_picture("outputs-en");
    click("Command4");
    EXPECT_FALSE(shown("Picture2"));
}

TEST_F(DigitalIOWindowTest, TicksAndOkReachTheDrive) {
    connect();
    click("Command1", 2);
    click("checkboxdin", 27);
    click("checkboxdin", 33);
    EXPECT_EQ(label("LabelC"), "Writes 0x9041");
    click("Command2");
    EXPECT_FALSE(shown("Picture1"));
    run_turn();
    EXPECT_EQ(drive.value(0x201005), 0x9041);
    EXPECT_EQ(text1(2), "PosTable Idx0+Fast Capture2");
    click("Command1", 8);
    click("checkboxdout", 0);
    click("checkboxdout", 17);
    click("Command5");
    run_turn();
    EXPECT_EQ(drive.value(0x20100F), 0x8004);
}

TEST_F(DigitalIOWindowTest, TwoGroupsAreRefusedAndTheChooserStaysOpen) {
    connect();
    click("Command1", 0);
    click("checkboxdin", 20);
    EXPECT_EQ(label("LabelC"), "Functions of two groups can't share a pin");
    click("Command2");
    EXPECT_EQ(notice.boxes.size(), 1U);
    EXPECT_TRUE(shown("Picture1"));
    click("Command3");
    EXPECT_FALSE(shown("Picture1"));
    EXPECT_TRUE(writes().empty());
}

TEST_F(DigitalIOWindowTest, ClearingByRowAndBySide) {
    connect();
    click("Command6", 4);
    click("Command8");
    run_turn();
    run_turn();
    EXPECT_EQ(text1(4), "");
    EXPECT_EQ(text1(9), "");
    EXPECT_EQ(text1(0), "Enable");
    click("Command7");
    run_turn();
    EXPECT_EQ(text1(0), "");
}

TEST_F(DigitalIOWindowTest, TheChooserBlinksAndComesToRest) {
    connect();
    click("Command1", 0);
    const QWidget& picture = control(QStringLiteral("Picture1"));
    const auto colour = [&picture] { return picture.palette().color(QPalette::Window); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return colour() == QColor(224, 224, 224); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !form.data().Timer1_enabled; }));
    EXPECT_EQ(colour(), QColor(209, 216, 239));
}

TEST_F(DigitalIOWindowTest, ForcedPinsAreNamedUntilTheSimulationEnds) {
    connect();
    EXPECT_FALSE(shown("CommandE"));
    click("Check3", 4);
    click("Check3", 9);
    EXPECT_TRUE(shown("CommandE"));
    EXPECT_EQ(label("LabelS"), "Simulated: Input 5 (P Limit +), Output 2 (Error+Pos Reached)");
    EXPECT_EQ(label("LabelW"),
              "Input 5: the limit switch P Limit + is simulated and protects nothing");
    keep_picture("simulated-en");
    click("CommandE");
    EXPECT_FALSE(shown("CommandE"));
    run_turn();
    EXPECT_EQ(drive.value(0x201001), 0);
    EXPECT_EQ(drive.value(0x20100D), 0);
    EXPECT_FALSE(shown("LabelW"));
}

TEST_F(DigitalIOWindowTest, TipsTellObjectAndCode) {
    connect();
    window.refresh_now();
    EXPECT_EQ(control("Text1", 0).toolTip().toStdString(), "Input 1: Enable\n2010:03 = 0x0001");
    EXPECT_EQ(control("checkboxdin", 15).toolTip().toStdString(),
              "Din Vel Index2\nCode 0x8001, group 2");
    EXPECT_EQ(control("Command1", 2).toolTip().toStdString(), "Choose the functions of Input 3");
    EXPECT_EQ(control("Check3", 2).accessibleName().toStdString(), "Simulate, Input 3");
    speak(Language::kChinese);
    EXPECT_EQ(control("Command1", 2).toolTip().toStdString(), "选择输入 3的功能");
    EXPECT_EQ(control("Check3", 2).accessibleName().toStdString(), "输入 3：仿真");
}

TEST_F(DigitalIOWindowTest, NamesOfTheFileAreTextAndNoMarkup) {
    put_list(folder, "[DigitIN]\n<b>x</b> & y,<b>x</b> & y,0001\n");
    form.Form_Load(folder.path());
    DigitalIOWindow other(form, variant);
    auto* box = other.findChild<QCheckBox*>(QStringLiteral("checkboxdin(0)"));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text().toStdString(), "<b>x</b> && y");
    EXPECT_TRUE(box->toolTip().contains(QLatin1String("&lt;b&gt;x&lt;/b&gt;")));
}

TEST_F(DigitalIOWindowTest, ALongListScrollsInsideOfItsChooser) {
    std::string list = "[DigitIN]\n";
    for (int i = 0; i < 111; ++i)
        list += "a,Function number " + std::to_string(i) + ",0001\n";
    put_list(folder, list);
    form.Form_Load(folder.path());
    variant = dictionary::Variant::kReduced;
    DigitalIOWindow other(form, variant);
    other.resize(990, 480);
    other.show();
    form.Command1_Click(0);
    QApplication::processEvents();
    auto* bar = other.findChild<QScrollBar*>(QStringLiteral("VScroll1"));
    ASSERT_NE(bar, nullptr);
    EXPECT_GT(bar->maximum(), 0);
    auto* box = other.findChild<QCheckBox*>(QStringLiteral("checkboxdin(16)"));
    const int before = box->mapTo(&other, QPoint()).y();
    bar->setValue(bar->maximum());
    QApplication::processEvents();
    EXPECT_LT(box->mapTo(&other, QPoint()).y(), before) << "the rows move";
}

// --- Layouts

TEST_F(DigitalIOWindowTest, TheFullProductHasInputsAboveOutputs) {
    const QRect inputs = control(QStringLiteral("Frame1")).geometry();
    const QRect outputs = control(QStringLiteral("Frame2")).geometry();
    EXPECT_LT(inputs.bottom(), outputs.top());
    EXPECT_EQ(inputs.left(), outputs.left());
}

TEST_F(DigitalIOWindowTest, TheReducedProductHasThemSideBySide) {
    connect();
    variant = dictionary::Variant::kReduced;
    speak(Language::kEnglish);
    const QRect inputs = control(QStringLiteral("Frame1")).geometry();
    const QRect outputs = control(QStringLiteral("Frame2")).geometry();
    EXPECT_LT(inputs.right(), outputs.left());
    EXPECT_EQ(inputs.top(), outputs.top());
    click("Command1", 0);
    EXPECT_TRUE(shown("Picture1"));
    QApplication::processEvents();
    EXPECT_GT(control(QStringLiteral("Picture1")).mapTo(&window, QPoint()).y(),
              control(QStringLiteral("Frame1")).geometry().bottom());
    keep_picture("reduced-en");
    speak(Language::kChinese);
    keep_picture("reduced-zh");
}

TEST_F(DigitalIOWindowTest, FitsASmallScreenInBothVariantsAndLanguages) {
    connect();
    drive.objects[0x201001].value = 0x10;
    run_turn();
    for (const auto each : {dictionary::Variant::kAllItems, dictionary::Variant::kReduced})
        for (const auto spoken : {Language::kEnglish, Language::kChinese}) {
            variant = each;
            speak(spoken);
            QApplication::processEvents();
            const QSize least = window.minimumSizeHint();
            EXPECT_LE(least.width(), 990) << static_cast<int>(each) << static_cast<int>(spoken);
            EXPECT_LE(least.height(), 580) << static_cast<int>(each) << static_cast<int>(spoken);
        }
}

TEST_F(DigitalIOWindowTest, ALargeScreenGivesTheRoomToTheFunctions) {
    connect();
    const int before = control("Text1", 0).width();
    window.resize(1500, 850);
    window.refresh_now();
    QApplication::processEvents();
    EXPECT_GT(control("Text1", 0).width(), before);
    keep_picture("large-en");
}

}  // namespace
}  // namespace servo::tools::test
