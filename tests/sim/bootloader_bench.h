// A drive whose bootloader is spoken to in virtual time, and images for it. The images are built
// here a second time, from their description, so that the drive's own reading is tested.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/drive_bench.h"

namespace servo::sim::test {

struct ImageSpec {
    std::string type = "QRL400";
    std::string version = "SW 2.00.0001";
    std::size_t bytes = 5000;  // of the program
    std::uint32_t seed = 1;
    std::string magic = "QFW1";
    std::uint32_t check_change = 0;   // turned over in the check value
    std::uint32_t length_change = 0;  // added to the length in the head
};

// The bytes of the image, and the check value of what it was built from.
Bytes image_bytes(const ImageSpec& spec);
std::uint32_t image_check(const ImageSpec& spec);

std::uint32_t plain_crc32(std::string_view bytes);  // bit by bit
std::string with_sum(std::string characters);       // and its eight digits

struct BlockSpec {
    std::uint32_t number = 0;
    std::uint32_t total = 1;
    std::uint32_t count = 0;  // as the block says
    std::uint32_t mark = 0x1234;
    Bytes data;
    std::size_t length = 4120;  // of the block, with its sum
};
std::string make_block(const BlockSpec& spec);

// The image as blocks in small letters, without their CR. The last one has so many characters; 0:
// as few as it can have.
std::vector<std::string> image_blocks(const Bytes& image, std::uint32_t mark,
                                      std::size_t last_length = 4120);
std::vector<std::string> image_blocks(const ImageSpec& spec, std::size_t last_length = 4120);

// Objects and values of the bench, with those that show the program.
std::vector<Entry> boot_entries();
Options with_boot_values(Options options);

class BootBench : public DriveBench {
  public:
    explicit BootBench(Options options = {});

    // A drive that has come up in its bootloader.
    static Options in_bootloader(Options options = {});

    // Sends the bytes and gives what is said until `wait` later.
    std::string say(std::string_view text, microseconds wait = std::chrono::milliseconds(50));
    // The same for a command: with its CR.
    std::string command(const std::string& word, microseconds wait = std::chrono::milliseconds(50));
    // What is said in that time without anything being sent.
    std::string listen(microseconds time);

    // "hi", type word and erase. True when all was answered as it should be.
    bool prepare(const std::string& type = "QRL400");
    // Switch and block; the answer to the block.
    std::string send_block(const std::string& block);
    bool send_blocks(const std::vector<std::string>& blocks);

    std::string version();
    std::int64_t check_value();
};

}  // namespace servo::sim::test
