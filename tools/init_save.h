// The small window `InitSave`: commands that make changed parameters permanent, bring them back to
// the factory state, or restart the drive. Each locks the window while the drive may be writing its
// memory.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

#include "base/language.h"
#include "link/engine.h"
#include "link/listeners.h"
#include "link/window.h"
#include "tools/drive_commands_restart.h"

namespace servo::tools {

// In the order of the buttons Command1 to Command5.
enum class InitSaveCommand : std::uint8_t {
    kStoreControl,
    kStoreMotor,
    kResetControl,
    kRestart,
    kRestartAlone,
};
inline constexpr int kInitSaveCommands = 5;

class InitSave final : public link::Window, private link::StatusListener {
  public:
    static constexpr int kLockMilliseconds = 3200;

    InitSave(link::Engine& engine, const base::Language& language);
    ~InitSave() override;

    base::Language language() const { return language_; }

    void Command1_Click();  // store the control parameters
    void Command2_Click();  // store the motor parameters
    void Command3_Click();  // reset the control parameters
    void Command4_Click();  // restart
    void Command5_Click();  // restart, without the resets; no lock of its own
    void Timer1_Timer();    // once, kLockMilliseconds behind a command

    // Command1 to Command4 are disabled, and Timer1 runs. A restart would cut the drive's writing
    // short, so Command5 waits as well.
    bool locked() const { return locked_; }

    // --- Additions
    // What remains of the lock; 0 without one.
    std::chrono::milliseconds lock_left() const;
    // The last command, and whether its frame was handed to an open link.
    std::optional<InitSaveCommand> last() const { return last_; }
    bool last_left() const { return last_left_; }
    // It did not leave although the link is open: a firmware transfer has the line.
    bool last_kept_back() const { return last_kept_back_; }
    const RestartWatch& restart() const { return restart_; }
    // Looks for a sign of the restarted drive; a few times a second while restart().watching().
    void look();

    // Called after any change.
    std::function<void()> changed;

  private:
    void run(InitSaveCommand command);
    void send(InitSaveCommand command);
    void link_changed(bool open) override;
    void tell() const {
        if (changed) changed();
    }

    link::Engine& engine_;
    const base::Language& language_;
    bool locked_ = false;
    std::chrono::microseconds locked_at_{0};
    std::optional<InitSaveCommand> last_;
    bool last_left_ = false;
    bool last_kept_back_ = false;
    RestartWatch restart_;
};

}  // namespace servo::tools
