// Virtual-key codes as the grid's notifications carry them: the codes of the platform the grid came
// from, so that a handler compares against 13 for Enter and 27 for Escape. Letters and digits are
// their upper-case characters ('A' is 65, '0' is 48).
#pragma once

inline constexpr int VK_BACK = 8;
inline constexpr int VK_TAB = 9;
inline constexpr int VK_RETURN = 13;
inline constexpr int VK_SHIFT = 16;
inline constexpr int VK_CONTROL = 17;
inline constexpr int VK_MENU = 18;
inline constexpr int VK_ESCAPE = 27;
inline constexpr int VK_SPACE = 32;
inline constexpr int VK_PRIOR = 33;
inline constexpr int VK_NEXT = 34;
inline constexpr int VK_END = 35;
inline constexpr int VK_HOME = 36;
inline constexpr int VK_LEFT = 37;
inline constexpr int VK_UP = 38;
inline constexpr int VK_RIGHT = 39;
inline constexpr int VK_DOWN = 40;
inline constexpr int VK_INSERT = 45;
inline constexpr int VK_DELETE = 46;
inline constexpr int VK_F1 = 112;  // VK_F1 + n - 1 for Fn, up to F24

// Key flags of mouse notifications: buttons held and modifier keys.
inline constexpr unsigned MK_LBUTTON = 0x1;
inline constexpr unsigned MK_RBUTTON = 0x2;
inline constexpr unsigned MK_SHIFT = 0x4;
inline constexpr unsigned MK_CONTROL = 0x8;
inline constexpr unsigned MK_MBUTTON = 0x10;
