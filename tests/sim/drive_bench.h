// A drive with a dictionary of the test's own, and a line in virtual time to talk to it. The frames
// are built here a second time, by hand, so that the drive's own building is tested too.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/store.h"
#include "sim/drive.h"

namespace servo::sim::test {

using std::chrono::microseconds;
using Bytes = std::vector<std::uint8_t>;
using Eight = std::array<std::uint8_t, 8>;

struct Entry {
    std::string_view key;   // six hexadecimal digits
    std::string_view type;  // the dictionary's word
    std::string_view attribute;
};

// The bytes of a dictionary file.
std::string dictionary_file(const std::vector<Entry>& entries);

// Objects of all types and of everything that moves; values in kBenchValues.
const std::vector<Entry>& bench_entries();
extern const std::string_view kBenchValues;

Bytes frame(std::uint8_t id, const Eight& payload);

class DriveBench {
  public:
    explicit DriveBench(Options options = {}, const std::vector<Entry>& entries = bench_entries());

    Drive& drive() { return *drive_; }
    microseconds now() const { return now_; }

    // Sends bytes that are complete at the end of their line time, and lets the drive run until
    // `wait` later or until it has answered.
    std::vector<Transmission> exchange(const Bytes& bytes,
                                       microseconds wait = std::chrono::milliseconds(50));

    // The payload of the one answer; nothing when there was none (or none that is right).
    std::optional<Eight> ask(const Eight& payload);

    // Value of a read; nothing when the drive refuses or is silent.
    std::optional<std::uint32_t> read(std::uint32_t key);
    // The refusal's code of the last ask, 0 when it was none.
    std::uint32_t refusal() const { return refusal_; }
    bool write(std::uint32_t key, std::int64_t value, int size);
    std::optional<std::string> read_text(std::uint32_t key);

    // Control word and mode, as every motion test needs them.
    void control(std::uint16_t word);
    void enable(int mode);

    void run(microseconds time);
    template <typename Condition>
    bool run_until(Condition condition, microseconds limit) {
        const microseconds end = now_ + limit;
        while (!condition()) {
            if (now_ >= end) return false;
            run(microseconds(500));
        }
        return true;
    }

  private:
    dictionary::Store store_;
    std::unique_ptr<Drive> drive_;
    std::uint8_t id_;
    std::uint32_t baud_;
    microseconds now_{0};
    std::uint32_t refusal_ = 0;
};

}  // namespace servo::sim::test
