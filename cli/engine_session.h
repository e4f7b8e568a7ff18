// A link session on the engine. The engine is stepped from outside: whoever makes the session says
// how a little time passes (a turn of the event loop, or a step of virtual time in a test).
#pragma once

#include <functional>
#include <string>

#include "cli/access_job.h"
#include "cli/link_session.h"
#include "link/engine.h"

namespace servo::cli {

class EngineSession final : public LinkSession, private link::LinkControl {
  public:
    // Lets the tick run; comes back after a few milliseconds. False when the user wants to leave.
    using Pump = std::function<bool()>;

    // `engine` outlives the session. Takes the configuration's place among its jobs.
    EngineSession(link::Engine& engine, Pump pump);
    ~EngineSession() override;

    // Opens the port and starts the tick.
    link::OpenResult open(std::string_view port_text, int baud, std::uint8_t comm_id);
    void close();

    Reply read(dictionary::Identity key, const std::string& type,
               std::chrono::milliseconds limit) override;
    Reply write(dictionary::WireKey key, std::int32_t value,
                std::chrono::milliseconds limit) override;
    Reply write_setting(dictionary::WireKey key, std::int32_t value,
                        std::chrono::milliseconds limit) override;
    Reply write_last(dictionary::WireKey key, std::int32_t value,
                     std::chrono::milliseconds limit) override;
    Outcome wait(const std::function<bool()>& condition, std::chrono::milliseconds limit) override;
    const link::FormulaOperands& operands() const override { return engine_.values().operands; }
    std::chrono::microseconds now() const override;

    link::Engine& engine() { return engine_; }

  private:
    void communication() override;  // too many misses
    // Whether Ctrl-C ends a wait.
    enum class CtrlC : std::uint8_t { kEnds, kWaits };
    Reply finish_access(std::chrono::milliseconds limit, CtrlC ctrl_c = CtrlC::kEnds);
    Outcome run_until(const std::function<bool()>& condition, std::chrono::milliseconds limit,
                      CtrlC ctrl_c = CtrlC::kEnds);

    link::Engine& engine_;
    Pump pump_;
    AccessJob job_;
    bool open_ = false;
};

}  // namespace servo::cli
