// `scan` on the virtual bench: the engine in virtual time, a drive whose blocks a test gives, and
// everything printed in two texts.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "../tuner/scan_drive.h"
#include "base/file.h"
#include "cli/line_machine.h"
#include "support/virtual_bench.h"

namespace servo::cli {

class ScanMachine : public LineMachine {
  public:
    ScanMachine() {
        drive.fill();
        drive.add(0x30400E01, 1);
        interrupted = [this] { return pressed_ = pressed_ || ctrl_c(); };
    }

    // A plan of 33 points.
    int scan(std::vector<std::string> global = {}) {
        for (const char* word :
             {"scan", "OUT", "--start", "4", "--stop", "100", "--step", "3", "--current", "60"})
            global.emplace_back(word == std::string("OUT") ? file() : word);
        return run(std::move(global));
    }

    std::string file() const { return (bench.folder / "out.bode").string(); }
    std::string written() const {
        return base::read_file(bench.folder / "out.bode").value_or("no file");
    }

    test::ScanDrive drive{bench.time, bench.line};
    // Ctrl-C is pressed once this holds; it stays pressed.
    std::function<bool()> ctrl_c = [] { return false; };

  private:
    bool pressed_ = false;
};

}  // namespace servo::cli
