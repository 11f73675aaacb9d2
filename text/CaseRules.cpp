// Case mappings and folding over utf8proc's tables, with a fast path for ASCII.
#include "text/CaseRules.h"

#include <utf8proc.h>

namespace {

constexpr wchar_t kAsciiEnd = 0x80;

bool HasUnicodeCase(wchar_t c) { return c >= kAsciiEnd && utf8proc_codepoint_valid(c); }

}  // namespace

wchar_t ToLowerChar(wchar_t c) {
    if (c < kAsciiEnd) return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c;
    return HasUnicodeCase(c) ? static_cast<wchar_t>(utf8proc_tolower(c)) : c;
}

wchar_t ToUpperChar(wchar_t c) {
    if (c < kAsciiEnd) return (c >= L'a' && c <= L'z') ? static_cast<wchar_t>(c - 32) : c;
    return HasUnicodeCase(c) ? static_cast<wchar_t>(utf8proc_toupper(c)) : c;
}

wchar_t FoldCaseChar(wchar_t c) {
    if (!HasUnicodeCase(c)) return ToLowerChar(c);
    utf8proc_int32_t folded[4];
    int boundaryClass = 0;
    const utf8proc_ssize_t length =
        utf8proc_decompose_char(c, folded, 4, UTF8PROC_CASEFOLD, &boundaryClass);
    if (length == 1) return static_cast<wchar_t>(folded[0]);
    // Full folding would give several characters (`ß` -> "ss"); the simple folding of such a
    // character is its lower case, or the character itself.
    return ToLowerChar(c);
}

std::wstring MakeLower(std::wstring text) {
    for (auto& c : text) c = ToLowerChar(c);
    return text;
}

std::wstring MakeUpper(std::wstring text) {
    for (auto& c : text) c = ToUpperChar(c);
    return text;
}

std::wstring FoldCase(std::wstring_view text) {
    std::wstring folded(text);
    for (auto& c : folded) c = FoldCaseChar(c);
    return folded;
}

int CompareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<unsigned long>(FoldCaseChar(a[i]));
        const auto cb = static_cast<unsigned long>(FoldCaseChar(b[i]));
        if (ca != cb) return ca < cb ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}
