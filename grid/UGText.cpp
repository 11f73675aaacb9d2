// Case and number conversions of the "C" locale for the grid.
#include "grid/UGText.h"

#include <charconv>
#include <climits>
#include <cstdlib>
#include <locale.h>

namespace {

wchar_t Lower(wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c; }
wchar_t Upper(wchar_t c) { return (c >= L'a' && c <= L'z') ? static_cast<wchar_t>(c - 32) : c; }
bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

}  // namespace

std::wstring UGMakeUpper(std::wstring text) {
    for (auto& c : text) c = Upper(c);
    return text;
}

int UGCompareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<unsigned long>(Lower(a[i]));
        const auto cb = static_cast<unsigned long>(Lower(b[i]));
        if (ca != cb) return ca < cb ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

long UGToLong(std::wstring_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
    unsigned long long value = 0;
    constexpr unsigned long long kLimit = static_cast<unsigned long long>(LONG_MAX) + 1;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
        value = value * 10 + static_cast<unsigned long long>(text[i] - L'0');
        if (value > kLimit) value = kLimit;
    }
    if (negative) return value >= kLimit ? LONG_MIN : -static_cast<long>(value);
    return value >= kLimit ? LONG_MAX : static_cast<long>(value);
}

double UGToDouble(std::wstring_view text) {
    // A number ends at the first character outside ASCII, so the prefix can be read as narrow text.
    std::string narrow;
    narrow.reserve(text.size());
    for (const wchar_t c : text) {
        if (c <= 0 || c > 127) break;
        narrow += static_cast<char>(c);
    }
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return strtod_l(narrow.c_str(), nullptr, cLocale);
}

std::wstring UGFormatNumber(double number) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::wstring(buffer, result.ptr);
}
