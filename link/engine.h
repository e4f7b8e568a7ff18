// All periodic traffic with the drive. One entry, cTmr_Timer(), called by a periodic timer on the
// thread of the windows; each call does one small step of one job and returns. Send ticks and
// receive ticks alternate. When no job is active the poller turns its wheel: status lanes, then the
// rows of the visible pages.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "link/channel.h"
#include "link/drive_values.h"
#include "link/engine_state.h"
#include "link/frame.h"
#include "link/job.h"
#include "link/listeners.h"
#include "link/pictures.h"
#include "link/port.h"
#include "link/timer.h"
#include "link/window.h"

namespace servo::link {

// Where a job stands. The three phases of a tick ask the jobs in three orders, see engine_jobs.cpp.
enum class JobPlace : std::uint8_t { kFirmware, kConfiguration, kPositionFlow, kScan };
inline constexpr std::size_t kJobPlaces = 4;

// What a status bar shows of the link; since the link was opened.
struct LinkCounters {
    std::uint64_t ticks = 0;    // of the timer, those that left at the guard not counted
    std::uint64_t sends = 0;    // frames handed to the line
    std::uint64_t answers = 0;  // read answers of objects
    std::uint64_t frames = 0;   // accepted frames of any kind
    std::uint64_t misses = 0;   // receive ticks without a valid frame
    std::uint64_t bad_checksum = 0;
    std::uint64_t foreign = 0;
};

class Engine {
  public:
    // Everything is kept by reference and has to outlive the engine.
    Engine(Port& port, base::Clock& clock, Timer& timer, DriveValues& values);

    // --- set-up ---------------------------------------------------------------------------------
    // Puts a window into its place of all_windows (and poll_windows), by its name; sets meindex and
    // must_fresh. False for a name that has no place.
    bool add_window(Window& window);
    bool add_poll_window(PollWindow& window);
    void add_job(JobPlace place, Job& job);
    // For one that ends before the engine does.
    void remove_job(JobPlace place, const Job& job);
    void add_listener(StatusListener& listener) { listeners_.push_back(&listener); }
    void remove_listener(const StatusListener& listener);
    void set_scope(ScopeLink* scope) { scope_ = scope; }
    void set_link_control(LinkControl* control) { link_control_ = control; }

    // --- the tick -------------------------------------------------------------------------------
    void cTmr_Timer();

    // --- object access: fire and forget
    // ----------------------------------------------------------- `read` 0 writes.
    void sendata2(WireKey key, std::int32_t value, std::uint8_t read);
    // As sendata2, but silent while input waits and output has not left, and paced for segments.
    // Does not remember the key. For the tick's string reads alone.
    void sendata(WireKey key, std::int32_t value, std::uint8_t read);
    // While a firmware transfer runs, only what the tick itself sends leaves: a write from a window
    // would land inside its text and is dropped.
    void Datawrite(const Payload& payload);
    void Datawrite_str(std::string_view text);  // bytes as they stand; serial line only

    std::uint8_t get_frame();
    const Payload& reply() const { return reply_; }
    Identity reply_key() const { return link::reply_key(reply_); }
    double reply_value(int size_code) const { return link::reply_value(reply_, size_code); }

    // --- for jobs
    // ---------------------------------------------------------------------------------
    void clear_in() { port_.clear_in(); }
    void clear_out() { port_.clear_out(); }
    void clear_queues();
    // Up to InputLen waiting bytes of the serial line, one character each.
    std::string read_text();
    // One warm-up tick while `step` is 2 or less: raises it and clears both queues. False
    // afterwards.
    template <typename Step>
    bool spend_warm_up(Step& step) {
        if (step > 2) return false;
        ++step;
        clear_queues();
        return true;
    }

    // --- for windows and the dialog -------------------------------------------------------------
    // Bookkeeping behind the opening of a page: it is read on the next send tick, unless the scope
    // is acquiring or a batch runs.
    void page_opened();
    // The block of digital inputs and outputs is read again, unless lane 2 runs.
    void request_io_refresh();
    // After a restart of the drive: every row is read again, values count as unknown, the wheel
    // begins anew, misses so far are forgotten.
    void forget_drive();
    void set_all_must_fresh();
    // The six flags, the guard, the limit and the wheel, at the beginning of each press of the
    // dialog's open button.
    void reset_polling();
    // Every shared member to its start value, and what jobs do on it; when the link has been
    // opened.
    void link_opened();
    // Jobs and scope end; when the link is being closed.
    void link_closed();

    // --- members by name, for walkthroughs and the state dump
    // --------------------------------------
    static std::span<const std::string_view> member_names();
    std::optional<std::string> member(std::string_view name) const;

    EngineState state;
    Pictures pictures;
    LinkCounters counters;
    SerialChannel serial;
    CanChannel can;

    std::vector<Window*> all_windows;       // 40 places, null where no window was added
    std::vector<PollWindow*> poll_windows;  // 29 places, likewise

    Port& port() { return port_; }
    Timer& timer() { return timer_; }
    const Timer& timer() const { return timer_; }
    base::Clock& clock() { return clock_; }
    DriveValues& values() { return values_; }
    const DriveValues& values() const { return values_; }
    ScopeLink* scope() { return scope_; }

    static std::span<const WireKey> status_list(int lane);  // 8, 26 and 13 entries

  private:
    Channel& channel();

    void tick();
    bool warm_up();
    void send_tick();
    void receive_tick();
    Job* running_transfer() const;
    Job* first_active(std::span<const JobPlace> order) const;

    void send_lane();
    void send_lane0();
    void end_of_lane0();
    bool operands_known() const;
    void send_lane1();
    void end_of_lane1();
    void send_lane2();
    void leave_lane2();

    void send_page_row();
    bool find_visible_page();
    void send_custom_row(PollWindow& window);
    void send_grid_row(PollWindow& window);
    void begin_string(PollWindow& window, Identity object);
    void end_of_pass();

    enum class Next : std::uint8_t { kEndTick, kDrain, kTakeAnother };
    Next take_frame();
    Next take_status_answer();
    void take_lane0_answer(std::size_t position);
    void take_fault_word(int word, std::uint16_t value);
    void take_page_answer();
    void take_segment();
    void take_grid_answer(PollWindow& window);
    void take_string_answer(PollWindow& window, int row);
    void take_custom_answer(PollWindow& window);
    void append_string(std::size_t count);
    void end_string();

    void miss();
    void give_up();

    void publish_firmware_check(std::string text);

    Port& port_;
    base::Clock& clock_;
    Timer& timer_;
    DriveValues& values_;
    Payload reply_{};
    std::array<Job*, kJobPlaces> jobs_{};
    std::vector<StatusListener*> listeners_;
    ScopeLink* scope_ = nullptr;
    LinkControl* link_control_ = nullptr;

    // Page rows were asked for while an operand of the formulas was still missing.
    bool read_without_operands_ = false;

    // The row whose string is being read.
    PollWindow* string_window_ = nullptr;
    int string_row_ = 0;
    Identity string_object_ = 0;
};

}  // namespace servo::link
