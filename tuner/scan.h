// The frequency scan: a job of the engine that writes the plan into the drive, starts it, waits and
// reads the correlation sums. `scanRequested` and `scanStep` are in the engine's state.
//
// The job has no time-out of its own: a request is sent again at each tick until its answer comes,
// and a broken link ends it as it ends everything.
#pragma once

#include <cstdint>

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

class FrequencyScan final : public link::Job {
  public:
    // Everything is kept by reference.
    FrequencyScan(TunerData& data, const TunerServices& services, ScanObserver& observer);

    // The seven checks in their order, each with its message; then the four settings are taken from
    // the boxes and the job begins. False when a check failed, or a scan runs already.
    bool start();

    // Addition: how far the scan has come, 0 to 1000; the drive's own measuring counts as a part
    // that is known only from its state, so the figure rests at it.
    int progress() const;
    // Addition: the drive measures now (step 8).
    bool measuring() const;
    // Addition: gives up a scan that runs; the drive is told to stop (3040:01 := 0).
    void cancel();

    bool active() const override;
    bool warm_up(link::Engine& engine) override;
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    void link_closed(link::Engine& engine) override;
    void link_opened(link::Engine& engine) override;

  private:
    bool checks_passed();
    void take_words(const link::Payload& payload);
    void finish();

    TunerData& data_;
    const TunerServices& services_;
    ScanObserver& observer_;
};

}  // namespace servo::tuner
