#include "app/state_document.h"

#include <nlohmann/json.hpp>

namespace servo::app {
namespace {

using Json = nlohmann::ordered_json;

Json control_json(const ControlState& control) {
    Json json{{"type", control.type},
              {"text", control.text},
              {"enabled", control.enabled},
              {"visible", control.visible}};
    if (control.checked) json["checked"] = *control.checked;
    if (control.items) json["items"] = *control.items;
    if (control.current) json["current"] = *control.current;
    return json;
}

Json window_json(const WindowState& window) {
    Json controls = Json::object();
    for (const ControlState& control : window.controls)
        controls[control.name] = control_json(control);
    Json grids = Json::object();
    Json colors = Json::object();
    for (const GridState& grid : window.grids) {
        grids[grid.name] = grid.rows;
        Json cells = Json::array();
        for (const CellColor& cell : grid.colors)
            cells.push_back(Json::array({cell.row, cell.column, cell.color}));
        colors[grid.name] = std::move(cells);
    }
    return Json{{"name", window.name},       {"caption", window.caption},
                {"visible", window.visible}, {"controls", std::move(controls)},
                {"grids", std::move(grids)}, {"colors", std::move(colors)}};
}

Json text_map(const std::vector<std::pair<std::string, std::string>>& pairs) {
    Json json = Json::object();
    for (const auto& [key, text] : pairs)
        json[key] = text;
    return json;
}

Json menus_json(const std::vector<MenuState>& menus) {
    Json json = Json::object();
    for (const MenuState& menu : menus)
        json[menu.item] =
            Json{{"caption", menu.caption}, {"visible", menu.visible}, {"enabled", menu.enabled}};
    return json;
}

Json engine_json(const EngineMembers& members) {
    Json json = Json::object();
    for (const auto& [name, value] : members) {
        if (const auto* number = std::get_if<std::int64_t>(&value))
            json[name] = *number;
        else
            json[name] = std::get<std::string>(value);
    }
    return json;
}

}  // namespace

std::string engine_text(const EngineValue& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    return std::get<std::string>(value);
}

std::string state_json(const StateDocument& state) {
    Json windows = Json::array();
    for (const WindowState& window : state.windows)
        windows.push_back(window_json(window));
    const Json json{{"language", state.language},         {"title", state.title},
                    {"toolbar", text_map(state.toolbar)}, {"tooltips", text_map(state.tooltips)},
                    {"menus", menus_json(state.menus)},   {"engine", engine_json(state.engine)},
                    {"windows", std::move(windows)}};
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace servo::app
