// Decoding, encoding and atomic writing of the module's text files.
#include "text/TextFile.h"

#include <langinfo.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "files/atomicfile.h"
#include "text/CodePage.h"

namespace {

constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

// Length of the valid UTF-8 sequence at `i` and its code point, or 0 when it is not valid.
std::size_t DecodeUtf8At(std::string_view s, std::size_t i, char32_t& cp) {
    const auto b0 = static_cast<unsigned char>(s[i]);
    if (b0 < 0x80) {
        cp = b0;
        return 1;
    }
    std::size_t length = 0;
    char32_t min = 0;
    if (b0 >= 0xC2 && b0 <= 0xDF) {
        length = 2, cp = b0 & 0x1F, min = 0x80;
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
        length = 3, cp = b0 & 0x0F, min = 0x800;
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
        length = 4, cp = b0 & 0x07, min = 0x10000;
    } else {
        return 0;
    }
    if (i + length > s.size()) return 0;
    for (std::size_t k = 1; k < length; ++k) {
        const auto b = static_cast<unsigned char>(s[i + k]);
        if ((b & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (b & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return length;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

bool LocaleIsUtf8() {
    const char* codeset = nl_langinfo(CODESET);
    if (codeset == nullptr) return true;
    // The plain C/POSIX locale knows only ASCII; UTF-8 is the modern reading of such files.
    return std::strcmp(codeset, "UTF-8") == 0 || std::strcmp(codeset, "ANSI_X3.4-1968") == 0;
}

std::optional<std::wstring> DecodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        char32_t cp = 0;
        const std::size_t n = DecodeUtf8At(bytes, i, cp);
        if (n == 0) return std::nullopt;
        text += static_cast<wchar_t>(cp);
        i += n;
    }
    return text;
}

std::optional<std::wstring> DecodeMultibyte(std::string_view bytes) {
    std::wstring text;
    std::mbstate_t state{};
    for (std::size_t i = 0; i < bytes.size();) {
        wchar_t c = 0;
        const std::size_t n = std::mbrtowc(&c, bytes.data() + i, bytes.size() - i, &state);
        if (n == static_cast<std::size_t>(-1) || n == static_cast<std::size_t>(-2))
            return std::nullopt;
        text += c;
        i += n == 0 ? 1 : n;
    }
    return text;
}

std::wstring DecodeBytes(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char b : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(b));
    return text;
}

void EncodeLocaleChar(std::string& out, wchar_t c, bool utf8) {
    if (utf8) {
        const auto cp = static_cast<char32_t>(c);
        AppendUtf8(out, (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) ? U'?' : cp);
        return;
    }
    char buffer[MB_LEN_MAX];
    std::mbstate_t state{};
    const std::size_t n = std::wcrtomb(buffer, c, &state);
    if (n == static_cast<std::size_t>(-1)) {
        out += '?';
    } else {
        out.append(buffer, n);
    }
}

// Only a file whose every line feed follows a carriage return is read as CR LF: then writing "\r\n"
// for each "\n" gives its bytes back. Mixed files keep their carriage returns as characters.
bool EndsAllLinesWithCrLf(const std::wstring& text) {
    std::size_t lineFeeds = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\n') continue;
        if (i == 0 || text[i - 1] != L'\r') return false;
        ++lineFeeds;
    }
    return lineFeeds > 0;
}

std::wstring ToLineFeeds(std::wstring text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
        out += text[i];
    }
    return out;
}

std::optional<std::string> ReadBytes(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) return std::nullopt;
    std::string bytes;
    char buffer[65536];
    std::size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0) bytes.append(buffer, n);
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    if (failed) return std::nullopt;
    return bytes;
}

}  // namespace

std::size_t FirstInvalidUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        char32_t cp = 0;
        const std::size_t n = DecodeUtf8At(bytes, i, cp);
        if (n == 0) return i;
        i += n;
    }
    return bytes.size();
}

std::wstring DecodeText(std::string_view bytes, TextFormat& format) {
    format = TextFormat{};
    if (bytes.starts_with(kUtf8Bom)) {
        if (auto text = DecodeUtf8(bytes.substr(kUtf8Bom.size()))) {
            format.byteOrderMark = true;
            format.crlf = EndsAllLinesWithCrLf(*text);
            return format.crlf ? ToLineFeeds(std::move(*text)) : std::move(*text);
        }
    }
    std::optional<std::wstring> text;
    if (const std::string& codePage = TextFileCodePage(); !codePage.empty()) {
        std::size_t badByte = 0;
        text = DecodeCodePage(bytes, codePage, badByte);
        if (text) {
            format.encoding = TextEncoding::CodePage;
            format.codePage = codePage;
        }
    } else {
        text = LocaleIsUtf8() ? DecodeUtf8(bytes) : DecodeMultibyte(bytes);
    }
    if (!text) {
        format.encoding = TextEncoding::Bytes;
        text = DecodeBytes(bytes);
    }
    format.crlf = EndsAllLinesWithCrLf(*text);
    return format.crlf ? ToLineFeeds(std::move(*text)) : std::move(*text);
}

std::string EncodeText(std::wstring_view text, const TextFormat& format) {
    if (format.encoding == TextEncoding::CodePage && !format.byteOrderMark) {
        std::wstring lines;
        lines.reserve(text.size());
        for (const wchar_t c : text) {
            if (c == L'\n' && format.crlf) lines += L'\r';
            lines += c;
        }
        return EncodeCodePage(lines, format.codePage);
    }
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    if (format.byteOrderMark) out += kUtf8Bom;
    // Asked once: the locale's code set does not change while a text is encoded.
    const bool utf8 = LocaleIsUtf8();
    for (const wchar_t c : text) {
        if (c == L'\n' && format.crlf) out += '\r';
        if (format.byteOrderMark) {
            AppendUtf8(out, static_cast<char32_t>(c));
        } else if (format.encoding == TextEncoding::Bytes && static_cast<char32_t>(c) <= 0xFF) {
            out += static_cast<char>(c);
        } else if (format.encoding == TextEncoding::Bytes) {
            // A character that has no byte (a block name from the drawing) keeps its UTF-8 form.
            AppendUtf8(out, static_cast<char32_t>(c));
        } else {
            EncodeLocaleChar(out, c, utf8);
        }
    }
    return out;
}

std::optional<TextFileContent> ReadTextFile(const std::wstring& path) {
    const auto bytes = ReadBytes(NativePath(path));
    if (!bytes) return std::nullopt;
    TextFileContent content;
    content.text = DecodeText(*bytes, content.format);
    return content;
}

FileStatus WriteTextFile(const std::wstring& path, std::wstring_view text,
                         const TextFormat& format) {
    return replaceFile(NativePath(path), EncodeText(text, format));
}

std::string EncodeUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t c : text) {
        const auto cp = static_cast<char32_t>(c);
        AppendUtf8(out, (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) ? U'\uFFFD' : cp);
    }
    return out;
}

std::string NativePath(std::wstring_view path) {
    std::string out;
    for (const wchar_t c : path) {
        const auto cp = static_cast<char32_t>(c);
        if (cp >= 0xDC80 && cp <= 0xDCFF) {
            out += static_cast<char>(cp - 0xDC00);
        } else if (cp <= 0x10FFFF && !(cp >= 0xD800 && cp <= 0xDFFF)) {
            AppendUtf8(out, cp);
        } else {
            out += '?';
        }
    }
    return out;
}

std::wstring WidePath(std::string_view native) {
    std::wstring out;
    for (std::size_t i = 0; i < native.size();) {
        char32_t cp = 0;
        const std::size_t n = DecodeUtf8At(native, i, cp);
        if (n == 0) {
            out += static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(native[i]));
            ++i;
        } else {
            out += static_cast<wchar_t>(cp);
            i += n;
        }
    }
    return out;
}
