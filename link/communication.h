// The rules of the communication dialog `Form1`: ports and their list, opening and closing the
// link. The view shows CommunicationState and calls the operations; it decides nothing.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "base/notice.h"
#include "link/can_adapter.h"
#include "link/engine.h"
#include "link/listeners.h"
#include "link/port.h"

namespace servo::link {

inline constexpr std::array<std::string_view, 8> kBaudRates{"4800",  "9600",  "14400", "19200",
                                                            "38400", "56000", "57600", "115200"};
inline constexpr std::array<std::string_view, 5> kCanRates{"1M", "512K", "256K", "128K", "64K"};
inline constexpr int kDefaultBaudIndex = 4;

// What Form1 shows. All texts UTF-8.
struct CommunicationState {
    bool dialog_visible = false;
    std::int16_t port_known = 0;  // -1: the saved port is in the list

    std::string caption;     // of the window
    std::string tab0;        // "串口" or "COM"
    std::string port_label;  // "串口" or "COM"
    std::string baud_label;
    std::string id_label;

    std::vector<PortDirectory::Entry> Combo1;  // serial ports; `text` is the list's text
    int Combo1_index = -1;
    bool Combo1_enabled = true;
    int Combo2_index = kDefaultBaudIndex;  // into kBaudRates
    bool Combo2_enabled = true;
    std::string Text1 = "127";  // communication ID
    bool Text1_enabled = true;
    std::string Command1;  // "打开"/"OPEN" while closed, "关闭"/"CLOSE" while open
    std::string Command2;  // refresh
    bool Command2_enabled = true;

    bool can_tab_visible = false;  // tab 1 is removed when the dialog is loaded
    std::string tab1 = "CAN";
    std::string can_baud_label;
    std::string can_target_label;
    int Combo3_index = 0;             // into kCanRates
    std::string Text2 = "1";          // CAN target ID; "+600" beside it
    std::string Command3 = "Active";  // "CLOSE" while active
    std::string Label7 = "CAN口未激活";
    std::string Label8 = "只支持Peak-CAN";
};

class Communication final : public LinkControl {
  public:
    // `folder` is the program's folder; the settings are in its sys/sys.ini.
    Communication(Engine& engine, Port& port, PortDirectory& directory, base::Notice& notice,
                  std::filesystem::path folder);

    // Dialog load: refreshes the list, selects the default rates, removes the CAN tab.
    void load(base::Language language);

    // A port of the list that counts as known, as if it were the saved one, so that communication()
    // opens it at once. Used for a device named on the command line. False when it is not listed.
    bool use_port(std::string_view text);

    // The toolbar's button, and the engine's way to close the link after a time-out. Toggles the
    // link when the dialog is visible or the port is known; otherwise shows the dialog.
    void communication() override;

    void Command1_Click();                      // open, close
    void Command2_Click();                      // refresh the list
    void Command3_Click();                      // activate the CAN adapter, close it
    void show_dialog();                         // menu item Communication_Settings
    void close_box();                           // hides the dialog, the link stays as it is
    void Option_channel(std::uint8_t channel);  // the two channel option buttons

    // A user's picks. Indexes outside the list mean no selection.
    void pick_port(int index);
    void pick_baud(int index);
    void pick_can_baud(int index);
    void type_id(std::string text);
    void type_can_target(std::string text);

    void apply_language(base::Language language);

    // Whether the link is open, told by the caption of Command1 (or Command3 on CAN).
    bool link_open() const;

    const CommunicationState& state() const { return state_; }
    // Called after every change of the state.
    std::function<void()> observer;

  private:
    void enumerate();
    void probe();
    void select_saved_port();
    void save_port() const;
    void open_link();
    void close_link();
    void set_controls_enabled(bool enabled);
    void take_id();
    void activate_can();
    void close_can();
    void changed() const;
    std::filesystem::path settings_file() const;
    int selected_baud() const;

    Engine& engine_;
    Port& port_;
    PortDirectory& directory_;
    base::Notice& notice_;
    std::filesystem::path folder_;
    base::Language language_ = base::Language::kEnglish;
    std::string given_port_;  // see use_port
    CommunicationState state_;
};

}  // namespace servo::link
