// Text files as the module reads and writes them: the user's locale encoding (UTF-8 in practice),
// one byte per character for files that are not valid in it, and atomic replacement on writing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/filestatus.h"

enum class TextEncoding {
    Locale,    // the locale's multibyte encoding; UTF-8 where the locale is UTF-8 or plain ASCII
    Bytes,     // each byte one character (U+0000..U+00FF), so nothing is lost
    CodePage,  // the code page the user named (see CodePage.h)
};

// How a file was written, so that saving it again gives the same bytes.
struct TextFormat {
    TextEncoding encoding = TextEncoding::Locale;
    bool crlf = false;           // lines end with CR LF on disk; in memory always "\n"
    bool byteOrderMark = false;  // a UTF-8 byte-order mark leads the file
    std::string codePage;        // for TextEncoding::CodePage
    friend bool operator==(const TextFormat&, const TextFormat&) = default;
};

struct TextFileContent {
    std::wstring text;
    TextFormat format;
};

std::wstring DecodeText(std::string_view bytes, TextFormat& format);
std::string EncodeText(std::wstring_view text, const TextFormat& format);

// Null when the file cannot be opened for reading.
std::optional<TextFileContent> ReadTextFile(const std::wstring& path);
// Replaces the file whole or not at all (see AtomicFile); on failure the target is untouched.
[[nodiscard]] FileStatus WriteTextFile(const std::wstring& path, std::wstring_view text,
                                       const TextFormat& format);

// Where the first byte that is not part of valid UTF-8 lies; the size when there is none.
std::size_t FirstInvalidUtf8(std::string_view bytes);

// UTF-8 whatever the locale; characters that have no UTF-8 form become U+FFFD.
std::string EncodeUtf8(std::wstring_view text);

// File names: UTF-8, with bytes that are not valid UTF-8 carried as U+DC80..U+DCFF.
std::string NativePath(std::wstring_view path);
std::wstring WidePath(std::string_view native);
