// Text rules of the grid, those of the C run-time in its default "C" locale: only A-Z and a-z have
// a case, and numbers use "." whatever the user's locale.
#pragma once

#include <string>
#include <string_view>

std::wstring UGMakeUpper(std::wstring text);
// `_wcsicmp`: negative, zero or positive, comparing lower-cased code units.
int UGCompareNoCase(std::wstring_view a, std::wstring_view b);
// `_wtol`: leading blanks, a sign, decimal digits; no digits gives 0; clamped to the range of long.
long UGToLong(std::wstring_view text);
// `wcstod`: the longest leading decimal number; none gives 0.
double UGToDouble(std::wstring_view text);
// The shortest text that reads back as the same number.
std::wstring UGFormatNumber(double number);
