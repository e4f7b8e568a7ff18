// The running program: the machine's port, clock and timer, the workstation on them and the main
// window. Starts, connects as the command line asks, ends.
#pragma once

#include <QObject>
#include <filesystem>
#include <future>
#include <memory>
#include <string>

#include "app/desk_keeper.h"
#include "app/late_ports.h"
#include "app/mdi_form1.h"
#include "app/message_boxes.h"
#include "app/options.h"
#include "app/simulator.h"
#include "app/workstation.h"
#include "base/clock.h"
#include "link/port_names.h"
#include "link/qt_serial_port.h"

namespace servo::app {

class Program final : public QObject {
    Q_OBJECT

  public:
    explicit Program(const Options& options);
    ~Program() override;

    MDIForm1& form() { return *form_; }
    Workstation& workstation() { return *workstation_; }
    DialogSwitch& dialogs() { return dialogs_; }

    // Whether the windows of the command line are there. Says which is not.
    bool check_windows() const;

    // Loads and shows everything. False when the program cannot go on; why has been said.
    bool start();

    // Once the window is up: lists the ports and opens the link as the command line asks.
    // `settled` is emitted when that has been tried.
    void connect_link();

    // A line to the simulated drive that was started with the program. False without one.
    bool tell_drive(const std::string& line) { return simulator_.tell(line); }

  Q_SIGNALS:
    void settled();

  private:
    Surroundings surroundings();
    void start_simulator();
    void open_device(const QString& device);

    // The dictionary, read beside the first steps of the toolkit: both take most of the start, and
    // neither needs the other. Nothing else ever runs beside the thread of the windows, and this
    // has ended before anything of the program's state is filled.
    struct ReadDictionary {
        dictionary::Store store;
        bool found = false;
    };
    static ReadDictionary read_dictionary(const std::filesystem::path& folder);

    Options options_;
    std::future<ReadDictionary> dictionary_;
    MessageBoxes boxes_;
    DialogSwitch dialogs_{boxes_};
    link::PortNames names_;
    link::QtSerialPort port_{names_};
    link::QtPortDirectory machine_ports_{names_};
    LatePorts ports_{machine_ports_};
    base::SteadyClock clock_;
    link::QtTimer timer_;
    std::unique_ptr<DeskKeeper> desk_;  // none while a walkthrough is played
    std::unique_ptr<Workstation> workstation_;
    std::unique_ptr<MDIForm1> form_;
    Simulator simulator_;
    QString simulated_line_;  // empty until drive-sim has named it
    QString simulator_error_;
    bool wants_line_ = false;  // the main window is up and waits for the simulated drive
};

}  // namespace servo::app
