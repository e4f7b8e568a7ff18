#include "tools/fault_table.h"

#include <fmt/format.h>

#include <array>

namespace servo::tools {

namespace {

constexpr std::array<Fault, kFaultBits> kFaults{{
    // Word 1
    {{"扩展错误", "Extended error"},
     {"扩展故障字 2603 中的某一故障已发生。",
      "One of the faults of the extended fault word 2603 has come up."},
     {"在“历史故障”页读取 2603。各位：0 电流传感器零点，1 电机堵转，2 换相自检，3 失速，4 "
      "通信中断，5 断线，6 找原点失败，7 超速（2130:09），8 编码器电池，9 参数版本。",
      "Read 2603 on the page Error History. Its bits: 0 current sensor zero, 1 motor stalled, 2 "
      "commutation check, 3 loss of control, 4 connection lost, 5 wire break, 6 homing failed, 7 "
      "over-speed (2130:09), 8 encoder battery, 9 parameter version."}},
    {{"编码器ABZ故障或通信故障", "Encoder ABZ or encoder communication"},
     {"编码器电缆断线、接触不良，编码器无电源，干扰，或编码器类型 6410:02 设置错误。",
      "Broken or loose encoder cable, an encoder without supply, interference, or the wrong "
      "encoder type in 6410:02."},
     {"检查插头、编码器电源、屏蔽层和电缆长度；核对 6410:02；更换电缆试验；仍报警时更换电机。",
      "Check plugs, the encoder's supply, shield and length of the cable; compare 6410:02; try "
      "another cable; if it stays, replace the motor."}},
    {{"编码器UVW故障或内部故障", "Encoder UVW or Encoder\ninternal"},
     {"换相信号 U、V、W 缺失或顺序错误，或编码器报告内部错误。",
      "A commutation signal (U, V, W) is missing or out of order, or the encoder reports a fault "
      "of its own."},
     {"检查 U、V、W 接线；核对励磁模式 6410:05；断电重启；仍报警时更换电机。",
      "Check the U, V, W wires; compare the commutation mode 6410:05; switch off and on; if it "
      "stays, replace the motor."}},
    {{"编码器计数错误或CRC错误", "Encoder counting or Encoder\n CRC"},
     {"编码器信号受干扰，每转计数与分辨率不符，或通信校验错误。",
      "Interference on the encoder's signals, counts per turn that do not fit the resolution, or "
      "check errors of its protocol."},
     {"动力线与编码器线分开走线，屏蔽层两端接地；核对编码器分辨率 6410:03。",
      "Lay power and encoder cables apart, ground the shield at both ends; compare the resolution "
      "in 6410:03."}},
    {{"Driver Over Temperature", "Driver Over Temperature"},
     {"驱动器功率部分的温度高于 6510:0D：环境温度高、风道堵塞或长期过载。",
      "The power stage is hotter than 6510:0D: hot surroundings, a blocked air path, or overload "
      "for long."},
     {"清洁风道，检查风扇，降低负载或延长加减速时间；冷却后复位。",
      "Clean the air path, check the fan, reduce load or ramps; reset when it has cooled down."}},
    {{"驱动器总线电压过高", "Bus voltage too high"},
     {"母线电压高于 6510:05：减速时能量回馈，制动电阻缺失或阻值过大，或输入电压过高。",
      "The bus is above 6510:05: energy comes back while braking and the brake resistor is missing "
      "or too large, or the supply is too high."},
     {"接入合适的制动电阻并设置 6510:07 至 6510:09；延长减速时间；测量输入电压。",
      "Fit a suitable brake resistor and enter it in 6510:07 to 6510:09; brake more slowly; "
      "measure the supply."}},
    {{"驱动器总线电压过低", "Bus voltage too low"},
     {"使能时母线电压低于 6510:06：主电源断开、缺相或太弱。",
      "The bus is below 6510:06 while the drive is enabled: the supply is off, lacks a phase, or "
      "is too weak."},
     {"检查主电源、接触器和熔断器；核对供电类型 6510:15；主电源接通后再使能。",
      "Check supply, contactor and fuses; compare the kind of supply in 6510:15; enable only when "
      "the supply is on."}},
    {{"驱动器输出短路", "Output short circuit"},
     {"电机线短路、对地短路，或功率部分损坏。",
      "A short circuit in the motor cable or motor, also to earth, or a damaged power stage."},
     {"不要立即再次使能：断电后拆下电机线，测量相间和对地绝缘；不接电机时仍报警则更换驱动器。",
      "Do not enable again at once: switch off, take the motor cable off and measure between its "
      "wires and to earth; if the fault comes without a motor, replace the drive."}},
    {{"驱动器制动电阻异常", "Brake resistor"},
     {"制动电阻超过其功率，断线，或参数与实物不符。",
      "The brake resistor has more power to bear than it can, is broken, or its data are wrong."},
     {"检查电阻及 6510:07 至 6510:09；观察其负荷 6510:0F；选用功率更大的电阻，或减少制动。",
      "Check the resistor and 6510:07 to 6510:09; watch its load in 6510:0F; use one for more "
      "power, or brake less."}},
    {{"实际跟踪误差超过允许", "Following error"},
     {"跟踪误差大于 6065 的时间超过 6066：机械卡住、增益过低、电流受限或指令太快。",
      "The following error was beyond 6065 for longer than 6066: something is stuck, gains are too "
      "low, the current is limited, or the command is too fast."},
     {"用示波器观察误差和电流；检查机械；调整增益和前馈；允许较大误差时才增大 6065。",
      "Watch error and current on the scope; check the mechanics; tune gains and feed-forward; "
      "raise 6065 only if a larger error is wanted."}},
    {{"逻辑电压", "Logic voltage"},
     {"控制电源（24 V）低于允许值。", "The logic supply (24 V) is below its limit."},
     {"观察 6510:14；在抱闸和输出接通时测量驱动器端子上的 24 V；换用更大的电源或更粗的电线。",
      "Watch 6510:14; measure the 24 V at the drive's plug while brake and outputs are on; use a "
      "stronger supply or thicker wires."}},
    {{"I^2*T故障", "I^2*T"},
     {"电流长时间高于额定值：过载、卡住、抱闸未打开，或额定电流 6410:08 设置过低。",
      "The current was above the rated one for too long: overload, something stuck, a brake that "
      "is still closed, or a rated current 6410:08 that is set too low."},
     {"检查负载和抱闸；按铭牌核对 6410:08 和 6410:09；延长加减速时间；冷却后复位。",
      "Check load and brake; compare 6410:08 and 6410:09 with the motor's plate; use longer ramps; "
      "reset when it has cooled down."}},
    {{"输入脉冲频率过高", "Input pulse frequency too high"},
     {"脉冲指令的频率高于 2040:0B，或受到干扰。",
      "The pulse command is faster than 2040:0B, or there is interference."},
     {"增大电子齿轮 2041、2042，降低脉冲频率；核对 2040:0B；使用屏蔽双绞线。",
      "Use a larger gear factor in 2041 and 2042 and a lower frequency; compare 2040:0B; use "
      "shielded twisted pairs."}},
    {{"电机温度过高", "Motor over temperature"},
     {"电机温度高于 6410:1E 或“电机故障”输入有效：过载、散热不良，或传感器接线错误。",
      "The motor is hotter than 6410:1E, or the input Motor Error is active: overload, bad "
      "cooling, or a sensor that is wired wrongly."},
     {"降低负载，改善散热；将 6410:20 与实际温度比较；检查传感器接线和 6410:1E。",
      "Reduce load, improve cooling; compare 6410:20 with how hot the motor really is; check the "
      "sensor's wires and 6410:1E."}},
    {{"电机励磁或编码器信息错误", "Motor Commutation or Encoder\n information"},
     {"换相角未找到，电机相序错误，或编码器中的电机信息与设置不符。",
      "The commutation angle was not found, motor phases are exchanged, or the motor data in the "
      "encoder differ from the settings."},
     {"检查电机相序；打开抱闸，核对 6410:05 至 6410:07 后重新励磁；核对电机代号 6410:01。",
      "Check the order of the phases; open the brake, compare 6410:05 to 6410:07 and let the motor "
      "commutate again; compare the motor code 6410:01."}},
    {{"EEPROM内部错误", "EEPROM internal"},
     {"存储的参数损坏，或存储器无法写入。",
      "Stored parameters are damaged, or the memory cannot be written."},
     {"核对并重新写入配置，存储后重启；程序不要周期性存储；重复出现时更换驱动器。",
      "Compare the configuration, write it again, store and restart; let no program store "
      "periodically; if it comes back, replace the drive."}},
    // Word 2
    {{"主编码器计数错误", "Main encoder counting"},
     {"主编码器两个索引信号之间的计数与分辨率不符：干扰，或 6410:03 设置错误。",
      "The counts between two index pulses of the main encoder do not fit its resolution: "
      "interference, or a wrong 6410:03."},
     {"检查其电缆和屏蔽；核对 6410:03；2100:0C 累计错误次数；6410:1D 开关此项检测。",
      "Check its cable and shield; compare 6410:03; 2100:0C counts the errors; 6410:1D switches "
      "this check."}},
    {{"主编码器ABZ故障", "Main encoder ABZ"},
     {"主编码器的 A、B 或 Z 信号缺失或太弱：断线、接触不良，或未供电。",
      "Signal A, B or Z of the main encoder is missing or too weak: a broken or loose wire, or no "
      "supply."},
     {"检查插头和编码器电源；正余弦编码器的幅值 2100:0B 应为 90 % 到 110 %。",
      "Check plug and supply; with a sine encoder the level 2100:0B is 90 to 110 % when all is "
      "well."}},
    {{"全闭环故障", "Full closed loop"},
     {"两个编码器位置之差大于 2100:05：打滑、方向相反，或分辨率错误。",
      "Motor and load encoder differ by more than 2100:05: slip, opposite direction, or a wrong "
      "resolution."},
     {"检查联轴器；核对 2100:02 和 2100:03；缓慢移动并观察 2100:09；不用时将 2100:04 设为 0。",
      "Check the coupling; compare 2100:02 and 2100:03; move slowly and watch 2100:09; set 2100:04 "
      "to 0 where it is not used."}},
    {{"CAN总线故障", "CAN bus"},
     {"总线断开、缺终端电阻、波特率不符，或主站掉线。",
      "The bus is broken, lacks its terminators, runs at another rate, or the master has gone."},
     {"断电测量终端电阻（共 60 欧）；核对波特率 2FE0 和节点号 2FE1；观察 2FE8、2FEB 和 2FEC。",
      "Measure the terminators with the power off (60 ohm together); compare rate 2FE0 and node "
      "number 2FE1; watch 2FE8, 2FEB and 2FEC."}},
    {{"SPI故障", "SPI"},
     {"驱动器内部通信错误。", "An error of the drive's internal communication."},
     {"断电重启；检查接地和屏蔽；重复出现时更换驱动器。",
      "Switch off and on; check earthing and shields; if it comes back, replace the drive."}},
    {{"负限位报错", "Negative limit switch"},
     {"轴碰到负限位且 2011:07 要求报故障，或限位断线（常闭触点）。",
      "The axis is on the negative limit switch and 2011:07 makes that a fault, or the wire "
      "(normally closed) is broken."},
     {"复位后向正方向移出；检查开关、输入极性和目标位置。",
      "Reset it and move away in the positive direction; check switch, polarity of the input and "
      "target."}},
    {{"正限位报错", "Positive limit switch"},
     {"轴碰到正限位且 2011:06 要求报故障，或限位断线（常闭触点）。",
      "The axis is on the positive limit switch and 2011:06 makes that a fault, or the wire "
      "(normally closed) is broken."},
     {"复位后向负方向移出；检查开关、输入极性和目标位置。",
      "Reset it and move away in the negative direction; check switch, polarity of the input and "
      "target."}},
    {{"预使能报警", "Pre-enable alarm"},
     {"使能后“预使能”输入没有在 2011:0D 的时间内有效。",
      "The input Pre Enable did not come within 2011:0D after enabling."},
     {"检查接线和给出该信号的设备；增大 2011:0D；不用时取消该输入功能。",
      "Check the wire and what gives the signal; raise 2011:0D; take the function off the input "
      "where it is not used."}},
    {{"STO2 Error", "STO2 Error"},
     {"安全转矩关断通道 2 断开，或与通道 1 不一致超过 0.5 秒。",
      "Channel 2 of safe torque off is open, or has differed from channel 1 for more than 0.5 s."},
     {"检查安全回路和接线，2011:0F 显示两通道；两通道须同时动作；2011:10 选择断开时是否报故障。",
      "Check the safety circuit and its wires, 2011:0F shows both channels; they have to switch "
      "together; 2011:10 chooses whether an open one is a fault."}},
    {{"STO1 Error", "STO1 Error"},
     {"安全转矩关断通道 1 断开，或与通道 2 不一致超过 0.5 秒。",
      "Channel 1 of safe torque off is open, or has differed from channel 2 for more than 0.5 s."},
     {"检查安全回路和接线，2011:0F 显示两通道；两通道须同时动作；2011:10 选择断开时是否报故障。",
      "Check the safety circuit and its wires, 2011:0F shows both channels; they have to switch "
      "together; 2011:10 chooses whether an open one is a fault."}},
    {{"逻辑输出故障", "Logic output"},
     {"数字输出短路或过载。", "A digital output is shorted or overloaded."},
     {"逐个拆下输出负载再复位，找出故障的一路；感性负载加续流二极管。",
      "Take the loads off one by one and reset, until the faulty one is found; put a diode across "
      "inductive loads."}},
    {{"电机配置错误", "Motor configuration"},
     {"电机参数 6410 缺失或相互矛盾。",
      "The motor data in 6410 are missing or contradict each other."},
     {"重新选择电机代号 6410:01，或按铭牌核对电机参数；存储电机参数后重启。",
      "Choose the motor code 6410:01 again, or compare the data with the motor's plate; store the "
      "motor parameters and restart."}},
    {{"MCU故障", "MCU"},
     {"处理器自检失败。", "The processor failed its own test."},
     {"断电重启；重复出现时更换驱动器。",
      "Switch off and on; if it comes back, replace the drive."}},
    {{"异常中断", "Unexpected interrupt"},
     {"固件执行异常，常由强干扰引起。",
      "The firmware ran astray, most often by strong interference."},
     {"断电重启；检查接地和屏蔽；更新固件；重复出现时更换驱动器。",
      "Switch off and on; check earthing and shields; update the firmware; if it comes back, "
      "replace the drive."}},
    {{"看门狗报错", "Watchdog"},
     {"固件未在规定时间内响应。", "The firmware did not answer in time."},
     {"断电重启；更新固件；重复出现时更换驱动器。",
      "Switch off and on; update the firmware; if it comes back, replace the drive."}},
    {{"电流传感器故障", "Current sensor"},
     {"电流零点偏移过大，或传感器损坏。",
      "The current's zero is too far off, or a sensor is damaged."},
     {"电机静止时断电重启；重复出现时更换驱动器。",
      "Switch off and on while the motor stands still; if it comes back, replace the drive."}},
}};

// What the reduced product calls some of them.
struct ReducedCaption {
    int fault;
    base::Text caption;
};
constexpr std::array<ReducedCaption, 6> kReducedCaptions{{
    {1, {"编码器未连接", "Encoder not connected"}},
    {2, {"编码器内部故障", "Encoder internal"}},
    {3, {"编码器CRC故障", "Encoder CRC"}},
    {4, {"驱动器温度过高", "Controller Temperature"}},
    {11, {"电机或控制器IIt故障", "Motor or Controller IIt"}},
    {14, {"编码器信息错误", "Encoder information"}},
}};

}  // namespace

std::span<const Fault, kFaultBits> fault_table() {
    return kFaults;
}

base::Text fault_caption(int fault, dictionary::Variant variant) {
    if (variant == dictionary::Variant::kReduced) {
        for (const ReducedCaption& renamed : kReducedCaptions)
            if (renamed.fault == fault) return renamed.caption;
    }
    return kFaults.at(static_cast<std::size_t>(fault)).caption;
}

std::string fault_caption_line(int fault, dictionary::Variant variant, base::Language language) {
    std::string line;
    for (const char character : fault_caption(fault, variant).in(language)) {
        const char next = character == '\n' ? ' ' : character;
        if (next != ' ' || !line.ends_with(' ')) line += next;
    }
    return line;
}

std::string fault_mask_text(int fault) {
    return fmt::format("{:04X}", fault_mask(fault));
}

}  // namespace servo::tools
