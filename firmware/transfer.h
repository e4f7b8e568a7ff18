// The firmware transfer: a job of the engine that talks to the drive's bootloader in a dialogue of
// short text commands. It has the serial line to itself while it runs. Steps 0 to 2 flush the line,
// 3 to 9 are the dialogue, 10 is the read-back of the serial number, which no step enters.
//
// `download_active` and `download_step` are in the engine's state. A transfer knows nothing of
// acknowledged bytes: a step is done when its phrase has been heard, and failed when it has not
// been heard in time. Nothing is ever sent twice.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/language.h"
#include "base/notice.h"
#include "firmware/dialogue_log.h"
#include "firmware/download_data.h"
#include "firmware/progress.h"
#include "link/engine.h"
#include "link/job.h"

namespace servo::firmware {

// How a transfer ended.
enum class TransferEnd : std::uint8_t {
    kDone,        // "Download Finished!"
    kFailed,      // one of the failure messages
    kLinkClosed,  // the link was closed, or opened anew, under it
    kReadBack,    // step 10 has compared the serial number
};

struct TransferResult {
    TransferEnd end = TransferEnd::kDone;
    std::uint8_t step = 0;  // in which it ended
    bool erased = false;    // the drive's old firmware is gone, or may be: "e" was sent
    std::string message;    // what the user was shown; empty for kLinkClosed
};

// Addition: in what state the drive is now, and what to do. Empty when all is well.
std::string_view advice(const TransferResult& result, base::Language language);

// Addition: what a step does, for a line of status; empty for a number that is none.
std::string_view step_name(std::uint8_t step, base::Language language);

class TransferObserver {
  public:
    TransferObserver() = default;
    TransferObserver(const TransferObserver&) = delete;
    TransferObserver& operator=(const TransferObserver&) = delete;
    virtual ~TransferObserver() = default;

    virtual void transfer_moved() = 0;  // another step or block
    virtual void dialogue_grew() = 0;   // something was sent or received
    virtual void transfer_ended(
        const TransferResult& result) = 0;  // all is settled, and idle again
};

// Everything is kept by reference.
struct TransferServices {
    link::Engine& engine;
    base::Notice& notice;
    const base::Language& language;
    TransferObserver& observer;
};

class FirmwareTransfer final : public link::Job {
  public:
    FirmwareTransfer(DownloadData& data, TransferServices services);

    // From idle: counters, strings and selectors to their start values. What the form holds of the
    // image at this moment is what will be sent, whatever is read later.
    void start();

    const DialogueLog& dialogue() const { return dialogue_; }
    const Progress& progress() const { return progress_; }

    bool active() const override;
    bool warm_up(link::Engine& engine) override;
    void send_step(link::Engine& engine) override;
    bool receive_text(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    void link_closed(link::Engine& engine) override;
    void link_opened(link::Engine& engine) override;

  private:
    struct Step;
    struct Sending {
        std::shared_ptr<const Blocks> blocks;
        std::string FW_Type;  // bytes
    };

    const Step* step() const;
    void add_to_log(DialogueEntry::Kind kind, std::string_view bytes);
    std::chrono::microseconds now() const;
    void take_image();
    bool block_left() const;
    void send_command(std::string_view text);
    void send_bytes(std::string_view bytes);
    void send_block();
    void call_bootloader();
    void hear(std::string& gathered);
    void wait(const Step& step);
    void watch_start(const Step& step);
    void timed_out(const Step& step);
    void heard(const Step& step);
    void block_programmed();
    void start_afresh();
    void go_to(std::uint8_t step);
    void fail(base::Text message);
    void succeed();
    void end(const TransferResult& result);
    void cut_off();

    void send_read_back();
    void take_segment(const link::Payload& payload);
    void end_read_back();

    DownloadData& data_;
    TransferServices services_;
    link::Engine& engine_;
    link::EngineState& state_;
    Sending sending_;
    bool image_taken_ = false;
    bool erased_ = false;
    bool reading_back_ = false;
    DialogueLog dialogue_;
    Progress progress_;
};

}  // namespace servo::firmware
