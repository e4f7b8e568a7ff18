#include "sim/pty_host.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>

namespace servo::sim {

namespace {

using std::chrono::microseconds;
using std::chrono::nanoseconds;

// The drive's model goes on at least that often, so that it never has much to catch up with when a
// request comes.
constexpr nanoseconds kLongestWait = std::chrono::milliseconds(50);

// Bytes of an answer that end within this time are handed over together.
constexpr nanoseconds kWriteSpan = std::chrono::milliseconds(1);

// A request is looked at when its last byte is in, or when no more has come.
constexpr std::size_t kRequestBytes = 10;
constexpr nanoseconds kRequestSpan = std::chrono::seconds(1);

constexpr nanoseconds kSilence = std::chrono::seconds(2);

// NOLINTNEXTLINE(bugprone-*): a signal handler has no other way to speak.
volatile std::sig_atomic_t g_stop = 0;

void ask_to_stop(int) {
    g_stop = 1;
}

sigset_t stop_signals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

// A pause that ends what is printed as one frame.
constexpr nanoseconds kPrintGap = std::chrono::milliseconds(2);

void print(char direction, nanoseconds time, std::span<const std::uint8_t> bytes) {
    fmt::print("{:.6f} {} {:02X}\n", static_cast<double>(time.count()) / 1e9, direction,
               fmt::join(bytes, " "));
    std::fflush(stdout);
}

microseconds whole(nanoseconds time) {
    return std::chrono::ceil<microseconds>(time);
}

}  // namespace

PtyHost::PtyHost(Drive& drive, PtyLine& line, HostOptions options)
    : drive_(drive),
      line_(line),
      options_(options),
      started_(std::chrono::steady_clock::now().time_since_epoch()),
      incoming_(drive.baud(), kRequestBytes, kRequestSpan),
      outgoing_(drive.baud(), kRequestBytes, kWriteSpan) {}

// Time of the drive.
nanoseconds PtyHost::now() const {
    const nanoseconds real = std::chrono::steady_clock::now().time_since_epoch() - started_;
    if (options_.speed == 1.0) return real;
    return nanoseconds(
        static_cast<std::int64_t>(static_cast<double>(real.count()) * options_.speed));
}

nanoseconds PtyHost::next_waking() const {
    nanoseconds next = drive_.now() + kLongestWait;
    if (const auto at = incoming_.next()) next = std::min(next, *at);
    if (const auto at = outgoing_.next()) next = std::min(next, *at);
    if (const auto at = drive_.next_event()) next = std::min<nanoseconds>(next, *at);
    return next;
}

// False when the run is to end.
bool PtyHost::wait_until(nanoseconds time) {
    const auto left =
        static_cast<double>(std::max<nanoseconds>(time - now(), nanoseconds(0)).count());
    const auto real = static_cast<std::int64_t>(left / options_.speed);
    const timespec timeout{real / 1'000'000'000, real % 1'000'000'000};
    std::array<pollfd, 2> files{{{line_.descriptor(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
    // The stop signals are let in only here, so none can be missed between the test and the wait.
    sigset_t open_mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &open_mask);
    sigdelset(&open_mask, SIGTERM);
    sigdelset(&open_mask, SIGINT);
    const int ready = ppoll(files.data(), input_open_ ? 2 : 1, &timeout, &open_mask);
    if (g_stop != 0) return false;
    if (ready <= 0 || files[1].revents == 0) return true;
    input_open_ = read_input();
    obey_input();
    return input_open_ || !options_.watch_input;
}

// False at its end.
bool PtyHost::read_input() {
    std::array<char, 256> bytes{};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count > 0) input_.put({bytes.data(), static_cast<std::size_t>(count)});
    return count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
}

void PtyHost::obey_input() {
    while (const auto line = input_.next()) {
        // A line is in force when it comes, not where the model stands.
        drive_.advance(std::max(std::chrono::floor<microseconds>(now()), drive_.now()));
        const LineAnswer answer = obey_line(drive_, *line);
        if (answer.text.empty()) continue;
        fmt::print(answer.good ? stdout : stderr, "{}{}\n",
                   answer.good ? "" : "drive-sim: ", answer.text);
        std::fflush(stdout);
    }
}

void PtyHost::take_in() {
    const std::vector<std::uint8_t> bytes = line_.read();
    const nanoseconds time = now();
    if (!bytes.empty()) {
        last_heard_ = time;
        incoming_.put(bytes, time);
    } else if (time - last_heard_ > kSilence) {
        last_heard_ = time;
        line_.release_claim();
    }
}

void PtyHost::step() {
    const nanoseconds time = now();
    const std::vector<PacedBytes::Byte> heard = incoming_.take(time);
    if (options_.print_frames) {
        heard_.insert(heard_.end(), heard.begin(), heard.end());
        print_heard(time);
    }
    for (const PacedBytes::Byte& byte : heard) {
        drive_.receive({&byte.value, 1}, std::max(whole(byte.at), drive_.now()));
    }
    drive_.advance(std::max(std::chrono::floor<microseconds>(time), drive_.now()));
    incoming_.set_baud(drive_.baud());
    outgoing_.set_baud(drive_.baud());
    send();
}

void PtyHost::send() {
    for (const Transmission& transmission : drive_.take_output()) {
        outgoing_.put(transmission.bytes, transmission.at);
        if (options_.print_frames) print('>', transmission.at, transmission.bytes);
    }
    if (options_.print_frames) print_unseen();
    const std::vector<PacedBytes::Byte> through = outgoing_.take(now());
    if (through.empty()) return;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(through.size());
    for (const PacedBytes::Byte& byte : through)
        bytes.push_back(byte.value);
    line_.write(bytes);
}

// Whoever judges a receiver by the frames has to know which of them no receiver could tell.
void PtyHost::print_unseen() {
    for (; unseen_ < drive_.statistics().unseen; ++unseen_) {
        fmt::print("{:.6f} ! a frame was changed and has a right checksum\n",
                   static_cast<double>(now().count()) / 1e9);
        std::fflush(stdout);
    }
}

// Ten bytes at a time, or as many as came before a pause.
void PtyHost::print_heard(nanoseconds time) {
    while (!heard_.empty()) {
        std::size_t count = 1;
        while (count < std::min(heard_.size(), kRequestBytes) &&
               heard_[count].at - heard_[count - 1].at < kPrintGap) {
            ++count;
        }
        const nanoseconds at = heard_[count - 1].at;
        if (count == heard_.size() && count < kRequestBytes && time - at < kPrintGap) return;
        std::vector<std::uint8_t> bytes;
        for (std::size_t i = 0; i < count; ++i)
            bytes.push_back(heard_[i].value);
        print('<', at, bytes);
        heard_.erase(heard_.begin(), heard_.begin() + static_cast<std::ptrdiff_t>(count));
    }
}

void PtyHost::run() {
    // The kernel may otherwise bundle wake-ups within 50 us of each other.
    prctl(PR_SET_TIMERSLACK, 1UL);
    const sigset_t signals = stop_signals();
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &signals, &before);
    struct sigaction action {};
    action.sa_handler = ask_to_stop;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
    // Behind a terminal, in the background, it has no input and goes on without.
    if (!options_.watch_input) std::signal(SIGTTIN, SIG_IGN);
    g_stop = 0;
    while (wait_until(next_waking())) {
        take_in();
        step();
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace servo::sim
