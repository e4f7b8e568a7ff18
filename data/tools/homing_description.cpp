#include "data/tools/homing_description.h"

#include "base/file.h"
#include "tools/homing_method.h"
#include "tools/homing_travel.h"
#include "tools/homing_travel_texts.h"

namespace servo::data {

namespace {

constexpr std::string_view kMark = "{methods}";

std::string method_line(int method, base::Language language) {
    const tools::HomingTravel* travel = tools::find_homing_travel(method);
    if (travel == nullptr) return {};
    const std::string home = tools::home_text(*travel, language);
    const std::string name = tools::method_text(method, language);
    return language == base::Language::kChinese ? name + "：原点为" + home + "。\n"
                                                : name + ": home is " + home + ".\n";
}

}  // namespace

std::optional<DescribedMethods> described_methods(std::string_view file_name) {
    for (const base::Language language : {base::Language::kChinese, base::Language::kEnglish}) {
        DescribedMethods found{{}, language};
        for (const int method : tools::homing_methods())
            if (tools::homing_description_file(method, tools::HomingOrigin::kChosen, language) ==
                file_name)
                found.methods.push_back(method);
        if (!found.methods.empty()) return found;
    }
    return std::nullopt;
}

std::string fill_description(std::string_view text, const DescribedMethods& described) {
    std::string filled;
    base::LineReader reader(text);
    while (const auto line = reader.next()) {
        if (*line != kMark) {
            filled += std::string(*line) + "\n";
            continue;
        }
        for (const int method : described.methods)
            filled += method_line(method, described.language);
    }
    return filled;
}

}  // namespace servo::data
