// Programs as a user starts them, for benchmarks that measure from outside.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace servo::bench {

// One run of a program with its standard input and output at our side. What it says on standard
// error is dropped.
class Process {
  public:
    explicit Process(std::vector<std::string> command) {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) return;
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        std::vector<char*> arguments;
        for (std::string& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        started_ =
            ::posix_spawn(&child_, arguments[0], &actions, nullptr, arguments.data(), environ) == 0;
        posix_spawn_file_actions_destroy(&actions);
        ::close(in[0]);
        ::close(out[1]);
        to_child_ = in[1];
        from_child_ = out[0];
    }
    ~Process() { finish(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // Its next line without the end; empty when it has ended.
    std::string line() {
        std::string text;
        char byte = 0;
        while (started_ && ::read(from_child_, &byte, 1) == 1 && byte != '\n')
            text += byte;
        return text;
    }

    // Closes its input and waits for its end. True when it ended well.
    bool finish() {
        if (std::exchange(finished_, true)) return good_;
        ::close(to_child_);
        int status = 1;
        if (started_) ::wait4(child_, &status, 0, &usage_);
        ::close(from_child_);
        good_ = status == 0;
        return good_;
    }

    // Processor time in seconds, known after finish().
    double processor_seconds() const {
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
        };
        return seconds(usage_.ru_utime) + seconds(usage_.ru_stime);
    }

  private:
    pid_t child_ = 0;
    int to_child_ = -1;
    int from_child_ = -1;
    bool started_ = false;
    bool finished_ = false;
    bool good_ = false;
    rusage usage_{};
};

}  // namespace servo::bench
