// Checking, reading and writing the number texts of ASCII DXF.
#include "host/dxf/dxfnumber.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isDigit(char c) { return static_cast<unsigned char>(c - '0') <= 9; }

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

std::string_view dxfTrimmed(std::string_view text) {
    std::size_t b = 0;
    std::size_t e = text.size();
    while (b < e && isBlank(text[b])) ++b;
    while (e > b && isBlank(text[e - 1])) --e;
    return text.substr(b, e - b);
}

bool isDxfInteger(std::string_view text) {
    const std::string_view t = dxfTrimmed(text);
    std::size_t i = 0;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) ++i;
    if (i == t.size()) return false;
    for (; i < t.size(); ++i) {
        if (!isDigit(t[i])) return false;
    }
    return true;
}

bool isDxfReal(std::string_view text) {
    const std::string_view t = dxfTrimmed(text);
    const std::size_t n = t.size();
    std::size_t i = 0;
    if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
    std::size_t digits = 0;
    while (i < n && isDigit(t[i])) ++i, ++digits;
    if (i < n && t[i] == '.') {
        ++i;
        while (i < n && isDigit(t[i])) ++i, ++digits;
    }
    if (digits == 0) return false;
    if (i < n && (t[i] == 'e' || t[i] == 'E')) {
        ++i;
        if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
        std::size_t exponentDigits = 0;
        while (i < n && isDigit(t[i])) ++i, ++exponentDigits;
        if (exponentDigits == 0) return false;
    }
    return i == n;
}

bool isDxfHex(std::string_view text) {
    for (const char c : dxfTrimmed(text)) {
        if (hexDigit(c) < 0) return false;
    }
    return true;
}

std::optional<double> parseDxfReal(std::string_view text) {
    const char* p = text.data();
    const char* end = p + text.size();
    while (p < end && isBlank(*p)) ++p;
    if (p < end && *p == '+') ++p;
    // from_chars alone would also take "inf", "nan" and the "1" of "1e": DXF has digits only.
    const char* first = p < end && *p == '-' ? p + 1 : p;
    if (first == end || !(isDigit(*first) || *first == '.')) return std::nullopt;
    double value = 0.0;
    const auto [stop, error] = std::from_chars(p, end, value);
    if (error != std::errc()) return std::nullopt;
    for (const char* rest = stop; rest < end; ++rest) {
        if (!isBlank(*rest)) return std::nullopt;
    }
    return value;
}

std::optional<std::int64_t> parseDxfInteger(std::string_view text) {
    std::string_view t = dxfTrimmed(text);
    if (!t.empty() && t.front() == '+') t.remove_prefix(1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(t.data(), t.data() + t.size(), value);
    if (error != std::errc() || end != t.data() + t.size() || t.empty()) return std::nullopt;
    return value;
}

std::optional<std::uint64_t> parseDxfHex(std::string_view text) {
    const std::string_view t = dxfTrimmed(text);
    if (t.empty() || t.size() > 16) return std::nullopt;
    std::uint64_t value = 0;
    for (const char c : t) {
        const int digit = hexDigit(c);
        if (digit < 0) return std::nullopt;
        value = value * 16 + static_cast<std::uint64_t>(digit);
    }
    return value;
}

std::string formatDxfReal(double value) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    std::string text(buffer, error == std::errc() ? end : buffer);
    if (std::isfinite(value) && text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

std::string formatDxfInteger(std::int64_t value, int width) {
    char buffer[32];
    const int n =
        std::snprintf(buffer, sizeof buffer, "%*lld", width, static_cast<long long>(value));
    return std::string(buffer, static_cast<std::size_t>(n));
}

std::string formatDxfHex(std::uint64_t value) {
    char buffer[24];
    const int n =
        std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(value));
    return std::string(buffer, static_cast<std::size_t>(n));
}
