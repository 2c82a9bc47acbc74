#pragma once

namespace oriolemark {

// Codes of keys and mouse buttons, as a form gets them.
inline constexpr int kEnterKey = 13;
inline constexpr int kDeleteKey = 46;
inline constexpr int kF2Key = 113;
inline constexpr int kF5Key = 116;
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;

}  // namespace oriolemark
