// The form `Download` without its window: what the controls hold, what a click or a key does. Who
// shows it passes clicks in and observes. The page row behind `Label18` is a page of its own and
// not part of this.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/language.h"
#include "base/notice.h"
#include "dictionary/store.h"
#include "firmware/download_data.h"
#include "firmware/transfer.h"
#include "link/engine.h"
#include "link/listeners.h"

namespace servo::firmware {

// The texts of controls. Each carries both languages, as the controls' tags do.
inline constexpr std::string_view kDownloadCaption = "固件下载/Load Firmware";
struct ControlText {
    std::string_view control;
    std::string_view text;
};
// All controls with a fixed text, `Label19` with its two halves included.
std::span<const ControlText> control_texts();

// A question for a file.
struct FileQuestion {
    std::string_view filter;  // "servo Files (*.servo)|*.servo"
    std::string_view kind;    // "servo Files"
    std::string_view suffix;  // "servo"
};
inline constexpr FileQuestion kImageQuestion{"servo Files (*.servo)|*.servo", "servo Files",
                                             "servo"};
inline constexpr FileQuestion kIniQuestion{"INI Files (*.ini)|*.ini", "INI Files", "ini"};

class DownloadObserver {
  public:
    DownloadObserver() = default;
    DownloadObserver(const DownloadObserver&) = delete;
    DownloadObserver& operator=(const DownloadObserver&) = delete;
    virtual ~DownloadObserver() = default;

    // After any change of texts, enabled states, progress or focus. Calls come from clicks and from
    // ticks, during a transfer up to every few milliseconds: a window may gather them.
    virtual void controls_changed() = 0;
    virtual void dialogue_changed() {}
    virtual void transfer_ended(const TransferResult&) {}
};

// The date of a file's last change; nothing when there is no such file.
std::optional<FileDate> modification_date(const std::filesystem::path& file);

// References outlive the form.
struct DownloadServices {
    link::Engine& engine;
    base::Notice& notice;
    const base::Language& language;
    const dictionary::Variant& Tavro_Nevra_Other_mode;
    // The path that the user chose, UTF-8; nothing when he cancelled.
    std::function<std::optional<std::string>(const FileQuestion&)> ask_file;
    // Row 1, column 4 of `MSHFlexGrid1`.
    std::function<std::string()> software_version;
    std::function<std::optional<FileDate>(const std::filesystem::path&)> file_date =
        modification_date;
};

class Download final : private link::StatusListener, private TransferObserver {
  public:
    // Enters its transfer into the engine as the firmware job, and listens to the check value.
    explicit Download(DownloadServices services);
    ~Download() override;
    Download(const Download&) = delete;
    Download& operator=(const Download&) = delete;

    void set_observer(DownloadObserver* observer) { observer_ = observer; }  // may be null

    const DownloadData& data() const { return data_; }
    const FirmwareTransfer& transfer() const { return transfer_; }
    base::Language language() const { return services_.language; }
    bool transfer_running() const;
    std::uint8_t step() const { return services_.engine.state.download_step; }
    // How the last transfer ended; nothing before the first, and while one runs.
    const std::optional<TransferResult>& result() const { return result_; }

    void Command1_Click();  // load file
    void Command2_Click();  // "go", to read the checksum
    void Command3_Click();  // test
    void Command4_Click();  // download
    void Command5_Click();  // choose the batch file
    void Check1_Click();

    // What the boxes hold, while the user types.
    void type_Text3(std::string text);
    void type_Text4(std::string text);
    // A key, before the box takes it (13 for Enter). True: the key is swallowed.
    bool Text3_KeyPress(char32_t key);
    bool Text4_KeyPress(char32_t key);

    void Timer1_Timer();

    // The load action with the file already chosen: dropped on the window, named on the command
    // line. Nothing happens while a transfer runs. False when the image could not be loaded; the
    // user has been told.
    bool load_image(const std::filesystem::path& file);
    // The same for the batch file.
    bool choose_batch(const std::string& file);

    // --- Additions
    // Between 0 and 100 blocks' texts for a status line; empty when idle.
    std::string status_text() const;     // "Block 3 of 121"
    std::string speed_text() const;      // "3723 bytes/s"
    std::string remaining_text() const;  // "1:05"
    // The state of the drive after a transfer that did not succeed, and what to do; else empty.
    std::string_view advice_text() const;
    // How a transfer ended that the end of the program has cut off, in an earlier run.
    void recall(TransferResult result);
    bool save_dialogue(const std::filesystem::path& file) const;
    // A frame has come in since the last transfer ended: the drive runs a firmware. The dialogue
    // itself takes silence for a start, so a lost "go" looks like success to it.
    bool drive_answered() const;

  private:
    void firmware_check(std::string_view text) override;
    void transfer_moved() override;
    void dialogue_grew() override;
    void transfer_ended(const TransferResult& result) override;

    bool read_chosen_image();
    void enter_product();
    void refuse_product();
    void enter_barcode();
    bool take_batch_image();
    enum class Started : std::uint8_t {
        kStarted,
        kRunning,  // a transfer runs: nothing happens
        kNotRead,  // the changed file is no image any more; the user has been told
        kNoDate,   // there is no hand-chosen file
    };
    Started start();
    void say(base::Text text);
    void say_batch(std::string_view text);
    void changed();

    DownloadServices services_;
    DownloadData data_;
    FirmwareTransfer transfer_;
    DownloadObserver* observer_ = nullptr;
    std::optional<TransferResult> result_;
    std::uint64_t frames_at_end_ = 0;
};

}  // namespace servo::firmware
