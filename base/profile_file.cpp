#include "base/profile_file.h"

#include <algorithm>
#include <system_error>

#include "base/ascii.h"
#include "base/file.h"
#include "base/gbk.h"

namespace servo::base {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trim_right(std::string_view text) {
    while (!text.empty() && is_blank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view trim(std::string_view text) {
    while (!text.empty() && is_blank(text.front()))
        text.remove_prefix(1);
    return trim_right(text);
}

// Without regard to the case of letters. The second byte of a Chinese character may be a letter's
// code and is compared as it stands.
bool same_key(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    bool second_byte = false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (second_byte ? a[i] != b[i] : ascii_lower(a[i]) != ascii_lower(b[i])) return false;
        second_byte = !second_byte && static_cast<unsigned char>(a[i]) > 0x80;
    }
    return true;
}

// What a name or value may hold: a text ends at its NUL, and a line end would make a second line.
std::string_view one_line(std::string_view text) {
    using namespace std::literals;
    return text.substr(0, text.find_first_of("\0\r\n"sv));
}

enum class LineKind { kOther, kSection, kKey };

// One line of the file. Lines end with CR LF, with LF or with CR alone.
struct Line {
    LineKind kind = LineKind::kOther;  // blank lines, comments and text without "=" are "other"
    bool blank = false;
    std::size_t begin = 0;
    std::size_t end = 0;   // of its text
    std::size_t next = 0;  // where the next line begins
    std::string_view name;
    std::string_view value;       // untrimmed
    std::size_t value_begin = 0;  // position of `value` in the file
};

class Lines {
  public:
    explicit Lines(std::string_view content) : content_(content) {}

    bool next(Line& line) {
        if (at_ >= content_.size()) return false;
        line = Line{};
        line.begin = at_;
        line.end = std::min(content_.find_first_of(kLineEnd, at_), content_.size());
        line.next = std::min(line.end + 1, content_.size());
        if (content_.substr(line.end, 2) == kLineEnd) ++line.next;
        at_ = line.next;
        classify(line);
        return true;
    }

  private:
    void classify(Line& line) const {
        const std::string_view text = content_.substr(line.begin, line.end - line.begin);
        const std::string_view inner = trim(text);
        line.blank = inner.empty();
        if (line.blank || inner.front() == ';') return;
        if (inner.front() == '[') {
            const std::size_t close = gbk_find(inner, ']');
            if (close != std::string_view::npos) {
                line.kind = LineKind::kSection;
                line.name = trim(inner.substr(1, close - 1));
                return;
            }
        }
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) return;
        line.kind = LineKind::kKey;
        line.name = trim(text.substr(0, equals));
        line.value = text.substr(equals + 1);
        line.value_begin = line.begin + equals + 1;
    }

    std::string_view content_;
    std::size_t at_ = 0;
};

// A section as far as one call needs it.
struct Section {
    bool found = false;
    std::size_t begin = 0;     // of its heading
    std::size_t end = 0;       // behind its last line
    std::size_t last_end = 0;  // behind its last line that is not blank
    bool key_found = false;
    Line key;
};

Section find_section(std::string_view content, std::string_view name,
                     std::optional<std::string_view> key) {
    Section section;
    Lines lines(content);
    for (Line line; lines.next(line);) {
        if (line.kind == LineKind::kSection) {
            if (section.found) return section;
            if (!same_key(line.name, name)) continue;
            section.found = true;
            section.begin = line.begin;
        }
        if (!section.found) continue;
        section.end = line.next;
        if (!line.blank) section.last_end = line.next;
        if (line.kind == LineKind::kKey && key && !section.key_found && same_key(line.name, *key)) {
            section.key_found = true;
            section.key = line;
        }
    }
    return section;
}

std::string_view unquoted(std::string_view value) {
    value = trim(value);
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.front() == value.back()) {
        return value.substr(1, value.size() - 2);
    }
    return value;
}

std::string cut(std::string_view text, std::size_t size, std::size_t reserved) {
    return std::string(text.substr(0, size > reserved ? size - reserved : 0));
}

// Names of all sections, or of all keys of the first section of that name, each with its NUL. The
// buffer ends with two of them, hence the cut at two less than its size.
std::string name_list(std::string_view content, std::optional<std::string_view> section,
                      std::size_t size) {
    std::string list;
    bool inside = false;
    bool over = false;
    Lines lines(content);
    for (Line line; !over && lines.next(line);) {
        bool take = false;
        if (line.kind == LineKind::kSection) {
            over = inside;
            inside = section && !inside && same_key(line.name, *section);
            take = !section;
        } else {
            take = inside && line.kind == LineKind::kKey;
        }
        // A name of no length would read as the end of the list.
        if (take && !line.name.empty()) list.append(line.name).push_back('\0');
    }
    return cut(list, size, 2);
}

void append_line(std::string& out, std::string_view key, std::string_view value) {
    out.append(key).append("=").append(value).append(kLineEnd);
}

void end_last_line(std::string& out) {
    if (!out.empty() && out.back() != '\r' && out.back() != '\n') out.append(kLineEnd);
}

}  // namespace

std::string profile_lookup(std::string_view content, std::optional<std::string_view> section,
                           std::optional<std::string_view> key, std::string_view fallback,
                           std::size_t size) {
    if (!section) return name_list(content, std::nullopt, size);
    const std::string_view name = trim(*section);
    if (key) key = trim(*key);
    const Section found = find_section(content, name, key);
    if (found.found && !key) return name_list(content, name, size);
    if (found.key_found) return cut(one_line(unquoted(found.key.value)), size, 1);
    return cut(trim_right(fallback), size, 1);
}

std::string profile_replace(std::string_view content, std::string_view section,
                            std::optional<std::string_view> key,
                            std::optional<std::string_view> value) {
    const std::string_view name = trim(one_line(section));
    if (key) key = trim(one_line(*key));
    if (value) value = one_line(*value);
    const Section found = find_section(content, name, key);

    std::string out;
    if (!key || !value) {  // removal of the section or of the key
        std::size_t begin = content.size();
        std::size_t end = content.size();
        if (!key && found.found) begin = found.begin, end = found.end;
        if (key && found.key_found) begin = found.key.begin, end = found.key.next;
        return out.append(content.substr(0, begin)).append(content.substr(end));
    }
    if (found.key_found) {
        // The name stays as it is spelt in the file, and so does the line's end.
        return out.append(content.substr(0, found.key.value_begin))
            .append(*value)
            .append(content.substr(found.key.end));
    }
    out.append(content.substr(0, found.found ? found.last_end : content.size()));
    end_last_line(out);
    if (!found.found) out.append("[").append(name).append("]").append(kLineEnd);
    append_line(out, *key, *value);
    if (found.found) out.append(content.substr(found.last_end));
    return out;
}

std::string get_profile_string(const std::filesystem::path& file,
                               std::optional<std::string_view> section,
                               std::optional<std::string_view> key, std::string_view fallback,
                               std::size_t size) {
    const std::optional<std::string> content = read_file(file);
    if (!content) return cut(trim_right(fallback), size, 1);
    return profile_lookup(*content, section, key, fallback, size);
}

bool write_profile_string(const std::filesystem::path& file, std::string_view section,
                          std::optional<std::string_view> key,
                          std::optional<std::string_view> value) {
    const std::optional<std::string> old = read_file(file);
    if (!old) {
        // A file that is there but can't be read is not replaced by one with a single key.
        std::error_code error;
        if (std::filesystem::exists(file, error) || error) return false;
    }
    const std::string content = profile_replace(old.value_or(""), section, key, value);
    return content == old.value_or("") || write_file(file, content);
}

}  // namespace servo::base
