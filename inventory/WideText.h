// Wide-string helpers with the behaviour of the C run-time in its default "C" locale: only the
// letters A-Z and a-z have a case, whatever else the string holds.
#pragma once

#include <string>
#include <string_view>

wchar_t ToLowerAscii(wchar_t c);
wchar_t ToUpperAscii(wchar_t c);
std::wstring MakeLower(std::wstring text);
std::wstring MakeUpper(std::wstring text);
// `_wcsicmp`: negative, zero or positive, comparing the lower-cased code units.
int CompareNoCase(std::wstring_view a, std::wstring_view b);
// `_wtoi`: leading blanks, a sign and decimal digits; anything else ends the number (none gives 0).
int WToI(std::wstring_view text);
// `_wtof`: a leading decimal number with "." as the decimal point whatever the locale; none gives 0.
double WToF(std::wstring_view text);
