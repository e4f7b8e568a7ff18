// The shared members of the engine, by the names that windows, jobs and walkthroughs use for them.
// Flags are 16 bits with -1 for true where noted.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace servo::link {

inline constexpr std::int16_t kTrue = -1;
inline constexpr std::int16_t kMissLimit = 350;  // misses until the link is given up
inline constexpr std::int16_t kMissPause = 200;  // the miss at which the engine pauses, once
inline constexpr int kTickMilliseconds = 3;      // normal interval of "Label1Timer"
inline constexpr int kFrameReadLength = 10;      // InputLen in frame mode
inline constexpr int kTextReadLength = 60;       // InputLen while a job reads text

struct EngineState {
    // The tick.
    std::int16_t timer1_in = 0;  // -1 while a tick is running
    std::int32_t sendmod = 0;    // 0 send tick next, 1 receive tick next
    std::int16_t Comm_Over_Time_Cnts = kMissLimit;
    std::int16_t miss_count = 0;  // consecutive receive ticks without a valid frame
    std::uint8_t channel = 0;     // 0 serial line, 1 CAN
    std::uint8_t InputLen = kFrameReadLength;

    // The poller's wheel.
    std::int32_t Com_Change = 0;         // 0 status lanes, 1 page rows
    std::int32_t status_lane = 0;        // 0, 1, 2
    std::int16_t sub_Pointer = 0;        // position in the current list or page
    std::uint8_t rotation = 0;           // completed passes
    std::uint8_t page = 0;               // position in poll_windows
    std::uint8_t allow_add_pointer = 0;  // 1: the next send tick steps sub_Pointer first
    std::uint8_t Form_Now = 0;
    std::uint8_t Form_Last = 0;
    std::uint8_t g_FW_CRC_OK_overtimes = 0;  // rounds of lane 0 without the firmware check value
    std::int16_t io_refresh = 0;             // -1: one more pass of lane 1

    // Object access.
    std::int32_t last_write_key = -1;  // wire key of the last write; -1 when none is pending
    std::uint8_t str_read_step = 0;    // 0 none, 1 next request is 0x60, 2 it is 0x70
    std::uint8_t str_read_step_bk = 0;
    std::uint8_t segment_pace = 0;   // 0 to 3
    std::uint8_t is_access_str = 0;  // a string row is being read
    std::string str_temp_string;     // its characters so far (code-page bytes)

    // Selectors of the jobs.
    std::uint8_t download_active = 0;
    std::uint8_t download_step = 0;
    std::int32_t batch_mode = 0;  // 1, 2 configuration; 3, 4 position flow
    std::int32_t batch_warmup = 0;
    std::int32_t batch_row = 0;
    std::int16_t scanRequested = 0;  // -1 while the scan runs
    std::uint8_t scanStep = 0;
    std::int32_t scopeState = 0;  // 0 idle, 1 to 6
};

// The windows in the two orders that the engine keeps.
inline constexpr std::array<std::string_view, 40> kAllWindowNames{"AN_SPEED",
                                                                  "AN_Torque",
                                                                  "Auto_Reverse",
                                                                  "AutoTuning",
                                                                  "Basic",
                                                                  "CLoop",
                                                                  "DigitalIO",
                                                                  "Download",
                                                                  "Errors",
                                                                  "Driver_CFG",
                                                                  "Driver_Property",
                                                                  "F000",
                                                                  "F002",
                                                                  "F003",
                                                                  "F004",
                                                                  "F005",
                                                                  "Form1",
                                                                  "Homing",
                                                                  "InitSave",
                                                                  "Motor",
                                                                  "ObjectDictionay",
                                                                  "PD_MODE",
                                                                  "PLoop",
                                                                  "Pos_Table",
                                                                  "Speed_Table",
                                                                  "VLoop",
                                                                  "Scope",
                                                                  "imexport",
                                                                  "PosFlow",
                                                                  "Homing2",
                                                                  "About",
                                                                  "ErrorHistory",
                                                                  "TPDOSet",
                                                                  "RPDOSet",
                                                                  "ECANset",
                                                                  "RS485",
                                                                  "ADVtunner",
                                                                  "EASY1",
                                                                  "Motorcodes",
                                                                  "modbus"};

inline constexpr std::array<std::string_view, 29> kPollWindowNames{
    "AN_SPEED", "AN_Torque", "Auto_Reverse", "AutoTuning",
    "Basic",    "CLoop",     "Driver_CFG",   "Driver_Property",
    "F000",     "F002",      "F003",         "F004",
    "F005",     "Homing",    "Motor",        "PD_MODE",
    "PLoop",    "Pos_Table", "Speed_Table",  "VLoop",
    "Homing2",  "PosFlow",   "ErrorHistory", "ObjectDictionay",
    "TPDOSet",  "RPDOSet",   "ECANset",      "RS485",
    "Download"};

}  // namespace servo::link
