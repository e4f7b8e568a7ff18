// The dialogs of a window, answered by the test.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/file_dialogs.h"

namespace servo::app::test {

struct AnsweredFiles {
    std::optional<std::string> path;  // the answer to the next question for a file
    std::vector<base::FileQuestion> asked;
    std::vector<std::string> told;

    base::FileDialogs dialogs() {
        const auto answer = [this](const base::FileQuestion& question) {
            asked.push_back(question);
            return path;
        };
        return {
            .ask_save = answer,
            .ask_open = answer,
            .tell = [this](std::string_view, std::string_view text) { told.emplace_back(text); }};
    }
};

}  // namespace servo::app::test
