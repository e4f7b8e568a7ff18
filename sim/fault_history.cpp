#include "sim/fault_history.h"

#include <algorithm>

#include "sim/object_ids.h"

namespace servo::sim {

namespace {

constexpr std::array kFieldTypes{Type::kUint16, Type::kUint16, Type::kUint32, Type::kUint16,
                                 Type::kUint16, Type::kInt32,  Type::kInt16,  Type::kInt16,
                                 Type::kInt8,   Type::kUint16};

}  // namespace

FaultHistory::FaultHistory(ObjectTable& table, Memory& memory)
    : memory_(memory),
      count_(table.bind(ids::kHistoryCount, Type::kUint8)),
      clear_(table.bind(ids::kHistoryClear, Type::kUint8)),
      in_all_(table.bind(ids::kFaultsInAll, Type::kUint32)),
      error_count_(table.bind(ids::kErrorField, Type::kUint8)) {
    clear_.owner = this;
    error_count_.owner = this;
    for (std::size_t r = 0; r < kRecords; ++r) {
        const auto record = static_cast<dictionary::Identity>(r);
        errors_[r] = &table.bind(ids::kErrorField + record + 1, Type::kUint32);
        for (std::size_t f = 0; f < kFields; ++f) {
            const auto field = static_cast<dictionary::Identity>(f);
            records_[r][f] =
                &table.bind(ids::kHistory + record * 0x100 + field + 1, kFieldTypes[f]);
        }
    }
}

void FaultHistory::power_up() {
    const auto recall = [this](Object& object) {
        const Memory::Value* const value = memory_.find(object.id);
        const auto* const number = value != nullptr ? std::get_if<std::int64_t>(value) : nullptr;
        if (number != nullptr) object.value = cut(object.type, *number);
    };
    recall(count_);
    recall(in_all_);
    for (auto& record : records_) {
        for (Object* const field : record)
            recall(*field);
    }
}

bool FaultHistory::keep() {
    memory_.put(count_.id, count_.value);
    memory_.put(in_all_.id, in_all_.value);
    for (const auto& record : records_) {
        for (const Object* const field : record)
            memory_.put(field->id, field->value);
    }
    return memory_.save();
}

bool FaultHistory::add(const FaultRecord& record, std::uint16_t error_code) {
    for (std::size_t r = kRecords - 1; r > 0; --r) {
        errors_[r]->value = errors_[r - 1]->value;
        for (std::size_t f = 0; f < kFields; ++f) {
            records_[r][f]->value = records_[r - 1][f]->value;
        }
    }
    const std::array<std::int64_t, kFields> fields{
        record.word1, record.word2,   record.minutes,     record.extended, record.bus,
        record.speed, record.current, record.temperature, record.mode,     record.status_word};
    for (std::size_t f = 0; f < kFields; ++f) {
        records_[0][f]->value = cut(records_[0][f]->type, fields[f]);
    }
    // The low half is the standard's code, the high half the fault word that tells more.
    const std::uint16_t detail = record.word1 != 0 ? record.word1 : record.word2;
    errors_[0]->value = std::int64_t{detail} << 16 | error_code;
    constexpr std::int64_t kMost = kRecords;
    error_count_.value = std::min(error_count_.value + 1, kMost);
    count_.value = std::min(count_.value + 1, kMost);
    ++in_all_.value;
    return keep();
}

void FaultHistory::clear() {
    count_.value = 0;
    for (auto& record : records_) {
        for (Object* const field : record)
            field->value = 0;
    }
    keep();
}

void FaultHistory::refresh(Object& object) {
    if (object.id == ids::kHistoryClear) object.value = 0;
}

// A 0 written to the count of the standard's list empties it; its limits refuse any other value.
void FaultHistory::written(Object& object) {
    if (object.id == ids::kErrorField) {
        for (Object* const error : errors_)
            error->value = 0;
    } else if (object.value == 1) {
        clear();
    }
}

}  // namespace servo::sim
