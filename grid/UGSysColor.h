// The system colours the grid's defaults name, by the platform's colour index. The widget layer
// fills them from the widget palette; until then they hold the classic desktop colours.
#pragma once

#include "grid/UGDefs.h"

inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
inline constexpr int COLOR_BTNHIGHLIGHT = 20;
inline constexpr int COLOR_3DDKSHADOW = 21;
inline constexpr int COLOR_3DLIGHT = 22;
inline constexpr int COLOR_INFOBK = 24;

// Colour of an index; an unknown index gives black.
COLORREF GetSysColor(int index);
// Ignored for an unknown index.
void SetSysColor(int index, COLORREF color);
