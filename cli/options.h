// The command line of servoctl.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "cli/exit_status.h"
#include "dictionary/keys.h"

namespace servo::cli {

enum class CommandName : std::uint8_t {
    kPorts,
    kDictFind,
    kDictShow,
    kRead,
    kWrite,
    kWatch,
    kRecord,
    kFlash,
    kScan,
    kTableRead,
    kTableWrite,
    kPull,
    kPush,
    kDiff,
    kSave,
    kRestart,
    kReset,
    kFaults,
    kFormula,
};

struct TriggerOptions {
    dictionary::Identity key = 0;
    std::string level;  // as typed, in the first unit of the object
    int edge = 1;       // 0 falling, 1 rising
};

// What `record` asks of the recorder, beside the objects.
struct RecordOptions {
    std::filesystem::path file;
    int period = 1;  // in counts of 62.5 us
    int samples = 500;
    int offset = 250;  // samples before the trigger
    std::optional<TriggerOptions> trigger;
};

// What `flash` sends, and whether it asks the drive behind it.
struct FlashOptions {
    std::filesystem::path file;
    bool verify = false;
};

// The plan of `scan`, within the limits of the tuner's boxes.
struct ScanOptions {
    std::filesystem::path file;
    int start = 0;  // Hz
    int stop = 0;
    int step = 0;
    int current = 0;  // excitation, in the drive's units
};

// The .pft file of `table read` and `table write`.
struct TableOptions {
    std::filesystem::path file;
};

// The files of `pull`, `push` and `diff`.
struct TransferOptions {
    std::filesystem::path in;   // the template of `pull`, A of `diff`
    std::filesystem::path out;  // of `pull`; B of `diff`; empty with `push`
    bool dry_run = false;       // push: only tell what would change
    bool units = false;         // diff: values as a page shows them
};

// What `save` makes permanent.
enum class SaveScope : std::uint8_t { kControl, kMotor, kEverything };

struct Options {
    std::string port;  // device path, or the text of the port list; empty: the port used last
    bool sim = false;
    int baud = 38400;
    std::uint8_t id = 127;       // communication ID
    std::filesystem::path data;  // empty: the folder of the program
    base::Language language = base::Language::kEnglish;
    bool json = false;
    std::chrono::milliseconds timeout{5000};  // for each answer of the drive

    CommandName command = CommandName::kPorts;
    std::vector<dictionary::Identity> keys;  // read, write, watch, dict show, record
    std::string text;                        // dict find, write
    std::string unit;                        // empty: the first unit of each object
    std::int64_t count = 0;                  // watch: rounds, 0 without end
    std::chrono::milliseconds every{1000};   // watch: from the start of a round to the next
    RecordOptions record;
    FlashOptions flash;
    ScanOptions scan;
    TableOptions table;
    TransferOptions transfer;
    SaveScope save = SaveScope::kControl;
    bool wait = false;  // restart: until the drive answers again
};

// The program ends here: help that was asked for, or wrong use.
struct EarlyEnd {
    ExitStatus status = ExitStatus::kDone;
    std::string out;
    std::string err;
};

struct ParsedLine {
    std::optional<Options> options;
    EarlyEnd end;  // when there are no options
};

// `arguments` without the program's name.
ParsedLine parse_command_line(std::vector<std::string> arguments);

// Six hexadecimal digits.
std::optional<dictionary::Identity> parse_key(std::string_view text);
// Six upper-case hexadecimal digits.
std::string key_text(dictionary::Identity key);

}  // namespace servo::cli
