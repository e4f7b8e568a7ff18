// drive-sim: a simulated drive on a pseudo-terminal.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "dictionary/store.h"
#include "sim/drive.h"
#include "sim/input_lines.h"
#include "sim/options.h"
#include "sim/pty_host.h"
#include "sim/pty_line.h"

namespace {

using servo::sim::Drive;
using servo::sim::HostOptions;
using servo::sim::Options;
using servo::sim::PtyHost;
using servo::sim::PtyLine;

constexpr int kWrongUse = 2;
constexpr int kNoLine = 3;
constexpr int kNoFile = 4;

struct CommandLine {
    Options drive;
    HostOptions host;
    std::filesystem::path link;
    std::vector<std::string> faults;
    std::vector<std::string> settings;
    std::optional<std::string> axis;
    std::string pins;
    int id = 127;
    long turnaround = 300;
};

std::filesystem::path own_folder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

// Written out, since "nan" lies outside of no range. Gives what is wrong.
std::string is_speed(const std::string& text) {
    double speed = 0.0;
    if (CLI::detail::lexical_cast(text, speed) && speed >= 0.001 && speed <= 1000.0) return {};
    return text + " is no speed from 0.001 to 1000";
}

// One word of the header line of an image, and no command of the bootloader. Gives what is wrong.
std::string is_type_word(const std::string& word) {
    for (const char* command : {"hi", "e", "w", "go"}) {
        if (word == command) return word + " is a command of the bootloader";
    }
    const bool plain =
        std::all_of(word.begin(), word.end(), [](char c) { return c > ' ' && c <= '~'; });
    if (!word.empty() && word.size() <= 16 && plain) return {};
    return "a word of 1 to 16 characters is needed";
}

void describe(CLI::App& app, CommandLine& line) {
    app.add_option("--data", line.drive.data, "Folder of the dictionary and of sim/values.tsv")
        ->type_name("DIR");
    app.add_option("--link", line.link, "Make PATH a symbolic link to the line")->type_name("PATH");
    app.add_option("--baud", line.drive.baud, "Rate of the line")
        ->check(CLI::Range(300, 1'000'000))
        ->type_name("N");
    app.add_option("--id", line.id, "Communication ID")->check(CLI::Range(0, 255))->type_name("N");
    app.add_option("--state", line.drive.state_file, "Where stored parameters live between runs")
        ->type_name("FILE");
    app.add_flag("--bootloader", line.drive.bootloader,
                 "Power up in the bootloader, as after a transfer that broke off");
    app.add_option("--type", line.drive.boot.type, "Word that a firmware must be made for")
        ->check(CLI::Validator(is_type_word, "WORD"))
        ->type_name("WORD");
    app.add_option("--fault", line.faults,
                   "drop:P corrupt:P double:P foreign:P lose:P stutter:P delay:MS silent abort:KEY "
                   "mute:KEY fault1:HEX fault2:HEX; of the bootloader boot-silent:STEP (entry hi "
                   "type erase switch block go) boot-wrong-type boot-erase:MS boot-erase-fails "
                   "boot-no-switch boot-programme:MS boot-refuse:BLOCK boot-flash:BLOCK "
                   "boot-start-fails; may be given again")
        ->allow_extra_args(false)
        ->type_name("SPEC");
    app.add_option("--set", line.settings, "Factory value of an object; may be given again")
        ->allow_extra_args(false)
        ->type_name("KEY=VALUE");
    app.add_option("--axis", line.axis,
                   "The axis has switches and ends, in turns: \"default\" or, each part at will, "
                   "neg=-20.3,pos=20.3,home=3.4:5.6,stop=22.4")
        ->type_name("SPEC");
    app.add_option("--din", line.pins, "Levels at the digital inputs, input 8 first")
        ->type_name("LEVELS");
    app.add_option("--seed", line.drive.seed, "Of faults and noise")->type_name("N");
    app.add_option("--speed", line.host.speed, "Seconds of the drive for each second")
        ->check(CLI::Validator(is_speed, ""))
        ->type_name("X");
    app.add_option("--turnaround", line.turnaround, "Microseconds from a request to its execution")
        ->check(CLI::Range(0L, 1'000'000L))
        ->type_name("US");
    app.add_flag("--print-frames", line.host.print_frames, "Print the bytes of both directions");
}

// Turns the texts into options. False when one is wrong, which is then said.
bool read_texts(CommandLine& line) {
    std::vector<std::string> wrong;
    for (const std::string& fault : line.faults) {
        if (auto error = servo::sim::add_fault(line.drive, fault)) wrong.push_back(*error);
    }
    for (const std::string& setting : line.settings) {
        if (auto error = servo::sim::add_setting(line.drive, setting)) wrong.push_back(*error);
    }
    if (!line.pins.empty()) {
        const auto pins = servo::sim::parse_pins(line.pins);
        if (!pins) wrong.push_back(line.pins + ": eight digits 0 or 1 are needed");
        line.drive.pins = pins.value_or(0);
    }
    if (line.axis) {
        line.drive.rail = servo::sim::parse_rail(*line.axis);
        if (!line.drive.rail) wrong.push_back(*line.axis + ": no such axis");
    }
    for (const std::string& error : wrong)
        fmt::print(stderr, "drive-sim: {}\n", error);
    line.drive.id = static_cast<std::uint8_t>(line.id);
    line.drive.turnaround = std::chrono::microseconds(line.turnaround);
    line.host.watch_input = line.link.empty();
    if (line.drive.data.empty()) line.drive.data = own_folder();
    return wrong.empty();
}

int serve(const servo::dictionary::Store& store, const CommandLine& line) {
    Drive drive(store, line.drive);
    for (const std::string& complaint : drive.complaints()) {
        fmt::print(stderr, "drive-sim: {}\n", complaint);
    }
    std::string error;
    auto pty = PtyLine::open(error);
    if (!pty) {
        fmt::print(stderr, "drive-sim: {}\n", error);
        return kNoLine;
    }
    if (!line.link.empty()) {
        if (const auto wrong = servo::sim::make_link(line.link, pty->path())) {
            fmt::print(stderr, "drive-sim: {}\n", *wrong);
            return kNoFile;
        }
    }
    fmt::print("line: {}\n", pty->path());
    std::fflush(stdout);
    PtyHost(drive, *pty, line.host).run();
    if (!line.link.empty()) servo::sim::remove_link(line.link, pty->path());
    return 0;
}

int run(int argc, char** argv) {
    CommandLine line;
    CLI::App app("A simulated drive on a pseudo-terminal.", "drive-sim");
    describe(app, line);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUse;
    }
    if (!read_texts(line)) return kWrongUse;
    servo::dictionary::Store store;
    if (!store.open_dat(line.drive.data)) {
        fmt::print(stderr, "drive-sim: no dictionary file in {}\n", line.drive.data.string());
        return kNoFile;
    }
    return serve(store, line);
}

}  // namespace

int main(int argc, char** argv) {
    return run(argc, argv);
}
