#include "cli/options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>

namespace servo::cli {
namespace {

constexpr double kMinTimeout = 0.001;   // seconds
constexpr double kMaxTimeout = 3600.0;  // seconds
constexpr std::int64_t kMostRounds = 1'000'000'000;
constexpr std::int64_t kLongestPause = 3'600'000;  // milliseconds
constexpr std::size_t kMaxChannels = 4;
constexpr int kDefaultOffset = 250;

// What CLI11 fills before it becomes Options.
struct Raw {
    Options options;
    std::vector<std::string> keys;
    std::string key;  // of the commands that take just one
    std::string data;
    std::string language = "en";
    double timeout = 5.0;
    int id = 127;
    std::int64_t every = 1000;
    std::string file;
    std::string objects;  // KEY,KEY,...
    std::string trigger;
    std::string level;
    int edge = 1;
    std::optional<int> offset;
    std::string image;
    std::string bode;
    std::string table;
    std::string in;
    std::string out;
    bool save_motor = false;
    bool save_all = false;
};

std::string check_key(std::string& text) {
    if (parse_key(text)) return {};
    return "KEY is six hexadecimal digits (index and sub-index, such as 606300), not '" + text +
           "'";
}

// "606300,60FF00": one to four keys.
std::vector<std::string> split_keys(std::string_view text) {
    std::vector<std::string> keys;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t comma = std::min(text.find(',', from), text.size());
        keys.emplace_back(text.substr(from, comma - from));
        from = comma + 1;
    }
    return keys;
}

std::string check_keys(std::string& text) {
    std::vector<std::string> keys = split_keys(text);
    for (std::string& key : keys) {
        std::string wrong = check_key(key);
        if (!wrong.empty()) return wrong;
    }
    return keys.size() <= kMaxChannels
               ? std::string()
               : fmt::format("{} objects are too many: the drive records up to {} at once",
                             keys.size(), kMaxChannels);
}

std::string check_baud(std::string& text) {
    static const std::vector<std::string> kRates{"4800",  "9600",  "14400", "19200",
                                                 "38400", "56000", "57600", "115200"};
    if (std::find(kRates.begin(), kRates.end(), text) != kRates.end()) return {};
    return "no such rate: " + text + "; the rates are " +
           fmt::format("{}", fmt::join(kRates, ", "));
}

// Written out, since "nan" lies outside of no range.
std::string check_timeout(std::string& text) {
    double seconds = 0.0;
    const bool number = CLI::detail::lexical_cast(text, seconds);
    if (number && seconds >= kMinTimeout && seconds <= kMaxTimeout) return {};
    return fmt::format("{} is no time from {} to {} s", text, kMinTimeout, kMaxTimeout);
}

void add_global_options(CLI::App& app, Raw& raw) {
    auto* port = app.add_option("--port", raw.options.port,
                                "Serial device of the drive; without it, the one used last")
                     ->type_name("DEVICE");
    app.add_flag("--sim", raw.options.sim, "Work on a simulated drive, started for this command")
        ->excludes(port);
    app.add_option("--baud", raw.options.baud, "Line rate")
        ->capture_default_str()
        ->type_name("N")
        ->check(CLI::Validator(check_baud, ""));
    app.add_option("--id", raw.id, "Communication ID of the drive, 0 to 255")
        ->capture_default_str()
        ->type_name("N")
        ->check(CLI::Range(0, 255).description(""));
    app.add_option("--data", raw.data,
                   "Folder of the dictionary and sys/; without it, the one of the program")
        ->type_name("DIR");
    app.add_option("--lang", raw.language, "Language of names and messages: zh or en")
        ->capture_default_str()
        ->type_name("LANG")
        ->check(CLI::IsMember({"zh", "en"}).description(""));
    app.add_flag("--json", raw.options.json, "Print one JSON value in place of the table");
    app.add_option("--timeout", raw.timeout, "How long to wait for each answer of the drive")
        ->capture_default_str()
        ->type_name("S")
        ->check(CLI::Validator(check_timeout, ""));
}

void describe_key(CLI::Option& option) {
    option.required()->type_name("")->check(CLI::Validator(check_key, ""));
}

void add_key(CLI::App& command, Raw& raw) {
    describe_key(*command.add_option("KEY", raw.key, "Six hexadecimal digits"));
}

void add_keys(CLI::App& command, Raw& raw) {
    describe_key(*command.add_option("KEY", raw.keys, "Six hexadecimal digits each"));
}

void add_unit(CLI::App& command, Raw& raw) {
    command
        .add_option("--unit", raw.options.unit,
                    "Unit of the value; without it, the first unit of the object")
        ->type_name("U");
}

CLI::App* add_command(CLI::App& app, Raw& raw, CommandName name, const std::string& word,
                      const std::string& help) {
    CLI::App* command = app.add_subcommand(word, help);
    command->fallthrough();
    command->callback([&raw, name] { raw.options.command = name; });
    return command;
}

void add_dict(CLI::App& app, Raw& raw) {
    CLI::App* dict = app.add_subcommand("dict", "Look into the dictionary");
    dict->fallthrough();
    dict->require_subcommand(1);
    add_command(*dict, raw, CommandName::kDictFind, "find",
                "Objects by a part of their key or name, in both languages")
        ->add_option("TEXT", raw.options.text, "Part of a key or name")
        ->required()
        ->type_name("");
    add_key(*add_command(*dict, raw, CommandName::kDictShow, "show", "One record, every field"),
            raw);
}

void add_record(CLI::App& app, Raw& raw) {
    RecordOptions& record = raw.options.record;
    CLI::App* command =
        add_command(app, raw, CommandName::kRecord, "record", "Make one recording of the scope");
    command->add_option("OUT", raw.file, "The .scope file to write")->required()->type_name("");
    command->add_option("--objects", raw.objects, "Objects of channels 1 to 4, separated by commas")
        ->required()
        ->type_name("KEY,...")
        ->check(CLI::Validator(check_keys, ""));
    command->add_option("--period", record.period, "Sampling period in counts of 62.5 us")
        ->capture_default_str()
        ->type_name("N")
        ->check(CLI::Range(1, 65535).description(""));
    command->add_option("--samples", record.samples, "Samples of each channel")
        ->capture_default_str()
        ->type_name("N")
        ->check(CLI::Range(1, 8192).description(""));
    CLI::Option* trigger =
        command->add_option("--trigger", raw.trigger, "Wait until this object passes the level")
            ->type_name("KEY")
            ->check(CLI::Validator(check_key, ""));
    CLI::Option* level =
        command->add_option("--level", raw.level, "Level, in the first unit of the trigger object")
            ->type_name("TEXT")
            ->needs(trigger);
    trigger->needs(level);
    command->add_option("--edge", raw.edge, "0 triggers on a falling value, 1 on a rising one")
        ->capture_default_str()
        ->type_name("0|1")
        ->check(CLI::Range(0, 1).description(""))
        ->needs(trigger);
    command
        ->add_option("--offset", raw.offset,
                     "Samples kept from before the trigger; without it 250, or half of the samples "
                     "if that is less")
        ->type_name("N")
        ->check(CLI::Range(0, 8191).description(""));
}

void add_flash(CLI::App& app, Raw& raw) {
    CLI::App* command = add_command(app, raw, CommandName::kFlash, "flash",
                                    "Transfer a firmware image to the drive's bootloader");
    command->add_option("IMAGE", raw.image, "The .servo file")->required()->type_name("");
    command->add_flag("--verify", raw.options.flash.verify,
                      "Done only when the drive answers behind it, with the image's check value");
}

void add_scan(CLI::App& app, Raw& raw) {
    ScanOptions& scan = raw.options.scan;
    CLI::App* command = add_command(app, raw, CommandName::kScan, "scan",
                                    "Make one frequency scan; the motor moves by itself");
    command->add_option("OUT", raw.bode, "The .bode file to write")->required()->type_name("");
    const auto add = [command](const char* name, int& value, const char* unit, int least, int most,
                               const char* help) {
        command->add_option(name, value, help)
            ->required()
            ->type_name(unit)
            ->check(CLI::Range(least, most).description(""));
    };
    add("--start", scan.start, "HZ", 4, 900, "First frequency, 4 to 900");
    add("--stop", scan.stop, "HZ", 4, 1000, "Last frequency, up to 1000; at least start and step");
    add("--step", scan.step, "HZ", 3, 200, "From one frequency to the next, 3 to 200");
    add("--current", scan.current, "N", 32, 800, "Excitation in the drive's units, 32 to 800");
}

void add_table(CLI::App& app, Raw& raw) {
    CLI::App* table = app.add_subcommand("table", "Read or write the position table");
    table->fallthrough();
    table->require_subcommand(1);
    add_command(*table, raw, CommandName::kTableRead, "read", "From the drive into a file")
        ->add_option("OUT", raw.table, "The .pft file to write")
        ->required()
        ->type_name("");
    add_command(*table, raw, CommandName::kTableWrite, "write", "From a file into the drive")
        ->add_option("IN", raw.table, "The .pft file")
        ->required()
        ->type_name("");
}

void add_file(CLI::App& command, const char* name, std::string& file, const char* help) {
    command.add_option(name, file, help)->required()->type_name("");
}

void add_transfer(CLI::App& app, Raw& raw) {
    CLI::App* pull = add_command(app, raw, CommandName::kPull, "pull",
                                 "Read the objects of a template from the drive into a file");
    add_file(*pull, "TEMPLATE", raw.in, "The .cdo file that lists the objects");
    add_file(*pull, "OUT", raw.out, "The .cdi file to write");
    CLI::App* push = add_command(app, raw, CommandName::kPush, "push",
                                 "Write the values of a file into the drive");
    add_file(*push, "IN", raw.in, "The .cdi file");
    push->add_flag("--dry-run", raw.options.transfer.dry_run,
                   "Write nothing; tell which values would change and which rows are doubtful");
    CLI::App* diff = add_command(app, raw, CommandName::kDiff, "diff",
                                 "Compare two files of values; needs no drive");
    add_file(*diff, "A", raw.in, "A .cdi file");
    add_file(*diff, "B", raw.out, "Another one");
    diff->add_flag("--units", raw.options.transfer.units,
                   "Show values as a page does, in the first unit of each object");
}

void add_drive_commands(CLI::App& app, Raw& raw) {
    CLI::App* save =
        add_command(app, raw, CommandName::kSave, "save", "Make the control parameters permanent");
    CLI::Option* motor =
        save->add_flag("--motor", raw.save_motor, "Make the motor parameters permanent instead");
    save->add_flag("--all", raw.save_all, "Make everything permanent")->excludes(motor);
    add_command(app, raw, CommandName::kRestart, "restart", "Restart the drive")
        ->add_flag("--wait", raw.options.wait, "Done only when the drive has come back");
    add_command(app, raw, CommandName::kReset, "reset",
                "Bring the control parameters back to their defaults, until they are saved");
}

void add_commands(CLI::App& app, Raw& raw) {
    add_command(app, raw, CommandName::kPorts, "ports", "List the serial ports");
    add_dict(app, raw);

    CLI::App* read = add_command(app, raw, CommandName::kRead, "read", "Read objects");
    add_keys(*read, raw);
    add_unit(*read, raw);

    CLI::App* write = add_command(app, raw, CommandName::kWrite, "write",
                                  "Write an object as a page's editor would");
    add_key(*write, raw);
    write->add_option("TEXT", raw.options.text, "The value, as typed into a page")
        ->required()
        ->type_name("");
    add_unit(*write, raw);

    CLI::App* watch =
        add_command(app, raw, CommandName::kWatch, "watch", "Read objects again and again");
    add_keys(*watch, raw);
    add_unit(*watch, raw);
    watch->add_option("--count", raw.options.count, "Rounds; without it, until Ctrl-C")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{1}, kMostRounds).description(""));
    watch->add_option("--every", raw.every, "Milliseconds from round to round")
        ->capture_default_str()
        ->type_name("MS")
        ->check(CLI::Range(std::int64_t{0}, kLongestPause).description(""));

    add_record(app, raw);
    add_flash(app, raw);
    add_scan(app, raw);
    add_table(app, raw);
    add_transfer(app, raw);
    add_drive_commands(app, raw);
    add_command(app, raw, CommandName::kFaults, "faults", "Show the faults of the drive");
    add_command(app, raw, CommandName::kFormula, "formula",
                "Evaluate formula requests from standard input");
}

void finish_record(const Raw& raw, RecordOptions& record) {
    record.file = raw.file;
    record.offset = raw.offset.value_or(std::min(kDefaultOffset, record.samples / 2));
    if (raw.trigger.empty()) return;
    record.trigger = TriggerOptions{parse_key(raw.trigger).value_or(0), raw.level, raw.edge};
}

Options finish(Raw& raw) {
    Options options = std::move(raw.options);
    if (!raw.key.empty()) raw.keys.push_back(raw.key);
    if (!raw.objects.empty()) raw.keys = split_keys(raw.objects);
    finish_record(raw, options.record);
    for (const std::string& key : raw.keys)
        options.keys.push_back(parse_key(key).value_or(0));
    options.flash.file = raw.image;
    options.scan.file = raw.bode;
    options.table.file = raw.table;
    options.transfer.in = raw.in;
    options.transfer.out = raw.out;
    if (raw.save_motor) options.save = SaveScope::kMotor;
    if (raw.save_all) options.save = SaveScope::kEverything;
    options.id = static_cast<std::uint8_t>(raw.id);
    options.data = raw.data;
    options.language = raw.language == "zh" ? base::Language::kChinese : base::Language::kEnglish;
    options.timeout = std::chrono::milliseconds(std::llround(raw.timeout * 1000.0));
    options.every = std::chrono::milliseconds(raw.every);
    return options;
}

}  // namespace

ParsedLine parse_command_line(std::vector<std::string> arguments) {
    Raw raw;
    CLI::App app{"Commands for one servo drive, for scripts and production lines.", "servoctl"};
    app.set_version_flag("--version", "servoctl " SERVO_VERSION);
    app.require_subcommand(1);
    add_global_options(app, raw);
    add_commands(app, raw);
    std::reverse(arguments.begin(), arguments.end());  // as CLI11 takes them
    ParsedLine parsed;
    try {
        app.parse(std::move(arguments));
        parsed.options = finish(raw);
    } catch (const CLI::CallForVersion& call) {
        parsed.end.out = std::string(call.what()) + "\n";
    } catch (const CLI::CallForHelp&) {
        const CLI::App* shown = &app;
        while (!shown->get_subcommands().empty())
            shown = shown->get_subcommands().front();
        parsed.end.out = shown->help();
    } catch (const CLI::CallForAllHelp&) {
        parsed.end.out = app.help("", CLI::AppFormatMode::All);
    } catch (const CLI::ParseError& error) {
        const std::vector<std::string> unknown = app.remaining(true);
        const std::string what =
            unknown.empty() ? error.what() : "unknown word: " + unknown.front();
        parsed.end.status = ExitStatus::kWrongUse;
        parsed.end.err = fmt::format("servoctl: {}\nservoctl --help tells the use.\n", what);
    }
    return parsed;
}

std::optional<dictionary::Identity> parse_key(std::string_view text) {
    dictionary::Identity key = 0;
    const char* const end = text.data() + text.size();
    const bool digits = std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
    if (text.size() != 6 || !digits) return std::nullopt;
    std::from_chars(text.data(), end, key, 16);
    return key;
}

std::string key_text(dictionary::Identity key) {
    return fmt::format("{:06X}", key);
}

}  // namespace servo::cli
