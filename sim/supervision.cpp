#include "sim/supervision.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// A temperature fault can be reset when it is that much cooler again.
constexpr double kCooled = 5.0;

// Warming: first order, towards the ambient plus resistance times power.
constexpr double kMotorAmbient = 25.0;  // degrees Celsius
constexpr double kMotorKelvinPerWatt = 1.2;
constexpr double kMotorSeconds = 600.0;
constexpr double kDriveAmbient = 30.0;
constexpr double kDriveKelvinPerWatt = 0.8;
constexpr double kDriveOwnWatts = 9.0;  // electronics
constexpr double kDriveOhm = 0.3;       // the inverter's losses follow the current squared
constexpr double kDriveSeconds = 240.0;
constexpr double kMeanSeconds = 10.0;
constexpr double kWarningLoad = 0.8;

namespace warning {
constexpr unsigned kMotorTemperature = 0x01;
constexpr unsigned kDriveTemperature = 0x02;
constexpr unsigned kOverload = 0x04;
}  // namespace warning

// Standard error codes, by bit.
constexpr std::array<std::uint16_t, 16> kCodes1{0xFF00, 0x7305, 0x7306, 0x7307, 0x4310, 0x3210,
                                                0x3220, 0x2320, 0x7110, 0x8611, 0x5112, 0x2350,
                                                0x8A80, 0x4210, 0x7122, 0x5530};
constexpr std::array<std::uint16_t, 16> kCodes2{0x7380, 0x7381, 0x8612, 0x8100, 0x7510, 0x5443,
                                                0x5444, 0x5445, 0x5446, 0x5447, 0x5448, 0x6320,
                                                0x5210, 0x6010, 0x6011, 0x5220};

// Never stopped by a ramp, whatever the stop style says: encoder, short circuit, commutation,
// supply of the logic; current sensor, processor, safe torque off.
constexpr unsigned kNeverRamp1 = 0x448E;
constexpr unsigned kNeverRamp2 = 0xF300;

double towards(double from, double to, double seconds, double time_constant) {
    return to + (from - to) * std::exp(-seconds / time_constant);
}

std::uint16_t lowest_code(const std::array<std::uint16_t, 16>& codes, unsigned bits) {
    for (std::size_t i = 0; i < codes.size(); ++i) {
        if ((bits >> i & 1U) != 0) return codes[i];
    }
    return 0;
}

double plain(const Object& object) {
    return static_cast<double>(object.value);
}

}  // namespace

Supervision::Supervision(ObjectTable& t)
    : mask1_(t.bind(ids::kFaultMask1, Type::kUint16)),
      mask2_(t.bind(ids::kFaultMask2, Type::kUint16)),
      ramp1_(t.bind(ids::kFaultRamp1, Type::kUint16, 0x0200)),
      ramp2_(t.bind(ids::kFaultRamp2, Type::kUint16, 0x0068)),
      self1_(t.bind(ids::kFaultSelfReset1, Type::kUint16, 0x0040)),
      self2_(t.bind(ids::kFaultSelfReset2, Type::kUint16, 0x0060)),
      bus_high_(t.bind(ids::kBusHigh, Type::kUint16, 400)),
      bus_low_(t.bind(ids::kBusLow, Type::kUint16, 200)),
      drive_hot_(t.bind(ids::kDriveHot, Type::kInt16, 85)),
      motor_hot_(t.bind(ids::kMotorHot, Type::kInt16, 130)),
      motor_warm_(t.bind(ids::kMotorWarm, Type::kInt16, 115)),
      drive_rated_(t.bind(ids::kDriveRatedCurrent, Type::kUint16, 40)),
      peak_time_(t.bind(ids::kPeakTime, Type::kUint16, 3000)),
      brake_ohm_(t.bind(ids::kBrakeOhm, Type::kUint16)),
      brake_watt_(t.bind(ids::kBrakeWatt, Type::kUint16)),
      brake_time_(t.bind(ids::kBrakeTime, Type::kUint16, 60)) {
    for (const dictionary::Identity id :
         {ids::kFaultWord1, ids::kFaultWord2, ids::kExtendedFaults, ids::kErrorCode}) {
        t.bind(id, Type::kUint16).owner = this;
    }
    t.bind(ids::kErrorRegister, Type::kUint8).owner = this;
    t.bind(ids::kStatusRegister, Type::kUint32).owner = this;
}

void Supervision::power_up() {
    word1_ = 0;
    word2_ = 0;
    extended_ = 0;
    standing1_ = 0;
    standing2_ = 0;
    provoked1_ = 0;
    provoked2_ = 0;
    error_code_ = 0;
    news_ = false;
    motor_overload_ = 0.0;
    drive_overload_ = 0.0;
    brake_load_ = 0.0;
    mean_square_ = 0.0;
    motor_celsius_ = kMotorAmbient;
    drive_celsius_ = kDriveAmbient + kDriveKelvinPerWatt * kDriveOwnWatts;
}

void Supervision::warm_up(const Readings& r, double seconds) {
    const double square = r.current * r.current;
    motor_overload_ = towards(motor_overload_, square / (r.rated_current * r.rated_current),
                              seconds, r.overload_seconds);
    mean_square_ = towards(mean_square_, square, seconds, kMeanSeconds);
    // The drive's own time constant is such that the peak current trips after its stated time.
    const double rated = std::max(plain(drive_rated_), 1.0) / 10.0 * std::sqrt(2.0);
    const double peak = std::max(r.peak_current * r.peak_current / (rated * rated), 1.01);
    const double constant = plain(peak_time_) / 1000.0 / std::log(peak / (peak - 1.0));
    drive_overload_ =
        towards(drive_overload_, square / (rated * rated), seconds, std::max(constant, 0.1));
    const double copper = 1.5 * r.resistance * square;
    motor_celsius_ = towards(motor_celsius_, kMotorAmbient + kMotorKelvinPerWatt * copper, seconds,
                             kMotorSeconds);
    const double loss = kDriveOwnWatts + 1.5 * kDriveOhm * square;
    drive_celsius_ =
        towards(drive_celsius_, kDriveAmbient + kDriveKelvinPerWatt * loss, seconds, kDriveSeconds);
    const double ohm = plain(brake_ohm_) / 10.0;
    const double watt = plain(brake_watt_);
    const double burnt = r.braking && ohm > 0.0 ? r.bus_voltage * r.bus_voltage / ohm : 0.0;
    brake_load_ = towards(brake_load_, watt > 0.0 ? burnt / watt : 0.0, seconds,
                          std::max(plain(brake_time_), 1.0));
}

std::uint16_t Supervision::causes1(const Readings& r) const {
    unsigned causes = r.causes1;
    const auto cause = [&](bool stands, std::uint16_t bit) { causes |= stands ? bit : 0U; };
    const auto hot = [&](double celsius, const Object& limit, std::uint16_t bit) {
        cause(celsius > plain(limit) - ((standing1_ & bit) != 0 ? kCooled : 0.0), bit);
    };
    hot(drive_celsius_, drive_hot_, fault1::kDriveTemperature);
    hot(motor_celsius_, motor_hot_, fault1::kMotorTemperature);
    cause(r.bus_voltage > plain(bus_high_), fault1::kBusHigh);
    cause(r.powered && r.bus_voltage < plain(bus_low_), fault1::kBusLow);
    cause(brake_load_ > 1.0, fault1::kBrakeResistor);
    cause(motor_overload_ > 1.0 || drive_overload_ > 1.0, fault1::kOverload);
    cause(r.following_error, fault1::kFollowingError);
    cause(r.over_speed, fault1::kExtended);
    return static_cast<std::uint16_t>(causes);
}

Reaction Supervision::look(const Readings& readings, double seconds) {
    warm_up(readings, seconds);
    standing1_ = causes1(readings);
    const bool set_up_wrong = readings.motor_data_wrong && readings.powered;
    standing2_ =
        static_cast<std::uint16_t>((set_up_wrong ? fault2::kMotorSetup : 0U) | readings.causes2);
    if (readings.over_speed && (mask1_.value & fault1::kExtended) == 0) {
        extended_ = static_cast<std::uint16_t>(extended_ | extended::kOverSpeed);
    }
    if (faulty()) reset_self();
    return standing1_ == 0 && standing2_ == 0 ? Reaction::kNone : raise(standing1_, standing2_);
}

// Faults that are set to reset themselves go with their cause.
void Supervision::reset_self() {
    const unsigned stay1 = seen1() | provoked1_;
    const unsigned stay2 = seen2() | provoked2_;
    word1_ = static_cast<std::uint16_t>(word1_ & ~(self1_.value & ~stay1));
    word2_ = static_cast<std::uint16_t>(word2_ & ~(self2_.value & ~stay2));
    if (!faulty()) reset();
}

Reaction Supervision::raise(std::uint16_t word1, std::uint16_t word2) {
    const unsigned new1 = word1 & ~static_cast<unsigned>(mask1_.value) & ~unsigned{word1_};
    const unsigned new2 = word2 & ~static_cast<unsigned>(mask2_.value) & ~unsigned{word2_};
    if (new1 == 0 && new2 == 0) return Reaction::kNone;
    word1_ = static_cast<std::uint16_t>(word1_ | new1);
    word2_ = static_cast<std::uint16_t>(word2_ | new2);
    error_code_ = new1 != 0 ? lowest_code(kCodes1, new1) : lowest_code(kCodes2, new2);
    news_ = true;
    const unsigned ramp1 = static_cast<unsigned>(ramp1_.value) & ~kNeverRamp1;
    const unsigned ramp2 = static_cast<unsigned>(ramp2_.value) & ~kNeverRamp2;
    const bool all_ramp = (new1 & ~ramp1) == 0 && (new2 & ~ramp2) == 0;
    return all_ramp ? Reaction::kRamp : Reaction::kCoast;
}

Reaction Supervision::provoke(std::uint16_t word1, std::uint16_t word2) {
    provoked1_ = static_cast<std::uint16_t>(provoked1_ | word1);
    provoked2_ = static_cast<std::uint16_t>(provoked2_ | word2);
    return raise(word1, word2);
}

bool Supervision::take_news() {
    return std::exchange(news_, false);
}

bool Supervision::reset() {
    provoked1_ = 0;
    provoked2_ = 0;
    word1_ = static_cast<std::uint16_t>(word1_ & seen1());
    word2_ = static_cast<std::uint16_t>(word2_ & seen2());
    if ((word1_ & fault1::kExtended) == 0) extended_ = 0;
    if (!faulty()) error_code_ = 0;
    return !faulty();
}

std::uint16_t Supervision::warnings() const {
    unsigned bits = 0;
    if (motor_celsius_ > plain(motor_warm_)) bits |= warning::kMotorTemperature;
    if (drive_celsius_ > plain(drive_hot_) - 2.0 * kCooled) bits |= warning::kDriveTemperature;
    if (std::max(motor_overload_, drive_overload_) > kWarningLoad) bits |= warning::kOverload;
    return static_cast<std::uint16_t>(bits);
}

// By class of the faults that stand: generic, current, voltage, temperature, communication,
// profile, maker's.
std::uint8_t Supervision::error_register() const {
    unsigned bits = faulty() ? 0x01U : 0x00U;
    if ((word1_ & 0x0880) != 0 || (word2_ & 0x8000) != 0) bits |= 0x02U;
    if ((word1_ & 0x0460) != 0) bits |= 0x04U;
    if ((word1_ & 0x2010) != 0) bits |= 0x08U;
    if ((word2_ & 0x0008) != 0) bits |= 0x10U;
    if ((word1_ & 0x0200) != 0) bits |= 0x20U;
    if ((word1_ & 0xD10F) != 0 || (word2_ & 0x7FF7) != 0) bits |= 0x80U;
    return static_cast<std::uint8_t>(bits);
}

void Supervision::refresh(Object& object) {
    if (object.id == ids::kFaultWord1) object.value = word1_;
    if (object.id == ids::kFaultWord2) object.value = word2_;
    if (object.id == ids::kExtendedFaults) object.value = extended_;
    if (object.id == ids::kErrorCode) object.value = error_code_;
    if (object.id == ids::kErrorRegister) object.value = error_register();
    if (object.id == ids::kStatusRegister) object.value = std::int64_t{word2_} << 16 | word1_;
}

}  // namespace servo::sim
