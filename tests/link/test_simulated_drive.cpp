// The link against the simulated drive, which reads the wire on its own.
#include <gtest/gtest.h>

#include "base/number.h"
#include "dictionary/raw_record.h"
#include "support/sim_bench.h"
#include "support/virtual_bench.h"

using namespace servo;
using namespace servo::link;
using namespace servo::test;

namespace {

// The objects of the status lanes and a few that a page shows.
std::string dictionary_bytes() {
    std::string bytes;
    const auto add = [&](Identity object, std::string type, std::string attribute = "RW") {
        RawRecord record;
        const std::string digits = base::hex_text(object);
        record.index = digits.substr(0, 4);
        record.sub = digits.substr(4);
        record.name_en = "Object " + digits;
        record.type = std::move(type);
        record.attribute = std::move(attribute);
        record.formula = "[DEC]N*1";
        bytes += record.bytes();
    };
    for (int lane = 0; lane < 3; ++lane)
        for (const WireKey key : Engine::status_list(lane))
            add(dictionary::identity_of(key), (key & 0xFF) == 2 ? "Unsigned16" : "Unsigned32");
    add(0x100800, "Visible String", "R");
    add(0x606300, "Integer32", "RH");
    add(0x60FF00, "Integer32");
    add(0x606000, "Integer8");
    return bytes;
}

struct SimulatedDrive : testing::Test, VirtualBench {
    SimulatedDrive() {
        page.add("100800", "String", false)
            .add("606300", "int32")
            .add("60FF00", "int32")
            .add("5FFF00", "uint16");  // no drive has this one
        page.set_visible(true);
        engine.add_poll_window(page);
    }
    static dictionary::Store make_store() {
        dictionary::Store store;
        store.load(dictionary_bytes());
        return store;
    }
    static sim::Options options() {
        sim::Options options;
        options.data = SERVO_SOURCE_DIR "/data";
        return options;
    }

    dictionary::Store store = make_store();
    SimDriveOnLine simulated{time, line, store, options()};
    FakePage page{"AN_SPEED"};
};

}  // namespace

TEST_F(SimulatedDrive, StatusLanesKnowTheDriveAndThePageFills) {
    open_link();
    ASSERT_TRUE(run_until([&] { return page.value(4) == "?????"; }, 10s));
    EXPECT_EQ(page.value(1), simulated.drive().text(0x100800));
    EXPECT_EQ(page.value(3), "0");
    EXPECT_TRUE(engine.values().operands.o64100320.seen);
    EXPECT_EQ(engine.values().operands.o64100320.value, simulated.drive().value(0x641003));
    EXPECT_EQ(engine.pictures.button5(), kErrorgreen);
    EXPECT_EQ(simulated.drive().statistics().bad_checksum, 0U);
}

TEST_F(SimulatedDrive, WriteReachesTheDriveAndComesBack) {
    open_link();
    run_for(1s);
    engine.sendata2(0x60FF0004, -12345, 0);
    run_for(1s);
    EXPECT_EQ(simulated.drive().value(0x60FF00), -12345);
    EXPECT_EQ(page.value(3), "-12345");
}

TEST_F(SimulatedDrive, FaultTurnsThePictureRed) {
    open_link();
    run_for(1s);
    simulated.drive().provoke_fault(0x0200);
    run_for(1s);
    EXPECT_EQ(engine.pictures.button5(), kErrorred);
    EXPECT_EQ(engine.values().fault_word1 & 0x0200, 0x0200);
}

TEST_F(SimulatedDrive, LinkSurvivesARestartOfTheDrive) {
    open_link();
    run_for(1s);
    simulated.drive().power_cycle();
    run_for(10s);
    EXPECT_TRUE(communication.link_open());
    EXPECT_EQ(engine.state.miss_count, 0);
}

TEST_F(SimulatedDrive, LostAndBrokenAnswersDoNotCloseTheLink) {
    simulated.drive().faults().drop = 0.2;
    simulated.drive().faults().corrupt = 0.2;
    simulated.drive().faults().lose = 0.05;
    communication.use_port("COM1");
    communication.communication();
    run_for(60s);
    EXPECT_TRUE(communication.link_open());
    EXPECT_EQ(page.value(1), simulated.drive().text(0x100800));
    EXPECT_GT(engine.counters.bad_checksum, 50U);
}
