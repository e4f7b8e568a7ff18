#include "app/project_file.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "base/file.h"
#include "base/gbk.h"
#include "base/number.h"

namespace servo::app {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

void append_cell(std::string& text, std::string_view cell) {
    const auto is_break = [](char c) { return c == '\r' || c == '\n'; };
    std::ranges::replace_copy_if(cell, std::back_inserter(text), is_break, ' ');
}

// The first three fields of a row; nothing when there are fewer.
std::optional<ProjectRow> split_row(std::string_view line) {
    const std::size_t first = line.find(',');
    if (first == std::string_view::npos) return std::nullopt;
    const std::size_t second = line.find(',', first + 1);
    if (second == std::string_view::npos) return std::nullopt;
    const std::size_t third = line.find(',', second + 1);
    return ProjectRow{std::string(line.substr(0, first)),
                      std::string(line.substr(first + 1, second - first - 1)),
                      std::string(line.substr(second + 1, third - second - 1))};
}

class Reader {
  public:
    explicit Reader(std::span<const ProjectPlace> windows) : windows_(windows) {}

    // False when the reading stops at this line.
    bool read(std::string_view line) {
        if (line.find('[') != std::string_view::npos) {
            read_section(line);
            return true;
        }
        return read_row(line);
    }

    void end_of_file() { show_open_section(); }
    void stop() { reading_.stopped = true; }
    ProjectReading take() { return std::move(reading_); }

  private:
    void read_section(std::string_view line) {
        show_open_section();
        kept_ = false;
        std::string name(line);
        std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
        const std::optional<std::size_t> window = find(name);
        if (!window) return;
        if (name == kPositionTableName || name == kBrowserName) {
            show(*window);
            kept_ = true;
        } else if (windows_[*window].has_grid) {
            open_section(*window);
        } else {
            show(*window);
        }
    }

    bool read_row(std::string_view line) {
        if (!in_section_ || kept_) return true;
        std::optional<ProjectRow> row = split_row(line);
        if (!row) return false;
        reading_.rows[section_].rows.push_back(std::move(*row));
        return true;
    }

    std::optional<std::size_t> find(std::string_view name) const {
        for (std::size_t i = 0; i + 1 < windows_.size(); ++i)
            if (windows_[i].name == name) return i;
        return std::nullopt;
    }

    void open_section(std::size_t window) {
        in_section_ = true;
        const auto found = std::ranges::find(reading_.rows, window, &ProjectReading::Rows::window);
        section_ = static_cast<std::size_t>(found - reading_.rows.begin());
        if (found == reading_.rows.end())
            reading_.rows.push_back({window, {}});
        else
            found->rows.clear();
    }

    void show_open_section() {
        if (in_section_) show(reading_.rows[section_].window);
    }

    // A window that is shown twice only comes to the top again, so its last time counts.
    void show(std::size_t window) {
        std::erase(reading_.shown, window);
        reading_.shown.push_back(window);
    }

    std::span<const ProjectPlace> windows_;
    ProjectReading reading_;
    bool in_section_ = false;  // never clear again once a section has opened a grid
    std::size_t section_ = 0;  // position in reading_.rows of the grid that rows go to
    bool kept_ = false;        // below a section whose window keeps what it holds
};

}  // namespace

std::string project_bytes(std::span<const ProjectSection> sections) {
    std::string text;
    for (const ProjectSection& section : sections) {
        text.append("[").append(section.window).append("]").append(kLineEnd);
        for (const ProjectRow& row : section.rows) {
            append_cell(text, row.key);
            text += ',';
            append_cell(text, row.value);
            text += ',';
            append_cell(text, row.unit);
            text += kLineEnd;
        }
    }
    return base::utf8_to_gbk(text);
}

ProjectReading read_project(std::string_view bytes, std::span<const ProjectPlace> windows) {
    Reader reader(windows);
    base::LineReader lines(bytes);
    while (const auto line = lines.next()) {
        // As characters, not bytes: the second byte of a Chinese one may look like a bracket.
        if (reader.read(base::gbk_to_utf8(*line))) continue;
        reader.stop();
        return reader.take();
    }
    reader.end_of_file();
    return reader.take();
}

dictionary::Identity project_key(std::string_view field) {
    const double number = base::scan_hex(field);
    using Limits = std::numeric_limits<dictionary::Identity>;
    if (number < Limits::min() || number > Limits::max()) return 0;
    return static_cast<dictionary::Identity>(number);
}

}  // namespace servo::app
