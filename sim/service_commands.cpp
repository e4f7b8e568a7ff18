#include "sim/service_commands.h"

#include <array>
#include <utility>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr std::int64_t kSave = 0x65766173;  // the characters "save", low byte first
constexpr std::int64_t kLoad = 0x64616F6C;  // "load"
constexpr std::int64_t kRestart = 0xAA55;
constexpr std::int64_t kBootloader = 0x55AA;
constexpr std::int64_t kStoreGroup = 1;
constexpr std::int64_t kInitialiseGroup = 10;

// Writing the memory chip keeps the drive from answering for that long.
constexpr std::chrono::milliseconds kWriteTime{30};

constexpr std::int32_t kMotorIndex = 0x6410;

// What the storage state object shows.
constexpr std::int64_t kStorageDone = 2;
constexpr std::int64_t kStorageFailed = 3;

bool everything(dictionary::Identity) {
    return true;
}

bool communication(dictionary::Identity id) {
    return id >> 8 >= 0x1000 && id >> 8 < 0x2000;
}

bool standard(dictionary::Identity id) {
    return id >> 8 >= 0x6000 && id >> 8 < 0xA000;
}

bool maker(dictionary::Identity id) {
    return id >> 8 >= 0x2000 && id >> 8 < 0x6000;
}

bool motor(dictionary::Identity id) {
    return id >> 8 == kMotorIndex;
}

// Bit rates, IDs and what is mapped for the bus.
bool communication_parameters(dictionary::Identity id) {
    return communication(id) || (id >> 8 >= 0x2FE0 && id >> 8 <= 0x2FEF);
}

bool control_parameters(dictionary::Identity id) {
    return !motor(id) && !communication_parameters(id);
}

// The command that stores the control parameters takes the communication's along: who has set a
// rate or a PDO by its window has no other command at hand. A reset leaves them, or the line to
// the drive would be gone with it.
bool stored_with_control(dictionary::Identity id) {
    return !motor(id);
}

// The group of a sub-index of 1010 and 1011.
constexpr std::array kGroups{everything, communication, standard, maker};

bool kept(const Object& object) {
    return object.flags.stored && !object.flags.computed && object.type != Type::kDomain;
}

Memory::Value value_of(const Object& object) {
    if (object.is_number()) return object.value;
    return object.text;
}

}  // namespace

ServiceCommands::ServiceCommands(ObjectTable& table, Memory& memory)
    : table_(table), memory_(memory), storage_state_(table.bind(ids::kStorageState, Type::kUint8)) {
    for (std::int32_t sub = 1; sub <= static_cast<std::int32_t>(kGroups.size()); ++sub) {
        table.bind(ids::kStoreParameters + sub, Type::kUint32).owner = this;
        table.bind(ids::kRestoreParameters + sub, Type::kUint32).owner = this;
    }
    for (const dictionary::Identity id : {ids::kControlParameters, ids::kCommunicationParameters,
                                          ids::kMotorParameters, ids::kUnsavedChanges}) {
        table.bind(id, Type::kUint8).owner = this;
    }
    table.bind(ids::kRestart, Type::kUint16).owner = this;
}

ServiceCommands::Wishes ServiceCommands::take_wishes() {
    return std::exchange(wishes_, {});
}

void ServiceCommands::recall(const std::function<bool(dictionary::Identity)>& but) {
    table_.for_each([&](Object& object) {
        if (!kept(object) || but(object.id)) return;
        const Memory::Value* const value = memory_.find(object.id);
        if (value == nullptr) return;
        const auto* const number = std::get_if<std::int64_t>(value);
        if ((number != nullptr) != object.is_number()) return;
        if (number == nullptr) {
            object.text = std::get<std::string>(*value);
        } else if (*number >= object.min && *number <= object.max) {
            object.value = *number;
        }
    });
    table_.touch();
}

bool ServiceCommands::unsaved() const {
    bool differs = false;
    table_.for_each([&](Object& object) {
        if (differs || !kept(object)) return;
        const Memory::Value* const value = memory_.find(object.id);
        if (value != nullptr) {
            differs = *value != value_of(object);
        } else {
            differs = object.value != object.factory || object.text != object.factory_text;
        }
    });
    return differs;
}

// Store and restore objects answer a read with what they can do: 1, on command.
void ServiceCommands::refresh(Object& object) {
    const std::int32_t index = object.id & ~0xFF;
    if (object.id == ids::kUnsavedChanges) {
        object.value = unsaved() ? 1 : 0;
    } else {
        object.value = index == ids::kStoreParameters || index == ids::kRestoreParameters ? 1 : 0;
    }
}

void ServiceCommands::written(Object& object) {
    object.value = 0;
}

Abort ServiceCommands::accept(const Object& object, std::int64_t value) {
    const std::int32_t index = object.id & ~0xFF;
    if (index == ids::kStoreParameters || index == ids::kRestoreParameters) {
        const bool store = index == ids::kStoreParameters;
        if (value != (store ? kSave : kLoad)) return Abort::kNotStored;
        const Group group = kGroups.at(static_cast<std::size_t>((object.id & 0xFF) - 1));
        return store ? save(group) : restore(group);
    }
    return control_command(object, value);
}

Abort ServiceCommands::control_command(const Object& object, std::int64_t value) {
    if (object.id == ids::kRestart) {
        if (value != kRestart && value != kBootloader) return Abort::kRange;
        wishes_.restart = true;
        wishes_.bootloader = value == kBootloader;
        return Abort::kNone;
    }
    if (object.id == ids::kControlParameters && value == kInitialiseGroup) {
        initialise();
        return Abort::kNone;
    }
    if (value != kStoreGroup) return Abort::kRange;
    if (object.id == ids::kMotorParameters) return save(motor);
    return save(object.id == ids::kControlParameters ? stored_with_control
                                                     : communication_parameters);
}

Abort ServiceCommands::write_memory() {
    wishes_.busy = kWriteTime;
    const bool good = memory_.save();
    storage_state_.value = good ? kStorageDone : kStorageFailed;
    wishes_.memory_failed = !good;
    return good ? Abort::kNone : Abort::kHardware;
}

Abort ServiceCommands::save(Group group) {
    table_.for_each([&](Object& object) {
        if (kept(object) && group(object.id)) memory_.put(object.id, value_of(object));
    });
    return write_memory();
}

Abort ServiceCommands::restore(Group group) {
    table_.for_each([&](Object& object) {
        if (kept(object) && group(object.id)) memory_.erase(object.id);
    });
    return write_memory();
}

// In force at once, and lost again at a restart unless stored: the memory is left as it is.
void ServiceCommands::initialise() {
    table_.for_each([&](Object& object) {
        if (!kept(object) || !control_parameters(object.id)) return;
        object.text = object.factory_text;
        if (object.is_number()) table_.store(object, object.factory);
    });
}

}  // namespace servo::sim
