#include "sim/bootloader_bench.h"

#include <fmt/format.h>

namespace servo::sim::test {

using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

void put_number(Bytes& bytes, std::uint32_t number) {
    for (int i = 0; i < 4; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

void put_text(Bytes& bytes, const std::string& text, std::size_t size) {
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.insert(bytes.end(), size - text.size(), 0);
}

Bytes summed_bytes(const ImageSpec& spec) {
    Bytes bytes;
    put_text(bytes, spec.type, 16);
    put_text(bytes, spec.version, 32);
    std::uint32_t state = spec.seed;
    for (std::size_t i = 0; i < spec.bytes; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes.push_back(static_cast<std::uint8_t>(state >> 24U));
    }
    return bytes;
}

std::string text_of(const std::vector<Transmission>& sent) {
    std::string text;
    for (const Transmission& one : sent)
        text.append(one.bytes.begin(), one.bytes.end());
    return text;
}

}  // namespace

std::uint32_t plain_crc32(std::string_view bytes) {
    std::uint32_t rest = 0xFFFFFFFF;
    for (const char c : bytes) {
        rest ^= static_cast<std::uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest & 1U) != 0 ? rest >> 1U ^ 0xEDB88320U : rest >> 1U;
    }
    return ~rest;
}

std::string with_sum(std::string characters) {
    characters += fmt::format("{:08x}", plain_crc32(characters));
    return characters;
}

std::uint32_t image_check(const ImageSpec& spec) {
    const Bytes summed = summed_bytes(spec);
    return plain_crc32(std::string(summed.begin(), summed.end()));
}

Bytes image_bytes(const ImageSpec& spec) {
    Bytes image(spec.magic.begin(), spec.magic.end());
    put_number(image, static_cast<std::uint32_t>(spec.bytes) + spec.length_change);
    put_number(image, image_check(spec) ^ spec.check_change);
    put_number(image, 0);
    const Bytes summed = summed_bytes(spec);
    image.insert(image.end(), summed.begin(), summed.end());
    return image;
}

std::string make_block(const BlockSpec& spec) {
    std::string block =
        fmt::format("{:04x}{:04x}{:04x}{:04x}", spec.number, spec.total, spec.count, spec.mark);
    for (const std::uint8_t byte : spec.data)
        block += fmt::format("{:02x}", byte);
    if (block.size() + 8 < spec.length) block.append(spec.length - 8 - block.size(), '.');
    return with_sum(block);
}

std::vector<std::string> image_blocks(const Bytes& image, std::uint32_t mark,
                                      std::size_t last_length) {
    std::vector<std::string> blocks;
    const std::size_t total = (image.size() + 2047) / 2048;
    for (std::size_t i = 0; i < total; ++i) {
        const auto from = image.begin() + static_cast<std::ptrdiff_t>(i * 2048);
        BlockSpec spec;
        spec.data.assign(from, i + 1 == total ? image.end() : from + 2048);
        spec.number = static_cast<std::uint32_t>(i);
        spec.total = static_cast<std::uint32_t>(total);
        spec.count = static_cast<std::uint32_t>(spec.data.size());
        spec.mark = mark & 0xFFFFU;
        if (i + 1 == total) spec.length = last_length;
        blocks.push_back(make_block(spec));
    }
    return blocks;
}

std::vector<std::string> image_blocks(const ImageSpec& spec, std::size_t last_length) {
    return image_blocks(image_bytes(spec), image_check(spec), last_length);
}

std::vector<Entry> boot_entries() {
    std::vector<Entry> all = bench_entries();
    all.push_back({"100A00", "Visible String", "R"});
    all.push_back({"1F5601", "Unsigned32", "R"});
    return all;
}

Options with_boot_values(Options options) {
    if (options.values.empty()) {
        options.values =
            std::string(kBenchValues) + "100A00\tSW 1.00\t\t\tr\n1F5601\t4711\t\t\tr\n";
    }
    return options;
}

BootBench::BootBench(Options options)
    : DriveBench(with_boot_values(std::move(options)), boot_entries()) {}

Options BootBench::in_bootloader(Options options) {
    options.bootloader = true;
    return options;
}

std::string BootBench::say(std::string_view text, microseconds wait) {
    return text_of(exchange(Bytes(text.begin(), text.end()), wait));
}

std::string BootBench::command(const std::string& word, microseconds wait) {
    return say(word + "\r", wait);
}

std::string BootBench::listen(microseconds time) {
    run(time);
    return text_of(drive().take_output());
}

bool BootBench::prepare(const std::string& type) {
    return command("hi").find(" bootloader") != std::string::npos && command(type) == "right\r\n" &&
           command("e", seconds(10)) == "erased success\r\n";
}

std::string BootBench::send_block(const std::string& block) {
    if (command("w") != "switch to block receive mode\r\n") return "no switch";
    return command(block);
}

bool BootBench::send_blocks(const std::vector<std::string>& blocks) {
    for (const std::string& block : blocks) {
        if (send_block(block) != "programme ok\r\n") return false;
    }
    return true;
}

std::string BootBench::version() {
    return drive().text(0x100A00).value_or("no text");
}

std::int64_t BootBench::check_value() {
    return drive().value(0x1F5601).value_or(-1);
}

}  // namespace servo::sim::test
