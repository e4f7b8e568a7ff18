// Makes one description of the homing form from its source.
//
//   describe_homing OUT IN      IN in UTF-8; OUT in the code page, CR LF
//
// The file's name says which methods it is for. Exit status 0 done, 1 wrong data, 2 wrong use, 4 a
// file could not be read or written.
#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/file.h"
#include "data/tools/homing_description.h"
#include "data/tools/object_check.h"
#include "data/tools/records.h"

namespace {

using namespace servo;

enum ExitStatus : int { kDone = 0, kWrongData = 1, kWrongUse = 2, kFileFailed = 4 };

int fail(ExitStatus status, const std::string& text) {
    fmt::print(stderr, "{}\n", text);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 2) return fail(kWrongUse, "use: describe_homing OUT IN");
    const std::string& out = arguments[0];
    const std::string& in = arguments[1];
    const auto source = base::read_file(in);
    if (!source) return fail(kFileFailed, in + ": could not be read");
    const auto described = data::described_methods(std::filesystem::path(in).filename().string());
    if (!described) return fail(kWrongData, in + ":1: no homing method shows a file of this name");
    const std::string text = data::fill_description(*source, *described);
    base::LineReader reader(text);
    for (int line = 1; const auto bytes = reader.next(); ++line)
        if (!data::is_code_page_text(*bytes))
            return fail(kWrongData, fmt::format("{}: line {} of the text holds a character that "
                                                "GBK has not, or a control character",
                                                in, line));
    if (!base::write_file(out, data::tree_text(text)))
        return fail(kFileFailed, out + ": could not be written");
    return kDone;
}
