// The programs of the build as a user runs them, and a simulated drive that outlives single
// commands.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "cli/process.h"

namespace servo::test {

inline std::string program(const char* name) {
    return std::string(SERVO_BIN_DIR) + "/" + name;
}

struct Result {
    int status = -1;
    std::string out;
    std::string err;
};

inline Result run(std::vector<std::string> arguments, std::string_view input = {}) {
    arguments.insert(arguments.begin(), program("servoctl"));
    Process process(std::move(arguments));
    process.write(input);
    process.close_input();
    const int status = process.wait();
    return {status, process.out(), process.err()};
}

// A simulated drive that outlives single commands.
class RunningDrive {
  public:
    explicit RunningDrive(std::vector<std::string> arguments = {})
        : process_(words(folder_, std::move(arguments))) {
        EXPECT_TRUE(process_.wait_for("line: ")) << process_.err();
    }
    std::string line() const { return (folder_ / "line").string(); }
    Result ctl(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--port", line()});
        return run(std::move(arguments));
    }
    // A line on its standard input, and a wait for what it answers there.
    void say(std::string_view line) { process_.write(std::string(line) + "\n"); }
    bool wait_for(std::string_view text) { return process_.wait_for(text); }
    void unplug() {
        process_.signal(SIGKILL);
        process_.wait();
    }

  private:
    static std::vector<std::string> words(const TempFolder& folder,
                                          std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {program("drive-sim"), "--link", (folder / "line").string()});
        return arguments;
    }

    TempFolder folder_;
    Process process_;
};

}  // namespace servo::test
