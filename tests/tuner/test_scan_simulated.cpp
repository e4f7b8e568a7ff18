// Scans of the simulated drive over the line: what is measured is judged by the machine's figures.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <memory>

#include "sim/scan_bench.h"
#include "support/sim_bench.h"
#include "support/virtual_bench.h"
#include "tuner/advanced_tuner.h"
#include "tuner/bode_file.h"

using namespace servo;
using namespace servo::test;
using sim::test::scan::decibels;
using sim::test::scan::plant_at;
using sim::test::scan::turned;

namespace {

constexpr double kPi = 3.14159265358979;

struct ScanSimulated : testing::Test, VirtualBench {
    ScanSimulated() {
        dictionary.open_dat(SERVO_BIN_DIR);
        sim::Options options;
        options.data = SERVO_BIN_DIR;
        simulated = std::make_unique<SimDriveOnLine>(time, line, dictionary, options);
        open_link();
        run_for(500ms);
    }
    // Unlocked, as a user does it.
    void start(const char* first, const char* step, const char* last, const char* current) {
        using Box = tuner::AdvancedTuner::Box;
        tuner.type(Box::kText2, first);
        tuner.type(Box::kText4, step);
        tuner.type(Box::kText3, last);
        tuner.type(Box::kText1, current);
        tuner.Check1_Click();
        tuner.Command1_Click();
    }
    bool scan(const char* first, const char* step, const char* last, const char* current) {
        start(first, step, last, current);
        return finish();
    }
    bool finish() {
        return run_until([this] { return !tuner.scanning(); }, 600s) && tuner.data().analysed;
    }
    std::int64_t value(dictionary::Identity object) {
        return static_cast<std::int64_t>(simulated->drive().value(object).value_or(-1));
    }

    struct Worst {
        double decibel = 0, degrees = 0;
        int at_decibel = 0, at_degrees = 0;
    };
    Worst worst() const {
        Worst found;
        const tuner::TunerData& data = tuner.data();
        for (int i = 0; i < data.analysed_points(); ++i) {
            const auto at = static_cast<std::size_t>(i);
            const int hertz = data.frequency(i);
            const std::complex<double> plant = plant_at(hertz);
            const double db =
                std::abs(decibels(data.analysis.magnitude[at] / 100.0 / std::abs(plant)));
            const double degrees =
                std::abs(turned(data.analysis.phase[at] - std::arg(plant) * 180.0 / kPi));
            if (db > found.decibel) {
                found.decibel = db;
                found.at_decibel = hertz;
            }
            if (degrees > found.degrees) {
                found.degrees = degrees;
                found.at_degrees = hertz;
            }
        }
        return found;
    }

    dictionary::Store dictionary;
    base::Language language = base::Language::kEnglish;
    std::unique_ptr<SimDriveOnLine> simulated;
    tuner::AdvancedTuner tuner{
        {.engine = engine, .notice = notice, .language = language, .link_open = [this] {
             return port.is_open();
         }}};
};

}  // namespace

TEST_F(ScanSimulated, ScanFrom4To1000HzIsTheMachinesPlant) {
    const auto begun = time.now();
    ASSERT_TRUE(scan("4", "3", "1000", "100"));
    const auto taken = std::chrono::duration<double>(time.now() - begun).count();
    EXPECT_EQ(tuner.Label36(), "Finished");
    EXPECT_EQ(tuner.data().buffers.pointCount, 333);
    EXPECT_EQ(tuner.data().analysed_points(), 332);
    const Worst found = worst();
    EXPECT_LT(found.decibel, 0.5) << found.at_decibel << " Hz";
    EXPECT_LT(found.degrees, 3.0) << found.at_degrees << " Hz";
    std::printf("%.3f dB at %d Hz, %.2f degrees at %d Hz, %.1f s\n", found.decibel,
                found.at_decibel, found.degrees, found.at_degrees, taken);
    EXPECT_EQ(value(0x30400E), 1) << "done";
    EXPECT_NEAR(tuner.data().analysis.plantEstimate,
                268435456.0 / static_cast<double>(value(0x304007)), 0.02 * 13653);
    EXPECT_EQ(tuner.data().settings.encoderCounts, value(0x641003));
    EXPECT_EQ(tuner.data().settings.velocityGain1, static_cast<float>(value(0x60F901)));
    EXPECT_TRUE(port.is_open());
}

TEST_F(ScanSimulated, MeasuredResonanceIsWhereTheMachineHasIt) {
    ASSERT_TRUE(scan("300", "3", "900", "100"));
    const tuner::TunerData& data = tuner.data();
    int measured = 0;
    int told = 0;
    double highest = 0;
    double highest_told = 0;
    for (int i = 1; i + 1 < data.analysed_points(); ++i) {
        // Above the slope of an inertia, which falls with the frequency.
        const int hertz = data.frequency(i);
        const double height = data.analysis.magnitude[static_cast<std::size_t>(i)] * hertz;
        const double height_told = std::abs(plant_at(hertz)) * hertz;
        if (height > highest) {
            highest = height;
            measured = hertz;
        }
        if (height_told > highest_told) {
            highest_told = height_told;
            told = hertz;
        }
    }
    EXPECT_NEAR(measured, told, 3) << "one step";
}

TEST_F(ScanSimulated, FileOfItGivesTheSameCurves) {
    ASSERT_TRUE(scan("20", "20", "400", "100"));
    const auto file = folder / "scan.bode";
    tuner.Command3_Click(file);
    const auto analysis = std::make_unique<tuner::Analysis>(tuner.data().analysis);
    const std::string bytes = folder.get("scan.bode");
    ASSERT_TRUE(scan("100", "50", "300", "60")) << "another one in between";
    tuner.Command2_Click(file);
    EXPECT_TRUE(notice.boxes.size() == 2) << "the two unlockings";
    EXPECT_EQ(tuner.data().Text2, "20");
    EXPECT_EQ(tuner.data().Text1, "100");
    EXPECT_EQ(tuner.data().analysis.magnitude, analysis->magnitude);
    EXPECT_EQ(tuner.data().analysis.phase, analysis->phase);
    EXPECT_EQ(tuner.data().analysis.plantEstimate, analysis->plantEstimate);
    tuner.Command3_Click(folder / "again.bode");
    EXPECT_EQ(folder.get("again.bode"), bytes);
}

// 56 / 3 + 1 is 19.67: the plan's last point lies above its stop frequency. The drive has nothing
// there, and it is the point that is not analysed.
TEST_F(ScanSimulated, BoxesOwnPlanIsAnalysedWhole) {
    ASSERT_TRUE(scan("4", "3", "60", "60"));
    EXPECT_EQ(tuner.data().buffers.pointCount, 20);
    EXPECT_LT(worst().decibel, 0.5);
    EXPECT_LT(worst().degrees, 3.0);
}

TEST_F(ScanSimulated, CancelStopsTheMotorAndLeavesTheScanThatWas) {
    ASSERT_TRUE(scan("100", "50", "300", "60"));
    const auto settings = tuner.data().settings;
    start("4", "3", "1000", "100");
    ASSERT_TRUE(run_until([this] { return tuner.scan().measuring(); }, 5s));
    run_for(3s);
    EXPECT_TRUE(tuner.scan().measuring());
    tuner.cancel_scan();
    ASSERT_TRUE(run_until([this] { return !tuner.scanning(); }, 5s));
    EXPECT_EQ(value(0x30400E), 5) << "stopped";
    EXPECT_EQ(value(0x304001), 0);
    EXPECT_EQ(tuner.data().settings, settings);
    EXPECT_TRUE(tuner.data().analysed);
    EXPECT_EQ(tuner.Label36(), "Finished");
    ASSERT_TRUE(scan("100", "50", "300", "60")) << "and the next one runs";
}

TEST_F(ScanSimulated, ScanBegunAnewUnderTheMeasurementIsThatOfTheNewPlan) {
    start("4", "3", "1000", "100");
    ASSERT_TRUE(run_until([this] { return tuner.scan().measuring(); }, 5s));
    run_for(3s);
    ASSERT_TRUE(tuner.scan().measuring());
    ASSERT_TRUE(scan("100", "50", "300", "60"));
    EXPECT_EQ(tuner.data().buffers.pointCount, 5);
    EXPECT_EQ(value(0x30400E), 1) << "measured to its end";
    EXPECT_LT(worst().decibel, 0.5);
    EXPECT_LT(worst().degrees, 3.0);
}

TEST_F(ScanSimulated, LinkClosedUnderTheMeasurementAndOpenedAgain) {
    start("4", "3", "1000", "100");
    ASSERT_TRUE(run_until([this] { return tuner.scan().measuring(); }, 5s));
    communication.Command1_Click();
    EXPECT_FALSE(tuner.scanning());
    EXPECT_EQ(tuner.Label36(), "Finished");
    run_for(60s);  // the drive ends by itself
    open_link();
    run_for(200ms);
    EXPECT_EQ(value(0x304001), 0);
    ASSERT_TRUE(scan("100", "50", "300", "60"));
    EXPECT_LT(worst().decibel, 0.5);
}
