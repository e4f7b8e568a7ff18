#include "app/options.h"

#include <CLI/CLI.hpp>
#include <set>
#include <sstream>

#include "link/communication.h"

namespace servo::app {

namespace {

constexpr int kWrongUse = 2;

std::set<int> baud_rates() {
    std::set<int> rates;
    for (const std::string_view rate : link::kBaudRates)
        rates.insert(std::stoi(std::string(rate)));
    return rates;
}

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv) {
    ParsedOptions parsed;
    Options& options = parsed.options;
    std::string data;
    std::string language;
    CLI::App app{"Commissioning and diagnostics of one servo drive.", "servo-workstation"};
    app.set_version_flag("--version", "servo-workstation " SERVO_VERSION);
    app.add_option("--data", data, "folder of the dictionary, sys/ and modbus.txt")
        ->type_name("DIR")
        ->check(CLI::ExistingDirectory);
    auto* simulate =
        app.add_flag("--simulate", options.simulate, "start a simulated drive and connect to it");
    app.add_option("--connect", options.connect, "list this device among the ports and open it")
        ->type_name("DEVICE")
        ->excludes(simulate);
    app.add_option("--baud", options.baud, "rate of the line")
        ->type_name("N")
        ->check(CLI::IsMember(baud_rates()));
    app.add_option("--id", options.id, "communication ID")
        ->type_name("N")
        ->check(CLI::Range(0, 255));
    app.add_option("--open", options.open, "open a window by its name; may be repeated")
        ->type_name("WINDOW")
        ->allow_extra_args(false);
    app.add_option("--walk", options.walk, "play a walkthrough")
        ->type_name("FILE")
        ->check(CLI::ExistingFile);
    app.add_option("--lang", language, "language after start-up")
        ->type_name("zh|en")
        ->check(CLI::IsMember({"zh", "en"}));
    app.add_flag("--ready", options.ready,
                 "write a line \"ready\" to standard output once the main window is shown");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream out;
        std::ostringstream err;
        parsed.exit_status = app.exit(error, out, err) == 0 ? 0 : kWrongUse;
        parsed.output = out.str();
        parsed.error = err.str();
        return parsed;
    }
    options.data = data;
    if (language == "zh") options.language = base::Language::kChinese;
    if (language == "en") options.language = base::Language::kEnglish;
    return parsed;
}

}  // namespace servo::app
