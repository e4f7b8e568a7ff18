#include "app/walk_player.h"

#include <QApplication>
#include <QMainWindow>
#include <cstdio>
#include <filesystem>

#include "app/walk_target.h"
#include "base/file.h"

namespace servo::app {
namespace {

constexpr int kLookMilliseconds = 3;     // how often an `until` looks: once a tick of the engine
constexpr int kNestedMilliseconds = 20;  // while a command that pumps events has not come back

// A walkthrough that is played anywhere finds what was installed beside the program.
std::string whole_path(const std::string& path, const std::filesystem::path& folder) {
    constexpr std::string_view kFolder = "{data}/";
    return path.starts_with(kFolder) ? (folder / path.substr(kFolder.size())).string() : path;
}

}  // namespace

WalkPlayer::WalkPlayer(ShellAccess& shell, std::string file, std::vector<WalkCommand> commands,
                       Out out)
    : shell_(shell),
      file_(std::move(file)),
      commands_(std::move(commands)),
      out_(std::move(out)),
      dialogs_(out_),
      actions_(shell) {
    former_dialogs_ = &shell_.dialogs().current();
    shell_.dialogs().use(dialogs_);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &WalkPlayer::step);
}

WalkPlayer::~WalkPlayer() {
    shell_.dialogs().use(*former_dialogs_);
}

void WalkPlayer::start() {
    schedule(0);
}

void WalkPlayer::schedule(int milliseconds) {
    timer_.start(milliseconds);
}

void WalkPlayer::step() {
    if (done_) return;
    // A command may run an event loop of its own. When that is an open menu, the commands to come
    // are meant for it; otherwise they wait until the command is over.
    const bool inside_of_menu = QApplication::activePopupWidget() != nullptr;
    if (depth_ > 0 && !inside_of_menu) {
        schedule(kNestedMilliseconds);
        return;
    }
    // A command may have ended the program, by its menu item or its close box.
    const bool program_over = !shell_.main_window()->isVisible();
    if (!program_over && still_waiting()) return;
    if (program_over || next_ == commands_.size()) {
        finish();
        return;
    }
    const WalkCommand& command = commands_[next_++];
    schedule(0);
    ++depth_;
    const std::string found = perform(command);
    --depth_;
    if (!found.empty()) fail(command.line, found);
}

// Whether an `until` or `wait` holds up the rest; looks once.
bool WalkPlayer::still_waiting() {
    if (waits_for_ == nullptr) return false;
    const WalkCommand& command = *waits_for_;
    const qint64 left = command.number - waited_.elapsed();
    if (command.verb == WalkVerb::kWait) {
        if (left > 0) {
            schedule(static_cast<int>(left));
            return true;
        }
        waits_for_ = nullptr;
        return false;
    }
    const TargetText now = read_target(shell_, command.target);
    const bool any = command.text == "*" && !now.text.empty();
    if (now.error.empty() && !any && !same_text(now.text, command.text) && left > 0) {
        schedule(kLookMilliseconds);
        return true;
    }
    waits_for_ = nullptr;
    if (!now.error.empty())
        fail(command.line, now.error);
    else if (!any && !same_text(now.text, command.text))
        fail(command.line, target_name(command.target) + " is '" + one_line(now.text) + "' after " +
                               std::to_string(command.number) + " ms, not '" + command.text + "'");
    return false;
}

std::string WalkPlayer::begin_wait(const WalkCommand& command) {
    waits_for_ = &command;
    waited_.start();
    return {};
}

std::string WalkPlayer::expect(const WalkCommand& command) {
    const TargetText now = read_target(shell_, command.target);
    if (!now.error.empty()) return now.error;
    if (same_text(now.text, command.text)) return {};
    return target_name(command.target) + " is '" + one_line(now.text) + "', not '" + command.text +
           "'";
}

std::string WalkPlayer::print(const WalkCommand& command) {
    const TargetText now = read_target(shell_, command.target);
    if (!now.error.empty()) return now.error;
    out_(one_line(now.text));
    return {};
}

std::string WalkPlayer::perform(const WalkCommand& command) {
    switch (command.verb) {
        case WalkVerb::kBad:
            return command.text;
        case WalkVerb::kMenu:
            return actions_.menu(command);
        case WalkVerb::kTool:
            return actions_.tool(command);
        case WalkVerb::kOpen:
            return actions_.open(command);
        case WalkVerb::kClose:
            return actions_.close(command);
        case WalkVerb::kClick:
            return actions_.click(command);
        case WalkVerb::kCheck:
            return actions_.check(command);
        case WalkVerb::kChoose:
            return actions_.choose(command);
        case WalkVerb::kTab:
            return actions_.tab(command);
        case WalkVerb::kType:
            return actions_.type(command);
        case WalkVerb::kKey:
            return actions_.key(command);
        case WalkVerb::kCell:
            return actions_.cell(command);
        case WalkVerb::kEdit:
            return actions_.edit(command);
        case WalkVerb::kDrag:
            return actions_.drag(command);
        case WalkVerb::kPopup:
            return actions_.popup(command);
        case WalkVerb::kFile:
        case WalkVerb::kAnswer:
            return answer_ahead(command);
        case WalkVerb::kWait:
        case WalkVerb::kUntil:
            return begin_wait(command);
        case WalkVerb::kExpect:
            return expect(command);
        case WalkVerb::kExpectMessage:
            return expect_message(command);
        case WalkVerb::kPrint:
            return print(command);
        case WalkVerb::kPlace:
            return actions_.place(command);
        case WalkVerb::kShot:
            return actions_.shot(command);
        case WalkVerb::kState:
            return actions_.state(command);
        case WalkVerb::kSimulator:
            return simulator_ && simulator_(command.text) ? "" : "no simulated drive was started";
        case WalkVerb::kQuit:
            finish();
            return {};
    }
    return {};
}

std::string WalkPlayer::answer_ahead(const WalkCommand& command) {
    if (command.verb == WalkVerb::kFile)
        dialogs_.next_file(whole_path(command.text, shell_.workstation().folder));
    else
        dialogs_.next_answer(command.on);
    return {};
}

std::string WalkPlayer::expect_message(const WalkCommand& command) {
    if (dialogs_.find_message(command.text)) return {};
    return "came " + dialogs_.messages_since() + ", not '" + command.text + "'";
}

void WalkPlayer::fail(int line, const std::string& found) {
    ++failures_;
    out_(file_ + ":" + std::to_string(line) + ": " + found);
}

void WalkPlayer::finish() {
    if (done_) return;
    done_ = true;
    timer_.stop();
    Q_EMIT finished(exit_status());
}

void WalkPlayer::print_line(std::string_view line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

std::optional<std::vector<WalkCommand>> load_walk(const std::string& file) {
    const std::optional<std::string> text = base::read_file(file);
    if (!text) return std::nullopt;
    return parse_walk(*text);
}

}  // namespace servo::app
