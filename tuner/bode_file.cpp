#include "tuner/bode_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "base/decimal.h"
#include "base/file.h"
#include "base/number.h"
#include "tuner/analysis.h"

namespace servo::tuner {

namespace {

constexpr std::size_t kItems =
    10;  // of the first line: nine fields, and nothing behind the last ";"
constexpr int kMostPairs = (kResponseSize - 1) / 2;
constexpr std::string_view kSeparator = "##########";
constexpr std::string_view kEnd = "\r\n";

// --- Writing

void add_line(std::string& text, double number) {
    text += base::number_text(number);
    text += kEnd;
}

// Digits that give the same single again, so that a file read and written stays the same.
std::string single_text(float value) {
    if (std::trunc(value) == value) return base::number_text(value);
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    std::string text(digits.data(), end);
    std::ranges::replace(text, 'e', 'E');
    return text;
}

std::string first_line(const ScanSettings& settings) {
    std::string line;
    for (const std::string& field :
         {base::number_text(settings.startFreq), base::number_text(settings.stopFreq),
          base::number_text(settings.stepFreq), single_text(settings.velocityGain1),
          base::number_text(settings.magCurrent), base::number_text(settings.encoderCounts),
          base::number_text(settings.feedbackConstant), single_text(settings.velocityGain2),
          base::number_text(settings.scaleShift)})
        line += field + ';';
    return line;
}

// --- Reading

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const std::size_t last = text.find_last_not_of(kBlanks);
    return last == std::string_view::npos ? text : text.substr(0, last + 1);
}

// A damaged line is no 0: all of the text has to be a number, blanks around it aside.
std::optional<double> number_in(std::string_view text) {
    return base::decimal_number(trimmed(text));
}

template <typename Integer>
std::optional<Integer> to_integer(double value) {
    const std::int64_t whole = base::round_half_even(value);
    const auto narrow = static_cast<Integer>(whole);
    if (narrow != whole) return std::nullopt;
    return narrow;
}

template <typename Integer>
bool read_field(std::string_view text, Integer& field) {
    const auto number = number_in(text);
    if (!number) return false;
    const auto value = to_integer<Integer>(*number);
    if (value) field = *value;
    return value.has_value();
}

bool read_field(std::string_view text, float& field) {
    const auto number = number_in(text);
    if (!number || std::abs(*number) > std::numeric_limits<float>::max()) return false;
    field = static_cast<float>(*number);
    return true;
}

std::vector<std::string_view> split(std::string_view line, char separator) {
    std::vector<std::string_view> items;
    while (true) {
        const std::size_t end = line.find(separator);
        items.push_back(line.substr(0, end));
        if (end == std::string_view::npos) return items;
        line.remove_prefix(end + 1);
    }
}

std::optional<ScanSettings> read_settings(std::string_view line) {
    const std::vector<std::string_view> items = split(line, ';');
    if (items.size() != kItems) return std::nullopt;
    ScanSettings settings;
    const bool good =
        read_field(items[0], settings.startFreq) && read_field(items[1], settings.stopFreq) &&
        read_field(items[2], settings.stepFreq) && read_field(items[3], settings.velocityGain1) &&
        read_field(items[4], settings.magCurrent) && read_field(items[5], settings.encoderCounts) &&
        read_field(items[6], settings.feedbackConstant) &&
        read_field(items[7], settings.velocityGain2) && read_field(items[8], settings.scaleShift);
    return good ? std::optional(settings) : std::nullopt;
}

bool length_fits(std::string_view line, int count) {
    const std::vector<std::string_view> items = split(line, ' ');
    return items.size() == 2 && number_in(items[1]) == static_cast<double>(count);
}

// Lines of one number each, in pairs.
class PairReader {
  public:
    explicit PairReader(base::LineReader& lines) : lines_(lines) {}

    // The two values of which 2a + b and 2b + a stand there.
    template <typename Integer>
    bool read(Integer& a, Integer& b) {
        const auto x = next();
        const auto y = next();
        if (!x || !y) return false;
        const auto first = to_integer<Integer>((2 * *x - *y) / 3);
        const auto second = to_integer<Integer>((2 * *y - *x) / 3);
        if (!first || !second) return false;
        a = *first;
        b = *second;
        return true;
    }

  private:
    std::optional<double> next() {
        const auto line = lines_.next();
        return line ? number_in(*line) : std::nullopt;
    }

    base::LineReader& lines_;
};

bool read_blocks(base::LineReader& lines, ScanBuffers& buffers) {
    PairReader pairs(lines);
    const auto count = static_cast<std::size_t>(std::max<int>(buffers.pointCount, 0));
    for (std::size_t i = 0; i < count; ++i)
        if (!pairs.read(buffers.commandA[i], buffers.commandB[i])) return false;
    if (!lines.next()) return false;  // the separator; what it is nobody asks
    // The second of a pair comes first here.
    for (std::size_t i = 0; i < count; ++i)
        if (!pairs.read(buffers.response[2 * i + 1], buffers.response[2 * i])) return false;
    return true;
}

// What the analysis divides by, and how far its numbers go, is part of what makes a file right.
bool can_be_analysed(const ScanSettings& settings, const ScanBuffers& buffers) {
    const auto analysis = std::make_unique<Analysis>();
    return FirstAnalyse(settings, buffers, *analysis);
}

}  // namespace

std::string write_bode(const ScanSettings& settings, const ScanBuffers& buffers) {
    std::string text = first_line(settings);
    text += kEnd;
    text += "length " + base::number_text(buffers.pointCount);
    text += kEnd;
    const auto count = static_cast<std::size_t>(std::clamp<int>(buffers.pointCount, 0, kMostPairs));
    for (std::size_t i = 0; i < count; ++i) {
        add_line(text, 2.0 * buffers.commandA[i] + buffers.commandB[i]);
        add_line(text, 2.0 * buffers.commandB[i] + buffers.commandA[i]);
    }
    text += kSeparator;
    text += kEnd;
    for (std::size_t j = 0; j < 2 * count; j += 2) {
        add_line(text, 2.0 * buffers.response[j + 1] + buffers.response[j]);
        add_line(text, 2.0 * buffers.response[j] + buffers.response[j + 1]);
    }
    return text;
}

BodeReading read_bode(std::string_view bytes, ScanSettings& settings, ScanBuffers& buffers) {
    BodeReading reading;
    base::LineReader lines(bytes);
    const auto first = lines.next();
    const auto fields = first ? read_settings(*first) : std::nullopt;
    if (!fields) return reading;
    settings = *fields;
    reading.fields = true;
    // 501 points or more have more sums than the response block holds.
    const auto count = checked_point_count(settings);
    const bool fits = count && *count <= kMostPairs;
    buffers.pointCount = fits ? *count : std::int16_t{0};
    const auto length = lines.next();
    reading.length = fits && length && length_fits(*length, buffers.pointCount);
    if (!reading.length) return reading;
    reading.buffers = read_blocks(lines, buffers) && can_be_analysed(settings, buffers);
    return reading;
}

}  // namespace servo::tuner
