#include "tools/errors_texts.h"

#include <fmt/format.h>

namespace servo::tools {

namespace {

constexpr base::Text kSummary{"故障 {} 个，屏蔽 {} 个", "{} on, {} masked"};
constexpr base::Text kNever{"尚未读到错误状态字", "No error word has been read yet"};
constexpr base::Text kStale{"未连接，显示的是最后一次读到的状态", "not connected, as last read"};
constexpr base::Text kMaskUnknown{"屏蔽尚未读到", "Masks not read yet"};
constexpr base::Text kReset{
    "复位：在“基本操作”页向 2606 写 1，或控制字 6040 位 7 的上升沿。原因仍在时，故障会再次出现。",
    "Reset: write 1 to 2606 on the page Basic Operation, or raise bit 7 of the controlword 6040. A "
    "fault whose cause still stands comes back."};
constexpr base::Text kWord{"错误状态字{}，位 {}", "Error word {}, bit {}"};

std::string count_of(std::size_t count) {
    return count == 1 ? "1 fault" : fmt::format("{} faults", count);
}

}  // namespace

std::string_view errors_frame(int word) {
    return word == 1 ? "错误状态字1/Error word 1" : "错误状态字2/Error word 2";
}

int errors_row(int fault) {
    if (fault == 0) return 1;
    if (fault == 1) return 0;
    return bit_of(fault);
}

std::string errors_summary(const Errors& form) {
    const base::Language language = form.language();
    if (form.news() == FaultNews::kNever) return std::string(kNever.in(language));
    const std::size_t on = form.active().size();
    const std::size_t masked = form.masked().size();
    std::string text = language == base::Language::kChinese
                           ? fmt::format(fmt::runtime(kSummary.chinese), on, masked)
                           : fmt::format(fmt::runtime(kSummary.english), count_of(on), masked);
    if (form.news() == FaultNews::kStale) {
        text += language == base::Language::kChinese ? "；" : "; ";
        text += kStale.in(language);
    }
    return text;
}

std::string mask_note(const Errors& form, int word) {
    return form.mask_known(word) ? std::string() : std::string(kMaskUnknown.in(form.language()));
}

std::string reset_note(const Errors& form) {
    return form.active().empty() ? std::string() : std::string(kReset.in(form.language()));
}

FaultDetail fault_detail(int fault, dictionary::Variant variant, base::Language language) {
    const Fault& entry = fault_table()[static_cast<std::size_t>(fault)];
    const std::string caption = fault_caption_line(fault, variant, language);
    const std::string place =
        fmt::format(fmt::runtime(kWord.in(language)), word_of(fault), bit_of(fault));
    return {fmt::format("{} ({}): {}", place, fault_mask_text(fault), caption),
            std::string(entry.cause.in(language)), std::string(entry.remedy.in(language))};
}

std::optional<int> explained_fault(const Errors& form, std::optional<int> pointed,
                                   std::optional<int> selected) {
    if (pointed) return pointed;
    if (selected) return selected;
    const std::vector<int> on = form.active();
    return on.empty() ? std::nullopt : std::optional(on.front());
}

}  // namespace servo::tools
