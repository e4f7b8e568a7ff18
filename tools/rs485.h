// The window `RS485`: baud rate, stop bits and protocol of the drive's serial port, by drop-down
// lists. The engine polls it like a page. Nothing is stored or restarted here.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "link/listeners.h"
#include "link/window.h"

namespace servo::tools {

// A "\" behind the caption marks a window that is polled without being a grid page.
inline constexpr std::string_view kRs485Caption = "RS485配置/485 Configuration\\";

// A list of the window and what its items mean on the drive.
struct SerialList {
    std::string_view control;
    std::string_view label;  // "Chinese/English"
    std::span<const std::string_view> items;
    link::WireKey key = 0;        // 0: fixed, nothing is written
    std::span<const int> values;  // of the items
};
// Combo1 to Combo5, in their order.
std::span<const SerialList, 5> serial_lists();

struct SerialNote {
    std::string text;
    bool warning = false;
};

class Rs485 final : public link::PollWindow, private link::StatusListener {
  public:
    static constexpr int kEntries = 3;  // of the page file: Combo1, Combo4, Combo5
    static constexpr int kRateEntry = 0;
    static constexpr int kProtocolEntry = 2;

    Rs485(link::Engine& engine, const dictionary::Store& dictionary,
          const base::Language& language);
    ~Rs485() override;

    base::Language language() const { return language_; }

    // The page file; false when it is not there.
    bool load(const std::filesystem::path& folder);

    bool custom() const override { return true; }
    // The number of objects, so the poller's last row has none and asks nothing.
    int get_ODS_Num() const override { return static_cast<int>(objects_.size()); }
    link::Identity get_ods(int row) const override;
    std::string_view get_odtype(int row) const override;
    void set_ods(int row, double value) override;

    // Into serial_lists().
    static std::size_t list_of_entry(int entry);
    // Position in the list of entry 0 to 2; -1 while nothing is selected.
    int selection(int entry) const { return selections_.at(static_cast<std::size_t>(entry)); }
    // A user's pick: the drive is written.
    void pick(int entry, int list_index);

    // Addition: what follows from the choices, the most urgent first.
    std::vector<SerialNote> notes() const;

    // Called when a selection or a note has changed.
    std::function<void()> changed;

  private:
    struct Object {
        link::Identity identity = 0;
        std::string type;
    };
    bool has(int row) const { return row >= 0 && row < static_cast<int>(objects_.size()); }
    void link_changed(bool open) override;

    link::Engine& engine_;
    const dictionary::Store& dictionary_;
    const base::Language& language_;
    std::vector<Object> objects_;
    std::array<int, kEntries> selections_{-1, -1, -1};
    // Since the link was opened: the rate that the drive reported first, and whether another has
    // been picked.
    std::optional<int> first_rate_;
    bool rate_picked_ = false;
};

}  // namespace servo::tools
