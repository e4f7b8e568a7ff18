// Opening and closing the link: the serial port, and the CAN adapter behind the hidden tab.

#include "base/number.h"
#include "link/communication.h"
#include "link/communication_texts.h"

namespace servo::link {

namespace {

constexpr std::array<int, kCanRates.size()> kCanBitRates{1000000, 512000, 256000, 128000, 64000};
constexpr std::uint32_t kCanRequestBase = 0x600;

}  // namespace

int Communication::selected_baud() const {
    const int index = state_.Combo2_index < 0 ? kDefaultBaudIndex : state_.Combo2_index;
    const std::string_view text = kBaudRates[static_cast<std::size_t>(index)];
    return static_cast<int>(base::leading_number(text));
}

void Communication::Command1_Click() {
    engine_.reset_polling();
    if (link_open()) {
        close_link();
    } else {
        open_link();
    }
    take_id();
    changed();
}

// The communication ID is one byte; a number that is none leaves the last one in use.
void Communication::take_id() {
    const double id =
        static_cast<double>(base::round_half_even(base::leading_number(state_.Text1)));
    if (id >= 0 && id <= 255) engine_.serial.COMM_ID = static_cast<std::uint8_t>(id);
}

void Communication::open_link() {
    if (state_.Combo1_index < 0 || state_.Combo2_index < 0) {
        notice_.show(base::kNoticeTitle.in(language_), kCheckSettings.in(language_));
        return;
    }
    if (port_.is_open()) port_.close();
    const std::string& text = state_.Combo1[static_cast<std::size_t>(state_.Combo1_index)].text;
    // Nobody is told of a port that can't be opened: the caption stays, and so does everything
    // else.
    if (port_.open(text, selected_baud()) != OpenResult::kOpened) return;
    port_.clear_in();
    port_.clear_out();

    engine_.pictures.set_button4(kCommOKpic);
    state_.Command1 = kClose.in(language_);
    set_controls_enabled(false);
    save_port();
    engine_.link_opened();
    engine_.timer().set_enabled(true);
}

void Communication::close_link() {
    engine_.link_closed();
    port_.clear_in();
    port_.clear_out();
    port_.close();
    state_.Command1 = kOpen.in(language_);
    engine_.set_all_must_fresh();
    set_controls_enabled(true);
    // After a time-out the picture tells why the link is closed, and the dialog stands ready.
    if (engine_.pictures.button4() == kCommerrorpic) {
        state_.dialog_visible = true;
    } else {
        engine_.pictures.set_button4(kCommpic);
    }
    engine_.pictures.set_button5(kErrorgray);
    engine_.timer().set_enabled(false);
}

void Communication::set_controls_enabled(bool enabled) {
    state_.Combo1_enabled = enabled;
    state_.Combo2_enabled = enabled;
    state_.Text1_enabled = enabled;
    state_.Command2_enabled = enabled;
}

void Communication::Command3_Click() {
    if (state_.Command3 == kCanClose) {
        close_can();
    } else {
        activate_can();
    }
    changed();
}

void Communication::activate_can() {
    CanAdapter* adapter = engine_.can.adapter();
    engine_.pictures.set_button4(kCommOKpic);
    if (adapter != nullptr) {
        adapter->ResetClient();
        adapter->ResetFilter();
    }
    const std::size_t rate =
        state_.Combo3_index < 0 ? 0 : static_cast<std::size_t>(state_.Combo3_index);
    const CanInit result =
        adapter != nullptr ? adapter->Init(kCanBitRates[rate], 0) : CanInit::ERR_NOVXD;
    switch (result) {
        case CanInit::ERR_NOVXD:
            state_.Label7 = kCanNoDriver;
            return;
        case CanInit::ERR_ILLHW:
            state_.Label7 = kCanBadHardware;
            return;
        case CanInit::ERR_REGTEST:
            state_.Label7 = kCanNotFound;
            return;
        case CanInit::ERR_RESOURCE:
            state_.Label7 = kCanBusy;
            return;
        case CanInit::kOk:
            break;
    }
    state_.Label7 = kCanOk;
    state_.Command3 = kCanClose;
    const double target =
        static_cast<double>(base::round_half_even(base::leading_number(state_.Text2)));
    engine_.can.can_message = {};
    engine_.can.can_message.identifier =
        kCanRequestBase + static_cast<std::uint32_t>(target >= 0 && target <= 127 ? target : 0);
    engine_.can.can_message.length = 8;
    engine_.link_opened();
    engine_.timer().set_interval(kTickMilliseconds);
    engine_.timer().set_enabled(true);
}

void Communication::close_can() {
    engine_.timer().set_enabled(false);
    engine_.link_closed();
    if (CanAdapter* adapter = engine_.can.adapter()) adapter->Close();
    state_.Label7 = kCanClosed;
    state_.Command3 = kCanActive;
    engine_.set_all_must_fresh();
}

}  // namespace servo::link
