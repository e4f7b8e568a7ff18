#include "sim/object_table.h"

#include <fmt/format.h>

#include <limits>

#include "sim/subsystem.h"
#include "sim/text.h"

namespace servo::sim {

namespace {

Type type_of(std::string_view short_name) {
    if (short_name == "uint8") return Type::kUint8;
    if (short_name == "int8") return Type::kInt8;
    if (short_name == "uint16") return Type::kUint16;
    if (short_name == "int16") return Type::kInt16;
    if (short_name == "uint32") return Type::kUint32;
    if (short_name == "int32") return Type::kInt32;
    if (short_name == "String") return Type::kString;
    return Type::kDomain;
}

Object plain_object(dictionary::Identity id, Type type) {
    Object object;
    object.id = id;
    object.type = type;
    object.min = lowest(type);
    object.max = highest(type);
    return object;
}

// Factory value from a table's text; false when the text doesn't fit the object.
bool set_text_factory(Object& object, std::string_view text) {
    if (!object.is_number()) {
        object.factory_text = text;
        return true;
    }
    const auto number = text.empty() ? std::int64_t{0} : parse_integer(text);
    if (!number || cut(object.type, *number) != *number) return false;
    object.factory = *number;
    return true;
}

}  // namespace

std::size_t width(Type type) {
    switch (type) {
        case Type::kUint8:
        case Type::kInt8:
            return 1;
        case Type::kUint16:
        case Type::kInt16:
            return 2;
        case Type::kUint32:
        case Type::kInt32:
            return 4;
        case Type::kString:
        case Type::kDomain:
            return 0;
    }
    return 0;
}

std::int64_t cut(Type type, std::int64_t value) {
    switch (type) {
        case Type::kUint8:
            return static_cast<std::uint8_t>(value);
        case Type::kInt8:
            return static_cast<std::int8_t>(value);
        case Type::kUint16:
            return static_cast<std::uint16_t>(value);
        case Type::kInt16:
            return static_cast<std::int16_t>(value);
        case Type::kUint32:
            return static_cast<std::uint32_t>(value);
        case Type::kInt32:
            return static_cast<std::int32_t>(value);
        case Type::kString:
        case Type::kDomain:
            return 0;
    }
    return 0;
}

std::int64_t lowest(Type type) {
    switch (type) {
        case Type::kInt8:
            return std::numeric_limits<std::int8_t>::min();
        case Type::kInt16:
            return std::numeric_limits<std::int16_t>::min();
        case Type::kInt32:
            return std::numeric_limits<std::int32_t>::min();
        case Type::kUint8:
        case Type::kUint16:
        case Type::kUint32:
        case Type::kString:
        case Type::kDomain:
            return 0;
    }
    return 0;
}

std::int64_t highest(Type type) {
    const std::int64_t low = lowest(type);
    return low == 0 ? cut(type, -1) : -(low + 1);
}

ObjectTable::ObjectTable(const dictionary::Store& store, const ValueTable& values)
    : complaints_(values.complaints) {
    load(store);
    for (const ValueLine& line : values.lines)
        apply(line);
}

void ObjectTable::load(const dictionary::Store& store) {
    for (std::size_t row = 0; row < store.dictionary_rows(); ++row) {
        const dictionary::Identity id = store.row_identity(row);
        if (id <= 0 || by_id_.contains(id)) continue;
        const dictionary::ObjectRecord record = store.get_record(id);
        if (record.key != id) continue;
        Object object = plain_object(id, type_of(trim(record.type)));
        object.listed = true;
        object.flags.read_only = record.attr.find('W') == std::string::npos;
        objects_.push_back(std::move(object));
        by_id_[id] = &objects_.back();
        indexes_.insert(id >> 8);
    }
}

void ObjectTable::apply(const ValueLine& line) {
    Object* const object = find(line.object);
    if (object == nullptr) {
        complaints_.push_back(fmt::format("{:06X}: not in the dictionary", line.object));
        return;
    }
    told_.insert(line.object);
    // The dictionary's word is the stricter one: without its W nothing is written.
    const bool read_only = object->flags.read_only || line.flags.read_only;
    object->flags = line.flags;
    object->flags.read_only = read_only;
    if (line.min) object->min = *line.min;
    if (line.max) object->max = *line.max;
    if (!set_text_factory(*object, line.factory)) {
        complaints_.push_back(
            fmt::format("{:06X}: {} does not fit the type", line.object, line.factory));
    } else if (object->is_number() &&
               (object->factory < object->min || object->factory > object->max)) {
        complaints_.push_back(
            fmt::format("{:06X}: {} is outside the limits", line.object, line.factory));
    }
}

bool ObjectTable::set_factory(dictionary::Identity id, std::string_view text) {
    Object* const object = find(id);
    if (object == nullptr) return false;
    told_.insert(id);
    return set_text_factory(*object, text);
}

Object* ObjectTable::find(dictionary::Identity id) {
    const auto found = by_id_.find(id);
    return found != by_id_.end() && found->second->listed ? found->second : nullptr;
}

Object& ObjectTable::bind(dictionary::Identity id, Type type, std::int64_t factory) {
    const auto found = by_id_.find(id);
    Object* object = found == by_id_.end() ? nullptr : found->second;
    if (object == nullptr) {
        objects_.push_back(plain_object(id, type));
        object = &objects_.back();
        by_id_[id] = object;
    }
    if (object->is_number() && factory != 0 && !told_.contains(id)) {
        object->factory = cut(object->type, factory);
        object->value = object->factory;
    }
    return *object;
}

void ObjectTable::for_each(const std::function<void(Object&)>& visit) {
    for (Object& object : objects_) {
        if (object.listed) visit(object);
    }
}

void ObjectTable::reset_values() {
    for (Object& object : objects_) {
        object.value = object.factory;
        object.text = object.factory_text;
    }
    touch();
}

std::int64_t ObjectTable::read(Object& object) {
    if (object.owner != nullptr) object.owner->refresh(object);
    return object.value;
}

const std::string& ObjectTable::read_text(Object& object) {
    if (object.owner != nullptr) object.owner->refresh(object);
    return object.text;
}

void ObjectTable::store(Object& object, std::int64_t value) {
    object.value = cut(object.type, value);
    touch();
    if (object.owner != nullptr) object.owner->written(object);
}

}  // namespace servo::sim
