// Programs as a user starts them: arguments, input, both outputs, status. Every wait has an end.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace servo::test {

class Process {
  public:
    // Starts at once. The first word is the program.
    explicit Process(std::vector<std::string> words);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();  // kills it when it still runs

    void write(std::string_view text);
    void close_input();
    void signal(int number) const;

    // Reads standard output until it holds the text; false when the program ends or time is over.
    bool wait_for(std::string_view text);
    bool wait_for_err(std::string_view text);  // likewise, on standard error
    // Reads until the program has ended. Its status, -1 when time is over, 128 and more for a
    // signal.
    int wait();

    const std::string& out() const { return out_; }
    const std::string& err() const { return err_; }

    pid_t pid() const { return pid_; }

    // Whether a process of this one's session is still there (it has one of its own).
    bool session_alive() const;

  private:
    bool read_some(int milliseconds);
    bool wait_in(const std::string& where, const int& pipe, std::string_view text);

    pid_t pid_ = -1;
    int in_ = -1;
    int out_pipe_ = -1;
    int err_pipe_ = -1;
    int status_ = -2;
    std::string out_;
    std::string err_;
};

}  // namespace servo::test
