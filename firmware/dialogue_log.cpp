#include "firmware/dialogue_log.h"

#include <fmt/format.h>

#include "base/file.h"

namespace servo::firmware {

namespace {

constexpr std::size_t kShownBytes = 60;

std::string_view arrow(DialogueEntry::Kind kind) {
    switch (kind) {
        case DialogueEntry::Kind::kCommand:
        case DialogueEntry::Kind::kFrame:
            return "> ";
        case DialogueEntry::Kind::kReply:
            return "< ";
        case DialogueEntry::Kind::kEvent:
            return "";
    }
    return "";
}

// What the line carries is shown as plain ASCII, so that noise cannot garble the view.
std::string visible(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\r') {
            text += "<CR>";
        } else if (c == '\n') {
            text += "<LF>";
        } else if (byte < 0x20 || byte > 0x7E) {
            text += fmt::format("<{:02X}>", byte);
        } else {
            text += c;
        }
    }
    return text;
}

std::string hexadecimal(std::string_view bytes) {
    std::string text;
    for (const char c : bytes)
        text += fmt::format("{}{:02X}", text.empty() ? "" : " ", static_cast<unsigned char>(c));
    return text;
}

bool ends_line(std::string_view bytes) {
    return bytes.ends_with('\r') || bytes.ends_with('\n');
}

}  // namespace

void DialogueLog::begin(std::chrono::microseconds now) {
    start_ = now;
    entries_.clear();
    bytes_ = 0;
    dropped_ = 0;
    ++changes_;
    ++transfers_;
}

void DialogueLog::add(DialogueEntry::Kind kind, std::uint8_t step, std::string_view bytes,
                      std::chrono::microseconds now) {
    ++changes_;
    bytes_ += bytes.size();
    const bool goes_on = kind == DialogueEntry::Kind::kReply && !entries_.empty() &&
                         entries_.back().kind == kind && entries_.back().step == step &&
                         !ends_line(entries_.back().bytes);
    if (goes_on) {
        entries_.back().bytes += bytes;
    } else {
        entries_.push_back({now - start_, kind, step, std::string(bytes)});
    }
    while (bytes_ > kMaxBytes && entries_.size() > 1) {
        bytes_ -= entries_.front().bytes.size();
        entries_.pop_front();
        ++dropped_;
    }
}

std::string DialogueLog::text() const {
    std::string text;
    if (dropped_ > 0) text = fmt::format("({} earlier entries left out)\r\n", dropped_);
    for (const DialogueEntry& entry : entries_)
        text += shown_entry(entry, false) + "\r\n";
    return text;
}

bool DialogueLog::save(const std::filesystem::path& file) const {
    return base::write_file(file, text());
}

std::string shown_entry(const DialogueEntry& entry, bool shortened) {
    const double seconds = std::chrono::duration<double>(entry.at).count();
    const std::string head =
        fmt::format("{:10.3f} s  step {:<2}  {}", seconds, entry.step, arrow(entry.kind));
    const std::string_view bytes = entry.bytes;
    if (entry.kind == DialogueEntry::Kind::kEvent) return head + entry.bytes;
    if (entry.kind == DialogueEntry::Kind::kFrame) return head + hexadecimal(bytes);
    if (!shortened || bytes.size() <= kShownBytes) return head + visible(bytes);
    return fmt::format("{}{}... ({} bytes)", head, visible(bytes.substr(0, kShownBytes)),
                       bytes.size());
}

}  // namespace servo::firmware
