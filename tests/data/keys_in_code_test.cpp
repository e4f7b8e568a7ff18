// Objects that the code names are in the dictionary, with the width that the code uses.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <set>

#include "base/file.h"
#include "tree_support.h"

namespace servo::data {
namespace {

using dictionary::Identity;
using dictionary::WireKey;

struct Named {
    Identity key;
    const char* type;
};

constexpr auto kU8 = "Unsigned8";
constexpr auto kI8 = "Integer8";
constexpr auto kU16 = "Unsigned16";
constexpr auto kI16 = "Integer16";
constexpr auto kU32 = "Unsigned32";
constexpr auto kI32 = "Integer32";
constexpr auto kText = "Visible String";

// Objects with a role of their own on the line, each with its width there.
constexpr std::array kRoles{
    // Status lane: fault words, operands of formulas, firmware check value.
    Named{0x260100, kU16},
    Named{0x260200, kU16},
    Named{0x651003, kU16},
    Named{0x641003, kU32},
    Named{0x304007, kU32},
    Named{0x60F613, kU16},
    Named{0x60F611, kU16},
    Named{0x1F5601, kU32},
    // Fault masks.
    Named{0x260501, kU16},
    Named{0x260504, kU16},
    // Recorder.
    Named{0x230001, kU32},
    Named{0x230002, kU32},
    Named{0x230003, kU32},
    Named{0x230004, kU32},
    Named{0x230005, kU32},
    Named{0x230006, kU32},
    Named{0x230007, kU8},
    Named{0x230008, kU16},
    Named{0x230009, kU16},
    Named{0x23000A, kU16},
    Named{0x23000B, kU8},
    Named{0x23000C, kU32},
    Named{0x23000D, kI32},
    Named{0x230013, kText},
    // What the scope offers first.
    Named{0x607800, kI16},
    Named{0x60F60C, kI16},
    Named{0x60F916, kI32},
    Named{0x606300, kI32},
    Named{0x606B00, kI32},
    Named{0x60FB08, kI16},
    Named{0x60FC00, kI32},
    // Frequency scan.
    Named{0x304001, kU8},
    Named{0x304002, kU16},
    Named{0x304003, kU16},
    Named{0x304004, kU16},
    Named{0x304005, kU32},
    Named{0x30400A, kU8},
    Named{0x60F901, kU16},
    Named{0x60F902, kU16},
    Named{0x60F910, kU16},
    // Save, reset, restart, bootloader.
    Named{0x101001, kU32},
    Named{0x2FF001, kU8},
    Named{0x2FF003, kU8},
    Named{0x2FFF00, kU16},
    Named{0x2FF800, kText},
    Named{0x100A00, kText},
    // Serial settings.
    Named{0x2FE200, kU16},
    Named{0x65100E, kU16},
    Named{0x65100C, kU8},
    // State machine and modes.
    Named{0x604000, kU16},
    Named{0x604100, kU16},
    Named{0x606000, kI8},
    Named{0x606100, kI8},
    Named{0x607A00, kI32},
    Named{0x60FF00, kI32},
    Named{0x606400, kI32},
    Named{0x606C00, kI32},
    Named{0x609800, kI8},
};

std::string hex(WireKey key) {
    std::array<char, 9> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + 8, key, 16).ptr;
    return {digits.data(), end};
}

TEST(KeysInCode, ObjectsWithARoleHaveTheirWidth) {
    for (const Named& named : kRoles) {
        const Object* const object = test::find_object(named.key);
        ASSERT_NE(object, nullptr) << hex(static_cast<WireKey>(named.key));
        EXPECT_EQ(object->type, named.type) << object->name_en;
    }
}

TEST(KeysInCode, DigitalPinsAreWords) {
    for (int sub = 0x01; sub <= 0x15; ++sub) {
        const Object* const object = test::find_object(0x201000 | sub);
        ASSERT_NE(object, nullptr) << sub;
        EXPECT_EQ(object->type, kU16) << object->name_en;
    }
    for (const int sub : {0x1D, 0x1E, 0x1F}) {
        EXPECT_EQ(test::find_object(0x201000 | sub)->type, kU16) << sub;
    }
}

// A source file without its comments, so that an example in one does not count.
std::string code_of(const std::filesystem::path& file) {
    const std::string text = test::bytes_of(file);
    std::string code;
    base::LineReader reader(text);
    while (const auto line = reader.next()) {
        code += line->substr(0, line->find("//"));
        code += '\n';
    }
    return code;
}

template <typename Visit>
void for_each_source(std::initializer_list<const char*> folders, Visit visit) {
    for (const char* folder : folders) {
        const auto root = std::filesystem::path(SERVO_SOURCE_DIR) / folder;
        if (!std::filesystem::exists(root)) continue;  // a layer that has no source yet
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            const auto extension = entry.path().extension();
            if (extension == ".h" || extension == ".cpp")
                visit(entry.path(), code_of(entry.path()));
        }
    }
}

constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";

// Digits of the constants "0x..." that have exactly `count` of them.
std::set<std::string> hex_constants(std::string_view code, std::size_t count) {
    std::set<std::string> found;
    for (std::size_t at = code.find("0x"); at != std::string_view::npos; at = code.find("0x", at)) {
        at += 2;
        const std::size_t end = std::min(code.find_first_not_of(kHexDigits, at), code.size());
        if (end - at == count) found.emplace(code.substr(at, count));
        at = end;
    }
    return found;
}

// Digits of formula references such as [64100320].
std::set<std::string> references(std::string_view code) {
    std::set<std::string> found;
    for (std::size_t at = code.find('['); at != std::string_view::npos; at = code.find('[', at)) {
        const std::string_view digits = code.substr(++at, 8);
        if (digits.size() < 8 || code.substr(at + 8, 1) != "]") continue;
        if (digits.find_first_not_of(kHexDigits) != std::string_view::npos) continue;
        const std::string_view bits = digits.substr(6);
        if (bits == "08" || bits == "10" || bits == "20") found.emplace(digits);
    }
    return found;
}

WireKey number(const std::string& digits) {
    WireKey value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return value;
}

// Indexes that a drive of this kind has: communication, maker's own and profile areas.
bool is_object_index(WireKey index) {
    return index >= 0x1000 && index < 0xA000;
}

// What is wrong with a constant of eight digits, taken as a wire key; empty for nothing, or for a
// number that is none.
std::string wire_key_problem(WireKey key) {
    const WireKey size = key & 0xFF;
    if (!is_object_index(key >> 16) || (size != 1 && size != 2 && size != 4 && size != 6))
        return {};
    const Object* const object = test::find_object(static_cast<Identity>(key >> 8));
    if (object == nullptr) return hex(key) + " is not in the dictionary";
    // The scope's settings are all asked for as wide ones: a read's size is not looked at.
    if (key >> 16 == 0x2300 && size == 4) return {};
    if (dictionary::wire_size(dictionary::short_type(object->type)) != size) {
        return hex(key) + " has another width than " + object->name_en;
    }
    return {};
}

TEST(KeysInCode, ConstantsAreFoundInCode) {
    const std::string code = "{0x64100304, 0x26010002U, 0x6410, 0x2FF001}; x = 0x123456789;";
    EXPECT_EQ(hex_constants(code, 8), (std::set<std::string>{"64100304", "26010002"}));
    EXPECT_EQ(hex_constants(code, 6), (std::set<std::string>{"2FF001"}));
    EXPECT_EQ(references("N/[64100320]*a[12345678][1][3040071]"),
              (std::set<std::string>{"64100320"}));
}

TEST(KeysInCode, AWrongWireKeyIsSeen) {
    EXPECT_EQ(wire_key_problem(0x64100304), "");
    EXPECT_EQ(wire_key_problem(0x64100302), "64100302 has another width than Encoder resolution");
    EXPECT_EQ(wire_key_problem(0x6410FF04), "6410ff04 is not in the dictionary");
    EXPECT_EQ(wire_key_problem(0x05040001), "");  // an abort code
    EXPECT_EQ(wire_key_problem(0x65766173), "");  // four characters
}

TEST(KeysInCode, WireKeysFitTheDictionary) {
    std::size_t keys = 0;
    for_each_source({"link", "params", "tools", "scope", "tuner", "firmware", "app", "cli", "sim"},
                    [&](const std::filesystem::path& file, const std::string& code) {
                        for (const std::string& digits : hex_constants(code, 8)) {
                            EXPECT_EQ(wire_key_problem(number(digits)), "") << file;
                            if (is_object_index(number(digits) >> 16)) ++keys;
                        }
                    });
    EXPECT_GE(keys, 30U) << "the status lanes alone hold that many";
}

TEST(KeysInCode, IdentitiesAreInTheDictionary) {
    for_each_source({"link", "params", "tools", "scope", "tuner", "firmware", "cli", "sim"},
                    [](const std::filesystem::path& file, const std::string& code) {
                        for (const std::string& digits : hex_constants(code, 6)) {
                            const WireKey value = number(digits);
                            if (!is_object_index(value >> 8)) continue;
                            EXPECT_NE(test::find_object(static_cast<Identity>(value)), nullptr)
                                << file << " names " << digits;
                        }
                    });
}

// The simulated drive's parts name their objects once and bind them with a type elsewhere.
TEST(KeysInCode, SimulatedDriveBindsObjectsWithTheirType) {
    const std::map<std::string, std::string, std::less<>> words{
        {"kUint8", kU8},   {"kInt8", kI8},   {"kUint16", kU16}, {"kInt16", kI16},
        {"kUint32", kU32}, {"kInt32", kI32}, {"kString", kText}};
    const std::string ids = code_of(std::filesystem::path(SERVO_SOURCE_DIR) / "sim/object_ids.h");
    std::map<std::string, Identity, std::less<>> keys;
    for (const std::string& line : test::split(ids, '\n')) {
        const std::size_t name = line.find("Identity k");
        const std::size_t value = line.find(" = 0x");
        if (name == std::string::npos || value == std::string::npos) continue;
        keys[line.substr(name + 9, value - name - 9)] = test::key_of(line.substr(value + 5, 6));
    }
    std::size_t bound = 0;
    for_each_source({"sim"}, [&](const std::filesystem::path& file, const std::string& code) {
        constexpr std::string_view kBind = "bind(ids::";
        constexpr std::string_view kType = ", Type::";
        for (std::size_t at = code.find(kBind); at != std::string::npos;
             at = code.find(kBind, at)) {
            at += kBind.size();
            const std::size_t name_end = code.find_first_of(", +", at);
            const auto key = keys.find(code.substr(at, name_end - at));
            if (key == keys.end() || !code.substr(name_end).starts_with(kType)) continue;
            const std::size_t type = name_end + kType.size();
            const auto word = words.find(code.substr(type, code.find_first_of(",)", type) - type));
            ASSERT_NE(word, words.end()) << file << " binds " << key->first;
            const Object* const object = test::find_object(key->second);
            ASSERT_NE(object, nullptr) << file << " binds " << key->first;
            EXPECT_EQ(object->type, word->second) << file << " binds " << key->first;
            ++bound;
        }
    });
    EXPECT_GE(bound, 20U);
}

TEST(KeysInCode, ReferencesOfFormulasAreInTheDictionary) {
    std::set<std::string> found;
    for_each_source({"link", "params", "tools", "scope", "tuner", "cli"},
                    [&](const std::filesystem::path&, const std::string& code) {
                        found.merge(references(code));
                    });
    EXPECT_GE(found.size(), 5U) << "the operands of formulas";
    for (const std::string& reference : found) {
        const auto key = static_cast<Identity>(number(reference) >> 8);
        EXPECT_NE(test::find_object(key), nullptr) << reference;
    }
}

}  // namespace
}  // namespace servo::data
