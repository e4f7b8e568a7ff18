// The container of an ".xls" document: a small file system with one stream.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace servo::data {

// Bytes, low byte first.
class ByteWriter {
  public:
    ByteWriter& u8(std::uint32_t value) { return put(value, 1); }
    ByteWriter& u16(std::uint32_t value) { return put(value, 2); }
    ByteWriter& u32(std::uint32_t value) { return put(value, 4); }
    ByteWriter& f64(double value);
    ByteWriter& raw(std::string_view more) {
        bytes_ += more;
        return *this;
    }
    ByteWriter& fill(std::size_t count, char byte = '\0') {
        bytes_.append(count, byte);
        return *this;
    }

    std::size_t size() const { return bytes_.size(); }
    const std::string& bytes() const { return bytes_; }
    // Overwrites four bytes that were written before.
    void patch_u32(std::size_t place, std::uint32_t value);

  private:
    ByteWriter& put(std::uint32_t value, int count);

    std::string bytes_;
};

// A compound file that holds `stream` under an ASCII name. The stream is filled up with zeros to
// the size below which it would have to lie elsewhere.
std::string compound_file(std::string_view name, std::string stream);

}  // namespace servo::data
