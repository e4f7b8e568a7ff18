// What the window `InitSave` says: its buttons, what each command does, and how the last one goes.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/language.h"
#include "tools/init_save.h"

namespace servo::tools {

inline constexpr std::string_view kInitSaveCaption = "初始化 保存 重启/Init Save Reboot";

struct InitSaveButton {
    std::string_view control;
    std::string_view caption;  // "Chinese/English"
    base::Text meaning;        // what the command does
};
std::span<const InitSaveButton, kInitSaveCommands> init_save_buttons();

// "Locked for 2.1 s: ..." while the lock lasts; what the commands have in common without it.
std::string lock_text(const InitSave& form);

struct InitSaveNote {
    std::string text;      // empty: nothing to say
    bool warning = false;  // the user has to do something
};
// Of the last command.
InitSaveNote init_save_note(const InitSave& form);

}  // namespace servo::tools
