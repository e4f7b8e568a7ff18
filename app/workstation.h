// Everything that the windows share, in one struct without a window: MDIForm1 owns one, servoctl
// owns one, a test owns one. A window is given the workstation, or the parts of it that it uses,
// when it is made.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/screen.h"
#include "app/user_dialogs.h"
#include "app/workstation_tools.h"
#include "base/clock.h"
#include "base/language.h"
#include "base/notice.h"
#include "dictionary/store.h"
#include "firmware/download.h"
#include "link/communication.h"
#include "link/drive_values.h"
#include "link/engine.h"
#include "link/port.h"
#include "link/timer.h"
#include "link/window.h"
#include "params/modbus_list.h"
#include "params/object_browser.h"
#include "params/page.h"
#include "params/tabbed_page.h"
#include "scope/oscilloscope.h"
#include "tools/journal.h"
#include "tools/tapped_port.h"

namespace servo::app {

// What a workstation runs on. All of it outlives the workstation.
struct Surroundings {
    std::filesystem::path folder;  // the program's folder: dictionary, sys/, modbus.txt
    base::Notice& notice;
    link::Port& port;
    link::PortDirectory& ports;
    base::Clock& clock;
    link::Timer& timer;  // "Label1Timer": whoever owns it calls engine.cTmr_Timer() on each tick
    // Fills the dictionary in place of Store::open_dat(folder), for a program that has begun to
    // read it earlier. May be empty.
    std::function<bool(dictionary::Store&)> open_dat = {};
    // "10:02:33", for the journal of writes. None: its entries have no time.
    std::function<std::string()> time_of_day = {};
};

struct Workstation {
    explicit Workstation(const Surroundings& given);
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    std::filesystem::path folder;
    base::Notice& notice;
    base::Clock& clock;
    link::Timer& cTmr;
    Screen* screen = nullptr;  // not owned; null without windows

    base::Language language = base::Language::kEnglish;
    std::string font_name{base::font_name(base::Language::kEnglish)};
    dictionary::Variant Tavro_Nevra_Other_mode = dictionary::Variant::kAllItems;
    std::function<bool(dictionary::Store&)> open_dat;
    dictionary::Store dictionary;
    link::DriveValues values;
    params::ModbusList modbus_list;

    // The window, its grid and the row that raised the pop-up menu of a grid.
    link::Window* popup_window = nullptr;
    params::PageGrid* popup_grid = nullptr;
    int popup_row = 0;

    tools::TappedPort line;  // what leaves and comes in is shown to the journal

    // The two window lists are engine.all_windows (40) and engine.poll_windows (29); MDIForm_Load
    // fills every place.
    link::Engine engine;
    link::Communication communication;

    tools::WriteJournal journal;
    // An addition: in none of the window lists, so it is neither polled nor part of a project.
    std::unique_ptr<link::Window> journal_window;

    // Windows live here from construction to the end.
    std::vector<std::unique_ptr<params::Page>> pages;               // the 22, as in their table
    std::vector<std::unique_ptr<params::TabbedPage>> tabbed_pages;  // TPDOSet, RPDOSet
    params::ObjectBrowser browser;                                  // ObjectDictionay
    scope::Oscilloscope scope;                                      // Scope
    params::Page download_rows;  // Download: its working grid, polled as a page
    // How windows ask for a file; set by whoever has dialogs.
    std::function<std::optional<std::string>(const FileRequest&)> ask_file;
    firmware::Download download;  // Download: what its controls hold, and the transfer
    WorkstationTools tools;       // the tool windows and the tuner
    std::vector<std::unique_ptr<link::Window>> other_windows;  // the rest
    std::vector<link::Window*> windows;  // all of the above, in the order of all_windows

    // By window name, without regard to case, since one window is written ECANset and ECANSet. The
    // window of the journal too.
    link::Window* find_window(std::string_view name) const;
    params::Page* find_page(std::string_view name) const;
    params::TabbedPage* find_tabbed_page(std::string_view name) const;

    std::filesystem::path sys_ini() const;
};

// The name of the journal's window.
inline constexpr const char* kJournalWindow = "Journal";

// Start-up, in the told order. False when there is no dictionary: the message has been shown, all
// windows are unloaded, and the program ends.
bool MDIForm_Load(Workstation& workstation);

// The activation of the main window behind its start: hides the scope window, then the click of the
// current language, which puts every text on screen and writes "lang" back.
void MDIForm_Activate(Workstation& workstation);

// The two language items: language and font, "lang" in sys.ini, names in the grids, texts on
// screen.
void language_click(Workstation& workstation, base::Language language);

// The opening route of every page item. Unless the scope acquires or a batch runs, the poller goes
// to the page rows at once.
void open_page(Workstation& workstation, link::Window& window);

// The close box: hides, keeps the rows.
void close_window(Workstation& workstation, link::Window& window);

// The pop-up item `adding`: the dictionary browser, to pick what goes below the row.
void adding_click(Workstation& workstation);

// The pop-up item `helping`: the dictionary browser on the object of the row.
void helping_click(Workstation& workstation);

// An object button of the oscilloscope: the dictionary browser, to pick what channel 0 to 3 records
// or what triggers it (4).
void object_button_click(Workstation& workstation, int channel);

// The pop-up item `deling`: the row goes, those below it are renumbered.
void deling_click(Workstation& workstation);

// Ends at once: no question, no check for a running job.
void quit(Workstation& workstation);

}  // namespace servo::app
