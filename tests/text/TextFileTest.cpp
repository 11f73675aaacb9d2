// Decoding and encoding of the module's text files and file names.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/TempFolder.h"
#include "text/CodePage.h"
#include "text/TextFile.h"

namespace {

struct DecodeCase {
    std::string bytes;
    TextEncoding encoding;
    std::size_t characters;
};

class Decoding : public ::testing::TestWithParam<DecodeCase> {};

TEST_P(Decoding, ChoosesTheEncodingAndRoundTrips) {
    TextFormat format;
    const std::wstring text = DecodeText(GetParam().bytes, format);
    EXPECT_EQ(format.encoding, GetParam().encoding);
    EXPECT_EQ(text.size(), GetParam().characters);
    EXPECT_EQ(EncodeText(text, format), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Utf8OrBytes, Decoding,
    ::testing::Values(DecodeCase{"plain", TextEncoding::Locale, 5},
                      DecodeCase{"\xd7\x90\xe2\x82\xac\xf0\x9f\x9a\xaa", TextEncoding::Locale, 3},
                      DecodeCase{"\xc0\xaf", TextEncoding::Bytes, 2},          // overlong "/"
                      DecodeCase{"\xed\xa0\x80", TextEncoding::Bytes, 3},      // a surrogate
                      DecodeCase{"\xf4\x90\x80\x80", TextEncoding::Bytes, 4},  // past U+10FFFF
                      DecodeCase{"abc\xd7", TextEncoding::Bytes, 4},           // cut short
                      DecodeCase{"\xe9t\xe9", TextEncoding::Bytes, 3},
                      DecodeCase{std::string("a\0b", 3), TextEncoding::Locale, 3}));

TEST(TextFormats, ByteOrderMarkAndLineEndsAreKept) {
    struct Case {
        std::string bytes;
        std::wstring text;
        bool bom, crlf;
    };
    const Case cases[] = {{"\xef\xbb\xbf"
                           "Door|10|x\r\nA|1|\r\n",
                           L"Door|10|x\nA|1|\n", true, true},
                          // Mixed line ends keep their carriage returns.
                          {"a|1|x\r\nb|2|y\n", L"a|1|x\r\nb|2|y\n", false, false}};
    for (const Case& c : cases) {
        TextFormat format;
        EXPECT_EQ(DecodeText(c.bytes, format), c.text);
        EXPECT_EQ(format.byteOrderMark, c.bom);
        EXPECT_EQ(format.crlf, c.crlf);
        EXPECT_EQ(EncodeText(c.text, format), c.bytes);
    }
}

TEST(TextFormats, CharactersBeyondOneByteKeepTheirUtf8FormInAByteFile) {
    const TextFormat bytes{TextEncoding::Bytes, false, false, {}};
    EXPECT_EQ(EncodeText(L"\u00e9|\u05d0", bytes), "\xe9|\xd7\x90");
}

TEST(FileNames, InvalidBytesSurviveTheRoundTrip) {
    const std::string native = "/tmp/caf\xe9/\xd7\x90.prc";
    const std::wstring wide = WidePath(native);
    EXPECT_EQ(wide.size(), 15u);
    EXPECT_EQ(NativePath(wide), native);
}

TEST(TextFiles, AFailedWriteLeavesTheTargetAsItWas) {
    TempFolder folder;
    folder.write("keep.txt", "original");
    ASSERT_TRUE(std::filesystem::create_directory(folder.path("dir")));
    EXPECT_FALSE(WriteTextFile(folder.wpath("dir"), L"new", TextFormat{}).isOk());
    EXPECT_FALSE(WriteTextFile(folder.wpath("missing/keep.txt"), L"new", TextFormat{}).isOk());
    EXPECT_TRUE(WriteTextFile(folder.wpath("keep.txt"), L"new", TextFormat{}).isOk());
    EXPECT_EQ(folder.read("keep.txt"), "new");
    EXPECT_FALSE(ReadTextFile(folder.wpath("missing.txt")).has_value());
}

}  // namespace

TEST(CodePages, ListsInANamedCodePageReadAndWriteBackByteForByte) {
    struct Case {
        const char* codePage;
        std::string bytes;
        std::wstring text;
    };
    const Case cases[] = {
        {"CP1251", "\xD1\xF2\xF3\xEB|12.5|\r\n", L"\u0421\u0442\u0443\u043B|12.5|\n"},
        {"CP1255", "\xF9\xE5\xEC\xE7\xEF|3|\n", L"\u05E9\u05D5\u05DC\u05D7\u05DF|3|\n"},
        {"ISO-8859-8", "\xF9\xE5\xEC\xE7\xEF|3|\n", L"\u05E9\u05D5\u05DC\u05D7\u05DF|3|\n"},
    };
    for (const Case& c : cases) {
        SetTextFileCodePage(c.codePage);
        TextFormat format;
        EXPECT_EQ(DecodeText(c.bytes, format), c.text) << c.codePage;
        EXPECT_EQ(format.encoding, TextEncoding::CodePage);
        EXPECT_EQ(EncodeText(c.text, format), c.bytes) << c.codePage;
    }
    // 0x98 is no character in code page 1251: the file is read a byte a character, as without one.
    std::size_t badByte = 0;
    EXPECT_FALSE(DecodeCodePage("ab\n\x98", "CP1251", badByte));
    EXPECT_EQ(badByte, 3u);
    SetTextFileCodePage("CP1251");
    TextFormat format;
    EXPECT_EQ(DecodeText("\x98", format), L"\u0098");
    EXPECT_EQ(format.encoding, TextEncoding::Bytes);
    SetTextFileCodePage("");
    EXPECT_FALSE(IsKnownCodePage("KLINGON"));
    EXPECT_TRUE(IsKnownCodePage("cp1251"));
}
