// Masked input: which characters a mask position takes.
#include "grid/UGMask.h"

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsLetter(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c > 127; }
bool IsPlaceholder(wchar_t m) { return m == L'0' || m == L'#' || m == L'A' || m == L'a' || m == L'?'; }

bool Fits(wchar_t maskChar, wchar_t c) {
    switch (maskChar) {
        case L'0':
        case L'#':
            return IsDigit(c);
        case L'A':
            return IsLetter(c);
        case L'a':
            return IsLetter(c) || IsDigit(c);
        default:
            return true;
    }
}

}  // namespace

std::optional<std::wstring> UGMaskInsert(std::wstring_view mask, std::size_t position,
                                         wchar_t character) {
    if (mask.empty()) return std::wstring(1, character);
    std::wstring inserted;
    for (std::size_t i = position; i < mask.size(); ++i) {
        const wchar_t m = mask[i];
        if (!IsPlaceholder(m)) {
            inserted += m;
            if (m == character) return inserted;
            continue;
        }
        if (!Fits(m, character)) return std::nullopt;
        inserted += character;
        return inserted;
    }
    return std::nullopt;
}
