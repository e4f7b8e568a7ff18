#include "app/shell_tool_windows.h"

#include "app/file_dialogs.h"
#include "app/style.h"
#include "app/user_dialogs.h"
#include "app/window_adder.h"
#include "tools/configuration_window.h"
#include "tools/digital_io_window.h"
#include "tools/easy_window.h"
#include "tools/errors_window.h"
#include "tools/homing_window.h"
#include "tools/init_save_window.h"
#include "tools/journal_window.h"
#include "tools/pos_flow_window.h"
#include "tools/rs485_window.h"
#include "tuner/tuner_window.h"

namespace servo::app {

namespace {

using Kind = WindowAdder::Kind;
constexpr bool kRoomy = true;

void add_tuner(WindowAdder& adder, Workstation& workstation, UserDialogs& dialogs) {
    const base::FileDialogs given = file_dialogs(dialogs);
    adder.add(
        "ADVtunner",
        [&workstation, given] { return new tuner::TunerWindow(workstation.tools.tuner, given); },
        Kind::kPage, kRoomy);
}

// It is none of the program's window table.
void add_journal(WindowHost& host, Workstation& workstation, UserDialogs& dialogs) {
    const auto ask =
        [&workstation, &dialogs](
            const tools::ConfigurationFile& question) -> std::optional<std::filesystem::path> {
        const auto chosen =
            dialogs.ask_file({.kind = FileRequest::Kind::kSave,
                              .title = std::string(tools::kJournalCaption.in(workstation.language)),
                              .filter = std::string(question.kind),
                              .suffix = std::string(question.suffix),
                              .name = {}});
        if (!chosen) return std::nullopt;
        return std::filesystem::path(std::u8string(chosen->begin(), chosen->end()));
    };
    host.add_kind(
        kJournalWindow,
        {.make =
             [&workstation, ask] {
                 return new tools::JournalWindow(workstation.journal, workstation.engine, ask);
             },
         .caption =
             [](base::Language language) { return to_qt(tools::kJournalCaption.in(language)); },
         .roomy = true});
}

}  // namespace

void add_tool_windows(WindowAdder& adder, Workstation& workstation, UserDialogs& dialogs) {
    add_journal(adder.host(), workstation, dialogs);
    adder.add("DigitalIO", [&workstation] {
        return new tools::DigitalIOWindow(workstation.tools.digital_io,
                                          workstation.Tavro_Nevra_Other_mode);
    });
    adder.add("Errors", [&workstation] {
        return new tools::ErrorsWindow(workstation.tools.errors,
                                       workstation.Tavro_Nevra_Other_mode);
    });
    adder.add("InitSave",
              [&workstation] { return new tools::InitSaveWindow(workstation.tools.init_save); });
    adder.add(
        "imexport",
        [&workstation] { return new tools::ConfigurationWindow(workstation.tools.configuration); },
        Kind::kPage, kRoomy);
    adder.add("RS485", [&workstation] { return new tools::Rs485Window(workstation.tools.rs485); });
    adder.add("EASY1", [&workstation] { return new tools::EasyWindow(workstation.language); });
    adder.add(
        "PosFlow", [&workstation] { return new tools::PosFlowWindow(workstation.tools.pos_flow); },
        Kind::kPage, kRoomy);
    adder.add(
        "Homing2", [&workstation] { return new tools::Homing2Window(workstation.tools.homing); },
        Kind::kPage, kRoomy);
    add_tuner(adder, workstation, dialogs);
}

}  // namespace servo::app
