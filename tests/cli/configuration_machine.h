// servoctl with the engine in virtual time and a drive of a few objects, for the commands of the
// configuration.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/line_machine.h"
#include "dictionary/raw_record.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::cli {

class ConfigurationMachine final : public LineMachine {
  public:
    ConfigurationMachine() {
        own_folder = true;
        std::string records;
        const auto add = [&](RawRecord record) { records += record.bytes(); };
        const std::string speed =
            "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]\n[DEC]N*1";
        add({"6060", "00", "\xC4\xA3\xCA\xBD", "Mode", "Integer8", "RW", "", "", "[DEC]N*1"});
        add({"607A", "00", "", "Target Position", "Integer32", "RW", "", "", "[DEC]N*1"});
        add({"60FF", "00", "", "Target Velocity", "Integer32", "RW", "", "", speed});
        add({"2601", "00", "", "Fault Word 1", "Unsigned16", "R", "", "", "[HEX]N*1"});
        add({"6410", "03", "", "Resolution", "Unsigned32", "RW", "", "", "[DEC]N*1"});
        bench.folder.put("qorlan.dat", records);
        drive.add(0x60600001, 1);
        drive.add(0x607A0004, 1000);
        drive.add(0x60FF0004, 273067);
        drive.add(0x64100304, 10000);
    }

    std::string file(const char* name) const { return (bench.folder / name).string(); }
    // Writes of an object that came over the line.
    int writes(link::Identity object) const {
        int count = 0;
        for (const auto& request : drive.requests) {
            const std::uint8_t command = request.payload[0];
            if (command != link::kRead && link::reply_key(request.payload) == object) ++count;
        }
        return count;
    }

    test::FakeDrive drive{bench.time, bench.line};
};

}  // namespace servo::cli
