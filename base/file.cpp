#include "base/file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include "base/ascii.h"

namespace servo::base {

namespace {

// A save asks the disk in pieces of this size.
constexpr std::size_t kChunk = 16 * 1024;

// Whole files are read in pieces of this size.
constexpr std::size_t kPiece = 64 * 1024;

// Names tried for the temporary file; a crash may leave one behind.
constexpr int kTemporaryNames = 1000;

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    int number() const { return number_; }
    bool is_open() const { return number_ >= 0; }
    void reset(int number) {
        close();
        number_ = number;
    }
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

// Counts the system calls of one save for the hook.
class Calls {
  public:
    explicit Calls(const WriteFault& fault) : fault_(fault) {}
    bool may_go_on() { return !fault_ || fault_(count_++); }

  private:
    const WriteFault& fault_;
    std::size_t count_ = 0;
};

bool write_all(int file, std::string_view bytes, Calls& calls) {
    while (!bytes.empty()) {
        if (!calls.may_go_on()) return false;
        const ssize_t written = ::write(file, bytes.data(), std::min(bytes.size(), kChunk));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool write_straight(const std::filesystem::path& file, std::string_view bytes, Calls& calls) {
    if (!calls.may_go_on()) return false;
    Descriptor out(::open(file.c_str(), O_WRONLY | O_CLOEXEC));
    return out.is_open() && write_all(out.number(), bytes, calls) && calls.may_go_on() &&
           out.close();
}

// Opens a new file beside `file`; its path comes back in `temporary`.
int open_beside(const std::filesystem::path& file, std::filesystem::path& temporary) {
    for (int i = 0; i < kTemporaryNames; ++i) {
        temporary = file;
        temporary.replace_filename(fmt::format(".{}.{}.tmp", file.filename().string(), i));
        const int number = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (number >= 0 || errno != EEXIST) return number;
    }
    return -1;
}

bool fill_and_rename(Descriptor& out, const std::filesystem::path& temporary,
                     const std::filesystem::path& file, std::string_view bytes, Calls& calls) {
    if (!write_all(out.number(), bytes, calls)) return false;
    if (!calls.may_go_on() || ::fsync(out.number()) != 0) return false;
    if (!calls.may_go_on() || !out.close()) return false;
    return calls.may_go_on() && ::rename(temporary.c_str(), file.c_str()) == 0;
}

// So that the new name outlives a power cut. The file is whole either way, and some file systems
// refuse this, hence no result.
void flush_folder(const std::filesystem::path& folder) {
    const Descriptor opened(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.is_open()) ::fsync(opened.number());
}

std::filesystem::path find_entry(const std::filesystem::path& folder, std::string_view name) {
    std::filesystem::path exact = folder / name;
    std::error_code error;
    if (std::filesystem::exists(exact, error)) return exact;
    std::string best;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::string other = entry->path().filename().string();
        if (same_name(other, name) && (best.empty() || other < best)) best = std::move(other);
    }
    return best.empty() ? exact : folder / best;
}

}  // namespace

std::optional<std::string> read_file(const std::filesystem::path& file) {
    std::string bytes;
    const bool whole = read_pieces(file, kPiece, [&](std::string_view piece) { bytes += piece; });
    if (!whole) return std::nullopt;
    return bytes;
}

bool read_pieces(const std::filesystem::path& file, std::size_t size,
                 const std::function<void(std::string_view piece)>& take) {
    const Descriptor in(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!in.is_open()) return false;
    const auto room = std::make_unique_for_overwrite<char[]>(size);
    std::size_t filled = 0;
    for (;;) {
        const ssize_t got = ::read(in.number(), room.get() + filled, size - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        filled += static_cast<std::size_t>(got);
        // A short read is no end: pipes and the kernel's own files give what they have.
        if (filled == size || (got == 0 && filled > 0)) {
            take({room.get(), filled});
            filled = 0;
        }
        if (got == 0) return true;
    }
}

bool write_file(const std::filesystem::path& file, std::string_view bytes,
                const WriteFault& fault) {
    Calls calls(fault);
    std::error_code error;
    std::filesystem::path target = std::filesystem::canonical(file, error);
    if (error) target = file;
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) return write_straight(target, bytes, calls);

    if (!calls.may_go_on()) return false;
    std::filesystem::path temporary;
    Descriptor out(open_beside(target, temporary));
    if (!out.is_open()) return false;
    // A file system without permissions refuses; the save is worth more than the bits.
    if (exists) static_cast<void>(::fchmod(out.number(), old.st_mode & 07777));
    if (!fill_and_rename(out, temporary, target, bytes, calls)) {
        out.close();
        ::unlink(temporary.c_str());
        return false;
    }
    flush_folder(target.parent_path());
    return true;
}

std::optional<std::string_view> LineReader::next() {
    if (rest_.empty()) return std::nullopt;
    const std::size_t end = rest_.find('\n');
    std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

std::filesystem::path find_in(const std::filesystem::path& folder, std::string_view name) {
    std::filesystem::path at = folder;
    while (!name.empty()) {
        const std::size_t slash = name.find_first_of("/\\");
        const std::string_view part = name.substr(0, slash);
        if (!part.empty()) at = find_entry(at, part);
        name.remove_prefix(slash == std::string_view::npos ? name.size() : slash + 1);
    }
    return at;
}

}  // namespace servo::base
