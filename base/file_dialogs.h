// How a window asks for files and says what went wrong; whoever makes the window fills it in.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace servo::base {

// A question for a file's path.
struct FileQuestion {
    std::string title;   // in the user's language
    std::string filter;  // shown for the suffix, such as "scope"
    std::string suffix;  // without the dot
    std::string name;    // suggested; may be empty
};

// Empty functions cancel.
struct FileDialogs {
    // The path chosen (UTF-8), nothing when the user cancelled.
    std::function<std::optional<std::string>(const FileQuestion&)> ask_save;
    std::function<std::optional<std::string>(const FileQuestion&)> ask_open;
    // A picture or a table that could not be saved.
    std::function<void(std::string_view title, std::string_view text)> tell;
};

}  // namespace servo::base
