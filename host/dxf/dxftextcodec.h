// Turning a drawing's byte strings into text and back: UTF-8 from AC1021 (R2007) on; before, the
// code page of $DWGCODEPAGE, with \U+XXXX (and \M+NXXXX) escapes for what the code page cannot
// hold.
#pragma once

#include <memory>
#include <string>
#include <string_view>

class DxfTextCodec {
public:
    // An unknown or missing code page reads as ANSI_1252, the default of DXF.
    DxfTextCodec(std::string_view acadVersion, std::string_view dwgCodePage);
    ~DxfTextCodec();
    DxfTextCodec(DxfTextCodec&&) noexcept;
    DxfTextCodec& operator=(DxfTextCodec&&) noexcept;

    // Bytes the code page does not define read as the character of the same number.
    std::wstring decode(std::string_view bytes) const;
    std::string encode(std::wstring_view text) const;

    bool isUtf8() const { return m_utf8; }
    // The iconv name of the code page in use, e.g. "CP1252".
    const std::string& charset() const { return m_charset; }

private:
    class Converters;
    std::string m_charset;
    bool m_utf8 = false;
    std::unique_ptr<Converters> m_converters;
};
