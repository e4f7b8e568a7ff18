#include "firmware/transfer.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/gbk.h"
#include "firmware/transfer_texts.h"

namespace servo::firmware {

namespace {

enum Number : std::uint8_t {
    kShakeHands = 3,
    kCallBootloader = 4,
    kTypeCheck = 5,
    kErase = 6,
    kSwitch = 7,
    kBlock = 8,
    kGo = 9,
    kReadBackStep = 10,
};

constexpr int kDialogueInterval = 6;  // ms
constexpr int kEraseInterval = 50;
constexpr int kBlockInterval = 15;
constexpr std::int16_t kUnchanged = 0;

constexpr std::string_view kBanner = " bootloader";  // the leading blank is part of it
constexpr char kCarriageReturn = '\r';

// Sends a running drive into its bootloader.
constexpr link::WireKey kBootloaderKey = 0x2FFF0002;
constexpr std::int32_t kBootloaderValue = 0x55AA;

}  // namespace

// What a step sends stands in send_step. Intervals and limits are the protocol's clock.
struct FirmwareTransfer::Step {
    std::uint8_t number;
    int interval;                      // ms from its send action on; kUnchanged
    std::int16_t Comm_Over_Time_Cnts;  // likewise
    std::string_view phrase;
    std::int16_t ticks;  // of waiting
    std::int16_t DownloadData::*cnt;
    std::string DownloadData::*string;
    base::Text failure;
};

const FirmwareTransfer::Step* FirmwareTransfer::step() const {
    using D = DownloadData;
    static constexpr std::array kSteps{
        Step{kShakeHands,
             kDialogueInterval,
             kUnchanged,
             kBanner,
             300,
             &D::step3_cnt,
             &D::step3_string,
             {}},
        Step{kCallBootloader, kUnchanged, kUnchanged, kBanner, 300, &D::step3_cnt, &D::step3_string,
             kNoResponse},
        Step{kTypeCheck, kUnchanged, kUnchanged, "right", 280, &D::step5_cnt, &D::step5_string,
             kNotMatching},
        Step{kErase, kEraseInterval, 75, "erased success", 280, &D::step6_cnt, &D::step6_string,
             kEraseFailed},
        Step{kSwitch, kDialogueInterval, 300, "switch to block r", 258, &D::step7_cnt,
             &D::step7_string, kNoBlockMode},
        Step{kBlock, kBlockInterval, 30, "programme", 258, &D::step8_cnt, &D::step8_string,
             kOvertime},
        Step{kGo, kDialogueInterval, 300, kBanner, 228, &D::step9_cnt, &D::step9_string,
             kStillBootloader},
    };
    const auto found = std::ranges::find(kSteps, state_.download_step, &Step::number);
    return found == kSteps.end() ? nullptr : &*found;
}

FirmwareTransfer::FirmwareTransfer(DownloadData& data, TransferServices services)
    : data_(data), services_(services), engine_(services.engine), state_(services.engine.state) {}

bool FirmwareTransfer::active() const {
    return state_.download_active == 1;
}

std::chrono::microseconds FirmwareTransfer::now() const {
    return engine_.clock().now();
}

void FirmwareTransfer::start() {
    state_.download_active = 1;
    state_.download_step = 0;
    data_.fw_block_index = 0;
    for (const auto counter :
         {&DownloadData::step3_cnt, &DownloadData::step5_cnt, &DownloadData::step6_cnt,
          &DownloadData::step7_cnt, &DownloadData::step8_cnt, &DownloadData::step9_cnt})
        data_.*counter = 0;
    for (const auto text :
         {&DownloadData::step3_string, &DownloadData::step5_string, &DownloadData::step6_string,
          &DownloadData::step7_string, &DownloadData::step8_string, &DownloadData::step9_string})
        (data_.*text).clear();
    data_.Command1_enabled = false;
    data_.Command4_enabled = false;
    // So that the check value of the new firmware is asked for.
    engine_.values().firmware_check_known = false;
    state_.g_FW_CRC_OK_overtimes = 0;
    take_image();
}

// A barcode scanned during the transfer, or a file that changed on the disk, gives the form other
// blocks. The drive gets one image and never parts of two.
void FirmwareTransfer::take_image() {
    sending_ = {data_.fw_blocks, base::utf8_to_gbk(data_.FW_Type)};
    image_taken_ = true;
    erased_ = false;
    reading_back_ = false;
    progress_.clear();
    dialogue_.begin(now());
    add_to_log(DialogueEntry::Kind::kEvent,
               fmt::format("{} blocks, {} bytes, type {}", highest_index(*sending_.blocks),
                           bytes_of(*sending_.blocks), data_.FW_Type));
}

void FirmwareTransfer::add_to_log(DialogueEntry::Kind kind, std::string_view bytes) {
    dialogue_.add(kind, state_.download_step, bytes, now());
    services_.observer.dialogue_grew();
}

// Three ticks that flush the line: what the poller has asked for is not answered into the dialogue.
bool FirmwareTransfer::warm_up(link::Engine& engine) {
    if (state_.download_step > 2) return false;
    if (!image_taken_) take_image();
    engine.spend_warm_up(state_.download_step);
    state_.sendmod = 0;
    if (state_.download_step == kShakeHands) services_.observer.transfer_moved();
    return true;
}

void FirmwareTransfer::send_step(link::Engine&) {
    if (state_.download_step == kReadBackStep) return send_read_back();
    const Step* current = step();
    if (current == nullptr) return;
    if (current->interval != kUnchanged) engine_.timer().set_interval(current->interval);
    if (current->Comm_Over_Time_Cnts != kUnchanged)
        state_.Comm_Over_Time_Cnts = current->Comm_Over_Time_Cnts;
    switch (static_cast<Number>(current->number)) {
        case kShakeHands:
            return send_command("hi");
        case kCallBootloader:
            return call_bootloader();
        case kTypeCheck:
            return send_command(sending_.FW_Type);
        case kErase:
            erased_ = true;
            return send_command("e");
        case kSwitch:
            if (!progress_.begun())
                progress_.begin(bytes_of(*sending_.blocks), highest_index(*sending_.blocks), now());
            return send_command("w");
        case kBlock:
            return send_block();
        case kGo:
            return send_command("go");
        case kReadBackStep:
            return;
    }
}

void FirmwareTransfer::send_command(std::string_view text) {
    send_bytes(std::string(text) + kCarriageReturn);
}

void FirmwareTransfer::send_bytes(std::string_view bytes) {
    engine_.Datawrite_str(bytes);
    add_to_log(DialogueEntry::Kind::kCommand, bytes);
}

void FirmwareTransfer::call_bootloader() {
    engine_.sendata2(kBootloaderKey, kBootloaderValue, 0);
    const link::Frame frame = link::make_frame(
        engine_.serial.COMM_ID, link::make_payload(kBootloaderKey, kBootloaderValue, false, 0));
    add_to_log(DialogueEntry::Kind::kFrame, std::string(frame.begin(), frame.end()));
}

bool FirmwareTransfer::block_left() const {
    return data_.fw_block_index >= 0 &&
           static_cast<std::size_t>(data_.fw_block_index) < highest_index(*sending_.blocks);
}

// A payload that rounds to no blocks has only the empty entry: nothing goes out.
void FirmwareTransfer::send_block() {
    if (block_left())
        send_bytes((*sending_.blocks)[static_cast<std::size_t>(data_.fw_block_index)]);
}

bool FirmwareTransfer::receive_text(link::Engine&) {
    if (state_.download_step == kReadBackStep) return false;
    const Step* current = step();
    if (current == nullptr) return true;
    if (current->number == kGo) {
        watch_start(*current);
    } else {
        wait(*current);
    }
    return true;
}

void FirmwareTransfer::hear(std::string& gathered) {
    const std::string piece = engine_.read_text();
    if (piece.empty()) return;
    gathered += piece;
    add_to_log(DialogueEntry::Kind::kReply, piece);
}

void FirmwareTransfer::wait(const Step& current) {
    std::int16_t& cnt = data_.*current.cnt;
    std::string& gathered = data_.*current.string;
    if (cnt >= current.ticks) return timed_out(current);
    ++cnt;
    hear(gathered);
    if (gathered.find(current.phrase) == std::string::npos) return;
    // With no block to send there is none to be programmed, whatever the line says.
    if (current.number == kBlock && !block_left()) return;
    state_.sendmod = 0;
    cnt = 0;
    gathered.clear();
    heard(current);
}

void FirmwareTransfer::timed_out(const Step& current) {
    if (current.number == kShakeHands) {
        data_.step3_cnt = 0;
        data_.step3_string.clear();
        state_.sendmod = 0;
        return go_to(kCallBootloader);
    }
    fail(current.failure);
    if (current.number == kErase) engine_.timer().set_interval(kDialogueInterval);
}

void FirmwareTransfer::heard(const Step& current) {
    switch (static_cast<Number>(current.number)) {
        case kShakeHands:
        case kCallBootloader:
            return go_to(kTypeCheck);
        case kTypeCheck:
            return go_to(kErase);
        case kErase:
            engine_.timer().set_interval(kDialogueInterval);
            return go_to(kSwitch);
        case kSwitch:
            return go_to(kBlock);
        case kBlock:
            return block_programmed();
        case kGo:
        case kReadBackStep:
            return;
    }
}

void FirmwareTransfer::block_programmed() {
    const std::size_t count = highest_index(*sending_.blocks);
    const auto programmed = static_cast<std::size_t>(data_.fw_block_index);
    progress_.block_done((*sending_.blocks)[programmed].size(), now());
    ++data_.fw_block_index;
    data_.ProgressBar1 = data_.fw_block_index * 100.0 / static_cast<double>(count);
    if (static_cast<std::size_t>(data_.fw_block_index) == count) {
        data_.fw_block_index = 0;
        return go_to(kGo);
    }
    go_to(kSwitch);
}

void FirmwareTransfer::go_to(std::uint8_t number) {
    state_.download_step = number;
    services_.observer.transfer_moved();
}

// The sense of the search is turned round: the new firmware starts, so the bootloader must not
// speak again. A banner of another type is not the one that was programmed, and does not count.
void FirmwareTransfer::watch_start(const Step& current) {
    if (data_.step9_cnt >= current.ticks) return succeed();
    ++data_.step9_cnt;
    hear(data_.step9_string);
    if (data_.step9_string.find(sending_.FW_Type + std::string(kBanner)) == std::string::npos)
        return;
    fail(current.failure);
    engine_.timer().set_interval(kDialogueInterval);
}

// Nothing else is restored: bar, buttons, counter, reply and tick interval stand as the step left
// them.
void FirmwareTransfer::fail(base::Text message) {
    const std::string text(message.in(services_.language));
    add_to_log(DialogueEntry::Kind::kEvent, text);
    const TransferResult result{TransferEnd::kFailed, state_.download_step, erased_, text};
    services_.notice.show(kFailTitle.in(services_.language), text);
    state_.download_active = 0;
    state_.download_step = 0;
    state_.sendmod = 0;
    end(result);
}

void FirmwareTransfer::succeed() {
    const std::string text(kFinished.in(services_.language));
    add_to_log(DialogueEntry::Kind::kEvent, text);
    const TransferResult result{TransferEnd::kDone, state_.download_step, erased_, text};
    state_.sendmod = 0;
    services_.notice.show(kTitle.in(services_.language), text);
    start_afresh();
    data_.ProgressBar1 = 0;
    data_.Command1_enabled = true;
    data_.Command4_enabled = true;
    state_.download_active = 0;
    state_.download_step = 0;
    data_.step9_cnt = 0;
    data_.step9_string.clear();
    link::Timer& timer = engine_.timer();
    timer.set_enabled(false);
    timer.set_interval(link::kTickMilliseconds);
    // The link may have been closed while the box was open; then there is nothing to tick for.
    timer.set_enabled(engine_.port().is_open());
    state_.InputLen = link::kFrameReadLength;
    engine_.clear_queues();
    end(result);
}

// The drive is another one now: every value is read anew, and the wheel turns from its start.
void FirmwareTransfer::start_afresh() {
    for (link::PollWindow* window : engine_.poll_windows)
        if (window != nullptr) window->must_fresh = true;
    state_.Com_Change = 0;
    state_.sub_Pointer = 0;
    state_.status_lane = 0;
    engine_.values().clear_known();
    state_.g_FW_CRC_OK_overtimes = 0;
    state_.allow_add_pointer = 0;
    state_.page = 0;
    state_.rotation = 0;
}

void FirmwareTransfer::end(const TransferResult& result) {
    image_taken_ = false;
    reading_back_ = false;
    services_.observer.transfer_ended(result);
}

// The engine clears the selectors; nobody is shown a box for what he has done himself.
void FirmwareTransfer::cut_off() {
    add_to_log(DialogueEntry::Kind::kEvent, "link closed");
    const TransferResult result{TransferEnd::kLinkClosed, state_.download_step, erased_, {}};
    state_.download_active = 0;
    state_.download_step = 0;
    end(result);
}

void FirmwareTransfer::link_closed(link::Engine&) {
    if (active()) cut_off();
}

// A transfer that was started before the link has waited for it, as the form advises.
void FirmwareTransfer::link_opened(link::Engine&) {
    if (active() && state_.download_step != 0) cut_off();
}

}  // namespace servo::firmware
