// The window `Errors`: the drive's two fault words bit by bit, and the masks of single faults.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/language.h"
#include "link/engine.h"
#include "link/listeners.h"
#include "link/window.h"
#include "tools/fault_table.h"

namespace servo::tools {

// How old the lamps are.
enum class FaultNews : std::uint8_t {
    kNever,  // no word has come since the program was started
    kStale,  // none since the link was opened or closed: the lamps show the last ones
    kLive,
};

class Errors final : public link::Window, private link::StatusListener {
  public:
    Errors(link::Engine& engine, const base::Language& language);
    ~Errors() override;

    base::Language language() const { return language_; }

    // "0000": the word in hexadecimal.
    const std::string& word_text(int word) const { return texts_.at(index(word)); }
    // Image1: the lamp. Only the status monitor changes it, so it outlives hiding and a closed
    // link.
    bool lamp(int fault) const { return (words_[index(word_of(fault))] & fault_mask(fault)) != 0; }
    // Check1: the fault is masked. Follows the drive's word.
    bool Check1(int fault) const {
        return (masks_[index(word_of(fault))] & fault_mask(fault)) != 0;
    }
    // A change by the user: the mask of that word is composed from its boxes and written. The other
    // word's is not.
    void Check1_Click(int fault);

    // Addition: the mask has been read since the link was opened. Until then the boxes do not tell
    // what the drive holds, and a click writes a mask with bits that nobody chose.
    bool mask_known(int word) const { return known_.at(index(word)); }
    // Addition
    FaultNews news() const { return news_; }
    // Additions: faults that are on, and masked ones, in the order of the table.
    std::vector<int> active() const;
    std::vector<int> masked() const;

    // Called after any change.
    std::function<void()> changed;

  private:
    static std::size_t index(int word) { return word == 1 ? 0 : 1; }
    void fault_word(int word, std::uint16_t value) override;
    void lane1_answer(link::Identity object, const link::Payload& payload) override;
    void link_changed(bool open) override;
    void tell() const {
        if (changed) changed();
    }

    link::Engine& engine_;
    const base::Language& language_;
    std::array<std::uint16_t, 2> words_{};
    std::array<std::string, 2> texts_{"0000", "0000"};
    std::array<std::uint16_t, 2> masks_{};
    std::array<bool, 2> known_{};
    FaultNews news_ = FaultNews::kNever;
};

}  // namespace servo::tools
