// The recorder in the drive, driven from here: sources, trigger, start, status, upload. Its traffic
// is a part of the poller's lane 2; nothing here waits.
//
// Every member of ScopeData that it changes is told to the observer.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "link/listeners.h"
#include "scope/scope_data.h"

namespace servo::scope {

// Keys of the recorder's block.
inline constexpr link::WireKey kCommandKey = 0x23000701;
inline constexpr link::WireKey kPeriodKey = 0x23000802;
inline constexpr link::WireKey kOffsetKey = 0x23000902;
inline constexpr link::WireKey kCountKey = 0x23000a02;
inline constexpr link::WireKey kEdgeKey = 0x23000b01;
inline constexpr link::WireKey kTriggerKey = 0x23000c04;
inline constexpr link::WireKey kLevelKey = 0x23000d04;
inline constexpr link::WireKey kBufferKey = 0x23001306;

// What follows from an acquisition; calls come from inside a tick as well as from a click.
struct AcquisitionEvents {
    std::function<void()> changed;      // texts, boxes, lists, progress
    std::function<void()> Movingdata;   // the upload has ended: decode it
    std::function<void()> DrawPicture;  // draw what was decoded
};

class Acquisition final : public link::ScopeLink {
  public:
    Acquisition(ScopeServices services, ScopeData& data, AcquisitionEvents events);

    // --- Channels 0 to 3: Combo1 to Combo4, Check14 to Check11
    void pick_object(int channel, int list_index);
    void click_enable(int channel);

    // --- Trigger
    void pick_trigger(int list_index);  // Combo9
    void Image5_Click();
    // Enter in Text1 to Text4. The first three send the focus to Command6: true.
    bool enter_text1();
    bool enter_text2();
    bool enter_text3();
    void enter_text4();
    // What one of the four boxes holds after a key, by their filter; nothing when the key is
    // swallowed. `text` is what it holds now.
    static bool passes_filter(char32_t key, std::string_view text);

    // --- Runs
    void Command6_Click();  // start and stop
    void Command7_Click();  // fetches the buffer again without a run
    // Ends a run whatever is ticked, and forgets a recording of somebody else that is being
    // fetched.
    void end_run();

    // Row bytes of the channels that are enabled and have an object.
    std::int32_t row_bytes() const;
    // "62.5us", "1ms": the period as time.
    static std::string period_text(double multiple);

    // --- ScopeLink
    bool window_visible() const override { return visible_; }
    bool settings_known() const override { return data_.importMode; }
    bool acquiring() const override { return data_.sampling; }
    void send_step(link::Engine& engine) override;
    link::Received receive_frame(link::Engine& engine, const link::Payload& payload) override;
    void link_timed_out(link::Engine& engine) override;
    void link_closed(link::Engine& engine) override;

    // Kept by whoever shows the window. Polling of a run pauses while it is hidden.
    void set_visible(bool visible) { visible_ = visible; }

  private:
    ScopeChannel& channel(int index) { return data_.channels.at(static_cast<std::size_t>(index)); }
    std::uint8_t& last_pick(int channel);
    void tell() const;

    // --- What the operator chose, acquisition.cpp
    void write(link::WireKey key, std::int32_t value);
    void write_slot(int channel);
    void untick(int channel);
    bool commit_number(link::WireKey key, std::string_view text);
    void restart_collection();
    bool first_read_under_way() const;

    // --- Runs, acquisition_run.cpp
    void start();
    void stop();
    void reset_run();
    void poll_status(link::Engine& engine);
    void take_status(std::uint8_t command, std::uint8_t status);
    void take_abort();

    // --- Settings read back, acquisition_refresh.cpp
    link::Received take_setting(int sub, const link::Payload& payload);
    void collect(int sub, std::uint32_t value);
    void apply_channels();
    void apply_channel(int index, dictionary::Identity object);
    void select(int index, dictionary::Identity object);
    void take_trigger(dictionary::Identity object);
    link::Received take_level(const link::Payload& payload);
    void show_number(std::string_view control, std::string& text, double value);
    void show_period(double multiple);

    // --- The buffer, acquisition_upload.cpp
    void begin_upload(link::Engine& engine);
    link::Received take_segment(link::Engine& engine, const link::Payload& payload);
    bool store_bytes(const link::Payload& payload, int count);
    void end_upload(link::Engine& engine);

    ScopeServices services_;
    ScopeData& data_;
    AcquisitionEvents events_;
    bool visible_ = false;

    // Reads of settings that were under way when the operator changed a slot tell the old one.
    bool drop_first_setting_ = false;
    int last_setting_ = 0;  // sub of the last answer; 0 before the first
};

}  // namespace servo::scope
