// What the parts of the advanced tuner share: the scan's settings, the drive's two data blocks,
// what the analysis makes of them, the filters and gains that are tried on it, and the choices of
// the picture. Members carry the names of their controls where they have one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "base/language.h"
#include "base/notice.h"
#include "link/engine.h"

namespace servo::tuner {

inline constexpr int kMostPoints = 501;  // of a scan; the blocks hold no more
inline constexpr int kResponseSize = 1001;
inline constexpr int kSlots = 6;            // filters
inline constexpr int kParameters = 4;       // boxes of a filter
inline constexpr int kFilterPoints = 1000;  // of a filter's curve: 1, 2, ... 1000 Hz
inline constexpr double kPi = 3.14159265358979;

// Nine values of a scan; all of them are kept in its file.
struct ScanSettings {
    std::int16_t startFreq = 0;         // Hz
    std::int16_t stopFreq = 0;          // Hz
    std::int16_t stepFreq = 0;          // Hz
    float velocityGain1 = 0.0F;         // 60F9:01 at the scan
    std::int16_t magCurrent = 0;        // excitation, in the drive's units
    std::int32_t encoderCounts = 0;     // 6410:03
    std::int16_t feedbackConstant = 0;  // 6510:03
    float velocityGain2 = 0.0F;         // 60F9:02
    std::int16_t scaleShift = 0;        // 3040:0A
    bool operator==(const ScanSettings&) const = default;
};

// The raw correlation sums, as the drive gives them.
struct ScanBuffers {
    std::int16_t pointCount = 0;
    std::array<std::int16_t, kMostPoints> commandA{};
    std::array<std::int16_t, kMostPoints> commandB{};
    std::array<std::int32_t, kResponseSize> response{};  // two entries a point
    bool operator==(const ScanBuffers&) const = default;
};

// (stop - start) / step + 1, rounded to an integer, halves to even. 0 when that is no 16-bit
// number.
std::int16_t point_count(const ScanSettings& settings);

// What FirstAnalyse computes, one entry a point; the last point of a scan is not analysed.
struct Analysis {
    std::array<float, kMostPoints> respX{};
    std::array<float, kMostPoints> respY{};
    std::array<float, kMostPoints> commandMag{};    // 1 where the command is the excitation
    std::array<float, kMostPoints> commandPhase{};  // degrees
    std::array<float, kMostPoints> phase{};         // degrees, -360 to 360
    std::array<float, kMostPoints> magnitude{};     // relative
    std::int32_t plantEstimate = 0;
};

// A filter as the operator sets it.
struct FilterSlot {
    bool use = false;  // "使用"
    int type = 0;      // position in the list of six types
    std::array<std::string, kParameters> parameters{"0", "0", "0", "0"};
    bool operator==(const FilterSlot&) const = default;
};

// A filter as the arithmetic takes it. Type 0 is off, 1 to 6 the list position plus 1.
struct FilterRecord {
    std::uint8_t type = 0;
    float a = 0.0F;
    float b = 0.0F;
    float c = 0.0F;
    float d = 0.0F;
    bool operator==(const FilterRecord&) const = default;
};

// Gains of the loops to be tried.
struct LoopGains {
    float loopGain = 1.0F;
    float loopIntegral = 0.0F;
    float loopScale = 1.0F;
};

// A curve's two halves. Gains are linear ratios, phases degrees.
template <std::size_t N>
struct ResponsePair {
    std::array<float, N> gain{};
    std::array<float, N> phase{};
};

// What a simulation leaves. `points` and `filter_used` say what of it holds.
struct Simulation {
    int points = 0;                                    // model points, 0 before the first
    ResponsePair<kMostPoints> open_velocity;           // out1, out2
    ResponsePair<kMostPoints> closed_velocity;         // out3, out4; a gain of 0 stands as 0.01
    std::array<float, kMostPoints> open_position{};    // out5, a gain
    std::array<float, kMostPoints> closed_position{};  // out6, a gain
    std::array<ResponsePair<kFilterPoints>, kSlots> filters;
    std::array<bool, kSlots> filter_used{};
    std::array<FilterRecord, kSlots> records;  // what was simulated
    LoopGains gains;
};

// The curves of the picture, in the order of their boxes Check3 to Check14.
enum class Curve : std::uint8_t {
    kPlant,           // Check3, measured
    kOpenVelocity,    // Check4
    kClosedVelocity,  // Check5
    kCurrent,         // Check6, measured: what the drive commanded, per unit of excitation
    kOpenPosition,    // Check7, a gain without a phase
    kClosedPosition,  // Check8, likewise
    kFilter1,         // Check9 to Check14
    kFilter2,
    kFilter3,
    kFilter4,
    kFilter5,
    kFilter6,
};
inline constexpr int kCurves = 12;

struct Choices {
    std::array<bool, kCurves> curves{true, true, true};
    bool Check15 = true;  // gain area
    bool Check16 = true;  // phase area
    int Combo2 = 0;       // 0 "20dB", 1 "40dB"

    bool shows(Curve curve) const { return curves[static_cast<std::size_t>(curve)]; }
};

// gainRange of the geometry: 40 for list index 0, else 80.
constexpr int gain_range(int list_index) {
    return list_index == 0 ? 40 : 80;
}

// State of the label `Label36`.
enum class ScanLabel : std::uint8_t { kNotStarted, kAcquiring, kFinished };

struct TunerData {
    // Boxes of the scan.
    std::string Text1 = "60";  // magCurrent
    std::string Text2 = "4";   // startFreq
    std::string Text3 = "60";  // stopFreq
    std::string Text4 = "3";   // stepFreq
    bool Check1 = false;       // "解锁"
    bool Command1_enabled = false;
    ScanLabel Label36 = ScanLabel::kNotStarted;

    // Boxes of the simulation.
    std::string Text10 = "100";  // loopGain
    std::string Text11 = "0.1";  // for loopIntegral
    std::string Text9 = "1";     // loopScale
    std::array<FilterSlot, kSlots> slots;

    Choices choices;

    ScanSettings settings;
    ScanBuffers buffers;
    Analysis analysis;
    bool analysed = false;  // FirstAnalyse has run
    Simulation simulation;

    // Progress of the block reads.
    std::uint8_t scanMode = 0;    // 0 first block, 1 second block, 2 finished
    std::int16_t scanIndex = 0;   // entry being read
    std::int16_t readBase = 0;    // word address of the block
    std::int16_t readOffset = 0;  // words into the block

    // The three redraw flags: what changed since the picture was last made.
    bool redraw_gain = false;
    bool redraw_phase = false;
    bool redraw_filters = false;

    // Points that the picture and the model use: all but the last.
    int analysed_points() const {
        return analysed && buffers.pointCount > 1 ? buffers.pointCount - 1 : 0;
    }
    std::int16_t frequency(int point) const {
        return static_cast<std::int16_t>(settings.startFreq + point * settings.stepFreq);
    }
};

// What the tuner uses of the workstation; all of it outlives the tuner.
struct TunerServices {
    link::Engine& engine;
    base::Notice& notice;
    const base::Language& language;
    std::function<bool()> link_open;  // the connect button offers to close the link
};

}  // namespace servo::tuner
