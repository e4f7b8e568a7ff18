// What the window `Errors` says beside lamps and boxes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/language.h"
#include "dictionary/store.h"
#include "tools/errors.h"

namespace servo::tools {

inline constexpr std::string_view kErrorsCaption = "故障显示/Error Display";
inline constexpr std::string_view kErrorsState = "状态/State";
inline constexpr std::string_view kErrorsMask = "屏蔽/Mask";
inline constexpr base::Text kErrorsMaskTip{
    "点击某一屏蔽框会写入本状态字此处显示的全部屏蔽位",
    "A click on a box writes all boxes of this word as they stand here"};
// The frame of a word.
std::string_view errors_frame(int word);

// The place of a fault in its frame, from 0. The two lowest bits of word 1 stand the other way
// round than all others, as they always have; a box's caption tells its bit.
int errors_row(int fault);

// "2 faults on, 1 masked", with a word on the age of what is shown.
std::string errors_summary(const Errors& form);

// Empty when the boxes of the word show what the drive holds.
std::string mask_note(const Errors& form, int word);

// How a fault is cleared, which is not done here; empty while none is on.
std::string reset_note(const Errors& form);

// What stands behind a fault.
struct FaultDetail {
    std::string heading;  // word, mask and caption in one line
    std::string cause;
    std::string remedy;
};
FaultDetail fault_detail(int fault, dictionary::Variant variant, base::Language language);
// Which fault is explained: the one under the pointer, else the one that was selected, else the
// first that is on.
std::optional<int> explained_fault(const Errors& form, std::optional<int> pointed,
                                   std::optional<int> selected);

}  // namespace servo::tools
