// Which homing method a user means: the choices of the form `Homing2`, the number that follows from
// them, and the files that show it.
//
// Positive numbers are the methods of CiA 402; 35 takes the present position; the negative ones are
// the drive's own, with a mechanical stop in place of a switch.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "base/language.h"

namespace servo::tools {

// The choice controls inside of the frames, by their names on the form.
enum class HomingChoice : std::uint8_t {
    // Frame11: the index signal ends the run
    Check1,   // use the limit switch
    Check2,   // use the home switch
    Option2,  // search direction positive ...
    Option3,  // ... negative
    Option5,  // limit positive ...
    Option4,  // ... negative
    Option6,  // home switch polarity positive ...
    Option7,  // ... negative
    // Frame12: a limit switch ends it
    Option8,   // positive limit ...
    Option9,   // ... negative limit
    Check6,    // use the limit switch; takes no part
    Option11,  // direction positive ...
    Option10,  // ... negative; takes no part, follows the limit
    // Frame13: the home switch ends it
    Check3,    // use the home switch; takes no part
    Option12,  // high level ...
    Option13,  // ... low level
    Check5,    // use the limit switch
    Option15,  // positive limit ...
    Option14,  // ... negative limit
    Option16,  // direction positive ...
    Option17,  // ... negative
    // Frame14: special ways
    Option19,  // the present position ...
    Option18,  // ... a mechanical stop
    Option20,  // stop in the positive direction ...
    Option21,  // ... in the negative one
    Check7,    // go back from the stop to the index signal
};
inline constexpr std::size_t kHomingChoices = 26;

// Options of which one is always on.
using OptionPair = std::pair<HomingChoice, HomingChoice>;
std::span<const OptionPair> homing_option_pairs();

// Values of `Option1`: what triggers the home position.
inline constexpr int kTriggerIndex = 0;
inline constexpr int kTriggerLimit = 1;
inline constexpr int kTriggerHomeSwitch = 2;
inline constexpr int kTriggerSpecial = 3;
inline constexpr int kTriggerDisabled = 4;  // the number is typed
inline constexpr int kHomingTriggers = 5;

// The state of the choices. Boxes begin off, of a pair of options the first is on.
class HomingChoices {
  public:
    HomingChoices();

    int Option1() const { return Option1_; }
    bool on(HomingChoice choice) const { return on_[static_cast<std::size_t>(choice)]; }

    // A user's click: a box turns over, an option is on and its other one off. Some clicks take
    // another control along.
    void Option1_Click(int index);
    void click(HomingChoice choice);

    // A limit switch alone fixes the direction of the search.
    bool Frame2_enabled() const { return !limit_alone(); }
    bool Frame10_visible() const { return on(HomingChoice::Option18); }
    bool Text1_enabled() const { return Option1_ == kTriggerDisabled; }

    // Makes the choices that stand for a method; those that take no part stay. False for a number
    // that no choices give, and nothing changes.
    bool take(int method);

    bool operator==(const HomingChoices&) const = default;

  private:
    bool limit_alone() const { return on(HomingChoice::Check1) && !on(HomingChoice::Check2); }
    void set(HomingChoice choice, bool on);

    int Option1_ = kTriggerIndex;
    std::array<bool, kHomingChoices> on_{};
};

// The number of the method; 0 where no rule fits.
int Get_Home_Method(const HomingChoices& choices);

// Every number that the choices can give, 0 left out.
std::span<const int> homing_methods();

// What may be typed as a method.
bool is_typed_method(double number);

// File names below \HomingPics\. None for 0 and 35, which have no picture.
std::optional<std::string> homing_picture_file(int method, base::Language language);

// How a method came about. The two look their descriptions up in different lists.
enum class HomingOrigin : std::uint8_t {
    kChosen,  // by a click
    kTyped,   // into Text1: that list lacks -20 and -21, and keeps lacking them
};

// None for a number that no description tells of.
std::optional<std::string> homing_description_file(int method, HomingOrigin origin,
                                                   base::Language language);

}  // namespace servo::tools
