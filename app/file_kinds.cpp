#include "app/file_kinds.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "app/project_file.h"
#include "base/ascii.h"

namespace servo::app {

namespace {

constexpr std::array<FileKind, kFileKinds> kTable{{
    {FileKindId::kProject, kProjectSuffix, {}, {"项目", "Project"}},
    {FileKindId::kConfiguration, "cdi", "imexport", {"驱动器配置数据", "Configuration data"}},
    {FileKindId::kConfigurationTemplate,
     "cdo",
     "imexport",
     {"驱动器配置模板", "Configuration template"}},
    {FileKindId::kPositionTable, "pft", "PosFlow", {"位置表", "Position table"}},
    {FileKindId::kRecording, "scope", "Scope", {"示波器记录", "Recording"}},
    {FileKindId::kFrequencyResponse, "bode", "ADVtunner", {"频率响应", "Frequency response"}},
    {FileKindId::kFirmware, "servo", "Download", {"固件", "Firmware image"}},
}};

}  // namespace

std::span<const FileKind, kFileKinds> file_kinds() {
    return kTable;
}

const FileKind* kind_of_file(std::string_view path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    if (extension.empty()) return nullptr;
    const std::string suffix = base::ascii_lower(extension.substr(1));
    const auto* found = std::ranges::find(kTable, suffix, &FileKind::suffix);
    return found == kTable.end() ? nullptr : found;
}

FileOpening FileOpeners::open(const std::string& path) const {
    const FileKind* kind = kind_of_file(path);
    if (kind == nullptr) return FileOpening::kForeign;
    if (!handled(kind->id)) return FileOpening::kNotYet;
    openers_[static_cast<std::size_t>(kind->id)](path);
    return FileOpening::kOpened;
}

bool FileOpeners::accepts(std::span<const std::string> paths) const {
    return std::ranges::any_of(paths, [this](const std::string& path) {
        const FileKind* kind = kind_of_file(path);
        return kind != nullptr && handled(kind->id);
    });
}

std::string file_opening_text(FileOpening opening, std::string_view path, base::Language language) {
    const std::string name = std::filesystem::path(path).filename().string();
    const FileKind* kind = kind_of_file(path);
    const bool chinese = language == base::Language::kChinese;
    switch (opening) {
        case FileOpening::kOpened:
            return {};
        case FileOpening::kNotYet: {
            const std::string_view what = kind == nullptr ? "" : kind->name.in(language);
            return chinese ? fmt::format("{}：本版本还不能打开此类文件（{}）。", name, what)
                           : fmt::format("{}: this version cannot open such files yet ({}).", name,
                                         what);
        }
        case FileOpening::kForeign:
            return chinese ? fmt::format("{}：不是本程序的文件。", name)
                           : fmt::format("{}: not a file of this program.", name);
    }
    return {};
}

}  // namespace servo::app
