// Everything that the windows share, in one struct without a window: MDIForm1 owns one, servoctl
// owns one, a test owns one. A window is given the workstation, or the parts of it that it uses,
// when it is made.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/screen.h"
#include "base/clock.h"
#include "base/language.h"
#include "base/notice.h"
#include "dictionary/store.h"
#include "link/drive_values.h"
#include "link/port.h"
#include "link/timer.h"
#include "link/window.h"

namespace servo::link {
class Engine;
class Communication;
}  // namespace servo::link
namespace servo::params {
class Page;
}

namespace servo::app {

inline constexpr std::size_t kAllWindows = 40;
inline constexpr std::size_t kPollWindows = 29;
inline constexpr int kTickMilliseconds = 3;  // interval of "Label1Timer"

// The two lists, in their fixed order. The end of a pass clears must_fresh across them by position,
// so the order is part of the behaviour.
extern const std::array<std::string_view, kAllWindows> kAllWindowNames;
extern const std::array<std::string_view, kPollWindows> kPollWindowNames;

// One line of modbus.txt.
struct ModbusAddress {
    std::string key;      // six characters, as in the file
    std::string address;  // four characters
};

// What a workstation runs on. All of it outlives the workstation.
struct Surroundings {
    std::filesystem::path folder;  // the program's folder: dictionary, sys/, modbus.txt
    base::Notice& notice;
    link::Port& port;
    link::PortDirectory& ports;
    base::Clock& clock;
    link::Timer& timer;  // "Label1Timer": whoever owns it calls engine->cTmr_Timer() on each tick
};

struct Workstation {
    explicit Workstation(const Surroundings& given);
    ~Workstation();
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    std::filesystem::path folder;
    base::Notice& notice;
    link::Port& port;
    link::PortDirectory& ports;
    base::Clock& clock;
    link::Timer& cTmr;
    Screen* screen = nullptr;  // not owned; null without windows

    base::Language language = base::Language::kEnglish;
    std::string font_name{base::font_name(base::Language::kEnglish)};
    dictionary::Variant Tavro_Nevra_Other_mode = dictionary::Variant::kAllItems;
    dictionary::Store dictionary;
    link::DriveValues values;
    std::vector<ModbusAddress> modbus_list;
    bool modbus_list_present = false;

    // The window and row that raised the pop-up menu of a grid.
    params::Page* popup_window = nullptr;
    int popup_row = 0;

    std::unique_ptr<link::Engine> engine;
    std::unique_ptr<link::Communication> communication;

    // Windows live here from construction to the end; the lists below point at them.
    std::vector<std::unique_ptr<params::Page>> pages;  // the 22, in the order of their table
    std::vector<std::unique_ptr<link::Window>>
        other_windows;                            // the rest; hidden until they are built
    std::vector<link::Window*> all_windows;       // 40, filled by MDIForm_Load
    std::vector<link::PollWindow*> poll_windows;  // 29, filled by MDIForm_Load

    // By window name; without regard to case, since the same window is written ECANset and ECANSet.
    link::Window* find_window(std::string_view name) const;
    params::Page* find_page(std::string_view name) const;

    std::filesystem::path sys_ini() const;
};

// Start-up, in the told order. False when there is no dictionary: the message has been shown, and
// the program ends.
bool MDIForm_Load(Workstation& workstation);

// Each activation of the main window: the click of the current language. The first one also hides
// the scope window.
void MDIForm_Activate(Workstation& workstation, bool first);

// The two menu clicks: language and font, "lang" in sys.ini, names in the grids, texts on screen.
void language_click(Workstation& workstation, base::Language language);

// The opening route of every page item. Unless the scope acquires or a batch runs, the poller goes
// to the page rows at once.
void open_page(Workstation& workstation, link::Window& window);

// The close box: hides, keeps the rows.
void close_window(Workstation& workstation, link::Window& window);

// Ends at once: no question, no check for a running job. Closes the link first, so that the drive's
// line is left clean.
void quit(Workstation& workstation);

// Reads modbus.txt into modbus_list, or shows the message that it is missing.
void load_modbus_list(Workstation& workstation);

// The texts of the title and so on that depend on the variant.
std::string_view main_title(dictionary::Variant variant);

}  // namespace servo::app
