#include "cli/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace servo::test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{90};  // a loaded machine, not a slow program

std::array<int, 2> make_pipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) ends = {-1, -1};
    return ends;
}

// False at its end.
bool drain(int& pipe, std::string& into) {
    std::array<char, 4096> bytes{};
    const ssize_t count = read(pipe, bytes.data(), bytes.size());
    if (count > 0) {
        into.append(bytes.data(), static_cast<std::size_t>(count));
        return true;
    }
    close(pipe);
    pipe = -1;
    return false;
}

}  // namespace

Process::Process(std::vector<std::string> words) {
    const auto in = make_pipe();
    const auto out = make_pipe();
    const auto err = make_pipe();
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
        setsid();
        dup2(in[0], 0);
        dup2(out[1], 1);
        dup2(err[1], 2);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    close(err[1]);
    in_ = in[1];
    out_pipe_ = out[0];
    err_pipe_ = err[0];
}

Process::~Process() {
    close_input();
    if (status_ == -2 && pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    for (const int pipe : {out_pipe_, err_pipe_})
        if (pipe >= 0) close(pipe);
}

void Process::write(std::string_view text) {
    [[maybe_unused]] const ssize_t count = ::write(in_, text.data(), text.size());
}

void Process::close_input() {
    if (in_ >= 0) close(in_);
    in_ = -1;
}

void Process::signal(int number) const {
    kill(pid_, number);
}

// Whether there is more to come.
bool Process::read_some(int milliseconds) {
    std::array<pollfd, 2> pipes{pollfd{out_pipe_, POLLIN, 0}, pollfd{err_pipe_, POLLIN, 0}};
    if (out_pipe_ < 0 && err_pipe_ < 0) return false;
    poll(pipes.data(), pipes.size(), milliseconds);
    if (out_pipe_ >= 0 && pipes[0].revents != 0) drain(out_pipe_, out_);
    if (err_pipe_ >= 0 && pipes[1].revents != 0) drain(err_pipe_, err_);
    return out_pipe_ >= 0 || err_pipe_ >= 0;
}

bool Process::wait_in(const std::string& where, const int& pipe, std::string_view text) {
    const auto end = Clock::now() + kPatience;
    while (where.find(text) == std::string::npos) {
        if (Clock::now() > end || pipe < 0) return false;
        read_some(50);
    }
    return true;
}

bool Process::wait_for(std::string_view text) {
    return wait_in(out_, out_pipe_, text);
}

bool Process::wait_for_err(std::string_view text) {
    return wait_in(err_, err_pipe_, text);
}

int Process::wait() {
    if (status_ != -2) return status_;
    const auto end = Clock::now() + kPatience;
    while (read_some(50)) {
        if (Clock::now() > end) return -1;
    }
    int raw = 0;
    waitpid(pid_, &raw, 0);
    status_ = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
    return status_;
}

bool Process::session_alive() const {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::ifstream file(entry.path() / "stat");
        std::string stat;
        if (!std::getline(file, stat)) continue;
        // "pid (name) state parent group session ...": the name may hold anything.
        const std::size_t behind_name = stat.rfind(')');
        if (behind_name == std::string::npos) continue;
        std::istringstream fields(stat.substr(behind_name + 1));
        char state = 0;
        pid_t parent = 0;
        pid_t group = 0;
        pid_t session = 0;
        fields >> state >> parent >> group >> session;
        if (session == pid_ && state != 'Z') return true;
    }
    return false;
}

}  // namespace servo::test
