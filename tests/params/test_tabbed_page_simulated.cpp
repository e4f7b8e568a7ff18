// The PDO set-up through the tabs, beside the simulated drive with its rules on mappings.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "params/tabbed_page.h"
#include "support/sim_bench.h"
#include "support/virtual_bench.h"

namespace servo::params {
namespace {

using namespace std::chrono_literals;

class TabsSimulated : public ::testing::Test, protected servo::test::VirtualBench {
  protected:
    // Rows of the shipped file of a transmit PDO.
    enum : int { kCobId = 1, kCount = 6, kFirstMapping = 7, kSecondMapping = 8 };
    // As the program has it, the place in the list of all windows lies behind the last one whose
    // mark a pass takes away, so every row of these windows is read again and again.
    static constexpr std::size_t kPlace = 32;

    TabsSimulated() {
        dictionary.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        simulated = std::make_unique<servo::test::SimDriveOnLine>(time, line, dictionary, options);
        for (std::size_t i = 0; i < kPlace; ++i) {
            before.push_back(std::make_unique<link::Window>("before"));
            engine.add_window(*before.back());
        }
        engine.add_window(page);
        engine.add_poll_window(page);
        EXPECT_TRUE(page.load(SERVO_BIN_DIR).empty());
        page.set_visible(true);
        open_link();
        EXPECT_TRUE(shows(kSecondMapping, "00000000"));
    }
    std::string value(int row) const { return page.active_grid().row(row).value; }
    bool shows(int row, const std::string& text) {
        return run_until([&] { return value(row) == text; }, 10s);
    }
    void type(int row, std::string_view text) {
        PageGrid& grid = page.active_grid();
        grid.set_current({row, kValue});
        ASSERT_NE(grid.open_editor(), Editor::kNone);
        static_cast<void>(grid.editor_key(kKeyEnter, text));
        ASSERT_EQ(value(row), text) << "as typed, until the next read";
        run_for(50ms);
    }
    std::int64_t held(link::Identity object) {
        return simulated->drive().value(object).value_or(-1);
    }

    dictionary::Store dictionary;
    base::Language language = base::Language::kEnglish;
    std::unique_ptr<servo::test::SimDriveOnLine> simulated;
    std::vector<std::unique_ptr<link::Window>> before;
    TabbedPage page{
        kTabbedPageTable[0],
        {dictionary, values.operands, language,
         [this](dictionary::WireKey key, std::int32_t value) { engine.sendata2(key, value, 0); }}};
};

TEST_F(TabsSimulated, AMappingIsChangedInTheOrderThatTheHintTells) {
    ASSERT_EQ(value(kCobId), "40000181");
    type(kCobId, "C0000181");
    type(kCount, "0");
    type(kFirstMapping, "60640020");
    type(kSecondMapping, "606C0020");
    type(kCount, "2");
    type(kCobId, "40000181");
    run_for(3s);
    EXPECT_EQ(value(kCobId), "40000181");
    EXPECT_EQ(value(kCount), "2");
    EXPECT_EQ(value(kFirstMapping), "60640020");
    EXPECT_EQ(value(kSecondMapping), "606C0020");
    EXPECT_EQ(held(0x1A0002), 0x606C0020);
}

TEST_F(TabsSimulated, AMappingThatTheDriveRefusesGoesOutOfItsCellAgain) {
    const std::string mapped = value(kFirstMapping);
    type(kFirstMapping, "60640020");
    EXPECT_TRUE(shows(kFirstMapping, mapped)) << "the PDO is on";
    type(kCobId, "C0000181");
    type(kFirstMapping, "60640020");
    EXPECT_TRUE(shows(kFirstMapping, mapped)) << "the number is not 0";
    type(kCount, "0");
    type(kFirstMapping, "60640010");
    EXPECT_TRUE(shows(kFirstMapping, mapped)) << "the object has 32 bits";
}

TEST_F(TabsSimulated, TheTabsBehindAskNothingAndKeepTheirText) {
    page.select_tab(3);
    ASSERT_TRUE(shows(kFirstMapping, "60410010"));
    page.select_tab(0);
    engine.sendata2(0x18030104, static_cast<std::int32_t>(0xC0000481), 0);
    run_for(2s);
    EXPECT_EQ(held(0x180301), 0xC0000481);
    EXPECT_EQ(page.grid(3).row(kCobId).value, "40000481");
    page.select_tab(3);
    EXPECT_TRUE(shows(kCobId, "C0000481"));
}

}  // namespace
}  // namespace servo::params
