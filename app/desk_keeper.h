// Puts the main window and its windows where an earlier run left them, and writes down at the end
// where they stand. A program without one remembers nothing.
#pragma once

#include <filesystem>

#include "app/desk_file.h"

class QMainWindow;

namespace servo::app {

class WindowHost;

class DeskKeeper {
  public:
    // Reads what is remembered. `folder` is the program's.
    explicit DeskKeeper(std::filesystem::path folder);

    // Before the main window is shown.
    void restore(QMainWindow& main, WindowHost& host) const;

    // At the end, while the windows still stand. False when the file can't be written, which costs
    // no more than the memory.
    bool save(const QMainWindow& main, const WindowHost& host);

    // Project files, the last one first; save() writes them too.
    std::vector<std::string>& recent() { return desk_.recent; }

  private:
    std::filesystem::path folder_;
    Desk desk_;
};

}  // namespace servo::app
