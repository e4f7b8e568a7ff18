// Makes the template of a complete configuration from the sources in data/:
//
//   list_settings OUT VALUES FORMULAS TABLE...
//
// A line for every parameter that the drive keeps (flag `s` of VALUES) and that can be written: key
// and both names. Texts, commands, live values and what the drive finds out by itself have no such
// flag. Anything wrong is written as TABLE:LINE: what is wrong; nothing is then made. Exit status 0
// done, 1 wrong data, 2 wrong use, 4 a file could not be read or written.
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "base/file.h"
#include "data/tools/object_check.h"
#include "data/tools/records.h"
#include "data/tools/table.h"

namespace {

using namespace servo;

enum ExitStatus : int { kDone = 0, kWrongData = 1, kWrongUse = 2, kFileFailed = 4 };

constexpr std::string_view kValuesHeader = "key\tdefault\tmin\tmax\tflags";

int fail(ExitStatus status, std::string_view text) {
    fmt::print(stderr, "{}\n", text);
    return status;
}

std::set<dictionary::Identity> stored_objects(const std::string& file, std::string_view text,
                                              data::Problems& problems) {
    std::set<dictionary::Identity> stored;
    for (const data::Row& row : data::read_rows(file, text, kValuesHeader, problems)) {
        const std::string& key = row.cells[0];
        dictionary::Identity object = 0;
        const auto read = std::from_chars(key.data(), key.data() + key.size(), object, 16);
        if (key.size() != 6 || read.ptr != key.data() + key.size())
            problems.push_back({file, row.line, "no key of six digits"});
        else if (row.cells[4].find('s') != std::string::npos)
            stored.insert(object);
    }
    return stored;
}

// By their keys, but for the PDOs, which come last: a drive takes a new mapping only while the PDO
// is off, so of each PDO the entries come before their number, and what switches it on comes last.
using Place = std::tuple<int, int, int, int>;

Place place_of(dictionary::Identity object) {
    const int index = object >> 8;
    const int sub = object & 0xFF;
    const bool communication =
        (index >= 0x1400 && index < 0x1600) || (index >= 0x1800 && index < 0x1A00);
    const bool mapping = (index >= 0x1600 && index < 0x1800) || (index >= 0x1A00 && index < 0x1C00);
    if (!communication && !mapping) return {0, index, sub, 0};
    const int pdo = communication ? index : index - 0x200;
    constexpr int kCobId = 1;
    constexpr int kLast = 0x100;
    if (mapping) return {1, pdo, 0, sub == 0 ? kLast : sub};
    return {1, pdo, 1, sub == kCobId ? kLast : sub};
}

int bits_of(const std::string& type) {
    const std::string digits = type.substr(type.find_first_of("0123456789"));
    return std::stoi(digits);
}

std::string settings_list(std::vector<data::Object> objects,
                          const std::set<dictionary::Identity>& stored) {
    std::erase_if(objects, [&](const data::Object& object) {
        return !stored.contains(object.key) || object.attr.find('W') == std::string::npos ||
               object.type == "Visible String";
    });
    std::ranges::sort(objects, {}, [](const data::Object& object) { return place_of(object.key); });
    std::string text;
    for (const data::Object& object : objects)
        text += fmt::format("{:06X}{:02X},{},{}\n", object.key, bits_of(object.type),
                            object.name_zh, object.name_en);
    return text;
}

int make(const std::string& out, const std::string& values, std::span<const std::string> files) {
    data::Problems problems;
    data::Formulas formulas;
    std::vector<data::Object> objects;
    const auto table = base::read_file(values);
    if (!table) return fail(kFileFailed, fmt::format("{}: could not be read", values));
    const auto stored = stored_objects(values, *table, problems);
    for (const std::string& file : files) {
        const auto text = base::read_file(file);
        if (!text) return fail(kFileFailed, fmt::format("{}: could not be read", file));
        if (&file == &files.front()) {
            formulas = data::read_formulas(file, *text, problems);
            continue;
        }
        const auto more = data::read_objects(file, *text, formulas, problems);
        objects.insert(objects.end(), more.begin(), more.end());
    }
    data::check_objects(objects, problems);
    for (const data::Problem& problem : problems)
        fmt::print(stderr, "{}:{}: {}\n", problem.file, problem.line, problem.text);
    if (!problems.empty()) return kWrongData;
    const std::string list = settings_list(std::move(objects), stored);
    if (base::write_file(out, data::tree_text(list))) return kDone;
    return fail(kFileFailed, fmt::format("{}: could not be written", out));
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() >= 4)
        return make(arguments[0], arguments[1], std::span(arguments).subspan(2));
    return fail(kWrongUse, "use: list_settings OUT VALUES FORMULAS TABLE...");
}
