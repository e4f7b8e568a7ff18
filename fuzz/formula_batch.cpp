// Lines of `servoctl formula`: every line has one printable answer.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "cli/formula_batch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.size() > 4096) return 0;
    servo::cli::FormulaBatch batch;
    while (!input.empty()) {
        const std::size_t end = input.find('\n');
        const std::string answer = batch.answer(input.substr(0, end));
        for (const char c : answer) {
            const bool separates = c == '\t';  // the two fields of `split`
            if (!separates && (c < 0x20 || c > 0x7E)) std::abort();
        }
        input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    }
    return 0;
}
