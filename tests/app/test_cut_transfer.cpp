// A firmware transfer that the end of the program cuts off: nobody is asked, and the next run
// tells.
#include <gtest/gtest.h>

#include "base/profile_file.h"
#include "shell_bench.h"

namespace servo::app::test {
namespace {

struct CutTransfer : testing::Test, ShellBench {
    CutTransfer() {
        folder.write("a.servo", "This is ZARN firmware 12\r\n" + std::string(4120, '0'));
    }

    // A transfer with the link open, in that step.
    void run_to(std::uint8_t step) {
        ASSERT_TRUE(MDIForm_Load(workstation));
        ASSERT_TRUE(workstation.download.load_image(folder.path() / "a.servo"));
        workstation.communication.Command1_Click();
        workstation.download.Command4_Click();
        for (int tick = 0; tick < 5; ++tick)
            workstation.engine.cTmr_Timer();
        ASSERT_EQ(workstation.engine.state.download_step, 3);
        workstation.engine.state.download_step = step;
        workstation.engine.state.sendmod = 0;
        workstation.engine.cTmr_Timer();
        ASSERT_TRUE(workstation.download.transfer_running());
    }
    std::string kept() {
        return base::get_profile_string(workstation.sys_ini(), "download", "cut", "", 16);
    }
};

TEST_F(CutTransfer, EndsWithoutAQuestionAndIsToldInTheNextRun) {
    run_to(6);
    notice.boxes.clear();
    quit(workstation);
    EXPECT_TRUE(notice.boxes.empty());
    EXPECT_FALSE(port.is_open());
    EXPECT_EQ(kept(), "6 erased");
    Workstation next{Surroundings{folder.path(), notice, port, ports, clock, timer}};
    ASSERT_TRUE(MDIForm_Load(next));
    ASSERT_TRUE(next.download.result());
    EXPECT_NE(next.download.advice_text().find("no complete firmware"), std::string_view::npos);
    quit(next);
    EXPECT_EQ(kept(), "6 erased") << "nothing was done about it";
}

TEST_F(CutTransfer, BeforeTheEraseNothingIsLost) {
    run_to(3);
    quit(workstation);
    EXPECT_EQ(kept(), "3");
    Workstation next{Surroundings{folder.path(), notice, port, ports, clock, timer}};
    ASSERT_TRUE(MDIForm_Load(next));
    EXPECT_NE(next.download.advice_text().find("untouched"), std::string_view::npos);
}

TEST_F(CutTransfer, ATransferThatSucceedsIsTheEndOfIt) {
    base::write_profile_string(workstation.sys_ini(), "download", "cut", "8 erased");
    ASSERT_TRUE(MDIForm_Load(workstation));
    workstation.download.recall(
        {.end = firmware::TransferEnd::kDone, .step = 9, .erased = true, .message = {}});
    quit(workstation);
    EXPECT_EQ(kept(), "");
}

TEST_F(CutTransfer, GarbageInTheFileIsNoHarm) {
    base::write_profile_string(workstation.sys_ini(), "download", "cut", "1e300 x");
    ASSERT_TRUE(MDIForm_Load(workstation));
    EXPECT_FALSE(workstation.download.advice_text().empty());
}

TEST_F(CutTransfer, NoRecordingBeginsWhileOneRuns) {
    run_to(6);
    notice.boxes.clear();
    workstation.scope.Command6_Click();
    EXPECT_FALSE(workstation.scope.data().sampling);
    ASSERT_EQ(notice.boxes.size(), 1U);
    EXPECT_EQ(notice.boxes[0].first, "Notice");
    EXPECT_EQ(notice.boxes[0].second, "A firmware download is under way. Sample when it has ended.")
        << "nobody is sent to the link's dialog, where he would close the link";
    workstation.scope.Command7_Click();
    EXPECT_FALSE(workstation.scope.data().sampling);
    EXPECT_EQ(workstation.engine.state.scopeState, 0);
}

TEST_F(CutTransfer, WithoutOneNothingIsToldOrWritten) {
    ASSERT_TRUE(MDIForm_Load(workstation));
    EXPECT_FALSE(workstation.download.result());
    quit(workstation);
    EXPECT_EQ(folder.read("sys/sys.ini").find("download"), std::string::npos);
}

}  // namespace
}  // namespace servo::app::test
