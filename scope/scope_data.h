// What the parts of the oscilloscope share: what the operator set, the recording, the view of it.
// Members carry the names of their controls where they have one.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/language.h"
#include "base/notice.h"
#include "dictionary/store.h"
#include "link/engine.h"
#include "scope/channel.h"

namespace servo::scope {

// What the oscilloscope uses of the workstation; all of it outlives the oscilloscope.
struct ScopeServices {
    link::Engine& engine;
    const dictionary::Store& dictionary;
    base::Notice& notice;
    const base::Language& language;
    std::function<bool()> link_open;  // the connect button offers to close the link
    // The line belongs to a firmware transfer. May be empty, where there is none.
    std::function<bool()> transfer_running = {};
};

enum class Cursor : std::uint8_t { kX1, kX2, kY1, kY2 };
inline constexpr std::size_t kCursors = 4;

inline constexpr int kDivisions = 10;
inline constexpr int kZoomLevels = 11;
inline constexpr double kPeriodMicroseconds = 62.5;  // one count of the sampling period

// The drawing surface `Picture1`. Coordinates are told in these units, whatever its size on
// screen: x from the left, y from the top down. The layout is fixed: a resize stretches it and
// leaves cursors on their samples. 100 units of travel pan by one sample, which is a handy speed
// at this width.
inline constexpr int kPictureWidth = 10000;
inline constexpr int kPictureHeight = 10000;

struct ZoomWindow {
    std::int16_t first = 0;
    std::int16_t last = 0;
    bool operator==(const ZoomWindow&) const = default;
};

struct CursorPlace {
    bool on = false;
    double at = 0.0;  // X cursors: abscissa; Y cursors: height from the top
    bool operator==(const CursorPlace&) const = default;
};

// Read-outs of the cursors, by their labels.
struct CursorTexts {
    std::string Label25;  // time at X1
    std::string Label27;  // time at X2
    std::string Label29;  // dX
    std::string Label31 = "us";
    std::string Label32;  // unit of the values
    std::string Label33;  // dY
    std::string Label34;  // value at X2 or Y2
    std::string Label35;  // value at X1 or Y1
};

struct ScopeData {
    std::array<ScopeChannel, kChannels> channels;

    // --- Acquisition area
    std::string Text1 = "1";    // sampling period, in counts of 62.5 us
    std::string Text2 = "250";  // trigger offset, samples
    std::string Text3 = "500";  // number of samples
    std::string Text4 = "500";  // trigger level, in the unit of Combo11
    std::string Label18 = "62.5us";
    std::uint8_t edge = 0;      // as the drive reported it: Image5 shows Image6 for 1, Image7 for 0
    bool Check5 = false;        // Single
    double ProgressBar1 = 0.0;  // 0 to 100
    std::string focus;  // the control that has the focus, by its name; the refresh spares it

    // --- Acquisition. `scopeState` is in the engine's state.
    bool sampling = false;
    std::uint8_t rereadRequested = 0;
    std::int32_t rowBytes = 0;
    std::int32_t sampleCount = 0;
    std::array<std::uint8_t, kMaxBytes> rawBytes{};
    std::int16_t rawIndex = 0;
    // Of the last upload, or of the rows of an imported file, which may be more than a buffer
    // holds.
    std::int32_t rawLength = 0;
    std::uint8_t statusPollCount = 0;
    std::array<std::int32_t, 6> driveConfigValues{};  // subs 1 to 6, shifted right by 8
    std::uint8_t driveConfigNext = 0;
    std::array<std::uint8_t, 9> lastObjectPick{};  // 0 to 3 the curves, 8 the trigger source

    // --- View
    std::uint8_t zoomDepth = 0;  // 0 to 10
    std::array<ZoomWindow, kZoomLevels> zoomWindow{};
    bool dataValid = false;
    bool importMode = false;             // doubles as configRefreshOff
    bool curvesChanged = true;           // must be computed anew on the next draw
    std::string Label44;                 // zoom depth and time grid
    std::array<std::string, 5> Label15;  // times at grid lines 2, 4, 6, 8, and their unit
    // Values at the ten grid lines, bottom first, one column for each curve.
    std::array<std::array<std::string, kDivisions>, kCurves> y_labels;

    std::array<CursorPlace, kCursors> cursors{
        {{false, 3000.0}, {false, 7000.0}, {false, 3000.0}, {false, 7000.0}}};
    CursorTexts cursor_texts;
    int Combo12 = 0;       // the curve that cursors and steps work on; -1: none
    bool Check10 = false;  // small steps
    bool handTool = false;

    const ZoomWindow& window() const { return zoomWindow.at(zoomDepth); }
    bool drawn(int channel) const;  // enabled and not hidden
};

// The number that moves the curve's zero: minus that of offsetText, which says how far the curve
// is moved up.
double offset_of(const ScopeChannel& channel);

}  // namespace servo::scope
