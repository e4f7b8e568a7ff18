// The frequency scan: a job of the engine that writes the plan into the drive, starts it, waits and
// reads the correlation sums. `scanRequested` and `scanStep` are in the engine's state.
//
// The job has no time-out of its own: a request is sent again at each tick until its answer comes,
// and a broken link ends it as it ends everything.
#pragma once

#include <cstdint>
#include <optional>

#include "link/engine.h"
#include "link/job.h"
#include "tuner/tuner_data.h"

namespace servo::tuner {

class ScanObserver {
  public:
    ScanObserver() = default;
    ScanObserver(const ScanObserver&) = delete;
    ScanObserver& operator=(const ScanObserver&) = delete;
    virtual ~ScanObserver() = default;

    virtual void scan_moved() = 0;  // a step or an entry further
    // `finished`: both blocks are read, FirstAnalyse can run (the observer's affair). Otherwise the
    // link was closed or the scan was given up.
    virtual void scan_ended(bool finished) = 0;
};

// A request of the job.
struct ScanRequest {
    link::WireKey key = 0;
    std::int32_t value = 0;
    bool read = false;
};

// What it measures replaces the scan that was there when it is whole, and not before: a scan that
// is cut off leaves data, picture and label as they were.
class FrequencyScan final : public link::Job {
  public:
    // Everything is kept by reference.
    FrequencyScan(TunerData& data, const TunerServices& services, ScanObserver& observer);

    // The seven checks in their order, each with its message; then the four settings are taken from
    // the boxes and the job begins. A box counts with the number that its text begins with: "abc"
    // is 0 and refused; "4.6" passes as 4.6 and is taken as 5. False when a check failed. A scan
    // that runs is no hindrance: unlocked and started again, it begins anew with the boxes' plan.
    bool start();

    // The scan under way; behind it, the last one that was begun.
    const ScanSettings& settings() const { return settings_; }
    int points() const { return buffers_.pointCount; }

    // Addition: what it asks now, again and again; nothing while it warms up or is idle.
    std::optional<ScanRequest> request() const;
    // Addition: how far the scan has come, 0 to 1000; the drive's own measuring counts as a part
    // that is known only from its state, so the figure rests at it.
    int progress() const;
    // Addition: the drive measures now (step 8).
    bool measuring() const;
    // Addition: gives up a scan that runs. While the drive may be moving it is told to stop
    // (3040:01 := 0), again and again until it says that it has, or for so many requests; only
    // then has the scan ended.
    void cancel();
    bool cancelling() const { return stop_ != Stop::kNo; }

    bool active() const override;
    bool warm_up(link::Engine& engine) override;
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    void link_closed(link::Engine& engine) override;
    void link_opened(link::Engine& engine) override;

  private:
    enum class Stop : std::uint8_t { kNo, kWrite, kRead };  // request that cancelling repeats

    bool checks_passed() const;
    bool may_move() const;  // from the request to start until the drive says that it is idle
    bool refuse(base::Text title, base::Text text) const;
    void take_boxes();
    std::int32_t value_of(std::uint8_t step) const;
    bool take_answer(const link::Payload& payload);
    bool take_words(const link::Payload& payload);
    void next_block(std::uint8_t mode, std::int16_t base);
    void go_to(std::uint8_t step);
    bool take_stop_answer(const link::Payload& payload);
    void send_stop();
    void finish();
    void give_up();

    TunerData& data_;
    const TunerServices& services_;
    ScanObserver& observer_;
    link::EngineState& state_;
    ScanSettings settings_;
    ScanBuffers buffers_;
    ScanLabel label_before_ = ScanLabel::kNotStarted;
    int passes_ = 0;  // frames looked at in this receive tick
    Stop stop_ = Stop::kNo;
    int stop_requests_ = 0;
    bool moved_before_ = false;  // begun anew while the drive may have been measuring
};

}  // namespace servo::tuner
