// The simulated drive as a program, on a real pseudo-terminal.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "sim/drive_bench.h"

namespace servo::sim::test {

// A read of 2000:03, which the bench's table gives 40000.
inline constexpr Eight kRead{0x40, 0x00, 0x20, 0x03, 0, 0, 0, 0};

// Reads up to `count` bytes; fewer after ten seconds.
Bytes read_bytes(int file, std::size_t count);

// Of a run that ends by itself.
int exit_status(const std::string& arguments);

class DriveSim : public ::testing::Test {
  protected:
    DriveSim();
    ~DriveSim() override;

    // Starts the program; `path_` is then the line's.
    void start(std::vector<std::string> arguments);
    void open_line();
    Bytes ask(const Eight& payload) const;
    void type_in(const std::string& text) const;
    std::string line() const;  // the program's next line of output
    int end();                 // waits for it; what waitpid tells

    std::filesystem::path folder_;
    std::string path_;
    pid_t child_ = -1;
    int input_ = -1;
    int output_ = -1;
    int line_ = -1;
};

}  // namespace servo::sim::test
