// The run-time tree as it was built, and the sources that it was made from.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "data/tools/table.h"
#include "dictionary/store.h"

namespace servo::data::test {

std::filesystem::path tree();     // the programs' folder
std::filesystem::path sources();  // data/

// A file's bytes; the test fails and they are empty when it cannot be read.
std::string bytes_of(const std::filesystem::path& file);

// Lines of a text file of the tree in UTF-8, without their CR.
std::vector<std::string> tree_lines(std::string_view name);

// Packed dictionary of the tree, loaded once.
const dictionary::Store& store();

// All objects of the tables, read once; the test fails when the tables have a problem.
const std::vector<Object>& objects();
const Object* find_object(dictionary::Identity key);

// Keys that a page file lists: the last six characters of each line from the third on, up to the
// first empty line.
std::vector<std::string> page_keys(std::string_view name);

std::vector<std::string> split(std::string_view text, char separator);
dictionary::Identity key_of(std::string_view hex_digits);  // -1 when it is not all hexadecimal

}  // namespace servo::data::test
