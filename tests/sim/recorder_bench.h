// A drive's recorder, worked over the line as a tool does it, and its rows taken apart.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "sim/drive_bench.h"

namespace servo::sim::test {

// Sub-indexes of the recorder's block, with the index.
namespace recorder {
inline constexpr std::uint32_t kSlotA = 0x230001;
inline constexpr std::uint32_t kSlotB = 0x230002;
inline constexpr std::uint32_t kSlotC = 0x230003;
inline constexpr std::uint32_t kSlotD = 0x230004;
inline constexpr std::uint32_t kWide12 = 0x230005;
inline constexpr std::uint32_t kWide34 = 0x230006;
inline constexpr std::uint32_t kCommand = 0x230007;
inline constexpr std::uint32_t kPeriod = 0x230008;
inline constexpr std::uint32_t kOffset = 0x230009;
inline constexpr std::uint32_t kCount = 0x23000A;
inline constexpr std::uint32_t kEdge = 0x23000B;
inline constexpr std::uint32_t kTrigger = 0x23000C;
inline constexpr std::uint32_t kLevel = 0x23000D;
inline constexpr std::uint32_t kTaken = 0x23000E;
inline constexpr std::uint32_t kTriggerPosition = 0x23000F;
inline constexpr std::uint32_t kRowBytes = 0x230010;
inline constexpr std::uint32_t kBufferBytes = 0x230011;
inline constexpr std::uint32_t kStopAtFault = 0x230012;
inline constexpr std::uint32_t kBuffer = 0x230013;
}  // namespace recorder

using Column = std::vector<std::int64_t>;

class RecorderBench : public DriveBench {
  public:
    explicit RecorderBench(Options options = {});

    // Over the line, and each must be taken.
    void set(std::uint32_t key, std::int64_t value);
    void start();
    // Runs until the recorder has done; the test fails if it does not come to that.
    void wait(microseconds limit = std::chrono::seconds(5));
    // Starts, waits, and fetches the buffer over the line.
    std::string record(microseconds limit = std::chrono::seconds(5));
    std::int64_t state();

    // The number of the last step that the drive's loop has made.
    std::int64_t step() const { return now().count() * 2 / 125; }
    // Runs to the first moment at which that many steps have been made.
    void run_to_step(std::int64_t step);
};

// The columns of a buffer whose rows have values of these widths: -1, -2, -4 for signed ones.
std::vector<Column> columns(const std::string& buffer, std::initializer_list<int> widths);

}  // namespace servo::sim::test
