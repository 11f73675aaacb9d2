// Text in a code page the user names (any name iconv knows: CP1251, ISO-8859-8, ...), for price
// lists that are neither UTF-8 nor the locale's encoding. Naming one makes it the encoding text
// files are read and written in, as the locale's would be.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Whether iconv converts between the code page and wide characters.
bool IsKnownCodePage(const std::string& codePage);

// The text; null when a byte is not valid there, with its offset in `badByte`.
std::optional<std::wstring> DecodeCodePage(std::string_view bytes, const std::string& codePage,
                                           std::size_t& badByte);
// The bytes; characters the code page lacks become "?".
std::string EncodeCodePage(std::wstring_view text, const std::string& codePage);

// The code page text files are read in from now on; empty for the locale's encoding.
void SetTextFileCodePage(std::string codePage);
const std::string& TextFileCodePage();
