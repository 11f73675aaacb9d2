// Numbers read from and written to text as the C run-time does it in its "C" locale: "." is the
// decimal point whatever the user's locale, and a number ends at the first character that is none.
#pragma once

#include <string>
#include <string_view>

// `_wtoi`: leading blanks, a sign and decimal digits; anything else ends the number (none gives 0).
int WToI(std::wstring_view text);
// `_wtol`: the same, clamped to the range of long.
long WToL(std::wstring_view text);
// `_wtof` / `wcstod`: the longest leading decimal number; none gives 0.
double WToF(std::wstring_view text);
// The shortest text that reads back as the same number.
std::wstring FormatShortest(double number);
