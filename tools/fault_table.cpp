#include "tools/fault_table.h"

#include <fmt/format.h>

#include <array>

namespace servo::tools {

namespace {

constexpr std::array<Fault, kFaultBits> kFaults{{
    // Word 1
    {{"扩展错误", "Extended error"},
     {"扩展故障字 2603 中有位置位，如失速、超速或找原点失败。",
      "A bit of the extended fault word 2603 is set, such as loss of speed, overspeed or a "
      "homing that failed."},
     {"读取 2603，按其中的位处理。", "Read 2603 and follow what its bits say."}},
    {{"编码器ABZ故障或通信故障", "Encoder ABZ or encoder communication"},
     {"编码器电缆断线、接触不良、干扰，或编码器型号设置错误。",
      "Broken or loose encoder cable, interference, or the wrong kind of encoder in the motor "
      "data."},
     {"检查插头、屏蔽层和电缆长度；核对电机参数中的编码器类型；更换电缆试验。",
      "Check plugs, shield and length of the cable; compare the encoder kind in the motor data; "
      "try another cable."}},
    {{"编码器UVW故障或内部故障", "Encoder UVW or Encoder\ninternal"},
     {"换相信号缺失或顺序错误，或编码器报告内部错误。",
      "A commutation signal is missing or out of order, or the encoder reports a fault of its "
      "own."},
     {"检查 U、V、W 接线；断电重启；仍报警时更换电机。",
      "Check the U, V, W wires; switch off and on; if it stays, replace the motor."}},
    {{"编码器计数错误或CRC错误", "Encoder counting or Encoder\n CRC"},
     {"编码器信号受干扰，每转计数与分辨率不符，或通信校验错误。",
      "Interference on the encoder's signals, counts per turn that do not fit the resolution, or "
      "check errors of its protocol."},
     {"动力线与编码器线分开走线，屏蔽层两端接地；核对编码器分辨率 6410:03。",
      "Lay power and encoder cables apart, ground the shield at both ends; compare the "
      "resolution in 6410:03."}},
    {{"Driver Over Temperature", "Driver Over Temperature"},
     {"驱动器功率部分过热：环境温度高、风道堵塞或长期过载。",
      "The power stage is too hot: hot surroundings, a blocked air path, or overload for long."},
     {"清洁风道，检查风扇，降低负载或延长加减速时间；冷却后复位。",
      "Clean the air path, check the fan, reduce load or ramps; reset when it has cooled down."}},
    {{"驱动器总线电压过高", "Bus voltage too high"},
     {"减速时能量回馈，制动电阻缺失或过大，或输入电压过高。",
      "Energy comes back while braking and the brake resistor is missing or too large, or the "
      "supply is too high."},
     {"接入合适的制动电阻并设置其阻值和功率；延长减速时间；测量输入电压。",
      "Fit a suitable brake resistor and set its value and power; brake more slowly; measure the "
      "supply."}},
    {{"驱动器总线电压过低", "Bus voltage too low"},
     {"主电源断开、缺相或太弱。", "The main supply is off, lacks a phase, or is too weak."},
     {"检查主电源、接触器和熔断器；确认使能时主电源已接通。",
      "Check supply, contactor and fuses; make sure that the supply is on before enabling."}},
    {{"驱动器输出短路", "Output short circuit"},
     {"电机线短路、对地短路，或功率部分损坏。",
      "A short circuit in the motor cable or motor, also to earth, or a damaged power stage."},
     {"断电后拆下电机线测量绝缘；不接电机时仍报警则更换驱动器。",
      "Switch off, take the motor cable off and measure its insulation; if it comes without a "
      "motor, replace the drive."}},
    {{"驱动器制动电阻异常", "Brake resistor"},
     {"制动电阻超过其功率，断线，或参数与实物不符。",
      "The brake resistor has more power to bear than it can, is broken, or its data are wrong."},
     {"检查电阻及 6510:07 至 6510:09；选用功率更大的电阻。",
      "Check the resistor and 6510:07 to 6510:09; use one for more power."}},
    {{"实际跟踪误差超过允许", "Following error"},
     {"位置跟不上指令：机械卡住、增益过低、电流受限或指令太快。",
      "The position cannot follow: something is stuck, gains are too low, the current is "
      "limited, or the command is too fast."},
     {"用示波器观察误差和电流；检查机械；调整增益和前馈；必要时增大 6065。",
      "Watch error and current on the scope; check the mechanics; tune gains and feed-forward; "
      "raise 6065 if the error is wanted."}},
    {{"逻辑电压", "Logic voltage"},
     {"控制电源低于允许值。", "The logic supply is below its limit."},
     {"测量 24 V 电源及其负载。", "Measure the 24 V supply under load."}},
    {{"I^2*T故障", "I^2*T"},
     {"电流长时间高于额定值：过载、卡住、制动器未打开，或额定电流设置过低。",
      "The current was above the rated one for too long: overload, something stuck, a brake that "
      "is still closed, or a rated current that is set too low."},
     {"检查负载和制动器；核对 6410:08；冷却后复位。",
      "Check load and brake; compare 6410:08; reset when it has cooled down."}},
    {{"输入脉冲频率过高", "Input pulse frequency too high"},
     {"脉冲指令超过输入的最高频率，或受到干扰。",
      "The pulse command is faster than the input can take, or there is interference."},
     {"增大电子齿轮、降低脉冲频率；使用屏蔽双绞线。",
      "Use a larger gear factor and a lower frequency; use shielded twisted pairs."}},
    {{"电机温度过高", "Motor over temperature"},
     {"电机过载、散热不良，或温度传感器接线错误。",
      "The motor is overloaded, badly cooled, or its sensor is wired wrongly."},
     {"降低负载，改善散热；检查传感器和 6410:1E。",
      "Reduce load, improve cooling; check the sensor and 6410:1E."}},
    {{"电机励磁或编码器信息错误", "Motor Commutation or Encoder\n information"},
     {"换相角未找到，电机相序错误，或编码器中的电机信息与设置不符。",
      "The commutation angle was not found, motor phases are exchanged, or the motor data in the "
      "encoder differ from the settings."},
     {"检查电机相序；松开制动器后重新励磁；核对电机型号。",
      "Check the order of the phases; let the motor commutate again with the brake open; compare "
      "the motor type."}},
    {{"EEPROM内部错误", "EEPROM internal"},
     {"存储的参数损坏，或存储器无法写入。",
      "Stored parameters are damaged, or the memory cannot be written."},
     {"初始化并重新写入配置，存储后重启；重复出现时更换驱动器。",
      "Reset, write the configuration again, store and restart; if it comes back, replace the "
      "drive."}},
    // Word 2
    {{"主编码器计数错误", "Main encoder counting"},
     {"第二编码器受干扰，或分辨率设置错误。",
      "Interference on the second encoder, or its resolution is set wrongly."},
     {"检查其电缆和屏蔽；核对分辨率。", "Check its cable and shield; compare the resolution."}},
    {{"主编码器ABZ故障", "Main encoder ABZ"},
     {"第二编码器断线或未供电。", "The second encoder is not connected or has no supply."},
     {"检查插头和 5 V 电源；不用时关闭全闭环。",
      "Check plug and 5 V supply; switch full closed loop off where it is not used."}},
    {{"全闭环故障", "Full closed loop"},
     {"电机编码器与负载编码器相差过大：打滑、反向或比例错误。",
      "Motor and load encoder differ too much: slip, direction, or a wrong ratio."},
     {"检查联轴器；核对两编码器的方向和比例。",
      "Check the coupling; compare direction and ratio of both encoders."}},
    {{"CAN总线故障", "CAN bus"},
     {"总线断开、缺终端电阻、波特率不符，或主站掉线。",
      "The bus is broken, lacks its terminators, runs at another rate, or the master has gone."},
     {"测量终端电阻（60 欧），核对节点号和波特率。",
      "Measure the terminators (60 ohm together), compare node number and rate."}},
    {{"SPI故障", "SPI"},
     {"驱动器内部通信错误。", "An error of the drive's internal communication."},
     {"断电重启；重复出现时更换驱动器。",
      "Switch off and on; if it comes back, replace the drive."}},
    {{"负限位报错", "Negative limit switch"},
     {"轴碰到负限位，或限位断线（常闭触点）。",
      "The axis is on the negative limit switch, or its wire (normally closed) is broken."},
     {"向正方向移出；检查开关、极性和目标位置。",
      "Move away in the positive direction; check switch, polarity and target."}},
    {{"正限位报错", "Positive limit switch"},
     {"轴碰到正限位，或限位断线（常闭触点）。",
      "The axis is on the positive limit switch, or its wire (normally closed) is broken."},
     {"向负方向移出；检查开关、极性和目标位置。",
      "Move away in the negative direction; check switch, polarity and target."}},
    {{"预使能报警", "Pre-enable alarm"},
     {"使能时预使能输入无效。", "Enabled while the pre-enable input was not active."},
     {"检查预使能接线，或取消该输入功能。", "Check its wire, or take the function off the input."}},
    {{"STO2 Error", "STO2 Error"},
     {"安全转矩关断通道 2 无电压或与通道 1 不一致。",
      "Channel 2 of safe torque off has no voltage, or differs from channel 1."},
     {"检查安全回路和接线；两通道须同时动作。",
      "Check the safety circuit; both channels have to switch together."}},
    {{"STO1 Error", "STO1 Error"},
     {"安全转矩关断通道 1 无电压或与通道 2 不一致。",
      "Channel 1 of safe torque off has no voltage, or differs from channel 2."},
     {"检查安全回路和接线；两通道须同时动作。",
      "Check the safety circuit; both channels have to switch together."}},
    {{"逻辑输出故障", "Logic output"},
     {"数字输出短路或过载。", "A digital output is shorted or overloaded."},
     {"拆下输出负载再试；感性负载加续流二极管。",
      "Try without the load; put a diode across inductive loads."}},
    {{"电机配置错误", "Motor configuration"},
     {"电机参数缺失或相互矛盾。", "Motor data are missing or contradict each other."},
     {"重新选择电机型号或核对电机参数，存储后重启。",
      "Choose the motor again or check its data, store and restart."}},
    {{"MCU故障", "MCU"},
     {"处理器自检失败。", "The processor failed its own test."},
     {"断电重启；重复出现时更换驱动器。",
      "Switch off and on; if it comes back, replace the drive."}},
    {{"异常中断", "Unexpected interrupt"},
     {"固件执行异常，常由强干扰引起。",
      "The firmware ran astray, most often by strong interference."},
     {"检查接地和屏蔽；更新固件。", "Check earthing and shields; update the firmware."}},
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
