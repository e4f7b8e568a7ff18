// A program's folder made in a test, and a workstation on it whose line is a port without a drive.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "../params/test_page_support.h"
#include "app/workstation.h"
#include "base/file.h"
#include "base/gbk.h"
#include "params/page_table.h"
#include "params/tabbed_page.h"
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
        for (const std::string& name : page_files())
            write(name, "head\r\nhead\r\nmode 606000\r\nposition 606300\r\nspeed 60FF00\r\n");
        write("modbus.txt", "606000,a,0x1234\r\nEND\r\n");
        write("sys/DigitIOSettings.ini", base::utf8_to_gbk("[DigitIN]\r\n使能,Enable,0001\r\n"
                                                           "[DigitOUT]\r\n就绪,Ready,0001\r\n"));
        write("sys/sys.ini", "[sys]\r\nlang=0\r\n[com]\r\ncomid=COM1\r\n");
    }

    // Every file of page keys, in the order in which start-up reads them.
    static std::vector<std::string> page_files() {
        std::vector<std::string> files;
        const auto add = [&files](std::string_view file) {
            std::string name(file.substr(1));
            std::ranges::replace(name, '\\', '/');
            files.push_back(name);
        };
        const auto order = params::pages_in_load_order();
        for (const std::size_t page : std::span(order).first(order.size() - 1))
            add(params::kPageTable.at(page).file);
        for (const std::string_view word : {"TPDO", "RPDO"})
            for (int tab = 1; tab <= params::kTabs; ++tab)
                files.push_back("sys/" + std::string(word) + std::to_string(tab) + ".ini");
        add(params::kPageTable.at(order.back()).file);
        files.emplace_back("sys/download.ini");
        return files;
    }

    const std::filesystem::path& path() const { return folder_.path(); }
    void write(const std::string& name, std::string_view bytes) const {
        // Not the program's safe writing, which waits for the disk: a test makes dozens of files.
        std::ofstream(path() / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
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
