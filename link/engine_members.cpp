// The engine's members by name, as text: for walkthroughs and the dump of the whole state.
#include <algorithm>
#include <array>

#include "link/engine.h"

namespace servo::link {

namespace {

using Reader = std::string (*)(const Engine&);

struct Member {
    std::string_view name;
    Reader read;
};

std::string flag(bool value) {
    return value ? "-1" : "0";
}

template <auto Field>
std::string number(const Engine& engine) {
    return std::to_string(engine.state.*Field);
}

template <auto Field>
std::string counter(const Engine& engine) {
    return std::to_string(engine.counters.*Field);
}

template <auto Field>
std::string operand(const Engine& engine) {
    return std::to_string((engine.values().operands.*Field).value);
}

template <auto Field>
std::string seen(const Engine& engine) {
    return flag((engine.values().operands.*Field).seen);
}

using S = EngineState;
using O = FormulaOperands;
using C = LinkCounters;

constexpr std::array kMembers{
    Member{"timer1_in", number<&S::timer1_in>},
    Member{"sendmod", number<&S::sendmod>},
    Member{"Comm_Over_Time_Cnts", number<&S::Comm_Over_Time_Cnts>},
    Member{"miss_count", number<&S::miss_count>},
    Member{"channel", number<&S::channel>},
    Member{"InputLen", number<&S::InputLen>},
    Member{"Com_Change", number<&S::Com_Change>},
    Member{"status_lane", number<&S::status_lane>},
    Member{"sub_Pointer", number<&S::sub_Pointer>},
    Member{"rotation", number<&S::rotation>},
    Member{"page", number<&S::page>},
    Member{"allow_add_pointer", number<&S::allow_add_pointer>},
    Member{"Form_Now", number<&S::Form_Now>},
    Member{"Form_Last", number<&S::Form_Last>},
    Member{"g_FW_CRC_OK_overtimes", number<&S::g_FW_CRC_OK_overtimes>},
    Member{"io_refresh", number<&S::io_refresh>},
    Member{"last_write_key", number<&S::last_write_key>},
    Member{"str_read_step", number<&S::str_read_step>},
    Member{"str_read_step_bk", number<&S::str_read_step_bk>},
    Member{"segment_pace", number<&S::segment_pace>},
    Member{"is_access_str", number<&S::is_access_str>},
    Member{"str_temp_string", [](const Engine& e) { return e.state.str_temp_string; }},
    Member{"download_active", number<&S::download_active>},
    Member{"download_step", number<&S::download_step>},
    Member{"batch_mode", number<&S::batch_mode>},
    Member{"batch_warmup", number<&S::batch_warmup>},
    Member{"batch_row", number<&S::batch_row>},
    Member{"scanRequested", number<&S::scanRequested>},
    Member{"scanStep", number<&S::scanStep>},
    Member{"scopeState", number<&S::scopeState>},
    Member{"COMM_ID", [](const Engine& e) { return std::to_string(e.serial.COMM_ID); }},
    // The timer "Label1Timer".
    Member{"Interval", [](const Engine& e) { return std::to_string(e.timer().interval()); }},
    Member{"Enabled", [](const Engine& e) { return flag(e.timer().enabled()); }},
    // What the status lanes know; ".seen" is the known flag.
    Member{"64100320", operand<&O::o64100320>},
    Member{"64100320.seen", seen<&O::o64100320>},
    Member{"65100310", operand<&O::o65100310>},
    Member{"65100310.seen", seen<&O::o65100310>},
    Member{"30400710", operand<&O::o30400710>},
    Member{"30400710.seen", seen<&O::o30400710>},
    Member{"60F61310", operand<&O::o60F61310>},
    Member{"60F61310.seen", seen<&O::o60F61310>},
    Member{"60F61110", operand<&O::o60F61110>},
    Member{"60F61110.seen", seen<&O::o60F61110>},
    Member{"firmware_check", [](const Engine& e) { return e.values().firmware_check_text; }},
    Member{"firmware_check.seen",
           [](const Engine& e) { return flag(e.values().firmware_check_known); }},
    Member{"fault_word1", [](const Engine& e) { return e.values().fault_text1; }},
    Member{"fault_word2", [](const Engine& e) { return e.values().fault_text2; }},
    // Since the link was opened.
    Member{"ticks", counter<&C::ticks>},
    Member{"sends", counter<&C::sends>},
    Member{"answers", counter<&C::answers>},
    Member{"frames", counter<&C::frames>},
    Member{"misses", counter<&C::misses>},
    Member{"bad_checksum", counter<&C::bad_checksum>},
    Member{"foreign", counter<&C::foreign>},
};

constexpr auto kNames = [] {
    std::array<std::string_view, kMembers.size()> names{};
    std::transform(kMembers.begin(), kMembers.end(), names.begin(),
                   [](const Member& member) { return member.name; });
    return names;
}();

}  // namespace

std::span<const std::string_view> Engine::member_names() {
    return kNames;
}

std::optional<std::string> Engine::member(std::string_view name) const {
    const auto found = std::find_if(kMembers.begin(), kMembers.end(),
                                    [name](const Member& member) { return member.name == name; });
    if (found == kMembers.end()) return std::nullopt;
    return found->read(*this);
}

}  // namespace servo::link
