// servoctl with the engine in virtual time on a line whose drive the test brings, and everything
// printed in two texts.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/engine_session.h"
#include "cli/run.h"
#include "support/virtual_bench.h"

namespace servo::cli {

class LineMachine : public Environment {
  public:
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

    // The status of the program.
    int run(std::vector<std::string> arguments) {
        session.close();  // of the command before
        out.clear();
        err.clear();
        ParsedLine line = parse_command_line(std::move(arguments));
        if (!line.options) {
            err = line.end.err;
            return static_cast<int>(line.end.status);
        }
        if (own_folder) line.options->data = bench.folder.path();
        const Output output{[this](std::string_view text) { out += text; },
                            [this](std::string_view text) { err += text; }};
        return static_cast<int>(run_command(*line.options, *this, output));
    }
    bool told(std::string_view text) const { return err.find(text) != std::string::npos; }

    test::VirtualBench bench;
    bool own_folder = false;  // the bench's folder is the program's
    int opened = 0;
    // Ctrl-C, when this holds.
    std::function<bool()> interrupted = [] { return false; };
    EngineSession session{bench.engine, [this] {
                              bench.run_for(std::chrono::milliseconds(3));
                              return !interrupted();
                          }};
    std::string out;
    std::string err;
};

}  // namespace servo::cli
