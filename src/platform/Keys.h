#pragma once

namespace oriolemark {

// Codes of keys and mouse buttons, as a form gets them.
inline constexpr int kEnterKey = 13;
inline constexpr int kLeftKey = 37;
inline constexpr int kUpKey = 38;
inline constexpr int kRightKey = 39;
inline constexpr int kDownKey = 40;
inline constexpr int kDeleteKey = 46;
inline constexpr int kF2Key = 113;
inline constexpr int kF5Key = 116;
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;

// The keys that are held meanwhile, added up.
inline constexpr int kShiftHeld = 1;
inline constexpr int kCtrlHeld = 2;
inline constexpr int kAltHeld = 4;

}  // namespace oriolemark
