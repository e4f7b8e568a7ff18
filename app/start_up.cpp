// The life of the workstation: start-up in its order, language, opening and closing, the end.
#include <algorithm>
#include <string>

#include "app/window_table.h"
#include "app/workstation.h"
#include "base/number.h"
#include "base/profile_file.h"
#include "params/page_loader.h"

namespace servo::app {

namespace {

using base::Language;

constexpr std::string_view kDictionaryMissingTitle = "Notice";
constexpr std::string_view kDictionaryMissingText = "File Missing,Program is about to quit";

void tell_missing(Workstation& workstation, std::string_view file) {
    workstation.notice.show(base::kNoticeTitle.in(workstation.language),
                            params::missing_file_text(file));
}

void load_page(Workstation& workstation, params::Page& page) {
    if (!page.load(workstation.folder)) tell_missing(workstation, page.definition().file);
}

// A page without its file stays empty and start-up goes on. The order is that of the messages.
void load_pages(Workstation& workstation) {
    const auto order = params::pages_in_load_order();
    const std::size_t last = order.back();  // the other PDO settings, behind the PDOs themselves
    for (const std::size_t position : order)
        if (position != last) load_page(workstation, *workstation.pages.at(position));
    for (const auto& page : workstation.tabbed_pages)
        for (const std::string& missing : page->load(workstation.folder))
            tell_missing(workstation, missing);
    load_page(workstation, *workstation.pages.at(last));
    load_page(workstation, workstation.download_rows);
}

void load_modbus(Workstation& workstation) {
    workstation.modbus_list = params::load_modbus_list(workstation.folder);
    if (!workstation.modbus_list.present)
        workstation.notice.show(params::kModbusMissingTitle, params::kModbusMissingText);
}

void set_language(Workstation& workstation, Language language) {
    workstation.language = language;
    workstation.font_name = base::font_name(language);
}

// Every run starts in English, whatever the file says: the stored value only records the last
// choice. Machines on the line are shared, and their papers are in English.
void read_language(Workstation& workstation) {
    const std::string stored =
        base::get_profile_string(workstation.sys_ini(), "sys", "lang", "", 16);
    set_language(workstation, stored == "0" ? Language::kChinese : Language::kEnglish);
    set_language(workstation, Language::kEnglish);
}

void build_window_lists(Workstation& workstation) {
    link::Engine& engine = workstation.engine;
    const auto add = [&engine](link::Window& window) {
        engine.add_window(window);
        if (auto* polled = dynamic_cast<link::PollWindow*>(&window))
            engine.add_poll_window(*polled);
    };
    for (link::Window* window : workstation.windows)
        add(*window);
}

void Init_Communication(link::Engine& engine) {
    engine.state.Form_Now = 0;
    engine.state.Form_Last = 0;
    engine.state.sub_Pointer = 0;
    engine.pictures.set_button4(link::kCommpic);
}

void make_timer(link::Timer& timer) {
    timer.set_interval(link::kTickMilliseconds);
    timer.set_enabled(false);
}

// A transfer that the end of the program cuts off leaves the drive without a firmware. Nobody is
// asked or told at the end; the window tells it in the next run, until a transfer has succeeded.
constexpr std::string_view kDownload = "download";
constexpr std::string_view kCut = "cut";
constexpr double kLastStep = 10;

void recall_cut_transfer(Workstation& workstation) {
    const std::string cut =
        base::get_profile_string(workstation.sys_ini(), kDownload, kCut, "", 16);
    if (cut.empty()) return;
    const auto step =
        static_cast<std::uint8_t>(std::clamp(base::leading_number(cut), 0.0, kLastStep));
    workstation.download.recall({.end = firmware::TransferEnd::kLinkClosed,
                                 .step = step,
                                 .erased = cut.ends_with("erased"),
                                 .message = {}});
}

void keep_cut_transfer(Workstation& workstation) {
    if (workstation.download.transfer_running()) workstation.engine.link_closed();
    const auto& result = workstation.download.result();
    if (!result) return;
    std::string cut;
    switch (result->end) {
        case firmware::TransferEnd::kLinkClosed:
            cut = std::to_string(result->step) + (result->erased ? " erased" : "");
            break;
        case firmware::TransferEnd::kDone:
            break;
        case firmware::TransferEnd::kFailed:
        case firmware::TransferEnd::kReadBack:
            return;  // told in a box already
    }
    const std::string kept =
        base::get_profile_string(workstation.sys_ini(), kDownload, kCut, "", 16);
    if (cut != kept) base::write_profile_string(workstation.sys_ini(), kDownload, kCut, cut);
}

// Everything that start-up starts from, so that a second load begins like the first.
void clear_shared_state(Workstation& workstation) {
    workstation.engine.state = {};
    workstation.values = {};
    workstation.modbus_list = {};
    workstation.popup_window = nullptr;
    workstation.popup_grid = nullptr;
    workstation.popup_row = 0;
}

void end_without_dictionary(Workstation& workstation) {
    // In English whatever the language is: nothing is known of this user yet.
    workstation.notice.show(kDictionaryMissingTitle, kDictionaryMissingText);
    quit(workstation);
}

}  // namespace

bool MDIForm_Load(Workstation& workstation) {
    clear_shared_state(workstation);
    // The rows of the pages need names, so the dictionary is read ahead of them. That it is missing
    // is still told in its turn, behind what the page files and modbus.txt have to say.
    const bool dictionary_found = workstation.open_dat
                                      ? workstation.open_dat(workstation.dictionary)
                                      : workstation.dictionary.open_dat(workstation.folder);
    load_pages(workstation);
    load_modbus(workstation);
    read_language(workstation);
    workstation.communication.load(workstation.language);
    if (!workstation.tools.load(workstation)) return false;
    build_window_lists(workstation);
    Init_Communication(workstation.engine);
    make_timer(workstation.cTmr);
    workstation.Tavro_Nevra_Other_mode = dictionary::Store::variant_of(workstation.folder);
    if (workstation.screen != nullptr) workstation.screen->show_background();
    if (!dictionary_found) {
        end_without_dictionary(workstation);
        return false;
    }
    if (workstation.screen != nullptr) workstation.screen->apply_variant();
    workstation.browser.Init_OD_Grid();
    workstation.scope.load();
    recall_cut_transfer(workstation);
    return true;
}

void MDIForm_Activate(Workstation& workstation) {
    if (link::Window* scope = workstation.find_window("Scope");
        scope != nullptr && scope->visible())
        close_window(workstation, *scope);
    language_click(workstation, workstation.language);
}

void language_click(Workstation& workstation, Language language) {
    set_language(workstation, language);
    // A folder that can't be written to only costs the record of the choice.
    base::write_profile_string(workstation.sys_ini(), "sys", "lang",
                               language == Language::kChinese ? "0" : "1");
    for (const auto& page : workstation.pages)
        page->grid().apply_language();
    for (const auto& page : workstation.tabbed_pages)
        page->apply_language();
    workstation.download_rows.grid().apply_language();
    workstation.browser.Init_OD_Grid();
    workstation.scope.change_scope_language();
    workstation.tools.apply_language();
    workstation.communication.apply_language(language);
    if (workstation.screen != nullptr) workstation.screen->apply_language();
}

void open_page(Workstation& workstation, link::Window& window) {
    window.set_visible(true);
    if (workstation.screen != nullptr) workstation.screen->show_window(window);
    workstation.engine.page_opened();
}

void close_window(Workstation& workstation, link::Window& window) {
    window.set_visible(false);
    if (workstation.screen != nullptr) workstation.screen->hide_window(window);
}

namespace {

base::Text caption_of(const Workstation& workstation, const link::Window& window) {
    const WindowDefinition* definition = find_window_definition(window.name());
    if (definition == nullptr) return {};
    const dictionary::Variant variant = workstation.Tavro_Nevra_Other_mode;
    return {app::caption_of(*definition, Language::kChinese, variant),
            app::caption_of(*definition, Language::kEnglish, variant)};
}

}  // namespace

void adding_click(Workstation& workstation) {
    if (workstation.popup_grid == nullptr) return;
    workstation.browser.open_for_adding(*workstation.popup_grid, workstation.popup_row,
                                        caption_of(workstation, *workstation.popup_window));
    open_page(workstation, workstation.browser);
}

void helping_click(Workstation& workstation) {
    const params::PageGrid* grid = workstation.popup_grid;
    if (grid == nullptr || workstation.popup_row < 1 || workstation.popup_row >= grid->rows())
        return;
    workstation.browser.open_for_help(grid->row(workstation.popup_row).identity());
    open_page(workstation, workstation.browser);
}

void object_button_click(Workstation& workstation, int channel) {
    workstation.browser.open_for_scope(channel);
    open_page(workstation, workstation.browser);
}

void deling_click(Workstation& workstation) {
    if (workstation.popup_grid != nullptr)
        workstation.popup_grid->delete_row(workstation.popup_row);
}

void quit(Workstation& workstation) {
    workstation.cTmr.set_enabled(false);
    keep_cut_transfer(workstation);
    workstation.engine.port().close();
    if (workstation.screen != nullptr) workstation.screen->unload_all();
}

}  // namespace servo::app
