// Number conversions of the "C" locale.
#include "text/Numbers.h"

#include <locale.h>

#include <charconv>
#include <climits>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>

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

namespace {

// strtod in the "C" locale over the ASCII prefix of the text.
double StrToD(const char* text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return strtod_l(text, nullptr, cLocale);
}

// A plain decimal: an optional minus, then a digit or a point, and no hexadecimal prefix. For
// such text from_chars reads the same longest number strtod reads, correctly rounded both.
bool IsPlainDecimal(std::string_view text) {
    if (!text.empty() && text.front() == '-') text.remove_prefix(1);
    if (text.empty()) return false;
    const char first = text.front();
    if (first == '.') return true;
    if (first < '0' || first > '9') return false;
    return !(first == '0' && text.size() > 1 && (text[1] == 'x' || text[1] == 'X'));
}

}  // namespace

double WToF(std::wstring_view text) {
    // A number ends at the first character outside ASCII, so the prefix can be read as narrow text;
    // a price fits the buffer on the stack, and a longer text is read as a whole.
    char buffer[64];
    std::size_t length = 0;
    while (length < text.size() && length < sizeof buffer - 1 && text[length] > 0 &&
           text[length] <= 127) {
        buffer[length] = static_cast<char>(text[length]);
        ++length;
    }
    buffer[length] = '\0';
    const bool whole = length == text.size() || text[length] <= 0 || text[length] > 127;
    if (!whole) {
        std::string narrow;
        for (const wchar_t c : text) {
            if (c <= 0 || c > 127) break;
            narrow += static_cast<char>(c);
        }
        return StrToD(narrow.c_str());
    }
    // The common case, a price as typed, without strtod's locale and multiprecision machinery.
    if (IsPlainDecimal({buffer, length})) {
        double value = 0.0;
        const auto result = std::from_chars(buffer, buffer + length, value);
        if (result.ec == std::errc()) return value;
    }
    return StrToD(buffer);
}

std::wstring FormatShortest(double number) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::wstring(buffer, result.ptr);
}
