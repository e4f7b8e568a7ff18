// A program's folder made in a test, and a workstation on it whose line is a port without a drive.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "../params/test_page_support.h"
#include "app/workstation.h"
#include "base/file.h"
#include "params/page_table.h"
#include "support/direct_port.h"
#include "support/fakes.h"

namespace servo::app::test {

// Gone at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "servo-shell-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

class PortList final : public link::PortDirectory {
  public:
    bool list(std::vector<Entry>& into) override {
        into = entries;
        return true;
    }
    std::vector<Entry> entries{{"COM1", "/dev/ttyS0", ""},
                               {"COM11", "/dev/ttyUSB0", "FT232R USB UART"}};
};

// The folder of a whole installation, with the objects of the page tests on three pages.
class ProgramFolder {
  public:
    ProgramFolder() {
        std::filesystem::create_directory(path() / "sys");
        write("qorlan.dat", params::test::dictionary_bytes(params::test::sample_entries()));
        for (const params::PageDefinition& page : params::kPageTable) {
            std::string name(page.file);
            std::ranges::replace(name, '\\', '/');
            write(name.substr(1),
                  "head\r\nhead\r\nmode 606000\r\nposition 606300\r\nspeed 60FF00\r\n");
        }
        write("modbus.txt", "606000,a,0x1234\r\nEND\r\n");
        write("sys/sys.ini", "[sys]\r\nlang=0\r\n[com]\r\ncomid=COM1\r\n");
    }

    const std::filesystem::path& path() const { return folder_.path(); }
    void write(const std::string& name, std::string_view bytes) const {
        base::write_file(path() / name, bytes);
    }
    void remove(const std::string& name) const { std::filesystem::remove(path() / name); }
    std::string read(const std::string& name) const {
        return base::read_file(path() / name).value_or("");
    }

  private:
    TemporaryFolder folder_;
};

struct ShellBench {
    ProgramFolder folder;
    servo::test::DirectPort port;
    PortList ports;
    servo::test::RecordingClock clock;
    servo::test::RecordingTimer timer;
    servo::test::RecordedNotice notice;
    Workstation workstation{Surroundings{folder.path(), notice, port, ports, clock, timer}};

    ShellBench() { port.opened = false; }
    link::Window& window(std::string_view name) { return *workstation.find_window(name); }
};

}  // namespace servo::app::test
