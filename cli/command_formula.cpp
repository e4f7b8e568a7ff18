#include <istream>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/formula_batch.h"

namespace servo::cli {
namespace {

constexpr std::size_t kFlushAt = 1U << 16U;

}  // namespace

// Answers are handed on as soon as no further request waits, so that another program can ask, read
// the answer and ask again; a long file goes through in large pieces.
ExitStatus run_formula(const Options& options, std::istream& in, const Output& output) {
    FormulaBatch batch;
    std::string line;
    std::string ready;
    bool any = false;
    while (std::getline(in, line)) {
        if (line.ends_with('\r')) line.pop_back();
        const std::string answer = batch.answer(line);
        if (options.json)
            ready += (any ? ",\n " : "[\n ") + nlohmann::json(answer).dump();
        else
            ready += answer + "\n";
        any = true;
        if (ready.size() < kFlushAt && in.rdbuf()->in_avail() > 0) continue;
        output.out(ready);
        ready.clear();
    }
    if (options.json) ready += any ? "\n]\n" : "[]\n";
    output.out(ready);
    return ExitStatus::kDone;
}

}  // namespace servo::cli
