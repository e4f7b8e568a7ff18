#include "app/desk_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <system_error>

#include "base/file.h"

namespace servo::app {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::int64_t kFarthest = 100'000;
constexpr std::size_t kMostWindows = 100;
constexpr std::size_t kLongestName = 64;
constexpr std::size_t kLongestPath = 4096;
constexpr std::uintmax_t kLargestFile = 256 * 1024;

constexpr std::string_view kStateNames[] = {"normal", "minimized", "maximized"};

const Json* member(const Json& object, const char* name) {
    if (!object.is_object()) return nullptr;
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

std::optional<int> whole(const Json& object, const char* name, std::int64_t least) {
    const Json* value = member(object, name);
    if (value == nullptr || !value->is_number_integer()) return {};
    // Above what a signed number holds it wraps to a negative one, which is out of range as well.
    const auto number = value->get<std::int64_t>();
    const bool huge =
        value->is_number_unsigned() && value->get<std::uint64_t>() > std::uint64_t{kFarthest};
    if (huge || number < least || number > kFarthest) return {};
    return static_cast<int>(number);
}

// An unknown state counts as the normal one.
PlaceState state_of(const Json& object) {
    const Json* value = member(object, "state");
    if (value == nullptr || !value->is_string()) return PlaceState::kNormal;
    const auto& text = value->get_ref<const std::string&>();
    if (text == kStateNames[1]) return PlaceState::kMinimized;
    if (text == kStateNames[2]) return PlaceState::kMaximized;
    return PlaceState::kNormal;
}

std::optional<WindowPlace> place_of(const Json& object) {
    const auto x = whole(object, "x", -kFarthest);
    const auto y = whole(object, "y", -kFarthest);
    const auto width = whole(object, "width", 1);
    const auto height = whole(object, "height", 1);
    if (!x || !y || !width || !height) return {};
    return WindowPlace{{*x, *y}, {*width, *height}, state_of(object)};
}

Json place_json(const WindowPlace& place) {
    return {{"x", place.corner.x},
            {"y", place.corner.y},
            {"width", place.size.width},
            {"height", place.size.height},
            {"state", kStateNames[static_cast<std::size_t>(place.state)]}};
}

bool fits_path(std::string_view text) {
    return !text.empty() && text.size() <= kLongestPath &&
           text.find('\0') == std::string_view::npos;
}

void take_recent(const Json& list, std::vector<std::string>& recent) {
    if (!list.is_array()) return;
    for (const Json& entry : list) {
        if (recent.size() == kMostRecent) return;
        if (!entry.is_string()) continue;
        const auto& text = entry.get_ref<const std::string&>();
        if (fits_path(text) && std::ranges::find(recent, text) == recent.end())
            recent.push_back(text);
    }
}

}  // namespace

Desk parse_desk(std::string_view text) {
    Desk desk;
    // Without exceptions: what is no JSON becomes a discarded value, which has no members.
    const Json json = Json::parse(text, nullptr, false);
    if (const Json* main = member(json, "main")) desk.main = place_of(*main);
    if (const Json* windows = member(json, "windows"); windows != nullptr && windows->is_object())
        for (const auto& [name, entry] : windows->items()) {
            if (desk.windows.size() == kMostWindows) break;
            if (name.empty() || name.size() > kLongestName) continue;
            if (const auto place = place_of(entry)) desk.windows[name] = *place;
        }
    if (const Json* recent = member(json, "recent")) take_recent(*recent, desk.recent);
    return desk;
}

std::string desk_text(const Desk& desk) {
    Json json = Json::object();
    if (desk.main) json["main"] = place_json(*desk.main);
    Json windows = Json::object();
    for (const auto& [name, place] : desk.windows)
        windows[name] = place_json(place);
    json["windows"] = std::move(windows);
    json["recent"] = desk.recent;
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::filesystem::path desk_path(const std::filesystem::path& folder) {
    return base::find_in(base::find_in(folder, "sys"), "desk.json");
}

Desk load_desk(const std::filesystem::path& folder) {
    const std::filesystem::path file = desk_path(folder);
    std::error_code error;
    // A pipe or a device would wait for ever.
    if (!std::filesystem::is_regular_file(file, error)) return {};
    if (std::filesystem::file_size(file, error) > kLargestFile || error) return {};
    const auto text = base::read_file(file);
    return text ? parse_desk(*text) : Desk{};
}

bool save_desk(const std::filesystem::path& folder, const Desk& desk) {
    const std::filesystem::path file = desk_path(folder);
    const std::string text = desk_text(desk);
    std::error_code error;
    if (std::filesystem::is_regular_file(file, error) && base::read_file(file) == text) return true;
    return base::write_file(file, text);
}

}  // namespace servo::app
