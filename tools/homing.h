// The form `Homing2` without its window: what the controls hold, what a click, a key or a polled
// value does. It is a custom window of the poller with nine rows, whose keys stand in
// \sys\HomingMode.ini in the order of the controls.
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
#include "dictionary/keys.h"
#include "dictionary/store.h"
#include "link/drive_values.h"
#include "link/window.h"
#include "tools/homing_method.h"

namespace servo::tools {

inline constexpr std::string_view kHomingFile = R"(\sys\HomingMode.ini)";
inline constexpr std::string_view kHomingPictures = R"(\HomingPics\)";

// The boxes that hold a value of the drive.
enum class HomingEntry : std::uint8_t {
    Text2,  // speed of the search, rpm
    Text3,  // offset, as the drive has it
    Text4,  // speed of the way back, rpm
    Text5,  // acceleration, rps/s
    Text6,  // current, peak amperes
};
inline constexpr std::array kHomingEntries{HomingEntry::Text2, HomingEntry::Text3,
                                           HomingEntry::Text4, HomingEntry::Text5,
                                           HomingEntry::Text6};

// The unit that stands beside a box; empty for none.
std::string_view homing_unit(HomingEntry entry);

enum class HomingList : std::uint8_t { Combo1, Combo2 };
inline constexpr std::array kHomingListSizes{2, 3};

struct HomingData {
    HomingChoices choices;
    std::string Text1;         // the number of the chosen method
    std::string Image1;        // name of the picture shown, such as "8_EN.jpg"; empty for none
    std::string RichTextBox1;  // the description, its lines ended by CR LF
    std::string Label3;        // the method in the drive; empty until it was read
    std::array<std::string, kHomingEntries.size()> entries;
    bool Check4 = false;                                     // home at power-up
    std::array<int, kHomingListSizes.size()> lists{-1, -1};  // current items, -1 for none
};

// Additions: how the chosen method and the one in the drive stand to each other.
enum class HomingAgreement : std::uint8_t {
    kNothing,   // neither is known
    kUnread,    // something is chosen, the drive has not been read
    kUnchosen,  // nothing is chosen
    kSame,
    kDiffers,
    kInvalid,  // what stands in Text1 is no method
};
struct HomingComparison {
    HomingAgreement agreement;
    std::string text;  // the same in words
};

class HomingObserver {
  public:
    HomingObserver() = default;
    HomingObserver(const HomingObserver&) = delete;
    HomingObserver& operator=(const HomingObserver&) = delete;
    virtual ~HomingObserver() = default;

    // After any change of what the controls hold; calls come from clicks and from ticks.
    virtual void controls_changed() = 0;
    // The focus is to leave the box that was committed and goes to `RichTextBox1`.
    virtual void focus_moved() = 0;
};

// What is referred to outlives the form.
struct HomingServices {
    const dictionary::Store& dictionary;
    const link::FormulaOperands& operands;
    const base::Language& language;
    base::Notice& notice;
    // A write request, as sendata2 sends it.
    std::function<void(dictionary::WireKey key, std::int32_t value)> write;
};

class Homing2 final : public link::PollWindow {
  public:
    explicit Homing2(HomingServices services);

    // Reads the keys of the rows, and remembers the folder for pictures and descriptions. False
    // when there is no such file; the form then has no rows and writes no value but the method.
    bool load(const std::filesystem::path& folder);

    void set_observer(HomingObserver* observer) { observer_ = observer; }  // may be null

    const HomingData& data() const { return data_; }
    base::Language language() const { return services_.language; }
    // Bytes of the picture that Image1 names.
    const std::string& picture() const { return picture_; }

    void Option1_Click(int index);
    void click(HomingChoice choice);

    void type_Text1(std::string text);
    // A character, before the box takes it (8 backspace, 13 Enter). True: it is swallowed.
    bool Text1_KeyPress(char32_t key);
    void Command1_Click();  // writes the method

    void type(HomingEntry entry, std::string text);
    bool KeyPress(HomingEntry entry, char32_t key);
    // While a box has the focus, or holds something typed, polled values do not disturb it.
    void enter(HomingEntry entry);
    void leave(HomingEntry entry);

    void Check4_Click();
    void list_Click(HomingList list, int index);

    // The screen's language has changed: picture and description of the method follow.
    void language_changed();

    // --- Additions
    HomingComparison comparison() const;
    // Whether the choices can be made to stand for the method in the drive, and doing so.
    bool can_take_drive_method() const;
    void take_drive_method();
    // The travel of the method in Text1, a line for each place to start from; empty for none.
    std::vector<std::string> travel() const;

    // --- link::PollWindow
    bool custom() const override { return true; }
    int get_ODS_Num() const override { return static_cast<int>(rows_.size()) - 1; }
    link::Identity get_ods(int row) const override;
    std::string_view get_odtype(int row) const override;
    void set_ods(int row, double value) override;

  private:
    struct Row {
        link::Identity key = 0;
        mutable std::string type;  // found in the dictionary when it is first asked for
    };
    struct Entry {
        std::string drive_text;  // as the drive's value was last shown
        bool focus = false;
        bool typed = false;
    };

    void method_chosen();
    void enter_method();
    void show_method(int method, HomingOrigin origin);
    void show_picture(int method);
    void show_description(int method, HomingOrigin origin);
    void commit(HomingEntry entry);
    void write_row(std::size_t row, std::uint8_t size, std::int32_t value);
    void poll_entry(HomingEntry entry, double value, int size_code);
    void poll_list(HomingList list, double value);
    std::optional<double> chosen_number() const;
    int drive_method() const;
    void changed();

    HomingServices services_;
    std::filesystem::path folder_;
    std::vector<Row> rows_;
    HomingData data_;
    std::string picture_;
    std::array<Entry, kHomingEntries.size()> entries_{};
    std::optional<std::pair<int, HomingOrigin>> shown_;
    HomingObserver* observer_ = nullptr;
};

}  // namespace servo::tools
