// The other files of the tree.
#include <gtest/gtest.h>

#include <map>

#include "base/gbk.h"
#include "base/profile_file.h"
#include "data/tools/records.h"
#include "tree_support.h"

namespace servo::data {
namespace {

// Every text of sys/ is there, converted, and comes back as it was written. sys.ini is left out:
// the programs write into theirs.
TEST(TreeFiles, TextsAreConvertedAndComeBack) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(test::sources() / "sys")) {
        const std::string name = entry.path().filename();
        if (name == "sys.ini") continue;
        const std::string source = test::bytes_of(entry.path());
        const std::string made = test::bytes_of(test::tree() / "sys" / name);
        EXPECT_TRUE(made == tree_text(source)) << name;
        std::string back = base::gbk_to_utf8(made);
        std::erase(back, '\r');
        EXPECT_TRUE(back == source) << name;
        ++files;
    }
    EXPECT_GE(files, 22 + 16 + 3);
}

TEST(TreeFiles, SettingsHoldLanguageAndPort) {
    const std::string text = tree_text(test::bytes_of(test::sources() / "sys" / "sys.ini"));
    EXPECT_EQ(base::profile_lookup(text, "sys", "lang", "none", 100), "1");
    EXPECT_EQ(base::profile_lookup(text, "com", "comid", "none", 100), "");
}

TEST(TreeFiles, ModbusListHoldsEveryAddressOfTheDictionary) {
    const auto lines = test::tree_lines("modbus.txt");
    ASSERT_EQ(lines.size(), test::store().modbus_rows() + 1);
    EXPECT_EQ(lines.back(), "END");
    for (std::size_t row = 0; row + 1 < lines.size(); ++row) {
        const auto fields = test::split(lines[row], ',');
        ASSERT_EQ(fields.size(), 3U) << lines[row];
        EXPECT_EQ(fields[0].substr(0, 6),
                  test::store().modbus_cell(row, 1) + test::store().modbus_cell(row, 2));
        EXPECT_EQ(fields[2].substr(fields[2].size() - 4), test::store().modbus_cell(row, 0));
    }
}

struct Block {
    std::size_t first;
    std::size_t last;
    const char* type;
    const char* bits;
};

// The line number in the transfer list fixes what an object means.
TEST(TreeFiles, PositionTableListHasItsBlocksInOrder) {
    const auto lines = test::tree_lines("sys/PosFlow.cdo");
    ASSERT_EQ(lines.size(), 208U);
    for (const Block& block : {Block{0, 79, "Integer32", "20"}, Block{80, 175, "Unsigned16", "10"},
                               Block{176, 207, "Unsigned8", "08"}}) {
        for (std::size_t i = block.first; i <= block.last; ++i) {
            ASSERT_EQ(lines[i].size(), 8U);
            const Object* const object = test::find_object(test::key_of(lines[i].substr(0, 6)));
            ASSERT_NE(object, nullptr) << lines[i];
            EXPECT_EQ(object->type, block.type) << lines[i];
            EXPECT_EQ(lines[i].substr(6), block.bits) << lines[i];
        }
    }
}

struct Functions {
    std::map<unsigned, std::string> inputs;
    std::map<unsigned, std::string> outputs;
};

Functions read_functions(bool english) {
    Functions functions;
    const auto lines = test::tree_lines("sys/DigitIOSettings.ini");
    bool outputs = false;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (lines[i] == "[DigitOUT]") {
            outputs = true;
            continue;
        }
        const auto fields = test::split(lines[i], ',');
        EXPECT_EQ(fields.size(), 3U) << lines[i];
        if (fields.size() != 3) continue;
        auto& into = outputs ? functions.outputs : functions.inputs;
        const auto code = static_cast<unsigned>(test::key_of(fields[2]));
        EXPECT_TRUE(into.emplace(code, english ? fields[1] : fields[0]).second) << lines[i];
    }
    EXPECT_EQ(lines.front(), "[DigitIN]");
    return functions;
}

TEST(TreeFiles, FunctionCodesAreSingleBitsOfTheirGroup) {
    const Functions functions = read_functions(true);
    EXPECT_EQ(functions.inputs.size(), 34U);
    EXPECT_EQ(functions.outputs.size(), 18U);
    for (const auto& list : {functions.inputs, functions.outputs}) {
        for (const auto& [code, name] : list) {
            const unsigned bits = code < 0x8000 ? code : code & 0xFFF;
            EXPECT_TRUE(bits != 0 && (bits & (bits - 1)) == 0) << name;
        }
    }
}

// The list of a pin's function object offers what the function file names, under the same code.
void expect_items(dictionary::Identity key, bool english,
                  const std::map<unsigned, std::string>& functions) {
    const auto record = test::store().get_record(key);
    auto items = test::split(dictionary::trim_tail(english ? record.list_en : record.list_ch), '|');
    ASSERT_EQ(items.size(), functions.size() + 2) << std::hex << key;  // and "", "none"
    auto function = functions.begin();
    for (std::size_t i = 2; i < items.size(); ++i, ++function) {
        const auto parts = test::split(items[i], ':');
        EXPECT_EQ(static_cast<unsigned>(test::key_of(parts[0])), function->first);
        EXPECT_EQ(parts[1], function->second);
    }
}

TEST(TreeFiles, PinObjectsOfferTheFunctionsOfTheFile) {
    for (const bool english : {false, true}) {
        const Functions functions = read_functions(english);
        for (const int sub : {0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x1D}) {
            expect_items(0x201000 | sub, english, functions.inputs);
        }
        for (const int sub : {0x0F, 0x10, 0x11, 0x12, 0x13, 0x1E, 0x1F}) {
            expect_items(0x201000 | sub, english, functions.outputs);
        }
    }
}

}  // namespace
}  // namespace servo::data
