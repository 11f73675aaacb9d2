// Reducing text entities' codes to the characters shown.
#include "host/desktop/scene/scenetextformat.h"

#include <cwctype>

namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

int hexValue(wchar_t c) {
    if (c >= L'0' && c <= L'9') return c - L'0';
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    return -1;
}

// A \U+XXXX escape at text[i] (the backslash): its character and length, or 0 when it is none.
std::size_t unicodeEscape(std::wstring_view text, std::size_t i, wchar_t& out) {
    if (i + 7 > text.size() || (text[i + 1] != L'U' && text[i + 1] != L'u') || text[i + 2] != L'+')
        return 0;
    unsigned value = 0;
    for (std::size_t k = i + 3; k < i + 7; ++k) {
        const int digit = hexValue(text[k]);
        if (digit < 0) return 0;
        value = value * 16 + static_cast<unsigned>(digit);
    }
    out = static_cast<wchar_t>(value);
    return 7;
}

// The switches that take an argument up to a semicolon.
bool takesArgument(wchar_t code) {
    switch (code) {
        case L'A':
        case L'C':
        case L'c':
        case L'F':
        case L'f':
        case L'H':
        case L'h':
        case L'Q':
        case L'q':
        case L'T':
        case L't':
        case L'W':
        case L'w':
        case L'p':
            return true;
        default:
            return false;
    }
}

// A stacked fraction's text (after \S up to ';'): "1^2", "1/2" and "1#2" read "1/2".
std::wstring stacked(std::wstring_view argument) {
    std::wstring out;
    for (std::size_t i = 0; i < argument.size(); ++i) {
        const wchar_t c = argument[i];
        if (c == L'\\' && i + 1 < argument.size()) {
            out += argument[++i];
        } else if (c == L'^' || c == L'#') {
            out += L'/';
        } else {
            out += c;
        }
    }
    return out;
}

}  // namespace

std::wstring plainText(std::wstring_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'%' || i + 2 >= text.size() || text[i + 1] != L'%') {
            out += text[i];
            continue;
        }
        const wchar_t code = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(text[i + 2])));
        switch (code) {
            case L'd':
                out += L'\u00B0';
                break;
            case L'p':
                out += L'\u00B1';
                break;
            case L'c':
                out += L'\u2300';
                break;
            case L'%':
                out += L'%';
                break;
            case L'u':
            case L'o':
            case L'k':
                break;
            default:
                if (isDigit(code)) {
                    std::size_t end = i + 2;
                    unsigned value = 0;
                    while (end < text.size() && end < i + 5 && isDigit(text[end]))
                        value = value * 10 + static_cast<unsigned>(text[end++] - L'0');
                    out += static_cast<wchar_t>(value);
                    i = end - 1;
                    continue;
                }
                out += text.substr(i, 3);
                break;
        }
        i += 2;
    }
    return out;
}

std::wstring plainMText(std::wstring_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'{' || c == L'}') continue;
        if (c == L'^' && i + 1 < text.size()) {
            const wchar_t next = text[++i];
            out += next == L'J' ? L'\n' : next == L'I' ? L'\t' : next == L' ' ? L'^' : L' ';
            continue;
        }
        if (c != L'\\' || i + 1 >= text.size()) {
            out += c;
            continue;
        }
        wchar_t character = 0;
        if (const std::size_t length = unicodeEscape(text, i, character)) {
            out += character;
            i += length - 1;
            continue;
        }
        const wchar_t code = text[++i];
        if (code == L'P' || code == L'X' || code == L'N') {
            out += L'\n';
        } else if (code == L'~') {
            out += L' ';
        } else if (code == L'\\' || code == L'{' || code == L'}') {
            out += code;
        } else if (code == L'S') {
            const std::size_t end = text.find(L';', i + 1);
            const std::size_t stop = end == std::wstring_view::npos ? text.size() : end;
            out += stacked(text.substr(i + 1, stop - i - 1));
            i = stop;
        } else if (takesArgument(code)) {
            const std::size_t end = text.find(L';', i + 1);
            i = end == std::wstring_view::npos ? text.size() : end;
        } else if (code == L'M' && i + 6 < text.size() && text[i + 1] == L'+') {
            i += 6;  // a multibyte escape the code page could not read: nothing to show
        } else if (std::wstring_view(L"LlOoKk").find(code) == std::wstring_view::npos) {
            out += code;
        }
    }
    return plainText(out);
}
