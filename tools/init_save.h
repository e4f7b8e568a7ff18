// The small window `InitSave`: commands that make changed parameters permanent, bring them back to
// the factory state, or restart the drive. Each locks the window while the drive may be writing its
// memory.
#pragma once

#include <array>
#include <string_view>

#include "base/language.h"
#include "link/engine.h"
#include "link/window.h"

namespace servo::tools {

class InitSave final : public link::Window {
  public:
    static constexpr int kLockMilliseconds = 3200;

    InitSave(link::Engine& engine, const base::Language& language)
        : link::Window("InitSave"), engine_(engine), language_(language) {}

    base::Language language() const { return language_; }

    void Command1_Click();  // store the control parameters
    void Command2_Click();  // store the motor parameters
    void Command3_Click();  // reset the control parameters
    void Command4_Click();  // restart
    void Command5_Click();  // restart, without the resets; no lock
    void Timer1_Timer();    // once, kLockMilliseconds behind a command

    // Command1 to Command4 are disabled, and Timer1 runs.
    bool locked() const { return locked_; }

  private:
    void lock() { locked_ = true; }

    link::Engine& engine_;
    const base::Language& language_;
    bool locked_ = false;
};

}  // namespace servo::tools
