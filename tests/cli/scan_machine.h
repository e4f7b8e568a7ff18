// `scan` on the virtual bench: the engine in virtual time, a drive whose blocks a test gives, and
// everything printed in two texts.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "../tuner/scan_drive.h"
#include "base/file.h"
#include "cli/engine_session.h"
#include "cli/run.h"
#include "support/virtual_bench.h"

namespace servo::cli {

class ScanMachine : public Environment {
  public:
    ScanMachine() {
        drive.fill();
        drive.add(0x30400E01, 1);
    }

    std::vector<link::PortDirectory::Entry> ports(const Options&) override { return {}; }
    OpenedLink open_link(const Options& options) override {
        ++opened;
        OpenedLink link;
        if (session.open("COM1", options.baud, options.id) != link::OpenResult::kOpened)
            return link;
        link.session = &session;
        link.engine = &bench.engine;
        return link;
    }

    int run(std::vector<std::string> arguments) {
        out.clear();
        err.clear();
        ParsedLine line = parse_command_line(std::move(arguments));
        if (!line.options) {
            err = line.end.err;
            return static_cast<int>(line.end.status);
        }
        const Output output{[this](std::string_view text) { out += text; },
                            [this](std::string_view text) { err += text; }};
        return static_cast<int>(run_command(*line.options, *this, output));
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

    test::VirtualBench bench;
    test::ScanDrive drive{bench.time, bench.line};
    int opened = 0;
    // Ctrl-C is pressed once this holds; it stays pressed.
    std::function<bool()> ctrl_c = [] { return false; };
    bool interrupted = false;
    EngineSession session{bench.engine, [this] {
                              bench.run_for(std::chrono::milliseconds(3));
                              interrupted = interrupted || ctrl_c();
                              return !interrupted;
                          }};
    std::string out;
    std::string err;
};

}  // namespace servo::cli
