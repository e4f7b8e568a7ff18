#include "sim/drive_sim_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>

namespace servo::sim::test {

using Clock = std::chrono::steady_clock;

Bytes read_bytes(int file, std::size_t count) {
    Bytes bytes;
    const auto end = Clock::now() + std::chrono::seconds(10);
    while (bytes.size() < count && Clock::now() < end) {
        pollfd wait{file, POLLIN, 0};
        if (poll(&wait, 1, 100) <= 0 || (wait.revents & POLLIN) == 0) continue;
        std::array<std::uint8_t, 256> part{};
        const ssize_t got = ::read(file, part.data(), std::min(part.size(), count - bytes.size()));
        if (got > 0) bytes.insert(bytes.end(), part.begin(), part.begin() + got);
    }
    return bytes;
}

int exit_status(const std::string& arguments) {
    const int status = std::system(
        (SERVO_BIN_DIR "/drive-sim " + arguments + " >/dev/null 2>&1 </dev/null").c_str());
    return WEXITSTATUS(status);
}

DriveSim::DriveSim()
    : folder_(std::filesystem::temp_directory_path() /
              ("servo_drive_sim_" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_ / "sim");
    std::ofstream(folder_ / "Servo.dat", std::ios::binary) << dictionary_file(bench_entries());
    std::ofstream(folder_ / "sim" / "values.tsv") << kBenchValues;
}

DriveSim::~DriveSim() {
    if (line_ >= 0) close(line_);
    if (input_ >= 0) close(input_);
    if (child_ > 0) {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    if (output_ >= 0) close(output_);
    std::filesystem::remove_all(folder_);
}

void DriveSim::start(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {SERVO_BIN_DIR "/drive-sim", "--data", folder_.string()});
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    ASSERT_EQ(pipe2(in.data(), O_CLOEXEC), 0);
    ASSERT_EQ(pipe2(out.data(), O_CLOEXEC), 0);
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    input_ = in[1];
    output_ = out[0];
    std::string text;
    while (text.empty() || text.back() != '\n') {
        const Bytes byte = read_bytes(output_, 1);
        ASSERT_EQ(byte.size(), 1U) << text;
        text += static_cast<char>(byte[0]);
    }
    ASSERT_TRUE(text.starts_with("line: /dev/")) << text;
    path_ = text.substr(6, text.size() - 7);
}

void DriveSim::open_line() {
    line_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(line_, 0) << path_;
}

Bytes DriveSim::ask(const Eight& payload) const {
    const Bytes bytes = frame(127, payload);
    EXPECT_EQ(::write(line_, bytes.data(), bytes.size()), 10);
    return read_bytes(line_, 10);
}

void DriveSim::type_in(const std::string& text) const {
    EXPECT_EQ(::write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

std::string DriveSim::line() const {
    std::string text;
    while (true) {
        const Bytes byte = read_bytes(output_, 1);
        if (byte.empty() || byte[0] == '\n') return text;
        text += static_cast<char>(byte[0]);
    }
}

int DriveSim::end() {
    int status = -1;
    EXPECT_EQ(waitpid(child_, &status, 0), child_);
    child_ = -1;
    return status;
}

}  // namespace servo::sim::test
