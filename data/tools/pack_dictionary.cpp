// Makes the files of the run-time tree from the sources in data/.
//
//   pack_dictionary dictionary OUT FORMULAS TABLE...   fixed-record dictionary file
//   pack_dictionary modbus OUT FORMULAS TABLE...       list of Modbus addresses
//   pack_dictionary text OUT IN                        UTF-8 text to the code page, CR LF
//
// Anything wrong is written as TABLE:LINE: what is wrong; nothing is then made. Exit status 0 done,
// 1 wrong data, 2 wrong use, 4 a file could not be read or written.
#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/file.h"
#include "data/tools/object_check.h"
#include "data/tools/records.h"
#include "data/tools/table.h"

namespace {

using namespace servo;

enum ExitStatus : int { kDone = 0, kWrongData = 1, kWrongUse = 2, kFileFailed = 4 };

int fail(ExitStatus status, std::string_view text) {
    fmt::print(stderr, "{}\n", text);
    return status;
}

int save(const std::string& file, std::string_view bytes) {
    if (base::write_file(file, bytes)) return kDone;
    return fail(kFileFailed, fmt::format("{}: could not be written", file));
}

int report(const data::Problems& problems) {
    for (const data::Problem& problem : problems) {
        fmt::print(stderr, "{}:{}: {}\n", problem.file, problem.line, problem.text);
    }
    return kWrongData;
}

// `files`: the table of formulas, then the tables of objects.
int pack(std::string_view what, const std::string& out, std::span<const std::string> files) {
    data::Problems problems;
    data::Formulas formulas;
    std::vector<data::Object> objects;
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
    if (!problems.empty()) return report(problems);
    return save(out, what == "dictionary" ? data::build_records(std::move(objects))
                                          : data::tree_text(data::modbus_list(std::move(objects))));
}

int convert(const std::string& out, const std::string& in) {
    const auto text = base::read_file(in);
    if (!text) return fail(kFileFailed, fmt::format("{}: could not be read", in));
    base::LineReader reader(*text);
    for (int line = 1; const auto bytes = reader.next(); ++line) {
        if (data::is_code_page_text(*bytes)) continue;
        return report({{in, line, "holds a character that GBK has not, or a control character"}});
    }
    return save(out, data::tree_text(*text));
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::string_view what = arguments.empty() ? "" : std::string_view(arguments.front());
    if (what == "text" && arguments.size() == 3) return convert(arguments[1], arguments[2]);
    if ((what == "dictionary" || what == "modbus") && arguments.size() >= 4) {
        return pack(what, arguments[1], std::span(arguments).subspan(2));
    }
    return fail(kWrongUse,
                "use: pack_dictionary dictionary|modbus OUT FORMULAS TABLE...\n"
                "     pack_dictionary text OUT IN");
}
