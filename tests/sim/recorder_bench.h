// A drive's recorder, worked over the line as a tool does it, and its rows taken apart.
#pragma once

#include <cstdint>
#include <functional>
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

// A slot's value: the object, and its width in bits.
constexpr std::int64_t source(std::uint32_t key, int bits) {
    return std::int64_t{key} << 8 | bits;
}

// Plain objects of the bench, one of each type.
inline constexpr std::uint32_t kByte = 0x200002;    // Integer8
inline constexpr std::uint32_t kWord = 0x200003;    // Unsigned16
inline constexpr std::uint32_t kNumber = 0x200006;  // Integer32
inline constexpr std::int64_t kU8 = source(0x200001, 8);
inline constexpr std::int64_t kI8 = source(0x200002, 8);
inline constexpr std::int64_t kU16 = source(0x200003, 16);
inline constexpr std::int64_t kI16 = source(0x200004, 16);
inline constexpr std::int64_t kU32 = source(0x200005, 32);
inline constexpr std::int64_t kI32 = source(0x200006, 32);

using Column = std::vector<std::int64_t>;

// `count` numbers from `first` on, `step` apart.
Column counted(std::int64_t first, std::int64_t step, std::size_t count);

// The number of the step itself, as a signal.
std::int64_t same(std::int64_t n);

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

    // Starts without the line, so that the n-th step after the start is known, and gives `object`
    // the value signal(n) before the loop makes that step, until the recorder has done or `steps`
    // steps were made. The states after each step.
    Column feed(std::uint32_t object, const std::function<std::int64_t(std::int64_t)>& signal,
                std::int64_t steps = 20000);
};

// The column of the only source in the buffer.
Column only_column(RecorderBench& bench, int width);

// The columns of a buffer whose rows have values of these widths: -1, -2, -4 for signed ones.
std::vector<Column> columns(const std::string& buffer, std::initializer_list<int> widths);

}  // namespace servo::sim::test
