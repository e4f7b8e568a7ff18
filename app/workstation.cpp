#include "app/workstation.h"

#include <algorithm>
#include <ranges>

#include "app/tag_text.h"
#include "app/window_table.h"
#include "base/ascii.h"
#include "base/file.h"

namespace servo::app {

namespace {

// Keeps the place of a window with values that is not built yet. It is never visible, so the poller
// passes it by.
class HiddenPollWindow final : public link::PollWindow {
  public:
    using PollWindow::PollWindow;
    bool custom() const override { return true; }
};

// The version rows of the firmware window stand in a grid that nobody sees.
constexpr base::Text kDownloadCaption{"固件下载", "Load Firmware"};
constexpr params::PageDefinition kDownloadRows{"Download", kDownloadCaption, kDownloadCaption,
                                               R"(\sys\download.ini)", 0};

params::PageServices page_services(Workstation& workstation) {
    return {workstation.dictionary, workstation.values.operands, workstation.language,
            [&engine = workstation.engine](dictionary::WireKey key, std::int32_t value) {
                engine.sendata2(key, value, 0);
            }};
}

std::string software_version(const params::Page& rows) {
    return std::string(rows.grid().cell(1, params::kValue));
}

std::optional<std::string> ask_firmware_file(const Workstation& workstation,
                                             const firmware::FileQuestion& question) {
    if (!workstation.ask_file) return std::nullopt;
    return workstation.ask_file(
        {.kind = FileRequest::Kind::kOpen,
         .title = std::string(tag_part(firmware::kDownloadCaption, workstation.language)),
         .filter = std::string(question.kind),
         .suffix = std::string(question.suffix),
         .name = {}});
}

bool is_polled(std::string_view name) {
    return std::ranges::find(link::kPollWindowNames, name) != link::kPollWindowNames.end();
}

std::unique_ptr<link::Window> make_other(std::string_view name) {
    if (is_polled(name)) return std::make_unique<HiddenPollWindow>(std::string(name));
    return std::make_unique<link::Window>(std::string(name));
}

// Fills the list of all windows from those that are there, and makes the rest.
void list_windows(Workstation& workstation) {
    std::vector<link::Window*> ready{&workstation.browser, &workstation.scope,
                                     &workstation.download_rows};
    for (link::Window* window : workstation.tools.windows())
        ready.push_back(window);
    for (const auto& page : workstation.pages)
        ready.push_back(page.get());
    for (const auto& page : workstation.tabbed_pages)
        ready.push_back(page.get());
    for (const std::string_view name : link::kAllWindowNames) {
        const auto found = std::ranges::find_if(ready, [name](const link::Window* window) {
            return base::same_name(window->name(), name);
        });
        if (found != ready.end()) {
            workstation.windows.push_back(*found);
            continue;
        }
        workstation.other_windows.push_back(make_other(name));
        workstation.windows.push_back(workstation.other_windows.back().get());
    }
}

void make_windows(Workstation& workstation) {
    const params::PageServices services = page_services(workstation);
    for (const params::PageDefinition& definition : params::kPageTable)
        workstation.pages.push_back(std::make_unique<params::Page>(definition, services));
    for (const params::TabbedPageDefinition& definition : params::kTabbedPageTable)
        workstation.tabbed_pages.push_back(
            std::make_unique<params::TabbedPage>(definition, services));
    list_windows(workstation);
}

tools::JournalServices journal_services(Workstation& workstation, const Surroundings& given) {
    const auto time_of_day = [ask = given.time_of_day] { return ask ? ask() : std::string(); };
    const auto window = [&workstation] {
        return workstation.screen != nullptr ? workstation.screen->active_window() : std::string();
    };
    const auto caption = [&workstation](const std::string& name) -> std::string {
        if (name == kJournalWindow)
            return std::string(tools::kJournalCaption.in(workstation.language));
        const WindowDefinition* definition = find_window_definition(name);
        if (definition == nullptr) return name;
        return std::string(
            caption_of(*definition, workstation.language, workstation.Tavro_Nevra_Other_mode));
    };
    return {.line = workstation.line,
            .engine = workstation.engine,
            .dictionary = workstation.dictionary,
            .language = workstation.language,
            .time_of_day = time_of_day,
            .window = window,
            .caption = caption};
}

}  // namespace

Workstation::Workstation(const Surroundings& given)
    : folder(given.folder),
      notice(given.notice),
      clock(given.clock),
      cTmr(given.timer),
      open_dat(given.open_dat),
      line(given.port),
      engine(line, given.clock, given.timer, values),
      communication(engine, line, given.ports, given.notice, given.folder),
      journal(journal_services(*this, given)),
      journal_window(std::make_unique<link::Window>(kJournalWindow)),
      browser({modbus_list, page_services(*this)}),
      scope({.engine = engine,
             .dictionary = dictionary,
             .notice = notice,
             .language = language,
             .link_open = [this] { return communication.link_open(); },
             .transfer_running = [this] { return download.transfer_running(); }}),
      download_rows(kDownloadRows, page_services(*this)),
      download({.engine = engine,
                .notice = notice,
                .language = language,
                .Tavro_Nevra_Other_mode = Tavro_Nevra_Other_mode,
                .ask_file =
                    [this](const firmware::FileQuestion& question) {
                        return ask_firmware_file(*this, question);
                    },
                // A string that is still coming in is no version yet.
                .software_version =
                    [this] {
                        return engine.state.is_access_str != 0 ? download.data().Label18
                                                               : software_version(download_rows);
                    }}),
      tools(*this) {
    engine.set_link_control(&communication);
    engine.set_scope(&scope.acquisition());
    make_windows(*this);
    browser.hide = [this] { close_window(*this, browser); };
}

params::Page* Workstation::find_page(std::string_view name) const {
    for (const auto& page : pages)
        if (base::same_name(page->name(), name)) return page.get();
    return nullptr;
}

params::TabbedPage* Workstation::find_tabbed_page(std::string_view name) const {
    for (const auto& page : tabbed_pages)
        if (base::same_name(page->name(), name)) return page.get();
    return nullptr;
}

link::Window* Workstation::find_window(std::string_view name) const {
    if (base::same_name(name, kJournalWindow)) return journal_window.get();
    const auto found = std::ranges::find_if(windows, [name](const link::Window* window) {
        return base::same_name(window->name(), name);
    });
    return found == windows.end() ? nullptr : *found;
}

std::filesystem::path Workstation::sys_ini() const {
    return base::find_in(base::find_in(folder, "sys"), "sys.ini");
}

}  // namespace servo::app
