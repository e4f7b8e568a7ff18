// A folder of its own for a test that needs real files; gone with everything in it afterwards.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

class TempFolder {
  public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "servo-test-XXXXXX").string();
        path_ = mkdtemp(name.data()) != nullptr ? name : std::string();
        EXPECT_FALSE(path_.empty());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }

    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }

    // Written and read with plain streams, not with the code under test.
    void put(std::string_view name, std::string_view bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    std::string get(std::string_view name) const {
        std::ifstream in(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    std::size_t entries() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path_), {}));
    }

  private:
    std::filesystem::path path_;
};
