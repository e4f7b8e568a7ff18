// Answers message boxes and file dialogs in the user's place while a walkthrough is played.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "app/user_dialogs.h"

namespace servo::app {

class WalkDialogs final : public UserDialogs {
  public:
    // `out` takes whole lines.
    explicit WalkDialogs(std::function<void(std::string_view)> out) : out_(std::move(out)) {}

    // Answers for the boxes and dialogs to come, first in first out.
    void next_answer(bool ok) { answers_.push_back(ok); }
    void next_file(std::string path) { files_.push_back(std::move(path)); }

    // Looks for a message behind the last one that was found. With line breaks as "\n".
    bool find_message(std::string_view text);
    // The messages since then, for a failure's text.
    std::string messages_since() const;

    base::Answer show(std::string_view title, std::string_view text,
                      base::Buttons buttons) override;
    std::optional<std::string> ask_file(const FileRequest& request) override;

  private:
    std::function<void(std::string_view)> out_;
    std::deque<bool> answers_;
    std::deque<std::string> files_;
    std::vector<std::string> messages_;
    std::size_t expected_ = 0;  // messages up to here have been expected
};

}  // namespace servo::app
