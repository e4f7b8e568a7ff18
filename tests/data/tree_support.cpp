#include "tree_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>

#include "base/file.h"
#include "base/gbk.h"
#include "data/tools/object_check.h"

namespace servo::data::test {

std::filesystem::path tree() {
    return SERVO_BIN_DIR;
}

std::filesystem::path sources() {
    return std::filesystem::path(SERVO_SOURCE_DIR) / "data";
}

std::string bytes_of(const std::filesystem::path& file) {
    auto bytes = base::read_file(file);
    EXPECT_TRUE(bytes.has_value()) << file;
    return bytes ? *std::move(bytes) : std::string();
}

std::vector<std::string> tree_lines(std::string_view name) {
    const std::string bytes = bytes_of(tree() / name);
    std::vector<std::string> lines;
    base::LineReader reader(bytes);
    while (const auto line = reader.next())
        lines.push_back(base::gbk_to_utf8(*line));
    return lines;
}

const dictionary::Store& store() {
    static const dictionary::Store loaded = [] {
        dictionary::Store made;
        EXPECT_TRUE(made.open_dat(tree()));
        return made;
    }();
    return loaded;
}

const std::vector<Object>& objects() {
    static const std::vector<Object> all = [] {
        Problems problems;
        const auto folder = sources() / "dictionary";
        const std::string formula_text = bytes_of(folder / "formulas.tsv");
        const Formulas formulas = read_formulas("formulas.tsv", formula_text, problems);
        std::vector<Object> made;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            const std::string name = entry.path().filename();
            if (name == "formulas.tsv") continue;
            const auto more = read_objects(name, bytes_of(entry.path()), formulas, problems);
            made.insert(made.end(), more.begin(), more.end());
        }
        check_objects(made, problems);
        for (const Problem& problem : problems) {
            ADD_FAILURE() << problem.file << ":" << problem.line << ": " << problem.text;
        }
        return made;
    }();
    return all;
}

const Object* find_object(dictionary::Identity key) {
    const auto found = std::ranges::find(objects(), key, &Object::key);
    return found == objects().end() ? nullptr : &*found;
}

std::vector<std::string> page_keys(std::string_view name) {
    std::vector<std::string> keys;
    const auto lines = tree_lines(name);
    for (std::size_t i = 2; i < lines.size() && !lines[i].empty(); ++i) {
        const std::string& line = lines[i];
        keys.push_back(line.size() < 6 ? line : line.substr(line.size() - 6));
    }
    return keys;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

dictionary::Identity key_of(std::string_view hex_digits) {
    dictionary::Identity key = -1;
    const char* const end = hex_digits.data() + hex_digits.size();
    const auto result = std::from_chars(hex_digits.data(), end, key, 16);
    return result.ec == std::errc{} && result.ptr == end ? key : -1;
}

}  // namespace servo::data::test
