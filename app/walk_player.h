// Plays a walkthrough: one command after the other from the event loop, so that the program runs on
// between them. Message boxes and file dialogs are answered as the file tells.
//
// Prints messages, texts that were asked for and failures, one line each.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/shell_access.h"
#include "app/walk_actions.h"
#include "app/walk_dialogs.h"
#include "app/walk_script.h"

namespace servo::app {

class WalkPlayer final : public QObject {
    Q_OBJECT

  public:
    // Takes one line without its end.
    using Out = std::function<void(std::string_view)>;

    // `file` is what failures are named after. The shell's dialogs are taken over at once.
    WalkPlayer(ShellAccess& shell, std::string file, std::vector<WalkCommand> commands, Out out);
    ~WalkPlayer() override;

    void start();

    // Who takes the lines of `simulator`; false when there is no simulated drive to take them.
    using Simulator = std::function<bool(const std::string& line)>;
    void use_simulator(Simulator simulator) { simulator_ = std::move(simulator); }

    // 0 as long as every line held, else 1.
    int exit_status() const { return failures_ == 0 ? 0 : 1; }

    // A line on standard output, flushed.
    static void print_line(std::string_view line);

  Q_SIGNALS:
    // The end of the file, or its `quit`. Whoever runs the program quits it.
    void finished(int status);

  private:
    void step();
    void schedule(int milliseconds);
    bool still_waiting();
    std::string perform(const WalkCommand& command);
    std::string answer_ahead(const WalkCommand& command);
    std::string begin_wait(const WalkCommand& command);
    std::string expect(const WalkCommand& command);
    std::string expect_message(const WalkCommand& command);
    std::string print(const WalkCommand& command);
    void fail(int line, const std::string& found);
    void finish();

    ShellAccess& shell_;
    std::string file_;
    std::vector<WalkCommand> commands_;
    Out out_;
    Simulator simulator_;
    WalkDialogs dialogs_;
    WalkActions actions_;
    UserDialogs* former_dialogs_ = nullptr;
    QTimer timer_;
    std::size_t next_ = 0;
    int depth_ = 0;  // commands under way: more than one when a command runs an event loop
    const WalkCommand* waits_for_ = nullptr;  // the `until` or `wait` that holds up the rest
    QElapsedTimer waited_;
    int failures_ = 0;
    bool done_ = false;
};

// Reads and parses the file. Nothing when it can't be read.
std::optional<std::vector<WalkCommand>> load_walk(const std::string& file);

}  // namespace servo::app
