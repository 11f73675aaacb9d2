// Strings of a drawing as text: UTF-8 from R2007, code pages with escapes before, and back.
#include <gtest/gtest.h>

#include "host/dxf/dxftextcodec.h"

namespace {

struct DecodeCase {
    const char* version;
    const char* codePage;
    std::string bytes;
    std::wstring text;
};

TEST(DxfTextCodec, DecodesByVersionAndCodePage) {
    const DecodeCase cases[] = {
        {"AC1032", "ANSI_1252", "T\xC3\xBCr", L"T\u00fcr"},  // UTF-8 whatever the code page
        {"AC1021", "ANSI_1251", "\xD0\x96", L"\u0416"},
        {"AC1015", "ANSI_1252", "T\xFCr", L"T\u00fcr"},
        {"AC1015", "ANSI_1251", "\xC4\xE2\xE5\xF0\xFC", L"\u0414\u0432\u0435\u0440\u044c"},
        {"AC1015", "ANSI_1255", "\xE0", L"\u05d0"},
        {"AC1012", "dos850", "\x81", L"\u00fc"},
        {"AC1012", "dos932", "\x82\xA0", L"\u3042"},
        {"AC1015", "MAC-ROMAN", "\x8A", L"\u00e4"},
        {"AC1009", "", "\xFC", L"\u00fc"},  // no code page: ANSI_1252
        {"AC1015", "NO_SUCH_PAGE", "\xFC", L"\u00fc"},
        {"AC1015", "ANSI_1252", "\\U+05D0\\U+05D1", L"\u05d0\u05d1"},
        {"AC1032", "ANSI_1252", "a\\U+00e9b", L"a\u00e9b"},
        {"AC1015", "ANSI_1252", "\\U+D83D\\U+DE00", L"\U0001F600"},
        {"AC1015", "ANSI_1252", "\\M+18140", L"\u3000"},  // cp932 0x8140
        {"AC1015", "ANSI_1252", "\\U+00G1 \\M+9ABCD \\P",
         L"\\U+00G1 \\M+9ABCD \\P"},                 // not escapes
        {"AC1015", "ANSI_1252", "\x81", L"\u0081"},  // undefined in cp1252
        {"AC1032", "",
         "a\xFF"
         "b",
         L"a\u00ffb"},  // not UTF-8
    };
    for (const auto& c : cases) {
        const DxfTextCodec codec(c.version, c.codePage);
        EXPECT_EQ(codec.decode(c.bytes), c.text)
            << c.version << " " << c.codePage << " " << c.bytes;
    }
}

TEST(DxfTextCodec, EncodesWhatTheCodePageLacksAsEscapes) {
    EXPECT_EQ(DxfTextCodec("AC1032", "ANSI_1252").encode(L"T\u00fcr \u05d0"),
              "T\xC3\xBCr \xD7\x90");
    EXPECT_EQ(DxfTextCodec("AC1015", "ANSI_1252").encode(L"T\u00fcr \u05d0"), "T\xFCr \\U+05D0");
    EXPECT_EQ(DxfTextCodec("AC1015", "ANSI_1255").encode(L"\u05d0\u05ea"), "\xE0\xFA");
    EXPECT_EQ(DxfTextCodec("AC1009", "").encode(L"QTB0001"), "QTB0001");
    EXPECT_EQ(DxfTextCodec("AC1015", "ANSI_1252").encode(L"\U0001F600"), "\\U+D83D\\U+DE00");
    for (const std::wstring text :
         {L"\u05d7\u05dc\u05d5\u05df 12", L"\u0416\u0443\u043a", L"\u00e9t\u00e9"}) {
        for (const char* page : {"ANSI_1252", "ANSI_1251", "ANSI_1255", "dos932"}) {
            const DxfTextCodec codec("AC1015", page);
            EXPECT_EQ(codec.decode(codec.encode(text)), text) << page;
        }
    }
}

TEST(DxfTextCodec, NamesTheCharsetInUse) {
    EXPECT_EQ(DxfTextCodec("AC1027", "ANSI_1251").charset(), "UTF-8");
    EXPECT_EQ(DxfTextCodec("AC1015", "ANSI_1251").charset(), "CP1251");
    EXPECT_EQ(DxfTextCodec("AC1015", "dos850").charset(), "CP850");
    EXPECT_EQ(DxfTextCodec("AC1015", "").charset(), "CP1252");
    EXPECT_EQ(DxfTextCodec("AC1015", "NO_SUCH_PAGE").charset(), "CP1252");
}

}  // namespace
