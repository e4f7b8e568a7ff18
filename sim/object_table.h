// Every object of the drive with its type, limits and present value. Types and rights to write come
// from the dictionary, values and limits from the value table.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dictionary/keys.h"
#include "dictionary/store.h"
#include "sim/value_table.h"

namespace servo::sim {

class Subsystem;

enum class Type : std::uint8_t {
    kUint8,
    kInt8,
    kUint16,
    kInt16,
    kUint32,
    kInt32,
    kString,
    kDomain,  // any other word of the dictionary: bytes that only a subsystem can give
};

// Bytes of a number; 0 for a string or a domain.
std::size_t width(Type type);
std::int64_t lowest(Type type);
std::int64_t highest(Type type);

// The number that an object of that type holds after `value` was put into it: the low bytes, with
// the type's sign.
std::int64_t cut(Type type, std::int64_t value);

struct Object {
    dictionary::Identity id = 0;
    Type type = Type::kInt32;
    ValueFlags flags;
    bool listed = false;  // in the dictionary, so that the line can reach it
    std::int64_t value = 0;
    std::int64_t factory = 0;
    std::int64_t min = 0;
    std::int64_t max = 0;
    std::string text;  // of a string or a domain
    std::string factory_text;
    Subsystem* owner = nullptr;  // who computes it or acts on it

    bool is_number() const { return type != Type::kString && type != Type::kDomain; }
};

class ObjectTable {
  public:
    // Takes the dictionary's objects, the first of each identity, and gives them their values and
    // limits. What is wrong with a line of the value table (an unknown key, a value that does not
    // fit the type or the limits) can be read in complaints().
    ObjectTable(const dictionary::Store& store, const ValueTable& values);
    ObjectTable(const ObjectTable&) = delete;
    ObjectTable& operator=(const ObjectTable&) = delete;

    const std::vector<std::string>& complaints() const { return complaints_; }

    // Another factory value; false for an unknown object or a text that doesn't fit it.
    bool set_factory(dictionary::Identity id, std::string_view text);

    // Null for an object that isn't in the dictionary (or is hidden).
    Object* find(dictionary::Identity id);
    bool has_index(std::int32_t index) const { return indexes_.contains(index); }

    // The object, for a part of the drive that works with it. One that the dictionary doesn't list
    // is made, hidden from the line, so that the drive works with any dictionary. Where the value
    // table says nothing about it, `factory` is its factory value.
    Object& bind(dictionary::Identity id, Type type, std::int64_t factory = 0);

    // Every object that the line can reach, in no particular order.
    void for_each(const std::function<void(Object&)>& visit);

    // Puts the factory value into every object.
    void reset_values();

    // Objects' values as of now: computed ones are brought up to date by their owner.
    std::int64_t read(Object& object);
    const std::string& read_text(Object& object);

    // Puts a number in, cut to the type, and tells the owner.
    void store(Object& object, std::int64_t value);

    // Rises with every store(), so that those who prepare something from parameters know when.
    std::uint64_t changes() const { return changes_; }
    void touch() { ++changes_; }

  private:
    void load(const dictionary::Store& store);
    void apply(const ValueLine& line);

    std::vector<std::string> complaints_;
    std::deque<Object> objects_;  // addresses stay
    std::unordered_map<dictionary::Identity, Object*> by_id_;
    std::unordered_set<std::int32_t> indexes_;
    std::unordered_set<dictionary::Identity> told_;  // has a line in the value table
    std::uint64_t changes_ = 0;
};

}  // namespace servo::sim
