#include "data/tools/fault_document.h"

#include "tools/fault_table.h"

namespace servo::data {

namespace {

using base::Language;

XlsSheet sheet_in(Language language, dictionary::Variant variant) {
    const bool chinese = language == Language::kChinese;
    XlsSheet sheet;
    sheet.name = chinese ? "中文" : "English";
    sheet.widths = {7, 6, 9, 34, 58, 58};
    if (chinese)
        sheet.rows.push_back({"状态字", "位", "位码", "故障", "原因", "处理"});
    else
        sheet.rows.push_back({"Word", "Bit", "Mask", "Fault", "Cause", "Remedy"});
    for (int fault = 0; fault < tools::kFaultBits; ++fault) {
        const tools::Fault& entry = tools::fault_table()[static_cast<std::size_t>(fault)];
        sheet.rows.push_back(
            {tools::word_of(fault), tools::bit_of(fault), "0x" + tools::fault_mask_text(fault),
             tools::fault_caption_line(fault, variant, language),
             std::string(entry.cause.in(language)), std::string(entry.remedy.in(language))});
    }
    return sheet;
}

}  // namespace

std::vector<XlsSheet> fault_sheets(dictionary::Variant variant) {
    return {sheet_in(Language::kEnglish, variant), sheet_in(Language::kChinese, variant)};
}

}  // namespace servo::data
