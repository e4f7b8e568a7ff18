// Sectioned key and value text files (sys.ini), read and written exactly as
// GetPrivateProfileStringA and WritePrivateProfileStringA do: sections and keys without regard to
// case, blanks around them dropped, one pair of quotes around a value removed on reading, the first
// section and the first key of a name win, everything else in the file kept on writing.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace servo::base {

// All texts are bytes of the file's code page. `size` is the caller's buffer: at most size - 1
// bytes come back; with no section (or no key) given, the NUL-separated list of names, cut at
// size - 2. A missing file, section or key gives `fallback` with its trailing blanks removed.
std::string get_profile_string(const std::filesystem::path& file,
                               std::optional<std::string_view> section,
                               std::optional<std::string_view> key, std::string_view fallback,
                               std::size_t size);

// No key removes the section, no value removes the key. False when the file can't be written; the
// old content then stands whole.
bool write_profile_string(const std::filesystem::path& file, std::string_view section,
                          std::optional<std::string_view> key,
                          std::optional<std::string_view> value);

// The same two on text in memory: the parser that the calls above use and the fuzzers feed.
std::string profile_lookup(std::string_view content, std::optional<std::string_view> section,
                           std::optional<std::string_view> key, std::string_view fallback,
                           std::size_t size);
std::string profile_replace(std::string_view content, std::string_view section,
                            std::optional<std::string_view> key,
                            std::optional<std::string_view> value);

}  // namespace servo::base
