// The machine's own serial facility, on a pseudo-terminal: no event loop runs while a tick does.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/clock.h"
#include "link/channel.h"
#include "link/engine.h"
#include "link/qt_serial_port.h"

using namespace servo;
using namespace servo::link;

namespace {

// The far end of a line.
struct PseudoTerminal {
    PseudoTerminal() : master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        grantpt(master);
        unlockpt(master);
        device = ptsname(master);
        termios raw{};
        tcgetattr(master, &raw);
        cfmakeraw(&raw);
        tcsetattr(master, TCSANOW, &raw);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() { unplug(); }

    void unplug() {
        if (master >= 0) ::close(master);
        master = -1;
    }
    void say(const std::string& bytes) const {
        ASSERT_EQ(::write(master, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    std::string heard() const {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(master, bytes.data(), bytes.size());
        return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count))
                         : std::string();
    }

    int master;
    std::string device;
};

// Looks at the line past the port. Made before the port is opened, which keeps others out.
struct Onlooker {
    explicit Onlooker(const std::string& device)
        : file(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;
    ~Onlooker() { ::close(file); }

    bool sees_bytes() const {
        pollfd wanted{file, POLLIN, 0};
        return ::poll(&wanted, 1, 5000) == 1;
    }

    int file;
};

// Counts how often the event loop was woken for a file.
struct WakeUps : QObject {
    WakeUps() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::SockAct) ++count;
        return false;
    }
    int count = 0;
};

struct QtPort : testing::Test {
    PseudoTerminal line;
    PortNames names;
    QtSerialPort port{names};
    std::string text = names.give(line.device);

    std::string read(std::size_t count) {
        std::string bytes(count, '\0');
        bytes.resize(port.read({reinterpret_cast<std::uint8_t*>(bytes.data()), count}));
        return bytes;
    }
    // A pseudo-terminal hands bytes on by a worker of the system, a moment after they were written.
    // No event loop runs while this looks for them.
    bool arrived(std::size_t count) {
        QDeadlineTimer deadline(5000);
        while (port.in_buffer_count() < count)
            if (deadline.hasExpired()) return false;
        return port.in_buffer_count() == count;
    }
    void write(const std::string& bytes) {
        port.write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    }
};

}  // namespace

TEST_F(QtPort, OpensAPseudoTerminalByItsListText) {
    EXPECT_EQ(text, "COM31");
    EXPECT_EQ(port.open(text, 38400), OpenResult::kOpened);
    EXPECT_TRUE(port.is_open());
    port.close();
    EXPECT_FALSE(port.is_open());
    EXPECT_EQ(port.open("Com31", 115200), OpenResult::kOpened) << "again, in the other spelling";
}

TEST_F(QtPort, WaitingBytesAreSeenWithoutAnEventLoop) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    EXPECT_EQ(port.in_buffer_count(), 0U);
    line.say(std::string("ab\0\r\n\x11\x13\xFF", 8));
    ASSERT_TRUE(arrived(8));
    EXPECT_EQ(read(3), std::string("ab\0", 3));
    EXPECT_EQ(port.in_buffer_count(), 5U);
    line.say("more");
    ASSERT_TRUE(arrived(9));
    EXPECT_EQ(read(100), "\r\n\x11\x13\xFFmore") << "raw: nothing is translated or swallowed";
    EXPECT_EQ(read(100), "");
}

TEST_F(QtPort, WritesLeaveAtOnce) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    const std::string bytes("\x7F@\x10\x64\x03\0\0\0\0\xCA", 10);
    write(bytes);
    EXPECT_EQ(line.heard(), bytes);
    EXPECT_EQ(port.out_buffer_count(), 0U);
}

// A busy line would wake it for every few bytes, several times as often as the engine ticks.
TEST_F(QtPort, TrafficWakesNoEventLoop) {
    const Onlooker onlooker(line.device);
    WakeUps wake_ups;
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    for (int round = 0; round < 3; ++round) {
        line.say("answer");
        ASSERT_TRUE(onlooker.sees_bytes());
        QCoreApplication::processEvents();
        ASSERT_TRUE(arrived(6));
        EXPECT_EQ(read(100), "answer");
        write("request");
        QCoreApplication::processEvents();
        EXPECT_EQ(line.heard(), "request");
    }
    EXPECT_EQ(wake_ups.count, 0);
}

TEST_F(QtPort, TrafficWakesNoEventLoopAfterTheInputWasDiscarded) {
    const Onlooker onlooker(line.device);
    WakeUps wake_ups;
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    port.clear_in();
    port.clear_out();
    line.say("answer");
    ASSERT_TRUE(onlooker.sees_bytes());
    QCoreApplication::processEvents();
    EXPECT_EQ(wake_ups.count, 0);
}

TEST_F(QtPort, WhatTheSystemDoesNotTakeAtOnceFollowsInOrder) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    std::string sent;
    for (int i = 0; i < 20'000; ++i) {
        const std::string piece = "#" + std::to_string(i);
        write(piece);
        sent += piece;
    }
    EXPECT_GT(port.out_buffer_count(), 0U) << "nobody listens, and no line holds that much";
    std::string heard;
    QDeadlineTimer deadline(10'000);
    while (heard.size() < sent.size() && !deadline.hasExpired()) {
        heard += line.heard();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(heard, sent);
    write("behind");
    EXPECT_EQ(line.heard(), "behind");
}

TEST_F(QtPort, InputCanBeDiscarded) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    line.say("old");
    ASSERT_TRUE(arrived(3));
    port.clear_in();
    EXPECT_EQ(port.in_buffer_count(), 0U);
    line.say("new");
    ASSERT_TRUE(arrived(3));
    EXPECT_EQ(read(10), "new");
    port.clear_out();
}

TEST_F(QtPort, ClosedPortIsSilent) {
    write("x");
    port.clear_in();
    port.clear_out();
    EXPECT_EQ(port.in_buffer_count(), 0U);
    EXPECT_EQ(port.out_buffer_count(), 0U);
    EXPECT_EQ(read(5), "");
    EXPECT_EQ(line.heard(), "");
}

TEST_F(QtPort, PortThatIsNotThereFails) {
    EXPECT_EQ(port.open("COM99999", 38400), OpenResult::kFailed);
    EXPECT_EQ(port.open("COMx", 38400), OpenResult::kFailed);
    const std::string gone = names.give("/dev/pts/987654");
    EXPECT_EQ(port.open(gone, 38400), OpenResult::kFailed);
    EXPECT_FALSE(port.is_open());
}

TEST_F(QtPort, PortThatSomebodyElseHasIsBusy) {
    QtSerialPort other(names);
    ASSERT_EQ(other.open(text, 38400), OpenResult::kOpened);
    EXPECT_EQ(port.open(text, 38400), OpenResult::kBusy);
    EXPECT_FALSE(port.is_open());
    other.close();
    EXPECT_EQ(port.open(text, 38400), OpenResult::kOpened);
}

TEST_F(QtPort, LinkToADeviceCountsAsTheDevice) {
    const auto link =
        std::filesystem::temp_directory_path() / ("servo-line-" + std::to_string(::getpid()));
    std::filesystem::remove(link);
    std::filesystem::create_symlink(line.device, link);
    EXPECT_EQ(port.open(names.give(link.string()), 38400), OpenResult::kOpened);
    line.say("x");
    ASSERT_TRUE(arrived(1));
    EXPECT_EQ(read(1), "x");
    std::filesystem::remove(link);
}

TEST_F(QtPort, UnpluggedLineFallsSilent) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    line.unplug();
    write("x");
    EXPECT_EQ(port.in_buffer_count(), 0U);
    EXPECT_EQ(read(5), "");
    QCoreApplication::processEvents();
    EXPECT_EQ(port.in_buffer_count(), 0U);
    port.clear_in();
    port.close();
    EXPECT_FALSE(port.is_open());
}

TEST_F(QtPort, GivenDeviceIsListed) {
    QtPortDirectory directory(names);
    std::vector<PortDirectory::Entry> entries;
    ASSERT_TRUE(directory.list(entries));
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [](const auto& entry) { return entry.text == "COM31"; });
    ASSERT_NE(found, entries.end());
    EXPECT_EQ(found->device, line.device);
}

TEST_F(QtPort, FrameTravelsBothWaysThroughTheChannel) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    base::SteadyClock clock;
    SerialChannel channel(port, clock);
    channel.Datawrite(make_payload(0x64100304, 0, true, 0));
    EXPECT_EQ(line.heard(), std::string("\x7F\x40\x10\x64\x03\0\0\0\0\xCA", 10));
    const Frame answer = make_frame(127, {0x43, 0x10, 0x64, 0x03, 0x10, 0x27, 0, 0});
    line.say(std::string(answer.begin(), answer.end()));
    ASSERT_TRUE(arrived(10));
    Payload reply{};
    EXPECT_EQ(channel.get_frame(reply), kFrameAccepted);
    EXPECT_EQ(reply_value(reply, 4), 10000);
}

TEST_F(QtPort, TimerTicksTheEngineAndItsIntervalCanChangeWhileItRuns) {
    ASSERT_EQ(port.open(text, 38400), OpenResult::kOpened);
    base::SteadyClock clock;
    DriveValues values;
    int ticks = 0;
    QEventLoop loop;
    QtTimer timer;
    Engine engine(port, clock, timer, values);
    timer.set_tick([&] {
        engine.cTmr_Timer();
        ++ticks;
        if (ticks == 5) timer.set_interval(6);
        if (ticks == 10) timer.set_enabled(false);
        if (ticks == 10) loop.quit();
    });
    EXPECT_EQ(timer.interval(), 3);
    EXPECT_FALSE(timer.enabled());
    timer.set_enabled(true);
    EXPECT_TRUE(timer.enabled());
    loop.exec();
    EXPECT_EQ(ticks, 10);
    EXPECT_EQ(timer.interval(), 6);
    EXPECT_TRUE(timer.enabled() == false);
    EXPECT_EQ(line.heard().size(), 50U) << "five send ticks";
}

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
