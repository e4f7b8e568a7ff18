#include "app/workstation_tools.h"

#include "app/tag_text.h"
#include "app/workstation.h"

namespace servo::app {

namespace {

using Kind = FileRequest::Kind;

std::optional<std::string> ask(const Workstation& workstation, const FileRequest& request) {
    return workstation.ask_file ? workstation.ask_file(request) : std::nullopt;
}

std::optional<std::string> ask_table(const Workstation& workstation,
                                     const tools::PositionFileQuestion& question) {
    return ask(workstation,
               {.kind = question.save ? Kind::kSave : Kind::kOpen,
                .title = std::string(tag_part(tools::kPosFlowCaption, workstation.language)),
                .filter = std::string(question.kind),
                .suffix = std::string(question.suffix),
                .name = {}});
}

constexpr base::Text kConfiguration{"读写驱动器配置", "R/W Driver Configuration"};

std::optional<std::filesystem::path> ask_configuration(const Workstation& workstation,
                                                       const tools::ConfigurationFile& question) {
    const auto suggestion = question.suggestion.u8string();
    const auto chosen =
        ask(workstation, {.kind = question.save ? Kind::kSave : Kind::kOpen,
                          .title = std::string(kConfiguration.in(workstation.language)),
                          .filter = std::string(question.kind),
                          .suffix = std::string(question.suffix),
                          .name = std::string(suggestion.begin(), suggestion.end())});
    if (!chosen) return std::nullopt;
    return std::filesystem::path(std::u8string(chosen->begin(), chosen->end()));
}

}  // namespace

WorkstationTools::WorkstationTools(Workstation& workstation)
    : digital_io({.engine = workstation.engine,
                  .notice = workstation.notice,
                  .language = workstation.language,
                  .unload_all = [&workstation] { quit(workstation); }}),
      errors(workstation.engine, workstation.language),
      init_save(workstation.engine, workstation.language),
      configuration({.engine = workstation.engine,
                     .dictionary = workstation.dictionary,
                     .notice = workstation.notice,
                     .language = workstation.language,
                     .folder = workstation.folder,
                     .ask_file =
                         [&workstation](const tools::ConfigurationFile& question) {
                             return ask_configuration(workstation, question);
                         }}),
      pos_flow({.engine = workstation.engine,
                .notice = workstation.notice,
                .language = workstation.language,
                .dictionary = workstation.dictionary,
                .ask_file =
                    [&workstation](const tools::PositionFileQuestion& question) {
                        return ask_table(workstation, question);
                    }}),
      homing({.dictionary = workstation.dictionary,
              .operands = workstation.values.operands,
              .language = workstation.language,
              .notice = workstation.notice,
              .write = [&engine = workstation.engine](
                           dictionary::WireKey key,
                           std::int32_t value) { engine.sendata2(key, value, 0); }}),
      rs485(workstation.engine, workstation.dictionary, workstation.language),
      tuner({.engine = workstation.engine,
             .notice = workstation.notice,
             .language = workstation.language,
             .link_open = [&workstation] { return workstation.communication.link_open(); }}) {}

std::vector<link::Window*> WorkstationTools::windows() {
    return {&digital_io, &errors, &init_save, &configuration, &pos_flow, &homing, &rs485, &tuner};
}

bool WorkstationTools::load(Workstation& workstation) {
    if (!digital_io.Form_Load(workstation.folder)) return false;
    // The others read keys, and the reader of keys says nothing: a window without its file has no
    // rows. A position table without its list of objects tells so when it is to be read or written.
    pos_flow.load(workstation.folder);
    homing.load(workstation.folder);
    rs485.load(workstation.folder);
    return true;
}

void WorkstationTools::apply_language() {
    pos_flow.change_my_language();
    homing.language_changed();
}

}  // namespace servo::app
