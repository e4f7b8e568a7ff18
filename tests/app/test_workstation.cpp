#include <gtest/gtest.h>

#include <algorithm>

#include "app/late_ports.h"
#include "app/menu_table.h"
#include "shell_bench.h"

namespace servo::app {
namespace {

using base::Language;
using test::ShellBench;
using Box = std::pair<std::string, std::string>;

// Notes what start-up asks of the screen, and how far the rest was at that moment.
class RecordingScreen final : public Screen {
  public:
    explicit RecordingScreen(Workstation& workstation) : workstation_(workstation) {
        workstation_.screen = this;
    }
    void show_background() override {
        calls.emplace_back("background");
        timer_ready = workstation_.cTmr.interval() == 3 && !workstation_.cTmr.enabled();
        windows_listed = std::ranges::none_of(workstation_.engine.all_windows,
                                              [](auto* window) { return window == nullptr; });
    }
    void apply_variant() override { calls.emplace_back("variant"); }
    void show_window(link::Window& window) override { calls.push_back("show " + window.name()); }
    void hide_window(link::Window& window) override { calls.push_back("hide " + window.name()); }
    void apply_language() override { calls.emplace_back("language"); }
    void unload_all() override { calls.emplace_back("unload"); }

    std::vector<std::string> calls;
    bool timer_ready = false;
    bool windows_listed = false;

  private:
    Workstation& workstation_;
};

TEST(StartUp, RunsWithoutAWordWhenEverythingIsThere) {
    ShellBench bench;
    EXPECT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.workstation.find_page("Basic")->rows(), 4);
    EXPECT_TRUE(bench.workstation.modbus_list.present);
}

TEST(StartUp, TheScreenIsAskedInOrderAfterListsAndTimer) {
    ShellBench bench;
    RecordingScreen screen(bench.workstation);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"background", "variant"}));
    EXPECT_TRUE(screen.timer_ready);
    EXPECT_TRUE(screen.windows_listed);
}

TEST(StartUp, WindowListsHaveTheirFixedOrder) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    const auto& all = bench.workstation.engine.all_windows;
    ASSERT_EQ(all.size(), 40U);
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i]->name(), link::kAllWindowNames[i]);
        EXPECT_EQ(all[i]->meindex, static_cast<int>(i));
        EXPECT_TRUE(all[i]->must_fresh);
        EXPECT_FALSE(all[i]->visible());
    }
    const auto& polled = bench.workstation.engine.poll_windows;
    ASSERT_EQ(polled.size(), 29U);
    for (std::size_t i = 0; i < polled.size(); ++i)
        EXPECT_EQ(polled[i]->name(), link::kPollWindowNames[i]);
}

TEST(StartUp, AMissingPageFileIsToldAndThePageStaysEmpty) {
    ShellBench bench;
    bench.folder.remove("sys/VelocityLoop.ini");
    EXPECT_TRUE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_TRUE(bench.notice.boxes[0].second.starts_with("Missing file "));
    EXPECT_NE(bench.notice.boxes[0].second.find("VelocityLoop.ini"), std::string::npos);
    EXPECT_EQ(bench.workstation.find_page("VLoop")->rows(), 1);
    EXPECT_EQ(bench.workstation.find_page("CLoop")->rows(), 4);
}

TEST(StartUp, MissingFilesAreToldInTheOrderOfLoading) {
    ShellBench bench;
    bench.folder.remove("sys/ErrorHistory.ini");
    bench.folder.remove("sys/PositionLoop.ini");
    bench.folder.remove("sys/CurrentLoop.ini");
    bench.folder.remove("modbus.txt");
    EXPECT_TRUE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 4U);
    EXPECT_NE(bench.notice.boxes[0].second.find("PositionLoop"), std::string::npos);
    EXPECT_NE(bench.notice.boxes[1].second.find("CurrentLoop"), std::string::npos);
    EXPECT_NE(bench.notice.boxes[2].second.find("ErrorHistory"), std::string::npos);
    EXPECT_EQ(bench.notice.boxes[3], Box("Attention", "Missing the Modbus address file!"));
}

TEST(StartUp, AMissingDictionaryEndsTheProgramInEnglish) {
    ShellBench bench;
    bench.folder.remove("qorlan.dat");
    bench.folder.remove("modbus.txt");
    bench.workstation.language = Language::kChinese;
    RecordingScreen screen(bench.workstation);
    EXPECT_FALSE(MDIForm_Load(bench.workstation));
    ASSERT_EQ(bench.notice.boxes.size(), 2U);
    EXPECT_EQ(bench.notice.boxes[0].first, "Attention");
    EXPECT_EQ(bench.notice.boxes[1], Box("Notice", "File Missing,Program is about to quit"));
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"background", "unload"}));
}

TEST(StartUp, TheVariantFollowsTheDictionaryFile) {
    ShellBench all;
    ASSERT_TRUE(MDIForm_Load(all.workstation));
    EXPECT_EQ(main_title(all.workstation.Tavro_Nevra_Other_mode), "QRL Servo");
    ShellBench reduced;
    reduced.folder.write("Servo.dat", reduced.folder.read("qorlan.dat"));
    ASSERT_TRUE(MDIForm_Load(reduced.workstation));
    EXPECT_EQ(main_title(reduced.workstation.Tavro_Nevra_Other_mode), "ZARN Configurator");
}

TEST(StartUp, AStoredChineseStillStartsInEnglishWithTahoma) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(bench.workstation.language, Language::kEnglish);
    EXPECT_EQ(bench.workstation.font_name, "Tahoma");
    EXPECT_EQ(bench.workstation.communication.state().Command1, "OPEN");
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("lang=0"), std::string::npos);
}

TEST(StartUp, TheFirstActivationHidesTheScopeAndWritesTheLanguageBack) {
    ShellBench bench;
    RecordingScreen screen(bench.workstation);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    bench.window("Scope").set_visible(true);
    screen.calls.clear();
    MDIForm_Activate(bench.workstation);
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"hide Scope", "language"}));
    EXPECT_FALSE(bench.window("Scope").visible());
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("lang=1"), std::string::npos);
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("comid=COM1"), std::string::npos);
}

TEST(StartUp, TheLinkPictureIsClosedAndTheTimerOff) {
    ShellBench bench;
    bench.timer.set_interval(20);
    bench.timer.set_enabled(true);
    bench.workstation.engine.pictures.set_button4("CommOKpic");
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(bench.workstation.engine.pictures.button4(), "Commpic");
    EXPECT_EQ(bench.timer.interval(), 3);
    EXPECT_FALSE(bench.timer.enabled());
}

TEST(Language, AClickPersistsTheChoiceAndSwapsTheNamesOnly) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    params::Page& page = *bench.workstation.find_page("Basic");
    page.set_text(1, "3");
    EXPECT_EQ(page.grid().cell(1, params::kName), "Operation mode");
    language_click(bench.workstation, Language::kChinese);
    EXPECT_EQ(page.grid().cell(1, params::kName), "工作模式");
    EXPECT_EQ(page.grid().cell(1, params::kValue), "3");
    EXPECT_EQ(bench.workstation.font_name, "宋体");
    EXPECT_EQ(bench.workstation.communication.state().Command1, "打开");
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("lang=0"), std::string::npos);
    language_click(bench.workstation, Language::kEnglish);
    EXPECT_EQ(page.grid().cell(1, params::kName), "Operation mode");
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("lang=1"), std::string::npos);
}

TEST(Language, AClickTwiceChangesNothing) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    language_click(bench.workstation, Language::kChinese);
    const std::string before = bench.folder.read("sys/sys.ini");
    language_click(bench.workstation, Language::kChinese);
    EXPECT_EQ(bench.folder.read("sys/sys.ini"), before);
    EXPECT_EQ(bench.workstation.find_page("Basic")->grid().cell(1, params::kName), "工作模式");
}

TEST(Language, SwitchingToChineseAndRestartingComesUpInEnglishAndWritesItBack) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    language_click(bench.workstation, Language::kChinese);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(bench.workstation.language, Language::kEnglish);
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("lang=0"), std::string::npos);
    MDIForm_Activate(bench.workstation);
    EXPECT_NE(bench.folder.read("sys/sys.ini").find("lang=1"), std::string::npos);
}

TEST(Language, AFileThatCannotBeWrittenIsIgnored) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    std::filesystem::remove_all(bench.folder.path() / "sys");
    language_click(bench.workstation, Language::kChinese);
    EXPECT_EQ(bench.workstation.language, Language::kChinese);
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(OpenPage, ShowsTheWindowAndSendsThePollerThere) {
    ShellBench bench;
    RecordingScreen screen(bench.workstation);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    screen.calls.clear();
    auto& state = bench.workstation.engine.state;
    state.page = 7;
    state.sub_Pointer = 5;
    state.Com_Change = 0;
    open_page(bench.workstation, bench.window("VLoop"));
    EXPECT_TRUE(bench.window("VLoop").visible());
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"show VLoop"}));
    EXPECT_EQ(state.page, 0);
    EXPECT_EQ(state.sub_Pointer, 0);
    EXPECT_EQ(state.Com_Change, 1);
}

TEST(OpenPage, WhileABatchRunsTheWheelIsNotDisturbed) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    auto& state = bench.workstation.engine.state;
    state.batch_mode = 1;
    state.page = 7;
    state.sub_Pointer = 5;
    state.Com_Change = 0;
    open_page(bench.workstation, bench.window("VLoop"));
    EXPECT_TRUE(bench.window("VLoop").visible());
    EXPECT_EQ(state.page, 7);
    EXPECT_EQ(state.sub_Pointer, 5);
    EXPECT_EQ(state.Com_Change, 0);
}

TEST(OpenPage, WhileTheScopeAcquiresTheWheelIsNotDisturbed) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    servo::test::FakeScope scope;
    scope.sampling = true;
    bench.workstation.engine.set_scope(&scope);
    open_page(bench.workstation, bench.window("Basic"));
    EXPECT_EQ(bench.workstation.engine.state.Com_Change, 0);
    scope.sampling = false;
    open_page(bench.workstation, bench.window("Basic"));
    EXPECT_EQ(bench.workstation.engine.state.Com_Change, 1);
}

TEST(CloseWindow, HidesAndKeepsTheRows) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    open_page(bench.workstation, bench.window("Basic"));
    bench.workstation.find_page("Basic")->set_text(2, "42");
    close_window(bench.workstation, bench.window("Basic"));
    EXPECT_FALSE(bench.window("Basic").visible());
    EXPECT_EQ(bench.workstation.find_page("Basic")->grid().cell(2, params::kValue), "42");
}

TEST(CloseWindow, ARunOfTheScopeOutlivesItsWindow) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    Workstation& workstation = bench.workstation;
    open_page(workstation, bench.window("Scope"));
    EXPECT_TRUE(workstation.scope.acquisition().window_visible());
    for (int state = 1; state <= 6; ++state) {
        workstation.engine.state.scopeState = state;
        close_window(workstation, bench.window("Scope"));
        EXPECT_FALSE(workstation.scope.acquisition().window_visible()) << state;
        EXPECT_EQ(workstation.engine.state.scopeState, state);
        open_page(workstation, bench.window("Scope"));
        EXPECT_TRUE(workstation.scope.acquisition().window_visible()) << state;
        EXPECT_EQ(workstation.engine.state.scopeState, state);
    }
}

TEST(PopUp, DeletingTheLastRowLeavesOnlyTheHeader) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    params::Page& page = *bench.workstation.find_page("Basic");
    bench.workstation.popup_window = &page;
    bench.workstation.popup_grid = &page.grid();
    bench.workstation.popup_row = 1;
    for (int rows = page.rows(); rows > 1; --rows)
        deling_click(bench.workstation);
    EXPECT_EQ(page.rows(), 1);
    EXPECT_EQ(page.grid().cell(0, params::kName), "Name");
}

TEST(PopUp, DeletingRenumbersTheRowsBelowAndKeepsTheStar) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    params::Page& page = *bench.workstation.find_page("Basic");
    EXPECT_EQ(page.grid().cell(3, params::kNumber), "2*");
    bench.workstation.popup_grid = &page.grid();
    bench.workstation.popup_row = 1;
    deling_click(bench.workstation);
    EXPECT_EQ(page.grid().cell(1, params::kNumber), "0");
    EXPECT_EQ(page.grid().cell(2, params::kNumber), "1*");
}

TEST(Quit, UnloadsAtOnceWithoutAQuestion) {
    ShellBench bench;
    RecordingScreen screen(bench.workstation);
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    screen.calls.clear();
    bench.workstation.communication.Command1_Click();
    ASSERT_TRUE(bench.timer.enabled());
    bench.workstation.engine.state.batch_mode = 1;
    quit(bench.workstation);
    EXPECT_FALSE(bench.timer.enabled());
    EXPECT_FALSE(bench.port.is_open());
    EXPECT_EQ(screen.calls, (std::vector<std::string>{"unload"}));
    EXPECT_TRUE(bench.notice.boxes.empty());
}

TEST(Link, ATimeOutClosesItThroughTheDialog) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    bench.workstation.communication.communication();
    ASSERT_TRUE(bench.timer.enabled());
    for (int tick = 0; tick < 2 * link::kMissLimit; ++tick)
        bench.workstation.engine.cTmr_Timer();
    EXPECT_FALSE(bench.timer.enabled());
    EXPECT_FALSE(bench.workstation.communication.link_open());
    EXPECT_EQ(bench.workstation.engine.pictures.button4(), "Commerrorpic");
}

TEST(LatePorts, AreNoneUntilTheyBegin) {
    test::PortList machine;
    LatePorts ports(machine);
    std::vector<link::PortDirectory::Entry> entries{{"COM9", "", ""}};
    EXPECT_TRUE(ports.list(entries));
    EXPECT_TRUE(entries.empty());
    ports.begin();
    EXPECT_TRUE(ports.list(entries));
    EXPECT_EQ(entries.size(), 2U);
}

TEST(StartUp, TakesADictionaryThatWasReadBefore) {
    ShellBench bench;
    std::filesystem::create_directories(bench.folder.path() / "elsewhere" / "sys");
    bench.folder.write("elsewhere/sys/DigitIOSettings.ini",
                       bench.folder.read("sys/DigitIOSettings.ini"));
    Workstation workstation{Surroundings{
        bench.folder.path() / "elsewhere", bench.notice, bench.port, bench.ports, bench.clock,
        bench.timer,
        [&bench](dictionary::Store& store) { return store.open_dat(bench.folder.path()); }}};
    EXPECT_TRUE(MDIForm_Load(workstation));
    EXPECT_EQ(workstation.dictionary.count(), 13);
}

TEST(FindWindow, TakesNamesWithoutRegardToCase) {
    ShellBench bench;
    ASSERT_TRUE(MDIForm_Load(bench.workstation));
    EXPECT_EQ(&bench.window("ECANset"), &bench.window("ECANSet"));
    EXPECT_EQ(bench.workstation.find_window("Nothing"), nullptr);
    EXPECT_EQ(bench.workstation.find_page("About"), nullptr);
}

TEST(FindWindow, EveryWindowOfTheMenusIsInTheList) {
    ShellBench bench;
    for (const MenuItem& item : menu_table()) {
        if (item.kind == MenuKind::kOpenPage) {
            EXPECT_NE(bench.workstation.find_window(item.window), nullptr) << item.item;
        }
    }
}

}  // namespace
}  // namespace servo::app
