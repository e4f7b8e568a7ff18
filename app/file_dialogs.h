// The program's dialogs as windows take them.
#pragma once

#include "app/user_dialogs.h"
#include "base/file_dialogs.h"

namespace servo::app {

// `dialogs` outlives what is made of it.
inline base::FileDialogs file_dialogs(UserDialogs& dialogs) {
    const auto ask = [&dialogs](FileRequest::Kind kind, const base::FileQuestion& question) {
        return dialogs.ask_file(
            {kind, question.title, question.filter, question.suffix, question.name});
    };
    return {
        .ask_save = [ask](const auto& question) { return ask(FileRequest::Kind::kSave, question); },
        .ask_open = [ask](const auto& question) { return ask(FileRequest::Kind::kOpen, question); },
        .tell = [&dialogs](std::string_view title,
                           std::string_view text) { dialogs.show(title, text); }};
}

}  // namespace servo::app
