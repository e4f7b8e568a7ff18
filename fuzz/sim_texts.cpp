// The texts that the simulated drive reads: its value table, its stored parameters, its options,
// the lines of its program's input.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "sim/drive.h"
#include "sim/input_lines.h"
#include "sim/memory.h"
#include "sim/options.h"
#include "sim/value_table.h"

namespace {

void require(bool held, const char* what) {
    if (held) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

void value_table(std::string_view text) {
    for (const auto& line : servo::sim::parse_value_table(text).lines) {
        require(!line.min || !line.max || *line.min <= *line.max, "limits in order");
        require(!(line.flags.read_only && line.flags.write_only), "one access at least");
    }
}

void memory(std::string_view text) {
    servo::sim::Memory memory;
    if (memory.from_text(text)) {
        servo::sim::Memory again;
        require(again.from_text(memory.to_text()), "what was read can be written and read again");
        require(again.to_text() == memory.to_text(), "and is the same");
    }
    servo::sim::Memory holder;
    holder.put(0x100800, std::string(text));
    servo::sim::Memory other;
    require(other.from_text(holder.to_text()), "any text can be stored");
    require(std::get<std::string>(*other.find(0x100800)) == text, "and comes back");
}

void options(std::string_view text) {
    servo::sim::Options options;
    if (!servo::sim::add_fault(options, text)) {
        for (const double share : {options.faults.drop, options.faults.corrupt,
                                   options.faults.doubled, options.faults.foreign}) {
            require(share >= 0.0 && share <= 1.0, "a probability is one");
        }
    }
    servo::sim::add_setting(options, text);
}

void lines(std::string_view text) {
    static const servo::dictionary::Store kStore;
    static servo::sim::Drive drive(kStore, {});
    for (int pin = 0; pin < 8; ++pin)
        drive.set_pin(pin, false);
    servo::sim::LineCutter cutter;
    // In two pieces: where a line is cut makes no difference.
    cutter.put(text.substr(0, text.size() / 2));
    cutter.put(text.substr(text.size() / 2));
    while (const auto line = cutter.next()) {
        const std::uint8_t before = drive.input_pins();
        const auto answer = servo::sim::obey_line(drive, *line);
        require(answer.good || !answer.text.empty(), "what is wrong is said");
        require(answer.good || drive.input_pins() == before, "and does nothing");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    value_table(text);
    memory(text);
    options(text);
    lines(text);
    return 0;
}
