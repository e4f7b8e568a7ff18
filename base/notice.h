// How logic speaks to the user: the window program shows a modal box, the command line prints, a
// test records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/language.h"

namespace servo::base {

enum class Buttons : std::uint8_t { kOk, kOkCancel };
enum class Answer : std::uint8_t { kOk, kCancel };

class Notice {
  public:
    Notice() = default;
    Notice(const Notice&) = delete;
    Notice& operator=(const Notice&) = delete;
    virtual ~Notice() = default;

    // Returns when the user has answered. While it waits, engine ticks may go on.
    virtual Answer show(std::string_view title, std::string_view text,
                        Buttons buttons = Buttons::kOk) = 0;
};

// The title of most messages. The leading blank is part of it.
inline constexpr Text kNoticeTitle{" 提示", " Notice"};

}  // namespace servo::base
