// Case and number conversions of the C run-time's "C" locale.
#include "inventory/WideText.h"

#include <climits>
#include <clocale>
#include <cstdlib>
#include <locale.h>

wchar_t ToLowerAscii(wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c; }

wchar_t ToUpperAscii(wchar_t c) { return (c >= L'a' && c <= L'z') ? static_cast<wchar_t>(c - 32) : c; }

std::wstring MakeLower(std::wstring text) {
    for (auto& c : text) c = ToLowerAscii(c);
    return text;
}

std::wstring MakeUpper(std::wstring text) {
    for (auto& c : text) c = ToUpperAscii(c);
    return text;
}

int CompareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<unsigned long>(ToLowerAscii(a[i]));
        const auto cb = static_cast<unsigned long>(ToLowerAscii(b[i]));
        if (ca != cb) return ca < cb ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

namespace {

bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

}  // namespace

int WToI(std::wstring_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
    long long value = 0;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
        value = value * 10 + (text[i] - L'0');
        if (value > static_cast<long long>(INT_MAX) + 1) break;
    }
    if (negative) value = -value;
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int>(value);
}

double WToF(std::wstring_view text) {
    // The number ends at the first character outside ASCII, so it can be converted as narrow text.
    std::string narrow;
    for (const wchar_t c : text) {
        if (c <= 0 || c > 127) break;
        narrow += static_cast<char>(c);
    }
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return strtod_l(narrow.c_str(), nullptr, cLocale);
}
