#include "tools/errors.h"

#include <fmt/format.h>

namespace servo::tools {

namespace {

constexpr std::array<link::WireKey, 2> kMaskKeys{0x26050102, 0x26050402};
constexpr int kUnsigned16 = 2;

}  // namespace

Errors::Errors(link::Engine& engine, const base::Language& language)
    : link::Window("Errors"), engine_(engine), language_(language) {
    engine_.add_listener(*this);
}

Errors::~Errors() {
    engine_.remove_listener(*this);
}

void Errors::Check1_Click(int fault) {
    const std::size_t word = index(word_of(fault));
    masks_[word] = static_cast<std::uint16_t>(masks_[word] ^ fault_mask(fault));
    engine_.sendata2(kMaskKeys[word], masks_[word], 0);
    tell();
}

std::vector<int> Errors::active() const {
    std::vector<int> faults;
    for (int fault = 0; fault < kFaultBits; ++fault)
        if (lamp(fault)) faults.push_back(fault);
    return faults;
}

std::vector<int> Errors::masked() const {
    std::vector<int> faults;
    for (int fault = 0; fault < kFaultBits; ++fault)
        if (Check1(fault)) faults.push_back(fault);
    return faults;
}

void Errors::fault_word(int word, std::uint16_t value) {
    const std::size_t at = index(word);
    if (words_[at] == value && news_ == FaultNews::kLive) return;
    words_[at] = value;
    texts_[at] = fmt::format("{:04X}", value);
    news_ = FaultNews::kLive;
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
    if (news_ == FaultNews::kLive) news_ = FaultNews::kStale;
    tell();
}

}  // namespace servo::tools
