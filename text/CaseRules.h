// Block names compared "without regard to case" as a user means it, in every script: lower and
// upper case are Unicode's simple mappings, comparisons use Unicode simple case folding (utf8proc),
// also when the environment's locale is the plain C one.
#pragma once

#include <string>
#include <string_view>

wchar_t ToLowerChar(wchar_t c);
wchar_t ToUpperChar(wchar_t c);
// The character's simple case folding: `Σ`, `σ` and `ς` all fold to `σ`; `ß` stays `ß`.
wchar_t FoldCaseChar(wchar_t c);

// `_wcslwr` / `_wcsupr` / `MakeLower` of a UTF-8 locale: one character for one.
std::wstring MakeLower(std::wstring text);
std::wstring MakeUpper(std::wstring text);
// The key under which names that differ only in case are one: hash and compare this.
std::wstring FoldCase(std::wstring_view text);

// `_wcsicmp`: negative, zero or positive, comparing the folded characters' code points.
int CompareNoCase(std::wstring_view a, std::wstring_view b);
