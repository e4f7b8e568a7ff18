#include "cli/command_drive.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "cli/target.h"
#include "link/abort_text.h"
#include "tools/drive_commands.h"
#include "tools/drive_commands_restart.h"
#include "tools/init_save.h"

namespace servo::cli {
namespace {

using namespace std::chrono_literals;

// The watch of a restart ends by itself or with the link. This is beyond its longest.
constexpr std::chrono::milliseconds kLongestRestart = 60s;

// For how long a drive may be writing its memory.
constexpr std::chrono::milliseconds kBusyTime{tools::InitSave::kLockMilliseconds};

constexpr base::Text kNoPause{
    "servoctl: 驱动器确认了重启命令，但没有重启",
    "servoctl: the drive has acknowledged the restart and goes on without "
    "one"};
constexpr base::Text kNotBack{
    "servoctl: 驱动器重启后没有应答；已存储的通讯 ID、波特率或协议可能不同",
    "servoctl: the drive does not answer after the restart; the ID, baud rate or protocol that it "
    "has stored may be others"};
constexpr base::Text kUnsure{"servoctl: 驱动器没有确认重启命令，但可能已经重启",
                             "servoctl: the drive has not acknowledged the restart, though it may "
                             "have begun one"};

struct Command {
    link::WireKey key = 0;
    std::int32_t value = 0;
    const char* name = "";
};

Command command_of(const Options& options) {
    if (options.command == CommandName::kRestart)
        return {tools::kRestartKey, tools::kRestartValue, "the restart"};
    if (options.command == CommandName::kReset)
        return {tools::kControlParametersKey, tools::kResetParameters, "the reset"};
    switch (options.save) {
        case SaveScope::kControl:
            break;
        case SaveScope::kMotor:
            return {tools::kMotorParametersKey, tools::kStoreParameters, "the save"};
        case SaveScope::kEverything:
            return {tools::kStoreAllKey, tools::kStoreAllValue, "the save"};
    }
    return {tools::kControlParametersKey, tools::kStoreParameters, "the save"};
}

void print_result(const Options& options, const std::string& result, const Output& output) {
    if (options.json)
        print_record(output, true, {{"result", result}});
    else
        output.out(result + "\n");
}

// Storing twice is storing once, but a drive that is at it is left alone: what comes then may wait
// and be done over and over. So a lost frame is made good only when that time is over. A restart is
// never sent twice: the second one would be one more.
Reply write_patiently(const Command& command, const Options& options, LinkSession& session) {
    const std::chrono::microseconds end = session.now() + options.timeout;
    Reply reply;
    do {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - session.now());
        reply = session.write(command.key, command.value, std::min(left, kBusyTime));
    } while (reply.outcome == Outcome::kNoAnswer && session.now() < end);
    return reply;
}

// After the acknowledgement: the engine forgets the drive as with the window's button, and the
// poller's traffic tells when it is there again.
ExitStatus wait_for_return(const Options& options, link::Engine& engine, LinkSession& session,
                           const Output& output) {
    engine.forget_drive();
    tools::RestartWatch watch;
    watch.begin(session.now(), engine.counters.frames);
    const Outcome outcome = session.wait(
        [&] {
            watch.look(session.now(), engine.counters.frames);
            return !watch.watching();
        },
        kLongestRestart);
    if (outcome == Outcome::kInterrupted) {
        Reply reply;
        reply.outcome = outcome;
        return report(reply, "", options, output);
    }
    if (watch.phase() == tools::RestartPhase::kBack) return ExitStatus::kDone;
    const bool never_left = watch.phase() == tools::RestartPhase::kNoPause;
    output.message((never_left ? kNoPause : kNotBack).in(options.language));
    return never_left ? ExitStatus::kNo : ExitStatus::kNoLink;
}

}  // namespace

ExitStatus run_drive_command(const Options& options, link::Engine& engine, LinkSession& session,
                             const Output& output) {
    const Command command = command_of(options);
    const bool restarts = options.command == CommandName::kRestart;
    const Reply reply = restarts ? session.write(command.key, command.value, options.timeout)
                                 : write_patiently(command, options, session);
    if (reply.outcome == Outcome::kRefused) {
        print_result(options, "refused: " + link::abort_text(reply.abort_code, options.language),
                     output);
        return ExitStatus::kNo;
    }
    if (reply.outcome != Outcome::kDone) {
        if (restarts && reply.outcome == Outcome::kNoAnswer)
            output.message(kUnsure.in(options.language));
        return report(reply, command.name, options, output);
    }
    if (restarts && options.wait) {
        const ExitStatus returned = wait_for_return(options, engine, session, output);
        if (returned != ExitStatus::kDone) return returned;
    }
    print_result(options, "ok", output);
    return ExitStatus::kDone;
}

}  // namespace servo::cli
