// The questions that the program puts to its user: message boxes (the Notice half) and file
// dialogs. The real one shows boxes and dialogs; a walkthrough and the tests answer in the user's
// place.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/notice.h"

namespace servo::app {

struct FileRequest {
    enum class Kind : std::uint8_t { kOpen, kSave };
    Kind kind = Kind::kOpen;
    std::string title;   // UTF-8, already in the user's language
    std::string filter;  // what is shown for the suffix, such as "Project"
    std::string suffix;  // without the dot, such as "tpjt"; appended on saving when none was typed
    std::string name;    // suggested name or path; may be empty
};

class UserDialogs : public base::Notice {
  public:
    // The path that was chosen (UTF-8), nothing when the user cancelled.
    virtual std::optional<std::string> ask_file(const FileRequest& request) = 0;
};

}  // namespace servo::app
