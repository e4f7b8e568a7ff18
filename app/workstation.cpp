#include "app/workstation.h"

#include <algorithm>
#include <cctype>
#include <ranges>

#include "base/file.h"

namespace servo::app {

namespace {

bool same_name(std::string_view a, std::string_view b) {
    return std::ranges::equal(
        a, b, [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// Keeps the place of a window with values that is not built yet. It is never visible, so the poller
// passes it by.
class HiddenPollWindow final : public link::PollWindow {
  public:
    using PollWindow::PollWindow;
    bool custom() const override { return true; }
};

bool is_page(const Workstation& workstation, std::string_view name) {
    return workstation.find_page(name) != nullptr;
}

bool is_polled(std::string_view name) {
    return std::ranges::find(link::kPollWindowNames, name) != link::kPollWindowNames.end();
}

void make_windows(Workstation& workstation) {
    const params::PageServices services{
        workstation.dictionary, workstation.values.operands, workstation.language,
        [&engine = workstation.engine](dictionary::WireKey key, std::int32_t value) {
            engine.sendata2(key, value, 0);
        }};
    for (const params::PageDefinition& definition : params::kPageTable)
        workstation.pages.push_back(std::make_unique<params::Page>(definition, services));
    for (const std::string_view name : link::kAllWindowNames) {
        if (is_page(workstation, name)) continue;
        if (is_polled(name))
            workstation.other_windows.push_back(
                std::make_unique<HiddenPollWindow>(std::string(name)));
        else
            workstation.other_windows.push_back(std::make_unique<link::Window>(std::string(name)));
    }
}

}  // namespace

Workstation::Workstation(const Surroundings& given)
    : folder(given.folder),
      notice(given.notice),
      cTmr(given.timer),
      open_dat(given.open_dat),
      engine(given.port, given.clock, given.timer, values),
      communication(engine, given.port, given.ports, given.notice, given.folder) {
    engine.set_link_control(&communication);
    make_windows(*this);
}

params::Page* Workstation::find_page(std::string_view name) const {
    for (const auto& page : pages)
        if (same_name(page->name(), name)) return page.get();
    return nullptr;
}

link::Window* Workstation::find_window(std::string_view name) const {
    if (auto* page = find_page(name)) return page;
    for (const auto& window : other_windows)
        if (same_name(window->name(), name)) return window.get();
    return nullptr;
}

std::filesystem::path Workstation::sys_ini() const {
    return base::find_in(base::find_in(folder, "sys"), "sys.ini");
}

}  // namespace servo::app
