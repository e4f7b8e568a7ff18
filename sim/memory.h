// The drive's non-volatile memory: what was stored, kept over restarts, and over runs in a file.
//
// The file is text: a first line that names the format, then one line for each object,
//   key <TAB> number          60F901 <TAB> 120
//   key <TAB> "text"          100800 <TAB> "axis 3"   (a quote's or backslash's own sign: \" and
//   \\)
// and a last line with the count of lines and a check value over them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "dictionary/keys.h"

namespace servo::sim {

class Memory {
  public:
    using Value = std::variant<std::int64_t, std::string>;

    // With no file the memory lives as long as the object.
    explicit Memory(std::filesystem::path file = {});

    // False when there is a file and its content is damaged; the memory is then empty.
    bool load();

    // Writes the file, whole or not at all. True also when there is none to write.
    bool save() const;

    const Value* find(dictionary::Identity id) const;
    void put(dictionary::Identity id, Value value);
    void erase(dictionary::Identity id);

    // The file's content.
    std::string to_text() const;
    bool from_text(std::string_view text);

  private:
    std::filesystem::path file_;
    std::map<dictionary::Identity, Value> values_;
};

}  // namespace servo::sim
