#include "tools/errors.h"

#include <fmt/format.h>

namespace servo::tools {

namespace {

constexpr std::array<link::WireKey, 2> kMaskKeys{0x26050102, 0x26050402};
constexpr int kUnsigned16 = 2;

constexpr std::uint16_t bit(int fault) {
    return static_cast<std::uint16_t>(1U << static_cast<unsigned>(bit_of(fault)));
}

}  // namespace

Errors::Errors(link::Engine& engine, const base::Language& language)
    : link::Window("Errors"), engine_(engine), language_(language) {
    engine_.add_listener(*this);
}

Errors::~Errors() {
    engine_.remove_listener(*this);
}

bool Errors::lamp(int fault) const {
    return (words_[index(word_of(fault))] & bit(fault)) != 0;
}

bool Errors::Check1(int fault) const {
    return (masks_[index(word_of(fault))] & bit(fault)) != 0;
}

void Errors::Check1_Click(int fault) {
    const std::size_t word = index(word_of(fault));
    masks_[word] = static_cast<std::uint16_t>(masks_[word] ^ bit(fault));
    engine_.sendata2(kMaskKeys[word], masks_[word], 0);
    tell();
}

std::vector<int> Errors::active() const {
    std::vector<int> faults;
    for (int fault = 0; fault < kFaultBits; ++fault)
        if (lamp(fault)) faults.push_back(fault);
    return faults;
}

void Errors::fault_word(int word, std::uint16_t value) {
    const std::size_t at = index(word);
    if (words_[at] == value && words_known_) return;
    words_[at] = value;
    texts_[at] = fmt::format("{:04X}", value);
    words_known_ = true;
    tell();
}

void Errors::lane1_answer(link::Identity object, const link::Payload& payload) {
    for (std::size_t word = 0; word < kMaskKeys.size(); ++word) {
        if (dictionary::identity_of(kMaskKeys[word]) != object) continue;
        const auto value = static_cast<std::uint16_t>(link::reply_value(payload, kUnsigned16));
        if (known_[word] && masks_[word] == value) return;
        masks_[word] = value;
        known_[word] = true;
        tell();
    }
}

void Errors::link_changed(bool /*open*/) {
    known_ = {};
    words_known_ = false;
    tell();
}

}  // namespace servo::tools
