// The dialog: list of ports, picks, language. Opening and closing is in communication_link.cpp.
#include "link/communication.h"

#include <algorithm>
#include <utility>

#include "base/profile_file.h"
#include "link/communication_texts.h"

namespace servo::link {

namespace {

constexpr std::string_view kSection = "com";
constexpr std::string_view kKey = "comid";
constexpr std::size_t kKeySize = 50;  // characters that are read of it
constexpr int kProbedPorts = 35;

}  // namespace

Communication::Communication(Engine& engine, Port& port, PortDirectory& directory,
                             base::Notice& notice, std::filesystem::path folder)
    : engine_(engine),
      port_(port),
      directory_(directory),
      notice_(notice),
      folder_(std::move(folder)) {
    apply_language(language_);
}

void Communication::load(base::Language language) {
    apply_language(language);
    state_.Combo2_index = kDefaultBaudIndex;
    state_.Combo3_index = 0;
    state_.can_tab_visible = false;
    Command2_Click();
}

void Communication::Command2_Click() {
    enumerate();
    select_saved_port();
    changed();
}

void Communication::enumerate() {
    state_.Combo1.clear();
    state_.Combo1_index = -1;
    if (!directory_.list(state_.Combo1)) {
        state_.Combo1.clear();
        probe();
    }
}

// A port that somebody else has open exists all the same, and belongs into the list.
void Communication::probe() {
    for (int number = 1; number <= kProbedPorts; ++number) {
        const std::string text = "Com" + std::to_string(number);
        const OpenResult result = port_.open(text, selected_baud());
        if (result == OpenResult::kOpened) port_.close();
        if (result != OpenResult::kFailed) state_.Combo1.push_back({text, {}, {}});
    }
}

void Communication::select_saved_port() {
    const std::string saved =
        base::get_profile_string(settings_file(), kSection, kKey, {}, kKeySize);
    const auto select = [this](std::string_view text) {
        const auto found =
            std::find_if(state_.Combo1.begin(), state_.Combo1.end(),
                         [text](const PortDirectory::Entry& entry) { return entry.text == text; });
        if (text.empty() || found == state_.Combo1.end()) return false;
        state_.Combo1_index = static_cast<int>(found - state_.Combo1.begin());
        return true;
    };
    state_.port_known = select(given_port_) || select(saved) ? kTrue : std::int16_t{0};
}

bool Communication::use_port(std::string_view text) {
    given_port_ = text;
    select_saved_port();
    const bool listed =
        state_.Combo1_index >= 0 &&
        state_.Combo1[static_cast<std::size_t>(state_.Combo1_index)].text == given_port_;
    changed();
    return listed;
}

void Communication::communication() {
    if (state_.dialog_visible || state_.port_known != 0) {
        state_.dialog_visible = true;
        if (engine_.state.channel == 1) {
            Command3_Click();
        } else {
            Command1_Click();
        }
    } else {
        state_.dialog_visible = true;
    }
    changed();
}

void Communication::show_dialog() {
    state_.dialog_visible = true;
    changed();
}

void Communication::close_box() {
    state_.dialog_visible = false;
    changed();
}

void Communication::Option_channel(std::uint8_t channel) {
    engine_.state.channel = channel;
    changed();
}

void Communication::pick_port(int index) {
    const bool listed = index >= 0 && static_cast<std::size_t>(index) < state_.Combo1.size();
    state_.Combo1_index = listed ? index : -1;
    changed();
}

void Communication::pick_baud(int index) {
    const bool listed = index >= 0 && static_cast<std::size_t>(index) < kBaudRates.size();
    state_.Combo2_index = listed ? index : -1;
    changed();
}

void Communication::pick_can_baud(int index) {
    const bool listed = index >= 0 && static_cast<std::size_t>(index) < kCanRates.size();
    state_.Combo3_index = listed ? index : -1;
    changed();
}

void Communication::type_id(std::string text) {
    state_.Text1 = std::move(text);
    changed();
}

void Communication::type_can_target(std::string text) {
    state_.Text2 = std::move(text);
    changed();
}

// The caption of Command1 is the state of the link, so it changes its language and nothing else.
void Communication::apply_language(base::Language language) {
    const bool open = state_.Command1 == kClose.chinese || state_.Command1 == kClose.english;
    language_ = language;
    state_.caption = kCaption.in(language);
    state_.tab0 = kPortLabel.in(language);
    state_.port_label = kPortLabel.in(language);
    state_.baud_label = kBaudLabel.in(language);
    state_.id_label = kIdLabel.in(language);
    state_.can_baud_label = kBaudLabel.in(language);
    state_.can_target_label = kTargetLabel.in(language);
    state_.Command1 = (open ? kClose : kOpen).in(language);
    state_.Command2 = kRefresh.in(language);
    changed();
}

bool Communication::link_open() const {
    if (engine_.state.channel == 1) return state_.Command3 == kCanClose;
    return state_.Command1 == kClose.chinese || state_.Command1 == kClose.english;
}

void Communication::save_port() const {
    const auto index = static_cast<std::size_t>(state_.Combo1_index);
    // Nothing is told when the file can't be written: the choice is then asked again next time.
    base::write_profile_string(settings_file(), kSection, kKey, state_.Combo1[index].text);
}

void Communication::changed() const {
    if (observer) observer();
}

std::filesystem::path Communication::settings_file() const {
    return folder_ / "sys" / "sys.ini";
}

}  // namespace servo::link
