#include "sim/pty_line.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace servo::sim {

namespace {

constexpr std::size_t kReadSize = 4096;

std::string system_error(std::string_view what) {
    return fmt::format("{}: {}", what, std::strerror(errno));
}

// No echo, no line editing, no translation: bytes as they are.
bool make_raw(int terminal) {
    termios settings{};
    if (tcgetattr(terminal, &settings) != 0) return false;
    cfmakeraw(&settings);
    return tcsetattr(terminal, TCSANOW, &settings) == 0;
}

}  // namespace

PtyLine::PtyLine(int master, int slave, std::string path)
    : master_(master), slave_(slave), path_(std::move(path)) {}

PtyLine::PtyLine(PtyLine&& other) noexcept
    : master_(std::exchange(other.master_, -1)),
      slave_(std::exchange(other.slave_, -1)),
      path_(std::move(other.path_)) {}

PtyLine::~PtyLine() {
    if (slave_ >= 0) ::close(slave_);
    if (master_ >= 0) ::close(master_);
}

std::optional<PtyLine> PtyLine::open(std::string& error) {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master < 0) {
        error = system_error("no pseudo-terminal");
        return std::nullopt;
    }
    PtyLine line(master, -1, {});
    std::array<char, 128> name{};
    if (grantpt(master) != 0 || unlockpt(master) != 0 ||
        ptsname_r(master, name.data(), name.size()) != 0) {
        error = system_error("the pseudo-terminal can't be unlocked");
        return std::nullopt;
    }
    line.path_ = name.data();
    line.slave_ = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (line.slave_ < 0 || !make_raw(line.slave_)) {
        error = system_error(line.path_);
        return std::nullopt;
    }
    return line;
}

std::vector<std::uint8_t> PtyLine::read() {
    std::vector<std::uint8_t> bytes(kReadSize);
    const ssize_t count = ::read(master_, bytes.data(), bytes.size());
    // Nothing there, interrupted, or for a moment nobody at the other end: all the same here.
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
}

void PtyLine::write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(master_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

void PtyLine::release_claim() {
    ioctl(slave_, TIOCNXCL);
}

std::optional<std::string> make_link(const std::filesystem::path& link, const std::string& target) {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(link, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_symlink(status)) {
        return fmt::format("{}: is there already and is no link", link.string());
    }
    std::filesystem::path beside = link;
    beside += fmt::format(".{}", getpid());
    std::filesystem::create_symlink(target, beside, error);
    if (!error) std::filesystem::rename(beside, link, error);
    if (!error) return std::nullopt;
    const std::string what = fmt::format("{}: {}", link.string(), error.message());
    std::filesystem::remove(beside, error);
    return what;
}

void remove_link(const std::filesystem::path& link, const std::string& target) {
    std::error_code error;
    if (std::filesystem::read_symlink(link, error) == target && !error) {
        std::filesystem::remove(link, error);
    }
}

}  // namespace servo::sim
