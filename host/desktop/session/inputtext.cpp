// Typed numbers and points.
#include "host/desktop/session/inputtext.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

std::wstring_view trimmed(std::wstring_view text) {
    while (!text.empty() && (text.front() == L' ' || text.front() == L'\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\t')) text.remove_suffix(1);
    return text;
}

std::vector<std::wstring_view> fields(std::wstring_view text) {
    std::vector<std::wstring_view> parts;
    for (;;) {
        const std::size_t comma = text.find(L',');
        parts.push_back(text.substr(0, comma));
        if (comma == std::wstring_view::npos) return parts;
        text.remove_prefix(comma + 1);
    }
}

}  // namespace

std::optional<double> parseReal(std::wstring_view text) {
    text = trimmed(text);
    if (text.empty() || text.size() > 64) return std::nullopt;
    std::string narrow;
    for (const wchar_t c : text) {
        if (c > 0x7F) return std::nullopt;
        narrow += static_cast<char>(c);
    }
    // from_chars takes no leading "+", which people type.
    const char* first = narrow.data() + (narrow.front() == '+' ? 1 : 0);
    const char* last = narrow.data() + narrow.size();
    double value = 0.0;
    const auto [end, error] = std::from_chars(first, last, value, std::chars_format::general);
    if (error != std::errc() || end != last || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const AcGePoint3d* last) {
    text = trimmed(text);
    const bool relative = !text.empty() && text.front() == L'@';
    if (relative) text.remove_prefix(1);
    const auto parts = fields(text);
    if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
    double values[3] = {0.0, 0.0, 0.0};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto value = parseReal(parts[i]);
        if (!value) return std::nullopt;
        values[i] = *value;
    }
    AcGePoint3d point{values[0], values[1], values[2]};
    if (relative && last != nullptr) {
        point.x += last->x;
        point.y += last->y;
        point.z += last->z;
    }
    return point;
}

std::wstring formatReal(double value) {
    char buffer[64];
    for (int precision = 6; precision <= 17; ++precision) {
        std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
        double back = 0.0;
        std::from_chars(buffer, buffer + std::char_traits<char>::length(buffer), back);
        if (back == value) break;
    }
    return std::wstring(buffer, buffer + std::char_traits<char>::length(buffer));
}

std::wstring formatPoint(const AcGePoint3d& point) {
    return formatReal(point.x) + L"," + formatReal(point.y) + L"," + formatReal(point.z);
}
