#include "sim/installed_firmware.h"

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

// Stands under the key of the restart command: where the next restart leads to.
constexpr std::int64_t kToBootloader = 0x55AA;

}  // namespace

InstalledFirmware::InstalledFirmware(ObjectTable& table, Memory& memory)
    : memory_(memory),
      version_(table.bind(ids::kSoftwareVersion, Type::kString)),
      check_value_(table.bind(ids::kFirmwareCheck, Type::kUint32)) {}

bool InstalledFirmware::valid() const {
    const Memory::Value* const next = memory_.find(ids::kRestart);
    return next == nullptr || *next != Memory::Value{kToBootloader};
}

void InstalledFirmware::invalidate() {
    memory_.put(ids::kRestart, kToBootloader);
    memory_.save();
}

void InstalledFirmware::install(const FirmwareImage& image) {
    memory_.erase(ids::kRestart);
    memory_.put(ids::kSoftwareVersion, image.version);
    memory_.put(ids::kFirmwareCheck, std::int64_t{image.check_value});
    memory_.save();
}

void InstalledFirmware::show(const std::function<bool(dictionary::Identity)>& but) {
    const Memory::Value* const version = memory_.find(ids::kSoftwareVersion);
    const Memory::Value* const check = memory_.find(ids::kFirmwareCheck);
    if (version != nullptr && !but(ids::kSoftwareVersion)) {
        if (const auto* text = std::get_if<std::string>(version)) version_.text = *text;
    }
    if (check != nullptr && !but(ids::kFirmwareCheck) && check_value_.is_number()) {
        if (const auto* number = std::get_if<std::int64_t>(check)) {
            check_value_.value = cut(check_value_.type, *number);
        }
    }
}

}  // namespace servo::sim
