// The colours of the shell. Every one has a contrast of 4.5 to 1 or more where it carries text.
#pragma once

#include <QColor>

namespace servo::app::palette {

inline constexpr QRgb kWindow = 0xfff2f4f6;
inline constexpr QRgb kBase = 0xffffffff;
inline constexpr QRgb kAlternateBase = 0xfff6f8fa;
inline constexpr QRgb kButton = 0xffe8ecf0;
inline constexpr QRgb kText = 0xff1d2730;
inline constexpr QRgb kQuietText = 0xff55636f;  // notes beside a control
inline constexpr QRgb kDisabledText = 0xff8a949d;
inline constexpr QRgb kHighlight = 0xff1f6fb2;
inline constexpr QRgb kHighlightedText = 0xffffffff;
inline constexpr QRgb kDivider = 0xffc3ccd4;  // between cells and around frames
inline constexpr QRgb kTitle = 0xff24506f;    // of the active window
inline constexpr QRgb kTitleText = 0xffffffff;
inline constexpr QRgb kQuietTitle = 0xffd3dbe2;  // of the others
inline constexpr QRgb kQuietTitleText = 0xff46535e;
inline constexpr QRgb kTitleHover = 0xff3d6f93;
inline constexpr QRgb kQuietTitleHover = 0xffbfcad3;
inline constexpr QRgb kCloseHover = 0xffb3261e;
inline constexpr QRgb kWorkspace = 0xffe3e8ec;  // behind the windows

}  // namespace servo::app::palette
