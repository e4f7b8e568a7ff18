// A `.bode` file over a scan that is there: whatever its bytes, a file that is wrong in its first
// line changes nothing, counts stay within the blocks, and what was read to its end is what is
// written and read again.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "tuner/analysis.h"
#include "tuner/bode_file.h"

using namespace servo::tuner;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

struct Scan {
    Scan() {
        settings = {.startFreq = 4, .stopFreq = 1000, .stepFreq = 3, .magCurrent = 60};
        buffers.pointCount = 333;
        buffers.commandA.fill(60);
        buffers.response.fill(-77);
    }
    BodeReading read(std::string_view bytes) { return read_bode(bytes, settings, buffers); }
    std::string write() const { return write_bode(settings, buffers); }

    ScanSettings settings;
    ScanBuffers buffers;
    bool operator==(const Scan&) const = default;
};

// A number of up to 15 digits comes back as it was; a file may hold more than the program writes,
// so it is the second writing that has to equal the first.
void require_comes_back(const Scan& scan) {
    const std::string text = scan.write();
    const auto again = std::make_unique<Scan>();
    require(again->read(text).buffers);
    require(again->settings == scan.settings);
    require(again->buffers.pointCount == scan.buffers.pointCount);
    require(again->write() == text);
}

void require_analysed(const Scan& scan) {
    const auto analysis = std::make_unique<Analysis>();
    require(FirstAnalyse(scan.settings, scan.buffers, *analysis));
    for (int i = 0; i + 1 < scan.buffers.pointCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        require(std::isfinite(analysis->magnitude[at]));
        require(std::abs(analysis->phase[at]) <= 360);
        require(analysis->commandMag[at] != 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto before = std::make_unique<Scan>();
    const auto scan = std::make_unique<Scan>();
    const BodeReading reading = scan->read(bytes);
    require(reading.fields || !reading.length);
    require(reading.length || !reading.buffers);
    if (!reading.fields) require(*scan == *before);
    if (!reading.length) require(scan->buffers.commandA == before->buffers.commandA);
    if (!reading.length) require(scan->buffers.response == before->buffers.response);
    require(scan->buffers.pointCount <= 500);
    if (reading.buffers) {
        require_comes_back(*scan);
        require_analysed(*scan);
    }
    // Whatever it left behind, a whole file is read behind it.
    require(scan->read("10;20;10;200;60;10000;150;20;5;\r\nlength 2\r\n7\r\n8\r\n-4\r\n-5\r\n"
                       "##########\r\n15\r\n12\r\n-3\r\n-3\r\n")
                .buffers);
    require(scan->buffers.commandB[1] == -2 && scan->buffers.response[1] == 6);
    return 0;
}
