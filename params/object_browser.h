// The dictionary browser `ObjectDictionay`: lists every object of the dictionary, finds one by
// text, shows its properties, its help and its value, and hands it to whoever opened the browser to
// pick one. No widget: whoever shows it observes it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/language.h"
#include "dictionary/keys.h"
#include "dictionary/store.h"
#include "link/window.h"
#include "params/modbus_list.h"
#include "params/object_browser_list.h"
#include "params/page_grid.h"

namespace servo::params {

// What the browser uses of the workstation. The references outlive it; the dictionary may be loaded
// after it is made.
struct BrowserServices {
    const ModbusList& modbus_list;
    PageServices page;
};

// The detail labels, all from the row of the list.
struct ObjectDetails {
    std::string index;
    std::string sub;
    std::string name;  // in the current language
    std::string type;  // dictionary word
    std::string attribute;
    std::string modbus = "....";  // "0x" and the address; so when none is known
    bool operator==(const ObjectDetails&) const = default;
};

// What a double click does with the selected object, for the line that says it.
struct BrowserAim {
    std::string text;       // empty: it only closes the browser
    base::Text button;      // what a button that does the same is called
    bool possible = false;  // false: `text` says why not
};

// Calls come after the change.
class BrowserObserver {
  public:
    BrowserObserver() = default;
    BrowserObserver(const BrowserObserver&) = delete;
    BrowserObserver& operator=(const BrowserObserver&) = delete;
    virtual ~BrowserObserver() = default;

    virtual void list_changed() = 0;             // headers, widths, language, the dictionary
    virtual void object_shown(bool to_top) = 0;  // selection, details, help
    virtual void search_changed() = 0;           // search_note()
    virtual void aim_changed() = 0;              // aim()
};

class ObjectBrowser final : public link::PollWindow {
  public:
    static constexpr std::uint8_t kMenuAndHelp = 0;
    static constexpr std::uint8_t kAdding = 1;
    static constexpr std::uint8_t kFirstChannel = 2;  // scope channel 0
    static constexpr std::uint8_t kLastChannel = 6;   // scope channel 4, its trigger source

    explicit ObjectBrowser(BrowserServices services);

    void set_observer(BrowserObserver* observer) { observer_ = observer; }  // may be null
    // Closes the window; set by whoever keeps the windows.
    std::function<void()> hide;

    std::uint8_t mode = kMenuAndHelp;  // set by whoever opens the window; kept when it closes
    int search_row = 0;                // where the last search stopped; 0 before the first

    // --- Opening. These set the mode and what it points at; the opening route comes after them.
    void open_plain();
    // Adds below that row of the page. The grid lives as long as the program; rows may come and go.
    // The caption is shown.
    void open_for_adding(PageGrid& page, int row, base::Text page_caption = {});
    void open_for_help(dictionary::Identity object);
    void open_for_scope(int channel);  // 0 to 4

    // --- The list, `MSHFlexGrid2`
    int list_rows() const;  // with the header
    std::string list_cell(int row, int column) const;
    int selected_row() const { return selected_row_; }  // 0: none

    // Header texts and widths in the current language, then the first match of the search box.
    // Called at start-up and on a change of the language.
    void Init_OD_Grid();
    // Shows that object. The header is none.
    void MSHFlexGrid2_Click(int row);
    void double_click(int row);
    void move_selection(int rows);  // keys and wheel; stays in the list
    void scrolled_to(int top_row);  // the user moved the scroll bar

    // --- Search
    const std::string& Text2() const { return text2_; }
    // The box was typed into: shows where the search button would go, without going there. With no
    // match, what was selected before the typing.
    void Text2_Change(std::string_view text);
    // The search button: the next match below search_row, going round.
    void Command1_Click();
    // The same below, or above, the selected row.
    void find_next();
    void find_previous();
    // How many rows match, and the how manyth the selected one is.
    std::string search_note() const { return search_note_; }
    bool search_failed() const { return search_failed_; }

    // --- The shown object
    const ObjectDetails& details() const { return details_; }
    const std::string& help() const { return help_; }
    PageGrid& grid() { return grid_; }  // `MSHFlexGrid1`, one row
    const PageGrid& grid() const { return grid_; }
    BrowserAim aim() const;
    base::Language language() const { return services_.page.language; }

    // --- For the poller
    bool custom() const override { return false; }
    int rows() const override { return grid_.rows(); }
    link::PollRow row(int row) const override { return grid_.poll_row(row); }
    void set_value(int row, double value, int size_code) override {
        grid_.set_value(row, value, size_code);
    }
    void set_text(int row, std::string_view text) override { grid_.set_text(row, text); }

  private:
    enum class Scroll : std::uint8_t { kNone, kToTop };

    // A search text that is being typed ends when a row is selected in any other way.
    struct Typing {
        int from_row = 0;  // selected before it; 0: the object that the list does not have
        dictionary::Identity from_object = 0;
    };

    void set_mode(std::uint8_t new_mode);
    void select(int row, Scroll scroll);
    void show_object(Scroll scroll);
    void show_missing(dictionary::Identity object);
    void show_live(dictionary::Identity object);
    void show_typed();
    void found(int row);
    void tell_search();
    std::string list_text(int row, int column) const;
    std::string modbus_text(std::string_view key) const;
    void set_help(std::string_view name, std::string_view text);
    void add_to_page(dictionary::Identity object);
    bool assign_to_scope(dictionary::Identity object);
    bool is_channel_mode() const { return mode >= kFirstChannel && mode <= kLastChannel; }

    BrowserServices services_;
    const dictionary::Store& dictionary_;
    ListSearch search_;
    PageGrid grid_;
    std::string text2_;
    std::optional<Typing> typing_;
    int selected_row_ = 0;
    dictionary::Identity shown_ = 0;
    ObjectDetails details_;
    std::string help_;
    std::string search_note_;
    bool search_failed_ = false;
    PageGrid* popup_page_ = nullptr;
    int popup_row_ = 0;
    dictionary::Identity popup_object_ = 0;  // in that row when the menu was opened
    base::Text popup_caption_;
    BrowserObserver* observer_ = nullptr;
};

// The object that tells the drive's recorder what a channel records, as the key of a write. Wide
// objects take a slot that two channels share.
dictionary::WireKey scope_selector(int channel, int bits);

}  // namespace servo::params
