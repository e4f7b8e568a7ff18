// The journal beside jobs and a drive on a line in virtual time.
#include <gtest/gtest.h>

#include "configuration_bench.h"
#include "tools/journal_restore.h"

namespace servo::tools::test {
namespace {

// An engine of its own on the bench's line, with the tap between.
struct TappedBench : servo::test::VirtualBench {
    TappedBench() {
        engine.set_link_control(&dialog);
        timer.tick = [this] { engine.cTmr_Timer(); };
        dialog.load(base::Language::kEnglish);
        for (int object = 0; object < ConfigurationLine::kObjects; ++object)
            drive.add(ConfigurationLine::key_of(object), 1);
        dialog.pick_port(0);
        dialog.Command1_Click();
        run_for(2s);
    }
    std::vector<std::size_t> all() const { return journal.find(""); }

    TappedPort tapped{port};
    link::DriveValues drive_values;
    link::Engine engine{tapped, clock, timer, drive_values};
    link::Communication dialog{engine, tapped, directory, notice, folder.path()};
    servo::test::FakeDrive drive{time, line};
    dictionary::Store store = small_dictionary();
    base::Language language = base::Language::kEnglish;
    WriteJournal journal{{.line = tapped,
                          .engine = engine,
                          .dictionary = store,
                          .language = language,
                          .time_of_day = [] { return std::string("12:00:00"); },
                          .window = [] { return std::string("Basic"); }}};
    ImExport form{{.engine = engine,
                   .dictionary = store,
                   .notice = notice,
                   .language = language,
                   .folder = folder.path(),
                   .ask_file = [](const ConfigurationFile&) { return std::nullopt; }}};
};

TEST(JournalLine, HoldsEveryWriteOfAConfigurationOnce) {
    TappedBench bench;
    EXPECT_TRUE(bench.journal.entries().empty()) << "the poller writes nothing";
    bench.folder.put("values.cdi", ConfigurationLine::file_of_600());
    ASSERT_TRUE(bench.form.load_source(bench.folder / "values.cdi"));
    FrameFaults faults(bench.drive, bench.line, 5);
    bench.form.Command2_Click();
    ASSERT_TRUE(bench.run_until([&] { return !bench.form.running(); }, 120s));
    ASSERT_EQ(bench.journal.entries().size(), 600U);
    for (std::size_t at = 0; at < 600; ++at) {
        const JournalEntry& entry = bench.journal.entries()[at];
        ASSERT_EQ(entry.key, ConfigurationLine::key_of(static_cast<int>(at)));
        ASSERT_EQ(entry.value,
                  static_cast<std::uint32_t>(ConfigurationLine::value_of(static_cast<int>(at))));
        ASSERT_EQ(entry.window, "imexport");
        ASSERT_EQ(entry.state, JournalEntry::State::kTaken);
    }
    EXPECT_EQ(bench.journal.write_cdi(bench.all()), ConfigurationLine::file_of_600());
}

TEST(JournalLine, WhatAReadToldComesBackOverALineWithFaults) {
    TappedBench bench;
    bench.folder.put("list.cdo", ConfigurationLine::file_of_600());
    ASSERT_TRUE(bench.form.load_template(bench.folder / "list.cdo"));
    bench.form.Command7_Click();
    ASSERT_TRUE(bench.run_until([&] { return !bench.form.running(); }, 120s));
    bench.form.Timer1_Timer();
    for (int object = 0; object < 40; ++object) {
        bench.engine.sendata2(ConfigurationLine::key_of(object), 7 + object, 0);
        bench.run_for(60ms);
    }
    ASSERT_EQ(bench.journal.entries().size(), 40U);
    EXPECT_EQ(bench.journal.entries()[0].before, 1U);

    FrameFaults faults(bench.drive, bench.line, 11);
    JournalRestore restore(bench.journal, bench.engine);
    ASSERT_TRUE(restore.start(bench.all()));
    for (int step = 0; restore.running() && step < 10'000; ++step) {
        bench.run_for(std::chrono::milliseconds(JournalRestore::kStepMilliseconds));
        restore.step();
    }
    EXPECT_FALSE(restore.running());
    EXPECT_EQ(restore.taken() + restore.silent(), 40U);
    EXPECT_GT(faults.lost + faults.corrupted, 0);
    std::size_t back = 0;
    for (int object = 0; object < 40; ++object)
        back += bench.drive.value(ConfigurationLine::identity_of(object)) == 1 ? 1 : 0;
    EXPECT_GE(back, restore.taken()) << "nothing is counted that is not there";
    EXPECT_GE(restore.taken(), 38U);
}

}  // namespace
}  // namespace servo::tools::test
