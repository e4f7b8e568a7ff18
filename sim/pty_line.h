// A pseudo-terminal as the drive's end of a serial line.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace servo::sim {

class PtyLine {
  public:
    // Nothing when the system gives none; `error` then says why.
    static std::optional<PtyLine> open(std::string& error);

    ~PtyLine();
    PtyLine(PtyLine&& other) noexcept;
    PtyLine& operator=(PtyLine&&) = delete;
    PtyLine(const PtyLine&) = delete;
    PtyLine& operator=(const PtyLine&) = delete;

    // The path that the other side opens.
    const std::string& path() const { return path_; }
    int descriptor() const { return master_; }

    // What has come in, empty when nothing has. The other side may close and open as it likes.
    std::vector<std::uint8_t> read();

    // What does not fit because nobody takes it is lost, as on a line without a listener.
    void write(std::span<const std::uint8_t> bytes);

    // Lets another program open the line although the last one claimed it for itself and died. To
    // be called when the line has been silent for long.
    void release_claim();

  private:
    PtyLine(int master, int slave, std::string path);

    int master_ = -1;
    int slave_ = -1;  // held open: with no slave at all the line would count as hung up
    std::string path_;
};

// Makes `link` a symbolic link to the line, in place of a link that is there already; anything else
// of that name stays. Gives what is wrong.
std::optional<std::string> make_link(const std::filesystem::path& link, const std::string& target);

// Takes the link away if it still leads there.
void remove_link(const std::filesystem::path& link, const std::string& target);

}  // namespace servo::sim
