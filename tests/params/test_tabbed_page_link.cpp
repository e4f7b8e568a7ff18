// The pages of tabs on a line, in virtual time.
#include <gtest/gtest.h>

#include <algorithm>

#include "params/tabbed_page.h"
#include "params/test_page_support.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::params {
namespace {

using namespace std::chrono_literals;

struct TabsOnTheLine : testing::Test, servo::test::VirtualBench {
    test::Bench names;
    servo::test::FakeDrive drive{time, line};
    TabbedPage page{
        kTabbedPageTable[0],
        {names.dictionary, values.operands, names.language,
         [this](dictionary::WireKey key, std::int32_t value) { engine.sendata2(key, value, 0); }}};

    enum : int { kSecond = 1, kThird = 2 };  // tabs

    TabsOnTheLine() {
        put("TPDO2.ini", "606300\r\n607A00\r\n");  // a live row, a static one
        put("TPDO3.ini", "608600\r\n60FF00\r\n");
        page.load(folder.path());
        engine.add_window(page);
        engine.add_poll_window(page);
        drive.add(0x60630004, 5);
        drive.add(0x607A0004, 70);
        drive.add(0x60860002, 0);
        drive.add(0x60FF0004, 0);
        page.select_tab(kSecond);
        page.set_visible(true);
    }

    void put(const std::string& file, const std::string& lines) const {
        folder.put("sys/" + file, "title\r\nheading\r\n" + lines);
    }
    void move_to(std::int64_t position) { drive.objects.at(0x606300).value = position; }
    std::string value(int tab, int row) const { return page.grid(tab).row(row).value; }
    bool shows(int tab, int row, const std::string& text) {
        return run_until([&] { return value(tab, row) == text; }, 20s);
    }
    // Requests for an object so far.
    long asked(dictionary::Identity object) const {
        return std::count_if(drive.requests.begin(), drive.requests.end(),
                             [&](const auto& request) {
                                 const link::Payload& p = request.payload;
                                 return (p[2] << 16 | p[1] << 8 | p[3]) == object;
                             });
    }
};

TEST_F(TabsOnTheLine, AValueReadOnTab2StaysVisibleAndIsRefreshedOnlyWhileTab2IsActive) {
    open_link();
    ASSERT_TRUE(shows(kSecond, 1, "5"));
    page.select_tab(kThird);
    ASSERT_TRUE(run_until([&] { return !value(kThird, 1).empty(); }));
    move_to(6);
    const long before = asked(0x606300);
    const long on_third = asked(0x608600);
    run_for(5s);
    EXPECT_EQ(value(kSecond, 1), "5") << "the last text stays";
    EXPECT_EQ(asked(0x606300), before) << "nothing asks for a row of another tab";
    EXPECT_GT(asked(0x608600), on_third) << "the active tab is being read";
    page.select_tab(kSecond);
    EXPECT_EQ(value(kSecond, 1), "5") << "visible at once when the user returns";
    EXPECT_TRUE(shows(kSecond, 1, "6"));
}

TEST_F(TabsOnTheLine, OpenedWhileNoLinkIsOpenAllValueCellsAreEmpty) {
    run_for(5s);
    for (int tab = 0; tab < kTabs; ++tab)
        for (int row = 1; row < page.grid(tab).rows(); ++row)
            EXPECT_EQ(value(tab, row), "");
    EXPECT_TRUE(drive.requests.empty());
    open_link();
    EXPECT_TRUE(shows(kSecond, 1, "5"));
}

TEST_F(TabsOnTheLine, AStaticRowOfATabIsReadWhenTheTabIsFirstShown) {
    open_link();
    ASSERT_TRUE(shows(kSecond, 2, "70"));
    EXPECT_EQ(asked(0x60FF00), 0);
    page.select_tab(kThird);
    EXPECT_TRUE(run_until([&] { return !value(kThird, 2).empty(); }));
}

TEST_F(TabsOnTheLine, AChangeOfTabInTheMiddleOfAPassMixesNothing) {
    drive.objects.at(0x608600).value = 2048;  // the whole of the drive's 15.0 A
    drive.objects.at(0x651003).value = 150;
    open_link();
    ASSERT_TRUE(shows(kSecond, 1, "5"));
    for (int i = 0; i < 200; ++i) {
        page.select_tab(i % 2 == 0 ? kThird : kSecond);
        run_ticks(1 + i % 7);
    }
    EXPECT_EQ(value(kSecond, 1), "5");
    EXPECT_EQ(value(kSecond, 2), "70");
    EXPECT_EQ(value(kThird, 1), "15.00");
    EXPECT_EQ(value(kThird, 2), "0.00");
}

TEST_F(TabsOnTheLine, AWriteGoesOutFromTheTabThatIsShown) {
    open_link();
    ASSERT_TRUE(shows(kSecond, 2, "70"));
    PageGrid& grid = page.active_grid();
    grid.set_current({2, kValue});
    ASSERT_EQ(grid.open_editor(), Editor::kText);
    static_cast<void>(grid.editor_key(kKeyEnter, "-71"));
    EXPECT_EQ(value(kSecond, 2), "-71");
    EXPECT_TRUE(run_until([&] { return drive.value(0x607A00) == 0xFFFFFFB9; }, 2s));
}

}  // namespace
}  // namespace servo::params
