#include "tools/position_table_notes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

#include "base/number.h"

namespace servo::tools {

namespace {

template <typename... Values>
std::string filled(base::Language language, base::Text text, const Values&... values) {
    return fmt::format(fmt::runtime(text.in(language)), values...);
}

// The object that the job stands at: "310503".
std::string object_text(const PosFlow& form) {
    const int row = std::clamp(form.job_row(), 0, kTransferLines - 1);
    const auto& list = form.data().list;
    if (!list) return {};
    return fmt::format("{:06X}", dictionary::identity_of((*list)[static_cast<std::size_t>(row)]));
}

}  // namespace

bool job_note_warns(const PosFlow& form) {
    return form.job_end() && *form.job_end() != TableJobEnd::kFinished;
}

std::string job_note(const PosFlow& form) {
    const base::Language language = form.language();
    const bool wrote = form.last_job() == kWriteTable;
    if (form.job_running())
        return filled(language,
                      wrote ? base::Text{"正在写入：{} / {}", "Writing: {} of {}"}
                            : base::Text{"正在读取：{} / {}", "Reading: {} of {}"},
                      form.job_row(), kTransferLines);
    if (!form.job_end()) return {};
    switch (*form.job_end()) {
        case TableJobEnd::kFinished:
            return filled(language,
                          wrote ? base::Text{"已写入 {} 个对象。掉电前请存储参数。",
                                             "{} objects written. Save the parameters before power "
                                             "goes off."}
                                : base::Text{"已读取 {} 个对象。", "{} objects read."},
                          kTransferLines);
        case TableJobEnd::kRefused:
            return filled(
                language,
                wrote ? base::Text{"驱动器拒绝了 10 次，最后是对象 {}。前 {} 个对象已写入，"
                                   "驱动器中的位置表不完整。",
                                   "The drive refused 10 times, last the object {}. The "
                                   "first {} objects are written: the drive holds a mixed "
                                   "table."}
                      : base::Text{"驱动器拒绝了 10 次，最后是对象 {}。只读取了前 {} 个对象。",
                                   "The drive refused 10 times, last the object {}. Only "
                                   "the first {} objects are read."},
                object_text(form), form.job_row());
        case TableJobEnd::kLinkClosed:
            return filled(language,
                          wrote
                              ? base::Text{"通讯已断开：前 {} 个对象已写入，"
                                           "驱动器中的位置表不完整。",
                                           "The link was closed: the first {} objects are written, "
                                           "the drive holds a mixed table."}
                              : base::Text{"通讯已断开：只读取了前 {} 个对象。",
                                           "The link was closed: only the first {} objects are "
                                           "read."},
                          form.job_row());
    }
    return {};
}

std::string motion_note(const PosFlow& form, const Motion& motion) {
    const base::Language language = form.language();
    std::string text = motion_end_text(motion, language);
    if (language == base::Language::kEnglish) text += ' ';
    text += filled(language,
                   form.resolution_known()
                       ? base::Text{"编码器每转 {} inc。", "Encoder: {} inc per turn."}
                       : base::Text{"尚未读到编码器分辨率，按每转 {} inc 计算。",
                                    "The encoder is not known yet; {} inc per turn are assumed."},
                   base::number_text(form.resolution()));
    return text;
}

std::string findings_note(const std::vector<Finding>& findings, base::Language language) {
    const auto count = [&](Severity severity) {
        return std::ranges::count(findings, severity, &Finding::severity);
    };
    const auto faults = count(Severity::kFault);
    const auto warnings = count(Severity::kWarning);
    if (faults == 0 && warnings == 0)
        return std::string(
            base::Text{"✔ 没有发现错误", "✔ Nothing is wrong with the flow"}.in(language));
    return filled(language, {"✖ {} 个错误，▲ {} 个警告", "✖ faults: {}   ▲ warnings: {}"}, faults,
                  warnings);
}

}  // namespace servo::tools
