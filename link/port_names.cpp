#include "link/port_names.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace servo::link {

namespace {

// Devices of a kind are numbered from 0 by the system. The first ten stand within the range that is
// probed when enumeration fails, COM1 to COM35; the others behind 100.
struct Kind {
    std::string_view stem;
    int first_ten;
    int beyond;
};

constexpr std::array kKinds{
    Kind{"/dev/ttyS", 1, 100},
    Kind{"/dev/ttyUSB", 11, 200},
    Kind{"/dev/ttyACM", 21, 300},
};

constexpr int kFirstGiven = 31;
constexpr int kOther = 1000;  // any other name: a hash of it behind this
constexpr unsigned kOtherCount = 9000;

std::optional<int> whole(std::string_view digits) {
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || end != digits.data() + digits.size() || number < 0)
        return std::nullopt;
    return number;
}

std::optional<int> numbered(std::string_view device) {
    for (const Kind& kind : kKinds) {
        if (!device.starts_with(kind.stem)) continue;
        const auto number = whole(device.substr(kind.stem.size()));
        if (!number || *number >= 100) return std::nullopt;
        return *number < 10 ? kind.first_ten + *number : kind.beyond + *number;
    }
    return std::nullopt;
}

std::optional<std::string> numbered_device(int number) {
    for (const Kind& kind : kKinds) {
        if (number >= kind.first_ten && number < kind.first_ten + 10)
            return std::string(kind.stem) + std::to_string(number - kind.first_ten);
        if (number >= kind.beyond + 10 && number < kind.beyond + 100)
            return std::string(kind.stem) + std::to_string(number - kind.beyond);
    }
    return std::nullopt;
}

// FNV-1a, since the number must be the same in every run and on every machine.
int hashed(std::string_view device) {
    std::uint32_t hash = 2166136261U;
    for (const char c : device)
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619U;
    return kOther + static_cast<int>(hash % kOtherCount);
}

}  // namespace

int port_number(std::string_view text) {
    if (text.size() <= 3) return 0;
    return whole(text.substr(3)).value_or(0);
}

std::string PortNames::give(const std::string& device) {
    if (!numbered(device) && std::find(given_.begin(), given_.end(), device) == given_.end())
        given_.push_back(device);
    return text_of(device);
}

void PortNames::found(std::string_view device) {
    if (!numbered(device) && std::find(found_.begin(), found_.end(), device) == found_.end())
        found_.emplace_back(device);
}

std::string PortNames::text_of(std::string_view device) const {
    int number = 0;
    if (const auto known = numbered(device)) {
        number = *known;
    } else if (const auto given = std::find(given_.begin(), given_.end(), device);
               given != given_.end()) {
        number = kFirstGiven + static_cast<int>(given - given_.begin());
    } else {
        number = hashed(device);
    }
    return "COM" + std::to_string(number);
}

std::optional<std::string> PortNames::device_of(std::string_view text) const {
    const int number = port_number(text);
    if (number <= 0) return std::nullopt;
    const auto place = static_cast<std::size_t>(number - kFirstGiven);
    if (number >= kFirstGiven && place < given_.size()) return given_[place];
    for (const std::string& device : found_)
        if (hashed(device) == number) return device;
    return numbered_device(number);
}

}  // namespace servo::link
