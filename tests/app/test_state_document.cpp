#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "app/state_document.h"

namespace servo::app {
namespace {

using Json = nlohmann::json;

StateDocument small_state() {
    StateDocument state;
    state.language = 0;
    state.title = "QRL Servo";
    state.toolbar = {{"newx", "newpic"}, {"commx", "CommOKpic"}};
    state.tooltips = {{"newx", "新建"}, {"commx", "通信设置"}};
    state.menus = {{"file", "文件&F", true, true}, {"reverse", "自动翻转模式", false, true}};
    state.engine = {{"Com_Change", std::int64_t{1}}, {"str_temp_string", std::string("V1")}};
    WindowState basic{"Basic", "基本操作", true, {}, {}};
    basic.controls.push_back({"textbox1", "TextBox", "12", true, false, {}, {}, {}});
    basic.controls.push_back({"Combo2",
                              "ComboBox",
                              "38400",
                              true,
                              true,
                              {},
                              std::vector<std::string>{"19200", "38400"},
                              1});
    basic.controls.push_back({"Check1(0)", "CheckBox", "0001", false, true, true, {}, {}});
    basic.grids.push_back(
        {"MSHFlexGrid1", {{"N", "Index"}, {"1*", "606000"}}, {{1, 1, "#D1D8C8"}}});
    state.windows = {basic, WindowState{"About", "", false, {}, {}}};
    return state;
}

TEST(StateDocument, KeysStandAsTold) {
    const Json json = Json::parse(state_json(small_state()));
    EXPECT_EQ(json["language"], 0);
    EXPECT_EQ(json["title"], "QRL Servo");
    EXPECT_EQ(json["toolbar"]["commx"], "CommOKpic");
    EXPECT_EQ(json["tooltips"]["newx"], "新建");
    EXPECT_EQ(json["menus"]["reverse"],
              (Json{{"caption", "自动翻转模式"}, {"visible", false}, {"enabled", true}}));
    EXPECT_EQ(json["engine"]["Com_Change"], 1);
    EXPECT_EQ(json["engine"]["str_temp_string"], "V1");
}

TEST(StateDocument, WindowsAreAListInTheirOrder) {
    const Json json = Json::parse(state_json(small_state()));
    ASSERT_EQ(json["windows"].size(), 2U);
    EXPECT_EQ(json["windows"][0]["name"], "Basic");
    EXPECT_EQ(json["windows"][1]["name"], "About");
    EXPECT_TRUE(json["windows"][1]["controls"].is_object());
    EXPECT_TRUE(json["windows"][1]["grids"].is_object());
    EXPECT_TRUE(json["windows"][1]["colors"].is_object());
}

TEST(StateDocument, ControlsHaveCheckedItemsAndCurrentOnlyWhereTheyApply) {
    const Json controls = Json::parse(state_json(small_state()))["windows"][0]["controls"];
    EXPECT_EQ(controls["textbox1"],
              (Json{{"type", "TextBox"}, {"text", "12"}, {"enabled", true}, {"visible", false}}));
    EXPECT_EQ(controls["Combo2"]["items"], (Json{"19200", "38400"}));
    EXPECT_EQ(controls["Combo2"]["current"], 1);
    EXPECT_EQ(controls["Check1(0)"]["text"], "0001");
    EXPECT_EQ(controls["Check1(0)"]["checked"], true);
}

TEST(StateDocument, GridsHoldAllRowsAndColorsTheMarkedCells) {
    const Json window = Json::parse(state_json(small_state()))["windows"][0];
    EXPECT_EQ(window["grids"]["MSHFlexGrid1"], Json::parse(R"([["N","Index"],["1*","606000"]])"));
    EXPECT_EQ(window["colors"]["MSHFlexGrid1"], Json::parse(R"([[1,1,"#D1D8C8"]])"));
}

TEST(StateDocument, BrokenTextIsShownAndNeverFails) {
    StateDocument state;
    state.title = "a\xFF";
    EXPECT_EQ(Json::parse(state_json(state))["title"], "a\xEF\xBF\xBD");
}

TEST(StateDocument, MembersOfTheEngineAsText) {
    EXPECT_EQ(engine_text(std::int64_t{-1}), "-1");
    EXPECT_EQ(engine_text(std::string("abc")), "abc");
}

}  // namespace
}  // namespace servo::app
