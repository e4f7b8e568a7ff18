// The widgets of the tool windows and of the tuner.
#pragma once

namespace servo::app {

class UserDialogs;
class WindowAdder;
struct Workstation;

void add_tool_windows(WindowAdder& adder, Workstation& workstation, UserDialogs& dialogs);

}  // namespace servo::app
