// Makes the error table document from the program's own table of faults.
//
//   write_fault_table OUT VARIANT      VARIANT 0 or 1, the product variant
//
// Exit status 0 done, 2 wrong use, 4 the file could not be written.
#include <fmt/format.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/file.h"
#include "data/tools/fault_document.h"

int main(int argc, char** argv) {
    using namespace servo;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 2) {
        fmt::print(stderr, "use: write_fault_table OUT VARIANT\n");
        return 2;
    }
    const bool reduced = arguments[1] == "1";
    const auto sheets = data::fault_sheets(reduced ? dictionary::Variant::kReduced
                                                   : dictionary::Variant::kAllItems);
    if (base::write_file(arguments[0], data::xls_bytes(sheets))) return 0;
    fmt::print(stderr, "{}: could not be written\n", arguments[0]);
    return 4;
}
