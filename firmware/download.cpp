#include "firmware/download.h"

#include <fmt/format.h>

#include <chrono>
#include <system_error>
#include <utility>

#include "base/file.h"
#include "base/gbk.h"
#include "firmware/transfer_texts.h"

namespace servo::firmware {

namespace {

constexpr base::Text kWrongFormat{"错误的文件格式!", "Wrong File Format!"};
// Addition: a file that is gone, or may not be read.
constexpr base::Text kNoImage{"固件文件不能打开!", "The firmware file can't be opened!"};

constexpr std::string_view kReadCheck = "go\r\n";
constexpr std::string_view kTest = "abc\r\n";
constexpr std::chrono::milliseconds kOutputPause{1};
constexpr int kOutputPauses = 2000;  // a port that never empties its queue must not hold the form

}  // namespace

std::optional<FileDate> modification_date(const std::filesystem::path& file) {
    std::error_code error;
    const FileDate date = std::filesystem::last_write_time(file, error);
    if (error) return std::nullopt;
    return date;
}

Download::Download(DownloadServices services)
    : services_(std::move(services)),
      transfer_(data_, {services_.engine, services_.notice, services_.language, *this}) {
    services_.engine.add_job(link::JobPlace::kFirmware, transfer_);
    services_.engine.add_listener(*this);
}

Download::~Download() {
    services_.engine.remove_job(link::JobPlace::kFirmware, transfer_);
    services_.engine.remove_listener(*this);
}

bool Download::transfer_running() const {
    return transfer_.active();
}

// --- Load file

void Download::Command1_Click() {
    if (!data_.reload) {
        const auto chosen = services_.ask_file(kImageQuestion);
        if (!chosen) return;
        data_.file_path = *chosen;
        data_.Command4_enabled = false;
        data_.Text5 = *chosen;
    }
    read_chosen_image();
    changed();
}

bool Download::load_image(const std::filesystem::path& file) {
    if (transfer_running()) return false;
    data_.file_path = file;
    data_.Command4_enabled = false;
    data_.Text5 = file.string();
    const bool read = read_chosen_image();
    changed();
    return read;
}

// From the known path on.
bool Download::read_chosen_image() {
    data_.reload = false;
    data_.file_date = services_.file_date(data_.file_path);
    const auto content = base::read_file(data_.file_path);
    // A file that changed into one that is no image leaves nothing to be started.
    if (!content) {
        data_.Command4_enabled = false;
        say(kNoImage);
        return false;
    }
    const Image image = read_image(*content);
    if (image.fault != ImageFault::kNone) {
        data_.Command4_enabled = false;
        say(kWrongFormat);
        return false;
    }
    data_.FW_Type = image.header.FW_Type;
    data_.CRC_From_File = image.header.CRC_From_File;
    data_.Label1 = shown_header(image.header,
                                services_.Tavro_Nevra_Other_mode != dictionary::Variant::kAllItems);
    // Without a second line the blocks of the image before stand, and can be sent.
    if (image.blocks) {
        data_.fw_blocks = image.blocks;
        data_.lost_characters = image.lost_characters;
    }
    data_.Command4_enabled = true;
    return true;
}

// --- Start

void Download::Command4_Click() {
    if (start() == Started::kNoDate) say(kNoImage);
    changed();
}

// The hand-chosen file is looked at for batch starts too: a file that changed takes the place of
// the product's image, and without one there is no start.
Download::Started Download::start() {
    const auto date = data_.file_path.empty() ? std::nullopt : services_.file_date(data_.file_path);
    if (!date) return Started::kNoDate;
    if (date != data_.file_date) {
        data_.reload = true;
        if (!read_chosen_image()) return Started::kNotRead;
    }
    if (services_.engine.state.download_active != 0) return Started::kRunning;
    result_.reset();
    transfer_.start();
    return Started::kStarted;
}

// --- Engineering actions. The line belongs to a transfer while it runs.

void Download::Command2_Click() {
    if (transfer_running()) return;
    services_.engine.Datawrite_str(kReadCheck);
}

void Download::Command3_Click() {
    if (transfer_running()) return;
    link::Engine& engine = services_.engine;
    engine.clear_in();
    const bool ticking = engine.timer().enabled();
    engine.timer().set_enabled(false);
    for (int i = 0; i < kOutputPauses && engine.port().out_buffer_count() != 0; ++i)
        engine.clock().sleep(kOutputPause);
    engine.Datawrite_str(kTest);
    // With the link closed there is nothing to tick for.
    if (ticking) engine.timer().set_enabled(true);
}

void Download::Check1_Click() {
    data_.Check1 = !data_.Check1;
    changed();
}

void Download::Timer1_Timer() {
    std::string version = services_.software_version();
    if (version == data_.Label18) return;
    data_.Label18 = std::move(version);
    changed();
}

void Download::firmware_check(std::string_view text) {
    if (data_.Label17 == text) return;
    data_.Label17 = text;
    changed();
}

// --- The transfer

void Download::transfer_moved() {
    changed();
}

void Download::dialogue_grew() {
    if (observer_ != nullptr) observer_->dialogue_changed();
}

void Download::transfer_ended(const TransferResult& result) {
    result_ = result;
    frames_at_end_ = services_.engine.counters.frames;
    changed();
    if (observer_ != nullptr) observer_->transfer_ended(result);
}

// --- Additions

std::string Download::status_text() const {
    if (!transfer_running()) return {};
    const std::uint8_t step = services_.engine.state.download_step;
    const Progress& progress = transfer_.progress();
    const std::string_view name = step_name(step, language());
    if (!progress.begun() || (step != 7 && step != 8)) return std::string(name);
    return fmt::format(fmt::runtime(base::Text{"块 {} / {}", "Block {} of {}"}.in(language())),
                       data_.fw_block_index + 1, progress.total_blocks());
}

std::string Download::speed_text() const {
    const auto speed = transfer_.progress().speed();
    return transfer_running() && speed ? fmt::format("{:.0f} bytes/s", *speed) : std::string();
}

std::string Download::remaining_text() const {
    if (!transfer_running()) return {};
    const auto left = transfer_.progress().remaining(services_.engine.clock().now());
    return left ? duration_text(*left) : std::string();
}

std::string_view Download::advice_text() const {
    return result_ ? advice(*result_, language()) : std::string_view();
}

void Download::recall(TransferResult result) {
    if (transfer_running()) return;
    result_ = std::move(result);
    changed();
}

bool Download::save_dialogue(const std::filesystem::path& file) const {
    return transfer_.dialogue().save(file);
}

// The engine counts anew when the link is opened.
bool Download::drive_answered() const {
    const std::uint64_t frames = services_.engine.counters.frames;
    return result_ && (frames > frames_at_end_ || (frames > 0 && frames < frames_at_end_));
}

// --- Helpers

void Download::say(base::Text text) {
    services_.notice.show(kTitle.in(language()), text.in(language()));
}

void Download::changed() {
    if (observer_ != nullptr) observer_->controls_changed();
}

}  // namespace servo::firmware
