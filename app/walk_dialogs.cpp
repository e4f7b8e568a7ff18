#include "app/walk_dialogs.h"

#include <filesystem>

#include "app/walk_script.h"

namespace servo::app {

bool WalkDialogs::find_message(std::string_view text) {
    for (std::size_t i = expected_; i < messages_.size(); ++i) {
        if (!same_text(messages_[i], text)) continue;
        expected_ = i + 1;
        return true;
    }
    return false;
}

std::string WalkDialogs::messages_since() const {
    std::string texts;
    for (std::size_t i = expected_; i < messages_.size(); ++i)
        texts += (texts.empty() ? "'" : ", '") + one_line(messages_[i]) + "'";
    return texts.empty() ? "no message" : texts;
}

base::Answer WalkDialogs::show(std::string_view title, std::string_view text,
                               base::Buttons buttons) {
    messages_.emplace_back(text);
    out_("message: " + std::string(title) + " | " + one_line(text));
    if (answers_.empty()) return base::Answer::kOk;
    const bool ok = answers_.front();
    answers_.pop_front();
    // A box with one button can only be confirmed.
    return ok || buttons == base::Buttons::kOk ? base::Answer::kOk : base::Answer::kCancel;
}

std::optional<std::string> WalkDialogs::ask_file(const FileRequest& request) {
    if (files_.empty()) return std::nullopt;
    std::string path = files_.front();
    files_.pop_front();
    if (path == "-") return std::nullopt;
    // As the real dialog does.
    const bool typed = std::filesystem::path(path).has_extension();
    if (request.kind == FileRequest::Kind::kSave && !typed && !request.suffix.empty())
        path += "." + request.suffix;
    return path;
}

}  // namespace servo::app
