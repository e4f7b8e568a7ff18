// The machine under the commands: its serial ports, the tick, a simulated drive beside it.
#pragma once

#include <filesystem>
#include <optional>

#include "base/clock.h"
#include "cli/engine_session.h"
#include "cli/run.h"
#include "cli/sim_process.h"
#include "link/qt_serial_port.h"

namespace servo::cli {

class QtEnvironment final : public Environment {
  public:
    // `program_folder` is where drive-sim stands. `interrupted` tells whether the user wants to
    // leave.
    QtEnvironment(std::filesystem::path program_folder, std::function<bool()> interrupted);

    std::vector<link::PortDirectory::Entry> ports(const Options& options) override;
    OpenedLink open_link(const Options& options) override;

  private:
    // Text of the port list for what the options name; empty, with the error set, when they name
    // nothing.
    std::string port_text(const Options& options, std::string& error);
    std::string start_sim(const Options& options, std::string& error);
    std::vector<link::PortDirectory::Entry> probe();

    std::filesystem::path program_folder_;
    SimProcess sim_;  // first, so that it ends after the port has been closed
    base::SteadyClock clock_;
    link::PortNames names_;
    link::QtPortDirectory directory_{names_};
    link::QtSerialPort port_{names_};
    link::QtTimer timer_;
    link::DriveValues values_;
    link::Engine engine_{port_, clock_, timer_, values_};
    EngineSession session_;
};

}  // namespace servo::cli
