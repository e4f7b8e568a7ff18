// The journal of writes: every value that this run has written to the drive, with what stood there
// before as far as it was known. It lives in memory alone.
//
// It listens to the serial line itself, so it holds what has left, whoever sent it. A firmware
// image is no value and is left out.
//
// A value before is only known when the drive has told it since the link was opened: to a page, a
// status lane, a job, or by taking an earlier write. Commands, such as storing, restarting and the
// control word, have none to go back to.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "link/listeners.h"
#include "tools/tapped_port.h"

namespace servo::tools {

inline constexpr base::Text kJournalCaption{"写入记录", "Journal of Writes"};

struct JournalEntry {
    enum class State : std::uint8_t {
        kSent,     // no word of the drive yet
        kTaken,    // acknowledged
        kRefused,  // with a code
    };

    std::size_t number = 0;             // from 0, of this run
    std::string time;                   // of day
    std::chrono::microseconds sent{0};  // of the engine's clock, at the last time
    std::string window;                 // by name: whose control or job wrote it
    link::WireKey key = 0;
    // Bits of the object's width, as a number without a sign.
    std::uint32_t value = 0;
    std::optional<std::uint32_t> before;
    State state = State::kSent;
    std::uint32_t abort_code = 0;
    int times = 1;  // sent again for want of an answer

    link::Identity object() const { return dictionary::identity_of(key); }
    bool operator==(const JournalEntry&) const = default;
};

// What a write is, rather than what it leaves behind: storing, factory values, restart, the control
// word, the starts of recorder, scan and auto tuning. No part of a configuration.
bool is_command(link::Identity object);

// All of it outlives the journal.
struct JournalServices {
    TappedPort& line;
    link::Engine& engine;
    const dictionary::Store& dictionary;
    const base::Language& language;
    std::function<std::string()> time_of_day;
    std::function<std::string()> window;                                 // that is used now
    std::function<std::string(const std::string& window)> caption = {};  // none: the name
};

class WriteJournal final : private LineTap, private link::StatusListener {
  public:
    // The oldest entries leave first.
    static constexpr std::size_t kMost = 10000;
    static constexpr int kColumns = 7;  // time, window, object, name, before, value, result
    // A word of the drive that comes later than this belongs to a later write.
    static constexpr std::chrono::seconds kLongestAnswer{1};

    explicit WriteJournal(JournalServices services);
    ~WriteJournal() override;
    WriteJournal(const WriteJournal&) = delete;
    WriteJournal& operator=(const WriteJournal&) = delete;

    const std::deque<JournalEntry>& entries() const { return entries_; }  // oldest first
    std::size_t forgotten() const { return forgotten_; }                  // left for want of room
    base::Language language() const { return services_.language; }
    void clear();

    // The newest entry of an object; null when there is none.
    const JournalEntry* last_of(link::Identity object) const;

    // What the drive was last heard to hold; nothing once that may have become another value.
    std::optional<std::uint32_t> known(link::Identity object) const;

    // Positions of the entries with the text in one of their cells, without regard to the case of
    // letters; all of them for an empty one.
    std::vector<std::size_t> find(std::string_view text) const;

    // Texts of the cells in the user's language: "10:02:33", "Basic Operation", "606000",
    // "Modes of operation", "-3", "1", "Written".
    std::string cell(const JournalEntry& entry, int column) const;
    static std::string_view heading(int column, base::Language language);

    // Lines of a table for the clipboard, cells separated by tabs.
    std::string copy(const std::vector<std::size_t>& chosen) const;

    // The last value of each object, in the order of their first writes, as a `.cdi` file. Refused
    // writes and commands are left out.
    std::string write_cdi(const std::vector<std::size_t>& chosen) const;

    // Called after any change.
    std::function<void()> changed;

  private:
    void sent(const link::Payload& payload) override;
    void heard(const link::Payload& payload) override;
    void link_changed(bool open) override;

    void written(link::WireKey key, std::uint32_t bits);
    JournalEntry* waiting_for(link::Identity object, const link::Payload& payload);
    // What the dictionary says of an object. Looked up once: a filter asks for every row at each
    // key, and thousands of rows are about a few hundred objects.
    struct Facts {
        std::string name_ch;
        std::string name_en;
        bool has_sign = false;
    };

    std::string window_now() const;
    const Facts& facts(link::Identity object) const;
    std::string value_text(const JournalEntry& entry, std::uint32_t bits) const;
    void tell() const {
        if (changed) changed();
    }

    JournalServices services_;
    std::deque<JournalEntry> entries_;
    std::size_t forgotten_ = 0;
    std::size_t next_ = 0;
    // What the drive was last heard to hold.
    std::unordered_map<link::Identity, std::uint32_t> known_;
    mutable std::unordered_map<link::Identity, Facts> facts_;
};

}  // namespace servo::tools
