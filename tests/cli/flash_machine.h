// servoctl with the engine in virtual time and a bootloader at the other end of the line.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../firmware/text_bootloader.h"
#include "base/file.h"
#include "cli/engine_session.h"
#include "cli/run.h"
#include "firmware/image.h"
#include "support/virtual_bench.h"

namespace servo::cli {

class FlashMachine final : public Environment {
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

    std::string put_image(const std::string& payload,
                          std::string_view header = "This is ZARN firmware 12AB34CD.") {
        bench.folder.put("a.servo", std::string(header) + "\r\n" + payload + "\r\n");
        return (bench.folder / "a.servo").string();
    }
    static std::string payload(std::size_t characters) { return std::string(characters, '5'); }

    // The status of the program.
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

    test::VirtualBench bench;
    test::TextBootloader drive{bench.time, bench.line};
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
