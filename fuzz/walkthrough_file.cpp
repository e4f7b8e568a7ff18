// The parser of walkthrough files: any bytes give a list of commands in the order of their lines,
// each of them readable or with a reason why not.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/walk_script.h"
#include "app/walk_words.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace servo::app;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    int last_line = 0;
    for (const WalkCommand& command : parse_walk(text)) {
        if (command.line <= last_line) std::abort();  // in the order of the file, one a line
        last_line = command.line;
        if (command.verb == WalkVerb::kBad && command.text.empty()) std::abort();
        if (command.number < 0 || command.row < 0 || command.column < 0) std::abort();
        // What is shown on one line equals itself.
        if (!same_text(command.text, one_line(command.text))) std::abort();
    }
    return 0;
}
