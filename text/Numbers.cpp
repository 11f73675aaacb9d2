// Number conversions of the "C" locale.
#include "text/Numbers.h"

#include <locale.h>

#include <charconv>
#include <climits>
#include <cstdlib>
#include <string>

namespace {

bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

// Leading blanks, a sign and the digits' value, saturated at `limit`.
unsigned long long ReadDigits(std::wstring_view text, unsigned long long limit, bool& negative) {
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
    unsigned long long value = 0;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
        value = value * 10 + static_cast<unsigned long long>(text[i] - L'0');
        if (value > limit) return limit;
    }
    return value;
}

}  // namespace

int WToI(std::wstring_view text) {
    bool negative = false;
    constexpr unsigned long long kLimit = static_cast<unsigned long long>(INT_MAX) + 1;
    const unsigned long long value = ReadDigits(text, kLimit, negative);
    if (negative) return value >= kLimit ? INT_MIN : -static_cast<int>(value);
    return value >= kLimit ? INT_MAX : static_cast<int>(value);
}

long WToL(std::wstring_view text) {
    bool negative = false;
    constexpr unsigned long long kLimit = static_cast<unsigned long long>(LONG_MAX) + 1;
    const unsigned long long value = ReadDigits(text, kLimit, negative);
    if (negative) return value >= kLimit ? LONG_MIN : -static_cast<long>(value);
    return value >= kLimit ? LONG_MAX : static_cast<long>(value);
}

double WToF(std::wstring_view text) {
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

std::wstring FormatShortest(double number) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::wstring(buffer, result.ptr);
}
