// servoctl table: what it prints where, and the status of every end.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "base/file.h"
#include "cli/line_machine.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"
#include "tools/position_table_file.h"
#include "tools/position_table_transfer.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// servoctl with the engine in virtual time and a drive that knows the 208 objects.
class TableMachine final : public LineMachine {
  public:
    TableMachine() {
        own_folder = true;
        bench.folder.put("sys/PosFlow.cdo",
                         base::read_file(SERVO_SOURCE_DIR "/data/sys/PosFlow.cdo").value_or(""));
        list = tools::load_transfer_list(bench.folder.path()).value_or(tools::TransferList{});
        for (const link::WireKey key : list)
            drive.add(key, 0);
        drive.add(0x64100304, 10000);
    }

    std::string file(const char* name = "table.pft") const {
        return (bench.folder / name).string();
    }
    std::int64_t value(int line) const {
        return drive.value(dictionary::identity_of(list[static_cast<std::size_t>(line)]));
    }
    void set_value(int line, std::int64_t value) {
        drive.objects[dictionary::identity_of(list[static_cast<std::size_t>(line)])].value = value;
    }

    test::FakeDrive drive{bench.time, bench.line};
    tools::TransferList list{};
};

std::string whole_file() {
    std::string text;
    for (int i = 0; i < 32; ++i)
        text += std::to_string(i) + "," + std::to_string(i * 100) + ",60.00,5,1,2,101,3,0\r\n";
    text += "\r\n";
    for (int i = 0; i < 8; ++i)
        text += std::to_string(i) + ",100.00,100.00\r\n";
    return text;
}

TEST(Table, ReadWritesTheDrivesTableIntoAFile) {
    TableMachine machine;
    machine.set_value(17, 4711);
    machine.set_value(112, 0x9105);
    machine.set_value(0, 16384);
    EXPECT_EQ(machine.run({"table", "read", machine.file()}), 0) << machine.err;
    EXPECT_EQ(machine.out, "finished\n");
    const std::string bytes = machine.bench.folder.get("table.pft");
    EXPECT_NE(bytes.find("0,0,0.00,0,0,0,9105,0,0\r\n1,4711,"), std::string::npos) << bytes;
    EXPECT_NE(bytes.find("\r\n\r\n0,100.00,0.00\r\n"), std::string::npos) << bytes;
}

TEST(Table, ProgressGoesToStandardError) {
    TableMachine machine;
    ASSERT_EQ(machine.run({"table", "read", machine.file()}), 0);
    std::vector<std::string> lines;
    std::istringstream stream(machine.err);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 9U) << machine.err;
    EXPECT_EQ(lines.front(), "Reading  10 %");
    EXPECT_EQ(lines.back(), "Reading  90 %");
}

TEST(Table, WriteSendsAWholeFile) {
    TableMachine machine;
    machine.bench.folder.put("table.pft", whole_file());
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 0) << machine.err;
    EXPECT_EQ(machine.out, "finished\n");
    EXPECT_EQ(machine.value(16 + 31), 3100);
    EXPECT_EQ(machine.value(112), 0x101);
    EXPECT_EQ(machine.value(176), 0x12);
    EXPECT_EQ(machine.value(0), 16384);
    EXPECT_FALSE(machine.told("Reading"));
}

TEST(Table, WhatIsWrittenReadsBackAsTheSameFile) {
    TableMachine machine;
    machine.bench.folder.put("table.pft", whole_file());
    ASSERT_EQ(machine.run({"table", "write", machine.file()}), 0);
    machine.session.close();
    machine.bench.run_for(50ms);  // the last bytes leave the line
    ASSERT_EQ(machine.run({"table", "read", machine.file("back.pft")}), 0) << machine.err;
    EXPECT_EQ(machine.bench.folder.get("back.pft"), whole_file());
}

TEST(Table, RowsThatAFileLacksStayAsTheDriveHasThem) {
    TableMachine machine;
    machine.set_value(16, 111);
    machine.set_value(17, 222);
    machine.set_value(0, 16384);
    machine.bench.folder.put("table.pft", "1,5,60.00,0,0,0,0,0,0\r\n");
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 0) << machine.err;
    EXPECT_TRUE(machine.told("holds 1 steps and 0 ramps; the rest is read from the drive first"));
    EXPECT_EQ(machine.value(16), 111);
    EXPECT_EQ(machine.value(17), 5);
    EXPECT_EQ(machine.value(0), 16384);
}

TEST(Table, AFileWithoutARowIsRefusedBeforeTheLinkIsOpened) {
    TableMachine machine;
    machine.bench.folder.put("table.pft", "hello\r\n");
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 4);
    EXPECT_TRUE(machine.told("holds no position table"));
    EXPECT_EQ(machine.run({"table", "write", machine.file("none.pft")}), 4);
    EXPECT_TRUE(machine.told("can't be read"));
    EXPECT_EQ(machine.run({"table", "read", machine.file("no/folder.pft")}), 4);
    EXPECT_EQ(machine.opened, 0);
}

TEST(Table, AFileOfWhichMostLinesAreNoRowsIsRefused) {
    TableMachine machine;
    const std::string ramps = "\r\n0,100.00,100.00\r\n1,90.00,90.00\r\n";
    machine.bench.folder.put("table.pft", ramps + "a\r\nb,c\r\n");
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 4);
    EXPECT_TRUE(machine.told("holds no position table")) << machine.err;
    EXPECT_EQ(machine.opened, 0);
    machine.bench.folder.put("table.pft", ramps + "# ramps of axis 3\r\n");
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 0) << machine.err;
    EXPECT_TRUE(machine.told("1 lines of the file are skipped")) << machine.err;
}

TEST(Table, WithoutTheListOfObjectsNothingBegins) {
    TableMachine machine;
    machine.bench.folder.put("sys/PosFlow.cdo", "31000120\n");
    EXPECT_EQ(machine.run({"table", "read", machine.file()}), 4);
    EXPECT_TRUE(machine.told("sys/PosFlow.cdo is missing or not whole"));
    EXPECT_EQ(machine.opened, 0);
}

TEST(Table, TenRefusalsFail) {
    TableMachine machine;
    machine.drive.refuse.insert(dictionary::identity_of(machine.list[50]));
    EXPECT_EQ(machine.run({"table", "read", machine.file()}), 1);
    EXPECT_EQ(machine.out, "failed\n");
    EXPECT_TRUE(machine.told("refused 10 times, last the object 310303")) << machine.err;
    EXPECT_FALSE(std::filesystem::exists(machine.file()));
    EXPECT_EQ(machine.bench.engine.state.batch_mode, 0);
}

TEST(Table, ADriveThatFallsSilentIsALostLink) {
    TableMachine machine;
    machine.drive.mute.insert(dictionary::identity_of(machine.list[50]));
    machine.bench.folder.put("table.pft", whole_file());
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 3);
    EXPECT_EQ(machine.out, "failed\n");
    EXPECT_TRUE(machine.told("the first 50 objects are written")) << machine.err;
}

TEST(Table, NobodyThereIsNoLink) {
    TableMachine machine;
    machine.drive.silent = true;
    EXPECT_EQ(machine.run({"table", "read", machine.file()}), 3);
    EXPECT_EQ(machine.out, "");
}

TEST(Table, WithoutTheEncoderTheUnitIsNotKnown) {
    TableMachine machine;
    machine.drive.refuse.insert(0x641003);
    EXPECT_EQ(machine.run({"--timeout", "1", "table", "read", machine.file()}), 1);
    EXPECT_TRUE(machine.told("encoder resolution (641003) could not be read")) << machine.err;
    EXPECT_EQ(machine.out, "");
}

TEST(Table, CtrlCEndsTheJob) {
    TableMachine machine;
    machine.bench.folder.put("table.pft", whole_file());
    machine.interrupted = [&] { return machine.bench.engine.state.batch_row > 20; };
    EXPECT_EQ(machine.run({"table", "write", machine.file()}), 1);
    EXPECT_TRUE(machine.told("servoctl: interrupted")) << machine.err;
    EXPECT_TRUE(machine.told("the drive holds a mixed table"));
    EXPECT_EQ(machine.bench.engine.state.batch_mode, 0);
}

TEST(Table, PrintsOneJsonValue) {
    TableMachine machine;
    ASSERT_EQ(machine.run({"--json", "table", "read", machine.file()}), 0);
    const auto value = nlohmann::json::parse(machine.out);
    EXPECT_EQ(value["file"], machine.file());
    EXPECT_EQ(value["objects"], 208);
    EXPECT_EQ(value["result"], "finished");
    EXPECT_GT(value["seconds"].get<double>(), 0.5);
}

TEST(Table, SpeaksChinese) {
    TableMachine machine;
    ASSERT_EQ(machine.run({"--lang", "zh", "table", "read", machine.file()}), 0);
    EXPECT_EQ(machine.out, "finished\n");
    EXPECT_TRUE(machine.told("读取  10 %"));
}

TEST(Table, WrongUseIsToldAsSuch) {
    TableMachine machine;
    EXPECT_EQ(machine.run({"table"}), 2);
    EXPECT_EQ(machine.run({"table", "read"}), 2);
    EXPECT_EQ(machine.run({"table", "drop", "x"}), 2);
}

}  // namespace
}  // namespace servo::cli
