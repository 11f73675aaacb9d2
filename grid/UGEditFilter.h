// The base control's decision on a character typed into an in-place editor. The filter belongs to
// this system's tables: column 1 holds prices, and the files use "|" as their field separator.
#pragma once

#include <string_view>

// 1 accepts the character, 0 swallows it. Column 1 takes backspace, digits and one "."; columns 1
// and 2 never take "|"; other columns take everything.
int UGEditKeystrokeFilter(int col, std::wstring_view currentText, int character);
